#include <sys/stat.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <utility>

#include "Commands.h"
#include "Error.h"
#include "RoundTrip.h"
#include "SampleTable.h"
#include "SqlLiteral.h"
#include "TemporaryFile.h"
#include "Text.h"
#include "TextTable.h"
#include "nkdt/NkDtDecimal.h"
#include "nkfw/Archive.h"
#include "nkfw/File.h"

namespace nkdt::app {

namespace {

/// The sample database: a new file that stays, one that is gone at the end, or a connection.
class SampleDatabase {
  public:
    explicit SampleDatabase(const std::string& target) {
        if (target.find('=') != std::string::npos) {
            openDatabase(m_database, target);
            m_name = "the database";
            return;
        }
        if (target.empty()) {
            const std::string pattern =
                (std::filesystem::temp_directory_path() / "nkdt-demo-XXXXXX").string();
            takeFile(TemporaryFile::make(pattern));
            m_name = "a database of its own, removed at the end";
        } else {
            requireNewFile(target);
            takeFile(target);
            m_name = target;
            m_kept = true;
        }
        m_database.Open(m_file->path().c_str(), CDatabase::createMissing);
    }

    CDatabase& database() noexcept { return m_database; }
    const std::string& name() const noexcept { return m_name; }
    /// From now on the database stays, if it is to stay.
    void complete() {
        if (!m_kept) return;
        m_file->keep();
        m_journal->keep();
    }

  private:
    void takeFile(const std::string& path) {
        m_file.emplace(path);
        m_journal.emplace(path + "-journal");
    }

    static void requireNewFile(const std::string& path) {
        struct stat status {};
        if (path.find(';') != std::string::npos) {
            throw UsageError("the path \"" + path + "\" has a \";\", which the driver takes for its end");
        }
        if (::lstat(path.c_str(), &status) == 0)
            throw UsageError("\"" + path + "\" exists already; the demonstration makes a new file");
        const std::filesystem::path folder = std::filesystem::path(path).parent_path();
        if (!folder.empty() && !std::filesystem::is_directory(folder))
            throw UsageError("there is no folder \"" + folder.string() + "\"");
    }

    // Both outlive the connection. The journal stays behind when not even the rollback finds room.
    std::optional<TemporaryFile> m_file;
    std::optional<TemporaryFile> m_journal;
    CDatabase m_database;
    std::string m_name;
    bool m_kept = false;
};

/// One row on its road. Every station takes the values from the one before.
class Journey {
  public:
    Journey(CDatabase& database, const CString& table, TableColumns& columns)
        : m_database(database), m_table(table), m_columns(columns) {
        for (const BoundColumn& column : columns.bound)
            m_next.push_back(makeCellFor(column));
    }

    void travel(const char* rowFilter) {
        readRow(rowFilter);
        station("read from the database",
                [](Cell& cell) { return cell.kind().className + (" " + shown(cell)); });
        passThrough("user-interface text", Representation::userText,
                    [](Cell& cell) { return visible(cell.value().ConvToOFL()); });
        station("computation", [](Cell& cell) {
            const std::string how = cell.compute();
            return how + " = " + shown(cell);
        });
        passThrough("SQL literal", Representation::sqlLiteral,
                    [](Cell& cell) { return visible(cell.sqlLiteral().GetValue()); });
        passThrough("external text", Representation::external, externalText);
        passThrough("archive", Representation::archive, archivedBytes);
        passThrough("recordset field", Representation::recordset, [](Cell& cell) { return shown(cell); });
        passThrough("DEC record", Representation::record, recordBytes);
        writeAndReadBack();
    }

    void print(std::ostream& out) {
        TextTable({{"Station"}, {"Column"}, {"What the value is there"}}).writeAll(out, m_lines);
        out << "\nThe row was written with\n  " << visible(m_statement) << '\n';
    }

  private:
    void readRow(const char* filter) {
        Selection one;
        one.filter = filter;
        TableReader reader(m_database, m_table, m_columns.bound, one);
        if (!reader.next()) throw DataError("the sample row is not there");
    }

    template <class Show>
    void station(const char* name, Show&& show) {
        std::string title = name;
        for (BoundColumn& column : m_columns.bound)
            m_lines.push_back({std::exchange(title, ""), column.name, show(*column.cell)});
    }

    // A value that the representation cannot hold, as it says itself, goes on as it was.
    template <class Show>
    void passThrough(const char* name, Representation representation, Show&& show) {
        std::string title = name;
        for (std::size_t i = 0; i < m_next.size(); ++i) {
            BoundColumn& column = m_columns.bound[i];
            for (const Road& road : roadsOf(*column.kind)) {
                if (road.representation != representation) continue;
                std::string text = show(*column.cell);
                const Arrival arrival = nkdt::app::travel(road, *column.cell, *m_next[i]);
                if (arrival.outcome == Arrival::lost) {
                    throw DataError("column " + column.name + " does not survive as " + road.name + ": " +
                                    arrival.reason);
                }
                if (arrival.outcome == Arrival::notRepresentable) {
                    text += " (not representable: " + arrival.reason + ")";
                } else {
                    column.cell->value().Assign(m_next[i]->value());
                }
                m_lines.push_back({std::exchange(title, ""), column.name, text});
            }
        }
    }

