// How a text is held: construction and assignment.

#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtShort.h>
#include <nkdt/NkDtString.h>
#include <nkfo/NkFormat.h>

#include <cstring>
#include <limits>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "TextTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;

constexpr INT kAuto = NkDtStrLenAuto;
constexpr INT kMaxInt = std::numeric_limits<INT>::max();
const NkFormat kFormat(0, kulNkFoValidAll, FormatAuffuellenNicht, ' ');

// --- Construction from text ---------------------------------------------------------------------

TEST(NkDtStringFromText, HasTheLengthAndTheRoomThatItIsGiven) {
    struct Case {
        LPCTSTR text;
        INT length;
        INT alloc;
        const char* made;
    };
    constexpr Case cases[] = {
        {"abc", kAuto, kAuto, "'abc' 3/3 defined"},
        {"abc", 2, 10, "'ab' 2/10 defined"},
        {"abc", 3, 0, "'abc' 3/3 defined"},
        {"abc", 3, 1, "'abc' 3/3 defined"},
        {"abc", 3, 2, "'abc' 3/3 defined"},
        {"abc", 3, 3, "'abc' 3/3 defined"},
        {"abc", 3, 4, "'abc' 3/4 defined"},
        {"abc", 2, kAuto, "'ab' 2/2 defined"},
        {"abc", 2, -5, "'ab' 2/2 defined"},
        {"abc", kAuto, 100, "'abc' 3/100 defined"},
        {"abc", kAuto, 2, "'abc' 3/3 defined"},
        {"abc", 0, 0, "'' 0/0 defined"},
        {"abc", 0, 5, "'' 0/5 defined"},
        {"", kAuto, kAuto, "'' 0/0 defined"},
        {"", 0, 7, "'' 0/7 defined"},
        {"", 5, 0, "'\\0\\0\\0\\0\\0' 5/5 defined"},
        {"", 5, 3, "'\\0\\0\\0\\0\\0' 5/5 defined"},
        {"", 2, 9, "'\\0\\0' 2/9 defined"},
        {"", kAuto, 4, "'' 0/4 defined"},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(describe(NkDtString(each.text, each.length, each.alloc)), each.made)
            << each.text << ", " << each.length << ", " << each.alloc;
    }
}

TEST(NkDtStringFromText, TakesTheWholeTextUnlessToldOtherwise) {
    EXPECT_EQ(describe(NkDtString("abc")), "'abc' 3/3 defined");
    EXPECT_EQ(describe(NkDtString("abc", 1)), "'a' 1/1 defined");
}

TEST(NkDtStringFromText, RefusesALengthThatTheTextDoesNotHave) {
    struct Case {
        LPCTSTR text;
        INT length;
        INT alloc;
    };
    constexpr Case cases[] = {{"abc", 4, 0},       {"abc", 4, 10},       {"abc", -1, kAuto},
                              {"abc", -99, kAuto}, {"abc", -101, kAuto}, {"", -1, kAuto},
                              {"a", 2, kAuto},     {"abc", kMaxInt, 0},  {"", kMaxInt, 0},
                              {"abc", 3, kMaxInt}, {"", 0, kMaxInt},     {"abc", kAuto, kMaxInt},
                              {"", 5, kMaxInt}};
    for (const Case& each : cases) {
        SCOPED_TRACE(::testing::Message() << each.text << ", " << each.length << ", " << each.alloc);
        const ErrorPtr error = expectError(
            NkDtErrInitiallaenge, [&] { const NkDtString text(each.text, each.length, each.alloc); });
        EXPECT_EQ(error->GetErrorText(), cp1252("Ungültige Initiallänge"));
    }
}

TEST(NkDtStringFromText, LooksAtNoMoreCharactersThanItTakes) {
    const std::unique_ptr<char[]> unterminated(new char[3]{'a', 'b', 'c'});
    EXPECT_EQ(describe(NkDtString(unterminated.get(), 3)), "'abc' 3/3 defined");
}

TEST(NkDtStringFromText, CopiesTheText) {
    char source[] = "abc";
    const NkDtString text(source);
    source[0] = 'X';
    EXPECT_STREQ(text, "abc");
}

// --- The other constructors ---------------------------------------------------------------------

