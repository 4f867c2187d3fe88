#pragma once

/// @file
/// How a value class stands for a column: which columns it takes, which field of a recordset it crosses
/// through, and what its representations are.
///
/// Everything else in the program works on cells, whatever their class.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "nkdt/NkDtBasis.h"
#include "nkdt/NkDtString.h"
#include "nkdt/odbc/Odbc.h"
#include "nkfo/NkFormat.h"
#include "nkfw/Archive.h"
#include "nkfw/DataExchange.h"

namespace nkdt::app {

/// The forms that a value can take and come back from.
enum class Representation { text, userText, sqlLiteral, external, recordset, archive, record, checkBox };

struct ColumnKind;
class ExactTotal;

/// The form of all decimals on the screen: "-1.234,50", two places at least, and every place that is held.
const NkFormat& germanAmount();

/// The value of one column in the current row, with the recordset field that it crosses through. It stays
/// where it is, because recordsets know fields by their addresses.
class Cell {
  public:
    Cell() = default;
    virtual ~Cell() = default;
    Cell(const Cell&) = delete;
    Cell& operator=(const Cell&) = delete;

    virtual NkDtBasis& value() noexcept = 0;
    virtual const NkDtBasis& value() const noexcept = 0;
    virtual const ColumnKind& kind() const noexcept = 0;

    /// Binds the field to a column.
    virtual void bind(CDatabaseRecordset& rs, LPCTSTR column) = 0;
    /// Takes the value from the field.
    virtual void fetch(CRecordset& rs) = 0;
    /// Puts the value into the field, whole.
    virtual void store(CRecordset& rs) = 0;

    /// The value as the library's text, and back.
    virtual NkDtString text() const = 0;
    virtual void setText(const NkDtString& text) = 0;
    /// The value as an SQL literal, "NULL" if it is undefined.
    virtual NkDtString sqlLiteral() const = 0;
    /// Reads what stands in an SQL literal of a defined value, without its apostrophes.
    virtual void setSqlText(const NkDtString& text) = 0;
    /// The value as a literal that every database reads as this value, and what stands in it, read back.
    virtual NkDtString statementLiteral() const = 0;
    virtual void setStatementText(const NkDtString& text) = 0;
    /// Reads the external text with its definedness and version.
    virtual void setExternal(const NkDtString& text, BOOL fDefined, USHORT version) = 0;
    virtual void serialize(CArchive& ar) = 0;
    /// Takes the value of @p from, a cell of the same kind, through a `DEC` record. Only where the kind has
    /// records.
    virtual void takeThroughRecord(const Cell& from) = 0;
    /// Exchanges the value with an edit control of a dialog.
    virtual void exchangeEdit(CDataExchange& exchange, int id) = 0;
    /// The same with a check box. Only where the kind has check boxes.
    virtual void exchangeCheck(CDataExchange& exchange, int id) = 0;

    /// TRUE if both are undefined or both have the same value. The other cell is of the same kind.
    virtual bool equals(const Cell& other) const = 0;
    /// A text that two defined values share if, and only if, they are the same to a comparison of tables.
    virtual NkDtString comparedText() const = 0;
    /// Why the representation cannot hold this value, as it states itself; null if it says nothing of the
    /// kind, or if more is missing than it says.
    /// @param back what came back, a cell of the same kind; null if nothing did
    virtual const char* statedLoss(Representation representation, const Cell* back) const = 0;
    /// Computes something with the value and tells what.
    virtual const char* compute() = 0;
    /// Adds a defined value to an exact total, where the kind has totals.
    virtual void addTo(ExactTotal& total) const = 0;
};

/// What the program has to know about a value class.
struct ColumnKind {
    const char* className;
    bool number;                          ///< stands at the right of a table's column
    bool quotedInSql;                     ///< the literal of a defined value stands in apostrophes
    bool decimal;                         ///< has `DEC` records and exact totals
    const char* sqliteType;               ///< the declared type that a new column gets
    const char* otherType;                ///< the same in other databases
    std::unique_ptr<Cell> (*makeCell)();  ///< with the program's format, where the kind has one
    const char* shortName = nullptr;      ///< where it is not the class's name without "NkDt"
    bool checkBox = false;                ///< a dialog shows it as a check box

    const char* declaredType(CDatabase::Dbms dbms) const noexcept {
        return dbms == CDatabase::sqlite ? sqliteType : otherType;
    }
};

/// The kind for such columns; null if no class takes them.
const ColumnKind* kindFor(CDatabaseColumn::Type type) noexcept;
/// The kind of that class, its name written with or without "NkDt" or short, in any letter case; null if
/// there is none.
const ColumnKind* findKind(std::string_view className) noexcept;
/// The short names of all kinds.
std::string kindNames();

}  // namespace nkdt::app
