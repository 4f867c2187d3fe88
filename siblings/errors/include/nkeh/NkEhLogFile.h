#pragma once

/// @file
/// The log that errors write themselves to.
///
/// Nothing is logged until an application sets a default log:
/// @code
/// NkEhLogFile log("fehler.log");
/// NkEhLogFile::SetDefault(&log);
/// @endcode
/// From then on every error built with a true final flag writes itself once. A log can be used by several
/// threads at a time: an error's lines stay together.

#include <cstddef>
#include <cstdio>
#include <iosfwd>
#include <mutex>

#include "nkfw/Export.h"
#include "nkfw/Types.h"

class NKDT_API NkEhLogFile {
  public:
    /// Appends to the file of that name; throws a `CFileException*` when it cannot be opened.
    explicit NkEhLogFile(LPCTSTR pszFileName);
    /// Writes to the caller's stream, which must outlive the log.
    explicit NkEhLogFile(std::ostream& rStream);
    /// Closes the file. If the log is still the default one, there is none afterwards.
    ~NkEhLogFile();
    NkEhLogFile(const NkEhLogFile&) = delete;
    NkEhLogFile& operator=(const NkEhLogFile&) = delete;

    /// Writes the text as it is, each line of it behind the blanks set; null writes nothing. A finished line
    /// reaches the file at once. What a full disk refuses is lost: a log file never stops the program. A
    /// stream that throws is the caller's own choice.
    void Write(LPCTSTR psz);
    /// Number of blanks that every following line starts with; negative counts as 0.
    void SetBlanks(int nBlanks);

    /// Sets the log that final errors write themselves to; null: none. The log stays the caller's, who sets
    /// another one before it ends while other threads run.
    static void SetDefault(NkEhLogFile* pLog) noexcept;
    static NkEhLogFile* GetDefault() noexcept;

    /// Held while one error writes its lines, so that they stay together.
    std::recursive_mutex& Mutex() noexcept { return m_mutex; }

  private:
    void WriteBytes(const char* pch, std::size_t nCount);
    void Flush();

    std::recursive_mutex m_mutex;
    std::FILE* m_pFile = nullptr;
    std::ostream* m_pStream = nullptr;
    int m_nBlanks = 0;
    bool m_fLineStart = true;
};
