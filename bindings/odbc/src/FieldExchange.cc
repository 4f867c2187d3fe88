#include "FieldExchange.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include "DecimalExchange.h"
#include "Text.h"

namespace nkdt::odbc {

namespace {

constexpr std::size_t longestText = 2147483646;  // what a text's length and allocated length can count

bool startsLikeNumber(std::string_view text) noexcept {
    if (!text.empty() && text.front() == '-') text.remove_prefix(1);
    return !text.empty() && ((text.front() >= '0' && text.front() <= '9') || text.front() == '.');
}

template <class Field>
class WholeNumberExchange final : public FieldExchange {
  public:
    WholeNumberExchange(Field& field, std::int64_t lowest, std::int64_t highest)
        : m_field(field), m_lowest(lowest), m_highest(highest) {}

    const void* field() const noexcept override { return &m_field; }
    void clear() override { m_field = 0; }

    void read(const CrossingValue& value, nkcp::Unmappable) override {
        m_field = static_cast<Field>(parse(value.text));
    }

    bool holds(const CrossingValue& value, nkcp::Unmappable) const override {
        return parse(value.text) == m_field;
    }

    void write(OutgoingValue& value) const override {
        if (m_field < m_lowest || m_field > m_highest) refuseRange(std::to_string(m_field));
        std::array<char, 24> digits{};
        const auto end = std::to_chars(digits.begin(), digits.end(), m_field).ptr;
        value.setText().assign(digits.begin(), end);
    }

  private:
    std::int64_t parse(std::string_view text) const {
        std::int64_t number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error == std::errc::invalid_argument || end != text.data() + text.size()) {
            throw Refusal{"22018", quotedExcerpt(text) + " ist keine ganze Zahl"};
        }
        if (error != std::errc() || number < m_lowest || number > m_highest) refuseRange(text);
        return number;
    }

    [[noreturn]] void refuseRange(std::string_view text) const {
        throw Refusal{"22003", quotedExcerpt(text) + " liegt außerhalb von " + std::to_string(m_lowest) +
                                   " bis " + std::to_string(m_highest)};
    }

    Field& m_field;
    const std::int64_t m_lowest;
    const std::int64_t m_highest;
};

class DoubleExchange final : public FieldExchange {
  public:
    DoubleExchange(double& field, const DoubleCapacity& capacity, bool numbersAreExact)
        : m_field(field), m_capacity(capacity), m_numbersAreExact(numbersAreExact) {}

    const void* field() const noexcept override { return &m_field; }
    void clear() override { m_field = 0; }

    void read(const CrossingValue& value, nkcp::Unmappable) override { m_field = parse(value); }

    bool holds(const CrossingValue& value, nkcp::Unmappable) const override {
        return std::bit_cast<std::uint64_t>(parse(value)) == std::bit_cast<std::uint64_t>(m_field);
    }

    void write(OutgoingValue& value) const override {
        if (!std::isfinite(m_field))
            throw Refusal{"22003", "Unendliche und unbestimmte Zahlen sind nicht speicherbar"};
        m_capacity.check(m_field);
        if (m_numbersAreExact) {
            value.setNumber(m_field);
        } else {
            value.setNumberText(m_field);
        }
    }

  private:
    static double parse(const CrossingValue& value) {
        double number = 0;
        const std::string_view text = value.text;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (!startsLikeNumber(text) || error == std::errc::invalid_argument ||
            end != text.data() + text.size()) {
            throw Refusal{"22018", quotedExcerpt(text) + " ist keine Zahl"};
        }
        if (error != std::errc()) {
            throw Refusal{"22003", quotedExcerpt(text) + " liegt außerhalb der Gleitkommazahlen"};
        }
        return number;
    }

    double& m_field;
    const DoubleCapacity m_capacity;
    const bool m_numbersAreExact;
};

void refuseCharacter(const nkcp::Conversion& end) {
    if (end.character == 0xFFFD) {
        throw Refusal{"22021", "Byte " + std::to_string(end.position + 1) + " ist kein gültiges UTF-8"};
    }
    throw Refusal{"22021",
                  "Zeichen " + codePointName(end.character) + " ist in Codepage 1252 nicht darstellbar"};
}

class TextExchange final : public FieldExchange {
  public:
    TextExchange(CString& field, std::size_t longest, bool emptyIsKept = true)
        : m_field(field), m_longest(longest), m_emptyIsKept(emptyIsKept) {
        if (longest < longestText) reserveText(field, longest);
    }

    const void* field() const noexcept override { return &m_field; }

