#include <tuple>

#include "AppTest.h"
#include "RoundTrip.h"
#include "nkdt/NkDtDateTime.h"
#include "nkdt/NkDtDateZp.h"
#include "nkdt/NkDtTime.h"

using namespace nktest;

namespace {

using nkdt::app::Arrival;
using nkdt::app::Cell;
using nkdt::app::Representation;
using nkdt::app::Road;

/// The roads that did not bring the value back, with what they state, or with how they lost it.
template <class Value>
std::vector<std::string> troubles(const char* className, const Value& value) {
    const nkdt::app::ColumnKind* const kind = nkdt::app::findKind(className);
    const auto from = kind->makeCell();
    const auto back = kind->makeCell();
    std::vector<std::string> names;
    for (const Road& road : nkdt::app::roadsOf(*kind)) {
        from->value().Assign(value);
        const Arrival arrival = nkdt::app::travel(road, *from, *back);
        if (arrival.outcome == Arrival::notRepresentable)
            names.push_back(road.name + (": " + arrival.reason));
        if (arrival.outcome == Arrival::lost) names.push_back(road.name + (" lost it: " + arrival.reason));
    }
    return names;
}

std::vector<std::string> troublesOfTime(const NkDtDateTime& value) {
    return troubles("NkDtDateTime", value);
}

std::vector<std::string> troublesOfDate(const NkDtDateZp& value) {
    return troubles("NkDtDateZp", value);
}

std::vector<std::string> troublesOfTicks(LONG ticks, NkDtTime::TimeMode mode = NkDtTime::Minutes) {
    NkDtTime value(NkDtWmNull);
    value.SetFromSQL(ticks);
    value.SetMode(mode);
    return troubles("NkDtTime", value);
}

/// How a value ends on a wrong road that brings another one back.
template <class Value>
Arrival::Outcome detour(const char* className, Representation representation, const Value& value,
                        void (*travel)(Cell&, Cell&)) {
    const auto from = nkdt::app::findKind(className)->makeCell();
    const auto back = nkdt::app::findKind(className)->makeCell();
    from->value().Assign(value);
    return nkdt::app::travel(Road{"detour", representation, travel}, *from, *back).outcome;
}

using Names = std::vector<std::string>;

/// A table of dates, times and durations in each database.
class Dates : public EachDatabase {
  protected:
    void SetUp() override {
        EachDatabase::SetUp();
        if (IsSkipped()) return;
        execute("CREATE TABLE t (n INTEGER PRIMARY KEY, tag DATE, zeit TIMESTAMP, dauer INTEGER, wann TEXT)");
    }
    void fill() {
        execute(
            "INSERT INTO t VALUES (1, '2004-03-05', '2004-03-05 14:07:09.123', 1800, '2004-03-05 14:07'), "
            "(2, '1753-01-01', '1753-01-01 00:00:00', -1800, '1753-01-01'), (3, NULL, NULL, NULL, NULL), "
            "(4, '9999-12-31', '9999-12-31 23:59:00', 0, '9999-12-31T23:59:59.999'), "
            "(5, '2000-02-29', '2000-02-29 00:00:00', 151200, '2000-02-29')");
    }
    static Arguments as(Arguments arguments) {
        arguments.insert(arguments.end(), {"--as", "dauer=Time", "--as", "wann=DateTime"});
        return arguments;
    }

    TemporaryFolder files;
};

}  // namespace

// The roads
// ----------------------------------------------------------------------------------------------------------

TEST(RoadsOfDates, BringEveryDateBack) {
    EXPECT_EQ(troublesOfDate(NkDtDateZp(NkDtWmNull)), Names());
    EXPECT_EQ(troublesOfTime(NkDtDateTime(NkDtWmNull)), Names());
    NkDtDateZp date(1, 1, 1753);
    for (int i = 0; i < 4000; ++i, date.AddDay365(61)) {
        ASSERT_EQ(troublesOfDate(date), Names()) << date;
        const NkDtDateTime time(date.GetDay365(), date.GetMonth(), date.GetYear(), i % 24, i % 60, 0);
        ASSERT_EQ(troublesOfTime(time), Names()) << time;
    }
    EXPECT_EQ(troublesOfDate(NkDtDateZp(31, 12, 9999)), Names());
    EXPECT_EQ(troublesOfTime(NkDtDateTime(31, 12, 9999, 23, 59, 0)), Names());
}

