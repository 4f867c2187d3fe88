#pragma once

/// @file
/// The framework's exceptions. They are thrown by pointer and belong to the handler, which releases them with
/// Delete():
/// @code
/// try { ar >> str; } catch (CArchiveException* e) { report(e->m_cause); e->Delete(); }
/// @endcode
/// Their texts are German, for a person. When memory is exhausted while an exception is made, a
/// `CMemoryException*` is thrown in its place.

#include <cstddef>

#include "nkfw/Export.h"
#include "nkfw/Object.h"
#include "nkfw/String.h"

/// The base of all framework exceptions.
class NKDT_API CException : public CObject {
  public:
    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }

    /// Releases the exception; a static one stays.
    virtual void Delete() noexcept;
    /// Writes what happened into @p pszText, a buffer of @p nMaxLen bytes, cut to fit and always
    /// zero-terminated. Writes nothing when that is null or has no bytes. Needs no memory.
    virtual void GetErrorMessage(LPTSTR pszText, UINT nMaxLen) const noexcept;

    /// Memory for an exception; throws a `CMemoryException*` when there is none.
    static void* operator new(std::size_t nBytes);
    static void operator delete(void* pBlock) noexcept;

  protected:
    CException() noexcept = default;
};

/// Memory is exhausted. There is one static object, so that throwing it needs none.
class NKDT_API CMemoryException : public CException {
  public:
    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    void Delete() noexcept override {}
    void GetErrorMessage(LPTSTR pszText, UINT nMaxLen) const noexcept override;
    /// Throws the static object.
    [[noreturn]] static void Throw();
};

/// The user (or a dialog on the user's behalf) gave up; there is nothing to report.
class NKDT_API CUserException : public CException {
  public:
    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    void GetErrorMessage(LPTSTR pszText, UINT nMaxLen) const noexcept override;
};

/// An argument that an operation cannot work with.
class NKDT_API CInvalidArgException : public CException {
  public:
    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    void GetErrorMessage(LPTSTR pszText, UINT nMaxLen) const noexcept override;
};

/// A file operation failed.
class NKDT_API CFileException : public CException {
  public:
    enum Cause {
        none,
        genericException,
        fileNotFound,
        badPath,
        accessDenied,
        invalidFile,
        badSeek,
        hardIO,
        diskFull,
        endOfFile
    };

    /// A null file name is an empty one.
    explicit CFileException(int cause = none, int lOsError = 0, LPCTSTR lpszFileName = nullptr);
    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    void GetErrorMessage(LPTSTR pszText, UINT nMaxLen) const noexcept override;
    /// Throws the exception for an operating system's error number (`errno`).
    [[noreturn]] static void ThrowOsError(int lOsError, LPCTSTR lpszFileName);

    int m_cause;            ///< one of Cause
    int m_lOsError;         ///< the operating system's error number, 0 if there is none
    CString m_strFileName;  ///< the file, as it was opened
};

/// An archive is damaged, too short, or used in the wrong direction.
class NKDT_API CArchiveException : public CException {
  public:
    enum Cause { none, genericException, readOnly, endOfFile, writeOnly, badIndex, badClass, badSchema };

    explicit CArchiveException(int cause = none) noexcept : m_cause(cause) {}
    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    void GetErrorMessage(LPTSTR pszText, UINT nMaxLen) const noexcept override;

    int m_cause;  ///< one of Cause
};

/// A database operation failed.
class NKDT_API CDBException : public CException {
  public:
    /// Null texts are empty ones.
    CDBException(SHORT nRetCode, LPCTSTR lpszState, INT nNativeError, LPCTSTR lpszError);
    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    void GetErrorMessage(LPTSTR pszText, UINT nMaxLen) const noexcept override;

    SHORT m_nRetCode;     ///< the return code of the failed call
    CString m_strState;   ///< the five-character state of the first diagnostic record, or empty
    INT m_nNativeError;   ///< the database's own number of the first diagnostic record, or 0
    CString m_strError;   ///< what happened: the texts of all diagnostic records, in code page 1252
    CString m_strReason;  ///< the same without the row and the column in which it happened
    CString m_strColumn;  ///< the column whose value is refused; empty for every other failure
};
