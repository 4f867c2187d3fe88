// Date-times: their texts, conversions and archives, comparisons, and computing with durations.

#include <nkdt/NkDtDateTime.h>
#include <nkdt/NkDtDateZp.h>
#include <nkdt/NkDtString.h>
#include <nkdt/NkDtTime.h>
#include <nkfo/NkFormat.h>
#include <nkfw/OleDateTime.h>
#include <nkfw/Recordset.h>

#include <ctime>
#include <functional>
#include <iterator>
#include <sstream>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "DateTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;
using namespace datetest;
using D = NkDtDateTime;

constexpr const char* kClass = "NkDtDateTime";
constexpr const char* kModule = ".\\Dtdatimo.cc";
const D kOne(5, 3, 2004, 14, 7, 9);

// --- Texts ----------------------------------------------------------------------------------------------

TEST(DateTimeText, IsOfTheFormAskedForOfAnUndefinedValueToo) {
    struct Case {
        USHORT form;
        const char* text;
    };
    constexpr Case cases[] = {
        {0, "'05.03.2004 14:07'"},     {1, "'03.05.2004 14:07'"},     {1100, "05032004"},
        {1101, "05.03.2004 14:07:09"}, {1102, "05.03.2004"},          {2, "05.03.2004 14:07:09"},
        {1103, "05.03.2004 14:07:09"}, {65535, "05.03.2004 14:07:09"}};
    for (const Case& each : cases) {
        for (const D& value : {kOne, undefined(NkDtWmMissing), undefined(NkDtWmNull)}) {
            const NkDtString text = value.MakeFormatString(each.form);
            EXPECT_STREQ(text.GetValue(), each.text);
            EXPECT_EQ(stateOf(text), "defined");
        }
    }
}

TEST(DateTimeText, HasTheDecimalDigitsOfTheYearAndFourInTheDate) {
    const D early = loaded(NkDtWmMissing, TRUE, {0, 0, 0, 52, 1, 2});
    EXPECT_STREQ(early.MakeFormatString(0).GetValue(), "'02.01.52 00:00'");
    EXPECT_STREQ(early.MakeFormatString(1100).GetValue(), "020152");
    EXPECT_STREQ(early.MakeFormatString(1102).GetValue(), "02.01.0052");
    EXPECT_STREQ(early.MakeFormatString(1101).GetValue(), "02.01.52 00:00:00");
    const D late(1, 2, 32767);
    EXPECT_STREQ(late.MakeFormatString(1).GetValue(), "'02.01.32767 00:00'");
    EXPECT_STREQ(late.MakeFormatString(1102).GetValue(), "01.02.32767");
}

TEST(DateTimeText, BecomesATextValueOf19CharactersAtMost) {
    const NkDtString text(kOne);
    EXPECT_EQ(describe(text), "'05.03.2004 14:07:09' 19/19 defined");
    EXPECT_EQ(describe(NkDtString(D(1, 2, 32767))), "'01.02.32767 00:00:0' 19/19 defined");
    EXPECT_EQ(describe(NkDtString(undefined(NkDtWmNull))), describe(NkDtString(NkDtWmNull)));
    D modified(kOne);
    modified.SetModified(TRUE);
    EXPECT_EQ(stateOf(NkDtString(modified)), "defined modified");
}

TEST(DateTimeText, IsWrittenToAStream) {
    std::ostringstream stream;
    stream << kOne << '|' << undefined(NkDtWmNull) << '|';
    EXPECT_EQ(stream.str(), "05.03.2004 14:07:09||");
}

// --- SQL ------------------------------------------------------------------------------------------------

TEST(DateTimeSql, WritesDayOrMonthFirstWithoutSeconds) {
    EXPECT_STREQ(kOne.ConvToSQL().GetValue(), "'05.03.2004 14:07'");
    EXPECT_STREQ(kOne.ConvToSQL(D::SqlDayFirst).GetValue(), "'05.03.2004 14:07'");
    EXPECT_STREQ(kOne.ConvToSQL(D::SqlMonthFirst).GetValue(), "'03.05.2004 14:07'");
    for (const NkDtWorkingMode mode : kStoredModes)
        EXPECT_STREQ(undefined(mode).ConvToSQL(D::SqlMonthFirst).GetValue(), "NULL");
}

