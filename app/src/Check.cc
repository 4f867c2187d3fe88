#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "Commands.h"
#include "Error.h"
#include "ExactTotal.h"
#include "RoundTrip.h"
#include "Text.h"
#include "TextTable.h"

namespace nkdt::app {

namespace {

/// What a representation says that it cannot hold, and how often.
struct StatedLoss {
    const Road* road;
    std::string reason;
    LONGLONG count;

    std::string text() const { return road->name + (": " + reason); }
};

/// What became of a column's values. Each value counts once in one of the last three.
struct Tally {
    LONGLONG values = 0;
    LONGLONG undefined = 0;
    LONGLONG survived = 0;
    LONGLONG notRepresentable = 0;
    LONGLONG lost = 0;
    LONGLONG unread = 0;  // of these
    std::vector<StatedLoss> statedLosses;
    ExactTotal total;  // of a column of decimals
};

/// The values of a column in some rows, one beside the other.
class ColumnBlock {
  public:
    explicit ColumnBlock(const BoundColumn& column) : m_column(column), m_back(makeCellFor(column)) {}

    /// Takes the column's current value as the block's value of a row, 0 for the first. Returns how many
    /// characters it has, if it is a text.
    std::size_t take(std::size_t row, bool unread) {
        if (row == m_values.size()) m_values.push_back({nullptr, false, Arrival::survived});
        Value& value = m_values[row];
        if (value.cell == nullptr) value.cell = makeCellFor(m_column);
        value.cell->value().Assign(m_column.cell->value());
        value.unread = unread;
        value.worst = unread ? Arrival::lost : Arrival::survived;
        return lengthOf(*value.cell);
    }

    /// Sends the values of the first rows down each road, counts what becomes of them, and tells
    /// @p lost(row, cell, road, arrival) of those that do not survive.
    template <class Lost>
    void check(std::size_t rows, Tally& tally, Lost&& lost) {
        for (const Road& road : roadsOf(*m_column.kind)) {
            for (std::size_t row = 0; row < rows; ++row) {
                Value& value = m_values[row];
                if (value.unread) continue;
                const Arrival arrival = travel(road, *value.cell, *m_back);
                value.worst = std::max(value.worst, arrival.outcome);
                if (arrival.outcome == Arrival::notRepresentable)
                    count(tally.statedLosses, road, arrival.reason);
                if (arrival.outcome == Arrival::lost) lost(row, *value.cell, road, arrival);
            }
        }
        for (std::size_t row = 0; row < rows; ++row) {
            countValue(m_values[row], tally);
            if (lengthOf(*m_values[row].cell) > mostCharacters) m_values[row].cell.reset();
        }
    }

    /// A block with more of them in its texts is large enough.
    static constexpr std::size_t mostCharacters = 65536;

  private:
    struct Value {
        std::unique_ptr<Cell> cell;
        bool unread;
        Arrival::Outcome worst;
    };

    static std::size_t lengthOf(const Cell& cell) {
        if (cell.value().GetDtTyp() != NkDtTypString) return 0;
        return static_cast<std::size_t>(static_cast<const NkDtString&>(cell.value()).GetLength());
    }

    static void count(std::vector<StatedLoss>& losses, const Road& road, const std::string& reason) {
        for (StatedLoss& loss : losses) {
            if (loss.road != &road || loss.reason != reason) continue;
            ++loss.count;
            return;
        }
        losses.push_back({&road, reason, 1});
    }

    static void countValue(const Value& value, Tally& tally) {
        ++tally.values;
        ++(value.worst == Arrival::survived ? tally.survived
           : value.worst == Arrival::lost   ? tally.lost
                                            : tally.notRepresentable);
        if (value.unread) {
            ++tally.unread;
        } else if (!value.cell->value().IsDefined()) {
            ++tally.undefined;
        } else if (value.cell->kind().decimal) {
            value.cell->addTo(tally.total);
        }
    }

    const BoundColumn& m_column;
    std::unique_ptr<Cell> m_back;
    std::vector<Value> m_values;
};

/// Checks the values of one table and tells of each that does not survive. It takes the rows in blocks: many
/// values on the same road, one after the other, take far less time than one value on many roads, whose code
/// no processor has at hand at once.
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
            m_blocks.emplace_back(column);
    }

