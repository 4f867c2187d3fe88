// Computing with durations and comparing them.

#include <nkdt/Hash.h>
#include <nkdt/NkDtString.h>
#include <nkdt/NkDtTime.h>

#include <functional>
#include <map>
#include <random>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "DurationTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;
using namespace durationtest;
using T = NkDtTime;

// --- Sum and difference ---------------------------------------------------------------------------

TEST(DurationSum, AddsAndSubtractsTheTicksInTheModeOfTheLeftOperand) {
    const DefaultMode scope(NkDtWmNull);
    T a = ofTicks(1800, T::Hundredths, NkDtWmMissing);
    T b = ofTicks(2407, T::HoursOnly, NkDtWmMissing);
    a.SetModified(TRUE);
    b.SetModified(TRUE);
    EXPECT_EQ(show(a + b), "4207:0 defined");
    EXPECT_EQ(show(b + a), "4207:2 defined");
    EXPECT_EQ(show(a - b), "-607:0 defined");
    EXPECT_EQ(show(b - a), "607:2 defined");
    EXPECT_EQ(show(a + a), "3600:0 defined");
    EXPECT_EQ(show(a - a), "0:0 defined");
    EXPECT_EQ((a + b).GetWorkingMode(), NkDtWmNull);
    EXPECT_EQ((a + b).GetFormat(), nullptr);
    EXPECT_EQ(show(a), "1800:0 defined modified");
}

TEST(DurationSum, ComputesWithTheStoredLengthOfANull) {
    const T one = ofTicks(1200);
    const T null = undefined(NkDtWmNull, 600, T::Hundredths);
    EXPECT_EQ(show(one + T(NkDtWmNull)), "1200:1 defined");
    EXPECT_EQ(show(one + null), "1800:1 defined");
    EXPECT_EQ(show(null - one), "-600:0 defined");
    EXPECT_EQ(show(one - undefined(NkDtWmDefined, 600)), "600:1 defined");
}

TEST(DurationSum, IsUndefinedWhenItCannotBeComputed) {
    const T one = ofTicks(1200, T::Hundredths);
    const T missing = undefined(NkDtWmMissing, 5);
    const T null = undefined(NkDtWmNull, 5);
    const T inModeTwo = undefined(NkDtWmDefined, 5);
    for (const NkDtWorkingMode mode : kStoredModes) {
        const DefaultMode scope(mode);
        const std::string nothing = show(T(NkDtWmDefault));
        for (const auto& [a, b] : {std::pair{&one, &missing},
                                   {&missing, &one},
                                   {&null, &null},
                                   {&null, &missing},
                                   {&missing, &missing},
                                   {&null, &inModeTwo},
                                   {&inModeTwo, &inModeTwo}}) {
            EXPECT_EQ(show(*a + *b), nothing) << show(*a) << ", " << show(*b);
            EXPECT_EQ(show(*a - *b), nothing) << show(*a) << ", " << show(*b);
        }
    }
}

TEST(DurationSum, IsRefusedBeyondTheTicks) {
    const T most = ofTicks(kMostTicks);
    const T fewest = ofTicks(kFewestTicks);
    const T one = ofTicks(1);
    EXPECT_EQ(ticksOf(ofTicks(kMostTicks - 1) + one), kMostTicks);
    EXPECT_EQ(ticksOf(most + fewest), -1);
    EXPECT_EQ(ticksOf(ofTicks(-1) - most), kFewestTicks);
    constexpr const char* module = ".\\dttime.cc";
    const std::string name = "NkDtTime";
    expectOrigins({
        {"+", [&] { (void)(most + one); }, 8, module, name, "operator+(NkDtTime&)"},
        {"+ fewest", [&] { (void)(fewest + fewest); }, 8, module, name, "operator+(NkDtTime&)"},
        {"-", [&] { (void)(fewest - one); }, 8, module, name, "operator-(NkDtTime&)"},
        {"- fewest", [&] { (void)(one - fewest); }, 8, module, name, "operator-(NkDtTime&)"},
    });
}

// --- In place -------------------------------------------------------------------------------------