TEST(DateTimeSql, ReadsTheTextOfADatabase) {
    struct Case {
        const char* text;
        const char* shown;
    };
    constexpr Case cases[] = {
        {"Mär  5 2004 12:30AM", "05.03.2004 00:30:00"}, {"Mar  5 2004 12:30PM", "05.03.2004 12:30:00"},
        {"Mar  5 2004 01:30PM", "05.03.2004 13:30:00"}, {"Mar  5 2004  1:30PM", "05.03.2004 13:30:00"},
        {"Mar  5 2004 11:59PM", "05.03.2004 23:59:00"}, {"Mar 15 2004 00:00AM", "15.03.2004 00:00:00"},
        {"Mar 15 2004 00:00PM", "15.03.2004 12:00:00"}, {"Mar 15 2004 23:00XX", "15.03.2004 23:00:00"},
        {"Mar 15 2004 12:00XX", "15.03.2004 00:00:00"}, {"Mar 15 2004 12:30PM ", "15.03.2004 00:30:00"},
        {"Mar 15 2004 01:30pm", "15.03.2004 01:30:00"}, {"Mar-15-2004-01-30PM", "15.03.2004 13:30:00"},
        {"Jan  5 2004 12:30AM", "05.01.2004 00:30:00"}, {"xyz  5 2004 12:30AM", "05.01.2004 00:30:00"},
        {"feb  5 2004 12:30AM", "05.01.2004 00:30:00"}, {"Feb  5 2004 12:30AM", "05.02.2004 00:30:00"},
        {"Apr  5 2004 12:30AM", "05.04.2004 00:30:00"}, {"May  5 2004 12:30AM", "05.05.2004 00:30:00"},
        {"Mai  5 2004 12:30AM", "05.05.2004 00:30:00"}, {"Jun  5 2004 12:30AM", "05.06.2004 00:30:00"},
        {"Jul  5 2004 12:30AM", "05.07.2004 00:30:00"}, {"Aug  5 2004 12:30AM", "05.08.2004 00:30:00"},
        {"Sep  5 2004 12:30AM", "05.09.2004 00:30:00"}, {"Oct  5 2004 12:30AM", "05.10.2004 00:30:00"},
        {"Okt  5 2004 12:30AM", "05.10.2004 00:30:00"}, {"Nov  5 2004 12:30AM", "05.11.2004 00:30:00"},
        {"Dec  5 2004 12:30AM", "05.12.2004 00:30:00"}, {"Dez  5 2004 12:30AM", "05.12.2004 00:30:00"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.text);
        for (const NkDtWorkingMode mode : kStoredModes) {
            D value = undefined(mode);
            value.SetFromSQL(cp1252(each.text).c_str());
            EXPECT_EQ(describe(value), std::string(each.shown) + " defined modified");
            value.SetModified(FALSE);
            value.SetFromSQL(cp1252(each.text).c_str());
            EXPECT_EQ(stateOf(value), "defined");
        }
    }
}

TEST(DateTimeSql, KeepsTheFieldsSetSoFarWhenTheTextIsRefused) {
    const NoonIn2023 noon;
    struct Case {
        const char* text;
        ULONG cause;
        const char* after;
    };
    constexpr Case cases[] = {
        {"", NkDtErrInitialwert, "05.03.2004 14:07:09"},
        {"null", NkDtErrInitialwert, "05.03.2004 14:07:09"},
        {"Apr  6 2005 01:30A", NkDtErrInitialwert, "05.03.2004 14:07:09"},  // 18 characters
        {"Apr  6 200x 01:30AM", NkDtErrInitialwert, "05.03.2004 14:07:09"},
        {"Apr  6   05 01:30AM", NkDtErrInitialwert, "05.03.2004 14:07:09"},  // no year of this century
        {"Apr  6 -005 01:30AM", NkDtErrInitialwert, "05.03.2004 14:07:09"},
        {"Apr  6 1752 01:30AM", NkDtErrJahr, "05.03.1752 14:07:09"},
        {"Apr  6  999 01:30AM", NkDtErrJahr, "05.03.999 14:07:09"},
        {"Apr x6 2005 01:30AM", NkDtErrInitialwert, "05.04.2005 14:07:09"},
        {"Apr 31 2005 01:30AM", NkDtErrTag, "05.04.2005 14:07:09"},
        {"Apr    2005 01:30AM", NkDtErrInitialwert, "05.04.2005 14:07:09"},
        {"Apr  6 2005 0x:30AM", NkDtErrInitialwert, "06.04.2005 14:07:09"},
        {"Apr  6 2005 13:30PM", NkDtErrStunde, "06.04.2005 14:07:09"},
        {"Apr  6 2005 24:30AM", NkDtErrStunde, "06.04.2005 14:07:09"},
        {"Apr  6 2005 01:x0AM", NkDtErrInitialwert, "06.04.2005 01:07:09"},
        {"Apr  6 2005 01:60AM", NkDtErrMinute, "06.04.2005 01:07:09"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.text);
        for (const NkDtWorkingMode mode : kStoredModes) {
            D value = defined("05.03.2004 14:07:09", mode);
            const ErrorPtr error = expectReplaced(each.cause, [&] { value.SetFromSQL(each.text); });
            EXPECT_STREQ(error->GetFunctionText(), "SetFromSQL(LPCTSTR)");
            EXPECT_EQ(describe(value), std::string(each.after) + " defined");
            D null = undefined(mode);
            expectReplaced(each.cause, [&] { null.SetFromSQL(each.text); });
            EXPECT_EQ(describe(null), std::string(each.after) + " defined modified");
        }
    }
}

