// SQL and code pages of texts.

#include <nkcp/CodePage.h>
#include <nkdt/NkDtString.h>
#include <nkdt/NkDtUtil.h>
#include <nkfo/NkFormat.h>

#include <cstring>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "TextTesting.h"
#include "ValueTesting.h"
#include "support/CodePages.h"

namespace {

using namespace valuetest;
using nktest::CodePages;

constexpr INT kAuto = NkDtStrLenAuto;
constexpr UINT kPages[] = {0, 1252, 850, 437, 1250};
const NkFormat kFormat(0, kulNkFoValidAll, FormatAuffuellenNicht, ' ');

NkDtString withNul() {
    return valuetest::withNul({"a\0\xE4", 3});
}

// Every character but NUL.
std::string allBytes() {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    return bytes;
}

std::string converted(std::string text, NkDtCodepageWandlung direction) {
    EXPECT_TRUE(NkDtConvertCodePageFkt(text.data(), direction));
    return text;
}

std::string quoted(const std::string& text) {
    std::string literal = "'";
    for (const char ch : text) {
        literal += ch;
        if (ch == '\'') literal += ch;
    }
    return literal + "'";
}

// --- SetFromSQL -----------------------------------------------------------------------------------

TEST(NkDtStringSetFromSQL, TakesTheFirstCharactersAndGrowsWhenItMust) {
    struct Case {
        LPCTSTR before;
        INT alloc;
        LPCTSTR column;
        INT length;
        const char* after;
    };
    constexpr Case cases[] = {
        {"abc", kAuto, "abcde", 5, "'abcde' 5/5 defined modified"},
        {"abc", kAuto, "abcde", 3, "'abc' 3/3 defined"},
        {"abc", kAuto, "xyz", 2, "'xy' 2/3 defined modified"},
        {"abc", 10, "abcde", 5, "'abcde' 5/10 defined modified"},
        {"abc", 10, "abcde", 1, "'a' 1/10 defined modified"},
        {"", kAuto, "x", 1, "'x' 1/1 defined modified"},
        {"abc", kAuto, "ABC", 3, "'ABC' 3/3 defined modified"},
        {"abc", kAuto, "'a'", 3, "''a'' 3/3 defined modified"},  // quotes are characters like any other
    };
    for (const Case& each : cases) {
        NkDtString text(each.before, kAuto, each.alloc);
        text.SetFromSQL(each.column, each.length, 1252);
        EXPECT_EQ(describe(text), each.after);
    }
}

TEST(NkDtStringSetFromSQL, MakesAnUndefinedTextDefinedAndModified) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        NkDtString text(mode);
        text.SetFormat(&kFormat);
        text.SetFromSQL("ab", 2);
        EXPECT_EQ(describe(text), "'ab' 2/2 defined modified");
        EXPECT_EQ(text.GetWorkingMode(), mode);
        EXPECT_EQ(text.GetFormat(), &kFormat);
    }
}

TEST(NkDtStringSetFromSQL, IsNotModifiedByTheDefinednessAlone) {
    for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
        NkDtString text = undefinedWithText(mode, "abc");
        text.SetFromSQL("abc", 3);
        EXPECT_EQ(describe(text), "'abc' 3/3 defined");
    }
}

TEST(NkDtStringSetFromSQL, KeepsAFlagThatWasSet) {
    NkDtString text("ab");
    text.SetModified(TRUE);
    text.SetFromSQL("ab", 2);
    EXPECT_TRUE(text.IsModified());
}

TEST(NkDtStringSetFromSQL, RefusesALengthThatTheColumnDoesNotHave) {
    struct Case {
        LPCTSTR column;
        INT length;
    };
    constexpr Case cases[] = {{"abc", 0},
                              {"abc", -1},
                              {"abc", 4},
                              {"", 0},
                              {"", 1},
                              {"abc", kAuto},
                              {"abc", std::numeric_limits<INT>::max()}};
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (const Case& each : cases) {
            NkDtString text(mode);
            const std::string before = describe(text);
            expectError(NkDtErrInitiallaenge, [&] { text.SetFromSQL(each.column, each.length, 850); });
            EXPECT_EQ(describe(text), before);
        }
    }
}

