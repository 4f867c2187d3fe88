#include <nkeh/NkEhBasis.h>
#include <nkfw/Memory.h>

#include <array>
#include <csignal>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct Parts {
    LPCTSTR sourceFile = ".\\dtlong.cc";
    LPCTSTR classText = "NkDtLong";
    LPCTSTR functionText = "GetValue()";
    LPCTSTR errorText = "Undefinierter Wert";
    ULONG number = 2;
    CException* exception = nullptr;
    BOOL deleteException = TRUE;
};

std::unique_ptr<NkEhBasis> makeError(const Parts& parts = {}) {
    return std::unique_ptr<NkEhBasis>(new NkEhBasis(parts.sourceFile, parts.classText, parts.functionText,
                                                    parts.errorText, parts.number, 3, 4, parts.exception,
                                                    parts.deleteException, 77, FALSE));
}

std::unique_ptr<NkEhBasis> makeError(ULONG number, LPCTSTR text) {
    Parts parts;
    parts.number = number;
    parts.errorText = text;
    return makeError(parts);
}

// A framework exception that counts how often it is deleted.
class CountedException : public CException {
  public:
    explicit CountedException(int& deletions, std::string_view message = "Datei nicht gefunden")
        : m_deletions(deletions), m_message(message) {}
    void Delete() noexcept override {
        ++m_deletions;
        delete this;
    }
    void GetErrorMessage(LPTSTR pszText, UINT nMaxLen) const noexcept override {
        pszText[m_message.copy(pszText, nMaxLen - 1)] = '\0';
    }

  private:
    int& m_deletions;
    std::string_view m_message;
};

// No memory for as long as it lives.
class NoMemory {
  public:
    NoMemory() : m_before(nkfw::setAllocationProbe([](std::size_t) noexcept { return false; })) {}
    ~NoMemory() { nkfw::setAllocationProbe(m_before); }
    NoMemory(const NoMemory&) = delete;
    NoMemory& operator=(const NoMemory&) = delete;

  private:
    nkfw::AllocationProbe m_before;
};

TEST(NkEhBasis, KeepsWhatItIsBuiltWith) {
    const NkEhBasis error(".\\dtlong.cc", "NkDtLong", "GetValue()", "Undefinierter Wert", 2, 3, 4, nullptr,
                          TRUE, 77, TRUE);
    EXPECT_STREQ(error.GetSourceFile(), ".\\dtlong.cc");
    EXPECT_STREQ(error.GetClassText(), "NkDtLong");
    EXPECT_STREQ(error.GetFunctionText(), "GetValue()");
    EXPECT_STREQ(error.GetErrorText(), "Undefinierter Wert");
    EXPECT_EQ(error.GetErrorNumber(), 2U);
    EXPECT_EQ(error.GetClassification1(), 3U);
    EXPECT_EQ(error.GetClassification2(), 4U);
    EXPECT_EQ(error.GetTextNumber(), 77U);
    EXPECT_EQ(error.GetException(), nullptr);
    EXPECT_EQ(error.IsLogged(), TRUE);
}

TEST(NkEhBasis, TellsTheFinalFlagWithoutALog) {
    EXPECT_EQ(makeError()->IsLogged(), FALSE);
}

TEST(NkEhBasis, CopiesItsTexts) {
    std::string text = "Undefinierter Wert";
    const auto error = makeError(2, text.c_str());
    text.assign(text.size(), 'x');
    EXPECT_STREQ(error->GetErrorText(), "Undefinierter Wert");
}

TEST(NkEhBasis, NullTextsCountAsEmpty) {
    const NkEhBasis error(nullptr, nullptr, nullptr, nullptr, 2, 1, 1, nullptr, TRUE, 0, FALSE);
    EXPECT_STREQ(error.GetSourceFile(), "");
    EXPECT_STREQ(error.GetClassText(), "");
    EXPECT_STREQ(error.GetFunctionText(), "");
    EXPECT_STREQ(error.GetErrorText(), "");
    EXPECT_STREQ(error.GetCauseText(), "");
}

