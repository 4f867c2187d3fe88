// Truth values: digits, words, letters or a cross.

#include "NkFormatError.h"
#include "NkFormatReader.h"
#include "nkfo/NkFormat.h"

using nkfo::BoolSettings;
using nkfo::Origin;

namespace {

constexpr LPCTSTR sourceFile = ".\\NkFormatBool.cc";
constexpr Origin formatBool = {sourceFile, "FormatBool(BOOL)"};
constexpr Origin parseBool = {sourceFile, "ParseBool(LPCTSTR)"};

/// What stands for the value, without blanks.
std::string_view shown(const BoolSettings& settings, bool value) {
    switch (settings.modus) {
        case FormatModusZiffern:
            return value ? "1" : "0";
        case FormatModusWorte:
            return settings.words[value];
        case FormatModusBuchstaben:
            return std::string_view(settings.words[value]).substr(0, 1);
        case FormatModusKreuz:
            break;
    }
    return value ? "X" : "";
}

}  // namespace

CString NkFormat::FormatBool(BOOL fValue) const {
    const BoolSettings& settings = BoolOf(formatBool);
    const std::string_view text = shown(settings, fValue != FALSE);
    return CString(text.empty() ? std::string_view(" ") : text);
}

BOOL NkFormat::ParseBool(LPCTSTR pszText) const {
    const BoolSettings& settings = BoolOf(parseBool);
    const nkfo::TextReader reader(parseBool, pszText);
    // Under the cross false is a blank, which is nothing but blanks at the ends; an empty text is still
    // refused.
    if (*pszText != '\0') {
        for (const bool value : {true, false}) {
            if (nkfo::equalWithoutCase(reader.rest(), shown(settings, value))) return value ? TRUE : FALSE;
        }
    }
    reader.refuse("kein Wahrheitswert dieses Formats");
}
