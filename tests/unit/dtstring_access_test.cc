// How a text is read and cleared.

#include <nkdt/NkDtString.h>
#include <nkfo/NkFormat.h>
#include <nkfw/BStr.h>

#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "TextTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;

constexpr INT kAuto = NkDtStrLenAuto;
constexpr INT kMaxInt = std::numeric_limits<INT>::max();
const NkFormat kFormat(0, kulNkFoValidAll, FormatAuffuellenNicht, ' ');

// --- Reading ------------------------------------------------------------------------------------

TEST(NkDtStringGetValue, GivesTheTextOrTheEmptyOneOfANull) {
    EXPECT_STREQ(NkDtString("abc").GetValue(), "abc");
    EXPECT_STREQ(NkDtString(NkDtWmNull).GetValue(), "");
    EXPECT_STREQ(NkDtString(NkDtWmDefined).GetValue(), "");
}

TEST(NkDtStringGetValue, RaisesError2ForAMissingText) {
    expectError(NkDtErrUndefiniert, [] { NkDtString(NkDtWmMissing).GetValue(); });
    NkDtString cleared("abc");
    cleared.Clear();
    expectError(NkDtErrUndefiniert, [&] { cleared.GetValue(); });
}

TEST(NkDtStringGetValue, GivesTheStoredTextOfANull) {
    EXPECT_STREQ(undefinedWithText(NkDtWmNull, "abc").GetValue(), "abc");
}

TEST(NkDtStringGetValue, CopiesTheTextIntoABufferThatHasRoomForItsTerminator) {
    struct Case {
        LPCTSTR text;
        INT size;
        bool fits;
    };
    constexpr Case cases[] = {{"abc", 4, true},   {"abc", 3, false}, {"abc", 100, true}, {"abc", 0, false},
                              {"abc", -1, false}, {"", 1, true},     {"", 0, false}};
    for (const Case& each : cases) {
        SCOPED_TRACE(::testing::Message() << each.text << ", " << each.size);
        char buffer[100] = "unchanged";
        const NkDtString text(each.text);
        if (each.fits) {
            EXPECT_EQ(text.GetValue(buffer, each.size), buffer);
            EXPECT_STREQ(buffer, each.text);
        } else {
            const ErrorPtr error = expectError(NkDtErrPuffer, [&] { text.GetValue(buffer, each.size); });
            EXPECT_STREQ(error->GetErrorText(), "Puffer zu klein");
            EXPECT_STREQ(buffer, "unchanged");
        }
    }
}

TEST(NkDtStringGetValue, CopiesTheEmptyTextOfANull) {
    char buffer[2] = "x";
    NkDtString(NkDtWmNull).GetValue(buffer, 1);
    EXPECT_STREQ(buffer, "");
    expectError(NkDtErrPuffer, [&] { NkDtString(NkDtWmNull).GetValue(buffer, 0); });
}

TEST(NkDtStringGetValue, CopiesNulCharactersInside) {
    NkDtString text("ab");
    text += '\0';
    text += 'c';
    char buffer[5] = "xxxx";
    text.GetValue(buffer, 5);
    EXPECT_EQ(std::string(buffer, 5), std::string("ab\0c\0", 5));
}

TEST(NkDtStringGetValue, ChecksForMissingBeforeTheBufferAndTheBufferBeforeItsSize) {
    char buffer[2];
    const NkDtString missing(NkDtWmMissing);
    expectError(NkDtErrUndefiniert, [&] { missing.GetValue(nullptr, 0); });
    expectError(NkDtErrUndefiniert, [&] { missing.GetValue(buffer, 0); });
    expectError(NkDtErrInitialwert, [&] { NkDtString("abc").GetValue(nullptr, 0); });
    expectError(NkDtErrInitialwert, [&] { NkDtString("abc").GetValue(nullptr, 10); });
}

TEST(NkDtStringGetnValue, GivesAPartAsADefinedTextOfItsOwn) {
    struct Case {
        LPCTSTR text;
        INT pos, count;
        const char* part;
    };
    constexpr Case cases[] = {
        {"abcd", 1, 2, "'bc' 2/2 defined"}, {"abcd", 0, 4, "'abcd' 4/4 defined"},
        {"abcd", 0, 0, "'' 0/0 defined"},   {"abcd", 4, 0, "'' 0/0 defined"},
        {"abcd", 3, 1, "'d' 1/1 defined"},  {"", 0, 0, "'' 0/0 defined"},
    };
    for (const Case& each : cases)
        EXPECT_EQ(describe(NkDtString(each.text).GetnValue(each.pos, each.count)), each.part);
}