TEST(NkDtString, IsUndefinedAndWithoutABufferWhenConstructedWithoutAText) {
    EXPECT_EQ(describe(NkDtString()), "'' 0/0 missing");
    EXPECT_EQ(describe(NkDtString(NkDtWmNull)), "'' 0/0 null");
    EXPECT_EQ(describe(NkDtString(NkDtWmDefined)), "'' 0/0 defined");
    const DefaultMode scope(NkDtWmNull);
    EXPECT_EQ(describe(NkDtString()), "'' 0/0 null");
}

TEST(NkDtString, IsMadeFromAFrameworkText) {
    EXPECT_EQ(describe(NkDtString(CString("abc"))), "'abc' 3/3 defined");
    EXPECT_EQ(describe(NkDtString(CString())), "'' 0/0 defined");
    EXPECT_EQ(describe(NkDtString(CString("ab\0cd", 5))), "'ab' 2/2 defined");
    CString roomy("abc");
    roomy.GetBuffer(50);
    roomy.ReleaseBuffer();
    EXPECT_EQ(describe(NkDtString(roomy)), "'abc' 3/3 defined");
}

TEST(NkDtString, IsMadeFromA16BitText) {
    EXPECT_EQ(describe(NkDtString(Wide(u"abc").get())), "'abc' 3/3 defined");
    EXPECT_EQ(describe(NkDtString(Wide(u"").get())), "'' 0/0 defined");
    EXPECT_EQ(describe(NkDtString(Wide(u"ab\0cd", 5).get())), "'ab' 2/2 defined");
    EXPECT_EQ(describe(NkDtString(BSTR{nullptr})), "'' 0/0 defined");
    EXPECT_EQ(NkDtString(Wide(u"Fähre 5 €").get()).GetValue(), cp1252("Fähre 5 €"));
}

TEST(NkDtString, RefusesA16BitTextWithACharacterThatThePageDoesNotHave) {
    const ErrorPtr error =
        expectError(NkDtErrWideZeichen, [] { const NkDtString text(Wide(u"a\u0416").get()); });
    EXPECT_EQ(error->GetErrorText(), cp1252("Wandlung in Wide-Charakter-Format nicht möglich"));
}

TEST(NkDtString, IsMadeFromACharacter) {
    EXPECT_EQ(describe(NkDtString('x')), "'x' 1/1 defined");
    EXPECT_EQ(describe(NkDtString('\xE4')), "'\xE4' 1/1 defined");
    EXPECT_EQ(describe(NkDtString('\0')), "'' 0/1 defined");
}

TEST(NkDtString, IsMadeFromANumberInABufferOf11Characters) {
    EXPECT_EQ(describe(NkDtString(0)), "'0' 1/11 defined");
    EXPECT_EQ(describe(NkDtString(-5)), "'-5' 2/11 defined");
    EXPECT_EQ(describe(NkDtString(2147483647)), "'2147483647' 10/11 defined");
    EXPECT_EQ(describe(NkDtString(INT{-2147483647} - 1)), "'-2147483648' 11/11 defined");
    EXPECT_EQ(describe(NkDtString(UINT{0})), "'0' 1/11 defined");
    EXPECT_EQ(describe(NkDtString(UINT{4294967295})), "'4294967295' 10/11 defined");
}

TEST(NkDtString, IsMadeFromAWideNumberInABufferOf20Characters) {
    EXPECT_EQ(describe(NkDtString(std::numeric_limits<LONGLONG>::min())),
              "'-9223372036854775808' 20/20 defined");
    EXPECT_EQ(describe(NkDtString(std::numeric_limits<ULONGLONG>::max())),
              "'18446744073709551615' 20/20 defined");
    EXPECT_EQ(describe(NkDtString(SHORT{-1})), "'-1' 2/20 defined");
}

TEST(NkDtString, IsMadeFromAWholeNumberValue) {
    EXPECT_EQ(describe(NkDtString(NkDtLong(-5))), "'-5' 2/11 defined");
    EXPECT_EQ(describe(NkDtString(NkDtLong(INT{-2147483647} - 1))), "'-2147483648' 11/11 defined");
    EXPECT_EQ(describe(NkDtString(NkDtShort(-32768))), "'-32768' 6/11 defined");
}

