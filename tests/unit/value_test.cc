// What every value class does alike: identity, copies, assignment, moves.

#include <nkdt/NkDt.h>
#include <nkfo/NkFormat.h>
#include <nkfw/Recordset.h>

#include <algorithm>
#include <functional>
#include <memory>
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

/// An application's own class derived from a value class, with what that keeps protected.
template <class Value>
class Derived : public Value {
  public:
    Derived() = default;
    explicit Derived(const Value& value) : Value(value) {}
    using Value::IsHusk;
    using Value::operator=;
    void SetModified(BOOL fModified) override {
        ++calls;
        Value::SetModified(fModified);
    }

    int calls = 0;
};

template <class Value>
class AnyValue : public ::testing::Test {
  protected:
    using Samples = Sample<Value>;

    /// A value in each of the states that a program can bring it into.
    static std::vector<Value> states() {
        std::vector<Value> values;
        for (const NkDtWorkingMode mode : kStoredModes) {
            for (const BOOL modified : {FALSE, TRUE}) {
                Value undefined(mode);
                undefined.SetModified(modified);
                values.push_back(undefined);
                Value defined(mode);
                defined = Samples::one();
                defined.SetModified(modified);
                values.push_back(defined);
            }
        }
        return values;
    }
};

TYPED_TEST_SUITE(AnyValue, ValueClasses, ClassNames);

// --- Identity ---------------------------------------------------------------------------------

TYPED_TEST(AnyValue, IsKnownByItsNameAndDerivesFromTheBase) {
    using S = Sample<TypeParam>;
    const CRuntimeClass* const pClass = CRuntimeClass::FromName(S::name);
    ASSERT_EQ(pClass, RUNTIME_CLASS(TypeParam));
    EXPECT_STREQ(pClass->m_lpszClassName, S::name);
    EXPECT_EQ(pClass->m_nObjectSize, sizeof(TypeParam));
    EXPECT_TRUE(pClass->IsDerivedFrom(NkDtBasis::GetThisClass()));
    EXPECT_TRUE(pClass->IsDerivedFrom(CObject::GetThisClass()));

    const TypeParam value;
    const CObject& object = value;
    EXPECT_EQ(object.GetRuntimeClass(), pClass);
    EXPECT_TRUE(object.IsKindOf(pClass));
    EXPECT_TRUE(object.IsKindOf(NkDtBasis::GetThisClass()));
}

TYPED_TEST(AnyValue, IsNoKindOfAnotherClass) {
    const CRuntimeClass* const classes[] = {NkDtLong::GetThisClass(), NkDtShort::GetThisClass(),
                                            NkDtString::GetThisClass()};
    const TypeParam value;
    EXPECT_EQ(std::count_if(std::begin(classes), std::end(classes),
                            [&](const CRuntimeClass* each) { return value.IsKindOf(each) != FALSE; }),
              1);
}

TYPED_TEST(AnyValue, IsCreatedByItsNameUndefinedInTheDefaultMode) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        const DefaultMode scope(mode);
        const std::unique_ptr<CObject> object(
            CRuntimeClass::FromName(Sample<TypeParam>::name)->CreateObject());
        const auto* const value = dynamic_cast<const TypeParam*>(object.get());
        ASSERT_NE(value, nullptr);
        EXPECT_EQ(value->GetWorkingMode(), mode);
        EXPECT_EQ(value->IsDefined(), mode == NkDtWmDefined);
        EXPECT_EQ(value->IsModified(), FALSE);
        EXPECT_EQ(textOf(*value), Sample<TypeParam>::emptyText);
    }
}

TYPED_TEST(AnyValue, TellsItsTypeNumber) {
    const TypeParam value;
    const NkDtBasis& base = value;
    EXPECT_EQ(base.GetDtTyp(), Sample<TypeParam>::typ);
    EXPECT_EQ(base.GetDeBasisPtr(), nullptr);
}

// --- Construction by mode -----------------------------------------------------------------------

