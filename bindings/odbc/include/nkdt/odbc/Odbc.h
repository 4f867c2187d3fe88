#pragma once

/// @file
/// The whole binding: databases, statements and recordsets through the ODBC driver manager.

#include "nkdt/odbc/Database.h"
#include "nkdt/odbc/DatabaseColumn.h"
#include "nkdt/odbc/DatabaseRecordset.h"
#include "nkdt/odbc/DatabaseStatement.h"
