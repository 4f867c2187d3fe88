#include "Raise.h"

#include <memory>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "ValueTesting.h"

namespace {

using namespace valuetest;

constexpr nkdt::Origin kInner = {".\\inner.cc", "Inner", "Do()"};
constexpr nkdt::Origin kOuter = {".\\outer.cc", "Outer", "DoAll()"};

int liveErrors = 0;

struct CountedError : NkDtExcep {
    explicit CountedError(ULONG number) : NkDtExcep("f", "c", "o", number, 0, FALSE) { ++liveErrors; }
    ~CountedError() override { --liveErrors; }
};

int deletedExceptions = 0;

struct CountedException : CException {
    void Delete() noexcept override {
        ++deletedExceptions;
        delete this;
    }
    void GetErrorMessage(LPTSTR pszText, UINT nMaxLen) const noexcept override {
        pszText[std::string_view("kein Anschluss").copy(pszText, nMaxLen - 1)] = '\0';
    }
};

template <class Thrown>
ErrorPtr wrapping(Thrown thrown) {
    return errorOf([&] { nkdt::wrapped(kOuter, [&] { throw thrown; }); });
}

TEST(Raise, ThrowsAFinalErrorFromItsOrigin) {
    const ErrorPtr error = expectError(12, [] { nkdt::raise(kInner, NkDtErrDivisionDurchNull); });
    EXPECT_STREQ(error->GetSourceFile(), ".\\inner.cc");
    EXPECT_STREQ(error->GetClassText(), "Inner");
    EXPECT_STREQ(error->GetFunctionText(), "Do()");
    EXPECT_EQ(error->GetTextNumber(), 0U);
    EXPECT_TRUE(error->IsLogged());
    EXPECT_EQ(error->GetCauseNumber(), 0U);
}

TEST(Wrapped, PassesTheResultOfABodyThatSucceeds) {
    EXPECT_EQ(nkdt::wrapped(kOuter, [] { return 5; }), 5);
    int number = 6;
    int& reference = nkdt::wrapped(kOuter, [&]() -> int& { return number; });
    EXPECT_EQ(&reference, &number);
}

TEST(Wrapped, ReplacesAnErrorByError1ThatIsNotFinal) {
    const ErrorPtr error =
        expectReplaced(8, [] { nkdt::wrapped(kOuter, [] { nkdt::raise(kInner, NkDtErrWertebereich); }); });
    EXPECT_STREQ(error->GetSourceFile(), ".\\outer.cc");
    EXPECT_STREQ(error->GetClassText(), "Outer");
    EXPECT_STREQ(error->GetFunctionText(), "DoAll()");
    EXPECT_EQ(error->GetCauseText(), cp1252("Wert außerhalb des Wertebereichs"));
}

TEST(Wrapped, KeepsTheFirstErrorOfAChainAsTheCause) {
    expectReplaced(3, [] {
        nkdt::wrapped(kOuter, [] {
            nkdt::wrapped(kOuter,
                          [] { nkdt::wrapped(kInner, [] { nkdt::raise(kInner, NkDtErrStringindex); }); });
        });
    });
}

TEST(Wrapped, ReleasesTheErrorThatItReplaces) {
    const ErrorPtr error = wrapping<NkEhBasis*>(new CountedError(5));
    EXPECT_EQ(error->GetCauseNumber(), 5U);
    EXPECT_EQ(liveErrors, 0);
}

TEST(Wrapped, ReplacesAFrameworkExceptionAndDeletesItOnce) {
    deletedExceptions = 0;
    const ErrorPtr error = wrapping<CException*>(new CountedException);
    EXPECT_EQ(error->GetErrorNumber(), 1U);
    EXPECT_EQ(error->GetCauseNumber(), ULONG{NkDtErrFrameworkException});
    EXPECT_STREQ(error->GetCauseText(), "kein Anschluss");
    EXPECT_EQ(deletedExceptions, 1);
}

TEST(Wrapped, ReplacesAStandardException) {
    const ErrorPtr error = wrapping(std::runtime_error("zu viel"));
    EXPECT_EQ(error->GetErrorNumber(), 1U);
    EXPECT_EQ(error->GetCauseNumber(), 0U);
    EXPECT_STREQ(error->GetCauseText(), "zu viel");
}

TEST(Wrapped, ReplacesWhateverElseIsThrown) {
    const ErrorPtr error = wrapping(5);
    EXPECT_EQ(error->GetErrorNumber(), 1U);
    EXPECT_STREQ(error->GetCauseText(), "Sonstiger Fehler");
}

TEST(Wrapped, HasNoCauseWhenANullErrorWasThrown) {
    const ErrorPtr error = wrapping<NkEhBasis*>(nullptr);
    EXPECT_EQ(error->GetErrorNumber(), 1U);
    EXPECT_EQ(error->GetCauseNumber(), 0U);
    EXPECT_STREQ(error->GetCauseText(), "");
}

TEST(RequireText, RefusesANullTextOnly) {
    expectError(NkDtErrInitialwert, [] { nkdt::requireText(nullptr, kInner); });
    EXPECT_EQ(errorOf([] { nkdt::requireText("", kInner); }), nullptr);
}

}  // namespace
