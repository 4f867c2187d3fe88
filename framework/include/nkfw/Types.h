#pragma once

/// @file
/// The portable types of the interface: fixed widths whatever the platform.
///
/// A `BOOL` is a 32-bit integer, not the language's `bool`: it keeps the number it is given. Text is one byte
/// a character in code page 1252 (`TCHAR`); `BSTR` (see BStr.h) is length-prefixed 16-bit text.

#include <cstdint>

using CHAR = char;
using TCHAR = char;
using BYTE = std::uint8_t;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using WORD = std::uint16_t;
using INT = std::int32_t;
using UINT = std::uint32_t;
using BOOL = std::int32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using DWORD = std::uint32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;

using LPSTR = char*;
using LPCSTR = const char*;
using LPTSTR = TCHAR*;
using LPCTSTR = const TCHAR*;

using OLECHAR = char16_t;
using BSTR = OLECHAR*;

// Macros, as on every platform that knows a BOOL: other headers test for them with #ifdef.
#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

/// Date and time of a database field; the fields are named and sized as the call-level interface has them.
struct TIMESTAMP_STRUCT {
    SHORT year;     ///< the year, as it is (2004)
    USHORT month;   ///< 1 to 12
    USHORT day;     ///< 1 to 31
    USHORT hour;    ///< 0 to 23
    USHORT minute;  ///< 0 to 59
    USHORT second;  ///< 0 to 59
    UINT fraction;  ///< billionths of a second
};
