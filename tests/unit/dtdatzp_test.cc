// Dates: what they wipe, keep and refuse beside date-times.

#include <nkdt/NkDtDateZp.h>
#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtShort.h>
#include <nkdt/NkDtString.h>
#include <nkdt/NkDtTime.h>
#include <nkfo/NkFormat.h>
#include <nkfw/OleDateTime.h>
#include <nkfw/Recordset.h>

#include <ctime>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "DateTesting.h"
#include "DurationTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;
using namespace datetest;
using D = NkDtDateTime;
using Z = NkDtDateZp;
using T = NkDtTime;

/// A date with a time of day, not modified.
Z withTime(NkDtWorkingMode mode = NkDtWmMissing) {
    Z value(NkDtWmNull);
    value.SetWorkingMode(mode);
    value.SetDateTime("05.03.2004 14:07:09");
    value.SetModified(FALSE);
    return Z(std::move(value));
}

/// An undefined date that stores a time of day, not modified.
Z undefinedWithTime(NkDtWorkingMode mode) {
    Z value(NkDtWmNull);
    value.SetWorkingMode(mode);
    static_cast<D&>(value) = undefined(NkDtWmNull);
    load(value, written([](CArchive& archive) { archive << DWORD{0} << INT{104} << INT{2} << INT{5}; }));
    value.SetModified(FALSE);
    return Z(std::move(value));
}

// --- Construction -----------------------------------------------------------------------------------------

TEST(NkDtDateZp, IsBuiltByItsModeAsADateTimeWithTheClocksTimeInModeTwo) {
    const NoonIn2023 noon;
    EXPECT_EQ(describe(Z(NkDtWmDefined)), std::string(kNow) + " defined");
    EXPECT_EQ(describe(Z(NkDtWmNull)), "01.01.1900 00:00:00 null");
    const DefaultMode scope(NkDtWmDefined);
    EXPECT_EQ(describe(Z()), "01.01.1900 00:00:00 defined");
    const NoClock none;
    expectReplaced(NkDtErrInitialwert, [] { const Z made(NkDtWmDefined); });
}

TEST(NkDtDateZp, IsBuiltWithoutATimeOfDayFromEverythingElse) {
    const frameworktest::TimeZone zone("WEST+8");
    const DefaultMode scope(NkDtWmNull);
    const char* const day = "05.03.2004 00:00:00 defined";
    std::tm time = brokenDown(104, 2, 5, 14, 7, 9);
    EXPECT_EQ(describe(Z(&time)), day);
    EXPECT_EQ(describe(Z(D(5, 3, 2004, 14, 7, 9))), day);
    EXPECT_EQ(describe(Z(std::time_t{1078488429})), day);
    EXPECT_EQ(describe(Z(std::time_t{1078452000})), "04.03.2004 00:00:00 defined");  // local
    EXPECT_EQ(describe(Z(NkDtShort(5), NkDtShort(3), NkDtShort(2004))), day);
    EXPECT_EQ(describe(Z(5, 3, 2004)), day);
    EXPECT_EQ(describe(Z("05.03.2004")), day);
    EXPECT_EQ(describe(Z("05.03.2004 14:07:09")), day);
    EXPECT_EQ(describe(Z(NkDtString("5.3.2004"))), day);
    EXPECT_EQ(describe(Z(COleDateTime(2004, 3, 5, 14, 7, 9))), day);
    EXPECT_EQ(Z(5, 3, 2004).GetWorkingMode(), NkDtWmNull);
}

TEST(NkDtDateZp, IsCopiedWithoutItsTimeOfDay) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        Z source = withTime(mode);
        source.SetModified(TRUE);
        EXPECT_EQ(describe(Z(source)), "05.03.2004 00:00:00 defined modified");
        const std::unique_ptr<Z> made(source.NewObject());
        EXPECT_EQ(describe(*made), "05.03.2004 00:00:00 defined modified");
        EXPECT_EQ(made->GetRuntimeClass(), Z::GetThisClass());
        EXPECT_EQ(made->GetWorkingMode(), mode);
        EXPECT_EQ(describe(source), "05.03.2004 14:07:09 defined modified");
        EXPECT_EQ(describe(D(source)), "05.03.2004 14:07:09 defined modified");
        const std::string state = mode == NkDtWmMissing ? "missing"
                                  : mode == NkDtWmNull  ? "null"
                                                        : "undefined";
        EXPECT_EQ(describe(Z(undefinedWithTime(mode))), "05.03.2004 14:07:09 " + state);  // moved as a whole
        const Z undefinedSource = undefinedWithTime(mode);
        EXPECT_EQ(describe(Z(undefinedSource)), "05.03.2004 00:00:00 " + state);
        EXPECT_EQ(describe(Z(undefined(mode))), "05.03.2004 00:00:00 " + state);
    }
}

