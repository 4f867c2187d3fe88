#pragma once

/// @file
/// A prepared statement with parameters, executed as often as needed.
///
/// @code
/// CDatabaseStatement insert(db, "INSERT INTO Kunden (Nummer, Name) VALUES (?, ?)");
/// insert.SetValue(1, "4711", CDatabaseColumn::integer);
/// insert.SetValue(2, "Müller", CDatabaseColumn::text);
/// insert.Execute();
/// @endcode
///
/// Every value crosses as text in the form that the database reads (numbers with a ".", dates as 2004-12-31),
/// and is declared with the type of the column that it is meant for.

#include <memory>
#include <string_view>

#include "nkdt/odbc/Database.h"
#include "nkdt/odbc/DatabaseColumn.h"
#include "nkfw/Export.h"
#include "nkfw/Types.h"

namespace nkdt::odbc {
class Statement;
}

class NKDT_API CDatabaseStatement {
  public:
    /// Prepares a statement (code page 1252) on an open database. Throws what the database has against it.
    CDatabaseStatement(const CDatabase& database, LPCTSTR lpszSQL);
    ~CDatabaseStatement();
    CDatabaseStatement(const CDatabaseStatement&) = delete;
    CDatabaseStatement& operator=(const CDatabaseStatement&) = delete;

    /// Sets a parameter, 1 for the first "?". It keeps its value until it is set again. A number that the
    /// statement does not have is an error (07009).
    /// @param text  the value in code page 1252; a NUL inside is refused, because no database keeps it
    /// @param nType the type of the column that it is meant for
    void SetValue(INT nParameter, std::string_view text, CDatabaseColumn::Type nType = CDatabaseColumn::text);
    /// Sets a parameter to null, with the same error.
    void SetNull(INT nParameter, CDatabaseColumn::Type nType = CDatabaseColumn::text);

    /// Executes the statement; every "?" must have been set. Returns the number of changed rows, -1 if the
    /// database does not tell.
    LONGLONG Execute();

  private:
    std::unique_ptr<nkdt::odbc::Statement> m_statement;
};
