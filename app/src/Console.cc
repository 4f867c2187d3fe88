#include "Console.h"

#include <utility>

#include "Text.h"

namespace nkdt::app {

namespace {

constexpr std::chrono::milliseconds untilFirst{500};
constexpr std::chrono::milliseconds betweenTwo{100};

}  // namespace

void Console::tell(std::string_view text) {
    err << "nkdt: " << printable(text) << '\n';
}

Progress::Progress(Console& console, std::string what)
    : m_console(console), m_what(std::move(what)), m_next(std::chrono::steady_clock::now() + untilFirst) {}

Progress::~Progress() {
    clear();
}

void Progress::refresh(LONGLONG rows) {
    const auto now = std::chrono::steady_clock::now();
    if (now < m_next) return;
    m_next = now + betweenTwo;
    m_console.err << '\r' << m_what << ": " << rows << " rows" << std::flush;
    m_shown = true;
}

void Progress::clear() {
    if (!m_shown) return;
    m_console.err << "\r\033[K" << std::flush;
    m_shown = false;
}

}  // namespace nkdt::app
