#pragma once

/// @file
/// The rows of a table or a query, one after the other, through fields of the application.
///
/// The application binds columns to its own fields; MoveNext() fetches a row and fills them, and the value
/// classes know by the field's address whether it is null:
/// @code
/// CDatabaseRecordset rs(db);
/// rs.OpenTable("Kunden", CDatabaseRecordset::updatable);
/// long nNummer = 0;
/// CString strName;
/// rs.BindLong("Nummer", nNummer);
/// rs.BindText("Name", strName);
///
/// NkDtString name;
/// while (rs.MoveNext()) {
///     name.SetFromRecordSet(rs, strName);
///     name += " GmbH";
///     rs.Edit();
///     CDatabaseRecordset::PrepareText(strName, name.GetLength());
///     name.ConvToRecordSet(rs, strName);
///     rs.Update();
/// }
/// @endcode
///
/// Rows stream forward in constant memory. Nothing is cut or guessed: every value crosses as text and is
/// checked before it becomes a field. What does not fit is a `CDBException*` that names row and column, e.g.
/// "Zeile 5, Spalte Name: Zeichen U+4E2D ist in Codepage 1252 nicht darstellbar"; `m_strColumn` has the
/// column alone, `m_strReason` the text behind the place. Its state tells the kind:
/// 22003 a number out of range, 22008 a date that is none or out of range, 22018 a text that is no such
/// value, 22001 a text that is too long, 22021 a character outside the code page or a NUL.
///
/// No memory is allocated per row once the buffers have grown to the longest text.

#include <memory>
#include <vector>

#include "nkdt/odbc/Database.h"
#include "nkdt/odbc/DatabaseColumn.h"
#include "nkfw/Exception.h"
#include "nkfw/Export.h"
#include "nkfw/Recordset.h"
#include "nkfw/String.h"
#include "nkfw/Types.h"

class NKDT_API CDatabaseRecordset : public CRecordset {
  public:
    /// What a recordset on a table is for.
    enum Access {
        readOnly,   ///< rows are read
        updatable,  ///< rows are read, changed, deleted and added
    };