TYPED_TEST(AnyValue, IsConstructedUndefinedAndEmptyInAMode) {
    struct Case {
        NkDtWorkingMode processDefault;
        NkDtWorkingMode given;
        const char* state;
    };
    constexpr Case cases[] = {
        {NkDtWmMissing, NkDtWmMissing, "missing"}, {NkDtWmMissing, NkDtWmNull, "null"},
        {NkDtWmMissing, NkDtWmDefined, "defined"}, {NkDtWmMissing, NkDtWmDefault, "missing"},
        {NkDtWmNull, NkDtWmDefault, "null"},       {NkDtWmDefined, NkDtWmDefault, "defined"},
        {NkDtWmDefined, NkDtWmMissing, "missing"},
    };
    for (const Case& each : cases) {
        const DefaultMode scope(each.processDefault);
        const TypeParam value(each.given);
        EXPECT_EQ(stateOf(value), each.state);
        EXPECT_EQ(textOf(value), Sample<TypeParam>::emptyText);
        EXPECT_EQ(value.GetFormat(), nullptr);
        if (each.given == NkDtWmDefault) {
            EXPECT_EQ(stateOf(TypeParam()), each.state);
        }
    }
}

TYPED_TEST(AnyValue, IsConstructedFromAPlainValueDefinedInTheDefaultMode) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        const DefaultMode scope(mode);
        const TypeParam value = Sample<TypeParam>::one();
        EXPECT_EQ(stateOf(value), "defined");
        EXPECT_EQ(value.GetWorkingMode(), mode);
        EXPECT_EQ(value.GetFormat(), nullptr);
    }
}

// --- Copies -------------------------------------------------------------------------------------

TYPED_TEST(AnyValue, IsCopiedWithModeDefinednessAndFlagButWithoutFormat) {
    for (TypeParam& source : this->states()) {
        source.SetFormat(&kFormat);
        const TypeParam copy(source);
        EXPECT_EQ(textOf(copy), textOf(source));
        EXPECT_EQ(stateOf(copy), stateOf(source));
        EXPECT_EQ(copy.GetWorkingMode(), source.GetWorkingMode());
        EXPECT_EQ(copy.GetFormat(), nullptr);
        EXPECT_EQ(source.GetFormat(), &kFormat);
    }
}

TYPED_TEST(AnyValue, SharesNothingWithItsCopy) {
    const TypeParam source = Sample<TypeParam>::one();
    TypeParam copy(source);
    copy = Sample<TypeParam>::other();
    EXPECT_EQ(textOf(source), Sample<TypeParam>::oneText);
    EXPECT_EQ(textOf(copy), Sample<TypeParam>::otherText);
}

TYPED_TEST(AnyValue, MakesANewObjectThatIsACopyOfTheSameClass) {
    for (TypeParam& source : this->states()) {
        source.SetFormat(&kFormat);
        const NkDtBasis& base = source;
        const std::unique_ptr<NkDtBasis> made(base.NewObject());
        ASSERT_EQ(made->GetRuntimeClass(), TypeParam::GetThisClass());
        EXPECT_EQ(textOf(dynamic_cast<const TypeParam&>(*made)), textOf(source));
        EXPECT_EQ(stateOf(*made), stateOf(source));
        EXPECT_EQ(made->GetWorkingMode(), source.GetWorkingMode());
        EXPECT_EQ(made->GetFormat(), nullptr);
    }
}

// --- Assignment ---------------------------------------------------------------------------------

TYPED_TEST(AnyValue, KeepsItsModeAndFormatWhenItIsAssigned) {
    TypeParam target(NkDtWmNull);
    target.SetFormat(&kFormat);
    TypeParam source(NkDtWmMissing);
    source = Sample<TypeParam>::one();
    target = source;
    EXPECT_EQ(target.GetWorkingMode(), NkDtWmNull);
    EXPECT_EQ(target.GetFormat(), &kFormat);
    EXPECT_EQ(stateOf(target), "defined modified");
}

TYPED_TEST(AnyValue, IsModifiedByTheAssignmentOfAnotherValueOnly) {
    using S = Sample<TypeParam>;
    TypeParam target = S::one();
    TypeParam source = S::one();
    source.SetModified(TRUE);
    target = source;
    EXPECT_EQ(stateOf(target), "defined");
    target = S::other();
    EXPECT_EQ(stateOf(target), "defined modified");
    EXPECT_EQ(textOf(target), S::otherText);
    target = S::other();
    EXPECT_EQ(stateOf(target), "defined modified");
}