struct FieldCase {
    LPCTSTR (NkEhBasis::*text)() const noexcept;
    std::size_t longest;
};

TEST(NkEhBasis, TextsThatDoNotFitAreCutAndEndInDots) {
    const FieldCase fields[] = {{&NkEhBasis::GetSourceFile, 63},
                                {&NkEhBasis::GetClassText, 63},
                                {&NkEhBasis::GetFunctionText, 127},
                                {&NkEhBasis::GetErrorText, 255},
                                {&NkEhBasis::GetCauseText, 255}};
    for (const FieldCase& field : fields) {
        for (const std::size_t length :
             {field.longest - 1, field.longest, field.longest + 1, field.longest + 500}) {
            const std::string text(length, 'x');
            NkEhBasis error(text.c_str(), text.c_str(), text.c_str(), text.c_str(), 2, 1, 1, nullptr, TRUE, 0,
                            FALSE);
            error.SetCause(5, text.c_str());
            const std::string expected =
                length <= field.longest ? text : std::string(field.longest - 3, 'x') + "...";
            EXPECT_EQ((error.*field.text)(), expected) << length;
        }
    }
}

TEST(NkEhBasis, DeletesAWrappedExceptionOnce) {
    int deletions = 0;
    Parts parts;
    parts.exception = new CountedException(deletions);
    auto error = makeError(parts);
    EXPECT_EQ(error->GetException(), parts.exception);
    EXPECT_EQ(deletions, 0);
    error.reset();
    EXPECT_EQ(deletions, 1);
}

TEST(NkEhBasis, LeavesAWrappedExceptionToTheCallerWhenToldSo) {
    int deletions = 0;
    Parts parts;
    parts.exception = new CountedException(deletions);
    parts.deleteException = FALSE;
    makeError(parts).reset();
    EXPECT_EQ(deletions, 0);
    parts.exception->Delete();
    EXPECT_EQ(deletions, 1);
}

class EarlyReleasingError : public NkEhBasis {
  public:
    explicit EarlyReleasingError(CException* exception)
        : NkEhBasis(LogLater{}, "", "", "", "", 22, 0, 0, exception, TRUE, 0, FALSE) {}
    ~EarlyReleasingError() override {
        CheckBeforeDelete();
        CheckBeforeDelete();
        EXPECT_EQ(GetException(), nullptr);
    }
};

TEST(NkEhBasis, DeletesAWrappedExceptionOnceWhenDerivedClassesReleaseItFirst) {
    int deletions = 0;
    std::make_unique<EarlyReleasingError>(new CountedException(deletions)).reset();
    EXPECT_EQ(deletions, 1);
}

TEST(NkEhBasis, DeleteReleasesTheErrorAndWhatItWraps) {
    int deletions = 0;
    Parts parts;
    parts.exception = new CountedException(deletions);
    makeError(parts).release()->Delete();
    EXPECT_EQ(deletions, 1);
}

TEST(NkEhBasis, HasNoCauseByItself) {
    const auto error = makeError();
    EXPECT_EQ(error->GetCauseNumber(), 0U);
    EXPECT_STREQ(error->GetCauseText(), "");
}

TEST(NkEhBasis, TheReplacedErrorIsTheCause) {
    const auto error = makeError(1, "Default-Catch / Folgefehler");
    {
        const auto replaced = makeError(5, "Ung\xFCltiger Initialwert");
        error->SetCause(*replaced);
    }
    EXPECT_EQ(error->GetCauseNumber(), 5U);
    EXPECT_STREQ(error->GetCauseText(), "Ung\xFCltiger Initialwert");
}

