#pragma once

/// @file
/// The two-digit numbers of dates and times of day: eight characters are read at once, two are written from a
/// table. The first character is the lowest byte, as it lies in the memory of a little-endian machine; on any
/// other, nothing matches and the caller reads the characters one by one.

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace nkdt {

/// The numbers of two digits each in eight characters.
struct DateDigits {
    bool match = false;  ///< whether the characters were of that form
    std::uint64_t pairs = 0;

    /// The number of the digits at a place and the one behind it.
    constexpr int at(unsigned place) const noexcept { return static_cast<int>(pairs >> 8 * place & 0xFFU); }
};

/// Eight characters: "0" for any digit, and anything else for itself.
struct DatePattern {
    consteval DatePattern(const char (&pattern)[9]) {  // NOLINT(google-explicit-constructor): a literal
        for (unsigned i = 0; i < 8; ++i) {
            characters |= std::uint64_t{static_cast<unsigned char>(pattern[i])} << 8 * i;
            room |= std::uint64_t{pattern[i] == '0' ? 0x76U : 0x7FU} << 8 * i;
        }
    }

    std::uint64_t characters = 0;
    std::uint64_t room = 0;  ///< what can be added before a byte's top bit is set
};

/// @param text eight characters
inline DateDigits readDateDigits(const char* text, DatePattern pattern) noexcept {
    if constexpr (std::endian::native != std::endian::little) return {};
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, text, sizeof bytes);
    bytes ^= pattern.characters;  // digits become their numbers, everything else 0
    const bool match = (((bytes + pattern.room) | bytes) & 0x8080808080808080U) == 0;
    return {match, bytes * 10 + (bytes >> 8U)};
}

/// "00" to "99", one behind the other.
inline constexpr std::array<char, 200> twoDigitTexts = [] {
    std::array<char, 200> texts{};
    for (std::size_t i = 0; i < 100; ++i) {
        texts[2 * i] = static_cast<char>('0' + i / 10);
        texts[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return texts;
}();

/// @param number 0 to 99
inline void writeTwoDigits(char* out, unsigned number) noexcept {
    std::memcpy(out, &twoDigitTexts[2 * std::size_t{number}], 2);
}

}  // namespace nkdt
