// Date-times as objects: assignment, Clear, the broken-down time, and where their errors come from.

#include <nkdt/NkDtDateTime.h>
#include <nkdt/NkDtDateZp.h>
#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtString.h>
#include <nkeh/NkEhLogFile.h>
#include <nkfw/OleDateTime.h>

#include <ctime>
#include <memory>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "DateTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;
using namespace datetest;
using D = NkDtDateTime;

constexpr const char* kClass = "NkDtDateTime";
constexpr const char* kModule = ".\\Dtdatime.cc";

TEST(DateTimeObject, ClearGoesBackToTheFirstDayAndInModeTwoStaysDefined) {
    struct Case {
        NkDtWorkingMode mode;
        const char* after;
    };
    constexpr Case cases[] = {{NkDtWmMissing, "missing"}, {NkDtWmNull, "null"}, {NkDtWmDefined, "defined"}};
    for (const Case& each : cases) {
        D value = defined("05.03.2004 14:07:09", each.mode);
        value.Clear();
        EXPECT_EQ(describe(value), std::string("01.01.1900 00:00:00 ") + each.after + " modified");
        D second = loaded(each.mode, TRUE, {1, 0, 0, 1900, 1, 1});
        second.Clear();
        EXPECT_EQ(describe(second), std::string("01.01.1900 00:00:00 ") + each.after + " modified");
        second.SetModified(FALSE);
        second.Clear();
        EXPECT_EQ(describe(second), std::string("01.01.1900 00:00:00 ") + each.after);
        D null = undefined(each.mode);
        null.Clear();
        EXPECT_EQ(describe(null), std::string("01.01.1900 00:00:00 ") +
                                      (null.IsMissing() ? "missing"
                                       : null.IsNull()  ? "null"
                                                        : "undefined") +
                                      " modified");
    }
}

TEST(DateTimeObject, AssignTakesADateAndAnyObjectOfADerivedClass) {
    D value(NkDtWmNull);
    value.Assign(NkDtDateZp(5, 3, 2004));
    EXPECT_EQ(describe(value), "05.03.2004 00:00:00 defined modified");
    NkDtDateZp withTime(6, 3, 2004);
    withTime.SetHour(13);
    value.Assign(withTime);
    EXPECT_EQ(describe(value), "06.03.2004 13:00:00 defined modified");
    NkDtBasis& base = value;
    base.Assign(D(NkDtWmNull));
    EXPECT_EQ(describe(value), "01.01.1900 00:00:00 null modified");
    const ErrorPtr error = expectError(NkDtErrBasistypen, [&] { base.Assign(NkDtLong(5)); });
    EXPECT_STREQ(error->GetFunctionText(), "Assign(NkDtBasis&)");
}

TEST(DateTimeObject, AssignmentInModeTwoKeepsTheDefinednessButTakesTheFields) {
    D value = defined("05.03.2004 14:07:09", NkDtWmDefined);
    value = undefined(NkDtWmNull, {1, 2, 3, 2005, 6, 7});
    EXPECT_EQ(describe(value), "07.06.2005 03:02:01 defined modified");
    D lost = undefined(NkDtWmDefined);
    lost = D(5, 3, 2004, 14, 7, 9);
    EXPECT_EQ(describe(lost), "05.03.2004 14:07:09 undefined");
}

TEST(DateTimeObject, IsCopiedAsAWholeByNewObject) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        D source = undefined(mode);
        source.SetModified(TRUE);
        const std::unique_ptr<NkDtBasis> made(source.NewObject());
        EXPECT_EQ(describe(dynamic_cast<const D&>(*made)), describe(source));
        EXPECT_EQ(made->GetDtTyp(), 8);
    }
}

// --- The broken-down time ---------------------------------------------------------------------------

