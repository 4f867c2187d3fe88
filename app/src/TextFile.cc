#include "TextFile.h"

#include "Error.h"
#include "Text.h"

namespace nkdt::app {

namespace {

[[noreturn]] void failAt(const LineReader& lines, const std::string& text) {
    throw DataError("line " + std::to_string(lines.number()) + " of the file " + text);
}

// Takes a word that the line begins with.
bool take(std::string_view& line, std::string_view word) {
    if (line.substr(0, word.size()) != word) return false;
    line.remove_prefix(word.size());
    return true;
}

CString nameIn(const LineReader& lines, std::string_view text) {
    try {
        return unescaped(text);
    } catch (const DataError& error) {
        failAt(lines, std::string("has no valid name: ") + error.what());
    }
}

}  // namespace

bool LineReader::fill() {
    const UINT count = m_file.Read(m_buffer.data(), static_cast<UINT>(m_buffer.size()));
    m_rest = {m_buffer.data(), count};
    return count != 0;
}

bool LineReader::next(std::string& line) {
    line.clear();
    if (m_rest.empty() && !fill()) return false;
    ++m_number;
    do {
        const std::size_t end = m_rest.find('\n');
        line += m_rest.substr(0, end);
        if (end != std::string_view::npos) {
            m_rest.remove_prefix(end + 1);
            return true;
        }
    } while (fill());
    return true;
}

std::string requireLine(LineReader& lines) {
    std::string line;
    if (!lines.next(line)) {
        if (lines.number() == 0) throw DataError("the file is empty");
        throw DataError("the file ends behind its line " + std::to_string(lines.number()) +
                        ", before its last line");
    }
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return line;
}

std::string textHead(std::string_view prefix, std::string_view format, const CString& table,
                     const BoundColumns& columns) {
    const auto line = [&](const std::string& text) { return std::string(prefix) + text + "\n"; };
    std::string head = line("nkdt " + std::string(format) + " 1") + line("table " + escaped(table));
    for (const BoundColumn& column : columns)
        head += line(std::string("column ") + column.kind->className + " " + escaped(column.ansiName));
    return head + line("rows");
}

std::string textEnd(std::string_view prefix, LONGLONG rows) {
    return std::string(prefix) + "end " + std::to_string(rows) + "\n";
}

TableHead readTextHead(LineReader& lines, std::string_view prefix, std::string_view format) {
    TableHead head;
    std::string line = requireLine(lines);
    const std::string kind = std::string(prefix) + "nkdt " + std::string(format) + " ";
    if (line != kind + "1") {
        throw DataError(line.starts_with(kind)
                            ? "the file has the version " + line.substr(kind.size()) + " of the format, not 1"
                            : "the file does not have the format " + std::string(format));
    }
    line = requireLine(lines);
    std::string_view rest = line;
    if (!take(rest, prefix) || !take(rest, "table ")) failAt(lines, "does not name the table");
    head.table = nameIn(lines, rest);
    for (;;) {
        line = requireLine(lines);
        rest = line;
        if (!take(rest, prefix)) failAt(lines, "is none of the head");
        if (rest == "rows") break;
        const std::size_t blank = rest.find(' ', std::string_view("column ").size());
        if (!take(rest, "column ") || blank == std::string_view::npos)
            failAt(lines, "does not name a column");
        const std::string_view className = rest.substr(0, rest.find(' '));
        rest.remove_prefix(className.size() + 1);
        head.columns.push_back({nameIn(lines, rest), &requireKindOfFile(className)});
    }
    if (head.columns.empty()) failAt(lines, "ends a head without columns");
    return head;
}

bool isTextEnd(LineReader& lines, std::string_view prefix, const std::string& line, LONGLONG rows) {
    std::string_view rest = line;
    if (!take(rest, prefix) || !take(rest, "end ")) return false;
    if (rest != std::to_string(rows))
        failAt(lines, "tells " + std::string(rest) + " rows, but there are " + std::to_string(rows));
    std::string next;
    if (lines.next(next)) failAt(lines, "stands behind the end");
    return true;
}

}  // namespace nkdt::app
