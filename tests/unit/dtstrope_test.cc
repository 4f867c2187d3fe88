// Appending, concatenation and comparison of texts.

#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtString.h>
#include <nkfo/NkFormat.h>

#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "TextTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;

constexpr INT kAuto = NkDtStrLenAuto;
constexpr const char* kLong = "a text that is too long for a pool's block";  // 42 characters
const NkFormat kFormat(0, kulNkFoValidAll, FormatAuffuellenNicht, ' ');

NkDtString defined() {
    return NkDtString("abc");
}
NkDtString definedWithRoom() {
    return NkDtString("abc", kAuto, 10);
}
NkDtString empty() {
    return NkDtString("");
}
NkDtString withNul() {
    return valuetest::withNul({"a\0b", 3});
}

using Make = NkDtString (*)();

// --- Appending ----------------------------------------------------------------------------------

TEST(NkDtStringAppend, OfATextGrowsTheBufferToTheNewLengthWhenItMust) {
    struct Case {
        Make target;
        const char* added;
        const char* after;
    };
    constexpr Case cases[] = {
        {defined, "de", "'abcde' 5/5 defined modified"},
        {definedWithRoom, "de", "'abcde' 5/10 defined modified"},
        {definedWithRoom, "defghij", "'abcdefghij' 10/10 defined modified"},
        {definedWithRoom, "defghijk", "'abcdefghijk' 11/11 defined modified"},
        {empty, "x", "'x' 1/1 defined modified"},
        {missing, "x", "'x' 1/1 defined modified"},
        {null, "x", "'x' 1/1 defined modified"},
        {undefinedInModeTwo, "x", "'x' 1/1 defined modified"},
        {defined, "defghijklmnopqrstuvwxyz", "'abcdefghijklmnopqrstuvwxyz' 26/26 defined modified"},
        {withNul, "c", "'a\\0bc' 4/4 defined modified"},
    };
    for (const Case& each : cases) {
        NkDtString byPointer = each.target();
        byPointer += each.added;
        EXPECT_EQ(describe(byPointer), each.after);
        NkDtString byFrameworkText = each.target();
        byFrameworkText += CString(each.added);
        EXPECT_EQ(describe(byFrameworkText), each.after);
        NkDtString byValue = each.target();
        byValue += NkDtString(each.added);
        EXPECT_EQ(describe(byValue), each.after);
    }
}

TEST(NkDtStringAppend, OfATextFitsTheRoomOfAnUndefinedOneAndOfACharacterLeavesIt) {
    for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
        NkDtString byPointer = undefinedWithText(mode, "abc", 10);
        byPointer += "de";
        EXPECT_EQ(describe(byPointer), "'abcde' 5/5 defined modified");
        NkDtString byFrameworkText = undefinedWithText(mode, "", 10);
        byFrameworkText += CString("de");
        EXPECT_EQ(describe(byFrameworkText), "'de' 2/2 defined modified");
        NkDtString byValue = undefinedWithText(mode, "abc", 10);
        byValue += NkDtString("de");
        EXPECT_EQ(describe(byValue), "'abcde' 5/5 defined modified");
        NkDtString byCharacter = undefinedWithText(mode, "abc", 10);
        byCharacter += 'd';
        EXPECT_EQ(describe(byCharacter), "'abcd' 4/10 defined modified");
    }
}

TEST(NkDtStringAppend, OfAnEmptyPlainTextChangesNothingNotEvenTheDefinedness) {
    for (const Make target : {defined, definedWithRoom, empty, missing, null, undefinedInModeTwo}) {
        NkDtString text = target();
        const std::string before = describe(text);
        text += "";
        EXPECT_EQ(describe(text), before);
        text += CString();
        EXPECT_EQ(describe(text), before);
    }
}

