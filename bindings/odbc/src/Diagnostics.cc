#include "Diagnostics.h"

#include <string>
#include <vector>

#include "Text.h"
#include "nkfw/Exception.h"

namespace nkdt::odbc {

namespace {

constexpr SQLSMALLINT maxRecords = 16;  // a broken driver must not keep us here

struct DiagnosticRecord {
    std::string state;
    SQLINTEGER nativeError = 0;
    std::string text;
};

bool readRecord(SQLSMALLINT handleType, SQLHANDLE handle, SQLSMALLINT number, DiagnosticRecord& record) {
    SQLCHAR state[SQL_SQLSTATE_SIZE + 1] = {};
    std::vector<char> text(1024);
    SQLSMALLINT length = 0;
    for (int attempt = 0; attempt < 2; ++attempt) {
        const SQLRETURN returnCode = SQLGetDiagRec(handleType, handle, number, state, &record.nativeError,
                                                   sqlText({text.data(), text.size()}),
                                                   static_cast<SQLSMALLINT>(text.size()), &length);
        if (!SQL_SUCCEEDED(returnCode)) return false;
        if (static_cast<std::size_t>(length) < text.size()) break;
        text.assign(static_cast<std::size_t>(length) + 1, '\0');
    }
    record.state = reinterpret_cast<const char*>(state);
    record.text = text.data();
    return true;
}

}  // namespace

void failWithDiagnostics(SQLRETURN returnCode, SQLSMALLINT handleType, SQLHANDLE handle) {
    DiagnosticRecord first;
    std::string text;
    for (SQLSMALLINT number = 1; number <= maxRecords; ++number) {
        DiagnosticRecord record;
        if (!readRecord(handleType, handle, number, record)) break;
        if (number > 1) text += "; ";
        text += record.text;
        if (number == 1) first = std::move(record);
    }
    if (first.state.empty()) {
        text = "Datenbankfunktion gescheitert, Rückgabewert " + std::to_string(returnCode);
    }
    throw new CDBException(returnCode, first.state.c_str(), first.nativeError, messageFromUtf8(text));
}

void fail(const char* state, std::string_view utf8, int nativeError) {
    throw new CDBException(SQL_ERROR, state, nativeError, messageFromUtf8(utf8));
}

}  // namespace nkdt::odbc
