// Durations and times of day: hours, and the part below the hour in minutes or hundredths.

#include <algorithm>
#include <charconv>
#include <cstring>

#include "Literal1252.h"
#include "NkFormatError.h"
#include "NkFormatReader.h"
#include "nkfo/NkFormat.h"

using namespace nkfw::literals;
using nkfo::Origin;
using nkfo::TextReader;
using nkfo::TimeSettings;

namespace {

constexpr LPCTSTR sourceFile = ".\\NkFormatTime.cc";
constexpr Origin formatTime = {sourceFile, "FormatTime(LONG,LONG)"};
constexpr Origin parseTime = {sourceFile, "ParseTime(LPCTSTR,LONG&,LONG&)"};

constexpr ULONG lastHourOfDay = 23;

constexpr ULONG magnitude(LONG n) noexcept {
    return n < 0 ? 0U - static_cast<ULONG>(n) : static_cast<ULONG>(n);
}

[[gnu::cold, noreturn]] void refuseValue(LONG hours, LONG sub, std::string_view reason) {
    nkfo::Message value;
    value << hours << " Stunden und " << sub;
    nkfo::refuse(formatTime, NkFoFehlerWert, value.text(), 0, reason);
}

ULONG subHourLimit(const TimeSettings& settings) noexcept {
    return settings.display == FormatZeitDarstellungHundertstel ? 100 : 60;
}

/// Writes what stands behind the hours and returns its length.
std::size_t writeSubHour(FormatZeitDarstellung display, ULONG sub, char (&out)[8]) noexcept {
    if (display == FormatZeitDarstellungStunden) return 0;
    out[0] = display == FormatZeitDarstellungHundertstel ? ',' : ':';
    out[1] = static_cast<char>('0' + sub / 10);
    out[2] = static_cast<char>('0' + sub % 10);
    if (display != FormatZeitDarstellungSekunden) return 3;
    std::memcpy(out + 3, ":00", 3);
    return 6;
}

/// Reads what may stand behind the hours: the number of minutes or hundredths.
LONG readSubHour(TextReader& reader, FormatZeitDarstellung display) {
    if (reader.atEnd() || display == FormatZeitDarstellungStunden) return 0;
    const bool hundredths = display == FormatZeitDarstellungHundertstel;
    reader.expect(hundredths ? ',' : ':');
    const char* const start = reader.pos();
    const int sub = reader.expectTwoDigits();
    if (!hundredths && sub > 59) reader.refuseAt(start, "Minuten nicht 00 bis 59");
    if (display == FormatZeitDarstellungSekunden && reader.take(':')) {
        const char* const seconds = reader.pos();
        if (reader.expectTwoDigits() != 0) reader.refuseAt(seconds, "nur 00 Sekunden erlaubt");
    }
    return sub;
}

/// The hours' magnitude, which fits into a LONG with the sign.
ULONG readHours(TextReader& reader, const TimeSettings& settings, std::size_t fills, bool negative) {
    const char* const start = reader.pos();
    const std::string_view digits = reader.takeDigits();
    if (digits.empty()) reader.refuse("Ziffer erwartet");
    if (fills + digits.size() > settings.most) {
        nkfo::Message reason;
        reason << "höchstens "_cp1252 << settings.most << " Stellen der Stunden";
        reader.refuseAt(start, reason.text());
    }
    ULONG hours = 0;
    const bool fits = std::from_chars(digits.data(), digits.data() + digits.size(), hours).ec == std::errc();
    const ULONG limit = 2147483647U + (negative ? 1U : 0U);
    if (!fits || hours > limit) reader.refuseAt(start, "außerhalb des Wertebereichs"_cp1252);
    return hours;
}

}  // namespace

CString NkFormat::FormatTime(LONG nHours, LONG nSubHour) const {
    const TimeSettings& settings = TimeOf(formatTime);
    const ULONG hours = magnitude(nHours);
    const ULONG sub = magnitude(nSubHour);
    if (sub >= subHourLimit(settings)) refuseValue(nHours, nSubHour, "Teil der Stunde zu groß"_cp1252);

    const bool zero = hours == 0 && (sub == 0 || settings.display == FormatZeitDarstellungStunden);
    const bool negative = !zero && (nHours < 0 || nSubHour < 0);
    const bool ofDay = settings.art == FormatZeitArtUhrzeit;
    if (negative && (ofDay || settings.sign.place == FormatVorzeichenOhne)) {
        refuseValue(nHours, nSubHour, "negativer Wert nicht erlaubt");
    }
    if (ofDay && hours > lastHourOfDay) refuseValue(nHours, nSubHour, "Stunde nicht 0 bis 23");

    char digits[12];
    const auto count =
        static_cast<std::size_t>(std::to_chars(digits, digits + sizeof digits, hours).ptr - digits);
    if (count > settings.most) refuseValue(nHours, nSubHour, "zu viele Stellen der Stunden");
    char behind[8];
    const std::size_t behindCount = writeSubHour(settings.display, sub, behind);
    const char sign = nkfo::signOf(settings.sign, negative, zero);
    const std::size_t fills = settings.fewest > count ? settings.fewest - count : 0;

    const std::size_t total = fills + count + behindCount + (sign != '\0' ? 1 : 0);
    if (total > 2147483646) refuseValue(nHours, nSubHour, "zu lang");
    CString result;
    char* out = result.GetBuffer(static_cast<INT>(total));
    const bool signInFront = sign != '\0' && settings.sign.place == FormatVorzeichenVorn;
    const auto writeFill = [&] { out = std::fill_n(out, fills, settings.fill); };
    if (settings.fill != '0') writeFill();
    if (signInFront) *out++ = sign;
    if (settings.fill == '0') writeFill();
    out = std::copy_n(digits, count, out);
    out = std::copy_n(behind, behindCount, out);
    if (sign != '\0' && !signInFront) *out = sign;
    result.ReleaseBuffer(static_cast<INT>(total));
    return result;
}

void NkFormat::ParseTime(LPCTSTR pszText, LONG& rnHours, LONG& rnSubHour) const {
    const TimeSettings& settings = TimeOf(parseTime);
    TextReader reader(parseTime, pszText);
    const char* const start = reader.pos();
    const bool filled = settings.fewest > 0 && settings.fill != '0';
    const std::size_t fills = filled ? reader.takeFill(settings.fill) : 0;
    char sign = reader.takeSign(settings.sign);
    if (sign == '\0') sign = reader.dropSign(settings.sign);
    const bool negative = sign == '-';

    const ULONG hours = readHours(reader, settings, fills, negative);
    const LONG sub = readSubHour(reader, settings.display);
    reader.expectEnd();
    if (settings.art == FormatZeitArtUhrzeit) {
        if (hours > lastHourOfDay) reader.refuseAt(start, "Stunde nicht 0 bis 23");
        if (negative && (hours != 0 || sub != 0)) reader.refuseAt(start, "negativer Wert nicht erlaubt");
    }
    rnHours = static_cast<LONG>(negative ? 0U - hours : hours);
    rnSubHour = negative ? -sub : sub;
}
