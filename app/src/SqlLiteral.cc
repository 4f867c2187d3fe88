#include "SqlLiteral.h"

#include <algorithm>
#include <cstddef>

#include "Error.h"
#include "Text.h"

namespace nkdt::app {

namespace {

constexpr bool standsInPlainLiteral(char ch) noexcept {
    return (ch >= '0' && ch <= '9') || (ch >= 'A' && ch <= 'Z') || ch == '+' || ch == '-' || ch == '.' ||
           ch == 'e';
}

std::string takeQuoted(std::string_view& text) {
    std::string content;
    for (;;) {
        text.remove_prefix(1);  // the opening apostrophe, or the second of two
        const std::size_t end = text.find('\'');
        if (end == std::string_view::npos) throw DataError("an SQL text has no closing apostrophe");
        content.append(text, 0, end);
        text.remove_prefix(end + 1);
        if (text.empty() || text.front() != '\'') return content;
        content += '\'';
    }
}

}  // namespace

SqlLiteral takeSqlLiteral(std::string_view& text) {
    if (!text.empty() && text.front() == '\'') return {SqlLiteral::quoted, takeQuoted(text)};
    const auto end = std::find_if_not(text.begin(), text.end(), standsInPlainLiteral);
    const auto length = static_cast<std::size_t>(end - text.begin());
    if (length == 0) throw DataError("an SQL literal is missing");
    const std::string_view word = text.substr(0, length);
    text.remove_prefix(length);
    if (word == "NULL") return {};
    return {SqlLiteral::plain, std::string(word)};
}

namespace {

template <class Set>
void setFromLiteral(Cell& cell, const SqlLiteral& literal, Set&& set) {
    if (literal.form == SqlLiteral::null) {
        cell.value().Clear();
        return;
    }
    const bool quoted = literal.form == SqlLiteral::quoted;
    if (quoted != cell.kind().quotedInSql) {
        throw DataError("\"" + visible(literal.text) + "\" " + (quoted ? "stands" : "does not stand") +
                        " in apostrophes, which is no SQL literal of " + cell.kind().className);
    }
    set(NkDtString(literal.text.c_str()));
}

}  // namespace

void setFromSqlLiteral(Cell& cell, const SqlLiteral& literal) {
    setFromLiteral(cell, literal, [&](const NkDtString& text) { cell.setSqlText(text); });
}

void setFromStatementLiteral(Cell& cell, const SqlLiteral& literal) {
    setFromLiteral(cell, literal, [&](const NkDtString& text) { cell.setStatementText(text); });
}

// Of numbers without places, SQLite reads more digits.
CString quotedLiteral(const Cell& cell) {
    std::string literal = cell.statementLiteral().GetValue();
    if (cell.kind().quotedInSql) return CString(std::string_view(literal));
    if (cell.kind().decimal && literal.find('.') != std::string::npos) {
        literal.erase(literal.find_last_not_of('0') + 1);
        if (literal.back() == '.') literal.pop_back();
    }
    return CString(std::string_view("'" + literal + "'"));
}

}  // namespace nkdt::app
