#include "Error.h"
#include "TableFile.h"
#include "Text.h"
#include "nkfw/Archive.h"

namespace nkdt::app {

namespace {

const char* const formatName = "nkdt archive";
constexpr USHORT formatVersion = 1;
constexpr BYTE rowFollows = 1;
constexpr BYTE endOfRows = 0;

class ArchiveWriter final : public TableFileWriter {
  public:
    ArchiveWriter(OutputFile& file, const CString& table, const BoundColumns& columns)
        : m_archive(&file.file(), CArchive::store) {
        m_archive << CString(formatName) << formatVersion << table << static_cast<UINT>(columns.size());
        for (const BoundColumn& column : columns)
            m_archive << CString(column.kind->className) << column.ansiName;
    }

    void add(LONGLONG row, const BoundColumns& columns) override {
        m_archive << rowFollows;
        for (const BoundColumn& column : columns)
            atPlace(row, column.name, [&] { column.cell->serialize(m_archive); });
    }

    void finish(LONGLONG rows) override {
        m_archive << endOfRows << rows;
        m_archive.Close();
    }

  private:
    CArchive m_archive;
};

class ArchiveReader final : public TableFileReader {
  public:
    explicit ArchiveReader(CFile& file) : m_file(file), m_archive(&file, CArchive::load) {
        readFormat();
        UINT count = 0;
        m_archive >> m_head.table >> count;
        for (; count != 0; --count) {
            CString className;
            CString name;
            m_archive >> className >> name;
            m_head.columns.push_back({name, &requireKindOfFile(visible(className))});
        }
        if (m_head.columns.empty()) throw DataError("the archive has no columns");
    }

    const TableHead& head() const override { return m_head; }

    bool next(LONGLONG row, BoundColumns& columns) override {
        BYTE mark = 0;
        m_archive >> mark;
        if (mark == rowFollows) {
            for (BoundColumn& column : columns)
                atPlace(row, column.name, [&] { column.cell->serialize(m_archive); });
            return true;
        }
        if (mark != endOfRows)
            throw DataError("row " + std::to_string(row) +
                            ": the archive has neither a row nor its end there");
        readEnd(row - 1);
        return false;
    }

  private:
    void readFormat() {
        CString name;
        USHORT version = 0;
        try {
            m_archive >> name;
        } catch (...) {
            (void)takeCaughtText();  // the first bytes of another file are no text
        }
        if (name != formatName) throw DataError("the file does not have the format archive");
        m_archive >> version;
        if (version != formatVersion)
            throw DataError("the file has the version " + std::to_string(version) + " of the format, not 1");
    }

    void readEnd(LONGLONG rows) {
        LONGLONG told = 0;
        m_archive >> told;
        if (told != rows)
            throw DataError("the archive tells " + std::to_string(told) + " rows, but there are " +
                            std::to_string(rows));
        m_archive.Close();
        if (m_file.GetPosition() != m_file.GetLength())
            throw DataError("something stands behind the end of the archive");
    }

    CFile& m_file;
    CArchive m_archive;
    TableHead m_head;
};

}  // namespace

std::unique_ptr<TableFileWriter> makeArchiveWriter(OutputFile& file, const CString& table,
                                                   const BoundColumns& columns) {
    return std::make_unique<ArchiveWriter>(file, table, columns);
}

std::unique_ptr<TableFileReader> makeArchiveReader(CFile& file) {
    return std::make_unique<ArchiveReader>(file);
}

}  // namespace nkdt::app
