/// @file
/// Texts of durations. Plain texts are held against a second reading that looks at digits as text, external
/// ones against the C library's own scanning, and user-interface texts against what their format reads.

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>

#include "FuzzSupport.h"
#include "nkdt/NkDt.h"

namespace {

using fuzz::require;
using TimeMode = NkDtTime::TimeMode;

constexpr TimeMode kTimeModes[] = {NkDtTime::Hundredths, NkDtTime::Minutes, NkDtTime::HoursOnly,
                                   NkDtTime::CurrentMode};

LONG ticksOf(const NkDtTime& t) {
    CRecordset rs;
    LONG ticks = 0;
    t.ConvToRecordSet(rs, ticks);
    return ticks;
}

/// The number of the first error, 0 for none; every refusal is seen as error 1.
template <class Action>
ULONG causeOf(Action&& action) {
    const auto error = fuzz::errorOf(action);
    if (error == nullptr) return 0;
    require(error->GetErrorNumber() == NkDtErrFolgefehler, "a refusal is seen as error 1");
    return error->GetCauseNumber();
}

/// What a text is to become.
struct Expected {
    ULONG cause = 0;
    long ticks = 0;
    TimeMode mode = NkDtTime::Minutes;
};

bool areDigits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// --- Plain texts ----------------------------------------------------------------------------------

/// Hours with a sign; behind seven digits they are too many in any case.
Expected readHours(std::string_view text) {
    const bool isNegative = !text.empty() && text.front() == '-';
    if (!text.empty() && (isNegative || text.front() == '+')) text.remove_prefix(1);
    if (!areDigits(text)) return {NkDtErrInitialwert};
    text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
    const long hours = text.empty() ? 0 : text.size() > 7 ? 9'999'999 : std::stol(std::string(text));
    if (hours > 1'789'568) return {NkDtErrWertebereich};
    return {0, isNegative ? -hours * 1200 : hours * 1200};
}

Expected readPlain(const std::string& text, TimeMode mode) {
    if (text.find(',') == std::string::npos && text.find(':') == std::string::npos) {
        Expected whole = readHours(text);
        whole.mode = mode == NkDtTime::CurrentMode ? NkDtTime::HoursOnly : mode;
        return whole;
    }
    if (text.size() < 4) return {NkDtErrFormatVerletzt};
    const char separator = text[text.size() - 3];
    if (mode == NkDtTime::CurrentMode && separator == ':') mode = NkDtTime::Minutes;
    if (mode == NkDtTime::CurrentMode && separator == ',') mode = NkDtTime::Hundredths;
    const bool agrees = (mode == NkDtTime::Minutes && separator == ':') ||
                        (mode == NkDtTime::Hundredths && separator == ',') || mode == NkDtTime::HoursOnly;
    if (!agrees) return {NkDtErrFormatVerletzt};
    const std::string part = text.substr(text.size() - 2);
    if (!areDigits(part)) return {NkDtErrInitialwert};
    if (mode == NkDtTime::Minutes && part >= "60") return {NkDtErrWertebereich};
    Expected read = readHours(text.substr(0, text.size() - 3));
    if (read.cause != 0) return read;
    const long unit = mode == NkDtTime::Minutes ? 20 : mode == NkDtTime::Hundredths ? 12 : 0;
    read.ticks += (text.front() == '-' ? -unit : unit) * std::stol(part);
    read.mode = mode;
    return read;
}

void checkPlain(const std::string& text, TimeMode mode) {
    const Expected expected = readPlain(text, mode);
    NkDtTime t(1, 30, NkDtTime::Hundredths);
    const ULONG cause = causeOf([&] { t.SetValue(text.c_str(), mode); });
    require(cause == expected.cause, "a plain text is refused for its reason");
    if (cause != 0) {
        require(ticksOf(t) == 1560 && t.GetMode() == NkDtTime::Hundredths && !t.IsModified(),
                "a refused text changes nothing");
    } else {
        require(ticksOf(t) == expected.ticks && t.GetMode() == expected.mode, "a text becomes its length");
        char written[12];
        NkDtTime back;
        back.SetValue(t.GetValue(written, sizeof written));
        require(back == t && back.GetMode() == t.GetMode(), "what is written reads back");
    }
    const NkDtString value(text.c_str());
    ULONG built = causeOf([&] {
        const NkDtTime made(text.c_str(), mode);
        require(ticksOf(made) == expected.ticks, "a constructor reads the same length");
    });
    require(built == expected.cause, "a constructor refuses the same texts");
    built = causeOf([&] { require(NkDtTime(value, mode).IsDefined(), "a text value makes it defined"); });
    require(built == expected.cause, "a text value is refused as its text");
}

// --- External texts -------------------------------------------------------------------------------

Expected scanExternal(const std::string& text) {
    const bool isNegative = text.size() > 1 && text[1] == '-';
    short day = 0;
    short month = 0;
    short year = 0;
    short hour = 0;
    long minute = 0;
    const char* const fields = text.c_str() + (isNegative ? 2 : std::min<std::size_t>(1, text.size()));
    switch (text.empty() ? '\0' : text[0]) {
        case 'C':
            std::sscanf(fields, "%02hd%02hd%04hd%02hd%02ld", &day, &month, &year, &hour, &minute);
            break;
        case 'D':
            std::sscanf(fields, "%02hd%02hd%04hd", &day, &month, &year);
            break;
        case 'T':
            std::sscanf(fields, "%02hd%02ld", &hour, &minute);
            break;
        default:
            return {NkDtErrExtern};
    }
    const long hours = year * 8640L + month * 720L + day * 24L + hour;
    const long ticks = (hours * 1200 + minute * 20) * (isNegative ? -1 : 1);
    if (ticks < -2147483648L || ticks > 2147483647L) return {NkDtErrWertebereich};
    return {0, ticks};
}

void checkExternal(const std::string& text) {
    const Expected expected = scanExternal(text);
    const NkDtString value(text.c_str());
    NkDtTime t(NkDtWmNull);
    const ULONG cause = causeOf([&] { t.SetFromExtern(&value, TRUE, NkDtExternVersion); });
    require(cause == expected.cause, "an external text is refused for its reason");
    require(t.IsDefined() && t.IsModified(), "an external text makes the value defined");
    require(ticksOf(t) == (cause == 0 ? expected.ticks : 0), "an external text becomes its length");
    require(t.GetMode() == NkDtTime::Minutes, "in minutes");
    BOOL defined = FALSE;
    USHORT version = 0;
    const NkDtString written = t.ConvToExtern(defined, version);
    NkDtTime back;
    back.SetFromExtern(&written, defined, version);
    const LONG minutes = t.GetTime(NkDtTime::Minutes);
    require(back.GetTime(NkDtTime::Minutes) == (minutes > -60 && minutes < 0 ? -minutes : minutes),
            "what is written reads back, but for the sign of less than an hour");
}

// --- User-interface texts -------------------------------------------------------------------------

void checkShown(const std::string& text) {
    const bool hasComma = text.find(',') != std::string::npos;
    const NkFormat format(FormatZeitArtDauer,
                          hasComma ? FormatZeitDarstellungHundertstel : FormatZeitDarstellungMinuten,
                          FormatVorzeichenVorn, FormatVorzeichenNurMinus, 7, 0, '0');
    NkDtTime t(NkDtWmNull);
    const ULONG cause = causeOf([&] { t.SetFromOFL(text.c_str()); });
    if (text.empty()) {
        require(cause == 0 && !t.IsDefined(), "an empty text clears");
        return;
    }
    LONG hours = 0;
    LONG part = 0;
    const ULONG refusal = fuzz::errorNumberOf([&] { format.ParseTime(text.c_str(), hours, part); });
    const long ticks = hours * 1200L + part * (hasComma ? 12L : 20L);
    const bool fits = ticks >= -2147483648L && ticks <= 2147483647L;
    require(cause == (refusal != 0 ? refusal
                      : fits       ? 0
                                   : NkDtErrWertebereich),
            "the default format decides what is read");
    require(t.IsDefined() == (cause == 0), "a refused text leaves the value undefined");
    if (cause != 0) return;
    require(ticksOf(t) == ticks, "the value is built from what is read");
    NkDtTime back;
    back.SetFromOFL(t.ConvToOFL(&format), &format);
    require(back == t, "what is shown reads back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const TimeMode mode = kTimeModes[input.choice(4)];
    const std::string text = input.rest();
    checkPlain(text, mode);
    checkExternal(text);
    checkShown(text);
    return 0;
}