    void clear() override {
        if (m_field.GetAllocLength() > 0) {
            (void)m_field.GetBuffer(0);
            m_field.ReleaseBuffer(0);
        }
    }

    void read(const CrossingValue& value, nkcp::Unmappable option) override {
        std::size_t length = value.text.size();
        if (length > longestText) throw Refusal{"22001", "Der Text ist zu lang"};
        reserveText(m_field, length);
        LPTSTR buffer = m_field.GetBuffer(static_cast<INT>(length));
        if (length > 0) std::memcpy(buffer, value.text.data(), length);
        const nkcp::Conversion end = nkcp::cp1252FromUtf8InPlace(buffer, length, option);
        m_field.ReleaseBuffer(static_cast<INT>(end.complete ? length : 0));
        if (!end.complete) refuseCharacter(end);
        if (length > m_longest) refuseLength();
    }

    bool holds(const CrossingValue& value, nkcp::Unmappable option) const override {
        std::string text;
        const nkcp::Conversion end = nkcp::appendCp1252FromUtf8(value.text, text, option);
        return end.complete && text == m_field.View();
    }

    void write(OutgoingValue& value) const override {
        const std::string_view text = m_field.View();
        if (text.find('\0') != std::string_view::npos)
            throw Refusal{"22021", "Ein NUL im Text ist nicht speicherbar"};
        if (text.size() > m_longest) refuseLength();
        if (text.empty() && !m_emptyIsKept)
            throw Refusal{"22026", "Die Spalte macht aus einem leeren Text ein Leerzeichen"};
        std::string& utf8 = value.setText();
        utf8.clear();
        nkcp::appendUtf8FromCp1252(text, utf8);
    }

  private:
    [[noreturn]] void refuseLength() const { throw Refusal{"22001", "Der Text ist länger als ein Zeichen"}; }

    CString& m_field;
    const std::size_t m_longest;
    const bool m_emptyIsKept;
};

}  // namespace

void OutgoingValue::setNull() noexcept {
    m_null = true;
    m_number.reset();
    m_text.clear();
}

std::string& OutgoingValue::setText() {
    m_null = false;
    m_number.reset();
    return m_text;
}

void OutgoingValue::setNumber(double number) {
    setNumberText(number);
    m_number = number;
}

void OutgoingValue::setNumberText(double number) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), number).ptr;
    setText().assign(digits.begin(), end);
}

CrossingValue OutgoingValue::value() const noexcept {
    return {m_null, m_text, m_number};
}

FieldExchange::~FieldExchange() = default;

std::unique_ptr<FieldExchange> exchangeShort(int& field) {
    return std::make_unique<WholeNumberExchange<int>>(field, std::numeric_limits<std::int16_t>::min(),
                                                      std::numeric_limits<std::int16_t>::max());
}

std::unique_ptr<FieldExchange> exchangeLong(long& field) {
    return std::make_unique<WholeNumberExchange<long>>(field, std::numeric_limits<std::int32_t>::min(),
                                                       std::numeric_limits<std::int32_t>::max());
}

std::unique_ptr<FieldExchange> exchangeLong(LONG& field) {
    return std::make_unique<WholeNumberExchange<LONG>>(field, std::numeric_limits<LONG>::min(),
                                                       std::numeric_limits<LONG>::max());
}

std::unique_ptr<FieldExchange> exchangeBool(BOOL& field, bool numbersAreKept) {
    using Limits = std::numeric_limits<BOOL>;
    return std::make_unique<WholeNumberExchange<BOOL>>(field, numbersAreKept ? Limits::min() : 0,
                                                       numbersAreKept ? Limits::max() : 1);
}

std::unique_ptr<FieldExchange> exchangeDouble(double& field, const DoubleCapacity& capacity,
                                              bool numbersAreExact) {
    return std::make_unique<DoubleExchange>(field, capacity, numbersAreExact);
}

std::unique_ptr<FieldExchange> exchangeChar(CString& field, bool emptyIsKept) {
    return std::make_unique<TextExchange>(field, 1, emptyIsKept);
}

std::unique_ptr<FieldExchange> exchangeText(CString& field) {
    return std::make_unique<TextExchange>(field, longestText);
}

// One more than the length, since a text that fills the buffer is cut by a character when a value class
// writes it.
void reserveText(CString& field, std::size_t length) {
    const auto held = static_cast<std::size_t>(field.GetAllocLength());
    if (held > length) return;
    const std::size_t grown = std::min(std::max(length + 1, held + held / 2), longestText);
    const INT oldLength = field.GetLength();
    (void)field.GetBuffer(static_cast<INT>(grown));
    field.ReleaseBuffer(oldLength);
}

}  // namespace nkdt::odbc
