// The pool of the records: what it keeps back, and how it ends.

#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtString.h>
#include <nkdt/RecordPool.h>

#include <cstdlib>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "MemoryTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;
using memorytest::Pool;
using memorytest::poolExists;
using memorytest::Requests;

constexpr const char* kShortText = "12345678901234567890123";  // 23 characters: a block with its terminator
constexpr const char* kLongText = "123456789012345678901234";  // 24

TEST(RecordPool, AsksTheSystemForEachRecordWhenItIsOff) {
    const Pool off(false);
    {
        const Requests requests;
        const NkDtLong number(5);
        EXPECT_EQ(Requests::count(), 2);
        EXPECT_EQ(Requests::bytes(), 2 * nkdt::recordBlockSize);
    }
    {
        const Requests requests;
        const NkDtString undefined(NkDtWmNull);
        EXPECT_EQ(Requests::count(), 2);
    }
    {
        const Requests requests;
        const NkDtString text(kShortText);
        EXPECT_EQ(Requests::count(), 3);
        EXPECT_EQ(Requests::bytes(), 3 * nkdt::recordBlockSize);
    }
    {
        const Requests requests;
        const NkDtString text(kLongText);
        EXPECT_EQ(Requests::count(), 3);
        EXPECT_EQ(Requests::bytes(), 2 * nkdt::recordBlockSize + 25);
    }
}

TEST(RecordPool, GivesBackWhatItKeptSoThatTheSystemIsNotAskedAgain) {
    if (!poolExists()) GTEST_SKIP() << "no pool in this run";
    const Pool on(true);
    {
        const NkDtString first(kShortText);
        const NkDtLong second(5);
    }
    const Requests requests;
    const NkDtString first(kShortText);
    const NkDtLong second(6);
    EXPECT_EQ(Requests::count(), 0);
    EXPECT_STREQ(first, kShortText);
    EXPECT_EQ(second.GetValue(), 6);
}

TEST(RecordPool, KeepsNoMoreBlocksThanItsBound) {
    if (!poolExists()) GTEST_SKIP() << "no pool in this run";
    const Pool on(true);
    constexpr std::size_t values = nkdt::recordPoolLimit;  // of two records each
    { const std::vector<NkDtLong> many(values, NkDtLong(5)); }
    std::vector<NkDtLong> many;
    many.reserve(values);
    const Requests requests;
    for (std::size_t i = 0; i < values; ++i)
        many.emplace_back(5);
    EXPECT_EQ(Requests::count(), static_cast<long>(2 * values - nkdt::recordPoolLimit));
}

TEST(RecordPool, TellsWhetherItWasOn) {
    const Pool restore(true);
    const bool exists = poolExists();
    nkdt::enableRecordPool(true);
    EXPECT_EQ(nkdt::enableRecordPool(false), exists);
    EXPECT_FALSE(nkdt::enableRecordPool(false));
    EXPECT_FALSE(nkdt::enableRecordPool(true));
    EXPECT_EQ(nkdt::enableRecordPool(true), exists);
}

TEST(RecordPool, IsEmptiedWhenItIsSwitchedOff) {
    const Pool restore(true);
    { const std::vector<NkDtLong> some(10, NkDtLong(5)); }
    nkdt::enableRecordPool(false);
    nkdt::enableRecordPool(true);
    const Requests requests;
    const NkDtLong number(5);
    EXPECT_EQ(Requests::count(), 2);
}

TEST(RecordPool, TakesBackBlocksOfTheTimeWhenItWasOff) {
    const Pool restore(false);
    std::vector<NkDtString> texts(10, NkDtString(kShortText));
    nkdt::enableRecordPool(true);
    texts.clear();
    const NkDtString text(kShortText);
    nkdt::enableRecordPool(false);
    EXPECT_STREQ(text, kShortText);  // a block from the pool, freed without it
}

TEST(RecordPool, BelongsToEachThreadAlone) {
    const Pool off(false);
    bool other = false;
    std::thread([&] { other = nkdt::enableRecordPool(true); }).join();
    EXPECT_EQ(other, poolExists());
}

TEST(RecordPool, EndsAValueOnAnotherThreadThanTheOneThatMadeIt) {
    std::vector<NkDtString> made;
    std::thread([&] {
        for (int i = 0; i < 100; ++i)
            made.emplace_back(i);
    }).join();
    std::string last;
    std::thread([texts = std::move(made), &last]() mutable {
        last = texts.back().GetValue();
        texts.clear();
        const NkDtString another(7);
        last += another.GetValue();
    }).join();
    EXPECT_EQ(last, "997");
}

// What a thread's last value saw.
struct LastWords {
    std::string text;
    bool poolBefore = true;
    bool poolAfter = true;
};

// Ends after the thread's pool, because it was made before the thread gave its first block back.
class Latecomer {
  public:
    explicit Latecomer(LastWords& words) : m_words(words) {}
    ~Latecomer() {
        m_words.text = m_text.GetValue();
        m_words.poolBefore = nkdt::enableRecordPool(true);
        m_words.poolAfter = nkdt::enableRecordPool(true);
        m_text = NkDtString("made after the end of the pool");
        m_words.text += m_text.GetValue();
        const NkDtLong another(5);
        m_words.text += NkDtString(another).GetValue();
    }
    Latecomer(const Latecomer&) = delete;
    Latecomer& operator=(const Latecomer&) = delete;

  private:
    LastWords& m_words;
    NkDtString m_text{"early, "};
};

TEST(RecordPool, LetsValuesEndAfterTheThreadsPoolHasEnded) {
    if (!poolExists()) GTEST_SKIP() << "no pool in this run";
    LastWords words;
    std::thread([&] {
        thread_local const Latecomer latecomer(words);
        const NkDtLong first(5);  // its end starts the pool, whose end is thus before the latecomer's
    }).join();
    EXPECT_EQ(words.text, "early, made after the end of the pool5");
    EXPECT_FALSE(words.poolBefore);
    EXPECT_FALSE(words.poolAfter);
}

TEST(RecordPoolDeathTest, LetsStaticValuesEndWithTheProgram) {
    EXPECT_EXIT(
        {
            static NkDtString text(kShortText);
            static NkDtLong number(5);
            { const NkDtLong first(5); }
            std::exit(text.GetLength() == 23 && number.GetValue() == 5 ? 7 : 1);
        },
        ::testing::ExitedWithCode(7), "");
}

TEST(RecordPoolDeathTest, IsOffWhereTheEnvironmentSaysSo) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto exitCode = [](const char* setting) {
        setenv("NKDT_POOL", setting, 1);
        { const NkDtLong first(5); }
        std::exit(nkdt::enableRecordPool(false) ? 11 : 12);
    };
    EXPECT_EXIT(exitCode("off"), ::testing::ExitedWithCode(12), "");
    if (poolExists()) {
        EXPECT_EXIT(exitCode("on"), ::testing::ExitedWithCode(11), "");
    }
}

}  // namespace
