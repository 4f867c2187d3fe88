#include <nkdt/NkDtBasis.h>
#include <nkdt/NkDtString.h>
#include <nkfo/NkFormat.h>

#include <type_traits>

#include <gtest/gtest.h>

#include "ValueTesting.h"

namespace {

using namespace valuetest;

constexpr auto kUnknownMode = static_cast<NkDtWorkingMode>(4);
constexpr auto kNegativeMode = static_cast<NkDtWorkingMode>(-1);

/// The base alone, with what it keeps protected.
class Base : public NkDtBasis {
  public:
    Base(BOOL fDefined, NkDtWorkingMode eMode) : NkDtBasis(fDefined, eMode) {}
    Base(const Base&) = default;
    Base(Base&&) noexcept = default;
    Base& operator=(const Base& r) {
        NkDtBasis::operator=(r);
        return *this;
    }

    using NkDtBasis::CheckDefinedForArithmetic;
    using NkDtBasis::IsHusk;
    using NkDtBasis::Serialize;
    using NkDtBasis::SetDefined;

    void Assign(const NkDtBasis&) override {}
    NkDtBasis* NewObject() const override { return new Base(*this); }
    CString ConvToOFL(const NkFormat*) const override { return CString(); }
    void SetFromOFL(LPCTSTR, const NkFormat*) override {}
    NkDtString ConvToExtern(BOOL&, USHORT&) const override { return NkDtString(); }
    void SetFromExtern(const NkDtString*, BOOL, USHORT) override {}
};

const NkFormat kFormat(0, kulNkFoValidAll, FormatAuffuellenNicht, ' ');

/// Undefined in mode 2, as a failed addition leaves it.
Base undefinedInModeTwo() {
    Base value(FALSE, NkDtWmDefined);
    value.SetDefined(FALSE);
    value.SetModified(FALSE);
    return value;
}

// --- Construction -----------------------------------------------------------------------------

TEST(NkDtBasis, StoresTheModeAndTheDefinednessThatItIsGiven) {
    struct Case {
        NkDtWorkingMode processDefault;
        BOOL defined;
        NkDtWorkingMode given;
        NkDtWorkingMode stored;
        const char* state;
    };
    constexpr Case cases[] = {
        {NkDtWmMissing, FALSE, NkDtWmMissing, NkDtWmMissing, "missing"},
        {NkDtWmMissing, FALSE, NkDtWmNull, NkDtWmNull, "null"},
        {NkDtWmMissing, FALSE, NkDtWmDefined, NkDtWmDefined, "defined"},
        {NkDtWmMissing, FALSE, NkDtWmDefault, NkDtWmMissing, "missing"},
        {NkDtWmNull, FALSE, NkDtWmDefault, NkDtWmNull, "null"},
        {NkDtWmDefined, FALSE, NkDtWmDefault, NkDtWmDefined, "defined"},
        {NkDtWmDefined, FALSE, NkDtWmNull, NkDtWmNull, "null"},
        {NkDtWmMissing, TRUE, NkDtWmMissing, NkDtWmMissing, "defined"},
        {NkDtWmMissing, TRUE, NkDtWmNull, NkDtWmNull, "defined"},
        {NkDtWmMissing, TRUE, NkDtWmDefined, NkDtWmDefined, "defined"},
        {NkDtWmNull, TRUE, NkDtWmDefault, NkDtWmNull, "defined"},
        {NkDtWmNull, FALSE, kUnknownMode, NkDtWmNull, "null"},
        {NkDtWmDefined, FALSE, kNegativeMode, NkDtWmDefined, "defined"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(::testing::Message() << each.processDefault << each.defined << each.given);
        const DefaultMode scope(each.processDefault);
        const Base value(each.defined, each.given);
        EXPECT_EQ(value.GetWorkingMode(), each.stored);
        EXPECT_EQ(stateOf(value), each.state);
        EXPECT_EQ(value.GetFormat(), nullptr);
    }
}

TEST(NkDtBasis, TellsMissingFromNullByTheMode) {
    struct Case {
        Base value;
        BOOL defined, missing, null;
    };
    const Case cases[] = {
        {Base(TRUE, NkDtWmMissing), TRUE, FALSE, FALSE}, {Base(TRUE, NkDtWmNull), TRUE, FALSE, FALSE},
        {Base(TRUE, NkDtWmDefined), TRUE, FALSE, FALSE}, {Base(FALSE, NkDtWmMissing), FALSE, TRUE, FALSE},
        {Base(FALSE, NkDtWmNull), FALSE, FALSE, TRUE},   {undefinedInModeTwo(), FALSE, FALSE, FALSE},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(each.value.IsDefined(), each.defined);
        EXPECT_EQ(each.value.IsMissing(), each.missing);
        EXPECT_EQ(each.value.IsNull(), each.null);
    }
}

TEST(NkDtBasis, CopiesEverythingButTheFormat) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (const BOOL modified : {FALSE, TRUE}) {
            Base source(FALSE, mode);
            source.SetModified(modified);
            source.SetFormat(&kFormat);
            const DefaultMode elsewhere(NkDtWmNull);
            const Base copy(source);
            EXPECT_EQ(copy.GetWorkingMode(), mode);
            EXPECT_EQ(copy.IsDefined(), source.IsDefined());
            EXPECT_EQ(copy.IsModified(), modified);
            EXPECT_EQ(copy.GetFormat(), nullptr);
            EXPECT_EQ(source.GetFormat(), &kFormat);
        }
    }
}

