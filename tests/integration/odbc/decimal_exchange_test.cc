#include <string>
#include <vector>

#include "TestDatabase.h"
#include "nkdec/Decimal96.h"
#include "nkdt/NkDt.h"

using namespace nktest;

namespace {

// Decimals between columns of every kind and fields of text.
class DecimalExchange : public EachDatabase {
  protected:
    void makeTable(const std::string& type) {
        rs.Close();
        execute("DROP TABLE IF EXISTS t");
        execute("CREATE TABLE t (n INTEGER PRIMARY KEY, x " + type + ")");
    }
    void open() {
        rs.OpenTable("t", CDatabaseRecordset::updatable, nullptr, "n");
        rs.BindLong("n", number);
        rs.BindDecimal("x", field);
    }
    /// What the field holds after the next row was read, or state and text of the refusal.
    std::string next() {
        const Thrown thrown = thrownBy([&] { EXPECT_TRUE(rs.MoveNext()); });
        if (thrown.thrown) return thrown.state + " " + thrown.text;
        return rs.IsFieldNull(&field) ? "(null)" : std::string(field.View());
    }
    /// Writes a text as a new row's decimal; state and text of the refusal, or an empty text.
    std::string add(const std::string& text) {
        rs.AddNew();
        number = ++m_key;
        rs.SetFieldNull(&number, FALSE);
        field = text.c_str();
        rs.SetFieldNull(&field, FALSE);
        const Thrown thrown = thrownBy([&] { EXPECT_TRUE(rs.Update()); });
        if (!thrown.thrown) return "";
        rs.CancelUpdate();
        return thrown.state + " " + thrown.text;
    }
    /// Writes the text, and reads what the column has made of it.
    std::string written(const std::string& text) {
        open();
        const std::string refusal = add(text);
        if (!refusal.empty()) return refusal.substr(0, 5);
        open();
        std::string last;
        for (long key = 0; key != m_key && last.empty();) {
            const std::string value = next();
            key = number;
            if (key == m_key) last = value;
        }
        return last;
    }
    std::vector<std::string> decimalTypes() const {
        if (isPostgresql()) return {"NUMERIC(28,10)", "NUMERIC", "DOUBLE PRECISION", "TEXT"};
        return {"NUMERIC", "DECIMAL(10,2)", "REAL", "DECIMALTEXT(28,10)", "TEXT", "BLOB"};
    }
    /// Types whose columns hold 28 digits.
    std::vector<std::string> exactTypes() const {
        if (isPostgresql()) return {"NUMERIC(28,10)", "NUMERIC", "TEXT"};
        return {"DECIMALTEXT(28,10)", "DECIMALTEXT", "TEXT"};
    }

    CDatabaseRecordset rs{db};
    long number = 0;
    CString field;

  private:
    long m_key = 0;
};

}  // namespace

// Reading
// ----------------------------------------------------------------------------------------------------------

TEST_P(DecimalExchange, AmountsComeExactlyFromEveryKindOfColumn) {
    for (const std::string& type : decimalTypes()) {
        SCOPED_TRACE(type);
        makeTable(type);
        const std::vector<std::string> amounts{"99.50", "60.00",  "0.05",       "-0.01",   "0",
                                               "19.99", "-1e2",   "1234567.89", "0.30",    "1.1",
                                               "0.1",   "100000", "-0.10",      "33333.33"};
        for (std::size_t i = 0; i < amounts.size(); ++i)
            execute("INSERT INTO t VALUES (" + std::to_string(i) + ", '" + amounts[i] + "')");
        open();
        for (const std::string& amount : amounts) {
            const std::string text = next();
            NkDtDecimal value;
            value.SetFromRecordSet(rs, field);
            EXPECT_TRUE(value == NkDtDecimal(amount == "-1e2" ? "-100" : amount.c_str())) << text;
        }
    }
}

TEST_P(DecimalExchange, WholeNumbersOf64BitsComeExactly) {
    makeTable("BIGINT");
    execute("INSERT INTO t VALUES (1, 9223372036854775807), (2, -9223372036854775807), (3, 0), (4, NULL)");
    open();
    EXPECT_EQ(next(), "9223372036854775807");
    EXPECT_EQ(next(), "-9223372036854775807");
    EXPECT_EQ(next(), "0");
    EXPECT_EQ(next(), "(null)");
}

TEST_P(DecimalExchange, PlacesComeAsTheColumnHoldsThem) {
    makeTable(isPostgresql() ? "NUMERIC" : "DECIMALTEXT");
    execute("INSERT INTO t VALUES (1, '99.50'), (2, '60.00'), (3, '0.00'), (4, '7')");
    open();
    EXPECT_EQ(next(), "99.50");
    EXPECT_EQ(next(), "60.00");
    EXPECT_EQ(next(), "0.00");
    EXPECT_EQ(next(), "7");
}

