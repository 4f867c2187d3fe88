#pragma once

/// @file
/// The demonstration's table: a column of every type; rows with umlauts, nulls, negative and very large
/// amounts.

#include "Console.h"
#include "nkdt/odbc/Odbc.h"

namespace nkdt::app {

inline constexpr const char* sampleTableName = "Artikel";
/// The column that holds durations in its whole numbers, and their kind.
inline constexpr const char* sampleDurations = "Rüstzeit=Time";
/// A condition that one of the rows meets, whose values are worth looking at.
inline constexpr const char* sampleRowFilter = "\"Nummer\" = 2";
/// A column of amounts, whose value in that row a person corrects in the dialog, and the new amount.
inline constexpr const char* sampleAmount = "Bestandswert";
inline constexpr const char* sampleNewAmount = "-9007199254740990";

/// Makes the table and its sample rows, and adds @p rows more, which are always the same; all in one
/// transaction. Throws a UsageError if there is such a table.
void makeSampleTable(CDatabase& database, LONGLONG rows, Progress& progress);

}  // namespace nkdt::app