TEST(NkDtStringSetFromSQL, RefusesANullColumnBeforeItLooksAtTheLength) {
    NkDtString text("abc");
    expectError(NkDtErrInitialwert, [&] { text.SetFromSQL(nullptr, 0); });
    expectError(NkDtErrInitialwert, [&] { text.SetFromSQL(nullptr, 3); });
    EXPECT_EQ(describe(text), "'abc' 3/3 defined");
}

TEST(NkDtStringSetFromSQL, LooksAtNoMoreCharactersThanItTakes) {
    const std::unique_ptr<char[]> unterminated(new char[3]{'a', 'b', 'c'});
    NkDtString text;
    text.SetFromSQL(unterminated.get(), 3);
    EXPECT_STREQ(text, "abc");
}

TEST(NkDtStringSetFromSQL, ConvertsFromThePageOfTheColumn) {
    const std::string bytes = allBytes();
    struct Case {
        UINT page;
        std::string expected;
    };
    const Case cases[] = {{0, bytes},
                          {1252, bytes},
                          {1250, bytes},
                          {850, converted(bytes, NkDtCp850To1252)},
                          {437, converted(bytes, NkDtCp437To1252)}};
    for (const Case& each : cases) {
        NkDtString text;
        text.SetFromSQL(bytes.c_str(), static_cast<INT>(bytes.size()), each.page);
        EXPECT_EQ(std::string(text.GetValue()), each.expected) << each.page;
    }
    NkDtString text;
    text.SetFromSQL("M\x81ller", 6, 850);
    EXPECT_STREQ(text, "M\xFCller");
}

TEST(NkDtStringSetFromSQL, ConvertsNothingWithoutAPage) {
    NkDtString text;
    text.SetFromSQL("M\x81ller", 6);
    EXPECT_STREQ(text, "M\x81ller");
}

TEST(NkDtStringSetFromSQL, DecidesOnTheFlagByTheFinalText) {
    NkDtString same("\xFC");
    same.SetFromSQL("\x81", 1, 850);
    EXPECT_EQ(describe(same), "'\xFC' 1/1 defined");
    NkDtString different("\x81");
    different.SetFromSQL("\x81", 1, 850);
    EXPECT_EQ(describe(different), "'\xFC' 1/1 defined modified");
}

TEST(NkDtStringSetFromSQL, TakesAPartOfItsOwnText) {
    NkDtString text("abcdef");
    text.SetFromSQL(text.GetValue() + 2, 3);
    EXPECT_EQ(describe(text), "'cde' 3/6 defined modified");
}

// The pages are asked for in a fixed order: 850, the system's OEM page, 437. With an ANSI page without a
// table the system's own direction fails, so that the order shows.
TEST(NkDtStringSetFromSQL, AsksFor850ThenForTheSystemsPageThenFor437) {
    NkDtString text("x");
    {
        const CodePages pages(1250, 850);
        text.SetFromSQL("\x81", 1, 850);
        EXPECT_STREQ(text, "\xFC");
        text = "x";
        text.SetFromSQL("\x81", 1, 437);
        EXPECT_STREQ(text, "\xFC");
    }
    text = "x";
    {
        const CodePages pages(1250, 437);
        text.SetFromSQL("\x81", 1, 850);
        EXPECT_STREQ(text, "\xFC");
        text = "x";
        expectReplaced(NkDtErrCodepage, [&] { text.SetFromSQL("\x81", 1, 437); });
    }
    EXPECT_STREQ(text, "x");
    const CodePages pages(1252, 437);
    text.SetFromSQL("\x81", 1, 437);
    EXPECT_STREQ(text, "\xFC");
}

