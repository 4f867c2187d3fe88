#include <nkdec/Decimal96Handlers.h>

#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "DecimalTest.h"

namespace {

using namespace decimaltest;
using Operation = Decimal96Operation;

/// What the action throws, as the operation that it names.
template <class Caught, class Action>
testing::AssertionResult throws(Operation operation, Action action) {
    try {
        action();
    } catch (const Caught& caught) {
        if (caught.operation == operation) return testing::AssertionSuccess();
        return testing::AssertionFailure() << "names operation " << static_cast<int>(caught.operation);
    }
    return testing::AssertionFailure() << "nothing is thrown";
}

TEST(Decimal96Handlers, NothingIsCalledUnlessSet) {
    EXPECT_EQ(setDecimal96OverflowHandler(nullptr), nullptr);
    EXPECT_EQ(setDecimal96InexactHandler(nullptr), nullptr);
    EXPECT_EQ((largest() + largest()).state(), Decimal96State::overflow);
}

TEST(Decimal96Handlers, SettingTellsTheHandlerBefore) {
    const Decimal96Handler handler = [](Operation) {};
    EXPECT_EQ(setDecimal96OverflowHandler(handler), nullptr);
    EXPECT_EQ(setDecimal96OverflowHandler(handler), handler);
    EXPECT_EQ(setDecimal96OverflowHandler(nullptr), handler);
    EXPECT_EQ(setDecimal96InexactHandler(handler), nullptr);
    EXPECT_EQ(setDecimal96InexactHandler(nullptr), handler);
}

TEST(Decimal96Handlers, EveryOverflowNamesItsOperation) {
    const ThrowingHandlers handlers;
    const Decimal96 huge = Decimal96::fromMantissa(0, 1, -29);
    EXPECT_TRUE(throws<Overflow>(Operation::add, [] { static_cast<void>(largest() + 1); }));
    EXPECT_TRUE(throws<Overflow>(Operation::add, [] { static_cast<void>(-largest() - 1); }));
    EXPECT_TRUE(throws<Overflow>(Operation::multiply, [] { static_cast<void>(largest() * 2); }));
    EXPECT_TRUE(throws<Overflow>(Operation::multiply,
                                 [] { static_cast<void>(Decimal96::multiplyRounded(largest(), 2, 0)); }));
    EXPECT_TRUE(throws<Overflow>(Operation::divide, [] { static_cast<void>(largest() / dec("0.1")); }));
    EXPECT_TRUE(throws<Overflow>(Operation::divide, [] { static_cast<void>(dec("1") / 0); }));
    EXPECT_TRUE(throws<Overflow>(
        Operation::divide, [] { static_cast<void>(Decimal96::divideRounded(largest(), dec("0.1"), 2)); }));
    EXPECT_TRUE(
        throws<Overflow>(Operation::divide, [] { static_cast<void>(dec("1").truncatedQuotient(0)); }));
    EXPECT_TRUE(throws<Overflow>(Operation::remainder, [] { static_cast<void>(dec("1") % 0); }));
    EXPECT_TRUE(throws<Overflow>(Operation::remainder, [] { static_cast<void>(largest() % dec("0.3")); }));
    EXPECT_TRUE(throws<Overflow>(Operation::round, [] { static_cast<void>(largest().round(-1)); }));
    EXPECT_TRUE(throws<Overflow>(Operation::compare, [&] { static_cast<void>(huge < 1); }));
    EXPECT_TRUE(throws<Overflow>(Operation::fromDouble, [] { static_cast<void>(Decimal96(1e30)); }));
    EXPECT_TRUE(throws<Overflow>(Operation::fromText,
                                 [] { static_cast<void>(dec("99999999999999999999999999999")); }));
    EXPECT_TRUE(throws<Overflow>(Operation::fromMantissa,
                                 [] { static_cast<void>(Decimal96::fromParts(0, 0, 0x80000000U, true)); }));
    EXPECT_TRUE(throws<Overflow>(Operation::toInteger, [] { static_cast<void>(dec("2147483648").toInt()); }));
    EXPECT_TRUE(throws<Overflow>(Operation::toText, [&] { static_cast<void>(text(huge)); }));
}

TEST(Decimal96Handlers, EveryLossOfDigitsNamesItsOperation) {
    const ThrowingHandlers handlers;
    const Decimal96 small = dec("0.0000000000000001");
    EXPECT_TRUE(throws<Loss>(Operation::add, [] { static_cast<void>(largest() + dec("0.1")); }));
    EXPECT_TRUE(throws<Loss>(Operation::multiply, [&] { static_cast<void>(small * small); }));
    EXPECT_TRUE(throws<Loss>(Operation::divide, [] { static_cast<void>(dec("1") / 3); }));
    EXPECT_TRUE(throws<Loss>(Operation::fromDouble, [] { static_cast<void>(Decimal96(1e-30)); }));
    EXPECT_TRUE(
        throws<Loss>(Operation::fromText, [] { static_cast<void>(dec("0.00000000000000000000000000001")); }));
    EXPECT_TRUE(throws<Loss>(Operation::fromText,
                             [] { static_cast<void>(dec("0.0000000000000000000000000000000001")); }));
    EXPECT_TRUE(
        throws<Loss>(Operation::add, [] { static_cast<void>(Decimal96::fromMantissa(0, 1, 29) + 1); }));
    EXPECT_TRUE(
        throws<Loss>(Operation::compare, [] { static_cast<void>(Decimal96::fromMantissa(0, 1, 29) < 1); }));
}

TEST(Decimal96Handlers, ExactResultsAndRoundingThatWasAskedForCallNothing) {
    const ThrowingHandlers handlers;
    EXPECT_NO_THROW(static_cast<void>(dec("1") / 8));
    EXPECT_NO_THROW(static_cast<void>(dec("1.55").round(1)));
    EXPECT_NO_THROW(static_cast<void>(dec("12345678901234567890123.55").truncate(1)));
    EXPECT_NO_THROW(static_cast<void>(Decimal96::multiplyRounded(dec("1.55"), dec("0.15"), 2)));
    EXPECT_NO_THROW(static_cast<void>(Decimal96::divideRounded(1, 3, 2)));
    EXPECT_NO_THROW(static_cast<void>(dec("0.1").toDouble()));
    EXPECT_NO_THROW(static_cast<void>(dec("0.7").toInt()));
    EXPECT_NO_THROW(static_cast<void>(text(Decimal96::fromMantissa(0, 1, 29))));
    EXPECT_NO_THROW(static_cast<void>(Decimal96::fromMantissa(0, 10, 29) + 1));
    EXPECT_NO_THROW(static_cast<void>(dec("0.00000000000000000000000000010000")));
}

TEST(Decimal96Handlers, AnOperationWhoseHandlerThrowsChangesNothing) {
    const ThrowingHandlers handlers;
    const Decimal96 before = largest(3);
    const Decimal96 other = dec("0.0001");
    Decimal96 value = before;
    EXPECT_THROW(value += other, Loss);
    EXPECT_THROW(value -= -other, Loss);
    EXPECT_THROW(value *= largest(), Overflow);
    EXPECT_THROW(value /= 0, Overflow);
    EXPECT_THROW(value /= 7, Loss);
    EXPECT_THROW(value %= 0, Overflow);
    EXPECT_THROW(static_cast<void>(Decimal96::parse(std::string(40, '9'), value)), Overflow);
    EXPECT_EQ(value, before);
    EXPECT_EQ(value.scale(), before.scale());
    EXPECT_EQ(text(other), "0.0001");
}

TEST(Decimal96Handlers, AnOperationIsReportedOnce) {
    const CountingHandlers handlers;
    static_cast<void>(dec("1") / 3);
    EXPECT_EQ(losses, 1);
    static_cast<void>(largest() * largest());
    EXPECT_EQ(overflows, 1);
    static_cast<void>(dec("0.000000000000000000000000000051"));
    EXPECT_EQ(losses, 2);
}

std::atomic<int> calls{0};

TEST(Decimal96Handlers, ThreadsMaySetThemWhileOthersCompute) {
    const CountingHandlers restoring;
    calls = 0;
    const Decimal96Handler handler = [](Operation) { calls.fetch_add(1, std::memory_order_relaxed); };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([handler] {
            for (int n = 0; n < 1000; ++n) {
                setDecimal96OverflowHandler(handler);
                EXPECT_FALSE((largest() * 2).isNumber());
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(calls, 4000);
}

}  // namespace
