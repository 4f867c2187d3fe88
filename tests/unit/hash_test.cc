// Values as keys of unordered containers, and views of texts.

#include <nkdt/Hash.h>
#include <nkdt/TextView.h>

#include <ctime>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>

#include <gtest/gtest.h>

#include "TextTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;

template <class Value>
std::size_t hashOf(const Value& value) {
    return std::hash<Value>()(value);
}

template <class Value>
class AnyHash : public ::testing::Test {};
TYPED_TEST_SUITE(AnyHash, ValueClasses, ClassNames);

TYPED_TEST(AnyHash, IsTheSameForEqualValuesWhateverTheirState) {
    const auto values = states<TypeParam>();
    for (const TypeParam& a : values) {
        for (const TypeParam& b : values) {
            if (a.IsMissing() || b.IsMissing()) continue;
            if (a == b) {
                EXPECT_EQ(hashOf(a), hashOf(b)) << describe(a) << ", " << describe(b);
            }
        }
    }
    EXPECT_EQ(hashOf(TypeParam(NkDtWmNull)), hashOf(Sample<TypeParam>::empty()));
    EXPECT_NE(hashOf(Sample<TypeParam>::one()), hashOf(Sample<TypeParam>::other()));
}

TYPED_TEST(AnyHash, OfAMissingValueRaisesNothing) {
    const TypeParam missing(NkDtWmMissing);
    EXPECT_EQ(errorOf([&] { (void)hashOf(missing); }), nullptr);
    EXPECT_EQ(hashOf(missing), hashOf(Sample<TypeParam>::empty()));
}

TYPED_TEST(AnyHash, MakesKeys) {
    std::unordered_map<TypeParam, int> counts;
    ++counts[Sample<TypeParam>::one()];
    ++counts[Sample<TypeParam>::other()];
    ++counts[Sample<TypeParam>::one()];
    EXPECT_EQ(counts.size(), 2U);
    EXPECT_EQ(counts.at(Sample<TypeParam>::one()), 2);
    expectError(NkDtErrUndefiniert, [&] {
        std::unordered_set<TypeParam> missing;
        missing.insert(TypeParam(NkDtWmMissing));
        missing.insert(TypeParam(NkDtWmMissing));
    });
}

TYPED_TEST(AnyHash, OfALoadedNullIsThatOfItsStoredValue) {
    TypeParam source = Sample<TypeParam>::one();
    Bytes bytes = stored(source);
    bytes[0] = 0;  // undefined
    TypeParam null(NkDtWmNull);
    load(null, bytes);
    ASSERT_TRUE(null.IsNull());
    // What is archived as a text is loaded empty when it is undefined.
    if constexpr (std::is_same_v<TypeParam, NkDtString> || std::is_same_v<TypeParam, NkDtDecimal>) {
        EXPECT_EQ(hashOf(null), hashOf(Sample<TypeParam>::empty()));
    } else {
        EXPECT_EQ(hashOf(null), hashOf(source));
    }
}

TEST(TextHash, SeesTheTextUpToItsFirstNulAsComparingDoes) {
    NkDtString withNul("ab", 2, 10);
    withNul += '\0';
    withNul += 'c';
    ASSERT_TRUE(withNul == NkDtString("ab"));
    EXPECT_EQ(hashOf(withNul), hashOf(NkDtString("ab")));
    EXPECT_NE(hashOf(NkDtString("ab")), hashOf(NkDtString("AB")));
    const NkDtString null = undefinedWithText(NkDtWmNull, "abc");
    ASSERT_TRUE(null == "abc");
    EXPECT_EQ(hashOf(null), hashOf(NkDtString("abc")));
}

TEST(DateHash, SeesTheSixFieldsThatComparingSees) {
    const NkDtDateTime date(5, 3, 2004, 14, 7, 9);
    const NkDtDateTime others[] = {{5, 3, 2004, 14, 7, 8}, {5, 3, 2004, 14, 8, 9}, {5, 3, 2004, 13, 7, 9},
                                   {6, 3, 2004, 14, 7, 9}, {5, 4, 2004, 14, 7, 9}, {5, 3, 2005, 14, 7, 9}};
    for (const NkDtDateTime& other : others)
        EXPECT_NE(hashOf(date), hashOf(other)) << describe(other);
    const std::time_t now = 1078488429;
    const NkDtDateTime ofClock(now);  // with its day of the week
    const NkDtDateTime ofFields(ofClock.GetDay365(), ofClock.GetMonth(), ofClock.GetYear(), ofClock.GetHour(),
                                ofClock.GetMin(), ofClock.GetSecond());
    EXPECT_EQ(hashOf(ofClock), hashOf(ofFields));
    EXPECT_EQ(hashOf(NkDtDateZp(5, 3, 2004)), hashOf(NkDtDateTime(5, 3, 2004)));
    NkDtDateZp withTime(5, 3, 2004);
    withTime.SetHour(14);
    EXPECT_NE(hashOf(withTime), hashOf(NkDtDateZp(5, 3, 2004)));
}

// --- Views -------------------------------------------------------------------------------------------

TEST(TextView, IsTheWholeTextWhereItLies) {
    NkDtString text("M\xFCller");
    EXPECT_EQ(NkDtTextView(text), std::string_view("M\xFCller"));
    EXPECT_EQ(NkDtTextView(text).data(), text.GetValue());
    text += '\0';
    text += 'x';
    EXPECT_EQ(NkDtTextView(text), std::string_view("M\xFCller\0x", 8));
    const NkDtString filled("", 3, 0);
    EXPECT_EQ(NkDtTextView(filled), std::string_view("\0\0\0", 3));
}

TEST(TextView, IsEmptyForAnUndefinedTextAndRaisesNothing) {
    for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
        const NkDtString undefined(mode);
        EXPECT_EQ(NkDtTextView(undefined), std::string_view());
        const NkDtString withText = undefinedWithText(mode, "abc");
        EXPECT_EQ(NkDtTextView(withText), std::string_view());
    }
    const NkDtString empty("");
    EXPECT_EQ(NkDtTextView(empty), std::string_view());
}

template <class Text>
using ViewOf = decltype(NkDtTextView(std::declval<Text>()));
template <class Text, class = void>
constexpr bool hasView = false;
template <class Text>
constexpr bool hasView<Text, std::void_t<ViewOf<Text>>> = true;

TEST(TextView, OfATemporaryDoesNotCompile) {
    EXPECT_TRUE(hasView<NkDtString&>);
    EXPECT_TRUE(hasView<const NkDtString&>);
    EXPECT_FALSE(hasView<NkDtString>);
    EXPECT_FALSE(hasView<const NkDtString>);
    EXPECT_FALSE(hasView<const char*>);
}

}  // namespace
