#pragma once

#include "nkfw/Types.h"

/// The value record of NkDtBool.
class NkDtBool_Imp {
  public:
    constexpr NkDtBool_Imp() noexcept = default;
    explicit constexpr NkDtBool_Imp(BOOL f) noexcept : value(f) {}

    /// Reads the word for true or false, "1" or "0"; error 5 for any other text. The text is not null.
    static BOOL fromString(LPCTSTR pszText);
    /// The word of the program's language, else the German one.
    static LPCTSTR word(BOOL f) noexcept;

    BOOL value = FALSE;
};
