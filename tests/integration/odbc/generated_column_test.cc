#include "TestDatabase.h"

using namespace nktest;

namespace {

// A table without a key, whose column "doppelt" the database computes.
class GeneratedColumns : public EachDatabase {
  protected:
    void SetUp() override {
        EachDatabase::SetUp();
        if (IsSkipped()) return;
        execute(
            "CREATE TABLE t (anzahl INTEGER, doppelt INTEGER GENERATED ALWAYS AS (anzahl * 2) STORED, name "
            "TEXT)");
        execute("INSERT INTO t (anzahl, name) VALUES (4, 'x')");
        rs.OpenTable("t", CDatabaseRecordset::updatable);
        rs.BindLong("anzahl", count);
        rs.BindLong("doppelt", twice);
    }
    void set(long& field, long value) {
        field = value;
        rs.SetFieldNull(&field, FALSE);
    }

    CDatabaseRecordset rs{db};
    long count = 0;
    long twice = 0;
};

}  // namespace

TEST_P(GeneratedColumns, AreReadLikeOthers) {
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_EQ(twice, 8);
}

TEST_P(GeneratedColumns, AreLeftToTheDatabaseInANewRow) {
    rs.AddNew();
    set(count, 5);
    EXPECT_TRUE(rs.Update());
    EXPECT_EQ(value("SELECT doppelt FROM t WHERE anzahl = 5"), "10");
    rs.AddNew();
    set(count, 6);
    set(twice, 12);
    const Thrown error = thrownBy([&] { rs.Update(); });
    EXPECT_EQ(error.state, "428C9");
    EXPECT_EQ(error.text, "Neue Zeile 2, Spalte doppelt: die Datenbank berechnet den Wert selbst");
    EXPECT_EQ(value("SELECT COUNT(*) FROM t"), "2");
}

TEST_P(GeneratedColumns, RefuseAChangeAndNoOtherColumnsChange) {
    ASSERT_TRUE(rs.MoveNext());
    rs.Edit();
    set(count, 7);
    EXPECT_TRUE(rs.Update());
    EXPECT_EQ(value("SELECT doppelt FROM t"), "14");
    rs.Edit();
    set(count, 8);
    EXPECT_TRUE(rs.Update()) << "the row is found again, whatever became of the generated value";
    EXPECT_EQ(value("SELECT doppelt FROM t"), "16");
    rs.Edit();
    set(count, 9);
    set(twice, 1);
    EXPECT_EQ(thrownBy([&] { rs.Update(); }).text,
              "Zeile 1, Spalte doppelt: die Datenbank berechnet den Wert selbst");
    EXPECT_EQ(value("SELECT anzahl FROM t"), "8");
}

INSTANTIATE_TEST_SUITE_P(Each, GeneratedColumns, testing::Values(CDatabase::sqlite, CDatabase::postgresql),
                         databaseName);