TEST(NkDtDateZp, IsUndefinedAndEmptyFromUndefinedValues) {
    const NkDtShort none(NkDtWmNull);
    const NkDtShort one(1);
    EXPECT_EQ(describe(Z(none, one, one)), "01.01.1900 00:00:00 missing");
    EXPECT_EQ(describe(Z(one, none, one)), "01.01.1900 00:00:00 missing");
    EXPECT_EQ(describe(Z(one, one, none)), "01.01.1900 00:00:00 missing");
    EXPECT_EQ(describe(Z(NkDtString(NkDtWmNull))), "01.01.1900 00:00:00 null");
    EXPECT_EQ(describe(Z(NkDtString(""))), "01.01.1900 00:00:00 defined");
}

TEST(NkDtDateZp, RefusesWhatADateTimeRefuses) {
    const LPCTSTR none = nullptr;
    std::tm* const noTime = nullptr;
    expectReplaced(NkDtErrTag, [] { const Z made(29, 2, 2003); });
    expectReplaced(NkDtErrJahr, [] { const Z made(31, 12, 1752); });
    expectReplaced(NkDtErrMonat, [] { const Z made("05.13.2004"); });
    expectReplaced(NkDtErrInitialwert, [] { const Z made("14:07"); });
    expectReplaced(NkDtErrInitialwert, [] { const Z made(""); });
    expectReplaced(NkDtErrInitialwert, [&] { const Z made(none); });
    expectReplaced(NkDtErrInitialwert, [&] { const Z made(noTime); });
    expectReplaced(NkDtErrTag, [] { const Z made(NkDtShort(29), NkDtShort(2), NkDtShort(2003)); });
}

// --- Assignment -------------------------------------------------------------------------------------------

TEST(NkDtDateZp, IsAssignedWithTheTimeOfDayOfADate) {
    Z value(NkDtWmNull);
    const Z source = withTime();
    value = source;
    EXPECT_EQ(describe(value), "05.03.2004 14:07:09 defined modified");
    Z same = withTime();
    same = source;
    EXPECT_EQ(stateOf(same), "defined");
    const Z& self = same;
    same = self;
    EXPECT_EQ(describe(same), "05.03.2004 14:07:09 defined");
    value.Assign(Z(6, 3, 2004));
    EXPECT_EQ(describe(value), "06.03.2004 00:00:00 defined modified");
    value = withTime();
    EXPECT_EQ(textOf(value), "05.03.2004 14:07:09");
}

TEST(NkDtDateZp, TakesTheDateAloneOfADateTime) {
    Z value(NkDtWmNull);
    const D source(5, 3, 2004, 14, 7, 9);
    value = source;
    EXPECT_EQ(describe(value), "05.03.2004 00:00:00 defined modified");
    value.SetModified(FALSE);
    value = D(5, 3, 2004, 23, 59, 59);
    EXPECT_EQ(describe(value), "05.03.2004 00:00:00 defined");
    value = COleDateTime(2004, 3, 6, 14, 7, 9);
    EXPECT_EQ(describe(value), "06.03.2004 00:00:00 defined modified");
    value = COleDateTime(2003, 2, 29, 0, 0, 0);
    EXPECT_EQ(describe(value), "01.01.1900 00:00:00 null modified");
}

TEST(NkDtDateZp, IsClearedByAnOleDateThatIsNotValidWhateverTheDefaultMode) {
    COleDateTime null;
    null.SetStatus(COleDateTime::null);
    for (const NkDtWorkingMode byDefault : kStoredModes) {
        const DefaultMode scope(byDefault);
        for (const COleDateTime& source : {COleDateTime(2003, 2, 29, 0, 0, 0), null}) {
            Z missing = withTime(NkDtWmMissing);
            missing = source;
            EXPECT_EQ(describe(missing), "01.01.1900 00:00:00 missing modified");
            Z always = withTime(NkDtWmDefined);
            always = source;
            EXPECT_EQ(describe(always), "01.01.1900 00:00:00 defined modified");
        }
    }
}

