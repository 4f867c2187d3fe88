#include <cstdio>
#include <string>
#include <vector>

#include "TestDatabase.h"
#include "nkdt/NkDt.h"
#include "nkfw/Calendar.h"

using namespace nktest;

namespace {

TIMESTAMP_STRUCT timeOf(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    const auto part = [](int n) { return static_cast<USHORT>(n); };
    return {static_cast<SHORT>(year), part(month), part(day), part(hour), part(minute), part(second), 0};
}

std::string textOf(const TIMESTAMP_STRUCT& time) {
    char text[64];
    (void)std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", time.year, time.month, time.day,
                        time.hour, time.minute, time.second);
    return text + (time.fraction == 0 ? std::string() : " and a fraction");
}

// Dates between columns of every kind and fields of date and time.
class DateExchange : public EachDatabase {
  protected:
    void makeTable(const std::string& type, const std::string& key = "INTEGER PRIMARY KEY") {
        rs.Close();
        execute("DROP TABLE IF EXISTS t");
        execute("CREATE TABLE t (n " + key + ", x " + type + ", y INTEGER)");
    }
    void insert(int key, const std::string& text) {
        execute("INSERT INTO t (n, x) VALUES (" + std::to_string(key) + ", '" + text + "')");
    }
    void open(bool ofDates = false) {
        rs.OpenTable("t", CDatabaseRecordset::updatable, nullptr, "n");
        rs.BindLong("n", number);
        ofDates ? rs.BindDate("x", field) : rs.BindDateTime("x", field);
        rs.BindLong("y", other);
    }
    /// What the field holds after the next row was read, or state and text of the refusal.
    std::string next() {
        field = timeOf(1, 2, 3);
        const Thrown thrown = thrownBy([&] { EXPECT_TRUE(rs.MoveNext()); });
        if (!thrown.thrown) return rs.IsFieldNull(&field) ? "(null)" : textOf(field);
        EXPECT_TRUE(rs.IsFieldNull(&field));
        return thrown.state + " " + thrown.text;
    }
    /// What the only row's text is read as.
    std::string read(const std::string& text) {
        execute("DELETE FROM t");
        insert(1, text);
        open();
        std::string result = next();
        rs.Close();
        return result;
    }
    /// Adds a row with a time or a value; state and text of the refusal, or nothing.
    std::string add(const TIMESTAMP_STRUCT& time) {
        return addWith([&] {
            field = time;
            rs.SetFieldNull(&field, FALSE);
        });
    }
    std::string add(const NkDtDateTime& value) {
        return addWith([&] { value.ConvToRecordSet(rs, field); });
    }
    template <class Fill>
    std::string addWith(Fill&& fill) {
        rs.AddNew();
        number = ++m_key;
        rs.SetFieldNull(&number, FALSE);
        fill();
        return update();
    }
    std::string update() {
        const Thrown thrown = thrownBy([&] { EXPECT_TRUE(rs.Update()); });
        if (!thrown.thrown) return "";
        rs.CancelUpdate();
        return thrown.state + " " + thrown.text;
    }
    /// Writes a time as the only row; what the column's text is then, or state and text of the refusal.
    std::string written(const TIMESTAMP_STRUCT& time, bool ofDates = false) {
        rs.Close();
        execute("DELETE FROM t");
        open(ofDates);
        const std::string refusal = add(time);
        rs.Close();
        return refusal.empty() ? held() : refusal;
    }
    /// The text that the database itself makes of the only value.
    std::string held() { return value("SELECT CAST(x AS VARCHAR(40)) AS x FROM t"); }
    std::vector<std::string> typesWithTime() const {
        if (isPostgresql()) return {"TIMESTAMP", "TIMESTAMPTZ", "TEXT", "VARCHAR(40)"};
        return {"TIMESTAMP", "DATETIME", "TEXT", "VARCHAR(40)", "TIMESTAMP(3)"};
    }

    CDatabaseRecordset rs{db};
    long number = 0;
    LONG other = 0;
    TIMESTAMP_STRUCT field{};

  private:
    long m_key = 0;
};

class DatesOfSqlite : public DateExchange {};
class DatesOfPostgresql : public DateExchange {};

}  // namespace

// Reading
// ----------------------------------------------------------------------------------------------------------

