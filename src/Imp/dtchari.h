#pragma once

#include <string_view>

#include "nkfw/Types.h"

/// The value record of NkDtChar.
class NkDtChar_Imp {
  public:
    constexpr NkDtChar_Imp() noexcept = default;
    explicit constexpr NkDtChar_Imp(TCHAR ch) noexcept : value(ch) {}

    /// The text of a character: none for NUL. A view of @p ch.
    static constexpr std::string_view text(const TCHAR& ch) noexcept {
        return {&ch, ch == '\0' ? std::size_t{0} : std::size_t{1}};
    }

    TCHAR value = '\0';
};
