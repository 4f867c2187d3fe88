#include "Imp/dttimei.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "Imp/WholeNumberImp.h"
#include "Raise.h"

using namespace nkdt;

namespace {

constexpr Origin originOf(const char* operation) {
    return {".\\Imp\\dttimei.cc", "NkDtTime_Imp", operation};
}
constexpr Origin originBuild = originOf("BuildTimeValue(LONG,LONG,TimeMode)");
constexpr Origin originRead = originOf("ConvStringToTime (LPCTSTR,TimeMode)");

constexpr LONGLONG mostTextHours = 1789568;  // in either direction they fit the ticks

// The calendar of the external text.
constexpr LONG hoursOfDay = 24;
constexpr LONG daysOfMonth = 30;
constexpr LONG monthsOfYear = 12;
constexpr LONG hoursOfMonth = daysOfMonth * hoursOfDay;
constexpr LONG hoursOfYear = monthsOfYear * hoursOfMonth;

constexpr char separatorOf(NkDtTime::TimeMode eMode) {
    return eMode == NkDtTime::Hundredths ? ',' : ':';
}

// --- Writing --------------------------------------------------------------------------------------

/// A number that is not negative, with leading zeros up to @p width digits.
char* writeNumber(char* out, LONG n, std::ptrdiff_t width) noexcept {
    constexpr int mostDigits = std::numeric_limits<LONG>::digits10 + 1;
    char digits[mostDigits];
    const char* const end = std::to_chars(digits, digits + sizeof digits, n).ptr;
    out = std::fill_n(out, std::max<std::ptrdiff_t>(width - (end - digits), 0), '0');
    return std::copy(static_cast<const char*>(digits), end, out);
}

template <std::size_t size>
std::string_view terminated(const char (&buffer)[size], char* end) noexcept {
    *end = '\0';
    return {buffer, static_cast<std::size_t>(end - buffer)};
}

// --- Reading --------------------------------------------------------------------------------------

constexpr bool isDigit(char ch) {
    return ch >= '0' && ch <= '9';
}

/// A sign and digits, nothing else.
LONGLONG readHours(std::string_view text) {
    const bool startsWell =
        !text.empty() && (isDigit(text.front()) || text.front() == '-' || text.front() == '+');
    const WholeNumberText number = readWholeNumber(text);
    if (!startsWell || number.length == 0 || number.length != text.size())
        raise(originRead, NkDtErrInitialwert);
    return number.value;
}

LONG readTwoDigits(std::string_view text) {
    if (!std::all_of(text.begin(), text.end(), isDigit)) raise(originRead, NkDtErrInitialwert);
    return (text[0] - '0') * 10 + (text[1] - '0');
}

/// The mode that a text with this separator is read in.
NkDtTime::TimeMode modeOfSeparator(char separator, NkDtTime::TimeMode eMode) {
    if (eMode == NkDtTime::CurrentMode && separator == separatorOf(NkDtTime::Minutes))
        return NkDtTime::Minutes;
    if (eMode == NkDtTime::CurrentMode && separator == separatorOf(NkDtTime::Hundredths))
        return NkDtTime::Hundredths;
    const bool agree =
        eMode == NkDtTime::HoursOnly || (eMode != NkDtTime::CurrentMode && separator == separatorOf(eMode));
    if (!agree) raise(originRead, NkDtErrFormatVerletzt);
    return eMode;
}

Duration readText(std::string_view text, NkDtTime::TimeMode eMode) {
    LONGLONG hours = 0;
    LONG part = 0;
    if (text.find_first_of(",:") == std::string_view::npos) {
        hours = readHours(text);
        if (eMode == NkDtTime::CurrentMode) eMode = NkDtTime::HoursOnly;
    } else {
        if (text.size() < 4) raise(originRead, NkDtErrFormatVerletzt);
        const std::size_t separator = text.size() - 3;
        eMode = modeOfSeparator(text[separator], eMode);
        part = readTwoDigits(text.substr(separator + 1));
        if (eMode == NkDtTime::Minutes && part >= 60) raise(originRead, NkDtErrWertebereich);
        hours = readHours(text.substr(0, separator));
    }
    if (hours < -mostTextHours || hours > mostTextHours) raise(originRead, NkDtErrWertebereich);
    // The hours of "-0:30" have no sign.
    if (text.front() == '-') part = -part;
    return {NkDtTime_Imp::BuildTimeValue(hours, part, eMode), eMode};
}

/// The numbers of an external text, as `sscanf` takes them: what follows a part that is none is not read.
class ExternNumbers {
  public:
    explicit ExternNumbers(std::string_view text) : m_rest(text) {}

