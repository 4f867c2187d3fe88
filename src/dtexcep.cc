#include "nkdt/NkDtExcep.h"

#include <array>
#include <cstddef>
#include <exception>
#include <mutex>

#include "Attempt.h"
#include "Literal1252.h"
#include "Module.h"
#include "Raise.h"
#include "nkeh/NkEhLogFile.h"
#include "nklang/NkLanguagePublisher.h"

using namespace nkfw::literals;

namespace {

constexpr std::array<LPCTSTR, 32> catalogue = {
    "Sonstiger Fehler",
    "Default-Catch / Folgefehler",
    "Undefinierter Wert",
    "Ungültiger Stringindex"_cp1252,
    "Puffer zu klein",
    "Ungültiger Initialwert"_cp1252,
    "Ungültige Initiallänge"_cp1252,
    "Alloc-Länge zu kurz"_cp1252,
    "Wert außerhalb des Wertebereichs"_cp1252,
    "Falscher Typ zugeordnet",
    "Basistypen unterschiedlich",
    "Der Eingabetext ist zu lang",
    "Division durch 0",
    "Inkonsistente Definiertheit",
    "Falsche Versionsnummer",
    "Fehler beim Zurücksetzen"_cp1252,
    "Ungültige NK-Stellenanzahl"_cp1252,
    "Ungültiger Zeitmodus"_cp1252,
    "Ungültige Externe Darstellung"_cp1252,
    "Codepagewandlung nicht möglich"_cp1252,
    "Format nicht zugelassen",
    "Format nicht eingehalten",
    "Folgefehler aufgrund einer MFC-Exception",
    "Wandlung in Wide-Charakter-Format nicht möglich"_cp1252,
    "Fehler bei Berechung mit Dezimalwerten",
    "Tagesangabe ist ungültig oder nicht zur Monatsangabe passend"_cp1252,
    "Monatsangabe ist ungültig, d.h. <1 oder > 12"_cp1252,
    "Jahresangabe ist ungültig, Jahreszahl < 1753"_cp1252,
    "Stundenangabe ist ungültig, d.h. <0 oder > 23"_cp1252,
    "Minutenangabe ist ungültig, d.h. < 0 oder > 59"_cp1252,
    "Sekundenangabe ist ungültig, d.h. <0 oder > 59"_cp1252,
    "Unbekannte Option",
};
constexpr ULONG catalogueClassification = 1;

LPCTSTR catalogueText(ULONG ulErrorNumber) noexcept {
    return catalogue[ulErrorNumber < catalogue.size() ? ulErrorNumber : std::size_t{NkDtErrSonstiger}];
}

constexpr CRuntimeClass classNkDtExcep{"NkDtExcep", sizeof(NkDtExcep), 0, nullptr, &NkEhBasis::GetThisClass};
const CClassRegistration registration{classNkDtExcep};

constexpr int logIndent = 6;

static_assert(sizeof(NkDtExcep) <= NkEhBasis::nMaxSize, "the reserve for errors holds every error");

}  // namespace

NkDtExcep::NkDtExcep(LPCTSTR pszSourceFile, LPCTSTR pszClassText, LPCTSTR pszFunctionText,
                     ULONG ulErrorNumber, ULONG ulTextNumber, BOOL fFinal)
    : NkDtExcep(pszSourceFile, pszClassText, pszFunctionText, ulErrorNumber, catalogueClassification,
                catalogueClassification, ulTextNumber, fFinal) {}

NkDtExcep::NkDtExcep(LPCTSTR pszSourceFile, LPCTSTR pszClassText, LPCTSTR pszFunctionText,
                     ULONG ulErrorNumber, ULONG ulClassification1, ULONG ulClassification2,
                     ULONG ulTextNumber, BOOL fFinal)
    : NkEhBasis(LogLater{}, pszSourceFile, pszClassText, pszFunctionText, catalogueText(ulErrorNumber),
                ulErrorNumber, ulClassification1, ulClassification2, nullptr, TRUE, ulTextNumber, fFinal) {
    LogIfFinal();
}

NkDtExcep::NkDtExcep(CException* pException, BOOL fDeleteException, LPCTSTR pszSourceFile,
                     LPCTSTR pszClassText, LPCTSTR pszFunctionText, ULONG ulErrorNumber, ULONG ulTextNumber,
                     BOOL fFinal)
    : NkEhBasis(LogLater{}, pszSourceFile, pszClassText, pszFunctionText, catalogueText(ulErrorNumber),
                ulErrorNumber, 0, 0, pException, fDeleteException, ulTextNumber, fFinal) {
    LogIfFinal();
}

NkDtExcep::~NkDtExcep() {
    nkeh::attempt([this] { CheckBeforeDelete(); });  // an error that ends must not raise another one
}

const CRuntimeClass* NkDtExcep::GetThisClass() noexcept {
    return &classNkDtExcep;
}

void NkDtExcep::Log(NkEhLogFile& rLog) const {
    nkeh::attempt([&] {  // a log that fails must not hide the error
        const std::lock_guard together(rLog.Mutex());
        rLog.Write("Fehlerart: NkDtExcep");
        rLog.Write("\r\n");
        rLog.SetBlanks(logIndent);
        NkEhBasis::Log(rLog);
    });
}

LPCTSTR NkDtExcep::GetResourceModulname() const {
    LPCTSTR pszName = nkdt::moduleFileName();
    nkeh::attempt([&] { pszName = NkLanguagePublisher::Instance()->GetLangDependentResourceName(); });
    return pszName;
}

UINT NkDtExcep::GetResIdForTextInfo() const {
    return uNkLangTextInfo;
}

UINT NkDtExcep::GetResIdForCaption() const {
    return uNkLangCaption;
}

namespace nkdt {

void raise(const Origin& origin, ErrorNumber number) {
    throw new NkDtExcep(origin.module, origin.classText, origin.operation, number, 0, TRUE);
}

void raiseReplacing(const Origin& origin) {
    auto* error =
        new NkDtExcep(origin.module, origin.classText, origin.operation, NkDtErrFolgefehler, 0, FALSE);
    try {
        throw;
    } catch (NkEhBasis* replaced) {
        if (replaced != nullptr) {
            error->SetCause(*replaced);
            replaced->Delete();
        }
    } catch (CException* replaced) {
        TCHAR szMessage[256];
        replaced->GetErrorMessage(szMessage, sizeof szMessage);
        error->SetCause(NkDtErrFrameworkException, szMessage);
        replaced->Delete();
    } catch (const std::exception& replaced) {
        error->SetCause(NkDtErrSonstiger, replaced.what());
    } catch (...) {
        error->SetCause(NkDtErrSonstiger, catalogueText(NkDtErrSonstiger));
    }
    throw error;
}

}  // namespace nkdt
