#include <algorithm>
#include <cstddef>

#include "Error.h"
#include "SqlLiteral.h"
#include "Text.h"
#include "TextFile.h"
#include "nkcp/CodePage.h"

namespace nkdt::app {

namespace {

constexpr std::string_view commentPrefix = "-- ";

/// What every statement of the file begins with.
template <class Columns, class NameOf>
std::string insertStart(const CString& table, const Columns& columns, NameOf&& nameOf) {
    CString start = "INSERT INTO " + CDatabase::QuoteName(table);
    const char* link = " (";
    for (const auto& column : columns) {
        start += link;
        start += CDatabase::QuoteName(nameOf(column));
        link = ", ";
    }
    start += ") VALUES (";
    return std::string(start.View());
}

class SqlWriter final : public TableFileWriter {
  public:
    SqlWriter(OutputFile& file, const CString& table, const BoundColumns& columns)
        : m_file(file),
          m_start(insertStart(table, columns, [](const BoundColumn& column) { return column.ansiName; })) {
        m_file.write(textHead(commentPrefix, "sql", table, columns) + "BEGIN;\n");
    }

    void add(LONGLONG row, const BoundColumns& columns) override {
        m_statement = m_start;
        const char* link = "";
        for (const BoundColumn& column : columns) {
            m_statement += link;
            atPlace(row, column.name, [&] { m_statement += column.cell->statementLiteral().GetValue(); });
            link = ", ";
        }
        m_statement += ");\n";
        m_file.write(utf8(m_statement));
    }

    void finish(LONGLONG rows) override { m_file.write("COMMIT;\n" + textEnd(commentPrefix, rows)); }

  private:
    OutputFile& m_file;
    const std::string m_start;
    std::string m_statement;
};

class SqlReader final : public TableFileReader {
  public:
    explicit SqlReader(CFile& file)
        : m_lines(file),
          m_head(readTextHead(m_lines, commentPrefix, "sql")),
          m_start(insertStart(m_head.table, m_head.columns,
                              [](const TableHead::Column& column) { return column.name; })) {
        if (requireLine(m_lines) != "BEGIN;") throw DataError("the statements do not begin with BEGIN");
    }

    const TableHead& head() const override { return m_head; }

    bool next(LONGLONG row, BoundColumns& columns) override {
        const std::string statement = readStatement(row);
        std::string_view rest = statement;
        if (rest == "COMMIT;") {
            const std::string line = requireLine(m_lines);
            if (!isTextEnd(m_lines, commentPrefix, line, row - 1))
                throw DataError("the file has no last line behind COMMIT");
            return false;
        }
        take(rest, m_start, row);
        std::string_view link;
        for (BoundColumn& column : columns) {
            atPlace(row, column.name, [&] {
                if (!rest.starts_with(link))
                    throw DataError("the row ends before the value, or is no list of values");
                rest.remove_prefix(link.size());
                setValue(*column.cell, takeSqlLiteral(rest));
            });
            link = ", ";
        }
        take(rest, ");", row);
        if (!rest.empty())
            throw DataError("row " + std::to_string(row) + ": something stands behind the statement");
        return true;
    }

  private:
    // A line break inside a text is part of it: a statement goes on until its apostrophes are even.
    std::string readStatement(LONGLONG row) {
        const std::string start = utf8(m_start);
        std::string statement;
        std::string line;
        std::size_t counted = start.size();
        bool insideText = false;
        for (bool complete = false; !complete;) {
            if (!m_lines.next(line))
                throw DataError("row " + std::to_string(row) + ": the file ends before its last line");
            statement += line;
            if (statement.size() > counted) {
                const auto from = statement.begin() + static_cast<std::ptrdiff_t>(counted);
                insideText ^= std::count(from, statement.end(), '\'') % 2 != 0;
                counted = statement.size();
            }
            complete = statement.starts_with(start) ? !insideText : !start.starts_with(statement);
            if (!complete) statement += '\n';
        }
        if (statement.ends_with('\r')) statement.pop_back();
        return decoded(statement, row);
    }

    static std::string decoded(std::string_view statement, LONGLONG row) {
        std::string text;
        if (!nkcp::appendCp1252FromUtf8(statement, text).complete) {
            throw DataError(
                "row " + std::to_string(row) +
                ": the statement has a character that code page 1252 does not have, or is no UTF-8");
        }
        if (text.find('\0') != std::string::npos)
            throw DataError("row " + std::to_string(row) + ": the statement has a NUL inside");
        return text;
    }

    // The class's own reading knows no empty text, a file does.
    static void setValue(Cell& cell, const SqlLiteral& literal) {
        if (literal.form == SqlLiteral::quoted && literal.text.empty() && cell.kind().quotedInSql) {
            cell.setText(NkDtString(""));
        } else {
            onText(visible(literal.text), [&] { setFromStatementLiteral(cell, literal); });
        }
    }

    static void take(std::string_view& rest, std::string_view expected, LONGLONG row) {
        if (!rest.starts_with(expected)) {
            throw DataError("row " + std::to_string(row) + ": the statement is not \"" + sentence(expected) +
                            "\" and so on");
        }
        rest.remove_prefix(expected.size());
    }

    LineReader m_lines;
    TableHead m_head;
    const std::string m_start;
};

}  // namespace

std::unique_ptr<TableFileWriter> makeSqlWriter(OutputFile& file, const CString& table,
                                               const BoundColumns& columns) {
    return std::make_unique<SqlWriter>(file, table, columns);
}

std::unique_ptr<TableFileReader> makeSqlReader(CFile& file) {
    return std::make_unique<SqlReader>(file);
}

}  // namespace nkdt::app
