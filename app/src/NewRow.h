#pragma once

/// @file
/// A row that is to be computed with and then added to its table.

#include <string>

#include "RowForm.h"
#include "Table.h"
#include "nkfw/String.h"

namespace nkdt::app {

/// A condition of SQL that the row with this key meets, UTF-8.
std::string rowFilter(const BoundColumn& column, const Cell& key);

/// Why a row with these values cannot become a new one, at the columns that are to blame: a value that cannot
/// be computed with, or a key, the first column, that is undefined or there already when it is computed.
RowForm::Refusals refusalsOfNewRow(const CDatabase& database, const CString& table,
                                   const BoundColumns& columns);

}  // namespace nkdt::app
