#pragma once

/// @file
/// What the fuzz targets share: the input taken apart, errors as values, and the one way to say that
/// something is wrong.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "nkeh/NkEhBasis.h"
#include "nkfw/Types.h"

namespace fuzz {

/// Ends the program, which the fuzzer reports with its input.
[[noreturn]] inline void fail(const char* rule) {
    std::fprintf(stderr, "broken rule: %s\n", rule);
    std::abort();
}

inline void require(bool holds, const char* rule) {
    if (!holds) fail(rule);
}

/// The input from front to back; behind its end everything is zero or empty.
class Input {
  public:
    Input(const std::uint8_t* data, std::size_t size) : m_rest(reinterpret_cast<const char*>(data), size) {}

    bool empty() const noexcept { return m_rest.empty(); }

    unsigned char byte() noexcept {
        if (m_rest.empty()) return 0;
        const auto result = static_cast<unsigned char>(m_rest.front());
        m_rest.remove_prefix(1);
        return result;
    }

    /// A number from 0 to @p count - 1.
    unsigned choice(unsigned count) noexcept { return byte() % count; }

    /// A text without NUL: a length byte, then as many bytes as there are up to that length.
    std::string text() {
        const std::size_t length = std::min<std::size_t>(byte(), m_rest.size());
        const std::string_view taken = m_rest.substr(0, length);
        m_rest.remove_prefix(length);
        return withoutNul(taken);
    }

    /// All that is left, up to its first NUL.
    std::string rest() { return withoutNul(bytes()); }

    /// All that is left.
    std::string_view bytes() noexcept {
        const std::string_view taken = m_rest;
        m_rest = {};
        return taken;
    }

  private:
    static std::string withoutNul(std::string_view text) {
        return std::string(text.substr(0, text.find('\0')));
    }

    std::string_view m_rest;
};

/// The error that the action throws, or null. Anything else that it throws ends the program.
template <class Action>
std::unique_ptr<NkEhBasis> errorOf(Action&& action) {
    try {
        action();
    } catch (NkEhBasis* caught) {
        return std::unique_ptr<NkEhBasis>(caught);
    }
    return nullptr;
}

/// The number of the error that the action throws, 0 for none.
template <class Action>
ULONG errorNumberOf(Action&& action) {
    const std::unique_ptr<NkEhBasis> error = errorOf(action);
    return error != nullptr ? error->GetErrorNumber() : 0;
}

}  // namespace fuzz
