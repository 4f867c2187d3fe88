// Moves of every value class, and the husks that they leave.

#include <nkdt/NkDt.h>
#include <nkfo/NkFormat.h>
#include <nkfw/Recordset.h>

#include <algorithm>
#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "MemoryTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;

const NkFormat kFormat(0, kulNkFoValidAll, FormatAuffuellenNicht, ' ');

template <class Value>
class AnyMove : public ::testing::Test {};
TYPED_TEST_SUITE(AnyMove, ValueClasses, ClassNames);

TYPED_TEST(AnyMove, MoveConstructionStealsEverythingAndLeavesAHusk) {
    static_assert(std::is_nothrow_move_constructible_v<TypeParam>);
    using Open = Derived<TypeParam>;
    for (TypeParam& each : states<TypeParam>()) {
        Open source(each);
        source.SetFormat(&kFormat);
        const std::string before = describe(source);
        const Open target(std::move(source));
        EXPECT_EQ(describe(target), before);
        EXPECT_EQ(target.GetWorkingMode(), each.GetWorkingMode());
        EXPECT_EQ(target.GetFormat(), &kFormat);
        EXPECT_TRUE(source.IsHusk());
        EXPECT_FALSE(target.IsHusk());
    }
}

TYPED_TEST(AnyMove, MoveConstructionAsksForNoMemory) {
    const memorytest::Pool off(false);
    TypeParam source = Sample<TypeParam>::other();
    const memorytest::Requests requests;
    const TypeParam target(std::move(source));
    EXPECT_EQ(requests.count(), 0);
    EXPECT_EQ(textOf(target), Sample<TypeParam>::otherText);
}

/// What a husk can be asked for first, each leaving a fresh value.
template <class Value>
std::vector<std::pair<const char*, std::function<void(Value&)>>> firstUses() {
    return {
        {"IsDefined", [](Value& husk) { husk.IsDefined(); }},
        {"GetFormat", [](Value& husk) { husk.GetFormat(); }},
        {"GetWorkingMode", [](Value& husk) { husk.GetWorkingMode(); }},
        {"SetModified", [](Value& husk) { husk.SetModified(FALSE); }},
        {"Clear", [](Value& husk) { husk.Clear(); }},
        {"ConvToSQL", [](Value& husk) { husk.ConvToSQL(); }},
        {"ConvToOFL", [](Value& husk) { husk.ConvToOFL(); }},
        {"ConvToExtern", [](Value& husk) { textOf(husk); }},
        {"copy", [](Value& husk) { const Value copy(husk); }},
        {"NewObject", [](Value& husk) { delete husk.NewObject(); }},
        {"Serialize", [](Value& husk) { stored(husk); }},
        {"assignment from itself",
         [](Value& husk) {
             const Value& self = husk;
             husk = self;
         }},
    };
}

TYPED_TEST(AnyMove, AHuskIsAFreshValueInModeThreeAtItsFirstUse) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        const DefaultMode scope(mode);
        const std::string fresh = describe(TypeParam());
        for (const auto& [name, use] : firstUses<TypeParam>()) {
            SCOPED_TRACE(name);
            TypeParam source = Sample<TypeParam>::one();
            source.SetWorkingMode(NkDtWmNull);
            source.SetModified(TRUE);
            source.SetFormat(&kFormat);
            const TypeParam target(std::move(source));
            use(source);
            EXPECT_EQ(describe(source), fresh);
            EXPECT_EQ(source.GetWorkingMode(), mode);
            EXPECT_EQ(source.GetFormat(), nullptr);
        }
    }
}

/// What changes a value or computes with it, with what comes out of it as a text.
template <class Value>
using Operations = std::vector<std::pair<const char*, std::function<std::string(Value&)>>>;