TEST(NkDtStringAppend, OfATextValueFollowsTheDefinednessOfBoth) {
    struct Case {
        Make target;
        Make added;
        const char* after;
    };
    constexpr Case cases[] = {
        {missing, missing, "'' 0/0 missing"},
        {missing, null, "'' 0/0 missing"},
        {null, undefinedInModeTwo, "'' 0/0 null"},
        {undefinedInModeTwo, missing, "'' 0/0 undefined"},
        {missing, empty, "'' 0/0 defined"},
        {null, empty, "'' 0/0 defined"},
        {undefinedInModeTwo, empty, "'' 0/0 defined"},
        {defined, missing, "'abc' 3/3 defined"},
        {defined, null, "'abc' 3/3 defined"},
        {defined, empty, "'abc' 3/3 defined"},
        {null, defined, "'abc' 3/3 defined modified"},
        {missing, definedWithRoom, "'abc' 3/3 defined modified"},
        {defined, withNul, "'abca\\0b' 6/6 defined modified"},
    };
    for (const Case& each : cases) {
        NkDtString text = each.target();
        const NkDtString added = each.added();
        text += added;
        EXPECT_EQ(describe(text), each.after);
        EXPECT_EQ(describe(added), describe(each.added()));
    }
}

TEST(NkDtStringAppend, OfAFrameworkTextStopsAtItsFirstNul) {
    for (const Make target : {defined, definedWithRoom, missing, withNul}) {
        NkDtString text = target();
        NkDtString plain = target();
        text += CString("x\0y", 3);
        plain += "x";
        EXPECT_EQ(describe(text), describe(plain));
        NkDtString unchanged = target();
        unchanged += CString("\0y", 2);
        EXPECT_EQ(describe(unchanged), describe(target()));
    }
}

TEST(NkDtStringAppend, LeavesAFlagThatWasSet) {
    NkDtString text = defined();
    text.SetModified(TRUE);
    text += empty();
    text += "";
    EXPECT_TRUE(text.IsModified());
}

TEST(NkDtStringAppend, KeepsModeAndFormat) {
    NkDtString text(NkDtWmNull);
    text.SetFormat(&kFormat);
    text += "a";
    text += NkDtString("b");
    text += 'c';
    EXPECT_EQ(text.GetWorkingMode(), NkDtWmNull);
    EXPECT_EQ(text.GetFormat(), &kFormat);
    EXPECT_STREQ(text, "abc");
}

TEST(NkDtStringAppend, OfACharacterDefinesAndCountsNulToo) {
    struct Case {
        Make target;
        TCHAR added;
        const char* after;
    };
    constexpr Case cases[] = {
        {defined, 'd', "'abcd' 4/4 defined modified"},
        {definedWithRoom, 'd', "'abcd' 4/10 defined modified"},
        {defined, '\0', "'abc\\0' 4/4 defined modified"},
        {empty, 'x', "'x' 1/1 defined modified"},
        {missing, 'x', "'x' 1/1 defined modified"},
        {null, '\0', "'\\0' 1/1 defined modified"},
        {undefinedInModeTwo, 'x', "'x' 1/1 defined modified"},
    };
    for (const Case& each : cases) {
        NkDtString text = each.target();
        text += each.added;
        EXPECT_EQ(describe(text), each.after);
    }
}

TEST(NkDtStringAppend, OfItselfDoublesTheText) {
    for (const INT alloc : {kAuto, 10}) {
        NkDtString text("abc", kAuto, alloc);
        text += text;
        EXPECT_EQ(bytesOf(text), "abcabc");
        EXPECT_EQ(stateOf(text), "defined modified");
    }
    NkDtString longer(kLong);
    longer += longer;
    EXPECT_EQ(bytesOf(longer), std::string(kLong) + kLong);
    NkDtString nul = withNul();
    nul += nul;
    EXPECT_EQ(bytesOf(nul), "a\\0ba\\0b");
    NkDtString undefined = null();
    undefined += undefined;
    EXPECT_EQ(describe(undefined), "'' 0/0 null");
    NkDtString nothing = empty();
    nothing += nothing;
    EXPECT_EQ(describe(nothing), "'' 0/0 defined");
}