TEST_P(DecimalExchange, TwentyEightDigitsComeExactly) {
    for (const std::string& type : exactTypes()) {
        SCOPED_TRACE(type);
        makeTable(type);
        execute(
            "INSERT INTO t VALUES (1, '123456789012345678.9012345678'), (2, "
            "'-999999999999999999.9999999999'), (3, '0.0000000001')");
        open();
        EXPECT_EQ(next(), "123456789012345678.9012345678");
        EXPECT_EQ(next(), "-999999999999999999.9999999999");
        EXPECT_EQ(next(), "0.0000000001");
    }
}

TEST_P(DecimalExchange, EveryWayToWriteANumberBecomesPlainText) {
    makeTable("TEXT");
    struct Case {
        const char* held;
        const char* read;
    };
    const std::vector<Case> cases{
        {"1.0e+20", "100000000000000000000"},
        {"1E-5", "0.00001"},
        {".5", "0.5"},
        {"5.", "5"},
        {"-.5", "-0.5"},
        {"+7", "7"},
        {"007.50", "7.50"},
        {"-0", "0"},
        {"-0.00", "0.00"},
        {"0e99", "0"},
        {"12.5e1", "125"},
        {"12.5e2", "1250"},
        {"12.5e-2", "0.125"},
        {"1.50e+01", "15.0"},
        {"100e-2", "1.00"},
        {"1e27", "1000000000000000000000000000"},
        {"1e-28", "0.0000000000000000000000000001"},
        {"9999999999999999999999999999", "9999999999999999999999999999"},
        {"-0.9999999999999999999999999999", "-0.9999999999999999999999999999"},
        {"1.50000000000000000000000000000000000000", "1.500000000000000000000000000"},
        {"12345678901234567890.00000000000000000000", "12345678901234567890.00000000"},
        {"0.00000000000000000000000000000000000000000000000", "0.0000000000000000000000000000"},
    };
    for (std::size_t i = 0; i < cases.size(); ++i)
        execute("INSERT INTO t VALUES (" + std::to_string(i) + ", '" + cases[i].held + "')");
    open();
    for (const Case& wanted : cases) {
        EXPECT_EQ(next(), wanted.read) << wanted.held;
        NkDtDecimal value;
        value.SetFromRecordSet(rs, field);
        EXPECT_STREQ(value.ConvToSQL().GetValue(), wanted.read);
    }
}

TEST_P(DecimalExchange, WhatIsNoDecimalIsRefusedWithItsPlace) {
    makeTable("TEXT");
    const std::vector<std::string> texts{"",    " ",  "-",   ".",    "abc",  "1,5",  "1.2.3",
                                         "--1", "1e", "1e+", "1e1.", "e5",   "0x1",  "NaN",
                                         "inf", " 1", "1 ",  "1-",   "$1.5", "1.5€", "1e+-1"};
    for (std::size_t i = 0; i < texts.size(); ++i)
        execute("INSERT INTO t VALUES (" + std::to_string(i) + ", '" + texts[i] + "')");
    open();
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(next(), "22018 Zeile " + std::to_string(i + 1) + ", Spalte x: \"" + texts[i] +
                              "\" ist keine Dezimalzahl");
        EXPECT_TRUE(rs.IsFieldNull(&field));
    }
}

TEST_P(DecimalExchange, WhatADecimalCannotHoldIsRefusedWithItsPlace) {
    makeTable("TEXT");
    const std::vector<std::string> texts{"10000000000000000000000000000",
                                         "-1e28",
                                         "1e300",
                                         "1e999999999999",
                                         "1e-29",
                                         "0.00000000000000000000000000001",
                                         "1.0000000000000000000000000001",
                                         "1" + std::string(60, '0') + "1",
                                         "0." + std::string(60, '3')};
    for (std::size_t i = 0; i < texts.size(); ++i)
        execute("INSERT INTO t VALUES (" + std::to_string(i) + ", '" + texts[i] + "')");
    open();
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const std::string refusal = next();
        EXPECT_EQ(refusal.substr(0, 6), "22003 ") << texts[i];
        EXPECT_NE(refusal.find("Zeile " + std::to_string(i + 1) + ", Spalte x: "), std::string::npos)
            << refusal;
        EXPECT_NE(refusal.find("mehr als 28 Ziffern oder Nachkommastellen"), std::string::npos) << refusal;
    }
}

