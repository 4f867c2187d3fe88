#include <sys/stat.h>

#include <algorithm>

#include "Commands.h"
#include "Error.h"
#include "TableFile.h"
#include "Text.h"

namespace nkdt::app {

namespace {

void openInput(CFile& file, const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) throw UsageError("there is no input file \"" + path + "\"");
    if (S_ISDIR(status.st_mode)) throw UsageError("the input \"" + path + "\" is a folder");
    file.Open(path.c_str(), CFile::modeRead);
}

BoundColumns columnsOfFile(const TableHead& head) {
    BoundColumns columns;
    for (const TableHead::Column& column : head.columns)
        columns.push_back({visible(column.name), column.name, column.kind, column.kind->makeCell()});
    return columns;
}

/// The file's columns go to the table's of the same names, which must be of the same classes, or computed by
/// the database.
void matchColumns(const CDatabase& database, const CString& table, BoundColumns& columns,
                  const ImportOptions& options) {
    Selection everything;
    everything.as = options.as;
    const TableColumns target = columnsOf(database, table, everything);
    for (BoundColumn& column : columns) {
        const auto sameName = [&](const auto& other) { return equalIgnoringCase(other.name, column.name); };
        const auto bound = std::find_if(target.bound.begin(), target.bound.end(), sameName);
        if (bound == target.bound.end()) {
            const auto leftOut = std::find_if(target.leftOut.begin(), target.leftOut.end(), sameName);
            throw DataError(
                "table " + visible(table) +
                (leftOut == target.leftOut.end() ? " has no column " : " has the column ") + column.name +
                (leftOut == target.leftOut.end() ? "" : ", but it cannot be written: " + leftOut->advice()));
        }
        column.generated = bound->generated;
        if (!column.generated && bound->kind != column.kind) {
            throw DataError("column " + column.name + " is " + column.kind->className + " in the file, but " +
                            bound->kind->className + " in the table");
        }
    }
}

}  // namespace

int importTable(const ImportOptions& options, Console& console) {
    const TableFileFormat& format = requireFormat(options.format);
    const CString table = ansi(options.table, "the table");
    CFile file;
    openInput(file, options.input);
    CDatabase database;
    openDatabase(database, options.database);
    if (options.create && !options.as.empty())
        throw UsageError("--as goes with a table that exists, --create with one that does not");
    if (options.create && database.HasTable(table))
        throw UsageError("there is a table \"" + visible(table) + "\" already");
    if (!options.create) requireTable(database, table);

    const auto reader = onFile(options.input, [&] { return format.makeReader(file); });
    BoundColumns columns = columnsOfFile(reader->head());
    CDatabaseTransaction transaction(database);
    if (options.create) {
        database.ExecuteSQL(createTableStatement(database, table, columns));
    } else {
        matchColumns(database, table, columns, options);
        for (const BoundColumn& column : columns) {
            if (column.generated)
                tellLeftOut(console, table, column.name, "the database computes its values");
        }
    }
    {
        TableWriter writer(database, table, columns);
        Progress progress(console, "importing");
        const auto readRow = [&](LONGLONG row) {
            return onFile(options.input, [&] { return reader->next(row, columns); });
        };
        for (LONGLONG row = 1; readRow(row); ++row) {
            writer.add();
            progress.show(row);
        }
    }
    transaction.Commit();
    return exitGood;
}

}  // namespace nkdt::app