TEST(NkDtStringAppend, OfAPartOfItselfIsWhatACopyOfThePartWouldGive) {
    for (const char* const source : {"abcdef", kLong}) {
        const std::string whole = source;
        for (std::size_t pos = 0; pos <= whole.size(); ++pos) {
            NkDtString text(source);
            text += text.GetValue() + pos;
            EXPECT_EQ(bytesOf(text), whole + whole.substr(pos));
        }
    }
}

TEST(NkDtStringAppend, OfANullPointerIsRefused) {
    for (const Make target : {defined, missing}) {
        NkDtString text = target();
        const std::string before = describe(text);
        expectError(NkDtErrInitialwert, [&] { text += LPCTSTR{nullptr}; });
        EXPECT_EQ(describe(text), before);
    }
}

TEST(NkDtStringAppend, CanGoOn) {
    NkDtString text;
    ((text += "a") += NkDtString("b")) += 'c';
    EXPECT_STREQ(text, "abc");
}

// --- Concatenation ------------------------------------------------------------------------------

TEST(NkDtStringConcatenation, OfDefinedTextsHasExactlyTheRoomForBoth) {
    const NkDtString abc = definedWithRoom();
    EXPECT_EQ(describe(abc + NkDtString("de", kAuto, 9)), "'abcde' 5/5 defined");
    EXPECT_EQ(describe(abc + "de"), "'abcde' 5/5 defined");
    EXPECT_EQ(describe(abc + CString("de")), "'abcde' 5/5 defined");
    EXPECT_EQ(describe(abc + 'd'), "'abcd' 4/4 defined");
    EXPECT_EQ(describe("xy" + abc), "'xyabc' 5/5 defined");
    EXPECT_EQ(describe(CString("xy") + abc), "'xyabc' 5/5 defined");
    EXPECT_EQ(describe('x' + abc), "'xabc' 4/4 defined");
    EXPECT_EQ(describe(abc + ""), "'abc' 3/3 defined");
    EXPECT_EQ(describe("" + abc), "'abc' 3/3 defined");
    EXPECT_EQ(describe(empty() + empty()), "'' 0/0 defined");
    EXPECT_EQ(describe(abc + '\0'), "'abc\\0' 4/4 defined");
    EXPECT_EQ(describe('\0' + abc), "'\\0abc' 4/4 defined");
    EXPECT_EQ(describe(abc), "'abc' 3/10 defined");
}

TEST(NkDtStringConcatenation, CopiesTextValuesByLength) {
    EXPECT_EQ(describe(withNul() + withNul()), "'a\\0ba\\0b' 6/6 defined");
    EXPECT_EQ(describe(NkDtString("", 2, 0) + "x"), "'\\0\\0x' 3/3 defined");
    EXPECT_EQ(describe("x" + NkDtString("", 2, 0)), "'x\\0\\0' 3/3 defined");
    EXPECT_EQ(describe(withNul() + CString("c\0d", 3)), "'a\\0bc' 4/4 defined");
}

TEST(NkDtStringConcatenation, OfItselfIsSafe) {
    const NkDtString text(kLong);
    EXPECT_EQ(bytesOf(text + text), std::string(kLong) + kLong);
    EXPECT_EQ(bytesOf(text + (text.GetValue() + 40)), std::string(kLong) + "ck");
}

TEST(NkDtStringConcatenation, WithAnUndefinedTextIsACopyOfTheOther) {
    for (const Make undefined : {missing, null, undefinedInModeTwo}) {
        NkDtString other = definedWithRoom();
        other.SetWorkingMode(NkDtWmNull);
        other.SetModified(TRUE);
        other.SetFormat(&kFormat);
        for (const NkDtString& result : {undefined() + other, other + undefined()}) {
            EXPECT_EQ(describe(result), "'abc' 3/3 defined modified");
            EXPECT_EQ(result.GetWorkingMode(), NkDtWmNull);
            EXPECT_EQ(result.GetFormat(), nullptr);
        }
    }
}

