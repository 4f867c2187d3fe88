#include <cstdint>
#include <limits>
#include <tuple>

#include "AppTest.h"
#include "ExactTotal.h"
#include "RoundTrip.h"
#include "nkdec/Decimal96.h"
#include "nkdt/NkDtDecimal.h"
#include "nkdt/NkDtDouble.h"

using namespace nktest;

namespace {

using nkdt::app::Arrival;
using nkdt::app::ExactTotal;
using nkdt::app::Representation;

/// The roads that did not bring the value back, with how they ended: "text: lost".
template <class Value>
std::vector<std::string> troubles(const char* className, const Value& value) {
    const nkdt::app::ColumnKind* const kind = nkdt::app::findKind(className);
    const auto from = kind->makeCell();
    const auto back = kind->makeCell();
    std::vector<std::string> names;
    for (const auto& road : nkdt::app::roadsOf(*kind)) {
        from->value().Assign(value);
        const Arrival arrival = nkdt::app::travel(road, *from, *back);
        if (arrival.outcome == Arrival::notRepresentable) names.emplace_back(road.name);
        if (arrival.outcome == Arrival::lost) names.push_back(road.name + (" lost it: " + arrival.reason));
    }
    return names;
}

std::vector<std::string> decimalTroubles(const char* text) {
    return troubles("NkDtDecimal", NkDtDecimal(Decimal96(text)));
}

std::vector<std::string> doubleTroubles(double number) {
    return troubles("NkDtDouble", NkDtDouble(number));
}

using Names = std::vector<std::string>;

/// A table of decimals and doubles in each database.
class Numbers : public EachDatabase {
  protected:
    void SetUp() override {
        EachDatabase::SetUp();
        if (IsSkipped()) return;
        execute("CREATE TABLE t (n INTEGER PRIMARY KEY, preis " +
                std::string(isPostgresql() ? "NUMERIC(28,10)" : "DECIMALTEXT(28,10)") +
                ", betrag NUMERIC(15,2), stand BIGINT, gewicht DOUBLE PRECISION)");
    }
    void fill() {
        execute(
            "INSERT INTO t VALUES (1, '123456789012345678.9012345678', 99.50, 9223372036854775807, 0.25), "
            "(2, '-0.0000000001', -0.01, -9007199254740993, -1e20), (3, NULL, NULL, NULL, NULL), (4, '0', 0, "
            "0, 0), (5, '60.00', 1234567.89, 5, 1.5)");
    }

    TemporaryFolder files;
};

}  // namespace

// The roads
// ----------------------------------------------------------------------------------------------------------

TEST(RoadsOfDecimals, BringEveryUsualNumberBack) {
    for (const char* text : {"0", "0.00", "5", "-5", "99.50", "0.05", "-0.01", "1234567.89", "100",
                             "18446744073709551615", "-1844674407370955161.5", "9223372036854775807"}) {
        EXPECT_EQ(decimalTroubles(text), Names()) << text;
    }
    EXPECT_EQ(troubles("NkDtDecimal", NkDtDecimal(NkDtWmNull)), Names());
}

TEST(RoadsOfDecimals, StateThatARecordHas64Bits) {
    for (const char* text : {"18446744073709551616", "-18446744073709551616", "1.8446744073709551617",
                             "9999999999999999999999999999", "-12345678901234567.8901234567"}) {
        EXPECT_EQ(decimalTroubles(text), Names{"DEC record"}) << text;
    }
}

TEST(RoadsOfDecimals, StateThatReadingTakes28Digits) {
    const Names wanted{"text", "SQL literal", "recordset field", "DEC record"};
    EXPECT_EQ(decimalTroubles("10000000000000000000000000000"), wanted);
    EXPECT_EQ(decimalTroubles("-39614081257132168796771975167"), wanted);
    EXPECT_EQ(decimalTroubles("3.9614081257132168796771975167"), wanted);
    EXPECT_EQ(decimalTroubles("0.0000000000000000000000000001"), Names());
    EXPECT_EQ(decimalTroubles("-0.000000000000000000000000001"), Names());
    EXPECT_EQ(decimalTroubles("-0.0000000000000000000000000001"), (Names{"text", "SQL literal"}))
        << "behind a sign the zero before the point counts";
}

