// Searching, removing and replacing parts of a text.

#include <nkdt/NkDtString.h>

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "TextTesting.h"

namespace {

using namespace valuetest;

constexpr INT kAuto = NkDtStrLenAuto;

NkDtString repeated(std::string_view bytes, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += bytes;
    return NkDtString(text.c_str());
}

// --- DeleteParts --------------------------------------------------------------------------------

struct DeleteCase {
    NkDtString text;
    NkDtString part;
    INT mode;
    BOOL result;
    std::string after;
};

template <std::size_t count>
void expectDeletions(DeleteCase (&&cases)[count]) {
    for (DeleteCase& each : cases) {
        SCOPED_TRACE(testing::Message()
                     << describe(each.text) << " without " << describe(each.part) << ", mode " << each.mode);
        EXPECT_EQ(each.text.DeleteParts(each.part, each.mode), each.result);
        EXPECT_EQ(describe(each.text), each.after);
    }
}

TEST(NkDtStringDeleteParts, OfAllSearchesAgainFromTheStart) {
    expectDeletions({{"aabb", "ab", NkDtStrAll, TRUE, "'' 0/4 defined modified"},
                     {"xaabby", "ab", NkDtStrAll, TRUE, "'xy' 2/6 defined modified"},
                     {"aaabbb", "ab", NkDtStrAll, TRUE, "'' 0/6 defined modified"},
                     {"abcabc", "bca", NkDtStrAll, TRUE, "'abc' 3/6 defined modified"},
                     {"aaaaa", "aa", NkDtStrAll, TRUE, "'a' 1/5 defined modified"},
                     {"ababab", "ab", NkDtStrAll, TRUE, "'' 0/6 defined modified"},
                     {"a.b.c", ".", NkDtStrAll, TRUE, "'abc' 3/5 defined modified"}});
}

TEST(NkDtStringDeleteParts, FindsANewHitThatReachesFarBackAcrossSeveralDeletions) {
    // What is left over of each hit waits until the last one closes it.
    NkDtString text("1212312312333");
    EXPECT_TRUE(text.DeleteParts("123", NkDtStrAll));
    EXPECT_EQ(describe(text), "'3' 1/13 defined modified");
}

TEST(NkDtStringDeleteParts, OfTheFirstLeavesWhatTheDeletionBringsAbout) {
    expectDeletions({{"aabb", "ab", NkDtStrFirst, TRUE, "'ab' 2/4 defined modified"},
                     {"abab", "ab", NkDtStrFirst, TRUE, "'ab' 2/4 defined modified"}});
}

TEST(NkDtStringDeleteParts, AtAPositionComparesNothing) {
    expectDeletions({{"abcdef", "xyz", 1, TRUE, "'aef' 3/6 defined modified"},
                     {"abcdef", "xyz", 0, TRUE, "'def' 3/6 defined modified"},
                     {"abcdef", "xyz", 3, TRUE, "'abc' 3/6 defined modified"}});
}

TEST(NkDtStringDeleteParts, AtAPositionRefusesOneOutsideTheTextOrWithTooFewCharactersBehind) {
    for (const INT position : {-1, 4, 7, -12, 100}) {
        NkDtString text("abcdef");
        expectError(NkDtErrStringindex, [&] { text.DeleteParts("xyz", position); });
        EXPECT_EQ(describe(text), "'abcdef' 6/6 defined");
    }
    NkDtString text("abc");
    expectError(NkDtErrStringindex, [&] { text.DeleteParts("x", 3); });
}

TEST(NkDtStringDeleteParts, OfWhatIsNotThereChangesNothing) {
    expectDeletions({{"abc", "x", NkDtStrAll, FALSE, "'abc' 3/3 defined"},
                     {"abc", "x", NkDtStrFirst, FALSE, "'abc' 3/3 defined"},
                     {"abc", "abcd", NkDtStrAll, FALSE, "'abc' 3/3 defined"}});
}

TEST(NkDtStringDeleteParts, OfOrFromAnEmptyTextIsFalseBeforeAnyCheck) {
    expectDeletions({{"abc", "", NkDtStrAll, FALSE, "'abc' 3/3 defined"},
                     {"abc", "", 99, FALSE, "'abc' 3/3 defined"},
                     {"abc", missing(), 0, FALSE, "'abc' 3/3 defined"},
                     {"", "a", 99, FALSE, "'' 0/0 defined"},
                     {missing(), "a", NkDtStrAll, FALSE, "'' 0/0 missing"},
                     {null(), "a", -1, FALSE, "'' 0/0 null"}});
}

TEST(NkDtStringDeleteParts, AsksForNoDefinednessAndLeavesIt) {
    expectDeletions(
        {{undefinedWithText(NkDtWmMissing, "abab"), "b", NkDtStrAll, TRUE, "'aa' 2/4 missing modified"},
         {undefinedWithText(NkDtWmNull, "abab"), "b", 1, TRUE, "'aab' 3/4 null modified"},
         {"abab", undefinedWithText(NkDtWmMissing, "b"), NkDtStrAll, TRUE, "'aa' 2/4 defined modified"}});
}

TEST(NkDtStringDeleteParts, SearchesUpToTheFirstNulAndKeepsWhatStandsBehind) {
    using namespace std::string_view_literals;
    expectDeletions({{withNul("ab\0ab"sv), "ab", NkDtStrAll, TRUE, "'\\0ab' 3/5 defined modified"},
                     {withNul("x\0ab"sv), "ab", NkDtStrAll, FALSE, "'x\\0ab' 4/4 defined"},
                     {"xaby", withNul("ab\0"sv), NkDtStrAll, TRUE, "'xy' 2/4 defined modified"},
                     {"xaby", withNul("\0b"sv), NkDtStrAll, FALSE, "'xaby' 4/4 defined"},
                     {withNul("xa\0y"sv), withNul("\0b"sv), 1, TRUE, "'xy' 2/4 defined modified"}});
}

TEST(NkDtStringDeleteParts, OfTheTextItself) {
    for (const INT mode : {NkDtStrAll, NkDtStrFirst, 0}) {
        NkDtString text("abab");
        EXPECT_TRUE(text.DeleteParts(text, mode));
        EXPECT_EQ(describe(text), "'' 0/4 defined modified");
    }
    NkDtString text("abab");
    expectError(NkDtErrStringindex, [&] { text.DeleteParts(text, 1); });
}

TEST(NkDtStringDeleteParts, OfAllIsLinearInTheText) {
    // Every deletion makes the next hit, far from the start: searching from there each time would look at
    // 10^12 bytes.
    const NkDtString part("ab");
    NkDtString nested = repeated("a", 1'000'000) + repeated("b", 1'000'000);
    EXPECT_TRUE(nested.DeleteParts(part, NkDtStrAll));
    EXPECT_EQ(nested.GetLength(), 0);

    NkDtString beside = repeated("xab", 1'000'000);
    EXPECT_TRUE(beside.DeleteParts(part, NkDtStrAll));
    EXPECT_EQ(beside.GetLength(), 1'000'000);

    NkDtString longPart = repeated("a", 200'000) + "b";
    NkDtString almost = repeated("a", 1'000'000) + "b";
    EXPECT_TRUE(almost.DeleteParts(longPart, NkDtStrAll));
    EXPECT_EQ(almost.GetLength(), 800'000);
}

// --- GetPos -------------------------------------------------------------------------------------

TEST(NkDtStringGetPos, GoesOnAfterTheLastHitAndKeepsItOnAMiss) {
    NkDtString text("banana");
    EXPECT_EQ(text.GetPos("a", NkDtStrPosFirst), 1);
    EXPECT_EQ(text.GetPos("a", NkDtStrPosNext), 3);
    EXPECT_EQ(text.GetPos("a", NkDtStrPosNext), 5);
    EXPECT_EQ(text.GetPos("a", NkDtStrPosNext), -1);
    EXPECT_EQ(text.GetPos("a", NkDtStrPosNext), -1);
    EXPECT_EQ(text.GetPos("x", NkDtStrPosFirst), -1);
    EXPECT_EQ(text.GetPos("n", NkDtStrPosNext), -1);  // from 6 on
    EXPECT_EQ(text.GetPos("a", NkDtStrPosFirst), 1);
    EXPECT_EQ(text.GetPos("n", NkDtStrPosNext), 2);
    EXPECT_EQ(describe(text), "'banana' 6/6 defined");
}

TEST(NkDtStringGetPos, NextBeginsAtTheStartWhenThereIsNoHitYet) {
    NkDtString text("banana");
    EXPECT_EQ(text.GetPos("na", NkDtStrPosNext), 2);
    EXPECT_EQ(text.GetPos("na", NkDtStrPosNext), 4);
}

TEST(NkDtStringGetPos, NextSkipsAsMuchAsThePartIsLong) {
    NkDtString text("aaaaa");
    EXPECT_EQ(text.GetPos("aa", NkDtStrPosFirst), 0);
    EXPECT_EQ(text.GetPos("aa", NkDtStrPosNext), 2);
    EXPECT_EQ(text.GetPos("aa", NkDtStrPosNext), -1);
    EXPECT_EQ(text.GetPos("a", NkDtStrPosNext), 3);
}

TEST(NkDtStringGetPos, EveryOtherModeSearchesFromTheStart) {
    NkDtString text("banana");
    EXPECT_EQ(text.GetPos("a", NkDtStrPosFirst), 1);
    for (const INT mode : {0, 3, -1, NkDtStrAll, NkDtStrFirst}) {
        EXPECT_EQ(text.GetPos("na", mode), 2);
        EXPECT_EQ(text.GetPos("a", mode), 1);
    }
}

TEST(NkDtStringGetPos, OfOrInAnEmptyTextIsAMissWhateverTheState) {
    EXPECT_EQ(NkDtString("").GetPos("a", NkDtStrPosFirst), -1);
    EXPECT_EQ(NkDtString("a").GetPos("", NkDtStrPosFirst), -1);
    EXPECT_EQ(missing().GetPos("a", NkDtStrPosFirst), -1);
    EXPECT_EQ(NkDtString("a").GetPos(missing(), NkDtStrPosFirst), -1);
    EXPECT_EQ(undefinedWithText(NkDtWmMissing, "ab").GetPos("b", NkDtStrPosFirst), 1);
}

TEST(NkDtStringGetPos, BeyondTheEndOfATextThatBecameShorterIsAMiss) {
    NkDtString text("banana");
    EXPECT_EQ(text.GetPos("na", NkDtStrPosFirst), 2);
    EXPECT_EQ(text.GetPos("na", NkDtStrPosNext), 4);
    text.Cut(3);
    EXPECT_EQ(text.GetPos("na", NkDtStrPosNext), -1);
    EXPECT_EQ(text.GetPos("a", NkDtStrPosFirst), 1);
}

TEST(NkDtStringGetPos, ForgetsTheHitWhenTheTextIsCleared) {
    NkDtString text("banana");
    EXPECT_EQ(text.GetPos("na", NkDtStrPosFirst), 2);
    text.Clear();
    text = "banana";
    EXPECT_EQ(text.GetPos("na", NkDtStrPosNext), 2);
}

TEST(NkDtStringGetPos, ACopyHasNoHit) {
    NkDtString text("banana");
    EXPECT_EQ(text.GetPos("na", NkDtStrPosFirst), 2);
    NkDtString copy(text);
    EXPECT_EQ(copy.GetPos("na", NkDtStrPosNext), 2);
    EXPECT_EQ(text.GetPos("na", NkDtStrPosNext), 4);
}

TEST(NkDtStringGetPos, SearchesUpToTheFirstNulAndGoesOnByTheWholePart) {
    using namespace std::string_view_literals;
    NkDtString text = withNul("ab\0ab"sv);
    EXPECT_EQ(text.GetPos("b", NkDtStrPosFirst), 1);
    EXPECT_EQ(text.GetPos("b", NkDtStrPosNext), -1);

    NkDtString many("abababab");
    const NkDtString part = withNul("a\0\0"sv);
    EXPECT_EQ(many.GetPos(part, NkDtStrPosFirst), 0);
    EXPECT_EQ(many.GetPos(part, NkDtStrPosNext), 4);  // from 3 on
    EXPECT_EQ(many.GetPos(withNul("\0a"sv), NkDtStrPosFirst), -1);
}

TEST(NkDtStringGetPos, OfTheTextInItself) {
    NkDtString text("abc");
    EXPECT_EQ(text.GetPos(text, NkDtStrPosFirst), 0);
    EXPECT_EQ(text.GetPos(text, NkDtStrPosNext), -1);
}

// --- Change -------------------------------------------------------------------------------------

struct ChangeCase {
    NkDtString text;
    NkDtString from;
    NkDtString to;
    INT mode;
    BOOL result;
    std::string after;
};

template <std::size_t count>
void expectChanges(ChangeCase (&&cases)[count]) {
    for (ChangeCase& each : cases) {
        SCOPED_TRACE(testing::Message() << describe(each.text) << ", " << describe(each.from) << " for "
                                        << describe(each.to) << ", mode " << each.mode);
        EXPECT_EQ(each.text.Change(each.from, each.to, each.mode), each.result);
        EXPECT_EQ(describe(each.text), each.after);
    }
}

TEST(NkDtStringChange, NeverSearchesWhatItHasInserted) {
    expectChanges({{"aXa", "a", "aa", NkDtStrAll, TRUE, "'aaXaa' 5/5 defined modified"},
                   {"ab", "ab", "aab", NkDtStrAll, TRUE, "'aab' 3/3 defined modified"},
                   {"aaaa", "aa", "a", NkDtStrAll, TRUE, "'aa' 2/4 defined modified"},
                   {"aab", "ab", "b", NkDtStrAll, TRUE, "'ab' 2/3 defined modified"}});
}

TEST(NkDtStringChange, TheFirstOrAll) {
    expectChanges(
        {{"banana", "an", "XYZ", NkDtStrAll, TRUE, "'bXYZXYZa' 8/8 defined modified"},
         {"banana", "an", "XYZ", NkDtStrFirst, TRUE, "'bXYZana' 7/7 defined modified"},
         {"banana", "an", "X", NkDtStrAll, TRUE, "'bXXa' 4/6 defined modified"},
         {"banana", "an", "XY", NkDtStrAll, TRUE, "'bXYXYa' 6/6 defined modified"},
         {NkDtString("banana", kAuto, 9), "an", "XYZ", NkDtStrAll, TRUE, "'bXYZXYZa' 8/9 defined modified"},
         {"banana", "x", "y", NkDtStrAll, FALSE, "'banana' 6/6 defined"},
         {"banana", "x", "y", NkDtStrFirst, FALSE, "'banana' 6/6 defined"}});
}

TEST(NkDtStringChange, MoreHitsThanAreKeptAtOnce) {
    for (const char* to : {"", "Y", "XY", "WXYZ"}) {
        for (const INT room : {0, 5000}) {
            const NkDtString before = repeated("ab.", 1000);
            NkDtString text(before, kAuto, room);
            EXPECT_TRUE(text.Change("ab", to, NkDtStrAll));
            EXPECT_EQ(bytesOf(text), bytesOf(repeated(std::string(to) + ".", 1000))) << to << ' ' << room;
        }
    }
}

TEST(NkDtStringChange, AtAPosition) {
    expectChanges({{"abcdef", "xyz", "Q", 1, TRUE, "'aQef' 4/6 defined modified"},
                   {"abcdef", "xyz", "QRST", 3, TRUE, "'abcQRST' 7/7 defined modified"},
                   {"abcdef", "xyz", "QRST", 0, TRUE, "'QRSTdef' 7/7 defined modified"}});
    for (const INT position : {-1, 4, 7}) {
        NkDtString text("abcdef");
        expectError(NkDtErrStringindex, [&] { text.Change("xyz", "Q", position); });
        EXPECT_EQ(describe(text), "'abcdef' 6/6 defined");
    }
}

TEST(NkDtStringChange, OfNothingOrIntoAMissingTextIsFalseBeforeAnyCheck) {
    expectChanges(
        {{"", "a", "b", 99, FALSE, "'' 0/0 defined"},
         {"abc", "", "b", 99, FALSE, "'abc' 3/3 defined"},
         {"abc", missing(), "b", 99, FALSE, "'abc' 3/3 defined"},
         {"abc", "a", missing(), 99, FALSE, "'abc' 3/3 defined"},
         {"abc", "a", undefinedWithText(NkDtWmMissing, "b"), NkDtStrAll, FALSE, "'abc' 3/3 defined"},
         {missing(), "a", "b", 99, FALSE, "'' 0/0 missing"}});
}

TEST(NkDtStringChange, IntoAnEmptyTextDeletes) {
    expectChanges({{"aabb", "ab", "", NkDtStrAll, TRUE, "'' 0/4 defined modified"},  // from the start again
                   {"aabb", "ab", null(), NkDtStrFirst, TRUE, "'ab' 2/4 defined modified"},
                   {"abcdef", "xyz", "", 1, TRUE, "'aef' 3/6 defined modified"}});
}

TEST(NkDtStringChange, OfEqualTextsIsTrueAndChangesNothing) {
    expectChanges({{"aaa", "a", "a", 0, TRUE, "'aaa' 3/3 defined"},
                   {"aaa", "a", "a", NkDtStrAll, TRUE, "'aaa' 3/3 defined"},
                   {"aaa", "x", "x", NkDtStrAll, TRUE, "'aaa' 3/3 defined"},
                   {"aaa", "x", "x", 99, TRUE, "'aaa' 3/3 defined"}});
}

TEST(NkDtStringChange, InsertsANullTextWithContentAndMakesDefined) {
    expectChanges(
        {{"aXa", "X", undefinedWithText(NkDtWmNull, "YZ"), NkDtStrAll, TRUE, "'aYZa' 4/4 defined modified"},
         {undefinedWithText(NkDtWmNull, "aXa"), "X", "Y", NkDtStrAll, TRUE, "'aYa' 3/3 defined modified"},
         {undefinedWithText(NkDtWmNull, "aXa"), "Q", "Y", NkDtStrAll, FALSE, "'aXa' 3/3 null"}});
}

TEST(NkDtStringChange, OfAMissingTextWithContentIsRefusedUnchanged) {
    NkDtString text = undefinedWithText(NkDtWmMissing, "aXa");
    const ErrorPtr error = expectError(NkDtErrUndefiniert, [&] { text.Change("X", "Y", NkDtStrAll); });
    EXPECT_STREQ(error->GetFunctionText(), "Insert(NkDtString&,INT)");
    EXPECT_EQ(describe(text), "'aXa' 3/3 missing");
    EXPECT_FALSE(text.Change("Q", "Y", NkDtStrAll));  // nothing to insert
}

TEST(NkDtStringChange, KeepsWhatStandsBehindANulAndInsertsByLength) {
    using namespace std::string_view_literals;
    expectChanges({{withNul("ab\0ab"sv), "ab", "X", NkDtStrAll, TRUE, "'X\\0ab' 4/5 defined modified"},
                   {withNul("ab\0ab"sv), "ab", "XYZ", NkDtStrAll, TRUE, "'XYZ\\0ab' 6/6 defined modified"},
                   {"aXa", "X", withNul("\0Y"sv), NkDtStrAll, TRUE, "'a\\0Ya' 4/4 defined modified"},
                   {"aXaX", "X", withNul("\0Y"sv), NkDtStrAll, TRUE, "'a\\0Ya\\0Y' 6/6 defined modified"}});
}

TEST(NkDtStringChange, WithTheTextItself) {
    NkDtString text("abc");
    EXPECT_TRUE(text.Change(text, "xy", NkDtStrAll));
    EXPECT_EQ(describe(text), "'xy' 2/3 defined modified");

    text = "abab";
    EXPECT_TRUE(text.Change("b", text, NkDtStrAll));
    EXPECT_EQ(bytesOf(text), "aababaabab");

    text = "abc";
    EXPECT_TRUE(text.Change("x", text, 1));
    EXPECT_EQ(bytesOf(text), "aabcc");

    text = "abc";
    text.SetModified(FALSE);
    EXPECT_TRUE(text.Change(text, text, NkDtStrAll));
    EXPECT_EQ(bytesOf(text), "abc");
    EXPECT_FALSE(text.IsModified());
}

TEST(NkDtStringChange, IsLinearInTheText) {
    NkDtString text = repeated("ab", 1'000'000);
    EXPECT_TRUE(text.Change("a", "xyz", NkDtStrAll));
    EXPECT_EQ(text.GetLength(), 4'000'000);
    EXPECT_TRUE(text.Change("xyz", "a", NkDtStrAll));
    EXPECT_TRUE(text == repeated("ab", 1'000'000));

    // Beginnings of the part everywhere, and never all of it.
    NkDtString longPart = repeated("a", 100'000) + "b" + repeated("a", 100'000);
    NkDtString beginnings = repeated("a", 2'000'000);
    EXPECT_FALSE(beginnings.Change(longPart, "x", NkDtStrAll));
}

TEST(NkDtStringChange, RefusesAResultThatNoTextCanHoldUnchanged) {
    NkDtString text = repeated("a", 100'000);
    const NkDtString longText = repeated("b", 30'000);
    const ErrorPtr error = expectError(NkDtErrWertebereich, [&] { text.Change("a", longText, NkDtStrAll); });
    EXPECT_STREQ(error->GetFunctionText(), "Insert(NkDtString&,INT)");
    EXPECT_EQ(text.GetLength(), 100'000);
    EXPECT_FALSE(text.IsModified());
}

}  // namespace
