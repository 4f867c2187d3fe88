#pragma once

/// @file
/// A column of the rows that a recordset reads or writes, with the values that cross.

#include <memory>
#include <string>
#include <vector>

#include "FieldExchange.h"
#include "Statement.h"
#include "nkdt/odbc/DatabaseColumn.h"

namespace nkdt::odbc {

/// A row's column: its description, the value that was fetched, and, when it is bound, the way to its field.
class RowColumn {
  public:
    /// How the numbers of a column are fetched that its database holds as doubles. SQLite's driver tells them
    /// with 15 digits.
    enum class Digits {
        asTold,     ///< as the driver tells them
        ofDouble,   ///< all that tell the double
        ofDecimal,  ///< the same where 15 do not; a text with an exponent is a double then
    };

    RowColumn(const CDatabaseColumn& column, CDatabase::Dbms dbms);

    const CDatabaseColumn& column() const noexcept { return m_column; }
    SQLSMALLINT parameterType() const noexcept { return m_parameterType; }
    /// TRUE if doubles are written as doubles here, because the database reads their texts inexactly.
    bool takesNumbers() const noexcept { return m_takesNumbers; }
    /// FALSE for the columns of PostgreSQL that hold one character, where an empty text comes back as a
    /// blank, or a truth value, where each number but 0 comes back as 1.
    bool keepsWhatItIsGiven() const noexcept { return m_keepsWhatItIsGiven; }
    /// The expression that selects the column.
    std::string expression() const;

    /// Binds the buffer as the statement's column of that number.
    void bind(Statement& statement, int number);
    /// After a fetch: completes what the buffer could not hold.
    void complete(Statement& statement);
    /// The row's value: as it was fetched, or as it was written since.
    CrossingValue value() const noexcept;
    /// The same as a parameter that finds the row again.
    CrossingValue searchedValue() const noexcept;
    /// After the outgoing value was written: it is the row's value now.
    void keepOutgoing() noexcept;

    std::unique_ptr<FieldExchange> exchange;  ///< null if the column is not bound
    Digits digits = Digits::asTold;           ///< to be set before the rows are asked for
    bool refused = false;                     ///< the fetched value did not fit the field
    OutgoingValue outgoing;                   ///< the field's value, as it is written

  private:
    const CDatabaseColumn& m_column;
    SQLSMALLINT m_parameterType;
    bool m_takesNumbers;
    bool m_keepsWhatItIsGiven;
    bool m_isCastToText;
    int m_number = 0;
    std::vector<char> m_buffer;
    SQLLEN m_indicator = SQL_NULL_DATA;
    OutgoingValue m_kept;
    bool m_written = false;
};

/// The name in UTF-8 as an identifier of a statement.
std::string quotedName(LPCTSTR name);

}  // namespace nkdt::odbc