TEST(DateTimeSql, ClearsForTheWordNullAndRefusesNoText) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        D value = defined("05.03.2004 14:07:09", mode);
        value.SetFromSQL("NULL");
        D cleared = defined("05.03.2004 14:07:09", mode);
        cleared.Clear();
        EXPECT_EQ(describe(value), describe(cleared));
        D null = undefined(mode);
        const std::string before = describe(null);
        expectReplaced(NkDtErrInitialwert, [&] { null.SetFromSQL(nullptr); });
        EXPECT_EQ(describe(null), before);
    }
}

// --- User-interface text ----------------------------------------------------------------------------------

TEST(DateTimeOfl, ShowsTheTimeOfDayUnlessItIsMidnight) {
    EXPECT_EQ(kOne.ConvToOFL(), CString("05.03.2004 14:07:09"));
    EXPECT_EQ(D(5, 3, 2004).ConvToOFL(), CString("05.03.2004"));
    D value;
    value.SetFromOFL("5.3.2004 9:05");
    EXPECT_EQ(describe(value), "05.03.2004 09:05:00 defined modified");
    value.SetFromOFL("05.03.2004");
    EXPECT_EQ(textOf(value), "05.03.2004 00:00:00");
}

TEST(DateTimeOfl, ReplacesAllNineFieldsButIsModifiedByTheSixAlone) {
    std::tm time{};
    time.tm_year = 104;
    time.tm_mon = 2;
    time.tm_mday = 5;
    time.tm_hour = 14;
    time.tm_min = 7;
    time.tm_sec = 9;
    D value(std::mktime(&time));  // with its day of the week and of the year
    EXPECT_NE(allFieldsOf(value), "104 2 5 14 7 9 0 0 -1");
    value.SetFromOFL("05.03.2004 14:07:09");
    EXPECT_EQ(allFieldsOf(value), "104 2 5 14 7 9 0 0 -1");
    EXPECT_EQ(stateOf(value), "defined");
}

TEST(DateTimeOfl, ReplacesWhatNoFormatShows) {
    for (const Stored& fields :
         {Stored{0, 0, 0, 2003, 12, 32}, Stored{0, 0, 0, 10000, 1, 1}, Stored{0, 0, 0, 1752, 1, 1},
          Stored{0, 0, 0, 2004, 13, 1}, Stored{0, 0, 24, 2004, 1, 1}, Stored{0, 0, 0, 65536 + 2004, 1, 1},
          Stored{65536, 0, 0, 2004, 1, 1}}) {
        const D value = loaded(NkDtWmMissing, TRUE, fields);
        expectReplaced(NkFoFehlerWert, [&] { static_cast<void>(value.ConvToOFL()); });
    }
}

TEST(DateTimeOfl, LeavesEverythingAsItWasWhenTheTextIsRefused) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (D value : {undefined(mode), defined("05.03.2004 14:07:09", mode)}) {
            const std::string before = describe(value);
            for (const char* const text :
                 {"31.02.2004", "x", "01.01.1752", "05.03.2004 24:00", "05.03.2004 10"})
                expectReplaced(NkFoFehlerText, [&] { value.SetFromOFL(text); });
            EXPECT_EQ(describe(value), before);
        }
    }
}

// --- External text ----------------------------------------------------------------------------------------

