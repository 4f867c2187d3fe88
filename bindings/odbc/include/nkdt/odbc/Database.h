#pragma once

/// @file
/// A connection to a database through the ODBC driver manager.
///
/// A database is the path of an SQLite file or a connection string:
/// @code
/// CDatabase db;
/// db.Open("firma.db");                                            // must exist
/// db.Open("Driver={PostgreSQL Unicode};Server=127.0.0.1;Port=5432;Database=firma;UID=anna");
/// {
///     CDatabaseTransaction transaction(db);
///     db.ExecuteSQL("UPDATE Artikel SET Preis = Preis + 1");
///     transaction.Commit();                                       // else everything is rolled back
/// }
/// @endcode
///
/// Texts cross this interface in code page 1252 (statements, names, messages); what a database holds beyond
/// it is never lost silently. Paths and connection strings are bytes as the operating system has them
/// (UTF-8).
///
/// Every operation that fails throws a `CDBException*`, which belongs to the handler: with the return code,
/// the state and the native number of the first diagnostic record, and the texts of all records. A connection
/// serves one thread at a time.

#include <memory>
#include <vector>

#include "nkdt/odbc/DatabaseColumn.h"
#include "nkfw/Export.h"
#include "nkfw/String.h"
#include "nkfw/Types.h"

namespace nkdt::odbc {
class Connection;
}

class NKDT_API CDatabase {
  public:
    /// What to do about an SQLite file that does not exist.
    enum OpenOption {
        openExisting,   ///< it is an error
        createMissing,  ///< it is created, empty
    };

    /// The databases whose ways are known.
    enum Dbms {
        otherDbms,   ///< any other, used by the common rules
        sqlite,      ///< SQLite
        postgresql,  ///< PostgreSQL
    };

    /// A connection that is not open.
    CDatabase() noexcept;
    /// Closes the connection; a transaction that is under way is rolled back.
    ~CDatabase();
    CDatabase(const CDatabase&) = delete;
    CDatabase& operator=(const CDatabase&) = delete;

    /// Opens a database; a connection that is open is closed first.
    ///
    /// @param lpszTarget a connection string, recognised by a "=" in it, or else the path of an SQLite file.
    ///                   A path with a ";" is refused: the driver would take it for the end of the path.
    /// @param nOption    for SQLite: whether a file that does not exist is an error
    ///
    /// Where the text does not say otherwise, rows stream in constant memory (`StepAPI`, `UseDeclareFetch`)
    /// and truth values are no texts. A string that names a data source instead of a driver gets the options
    /// of every known driver; each ignores those of the others. Whatever the text says, texts are UTF-8 and a
    /// lock is waited for at most 5 seconds. A file that is no database is noticed here as well. What fails
    /// names the database.
    void Open(LPCTSTR lpszTarget, OpenOption nOption = openExisting);
    /// Closes the connection; a transaction that is under way is rolled back. Recordsets and statements that
    /// still use it end with it: their next use throws.
    void Close() noexcept;
    BOOL IsOpen() const noexcept;
    /// The kind of the open database.
    Dbms GetDbms() const noexcept;

    /// Starts a transaction. Throws if one is under way.
    void BeginTrans();
    /// Makes the transaction's changes permanent and ends it. If that fails, the transaction stays under way.
    void CommitTrans();
    /// Undoes the transaction's changes and ends it. In PostgreSQL the rows of open recordsets end with it.
    void Rollback();
    BOOL IsInTransaction() const noexcept;

    /// Executes one statement and returns the number of rows that it changed, -1 if it does not tell.
    LONGLONG ExecuteSQL(LPCTSTR lpszSQL);

    /// The name as an identifier of a statement: in quotation marks, those inside doubled.
    static CString QuoteName(LPCTSTR lpszName);

    /// The names of the tables and views that the connection sees, without those of the system, in
    /// alphabetical order.
    std::vector<CString> GetTables() const;
    /// TRUE if there is a table or view of exactly that name; SQLite ignores the letter case of ASCII
    /// letters.
    BOOL HasTable(LPCTSTR lpszTable) const;
    /// The columns of a table or view in their order, with their places in the primary key. Throws if there
    /// is no such table.
    std::vector<CDatabaseColumn> GetColumns(LPCTSTR lpszTable) const;

    /// For the classes of this binding: the open connection. Throws if there is none.
    const std::shared_ptr<nkdt::odbc::Connection>& GetConnection() const;

  private:
    std::shared_ptr<nkdt::odbc::Connection> m_connection;
};

/// A transaction that is rolled back unless it is committed.
class NKDT_API CDatabaseTransaction {
  public:
    /// Starts a transaction on an open database, which must outlive this object.
    explicit CDatabaseTransaction(CDatabase& database);
    /// Rolls back what was not committed; a failure to do so is not reported, the database then rolls back
    /// itself.
    ~CDatabaseTransaction();
    CDatabaseTransaction(const CDatabaseTransaction&) = delete;
    CDatabaseTransaction& operator=(const CDatabaseTransaction&) = delete;

    /// Makes the changes permanent. If that throws, the transaction is still to be rolled back by the
    /// destructor.
    void Commit();

  private:
    CDatabase& m_database;
    bool m_fOpen = true;
};
