#include "nkeh/NkEhBasis.h"

#include <charconv>
#include <cstddef>
#include <exception>
#include <mutex>
#include <string_view>

#include "Attempt.h"
#include "Reserve.h"
#include "nkeh/NkEhLogFile.h"
#include "nkfw/Memory.h"

namespace {

// Copies a text into a field of an error; a text that does not fit ends in "...".
template <std::size_t N>
void copyText(TCHAR (&field)[N], LPCTSTR text) noexcept {
    constexpr std::string_view ellipsis = "...";
    std::size_t length = 0;
    if (text != nullptr) {
        for (; length < N - 1 && text[length] != '\0'; ++length)
            field[length] = text[length];
        if (text[length] != '\0') ellipsis.copy(field + length - ellipsis.size(), ellipsis.size());
    }
    field[length] = '\0';
}

class Decimal {
  public:
    explicit Decimal(ULONG number) noexcept {
        *std::to_chars(m_text, m_text + sizeof m_text - 1, number).ptr = '\0';
    }
    operator LPCTSTR() const noexcept { return m_text; }

  private:
    TCHAR m_text[12];
};

class ExceptionMessage {
  public:
    explicit ExceptionMessage(const CException& exception) noexcept {
        exception.GetErrorMessage(m_text, sizeof m_text);
    }
    operator LPCTSTR() const noexcept { return m_text; }

  private:
    TCHAR m_text[512] = {};
};

void appendNumber(CString& line, ULONG number) {
    line += " (Fehler ";
    line += Decimal(number);
    line += ')';
}

void appendOrigin(CString& line, LPCTSTR classText, LPCTSTR functionText) {
    const bool hasClass = *classText != '\0';
    const bool hasFunction = *functionText != '\0';
    if (hasClass || hasFunction) line += " in ";
    line += classText;
    if (hasClass && hasFunction) line += ": ";
    line += functionText;
}

void removeLineEnds(CString& line) noexcept {
    for (INT i = 0; i < line.GetLength(); ++i) {
        const TCHAR ch = line[i];
        if (ch == '\r' || ch == '\n') line.SetAt(i, ' ');
    }
}

void logLine(NkEhLogFile& log, LPCTSTR label, LPCTSTR value) {
    log.Write(label);
    log.Write(value);
    log.Write("\r\n");
}

// Takes the blanks back whatever happens while the lines are written.
class BlanksEnd {
  public:
    explicit BlanksEnd(NkEhLogFile& log) noexcept : m_log(log) {}
    ~BlanksEnd() { m_log.SetBlanks(0); }
    BlanksEnd(const BlanksEnd&) = delete;
    BlanksEnd& operator=(const BlanksEnd&) = delete;

  private:
    NkEhLogFile& m_log;
};

constexpr CRuntimeClass classNkEhBasis{"NkEhBasis", sizeof(NkEhBasis), 0, nullptr, &CObject::GetThisClass};
const CClassRegistration registration{classNkEhBasis};

}  // namespace

const CRuntimeClass* NkEhBasis::GetThisClass() noexcept {
    return &classNkEhBasis;
}

void* NkEhBasis::operator new(std::size_t nSize) noexcept {
    void* block = nkfw::allocate(nSize);
    if (block == nullptr && nSize <= nMaxSize) block = nkeh::claimReserveBlock();
    if (block == nullptr) std::terminate();  // an error that cannot be reported must not pass as none
    return block;
}

void NkEhBasis::operator delete(void* pBlock) noexcept {
    if (nkeh::isReserveBlock(pBlock)) {
        nkeh::releaseReserveBlock(pBlock);
    } else {
        nkfw::release(pBlock);
    }
}

NkEhBasis::NkEhBasis(LogLater, LPCTSTR pszSourceFile, LPCTSTR pszClassText, LPCTSTR pszFunctionText,
                     LPCTSTR pszErrorText, ULONG ulErrorNumber, ULONG ulClassification1,
                     ULONG ulClassification2, CException* pException, BOOL fDeleteException,
                     ULONG ulTextNumber, BOOL fFinal) noexcept
    : m_pException(pException),
      m_ulErrorNumber(ulErrorNumber),
      m_ulClassification1(ulClassification1),
      m_ulClassification2(ulClassification2),
      m_ulTextNumber(ulTextNumber),
      m_fDeleteException(fDeleteException),
      m_fFinal(fFinal) {
    copyText(m_szSourceFile, pszSourceFile);
    copyText(m_szClassText, pszClassText);
    copyText(m_szFunctionText, pszFunctionText);
    copyText(m_szErrorText, pszErrorText);
}

