// The editing functions of texts: putting together, taking apart, letter case, comparing.

#include <nkdt/NkDtString.h>

#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "TextTesting.h"

namespace {

using namespace valuetest;

constexpr INT kAuto = NkDtStrLenAuto;

/// "a", NUL, "b".
NkDtString withNul() {
    return valuetest::withNul({"a\0b", 3});
}

/// An operation on a text, by what it makes of it.
struct EditCase {
    NkDtString text;
    std::function<void(NkDtString&)> operation;
    std::string after;
};

template <std::size_t count>
void expectEdits(EditCase (&&cases)[count]) {
    for (EditCase& each : cases) {
        SCOPED_TRACE(describe(each.text));
        each.operation(each.text);
        EXPECT_EQ(describe(each.text), each.after);
    }
}

/// The operation raises the error and leaves the text as it was.
void expectRefused(ULONG number, NkDtString text, const std::function<void(NkDtString&)>& operation) {
    const std::string before = describe(text);
    SCOPED_TRACE(before);
    expectError(number, [&] { operation(text); });
    EXPECT_EQ(describe(text), before);
}

// --- Copy ---------------------------------------------------------------------------------------

TEST(NkDtStringCopy, ReplacesEverythingFromThePositionOn) {
    expectEdits({{"abcdef", [](auto& s) { s.Copy("XY", 2); }, "'abXY' 4/6 defined modified"},
                 {"abcdef", [](auto& s) { s.Copy("XY", 0); }, "'XY' 2/6 defined modified"},
                 {"abcdef", [](auto& s) { s.Copy("XY", 6); }, "'abcdefXY' 8/8 defined modified"},
                 {"abcdef", [](auto& s) { s.Copy("UVWXYZ", 3); }, "'abcUVWXYZ' 9/9 defined modified"},
                 {"abcdef", [](auto& s) { s.Copy("", 2); }, "'ab' 2/6 defined modified"},
                 {"", [](auto& s) { s.Copy("", 0); }, "'' 0/0 defined modified"}});
}

TEST(NkDtStringCopy, GrowsOnlyWhenItMustAndExactly) {
    expectEdits({{NkDtString("abc", kAuto, 10), [](auto& s) { s.Copy("1234567", 3); },
                  "'abc1234567' 10/10 defined modified"},
                 {NkDtString("abc", kAuto, 10), [](auto& s) { s.Copy("12345678", 3); },
                  "'abc12345678' 11/11 defined modified"}});
}

TEST(NkDtStringCopy, MakesANullTextDefinedAndCopiesANullText) {
    expectEdits({{null(), [](auto& s) { s.Copy("XY", 0); }, "'XY' 2/2 defined modified"},
                 {"abc", [](auto& s) { s.Copy(null(), 1); }, "'a' 1/3 defined modified"},
                 {undefinedInModeTwo(), [](auto& s) { s.Copy("XY", 0); }, "'XY' 2/2 defined modified"}});
}

TEST(NkDtStringCopy, CopiesByLengthWithNulInside) {
    expectEdits({{"xyz", [](auto& s) { s.Copy(withNul(), 1); }, "'xa\\0b' 4/4 defined modified"},
                 {withNul(), [](auto& s) { s.Copy("Q", 3); }, "'a\\0bQ' 4/4 defined modified"}});
}

TEST(NkDtStringCopy, OfTheTextIntoItself) {
    expectEdits({{"abc", [](auto& s) { s.Copy(s, 0); }, "'abc' 3/3 defined modified"},
                 {"abc", [](auto& s) { s.Copy(s, 1); }, "'aabc' 4/4 defined modified"},
                 {NkDtString("abc", kAuto, 9), [](auto& s) { s.Copy(s, 2); }, "'ababc' 5/9 defined modified"},
                 {"abc", [](auto& s) { s.Copy(s, 3); }, "'abcabc' 6/6 defined modified"}});
}

TEST(NkDtStringCopy, RefusesMissingTextsFirstThenThePosition) {
    expectRefused(NkDtErrUndefiniert, missing(), [](auto& s) { s.Copy("a", 7); });
    expectRefused(NkDtErrUndefiniert, "abc", [](auto& s) { s.Copy(missing(), 7); });
    expectRefused(NkDtErrStringindex, "abc", [](auto& s) { s.Copy("X", 4); });
    expectRefused(NkDtErrStringindex, "abc", [](auto& s) { s.Copy("X", -1); });
    expectRefused(NkDtErrStringindex, null(), [](auto& s) { s.Copy("X", 1); });
}

// --- CopyParts ----------------------------------------------------------------------------------

TEST(NkDtStringCopyParts, OverwritesAndKeepsWhatStandsBehind) {
    expectEdits({{"abcdef", [](auto& s) { s.CopyParts("XY", 2); }, "'abXYef' 6/6 defined modified"},
                 {"abcdef", [](auto& s) { s.CopyParts("XYZ", 5); }, "'abcdeXYZ' 8/8 defined modified"},
                 {"abcdef", [](auto& s) { s.CopyParts("XY", 4); }, "'abcdXY' 6/6 defined modified"},
                 {"abcdef", [](auto& s) { s.CopyParts("XY", 6); }, "'abcdefXY' 8/8 defined modified"},
                 {NkDtString("abc", kAuto, 9), [](auto& s) { s.CopyParts("XYZ", 2); },
                  "'abXYZ' 5/9 defined modified"},
                 {"xyz", [](auto& s) { s.CopyParts(withNul(), 0); }, "'a\\0b' 3/3 defined modified"}});
}

TEST(NkDtStringCopyParts, DoesNothingForAnEmptyText) {
    expectEdits({{"abc", [](auto& s) { s.CopyParts("", 1); }, "'abc' 3/3 defined"},
                 {"abc", [](auto& s) { s.CopyParts(null(), 3); }, "'abc' 3/3 defined"},
                 {null(), [](auto& s) { s.CopyParts("", 0); }, "'' 0/0 null"}});
}

TEST(NkDtStringCopyParts, MakesDefinedOnlyWhenTheTextGetsLonger) {
    expectEdits({{null(), [](auto& s) { s.CopyParts("XY", 0); }, "'XY' 2/2 defined modified"},
                 {undefinedWithText(NkDtWmNull, "abc"), [](auto& s) { s.CopyParts("XY", 1); },
                  "'aXY' 3/3 null modified"},
                 {undefinedWithText(NkDtWmNull, "abc"), [](auto& s) { s.CopyParts("XY", 2); },
                  "'abXY' 4/4 defined modified"}});
}

TEST(NkDtStringCopyParts, OfTheTextIntoItself) {
    expectEdits(
        {{"abc", [](auto& s) { s.CopyParts(s, 0); }, "'abc' 3/3 defined modified"},
         {"abc", [](auto& s) { s.CopyParts(s, 1); }, "'aabc' 4/4 defined modified"},
         {NkDtString("abc", kAuto, 9), [](auto& s) { s.CopyParts(s, 3); }, "'abcabc' 6/9 defined modified"}});
}

TEST(NkDtStringCopyParts, RefusesMissingTextsFirstThenThePositionEvenForAnEmptyText) {
    expectRefused(NkDtErrUndefiniert, missing(), [](auto& s) { s.CopyParts("", 7); });
    expectRefused(NkDtErrUndefiniert, "abc", [](auto& s) { s.CopyParts(missing(), 7); });
    expectRefused(NkDtErrStringindex, "abc", [](auto& s) { s.CopyParts("", 4); });
    expectRefused(NkDtErrStringindex, "abc", [](auto& s) { s.CopyParts("X", -1); });
}

// --- Insert -------------------------------------------------------------------------------------

TEST(NkDtStringInsert, MovesWhatStandsFromThePositionOnToTheRight) {
    expectEdits(
        {{"abcdef", [](auto& s) { s.Insert("XY", 6); }, "'abcdefXY' 8/8 defined modified"},
         {"abcdef", [](auto& s) { s.Insert("XY", 0); }, "'XYabcdef' 8/8 defined modified"},
         {"abcdef", [](auto& s) { s.Insert("XY", 3); }, "'abcXYdef' 8/8 defined modified"},
         {NkDtString("abc", kAuto, 9), [](auto& s) { s.Insert("XY", 1); }, "'aXYbc' 5/9 defined modified"},
         {null(), [](auto& s) { s.Insert("XY", 0); }, "'XY' 2/2 defined modified"},
         {undefinedWithText(NkDtWmNull, "abc"), [](auto& s) { s.Insert("XY", 1); },
          "'aXYbc' 5/5 defined modified"},
         {"xy", [](auto& s) { s.Insert(withNul(), 1); }, "'xa\\0by' 5/5 defined modified"},
         {withNul(), [](auto& s) { s.Insert("Q", 2); }, "'a\\0Qb' 4/4 defined modified"}});
}

TEST(NkDtStringInsert, DoesNothingForAnEmptyText) {
    expectEdits({{"abc", [](auto& s) { s.Insert("", 3); }, "'abc' 3/3 defined"},
                 {"abc", [](auto& s) { s.Insert(null(), 0); }, "'abc' 3/3 defined"},
                 {null(), [](auto& s) { s.Insert("", 0); }, "'' 0/0 null"}});
}

TEST(NkDtStringInsert, OfTheTextIntoItself) {
    for (const INT room : {kAuto, INT{20}}) {
        for (INT pos = 0; pos <= 5; ++pos) {
            NkDtString text("abcde", kAuto, room);
            text.Insert(text, pos);
            const std::string expected = std::string("abcde").insert(static_cast<std::size_t>(pos), "abcde");
            EXPECT_EQ(bytesOf(text), expected);
        }
    }
}

TEST(NkDtStringInsert, RefusesMissingTextsFirstThenThePositionEvenForAnEmptyText) {
    expectRefused(NkDtErrUndefiniert, missing(), [](auto& s) { s.Insert("", 7); });
    expectRefused(NkDtErrUndefiniert, "abc", [](auto& s) { s.Insert(missing(), 7); });
    expectRefused(NkDtErrStringindex, "abc", [](auto& s) { s.Insert("", 4); });
    expectRefused(NkDtErrStringindex, "abcdef", [](auto& s) { s.Insert("XY", 7); });
    expectRefused(NkDtErrStringindex, "abc", [](auto& s) { s.Insert("X", -1); });
}

// --- FillUp -------------------------------------------------------------------------------------

TEST(NkDtStringFillUp, FillsAtTheStartOrAtTheEnd) {
    expectEdits(
        {{"42", [](auto& s) { s.FillUp('0', 5, NkDtStrLeft); }, "'00042' 5/5 defined modified"},
         {"42", [](auto& s) { s.FillUp('*', 5, 0); }, "'42***' 5/5 defined modified"},
         {"42", [](auto& s) { s.FillUp('*', 5, NkDtStrRight); }, "'42***' 5/5 defined modified"},
         {NkDtString("42", kAuto, 4), [](auto& s) { s.FillUp('0', 4, NkDtStrLeft); },
          "'0042' 4/4 defined modified"},
         {NkDtString("42", kAuto, 9), [](auto& s) { s.FillUp('0', 4, NkDtStrLeft); },
          "'0042' 4/9 defined modified"},
         {"", [](auto& s) { s.FillUp('x', 2, NkDtStrLeft); }, "'xx' 2/2 defined modified"},
         {"ab", [](auto& s) { s.FillUp('\0', 4, NkDtStrLeft); }, "'\\0\\0ab' 4/4 defined modified"},
         {withNul(), [](auto& s) { s.FillUp('.', 5, NkDtStrLeft); }, "'..a\\0b' 5/5 defined modified"}});
}

TEST(NkDtStringFillUp, LeavesALongerAMissingAndAnyTextForANegativeLengthAlone) {
    expectEdits(
        {{"123", [](auto& s) { s.FillUp('0', 2, NkDtStrLeft); }, "'123' 3/3 defined"},
         {"123", [](auto& s) { s.FillUp('0', 3, 0); }, "'123' 3/3 defined"},
         {"", [](auto& s) { s.FillUp('0', -1, 0); }, "'' 0/0 defined"},
         {missing(), [](auto& s) { s.FillUp('0', 5, 0); }, "'' 0/0 missing"},
         {undefinedWithText(NkDtWmMissing, "ab"), [](auto& s) { s.FillUp('0', 5, 0); }, "'ab' 2/2 missing"}});
}

TEST(NkDtStringFillUp, FillsANullText) {
    expectEdits({{null(), [](auto& s) { s.FillUp('0', 3, NkDtStrLeft); }, "'000' 3/3 defined modified"},
                 {undefinedWithText(NkDtWmNull, "ab"), [](auto& s) { s.FillUp('0', 3, 0); },
                  "'ab0' 3/3 defined modified"},
                 {undefinedInModeTwo(), [](auto& s) { s.FillUp('0', 3, 0); }, "'000' 3/3 defined modified"}});
}

TEST(NkDtStringFillUp, RefusesALengthThatNoTextCanHave) {
    expectRefused(NkDtErrInitiallaenge, "abc", [](auto& s) { s.FillUp('0', 2147483647, NkDtStrLeft); });
}

// --- Cut ----------------------------------------------------------------------------------------

TEST(NkDtStringCut, KeepsTheFirstCharactersAndTheRoom) {
    expectEdits({{"abc", [](auto& s) { s.Cut(2); }, "'ab' 2/3 defined modified"},
                 {"abc", [](auto& s) { s.Cut(0); }, "'' 0/3 defined modified"},
                 {"abc", [](auto& s) { s.Cut(3); }, "'abc' 3/3 defined"},
                 {"", [](auto& s) { s.Cut(0); }, "'' 0/0 defined"},
                 {withNul(), [](auto& s) { s.Cut(2); }, "'a\\0' 2/3 defined modified"}});
}

TEST(NkDtStringCut, RefusesANegativeLengthAndOneBeyondTheText) {
    expectRefused(NkDtErrStringindex, "abc", [](auto& s) { s.Cut(4); });
    expectRefused(NkDtErrStringindex, "abc", [](auto& s) { s.Cut(-1); });
    expectRefused(NkDtErrStringindex, "", [](auto& s) { s.Cut(1); });
}

TEST(NkDtStringCut, LeavesAnUndefinedTextAlone) {
    expectEdits({{missing(), [](auto& s) { s.Cut(7); }, "'' 0/0 missing"},
                 {null(), [](auto& s) { s.Cut(-1); }, "'' 0/0 null"},
                 {undefinedWithText(NkDtWmNull, "abc"), [](auto& s) { s.Cut(1); }, "'abc' 3/3 null"}});
}

// --- Split --------------------------------------------------------------------------------------

struct Halves {
    NkDtString left{NkDtWmMissing};
    NkDtString right{NkDtWmMissing};
};

std::string split(const NkDtString& text, INT nLen, Halves halves = {}) {
    text.Split(halves.left, halves.right, nLen);
    return describe(halves.left) + ", " + describe(halves.right);
}

TEST(NkDtStringSplit, DividesWithoutRaisingTheModifiedFlags) {
    const NkDtString text("abcdef");
    EXPECT_EQ(split(text, 2), "'ab' 2/2 defined, 'cdef' 4/4 defined");
    EXPECT_EQ(split(text, 6), "'abcdef' 6/6 defined, '' 0/0 missing");
    EXPECT_EQ(describe(text), "'abcdef' 6/6 defined");
}

TEST(NkDtStringSplit, BeforeTheFirstCharacterGivesAnEmptyLeftText) {
    EXPECT_EQ(split("abc", 0), "'' 0/0 defined, 'abc' 3/3 defined");
    EXPECT_EQ(split("", 0), "'' 0/0 defined, '' 0/0 missing");
}

TEST(NkDtStringSplit, KeepsTheRoomOfTheReceivers) {
    EXPECT_EQ(split("abcdef", 2, {NkDtString("x", kAuto, 9), NkDtString("y", kAuto, 8)}),
              "'ab' 2/9 defined, 'cdef' 4/8 defined");
    EXPECT_EQ(split("abcdef", 2, {"x", "y"}), "'ab' 2/2 defined, 'cdef' 4/4 defined");
}

TEST(NkDtStringSplit, LeavesARaisedModifiedFlagRaised) {
    NkDtString left("x");
    left.SetModified(TRUE);
    EXPECT_EQ(split("abc", 1, {left, NkDtString("y")}), "'a' 1/1 defined modified, 'bc' 2/2 defined");
}

TEST(NkDtStringSplit, BeyondTheEndShortensTheLengthOnlyWhenTheLeftTextHasNoRoomForAll) {
    EXPECT_EQ(split("abc", 5, {NkDtString("x", kAuto, 2), null()}), "'abc' 3/3 defined, '' 0/0 null");
    EXPECT_EQ(split("abc", 5, {NkDtString("x", kAuto, 3), null()}), "'abc\\0\\0' 5/5 defined, '' 0/0 null");
    EXPECT_EQ(split("abc", 5, {NkDtString("x", kAuto, 9), null()}), "'abc\\0\\0' 5/9 defined, '' 0/0 null");
    EXPECT_EQ(split("", 2),
              "'\\0\\0' 2/2 defined, '' 0/0 missing");  // room for nothing is room for all of it
}

TEST(NkDtStringSplit, ClearsTheRightTextWhenNothingIsLeftForIt) {
    EXPECT_EQ(split("abc", 3, {"x", "y"}), "'abc' 3/3 defined, '' 0/0 missing modified");
}

TEST(NkDtStringSplit, ClearsBothForAnUndefinedText) {
    EXPECT_EQ(split(missing(), 2, {"x", "y"}), "'' 0/0 missing modified, '' 0/0 missing modified");
    EXPECT_EQ(split(undefinedWithText(NkDtWmNull, "abc"), 2, {null(), "y"}),
              "'' 0/0 null, '' 0/0 missing modified");
}

TEST(NkDtStringSplit, DividesByLengthWithNulInside) {
    EXPECT_EQ(split(withNul(), 1), "'a' 1/1 defined, '\\0b' 2/2 defined");
    EXPECT_EQ(split(withNul(), 2), "'a\\0' 2/2 defined, 'b' 1/1 defined");
}

TEST(NkDtStringSplit, RefusesANegativeLengthBeforeAnythingElse) {
    for (const NkDtString& text : {NkDtString("abc"), missing(), null()}) {
        Halves halves{"x", "y"};
        expectError(NkDtErrStringindex, [&] { text.Split(halves.left, halves.right, -1); });
        EXPECT_EQ(describe(halves.left), "'x' 1/1 defined");
        EXPECT_EQ(describe(halves.right), "'y' 1/1 defined");
    }
}

TEST(NkDtStringSplit, RefusesALengthThatNoTextCanHave) {
    Halves halves{NkDtString("x", kAuto, 9), "y"};
    expectError(NkDtErrInitiallaenge,
                [&] { NkDtString("abc").Split(halves.left, halves.right, 2147483647); });
    EXPECT_EQ(describe(halves.left), "'x' 1/9 defined");
    EXPECT_EQ(describe(halves.right), "'y' 1/1 defined");
}

TEST(NkDtStringSplit, IntoItself) {
    NkDtString text("abcdef");
    NkDtString other;
    text.Split(text, other, 2);
    EXPECT_EQ(describe(text), "'ab' 2/6 defined");
    EXPECT_EQ(describe(other), "'cdef' 4/4 defined");

    text = "abcdef";
    text.Split(other, text, 2);
    EXPECT_EQ(bytesOf(text), "cdef");
    EXPECT_EQ(bytesOf(other), "ab");

    text = "abcdef";
    text.Split(text, text, 2);  // the right part is written last
    EXPECT_EQ(bytesOf(text), "cdef");
}

// --- Trim ---------------------------------------------------------------------------------------

TEST(NkDtStringTrim, RemovesBlanksAtTheStartAtTheEndOrAtBoth) {
    expectEdits({{"  a  ", [](auto& s) { s.Trim(NkDtStrLeft); }, "'a  ' 3/5 defined modified"},
                 {"  a  ", [](auto& s) { s.Trim(NkDtStrRight); }, "'  a' 3/5 defined modified"},
                 {"  a  ", [](auto& s) { s.Trim(0); }, "'a' 1/5 defined modified"},
                 {"  a b  ", [](auto& s) { s.Trim(NkDtStrAll); }, "'a b' 3/7 defined modified"},
                 {"a  ", [](auto& s) { s.Trim(NkDtStrLeft); }, "'a  ' 3/3 defined"},
                 {"  a", [](auto& s) { s.Trim(NkDtStrRight); }, "'  a' 3/3 defined"},
                 {"a", [](auto& s) { s.Trim(0); }, "'a' 1/1 defined"}});
}

TEST(NkDtStringTrim, EmptiesATextOfBlanksInEveryMode) {
    for (const INT mode : {NkDtStrLeft, NkDtStrRight, 0}) {
        expectEdits({{"   ", [mode](auto& s) { s.Trim(mode); }, "'' 0/3 defined modified"}});
    }
}

TEST(NkDtStringTrim, KeepsOtherWhiteSpaceAndNul) {
    expectEdits({{" \ta\n ", [](auto& s) { s.Trim(0); }, "'\ta\n' 3/5 defined modified"},
                 {"\xA0", [](auto& s) { s.Trim(0); }, "'\xA0' 1/1 defined"},
                 {withNul(), [](auto& s) { s.FillUp(' ', 5, NkDtStrLeft), s.Trim(0); },
                  "'a\\0b' 3/5 defined modified"}});
}

TEST(NkDtStringTrim, AsksForNoDefinedness) {
    expectEdits(
        {{undefinedWithText(NkDtWmMissing, " ab "), [](auto& s) { s.Trim(0); }, "'ab' 2/4 missing modified"},
         {missing(), [](auto& s) { s.Trim(0); }, "'' 0/0 missing"},
         {"", [](auto& s) { s.Trim(0); }, "'' 0/0 defined"}});
}

// --- ToUpper, ToLower ---------------------------------------------------------------------------

TEST(NkDtStringCase, MapsLettersAndUmlautsAndLeavesSharpSAlone) {
    NkDtString text(cp1252("äöüß").c_str());
    text.ToUpper();
    EXPECT_EQ(bytesOf(text), cp1252("ÄÖÜß"));
    text.ToLower();
    EXPECT_EQ(bytesOf(text), cp1252("äöüß"));
}

TEST(NkDtStringCase, MapsEachByteAloneAndInAnyPlaceAlike) {
    for (int byte = 1; byte < 256; ++byte) {
        const char ch = static_cast<char>(byte);
        NkDtChar upper(ch);
        NkDtChar lower(ch);
        upper.ToUpper();
        lower.ToLower();
        for (const INT length : {1, 7, 8, 15, 16, 17, 33}) {
            SCOPED_TRACE(testing::Message() << "byte " << byte << ", length " << length);
            NkDtString text("", length, length);
            text.Cut(0);
            text.FillUp(ch, length, 0);
            NkDtString small(text);
            text.ToUpper();
            small.ToLower();
            EXPECT_EQ(bytesOf(text), std::string(static_cast<std::size_t>(length), upper));
            EXPECT_EQ(bytesOf(small), std::string(static_cast<std::size_t>(length), lower));
        }
    }
}

TEST(NkDtStringCase, RaisesTheModifiedFlagForEveryCharacterThatIsLookedAt) {
    struct Case {
        const char* text;
        bool upper;  // modified by ToUpper()
        bool lower;  // modified by ToLower()
    };
    const Case cases[] = {{"", false, false},     {"ABC", false, true}, {"abc", true, false},
                          {"123", true, true},    {" ", true, true},    {"A1", true, true},
                          {"ß", false, false},    {"ÄÖÜ", false, true}, {"äöü", true, false},
                          {"ÄßABC", false, true}, {"é", true, true},    {"aß", true, false}};
    for (const Case& each : cases) {
        SCOPED_TRACE(each.text);
        NkDtString upper(cp1252(each.text).c_str());
        NkDtString lower(upper);
        upper.ToUpper();
        lower.ToLower();
        EXPECT_EQ(upper.IsModified() == TRUE, each.upper);
        EXPECT_EQ(lower.IsModified() == TRUE, each.lower);
    }
}

TEST(NkDtStringCase, WalksTheWholeLengthAndAsksForNoDefinedness) {
    expectEdits(
        {{withNul(), [](auto& s) { s.ToUpper(); }, "'A\\0B' 3/3 defined modified"},
         {undefinedWithText(NkDtWmMissing, "aB"), [](auto& s) { s.ToLower(); }, "'ab' 2/2 missing modified"},
         {missing(), [](auto& s) { s.ToUpper(); }, "'' 0/0 missing"}});
}

/// Refuses to be marked.
class Unmarkable : public NkDtString {
  public:
    using NkDtString::NkDtString;
    void SetModified(BOOL) override {
        throw new NkDtExcep("marks.cc", "Unmarkable", "SetModified(BOOL)", NkDtErrAllocLaenge, 0, FALSE);
    }
};

TEST(NkDtStringCase, ReplacesAnErrorOfTheWalk) {
    Unmarkable text("abc");
    expectReplaced(NkDtErrAllocLaenge, [&] { text.ToUpper(); });
    Unmarkable capitals("ABC");
    expectReplaced(NkDtErrAllocLaenge, [&] { capitals.ToLower(); });
    Unmarkable unmarked("ABC");
    EXPECT_NO_THROW(unmarked.ToUpper());  // nothing to mark
}

// --- IsEmpty, Compare ---------------------------------------------------------------------------

TEST(NkDtStringIsEmpty, LooksAtTheLength) {
    EXPECT_TRUE(NkDtString("").IsEmpty());
    EXPECT_FALSE(NkDtString(" ").IsEmpty());
    EXPECT_TRUE(null().IsEmpty());
    EXPECT_TRUE(undefinedInModeTwo().IsEmpty());
    EXPECT_FALSE(undefinedWithText(NkDtWmNull, "a").IsEmpty());
    EXPECT_FALSE(NkDtString("", 2).IsEmpty());  // two NUL characters
    expectError(NkDtErrUndefiniert, [] { static_cast<void>(missing().IsEmpty()); });
}

TEST(NkDtStringCompare, OfUndefinedTexts) {
    EXPECT_TRUE(missing().Compare(missing(), TRUE));
    EXPECT_TRUE(missing().Compare(null(), TRUE));
    EXPECT_TRUE(undefinedWithText(NkDtWmNull, "a").Compare(undefinedWithText(NkDtWmMissing, "b"), TRUE));
    EXPECT_TRUE(null().Compare("", TRUE));
    EXPECT_TRUE(NkDtString("").Compare(null(), TRUE));
    EXPECT_FALSE(null().Compare("a", TRUE));
    EXPECT_FALSE(NkDtString("a").Compare(null(), FALSE));
    EXPECT_TRUE(missing().Compare("", TRUE));  // the texts are equal
    EXPECT_FALSE(missing().Compare("a", TRUE));
    EXPECT_TRUE(undefinedWithText(NkDtWmNull, "a").Compare("", TRUE));
}

TEST(NkDtStringCompare, ExactlyOrWithoutCase) {
    EXPECT_TRUE(NkDtString("abc").Compare("abc", TRUE));
    EXPECT_FALSE(NkDtString("abc").Compare("abC", TRUE));
    EXPECT_TRUE(NkDtString("abc").Compare("aBC", FALSE));
    EXPECT_TRUE(NkDtString(cp1252("Äöü").c_str()).Compare(cp1252("äÖÜ").c_str(), FALSE));
    EXPECT_FALSE(NkDtString(cp1252("Ä").c_str()).Compare(cp1252("ä").c_str(), TRUE));
    EXPECT_FALSE(NkDtString("abc").Compare("abcd", FALSE));
    EXPECT_TRUE(withNul().Compare("a", TRUE));  // up to the first NUL
}

TEST(NkDtStringCompare, WithItself) {
    const NkDtString text("abc");
    EXPECT_TRUE(text.Compare(text, TRUE));
    EXPECT_TRUE(text.Compare(text, FALSE));
    EXPECT_TRUE(missing().Compare(missing(), FALSE));
}

// --- Errors -------------------------------------------------------------------------------------

TEST(NkDtStringEditing, ErrorsTellWhereTheyComeFrom) {
    constexpr const char* module = ".\\dtstrfkt.cc";
    NkDtString text("abc");
    Halves halves;
    Unmarkable unmarkable("abc");
    Unmarkable capitals("ABC");
    expectOrigins({
        {"Copy", [&] { text.Copy("X", 4); }, NkDtErrStringindex, module, "NkDtString",
         "Copy(NkDtString&,INT)"},
        {"CopyParts", [&] { text.CopyParts("X", 4); }, NkDtErrStringindex, module, "NkDtString",
         "CopyParts(NkDtString&,INT)"},
        {"Insert", [&] { text.Insert("X", 4); }, NkDtErrStringindex, module, "NkDtString",
         "Insert(NkDtString&,INT)"},
        {"DeleteParts", [&] { text.DeleteParts("X", 4); }, NkDtErrStringindex, module, "NkDtString",
         "DeleteParts(NkDtString&,INT)"},
        {"Change", [&] { text.Change("X", "Y", 4); }, NkDtErrStringindex, module, "NkDtString",
         "DeleteParts(NkDtString&,INT)"},
        {"Cut", [&] { text.Cut(4); }, NkDtErrStringindex, module, "NkDtString", "Cut(INT)"},
        {"Split", [&] { text.Split(halves.left, halves.right, -1); }, NkDtErrStringindex, module,
         "NkDtString", "Split(NkDtString&,NkDtString&,INT)const"},
        {"FillUp", [&] { text.FillUp(' ', 2147483647, 0); }, NkDtErrInitiallaenge, module, "NkDtString",
         "FillUp(TCHAR,INT,INT)"},
        {"IsEmpty", [] { static_cast<void>(missing().IsEmpty()); }, NkDtErrUndefiniert, module, "NkDtString",
         "IsEmpty()"},
        {"ToUpper", [&] { unmarkable.ToUpper(); }, NkDtErrFolgefehler, module, "NkDtString", "ToUpper()",
         FALSE, NkDtErrAllocLaenge},
        {"ToLower", [&] { capitals.ToLower(); }, NkDtErrFolgefehler, module, "NkDtString", "ToLower()", FALSE,
         NkDtErrAllocLaenge},
    });
    EXPECT_EQ(describe(text), "'abc' 3/3 defined");
}

}  // namespace
