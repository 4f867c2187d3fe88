#pragma once

/// @file
/// Tables of a database as cells: which columns are bound to which kind, reading row by row, writing row by
/// row.

#include <memory>
#include <string>
#include <vector>

#include "ColumnKind.h"
#include "Console.h"
#include "nkdt/odbc/Odbc.h"

namespace nkdt::app {

/// Opens the database: the path of an SQLite file, or a connection string. Throws a UsageError for a path
/// that cannot be one or does not exist.
void openDatabase(CDatabase& database, const std::string& target);

/// Which columns are taken, and as what.
struct Selection {
    std::vector<std::string> columns;  ///< names, or several joined by commas; empty: all
    std::vector<std::string> as;       ///< COLUMN=TYPE
    std::string filter;                ///< a condition of SQL; empty: all rows
    std::string sort;                  ///< an order of SQL; empty: the database's own
    bool bestFit = false;  ///< take the best fitting character for one that code page 1252 does not have
    bool plain = false;    ///< decimals without the German format
};

/// A column that is bound, with its value in the current row.
struct BoundColumn {
    std::string name;  ///< UTF-8, one line
    CString ansiName;
    const ColumnKind* kind;
    std::unique_ptr<Cell> cell;
    bool nullable = true;    ///< false if the database promises that no value is undefined
    bool generated = false;  ///< the database computes the values; they are not written
};
using BoundColumns = std::vector<BoundColumn>;

/// Another cell for values of the column, with the same format.
std::unique_ptr<Cell> makeCellFor(const BoundColumn& column);

/// A column that is not bound, and why not.
struct LeftOutColumn {
    std::string name;  ///< UTF-8, one line
    std::string type;  ///< the declared type, UTF-8
    std::string reason;

    /// The reason, and what the user can do about it.
    std::string advice() const { return reason + " by its type; --as " + name + "=TYPE binds it"; }
};

/// What a table's columns mean to the program.
struct TableColumns {
    BoundColumns bound;
    std::vector<LeftOutColumn> leftOut;
};

/// The columns of the table, chosen and bound as the selection says. Throws a UsageError if there is no such
/// table, no such column, no such type; a DataError if no column can be bound.
TableColumns columnsOf(const CDatabase& database, const CString& table, const Selection& selection);
/// Throws a UsageError if there is no such table.
void requireTable(const CDatabase& database, const CString& table);
/// Names a column that is left out.
void tellLeftOut(Console& console, const CString& table, const std::string& column, const std::string& why);
/// Names the columns that are left out.
void tellLeftOut(Console& console, const CString& table, const std::vector<LeftOutColumn>& leftOut);

/// Reads a table row by row into cells.
class TableReader {
  public:
    /// What happens to a value that cannot be read.
    class Refusals {
      public:
        virtual ~Refusals() = default;
        /// @param column the index of the column; its cell is undefined
        /// @param text   what is the matter, with row and column
        virtual void refused(std::size_t column, const std::string& text) = 0;
    };

    /// @param refusals is told of values that cannot be read; null: they end the reading
    TableReader(const CDatabase& database, const CString& table, BoundColumns& columns,
                const Selection& selection, Refusals* refusals = nullptr);

    /// Reads the next row into the cells; false behind the last one.
    bool next();
    /// The number of the current row from 1 on; behind the last row, the number of rows.
    LONGLONG row() const noexcept { return m_rows.GetRowNumber(); }

  private:
    bool moveNext();

    class Rows final : public CDatabaseRecordset {
      public:
        Rows(const CDatabase& database, TableReader& reader)
            : CDatabaseRecordset(database), m_reader(reader) {}

      protected:
        void OnRefused(const CDatabaseColumn& column, const void* field, CDBException* exception) override;

      private:
        TableReader& m_reader;
    };

    BoundColumns& m_columns;
    Refusals* m_refusals;
    std::vector<bool> m_refused;  // of the current row
    std::string m_asked;          // the condition and the order, to be named when they are wrong
    Rows m_rows;
};

/// Adds rows to a table from cells, but those of generated columns.
class TableWriter {
  public:
    TableWriter(const CDatabase& database, const CString& table, BoundColumns& columns);

    /// Adds a row with the values of the cells.
    void add();

  private:
    BoundColumns& m_columns;
    LONGLONG m_row = 0;
    CDatabaseRecordset m_rows;
};

/// The text of a statement that makes a table of these columns.
CString createTableStatement(const CDatabase& database, const CString& table, const BoundColumns& columns);

}  // namespace nkdt::app
