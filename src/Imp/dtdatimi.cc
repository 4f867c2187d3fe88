#include "Imp/dtdatimi.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>

#include "DateDigits.h"
#include "Literal1252.h"
#include "Raise.h"
#include "nkfw/Calendar.h"
#include "nkfw/Clock.h"

namespace nkdt {

namespace {

constexpr Origin originOf(const char* operation) {
    return {".\\Imp\\dtdatimi.cc", "DtDateTime_Imp", operation};
}

nkfw::LocalTime localNow(const Origin& origin) {
    nkfw::LocalTime now{};
    if (!nkfw::readLocalTime(now)) raise(origin, NkDtErrInitialwert);
    return now;
}

}  // namespace

// Fields

bool DateTimeFields::isLeapYear() const noexcept {
    return nkfw::isLeapYear(year());
}

void DateTimeFields::requireMonth() const {
    static constexpr Origin origin = originOf("DaysOfMonth()");
    if (!hasMonth()) [[unlikely]]
        raise(origin, NkDtErrMonat);
}

namespace {

/// Of a date whose month is one.
INT daysOfMonth(const DateTimeFields& fields) noexcept {
    return nkfw::daysInMonth(fields.year(), fields.tm_mon + 1);
}

}  // namespace

void DateTimeFields::setDay(LONGLONG day) {
    static constexpr Origin origin = originOf("SetDay365(SHORT)");
    requireMonth();
    if (day < 1 || day > 31 || (day > 28 && day > daysOfMonth(*this))) raise(origin, NkDtErrTag);
    tm_mday = static_cast<INT>(day);
}

void DateTimeFields::setMonth(LONGLONG month) {
    static constexpr Origin origin = originOf("SetMonth(SHORT)");
    if (month < 1 || month > 12) raise(origin, NkDtErrMonat);
    tm_mon = static_cast<INT>(month - 1);
    if (tm_mday > 28) tm_mday = std::min(tm_mday, daysOfMonth(*this));
}

void DateTimeFields::setYear(LONGLONG year) {
    static constexpr const char* operation = "SetYear(SHORT)";
    static constexpr Origin origin = originOf(operation);
    if (year <= 99) year += LONGLONG{localNow(origin).year / 100} * 100;
    if (year > lastYear) raise(origin, NkDtErrWertebereich);
    tm_year = static_cast<INT>(std::max<LONGLONG>(year - yearBase, std::numeric_limits<INT>::min()));
    checkYear(operation);
    if (tm_mon == 1 && tm_mday > 28 && !isLeapYear()) tm_mday = 28;
}

void DateTimeFields::setHour(LONGLONG hour) {
    static constexpr Origin origin = originOf("SetHour(SHORT)");
    if (hour < 0 || hour > 23) raise(origin, NkDtErrStunde);
    tm_hour = static_cast<INT>(hour);
}

void DateTimeFields::setMinute(LONGLONG minute) {
    static constexpr Origin origin = originOf("SetMin(SHORT)");
    if (minute < 0 || minute > 59) raise(origin, NkDtErrMinute);
    tm_min = static_cast<INT>(minute);
}

void DateTimeFields::setSecond(LONGLONG second) {
    static constexpr Origin origin = originOf("SetSecond(SHORT)");
    if (second < 0 || second > 59) raise(origin, NkDtErrSekunde);
    tm_sec = static_cast<INT>(second);
}

void DateTimeFields::setDate(LONGLONG day, LONGLONG month, LONGLONG year) {
    setYear(year);
    setMonth(month);
    setDay(day);
}

void DateTimeFields::setTime(LONGLONG hour, LONGLONG minute, LONGLONG second) {
    setHour(hour);
    setMinute(minute);
    setSecond(second);
}

void DateTimeFields::checkYear(const char* operation) const {
    if (year() < firstYear) raise(originOf(operation), NkDtErrJahr);
}

}  // namespace nkdt

using namespace nkdt;

// Other times