TEST_P(DateExchange, TimesComeFromEveryKindOfColumnWithoutTheirFraction) {
    for (const std::string& type : typesWithTime()) {
        SCOPED_TRACE(type);
        makeTable(type);
        EXPECT_EQ(read("2004-03-05"), "2004-03-05 00:00:00");
        EXPECT_EQ(read("2004-03-05 14:07"), "2004-03-05 14:07:00");
        EXPECT_EQ(read("2004-03-05 14:07:09"), "2004-03-05 14:07:09");
        EXPECT_EQ(read("2004-03-05T14:07:09"), "2004-03-05 14:07:09");
        EXPECT_EQ(read("2004-03-05 14:07:09.123"), "2004-03-05 14:07:09");
        EXPECT_EQ(read("2004-03-05 14:07:09.999"), "2004-03-05 14:07:09");
        EXPECT_EQ(read("1753-01-01"), "1753-01-01 00:00:00");
        EXPECT_EQ(read("2000-02-29 00:00:01"), "2000-02-29 00:00:01");
        EXPECT_EQ(read("9999-12-31 23:59:59"), "9999-12-31 23:59:59");
    }
}

TEST_P(DateExchange, DatesComeFromAColumnOfDates) {
    makeTable("DATE");
    EXPECT_EQ(read("2004-03-05"), "2004-03-05 00:00:00");
    EXPECT_EQ(read("1753-01-01"), "1753-01-01 00:00:00");
    EXPECT_EQ(read("9999-12-31"), "9999-12-31 00:00:00");
}

TEST_P(DateExchange, NullIsNull) {
    for (const char* type : {"DATE", "TIMESTAMP", "TEXT"}) {
        makeTable(type);
        execute("INSERT INTO t (n) VALUES (1)");
        open();
        EXPECT_EQ(next(), "(null)");
        EXPECT_EQ(textOf(field), "0000-00-00 00:00:00");
        NkDtDateTime value("05.03.2004 14:07:09");
        value.SetFromRecordSet(rs, field);
        EXPECT_FALSE(value.IsDefined());
    }
}

TEST_P(DateExchange, WhatIsNoDateIsRefusedWithItsPlace) {
    makeTable("TEXT");
    for (const char* text : {"",
                             " ",
                             "heute",
                             "infinity",
                             "-infinity",
                             "13:14:15",
                             "2004",
                             "2004-03",
                             "2004-3-5",
                             "05.03.2004",
                             "03/05/2004",
                             "20040305",
                             " 2004-03-05",
                             "2004-03-05 ",
                             "2004-03-05T",
                             "2004-03-05 14",
                             "2004-03-05 14:",
                             "2004-03-05 14:07:",
                             "2004-03-05 1:07:09",
                             "2004-03-05 14:07:09.",
                             "2004-03-05 14:07:09.x",
                             "2004-03-05  14:07:09",
                             "2004-03-05t14:07:09",
                             "2004-03-05 14:07:09Z",
                             "2004-03-05 14:07:09+01",
                             "2004-03-05 02:07:09PM",
                             "2004-03-05 14:07.5",
                             "-2004-03-05",
                             "+2004-03-05",
                             "0044-03-15 BC",
                             "104-03-05",
                             "2004-+3-05",
                             "1078495629",
                             "2453069.5"}) {
        EXPECT_EQ(read(text), "22018 Zeile 1, Spalte x: \"" + std::string(text) + "\" ist kein Datum");
    }
}

TEST_P(DateExchange, WhatNoCalendarOrClockHasIsRefused) {
    makeTable("TEXT");
    for (const char* text :
         {"2004-00-05", "2004-13-05", "2004-03-00", "2004-03-32", "2004-04-31", "2003-02-29", "1900-02-29",
          "2004-03-05 24:00:00", "2004-03-05 14:60:00", "2004-03-05 14:07:60"}) {
        EXPECT_EQ(read(text),
                  "22008 Zeile 1, Spalte x: \"" + std::string(text) + "\" gibt es im Kalender nicht");
    }
    for (const char* text : {"1752-12-31", "0004-03-05", "0000-00-00", "10000-01-01", "12004-03-05 14:07:09",
                             "300004-03-05", "99999999999999999999-01-01"}) {
        EXPECT_EQ(read(text), "22008 Zeile 1, Spalte x: \"" + std::string(text) +
                                  "\" liegt außerhalb der Jahre 1753 bis 9999");
    }
}

