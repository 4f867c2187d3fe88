#include "nkfw/File.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <utility>

#include "nkfw/Exception.h"
#include "nkfw/Memory.h"

namespace {

constexpr CRuntimeClass classFile{"CFile", sizeof(CFile), 0, nullptr, &CObject::GetThisClass};
constexpr CRuntimeClass classStdioFile{"CStdioFile", sizeof(CStdioFile), 0, nullptr, &CFile::GetThisClass};
constexpr CRuntimeClass classMemFile{"CMemFile", sizeof(CMemFile), 0, nullptr, &CFile::GetThisClass};

constexpr UINT nAccessMask = CFile::modeWrite | CFile::modeReadWrite;
constexpr UINT nKnownFlags = nAccessMask | CFile::modeCreate | CFile::modeNoTruncate;
constexpr mode_t nPermissions = 0666;  // less the process's mask

constexpr off_t nMaxOffset = std::numeric_limits<off_t>::max();

bool areKnown(UINT nOpenFlags) noexcept {
    return (nOpenFlags & ~nKnownFlags) == 0 && (nOpenFlags & nAccessMask) != nAccessMask;
}

int systemFlags(UINT nOpenFlags) noexcept {
    const UINT nAccess = nOpenFlags & nAccessMask;
    int nFlags = O_CLOEXEC | (nAccess == CFile::modeReadWrite ? O_RDWR
                              : nAccess == CFile::modeWrite   ? O_WRONLY
                                                              : O_RDONLY);
    if ((nOpenFlags & CFile::modeCreate) != 0) {
        nFlags |= O_CREAT;
        if ((nOpenFlags & CFile::modeNoTruncate) == 0) nFlags |= O_TRUNC;
    }
    return nFlags;
}

LPCSTR streamMode(UINT nOpenFlags) noexcept {
    const UINT nAccess = nOpenFlags & nAccessMask;
    return nAccess == CFile::modeReadWrite ? "r+b" : nAccess == CFile::modeWrite ? "wb" : "rb";
}

// Opening a directory for reading succeeds, reading it does not.
bool isDirectory(int nDescriptor) noexcept {
    struct stat status;
    return ::fstat(nDescriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

// The stream, or null with errno set.
std::FILE* openStream(LPCTSTR lpszFileName, UINT nOpenFlags) noexcept {
    const int nDescriptor = ::open(lpszFileName, systemFlags(nOpenFlags), nPermissions);
    if (nDescriptor < 0) return nullptr;
    std::FILE* pStream = nullptr;
    if (isDirectory(nDescriptor)) {
        errno = EISDIR;
    } else {
        pStream = ::fdopen(nDescriptor, streamMode(nOpenFlags));
    }
    if (pStream == nullptr) {
        const int nError = errno;
        ::close(nDescriptor);
        errno = nError;
    }
    return pStream;
}

}  // namespace

// ---- CFile

CFile::CFile() noexcept = default;

CFile::CFile(LPCTSTR lpszFileName, UINT nOpenFlags) {
    CFile::Open(lpszFileName, nOpenFlags);
}

CFile::~CFile() {
    CFile::Abort();
}

const CRuntimeClass* CFile::GetThisClass() noexcept {
    return &classFile;
}

void CFile::Open(LPCTSTR lpszFileName, UINT nOpenFlags) {
    if (lpszFileName == nullptr || *lpszFileName == '\0' || !areKnown(nOpenFlags))
        throw new CInvalidArgException;
    CString strFileName(lpszFileName);
    CFile::Close();
    m_strFileName = std::move(strFileName);
    m_direction = Direction::none;
    m_pStream = openStream(m_strFileName, nOpenFlags);
    if (m_pStream == nullptr) ThrowOsError();
}

UINT CFile::Read(void* lpBuf, UINT nCount) {
    std::FILE* const pStream = ReadStream();
    if (nCount == 0) return 0;
    const std::size_t nRead = std::fread(lpBuf, 1, nCount, pStream);
    if (nRead < nCount && std::ferror(pStream) != 0) ThrowOsError();
    return static_cast<UINT>(nRead);
}

void CFile::Write(const void* lpBuf, UINT nCount) {
    std::FILE* const pStream = Turn(Direction::writing);
    if (nCount != 0 && std::fwrite(lpBuf, 1, nCount, pStream) != nCount) ThrowOsError();
}

ULONGLONG CFile::Seek(LONGLONG lOff, UINT nFrom) {
    std::FILE* const pStream = Stream();
    if (nFrom > end) throw new CInvalidArgException;
    const int nWhence = nFrom == begin ? SEEK_SET : nFrom == current ? SEEK_CUR : SEEK_END;
    if (::fseeko(pStream, lOff, nWhence) != 0) {
        if (errno == EINVAL || errno == EOVERFLOW)
            throw new CFileException(CFileException::badSeek, errno, m_strFileName);
        ThrowOsError();
    }
    m_direction = Direction::none;
    return CFile::GetPosition();
}

ULONGLONG CFile::GetPosition() const {
    const off_t nPosition = ::ftello(Stream());
    if (nPosition < 0) ThrowOsError();
    return static_cast<ULONGLONG>(nPosition);
}

ULONGLONG CFile::GetLength() const {
    std::FILE* const pStream = Stream();
    if (m_direction == Direction::writing && std::fflush(pStream) != 0) ThrowOsError();
    struct stat status;
    if (::fstat(::fileno(pStream), &status) != 0) ThrowOsError();
    return static_cast<ULONGLONG>(status.st_size);
}

void CFile::Flush() {
    std::FILE* const pStream = Stream();
    if (m_direction == Direction::writing && std::fflush(pStream) != 0) ThrowOsError();
}

void CFile::Close() {
    if (m_pStream == nullptr) return;
    if (std::fclose(std::exchange(m_pStream, nullptr)) != 0) ThrowOsError();
}

void CFile::Abort() noexcept {
    if (m_pStream != nullptr) std::fclose(std::exchange(m_pStream, nullptr));
}

std::FILE* CFile::ReadStream() {
    std::FILE* const pStream = Turn(Direction::reading);
    ::clearerr_unlocked(pStream);  // an error or an end met before is no news
    return pStream;
}

std::FILE* CFile::Stream() const {
    if (m_pStream == nullptr) throw new CFileException(CFileException::invalidFile, 0, m_strFileName);
    return m_pStream;
}

std::FILE* CFile::Turn(Direction direction) {
    std::FILE* const pStream = Stream();
    if (m_direction != direction) {
        if (m_direction != Direction::none && ::fseeko(pStream, 0, SEEK_CUR) != 0) ThrowOsError();
        m_direction = direction;
    }
    return pStream;
}

void CFile::ThrowOsError() const {
    CFileException::ThrowOsError(errno, m_strFileName);
}

// ---- CStdioFile

const CRuntimeClass* CStdioFile::GetThisClass() noexcept {
    return &classStdioFile;
}

BOOL CStdioFile::ReadString(CString& rString) {
    std::FILE* const pStream = ReadStream();
    CString strLine;
    TCHAR szPart[256];
    std::size_t nPart = 0;
    int nByte = ::getc_unlocked(pStream);
    const bool fLine = nByte != EOF;
    for (; nByte != EOF && nByte != '\n'; nByte = ::getc_unlocked(pStream)) {
        if (nPart == sizeof(szPart)) strLine.Append({szPart, std::exchange(nPart, 0)});
        szPart[nPart++] = static_cast<TCHAR>(nByte);
    }
    if (nByte == EOF && std::ferror(pStream) != 0) ThrowOsError();
    strLine.Append({szPart, nPart});

    const INT nLength = strLine.GetLength();
    if (nByte == '\n' && nLength > 0 && strLine[nLength - 1] == '\r') strLine.ReleaseBuffer(nLength - 1);
    rString = std::move(strLine);
    return fLine ? TRUE : FALSE;
}

void CStdioFile::WriteString(LPCTSTR lpsz) {
    for (std::size_t nLeft = lpsz != nullptr ? std::strlen(lpsz) : 0; nLeft > 0;) {
        const std::size_t nPart = std::min<std::size_t>(nLeft, std::numeric_limits<UINT>::max());
        Write(lpsz, static_cast<UINT>(nPart));
        lpsz += nPart;
        nLeft -= nPart;
    }
}

// ---- CMemFile

CMemFile::CMemFile() noexcept = default;

CMemFile::CMemFile(const void* lpBuf, UINT nCount) {
    CMemFile::Write(lpBuf, nCount);
    m_nPosition = 0;
}

CMemFile::~CMemFile() {
    nkfw::release(m_pData);
}

const CRuntimeClass* CMemFile::GetThisClass() noexcept {
    return &classMemFile;
}

UINT CMemFile::Read(void* lpBuf, UINT nCount) {
    if (m_nPosition >= m_nLength || nCount == 0) return 0;
    const std::size_t nRead = std::min<std::size_t>(nCount, m_nLength - m_nPosition);
    std::memcpy(lpBuf, m_pData + m_nPosition, nRead);
    m_nPosition += nRead;
    return static_cast<UINT>(nRead);
}

void CMemFile::Write(const void* lpBuf, UINT nCount) {
    if (nCount == 0) return;
    const std::size_t nEnd = m_nPosition + nCount;  // positions stay below half of what a size holds
    if (nEnd > m_nLength) Grow(nEnd);
    std::memcpy(m_pData + m_nPosition, lpBuf, nCount);
    m_nPosition = nEnd;
}

ULONGLONG CMemFile::Seek(LONGLONG lOff, UINT nFrom) {
    if (nFrom > end) throw new CInvalidArgException;
    const auto nBase = static_cast<LONGLONG>(nFrom == begin ? 0 : nFrom == current ? m_nPosition : m_nLength);
    if (lOff < -nBase || lOff > nMaxOffset - nBase) throw new CFileException(CFileException::badSeek);
    m_nPosition = static_cast<std::size_t>(nBase + lOff);
    return m_nPosition;
}

// Makes the file this long; what was skipped up to the position becomes 0.
void CMemFile::Grow(std::size_t nLength) {
    if (nLength > m_nCapacity) {
        constexpr std::size_t nFirstCapacity = 64;
        const std::size_t nCapacity = std::max({nLength, 2 * m_nCapacity, nFirstCapacity});
        void* const pBlock = nkfw::reallocate(m_pData, nCapacity);
        if (pBlock == nullptr) CMemoryException::Throw();
        m_pData = static_cast<BYTE*>(pBlock);
        m_nCapacity = nCapacity;
    }
    if (m_nPosition > m_nLength) std::memset(m_pData + m_nLength, 0, m_nPosition - m_nLength);
    m_nLength = nLength;
}
