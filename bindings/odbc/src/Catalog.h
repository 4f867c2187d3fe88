#pragma once

/// @file
/// What the database tells of its tables.

#include <memory>
#include <vector>

#include "Connection.h"
#include "nkdt/odbc/DatabaseColumn.h"
#include "nkfw/String.h"

namespace nkdt::odbc {

/// The names of the tables and views that can be named without a schema, sorted.
std::vector<CString> tablesOf(const std::shared_ptr<Connection>& connection);

/// The columns of a table in their order, with their places in the primary key; empty if there is no such
/// table.
std::vector<CDatabaseColumn> columnsOf(const std::shared_ptr<Connection>& connection, LPCTSTR table);

}  // namespace nkdt::odbc
