#pragma once

/// @file
/// What the two text formats of tables share: lines, the head and the end.

#include <array>
#include <string>
#include <string_view>

#include "TableFile.h"

namespace nkdt::app {

/// Reads lines of any length. They end in "\n"; the last one may lack it.
class LineReader {
  public:
    explicit LineReader(CFile& file) : m_file(file) {}
    /// Reads a line without its end; false at the end of the file.
    bool next(std::string& line);
    /// The number of the line that was read last, from 1 on.
    LONGLONG number() const noexcept { return m_number; }

  private:
    bool fill();

    CFile& m_file;
    std::array<char, 65536> m_buffer{};
    std::string_view m_rest;
    LONGLONG m_number = 0;
};

/// Writes the head, each line of it behind @p prefix.
std::string textHead(std::string_view prefix, std::string_view format, const CString& table,
                     const BoundColumns& columns);
/// The last line.
std::string textEnd(std::string_view prefix, LONGLONG rows);

/// Reads what textHead() wrote.
TableHead readTextHead(LineReader& lines, std::string_view prefix, std::string_view format);
/// TRUE if the line is the last one; its number of rows and the end of the file are checked then.
bool isTextEnd(LineReader& lines, std::string_view prefix, const std::string& line, LONGLONG rows);
/// Reads a line that must be there, without a "\r" at its end.
std::string requireLine(LineReader& lines);

}  // namespace nkdt::app