    // SQLite reads a bare number with 15 digits, and a text with all of them.
    CString databaseLiteral(const BoundColumn& column) const {
        CString literal(column.cell->statementLiteral().GetValue());
        const bool apart = m_database.GetDbms() == CDatabase::sqlite && column.kind->decimal &&
                           column.cell->value().IsDefined();
        return apart ? "'" + literal + "'" : literal;
    }

    // The row is inserted with its literals and read through the recordset: the database has the last word.
    void writeAndReadBack() {
        m_statement = "INSERT INTO " + CDatabase::QuoteName(m_table) + " (";
        CString values;
        for (const BoundColumn& column : m_columns.bound) {
            m_statement += (values.IsEmpty() ? "" : ", ") + CDatabase::QuoteName(column.ansiName);
            values += (values.IsEmpty() ? "" : ", ") + databaseLiteral(column);
        }
        m_statement += ") VALUES (" + values + ")";
        m_database.ExecuteSQL(m_statement);

        for (std::size_t i = 0; i < m_next.size(); ++i)
            m_next[i]->value().Assign(m_columns.bound[i].cell->value());
        const BoundColumn& key = m_columns.bound.front();
        const std::string filter = "\"" + key.name + "\" = " + key.cell->sqlLiteral().GetValue();
        readRow(filter.c_str());
        station("back in the database", [](Cell& cell) { return shown(cell); });
        for (std::size_t i = 0; i < m_next.size(); ++i) {
            if (!m_columns.bound[i].cell->equals(*m_next[i])) {
                throw DataError("column " + m_columns.bound[i].name +
                                " came back from the database as another value");
            }
        }
    }

    static std::string shown(const Cell& cell) {
        return cell.value().IsDefined() ? visible(cell.text().GetValue()) : "";
    }

    static std::string externalText(Cell& cell) {
        BOOL defined = FALSE;
        USHORT version = 0;
        const NkDtString text = cell.value().ConvToExtern(defined, version);
        return (defined ? "defined, " : "undefined, ") + std::to_string(version) + ", \"" +
               (text.IsDefined() ? visible(text.GetValue()) : "") + "\"";
    }

    // A long text's bytes are not worth reading to the end.
    static std::string hexadecimal(const BYTE* bytes, std::size_t count) {
        constexpr std::size_t most = 60;
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            std::array<char, 4> digits{};
            (void)std::snprintf(digits.data(), digits.size(), "%02X", static_cast<unsigned>(bytes[i]));
            text += digits.data();
        }
        return shortened(text, most) + ", " + std::to_string(count) + " bytes";
    }

    static std::string archivedBytes(Cell& cell) {
        CMemFile file;
        CArchive archive(&file, CArchive::store);
        cell.serialize(archive);
        archive.Close();
        return hexadecimal(file.GetData(), static_cast<std::size_t>(file.GetLength()));
    }

    static std::string recordBytes(Cell& cell) {
        BOOL defined = FALSE;
        const DEC record = static_cast<const NkDtDecimal&>(cell.value()).ConvToBTR(defined);
        std::array<BYTE, sizeof record> bytes{};
        std::memcpy(bytes.data(), &record, sizeof record);
        return (defined ? "defined, " : "undefined, ") + hexadecimal(bytes.data(), bytes.size());
    }

    CDatabase& m_database;
    const CString& m_table;
    TableColumns& m_columns;
    std::vector<std::unique_ptr<Cell>> m_next;
    std::vector<TextTable::Row> m_lines;
    CString m_statement;
};

}  // namespace

int demo(const DemoOptions& options, Console& console) {
    SampleDatabase sample(options.database);
    const CString table(sampleTableName);
    {
        Progress progress(console, "making the sample table");
        makeSampleTable(sample.database(), options.rows, progress);
    }
    Selection everything;
    everything.plain = options.plain;
    everything.as.emplace_back(sampleDurations);
    TableColumns columns = columnsOf(sample.database(), table, everything);
    Journey journey(sample.database(), table, columns);
    journey.travel(sampleRowFilter);
    sample.complete();

    console.out << "Table " << visible(table) << " in " << sample.name()
                << "; one of its rows on its road:\n\n";
    journey.print(console.out);
    if (!columns.leftOut.empty()) console.out << "\nColumns that are left out:\n";
    for (const LeftOutColumn& column : columns.leftOut)
        console.out << "  " << column.name << " (" << column.type << "): " << column.reason << '\n';
    return exitGood;
}

}  // namespace nkdt::app
