#pragma once

/// @file
/// The driver manager's interface beside our own portable types. This is the only header that includes
/// <sql.h>.
///
/// Both sides define `BOOL`, `ULONG` and `TIMESTAMP_STRUCT`, with different widths and spellings. Ours win:
/// while the driver manager's headers are read, its own names stand under other ones (`NK_SQL_…`), and its
/// macro `BOOL` is undone.

#include "nkfw/Types.h"

#define ULONG NK_SQL_ULONG
#define TIMESTAMP_STRUCT NK_SQL_TIMESTAMP_STRUCT

#include <sql.h>
#include <sqlext.h>

#undef BOOL
#undef ULONG
#undef TIMESTAMP_STRUCT