    LONGLONG next(std::size_t width) {
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(" \t\n\v\f\r"), m_rest.size()));
        const WholeNumberText number = readWholeNumber(m_rest.substr(0, width));
        m_rest = number.length == 0 ? std::string_view() : m_rest.substr(number.length);
        return number.value;
    }

  private:
    std::string_view m_rest;
};

}  // namespace

// Ticks

LONG NkDtTime_Imp::fitting(LONGLONG nTicks, const Origin& origin) {
    if (nTicks < std::numeric_limits<LONG>::min() || nTicks > std::numeric_limits<LONG>::max())
        raise(origin, NkDtErrWertebereich);
    return static_cast<LONG>(nTicks);
}

LONG NkDtTime_Imp::BuildTimeValue(LONGLONG nHours, LONGLONG nSubHour, TimeMode eMode) {
    LONGLONG ticks = nHours * hour;
    if (eMode == NkDtTime::Minutes) ticks += nSubHour * minute;
    if (eMode == NkDtTime::Hundredths) ticks += nSubHour * hundredth;
    return fitting(ticks, originBuild);
}

// Texts

std::string_view NkDtTime_Imp::ConvTimeToString(Duration duration, Text& buffer) noexcept {
    const LONG hours = duration.ticks / hour;
    const LONG part = subHour(duration.ticks, duration.mode);
    char* out = buffer;
    if (hours < 0 || part < 0) *out++ = '-';
    out = writeNumber(out, hours < 0 ? -hours : hours, 2);
    if (duration.mode != NkDtTime::HoursOnly) {
        *out++ = separatorOf(duration.mode);
        out = writeNumber(out, part < 0 ? -part : part, 2);
    }
    return terminated(buffer, out);
}

Duration NkDtTime_Imp::ConvStringToTime(LPCTSTR psz, TimeMode eMode) {
    return wrapped(originRead, [&] {
        requireText(psz, originRead);
        return readText(psz, eMode);
    });
}

// External texts

std::string_view NkDtTime_Imp::externText(LONG nTicks, ExternText& buffer) noexcept {
    const LONG signedHours = nTicks / hour;
    const LONG hours = signedHours < 0 ? -signedHours : signedHours;
    const LONG signedMinutes = subHour(nTicks, NkDtTime::Minutes);
    const LONG minutes = signedMinutes < 0 ? -signedMinutes : signedMinutes;
    const LONG year = hours / hoursOfYear;
    const LONG month = hours / hoursOfMonth % monthsOfYear;
    const LONG day = hours / hoursOfDay % daysOfMonth;
    const bool hasDate = hours >= hoursOfDay;
    const bool hasTime = hours % hoursOfDay != 0 || minutes != 0;

    char* out = buffer;
    *out++ = !hasDate ? 'T' : hasTime ? 'C' : 'D';
    if (signedHours < 0) *out++ = '-';
    if (hasDate) {
        out = writeNumber(out, day, 2);
        out = writeNumber(out, month, 2);
        out = writeNumber(out, year, 4);
    }
    if (hasTime || !hasDate) {
        out = writeNumber(out, hours % hoursOfDay, 2);
        out = writeNumber(out, minutes, 2);
        out = writeNumber(out, 0, 2);
    }
    return terminated(buffer, out);
}

LONG NkDtTime_Imp::fromExtern(std::string_view text, const Origin& origin) {
    const char form = text.empty() ? '\0' : text.front();
    if (form != 'C' && form != 'D' && form != 'T') raise(origin, NkDtErrExtern);
    text.remove_prefix(1);
    const bool isNegative = !text.empty() && text.front() == '-';
    if (isNegative) text.remove_prefix(1);

    ExternNumbers numbers(text);
    LONGLONG hours = 0;
    LONGLONG minutes = 0;
    if (form != 'T') {
        hours += numbers.next(2) * hoursOfDay;
        hours += numbers.next(2) * hoursOfMonth;
        hours += numbers.next(4) * hoursOfYear;
    }
    if (form != 'D') {
        hours += numbers.next(2);
        minutes = numbers.next(2);
    }
    const LONGLONG factor = isNegative ? -1 : 1;
    return BuildTimeValue(hours * factor, minutes * factor, NkDtTime::Minutes);
}