TEST(NkEhBasis, TheFirstErrorOfAChainIsTheCause) {
    const auto first = makeError(5, "Ung\xFCltiger Initialwert");
    const auto second = makeError(1, "Default-Catch / Folgefehler");
    const auto third = makeError(1, "Default-Catch / Folgefehler");
    second->SetCause(*first);
    third->SetCause(*second);
    EXPECT_EQ(third->GetCauseNumber(), 5U);
    EXPECT_STREQ(third->GetCauseText(), "Ung\xFCltiger Initialwert");
}

TEST(NkEhBasis, ACauseWithoutANumberGoesOnThroughTheChain) {
    const auto second = makeError(1, "Default-Catch / Folgefehler");
    const auto third = makeError(1, "Default-Catch / Folgefehler");
    second->SetCause(0, "Die Datenbank ist gesperrt");
    third->SetCause(*second);
    EXPECT_EQ(third->GetCauseNumber(), 0U);
    EXPECT_STREQ(third->GetCauseText(), "Die Datenbank ist gesperrt");
}

TEST(NkEhBasis, ANullCauseTextCountsAsEmpty) {
    const auto error = makeError();
    error->SetCause(9, "Falscher Typ zugeordnet");
    error->SetCause(7, nullptr);
    EXPECT_EQ(error->GetCauseNumber(), 7U);
    EXPECT_STREQ(error->GetCauseText(), "");
}

TEST(NkEhBasis, IsNotItsOwnCause) {
    const auto error = makeError();
    error->SetCause(*error);
    EXPECT_EQ(error->GetCauseNumber(), 0U);
    EXPECT_STREQ(error->GetCauseText(), "");
}

TEST(NkEhBasis, ReportTellsTextNumberAndOperation) {
    EXPECT_STREQ(makeError()->Report(), "Undefinierter Wert (Fehler 2) in NkDtLong: GetValue()");
}

TEST(NkEhBasis, ReportTellsTheCause) {
    Parts parts;
    parts.functionText = "SetFromExtern(NkDtString*,BOOL,USHORT)";
    parts.errorText = "Default-Catch / Folgefehler";
    parts.number = 1;
    const auto error = makeError(parts);
    error->SetCause(5, "Ung\xFCltiger Initialwert");
    EXPECT_STREQ(
        error->Report(),
        "Default-Catch / Folgefehler (Fehler 1) in NkDtLong: SetFromExtern(NkDtString*,BOOL,USHORT); "
        "Ursache: Ung\xFCltiger Initialwert (Fehler 5)");
}

TEST(NkEhBasis, ReportTellsACauseWithoutANumber) {
    const auto error = makeError();
    error->SetCause(0, "Sonstiger Fehler");
    EXPECT_STREQ(error->Report(),
                 "Undefinierter Wert (Fehler 2) in NkDtLong: GetValue(); Ursache: Sonstiger Fehler");
}

TEST(NkEhBasis, ReportTellsTheWrappedExceptionsMessage) {
    int deletions = 0;
    Parts parts;
    parts.exception = new CountedException(deletions);
    EXPECT_STREQ(makeError(parts)->Report(),
                 "Undefinierter Wert (Fehler 2) in NkDtLong: GetValue(); Ausnahme: Datei nicht gefunden");
}

TEST(NkEhBasis, ReportLeavesOutWhatIsNotThere) {
    struct Case {
        LPCTSTR classText;
        LPCTSTR functionText;
        LPCTSTR expected;
    };
    const Case cases[] = {{"", "", "Undefinierter Wert (Fehler 2)"},
                          {"NkDtLong", "", "Undefinierter Wert (Fehler 2) in NkDtLong"},
                          {"", "GetValue()", "Undefinierter Wert (Fehler 2) in GetValue()"}};
    for (const Case& c : cases) {
        Parts parts;
        parts.classText = c.classText;
        parts.functionText = c.functionText;
        EXPECT_STREQ(makeError(parts)->Report(), c.expected);
    }
}

