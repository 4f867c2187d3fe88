// Dates and date-times: day, month and year in their order, then the time of day.

#include <cstring>

#include "Literal1252.h"
#include "NkFormatError.h"
#include "NkFormatReader.h"
#include "nkfo/NkFormat.h"
#include "nkfw/Calendar.h"
#include "nkfw/Clock.h"
#include "nklang/NkLanguagePublisher.h"

using namespace nkfw::literals;
using nkfo::DateSettings;
using nkfo::Origin;
using nkfo::TextReader;

namespace {

constexpr LPCTSTR sourceFile = ".\\NkFormatDate.cc";
constexpr Origin formatDateTime = {sourceFile, "FormatDateTime(const NkFoDateTime&)"};
constexpr Origin parseDateTime = {sourceFile, "ParseDateTime(LPCTSTR)"};
constexpr Origin formatDate = {sourceFile, "FormatDate(const NkFoDateTime&)"};
constexpr Origin parseDate = {sourceFile, "ParseDate(LPCTSTR)"};

constexpr int firstYear = 1753;
constexpr int lastYear = 9999;

enum class Part { Day, Month, Year };

constexpr Part partOrder[3][3] = {{Part::Day, Part::Month, Part::Year},
                                  {Part::Month, Part::Day, Part::Year},
                                  {Part::Year, Part::Month, Part::Day}};

struct MonthNames {
    LPCTSTR shortNames[12];
    LPCTSTR fullNames[12];
};

constexpr MonthNames germanNames = {
    {"Jan", "Feb", "Mär"_cp1252, "Apr", "Mai", "Jun", "Jul", "Aug", "Sep", "Okt", "Nov", "Dez"},
    {"Januar", "Februar", "März"_cp1252, "April", "Mai", "Juni", "Juli", "August", "September", "Oktober",
     "November", "Dezember"}};

constexpr MonthNames englishNames = {
    {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"},
    {"January", "February", "March", "April", "May", "June", "July", "August", "September", "October",
     "November", "December"}};

const MonthNames& monthNames() noexcept {
    const NkLanguageModule* const module = NkLanguagePublisher::Instance()->GetLangDependentResource();
    return module != nullptr && module->GetLanguage() == usNkLangEnglisch ? englishNames : germanNames;
}

/// "05.03." keeps the point of the year that is left out.
constexpr bool endsInPoint(const DateSettings& settings) noexcept {
    return settings.year == FormatDatumJahrOhne && settings.separator == '.' &&
           settings.order != FormatDatumArtJahrMonatTag;
}

// ---- Writing ----

/// Composes a text whose greatest length is known: "05.September.2004 14:07:09".
class DateWriter {
  public:
    void put(char c) noexcept { m_text[m_length++] = c; }
    void put(std::string_view text) noexcept {
        text.copy(m_text + m_length, text.size());
        m_length += text.size();
    }
    void putTwoDigits(int n) noexcept {
        put(static_cast<char>('0' + n / 10));
        put(static_cast<char>('0' + n % 10));
    }
    std::string_view text() const noexcept { return {m_text, m_length}; }

  private:
    char m_text[40];
    std::size_t m_length = 0;
};

[[gnu::cold, noreturn]] void refuseValue(const Origin& origin, const NkFoDateTime& value,
                                         std::string_view reason) {
    nkfo::Message text;
    text << value.year << '-' << value.month << '-' << value.day << ' ' << value.hour << ':' << value.minute
         << ':' << value.second;
    nkfo::refuse(origin, NkFoFehlerWert, text.text(), 0, reason);
}

void checkDate(const Origin& origin, const NkFoDateTime& value) {
    if (value.year < firstYear || value.year > lastYear)
        refuseValue(origin, value, "Jahr nicht 1753 bis 9999");
    if (value.month < 1 || value.month > 12) refuseValue(origin, value, "Monat nicht 1 bis 12");
    if (value.day < 1 || value.day > nkfw::daysInMonth(value.year, value.month)) {
        refuseValue(origin, value, "Tag nicht im Monat");
    }
}

void writeDayOrMonth(DateWriter& out, const DateSettings& settings, int number) {
    const char fill = settings.separator == '\0' ? '0' : settings.fill;
    if (number >= 10) {
        out.putTwoDigits(number);
        return;
    }
    if (fill != '\0') out.put(fill);
    out.put(static_cast<char>('0' + number));
}

void writePart(DateWriter& out, const DateSettings& settings, const NkFoDateTime& value, Part part) {
    switch (part) {
        case Part::Day:
            writeDayOrMonth(out, settings, value.day);
            break;
        case Part::Month:
            if (settings.month == FormatDatumMonatZahl) {
                writeDayOrMonth(out, settings, value.month);
            } else {
                const MonthNames& names = monthNames();
                const bool full = settings.month == FormatDatumMonatName;
                out.put(std::string_view((full ? names.fullNames : names.shortNames)[value.month - 1]));
            }
            break;
        case Part::Year:
            if (settings.year == FormatDatumJahrVierstellig) out.putTwoDigits(value.year / 100);
            out.putTwoDigits(value.year % 100);
            break;
    }
}

void writeDate(DateWriter& out, const DateSettings& settings, const NkFoDateTime& value) {
    bool first = true;
    for (const Part part : partOrder[settings.order]) {
        if (part == Part::Year && settings.year == FormatDatumJahrOhne) continue;
        if (!first && settings.separator != '\0') out.put(settings.separator);
        writePart(out, settings, value, part);
        first = false;
    }
    if (endsInPoint(settings)) out.put('.');
}

// ---- Reading ----

nkfw::LocalTime currentTime(const Origin& origin) {
    nkfw::LocalTime now{};
    if (!nkfw::readLocalTime(now)) nkfo::raise(origin, NkFoFehlerUhr, "Die Uhr ist nicht lesbar");
    return now;
}

/// A day or month number: two characters, or with separators one or two, the first of two perhaps a fill
/// character.
int readDayOrMonth(TextReader& reader, const DateSettings& settings) {
    if (settings.separator == '\0') return reader.expectTwoDigits();
    std::size_t mostDigits = 2;
    if (settings.fill != '\0' && settings.fill != '0') {
        const bool filled = reader.take(settings.fill) || (settings.separator != ' ' && reader.take(' '));
        if (filled) mostDigits = 1;
    }
    const std::string_view digits = reader.takeDigits(mostDigits);
    if (digits.empty()) reader.refuse("Ziffer erwartet");
    return digits.size() == 1 ? digits[0] - '0' : (digits[0] - '0') * 10 + (digits[1] - '0');
}

/// A month's name, short or full; of two that fit the longer one.
int readMonthName(TextReader& reader) {
    const MonthNames& names = monthNames();
    for (const auto& table : {names.fullNames, names.shortNames}) {
        for (int month = 1; month <= 12; ++month) {
            const std::string_view name = table[month - 1];
            if (!nkfo::equalWithoutCase(reader.rest().substr(0, name.size()), name)) continue;
            reader.skip(name.size());
            return month;
        }
    }
    reader.refuse("Monatsname erwartet");
}

/// A year of four or two digits; without separators of just as many as the format writes.
int readYear(TextReader& reader, const DateSettings& settings, const Origin& origin) {
    const std::size_t full = settings.year == FormatDatumJahrZweistellig ? 2 : 4;
    const char* const start = reader.pos();
    const std::string_view digits = reader.takeDigits(settings.separator == '\0' ? full : 4);
    const bool shortYear = digits.size() == 2 && (settings.separator != '\0' || full == 2);
    if (digits.size() != 4 && !shortYear) {
        reader.refuseAt(start, settings.separator != '\0' ? "Jahr mit vier oder zwei Ziffern erwartet"
                               : full == 4                ? "Jahr mit vier Ziffern erwartet"
                                                          : "Jahr mit zwei Ziffern erwartet");
    }
    int year = 0;
    for (const char c : digits)
        year = year * 10 + (c - '0');
    if (shortYear) year += currentTime(origin).year / 100 * 100;
    if (year < firstYear || year > lastYear) reader.refuseAt(start, "Jahr nicht 1753 bis 9999");
    return year;
}

NkFoDateTime readDate(TextReader& reader, const DateSettings& settings, const Origin& origin) {
    const char* dayStart = reader.pos();
    int day = 0;
    int month = 0;
    int year = 0;
    bool first = true;
    for (const Part part : partOrder[settings.order]) {
        if (part == Part::Year && settings.year == FormatDatumJahrOhne) continue;
        if (!first && settings.separator != '\0') reader.expect(settings.separator);
        first = false;
        const char* const start = reader.pos();
        switch (part) {
            case Part::Day:
                dayStart = start;
                day = readDayOrMonth(reader, settings);
                break;
            case Part::Month:
                month = settings.month == FormatDatumMonatZahl ? readDayOrMonth(reader, settings)
                                                               : readMonthName(reader);
                if (month < 1 || month > 12) reader.refuseAt(start, "Monat nicht 1 bis 12");
                break;
            case Part::Year:
                year = readYear(reader, settings, origin);
                break;
        }
    }
    if (endsInPoint(settings)) reader.expect('.');
    if (settings.year == FormatDatumJahrOhne) year = currentTime(origin).year;
    if (day < 1 || day > nkfw::daysInMonth(year, month)) reader.refuseAt(dayStart, "Tag nicht im Monat");
    return {static_cast<SHORT>(year), static_cast<SHORT>(month), static_cast<SHORT>(day), 0, 0, 0};
}

/// Two digits, 0 to @p last.
SHORT readTwoDigits(TextReader& reader, int last, std::string_view reason) {
    const char* const start = reader.pos();
    const int number = reader.expectTwoDigits();
    if (number > last) reader.refuseAt(start, reason);
    return static_cast<SHORT>(number);
}

/// One blank, h or hh, ":" mm and perhaps ":" ss.
void readTimeOfDay(TextReader& reader, NkFoDateTime& value) {
    reader.expect(' ');
    const char* const start = reader.pos();
    const std::string_view digits = reader.takeDigits(2);
    if (digits.empty()) reader.refuse("Ziffer erwartet");
    int hour = 0;
    for (const char c : digits)
        hour = hour * 10 + (c - '0');
    if (hour > 23) reader.refuseAt(start, "Stunde nicht 0 bis 23");
    value.hour = static_cast<SHORT>(hour);
    reader.expect(':');
    value.minute = readTwoDigits(reader, 59, "Minuten nicht 00 bis 59");
    if (reader.take(':')) value.second = readTwoDigits(reader, 59, "Sekunden nicht 00 bis 59");
}

}  // namespace

// ---- The operations ----

CString NkFormat::FormatDateTime(const NkFoDateTime& value) const {
    const DateSettings& settings = DateOf(formatDateTime);
    checkDate(formatDateTime, value);
    const bool validTime = value.hour >= 0 && value.hour <= 23 && value.minute >= 0 && value.minute <= 59 &&
                           value.second >= 0 && value.second <= 59;
    if (!validTime) refuseValue(formatDateTime, value, "keine Uhrzeit");
    DateWriter out;
    writeDate(out, settings, value);
    if (value.hour != 0 || value.minute != 0 || value.second != 0) {
        out.put(' ');
        out.putTwoDigits(value.hour);
        out.put(':');
        out.putTwoDigits(value.minute);
        out.put(':');
        out.putTwoDigits(value.second);
    }
    return CString(out.text());
}

NkFoDateTime NkFormat::ParseDateTime(LPCTSTR pszText) const {
    const DateSettings& settings = DateOf(parseDateTime);
    TextReader reader(parseDateTime, pszText);
    NkFoDateTime value = readDate(reader, settings, parseDateTime);
    if (!reader.atEnd()) readTimeOfDay(reader, value);
    reader.expectEnd();
    return value;
}

CString NkFormat::FormatDate(const NkFoDateTime& value) const {
    const DateSettings& settings = DateOf(formatDate);
    checkDate(formatDate, value);
    DateWriter out;
    writeDate(out, settings, value);
    return CString(out.text());
}

NkFoDateTime NkFormat::ParseDate(LPCTSTR pszText) const {
    const DateSettings& settings = DateOf(parseDate);
    TextReader reader(parseDate, pszText);
    const NkFoDateTime value = readDate(reader, settings, parseDate);
    reader.expectEnd();
    return value;
}