template <class Value>
Operations<Value> operations() {
    using S = Sample<Value>;
    static const Value other = S::other();
    static const NkDtString text = Forms<Value>::otherExtern;
    Operations<Value> operations{
        {"SetFromOFL", [](Value& value) { return value.SetFromOFL(Forms<Value>::oneShown), std::string(); }},
        {"SetFromSQL", [](Value& value) { return S::setFromSql(value, true), std::string(); }},
        {"SetFromExtern", [](Value& value) { return value.SetFromExtern(&text, TRUE, 100), std::string(); }},
        {"SetFromRecordSet",
         [](Value& value) {
             CRecordset rs;
             return value.SetFromRecordSet(rs, S::oneField()), std::string();
         }},
        {"ConvToRecordSet",
         [](Value& value) {
             CRecordset rs;
             auto field = S::oneField();
             value.ConvToRecordSet(rs, field);
             return std::to_string(rs.IsFieldNull(&field));
         }},
        {"load",
         [](Value& value) {
             Value source(other);
             return load(value, stored(source)), std::string();
         }},
        {"Assign", [](Value& value) { return value.Assign(other), std::string(); }},
        {"SetWorkingMode", [](Value& value) { return value.SetWorkingMode(NkDtWmNull), std::string(); }},
        {"==", [](Value& value) { return std::to_string(value == other); }},
    };
    if constexpr (requires { other.GetValue(); })
        operations.emplace_back("GetValue", [](Value& value) { return value.GetValue(), std::string(); });
    if constexpr (requires { other.GetTime(); }) {
        operations.emplace_back("GetTime", [](Value& value) { return std::to_string(value.GetTime()); });
        operations.emplace_back("GetMode", [](Value& value) { return std::to_string(value.GetMode()); });
        operations.emplace_back("SetHour", [](Value& value) { return value.SetHour(2), std::string(); });
        operations.emplace_back("AddMin", [](Value& value) { return value.AddMin(2), std::string(); });
        operations.emplace_back("Reset", [](Value& value) { return value.Reset(), std::string(); });
    }
    if constexpr (requires { other.GetYear(); }) {
        operations.emplace_back("GetYear", [](Value& value) { return std::to_string(value.GetYear()); });
        operations.emplace_back("GetHour", [](Value& value) { return std::to_string(value.GetHour()); });
        operations.emplace_back("SetDay365", [](Value& value) { return value.SetDay365(2), std::string(); });
        operations.emplace_back("SetYear", [](Value& value) { return value.SetYear(2002), std::string(); });
        operations.emplace_back("SetMin", [](Value& value) { return value.SetMin(2), std::string(); });
        operations.emplace_back("WipeTime", [](Value& value) { return value.WipeTime(), std::string(); });
        operations.emplace_back("AddDay365", [](Value& value) { return value.AddDay365(2), std::string(); });
        operations.emplace_back("SubMonth", [](Value& value) { return value.SubMonth(2), std::string(); });
        operations.emplace_back("AddMin", [](Value& value) { return value.AddMin(90), std::string(); });
        operations.emplace_back("SetDate",
                                [](Value& value) { return value.SetDate("1.2.2003"), std::string(); });
        operations.emplace_back("SetTime",
                                [](Value& value) { return value.SetTime("10:30"), std::string(); });
        operations.emplace_back("- duration", [](Value& value) { return describe(value - NkDtTime(1, 0)); });
        operations.emplace_back("-", [](Value& value) { return describe(other - value); });
        operations.emplace_back("COleDateTime", [](Value& value) {
            return std::to_string(static_cast<COleDateTime>(value).GetStatus());
        });
    }
    if constexpr (requires { other + other; }) {
        operations.emplace_back("+", [](Value& value) { return describe(value + other); });
        operations.emplace_back("+ left", [](Value& value) { return describe(other + value); });
    }
    if constexpr (requires(Value & value) { value += other; })
        operations.emplace_back("+=", [](Value& value) { return describe(value += other); });
    if constexpr (requires { other < other; })
        operations.emplace_back("<", [](Value& value) { return std::to_string(other < value); });
    return operations;
}

TYPED_TEST(AnyMove, AHuskTakesPartInEveryOperationAsAFreshValueDoes) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        const DefaultMode scope(mode);
        for (const auto& [name, operation] : operations<TypeParam>()) {
            SCOPED_TRACE(name);
            TypeParam fresh;
            TypeParam husk = Sample<TypeParam>::one();
            const TypeParam taken(std::move(husk));
            const auto outcome = [&operation = operation](TypeParam& value) {
                std::string result;
                const ErrorPtr error = errorOf([&] { result = operation(value); });
                return error != nullptr ? "error " + std::to_string(error->GetErrorNumber()) : result;
            };
            EXPECT_EQ(outcome(husk), outcome(fresh));
            EXPECT_EQ(describe(husk), describe(fresh));
            EXPECT_EQ(husk.GetWorkingMode(), fresh.GetWorkingMode());
        }
    }
}

TYPED_TEST(AnyMove, AHuskCanBeGivenAValue) {
    TypeParam source = Sample<TypeParam>::one();
    const TypeParam target(std::move(source));
    const TypeParam other = Sample<TypeParam>::other();
    source = other;
    EXPECT_EQ(textOf(source), Sample<TypeParam>::otherText);
    EXPECT_EQ(stateOf(source), "defined modified");
    EXPECT_EQ(textOf(target), Sample<TypeParam>::oneText);
}

TYPED_TEST(AnyMove, AHuskCanBeDestroyedAndMovedFromAgain) {
    using Open = Derived<TypeParam>;
    Open source(Sample<TypeParam>::one());
    const Open target(std::move(source));
    Open second(std::move(source));
    EXPECT_TRUE(source.IsHusk());
    EXPECT_TRUE(second.IsHusk());
    EXPECT_EQ(describe(second), describe(TypeParam()));
}