    void run() {
        for (bool more = true; more;) {
            std::size_t rows = 0;
            try {
                more = readBlock(rows);
            } catch (...) {
                checkBlock(rows);
                throw;
            }
            checkBlock(rows);
        }
    }

    LONGLONG rows() const noexcept { return m_reader.row(); }
    const std::vector<Tally>& tallies() const noexcept { return m_tallies; }

  private:
    static constexpr std::size_t blockSize = 64;  // of rows; more would gain little

    struct Message {
        LONGLONG row;
        std::size_t column;
        std::string text;
    };

    // false behind the last row
    bool readBlock(std::size_t& rows) {
        m_firstRow = m_reader.row() + 1;
        std::size_t characters = 0;
        for (; rows < blockSize && characters <= ColumnBlock::mostCharacters; ++rows) {
            m_unread.assign(m_columns.size(), false);
            if (!m_reader.next()) return false;
            for (std::size_t i = 0; i < m_blocks.size(); ++i)
                characters += m_blocks[i].take(rows, m_unread[i]);
            m_progress.show(m_reader.row());
        }
        return true;
    }

    void checkBlock(std::size_t rows) {
        for (std::size_t i = 0; i < m_blocks.size(); ++i) {
            m_blocks[i].check(rows, m_tallies[i],
                              [&](std::size_t row, const Cell& cell, const Road& road,
                                  const Arrival& arrival) { addLost(row, i, cell, road, arrival); });
        }
        tellMessages();
    }

    void addLost(std::size_t row, std::size_t column, const Cell& cell, const Road& road,
                 const Arrival& arrival) {
        const LONGLONG number = m_firstRow + static_cast<LONGLONG>(row);
        const std::string text =
            cell.value().IsDefined() ? "\"" + visible(cell.text().GetValue()) + "\"" : "the undefined value";
        m_messages.push_back({number, column,
                              placeOf(number, m_columns[column].name) + ": " + text +
                                  " does not survive as " + road.name + ": " + arrival.reason});
    }

    void refused(std::size_t column, const std::string& text) override {
        m_unread[column] = true;
        m_messages.push_back({m_reader.row(), column, text});
    }

    // In the order of the rows, and in a row in that of the columns.
    void tellMessages() {
        if (m_messages.empty()) return;
        std::stable_sort(m_messages.begin(), m_messages.end(), [](const Message& a, const Message& b) {
            return a.row != b.row ? a.row < b.row : a.column < b.column;
        });
        m_progress.clear();
        for (const Message& message : m_messages)
            m_console.tell(message.text);
        m_messages.clear();
    }

    BoundColumns& m_columns;
    Console& m_console;
    std::vector<Tally> m_tallies;
    std::vector<bool> m_unread;  // values of the current row
    std::vector<ColumnBlock> m_blocks;
    LONGLONG m_firstRow = 1;  // of the block
    std::vector<Message> m_messages;
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

void reportTable(Console& console, const TableColumns& columns, const std::vector<Tally>& tallies) {
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
}

void reportStatedLosses(Console& console, const std::string& column, std::vector<StatedLoss> losses) {
    std::sort(losses.begin(), losses.end(),
              [](const StatedLoss& a, const StatedLoss& b) { return a.text() < b.text(); });
    for (const StatedLoss& loss : losses) {
        console.out << "Not representable: column " << column << ", " << loss.count
                    << (loss.count == 1 ? " value" : " values") << " as " << loss.text() << '\n';
    }
}

void reportTotal(Console& console, const BoundColumn& column, const Tally& tally) {
    if (!column.kind->decimal) return;
    console.out << "Total: column " << column.name << ", " << totalText(column, tally) << '\n';
}

void report(Console& console, const CString& table, LONGLONG rows, const TableColumns& columns,
            const std::vector<Tally>& tallies) {
    console.out << "Table " << visible(table) << ", " << counted(rows, "row") << "\n\n";
    reportTable(console, columns, tallies);
    for (std::size_t i = 0; i < tallies.size(); ++i)
        reportStatedLosses(console, columns.bound[i].name, tallies[i].statedLosses);
    for (std::size_t i = 0; i < tallies.size(); ++i)
        reportTotal(console, columns.bound[i], tallies[i]);
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