TEST(RoadsOfDates, StateThatAnSqlLiteralHasNoSeconds) {
    const Names wanted{"SQL literal: it has no seconds"};
    EXPECT_EQ(troublesOfTime(NkDtDateTime(5, 3, 2004, 14, 7, 9)), wanted);
    EXPECT_EQ(troublesOfTime(NkDtDateTime(5, 3, 2004, 0, 0, 1)), wanted);
    EXPECT_EQ(troublesOfTime(NkDtDateTime(31, 12, 9999, 23, 59, 59)), wanted);
}

TEST(RoadsOfDates, StateThatADateHasNoTimeOfDay) {
    NkDtDateZp date(5, 3, 2004);
    date.SetHour(14);
    EXPECT_EQ(troublesOfDate(date), (Names{"text: reading a date takes no time of day",
                                           "user-interface text: reading a date takes no time of day",
                                           "SQL literal: reading a date takes no time of day",
                                           "archive: the archive of a date has no time of day",
                                           "edit control: reading a date takes no time of day"}));
}

TEST(RoadsOfDates, ExcuseNothingButTheSeconds) {
    const NkDtDateTime time(5, 3, 2004, 14, 7, 9);
    const auto outcome = [&](void (*travel)(Cell&, Cell&)) {
        return detour("NkDtDateTime", Representation::sqlLiteral, time, travel);
    };
    EXPECT_EQ(outcome([](Cell&, Cell& to) { to.setText("05.03.2004 14:07:00"); }), Arrival::notRepresentable);
    EXPECT_EQ(outcome([](Cell&, Cell& to) { to.setText("05.03.2004 14:08:00"); }), Arrival::lost);
    EXPECT_EQ(outcome([](Cell&, Cell& to) { to.setText("05.03.2004 14:07:08"); }), Arrival::lost);
    EXPECT_EQ(outcome([](Cell&, Cell&) {}), Arrival::lost);
    EXPECT_EQ(outcome([](Cell&, Cell& to) { to.setText("abc"); }), Arrival::lost);
    NkDtDateZp date(5, 3, 2004);
    date.SetHour(14);
    EXPECT_EQ(detour("NkDtDateZp", Representation::archive, date,
                     [](Cell&, Cell& to) { to.setText("06.03.2004"); }),
              Arrival::lost);
}

TEST(RoadsOfDurations, BringWholeMinutesBack) {
    EXPECT_EQ(troubles("NkDtTime", NkDtTime(NkDtWmNull)), Names());
    for (const LONG ticks : {0, 20, 1180, 1200, 1800, -1200, -1800, 28800, 28820, 863980, 864000, -864020,
                             10368000, 2147481600, -2147481600}) {
        EXPECT_EQ(troublesOfTicks(ticks), Names()) << ticks;
    }
}

TEST(RoadsOfDurations, StateThatTextsHaveNoTicksBelowAMinute) {
    const Names wanted{
        "text: it has no ticks below a minute", "user-interface text: it has no ticks below a minute",
        "external text: it has no ticks below a minute", "edit control: it has no ticks below a minute"};
    for (const LONG ticks : {1, -1, 19, 15, 1201, -1805, -90})
        EXPECT_EQ(troublesOfTicks(ticks), wanted) << ticks;
}

TEST(RoadsOfDurations, StateThatExternalTextHasNoSignBelowOneHour) {
    const Names wanted{"external text: it has no sign below one hour"};
    for (const LONG ticks : {-20, -600, -1180})
        EXPECT_EQ(troublesOfTicks(ticks), wanted) << ticks;
}