TEST(NkEhBasis, ReportIsOneLine) {
    int deletions = 0;
    Parts parts;
    parts.exception = new CountedException(deletions, "erste\r\nzweite\nZeile");
    parts.errorText = "Text\nmit Zeile";
    EXPECT_STREQ(makeError(parts)->Report(),
                 "Text mit Zeile (Fehler 2) in NkDtLong: GetValue(); Ausnahme: erste  zweite Zeile");
}

TEST(NkEhBasis, HasNoResources) {
    const auto error = makeError();
    EXPECT_STREQ(error->GetResourceModulname(), "");
    EXPECT_EQ(error->GetResIdForTextInfo(), 0U);
    EXPECT_EQ(error->GetResIdForCaption(), 0U);
}

TEST(NkEhBasis, KnowsItsClassAndIsNoFrameworkException) {
    const auto error = makeError();
    EXPECT_STREQ(error->GetRuntimeClass()->m_lpszClassName, "NkEhBasis");
    EXPECT_TRUE(error->IsKindOf(RUNTIME_CLASS(NkEhBasis)));
    EXPECT_TRUE(error->IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(error->IsKindOf(RUNTIME_CLASS(CException)));
}

// --- The reserve ------------------------------------------------------------------------------

TEST(NkEhBasisReserve, ServesErrorsWhenMemoryIsExhausted) {
    const NoMemory noMemory;
    const auto error = makeError(6, "Ung\xFCltige Initiall\xE4nge");
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->GetErrorNumber(), 6U);
    EXPECT_STREQ(error->GetErrorText(), "Ung\xFCltige Initiall\xE4nge");
}

TEST(NkEhBasisReserve, AnErrorFromTheReserveCanBeThrownAndReleasedWhenMemoryIsBack) {
    NkEhBasis* caught = nullptr;
    try {
        const NoMemory noMemory;
        throw makeError(6, "Text").release();
    } catch (NkEhBasis* error) {
        caught = error;
    }
    ASSERT_NE(caught, nullptr);
    EXPECT_EQ(caught->GetErrorNumber(), 6U);
    caught->Delete();
}

// What one thread can hold at a time.
constexpr std::size_t reserveOfOneThread = NkEhBasis::nReservePerThread + NkEhBasis::nReserveFurther;

TEST(NkEhBasisReserve, HoldsAsManyErrorsAsStatedAndTakesThemBack) {
    const NoMemory noMemory;
    for (int round = 0; round < 3; ++round) {
        std::array<std::unique_ptr<NkEhBasis>, reserveOfOneThread> errors;
        std::set<const NkEhBasis*> blocks;
        for (std::size_t i = 0; i < errors.size(); ++i) {
            errors[i] = makeError(static_cast<ULONG>(i), "Text");
            blocks.insert(errors[i].get());
        }
        EXPECT_EQ(blocks.size(), errors.size());
        for (std::size_t i = 0; i < errors.size(); ++i)
            EXPECT_EQ(errors[i]->GetErrorNumber(), i);
    }
}

TEST(NkEhBasisReserve, ABlockThatIsGivenBackServesTheNextError) {
    const NoMemory noMemory;
    std::vector<std::unique_ptr<NkEhBasis>> errors(reserveOfOneThread);
    for (auto& error : errors)
        error = makeError();
    const NkEhBasis* const middle = errors[100].get();
    errors[100].reset();
    errors[100] = makeError();
    EXPECT_EQ(errors[100].get(), middle);
}

void exhaustReserve() {
    const NoMemory noMemory;
    for (std::size_t i = 0; i <= reserveOfOneThread; ++i)
        static_cast<void>(makeError().release());
}

TEST(NkEhBasisReserveDeathTest, EndsTheProgramRatherThanThrowingNull) {
    EXPECT_EXIT(exhaustReserve(), testing::KilledBySignal(SIGABRT), "");
}

class LargestError : public NkEhBasis {
  public:
    LargestError() : NkEhBasis(LogLater{}, "", "", "", "", 2, 1, 1, nullptr, TRUE, 0, FALSE) {
        m_fill[0] = 1;
    }

  private:
    unsigned char m_fill[nMaxSize - sizeof(NkEhBasis)];
};

