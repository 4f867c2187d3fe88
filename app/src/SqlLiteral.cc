#include "SqlLiteral.h"

#include <algorithm>
#include <cstddef>

#include "Error.h"
#include "Text.h"

namespace nkdt::app {

namespace {

std::string takeQuoted(std::string_view& text) {
    std::string content;
    for (;;) {
        text.remove_prefix(1);  // the opening apostrophe, or the second of two
        const std::size_t end = text.find('\'');
        if (end == std::string_view::npos) throw DataError("an SQL text has no closing apostrophe");
        content += text.substr(0, end);
        text.remove_prefix(end + 1);
        if (text.empty() || text.front() != '\'') return content;
        content += '\'';
    }
}

}  // namespace

SqlLiteral takeSqlLiteral(std::string_view& text) {
    if (!text.empty() && text.front() == '\'') return {SqlLiteral::quoted, takeQuoted(text)};
    const std::size_t length =
        std::min(text.find_first_not_of("+-.0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZe"), text.size());
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

}  // namespace nkdt::app
