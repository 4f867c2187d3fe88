// Durations outside: in a database, as external text, in an archive.

#include <nkdt/NkDtString.h>
#include <nkdt/NkDtTime.h>
#include <nkfw/Recordset.h>

#include <random>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "DurationTesting.h"
#include "ValueTesting.h"
#include "support/Instruments.h"

namespace {

using namespace valuetest;
using namespace durationtest;
using T = NkDtTime;

// --- SQL, recordset -------------------------------------------------------------------------------

TEST(DurationInADatabase, IsTheNumberOfItsTicks) {
    for (const LONG ticks : {LONG{0}, LONG{1800}, LONG{-7}, kMostTicks, kFewestTicks}) {
        for (const TimeMode mode : kTimeModes) {
            const T t = ofTicks(ticks, mode);
            EXPECT_EQ(bytesOf(t.ConvToSQL()), std::to_string(ticks));
            CRecordset rs;
            LONG field = 99;
            rs.SetFieldNull(&field, TRUE);
            t.ConvToRecordSet(rs, field);
            EXPECT_EQ(field, ticks);
            EXPECT_FALSE(rs.IsFieldNull(&field));

            T same = ofTicks(ticks, mode);
            same.SetFromSQL(ticks);
            same.SetFromRecordSet(rs, field);
            EXPECT_EQ(show(same), show(t));
            T other = undefined(NkDtWmNull, 3, mode);
            other.SetFromSQL(ticks);
            EXPECT_EQ(show(other), std::to_string(ticks) + ":" + std::to_string(mode) + " defined modified");
            T taken = undefined(NkDtWmDefined, 3, mode);
            taken.SetFromRecordSet(rs, field);
            EXPECT_EQ(show(taken), show(other));
        }
    }
    const NkDtString literal = T(NkDtWmNull).ConvToSQL();
    EXPECT_EQ(describe(literal), "'NULL' 4/4 defined");
}

TEST(DurationInADatabase, IsClearedByAFieldThatIsNullAndLeavesTheFieldWhenItIsUndefined) {
    CRecordset rs;
    LONG field = 99;
    rs.SetFieldNull(&field, TRUE);
    T t = ofTicks(1800, T::Hundredths);
    t.SetFromRecordSet(rs, field);
    EXPECT_EQ(show(t), "0:1 missing modified");
    T always = ofTicks(0, T::Minutes, NkDtWmDefined);
    always.SetFromRecordSet(rs, field);
    EXPECT_EQ(show(always), "0:1 defined");
    rs.SetFieldNull(&field, FALSE);
    undefined(NkDtWmNull, 5).ConvToRecordSet(rs, field);
    EXPECT_EQ(field, 99);
    EXPECT_TRUE(rs.IsFieldNull(&field));
}

// --- External text --------------------------------------------------------------------------------

std::string external(const T& t) {
    BOOL defined = -1;
    USHORT version = 0;
    const NkDtString text = t.ConvToExtern(defined, version);
    EXPECT_EQ(defined, t.IsDefined());
    EXPECT_EQ(version, 100);
    return bytesOf(text);
}

TEST(ExternalDuration, IsWrittenAsADateWithMonthsOf30Days) {
    struct Case {
        LONG hours;
        LONG minutes;
        const char* text;
    };
    constexpr Case cases[] = {
        {0, 0, "T000000"},           {5, 30, "T053000"},
        {-5, -30, "T-053000"},       {23, 59, "T235900"},
        {0, -30, "T003000"},  // the sign is that of the hours
        {24, 0, "D01000000"},        {24, 1, "C01000000000100"},
        {25, 30, "C01000000013000"}, {-25, -30, "C-01000000013000"},
        {719, 0, "C29000000230000"}, {720, 0, "D00010000"},
        {-720, 0, "D-00010000"},     {8639, 59, "C29110000235900"},
        {8640, 0, "D00000001"},      {8640 + 720 + 24 + 1, 1, "C01010001010100"},
    };
    for (const Case& each : cases) {
        for (const TimeMode mode : kTimeModes) {
            T t = ofTicks(each.hours * 1200 + each.minutes * 20, mode);
            EXPECT_EQ(external(t), each.text);
        }
    }
    // Seconds are none, and what is below a minute is lost.
    EXPECT_EQ(external(ofTicks(39)), "T000100");
    // 207 years, 1 month, 15 days, 9 hours
    EXPECT_EQ(external(ofTicks(kMostTicks)), "C15010207094200");
    EXPECT_EQ(external(ofTicks(kFewestTicks)), "C-15010207094200");
}

TEST(ExternalDuration, OfAnUndefinedValueIsAnUndefinedTextInTheDefaultMode) {
    for (const T& t : {undefined(NkDtWmMissing, 5), undefined(NkDtWmNull, 5), undefined(NkDtWmDefined, 5)}) {
        for (const NkDtWorkingMode mode : kStoredModes) {
            const DefaultMode scope(mode);
            BOOL defined = TRUE;
            USHORT version = 0;
            const NkDtString text = t.ConvToExtern(defined, version);
            EXPECT_EQ(describe(text), describe(NkDtString(mode)));
            EXPECT_EQ(defined, FALSE);
            EXPECT_EQ(version, 100);
        }
    }
}

struct ReadExternal {
    const char* text;
    LONG ticks;
};
constexpr ReadExternal kReadExternal[] = {
    {"T053000", 6600},
    {"T-053000", -6600},
    {"T-003000", -600},
    {"T0530", 6600},  // what is missing is 0
    {"T05", 6000},
    {"T5", 6000},
    {"T", 0},
    {"T-", 0},
    {"D", 0},
    {"C", 0},
    {"D01000000", 28800},
    {"D0102", 24 * 1200 + 2 * 720 * 1200},
    {"D-00000001", -8640 * 1200},
    {"C01000000013000", 30600},
    {"C-01000000013000", -30600},
    {"C010000000130", 30600},
    {"C01000000", 28800},
    {"T053059", 6600},  // seconds do not count
    {"T0530xx and more", 6600},
    {"D01000000235959", 28800},
    {"T9999", 99 * 1200 + 99 * 20},  // nothing is tested for its range
    {"D99990000", (99 * 24 + 99 * 720) * 1200},
    {"T05xx", 6000},  // what is no number ends the text
    {"Txx30", 0},
    {"T 530", 53 * 1200},  // a blank does not count for the width
    {"T+5-3", 6000 - 60},
    {"T0 30", 600},
};

TEST(ExternalDuration, IsReadFieldByFieldWithWhatIsMissingAsZero) {
    for (const ReadExternal& each : kReadExternal) {
        SCOPED_TRACE(each.text);
        const NkDtString text(each.text);
        T t = undefined(NkDtWmNull, each.ticks + 1, T::Hundredths);
        t.SetFromExtern(&text, TRUE, 100);
        EXPECT_EQ(show(t), std::to_string(each.ticks) + ":1 defined modified");
        T same = ofTicks(each.ticks, T::Minutes, NkDtWmDefined);
        same.SetFromExtern(&text, TRUE, 100);
        EXPECT_EQ(show(same), std::to_string(each.ticks) + ":1 defined");
        T otherMode = ofTicks(each.ticks, T::HoursOnly);  // the length did not change
        otherMode.SetFromExtern(&text, TRUE, 100);
        EXPECT_EQ(show(otherMode), std::to_string(each.ticks) + ":1 defined");
    }
}

TEST(ExternalDuration, IsMarkedDefinedBeforeAnythingElseIsRefused) {
    const NkDtString undefinedText(NkDtWmNull);
    const NkDtString letter("X053000");
    const NkDtString small("t053000");
    const NkDtString empty("");
    const NkDtString large("D00009999");
    const NkDtString justLarge("C15010207094300");
    const std::pair<const NkDtString*, ULONG> refused[] = {
        {&undefinedText, 13}, {&letter, 18}, {&small, 18}, {&empty, 18}, {&large, 8}, {&justLarge, 8}};
    for (const auto& [text, cause] : refused) {
        T missing = undefined(NkDtWmMissing, 7, T::Hundredths);
        const ErrorPtr error =
            expectReplaced(cause, [&, text = text] { missing.SetFromExtern(text, TRUE, 100); });
        EXPECT_STREQ(error->GetFunctionText(), "SetFromExtern(NkDtString*,BOOL,USHORT)");
        EXPECT_STREQ(error->GetClassText(), "NkDtTime");
        EXPECT_STREQ(error->GetSourceFile(), ".\\dttime.cc");
        EXPECT_EQ(show(missing), "7:0 defined modified");
        T defined = ofTicks(7, T::Hundredths);
        expectReplaced(cause, [&, text = text] { defined.SetFromExtern(text, TRUE, 100); });
        EXPECT_EQ(show(defined), "7:0 defined");
    }
}

TEST(ExternalDuration, OfAnotherVersionIsRefusedBeforeAnythingElse) {
    const NkDtString text("T053000");
    for (T t : {ofTicks(7, T::Hundredths), undefined(NkDtWmMissing, 7)}) {
        const std::string before = show(t);
        for (const USHORT version : {USHORT{0}, USHORT{99}, USHORT{101}}) {
            expectReplaced(NkDtErrVersion, [&] { t.SetFromExtern(&text, TRUE, version); });
            expectReplaced(NkDtErrVersion, [&] { t.SetFromExtern(nullptr, FALSE, version); });
        }
        EXPECT_EQ(show(t), before);
    }
}

TEST(ExternalDuration, IsClearedWithoutTheFlagOrTheText) {
    const NkDtString text("T053000");
    for (const BOOL flag : {0, 2, -1}) {
        T t = ofTicks(1800, T::Hundredths);
        t.SetFromExtern(&text, flag, 100);
        EXPECT_EQ(show(t), "0:1 missing modified");
    }
    T t = ofTicks(0, T::Minutes, NkDtWmDefined);
    t.SetFromExtern(nullptr, TRUE, 100);
    EXPECT_EQ(show(t), "0:1 defined");
}

TEST(ExternalDuration, ComesBackWithEveryMinuteFromOneHourOn) {
    std::mt19937 random(20260504);
    std::uniform_int_distribution<LONG> minutes(-107374182, 107374182);
    const int rounds = nktest::isWatched() ? 1'000 : 50'000;
    for (int i = 0; i < rounds; ++i) {
        const LONG length = i % 2 == 0 ? minutes(random) : minutes(random) % 100'000;
        const T t(0, length);
        const NkDtString text(external(t).c_str());
        T back;
        back.SetFromExtern(&text, TRUE, 100);
        // Below one hour there is no sign.
        EXPECT_EQ(back.GetTime(), length > -60 && length < 0 ? -length : length) << bytesOf(text);
    }
}

// --- Archive --------------------------------------------------------------------------------------

TEST(ArchivedDuration, IsItsDefinednessAndItsTicksWithoutTheMode) {
    T t = ofTicks(-1800, T::Hundredths);
    EXPECT_EQ(stored(t), (Bytes{1, 0, 0, 0, 0xF8, 0xF8, 0xFF, 0xFF}));
    T null = undefined(NkDtWmNull, 258);
    EXPECT_EQ(stored(null), (Bytes{0, 0, 0, 0, 2, 1, 0, 0}));
    T back = ofTicks(5, T::HoursOnly);
    load(back, stored(t));
    EXPECT_EQ(show(back), "-1800:2 defined modified");
    T same = ofTicks(-1800, T::HoursOnly);
    load(same, stored(t));
    EXPECT_EQ(show(same), "-1800:2 defined");
    T always = ofTicks(0, T::Minutes, NkDtWmDefined);
    load(always, stored(null));
    EXPECT_EQ(show(always), "258:1 undefined modified");
}

TEST(ArchivedDuration, ShowsTheArchivesExceptionAsACauseAndIsAsItWas) {
    T source = ofTicks(1800);
    const Bytes whole = stored(source);
    for (const T& before : {ofTicks(7, T::Hundredths), undefined(NkDtWmMissing, 7)}) {
        for (std::size_t length = 0; length < whole.size(); ++length) {
            T t(before);
            const Bytes prefix(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
            const ErrorPtr error = expectReplaced(NkDtErrFrameworkException, [&] { load(t, prefix); });
            EXPECT_STREQ(error->GetFunctionText(), "Serialize(CArchive&)");
            EXPECT_EQ(show(t), show(before));
        }
    }
}

}  // namespace