TEST(NkDtBasis, OwnsAStateOfItsOwnInEachCopy) {
    const Base source(TRUE, NkDtWmNull);
    Base copy(source);
    copy.Clear();
    EXPECT_EQ(stateOf(source), "defined");
    EXPECT_EQ(stateOf(copy), "null modified");
}

// --- The default mode -------------------------------------------------------------------------

TEST(NkDtDefaultWorkingMode, StartsAsMissing) {
    EXPECT_EQ(NkDtGetDefaultWorkingMode(), NkDtWmMissing);
}

TEST(NkDtDefaultWorkingMode, IsWhatWasSet) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        const DefaultMode scope(mode);
        EXPECT_EQ(NkDtGetDefaultWorkingMode(), mode);
    }
}

TEST(NkDtDefaultWorkingMode, IsMissingAfterThreeWasSet) {
    const DefaultMode before(NkDtWmNull);
    const DefaultMode scope(NkDtWmDefault);
    EXPECT_EQ(NkDtGetDefaultWorkingMode(), NkDtWmMissing);
}

TEST(NkDtDefaultWorkingMode, TakesAnUnknownNumberForThree) {
    for (const NkDtWorkingMode mode : {kUnknownMode, kNegativeMode}) {
        const DefaultMode before(NkDtWmNull);
        const DefaultMode scope(mode);
        EXPECT_EQ(NkDtGetDefaultWorkingMode(), NkDtWmMissing);
    }
}

TEST(NkDtDefaultWorkingMode, LeavesExistingValuesAlone) {
    const Base value(FALSE, NkDtWmDefault);
    const DefaultMode scope(NkDtWmDefined);
    EXPECT_EQ(value.GetWorkingMode(), NkDtWmMissing);
    EXPECT_EQ(stateOf(value), "missing");
}

// --- Flag, mode, format -----------------------------------------------------------------------

TEST(NkDtBasis, StoresTheModifiedFlag) {
    Base value(TRUE, NkDtWmMissing);
    value.SetModified(TRUE);
    EXPECT_EQ(value.IsModified(), TRUE);
    value.SetModified(FALSE);
    EXPECT_EQ(value.IsModified(), FALSE);
}

TEST(NkDtBasis, GetAndResetModifiedReturnsTheOldFlagAndStoresTheNewOne) {
    for (const BOOL before : {FALSE, TRUE}) {
        for (const BOOL after : {FALSE, TRUE}) {
            Base value(TRUE, NkDtWmMissing);
            value.SetModified(before);
            EXPECT_EQ(value.GetAndResetModified(after), before);
            EXPECT_EQ(value.IsModified(), after);
        }
    }
}

