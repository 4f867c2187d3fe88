#pragma once

/// @file
/// A text as a `std::string_view`, without a copy.
///
/// @code
/// const NkDtString strName("Müller");
/// const std::string_view name = NkDtTextView(strName);
/// @endcode

#include <cstddef>
#include <string_view>

#include "nkdt/NkDtString.h"

/// The whole text by its length, NUL characters inside it included; "" for an undefined text. Raises nothing.
/// The view is valid until the text changes, is moved from or ends.
inline std::string_view NkDtTextView(const NkDtString& str) {
    if (!str.IsDefined()) return {};
    return {static_cast<LPCTSTR>(str), static_cast<std::size_t>(str.GetLength())};
}
/// A view of a temporary would outlive it.
std::string_view NkDtTextView(const NkDtString&&) = delete;