TEST(NkDtStringConcatenation, OfTwoUndefinedTextsIsACopyOfTheRightOne) {
    NkDtString right = null();
    right.SetModified(TRUE);
    EXPECT_EQ(describe(missing() + right), "'' 0/0 null modified");
    EXPECT_EQ(describe(right + missing()), "'' 0/0 missing");
    EXPECT_EQ(describe(null() + undefinedInModeTwo()), "'' 0/0 undefined");
}

TEST(NkDtStringConcatenation, OfAnUndefinedAndAPlainTextIsThePlainOneDefined) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        const DefaultMode scope(mode);
        for (const Make undefined : {missing, null}) {
            for (const NkDtString& result : {undefined() + "xy", undefined() + CString("xy"),
                                             "xy" + undefined(), CString("xy") + undefined()}) {
                EXPECT_EQ(describe(result), "'xy' 2/2 defined");
                EXPECT_EQ(result.GetWorkingMode(), mode);
            }
            EXPECT_EQ(describe(undefined() + 'x'), "'x' 1/1 defined");
            EXPECT_EQ(describe('x' + undefined()), "'x' 1/1 defined");
            EXPECT_EQ(describe(undefined() + '\0'), "'' 0/1 defined");
            EXPECT_EQ(describe('\0' + undefined()), "'' 0/1 defined");
            EXPECT_EQ(describe(undefined() + ""), "'' 0/0 defined");
            EXPECT_EQ(describe("" + undefined()), "'' 0/0 defined");
        }
    }
}

TEST(NkDtStringConcatenation, TakesNothingOfTheCharactersThatAnUndefinedTextHolds) {
    for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
        const NkDtString holding = undefinedWithText(mode, "abc");
        const NkDtString x("x");
        for (const NkDtString& sum :
             {holding + "x", "x" + holding, holding + CString("x"), CString("x") + holding, holding + 'x',
              'x' + holding, holding + x, x + holding})
            EXPECT_EQ(describe(sum), "'x' 1/1 defined");
    }
}

TEST(NkDtStringConcatenation, BuildsItsResultInTheDefaultModeWithoutFormatAndFlag) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        NkDtString a = defined();
        a.SetWorkingMode(NkDtWmNull);
        a.SetFormat(&kFormat);
        a.SetModified(TRUE);
        const NkDtString b(a);
        const DefaultMode scope(mode);
        for (const NkDtString& result : {a + b, a + "x", "x" + a, a + 'x', 'x' + a, a + CString("x")}) {
            EXPECT_EQ(result.GetWorkingMode(), mode);
            EXPECT_EQ(result.GetFormat(), nullptr);
            EXPECT_EQ(stateOf(result), "defined");
        }
    }
}

TEST(NkDtStringConcatenation, WithANullPointerIsRefused) {
    const LPCTSTR pointer = nullptr;
    for (const Make make : {defined, missing, null}) {
        const NkDtString text = make();
        expectError(NkDtErrInitialwert, [&] { static_cast<void>(text + pointer); });
        expectError(NkDtErrInitialwert, [&] { static_cast<void>(pointer + text); });
    }
}

// --- Streams ------------------------------------------------------------------------------------

TEST(NkDtStringStream, WritesTheBytesUpToTheFirstNulAndNothingForAnUndefinedText) {
    std::ostringstream stream;
    stream << defined() << '|' << NkDtString("M\xFCller") << '|' << withNul() << '|' << missing() << null()
           << '|';
    EXPECT_EQ(stream.str(), "abc|M\xFCller|a||");
}

