#include "nkfw/Exception.h"

#include <algorithm>
#include <cerrno>
#include <initializer_list>
#include <string_view>

#include "Literal1252.h"
#include "nkfw/Memory.h"

using namespace nkfw::literals;

namespace {

constexpr CRuntimeClass classException{"CException", sizeof(CException), 0, nullptr, &CObject::GetThisClass};

constexpr CRuntimeClass derivedClass(LPCSTR lpszName, std::size_t nSize) {
    return {lpszName, nSize, 0, nullptr, &CException::GetThisClass};
}

constexpr CRuntimeClass classMemoryException = derivedClass("CMemoryException", sizeof(CMemoryException));
constexpr CRuntimeClass classUserException = derivedClass("CUserException", sizeof(CUserException));
constexpr CRuntimeClass classInvalidArgException =
    derivedClass("CInvalidArgException", sizeof(CInvalidArgException));
constexpr CRuntimeClass classFileException = derivedClass("CFileException", sizeof(CFileException));
constexpr CRuntimeClass classArchiveException = derivedClass("CArchiveException", sizeof(CArchiveException));
constexpr CRuntimeClass classDBException = derivedClass("CDBException", sizeof(CDBException));

// The pieces one behind the other, as far as the buffer takes them.
void compose(LPTSTR pszText, UINT nMaxLen, std::initializer_list<std::string_view> pieces) noexcept {
    if (pszText == nullptr || nMaxLen == 0) return;
    std::size_t nRoom = nMaxLen - 1U;
    for (const std::string_view piece : pieces) {
        const std::size_t nTaken = piece.copy(pszText, nRoom);
        pszText += nTaken;
        nRoom -= nTaken;
    }
    *pszText = '\0';
}

// The only object of its class is never destroyed: memory may run out until the very end.
union StaticMemoryException {
    CMemoryException exception;
    constexpr StaticMemoryException() noexcept : exception() {}
    ~StaticMemoryException() {}
};
constinit StaticMemoryException memoryException;

LPCTSTR fileMessage(int cause) noexcept {
    switch (cause) {
        case CFileException::none:
            return "Kein Fehler";
        case CFileException::fileNotFound:
            return "Datei nicht gefunden";
        case CFileException::badPath:
            return "Pfad nicht gefunden";
        case CFileException::accessDenied:
            return "Zugriff auf die Datei verweigert";
        case CFileException::invalidFile:
            return "Die Datei ist nicht geöffnet"_cp1252;
        case CFileException::badSeek:
            return "Ungültige Position in der Datei"_cp1252;
        case CFileException::hardIO:
            return "Ein-/Ausgabefehler";
        case CFileException::diskFull:
            return "Der Datenträger ist voll"_cp1252;
        case CFileException::endOfFile:
            return "Ende der Datei erreicht";
        default:
            return "Fehler beim Zugriff auf die Datei";
    }
}

LPCTSTR archiveMessage(int cause) noexcept {
    switch (cause) {
        case CArchiveException::none:
            return "Kein Fehler";
        case CArchiveException::readOnly:
            return "In ein Archiv, das geladen wird, kann nicht geschrieben werden";
        case CArchiveException::endOfFile:
            return "Unerwartetes Ende des Archivs";
        case CArchiveException::writeOnly:
            return "Aus einem Archiv, das geschrieben wird, kann nicht gelesen werden";
        case CArchiveException::badIndex:
            return "Ungültiger Objektverweis im Archiv"_cp1252;
        case CArchiveException::badClass:
            return "Unbekannte oder unerwartete Klasse im Archiv";
        case CArchiveException::badSchema:
            return "Unbekannte Version einer Klasse im Archiv";
        default:
            return "Das Archiv ist beschädigt oder nicht mehr benutzbar"_cp1252;
    }
}

int fileCause(int lOsError) noexcept {
    switch (lOsError) {
        case 0:
            return CFileException::none;
        case ENOENT:
            return CFileException::fileNotFound;
        case ENOTDIR:
        case ENAMETOOLONG:
        case ELOOP:
            return CFileException::badPath;
        case EACCES:
        case EPERM:
        case EROFS:
        case EISDIR:
        case ETXTBSY:
        case EBADF:  // of an open file: opened for the other direction
            return CFileException::accessDenied;
        case ESPIPE:
            return CFileException::badSeek;
        case EIO:
            return CFileException::hardIO;
        case ENOSPC:
        case EFBIG:
        case EDQUOT:
            return CFileException::diskFull;
        default:
            return CFileException::genericException;
    }
}

}  // namespace

