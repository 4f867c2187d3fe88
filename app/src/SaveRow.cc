#include "SaveRow.h"

#include "Error.h"
#include "Literal1252.h"
#include "nkfw/Exception.h"

namespace nkdt::app {

using namespace nkfw::literals;

namespace {

StoreFailure failureOf(StoredRow& row, const StoredRow::Saved& saved) {
    if (saved.outcome == StoredRow::Saved::deleted)
        return {{}, CString("Diese Zeile wurde inzwischen gelöscht. Es ist nichts gespeichert."_cp1252)};
    if (saved.outcome == StoredRow::Saved::overtaken) {
        return {
            {},
            "Diese Zeile wurde inzwischen von jemand anderem geändert ("_cp1252 + changedColumns(row, saved) +
                "). Es ist nichts gespeichert; bitte brechen Sie ab und öffnen Sie die Zeile neu."_cp1252};
    }
    return {saved.refusals};
}

}  // namespace

StoreFailure saveRow(StoredRow& row, StoredRow::Saved& saved) {
    try {
        saved = row.save();
        return failureOf(row, saved);
    } catch (CDBException*) {
        return {{}, "Die Datenbank lehnt das Speichern ab: " + takeCaughtReason()};
    }
}

CString changedColumns(StoredRow& row, const StoredRow::Saved& saved) {
    CString names;
    for (const std::size_t i : saved.columns)
        names += (names.IsEmpty() ? "" : ", ") + row.columns()[i].ansiName;
    return names;
}

}  // namespace nkdt::app