TEST(NkDtStringGetnValue, RaisesError3OutsideOfTheText) {
    struct Case {
        INT pos, count;
    };
    constexpr Case cases[] = {{3, 2},
                              {4, 1},
                              {5, 0},
                              {-1, 1},
                              {0, -1},
                              {0, 5},
                              {1, kMaxInt},
                              {kMaxInt, 1},
                              {kMaxInt, kMaxInt},
                              {-kMaxInt, kMaxInt}};
    const NkDtString text("abcd");
    for (const Case& each : cases) {
        SCOPED_TRACE(::testing::Message() << each.pos << ", " << each.count);
        const ErrorPtr error = expectError(NkDtErrStringindex, [&] { text.GetnValue(each.pos, each.count); });
        EXPECT_EQ(error->GetErrorText(), cp1252("Ungültiger Stringindex"));
    }
}

TEST(NkDtStringGetnValue, RaisesError2ForAMissingTextWhateverThePosition) {
    expectError(NkDtErrUndefiniert, [] { NkDtString(NkDtWmMissing).GetnValue(0, 0); });
    expectError(NkDtErrUndefiniert, [] { NkDtString(NkDtWmMissing).GetnValue(-1, 7); });
}

TEST(NkDtStringGetnValue, GivesADefinedEmptyTextForANullWhateverThePosition) {
    EXPECT_EQ(describe(NkDtString(NkDtWmNull).GetnValue(0, 0)), "'' 0/0 defined");
    EXPECT_EQ(describe(NkDtString(NkDtWmNull).GetnValue(3, 2)), "'' 0/0 defined");
    EXPECT_EQ(describe(NkDtString(NkDtWmNull).GetnValue(-1, -1)), "'' 0/0 defined");
}

TEST(NkDtStringGetnValue, AsksForThePositionInATextUndefinedInModeTwo) {
    EXPECT_EQ(describe(undefinedInModeTwo().GetnValue(0, 0)), "'' 0/0 defined");
    expectError(NkDtErrStringindex, [] { undefinedInModeTwo().GetnValue(0, 1); });
    NkDtString text = undefinedWithText(NkDtWmNull, "abc");
    const DefaultMode scope(NkDtWmDefined);
    text.SetWorkingMode(NkDtWmDefault);  // leaves it undefined
    EXPECT_EQ(describe(text.GetnValue(1, 2)), "'bc' 2/2 defined");
    expectError(NkDtErrStringindex, [&] { text.GetnValue(1, 3); });
}

TEST(NkDtStringGetnValue, GivesAPartInTheDefaultModeWithoutFormatAndFlag) {
    NkDtString text = inMode(NkDtWmNull, "abcd");
    text.SetModified(TRUE);
    text.SetFormat(&kFormat);
    const NkDtString part = text.GetnValue(0, 2);
    EXPECT_EQ(part.GetWorkingMode(), NkDtWmMissing);
    EXPECT_EQ(part.GetFormat(), nullptr);
    EXPECT_EQ(stateOf(part), "defined");
}

TEST(NkDtStringGetnValue, ReplacesWhatFailsWhileThePartIsBuilt) {
    NkDtString text("ab");
    text += '\0';
    text += 'c';
    EXPECT_EQ(describe(text.GetnValue(0, 2)), "'ab' 2/2 defined");
    expectReplaced(NkDtErrInitiallaenge, [&] { text.GetnValue(0, 4); });
}

TEST(NkDtStringIndex, GivesTheCharacterAtAPositionInTheText) {
    const NkDtString text("abc");
    EXPECT_EQ(text[0], 'a');
    EXPECT_EQ(text[2], 'c');
    NkDtString null = undefinedWithText(NkDtWmMissing, "abc");
    EXPECT_EQ(null[1], 'b');  // the definedness is not asked
}

TEST(NkDtStringIndex, RaisesError3OutsideOfTheText) {
    const NkDtString text("abc", 3, 10);
    for (const INT index : {-1, 3, 4, kMaxInt, -kMaxInt - 1})
        expectError(NkDtErrStringindex, [&] { static_cast<void>(text[index]); });
    for (const NkDtWorkingMode mode : kStoredModes)
        expectError(NkDtErrStringindex, [&] { static_cast<void>(NkDtString(mode)[0]); });
}