TEST(RoadsOfDoubles, StateWhichDigitsAreMissing) {
    for (const double number : {0.0, 1.0, -2.5, 0.25, 99.99, 1e15, 1e20, -123456789.01})
        EXPECT_EQ(doubleTroubles(number), Names()) << number;
    EXPECT_EQ(doubleTroubles(0.125), (Names{"user-interface text", "edit control"}));
    EXPECT_EQ(doubleTroubles(1.5e-7), (Names{"user-interface text", "edit control"}));
    EXPECT_EQ(doubleTroubles(1.0 / 3), (Names{"text", "user-interface text", "SQL literal", "edit control"}));
    EXPECT_EQ(doubleTroubles(0.1 + 0.2),
              (Names{"text", "user-interface text", "SQL literal", "external text", "edit control"}));
    EXPECT_EQ(doubleTroubles(9007199254740993.0 * 3), (Names{"text", "SQL literal", "external text"}));
    EXPECT_EQ(doubleTroubles(std::numeric_limits<double>::max()),
              (Names{"text", "SQL literal", "external text"}));
    EXPECT_EQ(troubles("NkDtDouble", NkDtDouble(NkDtWmNull)), Names());
}

// Totals
// ----------------------------------------------------------------------------------------------------------

TEST(ExactTotals, KeepEveryDigit) {
    const auto sum = [](const std::vector<const char*>& numbers) {
        ExactTotal total;
        for (const char* number : numbers)
            total.add(number);
        return total.isKnown() ? total.text() : "unknown";
    };
    EXPECT_EQ(sum({}), "0");
    EXPECT_EQ(sum({"0.10", "0.20"}), "0.3");
    EXPECT_EQ(sum({"0.75", "0.75", "-2"}), "-0.5");
    EXPECT_EQ(sum({"5", "-5.3"}), "-0.3");
    EXPECT_EQ(sum({"-5", "5.3"}), "0.3");
    EXPECT_EQ(sum({"5", "-0.3"}), "4.7");
    EXPECT_EQ(sum({"-5", "0.3"}), "-4.7");
    EXPECT_EQ(sum({"1", "-0.5", "-0.5"}), "0");
    EXPECT_EQ(sum({"9999999999999999999999999999", "0.0000000000000000000000000001"}),
              "9999999999999999999999999999.0000000000000000000000000001");
    EXPECT_EQ(sum({"9999999999999999999999999999", "-0.0000000000000000000000000001"}),
              "9999999999999999999999999998.9999999999999999999999999999");
    EXPECT_EQ(
        sum({"9999999999999999999999999999", "9999999999999999999999999999", "9999999999999999999999999999"}),
        "29999999999999999999999999997");
    EXPECT_EQ(sum({"9999999999999999999999999999", "9999999999999999999999999999",
                   "9999999999999999999999999999", "9999999999999999999999999999", "-1"}),
              "39999999999999999999999999995");
}

TEST(ExactTotals, DoNotDependOnTheOrder) {
    std::vector<std::string> numbers(100, "9999999999999999999999999999");
    numbers.insert(numbers.end(), 100, "-9999999999999999999999999999");
    numbers.insert(numbers.end(), 100, "0.9999999999999999999999999999");
    numbers.insert(numbers.end(), 99, "-0.9999999999999999999999999999");
    ExactTotal forwards;
    ExactTotal backwards;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        forwards.add(numbers[i]);
        backwards.add(numbers[numbers.size() - 1 - i]);
    }
    EXPECT_EQ(forwards.text(), "0.9999999999999999999999999999");
    EXPECT_EQ(backwards.text(), "0.9999999999999999999999999999");
}

TEST(ExactTotals, AreUnknownWhenTheyAreTooLargeOrOfNoDecimal) {
    const auto isKnown = [](const std::vector<const char*>& numbers) {
        ExactTotal total;
        for (const char* number : numbers)
            total.add(number);
        return total.isKnown();
    };
    EXPECT_TRUE(isKnown({"170141183460469231731687303715884105727"}));
    EXPECT_TRUE(
        isKnown({"-170141183460469231731687303715884105728", "170141183460469231731687303715884105727"}));
    EXPECT_FALSE(isKnown({"170141183460469231731687303715884105728"}));
    EXPECT_FALSE(isKnown({"170141183460469231731687303715884105727", "0.5", "0.5"}));
    EXPECT_FALSE(isKnown({"170141183460469231731687303715884105727", "1", "-1"}));  // it stays so
    for (const char* text : {"", "-", ".5", "1,5", "abc", "1e5", "0.00000000000000000000000000001"})
        EXPECT_FALSE(isKnown({text})) << text;
}