TEST(NkDtStringSetFromSQL, ChangesNothingWhenTheConversionFails) {
    const CodePages pages(1252, 1250);
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (const bool defined : {false, true}) {
            NkDtString text(mode);
            if (defined) text = "abc";
            text.SetModified(FALSE);
            const std::string before = describe(text);
            const ErrorPtr error =
                expectReplaced(NkDtErrCodepage, [&] { text.SetFromSQL("a longer one", 12, 1250); });
            EXPECT_EQ(error->GetCauseText(), cp1252("Codepagewandlung nicht möglich"));
            EXPECT_EQ(describe(text), before);
        }
    }
}

// --- ConvToSQL ------------------------------------------------------------------------------------

TEST(NkDtStringConvToSQL, EnclosesTheTextAndDoublesApostrophes) {
    struct Case {
        LPCTSTR text;
        const char* literal;
    };
    constexpr Case cases[] = {
        {"abc", "'abc'"},        {"", "''"},         {"It's", "'It''s'"},   {"O'Neil", "'O''Neil'"},
        {"'", "''''"},           {"''", "''''''"},   {"'a", "'''a'"},       {"a'", "'a'''"},
        {"'a'b'", "'''a''b'''"}, {"NULL", "'NULL'"}, {"a;--\\", "'a;--\\'"}};
    for (const Case& each : cases) {
        for (const UINT page : {0U, 1252U, 850U, 437U})
            EXPECT_STREQ(NkDtString(each.text).ConvToSQL(page), each.literal) << page;
        EXPECT_STREQ(NkDtString(each.text).ConvToSQL(), each.literal);
    }
}

TEST(NkDtStringConvToSQL, GivesNullWithoutQuotesForAnUndefinedText) {
    NkDtString undefinedInModeTwo(NkDtWmDefined);
    undefinedInModeTwo = static_cast<const NkDtString&>(NkDtString(NkDtWmNull));
    for (const UINT page : kPages) {
        EXPECT_STREQ(NkDtString(NkDtWmMissing).ConvToSQL(page), "NULL");
        EXPECT_STREQ(NkDtString(NkDtWmNull).ConvToSQL(page), "NULL");
        EXPECT_STREQ(undefinedInModeTwo.ConvToSQL(page), "NULL");
    }
    EXPECT_STREQ(NkDtString(NkDtWmDefined).ConvToSQL(), "''");
}

TEST(NkDtStringConvToSQL, GivesADefinedTextInTheDefaultMode) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        NkDtString text(NkDtWmNull);
        const NkDtString undefined(NkDtWmNull);
        text = "abc";
        text.SetFormat(&kFormat);
        const DefaultMode scope(mode);
        for (const NkDtString& literal : {text.ConvToSQL(), undefined.ConvToSQL(), text.ConvToSQL(850)}) {
            EXPECT_EQ(stateOf(literal), "defined");
            EXPECT_EQ(literal.GetWorkingMode(), mode);
            EXPECT_EQ(literal.GetFormat(), nullptr);
        }
    }
}

TEST(NkDtStringConvToSQL, ConvertsToThePageOfTheDatabase) {
    EXPECT_STREQ(NkDtString("M\xFCller").ConvToSQL(850), "'M\x81ller'");
    EXPECT_STREQ(NkDtString("M\xFCller").ConvToSQL(437), "'M\x81ller'");
    EXPECT_STREQ(NkDtString("M\xFCller").ConvToSQL(1250), "'M\xFCller'");
}

TEST(NkDtStringConvToSQL, DoublesAnApostropheThatTheConversionMakes) {
    EXPECT_STREQ(NkDtString("\x92").ConvToSQL(0), "'\x92'");
    for (const char* const text : {"\x82", "\x91", "\x92"})
        EXPECT_STREQ(NkDtString(text).ConvToSQL(850), "''''");
    for (const char* const text : {"\x92", "\xB4"})
        EXPECT_STREQ(NkDtString(text).ConvToSQL(437), "''''");
    EXPECT_STREQ(NkDtString("a\x92 OR 1=1 --").ConvToSQL(850), "'a'' OR 1=1 --'");
    const CodePages pages(1252, 437);
    EXPECT_STREQ(NkDtString("\xB4").ConvToSQL(437), "''''");
}