TEST(NkDtStringStream, WritesNothingForAnUndefinedTextThatHoldsCharacters) {
    for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
        const NkDtString text = undefinedWithText(mode, "abc");
        ASSERT_EQ(bytesOf(text), "abc");
        std::ostringstream stream;
        stream << '|' << text << '|';
        EXPECT_EQ(stream.str(), "||");
    }
}

// --- Equality -----------------------------------------------------------------------------------

TEST(NkDtStringEquality, IsExact) {
    struct Case {
        const char* a;
        const char* b;
        BOOL equal;
    };
    constexpr Case cases[] = {{"abc", "abc", TRUE},    {"abc", "ABC", FALSE},  {"abc", "abcd", FALSE},
                              {"abcd", "abc", FALSE},  {"", "", TRUE},         {"", "a", FALSE},
                              {"\xE4", "\xC4", FALSE}, {"\xE4", "\xE4", TRUE}, {"a", "\xE4", FALSE},
                              {" a", "a", FALSE}};
    for (const Case& each : cases) {
        const NkDtString a(each.a);
        const NkDtString b(each.b);
        EXPECT_EQ(a == b, each.equal);
        EXPECT_EQ(a != b, !each.equal);
        EXPECT_EQ(a == each.b, each.equal);
        EXPECT_EQ(a != each.b, !each.equal);
    }
}

TEST(NkDtStringEquality, LooksAtTheTextUpToTheFirstNul) {
    EXPECT_TRUE(withNul() == "a");
    EXPECT_TRUE(withNul() == NkDtString("a"));
    EXPECT_TRUE(NkDtString("", 5, 0) == "");
}

TEST(NkDtStringEquality, TakesANullTextForTheEmptyOne) {
    EXPECT_TRUE(null() == "");
    EXPECT_TRUE(null() == empty());
    EXPECT_TRUE(empty() == null());
    EXPECT_TRUE(null() == null());
    EXPECT_FALSE(null() != "");
    EXPECT_TRUE(null() != "a");
    EXPECT_TRUE(undefinedInModeTwo() == "");
}

// --- Order --------------------------------------------------------------------------------------

TEST(NkDtStringOrder, FollowsTheSortOrderWithoutRegardToCase) {
    struct Case {
        const char* a;
        const char* b;
        int order;
    };
    constexpr Case cases[] = {
        {"abc", "ABD", -1}, {"ABD", "abc", 1}, {"abc", "ABC", 0},   {"abc", "abc", 0}, {"a", "b", -1},
        {"a", "ab", -1},    {"ab", "a", 1},    {"", "a", -1},       {"", "", 0},       {"Z", "\xE4", 1},
        {"a", "\xE4", -1},  {"b", "\xE4", 1},  {"\xE4", "\xC4", 0}, {"9", "a", -1},    {"!", "9", -1},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(std::string(each.a) + " and " + each.b);
        const NkDtString a(each.a);
        const NkDtString b(each.b);
        EXPECT_EQ(a < b, each.order < 0);
        EXPECT_EQ(a > b, each.order > 0);
        EXPECT_EQ(a <= b, each.order <= 0);
        EXPECT_EQ(a >= b, each.order >= 0);
        EXPECT_EQ(a < each.b, each.order < 0);
        EXPECT_EQ(a > each.b, each.order > 0);
        EXPECT_EQ(a <= each.b, each.order <= 0);
        EXPECT_EQ(a >= each.b, each.order >= 0);
    }
}

TEST(NkDtStringOrder, DiffersFromEqualityOnPurpose) {
    const NkDtString lower("abc");
    const NkDtString upper("ABC");
    EXPECT_FALSE(lower == upper);
    EXPECT_TRUE(lower <= upper);
    EXPECT_TRUE(lower >= upper);
}

TEST(NkDtStringOrder, TakesANullTextForTheEmptyOne) {
    EXPECT_TRUE(null() < "a");
    EXPECT_TRUE(null() <= "");
    EXPECT_TRUE(null() >= empty());
    EXPECT_FALSE(null() > null());
}

