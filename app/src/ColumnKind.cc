#include "ColumnKind.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <stdexcept>

#include "Error.h"
#include "ExactTotal.h"
#include "Text.h"
#include "nkdec/Decimal96.h"
#include "nkdt/NkDtBool.h"
#include "nkdt/NkDtChar.h"
#include "nkdt/NkDtDecimal.h"
#include "nkdt/NkDtDouble.h"
#include "nkdt/NkDtLong.h"
#include "nkdt/NkDtShort.h"

namespace nkdt::app {

namespace {

// The kinds
// ----------------------------------------------------------------------------------------------------------

NkDtString externalText(const NkDtBasis& value) {
    BOOL defined = FALSE;
    USHORT version = 0;
    return value.ConvToExtern(defined, version);
}

/// What most classes do; a kind states what is its own.
template <class V, class F>
struct KindOf {
    using Value = V;
    using Field = F;

    static void prepare(Field&, const Value&) {}
    static void setText(Value& value, const NkDtString& text) { value = Value(text); }
    static void setSqlText(Value& value, const NkDtString& text) { value = Value(text); }
    static NkDtString sqlLiteral(const Value& value) { return value.ConvToSQL(); }
    static void checkExternal(const NkDtString&) {}
    static void giveFormat(Value&) {}
    static void takeThroughRecord(Value&, const Value&) { throw std::logic_error("no record"); }
    static void addTo(ExactTotal&, const Value&) { throw std::logic_error("no total"); }
    static NkDtString comparedText(const Value& value) { return externalText(value); }
    static const char* statedLoss(const Value&, Representation) { return nullptr; }
};

struct LongKind : KindOf<NkDtLong, long> {
    static constexpr ColumnKind description{"NkDtLong", true, false, false, "INTEGER", "INTEGER", nullptr};
    static void bind(CDatabaseRecordset& rs, LPCTSTR column, Field& field) { rs.BindLong(column, field); }
    static const char* compute(Value& value) {
        value += 1000;
        return "+ 1000";
    }
};

struct ShortKind : KindOf<NkDtShort, int> {
    static constexpr ColumnKind description{"NkDtShort", true, false, false, "SMALLINT", "SMALLINT", nullptr};
    static void bind(CDatabaseRecordset& rs, LPCTSTR column, Field& field) { rs.BindShort(column, field); }
    static const char* compute(Value& value) {
        value = value * -2;
        return "* -2";
    }
};

struct StringKind : KindOf<NkDtString, CString> {
    static constexpr ColumnKind description{"NkDtString", false, true, false, "TEXT", "TEXT", nullptr};
    static void bind(CDatabaseRecordset& rs, LPCTSTR column, Field& field) { rs.BindText(column, field); }
    static void prepare(Field& field, const Value& value) {
        CDatabaseRecordset::PrepareText(field, value.GetLength());
    }
    static void setText(Value& value, const NkDtString& text) {
        if (text.IsDefined()) {
            value = text.GetValue();
        } else {
            value.Clear();
        }
    }
    static void setSqlText(Value& value, const NkDtString& text) {
        value.SetFromSQL(text.GetValue(), text.GetLength());
    }
    static const char* statedLoss(const Value& value, Representation representation) {
        if (!value.IsDefined() || value.GetLength() != 0) return nullptr;
        if (representation == Representation::userText) return "user-interface text has no empty text";
        if (representation == Representation::sqlLiteral) return "reading an SQL text knows no empty text";
        return nullptr;
    }
    static const char* compute(Value& value) {
        value += " & S\xF6hne";
        return "+ \" & Söhne\"";
    }
};

struct CharKind : KindOf<NkDtChar, CString> {
    static constexpr ColumnKind description{"NkDtChar", false, true, false, "CHAR(1)", "CHAR(1)", nullptr};
    static void bind(CDatabaseRecordset& rs, LPCTSTR column, Field& field) { rs.BindChar(column, field); }
    // The class itself takes the first character of any text.
    static void checkSingle(const NkDtString& text) {
        if (text.IsDefined() && text.GetLength() > 1)
            throw DataError("\"" + visible(text.GetValue()) + "\" is longer than one character");
    }
    static void setText(Value& value, const NkDtString& text) {
        checkSingle(text);
        value = Value(text);
    }
    static void setSqlText(Value& value, const NkDtString& text) {
        checkSingle(text);
        value.SetFromSQL(*text.GetValue());
    }
    static void checkExternal(const NkDtString& text) { checkSingle(text); }
    static const char* statedLoss(const Value& value, Representation representation) {
        if (value.IsDefined() && value.GetValue() == '\0' && representation == Representation::userText)
            return "user-interface text has no empty text";
        return nullptr;
    }
    static const char* compute(Value& value) {
        value.ToLower();
        return "small letter";
    }
};

struct BoolKind : KindOf<NkDtBool, BOOL> {
    static constexpr ColumnKind description{"NkDtBool", false, true, false, "BOOLEAN", "BOOLEAN", nullptr};
    static void bind(CDatabaseRecordset& rs, LPCTSTR column, Field& field) { rs.BindBool(column, field); }
    static void setSqlText(Value& value, const NkDtString& text) {
        if (text.GetLength() != 1) refuse(text);
        value.SetFromSQL(*text.GetValue());
    }
    // The class itself lets other texts pass and keeps the value that it had.
    static void checkExternal(const NkDtString& text) {
        if (text != "J" && text != "N") refuse(text);
    }
    static const char* statedLoss(const Value& value, Representation representation) {
        const bool keepsNumbers =
            representation == Representation::recordset || representation == Representation::archive;
        if (keepsNumbers || !value.IsDefined() || value.IsFalse() || value == TRUE) return nullptr;
        return "it knows true and false, and no other number";
    }
    static const char* compute(Value& value) {
        if (value.IsDefined()) value = value.IsFalse();
        return "not";
    }

