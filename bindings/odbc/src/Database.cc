#include "nkdt/odbc/Database.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>

#include "Catalog.h"
#include "Connection.h"
#include "Diagnostics.h"
#include "Statement.h"
#include "Text.h"
#include "nkfw/Exception.h"

using namespace nkdt::odbc;

namespace {

constexpr int sqliteCannotOpen = 14;

void requireFile(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || ::access(path.c_str(), R_OK) != 0) {
        fail("08001", "Datei \"" + path + "\" ist nicht zu öffnen: " + std::strerror(errno),
             sqliteCannotOpen);
    }
    if (S_ISDIR(status.st_mode)) fail("08001", "\"" + path + "\" ist ein Ordner", sqliteCannotOpen);
}

ConnectionString connectionStringFor(const std::string& target, CDatabase::OpenOption option) {
    if (target.find('=') != std::string::npos) {
        ConnectionString result(target);
        result.complete(option == CDatabase::createMissing);
        return result;
    }
    if (target.empty()) fail("08001", "Es ist keine Datenbank angegeben");
    if (target.find(';') != std::string::npos) {
        fail("08001", "Der Pfad \"" + target + "\" enthält ein \";\", das der Treiber nicht zulässt");
    }
    if (option == CDatabase::openExisting) requireFile(target);
    ConnectionString result = ConnectionString::forSqliteFile(target);
    result.complete(option == CDatabase::createMissing);
    return result;
}

// What a person knows the database by. The whole connection string may hold a password.
std::string nameOf(const ConnectionString& target) {
    for (const char* key : {"Database", "DSN"}) {
        if (const std::string* const name = target.find(key)) return *name;
    }
    return {};
}

// SQLite's driver connects to any file; the first statement tells whether it is a database.
void requireSqliteDatabase(const std::shared_ptr<Connection>& connection) {
    Statement probe(connection);
    probe.executeDirect("SELECT COUNT(*) FROM sqlite_master");
    (void)probe.fetch();
}

// The driver takes the encoding of texts from the process's locale unless it is told.
void speakUtf8(const std::shared_ptr<Connection>& connection) {
    Statement(connection).executeDirect("SET client_encoding = 'UTF8'");
}

// Settings of the application's own may have set any lock wait.
void limitLockWait(const std::shared_ptr<Connection>& connection) {
    Statement(connection)
        .executeDirect(
            "SELECT set_config('lock_timeout', '5000', false) FROM pg_settings "
            "WHERE name = 'lock_timeout' AND setting::bigint NOT BETWEEN 1 AND 5000");
}

std::shared_ptr<Connection> connectTo(const ConnectionString& target) {
    auto connection = std::make_shared<Connection>(target);
    if (connection->dbms() == CDatabase::sqlite) requireSqliteDatabase(connection);
    if (connection->dbms() == CDatabase::postgresql) speakUtf8(connection);
    if (connection->dbms() == CDatabase::postgresql && target.hasOwnConnSettings()) limitLockWait(connection);
    return connection;
}

}  // namespace

CDatabase::CDatabase() noexcept = default;

CDatabase::~CDatabase() {
    Close();
}

void CDatabase::Open(LPCTSTR lpszTarget, OpenOption nOption) {
    Close();
    const ConnectionString target = connectionStringFor(lpszTarget == nullptr ? "" : lpszTarget, nOption);
    try {
        m_connection = connectTo(target);
    } catch (CDBException* e) {
        const std::string name = nameOf(target);
        if (!name.empty()) e->m_strError = messageFromUtf8("Datenbank \"" + name + "\": ") + e->m_strError;
        throw;
    }
}

void CDatabase::Close() noexcept {
    if (m_connection) m_connection->close();
    m_connection.reset();
}

BOOL CDatabase::IsOpen() const noexcept {
    return m_connection ? TRUE : FALSE;
}

CDatabase::Dbms CDatabase::GetDbms() const noexcept {
    return m_connection ? m_connection->dbms() : otherDbms;
}

const std::shared_ptr<Connection>& CDatabase::GetConnection() const {
    if (!m_connection) fail("08003", "Die Datenbank ist nicht geöffnet");
    return m_connection;
}

void CDatabase::BeginTrans() {
    GetConnection()->begin();
}

void CDatabase::CommitTrans() {
    GetConnection()->commit();
}

void CDatabase::Rollback() {
    GetConnection()->rollback();
}

BOOL CDatabase::IsInTransaction() const noexcept {
    return m_connection && m_connection->inTransaction() ? TRUE : FALSE;
}

LONGLONG CDatabase::ExecuteSQL(LPCTSTR lpszSQL) {
    Statement statement(GetConnection());
    statement.executeDirect(utf8FromCp1252(lpszSQL == nullptr ? "" : lpszSQL));
    return statement.changedRows();
}

CString CDatabase::QuoteName(LPCTSTR lpszName) {
    CString quoted("\"");
    for (LPCTSTR p = lpszName == nullptr ? "" : lpszName; *p != '\0'; ++p) {
        if (*p == '"') quoted += '"';
        quoted += *p;
    }
    quoted += '"';
    return quoted;
}

std::vector<CString> CDatabase::GetTables() const {
    return tablesOf(GetConnection());
}

BOOL CDatabase::HasTable(LPCTSTR lpszTable) const {
    return columnsOf(GetConnection(), lpszTable).empty() ? FALSE : TRUE;
}

std::vector<CDatabaseColumn> CDatabase::GetColumns(LPCTSTR lpszTable) const {
    std::vector<CDatabaseColumn> columns = columnsOf(GetConnection(), lpszTable);
    if (columns.empty()) {
        fail("42S02", "Die Tabelle " + quotedExcerpt(utf8FromCp1252(lpszTable == nullptr ? "" : lpszTable)) +
                          " gibt es nicht");
    }
    return columns;
}

CDatabaseTransaction::CDatabaseTransaction(CDatabase& database) : m_database(database) {
    m_database.BeginTrans();
}

CDatabaseTransaction::~CDatabaseTransaction() {
    if (!m_fOpen || !m_database.IsInTransaction()) return;
    try {
        m_database.Rollback();
    } catch (CException* e) {
        e->Delete();
    } catch (...) {
        // Out of memory while telling of a failure that nobody is told of.
        return;
    }
}

void CDatabaseTransaction::Commit() {
    m_database.CommitTrans();
    m_fOpen = false;
}
