#pragma once

/// @file
/// Texts on their way between the library (code page 1252) and databases (UTF-8).

#include <string>
#include <string_view>

#include "nkfw/String.h"

namespace nkdt::odbc {

/// The text in UTF-8.
std::string utf8FromCp1252(std::string_view text);

/// A message or excerpt for a person in code page 1252: what the page does not have becomes the best fitting
/// character, what is no UTF-8 a "?".
CString messageFromUtf8(std::string_view utf8);

/// A name from a catalogue in code page 1252. Throws a `CDBException*` if the page does not have one of its
/// characters, since a changed name would name nothing.
CString nameFromUtf8(std::string_view utf8);

/// "U+4E2D": how a character is named to a person.
std::string codePointName(char32_t character);

/// A value for a message: in quotation marks, long ones cut.
std::string quotedExcerpt(std::string_view utf8);

}  // namespace nkdt::odbc