TEST(NkEhBasisReserve, HoldsDerivedErrorsUpToTheStatedSize) {
    static_assert(sizeof(LargestError) == NkEhBasis::nMaxSize);
    const NoMemory noMemory;
    const auto first = std::make_unique<LargestError>();
    const auto second = std::make_unique<LargestError>();
    EXPECT_NE(first.get(), second.get());
    EXPECT_EQ(first->GetErrorNumber(), 2U);
}

TEST(NkEhBasisReserve, ServesThreadsAtATime) {
    constexpr std::size_t threadCount = 8;
    constexpr ULONG errorsAtATime = NkEhBasis::nReservePerThread + NkEhBasis::nReserveFurther / threadCount;
    const NoMemory noMemory;
    std::array<std::size_t, threadCount> failures{};
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < threadCount; ++t) {
        threads.emplace_back([t, &failures] {
            for (int round = 0; round < 50; ++round) {
                std::array<std::unique_ptr<NkEhBasis>, errorsAtATime> errors;
                const auto mark = static_cast<ULONG>(t * 1000);
                for (ULONG i = 0; i < errorsAtATime; ++i)
                    errors[i] = makeError(mark + i, "Text");
                for (ULONG i = 0; i < errorsAtATime; ++i) {
                    if (errors[i]->GetErrorNumber() != mark + i) ++failures[t];
                }
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (const std::size_t count : failures)
        EXPECT_EQ(count, 0U);
}

TEST(NkEhBasisReserve, KeepsAShareForEveryThreadWhateverAnotherOneHolds) {
    const NoMemory noMemory;
    std::vector<std::unique_ptr<NkEhBasis>> hoard(reserveOfOneThread);
    for (auto& error : hoard)
        error = makeError();
    std::vector<std::unique_ptr<NkEhBasis>> ofOthers;
    for (std::size_t t = 1; t < NkEhBasis::nReserveThreads; ++t) {
        std::thread([&ofOthers] {
            for (std::size_t i = 0; i < NkEhBasis::nReservePerThread; ++i)
                ofOthers.push_back(makeError());
        }).join();
    }
    EXPECT_EQ(ofOthers.size(), (NkEhBasis::nReserveThreads - 1) * NkEhBasis::nReservePerThread);
    std::set<const NkEhBasis*> blocks;
    for (const auto& error : ofOthers)
        blocks.insert(error.get());
    EXPECT_EQ(blocks.size(), ofOthers.size());
}

// --- The new-handler --------------------------------------------------------------------------

TEST(NkEhNorvaneNewHandler, ThrowsAFinalErrorThatTellsTheSize) {
    const NoMemory noMemory;
    try {
        NkEhNorvaneNewHandler(2147483648U);
        FAIL() << "returned";
    } catch (NkEhBasis* caught) {
        const std::unique_ptr<NkEhBasis> error(caught);
        EXPECT_EQ(error->GetErrorNumber(), ulNkEhKeinSpeicher);
        EXPECT_EQ(error->GetErrorNumber(), 1000U);
        EXPECT_STREQ(error->GetErrorText(), "Nicht gen\xFCgend Speicher");
        EXPECT_NE(std::string_view(error->GetFunctionText()).find("2147483648"), std::string_view::npos);
        EXPECT_EQ(error->IsLogged(), TRUE);
        EXPECT_EQ(error->GetException(), nullptr);
    }
}

TEST(NkEhNorvaneNewHandler, TellsTheGreatestSizeWhole) {
    try {
        NkEhNorvaneNewHandler(static_cast<std::size_t>(-1));
        FAIL() << "returned";
    } catch (NkEhBasis* caught) {
        const std::unique_ptr<NkEhBasis> error(caught);
        const std::string size = std::to_string(static_cast<std::size_t>(-1));
        EXPECT_TRUE(std::string_view(error->GetFunctionText()).ends_with(size));
    }
}

}  // namespace