TEST(NkDtDateZp, AssignmentNamesItselfWhenItFails) {
    // An application's date that may not be modified.
    struct Locked : Z {
        using Z::operator=;
        Locked() : Z(5, 3, 2004) {}
        void SetModified(BOOL) override { throw new NkDtExcep("", "", "", NkDtErrSonstiger, 0, FALSE); }
    };
    Locked value;
    const Z other(6, 3, 2004);
    const std::function<void()> assignments[] = {[&] { value = other; }, [&] { value = Z(other); }};
    for (const std::function<void()>& assignment : assignments) {
        const ErrorPtr error = expectReplaced(NkDtErrSonstiger, assignment);
        EXPECT_STREQ(error->GetFunctionText(), "operator=(NkDtDateZp&)");
        EXPECT_STREQ(error->GetClassText(), "NkDtDateZp");
        EXPECT_EQ(describe(value), "05.03.2004 00:00:00 defined");
    }
    value = Z(5, 3, 2004);  // nothing is modified by an equal date
    EXPECT_EQ(describe(value), "05.03.2004 00:00:00 defined");
}

TEST(NkDtDateZp, AssignRefusesADateTimeThoughThatTakesADate) {
    const D dateTime(5, 3, 2004);
    const NkDtLong number(5);
    for (const NkDtBasis* const other :
         {static_cast<const NkDtBasis*>(&dateTime), static_cast<const NkDtBasis*>(&number)}) {
        Z value = withTime();
        const ErrorPtr error = expectError(NkDtErrBasistypen, [&] { value.Assign(*other); });
        EXPECT_STREQ(error->GetErrorText(), "Basistypen unterschiedlich");
        EXPECT_STREQ(error->GetFunctionText(), "Assign(NkDtBasis&)");
        EXPECT_STREQ(error->GetClassText(), "NkDtDateZp");
        EXPECT_STREQ(error->GetSourceFile(), ".\\Dtdatzp.cc");
        EXPECT_TRUE(error->IsLogged());
        EXPECT_EQ(describe(value), "05.03.2004 14:07:09 defined");
    }
    D target;
    NkDtBasis& base = target;
    base.Assign(withTime());
    EXPECT_EQ(textOf(target), "05.03.2004 14:07:09");
}

// --- The time of day that the setters give ----------------------------------------------------------------

TEST(NkDtDateZp, KeepsATimeOfDayThatItWasGiven) {
    Z value(5, 3, 2004);
    value.SetHour(14);
    EXPECT_EQ(textOf(value), "05.03.2004 14:00:00");
    value.SetTime("10:30");
    EXPECT_EQ(textOf(value), "05.03.2004 10:30:00");
    value.AddMin(20 * 60);
    EXPECT_EQ(textOf(value), "06.03.2004 06:30:00");
    value.SetDateTime("07.03.2004 01:02:03");
    EXPECT_EQ(textOf(value), "07.03.2004 01:02:03");
    EXPECT_EQ(value > Z(7, 3, 2004), 1);
    EXPECT_STREQ(value.ConvToSQL().GetValue(), "'07.03.2004 01:02'");
    BOOL fDefiniert = FALSE;
    USHORT version = 0;
    EXPECT_STREQ(static_cast<LPCTSTR>(value.ConvToExtern(fDefiniert, version)), "C07032004010203");
    EXPECT_EQ(value.ConvToOFL(), CString("07.03.2004 01:02:03"));
    value.SetFromSQL("Mar  8 2004 02:07PM");
    EXPECT_EQ(textOf(value), "08.03.2004 14:07:00");
    const NkDtString text("C09032004010203");
    value.SetFromExtern(&text, TRUE, 100);
    EXPECT_EQ(textOf(value), "09.03.2004 01:02:03");
    CRecordset rs;
    TIMESTAMP_STRUCT field = {2004, 3, 10, 4, 5, 6, 0};
    value.SetFromRecordSet(rs, field);
    EXPECT_EQ(textOf(value), "10.03.2004 04:05:06");
    field.hour = 0;
    value.ConvToRecordSet(rs, field);
    EXPECT_EQ(field.hour, 4);
    EXPECT_EQ(COleDateTime(value).GetHour(), 4);
    EXPECT_EQ(describe(NkDtString(value)), "'10.03.2004' 10/10 defined modified");
}