TEST(RoadsOfDurations, StateWhichHoursATextTakes) {
    EXPECT_EQ(troublesOfTicks(2147482780), Names());
    EXPECT_EQ(troublesOfTicks(2147482800), Names{"text: reading a text takes 1789568 hours"});
    EXPECT_EQ(troublesOfTicks(-2147483640), Names{"text: reading a text takes 1789568 hours"});
    EXPECT_EQ(troublesOfTicks(2147483647), (Names{"text: reading a text takes 1789568 hours",
                                                  "user-interface text: it has no ticks below a minute",
                                                  "external text: it has no ticks below a minute",
                                                  "edit control: it has no ticks below a minute"}));
    EXPECT_EQ(troublesOfTicks(-2147483647 - 1).size(), 4U);
}

TEST(RoadsOfDurations, StateThatTextAloneKeepsTheTimeMode) {
    const Names wanted{"user-interface text: it has no time mode",
                       "SQL literal: it has no time mode",
                       "external text: it has no time mode",
                       "recordset field: it has no time mode",
                       "archive: it has no time mode",
                       "edit control: it has no time mode"};
    EXPECT_EQ(troublesOfTicks(1800, NkDtTime::Hundredths), wanted);
    EXPECT_EQ(troublesOfTicks(2400, NkDtTime::HoursOnly), wanted);
    EXPECT_EQ(troublesOfTicks(1806, NkDtTime::Hundredths).front(),
              "text: it has no ticks below a hundredth of an hour");
    EXPECT_EQ(troublesOfTicks(1800, NkDtTime::HoursOnly).front(),
              "text: it has nothing below an hour in this time mode");
}

TEST(RoadsOfDurations, ExcuseNothingButWhatIsStated) {
    NkDtTime value(NkDtWmNull);
    value.SetFromSQL(-910);
    const auto outcome = [&](void (*travel)(Cell&, Cell&)) {
        return detour("NkDtTime", Representation::external, value, travel);
    };
    EXPECT_EQ(outcome([](Cell&, Cell& to) { to.setText("0:45"); }), Arrival::notRepresentable);
    EXPECT_EQ(outcome([](Cell&, Cell& to) { to.setText("-0:45"); }), Arrival::lost);
    EXPECT_EQ(outcome([](Cell&, Cell& to) { to.setText("0:46"); }), Arrival::lost);
    EXPECT_EQ(outcome([](Cell&, Cell& to) { to.setText("0,75"); }), Arrival::lost);
    EXPECT_EQ(outcome([](Cell&, Cell&) {}), Arrival::lost);
    EXPECT_EQ(outcome([](Cell&, Cell& to) { to.setText("x"); }), Arrival::lost);
}

TEST(KindsOfDates, AreCalledAsTheirClassesOrShorter) {
    for (const char* name : {"DateTime", "nkdtdatetime"})
        EXPECT_STREQ(nkdt::app::findKind(name)->className, "NkDtDateTime");
    for (const char* name : {"Date", "date", "DateZp", "NkDtDateZp"})
        EXPECT_STREQ(nkdt::app::findKind(name)->className, "NkDtDateZp");
    for (const char* name : {"Time", "NkDtTime"})
        EXPECT_STREQ(nkdt::app::findKind(name)->className, "NkDtTime");
    EXPECT_EQ(nkdt::app::findKind("NkDtDate"), nullptr);
}

// The commands
// ----------------------------------------------------------------------------------------------------------

TEST_P(Dates, PassTheCheckAndDropNothingButStatedSeconds) {
    fill();
    const Outcome outcome = call(as({"check", target(), "t"}));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.err, IsEmpty());
    EXPECT_THAT(outcome.out, testing::ContainsRegex("tag +NkDtDateZp +5 +1 +5 +0 +0\n"));
    EXPECT_THAT(outcome.out, testing::ContainsRegex("zeit +NkDtDateTime +5 +1 +4 +1 +0\n"));
    EXPECT_THAT(outcome.out, testing::ContainsRegex("dauer +NkDtTime +5 +1 +5 +0 +0\n"));
    EXPECT_THAT(outcome.out, testing::ContainsRegex("wann +NkDtDateTime +5 +1 +4 +1 +0\n"));
    EXPECT_THAT(outcome.out,
                HasSubstr("Not representable: column zeit, 1 value as SQL literal: it has no seconds\n"));
    EXPECT_EQ(call(as({"check", target(), "t", "--strict"})).status, 1);
    EXPECT_EQ(call(as({"check", target(), "t", "--strict", "--where", "n IN (2, 3, 5)"})).status, 0);
}

