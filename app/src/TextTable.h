#pragma once

/// @file
/// A table in characters: a title over each column, a rule, and the rows below, aligned.
/// @code
/// TextTable table({{"Name"}, {"Count", TextTable::right}});
/// for (const auto& row : rows) table.measure(row);
/// table.writeTitles(out);
/// for (const auto& row : rows) table.write(out, row);
/// @endcode
/// All texts are UTF-8 of one line; widths count characters.

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace nkdt::app {

class TextTable {
  public:
    enum Alignment { left, right };
    struct Column {
        std::string title;
        Alignment alignment = left;
    };
    using Row = std::vector<std::string>;

    explicit TextTable(std::vector<Column> columns);

    /// Makes the columns as wide as the row's texts.
    void measure(const Row& row);
    void writeTitles(std::ostream& out) const;
    void write(std::ostream& out, const Row& row) const;
    /// The whole table at once.
    void writeAll(std::ostream& out, const std::vector<Row>& rows);

  private:
    std::vector<Column> m_columns;
    std::vector<std::size_t> m_widths;
};

}  // namespace nkdt::app
