// What is a text's own in the conversions other than SQL.

#include <nkdt/NkDtString.h>
#include <nkfo/NkFormat.h>
#include <nkfw/Recordset.h>

#include <string>

#include <gtest/gtest.h>

#include "TextTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;

constexpr INT kAuto = NkDtStrLenAuto;
const NkFormat kFormat(0, kulNkFoValidAll, FormatAuffuellenNicht, ' ');

NkDtString withNul() {
    return valuetest::withNul({"a\0\xE4", 3});
}

// --- User-interface text --------------------------------------------------------------------------

TEST(NkDtStringOFL, ShowsTheTextUpToTheFirstNul) {
    EXPECT_EQ(withNul().ConvToOFL(), CString("a"));
    EXPECT_EQ(NkDtString("", 3, 0).ConvToOFL(), CString(""));
}

TEST(NkDtStringOFL, OfAllFillCharactersIsADefinedEmptyText) {
    const NkFormat filled(5, kulNkFoValidAll, FormatAuffuellenAmAnfang, '*');
    NkDtString text(NkDtWmNull);
    text.SetFromOFL("*****", &filled);
    EXPECT_EQ(describe(text), "'' 0/0 defined modified");
    NkDtString filledBefore("abc");
    filledBefore.SetFromOFL("*****", &filled);
    EXPECT_EQ(describe(filledBefore), "'' 0/3 defined modified");
}

TEST(NkDtStringOFL, ReadsAPartOfItsOwnText) {
    NkDtString text("abcdef");
    text.SetFromOFL(text.GetValue() + 3);
    EXPECT_EQ(describe(text), "'def' 3/6 defined modified");
}

TEST(NkDtStringOFL, KeepsBlanksAsTheyAre) {
    NkDtString text("x");
    text.SetFromOFL("  a ");
    EXPECT_EQ(describe(text), "'  a ' 4/4 defined modified");
    EXPECT_EQ(text.ConvToOFL(), CString("  a "));
}

// --- External text --------------------------------------------------------------------------------

TEST(NkDtStringExtern, IsACopyOfTheTextWithItsState) {
    NkDtString text = withNul();
    text.SetWorkingMode(NkDtWmNull);
    text.SetModified(TRUE);
    text.SetFormat(&kFormat);
    BOOL defined = FALSE;
    USHORT version = 0;
    const NkDtString external = text.ConvToExtern(defined, version);
    EXPECT_EQ(describe(external), "'a\\0\xE4' 3/3 defined modified");
    EXPECT_EQ(external.GetWorkingMode(), NkDtWmNull);
    EXPECT_EQ(external.GetFormat(), nullptr);
    const NkDtString undefined(NkDtWmNull);
    EXPECT_EQ(describe(undefined.ConvToExtern(defined, version)), "'' 0/0 null");
}

TEST(NkDtStringExtern, KeepsThePreviousTextWhenTheExternalOneIsUndefined) {
    NkDtString text("abc");
    const NkDtString undefined(NkDtWmNull);
    expectError(NkDtErrDefiniertheit, [&] { text.SetFromExtern(&undefined, TRUE, 100); });
    EXPECT_EQ(describe(text), "'abc' 3/3 defined");
}

TEST(NkDtStringExtern, ReadsItself) {
    NkDtString text("abc");
    text.SetFromExtern(&text, TRUE, 100);
    EXPECT_EQ(describe(text), "'abc' 3/3 defined");
    NkDtString undefined(NkDtWmNull);
    undefined.SetFromExtern(&undefined, TRUE, 100);
    EXPECT_EQ(describe(undefined), "'' 0/0 defined modified");
}

// --- Recordset ------------------------------------------------------------------------------------

TEST(NkDtStringRecordset, GrowsWhenItMustAndReusesItsBuffer) {
    struct Case {
        LPCTSTR before;
        INT alloc;
        LPCTSTR field;
        const char* after;
    };
    constexpr Case cases[] = {
        {"abc", kAuto, "abcde", "'abcde' 5/5 defined modified"},
        {"abc", 10, "abcde", "'abcde' 5/10 defined modified"},
        {"abc", kAuto, "x", "'x' 1/3 defined modified"},
        {"abc", kAuto, "", "'' 0/3 defined modified"},
        {"abc", kAuto, "abc", "'abc' 3/3 defined"},
        {"", kAuto, "", "'' 0/0 defined"},
    };
    CRecordset rs;
    for (const Case& each : cases) {
        NkDtString text(each.before, kAuto, each.alloc);
        text.SetFromRecordSet(rs, CString(each.field));
        EXPECT_EQ(describe(text), each.after);
    }
}

TEST(NkDtStringRecordset, ReadsAnEmptyFieldAsADefinedText) {
    CRecordset rs;
    NkDtString text(NkDtWmNull);
    text.SetFromRecordSet(rs, CString());
    EXPECT_EQ(describe(text), "'' 0/0 defined modified");
}

