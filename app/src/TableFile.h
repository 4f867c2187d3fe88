#pragma once

/// @file
/// Files that hold a table. Each says which format and version it is, names the table and its columns with
/// their classes, and tells at its end how many rows it has, so that a file that was cut off is noticed.
///
/// External text, version 1, in UTF-8. Names and texts are written as escaped() does it. A row is a line of
/// fields with tabs between; a field is its definedness (1 or 0), the version of its external text, and the
/// text:
/// @code
/// nkdt extern 1
/// table Kunden
/// column NkDtLong Nummer
/// column NkDtString Name
/// rows
/// 1:100:4711<TAB>1:100:Müller\nKöln
/// 1:100:4712<TAB>0:100:
/// end 2
/// @endcode
///
/// SQL statements, version 1, in UTF-8; the same head and end in comments. Databases can execute it as it is:
/// @code
/// -- nkdt sql 1
/// -- table Kunden
/// -- column NkDtLong Nummer
/// -- column NkDtString Name
/// -- rows
/// BEGIN;
/// INSERT INTO "Kunden" ("Nummer", "Name") VALUES (4711, 'Müller');
/// COMMIT;
/// -- end 1
/// @endcode
/// A date stands there as 'YYYY-MM-DD', a date with a time of day as 'YYYY-MM-DD hh:mm:ss', which no setting
/// of a database reads in another order. It is read back strictly: nothing but these statements, and nothing
/// is executed. (SQLite itself reads a number with 15 digits.)
///
/// Archive, version 1: in the library's archive, the text "nkdt archive", the version (16 bits), the table's
/// name, the number of columns (32 bits), for each its class and its name; then for each row a byte 1 and its
/// values as they serialize themselves; then a byte 0 and the number of rows (64 bits).

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "OutputFile.h"
#include "Table.h"
#include "nkfw/File.h"
#include "nkfw/String.h"

namespace nkdt::app {

/// What a file says about itself.
struct TableHead {
    struct Column {
        CString name;
        const ColumnKind* kind;
    };
    CString table;
    std::vector<Column> columns;
};

/// Writes a table to a file.
class TableFileWriter {
  public:
    virtual ~TableFileWriter() = default;
    /// Writes the values of the cells.
    virtual void add(LONGLONG row, const BoundColumns& columns) = 0;
    /// Writes the end; nothing comes after it.
    virtual void finish(LONGLONG rows) = 0;
};

/// Reads a table from a file. Whatever is wrong with the file is a DataError or what the library throws.
class TableFileReader {
  public:
    virtual ~TableFileReader() = default;
    virtual const TableHead& head() const = 0;
    /// Reads the next row into the cells, which are the head's columns in their order; false at the end,
    /// which is checked.
    virtual bool next(LONGLONG row, BoundColumns& columns) = 0;
};

std::unique_ptr<TableFileWriter> makeExternWriter(OutputFile& file, const CString& table,
                                                  const BoundColumns& columns);
std::unique_ptr<TableFileReader> makeExternReader(CFile& file);
std::unique_ptr<TableFileWriter> makeSqlWriter(OutputFile& file, const CString& table,
                                               const BoundColumns& columns);
std::unique_ptr<TableFileReader> makeSqlReader(CFile& file);
std::unique_ptr<TableFileWriter> makeArchiveWriter(OutputFile& file, const CString& table,
                                                   const BoundColumns& columns);
std::unique_ptr<TableFileReader> makeArchiveReader(CFile& file);

/// A format by its name, as it is called on the command line.
struct TableFileFormat {
    const char* name;
    std::unique_ptr<TableFileWriter> (*makeWriter)(OutputFile&, const CString&, const BoundColumns&);
    std::unique_ptr<TableFileReader> (*makeReader)(CFile&);
};
const std::vector<TableFileFormat>& tableFileFormats();
/// Throws a UsageError for a name that is none.
const TableFileFormat& requireFormat(std::string_view name);

/// The kind of a class that a file names. Throws a DataError if the class is not there.
const ColumnKind& requireKindOfFile(std::string_view className);

}  // namespace nkdt::app