TEST(NkDtDateZp, WipesTheTimeOfDayOfAUserInterfaceText) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        Z value(NkDtWmNull);
        value.SetWorkingMode(mode);
        value.SetFromOFL("06.03.2004 14:07");
        EXPECT_EQ(describe(value), "06.03.2004 00:00:00 defined modified");
        value.SetModified(FALSE);
        value.SetFromOFL("06.03.2004");
        EXPECT_EQ(stateOf(value), "defined");
        value.SetFromOFL("06.03.2004 14:07");  // the time counts for the flag
        EXPECT_EQ(describe(value), "06.03.2004 00:00:00 defined modified");
        Z other = withTime(mode);
        other.SetFromOFL("05.03.2004 14:07:09");
        EXPECT_EQ(describe(other), "05.03.2004 00:00:00 defined");
    }
}

TEST(NkDtDateZp, KeepsItsTimeOfDayWhenAUserInterfaceTextIsRefused) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (const bool isDefined : {true, false}) {
            Z value = isDefined ? withTime(mode) : undefinedWithTime(mode);
            const std::string before = describe(value);
            const ErrorPtr error = expectReplaced(NkFoFehlerText, [&] { value.SetFromOFL("31.02.2004"); });
            EXPECT_STREQ(error->GetFunctionText(), "SetFromOFL(LPCTSTR,NkFormat *)");
            EXPECT_STREQ(error->GetClassText(), "NkDtDateZp");
            EXPECT_STREQ(error->GetSourceFile(), ".\\Dtdatzp.cc");
            EXPECT_EQ(describe(value), before);
        }
    }
}

TEST(NkDtDateZp, TellsItsBrokenDownTimeEvenWhenItIsMissing) {
    const Z missing = undefinedWithTime(NkDtWmMissing);
    const std::tm time = missing;
    EXPECT_EQ(time.tm_mday, 5);
    EXPECT_EQ(time.tm_hour, 14);
    EXPECT_EQ(time.tm_isdst, -1);
    const ErrorPtr error = expectError(NkDtErrUndefiniert, [&] { static_cast<void>(missing.GetValue()); });
    EXPECT_STREQ(error->GetClassText(), "NkDtDateTime");
    expectError(NkDtErrUndefiniert, [&] { static_cast<void>(std::tm(static_cast<const D&>(missing))); });
}

TEST(NkDtDateZp, IsWrittenAsADate) {
    std::ostringstream stream;
    stream << withTime() << '|' << Z(NkDtWmNull) << '|' << static_cast<const D&>(withTime());
    EXPECT_EQ(stream.str(), "05.03.2004||05.03.2004 14:07:09");
}

// --- Archive ----------------------------------------------------------------------------------------------

TEST(NkDtDateZp, ArchivesItsDateAlone) {
    Z value = withTime();
    const Bytes expected = {1, 0, 0, 0, 104, 0, 0, 0, 2, 0, 0, 0, 5, 0, 0, 0};
    EXPECT_EQ(stored(value), expected);
    Z back(NkDtWmNull);
    load(back, stored(value));
    EXPECT_EQ(describe(back), "05.03.2004 00:00:00 defined modified");
}

TEST(NkDtDateZp, KeepsItsTimeOfDayWhenItIsLoaded) {
    Z source(6, 4, 2005);
    Z value = withTime();
    load(value, stored(source));
    EXPECT_EQ(describe(value), "06.04.2005 14:07:09 defined modified");
    Z same = withTime();
    Z sameDay(5, 3, 2004);
    load(same, stored(sameDay));
    EXPECT_EQ(describe(same), "05.03.2004 14:07:09 defined");
    const std::pair<INT, INT> others[] = {{4, 1}, {8, 0}, {12, 7}};  // each of the three counts
    for (const auto& [place, number] : others) {
        Bytes bytes = stored(sameDay);
        bytes[static_cast<std::size_t>(place)] = static_cast<BYTE>(number);
        Z other = withTime();
        load(other, bytes);
        EXPECT_EQ(stateOf(other), "defined modified");
    }
}

