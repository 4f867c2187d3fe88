#pragma once

/// @file
/// Where the program writes to: results, errors, and how far long work has come.

#include <chrono>
#include <ostream>
#include <string>
#include <string_view>

#include "nkfw/Types.h"

namespace nkdt::app {

struct Console {
    std::ostream& out;
    std::ostream& err;
    bool errIsTerminal = false;  ///< a progress line is shown

    /// Writes one line "nkdt: ..." to the errors.
    void tell(std::string_view text);
};

/// The line that tells on a terminal how far long work has come, and is gone at its end.
class Progress {
  public:
    Progress(Console& console, std::string what);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Tells how many rows are done.
    void show(LONGLONG rows) {
        if (m_console.errIsTerminal && rows % rowsBetweenLooks == 0) refresh(rows);
    }
    /// Takes the line away, so that something else can be written.
    void clear();

  private:
    static constexpr LONGLONG rowsBetweenLooks = 256;  // at the clock

    void refresh(LONGLONG rows);

    Console& m_console;
    std::string m_what;
    std::chrono::steady_clock::time_point m_next;
    bool m_shown = false;
};

}  // namespace nkdt::app