DateTimeFields NkDtDateTime_Imp::now() {
    static constexpr const char* operation = "SetSysDateTime()";
    static constexpr Origin origin = originOf(operation);
    const nkfw::LocalTime local = localNow(origin);
    Fields fields;
    fields.tm_sec = local.second;
    fields.tm_min = local.minute;
    fields.tm_hour = local.hour;
    fields.tm_mday = local.day;
    fields.tm_mon = local.month - 1;
    fields.tm_year = local.year - Fields::yearBase;
    fields.checkYear(operation);
    return fields;
}

DateTimeFields NkDtDateTime_Imp::unchecked(const struct tm& time) noexcept {
    return {time.tm_sec,  time.tm_min,  time.tm_hour, time.tm_mday, time.tm_mon,
            time.tm_year, time.tm_wday, time.tm_yday, time.tm_isdst};
}

struct tm NkDtDateTime_Imp::toTm(const Fields& fields) noexcept {
    std::tm time{};
    time.tm_sec = fields.tm_sec;
    time.tm_min = fields.tm_min;
    time.tm_hour = fields.tm_hour;
    time.tm_mday = fields.tm_mday;
    time.tm_mon = fields.tm_mon;
    time.tm_year = fields.tm_year;
    time.tm_wday = fields.tm_wday;
    time.tm_yday = fields.tm_yday;
    time.tm_isdst = fields.tm_isdst;
    return time;
}

DateTimeFields NkDtDateTime_Imp::of(std::time_t t) {
    static constexpr const char* operation = "NkDtDateTime_Imp(time_t) ";
    static constexpr Origin origin = originOf(operation);
    std::tm time{};
    if (!nkfw::localFields(t, time)) raise(origin, NkDtErrInitialwert);
    const Fields fields = unchecked(time);
    if (fields.year() > Fields::lastYear) raise(origin, NkDtErrWertebereich);
    fields.checkYear(operation);
    return fields;
}

DateTimeFields NkDtDateTime_Imp::of(const struct tm* time) {
    static constexpr Origin origin = originOf("NkDtDateTime_Imp(struct tm*)");
    constexpr int firstFullYear = 1000;
    if (time == nullptr) raise(origin, NkDtErrInitialwert);
    Fields fields;
    const LONGLONG year = time->tm_year;
    fields.setDate(time->tm_mday, LONGLONG{time->tm_mon} + 1,
                   year >= firstFullYear ? year : year + Fields::yearBase);
    fields.setTime(time->tm_hour, time->tm_min, time->tm_sec);
    return fields;
}

// From text