std::string externOf(const D& value) {
    BOOL fDefiniert = FALSE;
    USHORT version = 0;
    return static_cast<LPCTSTR>(value.ConvToExtern(fDefiniert, version));
}

TEST(DateTimeExtern, HasATimeOfDayUnlessItIsMidnight) {
    EXPECT_EQ(externOf(kOne), "C05032004140709");
    EXPECT_EQ(externOf(D(5, 3, 2004)), "D05032004");
    EXPECT_EQ(externOf(D(5, 3, 2004, 0, 0, 1)), "C05032004000001");
    EXPECT_EQ(externOf(loaded(NkDtWmNull, TRUE, {0, 0, 0, 20, 3, 5})), "D0503  20");
    EXPECT_EQ(externOf(loaded(NkDtWmNull, TRUE, {9, 7, 14, 0, 0, 0})), "T140709");
    EXPECT_EQ(externOf(loaded(NkDtWmNull, TRUE, {0, 0, 0, 0, 0, 0})), "T000000");
    EXPECT_EQ(externOf(D(5, 3, 32767)), "D050332767");
}

TEST(DateTimeExtern, OfAnUndefinedValueIsUndefinedInTheDefaultMode) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        const DefaultMode scope(NkDtWmNull);
        BOOL fDefiniert = TRUE;
        USHORT version = 0;
        const NkDtString text = undefined(mode).ConvToExtern(fDefiniert, version);
        EXPECT_EQ(stateOf(text), "null");
        EXPECT_EQ(fDefiniert, FALSE);
        EXPECT_EQ(version, 100);
    }
}

TEST(DateTimeExtern, IsReadFieldByField) {
    const NoonIn2023 noon;
    struct Case {
        const char* text;
        ULONG cause;
        const char* after;
    };
    constexpr Case cases[] = {
        {"C06042005102030", 0, "06.04.2005 10:20:30"},
        {"D06042005", 0, "06.04.2005 00:00:00"},
        {"D06042005102030", 0, "06.04.2005 00:00:00"},  // the rest does not count
        {"C060420051020301", 0, "06.04.2005 10:20:30"},
        {"D06040020", 0, "06.04.2020 00:00:00"},
        {"D0604  20", 0, "06.04.2020 00:00:00"},
        {"D0604   0", 0, "06.04.2000 00:00:00"},
        {"T102030", NkDtErrMonat, "05.03.2000 14:07:09"},  // the year 0 of this century, then no month
        {"D06042", NkDtErrExtern, nullptr},
        {"D060420", NkDtErrExtern, nullptr},
        {"D0604200x", NkDtErrExtern, nullptr},
        {"D0604-005", NkDtErrExtern, nullptr},
        {"D+6042005", NkDtErrExtern, nullptr},
        {"C06042005", NkDtErrExtern, nullptr},
        {"C0604200510203", NkDtErrExtern, nullptr},
        {"C", NkDtErrExtern, nullptr},
        {"T1020", NkDtErrExtern, nullptr},
        {"", NkDtErrExtern, nullptr},
        {"c06042005102030", NkDtErrExtern, nullptr},
        {"X06042005", NkDtErrExtern, nullptr},
        {"D31042005", NkDtErrTag, "05.04.2005 14:07:09"},
        {"D06132005", NkDtErrMonat, "05.03.2005 14:07:09"},
        {"D06041752", NkDtErrJahr, "05.03.1752 14:07:09"},
        {"C06042005242030", NkDtErrStunde, "06.04.2005 14:07:09"},
        {"C06042005106030", NkDtErrMinute, "06.04.2005 10:07:09"},
        {"C06042005102060", NkDtErrSekunde, "06.04.2005 10:20:09"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.text);
        const NkDtString text(each.text);
        const std::string fields = each.after == nullptr ? "05.03.2004 14:07:09" : each.after;
        for (const NkDtWorkingMode mode : kStoredModes) {
            D value = defined("05.03.2004 14:07:09", mode);
            D null = undefined(mode);
            const auto read = [&](D& target) { target.SetFromExtern(&text, TRUE, 100); };
            if (each.cause == 0) {
                read(value);
                read(null);
                EXPECT_EQ(describe(value), fields + " defined modified");
            } else {
                const ErrorPtr error = expectReplaced(each.cause, [&] { read(value); });
                EXPECT_STREQ(error->GetFunctionText(), "SetFromExtern(NkDtString*,BOOL,USHORT)");
                EXPECT_STREQ(error->GetSourceFile(), kModule);
                expectReplaced(each.cause, [&] { read(null); });
                EXPECT_EQ(describe(value), fields + " defined");
            }
            EXPECT_EQ(describe(null), fields + " defined modified");
        }
    }
}

