#include <nkdt/NkDtExcep.h>
#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtString.h>
#include <nkeh/NkEhLogFile.h>
#include <nklang/NkLanguagePublisher.h>

#include <sstream>
#include <streambuf>
#include <string>

#include <gtest/gtest.h>

#include "ValueTesting.h"

namespace {

using namespace valuetest;
using namespace std::string_literals;

constexpr const char* kCatalogue[] = {
    "Sonstiger Fehler",
    "Default-Catch / Folgefehler",
    "Undefinierter Wert",
    "Ungültiger Stringindex",
    "Puffer zu klein",
    "Ungültiger Initialwert",
    "Ungültige Initiallänge",
    "Alloc-Länge zu kurz",
    "Wert außerhalb des Wertebereichs",
    "Falscher Typ zugeordnet",
    "Basistypen unterschiedlich",
    "Der Eingabetext ist zu lang",
    "Division durch 0",
    "Inkonsistente Definiertheit",
    "Falsche Versionsnummer",
    "Fehler beim Zurücksetzen",
    "Ungültige NK-Stellenanzahl",
    "Ungültiger Zeitmodus",
    "Ungültige Externe Darstellung",
    "Codepagewandlung nicht möglich",
    "Format nicht zugelassen",
    "Format nicht eingehalten",
    "Folgefehler aufgrund einer MFC-Exception",
    "Wandlung in Wide-Charakter-Format nicht möglich",
    "Fehler bei Berechung mit Dezimalwerten",
    "Tagesangabe ist ungültig oder nicht zur Monatsangabe passend",
    "Monatsangabe ist ungültig, d.h. <1 oder > 12",
    "Jahresangabe ist ungültig, Jahreszahl < 1753",
    "Stundenangabe ist ungültig, d.h. <0 oder > 23",
    "Minutenangabe ist ungültig, d.h. < 0 oder > 59",
    "Sekundenangabe ist ungültig, d.h. <0 oder > 59",
    "Unbekannte Option",
};

std::unique_ptr<NkDtExcep> makeError(ULONG number, BOOL final = FALSE) {
    return std::unique_ptr<NkDtExcep>(
        new NkDtExcep(".\\dtlong.cc", "NkDtLong", "GetValue()", number, 7, final));
}

// A framework exception that counts how often it is deleted.
class CountedException : public CException {
  public:
    explicit CountedException(int& deletions) : m_deletions(deletions) {}
    void Delete() noexcept override {
        ++m_deletions;
        delete this;
    }

  private:
    int& m_deletions;
};

// The default log for a scope, as text.
class Log {
  public:
    Log() : m_log(m_stream) { NkEhLogFile::SetDefault(&m_log); }
    ~Log() { NkEhLogFile::SetDefault(nullptr); }
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;
    std::string text() const { return m_stream.str(); }

