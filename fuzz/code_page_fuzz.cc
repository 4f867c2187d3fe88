/// @file
/// UTF-8 and UTF-16 to code page 1252 and back, held against a second decoder and a table of its own.

#include <optional>
#include <string>
#include <string_view>

#include "FuzzSupport.h"
#include "nkcp/CodePage.h"

namespace {

using fuzz::require;
using nkcp::Conversion;
using nkcp::Unmappable;

/// The characters of the bytes 0x80 to 0x9F; the five bytes without one are the control characters of their
/// numbers.
constexpr char32_t upperHalf[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                    0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

std::optional<char> byteOf(char32_t character) {
    for (unsigned byte = 0; byte < 256; ++byte) {
        const char32_t held = byte >= 0x80 && byte < 0xA0 ? upperHalf[byte - 0x80] : byte;
        if (held == character) return static_cast<char>(byte);
    }
    return std::nullopt;
}

/// A row of the table of well-formed sequences: the bounds of the first two bytes and the length.
struct Row {
    unsigned char firstLow, firstHigh, secondLow, secondHigh;
    std::size_t length;
};
constexpr Row wellFormed[] = {
    {0x00, 0x7F, 0x00, 0x00, 1}, {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3},
    {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3},
    {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4}};

/// The length of the sequence that the text begins with, 0 if it is malformed.
std::size_t sequenceLength(std::string_view text) {
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    for (const Row& row : wellFormed) {
        if (at(0) < row.firstLow || at(0) > row.firstHigh) continue;
        if (row.length == 1) return 1;
        if (text.size() < row.length || at(1) < row.secondLow || at(1) > row.secondHigh) return 0;
        for (std::size_t i = 2; i < row.length; ++i) {
            if (at(i) < 0x80 || at(i) > 0xBF) return 0;
        }
        return row.length;
    }
    return 0;
}

char32_t characterOf(std::string_view sequence) {
    constexpr unsigned leadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t character = static_cast<unsigned char>(sequence[0]) & leadBits[sequence.size()];
    for (const char ch : sequence.substr(1))
        character = character * 64 + (static_cast<unsigned char>(ch) - 0x80U);
    return character;
}

struct Expected {
    std::string text;
    Conversion end;
    bool exact = true;  // no character was replaced
};

Expected expect(std::string_view utf8, Unmappable option) {
    Expected result;
    for (std::size_t i = 0; i < utf8.size();) {
        const std::size_t length = sequenceLength(utf8.substr(i));
        if (length == 0) {
            result.end = {false, i, 0xFFFD};
            return result;
        }
        const char32_t character = characterOf(utf8.substr(i, length));
        const std::optional<char> byte = byteOf(character);
        if (!byte && option == Unmappable::refuse) {
            result.end = {false, i, character};
            return result;
        }
        result.exact = result.exact && byte.has_value();
        result.text += byte ? *byte : static_cast<char>(nkcp::bestFitByte(character));
        i += length;
    }
    return result;
}

bool equal(const Conversion& a, const Conversion& b) {
    return a.complete == b.complete && a.position == b.position && a.character == b.character;
}

void checkFromUtf8(std::string_view utf8, Unmappable option) {
    const Expected expected = expect(utf8, option);

    std::string appended = "vor ";
    const Conversion end = nkcp::appendCp1252FromUtf8(utf8, appended, option);
    require(equal(end, expected.end), "UTF-8 is refused where and for what it has to be");
    require(appended == "vor " + expected.text, "UTF-8 becomes the bytes of its characters");

    std::string inPlace(utf8);
    std::size_t length = inPlace.size();
    const Conversion endInPlace = nkcp::cp1252FromUtf8InPlace(inPlace.data(), length, option);
    require(equal(endInPlace, expected.end), "the conversion in place is refused in the same way");
    require(length <= inPlace.size() && inPlace.compare(0, length, expected.text) == 0 &&
                length == expected.text.size(),
            "the conversion in place gives the same bytes");

    if (!expected.end.complete || !expected.exact) return;
    std::string back;
    nkcp::appendUtf8FromCp1252(appended.substr(4), back);
    require(back == utf8, "what code page 1252 holds comes back as the same UTF-8");
}

/// Any bytes are a text of code page 1252.
void checkThereAndBack(std::string_view bytes) {
    std::string utf8;
    nkcp::appendUtf8FromCp1252(bytes, utf8);
    std::string fromUtf8;
    require(nkcp::appendCp1252FromUtf8(utf8, fromUtf8).complete && fromUtf8 == bytes,
            "every byte comes back through UTF-8");

    std::u16string utf16;
    nkcp::appendUtf16FromCp1252(bytes, utf16);
    require(utf16.size() == bytes.size(), "every byte is one unit of UTF-16");
    std::string fromUtf16;
    require(nkcp::appendCp1252FromUtf16(utf16, fromUtf16).complete && fromUtf16 == bytes,
            "every byte comes back through UTF-16");
}

/// Pairs of bytes are units of UTF-16.
void checkFromUtf16(std::string_view bytes) {
    std::u16string units;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        units += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) * 256U +
                                       static_cast<unsigned char>(bytes[i + 1]));
    std::string expected;
    Conversion end;
    for (std::size_t i = 0; i < units.size(); ++i) {
        const char32_t unit = units[i];
        const bool surrogate = unit >= 0xD800 && unit <= 0xDFFF;
        if (const std::optional<char> byte = byteOf(unit); byte && !surrogate) {
            expected += *byte;
            continue;
        }
        const bool pair =
            unit < 0xDC00 && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] <= 0xDFFF;
        const char32_t character = !surrogate ? unit
                                   : pair     ? (unit - 0xD800) * 0x400 + (units[i + 1] - 0xDC00U) + 0x10000
                                              : 0xFFFD;
        end = {false, i, character};
        break;
    }
    std::string text;
    require(equal(nkcp::appendCp1252FromUtf16(units, text), end),
            "UTF-16 is refused where and for what it has to be");
    require(text == expected, "UTF-16 becomes the bytes of its characters");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::Input(data, size).bytes();
    checkFromUtf8(bytes, Unmappable::refuse);
    checkFromUtf8(bytes, Unmappable::bestFit);
    checkThereAndBack(bytes);
    checkFromUtf16(bytes);
    return 0;
}