// --- Fields of a recordset --------------------------------------------------------------------------------

TEST(DateTimeField, LeavesEverythingAsItWasWhenItHoldsNoDate) {
    struct Case {
        TIMESTAMP_STRUCT field;
        ULONG cause;
    };
    constexpr Case cases[] = {
        {{1752, 1, 1, 0, 0, 0, 0}, NkDtErrJahr},      {{2004, 0, 1, 0, 0, 0, 0}, NkDtErrMonat},
        {{2004, 65535, 1, 0, 0, 0, 0}, NkDtErrMonat}, {{2003, 2, 29, 0, 0, 0, 0}, NkDtErrTag},
        {{2004, 1, 0, 0, 0, 0, 0}, NkDtErrTag},       {{2004, 1, 65535, 0, 0, 0, 0}, NkDtErrTag},
        {{2004, 1, 1, 24, 0, 0, 0}, NkDtErrStunde},   {{2004, 1, 1, 65535, 0, 0, 0}, NkDtErrStunde},
        {{2004, 1, 1, 23, 60, 0, 0}, NkDtErrMinute},  {{2004, 1, 1, 23, 59, 60, 0}, NkDtErrSekunde},
        {{-32768, 1, 1, 23, 59, 59, 0}, NkDtErrJahr},
    };
    const NoonIn2023 noon;
    for (const Case& each : cases) {
        for (const NkDtWorkingMode mode : kStoredModes) {
            for (D value : {undefined(mode), defined("05.03.2004 14:07:09", mode)}) {
                CRecordset rs;
                const std::string before = describe(value);
                const ErrorPtr error =
                    expectReplaced(each.cause, [&] { value.SetFromRecordSet(rs, each.field); });
                EXPECT_STREQ(error->GetFunctionText(), "SetFromRecordSet(CRecordset&,TIMESTAMP_STRUCT&");
                EXPECT_STREQ(error->GetSourceFile(), kModule);
                EXPECT_STREQ(error->GetClassText(), kClass);
                EXPECT_EQ(describe(value), before);
            }
        }
    }
}

TEST(DateTimeField, NeitherReadsNorWritesTheFraction) {
    CRecordset rs;
    TIMESTAMP_STRUCT field = {2004, 3, 5, 14, 7, 9, 999999999};
    D value;
    value.SetFromRecordSet(rs, field);
    EXPECT_EQ(textOf(value), "05.03.2004 14:07:09");
    value.SetSecond(10);
    value.ConvToRecordSet(rs, field);
    EXPECT_EQ(field, (TIMESTAMP_STRUCT{2004, 3, 5, 14, 7, 10, 0}));
    EXPECT_EQ(field.fraction, 999999999U);
    const NoonIn2023 noon;
    value.SetFromRecordSet(rs, {4, 3, 5, 0, 0, 0, 0});
    EXPECT_EQ(textOf(value), "05.03.2004 00:00:00");
}

// --- Archive ----------------------------------------------------------------------------------------------

TEST(DateTimeArchive, HoldsSixNumbersBehindTheBaseState) {
    D value(kOne);
    const Bytes expected = {1, 0, 0,   0, 9, 0, 0, 0, 7, 0, 0, 0, 14, 0,
                            0, 0, 104, 0, 0, 0, 2, 0, 0, 0, 5, 0, 0,  0};
    EXPECT_EQ(stored(value), expected);
    D early = undefined(NkDtWmNull, {0, 0, 0, 1753, 1, 1});
    EXPECT_EQ(stored(early)[0], 0);
    EXPECT_EQ(stored(early)[16], 0x6D);  // -147
    EXPECT_EQ(stored(early)[19], 0xFF);
}

TEST(DateTimeArchive, IsLoadedUncheckedAndLeavesTheOtherFields) {
    const frameworktest::TimeZone zone("UTC");
    D value(std::time_t{1078488429});
    load(value, archived(TRUE, {61, -1, 99, 1, 200, 0}));
    EXPECT_EQ(allFieldsOf(value), "-1899 199 0 99 -1 61 5 64 0");
    EXPECT_EQ(stateOf(value), "defined modified");
    load(value, archived(TRUE, {61, -1, 99, 1, 200, 0}));
    value.SetModified(FALSE);
    load(value, archived(TRUE, {61, -1, 99, 1, 200, 0}));
    EXPECT_EQ(stateOf(value), "defined");
}