// Writing
// ----------------------------------------------------------------------------------------------------------

TEST_P(DecimalExchange, TheTextsOfTheClassArriveAsNumbersInEveryKindOfColumn) {
    std::vector<std::string> types = decimalTypes();
    for (const char* whole : {"BIGINT", "INTEGER", "SMALLINT"})
        types.emplace_back(whole);
    for (const std::string& type : types) {
        SCOPED_TRACE(type);
        makeTable(type);
        for (const int given : {5, 0, -120}) {
            NkDtDecimal value(given);
            open();
            rs.AddNew();
            number = given;
            rs.SetFieldNull(&number, FALSE);
            value.ConvToRecordSet(rs, field);
            EXPECT_NE(field.View().find('.'), std::string_view::npos) << "the class writes places always";
            EXPECT_TRUE(rs.Update());
            EXPECT_EQ(value.GetValue(),
                      std::stod(this->value("SELECT x FROM t WHERE n = " + std::to_string(given))));
        }
        if (type == "BIGINT" || type == "TEXT") {
            EXPECT_EQ(this->value("SELECT x FROM t WHERE n = 5"), "5");
            EXPECT_EQ(this->value("SELECT x FROM t WHERE n = 0"), "0");
        }
        const std::string same = isPostgresql() && type == "TEXT" ? "x = '5'" : "x = 5";
        EXPECT_EQ(this->value("SELECT COUNT(*) FROM t WHERE " + same), type == "BLOB" ? "0" : "1");
    }
}

TEST_P(DecimalExchange, AmountsAreWrittenExactlyIntoEveryKindOfColumn) {
    for (const std::string& type : decimalTypes()) {
        SCOPED_TRACE(type);
        makeTable(type);
        for (const char* amount :
             {"99.50", "60.00", "0.05", "-0.01", "12345678.90", "0.3", "-0.0000000001"}) {
            const std::string read = written(amount);
            EXPECT_TRUE(NkDtDecimal(read.c_str()) == NkDtDecimal(amount)) << amount << " as " << read;
        }
    }
}

TEST_P(DecimalExchange, TwentyEightDigitsAreWrittenExactly) {
    for (const std::string& type : exactTypes()) {
        SCOPED_TRACE(type);
        makeTable(type);
        for (const char* text : {"123456789012345678.9012345678", "-999999999999999999.9999999999"}) {
            EXPECT_EQ(written(text), text);
        }
    }
}

TEST_P(DecimalExchange, AColumnOfWholeNumbersTakesNoPlacesAndNothingBeyondItsType) {
    makeTable("BIGINT");
    EXPECT_EQ(written("9223372036854775807"), "9223372036854775807");
    EXPECT_EQ(written("-9223372036854775808.0"), "-9223372036854775808");
    EXPECT_EQ(written("12.000"), "12");
    open();
    EXPECT_EQ(add("5.5"), "22003 Neue Zeile 1, Spalte x: \"5.5\" ist keine ganze Zahl");
    EXPECT_EQ(add("0.05").substr(0, 5), "22003");
    EXPECT_EQ(add("9223372036854775808").substr(0, 5), "22003");
    EXPECT_EQ(add("-9223372036854775809").substr(0, 5), "22003");
    EXPECT_EQ(add("100000000000000000000000").substr(0, 5), "22003");
    EXPECT_EQ(value("SELECT COUNT(*) FROM t"), "3");
}

TEST_P(DecimalExchange, WhatIsNoDecimalIsNotWritten) {
    makeTable("TEXT");
    open();
    EXPECT_EQ(add("zehn"), "22018 Neue Zeile 1, Spalte x: \"zehn\" ist keine Dezimalzahl");
    EXPECT_EQ(add("").substr(0, 5), "22018");
    EXPECT_EQ(add("1e1000000").substr(0, 5), "22003");
    EXPECT_EQ(add("1" + std::string(60, '0') + "1").substr(0, 5), "22003");
    EXPECT_EQ(value("SELECT COUNT(*) FROM t"), "0");
}

TEST_P(DecimalExchange, TheFieldHasRoomForEveryNumberOfTheClass) {
    makeTable(isPostgresql() ? "NUMERIC" : "DECIMALTEXT");
    for (const char* text : {"-9999999999999999999999999999", "-0.9999999999999999999999999999",
                             "-12345678901234.56789012345678"}) {
        open();
        const NkDtDecimal value{Decimal96(text)};
        rs.AddNew();
        number = static_cast<long>(value.GetPrecision());
        rs.SetFieldNull(&number, FALSE);
        value.ConvToRecordSet(rs, field);
        EXPECT_TRUE(rs.Update());
        EXPECT_EQ(this->value("SELECT x FROM t WHERE n = " + std::to_string(number)), text);
    }
}

