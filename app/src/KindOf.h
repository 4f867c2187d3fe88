#pragma once

/// @file
/// What the kinds of columns have in common: a kind states the value class, the recordset's field and what is
/// its own; its cells follow.

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "ColumnKind.h"
#include "nkdt/DialogExchange.h"

namespace nkdt::app {

inline NkDtString externalText(const NkDtBasis& value) {
    BOOL defined = FALSE;
    USHORT version = 0;
    return value.ConvToExtern(defined, version);
}

/// What most classes do; a kind states what is its own.
template <class V, class F>
struct KindOf {
    using Value = V;
    using Field = F;

    /// Whether statements have the value in another form than ConvToSQL(): what statementText() gives and
    /// setStatementText() takes.
    static constexpr bool hasStatementText = false;

    static void prepare(Field&, const Value&) {}
    static void setText(Value& value, const NkDtString& text) { value = Value(text); }
    static void setSqlText(Value& value, const NkDtString& text) { value = Value(text); }
    static void checkExternal(const NkDtString&) {}
    static void giveFormat(Value&) {}
    static void takeThroughRecord(Value&, const Value&) { throw std::logic_error("no record"); }
    static void exchangeCheck(CDataExchange&, int, Value&) { throw std::logic_error("no check box"); }
    static void addTo(ExactTotal&, const Value&) { throw std::logic_error("no total"); }
    static bool areSame(const Value& a, const Value& b) { return a == b; }
    static NkDtString comparedText(const Value& value) { return externalText(value); }
    static const char* statedLoss(const Value&, Representation) { return nullptr; }
    /// Whether what came back, null for nothing, lacks only what the representation states.
    static bool lacksNoMore(const Value&, Representation, const Value*) { return true; }
};

template <class Kind>
class CellOf final : public Cell {
  public:
    static std::unique_ptr<Cell> make() { return std::make_unique<CellOf>(); }
    CellOf() { Kind::giveFormat(m_value); }

    NkDtBasis& value() noexcept override { return m_value; }
    const NkDtBasis& value() const noexcept override { return m_value; }
    const ColumnKind& kind() const noexcept override {
        static const ColumnKind& listed = *findKind(Kind::description.className);
        return listed;
    }

    void bind(CDatabaseRecordset& rs, LPCTSTR column) override { Kind::bind(rs, column, m_field); }
    void fetch(CRecordset& rs) override { m_value.SetFromRecordSet(rs, m_field); }
    void store(CRecordset& rs) override {
        Kind::prepare(m_field, m_value);
        m_value.ConvToRecordSet(rs, m_field);
    }

    NkDtString text() const override { return NkDtString(m_value); }
    void setText(const NkDtString& text) override { Kind::setText(m_value, text); }
    NkDtString sqlLiteral() const override { return m_value.ConvToSQL(); }
    void setSqlText(const NkDtString& text) override { Kind::setSqlText(m_value, text); }
    NkDtString statementLiteral() const override {
        if constexpr (Kind::hasStatementText) {
            const std::string_view quote = Kind::description.quotedInSql ? "'" : "";
            if (m_value.IsDefined())
                return NkDtString(
                    std::string(quote).append(Kind::statementText(m_value)).append(quote).c_str());
        }
        return sqlLiteral();
    }
    void setStatementText(const NkDtString& text) override {
        if constexpr (Kind::hasStatementText) {
            Kind::setStatementText(m_value, text);
        } else {
            setSqlText(text);
        }
    }
    void setExternal(const NkDtString& text, BOOL fDefined, USHORT version) override {
        if (fDefined && version == NkDtExternVersion) Kind::checkExternal(text);
        m_value.SetFromExtern(&text, fDefined, version);
    }
    void serialize(CArchive& ar) override { m_value.Serialize(ar); }
    void takeThroughRecord(const Cell& from) override {
        Kind::takeThroughRecord(m_value, static_cast<const CellOf&>(from).m_value);
    }
    void exchangeEdit(CDataExchange& exchange, int id) override { DDX_NkDtTyp(&exchange, id, m_value); }
    void exchangeCheck(CDataExchange& exchange, int id) override {
        Kind::exchangeCheck(exchange, id, m_value);
    }

    bool equals(const Cell& other) const override {
        const auto& that = static_cast<const CellOf&>(other).m_value;
        if (m_value.IsDefined() != that.IsDefined()) return false;
        return !m_value.IsDefined() || Kind::areSame(m_value, that);
    }
    NkDtString comparedText() const override { return Kind::comparedText(m_value); }
    const char* statedLoss(Representation representation, const Cell* back) const override {
        const auto* const that = back == nullptr ? nullptr : &static_cast<const CellOf*>(back)->m_value;
        const char* const reason = Kind::statedLoss(m_value, representation);
        return reason != nullptr && Kind::lacksNoMore(m_value, representation, that) ? reason : nullptr;
    }
    const char* compute() override { return Kind::compute(m_value); }
    void addTo(ExactTotal& total) const override { Kind::addTo(total, m_value); }

  private:
    typename Kind::Value m_value{NkDtWmNull};
    typename Kind::Field m_field{};
};

/// The kind as the program's list has it.
template <class Kind>
constexpr ColumnKind entry() {
    ColumnKind kind = Kind::description;
    kind.makeCell = &CellOf<Kind>::make;
    return kind;
}

}  // namespace nkdt::app
