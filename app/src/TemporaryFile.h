#pragma once

/// @file
/// Files that must not stay behind: a partial export, the demonstration's database. They are removed at the
/// end of their object, and when a signal ends the program.

#include <string>

namespace nkdt::app {

class TemporaryFile {
  public:
    /// A file that exists or is about to. The path is the operating system's.
    explicit TemporaryFile(std::string path);
    /// Removes the file unless it was kept.
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& path() const noexcept { return m_path; }
    /// From now on the file stays.
    void keep() noexcept;

    /// Makes a new file of its own beside or inside a folder: @p pattern ends in "XXXXXX". Returns its path;
    /// throws a DataError.
    static std::string make(std::string pattern, unsigned mode = 0600);
    /// Makes signals that end the program remove temporary files first.
    static void watchSignals();

  private:
    std::string m_path;
    int m_slot;
};

}  // namespace nkdt::app