namespace {

constexpr Origin parseDateOrigin = originOf("ParseDate(LPCTSTR)");
constexpr Origin parseTimeOrigin = originOf("ParseTime(LPCTSTR)");

[[noreturn]] void refuse(const Origin& origin) {
    raise(origin, NkDtErrInitialwert);
}

constexpr bool isDigit(char ch) noexcept {
    return ch >= '0' && ch <= '9';
}

constexpr bool isSeparator(char ch) noexcept {
    return ch == '.' || ch == '/';
}

constexpr int valueOf(char ch) noexcept {
    return ch - '0';
}

/// The character at a place, a NUL behind the text.
constexpr char at(std::string_view text, std::size_t place) noexcept {
    return place < text.size() ? text[place] : '\0';
}

int twoDigits(std::string_view text, std::size_t place, const Origin& origin) {
    if (!isDigit(at(text, place)) || !isDigit(at(text, place + 1))) refuse(origin);
    return valueOf(text[place]) * 10 + valueOf(text[place + 1]);
}

/// A day or month at a place: two digits, or one in front of a separator or the text's end.
int dayOrMonth(std::string_view text, std::size_t place) {
    const char first = at(text, place);
    const char second = at(text, place + 1);
    if (!isDigit(first)) refuse(parseDateOrigin);
    if (isSeparator(second) || second == '\0') return valueOf(first);
    if (!isDigit(second)) refuse(parseDateOrigin);
    return valueOf(first) * 10 + valueOf(second);
}

/// Where the separators stand in the text of a date.
struct Separators {
    std::size_t first;
    std::size_t second;
};

Separators separatorsOf(std::string_view text) {
    constexpr std::size_t shortest = 6;
    constexpr auto none = std::string_view::npos;
    if (text.size() < shortest) refuse(parseDateOrigin);
    const auto either = [&text](std::size_t point) { return point != none ? point : text.find('/'); };
    const std::size_t first = either(text.find('.'));
    if (first != 1 && first != 2) refuse(parseDateOrigin);
    // The search for a slash begins at the text's start again.
    const std::size_t second = either(text.find('.', first + 1));
    if (second == none || second > first + 3) refuse(parseDateOrigin);
    return {first, second};
}

/// The year behind the second separator; what stands behind its blank does not count.
int yearBehind(std::string_view text, std::size_t separator) {
    constexpr std::size_t withMore = 5;
    const std::string_view behind = text.substr(separator + 1);
    std::string_view year = behind;
    if (behind.size() >= withMore) {
        const std::size_t blank = behind.find(' ');
        if (blank == std::string_view::npos) refuse(parseDateOrigin);
        year = behind.substr(0, blank < 3 ? 2 : 4);
    }
    if ((year.size() != 2 && year.size() != 4) || !std::all_of(year.begin(), year.end(), isDigit)) {
        refuse(parseDateOrigin);
    }
    int number = 0;
    for (const char digit : year)
        number = number * 10 + valueOf(digit);
    return number;
}

void setParsedYear(DateTimeFields& fields, std::string_view text, std::size_t separator) {
    const int year = yearBehind(text, separator);
    if (year == 0 &&
        at(text, separator + 3) == '0') {  // four zeros are the year 0, two the current century's
        fields.tm_year = -DateTimeFields::yearBase;
        fields.checkYear("SetYear(SHORT)");
    }
    fields.setYear(year);
}

/// Takes "TT.MM.JJJJ" with nothing or a blank behind it, the form that dates are written in, if it is one
/// that no setter refuses or turns into another.
bool takeFullDate(DateTimeFields& fields, std::string_view text) noexcept {
    constexpr std::size_t length = 10;
    if (text.size() < length || (text.size() > length && text[length] != ' ')) return false;
    const DateDigits front = readDateDigits(text.data(), "00.00.00");
    const DateDigits back = readDateDigits(text.data() + 2, ".00.0000");
    const int year = back.at(4) * 100 + back.at(6);
    const int month = back.at(1);
    const int day = front.at(0);
    if (!front.match || !back.match || year < DateTimeFields::firstYear) return false;
    if (!nkfw::isDate(year, month, day)) return false;
    fields.tm_year = year - DateTimeFields::yearBase;
    fields.tm_mon = month - 1;
    fields.tm_mday = day;
    return true;
}

/// Takes "HH:MM:SS" in the same way.
bool takeFullTime(DateTimeFields& fields, std::string_view text) noexcept {
    if (text.size() != 8) return false;
    const DateDigits digits = readDateDigits(text.data(), "00:00:00");
    if (!digits.match || digits.at(0) > 23 || digits.at(3) > 59 || digits.at(6) > 59) return false;
    fields.tm_hour = digits.at(0);
    fields.tm_min = digits.at(3);
    fields.tm_sec = digits.at(6);
    return true;
}

}  // namespace

void NkDtDateTime_Imp::parseDate(Fields& fields, std::string_view text) {
    static constexpr Origin origin = originOf("SetDate(LPCTSTR)");
    if (takeFullDate(fields, text)) [[likely]]
        return;
    wrapped(origin, [&] {
        const Separators separators = separatorsOf(text);
        setParsedYear(fields, text, separators.second);
        fields.setMonth(dayOrMonth(text, separators.first + 1));
        fields.setDay(dayOrMonth(text, 0));
    });
}