TEST(NkDtStringRecordset, TakesAFieldWithANulInsideWithItsLength) {
    struct Case {
        LPCTSTR before;
        INT alloc;
        CString field;
        const char* after;
    };
    const Case cases[] = {
        {"x", kAuto, CString("a\0b", 3), "'a\\0b' 3/3 defined modified"},
        {"x", 10, CString("a\0b", 3), "'a\\0b' 3/10 defined modified"},
        {"abcdef", kAuto, CString("a\0b", 3), "'a\\0b' 3/6 defined modified"},
        {"x", kAuto, CString("\0b", 2), "'\\0b' 2/2 defined modified"},
        {"x", kAuto, CString("ab\0", 3), "'ab\\0' 3/3 defined modified"},
    };
    CRecordset rs;
    for (const Case& each : cases) {
        NkDtString text(each.before, kAuto, each.alloc);
        text.SetFromRecordSet(rs, each.field);
        EXPECT_EQ(describe(text), each.after);
    }
    NkDtString undefined(NkDtWmNull);
    undefined.SetFromRecordSet(rs, CString("a\0b", 3));
    EXPECT_EQ(describe(undefined), "'a\\0b' 3/3 defined modified");
}

TEST(NkDtStringRecordset, KeepsTheTextThatAFieldEqualsUpToItsFirstNul) {
    CRecordset rs;
    NkDtString text("a", kAuto, 5);
    text.SetFromRecordSet(rs, CString("a\0b", 3));
    EXPECT_EQ(describe(text), "'a' 1/5 defined");
    NkDtString nul = withNul();
    nul.SetFromRecordSet(rs, CString("a"));
    EXPECT_EQ(describe(nul), describe(withNul()));
    NkDtString null(NkDtWmNull);
    null.SetFromRecordSet(rs, CString("\0b", 2));
    EXPECT_EQ(describe(null), "'' 0/0 defined modified");
}

TEST(NkDtStringRecordset, WritesTheTextUpToItsFirstNul) {
    CRecordset rs;
    for (const INT room : {10, 4, 2}) {
        CString field("xxxx");
        field.GetBuffer(room);
        withNul().ConvToRecordSet(rs, field);
        EXPECT_EQ(field.View(), "a");
        EXPECT_FALSE(rs.IsFieldNull(&field));
    }
    CString field("xxxx");
    NkDtString("", 3, 0).ConvToRecordSet(rs, field);
    EXPECT_EQ(field.View(), "");
}

TEST(NkDtStringRecordset, WritesIntoTheFieldsBufferWithoutGrowingIt) {
    struct Case {
        INT room;
        LPCTSTR text;
        LPCTSTR field;
    };
    constexpr Case cases[] = {
        {10, "abc", "abc"}, {4, "abc", "abc"}, {3, "abc", "ab"}, {1, "abc", ""}, {10, "", ""}};
    for (const Case& each : cases) {
        CRecordset rs;
        CString field;
        field.GetBuffer(each.room);
        field.ReleaseBuffer();
        NkDtString(each.text).ConvToRecordSet(rs, field);
        EXPECT_EQ(field, CString(each.field));
        EXPECT_EQ(field.GetAllocLength(), each.room);
        EXPECT_EQ(rs.IsFieldNull(&field), FALSE);
    }
    CRecordset rs;
    CString unbound;
    NkDtString("abc").ConvToRecordSet(rs, unbound);
    EXPECT_EQ(unbound, CString());
}

// --- Archive ----------------------------------------------------------------------------------------

TEST(NkDtStringArchive, HoldsTheDefinednessAndTheTextUpToTheFirstNul) {
    NkDtString text("abc");
    EXPECT_EQ(stored(text), (Bytes{1, 0, 0, 0, 3, 'a', 'b', 'c'}));
    NkDtString nul = withNul();
    EXPECT_EQ(stored(nul), (Bytes{1, 0, 0, 0, 1, 'a'}));
    NkDtString undefined(NkDtWmNull);
    EXPECT_EQ(stored(undefined), (Bytes{0, 0, 0, 0, 0}));
}

TEST(NkDtStringArchive, HoldsNoTextOfAnUndefinedOneThatHoldsCharacters) {
    for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
        NkDtString text = undefinedWithText(mode, "abc");
        const std::string before = describe(text);
        EXPECT_EQ(stored(text), (Bytes{0, 0, 0, 0, 0}));
        EXPECT_EQ(describe(text), before);
    }
}

TEST(NkDtStringArchive, LoadsTheTextByAssignmentOrClears) {
    struct Case {
        LPCTSTR before;
        Bytes bytes;
        const char* after;
    };
    const Case cases[] = {
        {"abc", {1, 0, 0, 0, 3, 'a', 'b', 'c'}, "'abc' 3/9 defined"},
        {"abc", {1, 0, 0, 0, 2, 'x', 'y'}, "'xy' 2/9 defined modified"},
        {"abc", {1, 0, 0, 0, 0}, "'' 0/9 defined modified"},
        {"abc", {0, 0, 0, 0, 0}, "'' 0/0 null modified"},
        {"abc", {0, 0, 0, 0, 2, 'x', 'y'}, "'' 0/0 null modified"},
        {"abc", {1, 0, 0, 0, 3, 'a', 0, 'c'}, "'a' 1/9 defined modified"},
    };
    for (const Case& each : cases) {
        NkDtString text(each.before, kAuto, 9);
        text.SetWorkingMode(NkDtWmNull);
        load(text, each.bytes);
        EXPECT_EQ(describe(text), each.after);
    }
}

TEST(NkDtStringArchive, BringsBackTextsOfEveryLengthForm) {
    for (const std::size_t length : {0U, 1U, 254U, 255U, 256U, 65533U, 65534U, 65535U, 70000U}) {
        const std::string content(length, '\xE4');
        NkDtString text(content.c_str());
        NkDtString back;
        load(back, stored(text));
        EXPECT_EQ(std::string(back.GetValue()), content) << length;
        EXPECT_EQ(back.GetLength(), static_cast<INT>(length));
    }
}

}  // namespace