TEST_P(DateExchange, ARowBehindARefusedOneIsRead) {
    makeTable("TEXT");
    insert(1, "13:14:15");
    insert(2, "2004-03-05 14:07:09");
    open();
    EXPECT_EQ(next().substr(0, 5), "22018");
    NkDtDateTime value("05.03.2004 14:07:09");
    value.SetFromRecordSet(rs, field);
    EXPECT_FALSE(value.IsDefined());
    EXPECT_EQ(next(), "2004-03-05 14:07:09");
}

// Writing
// ----------------------------------------------------------------------------------------------------------

TEST_P(DateExchange, WhatIsWrittenLooksAsItUsuallyDoesInSuchAColumn) {
    for (const std::string& type : typesWithTime()) {
        SCOPED_TRACE(type);
        if (type == "TIMESTAMPTZ") continue;
        makeTable(type);
        EXPECT_EQ(written(timeOf(2004, 3, 5, 14, 7, 9)), "2004-03-05 14:07:09");
        EXPECT_EQ(written(timeOf(2004, 3, 5)), "2004-03-05 00:00:00");
        EXPECT_EQ(value("SELECT COUNT(*) FROM t WHERE x = '2004-03-05 00:00:00'"), "1");
    }
    makeTable("DATE");
    EXPECT_EQ(written(timeOf(2004, 3, 5)), "2004-03-05");
    EXPECT_EQ(value("SELECT COUNT(*) FROM t WHERE x = '2004-03-05'"), "1");
    EXPECT_EQ(written(timeOf(9999, 12, 31)), "9999-12-31");
}

TEST_P(DateExchange, AFieldOfDatesIsWrittenIntoTextsWithoutATime) {
    makeTable("VARCHAR(10)");
    EXPECT_EQ(written(timeOf(2004, 3, 5), true), "2004-03-05");
    EXPECT_EQ(written(timeOf(2004, 3, 5, 14, 7, 9), true).substr(0, 5), "22008");
    makeTable("TIMESTAMP");
    EXPECT_EQ(written(timeOf(2004, 3, 5), true), "2004-03-05 00:00:00");
    EXPECT_EQ(written(timeOf(2004, 3, 5, 14, 7, 9), true), "2004-03-05 14:07:09");
}

TEST_P(DateExchange, ATimeOfDayDoesNotGoIntoAColumnOfDates) {
    makeTable("DATE");
    insert(100, "2004-03-05");
    open();
    ASSERT_EQ(next(), "2004-03-05 00:00:00");
    for (const TIMESTAMP_STRUCT& time : {timeOf(2004, 3, 6, 14, 7, 9), timeOf(2004, 3, 6, 1),
                                         timeOf(2004, 3, 6, 0, 1), timeOf(2004, 3, 6, 0, 0, 1)}) {
        rs.Edit();
        field = time;
        EXPECT_EQ(update(), "22008 Zeile 1, Spalte x: \"" + textOf(time) +
                                "\" hat eine Uhrzeit, die Spalte nimmt nur ein Datum");
        EXPECT_EQ(add(time).substr(0, 31), "22008 Neue Zeile 1, Spalte x: \"");
    }
    rs.Close();
    EXPECT_EQ(held(), "2004-03-05");
}

