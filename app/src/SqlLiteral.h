#pragma once

/// @file
/// Literals of SQL statements.

#include <string>
#include <string_view>

#include "ColumnKind.h"
#include "nkfw/String.h"

namespace nkdt::app {

struct SqlLiteral {
    enum Form { null, plain, quoted };
    Form form = null;
    std::string text;  ///< code page 1252; without the enclosing apostrophes, those inside single
};

/// Takes one literal from the front of the text: NULL, a text in apostrophes, or a number. Throws a DataError
/// for anything else.
SqlLiteral takeSqlLiteral(std::string_view& text);

/// Reads the literal into the cell's value. Throws a DataError if it has not the form of the cell's class, or
/// what the class throws.
void setFromSqlLiteral(Cell& cell, const SqlLiteral& literal);
/// The same for a literal of a statement that a database executes.
void setFromStatementLiteral(Cell& cell, const SqlLiteral& literal);

/// A defined value as a literal in apostrophes, which a database reads as a value of the column's own type,
/// with all its digits.
CString quotedLiteral(const Cell& cell);

}  // namespace nkdt::app