  private:
    std::ostringstream m_stream;
    NkEhLogFile m_log;
};

std::size_t occurrences(const std::string& text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

class LanguageModule {
  public:
    explicit LanguageModule(const NkLanguageModule* module)
        : m_before(NkLanguagePublisher::Instance()->SetLangDependentResource(module)) {}
    ~LanguageModule() { NkLanguagePublisher::Instance()->SetLangDependentResource(m_before); }
    LanguageModule(const LanguageModule&) = delete;
    LanguageModule& operator=(const LanguageModule&) = delete;

  private:
    const NkLanguageModule* m_before;
};

// --- The catalogue ------------------------------------------------------------------------------

TEST(NkDtExcep, HasTheCataloguesTextForEachNumber) {
    for (ULONG number = 0; number < std::size(kCatalogue); ++number)
        EXPECT_EQ(makeError(number)->GetErrorText(), cp1252(kCatalogue[number])) << number;
}

TEST(NkDtExcep, HasTheTextOfErrorZeroBeyondTheCatalogue) {
    for (const ULONG number : {32U, 33U, 1000U, 0xFFFFFFFFU}) {
        const auto error = makeError(number);
        EXPECT_STREQ(error->GetErrorText(), "Sonstiger Fehler");
        EXPECT_EQ(error->GetErrorNumber(), number);
    }
}

// --- The three constructors ---------------------------------------------------------------------

TEST(NkDtExcep, TakesItsOriginAndTheCataloguesClassification) {
    const NkDtExcep error(".\\dtstring.cc", "NkDtString", "GetValue()", 2, 99, FALSE);
    EXPECT_STREQ(error.GetSourceFile(), ".\\dtstring.cc");
    EXPECT_STREQ(error.GetClassText(), "NkDtString");
    EXPECT_STREQ(error.GetFunctionText(), "GetValue()");
    EXPECT_STREQ(error.GetErrorText(), "Undefinierter Wert");
    EXPECT_EQ(error.GetErrorNumber(), 2U);
    EXPECT_EQ(error.GetClassification1(), 1U);
    EXPECT_EQ(error.GetClassification2(), 1U);
    EXPECT_EQ(error.GetTextNumber(), 99U);
    EXPECT_EQ(error.IsLogged(), FALSE);
    EXPECT_EQ(error.GetException(), nullptr);
    EXPECT_EQ(error.GetCauseNumber(), 0U);
    EXPECT_STREQ(error.GetCauseText(), "");
}

TEST(NkDtExcep, TakesTheCallersClassification) {
    const NkDtExcep error("f", "c", "o", 8, 5, 6, 7, TRUE);
    EXPECT_EQ(error.GetErrorText(), cp1252("Wert außerhalb des Wertebereichs"));
    EXPECT_EQ(error.GetClassification1(), 5U);
    EXPECT_EQ(error.GetClassification2(), 6U);
    EXPECT_EQ(error.GetTextNumber(), 7U);
    EXPECT_EQ(error.IsLogged(), TRUE);
    EXPECT_EQ(error.GetException(), nullptr);
}

TEST(NkDtExcep, WrapsAFrameworkExceptionWithoutClassification) {
    int deletions = 0;
    CountedException* const wrapped = new CountedException(deletions);
    {
        const NkDtExcep error(wrapped, TRUE, "f", "c", "o", 22, 3, FALSE);
        EXPECT_EQ(error.GetException(), wrapped);
        EXPECT_EQ(error.GetErrorNumber(), 22U);
        EXPECT_STREQ(error.GetErrorText(), "Folgefehler aufgrund einer MFC-Exception");
        EXPECT_EQ(error.GetClassification1(), 0U);
        EXPECT_EQ(error.GetClassification2(), 0U);
        EXPECT_EQ(error.GetTextNumber(), 3U);
        EXPECT_EQ(deletions, 0);
    }
    EXPECT_EQ(deletions, 1);
}

TEST(NkDtExcep, LeavesAWrappedExceptionToItsOwnerWhenToldSo) {
    int deletions = 0;
    CountedException* const wrapped = new CountedException(deletions);
    { const NkDtExcep error(wrapped, FALSE, "f", "c", "o", 22, 0, FALSE); }
    EXPECT_EQ(deletions, 0);
    wrapped->Delete();
}

// --- Class and resources --------------------------------------------------------------------------

TEST(NkDtExcep, IsAnNkEhBasisWithARunTimeClassOfItsOwn) {
    const auto error = makeError(2);
    EXPECT_STREQ(error->GetRuntimeClass()->m_lpszClassName, "NkDtExcep");
    EXPECT_TRUE(error->IsKindOf(NkDtExcep::GetThisClass()));
    EXPECT_TRUE(error->IsKindOf(NkEhBasis::GetThisClass()));
    EXPECT_FALSE(error->IsKindOf(CException::GetThisClass()));
    EXPECT_EQ(CRuntimeClass::FromName("NkDtExcep"), NkDtExcep::GetThisClass());
    EXPECT_EQ(NkDtExcep::GetThisClass()->CreateObject(), nullptr);
}

TEST(NkDtExcep, IsCaughtByItsOwnTypeAndByItsBases) {
    const NkDtLong missing(NkDtWmMissing);
    EXPECT_THROW(
        try { missing.GetValue(); } catch (NkDtExcep* caught) {
            caught->Delete();
            throw 0;
        },
        int);
    EXPECT_THROW(
        try { missing.GetValue(); } catch (NkEhBasis* caught) {
            caught->Delete();
            throw 0;
        },
        int);
    EXPECT_THROW(
        try { missing.GetValue(); } catch (CObject* caught) {
            delete caught;
            throw 0;
        },
        int);
}

TEST(NkDtExcep, NamesTheResourcesOfItsTextAndCaption) {
    const auto error = makeError(2);
    EXPECT_EQ(error->GetResIdForTextInfo(), 371U);
    EXPECT_EQ(error->GetResIdForCaption(), 372U);
}

TEST(NkDtExcep, NamesTheModuleOfThePublishersLanguage) {
    for (const USHORT language : {usNkLangDeutsch, usNkLangEnglisch}) {
        const NkLanguageModule* const module = NkLanguagePublisher::GetModule(language);
        const LanguageModule scope(module);
        LPCTSTR name = makeError(2)->GetResourceModulname();
        EXPECT_STREQ(name, module->GetName());  // also after the error has gone
    }
}

TEST(NkDtExcep, NamesItsOwnLibraryWhenThereIsNoLanguageModule) {
    const LanguageModule none(nullptr);
    const std::string name = makeError(2)->GetResourceModulname();
    EXPECT_NE(name.find("libnkdt.so"), std::string::npos) << name;
    EXPECT_LE(name.size(), 260U);
}

// --- The log --------------------------------------------------------------------------------------

TEST(NkDtExcep, LogsItsKindAndThenItsPartsIndented) {
    std::ostringstream stream;
    NkEhLogFile log(stream);
    makeError(2)->Log(log);
    log.Write("danach\r\n");
    EXPECT_EQ(stream.str(),
              "Fehlerart: NkDtExcep\r\n"
              "      Quelldatei: .\\dtlong.cc\r\n"
              "      Klasse: NkDtLong\r\n"
              "      Funktion: GetValue()\r\n"
              "      Fehlernummer: 2\r\n"
              "      Fehlertext: Undefinierter Wert\r\n"
              "      Klassifikation 1: 1\r\n"
              "      Klassifikation 2: 1\r\n"
              "      Textnummer: 7\r\n"
              "danach\r\n");
}

TEST(NkDtExcep, SwallowsWhatFailsWhileItLogs) {
    struct Broken : std::streambuf {
        int tried = 0;
        int_type overflow(int_type) override {
            ++tried;
            throw 5;
        }
    } broken;
    std::ostream stream(&broken);
    stream.exceptions(std::ios::badbit);
    NkEhLogFile log(stream);
    EXPECT_NO_THROW(makeError(2)->Log(log));
    EXPECT_GT(broken.tried, 0);
}

TEST(NkDtExcep, LogsItselfOnceWhenItIsFinal) {
    const Log log;
    makeError(8, TRUE)->IsLogged();
    EXPECT_EQ(occurrences(log.text(), "Fehlerart: NkDtExcep\r\n      Quelldatei: "), 1U);
    EXPECT_EQ(occurrences(log.text(), "Fehlernummer: 8\r\n"), 1U);
}

TEST(NkDtExcep, LogsItselfFromEachConstructor) {
    const Log log;
    int deletions = 0;
    { const NkDtExcep error("f", "c", "o", 3, 0, TRUE); }
    { const NkDtExcep error("f", "c", "o", 4, 8, 9, 0, TRUE); }
    { const NkDtExcep error(new CountedException(deletions), TRUE, "f", "c", "o", 22, 0, TRUE); }
    EXPECT_EQ(occurrences(log.text(), "Fehlerart: NkDtExcep"), 3U);
    EXPECT_EQ(occurrences(log.text(), "Fehlernummer: 3\r\n"), 1U);
    EXPECT_EQ(occurrences(log.text(), "Klassifikation 2: 9\r\n"), 1U);
    EXPECT_EQ(occurrences(log.text(), "Ausnahme: Unbekannter Fehler\r\n"), 1U);
    EXPECT_EQ(deletions, 1);
}

TEST(NkDtExcep, DoesNotLogItselfWhenItIsNotFinal) {
    const Log log;
    makeError(8, FALSE)->IsLogged();
    EXPECT_EQ(log.text(), "");
}

TEST(NkDtExcep, IsLoggedWhereItAroseAndNotAgainWhereItIsReplaced) {
    const Log log;
    NkDtLong value(5);
    const NkDtString text("12x");
    const ErrorPtr error = expectReplaced(NkDtErrInitialwert, [&] { value.SetFromExtern(&text, TRUE, 100); });
    EXPECT_EQ(error->GetCauseText(), cp1252("Ungültiger Initialwert"));
    EXPECT_EQ(occurrences(log.text(), "Fehlerart: NkDtExcep"), 1U);
    EXPECT_EQ(occurrences(log.text(), "Fehlernummer: 5\r\n"), 1U);
    EXPECT_EQ(occurrences(log.text(), "Funktion: FromString(LPCTSTR)\r\n"), 1U);
}

TEST(NkDtExcep, TellsTheCauseInItsReport) {
    NkDtLong value(5);
    const NkDtString text("12x");
    const ErrorPtr error = expectReplaced(NkDtErrInitialwert, [&] { value.SetFromExtern(&text, TRUE, 100); });
    EXPECT_EQ(error->Report(), CString(cp1252("Default-Catch / Folgefehler (Fehler 1) in NkDtLong: "
                                              "SetFromExtern(NkDtString*,BOOL,USHORT); Ursache: Ungültiger "
                                              "Initialwert (Fehler 5)")
                                           .c_str()));
}

}  // namespace