void NkDtDateTime_Imp::parseTime(Fields& fields, std::string_view text) {
    static constexpr Origin origin = originOf("SetTime(LPCTSTR)");
    constexpr std::size_t withoutSeconds = 5;
    constexpr std::size_t withSeconds = 8;
    if (takeFullTime(fields, text)) [[likely]]
        return;
    wrapped(origin, [&] {
        if (text.size() < withoutSeconds || text[2] != ':') refuse(parseTimeOrigin);
        if ((text[0] != ' ' && !isDigit(text[0])) || !isDigit(text[1])) refuse(parseTimeOrigin);
        fields.setHour((text[0] == ' ' ? 0 : valueOf(text[0]) * 10) + valueOf(text[1]));
        fields.setMinute(twoDigits(text, 3, parseTimeOrigin));
        if (text.size() == withSeconds) {
            if (text[5] != ':') refuse(parseTimeOrigin);
            fields.setSecond(twoDigits(text, 6, parseTimeOrigin));
        } else {
            fields.setSecond(0);
        }
    });
}

namespace {

/// Where the time of day starts behind a date that is shorter than "TT.MM.JJJJ": two characters before the
/// first ":" behind its blank, with only blanks between.
std::size_t startBehindShortDate(std::string_view text, std::size_t blank) {
    const std::size_t colon = text.find(':', blank);
    if (colon == std::string_view::npos || colon < blank + 2) refuse(parseTimeOrigin);
    const std::size_t start = colon - 2;
    if (text.substr(blank, start - blank).find_first_not_of(' ') != std::string_view::npos) {
        refuse(parseTimeOrigin);
    }
    return start;
}

}  // namespace

void NkDtDateTime_Imp::parseDateAndTime(Fields& fields, std::string_view text) {
    static constexpr Origin origin = originOf("SetTime(LPCTSTR)");
    constexpr std::size_t fullDate = 10;
    constexpr std::size_t startBehindFullDate = 11;
    if (text.size() > startBehindFullDate && takeFullDate(fields, text)) [[likely]] {
        parseTime(fields, text.substr(startBehindFullDate));
        return;
    }
    parseDate(fields, text);
    const std::size_t blank = text.find(' ', separatorsOf(text).second);
    if (blank < fullDate && (text.size() > startBehindFullDate || text.find(':', blank) != text.npos)) {
        const std::size_t start = wrapped(origin, [&] { return startBehindShortDate(text, blank); });
        parseTime(fields, text.substr(start));
    } else if (text.size() > startBehindFullDate) {
        parseTime(fields, text.substr(startBehindFullDate));
    } else {
        fields.wipeTime();
    }
}

// To text

namespace {

char* putTwoDigits(char* out, LONGLONG number) noexcept {
    if (number < 0 || number > 99) [[unlikely]]  // only an archive can hold such a field
        return std::to_chars(out, out + std::numeric_limits<LONGLONG>::digits10 + 2, number).ptr;
    writeTwoDigits(out, static_cast<unsigned>(number));
    return out + 2;
}

char* putYear(char* out, LONGLONG year, std::size_t fewestDigits) noexcept {
    if (year >= 1000 && year <= 9999) [[likely]]
        return putTwoDigits(putTwoDigits(out, year / 100), year % 100);
    char digits[std::numeric_limits<LONGLONG>::digits10 + 2];
    const char* const end = std::to_chars(digits, std::end(digits), year).ptr;
    const auto count = static_cast<std::size_t>(end - digits);
    out = std::fill_n(out, fewestDigits > count ? fewestDigits - count : 0, '0');
    return std::copy(static_cast<const char*>(digits), end, out);
}

char* put(char* out, char ch) noexcept {
    *out = ch;
    return out + 1;
}

/// Day and month in that order or the other, and the year.
char* putDate(char* out, LONGLONG first, LONGLONG second, LONGLONG year, std::size_t fewestDigits) noexcept {
    out = put(putTwoDigits(out, first), '.');
    out = put(putTwoDigits(out, second), '.');
    return putYear(out, year, fewestDigits);
}

/// Whether all fields are written with as many digits as in "05.03.2004 14:07:09".
bool areUsual(const DateTimeFields& fields) noexcept {
    const auto below100 = [](INT number) { return static_cast<UINT>(number) < 100; };
    return below100(fields.tm_mday) && static_cast<UINT>(fields.tm_mon) < 99 && below100(fields.tm_hour) &&
           below100(fields.tm_min) && below100(fields.tm_sec) && fields.year() >= 1000 &&
           fields.year() <= 9999;
}

std::string_view usualText(const DateTimeFields& fields, char* out) noexcept {
    static constexpr char pattern[] = "  .  .       :  :  ";
    const auto write = [out](std::size_t place, INT number) {
        writeTwoDigits(out + place, static_cast<unsigned>(number));
    };
    std::memcpy(out, pattern, sizeof pattern - 1);
    const INT year = fields.tm_year + DateTimeFields::yearBase;
    write(0, fields.tm_mday);
    write(3, fields.tm_mon + 1);
    write(6, year / 100);
    write(8, year % 100);
    write(11, fields.tm_hour);
    write(14, fields.tm_min);
    write(17, fields.tm_sec);
    return {out, sizeof pattern - 1};
}

}  // namespace

