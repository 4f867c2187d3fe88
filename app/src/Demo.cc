#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string_view>

#include "Commands.h"
#include "Error.h"
#include "NewRow.h"
#include "RoundTrip.h"
#include "RowForm.h"
#include "SampleTable.h"
#include "ScreenDialog.h"
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
    Journey(CDatabase& database, const CString& table, TableColumns& columns, const DemoOptions& options)
        : m_database(database), m_table(table), m_columns(columns), m_options(options) {
        for (const BoundColumn& column : columns.bound)
            m_next.push_back(makeCellFor(column));
    }

    void travel(const char* rowFilter) {
        readRow(rowFilter);
        station("read from the database",
                [](Cell& cell) { return cell.kind().className + (" " + shown(cell)); });
        passDialog();
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

    void print(std::ostream& out) const {
        std::vector<TextTable::Row> lines;
        std::string_view station;
        for (const Line& line : m_lines) {
            lines.push_back({line.station == station ? "" : line.station, line.column, line.text});
            station = line.station;
        }
        TextTable({{"Station"}, {"Column"}, {"What the value is there"}}).writeAll(out, lines);
        out << "\nThe row was written with\n  " << visible(m_statement) << '\n';
    }

    /// One of the values alone.
    void printAmount(std::ostream& out) const {
        std::vector<TextTable::Row> lines;
        for (const Line& line : m_lines) {
            if (line.column == sampleAmount) lines.push_back({line.station, line.text});
        }
        TextTable({{"Station"}, {std::string("What ") + sampleAmount + " is there"}}).writeAll(out, lines);
    }

  private:
    struct Line {
        std::string station;
        std::string column;
        std::string text;
    };

    void readRow(const char* filter) {
        Selection one;
        one.filter = filter;
        TableReader reader(m_database, m_table, m_columns.bound, one);
        if (!reader.next()) throw DataError("the sample row is not there");
    }

    template <class Show>
    void station(const char* name, Show&& show) {
        for (BoundColumn& column : m_columns.bound)
            m_lines.push_back({name, column.name, show(*column.cell)});
    }

    /// The row in a dialog, where one amount is corrected: by a person, or in a person's place.
    void passDialog() {
        RowForm form(m_columns.bound);
        const std::unique_ptr<ScreenDialog> screen = makeScreen(form);
        const std::unique_ptr<RowDialog> memory =
            screen == nullptr ? makeMemoryDialog(form.fields()) : nullptr;
        RowDialog& dialog = screen != nullptr ? *screen : *memory;
        form.load(dialog);
        const std::vector<std::string> loaded = shownTexts(form, dialog);
        const bool byPerson = m_options.dialog && hasDisplay();  // which may not have answered
        const bool saved = byPerson ? letCorrect(form, *screen) : correctAmount(form, dialog);
        if (!m_options.picture.empty()) screen->savePicture(m_options.picture);
        tellDialog(loaded, saved ? shownTexts(form, dialog) : loaded);
    }

    // Null where the program was built without.
    std::unique_ptr<ScreenDialog> makeScreen(const RowForm& form) const {
        if (!hasScreenDialogs()) return nullptr;
        const bool byPerson = m_options.dialog && hasDisplay();
        return makeScreenDialog(form.fields(), m_table, byPerson ? Screen::display : Screen::offScreen);
    }

    // false if the person gives up: what was typed may have become values already.
    bool letCorrect(RowForm& form, ScreenDialog& dialog) {
        keepValues();
        const auto store = [&] {
            return StoreFailure{refusalsOfNewRow(m_database, m_table, m_columns.bound)};
        };
        if (dialog.run(form, amountColumn(), store)) return true;
        for (std::size_t i = 0; i < m_next.size(); ++i)
            m_columns.bound[i].cell->value().Assign(m_next[i]->value());
        return false;
    }

    void keepValues() {
        for (std::size_t i = 0; i < m_next.size(); ++i)
            m_next[i]->value().Assign(m_columns.bound[i].cell->value());
    }

    bool correctAmount(RowForm& form, RowDialog& dialog) const {
        const std::size_t amount = amountColumn();
        const std::unique_ptr<Cell> corrected = makeCellFor(m_columns.bound[amount]);
        corrected->setText(sampleNewAmount);
        if (form.enter(dialog, amount, corrected->value().ConvToOFL()) || !form.save(dialog).empty())
            throw DataError("the dialog refuses the amount");
        return true;
    }

    std::size_t amountColumn() const {
        const auto& bound = m_columns.bound;
        const auto amount =
            std::find_if(bound.begin(), bound.end(), [](const auto& c) { return c.name == sampleAmount; });
        return static_cast<std::size_t>(amount - bound.begin());
    }

    void tellDialog(const std::vector<std::string>& loaded, const std::vector<std::string>& shown) {
        for (std::size_t i = 0; i < loaded.size(); ++i) {
            m_lines.push_back({"dialog", m_columns.bound[i].name,
                               shown[i] == loaded[i] ? shown[i] : loaded[i] + ", entered " + shown[i]});
        }
    }

    std::vector<std::string> shownTexts(const RowForm& form, RowDialog& dialog) const {
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < m_columns.bound.size(); ++i)
            texts.push_back(visible(form.shownText(dialog, i).View()));
        return texts;
    }

    // A value that the representation cannot hold, as it says itself, goes on as it was.
    template <class Show>
    void passThrough(const char* name, Representation representation, Show&& show) {
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
                m_lines.push_back({name, column.name, text});
                break;
            }
        }
    }

    // SQLite reads a bare number with 15 digits, and a text with all of them.
    CString databaseLiteral(const BoundColumn& column) const {
        const bool apart = m_database.GetDbms() == CDatabase::sqlite && column.kind->decimal &&
                           column.cell->value().IsDefined();
        return apart ? quotedLiteral(*column.cell) : CString(column.cell->statementLiteral().GetValue());
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

        keepValues();
        const BoundColumn& key = m_columns.bound.front();
        readRow(rowFilter(key, *key.cell).c_str());
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
    const DemoOptions& m_options;
    std::vector<std::unique_ptr<Cell>> m_next;
    std::vector<Line> m_lines;
    CString m_statement;
};

}  // namespace

int demo(const DemoOptions& options, Console& console) {
    if (!hasScreenDialogs() && (options.dialog || !options.picture.empty()))
        throw UsageError("this nkdt was built without dialogs; --dialog and --picture need them");
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
    Journey journey(sample.database(), table, columns, options);
    journey.travel(sampleRowFilter);
    sample.complete();

    console.out << "Table " << visible(table) << " in " << sample.name()
                << "; one of its rows on its road:\n\n";
    journey.print(console.out);
    console.out << "\nOne amount on its road:\n\n";
    journey.printAmount(console.out);
    if (!columns.leftOut.empty()) console.out << "\nColumns that are left out:\n";
    for (const LeftOutColumn& column : columns.leftOut)
        console.out << "  " << column.name << " (" << column.type << "): " << column.reason << '\n';
    return exitGood;
}

}  // namespace nkdt::app