  private:
    [[noreturn]] static void refuse(const NkDtString& text) {
        throw DataError("\"" + visible(text.GetValue()) + "\" is no truth value");
    }
};

struct DecimalKind : KindOf<NkDtDecimal, CString> {
    // SQLite keeps all digits of a number only in a column that is declared as text.
    static constexpr ColumnKind description{"NkDtDecimal", true,      false,  true,
                                            "DECIMALTEXT", "NUMERIC", nullptr};
    static void bind(CDatabaseRecordset& rs, LPCTSTR column, Field& field) { rs.BindDecimal(column, field); }
    static void prepare(Field& field, const Value&) {
        CDatabaseRecordset::PrepareText(field, static_cast<INT>(Decimal96::textSize));
    }
    static void giveFormat(Value& value) { value.SetFormat(&germanAmount()); }
    static void setSqlText(Value& value, const NkDtString& text) { value.SetFromSQL(text.GetValue()); }
    static void takeThroughRecord(Value& to, const Value& from) {
        BOOL defined = FALSE;
        const DEC record = from.ConvToBTR(defined);
        to.SetFromBTR(record, defined);
    }
    static void addTo(ExactTotal& total, const Value& value) { total.add(value.ConvToSQL().GetValue()); }
    // Databases hold the same number with more zeros behind or fewer.
    static NkDtString comparedText(const Value& value) {
        std::array<char, Decimal96::textSize> plain{};
        return externalText(Value(Decimal96(value.DecimalToAscii(plain.data()))));
    }
    static const char* statedLoss(const Value& value, Representation representation) {
        if (!value.IsDefined()) return nullptr;
        const Decimal96 number(value.ConvToSQL().GetValue());
        switch (representation) {
            case Representation::text:
            case Representation::sqlLiteral:
                return hasTooManyDigits(number, true) ? "reading a text takes 28 digits" : nullptr;
            case Representation::recordset:
                return hasTooManyDigits(number, false) ? "reading a field takes 28 digits" : nullptr;
            case Representation::record:
                return isWide(number) ? "a record has 64 bits for the digits" : nullptr;
            case Representation::userText:
            case Representation::external:
            case Representation::archive:
                break;
        }
        return nullptr;
    }
    static const char* compute(Value& value) {
        value = value * 3;
        return "* 3";
    }