TEST(DurationInPlace, AddsAndSubtractsAndKeepsItsModes) {
    T t = ofTicks(1800, T::Hundredths, NkDtWmNull);
    T& result = t += ofTicks(600, T::HoursOnly);
    EXPECT_EQ(&result, &t);
    EXPECT_EQ(show(t), "2400:0 defined modified");
    EXPECT_EQ(t.GetWorkingMode(), NkDtWmNull);
    t -= ofTicks(2401);
    EXPECT_EQ(show(t), "-1:0 defined modified");
}

TEST(DurationInPlace, IsModifiedByAnotherLengthOrDefinednessOnly) {
    T t = ofTicks(1800);
    t += T(0, 0);
    t -= T(NkDtWmNull);
    EXPECT_EQ(show(t), "1800:1 defined");
    T null = undefined(NkDtWmNull, 600);
    null += T(0, 0);
    EXPECT_EQ(show(null), "600:1 defined modified");
    T inModeTwo = undefined(NkDtWmDefined, 600);
    inModeTwo -= ofTicks(200);
    EXPECT_EQ(show(inModeTwo), "400:1 defined modified");
}

TEST(DurationInPlace, IsComputedWithItself) {
    T t = ofTicks(1800);
    const T& itself = t;
    t += itself;
    EXPECT_EQ(show(t), "3600:1 defined modified");
    t -= itself;
    EXPECT_EQ(show(t), "0:1 defined modified");
    T null = undefined(NkDtWmNull, 5);
    const T& nullItself = null;
    null += nullItself;
    EXPECT_EQ(show(null), "0:1 null modified");
}

TEST(DurationInPlace, BecomesAnUndefinedZeroWhenItCannotBeComputedWhateverItsWorkingMode) {
    struct Case {
        T left;
        T right;
        const char* after;
    };
    const Case cases[] = {
        {ofTicks(1800), undefined(NkDtWmMissing, 5), "0:1 missing modified"},
        {ofTicks(1800, T::Hundredths, NkDtWmNull), undefined(NkDtWmMissing), "0:0 null modified"},
        {ofTicks(1800, T::Minutes, NkDtWmDefined), undefined(NkDtWmMissing), "0:1 undefined modified"},
        {ofTicks(0, T::Minutes, NkDtWmDefined), undefined(NkDtWmMissing), "0:1 undefined modified"},
        {undefined(NkDtWmMissing), ofTicks(1800), "0:1 missing"},
        {undefined(NkDtWmMissing, 5), ofTicks(1800), "0:1 missing modified"},
        {undefined(NkDtWmNull), undefined(NkDtWmNull, 5), "0:1 null"},
    };
    for (const Case& each : cases) {
        T sum(each.left);
        sum += each.right;
        EXPECT_EQ(show(sum), each.after) << show(each.left) << ", " << show(each.right);
        T difference(each.left);
        difference -= each.right;
        EXPECT_EQ(show(difference), each.after);
    }
}

TEST(DurationInPlace, StaysAsItWasBeyondTheTicks) {
    constexpr const char* module = ".\\dttime.cc";
    const std::string name = "NkDtTime";
    T most = ofTicks(kMostTicks);
    T null = undefined(NkDtWmNull, kFewestTicks);
    expectOrigins({
        {"+=", [&] { most += ofTicks(1); }, 8, module, name, "operator+=(NkDtTime&)"},
        {"-=", [&] { null -= ofTicks(1); }, 8, module, name, "operator-=(NkDtTime&)"},
        {"+= itself", [&] { most += static_cast<const T&>(most); }, 8, module, name, "operator+=(NkDtTime&)"},
    });
    EXPECT_EQ(show(most), "2147483647:1 defined");
    EXPECT_EQ(show(null), "-2147483648:1 null");
}

// --- Comparing ------------------------------------------------------------------------------------

