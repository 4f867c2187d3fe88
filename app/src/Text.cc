#include "Text.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

#include "Error.h"
#include "nkcp/CodePage.h"

namespace nkdt::app {

namespace {

// Beside the ASCII control characters, the five bytes that code page 1252 leaves free: terminals take them
// for commands.
bool isControl(char ch) noexcept {
    const auto byte = static_cast<unsigned char>(ch);
    return byte < 0x20 || byte == 0x7F || byte == 0x81 || byte == 0x8D || byte == 0x8F || byte == 0x90 ||
           byte == 0x9D;
}

std::string pictureOf(char ch) {
    const auto byte = static_cast<unsigned char>(ch);
    if (byte < 0x20) return {'\xE2', '\x90', static_cast<char>(0x80 + byte)};  // U+2400 and following
    return byte == 0x7F ? "\xE2\x90\xA1" : "\xEF\xBF\xBD";                     // U+2421, U+FFFD
}

template <class Replacement>
std::string withoutControls(std::string_view text, Replacement&& replacement) {
    std::string result;
    while (!text.empty()) {
        const auto end = std::find_if(text.begin(), text.end(), isControl);
        nkcp::appendUtf8FromCp1252({text.data(), static_cast<std::size_t>(end - text.begin())}, result);
        if (end == text.end()) break;
        result += replacement(*end);
        text.remove_prefix(static_cast<std::size_t>(end - text.begin()) + 1);
    }
    return result;
}

// The length of the UTF-8 that the bytes begin with.
std::size_t utf8Length(std::string_view bytes) {
    std::string ignored;
    const nkcp::Conversion end = nkcp::appendCp1252FromUtf8(bytes, ignored, nkcp::Unmappable::bestFit);
    return end.complete ? bytes.size() : end.position;
}

bool startsCharacter(char ch) noexcept {
    return (static_cast<unsigned char>(ch) & 0xC0) != 0x80;
}

std::string escapeOf(char ch) {
    switch (ch) {
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        default: {
            static constexpr char digits[] = "0123456789ABCDEF";
            const auto byte = static_cast<unsigned char>(ch);
            return {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
        }
    }
}

// Takes an escape sequence, without its backslash, from the front.
char takeEscape(std::string_view& text) {
    const char kind = text.empty() ? '\0' : text.front();
    if (kind != '\0') text.remove_prefix(1);
    switch (kind) {
        case '\\':
            return '\\';
        case 'n':
            return '\n';
        case 'r':
            return '\r';
        case 't':
            return '\t';
        case 'x': {
            unsigned byte = 0;
            const std::string_view digits = text.substr(0, 2);
            const auto end = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
            if (digits.size() == 2 && end.ptr == digits.data() + 2 && byte != 0) {
                text.remove_prefix(2);
                return static_cast<char>(byte);
            }
            break;
        }
        default:
            break;
    }
    throw DataError("a backslash is followed by none of \\, n, r, t and x with two digits");
}

}  // namespace

std::string utf8(std::string_view text) {
    std::string result;
    nkcp::appendUtf8FromCp1252(text, result);
    return result;
}

std::string visible(std::string_view text) {
    return withoutControls(text, pictureOf);
}

std::string sentence(std::string_view text) {
    while (!text.empty() && isControl(text.back()))
        text.remove_suffix(1);
    return withoutControls(text, [](char) { return " "; });
}

std::string printable(std::string_view bytes) {
    std::string text;
    while (!bytes.empty()) {
        const std::size_t length = utf8Length(bytes);
        for (const char ch : bytes.substr(0, length)) {
            const bool control = static_cast<unsigned char>(ch) < 0x20 || ch == 0x7F;
            text += control ? pictureOf(ch) : std::string(1, ch);
        }
        if (length == bytes.size()) break;
        text += "\xEF\xBF\xBD";
        bytes.remove_prefix(length + 1);
    }
    return text;
}

std::string counted(LONGLONG number, std::string_view thing) {
    return std::to_string(number) + " " + std::string(thing) + (number == 1 ? "" : "s");
}

CString ansi(std::string_view utf8, std::string_view what) {
    std::string text;
    const bool complete = nkcp::appendCp1252FromUtf8(utf8, text).complete;
    if (!complete || text.find('\0') != std::string::npos) {
        throw UsageError(std::string(what) + " \"" + std::string(utf8) + "\" " +
                         (utf8Length(utf8) == utf8.size()
                              ? "has a character that code page 1252 does not have"
                              : "is no UTF-8"));
    }
    return CString(std::string_view(text));
}

std::size_t characterCount(std::string_view utf8) noexcept {
    return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), startsCharacter));
}

std::string shortened(std::string_view utf8, std::size_t count) {
    if (characterCount(utf8) <= count) return std::string(utf8);
    std::size_t bytes = 0;
    for (std::size_t kept = 0; kept < count; ++bytes) {
        if (startsCharacter(utf8[bytes]) && ++kept == count) break;
    }
    return std::string(utf8.substr(0, bytes)) + "…";
}

std::string escaped(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const auto end = std::find(text.begin(), text.end(), '\\');
        const auto length = static_cast<std::size_t>(end - text.begin());
        result += withoutControls(text.substr(0, length), escapeOf);
        if (end == text.end()) break;
        result += "\\\\";
        text.remove_prefix(length + 1);
    }
    return result;
}

CString unescaped(std::string_view utf8) {
    std::string text;
    while (!utf8.empty()) {
        const std::size_t end = utf8.find('\\');
        const std::size_t start = text.size();
        if (!nkcp::appendCp1252FromUtf8(utf8.substr(0, end), text).complete) {
            throw DataError("the text has a character that code page 1252 does not have, or is no UTF-8");
        }
        if (std::any_of(text.begin() + static_cast<std::ptrdiff_t>(start), text.end(), isControl)) {
            throw DataError("the text has a control character that is not escaped");
        }
        if (end == std::string_view::npos) break;
        utf8.remove_prefix(end + 1);
        text += takeEscape(utf8);
    }
    return CString(std::string_view(text));
}

bool equalIgnoringCase(std::string_view a, std::string_view b) noexcept {
    const auto lower = [](char ch) {
        return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch - 'A' + 'a') : ch;
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return lower(x) == lower(y); });
}

}  // namespace nkdt::app
