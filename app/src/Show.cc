#include <ostream>

#include "Commands.h"
#include "Error.h"
#include "Text.h"
#include "TextTable.h"

namespace nkdt::app {

namespace {

std::vector<TextTable::Column> titlesOf(const BoundColumns& columns) {
    std::vector<TextTable::Column> titles;
    for (const BoundColumn& column : columns)
        titles.push_back({column.name, column.kind->number ? TextTable::right : TextTable::left});
    return titles;
}

std::string shownText(const Cell& cell, std::size_t width) {
    std::string text = visible(cell.value().ConvToOFL());
    return width == 0 ? text : shortened(text, width);
}

/// Reads the rows once and hands their texts on.
class ShownRows final : private TableReader::Refusals {
  public:
    ShownRows(const CDatabase& database, const CString& table, BoundColumns& columns,
              const ShowOptions& options)
        : m_columns(columns),
          m_options(options),
          m_texts(columns.size()),
          m_refused(columns.size()),
          m_reader(database, table, columns, options.selection, this) {}

    /// @param take    gets the texts of each row
    /// @param refused gets what is the matter with each value that cannot be shown
    template <class Take, class Refused>
    void forEach(Progress& progress, Take&& take, Refused&& refused) {
        while (m_reader.row() != m_options.limit && next()) {
            for (const std::string& text : m_reasons)
                refused(text);
            take(m_texts);
            progress.show(m_reader.row());
        }
    }

  private:
    // Code page 1252 does not have it, so that it is no value's text.
    static constexpr const char* refusedMark = "✗";

    bool next() {
        m_refused.assign(m_columns.size(), false);
        m_reasons.clear();
        if (!m_reader.next()) return false;
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            if (!m_refused[i]) setText(i);
            if (m_refused[i]) m_texts[i] = refusedMark;
        }
        return true;
    }

    void setText(std::size_t column) {
        try {
            m_texts[column] = shownText(*m_columns[column].cell, m_options.width);
        } catch (...) {
            refused(column, placeOf(m_reader.row(), m_columns[column].name) + ": " + takeCaughtText());
        }
    }

    void refused(std::size_t column, const std::string& text) override {
        m_refused[column] = true;
        m_reasons.push_back(text);
    }

    BoundColumns& m_columns;
    const ShowOptions& m_options;
    TextTable::Row m_texts;
    std::vector<bool> m_refused;         // values of the current row
    std::vector<std::string> m_reasons;  // why
    TableReader m_reader;
};

}  // namespace

// The rows are read twice, for the widths and for the texts, so that memory does not grow with the table.
int show(const ShowOptions& options, Console& console) {
    CDatabase database;
    openDatabase(database, options.database);
    const CString tableName = ansi(options.table, "the table");
    TableColumns columns = columnsOf(database, tableName, options.selection);
    tellLeftOut(console, tableName, columns.leftOut);

    TextTable table(titlesOf(columns.bound));
    bool good = true;
    {
        Progress progress(console, "reading");
        const auto tell = [&](const std::string& reason) {
            progress.clear();
            console.tell(reason);
            good = false;
        };
        const auto measure = [&](const TextTable::Row& texts) { table.measure(texts); };
        ShownRows(database, tableName, columns.bound, options).forEach(progress, measure, tell);
    }
    table.writeTitles(console.out);
    Progress silent(console, "");
    const auto write = [&](const TextTable::Row& texts) {
        table.write(console.out, texts);
        if (!console.out) throw DataError("the output cannot be written");
    };
    ShownRows(database, tableName, columns.bound, options).forEach(silent, write, [](const std::string&) {});
    return good ? exitGood : exitDataFailed;
}

}  // namespace nkdt::app
