#include "Commands.h"
#include "Error.h"
#include "TableFile.h"
#include "Text.h"

namespace nkdt::app {

int exportTable(const ExportOptions& options, Console& console) {
    const TableFileFormat& format = requireFormat(options.format);
    const CString table = ansi(options.table, "the table");
    CDatabase database;
    openDatabase(database, options.database);
    TableColumns columns = columnsOf(database, table, options.selection);
    OutputFile file(options.output);
    tellLeftOut(console, table, columns.leftOut);

    TableReader rows(database, table, columns.bound, options.selection);
    {
        const auto writer = format.makeWriter(file, table, columns.bound);
        Progress progress(console, "exporting");
        while (rows.next()) {
            writer->add(rows.row(), columns.bound);
            progress.show(rows.row());
        }
        writer->finish(rows.row());
    }
    file.complete();
    return exitGood;
}

}  // namespace nkdt::app