TEST_P(Dates, AreShownInGermanOrder) {
    fill();
    const Outcome outcome = call(as({"show", target(), "t", "--sort", "n"}));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out,
              "n  tag         zeit                  dauer  wann\n"
              "-  ----------  -------------------  ------  -------------------\n"
              "1  05.03.2004  05.03.2004 14:07:09    1:30  05.03.2004 14:07:00\n"
              "2  01.01.1753  01.01.1753            -1:30  01.01.1753\n"
              "3\n"
              "4  31.12.9999  31.12.9999 23:59:00    0:00  31.12.9999 23:59:59\n"
              "5  29.02.2000  29.02.2000           126:00  29.02.2000\n");
}

TEST_P(Dates, OfATextColumnAreBoundOnlyWhenAsked) {
    fill();
    EXPECT_THAT(call({"show", target(), "t", "--columns", "wann,dauer", "--where", "n = 1"}).out,
                HasSubstr("2004-03-05 14:07   1800\n"));
    EXPECT_THAT(
        call({"show", target(), "t", "--columns", "wann", "--where", "n = 2", "--as", "wann=Date"}).out,
        HasSubstr("\n01.01.1753\n"));
    execute("UPDATE t SET wann = 'bald' WHERE n = 5");
    const Outcome outcome = call(as({"show", target(), "t", "--where", "n = 5"}));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("Zeile 1, Spalte wann: \"bald\" ist kein Datum"));
}