std::string_view NkDtDateTime_Imp::text(const Fields& fields, USHORT form, Text& buffer) noexcept {
    if ((form == dateAndTime || form == date) && areUsual(fields)) [[likely]]
        return usualText(fields, buffer).substr(0, form == date ? 10 : std::string_view::npos);
    char* out = buffer;
    switch (form) {
        case sqlDayFirst:
        case sqlMonthFirst: {
            const bool dayFirst = form == sqlDayFirst;
            out = putDate(put(out, '\''), dayFirst ? fields.tm_mday : fields.month(),
                          dayFirst ? fields.month() : fields.tm_mday, fields.year(), 0);
            out = put(putTwoDigits(put(out, ' '), fields.tm_hour), ':');
            out = put(putTwoDigits(out, fields.tm_min), '\'');
            break;
        }
        case dateDigits:
            out = putTwoDigits(putTwoDigits(out, fields.tm_mday), fields.month());
            out = putYear(out, fields.year(), 0);
            break;
        case date:
            out = putDate(out, fields.tm_mday, fields.month(), fields.year(), 4);
            break;
        default:
            out = putDate(out, fields.tm_mday, fields.month(), fields.year(), 0);
            out = put(putTwoDigits(put(out, ' '), fields.tm_hour), ':');
            out = put(putTwoDigits(out, fields.tm_min), ':');
            out = putTwoDigits(out, fields.tm_sec);
            break;
    }
    return {buffer, static_cast<std::size_t>(out - buffer)};
}

// The external text

namespace {

constexpr Origin externOrigin = {".\\Dtdatimo.cc", "NkDtDateTime", "SetFromExtern(NkDtString*,BOOL,USHORT)"};

constexpr std::size_t externYearWidth = 4;

/// Blanks, then digits, which fill the field.
LONGLONG externField(std::string_view& rest, std::size_t width) {
    const std::string_view field = rest.substr(0, width);
    const std::size_t first = std::min(field.find_first_not_of(' '), field.size());
    const std::string_view digits = field.substr(first);
    if (field.size() < width || digits.empty() || !std::all_of(digits.begin(), digits.end(), isDigit))
        raise(externOrigin, NkDtErrExtern);
    rest.remove_prefix(width);
    LONGLONG number = 0;
    for (const char digit : digits)
        number = number * 10 + valueOf(digit);
    return number;
}

}  // namespace

