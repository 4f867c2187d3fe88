#include "NewRow.h"

#include <memory>

#include "Error.h"
#include "Text.h"

namespace nkdt::app {

namespace {

bool hasRow(const CDatabase& database, const CString& table, const std::string& filter) {
    CDatabaseRecordset rows(database);
    rows.OpenTable(table, CDatabaseRecordset::readOnly, ansi(filter, "the condition"));
    return rows.MoveNext() != FALSE;
}

void compute(const BoundColumn& column, Cell& cell) {
    cell.value().Assign(column.cell->value());
    (void)cell.compute();
}

}  // namespace

std::string rowFilter(const BoundColumn& column, const Cell& key) {
    return "\"" + column.name + "\" = " + key.sqlLiteral().GetValue();
}

RowForm::Refusals refusalsOfNewRow(const CDatabase& database, const CString& table,
                                   const BoundColumns& columns) {
    RowForm::Refusals refusals;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::unique_ptr<Cell> cell = makeCellFor(columns[i]);
        try {
            compute(columns[i], *cell);
        } catch (...) {
            refusals.push_back({i, takeCaughtReason()});
            continue;
        }
        if (i != 0) continue;
        if (!columns[i].cell->value().IsDefined()) {
            refusals.push_back({i, CString("Dieses Feld darf nicht leer sein.")});
        } else if (hasRow(database, table, rowFilter(columns[i], *cell))) {
            refusals.push_back({i, "Die Zeile " + CString(cell->text().GetValue()) + " gibt es schon."});
        }
    }
    return refusals;
}

}  // namespace nkdt::app