template <class Whole>
void expectStateTaken() {
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (const BOOL defined : {FALSE, TRUE}) {
            for (const BOOL modified : {FALSE, TRUE}) {
                Whole source(mode);
                if (defined) source = 5;
                source.SetModified(modified);
                source.SetFormat(&kFormat);
                const DefaultMode elsewhere(NkDtWmDefined);
                const NkDtString text(source);
                EXPECT_EQ(text.GetWorkingMode(), mode);
                EXPECT_EQ(stateOf(text), stateOf(source));
                EXPECT_EQ(text.GetFormat(), nullptr);
                if (!source.IsDefined()) {
                    EXPECT_EQ(text.GetAllocLength(), 0);
                }
            }
        }
    }
}

TEST(NkDtString, TakesTheStateOfTheValueThatItIsMadeFrom) {
    expectStateTaken<NkDtLong>();
    expectStateTaken<NkDtShort>();
}

TEST(NkDtString, IsEmptyWhenMadeFromAnUndefinedValueWhateverThatStores) {
    NkDtLong source(NkDtWmNull);
    load(source, {0, 0, 0, 0, 9, 0, 0, 0});
    ASSERT_EQ(source.GetValue(), 9);
    EXPECT_EQ(describe(NkDtString(source)), "'' 0/0 null modified");
}

TEST(NkDtString, ThrowsWhereItIsMissingAsTheValueThatItIsMadeFromWas) {
    const NkDtString text(NkDtLong{NkDtWmMissing});
    EXPECT_STREQ(static_cast<LPCTSTR>(text), "");
    expectError(NkDtErrUndefiniert, [&] { text.GetValue(); });
}

TEST(NkDtString, HasACopyWhoseRoomIsItsLength) {
    const NkDtString source("abc", kAuto, 50);
    EXPECT_EQ(describe(NkDtString(source)), "'abc' 3/3 defined");
    const NkDtString empty("", 0, 50);
    EXPECT_EQ(describe(NkDtString(empty)), "'' 0/0 defined");
    const NkDtString null(NkDtWmNull);
    EXPECT_EQ(describe(NkDtString(null)), "'' 0/0 null");
}

TEST(NkDtString, IsCopiedByLengthSoThatNulCharactersCount) {
    NkDtString source("ab");
    source += '\0';
    source += 'c';
    EXPECT_EQ(describe(NkDtString(static_cast<const NkDtString&>(source))), "'ab\\0c' 4/4 defined modified");
    const NkDtString blank("", 3, 0);
    EXPECT_EQ(describe(NkDtString(blank)), "'\\0\\0\\0' 3/3 defined");
}

// --- Assignment of a text value -----------------------------------------------------------------

TEST(NkDtStringAssignment, ReusesTheBufferOrMakesItAsLongAsTheSource) {
    struct Case {
        NkDtString target;
        const NkDtString source;
        const char* after;
    };
    Case cases[] = {
        {NkDtString("abc"), NkDtString("abcd"), "'abcd' 4/4 defined modified"},
        {NkDtString("abc", 3, 10), NkDtString("abcd"), "'abcd' 4/10 defined modified"},
        {NkDtString("abc"), NkDtString("x", 1, 90), "'x' 1/3 defined modified"},
        {NkDtString("abc"), NkDtString(""), "'' 0/3 defined modified"},
        {NkDtString("abc"), NkDtString("abc", 3, 10), "'abc' 3/3 defined"},
        {NkDtString("abc"), NkDtString("ABC"), "'ABC' 3/3 defined modified"},
        {NkDtString(""), NkDtString(""), "'' 0/0 defined"},
        {NkDtString(NkDtWmNull), NkDtString("ab", 2, 50), "'ab' 2/2 defined modified"},
        {NkDtString(NkDtWmNull), NkDtString(""), "'' 0/0 defined modified"},
        {NkDtString("abc", 3, 100), NkDtString("a text that is too long for a pool's block"),
         "'a text that is too long for a pool's block' 42/100 defined modified"},
    };
    for (Case& each : cases) {
        each.target = each.source;
        EXPECT_EQ(describe(each.target), each.after);
    }
}

TEST(NkDtStringAssignment, OfAnUndefinedTextEmptiesWhateverTheModeAndLeavesTheFlagAlone) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (const BOOL modified : {FALSE, TRUE}) {
            NkDtString target = inMode(mode, "abc");
            target.SetModified(modified);
            target.SetFormat(&kFormat);
            const NkDtString undefined(NkDtWmNull);
            target = undefined;
            EXPECT_EQ(target.IsDefined(), FALSE);
            EXPECT_EQ(target.IsModified(), modified);
            EXPECT_EQ(target.GetLength(), 0);
            EXPECT_EQ(target.GetAllocLength(), 0);
            EXPECT_EQ(target.GetWorkingMode(), mode);
            EXPECT_EQ(target.GetFormat(), &kFormat);
        }
    }
}

