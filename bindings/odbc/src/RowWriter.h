#pragma once

/// @file
/// Writes single rows of a table with searched statements and bound parameters.

#include <memory>
#include <string>
#include <vector>

#include "RowColumn.h"
#include "Statement.h"

namespace nkdt::odbc {

using RowColumns = std::vector<RowColumn*>;

class RowWriter {
  public:
    /// @param table the table's name in UTF-8, quoted
    RowWriter(std::shared_ptr<Connection> connection, std::string table);

    /// Adds a row with the outgoing values of the columns.
    void insert(const RowColumns& columns);
    /// Sets the columns to their outgoing values in the one row whose identifying columns have the row's
    /// values. Throws a Refusal, and changes nothing, if there is none or (where @p byKey is false) more than
    /// one such row.
    void update(const RowColumns& columns, const RowColumns& identifying, bool byKey);
    /// Deletes the one row, found in the same way.
    void erase(const RowColumns& identifying, bool byKey);

  private:
    struct Prepared {
        std::string sql;
        std::unique_ptr<Statement> statement;
    };

    Statement& prepare(Prepared& prepared);
    void changeOneRow(Prepared& prepared, const RowColumns& columns, const RowColumns& identifying,
                      bool unique);
    [[noreturn]] void tellWhyNone(const RowColumns& identifying);

    std::shared_ptr<Connection> m_connection;
    const std::string m_table;
    std::string m_sql;  // the text being built; keeps its memory
    Prepared m_insert;
    Prepared m_update;
    Prepared m_erase;
};

}  // namespace nkdt::odbc