TEST_P(Numbers, HaveTheirTotalUnderTheCheck) {
    fill();
    const Outcome outcome = call({"check", target(), "t"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("Total: column preis, 123.456.789.012.345.738,9012345677\n"));
    EXPECT_THAT(outcome.out, HasSubstr("Total: column betrag, 1.234.667,38\n"));
    EXPECT_THAT(outcome.out, HasSubstr("Total: column stand, 9.214.364.837.600.034.819,00\n"));
    EXPECT_THAT(outcome.out, Not(HasSubstr("column gewicht")));
    EXPECT_THAT(outcome.out, HasSubstr("Not representable: column preis, 1 value as DEC record: "));
    const Outcome plain = call({"check", target(), "t", "--format", "plain"});
    EXPECT_THAT(plain.out, HasSubstr("Total: column betrag, 1234667.38\n"));
    EXPECT_EQ(call({"check", target(), "t", "--format", "schoen"}).status, 2);
}

TEST_P(Numbers, HaveATotalBeyondTheDigitsOfOne) {
    execute("CREATE TABLE u (x " + std::string(isPostgresql() ? "NUMERIC" : "DECIMALTEXT") + ")");
    for (int i = 0; i < 4; ++i)
        execute("INSERT INTO u VALUES ('9999999999999999999999999999')");
    const Outcome outcome = call({"check", target(), "u"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("Total: column x, 39.999.999.999.999.999.999.999.999.996,00\n"));
}

// The commands
// ----------------------------------------------------------------------------------------------------------

TEST_P(Numbers, LookAlikeWhateverTheColumnHolds) {
    fill();
    const Outcome outcome = call({"show", target(), "t", "--sort", "n"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.err, IsEmpty());
    EXPECT_THAT(outcome.out, HasSubstr(" 123.456.789.012.345.678,9012345678         99,50  "
                                       "9.223.372.036.854.775.807,00"));
    EXPECT_THAT(outcome.out, HasSubstr(isPostgresql() ? " 60,0000000000 " : " 60,00 "));
    EXPECT_THAT(outcome.out, HasSubstr(" 1.234.567,89 "));
    EXPECT_THAT(outcome.out, HasSubstr("-9.007.199.254.740.993,00"));
    EXPECT_THAT(outcome.out, HasSubstr("-100.000.000.000.000.000.000\n"));
    const Outcome plain = call({"show", target(), "t", "--sort", "n", "--format", "plain"});
    EXPECT_THAT(plain.out, HasSubstr("  9223372036854775807  "));
    EXPECT_THAT(plain.out, HasSubstr("  1234567.89  "));
}

TEST_P(Numbers, TellWhichOnesTheCheckCannotRead) {
    if (isPostgresql()) {
        execute("INSERT INTO t (n, gewicht) VALUES (1, 'NaN')");
        execute("INSERT INTO t (n, preis) VALUES (2, 'NaN')");
    } else {
        execute("INSERT INTO t (n, gewicht) VALUES (1, 'schwer')");
        execute("INSERT INTO t (n, preis) VALUES (2, '1,50')");
    }
    const Outcome outcome = call({"check", target(), "t"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("nkdt: Zeile 1, Spalte gewicht: "));
    EXPECT_THAT(outcome.err, HasSubstr("nkdt: Zeile 2, Spalte preis: "));
    EXPECT_THAT(outcome.err, HasSubstr(" ist keine Dezimalzahl"));
    EXPECT_THAT(outcome.out, HasSubstr("Total: column preis, 0,00 without 1 value that cannot be read\n"));
    EXPECT_THAT(outcome.out, HasSubstr("Total: column betrag, 0,00\n"));
}

TEST_P(Numbers, ThatAColumnWouldRoundEndTheImport) {
    fill();
    const std::string file = files.file("t");
    ASSERT_EQ(call({"export", target(), "t", "--format", "extern", "--output", file}).status, 0);
    execute(
        "CREATE TABLE u (n INTEGER, preis NUMERIC(15,2), betrag NUMERIC(15,2), stand BIGINT, gewicht "
        "DOUBLE PRECISION)");
    const Outcome outcome = call({"import", target(), "u", "--format", "extern", "--input", file});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("Neue Zeile 1, Spalte preis: "));
    EXPECT_EQ(value("SELECT COUNT(*) FROM u"), "0");
}

TEST_P(Numbers, AreRefusedWhereAFileHoldsNone) {
    fill();
    const auto imported = [&](const std::string& format, const std::string& from, const std::string& to) {
        const std::string file = files.file("t");
        EXPECT_EQ(
            call({"export", target(), "t", "--format", format, "--output", file, "--where", "n = 5"}).status,
            0);
        std::string content = contentOf(file);
        const std::size_t place = content.find(from);
        EXPECT_NE(place, std::string::npos) << content;
        if (place == std::string::npos) return Outcome{};
        writeFile(file, content.replace(place, from.size(), to));
        return call({"import", target(), "t", "--format", format, "--input", file});
    };
    EXPECT_THAT(imported("extern", "1:100:1.23456789E+006", "1:100:1.23456789").err,
                HasSubstr("row 1, column betrag"));
    EXPECT_THAT(imported("extern", "1:100:1.5\n", "1:100:1,5\n").err,
                HasSubstr("row 1, column gewicht: \"1,5\" is no number"));
    EXPECT_THAT(imported("extern", "1:100:1.5\n", "1:100:\n").err, HasSubstr("row 1, column gewicht"));
    EXPECT_THAT(imported("sql", ", 1.5)", ", 1.5E)").err, HasSubstr("row 1, column gewicht"));
    EXPECT_THAT(imported("sql", ", 1.5)", ", '1.5')").err, HasSubstr("row 1, column gewicht"));
    EXPECT_THAT(imported("sql", ", 1.5)", ", 1e999)").err, HasSubstr("row 1, column gewicht"));
    EXPECT_THAT(imported("sql", "1234567.89", "1234.567.89").err, HasSubstr("row 1, column betrag"));
    EXPECT_EQ(value("SELECT COUNT(*) FROM t"), "5");
}

TEST_P(Numbers, AreTheSameWithMoreOrFewerZerosBehind) {
    fill();
    execute("CREATE TABLE u (n INTEGER PRIMARY KEY, preis " +
            std::string(isPostgresql() ? "NUMERIC" : "DECIMALTEXT") +
            ", betrag NUMERIC(20,5), stand NUMERIC(28,3), gewicht DOUBLE PRECISION)");
    execute("INSERT INTO u SELECT n, preis, betrag, stand, gewicht FROM t");
    const Arguments arguments{"compare", target(), "t", target(), "u", "--sort", "n"};
    EXPECT_EQ(call(arguments).status, 0) << call(arguments).err;
    execute("UPDATE u SET betrag = 99.51 WHERE n = 1");
    EXPECT_THAT(call(arguments).err,
                HasSubstr("row 1, column betrag: \"9.95E+001\" in the first table, \"9.951E+001\""));
}

INSTANTIATE_TEST_SUITE_P(Databases, Numbers, testing::Values(CDatabase::sqlite, CDatabase::postgresql),
                         databaseName);

// From one database to the other
// ----------------------------------------------------------------------------------------------------------

namespace {

class NumbersBetweenDatabases : public BetweenDatabases {};

}  // namespace

TEST_P(NumbersBetweenDatabases, ComeOverAndBack) {
    if (PostgresServer::instance() == nullptr)
        GTEST_SKIP() << "PostgreSQL's server programs are not installed";
    const bool fromSqlite = std::get<1>(GetParam());
    const auto fill = [fromSqlite](CDatabase& db) {
        db.ExecuteSQL(
            fromSqlite ? "CREATE TABLE t (n INTEGER, a DECIMALTEXT(28,10), b NUMERIC(10,2), c BIGINT, d REAL)"
                       : "CREATE TABLE t (n INTEGER, a NUMERIC(28,10), b NUMERIC(10,2), c BIGINT, d FLOAT)");
        db.ExecuteSQL(
            "INSERT INTO t VALUES (1, '-123456789012345678.9012345678', 99.50, 9223372036854775807, 0.1), "
            "(2, '5', 60.00, -9223372036854775807, -1e300), (3, NULL, NULL, NULL, NULL), "
            "(4, '0.0000000001', -0.01, 0, 1.5e-7), (5, '0', 0, 5, 12345.678901234)");
    };
    expectToComeOverAndBack(GetParam(), fill, {}, "5 rows, 5 columns");
}

INSTANTIATE_TEST_SUITE_P(Each, NumbersBetweenDatabases, eachWayBetweenDatabases(), nameOfWay);
