#include "SampleTable.h"

#include <array>
#include <optional>
#include <string>

#include "Error.h"
#include "Text.h"

namespace nkdt::app {

namespace {

struct SampleColumn {
    const char* name;  // UTF-8
    CDatabaseColumn::Type type;
    const char* sqliteType;
    const char* otherType;
};

// SQLite keeps all digits of a number only in a column that is declared as text.
constexpr std::array columns{
    SampleColumn{"Nummer", CDatabaseColumn::integer, "INTEGER PRIMARY KEY", "INTEGER PRIMARY KEY"},
    SampleColumn{"Stückzahl", CDatabaseColumn::smallInteger, "SMALLINT", "SMALLINT"},
    SampleColumn{"Name", CDatabaseColumn::text, "VARCHAR(60)", "VARCHAR(60)"},
    SampleColumn{"Bemerkung", CDatabaseColumn::text, "TEXT", "TEXT"},
    SampleColumn{"Klasse", CDatabaseColumn::character, "CHAR(1)", "CHAR(1)"},
    SampleColumn{"Lieferbar", CDatabaseColumn::boolean, "BOOLEAN", "BOOLEAN"},
    SampleColumn{"Preis", CDatabaseColumn::decimal, "DECIMALTEXT(28,10)", "NUMERIC(28,10)"},
    SampleColumn{"Bestandswert", CDatabaseColumn::bigInteger, "BIGINT", "BIGINT"},
    SampleColumn{"Gewicht", CDatabaseColumn::floating, "DOUBLE PRECISION", "DOUBLE PRECISION"},
    SampleColumn{"Aufnahme", CDatabaseColumn::date, "DATE", "DATE"},
    SampleColumn{"Geändert", CDatabaseColumn::timestamp, "TIMESTAMP", "TIMESTAMP"},
    SampleColumn{"Rüstzeit", CDatabaseColumn::integer, "INTEGER", "INTEGER"},
    SampleColumn{"Bild", CDatabaseColumn::binary, "BLOB", "BYTEA"},
};
constexpr std::size_t written = columns.size() - 1;  // no picture is stored

using Row = std::array<const char*, written>;

constexpr std::array rows{
    Row{"1", "120", "Schraube M8", "verzinkt", "A", "1", "0.0425", "510", "0.0117", "1999-01-31",
        "2004-12-31 23:59:59", "15"},
    Row{"2", "-7", "Müllers \"Größe\" O'Neill", "Straße 5,\nKöln; 50 € pro Stück", "Ü", "0",
        "-12345678901234567.8901234567", "-9007199254740993", "-1.5e-7", "2000-02-29", "2000-02-29 12:30:00",
        "-1800"},
    Row{"3", nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
        nullptr},
    Row{"4", "0", "", "", "ß", "1", "0", "0", "0", "1753-01-01", "1753-01-01 00:00:00", "0"},
    Row{"2147482647", "16383", "Größtes", "größte Werte", "Z", "1", "999999999999999999.9999999999",
        "9223372036854775807", "1.7976931348623157e308", "9999-12-31", "9999-12-31 23:59:00", "2147482647"},
    Row{"-2147483648", "-16384", "Kleinstes", "kleinste Werte", "z", "0", "-999999999999999999.9999999999",
        "-9223372036854775808", "-1.7976931348623157e308", "1753-01-01", "1753-01-01 00:01:00",
        "-2147483648"},
};
constexpr LONGLONG firstAddedNumber = 100001;

CString sampleAnsi(const std::string& text) {
    return ansi(text, "the sample text");
}

void createTable(CDatabase& database) {
    const bool sqlite = database.GetDbms() == CDatabase::sqlite;
    std::string definition;
    for (const SampleColumn& column : columns) {
        definition += definition.empty() ? "" : ", ";
        definition +=
            "\"" + std::string(column.name) + "\" " + (sqlite ? column.sqliteType : column.otherType);
    }
    database.ExecuteSQL("CREATE TABLE " + CDatabase::QuoteName(sampleTableName) + " (" +
                        sampleAnsi(definition) + ")");
}

CString insertText() {
    std::string names;
    std::string values;
    for (std::size_t i = 0; i < written; ++i) {
        names += (i == 0 ? "\"" : ", \"") + std::string(columns[i].name) + "\"";
        values += i == 0 ? "?" : ", ?";
    }
    return "INSERT INTO " + CDatabase::QuoteName(sampleTableName) + " (" + sampleAnsi(names) + ") VALUES (" +
           sampleAnsi(values) + ")";
}

void insertSamples(CDatabaseStatement& insert) {
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < written; ++i) {
            const INT parameter = static_cast<INT>(i) + 1;
            if (row[i] == nullptr) {
                insert.SetNull(parameter, columns[i].type);
            } else {
                insert.SetValue(parameter, sampleAnsi(row[i]), columns[i].type);
            }
        }
        insert.Execute();
    }
}

/// A value that follows from the row's number alone; none for a null.
std::optional<std::string> addedValue(CDatabaseColumn::Type type, LONGLONG row) {
    const std::string number = std::to_string(row * 7919 % 100003);
    const auto padded = [](LONGLONG n) { return (n < 10 ? "0" : "") + std::to_string(n); };
    const std::string date =
        std::to_string(1990 + row % 30) + "-" + padded(1 + row % 12) + "-" + padded(1 + row % 28);
    if (row % 10 == 9 && type != CDatabaseColumn::integer) return std::nullopt;
    switch (type) {
        case CDatabaseColumn::smallInteger:
            return std::to_string(row % 30000 - 15000);
        case CDatabaseColumn::text:
            return "Artikel für Größe " + number;
        case CDatabaseColumn::character:
            return std::string(1, static_cast<char>('A' + row % 26));
        case CDatabaseColumn::boolean:
            return row % 2 == 0 ? "1" : "0";
        case CDatabaseColumn::decimal:
            return (row % 3 == 0 ? "-" : "") + number + "." + padded(row % 100);
        case CDatabaseColumn::floating:
            return number + ".25";
        case CDatabaseColumn::date:
            return date;
        case CDatabaseColumn::timestamp:
            return date + " " + padded(row % 24) + ":" + padded(row % 60) + ":00";
        default:
            return number;
    }
}

void insertAdded(CDatabaseStatement& insert, LONGLONG count, Progress& progress) {
    for (LONGLONG row = 0; row < count; ++row) {
        insert.SetValue(1, std::to_string(firstAddedNumber + row), CDatabaseColumn::integer);
        for (std::size_t i = 1; i < written; ++i) {
            const std::optional<std::string> value = addedValue(columns[i].type, row);
            const INT parameter = static_cast<INT>(i) + 1;
            if (value) {
                insert.SetValue(parameter, sampleAnsi(*value), columns[i].type);
            } else {
                insert.SetNull(parameter, columns[i].type);
            }
        }
        insert.Execute();
        progress.show(row + 1);
    }
}

}  // namespace

void makeSampleTable(CDatabase& database, LONGLONG rowsToAdd, Progress& progress) {
    if (database.HasTable(sampleTableName))
        throw UsageError("there is a table \"" + std::string(sampleTableName) + "\" already");
    CDatabaseTransaction transaction(database);
    createTable(database);
    {
        CDatabaseStatement insert(database, insertText());
        insertSamples(insert);
        insertAdded(insert, rowsToAdd, progress);
    }
    transaction.Commit();
}

}  // namespace nkdt::app
