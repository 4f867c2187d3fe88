#pragma once

/// @file
/// One statement handle: execution, parameters, columns. Every return code is checked.

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Connection.h"
#include "nkdt/odbc/DatabaseColumn.h"
#include "nkdt/odbc/SqlApi.h"

namespace nkdt::odbc {

/// A value as it crosses to or from the database: null, or a text in UTF-8, which a number may accompany.
struct CrossingValue {
    bool null = true;
    std::string_view text;
    std::optional<double> number;  ///< the same value as a double, for a parameter that is to be one
};

/// The SQL type as which a parameter for a column of that type is declared.
SQLSMALLINT parameterType(CDatabase::Dbms dbms, CDatabaseColumn::Type type, std::string_view typeName = {});

class Statement {
  public:
    explicit Statement(std::shared_ptr<Connection> connection);
    /// Frees the handle, which also releases the locks of a cursor that was not read to its end.
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    void prepare(std::string_view utf8);
    /// Executes the prepared statement, or the given text. Changing no row is no failure.
    void execute();
    void executeDirect(std::string_view utf8);
    /// The number of rows that the execution changed, -1 if the driver does not tell.
    LONGLONG changedRows();

    /// The number of parameters that the prepared statement has.
    int parameterCount() const;
    /// Sets a parameter, 1 for the first; its value is copied.
    void setParameter(int number, const CrossingValue& value, SQLSMALLINT sqlType);

    int columnCount();
    CDatabaseColumn describeColumn(int number);
    void bindText(int number, char* buffer, std::size_t size, SQLLEN* indicator);
    /// The next row; false behind the last one.
    bool fetch();
    /// The whole text of the current row's column, into a buffer; the length is stored in the indicator.
    void getText(int number, char* buffer, std::size_t size, SQLLEN& indicator);
    /// The text of the current row's column, which is not bound; empty for null.
    std::string getString(int number);

    /// For the calls of the catalogue, which return a result on this statement.
    SQLHSTMT handle() const;
    void checkCall(SQLRETURN returnCode) const;
    Connection& connection() const noexcept { return *m_connection; }

  private:
    struct Parameter;

    std::string textAttribute(int column, SQLUSMALLINT attribute);
    SQLLEN numberAttribute(int column, SQLUSMALLINT attribute);

    std::shared_ptr<Connection> m_connection;
    SQLHSTMT m_handle;
    std::vector<std::unique_ptr<Parameter>> m_parameters;
};

}  // namespace nkdt::odbc