using Compared = std::function<BOOL(const T&, const T&)>;
const std::pair<const char*, Compared> kComparisons[] = {
    {"operator==(NkDtTime&)", [](const T& a, const T& b) { return a == b; }},
    {"operator!=(NkDtTime&)", [](const T& a, const T& b) { return a != b; }},
    {"operator<(NkDtTime&)", [](const T& a, const T& b) { return a < b; }},
    {"operator>(NkDtTime&)", [](const T& a, const T& b) { return a > b; }},
    {"operator<=(NkDtTime&)", [](const T& a, const T& b) { return a <= b; }},
    {"operator>=(NkDtTime&)", [](const T& a, const T& b) { return a >= b; }},
};

TEST(DurationComparison, LooksAtTheTicksWhateverTheModes) {
    const LONG lengths[] = {kFewestTicks, -1800, -1, 0, 1, 1800, kMostTicks};
    for (const LONG left : lengths) {
        for (const LONG right : lengths) {
            const BOOL expected[] = {left == right, left != right, left<right, left> right, left <= right,
                                     left >= right};
            for (const TimeMode mode : kTimeModes) {
                const T a = ofTicks(left, T::Minutes, NkDtWmNull);
                const T b = ofTicks(right, mode);
                for (std::size_t i = 0; i < std::size(kComparisons); ++i)
                    EXPECT_EQ(kComparisons[i].second(a, b), expected[i])
                        << kComparisons[i].first << " " << left << " " << right;
            }
        }
    }
}

TEST(DurationComparison, ComparesANullByItsStoredLength) {
    EXPECT_EQ(T(NkDtWmNull) == T(0, 0), TRUE);
    EXPECT_EQ(undefined(NkDtWmNull, 1800) == T(1, 30), TRUE);
    EXPECT_EQ(T(1, 0) < undefined(NkDtWmNull, 1800), TRUE);
    EXPECT_EQ(undefined(NkDtWmDefined, 5) > undefined(NkDtWmNull, 4), TRUE);
}

TEST(DurationComparison, RefusesAMissingOperandOnEitherSide) {
    const T missing = undefined(NkDtWmMissing, 1800);
    const T one(1, 30);
    for (const auto& [signature, compare] : kComparisons) {
        for (const auto& [a, b] : {std::pair{&missing, &one}, {&one, &missing}, {&missing, &missing}}) {
            expectOrigins({{signature, [&, &by = compare, a = a, b = b] { by(*a, *b); }, NkDtErrUndefiniert,
                            ".\\dttime.cc", "NkDtTime", signature}});
        }
    }
}

TEST(DurationComparison, HashesEqualLengthsAlikeWhateverTheModes) {
    const std::hash<T> hash;
    std::mt19937 random(20260505);
    std::uniform_int_distribution<LONG> ticks(kFewestTicks, kMostTicks);
    for (int i = 0; i < 1000; ++i) {
        const LONG n = ticks(random);
        EXPECT_EQ(hash(ofTicks(n)), hash(ofTicks(n, T::HoursOnly)));
        EXPECT_EQ(hash(ofTicks(n)), hash(undefined(NkDtWmNull, n, T::Hundredths)));
    }
    EXPECT_EQ(hash(undefined(NkDtWmMissing, 7)), hash(T(NkDtWmMissing)));
    std::map<std::size_t, int> places;
    for (LONG minutes = 0; minutes < 1000; ++minutes)
        ++places[hash(T(0, minutes))];
    EXPECT_EQ(places.size(), 1000U);
}

// --- Text -----------------------------------------------------------------------------------------

TEST(DurationText, IsJoinedWithTextsInBothOrders) {
    const T t(1, 30);
    const NkDtString s("s");
    const CString cs("cs");
    EXPECT_EQ(bytesOf("Dauer: " + t), "Dauer: 01:30");
    EXPECT_EQ(bytesOf(t + " h"), "01:30 h");
    EXPECT_EQ(bytesOf(s + t), "s01:30");
    EXPECT_EQ(bytesOf(t + s), "01:30s");
    EXPECT_EQ(bytesOf(cs + t), "cs01:30");
    EXPECT_EQ(bytesOf(t + cs), "01:30cs");
    EXPECT_EQ(bytesOf(s + T(NkDtWmMissing)), "s");
    EXPECT_EQ(bytesOf(T(NkDtWmNull) + "x"), "x");
}

}  // namespace
