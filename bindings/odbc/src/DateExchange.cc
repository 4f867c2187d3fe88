#include "DateExchange.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "Text.h"
#include "nkfw/Calendar.h"

namespace nkdt::odbc {

namespace {

constexpr int firstYear = 1753;
constexpr int lastYear = 9999;
constexpr std::size_t yearDigits = 4;
constexpr std::string_view digits = "0123456789";
constexpr std::string_view lastSecond = "9999-12-31 23:59:59";

bool areEqual(const TIMESTAMP_STRUCT& a, const TIMESTAMP_STRUCT& b) noexcept {
    return a.year == b.year && a.month == b.month && a.day == b.day && a.hour == b.hour &&
           a.minute == b.minute && a.second == b.second;
}

bool hasTimeOfDay(const TIMESTAMP_STRUCT& time) noexcept {
    return time.hour != 0 || time.minute != 0 || time.second != 0;
}

/// Throws a Refusal for a time that is none, or that the value classes do not hold.
void checkTime(const TIMESTAMP_STRUCT& time, std::string_view text) {
    if (time.year < firstYear || time.year > lastYear)
        throw Refusal{"22008", quotedExcerpt(text) + " liegt außerhalb der Jahre 1753 bis 9999"};
    const bool exists = time.month >= 1 && time.month <= 12 && time.day >= 1 &&
                        time.day <= nkfw::daysInMonth(time.year, time.month) && time.hour <= 23 &&
                        time.minute <= 59 && time.second <= 59;
    if (!exists) throw Refusal{"22008", quotedExcerpt(text) + " gibt es im Kalender nicht"};
}

// Reading
// ----------------------------------------------------------------------------------------------------------

/// Takes "YYYY-MM-DD", behind it perhaps a blank or "T" and "hh:mm[:ss[.f...]]", apart. The fraction is
/// dropped.
class DateText {
  public:
    explicit DateText(std::string_view text) : m_text(text), m_rest(text) {}

    TIMESTAMP_STRUCT read(bool zoned) {
        TIMESTAMP_STRUCT time{};
        time.year = year();
        require('-');
        time.month = twoDigits();
        require('-');
        time.day = twoDigits();
        if (take(' ') || take('T')) {
            time.hour = twoDigits();
            require(':');
            time.minute = twoDigits();
            if (take(':')) {
                time.second = twoDigits();
                if (take('.')) skipDigits();
            }
            if (zoned) skipZone();
        }
        if (!m_rest.empty()) refuse();
        checkTime(time, m_text);
        return time;
    }

  private:
    [[noreturn]] void refuse() const { throw Refusal{"22018", quotedExcerpt(m_text) + " ist kein Datum"}; }

    bool take(char ch) noexcept {
        if (m_rest.empty() || m_rest.front() != ch) return false;
        m_rest.remove_prefix(1);
        return true;
    }
    void require(char ch) {
        if (!take(ch)) refuse();
    }
    USHORT number(std::size_t count) {
        int number = 0;
        for (; count > 0; --count) {
            if (m_rest.empty() || digits.find(m_rest.front()) == std::string_view::npos) refuse();
            number = number * 10 + (m_rest.front() - '0');
            m_rest.remove_prefix(1);
        }
        return static_cast<USHORT>(number);
    }
    USHORT twoDigits() { return number(2); }

    // A year of more digits is one, but beyond all that can be held.
    SHORT year() {
        const std::size_t count = std::min(m_rest.find_first_not_of(digits), m_rest.size());
        const auto year = static_cast<SHORT>(number(yearDigits));
        m_rest.remove_prefix(count - yearDigits);
        return count == yearDigits ? year : SHORT{lastYear + 1};
    }
    void skipDigits() {
        (void)number(1);
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(digits), m_rest.size()));
    }
    // "+01", "-03:30", "+00:53:28"
    void skipZone() {
        if (!take('+') && !take('-')) return;
        do {
            (void)twoDigits();
        } while (take(':'));
    }

    std::string_view m_text;
    std::string_view m_rest;
};

// Writing
// ----------------------------------------------------------------------------------------------------------

void appendPadded(std::string& text, int number, std::size_t width) {
    const std::string plain = std::to_string(number);
    if (plain.size() < width) text.append(width - plain.size(), '0');
    text += plain;
}

/// "2004-03-05", or with the time of day "2004-03-05 14:07:09", as such columns have it: SQLite compares
/// texts.
void appendTime(std::string& text, const TIMESTAMP_STRUCT& time, bool dateOnly) {
    appendPadded(text, time.year, yearDigits);
    text += '-';
    appendPadded(text, time.month, 2);
    text += '-';
    appendPadded(text, time.day, 2);
    if (dateOnly) return;
    text += ' ';
    appendPadded(text, time.hour, 2);
    text += ':';
    appendPadded(text, time.minute, 2);
    text += ':';
    appendPadded(text, time.second, 2);
}

class DateExchange final : public FieldExchange {
  public:
    DateExchange(TIMESTAMP_STRUCT& field, const DateColumn& column) : m_field(field), m_column(column) {}

    const void* field() const noexcept override { return &m_field; }
    void clear() override { m_field = {}; }

    void read(const CrossingValue& value, nkcp::Unmappable) override { m_field = parse(value.text); }

    bool holds(const CrossingValue& value, nkcp::Unmappable) const override {
        return areEqual(parse(value.text), m_field);
    }

    void write(OutgoingValue& value) const override {
        std::string& text = value.setText();
        text.clear();
        appendTime(text, m_field, m_column.dateOnly && !hasTimeOfDay(m_field));
        checkTime(m_field, text);
        if (m_column.dateOnly && hasTimeOfDay(m_field))
            throw Refusal{"22008", quotedExcerpt(text) + " hat eine Uhrzeit, die Spalte nimmt nur ein Datum"};
    }

  private:
    TIMESTAMP_STRUCT parse(std::string_view text) const {
        if (m_column.lastMayBeInfinity && text == lastSecond) {
            throw Refusal{"22008", quotedExcerpt(text) +
                                       " kann in einer Abfrage auch \"infinity\" sein; als Text abgefragt "
                                       "(::text) ist es eindeutig"};
        }
        return DateText(text).read(m_column.zoned);
    }

    TIMESTAMP_STRUCT& m_field;
    const DateColumn m_column;
};

}  // namespace

DateColumn::DateColumn(const CDatabaseColumn& column, CDatabase::Dbms dbms, bool fieldOfDates, bool ofTable)
    : dateOnly(column.nType == CDatabaseColumn::date ||
               (fieldOfDates && column.nType != CDatabaseColumn::timestamp)),
      zoned(dbms == CDatabase::postgresql && column.nType == CDatabaseColumn::timestamp),
      lastMayBeInfinity(dbms == CDatabase::postgresql && column.nType == CDatabaseColumn::timestamp &&
                        !ofTable) {}

std::unique_ptr<FieldExchange> exchangeDate(TIMESTAMP_STRUCT& field, const DateColumn& column) {
    return std::make_unique<DateExchange>(field, column);
}

}  // namespace nkdt::odbc