// --- Errors of comparisons ------------------------------------------------------------------------

TEST(NkDtStringComparison, OfAMissingTextRaisesError2) {
    static const NkDtString a(NkDtWmMissing);
    static const NkDtString b("abc");
    constexpr const char* module = ".\\dtstrope.cc";
    const std::string name = "NkDtString";
    expectOrigins({
        {"==", [] { static_cast<void>(a == b); }, 2, module, name, "operator==(NkDtString&)"},
        {"== right", [] { static_cast<void>(b == a); }, 2, module, name, "operator==(NkDtString&)"},
        {"!=", [] { static_cast<void>(a != b); }, 2, module, name, "operator!=(NkDtString&)"},
        {"!= right", [] { static_cast<void>(b != a); }, 2, module, name, "operator!=(NkDtString&)"},
        {"<", [] { static_cast<void>(a < b); }, 2, module, name, "operator<(NkDtString&)"},
        {"< right", [] { static_cast<void>(b < a); }, 2, module, name, "operator<(NkDtString&)"},
        {">", [] { static_cast<void>(a > b); }, 2, module, name, "operator>(NkDtString&)"},
        {"<=", [] { static_cast<void>(a <= b); }, 2, module, name, "operator<=(NkDtString&)"},
        {">=", [] { static_cast<void>(a >= b); }, 2, module, name, "operator>=(NkDtString&)"},
        {"== text", [] { static_cast<void>(a == "abc"); }, 2, module, name, "operator==(LPCTSTR)"},
        {"!= text", [] { static_cast<void>(a != "abc"); }, 2, module, name, "operator!=(LPCTSTR)"},
        {"< text", [] { static_cast<void>(a < "abc"); }, 2, module, name, "operator<(LPCTSTR)"},
        {"> text", [] { static_cast<void>(a > "abc"); }, 2, module, name, "operator>(LPCTSTR)"},
        {"<= text", [] { static_cast<void>(a <= "abc"); }, 2, module, name, "operator<=(LPCTSTR)"},
        {">= text", [] { static_cast<void>(a >= "abc"); }, 2, module, name, "operator>=(LPCTSTR)"},
    });
}

TEST(NkDtStringComparison, OfTwoMissingTextsRaisesError2) {
    expectError(NkDtErrUndefiniert, [] { static_cast<void>(missing() == missing()); });
    expectError(NkDtErrUndefiniert, [] { static_cast<void>(missing() < null()); });
}

TEST(NkDtStringComparison, WithANullPointerIsRefusedAfterTheTestForMissing) {
    const LPCTSTR pointer = nullptr;
    expectError(NkDtErrInitialwert, [&] { static_cast<void>(defined() == pointer); });
    expectError(NkDtErrInitialwert, [&] { static_cast<void>(defined() < pointer); });
    expectError(NkDtErrInitialwert, [&] { static_cast<void>(null() != pointer); });
    expectError(NkDtErrUndefiniert, [&] { static_cast<void>(missing() == pointer); });
}

TEST(NkDtStringOperators, NameTheOriginsOfTheirErrors) {
    static NkDtString text("abc");
    static constexpr LPCTSTR pointer = nullptr;
    constexpr const char* module = ".\\dtstrope.cc";
    const std::string name = "NkDtString";
    expectOrigins({
        {"append", [] { text += pointer; }, 5, module, name, "operator+=(LPCTSTR)"},
        {"concatenate right", [] { static_cast<void>(text + pointer); }, 5, module, name,
         "operator+(LPCTSTR)"},
        {"concatenate left", [] { static_cast<void>(pointer + text); }, 5, module, name,
         "operator+(LPCTSTR,NkDtString&)"},
        {"compare", [] { static_cast<void>(text == pointer); }, 5, module, name, "operator==(LPCTSTR)"},
    });
}

}  // namespace