  private:
    // A zero in front excuses more digits, but it counts itself where a sign stands before it.
    static bool hasTooManyDigits(const Decimal96& number, bool countZeroBehindSign) {
        std::array<char, Decimal96::textSize> text{};
        const char* const end = number.abs().toString(text.data());
        const auto most = static_cast<std::ptrdiff_t>(Decimal96::maxScale) + (number.scale() > 0 ? 1 : 0);
        const bool excused = text.front() == '0' && !(countZeroBehindSign && number.isNegative());
        return end - text.data() > most && !excused;
    }
    static bool isWide(const Decimal96& number) { return number.abs().mantissaHigh() != 0; }
};

struct DoubleKind : KindOf<NkDtDouble, double> {
    static constexpr ColumnKind description{"NkDtDouble",       true,   false, false, "DOUBLE PRECISION",
                                            "DOUBLE PRECISION", nullptr};
    static void bind(CDatabaseRecordset& rs, LPCTSTR column, Field& field) { rs.BindDouble(column, field); }
    // The class itself ignores what follows a number, and takes a text without one for 0.
    static void checkNumber(const NkDtString& text) {
        if (text.IsDefined() && !isNumber({text.GetValue(), static_cast<std::size_t>(text.GetLength())}))
            throw DataError("\"" + visible(text.GetValue()) + "\" is no number");
    }
    static void setText(Value& value, const NkDtString& text) {
        checkNumber(text);
        value = Value(text);
    }
    static void setSqlText(Value& value, const NkDtString& text) {
        checkNumber(text);
        value.SetFromSQL(Value(text).GetValue());
    }
    static void checkExternal(const NkDtString& text) { checkNumber(text); }
    static const char* statedLoss(const Value& value, Representation representation) {
        if (!value.IsDefined()) return nullptr;
        switch (representation) {
            case Representation::text:
            case Representation::sqlLiteral:
                return isToldBy(15, value) ? nullptr : "15 digits do not tell this double";
            case Representation::external:
                return isToldBy(16, value) ? nullptr : "16 digits do not tell this double";
            case Representation::userText:
                return hasTwoPlaces(value) ? nullptr : "the default format shows two places";
            case Representation::recordset:
            case Representation::archive:
            case Representation::record:
                break;
        }
        return nullptr;
    }
    static const char* compute(Value& value) {
        value = value / 2;
        return "/ 2";
    }

  private:
    static std::optional<double> numberOf(std::string_view text) {
        double number = 0;
        const char* const end = text.data() + text.size();
        const auto read = std::from_chars(text.data(), end, number);
        if (read.ec != std::errc() || read.ptr != end || !std::isfinite(number)) return std::nullopt;
        return number;
    }
    // Too large and too small a number is the class's to refuse.
    static bool isNumber(std::string_view text) {
        double number = 0;
        const char* const end = text.data() + text.size();
        const auto read = std::from_chars(text.data(), end, number);
        return read.ec != std::errc::invalid_argument && read.ptr == end &&
               text.find_first_not_of("+-.0123456789eE") == std::string_view::npos;
    }
    static bool isToldBy(int digits, const Value& value) {
        std::array<char, 32> text{};
        const auto end = std::to_chars(text.data(), text.data() + text.size(), value.GetValue(),
                                       std::chars_format::general, digits)
                             .ptr;
        return numberOf({text.data(), static_cast<std::size_t>(end - text.data())}) == value.GetValue();
    }
    // By the shortest text that tells the double, as the format itself sees it.
    static bool hasTwoPlaces(const Value& value) {
        constexpr std::size_t longest = 400;
        std::array<char, longest> text{};
        const auto end =
            std::to_chars(text.begin(), text.end(), value.GetValue(), std::chars_format::fixed).ptr;
        const std::string_view plain(text.data(), static_cast<std::size_t>(end - text.data()));
        const std::size_t point = plain.find('.');
        return point == std::string_view::npos || plain.size() - point - 1 <= 2;
    }
};

// Their cells
// ----------------------------------------------------------------------------------------------------------

template <class Kind>
class CellOf final : public Cell {
  public:
    static std::unique_ptr<Cell> make() { return std::make_unique<CellOf>(); }
    CellOf() { Kind::giveFormat(m_value); }

    NkDtBasis& value() noexcept override { return m_value; }
    const NkDtBasis& value() const noexcept override { return m_value; }
    const ColumnKind& kind() const noexcept override { return *findKind(Kind::description.className); }

    void bind(CDatabaseRecordset& rs, LPCTSTR column) override { Kind::bind(rs, column, m_field); }
    void fetch(CRecordset& rs) override { m_value.SetFromRecordSet(rs, m_field); }
    void store(CRecordset& rs) override {
        Kind::prepare(m_field, m_value);
        m_value.ConvToRecordSet(rs, m_field);
    }

