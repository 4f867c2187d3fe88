#include "Connection.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "Diagnostics.h"
#include "nkfw/Exception.h"

namespace nkdt::odbc {

namespace {

constexpr INT sqliteError = 1;

CDatabase::Dbms dbmsOf(SQLHDBC handle) {
    std::array<char, 64> name{};
    SQLSMALLINT length = 0;
    check(SQLGetInfo(handle, SQL_DBMS_NAME, name.data(), static_cast<SQLSMALLINT>(name.size()), &length),
          SQL_HANDLE_DBC, handle);
    if (std::strncmp(name.data(), "SQLite", 6) == 0) return CDatabase::sqlite;
    if (std::strncmp(name.data(), "PostgreSQL", 10) == 0) return CDatabase::postgresql;
    return CDatabase::otherDbms;
}

SQLPOINTER attributeValue(std::uintptr_t value) noexcept {
    return reinterpret_cast<SQLPOINTER>(value);
}

}  // namespace

Connection::Connection(const ConnectionString& target) {
    try {
        connect(target.text());
        m_dbms = dbmsOf(m_handle);
    } catch (...) {
        close();
        release();
        throw;
    }
}

Connection::~Connection() {
    close();
    release();
}

void Connection::connect(const std::string& text) {
    const SQLRETURN allocated = SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_environment);
    check(allocated, SQL_HANDLE_ENV, m_environment);
    check(SQLSetEnvAttr(m_environment, SQL_ATTR_ODBC_VERSION, attributeValue(SQL_OV_ODBC3), 0),
          SQL_HANDLE_ENV, m_environment);
    check(SQLAllocHandle(SQL_HANDLE_DBC, m_environment, &m_handle), SQL_HANDLE_ENV, m_environment);

    std::array<SQLCHAR, 1024> completed{};
    SQLSMALLINT length = 0;
    check(SQLDriverConnect(m_handle, nullptr, sqlText(text), static_cast<SQLSMALLINT>(text.size()),
                           completed.data(), static_cast<SQLSMALLINT>(completed.size()), &length,
                           SQL_DRIVER_NOPROMPT),
          SQL_HANDLE_DBC, m_handle);
    m_connected = true;
}

SQLHSTMT Connection::allocateStatement() {
    const SQLHDBC connection = handle();
    m_statements.push_back(SQL_NULL_HSTMT);
    const SQLRETURN returnCode = SQLAllocHandle(SQL_HANDLE_STMT, connection, &m_statements.back());
    if (SQL_SUCCEEDED(returnCode)) return m_statements.back();
    m_statements.pop_back();
    failWithDiagnostics(returnCode, SQL_HANDLE_DBC, connection);
}

// Whoever frees a statement has nobody to tell of a failure. What the connection has freed with itself is not
// here any more.
void Connection::freeStatement(SQLHSTMT statement) noexcept {
    const auto found = std::find(m_statements.begin(), m_statements.end(), statement);
    if (found == m_statements.end()) return;
    (void)SQLFreeHandle(SQL_HANDLE_STMT, statement);
    m_statements.erase(found);
}

// Nobody can be told of a failure here. A statement that is left open would keep its locks beyond the
// connection.
void Connection::close() noexcept {
    if (!m_connected) return;
    for (const SQLHSTMT statement : m_statements)
        (void)SQLFreeHandle(SQL_HANDLE_STMT, statement);
    m_statements.clear();
    if (m_inTransaction) (void)SQLEndTran(SQL_HANDLE_DBC, m_handle, SQL_ROLLBACK);
    if (!SQL_SUCCEEDED(SQLDisconnect(m_handle))) {
        // A driver may hold on to a transaction of its own that an unread cursor left.
        (void)SQLEndTran(SQL_HANDLE_DBC, m_handle, SQL_ROLLBACK);
        (void)SQLDisconnect(m_handle);
    }
    m_inTransaction = false;
    m_connected = false;
}

void Connection::release() noexcept {
    if (m_handle != SQL_NULL_HDBC) (void)SQLFreeHandle(SQL_HANDLE_DBC, m_handle);
    if (m_environment != SQL_NULL_HENV) (void)SQLFreeHandle(SQL_HANDLE_ENV, m_environment);
    m_handle = SQL_NULL_HDBC;
    m_environment = SQL_NULL_HENV;
}

SQLHDBC Connection::handle() const {
    if (!m_connected) fail("08003", "Die Datenbank ist nicht geöffnet");
    return m_handle;
}

void Connection::setAutocommit(bool on) {
    const SQLHDBC connection = handle();
    const std::uintptr_t value = on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF;
    check(SQLSetConnectAttr(connection, SQL_ATTR_AUTOCOMMIT, attributeValue(value), SQL_IS_UINTEGER),
          SQL_HANDLE_DBC, connection);
}

void Connection::execute(std::string_view sql) {
    const SQLHSTMT statement = allocateStatement();
    try {
        check(SQLExecDirect(statement, sqlText(sql), static_cast<SQLINTEGER>(sql.size())), SQL_HANDLE_STMT,
              statement);
    } catch (...) {
        freeStatement(statement);
        throw;
    }
    freeStatement(statement);
}

// SQLite's driver ends an open cursor, as if its last row had been read, when the commit mode changes or a
// transaction ends through the driver. Statements of SQL leave it alone.
void Connection::begin() {
    if (m_inTransaction) fail("25001", "Eine Transaktion läuft schon");
    m_dbms == CDatabase::sqlite ? execute("BEGIN") : setAutocommit(false);
    m_inTransaction = true;
}

void Connection::requireTransaction() const {
    (void)handle();
    if (!m_inTransaction) fail("25000", "Es läuft keine Transaktion");
}

void Connection::commit() {
    requireTransaction();
    if (m_dbms == CDatabase::sqlite) {
        execute("COMMIT");
        m_inTransaction = false;
        return;
    }
    check(SQLEndTran(SQL_HANDLE_DBC, m_handle, SQL_COMMIT), SQL_HANDLE_DBC, m_handle);
    m_inTransaction = false;
    setAutocommit(true);
}

void Connection::rollback() {
    requireTransaction();
    m_inTransaction = false;  // a connection that cannot even roll back has lost its transaction
    if (m_dbms != CDatabase::sqlite) {
        check(SQLEndTran(SQL_HANDLE_DBC, m_handle, SQL_ROLLBACK), SQL_HANDLE_DBC, m_handle);
        setAutocommit(true);
        return;
    }
    try {
        execute("ROLLBACK");
    } catch (CDBException* e) {
        if (e->m_nNativeError != sqliteError) throw;
        e->Delete();  // a full disk has made SQLite roll back already
    }
}

}  // namespace nkdt::odbc