std::string_view NkDtDateTime_Imp::externText(const Fields& fields, Text& buffer) noexcept {
    // The form has room for 16 bits of each number.
    const auto cut = [](LONGLONG number) { return LONGLONG{static_cast<SHORT>(number)}; };
    const LONGLONG day = cut(fields.tm_mday);
    const LONGLONG month = cut(fields.month());
    const LONGLONG year = cut(fields.year());
    const LONGLONG hour = cut(fields.tm_hour);
    const LONGLONG minute = cut(fields.tm_min);
    const LONGLONG second = cut(fields.tm_sec);
    const bool hasDate = day != 0 || month != 0 || year != 0;
    const bool hasTime = !hasDate || hour != 0 || minute != 0 || second != 0;

    char* out = put(buffer, !hasDate ? 'T' : hasTime ? 'C' : 'D');
    if (hasDate) {
        out = putTwoDigits(putTwoDigits(out, day), month);
        char digits[std::numeric_limits<LONGLONG>::digits10 + 2];
        const auto count = static_cast<std::size_t>(putYear(digits, year, 0) - digits);
        out = std::fill_n(out, count < externYearWidth ? externYearWidth - count : 0, ' ');
        out = std::copy_n(digits, count, out);
    }
    if (hasTime) out = putTwoDigits(putTwoDigits(putTwoDigits(out, hour), minute), second);
    return {buffer, static_cast<std::size_t>(out - buffer)};
}

void NkDtDateTime_Imp::setFromExtern(Fields& fields, std::string_view text) {
    const char form = at(text, 0);
    if (form != 'C' && form != 'D' && form != 'T') raise(externOrigin, NkDtErrExtern);
    std::string_view rest = text.substr(1);
    LONGLONG day = 0;
    LONGLONG month = 0;
    LONGLONG year = 0;
    if (form != 'T') {
        day = externField(rest, 2);
        month = externField(rest, 2);
        year = externField(rest, externYearWidth);
    }
    LONGLONG hour = 0;
    LONGLONG minute = 0;
    LONGLONG second = 0;
    if (form != 'D') {
        hour = externField(rest, 2);
        minute = externField(rest, 2);
        second = externField(rest, 2);
    }
    fields.setDate(day, month, year);
    fields.setTime(hour, minute, second);
}

// The text of a database

namespace {

constexpr Origin sqlOrigin = {".\\Dtdatimo.cc", "NkDtDateTime", "SetFromSQL(LPCTSTR)"};

/// Digits, the first of which may be a blank.
int sqlNumber(std::string_view text, std::size_t place, std::size_t width) {
    int number = 0;
    for (std::size_t i = 0; i < width; ++i) {
        const char ch = at(text, place + i);
        if (i == 0 && ch == ' ') continue;
        if (!isDigit(ch)) refuse(sqlOrigin);
        number = number * 10 + valueOf(ch);
    }
    return number;
}

/// The month of an English or German short name; January for any other.
int monthOf(std::string_view name) noexcept {
    using namespace nkfw::literals;
    struct Month {
        std::string_view name;
        int number;
    };
    static const Month months[] = {{"Dec", 12}, {"Dez", 12}, {"Nov", 11}, {"Oct", 10},       {"Okt", 10},
                                   {"Sep", 9},  {"Aug", 8},  {"Jul", 7},  {"Jun", 6},        {"May", 5},
                                   {"Mai", 5},  {"Apr", 4},  {"Mar", 3},  {"Mär"_cp1252, 3}, {"Feb", 2}};
    for (const Month& month : months) {
        if (month.name == name) return month.number;
    }
    return 1;
}

}  // namespace

void NkDtDateTime_Imp::setFromSql(Fields& fields, std::string_view text) {
    constexpr std::size_t shortest = 19;
    if (text.size() < shortest) refuse(sqlOrigin);
    fields.setYear(sqlNumber(text, 7, 4));
    fields.setMonth(monthOf(text.substr(0, 3)));
    fields.setDay(sqlNumber(text, 4, 2));
    const bool isAfternoon = text.substr(17) == "PM";
    const int hour = sqlNumber(text, 12, 2);
    fields.setHour((hour == 12 ? 0 : hour) + (isAfternoon ? 12 : 0));
    fields.setMinute(sqlNumber(text, 15, 2));
    fields.setSecond(0);
}
