#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

namespace frameworktest {

// While it lives, local time is that of a zone of POSIX's notation: "EAST-1" is one hour east of Greenwich.
class TimeZone {
  public:
    explicit TimeZone(const char* zone) {
        if (const char* const before = std::getenv("TZ"); before != nullptr) m_before = before;
        ::setenv("TZ", zone, 1);
        ::tzset();
    }
    ~TimeZone() {
        if (m_before) {
            ::setenv("TZ", m_before->c_str(), 1);
        } else {
            ::unsetenv("TZ");
        }
        ::tzset();
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

  private:
    std::optional<std::string> m_before;
};

}  // namespace frameworktest
