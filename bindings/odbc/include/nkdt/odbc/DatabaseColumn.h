#pragma once

/// @file
/// A column of a table or of a query's result, as the database describes it.
///
/// What a column is follows from the name of its declared type, never from the type that a driver reports:
/// SQLite's driver calls a NUMERIC a double and a DECIMAL a text, PostgreSQL's calls a truth value a text of
/// five characters.
/// @code
/// CDatabaseColumn::TypeFromName("NVARCHAR(40)");   // CDatabaseColumn::text
/// CDatabaseColumn::TypeFromName("bpchar", 1);      // CDatabaseColumn::character
/// @endcode

#include "nkfw/Export.h"
#include "nkfw/String.h"
#include "nkfw/Types.h"

struct NKDT_API CDatabaseColumn {
    /// What a declared type's name means.
    enum Type {
        unknown,       ///< no name, or one that is not known
        smallInteger,  ///< SMALLINT, INT2, TINYINT, SMALLSERIAL: 16 bits
        integer,       ///< INTEGER, INT, INT4, MEDIUMINT, SERIAL: 32 bits
        bigInteger,    ///< BIGINT, INT8, BIGSERIAL: 64 bits
        decimal,       ///< NUMERIC, DECIMAL, NUMBER, MONEY, DECIMALTEXT
        floating,      ///< REAL, FLOAT, FLOAT4, FLOAT8, DOUBLE, DOUBLE PRECISION
        character,     ///< CHAR(1), CHARACTER(1), NCHAR(1), BPCHAR(1), and CHAR without a length
        text,          ///< every other text: CHAR(n), VARCHAR, NVARCHAR, TEXT, NTEXT, CLOB, NAME, ...
        boolean,       ///< BOOLEAN, BOOL, BIT
        date,          ///< DATE
        timestamp,     ///< TIMESTAMP, DATETIME, SMALLDATETIME, TIMESTAMPTZ
        timeOfDay,     ///< TIME, TIMETZ
        binary,        ///< BLOB, BYTEA, BINARY, VARBINARY, IMAGE
    };

    /// The meaning of a declared type's name, in any letter case, with or without its numbers in parentheses.
    /// @param lpszTypeName the name; null or empty gives `unknown`
    /// @param nLength the length that the database reports beside the name, 0 if none; it decides between
    /// `character` and `text` when the name has no number of its own
    static Type TypeFromName(LPCTSTR lpszTypeName, INT nLength = 0) noexcept;

    CString strName;       ///< the column's name, in code page 1252
    CString strTypeName;   ///< the declared type's name, as the database reports it; may be empty
    Type nType = unknown;  ///< what that name means
    INT nLength =
        0;  ///< the declared length of a text or precision of a number, 0 if none; bounds nothing in SQLite
    INT nScale = 0;         ///< the declared places of a number, 0 if none; negative: zeros before the point
    INT nKeyPosition = 0;   ///< 1 for the first column of the primary key and so on, 0 outside of it
    BOOL fNullable = TRUE;  ///< FALSE only if the database promises that no value is null
    BOOL fGenerated = FALSE;  ///< TRUE if the database computes the values, which cannot be written then
};