TEST(NkDtStringSetAt, ReplacesACharacterAndIsModifiedByADifferentOneOnly) {
    NkDtString text("abc");
    text.SetAt(1, 'b');
    EXPECT_EQ(describe(text), "'abc' 3/3 defined");
    text.SetAt(2, 'X');
    EXPECT_EQ(describe(text), "'abX' 3/3 defined modified");
    text.SetAt(2, 'X');
    EXPECT_EQ(describe(text), "'abX' 3/3 defined modified");
}

TEST(NkDtStringSetAt, LeavesTheDefinednessAlone) {
    NkDtString text = undefinedWithText(NkDtWmNull, "abc");
    text.SetAt(0, 'X');
    EXPECT_EQ(describe(text), "'Xbc' 3/3 null modified");
}

TEST(NkDtStringSetAt, ReplacesANulCharacterInsideTheLength) {
    NkDtString text("", 2, 0);
    text.SetAt(0, 'a');
    EXPECT_EQ(describe(text), "'a\\0' 2/2 defined modified");
}

TEST(NkDtStringSetAt, RefusesAPositionOutsideOfTheTextBeforeItRefusesNul) {
    NkDtString text("abc");
    for (const INT index : {-1, 3, kMaxInt}) {
        expectError(NkDtErrStringindex, [&] { text.SetAt(index, 'x'); });
        expectError(NkDtErrStringindex, [&] { text.SetAt(index, '\0'); });
    }
    expectError(NkDtErrInitialwert, [&] { text.SetAt(1, '\0'); });
    EXPECT_EQ(describe(text), "'abc' 3/3 defined");
    NkDtString undefined;
    expectError(NkDtErrStringindex, [&] { undefined.SetAt(0, 'x'); });
}

TEST(NkDtString, ConvertsToItsTextWithoutAskingForTheDefinedness) {
    EXPECT_STREQ(static_cast<LPCTSTR>(NkDtString("abc")), "abc");
    for (const NkDtWorkingMode mode : kStoredModes) {
        const NkDtString undefined(mode);
        EXPECT_STREQ(static_cast<LPCTSTR>(undefined), "");
        EXPECT_EQ(undefined.GetLength(), 0);
        EXPECT_EQ(undefined.GetAllocLength(), 0);
        EXPECT_EQ(static_cast<CString>(undefined), CString());
    }
}

TEST(NkDtString, ConvertsToAFrameworkTextUpToTheFirstNul) {
    NkDtString text("ab");
    EXPECT_EQ(static_cast<CString>(text), CString("ab"));
    text += '\0';
    text += 'c';
    EXPECT_EQ(static_cast<CString>(text).GetLength(), 2);
}

TEST(NkDtString, ConvertsToANew16BitTextOfTheCallers) {
    NkDtString text(cp1252("Fähre 5 €").c_str());
    text += '\0';
    text += 'c';
    const BSTR wide = text;
    EXPECT_EQ(std::u16string(wide, SysStringLen(wide)), u"Fähre 5 €");
    SysFreeString(wide);

    const BSTR empty = NkDtString(NkDtWmNull);
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(SysStringLen(empty), 0U);
    SysFreeString(empty);
}

// --- Clear --------------------------------------------------------------------------------------

TEST(NkDtStringClear, GivesTheBufferBackAndRaisesTheFlagForWhatItChanges) {
    struct Case {
        NkDtWorkingMode mode;
        LPCTSTR text;
        const char* after;
    };
    constexpr Case cases[] = {
        {NkDtWmMissing, "abc", "'' 0/0 missing modified"}, {NkDtWmNull, "abc", "'' 0/0 null modified"},
        {NkDtWmDefined, "abc", "'' 0/0 defined modified"}, {NkDtWmMissing, "", "'' 0/0 missing modified"},
        {NkDtWmNull, "", "'' 0/0 null modified"},          {NkDtWmDefined, "", "'' 0/0 defined"},
    };
    for (const Case& each : cases) {
        NkDtString text(each.text, kAuto, 9);
        text.SetWorkingMode(each.mode);
        text.Clear();
        EXPECT_EQ(describe(text), each.after);
    }
}

TEST(NkDtStringClear, EmptiesWhatAnUndefinedTextStores) {
    NkDtString text = undefinedWithText(NkDtWmNull, "abc");
    text.Clear();
    EXPECT_EQ(describe(text), "'' 0/0 null modified");
}

TEST(NkDtStringClear, OfALengthOfNulCharactersRaisesTheFlagInModeTwo) {
    NkDtString text("", 3, 0);
    text.SetWorkingMode(NkDtWmDefined);
    text.Clear();
    EXPECT_EQ(describe(text), "'' 0/0 defined modified");
}

}  // namespace