TEST_P(DecimalExchange, AnEqualNumberIsNoChange) {
    makeTable(isPostgresql() ? "NUMERIC(9,2)" : "DECIMALTEXT");
    execute("INSERT INTO t VALUES (1, '99.50'), (2, '0')");
    open();
    for (const char* same : {"99.5", "0.00"}) {
        ASSERT_TRUE(rs.MoveNext());
        rs.Edit();
        field = same;
        EXPECT_FALSE(rs.Update());
    }
    rs.Edit();
    field = "0.01";
    EXPECT_TRUE(rs.Update());
    EXPECT_EQ(value("SELECT x FROM t WHERE n = 2"), "0.01");
}

TEST_P(DecimalExchange, ARowWithoutAKeyIsFoundByItsDecimals) {
    execute("CREATE TABLE k (a " + std::string(isPostgresql() ? "NUMERIC" : "NUMERIC(10,2)") +
            ", b BIGINT, c VARCHAR(9))");
    execute(
        "INSERT INTO k VALUES (99.5, 1, 'x'), (0.1 + 0.2, 2, 'x'), (123456789012345678, 3, 'x'), (1e20, 4, "
        "'x'), (-0.01, 9007199254740993, 'x')");
    rs.OpenTable("k", CDatabaseRecordset::updatable);
    CString text;
    rs.BindDecimal("a", field);
    rs.BindText("c", text);
    int changed = 0;
    while (rs.MoveNext()) {
        rs.Edit();
        text = "neu";
        EXPECT_TRUE(rs.Update());
        rs.Edit();
        field = "7.25";
        EXPECT_TRUE(rs.Update()) << "the row's new values find it again";
        ++changed;
    }
    EXPECT_EQ(changed, 5);
    EXPECT_EQ(value("SELECT COUNT(*) FROM k WHERE c = 'neu' AND a = 7.25"), "5");
}

INSTANTIATE_TEST_SUITE_P(Each, DecimalExchange, testing::Values(CDatabase::sqlite, CDatabase::postgresql),
                         databaseName);

// What one database does
// ----------------------------------------------------------------------------------------------------------

namespace {

class DecimalsOfSqlite : public DecimalExchange {};
class DecimalsOfPostgresql : public DecimalExchange {};

}  // namespace

TEST_P(DecimalsOfSqlite, ANumberThatTheColumnWouldRoundIsRefused) {
    for (const char* type : {"NUMERIC", "DECIMAL(28,10)", "REAL", "DOUBLE", "BOOLEAN"}) {
        SCOPED_TRACE(type);
        makeTable(type);
        EXPECT_EQ(written("123456789012.345"), "123456789012.345");
        EXPECT_EQ(written("1234567890123.456"), "22003");
        EXPECT_EQ(written("12345678901234567890"), "22003");
        EXPECT_EQ(written("123450000000000000000000.0"), "123450000000000000000000");
        EXPECT_EQ(written("0.000000000123456789012345"), "0.000000000123456789012345");
    }
    open();
    EXPECT_EQ(add("1234567890123.456"),
              "22003 Neue Zeile 1, Spalte x: Die Spalte behält von \"1234567890123.456\" nur 15 Ziffern");
}

TEST_P(DecimalsOfSqlite, AWholeNumberOf64BitsIsKeptByNumericAndNotByReal) {
    makeTable("NUMERIC");
    EXPECT_EQ(written("9007199254740993.0"), "9007199254740993");
    EXPECT_EQ(written("-9223372036854775808"), "-9223372036854775808");
    EXPECT_EQ(written("9223372036854775808"), "22003");
    makeTable("REAL");
    EXPECT_EQ(written("9007199254740993.0"), "22003");
}

TEST_P(DecimalsOfSqlite, ADoubleIsTheDecimalWithTheFewestDigitsThatReadsBack) {
    if (!extendedPrecisionWorks()) GTEST_SKIP() << "the processor's extended precision is missing";
    makeTable("NUMERIC");
    execute(
        "INSERT INTO t VALUES (1, 0.1 + 0.2), (2, 1.0 / 3), (3, 1e23), (4, 1234567890123456.7), (5, 1e20)");
    open();
    EXPECT_EQ(next(), "0.30000000000000004");
    EXPECT_EQ(next(), "0.3333333333333333");
    EXPECT_EQ(next(), "100000000000000000000000");
    EXPECT_EQ(next(), "1234567890123456.8");
    EXPECT_EQ(next(), "100000000000000000000");
}

