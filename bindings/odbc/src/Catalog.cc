#include "Catalog.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "Diagnostics.h"
#include "Statement.h"
#include "Text.h"

namespace nkdt::odbc {

namespace {

// Columns of the results of SQLTables, SQLColumns and SQLPrimaryKeys.
constexpr int tableName = 3;
constexpr int columnName = 4;
constexpr int keyPosition = 5;
constexpr int typeName = 6;
constexpr int columnSize = 7;
constexpr int decimalDigits = 9;
constexpr int nullable = 11;
constexpr int postgresqlTypeModifier = 25;  // negative where no length was declared

int numberFrom(const std::string& text) noexcept {
    int number = 0;
    (void)std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

// A name as a search pattern that matches nothing else.
std::string asPattern(const std::string& name) {
    std::string pattern;
    for (const char ch : name) {
        if (ch == '_' || ch == '%' || ch == '\\') pattern += '\\';
        pattern += ch;
    }
    return pattern;
}

SQLSMALLINT length(const std::string& text) noexcept {
    return static_cast<SQLSMALLINT>(text.size());
}

// Several schemas may have a table of one name; this is the one that the name alone means.
std::optional<std::string> postgresqlSchemaOf(const std::shared_ptr<Connection>& connection,
                                              const std::string& table) {
    Statement query(connection);
    query.prepare(
        "SELECT n.nspname FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace "
        "WHERE c.relname = ? AND c.relkind IN ('r', 'p', 'v', 'm', 'f') AND pg_table_is_visible(c.oid)");
    query.setParameter(1, {false, table, {}}, SQL_VARCHAR);
    query.execute();
    if (!query.fetch()) return std::nullopt;
    return query.getString(1);
}

// The numbers in parentheses behind a type's name are all that SQLite knows of lengths.
void takeDeclaredNumbers(CDatabaseColumn& column, const std::string& declared) {
    const auto parenthesis = declared.find('(');
    if (parenthesis == std::string::npos) return;
    column.nLength = numberFrom(declared.substr(parenthesis + 1));
    const auto comma = declared.find(',', parenthesis);
    if (comma == std::string::npos) return;
    const auto digit = declared.find_first_of("0123456789", comma);
    if (digit != std::string::npos) column.nScale = numberFrom(declared.substr(digit));
}

// PostgreSQL's own form: 16 bits of precision, then 11 of a signed scale, which the driver tells as unsigned.
void takeModifier(CDatabaseColumn& column, int modifier) {
    if (modifier < 0) return;
    column.nLength = modifier >> 16;
    column.nScale = ((modifier & 0x7FF) ^ 0x400) - 0x400;
}

// SQLite's driver knows neither generated columns nor the order of a key.
std::vector<CDatabaseColumn> sqliteColumnsOf(const std::shared_ptr<Connection>& connection,
                                             const std::string& table) {
    constexpr int parameterOfVirtualTable = 1;  // what the column "hidden" tells; above it, generated
    Statement rows(connection);
    rows.prepare("SELECT name, type, \"notnull\", pk, hidden FROM pragma_table_xinfo(?)");
    rows.setParameter(1, {false, table, {}}, SQL_VARCHAR);
    rows.execute();
    std::vector<CDatabaseColumn> columns;
    while (rows.fetch()) {
        CDatabaseColumn column;
        const std::string name = rows.getString(1);
        const std::string declared = rows.getString(2);
        column.fNullable = rows.getString(3) == "0";
        column.nKeyPosition = numberFrom(rows.getString(4));
        const int hidden = numberFrom(rows.getString(5));
        if (hidden == parameterOfVirtualTable) continue;
        column.strName = nameFromUtf8(name);
        column.strTypeName = messageFromUtf8(declared);
        column.nType = CDatabaseColumn::TypeFromName(column.strTypeName);
        column.fGenerated = hidden > parameterOfVirtualTable;
        takeDeclaredNumbers(column, declared);
        columns.push_back(std::move(column));
    }
    return columns;
}

CDatabaseColumn columnFrom(Statement& row) {
    const CDatabase::Dbms dbms = row.connection().dbms();
    CDatabaseColumn column;
    column.strName = nameFromUtf8(row.getString(columnName));
    column.strTypeName = messageFromUtf8(row.getString(typeName));
    const int size = numberFrom(row.getString(columnSize));
    const int digits = numberFrom(row.getString(decimalDigits));
    column.fNullable = numberFrom(row.getString(nullable)) != SQL_NO_NULLS;
    column.nType = CDatabaseColumn::TypeFromName(column.strTypeName, size);

    const bool sized = column.nType == CDatabaseColumn::decimal || column.nType == CDatabaseColumn::text ||
                       column.nType == CDatabaseColumn::character;
    const int modifier =
        dbms == CDatabase::postgresql ? numberFrom(row.getString(postgresqlTypeModifier)) : 0;
    if (dbms == CDatabase::postgresql && column.nType == CDatabaseColumn::decimal) {
        takeModifier(column, modifier);
    } else if (sized && modifier >= 0) {
        column.nLength = size;
        column.nScale = column.nType == CDatabaseColumn::decimal ? digits : 0;
    }
    return column;
}

void addKeyPositions(Statement& keys, std::vector<CDatabaseColumn>& columns) {
    while (keys.fetch()) {
        const CString name = nameFromUtf8(keys.getString(columnName));
        const int position = numberFrom(keys.getString(keyPosition));
        for (CDatabaseColumn& column : columns) {
            if (column.strName == name) column.nKeyPosition = position;
        }
    }
}

void markPostgresqlGenerated(const std::shared_ptr<Connection>& connection, const std::string& schema,
                             const std::string& table, std::vector<CDatabaseColumn>& columns) {
    Statement query(connection);
    query.prepare(
        "SELECT column_name FROM information_schema.columns "
        "WHERE table_schema = ? AND table_name = ? AND is_generated = 'ALWAYS'");
    query.setParameter(1, {false, schema, {}}, SQL_VARCHAR);
    query.setParameter(2, {false, table, {}}, SQL_VARCHAR);
    query.execute();
    while (query.fetch()) {
        const CString name = nameFromUtf8(query.getString(1));
        for (CDatabaseColumn& column : columns) {
            if (column.strName == name) column.fGenerated = TRUE;
        }
    }
}

}  // namespace

std::vector<CString> tablesOf(const std::shared_ptr<Connection>& connection) {
    std::vector<CString> tables;
    Statement query(connection);
    int nameColumn = tableName;
    if (connection->dbms() == CDatabase::postgresql) {
        nameColumn = 1;
        query.executeDirect(
            "SELECT c.relname FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace "
            "WHERE c.relkind IN ('r', 'p', 'v', 'm', 'f') AND pg_table_is_visible(c.oid) "
            "AND n.nspname NOT IN ('pg_catalog', 'information_schema')");
    } else {
        static constexpr std::string_view kinds = "TABLE,VIEW";
        query.checkCall(SQLTables(query.handle(), nullptr, 0, nullptr, 0, nullptr, 0, sqlText(kinds),
                                  static_cast<SQLSMALLINT>(kinds.size())));
    }
    while (query.fetch()) {
        const std::string name = query.getString(nameColumn);
        // SQLite keeps names that begin so for itself.
        if (connection->dbms() == CDatabase::sqlite && name.rfind("sqlite_", 0) == 0) continue;
        tables.push_back(nameFromUtf8(name));
    }
    std::sort(tables.begin(), tables.end());
    return tables;
}

std::vector<CDatabaseColumn> columnsOf(const std::shared_ptr<Connection>& connection, LPCTSTR table) {
    const std::string name = utf8FromCp1252(table == nullptr ? "" : table);
    if (connection->dbms() == CDatabase::sqlite) return sqliteColumnsOf(connection, name);
    std::optional<std::string> schema;
    if (connection->dbms() == CDatabase::postgresql) {
        schema = postgresqlSchemaOf(connection, name);
        if (!schema) return {};
    }
    const std::string namePattern = asPattern(name);
    const std::string schemaPattern = asPattern(schema.value_or(""));

    std::vector<CDatabaseColumn> columns;
    Statement rows(connection);
    rows.checkCall(SQLColumns(rows.handle(), nullptr, 0, schema ? sqlText(schemaPattern) : nullptr,
                              length(schemaPattern), sqlText(namePattern), length(namePattern), nullptr, 0));
    while (rows.fetch()) {
        if (rows.getString(tableName) == name) columns.push_back(columnFrom(rows));
    }
    if (columns.empty()) return columns;

    Statement keys(connection);
    const std::string schemaName = schema.value_or("");
    keys.checkCall(SQLPrimaryKeys(keys.handle(), nullptr, 0, schema ? sqlText(schemaName) : nullptr,
                                  length(schemaName), sqlText(name), length(name)));
    addKeyPositions(keys, columns);
    if (schema) markPostgresqlGenerated(connection, *schema, name, columns);
    return columns;
}

}  // namespace nkdt::odbc
