// Texts and characters: length, valid characters, filling.

#include <algorithm>
#include <array>
#include <cstring>

#include "Literal1252.h"
#include "NkFormatError.h"
#include "nkfo/NkFormat.h"

using namespace nkfw::literals;
using nkfo::Origin;
using nkfo::TextSettings;

namespace {

constexpr LPCTSTR sourceFile = ".\\NkFormatText.cc";
constexpr Origin formatText = {sourceFile, "FormatText(string_view)"};
constexpr Origin parseText = {sourceFile, "ParseText(LPCTSTR)"};
constexpr Origin formatChar = {sourceFile, "FormatChar(TCHAR)"};
constexpr Origin parseChar = {sourceFile, "ParseChar(LPCTSTR)"};

constexpr ULONG longestText = 2147483646;  // what a CString holds

constexpr bool isLetter(unsigned byte) noexcept {
    if ((byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z')) return true;
    if (byte >= 0xC0) return byte != 0xD7 && byte != 0xF7;
    for (const unsigned letter :
         {0x83U, 0x8AU, 0x8CU, 0x8EU, 0x9AU, 0x9CU, 0x9EU, 0x9FU, 0xAAU, 0xB5U, 0xBAU}) {
        if (byte == letter) return true;
    }
    return false;
}

constexpr auto characterClass = [] {
    std::array<unsigned char, 256> classes{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        const ULONG found = byte >= '0' && byte <= '9' ? kulNkFoValidDigits
                            : isLetter(byte)           ? kulNkFoValidLetters
                            : byte == ' '              ? kulNkFoValidBlank
                                                       : kulNkFoValidOther;
        classes[byte] = static_cast<unsigned char>(found);
    }
    return classes;
}();

LPCTSTR className(ULONG valid) noexcept {
    switch (valid) {
        case kulNkFoValidDigits:
            return "Ziffer nicht erlaubt";
        case kulNkFoValidLetters:
            return "Buchstabe nicht erlaubt";
        case kulNkFoValidBlank:
            return "Leerzeichen nicht erlaubt";
        default:
            return "Zeichen nicht erlaubt";
    }
}

bool isValid(const TextSettings& settings, char c) noexcept {
    return (settings.valid & characterClass[static_cast<unsigned char>(c)]) != 0;
}

/// Refuses a character outside of the valid ones; @p part lies inside @p text.
void checkCharacters(const Origin& origin, NkFoFehler number, const TextSettings& settings,
                     std::string_view text, std::string_view part) {
    if (settings.valid == kulNkFoValidAll) return;
    for (const char& c : part) {
        if (isValid(settings, c)) continue;
        nkfo::refuse(origin, number, text, static_cast<std::size_t>(&c - text.data()) + 1,
                     className(characterClass[static_cast<unsigned char>(c)]));
    }
}

void checkLength(const Origin& origin, NkFoFehler number, const TextSettings& settings,
                 std::string_view text) {
    if (settings.length == 0 || text.size() <= settings.length) return;
    nkfo::Message reason;
    reason << "höchstens "_cp1252 << settings.length << " Zeichen";
    nkfo::refuse(origin, number, text, std::size_t{settings.length} + 1, reason.text());
}

CString filled(const Origin& origin, const TextSettings& settings, std::string_view text) {
    checkLength(origin, NkFoFehlerWert, settings, text);
    checkCharacters(origin, NkFoFehlerWert, settings, text, text);
    const std::size_t total = settings.side == FormatAuffuellenNicht ? text.size() : settings.length;
    if (total > longestText) nkfo::refuse(origin, NkFoFehlerWert, text, 0, "zu lang");
    if (total == text.size()) return CString(text);

    CString result;
    LPTSTR out = result.GetBuffer(static_cast<INT>(total));
    const std::size_t fills = total - text.size();
    const bool front = settings.side == FormatAuffuellenAmAnfang;
    std::memset(front ? out : out + text.size(), settings.fill, fills);
    text.copy(front ? out + fills : out, text.size());
    result.ReleaseBuffer(static_cast<INT>(total));
    return result;
}

/// The text without its fill characters.
std::string_view unfilled(const TextSettings& settings, std::string_view text) {
    if (settings.side == FormatAuffuellenAmAnfang) {
        const std::size_t first = text.find_first_not_of(settings.fill);
        return text.substr(std::min(first, text.size()));
    }
    if (settings.side == FormatAuffuellenAmEnde)
        return text.substr(0, text.find_last_not_of(settings.fill) + 1);
    return text;
}

std::string_view readText(const Origin& origin, const TextSettings& settings, LPCTSTR pszText) {
    if (pszText == nullptr) nkfo::raise(origin, NkFoFehlerText, "kein Text");
    const std::string_view text = pszText;
    checkLength(origin, NkFoFehlerText, settings, text);
    const std::string_view part = unfilled(settings, text);
    checkCharacters(origin, NkFoFehlerText, settings, text, part);
    return part;
}

}  // namespace

CString NkFormat::FormatText(std::string_view text) const {
    const TextSettings& settings = TextOf(formatText);
    return filled(formatText, settings, text.substr(0, text.find('\0')));
}

CString NkFormat::ParseText(LPCTSTR pszText) const {
    return CString(readText(parseText, TextOf(parseText), pszText));
}

CString NkFormat::FormatChar(TCHAR ch) const {
    const TextSettings& settings = TextOf(formatChar);
    return ch == '\0' ? CString() : filled(formatChar, settings, {&ch, 1});
}

TCHAR NkFormat::ParseChar(LPCTSTR pszText) const {
    const TextSettings& settings = TextOf(parseChar);
    const std::string_view text = readText(parseChar, settings, pszText);
    // All of fill, or nothing at all: a fill character that is not valid was no character of its own.
    if (text.empty()) return isValid(settings, *pszText) ? *pszText : '\0';
    if (text.size() > 1) nkfo::refuse(parseChar, NkFoFehlerText, pszText, 2, "nur ein Zeichen erlaubt");
    return text[0];
}