TEST(NkDtStringAssignment, OfATextToItselfChangesNothing) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (const BOOL modified : {FALSE, TRUE}) {
            for (NkDtString text : {inMode(mode, "abc"), undefinedWithText(mode, "abc")}) {
                EXPECT_EQ(text.GetPos("c", NkDtStrPosFirst), 2);
                text.SetModified(modified);
                const std::string before = describe(text);
                const NkDtString& itself = text;
                text = itself;
                EXPECT_EQ(describe(text), before);
                EXPECT_EQ(text.GetPos("c", NkDtStrPosNext), -1);  // the hit is still known
            }
        }
    }
}

TEST(NkDtStringAssignment, CopiesByLengthAndComparesUpToTheFirstNul) {
    NkDtString source("ab");
    source += '\0';
    source += 'c';
    NkDtString other("x");
    other = source;
    EXPECT_EQ(describe(other), "'ab\\0c' 4/4 defined modified");
    NkDtString equal("ab");
    equal = source;
    EXPECT_EQ(describe(equal), "'ab' 2/4 defined");
}

TEST(NkDtStringAssignment, OfATextToAnUndefinedOneWithStoredCharactersTakesItWhole) {
    struct Case {
        LPCTSTR before;
        INT alloc;
        LPCTSTR source;
        const char* after;
    };
    constexpr Case cases[] = {
        {"abc", kAuto, "", "'' 0/0 defined modified"},
        {"abc", 10, "ab", "'ab' 2/2 defined modified"},
        {"abc", kAuto, "abc", "'abc' 3/3 defined modified"},
        {"a text that is too long for a pool's block", 100, "a", "'a' 1/1 defined modified"},
        {"a text that is too long for a pool's block", kAuto, "", "'' 0/0 defined modified"},
        {"abc", kAuto, "abcdef", "'abcdef' 6/6 defined modified"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.before);
        NkDtString byValue = undefinedWithText(NkDtWmNull, each.before, each.alloc);
        byValue = static_cast<const NkDtString&>(NkDtString(each.source));
        EXPECT_EQ(describe(byValue), each.after);
        EXPECT_EQ(describe(byValue + "!"), describe(NkDtString(each.source) + "!"));

        NkDtString byPointer = undefinedWithText(NkDtWmNull, each.before, each.alloc);
        byPointer = each.source;
        EXPECT_EQ(describe(byPointer), each.after);
    }
}

// --- Assignment of plain texts ------------------------------------------------------------------

// The three kinds of plain text are taken alike.
struct PlainKind {
    const char* name;
    void (*assign)(NkDtString& target, LPCTSTR text);
};

constexpr PlainKind kPlainKinds[] = {
    {"LPCTSTR", [](NkDtString& target, LPCTSTR text) { target = text; }},
    {"CString", [](NkDtString& target, LPCTSTR text) { target = CString(text); }},
    {"BSTR",
     [](NkDtString& target, LPCTSTR text) {
         const BSTR wide = CString(text).AllocSysString();
         target = wide;
         SysFreeString(wide);
     }},
};

TEST(NkDtStringAssignment, OfAPlainTextReusesTheBufferOrMakesItAsLongAsTheText) {
    struct Case {
        NkDtString (*target)();
        LPCTSTR source;
        const char* after;
    };
    constexpr Case cases[] = {
        {[] { return NkDtString("abc"); }, "abcd", "'abcd' 4/4 defined modified"},
        {[] { return NkDtString("abc", 3, 10); }, "abcd", "'abcd' 4/10 defined modified"},
        {[] { return NkDtString("abc"); }, "x", "'x' 1/3 defined modified"},
        {[] { return NkDtString("abc"); }, "", "'' 0/3 defined modified"},
        {[] { return NkDtString("abc", 3, 9); }, "abc", "'abc' 3/9 defined"},
        {[] { return NkDtString("abc"); }, "ABC", "'ABC' 3/3 defined modified"},
        {[] { return NkDtString(""); }, "", "'' 0/0 defined"},
        {[] { return NkDtString("", 5, 0); }, "", "'' 0/5 defined"},
        {[] { return NkDtString("", 5, 0); }, "ab", "'ab' 2/5 defined modified"},
        {[] { return NkDtString(NkDtWmNull); }, "ab", "'ab' 2/2 defined modified"},
        {[] { return NkDtString(NkDtWmMissing); }, "", "'' 0/0 defined modified"},
        {[] { return NkDtString(NkDtWmDefined); }, "", "'' 0/0 defined"},
        {[] { return NkDtString("abc"); }, "a text that is too long for a pool's block",
         "'a text that is too long for a pool's block' 42/42 defined modified"},
    };
    for (const PlainKind& kind : kPlainKinds) {
        for (const Case& each : cases) {
            NkDtString target = each.target();
            kind.assign(target, each.source);
            EXPECT_EQ(describe(target), each.after) << kind.name;
        }
    }
}