TEST(NkDtStringConvToSQL, CannotBeBrokenOpenByAnyCharacter) {
    const std::string bytes = allBytes();
    const NkDtString text(bytes.c_str());
    EXPECT_EQ(std::string(text.ConvToSQL().GetValue()), quoted(bytes));
    EXPECT_EQ(std::string(text.ConvToSQL(850).GetValue()), quoted(converted(bytes, NkDtCp1252To850)));
    EXPECT_EQ(std::string(text.ConvToSQL(437).GetValue()), quoted(converted(bytes, NkDtCp1252To437)));
    const CodePages pages(1252, 437);
    EXPECT_EQ(std::string(text.ConvToSQL(437).GetValue()), quoted(converted(bytes, NkDtCpAnsiToOem)));
}

TEST(NkDtStringConvToSQL, StopsAtTheFirstNul) {
    EXPECT_EQ(describe(withNul().ConvToSQL()), "''a'' 3/3 defined");
    EXPECT_EQ(bytesOf(withNul().ConvToSQL(850)), "'a'");
    EXPECT_EQ(bytesOf(NkDtString("", 3, 0).ConvToSQL()), "''");
}

TEST(NkDtStringConvToSQL, LeavesTheTextAlone) {
    const NkDtString text("M\xFCller's", kAuto, 30);
    static_cast<void>(text.ConvToSQL(850));
    EXPECT_EQ(describe(text), "'M\xFCller's' 8/30 defined");
}

TEST(NkDtStringConvToSQL, AsksFor850ThenForTheSystemsPageThenFor437) {
    const NkDtString text("\xFC");
    const NkDtString undefined(NkDtWmNull);
    {
        const CodePages pages(1250, 850);
        EXPECT_STREQ(text.ConvToSQL(850), "'\x81'");
        EXPECT_STREQ(text.ConvToSQL(437), "'\x81'");
    }
    const CodePages pages(1250, 437);
    EXPECT_STREQ(text.ConvToSQL(850), "'\x81'");
    expectReplaced(NkDtErrCodepage, [&] { static_cast<void>(text.ConvToSQL(437)); });
    expectReplaced(NkDtErrCodepage, [&] { static_cast<void>(undefined.ConvToSQL(437)); });
}

TEST(NkDtStringConvToSQL, ComesBackThroughSetFromSQL) {
    for (const UINT page : {1252U, 850U, 437U}) {
        const NkDtString literal = NkDtString("M\xFCller & Co").ConvToSQL(page);
        NkDtString back;
        back.SetFromSQL(literal.GetValue() + 1, literal.GetLength() - 2, page);
        EXPECT_STREQ(back, "M\xFCller & Co") << page;
    }
}

// --- ConvertCodePage --------------------------------------------------------------------------------

TEST(NkDtStringConvertCodePage, ConvertsInPlaceInEachDirection) {
    const std::string bytes = allBytes();
    for (const NkDtCodepageWandlung direction : {NkDtCpAnsiToOem, NkDtCpOemToAnsi, NkDtCp1252To437,
                                                 NkDtCp437To1252, NkDtCp1252To850, NkDtCp850To1252}) {
        NkDtString text(bytes.c_str(), kAuto, 300);
        text.ConvertCodePage(direction);
        EXPECT_EQ(std::string(text.GetValue()), converted(bytes, direction)) << direction;
        EXPECT_EQ(text.GetLength(), 255);
        EXPECT_EQ(text.GetAllocLength(), 300);
        EXPECT_EQ(stateOf(text), "defined modified");
    }
}