TEST_P(DateExchange, WhatNoCalendarHasIsNotWritten) {
    NkDtDateTime lastOfTheYear(1, 3, 2004, 0, 0, 0);
    lastOfTheYear.SubDay365(60);
    ASSERT_EQ(lastOfTheYear.GetDay365(), 32);
    const NkDtDateTime farAway(1, 1, 32767, 0, 0, 0);
    for (const char* type : {"DATE", "TIMESTAMP", "TEXT"}) {
        SCOPED_TRACE(type);
        makeTable(type);
        insert(100, "2004-03-05");
        const std::string before = held();
        open();
        ASSERT_EQ(next(), "2004-03-05 00:00:00");
        for (const NkDtDateTime& value : {lastOfTheYear, farAway}) {
            rs.Edit();
            value.ConvToRecordSet(rs, field);
            EXPECT_EQ(update().substr(0, 27),
                      "22008 Zeile 1, Spalte x: \"" + std::string(value == farAway ? "3" : "2"));
            EXPECT_EQ(add(value).substr(0, 29), "22008 Neue Zeile 1, Spalte x:");
        }
        EXPECT_EQ(written(timeOf(1752, 12, 31)).substr(0, 5), "22008");
        EXPECT_EQ(written(timeOf(-1, 1, 1)).substr(0, 5), "22008");
        EXPECT_EQ(written(timeOf(2004, 13, 1)).substr(0, 5), "22008");
        EXPECT_EQ(written(timeOf(2004, 0, 1)).substr(0, 5), "22008");
        EXPECT_EQ(written(timeOf(2004, 1, 65535)).substr(0, 5), "22008");
        EXPECT_EQ(written(timeOf(2004, 1, 1, 24)).substr(0, 5), "22008");
        EXPECT_EQ(written(timeOf(2004, 1, 1, 0, 60)).substr(0, 5), "22008");
        EXPECT_EQ(written(timeOf(2004, 1, 1, 0, 0, 60)).substr(0, 5), "22008");
        EXPECT_EQ(value("SELECT COUNT(*) FROM t"), "0");
        insert(100, "2004-03-05");
        EXPECT_EQ(held(), before);
    }
}

TEST_P(DateExchange, EveryMonthsEndComesBackThroughTheClasses) {
    makeTable("TIMESTAMP");
    execute("ALTER TABLE t ADD COLUMN d DATE");
    TIMESTAMP_STRUCT date{};
    const auto bindAll = [&] {
        open();
        rs.BindDate("d", date);
    };
    std::vector<NkDtDateTime> values;
    for (const int year : {1753, 1899, 1900, 1999, 2000, 2003, 2004, 2100, 9999}) {
        for (int month = 1; month <= 12; ++month) {
            const int day = nkfw::daysInMonth(year, month);
            values.emplace_back(day, month, year, month * 2 - 1, 59 - month, month * 4);
        }
    }
    bindAll();
    {
        CDatabaseTransaction transaction(db);
        for (const NkDtDateTime& value : values) {
            ASSERT_EQ(addWith([&] {
                          value.ConvToRecordSet(rs, field);
                          NkDtDateZp(value).ConvToRecordSet(rs, date);
                      }),
                      "");
        }
        transaction.Commit();
    }
    bindAll();
    for (const NkDtDateTime& value : values) {
        ASSERT_TRUE(rs.MoveNext());
        NkDtDateTime time(NkDtWmNull);
        time.SetFromRecordSet(rs, field);
        EXPECT_TRUE(time == value) << value;
        NkDtDateZp day(NkDtWmNull);
        day.SetFromRecordSet(rs, date);
        EXPECT_TRUE(day == NkDtDateZp(value)) << value;
    }
    EXPECT_FALSE(rs.MoveNext());
}

TEST_P(DateExchange, AnUnchangedTimeKeepsItsFraction) {
    makeTable("TIMESTAMP");
    insert(1, "2004-03-05 14:07:09.123");
    open();
    ASSERT_EQ(next(), "2004-03-05 14:07:09");
    rs.Edit();
    other = 5;
    rs.SetFieldNull(&other, FALSE);
    EXPECT_EQ(update(), "");
    EXPECT_EQ(held(), "2004-03-05 14:07:09.123");
    rs.Edit();
    field.second = 10;
    EXPECT_EQ(update(), "");
    EXPECT_EQ(held(), "2004-03-05 14:07:10");
    rs.Edit();
    rs.SetFieldNull(&field, TRUE);
    EXPECT_EQ(update(), "");
    EXPECT_EQ(held(), "(null)");
}

TEST_P(DateExchange, ARowWithoutAKeyIsFoundByItsTimes) {
    const std::vector<std::string> texts{"2004-03-05 14:07:09.123", "2004-03-05 14:07:09",
                                         "1752-12-31 10:11:12"};
    for (const char* type : {"TIMESTAMP", "DATE"}) {
        SCOPED_TRACE(type);
        makeTable(type, "INTEGER");
        for (const std::string& text : texts)
            insert(1, text.substr(0, type == std::string("DATE") ? 10 : 40));
        if (isPostgresql()) insert(1, "infinity");
        if (isPostgresql()) insert(1, "0044-03-15 BC");
        if (type == std::string("DATE")) execute("UPDATE t SET y = 1 WHERE x > '2000-01-01'");
        rs.OpenTable("t", CDatabaseRecordset::updatable, "y IS NULL");
        rs.BindLong("y", other);
        LONG rows = 0;
        while (rs.MoveNext()) {
            rs.Edit();
            other = ++rows;
            rs.SetFieldNull(&other, FALSE);
            EXPECT_EQ(update(), "");
        }
        EXPECT_GE(rows, 1);
        EXPECT_EQ(value("SELECT COUNT(*) FROM t WHERE y IS NULL"), "0");
        if (type == std::string("TIMESTAMP")) {
            EXPECT_EQ(value("SELECT COUNT(DISTINCT y) FROM t"), isPostgresql() ? "5" : "3");
        }
    }
}

