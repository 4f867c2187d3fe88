#include "ColumnKind.h"

#include <algorithm>
#include <array>

#include "Error.h"
#include "Text.h"
#include "nkdt/NkDtBool.h"
#include "nkdt/NkDtChar.h"
#include "nkdt/NkDtLong.h"
#include "nkdt/NkDtShort.h"

namespace nkdt::app {

namespace {

// The kinds
// ----------------------------------------------------------------------------------------------------------

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
    static const char* statedLoss(const Value&, Representation) { return nullptr; }
};

struct LongKind : KindOf<NkDtLong, long> {
    static constexpr ColumnKind description{"NkDtLong", true, false, "INTEGER", "INTEGER", nullptr};
    static void bind(CDatabaseRecordset& rs, LPCTSTR column, Field& field) { rs.BindLong(column, field); }
    static const char* compute(Value& value) {
        value += 1000;
        return "+ 1000";
    }
};

struct ShortKind : KindOf<NkDtShort, int> {
    static constexpr ColumnKind description{"NkDtShort", true, false, "SMALLINT", "SMALLINT", nullptr};
    static void bind(CDatabaseRecordset& rs, LPCTSTR column, Field& field) { rs.BindShort(column, field); }
    static const char* compute(Value& value) {
        value = value * -2;
        return "* -2";
    }
};

struct StringKind : KindOf<NkDtString, CString> {
    static constexpr ColumnKind description{"NkDtString", false, true, "TEXT", "TEXT", nullptr};
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
    static constexpr ColumnKind description{"NkDtChar", false, true, "CHAR(1)", "CHAR(1)", nullptr};
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
    static constexpr ColumnKind description{"NkDtBool", false, true, "BOOLEAN", "BOOLEAN", nullptr};
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

// Their cells
// ----------------------------------------------------------------------------------------------------------

template <class Kind>
class CellOf final : public Cell {
  public:
    static std::unique_ptr<Cell> make() { return std::make_unique<CellOf>(); }

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

    bool equals(const Cell& other) const override {
        const auto& that = static_cast<const CellOf&>(other).m_value;
        if (m_value.IsDefined() != that.IsDefined()) return false;
        return !m_value.IsDefined() || m_value == that;
    }
    const char* statedLoss(Representation representation) const override {
        return Kind::statedLoss(m_value, representation);
    }
    const char* compute() override { return Kind::compute(m_value); }

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

const std::array kinds{entry<LongKind>(), entry<ShortKind>(), entry<StringKind>(), entry<CharKind>(),
                       entry<BoolKind>()};

// All classes that a column can have, those that are still to come included
// ----------------------------------------------------------------------------------------------------------

constexpr std::array classNames{"NkDtLong",   "NkDtShort", "NkDtString",   "NkDtChar",   "NkDtDecimal",
                                "NkDtDouble", "NkDtBool",  "NkDtDateTime", "NkDtDateZp", "NkDtTime"};

constexpr std::string_view prefix = "NkDt";

bool isNameOf(std::string_view name, std::string_view className) noexcept {
    return equalIgnoringCase(name, className) || equalIgnoringCase(name, className.substr(prefix.size()));
}

}  // namespace

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
