#include "Text.h"

#include <array>
#include <charconv>

#include "Diagnostics.h"
#include "Literal1252.h"
#include "nkcp/CodePage.h"

namespace nkdt::odbc {

using namespace nkfw::literals;

namespace {

constexpr std::size_t excerptLength = 40;

}  // namespace

std::string utf8FromCp1252(std::string_view text) {
    std::string utf8;
    nkcp::appendUtf8FromCp1252(text, utf8);
    return utf8;
}

CString messageFromUtf8(std::string_view utf8) {
    std::string text;
    while (true) {
        const nkcp::Conversion end = nkcp::appendCp1252FromUtf8(utf8, text, nkcp::Unmappable::bestFit);
        if (end.complete) break;
        text += '?';
        utf8.remove_prefix(end.position + 1);
    }
    return CString(std::string_view(text));
}

CString nameFromUtf8(std::string_view utf8) {
    std::string text;
    const nkcp::Conversion end = nkcp::appendCp1252FromUtf8(utf8, text);
    if (!end.complete) {
        fail("22021", "Name " + quotedExcerpt(utf8) + ": Zeichen " + codePointName(end.character) +
                          " ist in Codepage 1252 nicht darstellbar");
    }
    return CString(std::string_view(text));
}

std::string codePointName(char32_t character) {
    std::array<char, 8> digits{};
    const auto end =
        std::to_chars(digits.begin(), digits.end(), static_cast<std::uint32_t>(character), 16).ptr;
    std::string name;
    for (auto digit = digits.begin(); digit != end; ++digit) {
        name += *digit >= 'a' ? static_cast<char>(*digit - 'a' + 'A') : *digit;
    }
    if (name.size() < 4) name.insert(0, 4 - name.size(), '0');
    return "U+" + name;
}

std::string quotedExcerpt(std::string_view utf8) {
    if (utf8.size() <= excerptLength) return '"' + std::string(utf8) + '"';
    std::size_t length = excerptLength;
    while (length > 0 && (static_cast<unsigned char>(utf8[length]) & 0xC0U) == 0x80U)
        --length;
    return '"' + std::string(utf8.substr(0, length)) + "...\"";
}

}  // namespace nkdt::odbc