TEST_P(Dates, ThatCannotBeReadAreToldByTheCheckAndNeverBecomeToday) {
    if (isPostgresql()) {
        execute("INSERT INTO t (n, tag) VALUES (1, 'infinity')");
        execute("INSERT INTO t (n, zeit) VALUES (2, '-infinity')");
    } else {
        execute("INSERT INTO t (n, tag) VALUES (1, 'morgen')");
        execute("INSERT INTO t (n, zeit) VALUES (2, '13:14:15')");
    }
    execute("INSERT INTO t (n, zeit) VALUES (3, '10000-01-01')");
    execute("INSERT INTO t (n, tag) VALUES (4, '1752-12-31')");
    const Outcome outcome = call({"check", target(), "t", "--columns", "tag,zeit"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("nkdt: Zeile 1, Spalte tag: "));
    EXPECT_THAT(outcome.err, HasSubstr("nkdt: Zeile 2, Spalte zeit: "));
    EXPECT_THAT(outcome.err, HasSubstr("nkdt: Zeile 3, Spalte zeit: "));
    EXPECT_THAT(outcome.err,
                HasSubstr("nkdt: Zeile 4, Spalte tag: \"1752-12-31\" liegt außerhalb der Jahre"));
    EXPECT_THAT(outcome.out, testing::ContainsRegex("tag +NkDtDateZp +4 +2 +2 +0 +2\n"));
    EXPECT_THAT(outcome.out, testing::ContainsRegex("zeit +NkDtDateTime +4 +2 +2 +0 +2\n"));
}

TEST_P(Dates, StandInStatementsAsEveryDatabaseReadsThem) {
    fill();
    const std::string file = files.file("t.sql");
    ASSERT_EQ(call(as({"export", target(), "t", "--format", "sql", "--output", file, "--sort", "n"})).status,
              0);
    const std::string content = contentOf(file);
    EXPECT_THAT(content, HasSubstr("VALUES (1, '2004-03-05', '2004-03-05 14:07:09', 1800, "
                                   "'2004-03-05 14:07:00');\n"));
    EXPECT_THAT(content, HasSubstr("VALUES (2, '1753-01-01', '1753-01-01 00:00:00', -1800, "
                                   "'1753-01-01 00:00:00');\n"));
    EXPECT_THAT(content, HasSubstr("VALUES (3, NULL, NULL, NULL, NULL);\n"));
    if (isPostgresql()) execute("SET DateStyle = 'ISO, MDY'");
    execute("UPDATE t SET wann = '2004-03-05 14:07:00' WHERE n = 1");
    execute("CREATE TABLE u (n INTEGER PRIMARY KEY, tag DATE, zeit TIMESTAMP, dauer INTEGER, wann TEXT)");
    std::string statement = content.substr(content.find("INSERT INTO \"t\""));
    statement = statement.substr(0, statement.find(";\n"));
    execute(statement.replace(statement.find("\"t\""), 3, "\"u\""));
    const Outcome compared = call(as({"compare", target(), "t", target(), "u", "--where", "n = 1"}));
    EXPECT_EQ(compared.status, 0) << compared.err;
}

TEST_P(Dates, GoThroughEveryFormatIntoColumnsOfTheirTypes) {
    fill();
    for (const char* format : {"extern", "sql", "archive"}) {
        SCOPED_TRACE(format);
        const std::string file = files.file(format);
        ASSERT_EQ(
            call(as({"export", target(), "t", "--format", format, "--output", file, "--sort", "n"})).status,
            0);
        execute("DROP TABLE IF EXISTS u");
        const Outcome imported =
            call({"import", target(), "u", "--format", format, "--input", file, "--create"});
        ASSERT_EQ(imported.status, 0) << imported.err;
        CDatabaseRecordset rs(db);
        rs.OpenTable("u");
        using Column = CDatabaseColumn;
        EXPECT_EQ(rs.GetColumns()[1].nType, Column::date);
        EXPECT_EQ(rs.GetColumns()[2].nType, Column::timestamp);
        EXPECT_EQ(rs.GetColumns()[3].nType, Column::integer);
        EXPECT_EQ(rs.GetColumns()[4].nType, Column::timestamp);
        rs.Close();
        const Outcome compared = call(as({"compare", target(), "t", target(), "u", "--sort", "n"}));
        EXPECT_EQ(compared.status, 0) << compared.err;
        EXPECT_EQ(value("SELECT CAST(zeit AS VARCHAR(40)) AS x FROM u WHERE n = 1"), "2004-03-05 14:07:09");
        EXPECT_EQ(value("SELECT CAST(tag AS VARCHAR(40)) AS x FROM u WHERE n = 4"), "9999-12-31");
    }
}

TEST_P(Dates, AreComparedToTheSecond) {
    fill();
    execute("CREATE TABLE u (n INTEGER PRIMARY KEY, tag DATE, zeit TIMESTAMP, dauer INTEGER, wann TEXT)");
    execute("INSERT INTO u SELECT * FROM t");
    const Arguments arguments = as({"compare", target(), "t", target(), "u", "--sort", "n"});
    EXPECT_EQ(call(arguments).status, 0) << call(arguments).err;
    execute("UPDATE u SET zeit = '2004-03-05 14:07:09' WHERE n = 1");
    EXPECT_EQ(call(arguments).status, 0) << "a fraction is no difference";
    execute("UPDATE u SET zeit = '2004-03-05 14:07:10' WHERE n = 1");
    execute("UPDATE u SET dauer = 1820 WHERE n = 1");
    const Outcome outcome = call(arguments);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("row 1, column zeit: \"C05032004140709\" in the first table, "
                                       "\"C05032004140710\" in the second"));
    EXPECT_THAT(outcome.err, HasSubstr("row 1, column dauer: \"T013000\" in the first table, \"T013100\""));
}

