#pragma once

/// @file
/// Upper and lower case as texts and characters know it: the ASCII letters and the three umlauts of code page
/// 1252. Every other byte stays as it is, "ß" and the accented letters included.

#include <cstddef>
#include <string_view>

#include "nkfw/Types.h"

namespace nkdt {

/// A small letter and its capital differ in this bit, ASCII letters and umlauts alike.
inline constexpr unsigned smallLetterBit = 0x20;

constexpr bool isSmallLetter(TCHAR ch) noexcept {
    return (ch >= 'a' && ch <= 'z') || ch == '\xE4' || ch == '\xF6' || ch == '\xFC';
}

constexpr bool isCapital(TCHAR ch) noexcept {
    return (ch >= 'A' && ch <= 'Z') || ch == '\xC4' || ch == '\xD6' || ch == '\xDC';
}

constexpr TCHAR toUpper(TCHAR ch) noexcept {
    return isSmallLetter(ch) ? static_cast<TCHAR>(static_cast<unsigned char>(ch) & ~smallLetterBit) : ch;
}

constexpr TCHAR toLower(TCHAR ch) noexcept {
    return isCapital(ch) ? static_cast<TCHAR>(static_cast<unsigned char>(ch) | smallLetterBit) : ch;
}

/// Maps a text in place. TRUE if one of its characters had to be looked at: is neither a capital (a small
/// letter) already nor "ß".
bool mapToUpper(LPTSTR text, std::size_t length) noexcept;
bool mapToLower(LPTSTR text, std::size_t length) noexcept;

/// TRUE if the texts differ in the case of their letters at most.
bool equalWithoutCase(std::string_view a, std::string_view b) noexcept;

}  // namespace nkdt
