#pragma once

/// @file
/// The way of dates between a column and a field of date and time.

#include <memory>

#include "FieldExchange.h"
#include "nkdt/odbc/Database.h"
#include "nkdt/odbc/DatabaseColumn.h"
#include "nkfw/Types.h"

namespace nkdt::odbc {

/// What a column's texts are like, and how a date is written into it.
struct DateColumn {
    /// @param fieldOfDates whether the field is one of dates, which are written into texts without a time
    /// @param ofTable      whether the column is read from a table, where its texts are the database's own
    DateColumn(const CDatabaseColumn& column, CDatabase::Dbms dbms, bool fieldOfDates, bool ofTable);

    bool dateOnly;           ///< written without a time of day, which is 00:00:00 then
    bool zoned;              ///< the session's distance from UTC may stand behind the time of day
    bool lastMayBeInfinity;  ///< the last second of 9999 may stand for an infinite time
};

std::unique_ptr<FieldExchange> exchangeDate(TIMESTAMP_STRUCT& field, const DateColumn& column);

}  // namespace nkdt::odbc
