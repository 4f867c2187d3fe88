#include "RowWriter.h"

#include <algorithm>

namespace nkdt::odbc {

namespace {

// Null matches nothing by "=", so it is part of the text and the others are parameters.
void appendCondition(std::string& sql, const RowColumns& identifying) {
    const char* link = "";
    for (const RowColumn* column : identifying) {
        sql += link;
        sql += quotedName(column->column().strName);
        sql += column->value().null ? " IS NULL" : " = ?";
        link = " AND ";
    }
}

int setCondition(Statement& statement, int number, const RowColumns& identifying) {
    for (const RowColumn* column : identifying) {
        const CrossingValue value = column->searchedValue();
        if (!value.null) statement.setParameter(number++, value, column->parameterType());
    }
    return number;
}

int setOutgoing(Statement& statement, const RowColumns& columns) {
    int number = 1;
    for (const RowColumn* column : columns) {
        statement.setParameter(number++, column->outgoing.value(), column->parameterType());
    }
    return number;
}

// A key tells one row, unless it is null, which SQLite allows in several.
bool tellsOneRow(const RowColumns& identifying, bool byKey) {
    return byKey && std::none_of(identifying.begin(), identifying.end(),
                                 [](const RowColumn* column) { return column->value().null; });
}

}  // namespace

RowWriter::RowWriter(std::shared_ptr<Connection> connection, std::string table)
    : m_connection(std::move(connection)), m_table(std::move(table)) {}

// A statement is prepared again only when its text changes.
Statement& RowWriter::prepare(Prepared& prepared) {
    if (!prepared.statement || prepared.sql != m_sql) {
        prepared.statement.reset();
        auto statement = std::make_unique<Statement>(m_connection);
        statement->prepare(m_sql);
        prepared.sql = m_sql;
        prepared.statement = std::move(statement);
    }
    return *prepared.statement;
}

void RowWriter::insert(const RowColumns& columns) {
    m_sql = "INSERT INTO " + m_table + " (";
    std::string values;
    for (const RowColumn* column : columns) {
        m_sql += values.empty() ? "" : ", ";
        m_sql += quotedName(column->column().strName);
        values += values.empty() ? "?" : ", ?";
    }
    m_sql += ") VALUES (" + values + ")";
    Statement& statement = prepare(m_insert);
    setOutgoing(statement, columns);
    statement.execute();
}

void RowWriter::update(const RowColumns& columns, const RowColumns& identifying, bool byKey) {
    m_sql = "UPDATE " + m_table + " SET ";
    const char* link = "";
    for (const RowColumn* column : columns) {
        m_sql += link;
        m_sql += quotedName(column->column().strName);
        m_sql += " = ?";
        link = ", ";
    }
    changeOneRow(m_update, columns, identifying, tellsOneRow(identifying, byKey));
}

void RowWriter::erase(const RowColumns& identifying, bool byKey) {
    m_sql = "DELETE FROM " + m_table;
    changeOneRow(m_erase, {}, identifying, tellsOneRow(identifying, byKey));
}

// Where several rows could have the values, the statement itself asks whether there is one, so that it
// changes nothing else and needs no transaction.
void RowWriter::changeOneRow(Prepared& prepared, const RowColumns& columns, const RowColumns& identifying,
                             bool unique) {
    m_sql += " WHERE ";
    appendCondition(m_sql, identifying);
    if (!unique) {
        m_sql += " AND (SELECT COUNT(*) FROM " + m_table + " WHERE ";
        appendCondition(m_sql, identifying);
        m_sql += ") = 1";
    }
    Statement& statement = prepare(prepared);
    const int next = setCondition(statement, setOutgoing(statement, columns), identifying);
    if (!unique) setCondition(statement, next, identifying);
    statement.execute();
    if (statement.changedRows() == 0) tellWhyNone(identifying);
}

void RowWriter::tellWhyNone(const RowColumns& identifying) {
    std::string sql = "SELECT COUNT(*) FROM " + m_table + " WHERE ";
    appendCondition(sql, identifying);
    Statement query(m_connection);
    query.prepare(sql);
    setCondition(query, 1, identifying);
    query.execute();
    const std::string count = query.fetch() ? query.getString(1) : "0";
    if (count == "0") throw Refusal{"01S03", "Die Zeile ist so nicht mehr in der Tabelle"};
    throw Refusal{"01S04",
                  count + " Zeilen der Tabelle haben diese Werte, und kein Schlüssel unterscheidet sie"};
}

}  // namespace nkdt::odbc