TEST(NkDtDateZp, NamesItselfWhenAnArchiveFails) {
    Z value = withTime();
    const std::string before = describe(value);
    const ErrorPtr error = expectReplaced(NkDtErrFrameworkException, [&] {
        load(value, Bytes{1, 0, 0, 0, 104});
    });
    EXPECT_STREQ(error->GetFunctionText(), "Serialize(CArchive&)");
    EXPECT_STREQ(error->GetClassText(), "NkDtDateZp");
    EXPECT_EQ(describe(value), before);
}

// --- Durations
// ----------------------------------------------------------------------------------------------

TEST(NkDtDateZp, IsMovedByWholeDaysOfADurationAlone) {
    const Z day(5, 3, 2004);
    EXPECT_EQ(describe(day + T(23, 59)), "05.03.2004 00:00:00 defined modified");
    EXPECT_EQ(describe(day + T(24, 0)), "06.03.2004 00:00:00 defined modified");
    EXPECT_EQ(describe(day - T(0, 1)), "04.03.2004 00:00:00 defined modified");
    EXPECT_EQ(describe(day - T(24, 1)), "03.03.2004 00:00:00 defined modified");
    EXPECT_EQ(describe(day + T(0, 0)), "05.03.2004 00:00:00 defined");
    const Z noon = withTime(NkDtWmNull);
    EXPECT_EQ(describe(noon + T(10, 0)), "06.03.2004 00:00:00 defined modified");  // its own time counts
    EXPECT_EQ((noon + T(10, 0)).GetWorkingMode(), NkDtWmNull);
    EXPECT_EQ(textOf(noon), "05.03.2004 14:07:09");
}

TEST(NkDtDateZp, SumIsUndefinedInTheDefaultModeWhenOneIsMissingOrBothAreUndefined) {
    const Z day(5, 3, 2004);
    const T hour(1, 0);
    const T missingHour(NkDtWmMissing);
    const T nullHour(NkDtWmNull);
    const Z null = undefinedWithTime(NkDtWmNull);
    const DefaultMode scope(NkDtWmNull);
    const char* const none = "01.01.1900 00:00:00 null";
    EXPECT_EQ(describe(day + missingHour), none);
    EXPECT_EQ(describe(day - missingHour), none);
    EXPECT_EQ(describe(null + nullHour), none);
    EXPECT_EQ(describe(Z(NkDtWmMissing) - hour), none);
    EXPECT_EQ(describe(null + hour), "05.03.2004 00:00:00 defined modified");
    NkDtSetDefaultWorkingMode(NkDtWmDefined);
    EXPECT_EQ(describe(day + missingHour), "01.01.1900 00:00:00 defined");
}

TEST(NkDtDateZp, SumNamesItselfWhenTheMoveFails) {
    const Z first(1, 1, 1753);
    const Z last(31, 12, 32767);
    const ErrorPtr minus = expectReplaced(NkDtErrJahr, [&] { static_cast<void>(first - T(0, 1)); });
    EXPECT_STREQ(minus->GetFunctionText(), "operator-(NkDtTime&)");
    EXPECT_STREQ(minus->GetClassText(), "NkDtDateZp");
    const ErrorPtr plus = expectReplaced(NkDtErrWertebereich, [&] { static_cast<void>(last + T(24, 0)); });
    EXPECT_STREQ(plus->GetFunctionText(), "operator+(NkDtTime&)");
}

TEST(NkDtDateZp, IsSubtractedAsADateTime) {
    using durationtest::show;
    EXPECT_EQ(show(Z(10, 3, 2004) - Z(10, 2, 2004)), "806400:1 defined modified");
    EXPECT_EQ(show(withTime() - Z(5, 3, 2004)), "16940:1 defined modified");
    EXPECT_EQ(show(D(5, 3, 2004, 1, 0, 0) - Z(5, 3, 2004)), "1200:1 defined modified");
    EXPECT_EQ(show(Z(5, 3, 2004) - D(5, 3, 2004, 1, 0, 0)), "-1200:1 defined modified");
}

}  // namespace
