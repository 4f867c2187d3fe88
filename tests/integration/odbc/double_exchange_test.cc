#include <cmath>
#include <string>
#include <vector>

#include "TestDatabase.h"

using namespace nktest;

namespace {

// Doubles between columns of every kind and fields of doubles.
class DoubleExchange : public EachDatabase {
  protected:
    void makeTable(const std::string& type) {
        rs.Close();
        execute("DROP TABLE IF EXISTS t");
        execute("CREATE TABLE t (n INTEGER PRIMARY KEY, x " + type + ")");
    }
    void open() {
        rs.OpenTable("t", CDatabaseRecordset::updatable);
        rs.BindLong("n", number);
        rs.BindDouble("x", field);
    }
    /// Writes a number as the table's only row; the refusal, or nothing.
    Thrown write(double value) {
        execute("DELETE FROM t");
        open();
        rs.AddNew();
        number = 1;
        rs.SetFieldNull(&number, FALSE);
        field = value;
        rs.SetFieldNull(&field, FALSE);
        return thrownBy([&] { EXPECT_TRUE(rs.Update()); });
    }
    /// What the column has made of the number.
    double written(double value) {
        const Thrown thrown = write(value);
        EXPECT_FALSE(thrown.thrown) << thrown.text;
        open();
        EXPECT_TRUE(rs.MoveNext());
        return field;
    }
    void expectRefused(double value, const std::string& part) {
        const Thrown thrown = write(value);
        EXPECT_EQ(thrown.state, "22003") << value;
        EXPECT_EQ(thrown.text.substr(0, 24), "Neue Zeile 1, Spalte x: ");
        EXPECT_NE(thrown.text.find(part), std::string::npos) << thrown.text;
        rs.Close();
        EXPECT_EQ(this->value("SELECT COUNT(*) FROM t"), "0");
    }

    CDatabaseRecordset rs{db};
    long number = 0;
    double field = 0;
};

class DoublesOfSqlite : public DoubleExchange {};
class DoublesOfPostgresql : public DoubleExchange {};

const std::vector<double> kNumbers = {0.0,  1.0 / 3, -2.5,   0.1 + 0.2, 16777217.0, 123456789012345680.0,
                                      1e20, 1e300,   5e-324, -1e-7};

}  // namespace

TEST_P(DoubleExchange, EveryDoubleComesBackFromAColumnOfDoublesAndOfTexts) {
    if (!isPostgresql() && !extendedPrecisionWorks()) GTEST_SKIP() << "no extended precision";
    for (const char* type : {"DOUBLE PRECISION", "TEXT"}) {
        SCOPED_TRACE(type);
        makeTable(type);
        for (const double value : kNumbers)
            EXPECT_EQ(written(value), value);
    }
}

TEST_P(DoubleExchange, WhatIsNoNumberIsNotWritten) {
    makeTable("DOUBLE PRECISION");
    expectRefused(INFINITY, "nicht speicherbar");
    expectRefused(NAN, "nicht speicherbar");
}

INSTANTIATE_TEST_SUITE_P(Each, DoubleExchange, testing::Values(CDatabase::sqlite, CDatabase::postgresql),
                         databaseName);

// What one database does
// ----------------------------------------------------------------------------------------------------------

TEST_P(DoublesOfSqlite, EveryColumnKeepsEveryDouble) {
    if (!extendedPrecisionWorks()) GTEST_SKIP() << "no extended precision";
    for (const char* type : {"REAL", "NUMERIC", "DECIMAL(10,2)", "INTEGER", "DECIMALTEXT", "BLOB"}) {
        SCOPED_TRACE(type);
        makeTable(type);
        for (const double value : kNumbers)
            EXPECT_EQ(written(value), value);
    }
}

TEST_P(DoublesOfPostgresql, ANumberThatThirtyTwoBitsDoNotTellIsRefused) {
    makeTable("REAL");
    for (const double value : {0.0, -2.5, 0.1, 0.33333334, 16777216.0, 1e20, 1.1754944e-38})
        EXPECT_EQ(written(value), value);
    expectRefused(1.0 / 3, "Die Spalte rundet \"0.3333333333333333\" auf \"0.33333334\"");
    expectRefused(16777217.0, "auf \"16777216\"");
    expectRefused(0.1 + 0.2, "Die Spalte rundet");
    expectRefused(1e300, "außerhalb der Gleitkommazahlen der Spalte");
    expectRefused(5e-324, "außerhalb der Gleitkommazahlen der Spalte");
}

TEST_P(DoublesOfPostgresql, ANumberOfMoreThanTheDeclaredDigitsIsRefused) {
    makeTable("NUMERIC(10,2)");
    for (const double value : {0.0, -2.5, 0.01, 99999999.99})
        EXPECT_EQ(written(value), value);
    expectRefused(0.125, "\"0.125\" hat mehr als die 2 Nachkommastellen der Spalte");
    expectRefused(0.1 + 0.2, "\"0.30000000000000004\" hat mehr als die 2 Nachkommastellen");
    expectRefused(1e8, "\"100000000\" hat mehr als die 8 Vorkommastellen");
    makeTable("NUMERIC");
    for (const double value : kNumbers)
        EXPECT_EQ(written(value), value);
}

INSTANTIATE_TEST_SUITE_P(Each, DoublesOfSqlite, testing::Values(CDatabase::sqlite), databaseName);
INSTANTIATE_TEST_SUITE_P(Each, DoublesOfPostgresql, testing::Values(CDatabase::postgresql), databaseName);