NkEhBasis::NkEhBasis(LPCTSTR pszSourceFile, LPCTSTR pszClassText, LPCTSTR pszFunctionText,
                     LPCTSTR pszErrorText, ULONG ulErrorNumber, ULONG ulClassification1,
                     ULONG ulClassification2, CException* pException, BOOL fDeleteException,
                     ULONG ulTextNumber, BOOL fFinal)
    : NkEhBasis(LogLater{}, pszSourceFile, pszClassText, pszFunctionText, pszErrorText, ulErrorNumber,
                ulClassification1, ulClassification2, pException, fDeleteException, ulTextNumber, fFinal) {
    LogIfFinal();
}

NkEhBasis::~NkEhBasis() {
    CheckBeforeDelete();
}

void NkEhBasis::CheckBeforeDelete() {
    if (m_pException == nullptr || m_fDeleteException == FALSE) return;
    CException* const wrapped = m_pException;
    m_pException = nullptr;
    wrapped->Delete();
}

void NkEhBasis::SetCause(const NkEhBasis& rReplaced) noexcept {
    if (&rReplaced == this) return;
    if (rReplaced.HasCause()) {
        SetCause(rReplaced.m_ulCauseNumber, rReplaced.m_szCauseText);
    } else {
        SetCause(rReplaced.m_ulErrorNumber, rReplaced.m_szErrorText);
    }
}

void NkEhBasis::SetCause(ULONG ulNumber, LPCTSTR pszText) noexcept {
    m_ulCauseNumber = ulNumber;
    copyText(m_szCauseText, pszText);
}

CString NkEhBasis::Report() const {
    CString line = m_szErrorText;
    appendNumber(line, m_ulErrorNumber);
    appendOrigin(line, m_szClassText, m_szFunctionText);
    if (HasCause()) {
        line += "; Ursache: ";
        line += m_szCauseText;
        if (m_ulCauseNumber != 0) appendNumber(line, m_ulCauseNumber);
    }
    if (m_pException != nullptr) {
        line += "; Ausnahme: ";
        line += ExceptionMessage(*m_pException);
    }
    removeLineEnds(line);
    return line;
}

void NkEhBasis::Log(NkEhLogFile& rLog) const {
    const std::lock_guard together(rLog.Mutex());
    const BlanksEnd blanksEnd(rLog);
    logLine(rLog, "Quelldatei: ", m_szSourceFile);
    logLine(rLog, "Klasse: ", m_szClassText);
    logLine(rLog, "Funktion: ", m_szFunctionText);
    logLine(rLog, "Fehlernummer: ", Decimal(m_ulErrorNumber));
    logLine(rLog, "Fehlertext: ", m_szErrorText);
    logLine(rLog, "Klassifikation 1: ", Decimal(m_ulClassification1));
    logLine(rLog, "Klassifikation 2: ", Decimal(m_ulClassification2));
    logLine(rLog, "Textnummer: ", Decimal(m_ulTextNumber));
    if (HasCause()) {
        logLine(rLog, "Ursache Nummer: ", Decimal(m_ulCauseNumber));
        logLine(rLog, "Ursache Text: ", m_szCauseText);
    }
    if (m_pException != nullptr) logLine(rLog, "Ausnahme: ", ExceptionMessage(*m_pException));
}

void NkEhBasis::LogIfFinal() const noexcept {
    if (m_fFinal == FALSE) return;
    NkEhLogFile* const log = NkEhLogFile::GetDefault();
    if (log == nullptr) return;
    // An error is more important than its log.
    nkeh::attempt([&] {
        const std::lock_guard together(log->Mutex());
        Log(*log);
    });
}

LPCTSTR NkEhBasis::GetResourceModulname() const {
    return "";
}
UINT NkEhBasis::GetResIdForTextInfo() const {
    return 0;
}
UINT NkEhBasis::GetResIdForCaption() const {
    return 0;
}