TEST(NkDtBasis, SetWorkingModeDefinesForTheArgumentTwoOnly) {
    struct Case {
        NkDtWorkingMode processDefault;
        NkDtWorkingMode given;
        NkDtWorkingMode stored;
        BOOL defined;
    };
    constexpr Case cases[] = {
        {NkDtWmMissing, NkDtWmMissing, NkDtWmMissing, FALSE},
        {NkDtWmMissing, NkDtWmNull, NkDtWmNull, FALSE},
        {NkDtWmMissing, NkDtWmDefined, NkDtWmDefined, TRUE},
        {NkDtWmNull, NkDtWmDefault, NkDtWmNull, FALSE},
        {NkDtWmDefined, NkDtWmDefault, NkDtWmDefined, FALSE},
        {NkDtWmDefined, kUnknownMode, NkDtWmDefined, FALSE},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(::testing::Message() << each.processDefault << each.given);
        const DefaultMode scope(each.processDefault);
        Base value(FALSE, NkDtWmMissing);
        value.SetWorkingMode(each.given);
        EXPECT_EQ(value.GetWorkingMode(), each.stored);
        EXPECT_EQ(value.IsDefined(), each.defined);
        EXPECT_EQ(value.IsModified(), FALSE);
    }
}

TEST(NkDtBasis, SetWorkingModeLeavesADefinedValueDefined) {
    for (const NkDtWorkingMode mode : kModes) {
        Base value(TRUE, NkDtWmDefined);
        value.SetWorkingMode(mode);
        EXPECT_EQ(stateOf(value), "defined");
    }
}

TEST(NkDtBasis, KeepsThePointerToItsFormat) {
    Base value(TRUE, NkDtWmMissing);
    value.SetFormat(&kFormat);
    EXPECT_EQ(value.GetFormat(), &kFormat);
    value.SetFormat(nullptr);
    EXPECT_EQ(value.GetFormat(), nullptr);
    EXPECT_EQ(stateOf(value), "defined");
}

// --- Definedness ------------------------------------------------------------------------------

TEST(NkDtBasis, ClearUndefinesADefinedValueOutsideOfModeTwo) {
    struct Case {
        Base value;
        const char* after;
    };
    Case cases[] = {
        {Base(TRUE, NkDtWmMissing), "missing modified"},
        {Base(TRUE, NkDtWmNull), "null modified"},
        {Base(TRUE, NkDtWmDefined), "defined"},
        {Base(FALSE, NkDtWmMissing), "missing"},
        {Base(FALSE, NkDtWmNull), "null"},
        {undefinedInModeTwo(), "undefined"},
    };
    for (Case& each : cases) {
        each.value.Clear();
        EXPECT_EQ(stateOf(each.value), each.after);
    }
}

TEST(NkDtBasis, SetDefinedConsultsNoModeAndRaisesTheFlagOnAChange) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (const BOOL before : {FALSE, TRUE}) {
            for (const BOOL after : {FALSE, TRUE}) {
                Base value(before, mode);
                value.SetDefined(before);  // mode 2 constructs it defined
                value.SetModified(FALSE);
                value.SetDefined(after);
                EXPECT_EQ(value.IsDefined(), after);
                EXPECT_EQ(value.IsModified(), before != after);
            }
        }
    }
}

TEST(NkDtBasis, AssignmentTakesADifferentDefinednessOver) {
    Base target(FALSE, NkDtWmNull);
    target.SetFormat(&kFormat);
    Base source(TRUE, NkDtWmMissing);
    target = source;
    EXPECT_EQ(stateOf(target), "defined modified");
    EXPECT_EQ(target.GetWorkingMode(), NkDtWmNull);
    EXPECT_EQ(target.GetFormat(), &kFormat);
    source.Clear();
    target.SetModified(FALSE);
    target = source;
    EXPECT_EQ(stateOf(target), "null modified");
}

TEST(NkDtBasis, AssignmentOfTheSameDefinednessChangesNothing) {
    for (const BOOL defined : {FALSE, TRUE}) {
        Base target(defined, NkDtWmMissing);
        Base source(defined, NkDtWmNull);
        source.SetModified(TRUE);
        const std::string before = stateOf(target);
        target = source;
        EXPECT_EQ(stateOf(target), before);
    }
}

