#pragma once

/// @file
/// How a text stands in a database: in which code page, and enclosed in apostrophes.

#include <cstddef>
#include <optional>
#include <string_view>

#include "nkdt/NkDtTypes.h"

namespace nkdt {

/// The directions between the program's ANSI text and the page of a database.
struct PageDirections {
    NkDtCodepageWandlung toAnsi;
    NkDtCodepageWandlung fromAnsi;
};

/// Which page a database's page is compared with first, after page 850. It matters where the system's OEM
/// page is 437: a numbered direction then works whatever the ANSI page is.
enum class PageOrder : unsigned char { oemBefore437, oemAfter437 };

/// The directions for page 850, 437 or the system's OEM page; none for any other page.
std::optional<PageDirections> directionsOf(UINT uCodePage, PageOrder order) noexcept;

/// The length of the text as an SQL literal: enclosed in apostrophes, each one inside doubled.
std::size_t literalLength(std::string_view text) noexcept;

/// Writes the literal, without a terminator, and returns its end.
LPTSTR writeLiteral(std::string_view text, LPTSTR out) noexcept;

}  // namespace nkdt
