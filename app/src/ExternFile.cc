#include <charconv>

#include "Error.h"
#include "Text.h"
#include "TextFile.h"

namespace nkdt::app {

namespace {

constexpr std::string_view noPrefix;

class ExternWriter final : public TableFileWriter {
  public:
    ExternWriter(OutputFile& file, const CString& table, const BoundColumns& columns) : m_file(file) {
        m_file.write(textHead(noPrefix, "extern", table, columns));
    }

    void add(LONGLONG row, const BoundColumns& columns) override {
        m_line.clear();
        for (const BoundColumn& column : columns) {
            if (!m_line.empty()) m_line += '\t';
            atPlace(row, column.name, [&] { addField(column.cell->value()); });
        }
        m_line += '\n';
        m_file.write(m_line);
    }

    void finish(LONGLONG rows) override { m_file.write(textEnd(noPrefix, rows)); }

  private:
    void addField(const NkDtBasis& value) {
        BOOL defined = FALSE;
        USHORT version = 0;
        const NkDtString text = value.ConvToExtern(defined, version);
        m_line += defined ? "1:" : "0:";
        m_line += std::to_string(version);
        m_line += ':';
        if (text.IsDefined()) m_line += escaped(text.GetValue());
    }

    OutputFile& m_file;
    std::string m_line;
};

class ExternReader final : public TableFileReader {
  public:
    explicit ExternReader(CFile& file) : m_lines(file), m_head(readTextHead(m_lines, noPrefix, "extern")) {}

    const TableHead& head() const override { return m_head; }

    bool next(LONGLONG row, BoundColumns& columns) override {
        const std::string line = requireLine(m_lines);
        if (isTextEnd(m_lines, noPrefix, line, row - 1)) return false;
        std::string_view rest = line;
        bool more = true;
        for (BoundColumn& column : columns) {
            atPlace(row, column.name, [&] {
                if (!more) throw DataError("the row ends before the field");
                const std::size_t end = rest.find('\t');
                setFromField(*column.cell, rest.substr(0, end));
                more = end != std::string_view::npos;
                rest.remove_prefix(more ? end + 1 : rest.size());
            });
        }
        if (more) throw DataError("row " + std::to_string(row) + ": there are more fields than columns");
        return true;
    }

  private:
    static void setFromField(Cell& cell, std::string_view field) {
        const bool defined = field.starts_with("1:");
        if (!defined && !field.starts_with("0:"))
            throw DataError("the field does not begin with its definedness, 0 or 1");
        USHORT version = 0;
        const char* const end = field.data() + field.size();
        const auto number = std::from_chars(field.data() + 2, end, version);
        if (number.ec != std::errc() || number.ptr == end || *number.ptr != ':')
            throw DataError("the field has no version");
        const std::string_view written(number.ptr + 1, static_cast<std::size_t>(end - number.ptr - 1));
        const NkDtString text(unescaped(written));
        onText(written, [&] { cell.setExternal(text, defined ? TRUE : FALSE, version); });
    }

    LineReader m_lines;
    TableHead m_head;
};

}  // namespace

std::unique_ptr<TableFileWriter> makeExternWriter(OutputFile& file, const CString& table,
                                                  const BoundColumns& columns) {
    return std::make_unique<ExternWriter>(file, table, columns);
}

std::unique_ptr<TableFileReader> makeExternReader(CFile& file) {
    return std::make_unique<ExternReader>(file);
}

}  // namespace nkdt::app