TEST(NkDtStringAssignment, OfAPlainTextKeepsModeFormatAndAFlagThatWasSet) {
    for (const PlainKind& kind : kPlainKinds) {
        NkDtString target = inMode(NkDtWmNull, "abc");
        target.SetFormat(&kFormat);
        target.SetModified(TRUE);
        kind.assign(target, "abc");
        EXPECT_EQ(describe(target), "'abc' 3/3 defined modified") << kind.name;
        EXPECT_EQ(target.GetWorkingMode(), NkDtWmNull);
        EXPECT_EQ(target.GetFormat(), &kFormat);
    }
}

TEST(NkDtStringAssignment, OfAPlainTextStopsAtTheFirstNul) {
    NkDtString target;
    target = CString("ab\0cd", 5);
    EXPECT_EQ(describe(target), "'ab' 2/2 defined modified");
    target = Wide(u"x\0y", 3).get();
    EXPECT_EQ(describe(target), "'x' 1/2 defined modified");
}

TEST(NkDtStringAssignment, OfANull16BitTextEmpties) {
    NkDtString target("abc");
    target = BSTR{nullptr};
    EXPECT_EQ(describe(target), "'' 0/3 defined modified");
}

TEST(NkDtStringAssignment, OfANullPointerIsRefused) {
    const LPCTSTR null = nullptr;
    for (const NkDtWorkingMode mode : kStoredModes) {
        NkDtString target = inMode(mode, "abc");
        const std::string before = describe(target);
        expectError(NkDtErrInitialwert, [&] { target = null; });
        EXPECT_EQ(describe(target), before);
    }
}

TEST(NkDtStringAssignment, OfA16BitTextOutsideOfThePageChangesNothing) {
    NkDtString target("abc");
    expectError(NkDtErrWideZeichen, [&] { target = Wide(u"\u0416").get(); });
    EXPECT_EQ(describe(target), "'abc' 3/3 defined");
}

TEST(NkDtStringAssignment, TakesAPartOfItsOwnText) {
    NkDtString text("abcdef");
    text = text.GetValue() + 2;
    EXPECT_EQ(describe(text), "'cdef' 4/6 defined modified");
    text.SetModified(FALSE);
    text = text.GetValue();
    EXPECT_EQ(describe(text), "'cdef' 4/6 defined");
    text = text.GetValue() + 4;
    EXPECT_EQ(describe(text), "'' 0/6 defined modified");

    NkDtString longer("a text that is too long for a pool's block");
    longer = longer.GetValue() + 2;
    EXPECT_EQ(describe(longer), "'text that is too long for a pool's block' 40/42 defined modified");
}

TEST(NkDtStringAssignment, OfAnExpressionOfItselfKeepsTheRoom) {
    NkDtString text("abc", 3, 10);
    text = text + "d";
    EXPECT_EQ(describe(text), "'abcd' 4/10 defined modified");
    text = text.GetnValue(1, 2);
    EXPECT_EQ(describe(text), "'bc' 2/10 defined modified");
    text = text + text;
    EXPECT_EQ(describe(text), "'bcbc' 4/10 defined modified");
}

TEST(NkDtStringAssignment, TakesAPartOfItsOwnTextWhileUndefined) {
    NkDtString text = undefinedWithText(NkDtWmNull, "a text that is too long for a pool's block", 200);
    text = text.GetValue() + 33;
    EXPECT_EQ(describe(text), "'l's block' 9/200 defined modified");
}

