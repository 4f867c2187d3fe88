#include <algorithm>
#include <map>
#include <utility>

#include "Commands.h"
#include "Error.h"
#include "ExactTotal.h"
#include "RoundTrip.h"
#include "Text.h"
#include "TextTable.h"

namespace nkdt::app {

namespace {

/// What became of a column's values. Each value counts once in one of the last three.
struct Tally {
    LONGLONG values = 0;
    LONGLONG undefined = 0;
    LONGLONG survived = 0;
    LONGLONG notRepresentable = 0;
    LONGLONG lost = 0;
    LONGLONG unread = 0;                           // of these
    std::map<std::string, LONGLONG> statedLosses;  // "SQL literal: why" and how often
    ExactTotal total;                              // of a column of decimals
};

/// Checks the values of one table and tells of each that does not survive.
class TableCheck final : private TableReader::Refusals {
  public:
    TableCheck(const CDatabase& database, const CString& table, BoundColumns& columns,
               const Selection& selection, Console& console)
        : m_columns(columns),
          m_console(console),
          m_tallies(columns.size()),
          m_unread(columns.size()),
          m_progress(console, "checking " + visible(table)),
          m_reader(database, table, columns, selection, this) {
        for (const BoundColumn& column : columns)
            m_back.push_back(makeCellFor(column));
    }

    void run() {
        while (m_reader.next()) {
            for (std::size_t i = 0; i < m_columns.size(); ++i)
                checkValue(i);
            m_unread.assign(m_columns.size(), false);
            m_progress.show(m_reader.row());
        }
    }

    LONGLONG rows() const noexcept { return m_reader.row(); }
    const std::vector<Tally>& tallies() const noexcept { return m_tallies; }

  private:
    void checkValue(std::size_t index) {
        Cell& cell = *m_columns[index].cell;
        Tally& tally = m_tallies[index];
        ++tally.values;
        if (m_unread[index]) {
            ++tally.lost;
            ++tally.unread;
            return;
        }
        if (!cell.value().IsDefined()) ++tally.undefined;
        Arrival::Outcome worst = Arrival::survived;
        if (cell.kind().decimal && cell.value().IsDefined()) cell.addTo(tally.total);
        for (const Road& road : roadsOf(cell.kind())) {
            const Arrival arrival = travel(road, cell, *m_back[index]);
            worst = std::max(worst, arrival.outcome);
            if (arrival.outcome == Arrival::notRepresentable)
                ++tally.statedLosses[road.name + (": " + arrival.reason)];
            if (arrival.outcome == Arrival::lost) tellLost(index, road, arrival);
        }
        ++(worst == Arrival::survived ? tally.survived
           : worst == Arrival::lost   ? tally.lost
                                      : tally.notRepresentable);
    }

    void tellLost(std::size_t index, const Road& road, const Arrival& arrival) {
        const Cell& cell = *m_columns[index].cell;
        const std::string text =
            cell.value().IsDefined() ? "\"" + visible(cell.text().GetValue()) + "\"" : "the undefined value";
        m_progress.clear();
        m_console.tell(placeOf(m_reader.row(), m_columns[index].name) + ": " + text +
                       " does not survive as " + road.name + ": " + arrival.reason);
    }

    void refused(std::size_t column, const std::string& text) override {
        m_unread[column] = true;
        m_progress.clear();
        m_console.tell(text);
    }

    BoundColumns& m_columns;
    Console& m_console;
    std::vector<std::unique_ptr<Cell>> m_back;
    std::vector<Tally> m_tallies;
    std::vector<bool> m_unread;  // values of the current row
    Progress m_progress;
    TableReader m_reader;
};

// With the format of the column's values.
std::string totalText(const BoundColumn& column, const Tally& tally) {
    if (!tally.total.isKnown()) return "too large to be told";
    const NkFormat* const format = column.cell->value().GetFormat();
    const std::string plain = tally.total.text();
    std::string text = format == nullptr ? plain : visible(format->FormatDecimalText(plain));
    if (tally.unread != 0) {
        text += " without " + std::to_string(tally.unread) + (tally.unread == 1 ? " value" : " values") +
                " that cannot be read";
    }
    return text;
}

void report(Console& console, const CString& table, LONGLONG rows, const TableColumns& columns,
            const std::vector<Tally>& tallies) {
    console.out << "Table " << visible(table) << ", " << rows << " rows\n\n";
    TextTable layout({{"Column"},
                      {"Class"},
                      {"Values", TextTable::right},
                      {"Undefined", TextTable::right},
                      {"Survived", TextTable::right},
                      {"Not representable", TextTable::right},
                      {"Lost", TextTable::right}});
    std::vector<TextTable::Row> lines;
    for (std::size_t i = 0; i < tallies.size(); ++i) {
        const Tally& tally = tallies[i];
        lines.push_back({columns.bound[i].name, columns.bound[i].kind->className,
                         std::to_string(tally.values), std::to_string(tally.undefined),
                         std::to_string(tally.survived), std::to_string(tally.notRepresentable),
                         std::to_string(tally.lost)});
    }
    for (const LeftOutColumn& column : columns.leftOut)
        lines.push_back({column.name, column.reason, "", "", "", "", ""});
    layout.writeAll(console.out, lines);
    for (std::size_t i = 0; i < tallies.size(); ++i) {
        for (const auto& [reason, count] : tallies[i].statedLosses) {
            console.out << "Not representable: column " << columns.bound[i].name << ", " << count
                        << (count == 1 ? " value" : " values") << " as " << reason << '\n';
        }
    }
    for (std::size_t i = 0; i < tallies.size(); ++i) {
        const BoundColumn& column = columns.bound[i];
        if (column.kind->decimal)
            console.out << "Total: column " << column.name << ", " << totalText(column, tallies[i]) << '\n';
    }
    console.out << '\n';
}

}  // namespace

int check(const CheckOptions& options, Console& console) {
    if (options.tables.size() > 1 && !(options.selection.as.empty() && options.selection.columns.empty())) {
        throw UsageError("--as and --columns go with one table");
    }
    CDatabase database;
    openDatabase(database, options.database);
    for (const std::string& table : options.tables)
        requireTable(database, ansi(table, "the table"));
    bool good = true;
    for (const std::string& name : options.tables) {
        const CString table = ansi(name, "the table");
        TableColumns columns = columnsOf(database, table, options.selection);
        TableCheck run(database, table, columns.bound, options.selection, console);
        run.run();
        report(console, table, run.rows(), columns, run.tallies());
        for (const Tally& tally : run.tallies())
            good = good && tally.lost == 0 && (!options.strict || tally.notRepresentable == 0);
    }
    return good ? exitGood : exitDataFailed;
}

}  // namespace nkdt::app