// --- OLE dates
// ----------------------------------------------------------------------------------------------

TEST(DateTimeOle, IsTheDateNullForAnUndefinedValueAndInvalidForAnImpossibleOne) {
    const COleDateTime date = kOne;
    EXPECT_EQ(date, COleDateTime(2004, 3, 5, 14, 7, 9));
    for (const NkDtWorkingMode mode : kStoredModes) {
        const COleDateTime null = undefined(mode);
        EXPECT_EQ(null.GetStatus(), COleDateTime::null);
        EXPECT_EQ(null.m_dt, 0);
    }
    for (const Stored& fields :
         {Stored{0, 0, 0, 2003, 12, 32}, Stored{0, 0, 0, 10000, 1, 1}, Stored{0, 0, 0, 99, 1, 1},
          Stored{0, 0, 0, 65536 + 2004, 1, 1}, Stored{0, 0, 0, 2004, 65537, 1}}) {
        const COleDateTime invalid = loaded(NkDtWmMissing, TRUE, fields);
        EXPECT_EQ(invalid.GetStatus(), COleDateTime::invalid);
    }
    EXPECT_EQ(COleDateTime(D(31, 12, 9999, 23, 59, 59)).GetStatus(), COleDateTime::valid);
}

// --- Comparing
// ----------------------------------------------------------------------------------------------

TEST(DateTimeOrder, IsDecidedByTheFirstFieldThatDiffers) {
    const D ascending[] = {D(31, 12, 2003, 23, 59, 59), D(31, 1, 2004, 23, 59, 59), D(1, 2, 2004, 23, 59, 59),
                           D(2, 2, 2004, 1, 59, 59),    D(2, 2, 2004, 2, 1, 59),    D(2, 2, 2004, 2, 2, 1),
                           D(2, 2, 2004, 2, 2, 2)};
    for (std::size_t i = 0; i < std::size(ascending); ++i) {
        for (std::size_t j = 0; j < std::size(ascending); ++j) {
            const D& a = ascending[i];
            const D& b = ascending[j];
            EXPECT_EQ(a < b, i < j ? 1 : 0);
            EXPECT_EQ(a > b, i > j ? 1 : 0);
            EXPECT_EQ(a <= b, i <= j ? 1 : 0);
            EXPECT_EQ(a >= b, i >= j ? 1 : 0);
            EXPECT_EQ(a == b, i == j ? 1 : 0);
            EXPECT_EQ(a != b, i != j ? 1 : 0);
        }
    }
    const frameworktest::TimeZone zone("UTC");
    EXPECT_EQ(D(std::time_t{1078488429}) == D(5, 3, 2004, 12, 7, 9), 1);  // the other fields do not count
}

TEST(DateTimeOrder, TakesTheStoredFieldsOfNullValuesAndRefusesMissingOnes) {
    const D null = undefined(NkDtWmNull);
    const D lost = undefined(NkDtWmDefined);
    EXPECT_EQ(null == kOne, 1);
    EXPECT_EQ(lost >= null, 1);
    EXPECT_EQ(null < D(6, 3, 2004), 1);
    const D missing = undefined(NkDtWmMissing);
    const std::pair<const char*, std::function<int(const D&, const D&)>> operators[] = {
        {"operator<(NkDtDateTime&)", [](const D& a, const D& b) { return a < b; }},
        {"operator>(NkDtDateTime&)", [](const D& a, const D& b) { return a > b; }},
        {"operator<=(NkDtDateTime&)", [](const D& a, const D& b) { return a <= b; }},
        {"operator>=(NkDtDateTime&)", [](const D& a, const D& b) { return a >= b; }},
        {"operator==(NkDtDateTime&)", [](const D& a, const D& b) { return a == b; }},
        {"operator!=(NkDtDateTime&)", [](const D& a, const D& b) { return a != b; }},
    };
    for (const auto& [name, compare] : operators) {
        const auto& call = compare;
        expectOrigins({
            {name, [&] { call(missing, kOne); }, NkDtErrUndefiniert, kModule, kClass, name},
            {name, [&] { call(kOne, missing); }, NkDtErrUndefiniert, kModule, kClass, name},
            {name, [&] { call(missing, missing); }, NkDtErrUndefiniert, kModule, kClass, name},
        });
    }
}

}  // namespace
