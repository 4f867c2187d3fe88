#include "Statement.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "Diagnostics.h"
#include "Text.h"

namespace nkdt::odbc {

namespace {

constexpr std::size_t smallestParameterBuffer = 64;

SQLUSMALLINT columnNumber(int number) noexcept {
    return static_cast<SQLUSMALLINT>(number);
}

}  // namespace

// What a parameter is bound to; it must stay where it is while it is bound.
struct Statement::Parameter {
    std::vector<char> buffer;
    double number = 0;
    SQLLEN indicator = SQL_NULL_DATA;
    SQLSMALLINT boundCType = 0;
    SQLSMALLINT boundSqlType = 0;
};

// SQLite keeps values by the column's own rules, so a text is declared as what it is there; PostgreSQL
// refuses a text where a number is expected. Its driver reads a text that is declared as a date, and makes
// 0000-00-00 of what it does not know; as a text it reaches the database.
SQLSMALLINT parameterType(CDatabase::Dbms dbms, CDatabaseColumn::Type type, std::string_view typeName) {
    if (dbms == CDatabase::sqlite) return SQL_VARCHAR;
    switch (type) {
        case CDatabaseColumn::smallInteger:
            return SQL_SMALLINT;
        case CDatabaseColumn::integer:
            return SQL_INTEGER;
        case CDatabaseColumn::bigInteger:
            return SQL_BIGINT;
        case CDatabaseColumn::decimal:
            return SQL_NUMERIC;
        case CDatabaseColumn::floating:
            return typeName == "float4" ? SQL_REAL : SQL_DOUBLE;
        case CDatabaseColumn::character:
            return SQL_CHAR;
        case CDatabaseColumn::boolean:
            return SQL_BIT;
        case CDatabaseColumn::date:
            return dbms == CDatabase::postgresql ? SQL_VARCHAR : SQL_TYPE_DATE;
        case CDatabaseColumn::timestamp:
            return dbms == CDatabase::postgresql ? SQL_VARCHAR : SQL_TYPE_TIMESTAMP;
        case CDatabaseColumn::timeOfDay:
            return SQL_TYPE_TIME;
        case CDatabaseColumn::text:
            return typeName == "bpchar" ? SQL_CHAR : SQL_VARCHAR;
        case CDatabaseColumn::unknown:
        case CDatabaseColumn::binary:
            break;
    }
    return SQL_VARCHAR;
}

Statement::Statement(std::shared_ptr<Connection> connection)
    : m_connection(std::move(connection)), m_handle(m_connection->allocateStatement()) {}

Statement::~Statement() {
    m_connection->freeStatement(m_handle);
}

SQLHSTMT Statement::handle() const {
    (void)m_connection->handle();
    return m_handle;
}

void Statement::checkCall(SQLRETURN returnCode) const {
    check(returnCode, SQL_HANDLE_STMT, m_handle);
}

void Statement::prepare(std::string_view utf8) {
    checkCall(SQLPrepare(handle(), sqlText(utf8), static_cast<SQLINTEGER>(utf8.size())));
}

void Statement::execute() {
    const SQLRETURN returnCode = SQLExecute(handle());
    if (returnCode != SQL_NO_DATA) checkCall(returnCode);
}

void Statement::executeDirect(std::string_view utf8) {
    const SQLRETURN returnCode = SQLExecDirect(handle(), sqlText(utf8), static_cast<SQLINTEGER>(utf8.size()));
    if (returnCode != SQL_NO_DATA) checkCall(returnCode);
}

LONGLONG Statement::changedRows() {
    SQLLEN count = -1;
    checkCall(SQLRowCount(handle(), &count));
    return count;
}

int Statement::parameterCount() const {
    SQLSMALLINT count = 0;
    checkCall(SQLNumParams(handle(), &count));
    return count;
}

void Statement::setParameter(int number, const CrossingValue& value, SQLSMALLINT sqlType) {
    const auto index = static_cast<std::size_t>(number) - 1;
    while (m_parameters.size() <= index)
        m_parameters.push_back(std::make_unique<Parameter>());
    Parameter& parameter = *m_parameters[index];

    const SQLSMALLINT cType = value.number ? SQL_C_DOUBLE : SQL_C_CHAR;
    bool rebind = parameter.boundCType != cType || parameter.boundSqlType != sqlType;
    if (value.number) {
        parameter.number = *value.number;
        parameter.indicator = sizeof(double);
    } else if (!value.null && parameter.buffer.size() <= value.text.size()) {
        parameter.buffer.resize(
            std::max({smallestParameterBuffer, value.text.size() + 1, parameter.buffer.size() * 2}));
        rebind = true;
    }
    if (parameter.buffer.empty()) parameter.buffer.resize(smallestParameterBuffer);
    if (value.null) {
        parameter.indicator = SQL_NULL_DATA;
    } else if (!value.number) {
        if (!value.text.empty()) std::memcpy(parameter.buffer.data(), value.text.data(), value.text.size());
        parameter.buffer[value.text.size()] = '\0';
        parameter.indicator = static_cast<SQLLEN>(value.text.size());
    }
    if (!rebind) return;

    SQLPOINTER data = value.number ? static_cast<SQLPOINTER>(&parameter.number) : parameter.buffer.data();
    checkCall(SQLBindParameter(handle(), columnNumber(number), SQL_PARAM_INPUT, cType,
                               value.number ? SQLSMALLINT{SQL_DOUBLE} : sqlType, parameter.buffer.size(), 0,
                               data, static_cast<SQLLEN>(parameter.buffer.size()), &parameter.indicator));
    parameter.boundCType = cType;
    parameter.boundSqlType = sqlType;
}

int Statement::columnCount() {
    SQLSMALLINT count = 0;
    checkCall(SQLNumResultCols(handle(), &count));
    return count;
}

std::string Statement::textAttribute(int column, SQLUSMALLINT attribute) {
    std::array<char, 1024> text{};
    SQLSMALLINT length = 0;
    checkCall(SQLColAttribute(handle(), columnNumber(column), attribute, text.data(),
                              static_cast<SQLSMALLINT>(text.size()), &length, nullptr));
    return text.data();
}

SQLLEN Statement::numberAttribute(int column, SQLUSMALLINT attribute) {
    SQLLEN value = 0;
    checkCall(SQLColAttribute(handle(), columnNumber(column), attribute, nullptr, 0, nullptr, &value));
    return value;
}

CDatabaseColumn Statement::describeColumn(int number) {
    CDatabaseColumn column;
    column.strName = nameFromUtf8(textAttribute(number, SQL_DESC_LABEL));
    column.strTypeName = messageFromUtf8(textAttribute(number, SQL_DESC_TYPE_NAME));
    column.nLength = static_cast<INT>(numberAttribute(number, SQL_DESC_LENGTH));
    column.nScale = static_cast<INT>(numberAttribute(number, SQL_DESC_SCALE));
    column.fNullable = numberAttribute(number, SQL_DESC_NULLABLE) != SQL_NO_NULLS;
    column.nType = CDatabaseColumn::TypeFromName(column.strTypeName, column.nLength);
    return column;
}

void Statement::bindText(int number, char* buffer, std::size_t size, SQLLEN* indicator) {
    checkCall(
        SQLBindCol(handle(), columnNumber(number), SQL_C_CHAR, buffer, static_cast<SQLLEN>(size), indicator));
}

bool Statement::fetch() {
    const SQLRETURN returnCode = SQLFetch(handle());
    if (returnCode == SQL_NO_DATA) return false;
    checkCall(returnCode);
    return true;
}

void Statement::getText(int number, char* buffer, std::size_t size, SQLLEN& indicator) {
    checkCall(SQLGetData(handle(), columnNumber(number), SQL_C_CHAR, buffer, static_cast<SQLLEN>(size),
                         &indicator));
}

std::string Statement::getString(int number) {
    std::string text;
    std::array<char, 512> part{};
    SQLLEN indicator = 0;
    while (true) {
        const SQLRETURN returnCode = SQLGetData(handle(), columnNumber(number), SQL_C_CHAR, part.data(),
                                                static_cast<SQLLEN>(part.size()), &indicator);
        if (returnCode == SQL_NO_DATA) return text;
        checkCall(returnCode);
        if (indicator == SQL_NULL_DATA) return text;
        text += part.data();
        if (returnCode == SQL_SUCCESS) return text;
    }
}

}  // namespace nkdt::odbc
