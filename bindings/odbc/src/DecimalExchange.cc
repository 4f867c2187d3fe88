#include "DecimalExchange.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <limits>

#include "Text.h"

namespace nkdt::odbc {

namespace {

constexpr int digitsOfDouble = 15;  // decimals that short come back from a double
constexpr int digitsOfSingle = 6;

std::string textOf(const PlainDecimal& number) {
    std::string text;
    number.appendTo(text);
    return '"' + text + '"';
}

std::optional<std::int64_t> wholeNumber(const PlainDecimal& number) {
    if (!number.isWhole() || number.digitsBefore() > std::numeric_limits<std::int64_t>::digits10 + 1)
        return std::nullopt;
    PlainDecimal whole = number;
    whole.dropPlacesOfWhole();
    std::string text;
    whole.appendTo(text);
    std::int64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
    return value;
}

/// The shortest text that reads back as the number.
template <class Number>
std::string fewestDigits(Number number) {
    std::array<char, 32> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

template <class Number>
std::optional<Number> numberOf(const std::string& text) {
    Number number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    return read.ec == std::errc() ? std::optional(number) : std::nullopt;
}

bool isSingle(const CDatabaseColumn& column) {
    return column.nType == CDatabaseColumn::floating && column.strTypeName == "float4";
}

bool isWhole(CDatabaseColumn::Type type) noexcept {
    return type == CDatabaseColumn::smallInteger || type == CDatabaseColumn::integer ||
           type == CDatabaseColumn::bigInteger;
}

bool containsIgnoringCase(std::string_view text, std::string_view upperPart) noexcept {
    const auto upper = [](char ch) {
        return ch >= 'a' && ch <= 'z' ? static_cast<char>(ch - 'a' + 'A') : ch;
    };
    return std::search(text.begin(), text.end(), upperPart.begin(), upperPart.end(),
                       [&](char a, char b) { return upper(a) == b; }) != text.end();
}

class DecimalExchange final : public FieldExchange {
  public:
    DecimalExchange(CString& field, const DecimalCapacity& capacity, bool doublesInFull)
        : m_field(field), m_capacity(capacity), m_doublesInFull(doublesInFull) {
        reserveText(field, PlainDecimal::longestText);
    }

    const void* field() const noexcept override { return &m_field; }

    void clear() override { setField({}); }

    void read(const CrossingValue& value, nkcp::Unmappable) override {
        PlainDecimal number = parse(value.text);
        if (!number.fitIntoField()) {
            throw Refusal{"22003", quotedExcerpt(value.text) + " hat mehr als " +
                                       std::to_string(PlainDecimal::mostDigits) +
                                       " Ziffern oder Nachkommastellen"};
        }
        m_text.clear();
        number.appendTo(m_text);
        setField(m_text);
    }

    bool holds(const CrossingValue& value, nkcp::Unmappable) const override {
        const std::optional<PlainDecimal> held = PlainDecimal::parse(m_field.View());
        return held && *held == parse(value.text);
    }

    void write(OutgoingValue& value) const override {
        PlainDecimal number = parsePlain(m_field.View());
        if (!number.fitIntoField() && !number.canBeWritten())
            throw Refusal{"22003", quotedExcerpt(m_field.View()) + " hat zu viele Ziffern"};
        number.dropMark();
        m_capacity.check(number);
        if (!m_capacity.keepsZeros()) number.dropPlacesOfWhole();
        std::string& text = value.setText();
        text.clear();
        number.appendTo(text);
    }

  private:
    static PlainDecimal parsePlain(std::string_view text) {
        const std::optional<PlainDecimal> number = PlainDecimal::parse(text);
        if (!number) throw Refusal{"22018", quotedExcerpt(text) + " ist keine Dezimalzahl"};
        return *number;
    }

    PlainDecimal parse(std::string_view text) const {
        const PlainDecimal number = parsePlain(text);
        if (!m_doublesInFull || text.find_first_of("eE") == std::string_view::npos) return number;
        double value = 0;
        const char* const end = text.data() + text.size();
        const auto read = std::from_chars(text.data(), end, value);
        return read.ec == std::errc() && read.ptr == end ? PlainDecimal::from(value) : number;
    }

    void setField(std::string_view text) {
        reserveText(m_field, PlainDecimal::longestText);
        const auto length = static_cast<INT>(text.size());
        LPTSTR buffer = m_field.GetBuffer(length);
        if (!text.empty()) std::memcpy(buffer, text.data(), text.size());
        m_field.ReleaseBuffer(length);
    }

    CString& m_field;
    const DecimalCapacity m_capacity;
    const bool m_doublesInFull;
    std::string m_text;  // keeps its memory
};

}  // namespace

// The database's own rule, in its order.
Affinity affinityOf(std::string_view typeName) noexcept {
    const auto has = [&](std::string_view part) { return containsIgnoringCase(typeName, part); };
    if (has("INT")) return Affinity::integer;
    if (has("CHAR") || has("CLOB") || has("TEXT")) return Affinity::text;
    if (typeName.empty() || has("BLOB")) return Affinity::blob;
    if (has("REAL") || has("FLOA") || has("DOUB")) return Affinity::real;
    return Affinity::numeric;
}

DecimalCapacity::DecimalCapacity(const CDatabaseColumn& column, CDatabase::Dbms dbms) {
    if (isWhole(column.nType)) {
        m_keepsZeros = false;
        allowWhole(dbms == CDatabase::sqlite ? CDatabaseColumn::bigInteger : column.nType);
    } else if (dbms == CDatabase::sqlite) {
        followAffinity(affinityOf(column.strTypeName.View()));
    } else {
        followDeclaration(column);
    }
}

void DecimalCapacity::allowWhole(CDatabaseColumn::Type type) {
    const auto allow = [this](auto number) {
        using Limits = std::numeric_limits<decltype(number)>;
        m_range = Range{Limits::min(), Limits::max()};
    };
    if (type == CDatabaseColumn::smallInteger) {
        allow(std::int16_t{});
    } else if (type == CDatabaseColumn::integer) {
        allow(std::int32_t{});
    } else {
        allow(std::int64_t{});
    }
}

// SQLite keeps what is declared as text or not at all; of the rest it makes 64-bit integers and doubles.
void DecimalCapacity::followAffinity(Affinity affinity) {
    m_keepsZeros = affinity == Affinity::text || affinity == Affinity::blob;
    if (m_keepsZeros) return;
    m_significant = digitsOfDouble;
    if (affinity != Affinity::real) allowWhole(CDatabaseColumn::bigInteger);
}

void DecimalCapacity::followDeclaration(const CDatabaseColumn& column) {
    if (column.nType == CDatabaseColumn::floating) {
        m_significant = isSingle(column) ? digitsOfSingle : digitsOfDouble;
        m_keepsZeros = false;
    } else if (column.nType == CDatabaseColumn::boolean) {
        m_range = Range{0, 1};
        m_keepsZeros = false;
    } else if (column.nType == CDatabaseColumn::decimal && column.nLength > 0) {
        m_digits = Digits{column.nLength - column.nScale, column.nScale};
    }
}

void DecimalCapacity::check(const PlainDecimal& number) const {
    if (m_digits && !number.isZero()) {
        if (number.lastPlace() > m_digits->behind) {
            throw Refusal{"22003", textOf(number) + " hat mehr als die " + std::to_string(m_digits->behind) +
                                       " Nachkommastellen der Spalte"};
        }
        if (number.digitsBefore() > m_digits->before) {
            throw Refusal{"22003", textOf(number) + " hat mehr als die " + std::to_string(m_digits->before) +
                                       " Vorkommastellen der Spalte"};
        }
    }
    if (m_range) {
        const std::optional<std::int64_t> whole = wholeNumber(number);
        if (whole && *whole >= m_range->lowest && *whole <= m_range->highest) return;
        if (!m_significant) {
            if (!number.isWhole()) throw Refusal{"22003", textOf(number) + " ist keine ganze Zahl"};
            throw Refusal{"22003", textOf(number) + " liegt außerhalb von " +
                                       std::to_string(m_range->lowest) + " bis " +
                                       std::to_string(m_range->highest)};
        }
    }
    if (m_significant && number.significantDigits() > *m_significant) {
        throw Refusal{"22003", "Die Spalte behält von " + textOf(number) + " nur " +
                                   std::to_string(*m_significant) + " Ziffern"};
    }
}

DoubleCapacity::DoubleCapacity(const CDatabaseColumn& column, CDatabase::Dbms dbms) {
    if (dbms == CDatabase::sqlite) return;
    m_single = isSingle(column);
    if (column.nType == CDatabaseColumn::decimal) m_decimal.emplace(column, dbms);
}

// A number of 32 bits comes back as the fewest digits that tell it.
void DoubleCapacity::check(double number) const {
    if (m_decimal) m_decimal->check(PlainDecimal::from(number));
    if (!m_single) return;
    const std::string text = fewestDigits(number);
    const std::optional<float> single = numberOf<float>(text);
    if (!single) throw Refusal{"22003", '"' + text + "\" liegt außerhalb der Gleitkommazahlen der Spalte"};
    const std::string back = fewestDigits(*single);
    if (numberOf<double>(back) != number)
        throw Refusal{"22003", "Die Spalte rundet \"" + text + "\" auf \"" + back + '"'};
}

std::unique_ptr<FieldExchange> exchangeDecimal(CString& field, const DecimalCapacity& capacity,
                                               bool doublesInFull) {
    return std::make_unique<DecimalExchange>(field, capacity, doublesInFull);
}

}  // namespace nkdt::odbc
