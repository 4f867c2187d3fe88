#include <cstdint>
#include <cstring>

#include "nkcp/CodePage.h"
#include "nkfw/Cp1252.h"

namespace nkcp {

namespace {

constexpr char32_t malformed = 0xFFFD;
constexpr char32_t lastCharacter = 0x10FFFF;

constexpr bool isHighSurrogate(char32_t unit) noexcept {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool isLowSurrogate(char32_t unit) noexcept {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// A character and the source units it took; no units when the source is malformed.
struct Decoded {
    char32_t character = malformed;
    std::size_t units = 0;
};

constexpr Decoded decodeUtf8(const char* source, std::size_t available) noexcept {
    const auto lead = static_cast<unsigned char>(source[0]);
    if (lead < 0x80) return {lead, 1};
    const std::size_t units = lead < 0xC0 ? 0U : lead < 0xE0 ? 2U : lead < 0xF0 ? 3U : lead < 0xF8 ? 4U : 0U;
    if (units == 0 || units > available) return {};
    char32_t character = lead & (0x7FU >> units);
    for (std::size_t i = 1; i < units; ++i) {
        const auto trail = static_cast<unsigned char>(source[i]);
        if ((trail & 0xC0U) != 0x80U) return {};
        character = (character << 6U) | (trail & 0x3FU);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (character < smallest[units] || character > lastCharacter) return {};
    if (isHighSurrogate(character) || isLowSurrogate(character)) return {};
    return {character, units};
}

constexpr Decoded decodeUtf16(const char16_t* source, std::size_t available) noexcept {
    const char32_t unit = source[0];
    if (isLowSurrogate(unit)) return {};
    if (!isHighSurrogate(unit)) return {unit, 1};
    if (available < 2 || !isLowSurrogate(source[1])) return {};
    return {0x10000 + ((unit - 0xD800) << 10U) + (source[1] - 0xDC00U), 2};
}

// The byte for the character, or -1 when it is to be refused.
int byteFor(char32_t character, Unmappable option) noexcept {
    const int byte = nkfw::cp1252FromUnicode(character);
    return byte < 0 && option == Unmappable::bestFit ? bestFitByte(character) : byte;
}

// The bytes before the first one beyond ASCII.
std::size_t asciiRun(const char* text, std::size_t size) noexcept {
    std::size_t run = 0;
    for (std::uint64_t block; size - run >= sizeof block; run += sizeof block) {
        std::memcpy(&block, text + run, sizeof block);
        if ((block & 0x8080808080808080U) != 0) break;
    }
    while (run < size && static_cast<unsigned char>(text[run]) < 0x80)
        ++run;
    return run;
}

// Writes to @p out, which has room for @p size bytes and may be the source itself.
Conversion convertUtf8(const char* source, std::size_t size, char* out, std::size_t& written,
                       Unmappable option) noexcept {
    written = 0;
    for (std::size_t in = 0; in < size;) {
        const std::size_t run = asciiRun(source + in, size - in);
        std::memmove(out + written, source + in, run);
        in += run;
        written += run;
        if (in == size) break;
        const Decoded decoded = decodeUtf8(source + in, size - in);
        const int byte = decoded.units == 0 ? -1 : byteFor(decoded.character, option);
        if (byte < 0) return {false, in, decoded.character};
        out[written++] = static_cast<char>(static_cast<unsigned char>(byte));
        in += decoded.units;
    }
    return {};
}

Conversion convertUtf16(const char16_t* source, std::size_t size, char* out, std::size_t& written,
                        Unmappable option) noexcept {
    written = 0;
    for (std::size_t in = 0; in < size;) {
        const Decoded decoded = decodeUtf16(source + in, size - in);
        const int byte = decoded.units == 0 ? -1 : byteFor(decoded.character, option);
        if (byte < 0) return {false, in, decoded.character};
        out[written++] = static_cast<char>(static_cast<unsigned char>(byte));
        in += decoded.units;
    }
    return {};
}

}  // namespace

Conversion appendCp1252FromUtf8(std::string_view utf8, std::string& target, Unmappable option) {
    const std::size_t before = target.size();
    target.resize(before + utf8.size());
    std::size_t written = 0;
    const Conversion result = convertUtf8(utf8.data(), utf8.size(), target.data() + before, written, option);
    target.resize(before + written);
    return result;
}

Conversion appendCp1252FromUtf16(std::u16string_view utf16, std::string& target, Unmappable option) {
    const std::size_t before = target.size();
    target.resize(before + utf16.size());
    std::size_t written = 0;
    const Conversion result =
        convertUtf16(utf16.data(), utf16.size(), target.data() + before, written, option);
    target.resize(before + written);
    return result;
}

Conversion cp1252FromUtf8InPlace(char* text, std::size_t& length, Unmappable option) noexcept {
    return convertUtf8(text, length, text, length, option);
}

void appendUtf8FromCp1252(std::string_view text, std::string& target) {
    while (!text.empty()) {
        const std::size_t run = asciiRun(text.data(), text.size());
        target.append(text.data(), run);
        text.remove_prefix(run);
        if (text.empty()) break;
        const unsigned character = nkfw::unicodeFromCp1252(static_cast<unsigned char>(text.front()));
        if (character < 0x800) {
            target.push_back(static_cast<char>(0xC0U | (character >> 6U)));
        } else {
            target.push_back(static_cast<char>(0xE0U | (character >> 12U)));
            target.push_back(static_cast<char>(0x80U | ((character >> 6U) & 0x3FU)));
        }
        target.push_back(static_cast<char>(0x80U | (character & 0x3FU)));
        text.remove_prefix(1);
    }
}

void appendUtf16FromCp1252(std::string_view text, std::u16string& target) {
    const std::size_t before = target.size();
    target.resize(before + text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        target[before + i] = nkfw::unicodeFromCp1252(static_cast<unsigned char>(text[i]));
    }
}

}  // namespace nkcp
