#pragma once

/// @file
/// An open connection, shared by the database object and the statements that use it.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ConnectionString.h"
#include "nkdt/odbc/Database.h"
#include "nkdt/odbc/SqlApi.h"

namespace nkdt::odbc {

class Connection {
  public:
    /// Connects; throws the driver's diagnostics.
    explicit Connection(const ConnectionString& target);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Ends the connection and with it all its statements.
    void close() noexcept;
    /// A new statement handle, freed by freeStatement() or with the connection.
    SQLHSTMT allocateStatement();
    void freeStatement(SQLHSTMT statement) noexcept;
    bool isOpen() const noexcept { return m_connected; }
    /// The handle of the open connection; throws once it is closed.
    SQLHDBC handle() const;
    CDatabase::Dbms dbms() const noexcept { return m_dbms; }

    void begin();
    void commit();
    void rollback();
    bool inTransaction() const noexcept { return m_inTransaction; }

  private:
    void connect(const std::string& text);
    void setAutocommit(bool on);
    void execute(std::string_view sql);
    void requireTransaction() const;
    void release() noexcept;

    SQLHENV m_environment = SQL_NULL_HENV;
    SQLHDBC m_handle = SQL_NULL_HDBC;
    std::vector<SQLHSTMT> m_statements;
    bool m_connected = false;
    bool m_inTransaction = false;
    CDatabase::Dbms m_dbms = CDatabase::otherDbms;
};

}  // namespace nkdt::odbc