TEST_P(DecimalsOfSqlite, AColumnOfDecimalTextsKeepsADoubleWhole) {
    makeTable("DECIMALTEXT");
    double weight = 0;
    const auto openDoubles = [&] {
        rs.OpenTable("t", CDatabaseRecordset::updatable);
        rs.BindLong("n", number);
        rs.BindDouble("x", weight);
    };
    openDoubles();
    rs.AddNew();
    number = 1;
    rs.SetFieldNull(&number, FALSE);
    weight = 0.1 + 0.2;
    rs.SetFieldNull(&weight, FALSE);
    EXPECT_TRUE(rs.Update());
    EXPECT_EQ(value("SELECT x FROM t"), "0.30000000000000004");
    openDoubles();
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_EQ(weight, 0.1 + 0.2);
}

TEST_P(DecimalsOfSqlite, TheDigitsOfATextAreNoDouble) {
    makeTable("DECIMALTEXT");
    execute("INSERT INTO t VALUES (1, '1.23456789012345678901234e5')");
    open();
    EXPECT_EQ(next(), "123456.789012345678901234");
}

TEST_P(DecimalsOfSqlite, AQueryTellsTheDigitsOfTheDriver) {
    makeTable("NUMERIC");
    execute("INSERT INTO t VALUES (1, 0.1 + 0.2)");
    rs.OpenQuery("SELECT x FROM t");
    rs.BindDecimal("x", field);
    EXPECT_EQ(next(), "0.3");
}

TEST_P(DecimalsOfPostgresql, ANumberThatTheColumnWouldRoundIsRefused) {
    makeTable("NUMERIC(9,2)");
    EXPECT_EQ(written("1234567.89"), "1234567.89");
    EXPECT_EQ(written("-0.0100"), "-0.01");
    EXPECT_EQ(written("9999999"), "9999999.00");
    open();
    EXPECT_EQ(add("1.005"),
              "22003 Neue Zeile 1, Spalte x: \"1.005\" hat mehr als die 2 Nachkommastellen der Spalte");
    EXPECT_EQ(add("10000000"),
              "22003 Neue Zeile 1, Spalte x: \"10000000\" hat mehr als die 7 Vorkommastellen der Spalte");
    EXPECT_EQ(add("9999999.999").substr(0, 5), "22003");
    EXPECT_EQ(value("SELECT COUNT(*) FROM t"), "3");
}

TEST_P(DecimalsOfPostgresql, AScaleBeyondThePrecisionOrBelowZeroCountsToo) {
    makeTable("NUMERIC(2,4)");
    EXPECT_EQ(written("0.0012"), "0.0012");
    EXPECT_EQ(written("0.01"), "22003");
    EXPECT_EQ(written("0.00123"), "22003");
    makeTable("NUMERIC(3,-2)");
    EXPECT_EQ(written("12300"), "12300");
    EXPECT_EQ(written("12310"), "22003");
    EXPECT_EQ(written("123400"), "22003");
    EXPECT_EQ(written("0"), "0");
}

TEST_P(DecimalsOfPostgresql, ANumericWithoutNumbersHoldsEverythingWithItsPlaces) {
    makeTable("NUMERIC");
    for (const char* text : {"99.50", "1234567890123456789012345678", "0.0000000000000000000000000001"})
        EXPECT_EQ(written(text), text);
    EXPECT_EQ(written("5.0"), "5");
    EXPECT_EQ(written("0.00"), "0");
}

TEST_P(DecimalsOfPostgresql, AFloatingNumberTakesTheDigitsThatItKeeps) {
    makeTable("REAL");
    EXPECT_EQ(written("1234.56"), "1234.56");
    EXPECT_EQ(written("1234.567"), "22003");
    makeTable("DOUBLE PRECISION");
    EXPECT_EQ(written("123456789012.345"), "123456789012.345");
    EXPECT_EQ(written("1234567890123.456"), "22003");
}

TEST_P(DecimalsOfPostgresql, TheNumbersOfAWholeTypeAreItsOwn) {
    makeTable("SMALLINT");
    EXPECT_EQ(written("-32768.0"), "-32768");
    EXPECT_EQ(written("32768"), "22003");
    makeTable("INTEGER");
    EXPECT_EQ(written("2147483647"), "2147483647");
    EXPECT_EQ(written("2147483648"), "22003");
}

INSTANTIATE_TEST_SUITE_P(Each, DecimalsOfSqlite, testing::Values(CDatabase::sqlite), databaseName);
INSTANTIATE_TEST_SUITE_P(Each, DecimalsOfPostgresql, testing::Values(CDatabase::postgresql), databaseName);
