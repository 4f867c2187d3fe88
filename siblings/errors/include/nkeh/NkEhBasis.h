#pragma once

/// @file
/// The base of all errors of the product family: where an error arose, what it says, which error it replaced.
///
/// Errors are thrown by pointer and belong to the handler:
/// @code
/// try {
///     nAnzahl = "12x";
/// } catch (NkEhBasis* caught) {
///     std::unique_ptr<NkEhBasis> error(caught);
///     std::puts(error->Report().GetString());
/// }
/// @endcode
///
/// An error holds copies of all its texts inside itself, so that raising one needs no memory beside its own,
/// and its allocation operator falls back on a reserve, so that it never fails. A text longer than its field
/// is cut and ends in "...".

#include <cstddef>

#include "nkfw/Exception.h"
#include "nkfw/Export.h"
#include "nkfw/Object.h"
#include "nkfw/String.h"
#include "nkfw/Types.h"

class NkEhLogFile;

/// Error number of "Nicht genügend Speicher", which NkEhNorvaneNewHandler() throws.
inline constexpr ULONG ulNkEhKeinSpeicher = 1000;

class NKDT_API NkEhBasis : public CObject {
  public:
    /// @param pszSourceFile   the source file that raises the error
    /// @param pszClassText    the class or group of functions
    /// @param pszFunctionText the operation's signature
    /// @param pszErrorText    what happened
    /// @param ulErrorNumber   number of the error in its library's catalogue
    /// @param ulClassification1,ulClassification2 the library's own classification
    /// @param pException      a framework exception that is wrapped, or null
    /// @param fDeleteException TRUE: the wrapped exception is deleted with this error; FALSE: it stays
    /// the caller's
    /// @param ulTextNumber    number of an additional text, 0 for none
    /// @param fFinal          TRUE: the error is written once to the default log file, if there is one
    ///
    /// Null texts count as empty.
    NkEhBasis(LPCTSTR pszSourceFile, LPCTSTR pszClassText, LPCTSTR pszFunctionText, LPCTSTR pszErrorText,
              ULONG ulErrorNumber, ULONG ulClassification1, ULONG ulClassification2, CException* pException,
              BOOL fDeleteException, ULONG ulTextNumber, BOOL fFinal);
    ~NkEhBasis() override;
    NkEhBasis(const NkEhBasis&) = delete;
    NkEhBasis& operator=(const NkEhBasis&) = delete;

    /// Largest error, in bytes, that the reserve can hold; derived classes keep within it.
    static constexpr std::size_t nMaxSize = 896;
    /// Errors that each of #nReserveThreads threads finds room for in the reserve, whatever the others hold.
    static constexpr std::size_t nReservePerThread = 4;
    static constexpr std::size_t nReserveThreads = 32;
    /// Room for further errors, for all threads together.
    static constexpr std::size_t nReserveFurther = 128;

    /// Never returns null: when memory is exhausted, the block comes from a reserve kept for errors. Ends the
    /// program when the reserve is used up as well. Takes no lock.
    static void* operator new(std::size_t nSize) noexcept;
    static void operator delete(void* pBlock) noexcept;

    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }

    /// Releases the error; the same as `delete`.
    void Delete() noexcept { delete this; }

    ULONG GetErrorNumber() const noexcept { return m_ulErrorNumber; }
    LPCTSTR GetErrorText() const noexcept { return m_szErrorText; }
    LPCTSTR GetSourceFile() const noexcept { return m_szSourceFile; }
    LPCTSTR GetClassText() const noexcept { return m_szClassText; }
    LPCTSTR GetFunctionText() const noexcept { return m_szFunctionText; }
    ULONG GetClassification1() const noexcept { return m_ulClassification1; }
    ULONG GetClassification2() const noexcept { return m_ulClassification2; }
    ULONG GetTextNumber() const noexcept { return m_ulTextNumber; }
    /// The final flag that the error was built with.
    BOOL IsLogged() const noexcept { return m_fFinal; }
    /// The wrapped framework exception, or null.
    CException* GetException() const noexcept { return m_pException; }

    /// Number of the error that this one replaced (the first in the chain), 0 if it replaced none.
    ULONG GetCauseNumber() const noexcept { return m_ulCauseNumber; }
    /// Text of the error that this one replaced (the first in the chain), empty if it replaced none.
    LPCTSTR GetCauseText() const noexcept { return m_szCauseText; }
    /// Remembers as this error's cause the cause that @p rReplaced remembers, or @p rReplaced itself if it
    /// has none. Copies; @p rReplaced stays the caller's.
    void SetCause(const NkEhBasis& rReplaced) noexcept;
    /// Remembers a cause that is no NkEhBasis by number and text.
    void SetCause(ULONG ulNumber, LPCTSTR pszText) noexcept;

    /// One line for a person, in German: text and number, the operation, the cause and the wrapped
    /// exception's message if there are any. Line ends inside the texts become blanks.
    CString Report() const;
    /// Writes the error to the log, a line ("\r\n") for each of its parts, and sets the log's blanks back to
    /// 0 behind them.
    virtual void Log(NkEhLogFile& rLog) const;
    /// Name of the module that holds the texts of GetResIdForTextInfo() and GetResIdForCaption(); empty here.
    virtual LPCTSTR GetResourceModulname() const;
    /// Resource id of the explanation shown beside the error text; 0 here: none.
    virtual UINT GetResIdForTextInfo() const;
    /// Resource id of the caption under which the error is shown; 0 here: none.
    virtual UINT GetResIdForCaption() const;

  protected:
    /// For derived classes, which write themselves to the log when they are complete: they build their base
    /// with this constructor and call LogIfFinal() at the end of their own, so that their own Log() runs.
    struct LogLater {};
    NkEhBasis(LogLater, LPCTSTR pszSourceFile, LPCTSTR pszClassText, LPCTSTR pszFunctionText,
              LPCTSTR pszErrorText, ULONG ulErrorNumber, ULONG ulClassification1, ULONG ulClassification2,
              CException* pException, BOOL fDeleteException, ULONG ulTextNumber, BOOL fFinal) noexcept;
    /// Writes the error to the default log if it is final and there is one. Swallows every failure.
    void LogIfFinal() const noexcept;
    /// Releases the wrapped exception if that was asked for; the first step of the error's end. Does nothing
    /// the second time.
    void CheckBeforeDelete();

  private:
    bool HasCause() const noexcept { return m_ulCauseNumber != 0 || m_szCauseText[0] != '\0'; }

    CException* m_pException;
    ULONG m_ulErrorNumber;
    ULONG m_ulClassification1;
    ULONG m_ulClassification2;
    ULONG m_ulTextNumber;
    ULONG m_ulCauseNumber = 0;
    BOOL m_fDeleteException;
    BOOL m_fFinal;
    TCHAR m_szSourceFile[64];
    TCHAR m_szClassText[64];
    TCHAR m_szFunctionText[128];
    TCHAR m_szErrorText[256];
    TCHAR m_szCauseText[256] = {};
};

/// What the core calls when @p nSize bytes cannot be had: throws an `NkEhBasis*` with number
/// #ulNkEhKeinSpeicher, "Nicht genügend Speicher", whose function text tells the size. Raising it needs no
/// memory.
[[noreturn]] NKDT_API void NkEhNorvaneNewHandler(std::size_t nSize);