TEST(DateTimeObject, TellsItsNineFieldsUnlessItIsMissing) {
    const frameworktest::TimeZone zone("UTC");
    const D value(std::time_t{1078488429});
    const std::tm time = value.GetValue();
    EXPECT_EQ(time.tm_sec, 9);
    EXPECT_EQ(time.tm_min, 7);
    EXPECT_EQ(time.tm_hour, 12);
    EXPECT_EQ(time.tm_mday, 5);
    EXPECT_EQ(time.tm_mon, 2);
    EXPECT_EQ(time.tm_year, 104);
    EXPECT_EQ(time.tm_wday, 5);
    EXPECT_EQ(time.tm_yday, 64);
    EXPECT_EQ(time.tm_isdst, 0);
    const std::tm again = value;
    EXPECT_EQ(again.tm_yday, 64);
    EXPECT_EQ(static_cast<std::tm>(undefined(NkDtWmNull)).tm_mday, 5);
    EXPECT_EQ(undefined(NkDtWmDefined).GetValue().tm_year, 104);
}

// --- An OLE date assigned ---------------------------------------------------------------------------

TEST(DateTimeObject, TakesAValidOleDateAndRaisesTheFlagIfItDiffers) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        D value = defined("05.03.2004 14:07:09", mode);
        value = COleDateTime(2004, 3, 5, 14, 7, 9);
        EXPECT_EQ(describe(value), "05.03.2004 14:07:09 defined");
        const COleDateTime others[] = {{2005, 3, 5, 14, 7, 9}, {2005, 4, 5, 14, 7, 9},
                                       {2005, 4, 6, 14, 7, 9}, {2005, 4, 6, 15, 7, 9},
                                       {2005, 4, 6, 15, 8, 9}, {2005, 4, 6, 15, 8, 0}};
        for (const COleDateTime& other : others) {
            value.SetModified(FALSE);
            value = other;
            EXPECT_EQ(stateOf(value), "defined modified");
        }
        EXPECT_EQ(describe(value), "06.04.2005 15:08:00 defined modified");
        D null = undefined(mode);
        null = COleDateTime(2004, 3, 5, 14, 7, 9);
        EXPECT_EQ(describe(null), "05.03.2004 14:07:09 defined modified");
        EXPECT_EQ(null.GetWorkingMode(), mode);
    }
}

TEST(DateTimeObject, TakesEveryDayOfAnOleDateFromEveryOther) {
    D value(31, 1, 2004);
    value = COleDateTime(2003, 2, 28, 0, 0, 0);
    EXPECT_EQ(describe(value), "28.02.2003 00:00:00 defined modified");
    value = COleDateTime(2004, 2, 29, 0, 0, 0);
    value = COleDateTime(2005, 3, 31, 0, 0, 0);
    EXPECT_EQ(describe(value), "31.03.2005 00:00:00 defined modified");
}

TEST(DateTimeObject, IsClearedByAnOleDateThatIsNotValid) {
    COleDateTime null(2004, 3, 5, 14, 7, 9);
    null.SetStatus(COleDateTime::null);
    const COleDateTime invalid(2003, 2, 29, 0, 0, 0);
    for (const COleDateTime& other : {null, invalid}) {
        D value = defined("05.03.2004 14:07:09", NkDtWmNull);
        value = other;
        EXPECT_EQ(describe(value), "01.01.1900 00:00:00 null modified");
        D always = defined("05.03.2004 14:07:09", NkDtWmDefined);
        always = other;
        EXPECT_EQ(describe(always), "01.01.1900 00:00:00 defined modified");
    }
}

TEST(DateTimeObject, AnOleDateBefore1753IsRefusedByTheYearWhichIsStored) {
    D value = defined("05.03.2004 14:07:09");
    const ErrorPtr error = expectReplaced(NkDtErrJahr, [&] { value = COleDateTime(1752, 1, 1, 0, 0, 0); });
    EXPECT_STREQ(error->GetFunctionText(), "SetYear(SHORT)");
    EXPECT_EQ(describe(value), "05.03.1752 14:07:09 defined modified");
    D null = undefined(NkDtWmNull);
    expectReplaced(NkDtErrJahr, [&] { null = COleDateTime(1752, 1, 1, 0, 0, 0); });
    EXPECT_EQ(stateOf(null), "null modified");
}

// --- Where the errors come from -----------------------------------------------------------------------