    NkDtString text() const override { return NkDtString(m_value); }
    void setText(const NkDtString& text) override { Kind::setText(m_value, text); }
    NkDtString sqlLiteral() const override { return Kind::sqlLiteral(m_value); }
    void setSqlText(const NkDtString& text) override { Kind::setSqlText(m_value, text); }
    void setExternal(const NkDtString& text, BOOL fDefined, USHORT version) override {
        if (fDefined && version == NkDtExternVersion) Kind::checkExternal(text);
        m_value.SetFromExtern(&text, fDefined, version);
    }
    void serialize(CArchive& ar) override { m_value.Serialize(ar); }
    void takeThroughRecord(const Cell& from) override {
        Kind::takeThroughRecord(m_value, static_cast<const CellOf&>(from).m_value);
    }

    bool equals(const Cell& other) const override {
        const auto& that = static_cast<const CellOf&>(other).m_value;
        if (m_value.IsDefined() != that.IsDefined()) return false;
        return !m_value.IsDefined() || m_value == that;
    }
    NkDtString comparedText() const override { return Kind::comparedText(m_value); }
    const char* statedLoss(Representation representation) const override {
        return Kind::statedLoss(m_value, representation);
    }
    const char* compute() override { return Kind::compute(m_value); }
    void addTo(ExactTotal& total) const override { Kind::addTo(total, m_value); }

  private:
    typename Kind::Value m_value{NkDtWmNull};
    typename Kind::Field m_field{};
};

template <class Kind>
constexpr ColumnKind entry() {
    ColumnKind kind = Kind::description;
    kind.makeCell = &CellOf<Kind>::make;
    return kind;
}

const std::array kinds{entry<LongKind>(), entry<ShortKind>(),   entry<StringKind>(), entry<CharKind>(),
                       entry<BoolKind>(), entry<DecimalKind>(), entry<DoubleKind>()};

// All classes that a column can have, those that are still to come included
// ----------------------------------------------------------------------------------------------------------

constexpr std::array classNames{"NkDtLong",   "NkDtShort", "NkDtString",   "NkDtChar",   "NkDtDecimal",
                                "NkDtDouble", "NkDtBool",  "NkDtDateTime", "NkDtDateZp", "NkDtTime"};

constexpr std::string_view prefix = "NkDt";

bool isNameOf(std::string_view name, std::string_view className) noexcept {
    return equalIgnoringCase(name, className) || equalIgnoringCase(name, className.substr(prefix.size()));
}

}  // namespace

const NkFormat& germanAmount() {
    constexpr ULONG noLimit = 2147483647;
    static const NkFormat format(noLimit, noLimit, FormatDezimalTrennerKomma, FormatTausenderTrennerPunkt,
                                 FormatVorzeichenVorn, FormatVorzeichenNurMinus, 0, '0', 2, '0');
    return format;
}

const char* classNameFor(CDatabaseColumn::Type type) noexcept {
    switch (type) {
        case CDatabaseColumn::smallInteger:
            return "NkDtShort";
        case CDatabaseColumn::integer:
            return "NkDtLong";
        case CDatabaseColumn::bigInteger:
        case CDatabaseColumn::decimal:
            return "NkDtDecimal";
        case CDatabaseColumn::floating:
            return "NkDtDouble";
        case CDatabaseColumn::character:
            return "NkDtChar";
        case CDatabaseColumn::text:
            return "NkDtString";
        case CDatabaseColumn::boolean:
            return "NkDtBool";
        case CDatabaseColumn::date:
            return "NkDtDateZp";
        case CDatabaseColumn::timestamp:
            return "NkDtDateTime";
        case CDatabaseColumn::timeOfDay:
        case CDatabaseColumn::binary:
        case CDatabaseColumn::unknown:
            break;
    }
    return nullptr;
}

const ColumnKind* findKind(std::string_view className) noexcept {
    const auto found = std::find_if(kinds.begin(), kinds.end(), [&](const ColumnKind& kind) {
        return isNameOf(className, kind.className);
    });
    return found == kinds.end() ? nullptr : &*found;
}

const char* findClassName(std::string_view name) noexcept {
    const auto found = std::find_if(classNames.begin(), classNames.end(),
                                    [&](std::string_view className) { return isNameOf(name, className); });
    return found == classNames.end() ? nullptr : *found;
}

std::string kindNames() {
    std::string names;
    for (const ColumnKind& kind : kinds) {
        if (!names.empty()) names += ", ";
        names += std::string_view(kind.className).substr(prefix.size());
    }
    return names;
}

}  // namespace nkdt::app
