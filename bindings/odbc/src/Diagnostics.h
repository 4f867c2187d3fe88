#pragma once

/// @file
/// How failures are told: every return code is checked here, every failure is a `CDBException*` with the
/// driver's diagnostics.

#include <string_view>

#include "nkdt/odbc/SqlApi.h"

namespace nkdt::odbc {

/// Throws the `CDBException*` of a failed call with all diagnostic records of the handle.
[[noreturn]] void failWithDiagnostics(SQLRETURN returnCode, SQLSMALLINT handleType, SQLHANDLE handle);

/// Throws a `CDBException*` of the binding itself: a state and a text in UTF-8.
[[noreturn]] void fail(const char* state, std::string_view utf8, int nativeError = 0);

/// Passes if the call succeeded, with or without information; else throws.
inline void check(SQLRETURN returnCode, SQLSMALLINT handleType, SQLHANDLE handle) {
    if (!SQL_SUCCEEDED(returnCode)) failWithDiagnostics(returnCode, handleType, handle);
}

/// The bytes of a text as the driver manager's functions take them. They are not written to.
inline SQLCHAR* sqlText(std::string_view utf8) noexcept {
    return reinterpret_cast<SQLCHAR*>(const_cast<char*>(utf8.data()));
}

}  // namespace nkdt::odbc
