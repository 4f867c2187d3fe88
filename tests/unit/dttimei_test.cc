// The record of a duration: building its ticks, reading its text, and what its errors tell.

#include "Imp/dttimei.h"

#include <string>

#include <gtest/gtest.h>

#include "DurationTesting.h"

namespace {

using namespace valuetest;
using namespace durationtest;
using Imp = NkDtTime_Imp;

constexpr const char* kModule = ".\\Imp\\dttimei.cc";
constexpr const char* kClass = "NkDtTime_Imp";

TEST(DurationRecord, StartsAsNoTimeInMinutes) {
    const Imp record;
    EXPECT_EQ(record.value.ticks, 0);
    EXPECT_EQ(record.value.mode, NkDtTime::Minutes);
}

TEST(DurationRecord, BuildsTicksOfHoursAndAPartInTheUnitOfTheMode) {
    EXPECT_EQ(Imp::BuildTimeValue(1, 30, NkDtTime::Minutes), 1800);
    EXPECT_EQ(Imp::BuildTimeValue(1, 30, NkDtTime::Hundredths), 1560);
    EXPECT_EQ(Imp::BuildTimeValue(1, 30, NkDtTime::HoursOnly), 1200);
    EXPECT_EQ(Imp::BuildTimeValue(-1, 30, NkDtTime::Minutes), -600);
    EXPECT_EQ(Imp::BuildTimeValue(1789569, 42, NkDtTime::Minutes), 2147483640);
    EXPECT_EQ(Imp::BuildTimeValue(0, 178956970, NkDtTime::Hundredths), 2147483640);
    EXPECT_EQ(Imp::BuildTimeValue(0, -178956970, NkDtTime::Hundredths), -2147483640);
    EXPECT_EQ(Imp::BuildTimeValue(0, 2147483647, NkDtTime::HoursOnly), 0);
}

TEST(DurationRecord, NamesTheBuildOfTicksThatDoNotFit) {
    const auto refused = [](const char* name, LONGLONG hours, LONGLONG part, TimeMode mode) {
        return ErrorCase{name,
                         [=] { static_cast<void>(Imp::BuildTimeValue(hours, part, mode)); },
                         NkDtErrWertebereich,
                         kModule,
                         kClass,
                         "BuildTimeValue(LONG,LONG,TimeMode)"};
    };
    expectOrigins({refused("hours", 1789570, 0, NkDtTime::HoursOnly),
                   refused("negative hours", -1789570, 0, NkDtTime::HoursOnly),
                   refused("minutes", 1789569, 43, NkDtTime::Minutes),
                   refused("hundredths", 1789569, 71, NkDtTime::Hundredths),
                   refused("the most", kMostTicks, kMostTicks, NkDtTime::Minutes)});
}

TEST(DurationRecord, NamesTheReadingOfATextWhateverWasWrongWithIt) {
    const auto refused = [](const char* text, TimeMode mode, ULONG cause) {
        return ErrorCase{text == nullptr ? "no text" : text,
                         [=] { static_cast<void>(Imp::ConvStringToTime(text, mode)); },
                         NkDtErrFolgefehler,
                         kModule,
                         kClass,
                         "ConvStringToTime (LPCTSTR,TimeMode)",
                         FALSE,
                         cause};
    };
    expectOrigins({refused(nullptr, NkDtTime::Minutes, NkDtErrInitialwert),
                   refused("", NkDtTime::Minutes, NkDtErrInitialwert),
                   refused("1h", NkDtTime::Minutes, NkDtErrInitialwert),
                   refused(":30", NkDtTime::Minutes, NkDtErrFormatVerletzt),
                   refused("1,30", NkDtTime::Minutes, NkDtErrFormatVerletzt),
                   refused("1:30", NkDtTime::Hundredths, NkDtErrFormatVerletzt),
                   refused("1:60", NkDtTime::Minutes, NkDtErrWertebereich),
                   refused("1:60", NkDtTime::CurrentMode, NkDtErrWertebereich),
                   refused("1789569:00", NkDtTime::Minutes, NkDtErrWertebereich),
                   refused("-1789569", NkDtTime::HoursOnly, NkDtErrWertebereich)});
}

TEST(DurationRecord, LooksAtTheSeparatorThenAtThePartThenAtTheHours) {
    const auto causeOf = [](const char* text, TimeMode mode) {
        const ErrorPtr error =
            expectError(NkDtErrFolgefehler, [=] { static_cast<void>(Imp::ConvStringToTime(text, mode)); });
        return error->GetCauseNumber();
    };
    EXPECT_EQ(causeOf("x,60", NkDtTime::Minutes), NkDtErrFormatVerletzt);
    EXPECT_EQ(causeOf("x:60", NkDtTime::Minutes), NkDtErrWertebereich);
    EXPECT_EQ(causeOf("x:59", NkDtTime::Minutes), NkDtErrInitialwert);
}

}  // namespace