TYPED_TEST(AnyMove, AssignmentOfATemporaryOntoAHuskStealsEverything) {
    using Open = Derived<TypeParam>;
    const memorytest::Pool off(false);
    Open husk(Sample<TypeParam>::one());
    const Open taken(std::move(husk));
    Open source(Sample<TypeParam>::other());
    source.SetWorkingMode(NkDtWmNull);
    source.SetModified(TRUE);
    source.SetFormat(&kFormat);
    const std::string before = describe(source);
    const memorytest::Requests requests;
    husk = std::move(static_cast<TypeParam&>(source));
    EXPECT_EQ(requests.count(), 0);
    EXPECT_TRUE(source.IsHusk());
    EXPECT_EQ(describe(husk), before);
    EXPECT_EQ(husk.GetWorkingMode(), NkDtWmNull);
    EXPECT_EQ(husk.GetFormat(), &kFormat);
}

TYPED_TEST(AnyMove, AssignmentOfATemporaryOntoAnotherValueIsTheOrdinaryAssignment) {
    for (const TypeParam& before : states<TypeParam>()) {
        for (const TypeParam& source : states<TypeParam>()) {
            TypeParam byCopy(before);
            TypeParam byMove(before);
            byMove.SetFormat(&kFormat);
            TypeParam temporary(source);
            temporary.SetFormat(nullptr);
            byCopy = source;
            byMove = std::move(temporary);
            EXPECT_EQ(describe(byMove), describe(byCopy));
            EXPECT_EQ(byMove.GetWorkingMode(), before.GetWorkingMode());
            EXPECT_EQ(byMove.GetFormat(), &kFormat);
        }
    }
}

/// The classes whose sum is a value of the class.
template <class Value>
class SumMove : public AnyMove<Value> {};
using SumClasses = ::testing::Types<NkDtLong, NkDtShort, NkDtDouble, NkDtDecimal, NkDtTime, NkDtString>;
TYPED_TEST_SUITE(SumMove, SumClasses, ClassNames);

TYPED_TEST(SumMove, KeepsItsFormatModeAndFlagInASumAssignedToItself) {
    TypeParam value(NkDtWmNull);
    value = Sample<TypeParam>::empty();
    value.SetModified(FALSE);
    value.SetFormat(&kFormat);
    const TypeParam addend = Sample<TypeParam>::other();
    value = value + addend;
    EXPECT_EQ(textOf(value), Sample<TypeParam>::otherText);
    EXPECT_EQ(stateOf(value), "defined modified");
    EXPECT_EQ(value.GetWorkingMode(), NkDtWmNull);
    EXPECT_EQ(value.GetFormat(), &kFormat);
}

TYPED_TEST(AnyMove, IsMoveAssignedToItselfWithoutAChange) {
    for (TypeParam& value : states<TypeParam>()) {
        const std::string before = describe(value);
        TypeParam& self = value;
        value = std::move(self);
        EXPECT_EQ(describe(value), before);
    }
    TypeParam source = Sample<TypeParam>::one();
    const TypeParam target(std::move(source));
    TypeParam& husk = source;
    source = std::move(husk);
    EXPECT_EQ(describe(source), describe(TypeParam()));
}

TYPED_TEST(AnyMove, IsUndefinedByTheAssignmentOfAHusk) {
    TypeParam source = Sample<TypeParam>::one();
    const TypeParam taken(std::move(source));
    TypeParam target(NkDtWmNull);
    target = Sample<TypeParam>::other();
    target = std::move(source);
    EXPECT_EQ(target.IsDefined(), FALSE);
    EXPECT_EQ(target.GetWorkingMode(), NkDtWmNull);
    EXPECT_EQ(textOf(target), Sample<TypeParam>::emptyText);
}

/// An order of the values, also where the class has none.
template <class Value>
bool standsBefore(const Value& a, const Value& b) {
    if constexpr (requires { a < b; }) {
        return a < b;
    } else {
        return static_cast<INT>(a) < static_cast<INT>(b);
    }
}

TYPED_TEST(AnyMove, AGrowingAndASortedVectorCopyNothing) {
    const memorytest::Pool off(false);
    std::vector<TypeParam> values;
    for (int i = 0; i < 100; ++i)
        values.push_back(i % 3 == 0 ? Sample<TypeParam>::one() : Sample<TypeParam>::other());
    const memorytest::Requests requests;
    values.reserve(values.capacity() * 2);
    std::sort(values.begin(), values.end(), standsBefore<TypeParam>);
    EXPECT_EQ(requests.count(), 0);
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end(), standsBefore<TypeParam>));
    EXPECT_EQ(
        std::count_if(values.begin(), values.end(),
                      [](const TypeParam& value) { return textOf(value) == Sample<TypeParam>::oneText; }),
        34);
}

TYPED_TEST(AnyMove, IsSwappedWithoutMemory) {
    const memorytest::Pool off(false);
    TypeParam a = Sample<TypeParam>::one();
    TypeParam b = Sample<TypeParam>::other();
    b.SetFormat(&kFormat);
    const memorytest::Requests requests;
    std::swap(a, b);
    EXPECT_EQ(requests.count(), 0);
    EXPECT_EQ(textOf(a), Sample<TypeParam>::otherText);
    EXPECT_EQ(textOf(b), Sample<TypeParam>::oneText);
    EXPECT_EQ(a.GetFormat(), &kFormat);
    EXPECT_EQ(b.GetFormat(), nullptr);
}

}  // namespace
