#include <chrono>

#include "TestDatabase.h"

using namespace nktest;

namespace {

class Locks : public EachDatabase {};

TEST_P(Locks, ALockedTableIsWaitedForNoLongerThanFiveSeconds) {
    db.ExecuteSQL("CREATE TABLE t (a INTEGER)");
    db.ExecuteSQL("INSERT INTO t VALUES (1)");
    CDatabase other;
    other.Open(target().c_str());
    db.BeginTrans();
    db.ExecuteSQL("UPDATE t SET a = 2");
    const auto start = std::chrono::steady_clock::now();
    const Thrown error = thrownBy([&] { other.ExecuteSQL("UPDATE t SET a = 3"); });
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(error.state, isPostgresql() ? "55P03" : "HY000");
    if (!isPostgresql()) {
        EXPECT_EQ(error.nativeError, 5);
    }
    EXPECT_GE(waited, std::chrono::seconds(4)) << "but it is waited for";
    EXPECT_LE(waited, std::chrono::seconds(7));
    db.CommitTrans();
    EXPECT_EQ(other.ExecuteSQL("UPDATE t SET a = 3"), 1);
}

TEST_P(Locks, ALockIsReleasedBehindTheLastRow) {
    db.ExecuteSQL("CREATE TABLE t (a INTEGER)");
    db.ExecuteSQL("INSERT INTO t VALUES (1), (2)");
    CDatabaseRecordset rs(db);
    rs.OpenTable("t");
    while (rs.MoveNext())
        continue;
    CDatabase other;
    other.Open(target().c_str());
    other.ExecuteSQL("DROP TABLE t");
    EXPECT_FALSE(other.HasTable("t"));
}

TEST_P(Locks, ClosingARecordsetReleasesItsLock) {
    db.ExecuteSQL("CREATE TABLE t (a INTEGER)");
    db.ExecuteSQL("INSERT INTO t VALUES (1), (2)");
    CDatabaseRecordset rs(db);
    rs.OpenTable("t");
    ASSERT_TRUE(rs.MoveNext());
    rs.Close();
    CDatabase other;
    other.Open(target().c_str());
    other.ExecuteSQL("DROP TABLE t");
    EXPECT_FALSE(other.HasTable("t"));
}

INSTANTIATE_TEST_SUITE_P(Each, Locks, testing::Values(CDatabase::sqlite, CDatabase::postgresql),
                         databaseName);

TEST(SqliteTimeout, ALongerWaitThanFiveSecondsIsCutDown) {
    TemporaryFolder folder;
    CDatabase db;
    const std::string path = folder.file("t.db");
    db.Open(path.c_str(), CDatabase::createMissing);
    db.ExecuteSQL("CREATE TABLE t (a INTEGER)");
    CDatabase other;
    other.Open(("Driver=SQLite3;Timeout=100;Database=" + path).c_str());
    db.BeginTrans();
    db.ExecuteSQL("INSERT INTO t VALUES (1)");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(thrownBy([&] { other.ExecuteSQL("INSERT INTO t VALUES (2)"); }).nativeError, 5);
    EXPECT_LE(std::chrono::steady_clock::now() - start, std::chrono::seconds(3)) << "a shorter wait is kept";
    other.Open(("Driver=SQLite3;Timeout=1000000;Database=" + path).c_str());
    EXPECT_EQ(thrownBy([&] { other.ExecuteSQL("INSERT INTO t VALUES (2)"); }).nativeError, 5);
    EXPECT_LE(std::chrono::steady_clock::now() - start, std::chrono::seconds(9));
    db.Rollback();
}

}  // namespace