TEST_P(DateExchange, AnEditedTimeFindsItsRowAgain) {
    makeTable("TIMESTAMP", "INTEGER");
    insert(1, "2004-03-05 14:07:09.5");
    open();
    ASSERT_EQ(next(), "2004-03-05 14:07:09");
    for (int minute = 8; minute < 11; ++minute) {
        rs.Edit();
        field.minute = static_cast<USHORT>(minute);
        EXPECT_EQ(update(), "");
    }
    EXPECT_EQ(held(), "2004-03-05 14:10:09");
    rs.Delete();
    EXPECT_EQ(value("SELECT COUNT(*) FROM t"), "0");
}

TEST_P(DateExchange, TicksCrossThroughAFieldOf32Bits) {
    makeTable("BIGINT");
    LONG ticks = 0;
    const auto openTicks = [&] {
        rs.OpenTable("t", CDatabaseRecordset::updatable, nullptr, "n");
        rs.BindLong("n", number);
        rs.BindLong("x", ticks);
    };
    openTicks();
    for (const LONG value : {1800, -1, 0, 2147483647, -2147483647 - 1}) {
        NkDtTime duration(NkDtWmNull);
        duration.SetFromSQL(value);
        ASSERT_EQ(addWith([&] { duration.ConvToRecordSet(rs, ticks); }), "");
    }
    insert(100, "2147483648");
    execute("INSERT INTO t (n) VALUES (101)");
    openTicks();
    for (const LONG value : {1800, -1, 0, 2147483647, -2147483647 - 1}) {
        ASSERT_TRUE(rs.MoveNext());
        NkDtTime duration(NkDtWmNull);
        duration.SetFromRecordSet(rs, ticks);
        EXPECT_STREQ(duration.ConvToSQL().GetValue(), std::to_string(value).c_str());
    }
    EXPECT_EQ(thrownBy([&] { rs.MoveNext(); }).text,
              "Zeile 6, Spalte x: \"2147483648\" liegt außerhalb von -2147483648 bis 2147483647");
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_TRUE(rs.IsFieldNull(&ticks));
}

INSTANTIATE_TEST_SUITE_P(Each, DateExchange, testing::Values(CDatabase::sqlite, CDatabase::postgresql),
                         databaseName);

// What one database does
// ----------------------------------------------------------------------------------------------------------

TEST_P(DatesOfSqlite, AColumnOfDatesOrTimesMayHoldAnything) {
    for (const char* type : {"DATE", "TIMESTAMP", "DATETIME"}) {
        SCOPED_TRACE(type);
        makeTable(type);
        for (const char* text : {"", "13:14:15", "infinity", "1078495629", "2453069.5", "20040305",
                                 "2004-03-05T14:07:09Z", "abc"}) {
            EXPECT_EQ(read(text), "22018 Zeile 1, Spalte x: \"" + std::string(text) + "\" ist kein Datum");
        }
        EXPECT_EQ(read("10000-01-01").substr(0, 24), "22008 Zeile 1, Spalte x:");
        EXPECT_EQ(read("2004-03-05T14:07:09.5"), "2004-03-05 14:07:09");
    }
    execute("UPDATE t SET x = x'323030342D30332D3035'");
    open();
    EXPECT_EQ(next().substr(0, 5), "22018");
}

TEST_P(DatesOfSqlite, AnUnchangedTimeOfDayStaysInAColumnOfDates) {
    makeTable("DATE");
    insert(1, "2004-03-05 14:07:09");
    open();
    ASSERT_EQ(next(), "2004-03-05 14:07:09");
    rs.Edit();
    other = 1;
    rs.SetFieldNull(&other, FALSE);
    EXPECT_EQ(update(), "");
    EXPECT_EQ(held(), "2004-03-05 14:07:09");
    rs.Edit();
    field.day = 6;
    EXPECT_EQ(update().substr(0, 5), "22008");
    EXPECT_EQ(held(), "2004-03-05 14:07:09");
}