TEST_P(Dates, AreRefusedWhereAFileHoldsNone) {
    fill();
    const auto imported = [&](const std::string& format, const std::string& from, const std::string& to) {
        const std::string file = files.file("t");
        EXPECT_EQ(
            call(as({"export", target(), "t", "--format", format, "--output", file, "--where", "n = 1"}))
                .status,
            0);
        std::string content = contentOf(file);
        const std::size_t place = content.find(from);
        EXPECT_NE(place, std::string::npos) << content;
        if (place == std::string::npos) return Outcome{};
        writeFile(file, content.replace(place, from.size(), to));
        return call(as({"import", target(), "t", "--format", format, "--input", file}));
    };
    for (const char* text : {"D050320", "D05030020", "D05032004x", "D32122003", "C05032004", "X05032004",
                             "D29022003", "D05031752", "", "C05032004140709x"}) {
        EXPECT_THAT(imported("extern", "1:100:D05032004", std::string("1:100:") + text).err,
                    HasSubstr("row 1, column tag: "))
            << text;
    }
    for (const char* text : {"T0130", "T013000x", "T-003000", "S013000", "", "T016100"}) {
        EXPECT_THAT(imported("extern", "1:100:T013000", std::string("1:100:") + text).err,
                    HasSubstr("row 1, column dauer: "))
            << text;
    }
    for (const char* text :
         {"'05.03.2004'", "'2004-3-5'", "'2004-03-05 '", "'2003-02-29'", "''", "'1752-12-31'", "'0004-03-05'",
          "20040305", "'2004-03-05x'", "'2004-03-05 14:07'", "'2004-03-05 24:00:00'", "'heute'"}) {
        EXPECT_THAT(imported("sql", "(1, '2004-03-05'", std::string("(1, ") + text).err,
                    HasSubstr("row 1, column tag: "))
            << text;
    }
    EXPECT_THAT(imported("sql", "'2004-03-05 14:07:09'", "'2004-03-05'").err,
                HasSubstr("row 1, column zeit"));
    EXPECT_THAT(imported("sql", ", 1800,", ", '1800',").err, HasSubstr("row 1, column dauer"));
    EXPECT_THAT(imported("sql", ", 1800,", ", 1800.5,").err, HasSubstr("row 1, column dauer"));
    EXPECT_THAT(imported("sql", ", 1800,", ", 2147483648,").err, HasSubstr("row 1, column dauer"));
    EXPECT_EQ(value("SELECT COUNT(*) FROM t"), "5");
}

TEST_P(Dates, WithATimeOfDayEndTheImportIntoAColumnOfDates) {
    fill();
    const std::string file = files.file("t");
    ASSERT_EQ(call({"export", target(), "t", "--columns", "n,zeit", "--as", "zeit=Date", "--format", "extern",
                    "--output", file, "--sort", "n"})
                  .status,
              0);
    execute("CREATE TABLE u (n INTEGER, zeit DATE)");
    execute("INSERT INTO u VALUES (100, '2004-03-05')");
    const Outcome outcome = call({"import", target(), "u", "--format", "extern", "--input", file});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("Neue Zeile 1, Spalte zeit: \"2004-03-05 14:07:09\" hat eine Uhrzeit, "
                                       "die Spalte nimmt nur ein Datum"));
    EXPECT_EQ(value("SELECT COUNT(*) FROM u"), "1");
}

INSTANTIATE_TEST_SUITE_P(Databases, Dates, testing::Values(CDatabase::sqlite, CDatabase::postgresql),
                         databaseName);

// From one database to the other
// ----------------------------------------------------------------------------------------------------------

namespace {

class DatesBetweenDatabases : public BetweenDatabases {};

}  // namespace

TEST_P(DatesBetweenDatabases, ComeOverAndBack) {
    if (PostgresServer::instance() == nullptr)
        GTEST_SKIP() << "PostgreSQL's server programs are not installed";
    const auto fill = [](CDatabase& db) {
        db.ExecuteSQL("CREATE TABLE t (n INTEGER, a DATE, b TIMESTAMP, c INTEGER)");
        db.ExecuteSQL(
            "INSERT INTO t VALUES (1, '2004-03-05', '2004-03-05 14:07:09.5', 1800), (2, '1753-01-01', "
            "'1753-01-01 00:00:00', -86400), (3, NULL, NULL, NULL), (4, '9999-12-31', '9999-12-31 23:59:59', "
            "0), (5, '2000-02-29', '2000-02-29', 20)");
    };
    expectToComeOverAndBack(GetParam(), fill, {"--as", "c=Time"}, "5 rows, 4 columns");
}

INSTANTIATE_TEST_SUITE_P(Each, DatesBetweenDatabases, eachWayBetweenDatabases(), nameOfWay);