TYPED_TEST(AnyValue, IsModifiedWhenAnEqualStoredValueMakesItDefined) {
    TypeParam target(NkDtWmNull);
    target = Sample<TypeParam>::empty();
    EXPECT_EQ(stateOf(target), "defined modified");
}

TYPED_TEST(AnyValue, IsAssignedToItselfWithoutAChange) {
    for (TypeParam& value : this->states()) {
        const std::string before = describe(value);
        const TypeParam& self = value;
        value = self;
        EXPECT_EQ(describe(value), before);
    }
}

TYPED_TEST(AnyValue, AssignTakesAnObjectOfTheSameClassAsTheOperatorDoes) {
    for (const TypeParam& source : this->states()) {
        for (const TypeParam& before : this->states()) {
            TypeParam byOperator(before);
            TypeParam byAssign(before);
            byOperator = source;
            NkDtBasis& base = byAssign;
            base.Assign(source);
            EXPECT_EQ(describe(byAssign), describe(byOperator));
            EXPECT_EQ(byAssign.GetWorkingMode(), before.GetWorkingMode());
        }
    }
}

/// A derived class with a run-time class of its own.
template <class Value>
class Named : public Derived<Value> {
  public:
    using Derived<Value>::Derived;
    static const CRuntimeClass* GetThisClass() noexcept {
        static constexpr CRuntimeClass runtimeClass{"Named", sizeof(Named), 1, nullptr, &Value::GetThisClass};
        return &runtimeClass;
    }
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
};

TYPED_TEST(AnyValue, AssignTakesAnObjectOfADerivedClass) {
    const Derived<TypeParam> derived(Sample<TypeParam>::one());
    const Named<TypeParam> named(Sample<TypeParam>::one());
    for (const NkDtBasis* const source :
         {static_cast<const NkDtBasis*>(&derived), static_cast<const NkDtBasis*>(&named)}) {
        TypeParam target;
        target.Assign(*source);
        EXPECT_EQ(textOf(target), Sample<TypeParam>::oneText);
        EXPECT_EQ(stateOf(target), "defined modified");
    }
}

TYPED_TEST(AnyValue, AnObjectOfADerivedClassTakesOneOfItsBase) {
    Named<TypeParam> target;
    target.Assign(Sample<TypeParam>::one());
    EXPECT_EQ(textOf(target), Sample<TypeParam>::oneText);
}

template <class Value>
void expectRefusedByAssign(const NkDtBasis& other) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        Value target(mode);
        target = Sample<Value>::one();
        target.SetModified(FALSE);
        const std::string before = describe(target);
        const ErrorPtr error = expectError(NkDtErrBasistypen, [&] { target.Assign(other); });
        EXPECT_STREQ(error->GetErrorText(), "Basistypen unterschiedlich");
        EXPECT_STREQ(error->GetSourceFile(), Sample<Value>::module);
        EXPECT_STREQ(error->GetClassText(), Sample<Value>::name);
        EXPECT_TRUE(error->IsLogged());
        EXPECT_EQ(describe(target), before);
    }
}

TYPED_TEST(AnyValue, AssignRefusesAnObjectOfAnotherClass) {
    if constexpr (!std::is_same_v<TypeParam, NkDtLong>) expectRefusedByAssign<TypeParam>(NkDtLong(5));
    if constexpr (!std::is_same_v<TypeParam, NkDtShort>) expectRefusedByAssign<TypeParam>(NkDtShort(5));
    if constexpr (!std::is_same_v<TypeParam, NkDtString>) expectRefusedByAssign<TypeParam>(NkDtString("5"));
}

TYPED_TEST(AnyValue, AssignRefusesAnUndefinedObjectOfAnotherClassToo) {
    if constexpr (std::is_same_v<TypeParam, NkDtString>) {
        expectRefusedByAssign<TypeParam>(NkDtLong(NkDtWmNull));
    } else {
        expectRefusedByAssign<TypeParam>(NkDtString(NkDtWmNull));
    }
}

// --- Clear ----------------------------------------------------------------------------------------

