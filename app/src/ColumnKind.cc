#include "ColumnKind.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

#include "DateKinds.h"
#include "Error.h"
#include "ExactTotal.h"
#include "KindOf.h"
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

template <class V, class F>
struct WholeKind : KindOf<V, F> {
    // The class itself stops reading at a point.
    static void checkWhole(const NkDtString& text) {
        const std::string_view characters(text.GetValue());
        if (characters.find_first_not_of("+-0123456789") != std::string_view::npos)
            throw DataError("\"" + visible(text.GetValue()) + "\" is no whole number");
    }
    static void setSqlText(V& value, const NkDtString& text) {
        checkWhole(text);
        value = V(text);
    }
    static void checkExternal(const NkDtString& text) {
        if (text.IsDefined()) checkWhole(text);
    }
};

struct LongKind : WholeKind<NkDtLong, long> {
    static constexpr ColumnKind description{"NkDtLong", true, false, false, "INTEGER", "INTEGER", nullptr};
    static void bind(CDatabaseRecordset& rs, LPCTSTR column, Field& field) { rs.BindLong(column, field); }
    static const char* compute(Value& value) {
        value += 1000;
        return "+ 1000";
    }
};

struct ShortKind : WholeKind<NkDtShort, int> {
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
    static constexpr ColumnKind description{"NkDtBool", false,   true,    false, "BOOLEAN",
                                            "BOOLEAN",  nullptr, nullptr, true};
    static void bind(CDatabaseRecordset& rs, LPCTSTR column, Field& field) { rs.BindBool(column, field); }
    static void setSqlText(Value& value, const NkDtString& text) {
        if (text.GetLength() != 1) refuse(text);
        value.SetFromSQL(*text.GetValue());
    }
    // The class itself lets other texts pass and keeps the value that it had.
    static void checkExternal(const NkDtString& text) {
        if (text != "J" && text != "N") refuse(text);
    }
    static void exchangeCheck(CDataExchange& exchange, int id, Value& value) {
        DDX_NkDtTypCheck(&exchange, id, value);
    }
    static const char* statedLoss(const Value& value, Representation representation) {
        if (!value.IsDefined())
            return representation == Representation::checkBox ? "it is never undefined" : nullptr;
        const bool keepsNumbers =
            representation == Representation::recordset || representation == Representation::archive;
        if (keepsNumbers || value.IsFalse() || value == TRUE) return nullptr;
        return "it knows true and false, and no other number";
    }
    static bool lacksNoMore(const Value& value, Representation representation, const Value* back) {
        if (representation != Representation::checkBox) return true;
        const BOOL isFalse = value.IsDefined() ? value.IsFalse() : TRUE;
        return back != nullptr && back->IsDefined() && back->IsFalse() == isFalse;
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
            case Representation::checkBox:
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
    static constexpr bool hasStatementText = true;
    static std::string statementText(const Value& value) {
        std::array<char, 32> text{};
        const auto end = std::to_chars(text.data(), text.data() + text.size(), value.GetValue()).ptr;
        return {text.data(), end};
    }
    static void setStatementText(Value& value, const NkDtString& text) {
        const std::optional<double> number = numberOf(text.GetValue());
        if (!number) throw DataError("\"" + visible(text.GetValue()) + "\" is no double");
        value = *number;
    }
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
            case Representation::checkBox:
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

const std::array kinds{entry<LongKind>(), entry<ShortKind>(),   entry<StringKind>(), entry<CharKind>(),
                       entry<BoolKind>(), entry<DecimalKind>(), entry<DoubleKind>(), dateTimeKind(),
                       dateKind(),        durationKind()};

constexpr std::string_view prefix = "NkDt";

std::string_view shortName(const ColumnKind& kind) noexcept {
    return kind.shortName != nullptr ? kind.shortName
                                     : std::string_view(kind.className).substr(prefix.size());
}

bool isNameOf(std::string_view name, const ColumnKind& kind) noexcept {
    const std::string_view className = kind.className;
    return equalIgnoringCase(name, className) || equalIgnoringCase(name, className.substr(prefix.size())) ||
           equalIgnoringCase(name, shortName(kind));
}

}  // namespace

const NkFormat& germanAmount() {
    constexpr ULONG noLimit = 2147483647;
    static const NkFormat format(noLimit, noLimit, FormatDezimalTrennerKomma, FormatTausenderTrennerPunkt,
                                 FormatVorzeichenVorn, FormatVorzeichenNurMinus, 0, '0', 2, '0');
    return format;
}

const ColumnKind* kindFor(CDatabaseColumn::Type type) noexcept {
    switch (type) {
        case CDatabaseColumn::smallInteger:
            return findKind("NkDtShort");
        case CDatabaseColumn::integer:
            return findKind("NkDtLong");
        case CDatabaseColumn::bigInteger:
        case CDatabaseColumn::decimal:
            return findKind("NkDtDecimal");
        case CDatabaseColumn::floating:
            return findKind("NkDtDouble");
        case CDatabaseColumn::character:
            return findKind("NkDtChar");
        case CDatabaseColumn::text:
            return findKind("NkDtString");
        case CDatabaseColumn::boolean:
            return findKind("NkDtBool");
        case CDatabaseColumn::date:
            return findKind("NkDtDateZp");
        case CDatabaseColumn::timestamp:
            return findKind("NkDtDateTime");
        case CDatabaseColumn::timeOfDay:
        case CDatabaseColumn::binary:
        case CDatabaseColumn::unknown:
            break;
    }
    return nullptr;
}

const ColumnKind* findKind(std::string_view className) noexcept {
    const auto found = std::find_if(kinds.begin(), kinds.end(),
                                    [&](const ColumnKind& kind) { return isNameOf(className, kind); });
    return found == kinds.end() ? nullptr : &*found;
}

std::string kindNames() {
    std::string names;
    for (const ColumnKind& kind : kinds) {
        if (!names.empty()) names += ", ";
        names += shortName(kind);
    }
    return names;
}

}  // namespace nkdt::app
