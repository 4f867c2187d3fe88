#pragma once

/// @file
/// Literals in code page 1252: sources are UTF-8, the program holds one byte a character.
/// @code
/// constexpr const char* text = "Ungültiger Stringindex"_cp1252;
/// @endcode
/// A character that the page does not have does not compile.

#include <cstddef>

#include "nkfw/Cp1252.h"

namespace nkfw::literals {

namespace detail {

template <std::size_t N>
struct Utf8Literal {
    char bytes[N]{};

    consteval Utf8Literal(const char (&text)[N]) {
        for (std::size_t i = 0; i < N; ++i)
            bytes[i] = text[i];
    }

    static constexpr std::size_t size() { return N - 1; }  // the terminator not counted
    constexpr unsigned char operator[](std::size_t i) const { return static_cast<unsigned char>(bytes[i]); }
};

constexpr bool isTrailing(unsigned char byte) {
    return (byte & 0xC0U) == 0x80U;
}

// Bytes that follow a leading one.
constexpr unsigned trailingBytes(unsigned char lead) {
    if (lead < 0x80U) return 0;
    if (isTrailing(lead) || lead >= 0xF8U) throw "a literal that is not UTF-8";
    return lead < 0xE0U ? 1U : lead < 0xF0U ? 2U : 3U;
}

template <Utf8Literal Text>
consteval std::size_t characters() {
    std::size_t count = 0;
    for (std::size_t i = 0; i < Text.size(); ++i)
        count += isTrailing(Text[i]) ? 0U : 1U;
    return count;
}

template <std::size_t Length>
struct Cp1252Bytes {
    char bytes[Length + 1]{};
};

template <Utf8Literal Text>
consteval auto toCp1252() {
    Cp1252Bytes<characters<Text>()> result;
    std::size_t out = 0;
    for (std::size_t i = 0; i < Text.size();) {
        const unsigned char lead = Text[i++];
        const unsigned trailing = trailingBytes(lead);
        char32_t character = trailing == 0 ? lead : lead & (0x3FU >> trailing);
        for (unsigned n = 0; n < trailing; ++n) {
            if (!isTrailing(Text[i])) throw "a literal that is not UTF-8";
            character = (character << 6U) | (Text[i++] & 0x3FU);
        }
        const int byte = cp1252FromUnicode(character);
        if (byte < 0) throw "a character outside of code page 1252";
        result.bytes[out++] = static_cast<char>(static_cast<unsigned char>(byte));
    }
    return result;
}

template <Utf8Literal Text>
inline constexpr auto cp1252Literal = toCp1252<Text>();

}  // namespace detail

template <detail::Utf8Literal Text>
consteval const char* operator""_cp1252() {
    return detail::cp1252Literal<Text>.bytes;
}

}  // namespace nkfw::literals
