#pragma once

/// @file
/// The error of the value classes: an NkEhBasis with a number and a text from a fixed catalogue.
///
/// @code
/// try {
///     NkDtLong nSumme = NkDtLong(2147483647) + 1;
/// } catch (NkDtExcep* caught) {
///     std::unique_ptr<NkDtExcep> error(caught);
///     assert(error->GetErrorNumber() == NkDtErrWertebereich);
/// }
/// @endcode
///
/// Most operations that fail inside replace what happened by error 1 "Default-Catch / Folgefehler";
/// GetCauseNumber() and GetCauseText() tell what it was.

#include "nkeh/NkEhBasis.h"
#include "nkfw/Export.h"
#include "nkfw/Types.h"

/// The catalogue of errors; the texts are the library's own, exactly.
enum NkDtErrorNumber : ULONG {
    NkDtErrSonstiger = 0,            ///< "Sonstiger Fehler"
    NkDtErrFolgefehler = 1,          ///< "Default-Catch / Folgefehler"
    NkDtErrUndefiniert = 2,          ///< "Undefinierter Wert"
    NkDtErrStringindex = 3,          ///< "Ungültiger Stringindex"
    NkDtErrPuffer = 4,               ///< "Puffer zu klein"
    NkDtErrInitialwert = 5,          ///< "Ungültiger Initialwert"
    NkDtErrInitiallaenge = 6,        ///< "Ungültige Initiallänge"
    NkDtErrAllocLaenge = 7,          ///< "Alloc-Länge zu kurz"
    NkDtErrWertebereich = 8,         ///< "Wert außerhalb des Wertebereichs"
    NkDtErrTypZuordnung = 9,         ///< "Falscher Typ zugeordnet"
    NkDtErrBasistypen = 10,          ///< "Basistypen unterschiedlich"
    NkDtErrEingabeZuLang = 11,       ///< "Der Eingabetext ist zu lang"
    NkDtErrDivisionDurchNull = 12,   ///< "Division durch 0"
    NkDtErrDefiniertheit = 13,       ///< "Inkonsistente Definiertheit"
    NkDtErrVersion = 14,             ///< "Falsche Versionsnummer"
    NkDtErrZuruecksetzen = 15,       ///< "Fehler beim Zurücksetzen"
    NkDtErrNkStellen = 16,           ///< "Ungültige NK-Stellenanzahl"
    NkDtErrZeitmodus = 17,           ///< "Ungültiger Zeitmodus"
    NkDtErrExtern = 18,              ///< "Ungültige Externe Darstellung"
    NkDtErrCodepage = 19,            ///< "Codepagewandlung nicht möglich"
    NkDtErrFormatUnzulaessig = 20,   ///< "Format nicht zugelassen"
    NkDtErrFormatVerletzt = 21,      ///< "Format nicht eingehalten"
    NkDtErrFrameworkException = 22,  ///< "Folgefehler aufgrund einer MFC-Exception"
    NkDtErrWideZeichen = 23,         ///< "Wandlung in Wide-Charakter-Format nicht möglich"
    NkDtErrDezimal = 24,             ///< "Fehler bei Berechung mit Dezimalwerten"
    NkDtErrTag = 25,                 ///< "Tagesangabe ist ungültig oder nicht zur Monatsangabe passend"
    NkDtErrMonat = 26,               ///< "Monatsangabe ist ungültig, d.h. <1 oder > 12"
    NkDtErrJahr = 27,                ///< "Jahresangabe ist ungültig, Jahreszahl < 1753"
    NkDtErrStunde = 28,              ///< "Stundenangabe ist ungültig, d.h. <0 oder > 23"
    NkDtErrMinute = 29,              ///< "Minutenangabe ist ungültig, d.h. < 0 oder > 59"
    NkDtErrSekunde = 30,             ///< "Sekundenangabe ist ungültig, d.h. <0 oder > 59"
    NkDtErrOption = 31               ///< "Unbekannte Option"
};

class NKDT_API NkDtExcep : public NkEhBasis {
  public:
    /// Both classification words are 1. A number beyond the catalogue takes the text of error 0.
    NkDtExcep(LPCTSTR pszSourceFile, LPCTSTR pszClassText, LPCTSTR pszFunctionText, ULONG ulErrorNumber,
              ULONG ulTextNumber, BOOL fFinal);
    /// The same with the caller's classification words.
    NkDtExcep(LPCTSTR pszSourceFile, LPCTSTR pszClassText, LPCTSTR pszFunctionText, ULONG ulErrorNumber,
              ULONG ulClassification1, ULONG ulClassification2, ULONG ulTextNumber, BOOL fFinal);
    /// Wraps a framework exception, which is deleted with this error when @p fDeleteException is TRUE. Both
    /// classification words are 0.
    NkDtExcep(CException* pException, BOOL fDeleteException, LPCTSTR pszSourceFile, LPCTSTR pszClassText,
              LPCTSTR pszFunctionText, ULONG ulErrorNumber, ULONG ulTextNumber, BOOL fFinal);
    ~NkDtExcep() override;

    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }

    /// Writes "Fehlerart: NkDtExcep" and, indented by 6 blanks, what NkEhBasis::Log() writes. Swallows every
    /// failure.
    void Log(NkEhLogFile& rLog) const override;
    /// The name of the module with the language-dependent texts, or this library's own file when there is
    /// none. The text belongs to the module and stays valid.
    LPCTSTR GetResourceModulname() const override;
    UINT GetResIdForTextInfo() const override;  ///< 371
    UINT GetResIdForCaption() const override;   ///< 372
};
