#pragma once

/// @file
/// Files as the archive and programs use them: a binary file, a text file, a file in memory. All failures are
/// thrown as `CFileException*`, exhausted memory as `CMemoryException*`.
/// @code
/// CFile file("werte.dat", CFile::modeCreate | CFile::modeWrite);
/// file.Write(pBytes, nCount);
/// file.Close();
/// @endcode

#include <cstddef>
#include <cstdio>

#include "nkfw/Export.h"
#include "nkfw/Object.h"
#include "nkfw/String.h"

/// A binary file. Positions and lengths are in bytes, of 64 bits. Not copyable; closes itself, ignoring
/// errors then: call Close() to hear of a full disk. Everything but Close() and Abort() throws `invalidFile`
/// while nothing is open.
class NKDT_API CFile : public CObject {
  public:
    /// The three ways of access exclude each other; the two others are added to them.
    enum OpenFlags : UINT {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        modeCreate = 0x1000,
        modeNoTruncate = 0x2000
    };
    enum SeekPosition : UINT { begin = 0, current = 1, end = 2 };

    CFile() noexcept;
    /// Opens the file, as Open() does.
    CFile(LPCTSTR lpszFileName, UINT nOpenFlags);
    ~CFile() override;
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;
    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }

    /// Opens the file; `modeCreate` makes it, or empties it unless `modeNoTruncate` is given too. Another
    /// file that was open is closed first. Throws a `CInvalidArgException*` for a null or empty name and for
    /// unknown flags, and with an operating system's error number otherwise.
    void Open(LPCTSTR lpszFileName, UINT nOpenFlags);
    /// Reads up to @p nCount bytes and returns how many there were; fewer only at the end.
    virtual UINT Read(void* lpBuf, UINT nCount);
    /// Writes @p nCount bytes, or throws; `diskFull` may also come later, from Flush() or Close().
    virtual void Write(const void* lpBuf, UINT nCount);
    /// Moves to @p lOff bytes from the position named and returns the new position from the start. A position
    /// beyond the end is valid: bytes that are skipped and never written are 0. `badSeek` for one before the
    /// start.
    virtual ULONGLONG Seek(LONGLONG lOff, UINT nFrom);
    virtual ULONGLONG GetPosition() const;
    virtual ULONGLONG GetLength() const;
    /// Hands what is buffered to the operating system.
    virtual void Flush();
    /// Writes what is left and closes; the file counts as closed even when that fails.
    virtual void Close();
    /// Closes without a word about errors.
    virtual void Abort() noexcept;
    /// The name that the file was opened with, or an empty text.
    LPCTSTR GetFilePath() const noexcept { return m_strFileName; }

  protected:
    /// The open stream, ready for reading; `invalidFile` when there is none.
    std::FILE* ReadStream();
    /// Throws the error that errno tells.
    [[noreturn]] void ThrowOsError() const;

  private:
    enum class Direction : BYTE { none, reading, writing };

    std::FILE* Stream() const;
    std::FILE* Turn(Direction direction);

    std::FILE* m_pStream = nullptr;
    CString m_strFileName;
    Direction m_direction = Direction::none;  // the stream wants to be told before it turns round
};

/// A text file, line by line.
class NKDT_API CStdioFile : public CFile {
  public:
    using CFile::CFile;
    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }

    /// Reads a line without its end ("\n" or "\r\n") into @p rString; the last line may lack one. FALSE and
    /// an empty text at the end of the file. @p rString is unchanged when it throws.
    BOOL ReadString(CString& rString);
    /// Writes the text as it is (null: nothing); line ends are the caller's.
    void WriteString(LPCTSTR lpsz);
};

/// A file in memory that grows as it is written, at least doubling. It is always open; a write that finds no
/// memory leaves it as it was.
class NKDT_API CMemFile : public CFile {
  public:
    CMemFile() noexcept;
    /// Starts with a copy of these bytes, positioned at the start.
    CMemFile(const void* lpBuf, UINT nCount);
    ~CMemFile() override;
    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }

    void Open(LPCTSTR, UINT) = delete;
    UINT Read(void* lpBuf, UINT nCount) override;
    void Write(const void* lpBuf, UINT nCount) override;
    ULONGLONG Seek(LONGLONG lOff, UINT nFrom) override;
    ULONGLONG GetPosition() const override { return m_nPosition; }
    ULONGLONG GetLength() const override { return m_nLength; }
    void Flush() override {}
    void Close() override {}
    void Abort() noexcept override {}
    /// The bytes held, valid until the next write.
    const BYTE* GetData() const noexcept { return m_pData; }

  private:
    void Grow(std::size_t nLength);

    BYTE* m_pData = nullptr;
    std::size_t m_nLength = 0;
    std::size_t m_nCapacity = 0;
    std::size_t m_nPosition = 0;
};