TEST(NkDtBasis, AssignmentToAValueInModeTwoChangesNothing) {
    Base defined(TRUE, NkDtWmDefined);
    defined = Base(FALSE, NkDtWmNull);
    EXPECT_EQ(stateOf(defined), "defined");
    Base undefined = undefinedInModeTwo();
    undefined = Base(TRUE, NkDtWmNull);
    EXPECT_EQ(stateOf(undefined), "undefined");
}

TEST(NkDtBasis, AssignmentToItselfChangesNothing) {
    Base value(FALSE, NkDtWmNull);
    const Base& self = value;
    value = self;
    EXPECT_EQ(stateOf(value), "null");
}

TEST(NkDtBasis, ArithmeticNeedsOneDefinedOperandAndNoMissingOne) {
    const Base defined(TRUE, NkDtWmMissing);
    const Base missing(FALSE, NkDtWmMissing);
    const Base null(FALSE, NkDtWmNull);
    const Base undefined = undefinedInModeTwo();
    struct Case {
        const Base* a;
        const Base* b;
        BOOL allowed;
    };
    const Case cases[] = {
        {&defined, &defined, TRUE},      {&defined, &missing, FALSE},   {&defined, &null, TRUE},
        {&defined, &undefined, TRUE},    {&missing, &defined, FALSE},   {&missing, &missing, FALSE},
        {&missing, &null, FALSE},        {&missing, &undefined, FALSE}, {&null, &defined, TRUE},
        {&null, &missing, FALSE},        {&null, &null, FALSE},         {&null, &undefined, FALSE},
        {&undefined, &defined, TRUE},    {&undefined, &missing, FALSE}, {&undefined, &null, FALSE},
        {&undefined, &undefined, FALSE},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(Base::CheckDefinedForArithmetic(*each.a, *each.b), each.allowed)
            << stateOf(*each.a) << " and " << stateOf(*each.b);
    }
}

// --- Archive ----------------------------------------------------------------------------------

TEST(NkDtBasis, ArchivesTheDefinednessAsOneWordOf32Bits) {
    Base defined(TRUE, NkDtWmNull);
    Base undefined(FALSE, NkDtWmNull);
    EXPECT_EQ(stored(defined), (Bytes{1, 0, 0, 0}));
    EXPECT_EQ(stored(undefined), (Bytes{0, 0, 0, 0}));
}

TEST(NkDtBasis, StoringChangesNothing) {
    Base value(TRUE, NkDtWmNull);
    stored(value);
    EXPECT_EQ(stateOf(value), "defined");
}

TEST(NkDtBasis, LoadingRaisesTheFlagWhenTheDefinednessChanges) {
    struct Case {
        BOOL before;
        BYTE loaded;
        const char* after;
    };
    constexpr Case cases[] = {
        {FALSE, 0, "null"}, {FALSE, 1, "defined modified"}, {TRUE, 0, "null modified"}, {TRUE, 1, "defined"}};
    for (const Case& each : cases) {
        Base value(each.before, NkDtWmNull);
        value.SetFormat(&kFormat);
        load(value, {each.loaded, 0, 0, 0});
        EXPECT_EQ(stateOf(value), each.after);
        EXPECT_EQ(value.GetWorkingMode(), NkDtWmNull);
        EXPECT_EQ(value.GetFormat(), &kFormat);
    }
}

TEST(NkDtBasis, LoadingCanUndefineAValueInModeTwo) {
    Base value(TRUE, NkDtWmDefined);
    load(value, {0, 0, 0, 0});
    EXPECT_EQ(stateOf(value), "undefined modified");
}

TEST(NkDtBasis, IsNotDefinedWhenAnArchiveSaysNeitherZeroNorOne) {
    Base value(TRUE, NkDtWmMissing);
    load(value, {2, 0, 0, 0});
    EXPECT_EQ(stateOf(value), "missing modified");
    value.SetModified(FALSE);
    value.Clear();  // there is nothing to undefine
    EXPECT_EQ(stateOf(value), "missing");
}