TEST(NkDtStringAssignment, OfACharacterMakesATextOfIt) {
    struct Case {
        NkDtString (*target)();
        TCHAR source;
        const char* after;
    };
    constexpr Case cases[] = {
        {[] { return NkDtString("abc"); }, 'a', "'a' 1/3 defined modified"},
        {[] { return NkDtString("a"); }, 'a', "'a' 1/1 defined"},
        {[] { return NkDtString("a"); }, 'b', "'b' 1/1 defined modified"},
        {[] { return NkDtString(""); }, 'b', "'b' 1/1 defined modified"},
        {[] { return NkDtString("", 0, 9); }, 'b', "'b' 1/9 defined modified"},
        {[] { return NkDtString(NkDtWmNull); }, 'b', "'b' 1/1 defined modified"},
        {[] { return NkDtString("a"); }, '\0', "'\\0' 1/1 defined modified"},
        {[] { return NkDtString(""); }, '\0', "'\\0' 1/1 defined modified"},
        {[] { return NkDtString("", 1, 0); }, '\0', "'\\0' 1/1 defined"},
        {[] { return NkDtString(NkDtWmMissing); }, '\0', "'\\0' 1/1 defined modified"},
    };
    for (const Case& each : cases) {
        NkDtString target = each.target();
        target = each.source;
        EXPECT_EQ(describe(target), each.after);
    }
}

// --- Where errors come from ---------------------------------------------------------------------

TEST(NkDtString, NamesTheOriginsOfItsErrors) {
    static const NkDtString text("abc");
    static NkDtString target("abc");
    static const NkDtString missing(NkDtWmMissing);
    static char buffer[3];
    constexpr const char* record = ".\\Imp\\dtstrini.cc";
    constexpr const char* construct = ".\\dtstring.cc";
    constexpr const char* functions = ".\\dtstrfkt.cc";
    constexpr const char* operators = ".\\dtstrope.cc";
    expectOrigins({
        {"bad length", [] { const NkDtString made("abc", 4, 0); }, NkDtErrInitiallaenge, record,
         "NkDtString_Imp", "NkDtString_Imp( LPCTSTR,INT,INT)"},
        {"null text", [] { const NkDtString made(LPCTSTR{nullptr}); }, NkDtErrInitialwert, record,
         "NkDtString_Imp", "NkDtString_Imp( LPCTSTR,INT,INT)"},
        {"wide text", [] { const NkDtString made(Wide(u"\u0416").get()); }, NkDtErrWideZeichen, construct,
         "NkDtString", "NkDtString(BSTR&)"},
        {"GetValue", [] { missing.GetValue(); }, NkDtErrUndefiniert, functions, "NkDtString", "GetValue()"},
        {"GetValue into a buffer", [] { missing.GetValue(buffer, 3); }, NkDtErrUndefiniert, functions,
         "NkDtString", "GetValue(LPTSTR,INT)"},
        {"a small buffer", [] { text.GetValue(buffer, 3); }, NkDtErrPuffer, functions, "NkDtString",
         "GetValue(LPTSTR,INT)"},
        {"GetnValue of a missing text", [] { missing.GetnValue(0, 0); }, NkDtErrUndefiniert, functions,
         "NkDtString", "GetnValue(INT,INT)"},
        {"GetnValue outside", [] { text.GetnValue(3, 2); }, NkDtErrStringindex, functions, "NkDtString",
         "GetnValue(INT,INT)"},
        {"SetAt outside", [] { target.SetAt(3, 'x'); }, NkDtErrStringindex, functions, "NkDtString",
         "SetAt(INT,TCHAR)"},
        {"SetAt of NUL", [] { target.SetAt(0, '\0'); }, NkDtErrInitialwert, functions, "NkDtString",
         "SetAt(INT,TCHAR)"},
        {"Assign", [] { target.Assign(NkDtLong(5)); }, NkDtErrBasistypen, functions, "NkDtString",
         "Assign(NkDtBasis&"},
        {"index", [] { static_cast<void>(text[3]); }, NkDtErrStringindex, operators, "NkDtString",
         "operator[](INT)"},
        {"assignment of null", [] { target = LPCTSTR{nullptr}; }, NkDtErrInitialwert, operators, "NkDtString",
         "operator=(LPCTSTR)"},
        {"assignment of a wide text", [] { target = Wide(u"\u0416").get(); }, NkDtErrWideZeichen, operators,
         "NkDtString", "operator=(BSTR)"},
    });
}

}  // namespace
