#include "TextTable.h"

#include <algorithm>
#include <utility>

#include "Text.h"

namespace nkdt::app {

TextTable::TextTable(std::vector<Column> columns) : m_columns(std::move(columns)) {
    for (const Column& column : m_columns)
        m_widths.push_back(characterCount(column.title));
}

void TextTable::measure(const Row& row) {
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        m_widths[i] = std::max(m_widths[i], characterCount(row[i]));
}

void TextTable::writeTitles(std::ostream& out) const {
    Row titles;
    Row rules;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        titles.push_back(m_columns[i].title);
        rules.emplace_back(m_widths[i], '-');
    }
    write(out, titles);
    write(out, rules);
}

// Blanks are written before a text, never behind the last one.
void TextTable::write(std::ostream& out, const Row& row) const {
    std::size_t pending = 0;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const std::size_t width = characterCount(row[i]);
        const std::size_t fill = m_widths[i] - std::min(width, m_widths[i]);
        if (m_columns[i].alignment == right) pending += fill;
        if (!row[i].empty()) {
            out << std::string(pending, ' ') << row[i];
            pending = 0;
        }
        if (m_columns[i].alignment == left) pending += fill;
        pending += 2;
    }
    out << '\n';
}

void TextTable::writeAll(std::ostream& out, const std::vector<Row>& rows) {
    for (const Row& row : rows)
        measure(row);
    writeTitles(out);
    for (const Row& row : rows)
        write(out, row);
}

}  // namespace nkdt::app
