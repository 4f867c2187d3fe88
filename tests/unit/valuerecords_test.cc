// The two records of a value, made and ended together.

#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtString.h>
#include <nkdt/RecordPool.h>
#include <nkeh/NkEhBasis.h>

#include <algorithm>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "MemoryTesting.h"

namespace {

using memorytest::Pool;
using memorytest::Requests;

/// Whether this build and this run have a pool at all.
bool poolExists() {
    const Pool on(true);
    return nkdt::enableRecordPool(true);
}

/// The calling thread's pool, on and with nothing in it.
class EmptyPool {
  public:
    EmptyPool() : m_restore(false) { nkdt::enableRecordPool(true); }

  private:
    Pool m_restore;
};

/// Whether the action raises an error when the n-th request for memory fails.
template <class Action>
bool fails(long failing, Action action) {
    const Requests requests(failing);
    try {
        action();
    } catch (NkEhBasis* error) {
        error->Delete();
        return true;
    }
    return false;
}

TEST(ValueRecords, AskTheSystemForTheOneThatThePoolLacks) {
    if (!poolExists()) GTEST_SKIP() << "no pool in this run";
    const EmptyPool empty;
    { const NkDtString threeBlocks("abc"); }
    const NkDtLong takesTwo(1);
    const Requests requests;
    const NkDtLong takesTheThird(2);
    EXPECT_EQ(Requests::count(), 1);
    EXPECT_EQ(takesTwo.GetValue() + takesTheThird.GetValue(), 3);
}

TEST(ValueRecords, GiveBackTheFirstWhenThereIsNoSecond) {
    const Pool off(false);
    for (const long failing : {1L, 2L})
        EXPECT_TRUE(fails(failing, [] { const NkDtLong value(1); })) << "request " << failing;
}

TEST(ValueRecords, GiveBothBackWhenTheTextFindsNoBuffer) {
    if (!poolExists()) GTEST_SKIP() << "no pool in this run";
    const EmptyPool empty;
    const NkDtString source("a text that is too long for a block of the pool");
    { const NkDtLong twoBlocks(1); }
    EXPECT_TRUE(fails(1, [&] { const NkDtString copy(source); }));
    const Requests requests;
    const NkDtLong again(2);
    EXPECT_EQ(Requests::count(), 0);
}

TEST(ValueRecords, EndOneByOneWhenAHuskHasMadeItselfOneOnly) {
    NkDtLong moved(1);
    const NkDtLong target(std::move(moved));
    EXPECT_FALSE(moved.IsDefined());  // asks for the state alone
    NkDtString movedText("abc");
    const NkDtString targetText(std::move(movedText));
    EXPECT_EQ(movedText.GetLength(), 0);  // asks for the text alone
    EXPECT_EQ(target.GetValue(), 1);
    EXPECT_STREQ(targetText, "abc");
}

TEST(ValueRecords, AreNotMadeWhileAVectorGrowsAndIsSorted) {
    const Pool off(false);
    constexpr int values = 1000;
    std::vector<NkDtLong> numbers;
    std::vector<NkDtString> texts;
    const Requests requests;
    for (int i = 0; i < values; ++i) {
        numbers.push_back(NkDtLong(i * 7919 % values));
        texts.push_back(NkDtString(i * 7919 % values));
    }
    EXPECT_EQ(Requests::count(), 2 * values + 3 * values);  // two records each, and the buffer of a text
    std::sort(numbers.begin(), numbers.end());
    std::sort(texts.begin(), texts.end());
    EXPECT_EQ(Requests::count(), 5 * values);
    EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
    EXPECT_TRUE(std::is_sorted(texts.begin(), texts.end()));
}

}  // namespace
