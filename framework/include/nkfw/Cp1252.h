#pragma once

/// @file
/// Code page 1252 and Unicode, character by character. The five bytes that the page leaves open (0x81, 0x8D,
/// 0x8F, 0x90, 0x9D) stand for the control characters of the same number, so every byte has a character and
/// comes back.

#include <array>

namespace nkfw {

/// The characters of the bytes 0x80 to 0x9F; every other byte is the character of the same number.
inline constexpr std::array<char16_t, 32> cp1252Upper = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

/// The character that @p byte stands for.
constexpr char16_t unicodeFromCp1252(unsigned char byte) noexcept {
    return byte >= 0x80 && byte <= 0x9F ? cp1252Upper[byte - 0x80U] : static_cast<char16_t>(byte);
}

/// The byte that stands for @p character, or -1 when the page does not have it.
constexpr int cp1252FromUnicode(char32_t character) noexcept {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) return static_cast<int>(character);
    for (unsigned i = 0; i < cp1252Upper.size(); ++i) {
        if (cp1252Upper[i] == character) return static_cast<int>(0x80 + i);
    }
    return -1;
}

}  // namespace nkfw