// ---- CException

const CRuntimeClass* CException::GetThisClass() noexcept {
    return &classException;
}

void CException::Delete() noexcept {
    delete this;
}

void CException::GetErrorMessage(LPTSTR pszText, UINT nMaxLen) const noexcept {
    compose(pszText, nMaxLen, {"Unbekannter Fehler"});
}

void* CException::operator new(std::size_t nBytes) {
    void* const pBlock = nkfw::allocate(nBytes);
    if (pBlock == nullptr) CMemoryException::Throw();
    return pBlock;
}

void CException::operator delete(void* pBlock) noexcept {
    nkfw::release(pBlock);
}

// ---- Without particulars

const CRuntimeClass* CMemoryException::GetThisClass() noexcept {
    return &classMemoryException;
}

void CMemoryException::GetErrorMessage(LPTSTR pszText, UINT nMaxLen) const noexcept {
    compose(pszText, nMaxLen, {"Nicht genügend Speicher"_cp1252});
}

void CMemoryException::Throw() {
    throw &memoryException.exception;
}

const CRuntimeClass* CUserException::GetThisClass() noexcept {
    return &classUserException;
}

void CUserException::GetErrorMessage(LPTSTR pszText, UINT nMaxLen) const noexcept {
    compose(pszText, nMaxLen, {"Vorgang abgebrochen"});
}

const CRuntimeClass* CInvalidArgException::GetThisClass() noexcept {
    return &classInvalidArgException;
}

void CInvalidArgException::GetErrorMessage(LPTSTR pszText, UINT nMaxLen) const noexcept {
    compose(pszText, nMaxLen, {"Ungültiges Argument"_cp1252});
}

// ---- CFileException

CFileException::CFileException(int cause, int lOsError, LPCTSTR lpszFileName)
    : m_cause(cause), m_lOsError(lOsError), m_strFileName(lpszFileName) {}

const CRuntimeClass* CFileException::GetThisClass() noexcept {
    return &classFileException;
}

void CFileException::GetErrorMessage(LPTSTR pszText, UINT nMaxLen) const noexcept {
    const std::string_view separator = m_strFileName.IsEmpty() ? "" : ": ";
    compose(pszText, nMaxLen, {fileMessage(m_cause), separator, m_strFileName.View()});
}

void CFileException::ThrowOsError(int lOsError, LPCTSTR lpszFileName) {
    throw new CFileException(fileCause(lOsError), lOsError, lpszFileName);
}

// ---- CArchiveException

const CRuntimeClass* CArchiveException::GetThisClass() noexcept {
    return &classArchiveException;
}

void CArchiveException::GetErrorMessage(LPTSTR pszText, UINT nMaxLen) const noexcept {
    compose(pszText, nMaxLen, {archiveMessage(m_cause)});
}

// ---- CDBException

CDBException::CDBException(SHORT nRetCode, LPCTSTR lpszState, INT nNativeError, LPCTSTR lpszError)
    : m_nRetCode(nRetCode),
      m_strState(lpszState),
      m_nNativeError(nNativeError),
      m_strError(lpszError),
      m_strReason(m_strError) {}

const CRuntimeClass* CDBException::GetThisClass() noexcept {
    return &classDBException;
}

void CDBException::GetErrorMessage(LPTSTR pszText, UINT nMaxLen) const noexcept {
    compose(pszText, nMaxLen, {m_strError.View()});
}