TEST_P(DatesOfPostgresql, DatesThatTheClassesDoNotHoldAreRefused) {
    for (const char* type : {"DATE", "TIMESTAMP", "TIMESTAMPTZ"}) {
        SCOPED_TRACE(type);
        makeTable(type);
        for (const char* text : {"infinity", "-infinity"})
            EXPECT_EQ(read(text), "22018 Zeile 1, Spalte x: \"" + std::string(text) + "\" ist kein Datum");
        for (const char* text : {"2004-03-05 BC", "0044-03-15 BC"})
            EXPECT_EQ(read(text).substr(0, 24), "22018 Zeile 1, Spalte x:");
        for (const char* text : {"1752-12-31", "10000-01-01", "20041-11-11", "0004-03-05"})
            EXPECT_EQ(read(text).substr(0, 24), "22008 Zeile 1, Spalte x:");
    }
}

TEST_P(DatesOfPostgresql, AQueryTellsNoInfiniteTimeAsAnother) {
    makeTable("TIMESTAMP");
    insert(1, "infinity");
    insert(2, "-infinity");
    insert(3, "10000-01-01");
    insert(4, "9999-12-31 23:59:58");
    insert(5, "2004-03-05 14:07:09.123456");
    insert(6, "2004-03-05 BC");
    rs.OpenQuery("SELECT x, x::date AS d FROM t ORDER BY n");
    TIMESTAMP_STRUCT date{};
    rs.BindDateTime("x", field);
    rs.BindDate("d", date);
    EXPECT_EQ(next(),
              "22008 Zeile 1, Spalte x: \"9999-12-31 23:59:59\" kann in einer Abfrage auch \"infinity\" "
              "sein; als Text abgefragt (::text) ist es eindeutig");
    EXPECT_TRUE(rs.IsFieldNull(&date));
    EXPECT_EQ(next().substr(0, 24), "22018 Zeile 2, Spalte x:");
    EXPECT_EQ(next().substr(0, 24), "22008 Zeile 3, Spalte x:");
    EXPECT_TRUE(rs.IsFieldNull(&date));
    EXPECT_EQ(next(), "9999-12-31 23:59:58");
    EXPECT_EQ(textOf(date), "9999-12-31 00:00:00");
    EXPECT_EQ(next(), "2004-03-05 14:07:09");
    EXPECT_EQ(next().substr(0, 24), "22018 Zeile 6, Spalte x:");
}

TEST_P(DatesOfPostgresql, TimesWithAZoneAreToldInThatOfTheSession) {
    execute("SET TIME ZONE 'Asia/Kathmandu'");
    makeTable("TIMESTAMPTZ");
    insert(1, "2004-03-05 14:07:09.5+00");
    open();
    ASSERT_EQ(next(), "2004-03-05 19:52:09");
    rs.Edit();
    field.second = 10;
    EXPECT_EQ(update(), "");
    EXPECT_EQ(value("SELECT CAST(x AT TIME ZONE 'UTC' AS TEXT) AS x FROM t"), "2004-03-05 14:07:10");
}

TEST_P(DatesOfPostgresql, AnOrderByADateIsOneOfTheCalendar) {
    makeTable("DATE");
    insert(1, "2004-03-05");
    insert(2, "0044-03-15 BC");
    insert(3, "10000-01-01");
    insert(4, "1999-12-31");
    rs.OpenTable("t", CDatabaseRecordset::readOnly, nullptr, "x");
    rs.BindLong("n", number);
    CString text;
    rs.BindText("x", text);
    std::string order;
    while (rs.MoveNext())
        order += std::to_string(number) + "=" + text.GetString() + ";";
    EXPECT_EQ(order, "2=0044-03-15 BC;4=1999-12-31;1=2004-03-05;3=10000-01-01;");
}

INSTANTIATE_TEST_SUITE_P(Each, DatesOfSqlite, testing::Values(CDatabase::sqlite), databaseName);
INSTANTIATE_TEST_SUITE_P(Each, DatesOfPostgresql, testing::Values(CDatabase::postgresql), databaseName);
