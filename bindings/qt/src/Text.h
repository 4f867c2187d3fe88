#pragma once

/// @file
/// Texts on their way between the library (code page 1252) and the screen (Unicode).

#include <QChar>
#include <QString>
#include <optional>
#include <string_view>

#include "nkfw/Types.h"

namespace nkdt::qt {

/// The text on the screen.
QString fromCp1252(std::string_view text);
/// The same of a zero-terminated text; a null one is empty.
QString fromCp1252(LPCTSTR pszText);

/// The byte for a character that a control's text may have, or -1: code page 1252 has all but NUL, which
/// would end the text.
int byteOf(QChar character) noexcept;
/// The first character that has no byte; half of a pair is joined with the other half.
std::optional<char32_t> firstWithoutByte(const QString& text) noexcept;

/// "U+0416".
QString codePointName(char32_t character);
/// The character for a person: itself, if it can be seen alone, and its number.
QString describeCharacter(char32_t character);
/// Why a text with such a character is refused.
QString cannotBeStored(const QString& character);

}  // namespace nkdt::qt