    /// A recordset on an open database. It is not open itself.
    explicit CDatabaseRecordset(const CDatabase& database);
    ~CDatabaseRecordset() override;
    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }

    /// Opens a table or view. Its columns are known afterwards; the rows are asked for by the first
    /// MoveNext().
    /// @param lpszTable  the name as it stands in the database, without quotation marks
    /// @param nAccess    what it is opened for; columns that are not bound are only fetched where `updatable`
    /// needs them
    /// @param lpszFilter a condition, as behind WHERE; null for all rows
    /// @param lpszSort   an order, as behind ORDER BY; null for the database's own
    void OpenTable(LPCTSTR lpszTable, Access nAccess = readOnly, LPCTSTR lpszFilter = nullptr,
                   LPCTSTR lpszSort = nullptr);
    /// Executes a query. Its rows can be read only.
    void OpenQuery(LPCTSTR lpszSQL);
    /// Ends the reading and releases every lock that it holds. All bindings end.
    void Close() noexcept;
    BOOL IsOpen() const noexcept;
    /// The columns of the open table or query in their order.
    const std::vector<CDatabaseColumn>& GetColumns() const noexcept;

    /// Binds a column to a field of the application, before the first MoveNext(). The field must live and
    /// stay where it is until Close(); it is known by its address from now on and starts null. The column is
    /// found by its exact name, else by the name in any letter case. Throws if there is none or if the column
    /// is bound already.
    ///
    /// A whole number of 16 bits; digits with a sign, nothing else.
    void BindShort(LPCTSTR lpszColumn, int& nField);
    /// A whole number of 32 bits, whatever the width of `long`.
    void BindLong(LPCTSTR lpszColumn, long& nField);
    void BindLong(LPCTSTR lpszColumn, LONG& nField);
    /// A truth value as a whole number of 32 bits, 0 for false.
    void BindBool(LPCTSTR lpszColumn, BOOL& fField);
    /// A finite floating number, exactly as it is stored. (A query on SQLite has only the 15 digits that the
    /// driver tells; a table's column has them all.)
    ///
    /// A written number comes back as it was or is refused (22003): into a PostgreSQL `real` one that 32 bits
    /// do not tell, into a NUMERIC(p,s) one with more digits or places. A zero may lose its sign.
    void BindDouble(LPCTSTR lpszColumn, double& dField);
    /// A decimal number of at most 28 digits and 28 places as plain text ("-0.05", "12.50", "100"), with room
    /// for every number of `NkDtDecimal`, from a column of any numeric type or of text. The column may write
    /// it otherwise (".5", "1.0e+20"); zeros behind the 28th digit are left out. A number that SQLite holds
    /// as a double is the decimal with the fewest digits that reads back as it (in a query: the 15 digits
    /// that the driver tells).
    ///
    /// A written number comes back as it was or is refused (22003), never rounded: more than 15 digits into a
    /// double or a NUMERIC column of SQLite, unless it is a whole number of 64 bits or the declared type is a
    /// text, such as DECIMALTEXT; more than 6 or 15 into a PostgreSQL `real` or `double precision`; more
    /// digits or places, zeros at the end apart, than a NUMERIC(p,s) of other databases has; places, and what
    /// is beyond the type, into a column of whole numbers. "5.0" is written as 5 and 0 without places,
    /// because the value class marks numbers without places so.
    void BindDecimal(LPCTSTR lpszColumn, CString& strField);
    /// A date with a time of day, of the years 1753 to 9999, from a text "2004-03-05", "2004-03-05 14:07" or
    /// "2004-03-05 14:07:09", with a "T" instead of the blank as well. A fraction of a second is dropped. A
    /// PostgreSQL `timestamptz` is told in the time zone of the session. (A query on PostgreSQL has what the
    /// driver tells: of dates before Christ the year alone; the last second of 9999, which may be an infinite
    /// time there, is refused.)
    ///
    /// It is written as "2004-03-05 14:07:09", into a DATE column as "2004-03-05". A time of day other than
    /// 00:00:00 into a DATE column, and what no calendar has, are refused (22008). The field's fraction is
    /// not written.
    void BindDateTime(LPCTSTR lpszColumn, TIMESTAMP_STRUCT& tsField);
    /// The same for a field of dates: without a time of day into a column of texts too.
    void BindDate(LPCTSTR lpszColumn, TIMESTAMP_STRUCT& tsField);
    /// A text of at most one character.
    void BindChar(LPCTSTR lpszColumn, CString& strField);
    /// A text of any length in code page 1252.
    void BindText(LPCTSTR lpszColumn, CString& strField);

    /// Takes the best fitting character, instead of refusing, for each character that code page 1252 does not
    /// have.
    void SetBestFit(BOOL fBestFit) noexcept;

    /// Makes room, so that a text of @p nLength characters reaches the field uncut: the value classes write
    /// into the buffer that the field has. The text in the field is kept. To be called before each
    /// `ConvToRecordSet` of a text.
    static void PrepareText(CString& strField, INT nLength);

    /// Fetches the next row into the bound fields. FALSE behind the last row. If a value is refused, the row
    /// is nevertheless the current one, the refused field null, and MoveNext() can go on with the next row.
    BOOL MoveNext();
    /// TRUE once MoveNext() has found no more row.
    BOOL IsEOF() const noexcept;
    /// The number of the current row, 1 for the first; 0 before it. Behind the last row, the number of rows.
    LONGLONG GetRowNumber() const noexcept;

    /// Starts to change the current row: the application changes fields, then calls Update().
    void Edit();
    /// Starts a new row with all bound fields null: the application sets fields, then calls Update(). Columns
    /// that are not bound get their default. The current row stays current.
    void AddNew();
    /// Writes the fields: all of a new row, the changed ones of an edited row. FALSE if nothing was changed.
    ///
    /// An edited row is found by its primary key; without one, by all its old values, and it is an error, and
    /// nothing is changed, if none or several rows have them. A value that is refused leaves the database as
    /// it was and the editing under way. The values of a generated column are the database's: one that is
    /// changed, or not null in a new row, is refused (428C9).
    BOOL Update();
    /// Gives up the editing. The fields get the values of the current row back.
    void CancelUpdate();
    /// Deletes the current row, found as in Update(). The fields keep their values.
    void Delete();

  protected:
    /// Called for each value of a fetched row that is refused. This one throws the exception. One that
    /// returns releases it; the field then stays null, and the row's other values are read.
    virtual void OnRefused(const CDatabaseColumn& column, const void* pField, CDBException* pException);

  private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};
