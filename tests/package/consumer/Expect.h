#pragma once

#include <cstdio>

/// Counts and tells what is not as a user expects.
class Expectations {
  public:
    void that(bool holds, const char* what) {
        if (holds) return;
        std::fprintf(stderr, "does not hold: %s\n", what);
        ++m_failures;
    }
    int exitStatus() const { return m_failures == 0 ? 0 : 1; }

  private:
    int m_failures = 0;
};
