#pragma once

/// @file
/// The file that an export writes: it appears under its name when it is complete, and not at all if that
/// fails.

#include <memory>
#include <string>
#include <string_view>

#include "TemporaryFile.h"
#include "nkfw/File.h"

namespace nkdt::app {

class OutputFile {
  public:
    /// Starts a file beside the one named. What is no ordinary file (a pipe, a device) is written to
    /// directly. Throws a UsageError for a folder or a path whose folder does not exist, a `CFileException*`
    /// otherwise.
    explicit OutputFile(const std::string& path);

    CFile& file() noexcept { return m_file; }
    void write(std::string_view text);
    /// Ends the writing; the file takes the place of the one named. Throws a `CFileException*` when the disk
    /// is full.
    void complete();

  private:
    std::string m_path;                          // links followed
    std::unique_ptr<TemporaryFile> m_temporary;  // null when written to directly
    CFile m_file;
};

}  // namespace nkdt::app
