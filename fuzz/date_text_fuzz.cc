/// @file
/// Texts of dates and times of day. What is taken is held against a second reading that knows nothing of
/// fields that are set one by one; what is refused leaves a value whose fields are in their ranges.

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

#include "FuzzSupport.h"
#include "nkdt/NkDt.h"
#include "nkfw/Clock.h"

namespace {

using fuzz::require;
using D = NkDtDateTime;

constexpr int kCentury = 2000;  // of the clock below

/// What a text is to become.
struct Fields {
    int year = 1900;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;

    bool operator==(const Fields&) const = default;
};

/// As they are stored, whether the value is defined or not.
Fields fieldsOf(const D& value) {
    D readable(value);
    readable.SetWorkingMode(NkDtWmNull);
    const std::tm time = readable.GetValue();
    return {time.tm_year + 1900, time.tm_mon + 1, time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec};
}

int lengthOf(int month, int year) {
    if (month == 2) return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0 ? 29 : 28;
    return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

bool isTimeOfDay(const Fields& f) {
    return f.hour >= 0 && f.hour <= 23 && f.minute >= 0 && f.minute <= 59 && f.second >= 0 && f.second <= 59;
}

bool isValid(const Fields& f) {
    return f.year >= 1753 && f.year <= 9999 && f.month >= 1 && f.month <= 12 && f.day >= 1 &&
           f.day <= lengthOf(f.month, f.year) && isTimeOfDay(f);
}

/// What a refusal may leave: a year before the first one, with a day that it does not have.
bool isLeftOver(const Fields& f) {
    return isValid(f) || (f.year >= 0 && f.year < 1753 && f.month >= 1 && f.month <= 12 && f.day >= 1 &&
                          f.day <= 31 && isTimeOfDay(f));
}

/// The number of the first error, 0 for none; every refusal is seen as error 1.
template <class Action>
ULONG causeOf(Action&& action) {
    const auto error = fuzz::errorOf(action);
    if (error == nullptr) return 0;
    require(error->GetErrorNumber() == NkDtErrFolgefehler, "a refusal is seen as error 1");
    const ULONG cause = error->GetCauseNumber();
    require(cause == NkDtErrInitialwert || cause == NkDtErrExtern ||
                (cause >= NkDtErrTag && cause <= NkDtErrSekunde),
            "a refusal has a field's or a text's reason");
    return cause;
}

// --- The second reading -----------------------------------------------------------------------------

bool areDigits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Digits, or blanks and digits where they are allowed.
std::optional<int> numberOf(std::string_view text, bool withBlanks = false) {
    while (withBlanks && !text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    if (!areDigits(text) || text.size() > 4) return std::nullopt;
    return std::stoi(std::string(text));
}

int inCentury(int year) {
    return year <= 99 ? kCentury + year : year;
}

/// One or two digits up to a separator or the end of the two characters.
std::optional<int> shortNumberOf(std::string_view text) {
    text = text.substr(0, 2);
    if (text.size() == 2 && (text[1] == '.' || text[1] == '/')) text.remove_suffix(1);
    return numberOf(text);
}

std::optional<Fields> readDate(std::string_view text) {
    constexpr auto none = std::string_view::npos;
    if (text.size() < 6) return std::nullopt;
    std::size_t first = text.find('.');
    if (first == none) first = text.find('/');
    if (first != 1 && first != 2) return std::nullopt;
    std::size_t second = text.find('.', first + 1);
    if (second == none) second = text.find('/');
    if (second == none || (second > first && second - first > 3)) return std::nullopt;
    std::string_view year = text.substr(second + 1);
    if (year.size() >= 5) {
        const std::size_t blank = year.find(' ');
        if (blank == none) return std::nullopt;
        year = year.substr(0, blank < 3 ? 2 : 4);
    }
    if (year.size() != 2 && year.size() != 4) return std::nullopt;
    const std::optional<int> y = year == "0000" ? std::nullopt : numberOf(year);
    const std::optional<int> m = shortNumberOf(text.substr(first + 1));
    const std::optional<int> d = shortNumberOf(text);
    if (!y || !m || !d) return std::nullopt;
    const Fields read{inCentury(*y), *m, *d};
    return isValid(read) ? std::optional(read) : std::nullopt;
}

/// The time of day, on the date of the fields that are given.
std::optional<Fields> readTime(std::string_view text, Fields read) {
    if (text.size() < 5 || text[2] != ':') return std::nullopt;
    const std::optional<int> h = numberOf(text.substr(text[0] == ' ' ? 1 : 0, text[0] == ' ' ? 1 : 2));
    const std::optional<int> m = numberOf(text.substr(3, 2));
    std::optional<int> s = 0;
    if (text.size() == 8) s = text[5] == ':' ? numberOf(text.substr(6)) : std::nullopt;
    if (!h || !m || !s) return std::nullopt;
    read.hour = *h;
    read.minute = *m;
    read.second = *s;
    return isValid(read) ? std::optional(read) : std::nullopt;
}

std::optional<Fields> readBuilt(std::string_view text, D::FormOfDateTimeString form) {
    if (form == D::DateOnly) return readDate(text);
    if (form == D::TimeOnly) return readTime(text, Fields{});
    if (text.size() < 16) return std::nullopt;
    const std::optional<Fields> date = readDate(text);
    return date ? readTime(text.substr(11), *date) : std::nullopt;
}

std::optional<Fields> readSql(std::string_view text) {
    if (text.size() < 19) return std::nullopt;
    const auto number = [&](std::size_t place, std::size_t width) {
        const bool hasBlank = text[place] == ' ';
        return numberOf(text.substr(place + (hasBlank ? 1 : 0), width - (hasBlank ? 1 : 0)));
    };
    const std::optional<int> year = number(7, 4);
    const std::optional<int> day = number(4, 2);
    const std::optional<int> hour = number(12, 2);
    const std::optional<int> minute = number(15, 2);
    if (!year || !day || !hour || !minute) return std::nullopt;
    static constexpr std::string_view names =
        "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec "
        "xxx xxx M\xE4r xxx Mai xxx xxx xxx xxx Okt xxx Dez ";
    const std::string name = std::string(text.substr(0, 3)) + " ";
    const std::size_t place = name == "xxx " ? std::string_view::npos : names.find(name);
    const bool isName = place != std::string_view::npos && place % 4 == 0;
    const int noon = text.substr(17) == "PM" ? 12 : 0;
    const Fields read{inCentury(*year), isName ? static_cast<int>(place / 4 % 12) + 1 : 1, *day,
                      *hour % 12 == 0 && *hour == 12 ? noon : *hour + noon, *minute};
    return isValid(read) ? std::optional(read) : std::nullopt;
}

std::optional<Fields> readExternal(std::string_view text) {
    const char form = text.empty() ? '\0' : text[0];
    std::size_t place = 1;
    bool fills = true;
    const auto next = [&](std::size_t width) {
        const std::string_view field = text.substr(std::min(place, text.size()), width);
        place += width;
        const std::optional<int> number = field.size() == width ? numberOf(field, true) : std::nullopt;
        fills = fills && number.has_value();
        return number.value_or(0);
    };
    if (form != 'C' && form != 'D') return std::nullopt;  // a "T" has no month
    Fields read;
    read.day = next(2);
    read.month = next(2);
    read.year = inCentury(next(4));
    if (form == 'C') {
        read.hour = next(2);
        read.minute = next(2);
        read.second = next(2);
    }
    return fills && isValid(read) ? std::optional(read) : std::nullopt;
}

// --- The checks ---------------------------------------------------------------------------------------

/// The value of a taken text, or what a refused one leaves of the value before.
void checkOutcome(ULONG cause, const D& value, const std::optional<Fields>& expected, const D& before) {
    require((cause == 0) == expected.has_value(), "exactly the right texts are taken");
    const Fields held = fieldsOf(value);
    const bool wasDefined = before.IsDefined();
    require(value.IsDefined(), "a text marks the value defined");
    if (cause != 0) {
        require(isLeftOver(held), "a refusal leaves fields in their ranges");
        require(value.IsModified() == !wasDefined, "a refusal raises the flag for the definedness alone");
        return;
    }
    require(held == *expected, "a text becomes its date");
    require(value.IsModified() == (!wasDefined || !(held == fieldsOf(before))),
            "the flag tells whether the value changed");
}

/// Everything that is written of a taken value reads back.
void checkRoundTrips(const D& value) {
    const Fields held = fieldsOf(value);
    const NkDtString text(value);
    require(D(text) == value && D(static_cast<LPCTSTR>(text)) == value, "a text reads back");
    D back;
    back.SetDateTime(text);
    require(back == value, "a text is set back");
    D shown;
    shown.SetFromOFL(value.ConvToOFL());
    require(shown == value, "a user-interface text reads back");
    BOOL defined = FALSE;
    USHORT version = 0;
    const NkDtString external = value.ConvToExtern(defined, version);
    D loaded;
    loaded.SetFromExtern(&external, defined, version);
    require(loaded == value, "an external text reads back");
    const NkDtDateZp date(value);
    require(NkDtDateZp(NkDtString(date)) == date, "a date's text reads back");
    const D fromOle = COleDateTime(value);
    require(fromOle == value, "a date for automation reads back");
    require(held == fieldsOf(fromOle), "and holds the same");
}

void checkBuilt(const std::string& text) {
    const NkDtString value(text.c_str());
    for (const auto form : {D::DateAndTime, D::DateOnly, D::TimeOnly}) {
        const std::optional<Fields> expected = readBuilt(text, form);
        std::optional<D> made;
        const ULONG cause = causeOf([&] { made.emplace(text.c_str(), form); });
        require((cause == 0) == expected.has_value(), "exactly the right texts are built from");
        if (made) {
            require(fieldsOf(*made) == *expected, "a text is built into its date");
            checkRoundTrips(*made);
        }
        if (text.empty()) continue;
        const ULONG causeOfValue = causeOf([&] { require(D(value, form).IsDefined(), "is defined"); });
        require(causeOfValue == cause, "a text value is refused as its text");
    }
}

/// Where the time of day stands behind a date.
std::optional<Fields> readSet(const std::string& text) {
    const std::optional<Fields> date = readDate(text);
    if (!date) return date;
    // The date is right: behind the separator that ends the month its year ends at a blank or with the text.
    const std::size_t first = std::min(text.find('.'), text.find('/'));
    const std::size_t point = text.find('.', text.find('.') == std::string::npos ? 0 : text.find('.') + 1);
    const std::size_t second = point != std::string::npos ? point : text.find('/');
    const std::size_t blank = text.find(' ', std::max(first, second));
    const std::size_t colon = blank == std::string::npos ? blank : text.find(':', blank);
    const bool isShort = blank < 10;
    if (!isShort && text.size() <= 11) return date;
    if (!isShort) return readTime(std::string_view(text).substr(11), *date);
    if (colon == std::string::npos && text.size() <= 11) return date;
    if (colon == std::string::npos || colon < blank + 2) return std::nullopt;
    const std::string_view between = std::string_view(text).substr(blank, colon - 2 - blank);
    if (between.find_first_not_of(' ') != std::string_view::npos) return std::nullopt;
    return readTime(std::string_view(text).substr(colon - 2), *date);
}

void checkSetters(const std::string& text, const D& before) {
    const NkDtString value(text.c_str());
    const auto check = [&](const std::optional<Fields>& expected, auto&& set) {
        D target(before);
        const ULONG cause = causeOf([&] { set(target); });
        checkOutcome(cause, target, expected, before);
        if (cause == 0) checkRoundTrips(target);
    };
    Fields withDate = fieldsOf(before);
    if (const std::optional<Fields> date = readDate(text)) {
        withDate = {date->year, date->month, date->day, withDate.hour, withDate.minute, withDate.second};
        check(withDate, [&](D& d) { d.SetDate(text.c_str()); });
    } else {
        check(std::nullopt, [&](D& d) { d.SetDate(text.c_str()); });
    }
    Fields base = fieldsOf(before);
    if (!before.IsDefined()) base.day = 1;
    check(readTime(text, base), [&](D& d) { d.SetTime(text.c_str()); });
    check(readSet(text), [&](D& d) { d.SetDateTime(text.c_str()); });
    if (text != "NULL") check(readSql(text), [&](D& d) { d.SetFromSQL(text.c_str()); });
    check(readExternal(text), [&](D& d) { d.SetFromExtern(&value, TRUE, NkDtExternVersion); });
}

/// A user-interface text is taken by the default format or leaves everything as it was.
void checkShown(const std::string& text, const D& before) {
    const NkFormat format(FormatDatumArtTagMonatJahr, FormatDatumTrennerPunkt, FormatDatumJahrVierstellig,
                          FormatDatumMonatZahl, 1, '0');
    if (text.empty()) return;
    NkFoDateTime read{};
    const ULONG refusal = fuzz::errorNumberOf([&] { read = format.ParseDateTime(text.c_str()); });
    const Fields expected{read.year, read.month, read.day, read.hour, read.minute, read.second};
    D value(before);
    NkDtDateZp date(before);
    const NkDtDateZp dateBefore(date);
    const auto valueError = fuzz::errorOf([&] { value.SetFromOFL(text.c_str()); });
    const auto dateError = fuzz::errorOf([&] { date.SetFromOFL(text.c_str()); });
    require((valueError != nullptr) == (refusal != 0) && (dateError != nullptr) == (refusal != 0),
            "the default format decides what is taken");
    if (refusal != 0) {
        require(valueError->GetCauseNumber() == refusal && dateError->GetCauseNumber() == refusal,
                "the format's reason is the cause");
        require(fieldsOf(value) == fieldsOf(before) && value.IsDefined() == before.IsDefined() &&
                    !value.IsModified() && fieldsOf(date) == fieldsOf(dateBefore),
                "a refused text changes nothing");
        return;
    }
    require(isValid(expected) && fieldsOf(value) == expected, "the format's fields are taken");
    require(fieldsOf(date) == Fields{expected.year, expected.month, expected.day},
            "a date has no time of day");
    checkRoundTrips(value);
}

/// A day of that state, not modified.
D startValue(bool isDefined) {
    D value(31, 1, 2004, 14, 7, 9);
    if (!isDefined) {
        CMemFile file;
        CArchive storing(&file, CArchive::store);
        storing << DWORD{0} << INT{9} << INT{7} << INT{14} << INT{104} << INT{0} << INT{31};
        storing.Close();
        file.Seek(0, CFile::begin);
        CArchive loading(&file, CArchive::load);
        value.SetWorkingMode(NkDtWmNull);
        value.Serialize(loading);
    }
    value.SetModified(FALSE);
    return value;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    nkfw::setClockSource([]() noexcept { return std::time_t{1686830400}; });  // 15 June 2023
    fuzz::Input input(data, size);
    const std::string text = input.rest();
    checkBuilt(text);
    for (const bool isDefined : {true, false}) {
        const D before = startValue(isDefined);
        checkSetters(text, before);
        checkShown(text, before);
    }
    return 0;
}
