#pragma once

/// @file
/// Texts at the program's borders: arguments, files and terminals speak UTF-8, the library code page 1252.

#include <cstddef>
#include <string>
#include <string_view>

#include "nkfw/String.h"
#include "nkfw/Types.h"

namespace nkdt::app {

/// A library text as UTF-8.
std::string utf8(std::string_view text);
/// A library text as one line of UTF-8 for a person: control characters become visible signs of one
/// character.
std::string visible(std::string_view text);
/// A message of a library or a database as one sentence of UTF-8: line ends become blanks.
std::string sentence(std::string_view text);
/// What came from outside as one line of UTF-8: control characters as visible() shows them, bytes that are no
/// UTF-8 as U+FFFD.
std::string printable(std::string_view bytes);
/// "1 row", "2 rows"
std::string counted(LONGLONG number, std::string_view thing);
/// UTF-8 as a library text. Throws a UsageError that begins with @p what if code page 1252 cannot hold it, or
/// if it is no UTF-8.
CString ansi(std::string_view utf8, std::string_view what);

/// The number of characters of a UTF-8 text.
std::size_t characterCount(std::string_view utf8) noexcept;
/// The first @p count characters of a UTF-8 text, the last of them "…" if that leaves something out.
std::string shortened(std::string_view utf8, std::size_t count);

/// A library text as UTF-8 without control characters: "\\", "\n", "\r", "\t" and "\xHH" stand for them and
/// for the backslash.
std::string escaped(std::string_view text);
/// What escaped() wrote, read back. Throws a DataError for anything that it does not write.
CString unescaped(std::string_view utf8);

/// TRUE if the texts differ at most in the case of ASCII letters.
bool equalIgnoringCase(std::string_view a, std::string_view b) noexcept;

}  // namespace nkdt::app