TYPED_TEST(AnyValue, ClearEmptiesTheValueAndKeepsModeAndFormat) {
    struct Case {
        NkDtWorkingMode mode;
        const char* after;
    };
    constexpr Case cases[] = {{NkDtWmMissing, "missing modified"},
                              {NkDtWmNull, "null modified"},
                              {NkDtWmDefined, "defined modified"}};
    for (const Case& each : cases) {
        TypeParam value(each.mode);
        value = Sample<TypeParam>::one();
        value.SetModified(FALSE);
        value.SetFormat(&kFormat);
        value.Clear();
        EXPECT_EQ(stateOf(value), each.after);
        EXPECT_EQ(textOf(value), Sample<TypeParam>::emptyText);
        EXPECT_EQ(value.GetWorkingMode(), each.mode);
        EXPECT_EQ(value.GetFormat(), &kFormat);
    }
}

TYPED_TEST(AnyValue, ClearOfAnEmptyValueChangesItsDefinednessAtMost) {
    struct Case {
        NkDtWorkingMode mode;
        const char* after;
    };
    constexpr Case cases[] = {
        {NkDtWmMissing, "missing modified"}, {NkDtWmNull, "null modified"}, {NkDtWmDefined, "defined"}};
    for (const Case& each : cases) {
        TypeParam value(each.mode);
        value = Sample<TypeParam>::empty();
        value.SetModified(FALSE);
        value.Clear();
        EXPECT_EQ(stateOf(value), each.after);
        value.SetModified(FALSE);
        const std::string cleared = describe(value);
        value.Clear();
        EXPECT_EQ(describe(value), cleared);
    }
}

// --- The flag goes through the virtual function ----------------------------------------------------

TYPED_TEST(AnyValue, RaisesTheFlagThroughTheVirtualFunctionWhenTheValueChanges) {
    Derived<TypeParam> value(Sample<TypeParam>::one());
    const TypeParam same = Sample<TypeParam>::one();
    const TypeParam other = Sample<TypeParam>::other();
    value = same;
    EXPECT_EQ(value.calls, 0);
    value = other;
    EXPECT_EQ(value.calls, 1);
    value.Clear();
    EXPECT_EQ(value.calls, 2);
    value.Clear();
    EXPECT_EQ(value.calls, 2);
}

// --- Moves ----------------------------------------------------------------------------------------