TEST(NkDtBasis, LoadingFromATruncatedArchiveChangesNothing) {
    for (std::size_t length = 0; length < 4; ++length) {
        Base value(TRUE, NkDtWmNull);
        const int cause = expectException<CArchiveException>([&] { load(value, Bytes(length)); });
        EXPECT_EQ(cause, CArchiveException::endOfFile);
        EXPECT_EQ(stateOf(value), "defined");
    }
}

// --- Husks ------------------------------------------------------------------------------------

TEST(NkDtBasis, MoveConstructionStealsTheStateWithItsFormat) {
    static_assert(std::is_nothrow_move_constructible_v<Base>);
    Base source(FALSE, NkDtWmNull);
    source.SetModified(TRUE);
    source.SetFormat(&kFormat);
    const Base target(std::move(source));
    EXPECT_EQ(stateOf(target), "null modified");
    EXPECT_EQ(target.GetFormat(), &kFormat);
    EXPECT_TRUE(source.IsHusk());
    EXPECT_FALSE(target.IsHusk());
}

TEST(NkDtBasis, AHuskBecomesAFreshValueInTheDefaultMode) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        Base source(TRUE, NkDtWmNull);
        source.SetModified(TRUE);
        source.SetFormat(&kFormat);
        const Base target(std::move(source));
        const DefaultMode scope(mode);
        EXPECT_EQ(source.GetWorkingMode(), mode);
        EXPECT_EQ(source.IsDefined(), mode == NkDtWmDefined);
        EXPECT_EQ(source.IsModified(), FALSE);
        EXPECT_EQ(source.GetFormat(), nullptr);
        EXPECT_FALSE(source.IsHusk());
        EXPECT_EQ(stateOf(target), "defined modified");
    }
}

TEST(NkDtBasis, AHuskCanBeCopiedAndAssigned) {
    Base source(TRUE, NkDtWmNull);
    const Base first(std::move(source));
    const Base copy(source);
    EXPECT_EQ(stateOf(copy), "missing");

    Base again(TRUE, NkDtWmNull);
    const Base second(std::move(again));
    again = second;
    EXPECT_EQ(stateOf(again), "defined modified");
    EXPECT_EQ(again.GetWorkingMode(), NkDtWmMissing);
}

// --- What the base tells ------------------------------------------------------------------------

TEST(NkDtBasis, IsAbstractAndHasTheTypeNumber13) {
    static_assert(std::is_abstract_v<NkDtBasis>);
    const Base value(TRUE, NkDtWmNull);
    EXPECT_EQ(value.GetDtTyp(), NkDtTypBasis);
    EXPECT_EQ(static_cast<int>(NkDtTypBasis), 13);
}

TEST(NkDtBasis, HasNoCounterpartInAnotherLayer) {
    EXPECT_EQ(Base(TRUE, NkDtWmNull).GetDeBasisPtr(), nullptr);
}

TEST(NkDtBasis, IsKnownByNameAndCannotBeCreated) {
    const CRuntimeClass* const pClass = CRuntimeClass::FromName("NkDtBasis");
    ASSERT_EQ(pClass, RUNTIME_CLASS(NkDtBasis));
    EXPECT_EQ(pClass->CreateObject(), nullptr);
    EXPECT_TRUE(pClass->IsDerivedFrom(CObject::GetThisClass()));
    EXPECT_EQ(Base(TRUE, NkDtWmNull).GetRuntimeClass(), pClass);
}

TEST(NkDtBasis, NumbersItsTypesAndModesAsArchivesAndProgramsKnowThem) {
    constexpr int typs[] = {NkDtTypChar,    NkDtTypString, NkDtTypLong,     NkDtTypShort, NkDtTypDouble,
                            NkDtTypDecimal, NkDtTypBool,   NkDtTypDateTime, NkDtTypTime,  NkDtTypDateZp};
    constexpr int numbers[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 12};
    for (std::size_t i = 0; i < std::size(typs); ++i)
        EXPECT_EQ(typs[i], numbers[i]);
    for (std::size_t i = 0; i < std::size(kModes); ++i)
        EXPECT_EQ(static_cast<std::size_t>(kModes[i]), i);
}

}  // namespace
