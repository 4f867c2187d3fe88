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
    std::size_t length = 0;  // characters, the terminator not counted

    consteval Utf8Literal(const char (&text)[N]) {
        for (std::size_t i = 0; i < N; ++i) bytes[i] = text[i];
        for (std::size_t i = 0; i + 1 < N; ++i) {
            if ((static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U) ++length;
        }
    }
};

template <std::size_t Length>
struct Cp1252Bytes {
    char bytes[Length + 1]{};
};

template <Utf8Literal Text>
consteval auto toCp1252() {
    Cp1252Bytes<Text.length> result;
    std::size_t out = 0;
    for (std::size_t i = 0; Text.bytes[i] != '\0';) {
        const auto lead = static_cast<unsigned char>(Text.bytes[i++]);
        unsigned trailing = lead < 0x80U ? 0U : lead < 0xE0U ? 1U : lead < 0xF0U ? 2U : 3U;
        char32_t character = trailing == 0 ? lead : lead & (0x3FU >> trailing);
        for (; trailing > 0; --trailing) {
            character = (character << 6U) | (static_cast<unsigned char>(Text.bytes[i++]) & 0x3FU);
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