TYPED_TEST(AnyValue, MoveConstructionStealsEverythingAndLeavesAHusk) {
    static_assert(std::is_nothrow_move_constructible_v<TypeParam>);
    using Open = Derived<TypeParam>;
    for (TypeParam& each : this->states()) {
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

TYPED_TEST(AnyValue, MoveConstructionAsksForNoMemory) {
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

TYPED_TEST(AnyValue, AHuskIsAFreshValueInModeThreeAtItsFirstUse) {
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
std::vector<std::pair<const char*, std::function<std::string(Value&)>>> operations() {
    using S = Sample<Value>;
    static const Value other = S::other();
    static const NkDtString text = S::otherText;
    return {
        {"SetFromOFL", [](Value& value) { return value.SetFromOFL(S::oneText), std::string(); }},
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
        {"+=", [](Value& value) { return describe(value += other); }},
        {"+", [](Value& value) { return describe(value + other); }},
        {"+ left", [](Value& value) { return describe(other + value); }},
        {"==", [](Value& value) { return std::to_string(value == other); }},
        {"<", [](Value& value) { return std::to_string(other < value); }},
        {"GetValue", [](Value& value) { return value.GetValue(), std::string(); }},
    };
}

TYPED_TEST(AnyValue, AHuskTakesPartInEveryOperationAsAFreshValueDoes) {
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

TYPED_TEST(AnyValue, AHuskCanBeGivenAValue) {
    TypeParam source = Sample<TypeParam>::one();
    const TypeParam target(std::move(source));
    const TypeParam other = Sample<TypeParam>::other();
    source = other;
    EXPECT_EQ(textOf(source), Sample<TypeParam>::otherText);
    EXPECT_EQ(stateOf(source), "defined modified");
    EXPECT_EQ(textOf(target), Sample<TypeParam>::oneText);
}

TYPED_TEST(AnyValue, AHuskCanBeDestroyedAndMovedFromAgain) {
    using Open = Derived<TypeParam>;
    Open source(Sample<TypeParam>::one());
    const Open target(std::move(source));
    Open second(std::move(source));
    EXPECT_TRUE(source.IsHusk());
    EXPECT_TRUE(second.IsHusk());
    EXPECT_EQ(describe(second), describe(TypeParam()));
}

TYPED_TEST(AnyValue, AssignmentOfATemporaryOntoAHuskStealsEverything) {
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

TYPED_TEST(AnyValue, AssignmentOfATemporaryOntoAnotherValueIsTheOrdinaryAssignment) {
    for (const TypeParam& before : this->states()) {
        for (const TypeParam& source : this->states()) {
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

TYPED_TEST(AnyValue, KeepsItsFormatModeAndFlagInASumAssignedToItself) {
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

TYPED_TEST(AnyValue, IsMoveAssignedToItselfWithoutAChange) {
    for (TypeParam& value : this->states()) {
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

TYPED_TEST(AnyValue, IsUndefinedByTheAssignmentOfAHusk) {
    TypeParam source = Sample<TypeParam>::one();
    const TypeParam taken(std::move(source));
    TypeParam target(NkDtWmNull);
    target = Sample<TypeParam>::other();
    target = std::move(source);
    EXPECT_EQ(target.IsDefined(), FALSE);
    EXPECT_EQ(target.GetWorkingMode(), NkDtWmNull);
    EXPECT_EQ(textOf(target), Sample<TypeParam>::emptyText);
}

TYPED_TEST(AnyValue, AGrowingAndASortedVectorCopyNothing) {
    const memorytest::Pool off(false);
    std::vector<TypeParam> values;
    for (int i = 0; i < 100; ++i)
        values.push_back(i % 3 == 0 ? Sample<TypeParam>::one() : Sample<TypeParam>::other());
    const memorytest::Requests requests;
    values.reserve(values.capacity() * 2);
    std::sort(values.begin(), values.end(), [](const TypeParam& a, const TypeParam& b) { return a < b; });
    EXPECT_EQ(requests.count(), 0);
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end(),
                               [](const TypeParam& a, const TypeParam& b) { return a < b; }));
    EXPECT_EQ(
        std::count_if(values.begin(), values.end(),
                      [](const TypeParam& value) { return textOf(value) == Sample<TypeParam>::oneText; }),
        34);
}

TYPED_TEST(AnyValue, IsSwappedWithoutMemory) {
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

// --- Objects in an archive --------------------------------------------------------------------------

TYPED_TEST(AnyValue, IsCreatedByItsClassWhenAnArchiveIsRead) {
    using S = Sample<TypeParam>;
    const TypeParam one = S::one();
    const TypeParam undefined(NkDtWmNull);
    const Bytes bytes = written([&](CArchive& archive) { archive << &one << &undefined << &one; });

    reading(bytes, [&](CArchive& archive) {
        CObject* objects[3] = {};
        for (CObject*& each : objects)
            archive >> each;
        const std::unique_ptr<CObject> first(objects[0]);
        const std::unique_ptr<CObject> second(objects[1]);
        EXPECT_EQ(objects[2], objects[0]);
        const auto& value = dynamic_cast<const TypeParam&>(*first);
        EXPECT_EQ(textOf(value), S::oneText);
        EXPECT_EQ(stateOf(value), "defined modified");
        EXPECT_EQ(value.GetWorkingMode(), NkDtWmMissing);  // the mode is not archived
        EXPECT_EQ(stateOf(dynamic_cast<const TypeParam&>(*second)), "missing");
    });
}

TYPED_TEST(AnyValue, IsWrittenByItsClassNameAndSchema) {
    const TypeParam value(NkDtWmNull);
    const std::string name = Sample<TypeParam>::name;
    Bytes expected = {0xFF, 0xFF, 1, 0, static_cast<BYTE>(name.size()), 0};
    expected.insert(expected.end(), name.begin(), name.end());
    const Bytes bytes = written([&](CArchive& archive) { archive << &value; });
    ASSERT_GE(bytes.size(), expected.size() + 4);
    EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(expected.size())), expected);
}

TYPED_TEST(AnyValue, IsEndedThroughAPointerToTheBase) {
    const memorytest::Pool off(false);
    std::unique_ptr<CObject> object(new TypeParam(Sample<TypeParam>::other()));
    EXPECT_TRUE(object->IsKindOf(TypeParam::GetThisClass()));
    object.reset();  // what is not freed here, a leak checker reports
    EXPECT_EQ(object, nullptr);
}

}  // namespace