TEST(DateTimeObject, LogsTheErrorThatWasFirstAndNoneThatReplacesIt) {
    std::ostringstream written;
    NkEhLogFile log(written);
    NkEhLogFile::SetDefault(&log);
    expectReplaced(NkDtErrMonat, [] { const D made(1, 13, 2004, 0, 0, 0); });
    expectReplaced(NkDtErrInitialwert, [] { D(5, 3, 2004).SetDateTime("5. March"); });
    NkEhLogFile::SetDefault(nullptr);
    const std::string text = written.str();
    EXPECT_EQ(text.find("Fehlernummer: 1\r\n"), std::string::npos) << text;
    const std::size_t month = text.find("Fehlernummer: 26\r\n");
    const std::size_t form = text.find("Fehlernummer: 5\r\n");
    EXPECT_NE(month, std::string::npos) << text;
    EXPECT_NE(form, std::string::npos) << text;
    EXPECT_LT(month, form);
    EXPECT_NE(text.find("Klasse: DtDateTime_Imp\r\n"), std::string::npos) << text;
}

TEST(DateTimeObject, NamesTheOperationInEveryError) {
    const NoonIn2023 noon;
    const D missing(NkDtWmMissing);
    const NkDtShort bad(99);
    const NkDtString text("x");
    const std::string name = kClass;
    std::tm* const none = nullptr;
    D value(5, 3, 2004);
    const auto replaced = [&](const char* function, ULONG cause, std::function<void()> operation) {
        return ErrorCase{function, std::move(operation), NkDtErrFolgefehler, kModule, name, function, FALSE,
                         cause};
    };
    expectOrigins({
        replaced("NkDtDateTime(SHORT,SHORT,SHORT,SHORT,SHORT,SHORT)", NkDtErrMonat,
                 [] { const D made(1, 13, 2004, 0, 0, 0); }),
        replaced("NkDtDateTime(SHORT,SHORT)", NkDtErrStunde, [] { const D made(24, 0); }),
        replaced("NkDtDateTime(LPCTSTR const,FormOfDateTimeString)", NkDtErrInitialwert,
                 [] { const D made("x"); }),
        replaced("NkDtDateTime(NkDtString&,FormOfDateTimeString)", NkDtErrInitialwert,
                 [&] { const D made(text); }),
        replaced("NkDtDateTime(struct tm*)", NkDtErrInitialwert, [&] { const D made(none); }),
        replaced("NkDtDateTime(time_t)", NkDtErrWertebereich,
                 [] { const D made(std::time_t{971890999999}); }),
        replaced("NkDtDateTime(COleDateTime&)", NkDtErrJahr,
                 [] { const D made(COleDateTime(1752, 1, 1, 0, 0, 0)); }),
        replaced("NkDtDateTime(NkDtShort&,NkDtShort&)", NkDtErrStunde, [&] { const D made(bad, bad); }),
        replaced("NkDtDateTime(NkDtShort&,NkDtShort&,NkDtShort&)", NkDtErrMonat,
                 [&] { const D made(bad, bad, bad); }),
        replaced("NkDtDateTime(NkDtShort&,NkDtShort&,NkDtShort&,NkDtShort&,NkDtShort&,NkDtShort&)",
                 NkDtErrMonat, [&] { const D made(bad, bad, bad, bad, bad, bad); }),
        replaced("SetDateTime(LPCTSTR)", NkDtErrInitialwert, [&] { value.SetDateTime("x"); }),
        replaced("SetDate(LPCTSTR)", NkDtErrInitialwert, [&] { value.SetDate("x"); }),
        replaced("SetTime(LPCTSTR)", NkDtErrInitialwert, [&] { value.SetTime("x"); }),
        {"GetValue", [&] { static_cast<void>(missing.GetValue()); }, NkDtErrUndefiniert, kModule, name,
         "GetValue()"},
        {"struct tm", [&] { static_cast<void>(std::tm(missing)); }, NkDtErrUndefiniert, kModule, name,
         "operator struct tm()"},
        {"Assign", [&] { value.Assign(bad); }, NkDtErrBasistypen, kModule, name, "Assign(NkDtBasis&)"},
    });
    const NoClock unreadable;
    expectOrigins({
        replaced("NkDtDateTime(NkDtWorkingMode)", NkDtErrInitialwert, [] { const D made(NkDtWmDefined); }),
    });
}

}  // namespace
