#include <ostream>

#include "Commands.h"
#include "Error.h"
#include "Text.h"
#include "TextTable.h"

namespace nkdt::app {

namespace {

std::vector<TextTable::Column> titlesOf(const BoundColumns& columns) {
    std::vector<TextTable::Column> titles;
    for (const BoundColumn& column : columns)
        titles.push_back({column.name, column.kind->number ? TextTable::right : TextTable::left});
    return titles;
}

std::string shownText(const Cell& cell, std::size_t width) {
    std::string text = visible(cell.value().ConvToOFL());
    return width == 0 ? text : shortened(text, width);
}

/// Reads the rows once and hands their texts on.
template <class Take>
void forEachRow(const CDatabase& database, const CString& table, BoundColumns& columns,
                const ShowOptions& options, Progress& progress, Take&& take) {
    if (options.limit == 0) return;
    TableReader reader(database, table, columns, options.selection);
    TextTable::Row texts(columns.size());
    while (reader.next()) {
        for (std::size_t i = 0; i < columns.size(); ++i)
            atPlace(reader.row(), columns[i].name,
                    [&] { texts[i] = shownText(*columns[i].cell, options.width); });
        take(texts);
        progress.show(reader.row());
        if (reader.row() == options.limit) break;
    }
}

}  // namespace

// The rows are read twice, for the widths and for the texts, so that memory does not grow with the table.
int show(const ShowOptions& options, Console& console) {
    CDatabase database;
    openDatabase(database, options.database);
    const CString tableName = ansi(options.table, "the table");
    TableColumns columns = columnsOf(database, tableName, options.selection);
    tellLeftOut(console, tableName, columns.leftOut);

    TextTable table(titlesOf(columns.bound));
    {
        Progress progress(console, "reading");
        forEachRow(database, tableName, columns.bound, options, progress,
                   [&](const TextTable::Row& texts) { table.measure(texts); });
    }
    table.writeTitles(console.out);
    Progress silent(console, "");
    forEachRow(database, tableName, columns.bound, options, silent, [&](const TextTable::Row& texts) {
        table.write(console.out, texts);
        if (!console.out) throw DataError("the output cannot be written");
    });
    return exitGood;
}

}  // namespace nkdt::app