TEST(NkDtStringConvertCodePage, IsModifiedOnlyWhenTheTextChanges) {
    NkDtString ascii("abc 123");
    ascii.ConvertCodePage(NkDtCp1252To850);
    EXPECT_EQ(stateOf(ascii), "defined");
    NkDtString umlaut("\xE4");
    umlaut.ConvertCodePage(NkDtCp1252To850);
    EXPECT_EQ(describe(umlaut), "'\x84' 1/1 defined modified");
    ascii.SetModified(TRUE);
    ascii.ConvertCodePage(NkDtCp1252To850);
    EXPECT_EQ(stateOf(ascii), "defined modified");
    NkDtString empty("");
    empty.ConvertCodePage(NkDtCp1252To850);
    EXPECT_EQ(describe(empty), "'' 0/0 defined");
}

TEST(NkDtStringConvertCodePage, LeavesAnUndefinedTextAloneWhateverTheDirection) {
    for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
        NkDtString text(mode);
        const std::string before = describe(text);
        text.ConvertCodePage(NkDtCp1252To850);
        text.ConvertCodePage(static_cast<NkDtCodepageWandlung>(7));
        EXPECT_EQ(describe(text), before);
    }
}

TEST(NkDtStringConvertCodePage, RefusesAnUnknownDirectionUnchanged) {
    for (const int direction : {2, -1, 437, 850, 1252, 4370850}) {
        for (LPCTSTR before : {"\xE4", ""}) {
            NkDtString text(before);
            const ErrorPtr error = expectError(
                NkDtErrCodepage, [&] { text.ConvertCodePage(static_cast<NkDtCodepageWandlung>(direction)); });
            EXPECT_EQ(error->GetErrorText(), cp1252("Codepagewandlung nicht möglich"));
            EXPECT_STREQ(text, before);
            EXPECT_EQ(stateOf(text), "defined");
        }
    }
}

TEST(NkDtStringConvertCodePage, RefusesTheSystemsDirectionsWithoutATable) {
    const CodePages pages(1252, 1250);
    NkDtString text("\xE4");
    expectError(NkDtErrCodepage, [&] { text.ConvertCodePage(NkDtCpAnsiToOem); });
    expectError(NkDtErrCodepage, [&] { text.ConvertCodePage(NkDtCpOemToAnsi); });
    EXPECT_EQ(describe(text), "'\xE4' 1/1 defined");
    text.ConvertCodePage(NkDtCp1252To850);
    EXPECT_STREQ(text, "\x84");
}

TEST(NkDtStringConvertCodePage, StopsAtTheFirstNulAndKeepsTheLength) {
    NkDtString text("\xE4");
    text += '\0';
    text += '\xE4';
    text.ConvertCodePage(NkDtCp1252To850);
    EXPECT_EQ(bytesOf(text), "\x84\\0\xE4");
}

TEST(NkDtStringFunctions, NameTheOriginsOfTheirErrors) {
    static NkDtString text("abc");
    const CodePages pages(1252, 1250);
    constexpr const char* module = ".\\dtstrfkt.cc";
    const std::string name = "NkDtString";
    expectOrigins({
        {"length", [] { text.SetFromSQL("abc", 4, 0); }, 6, module, name, "SetFromSQL(LPCTSTR,INT,UINT)"},
        {"null", [] { text.SetFromSQL(nullptr, 4, 0); }, 5, module, name, "SetFromSQL(LPCTSTR,INT,UINT)"},
        {"from a page", [] { text.SetFromSQL("abc", 3, 1250); }, 1, module, name,
         "SetFromSQL(LPCTSTR,INT,UINT)", FALSE, 19},
        {"to a page", [] { static_cast<void>(text.ConvToSQL(1250)); }, 1, module, name,
         "ConvToSQL(UINT)const", FALSE, 19},
        {"in place", [] { text.ConvertCodePage(NkDtCpAnsiToOem); }, 19, module, name,
         "ConvertCodePage(NkDtCodepageWandlung)"},
    });
}

}  // namespace
