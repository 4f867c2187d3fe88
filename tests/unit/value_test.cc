// What every value class does alike: identity, copies, assignment.

#include <nkdt/NkDt.h>
#include <nkfo/NkFormat.h>

#include <algorithm>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "MemoryTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;

const NkFormat kFormat(0, kulNkFoValidAll, FormatAuffuellenNicht, ' ');

template <class Value>
class AnyValue : public ::testing::Test {};
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
    const CRuntimeClass* const classes[] = {
        NkDtLong::GetThisClass(),    NkDtShort::GetThisClass(),  NkDtDouble::GetThisClass(),
        NkDtDecimal::GetThisClass(), NkDtString::GetThisClass(), NkDtChar::GetThisClass(),
        NkDtBool::GetThisClass(),    NkDtTime::GetThisClass(),   NkDtDateZp::GetThisClass()};
    const TypeParam value;
    const auto kinds = std::count_if(std::begin(classes), std::end(classes), [&](const CRuntimeClass* each) {
        return value.IsKindOf(each) != FALSE;
    });
    // A date-time has the only class that another one is derived from.
    EXPECT_EQ(kinds, (std::is_same_v<TypeParam, NkDtDateTime> ? 0 : 1));
    EXPECT_EQ(value.IsKindOf(NkDtDateTime::GetThisClass()), (std::is_base_of_v<NkDtDateTime, TypeParam>));
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
        // A date that is asked for in mode 2 is that of the clock.
        if (!std::is_base_of_v<NkDtDateTime, TypeParam> || each.given != NkDtWmDefined) {
            EXPECT_EQ(textOf(value), Sample<TypeParam>::emptyText);
        }
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
    for (TypeParam& source : states<TypeParam>()) {
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
    for (TypeParam& source : states<TypeParam>()) {
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
    for (TypeParam& value : states<TypeParam>()) {
        const std::string before = describe(value);
        const TypeParam& self = value;
        value = self;
        EXPECT_EQ(describe(value), before);
    }
}

TYPED_TEST(AnyValue, AssignTakesAnObjectOfTheSameClassAsTheOperatorDoes) {
    for (const TypeParam& source : states<TypeParam>()) {
        for (const TypeParam& before : states<TypeParam>()) {
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
    if constexpr (!std::is_same_v<TypeParam, NkDtDouble>) expectRefusedByAssign<TypeParam>(NkDtDouble(5));
    if constexpr (!std::is_same_v<TypeParam, NkDtDecimal>) expectRefusedByAssign<TypeParam>(NkDtDecimal(5));
    if constexpr (!std::is_same_v<TypeParam, NkDtTime>) expectRefusedByAssign<TypeParam>(NkDtTime(5, 0));
    if constexpr (!std::is_same_v<TypeParam, NkDtDateTime>) {
        expectRefusedByAssign<TypeParam>(NkDtDateTime(5, 3, 2004));
        if constexpr (!std::is_same_v<TypeParam, NkDtDateZp>)
            expectRefusedByAssign<TypeParam>(NkDtDateZp(5, 3, 2004));
    }
    if constexpr (!std::is_same_v<TypeParam, NkDtString>) expectRefusedByAssign<TypeParam>(NkDtString("5"));
    if constexpr (!std::is_same_v<TypeParam, NkDtChar>) expectRefusedByAssign<TypeParam>(NkDtChar('5'));
    if constexpr (!std::is_same_v<TypeParam, NkDtBool>) expectRefusedByAssign<TypeParam>(NkDtBool(TRUE));
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
    Derived<TypeParam> value(Sample<TypeParam>::other());
    const TypeParam same = Sample<TypeParam>::other();
    const TypeParam other = Sample<TypeParam>::one();
    value = same;
    EXPECT_EQ(value.calls, 0);
    value = other;
    EXPECT_EQ(value.calls, 1);
    value.Clear();
    EXPECT_EQ(value.calls, 2);
    value.Clear();
    EXPECT_EQ(value.calls, 2);
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
