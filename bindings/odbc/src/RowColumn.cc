#include "RowColumn.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

#include "DecimalExchange.h"
#include "Diagnostics.h"
#include "Text.h"

namespace nkdt::odbc {

namespace {

constexpr std::size_t numberBuffer = 64;
constexpr std::size_t textBuffer = 256;

bool isTextType(CDatabaseColumn::Type type) noexcept {
    return type == CDatabaseColumn::text || type == CDatabaseColumn::character;
}

}  // namespace

// A column of texts keeps the text that it is given.
RowColumn::RowColumn(const CDatabaseColumn& column, CDatabase::Dbms dbms)
    : m_column(column),
      m_parameterType(nkdt::odbc::parameterType(dbms, column.nType, column.strTypeName)),
      m_takesNumbers(dbms == CDatabase::sqlite && !isTextType(column.nType) &&
                     affinityOf(column.strTypeName.View()) != Affinity::text),
      m_keepsWhatItIsGiven(dbms != CDatabase::postgresql || (column.nType != CDatabaseColumn::character &&
                                                             column.nType != CDatabaseColumn::boolean)),
      m_isCastToText(dbms == CDatabase::postgresql &&
                     (column.nType == CDatabaseColumn::date || column.nType == CDatabaseColumn::timestamp)) {
    if (column.nType == CDatabaseColumn::floating) digits = Digits::ofDouble;
    if (m_takesNumbers && column.nType == CDatabaseColumn::decimal) digits = Digits::ofDecimal;
}

std::string quotedName(LPCTSTR name) {
    return utf8FromCp1252(CDatabase::QuoteName(name).View());
}

// SQLite's driver knows a double by 15 digits only, as a double too; 21 digits of the database's own tell it
// exactly. PostgreSQL's driver writes dates anew: infinite ones as the last second of 9999, those before
// Christ as those after.
std::string RowColumn::expression() const {
    std::string name = quotedName(m_column.strName);
    if (m_isCastToText) return name + "::text AS \"?column?\"";  // an order by the name is one by dates
    if (digits == Digits::asTold || !m_takesNumbers) return name;
    std::string isTold = "typeof(" + name + ") <> 'real'";
    if (digits == Digits::ofDecimal) isTold += " OR CAST(CAST(" + name + " AS TEXT) AS REAL) = " + name;
    return "CASE WHEN " + isTold + " THEN " + name + " ELSE printf('%!.20e', " + name + ") END";
}

void RowColumn::bind(Statement& statement, int number) {
    m_number = number;
    if (m_buffer.empty()) m_buffer.resize(isTextType(m_column.nType) ? textBuffer : numberBuffer);
    statement.bindText(number, m_buffer.data(), m_buffer.size(), &m_indicator);
}

void RowColumn::complete(Statement& statement) {
    m_written = false;
    if (m_indicator == SQL_NULL_DATA) return;
    if (m_indicator == SQL_NO_TOTAL) fail("HY000", "Der Treiber nennt die Länge des Textes nicht");
    const auto length = static_cast<std::size_t>(m_indicator);
    if (length >= m_buffer.size()) {
        std::vector<char> larger(std::max(length + 1, m_buffer.size() * 2));
        statement.getText(m_number, larger.data(), larger.size(), m_indicator);
        if (static_cast<std::size_t>(m_indicator) != length) {
            fail("HY000", "Der Treiber liefert den Text nicht in der Länge, die er genannt hat");
        }
        m_buffer.swap(larger);
        statement.bindText(m_number, m_buffer.data(), m_buffer.size(), &m_indicator);
        m_indicator = static_cast<SQLLEN>(length);  // SQLite's driver clears it when it binds
    }
}

CrossingValue RowColumn::value() const noexcept {
    if (m_written) return m_kept.value();
    if (m_indicator == SQL_NULL_DATA) return {};
    return {false, {m_buffer.data(), static_cast<std::size_t>(m_indicator)}, {}};
}

CrossingValue RowColumn::searchedValue() const noexcept {
    CrossingValue searched = value();
    if (searched.null || searched.number || digits == Digits::asTold || !m_takesNumbers) return searched;
    if (digits == Digits::ofDecimal && searched.text.find_first_of("eE") == std::string_view::npos)
        return searched;  // a whole number, or few digits, which the column's own rule turns into its double
    double number = 0;
    const char* const last = searched.text.data() + searched.text.size();
    const auto [end, error] = std::from_chars(searched.text.data(), last, number);
    if (error == std::errc() && end == last && std::isfinite(number)) searched.number = number;
    return searched;
}

void RowColumn::keepOutgoing() noexcept {
    std::swap(m_kept, outgoing);
    m_written = true;
    refused = false;
}

}  // namespace nkdt::odbc
