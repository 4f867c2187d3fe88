#pragma once

/// @file
/// Saving a row for a person at a dialog.

#include "ScreenDialog.h"
#include "StoredRow.h"
#include "nkfw/String.h"

namespace nkdt::app {

/// Saves the row. Returns what the person has to know if it cannot be saved, a failure of the database too.
/// @param saved how it ended; as it was if the database failed
StoreFailure saveRow(StoredRow& row, StoredRow::Saved& saved);

/// The names of the columns of a saved or overtaken row that `saved` tells, joined by commas.
CString changedColumns(StoredRow& row, const StoredRow::Saved& saved);

}  // namespace nkdt::app
