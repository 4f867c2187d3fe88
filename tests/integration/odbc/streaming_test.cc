#include <atomic>
#include <fstream>

#include "TestDatabase.h"
#include "nkfw/Memory.h"
#include "support/Instruments.h"

namespace {

std::atomic<long> allocations{0};

bool countAllocation(std::size_t) noexcept {
    ++allocations;
    return true;
}

}  // namespace

using namespace nktest;

namespace {

class Streaming : public EachDatabase {
  protected:
    void TearDown() override { nkfw::setAllocationProbe(nullptr); }

    void openView(long count) {
        const std::string last = std::to_string(count);
        const std::string source =
            isPostgresql() ? "SELECT i FROM generate_series(1, " + last + ") AS g(i)"
                           : "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
                                 last + ") SELECT i FROM n";
        execute(
            "CREATE VIEW zeilen AS SELECT i AS nummer, i % 1000 AS rang, 'Müller ' || i AS name, "
            "SUBSTR('lange Bemerkung lange Bemerkung', 1, 1 + i % 31) AS bemerkung FROM (" +
            source + ") AS q");
        rs.OpenTable("zeilen");
        rs.BindLong("nummer", number);
        rs.BindText("name", name);
    }
    void openRows(long count) {
        openView(count);
        rs.BindShort("rang", rank);
        rs.BindText("bemerkung", remark);
    }

    /// The greatest memory that the process ever had, in kilobytes.
    static long peakKilobytes() {
        std::ifstream status("/proc/self/status");
        std::string word;
        long kilobytes = -1;
        while (status >> word) {
            if (word == "VmHWM:") status >> kilobytes;
        }
        return kilobytes;
    }

    CDatabaseRecordset rs{db};
    long number = 0;
    int rank = 0;
    CString name, remark;
};

TEST_P(Streaming, AMillionRowsNeedNoMoreMemoryThanAThousand) {
    const long count = isWatched() ? 200000 : 1000000;
    openView(count);
    long long sum = 0;
    long peakBefore = 0;
    while (rs.MoveNext()) {
        sum += number;
        if (rs.GetRowNumber() == 2500) peakBefore = peakKilobytes();
    }
    EXPECT_EQ(rs.GetRowNumber(), count);
    EXPECT_EQ(sum, static_cast<long long>(count) * (count + 1) / 2);
    EXPECT_EQ(name, ansi("Müller " + std::to_string(count)));
    if (!isWatched()) {
        EXPECT_GT(peakBefore, 0);
        EXPECT_LT(peakKilobytes() - peakBefore, 4096);
    }
}

TEST_P(Streaming, NoMemoryIsAllocatedPerRowOnceTheBuffersHaveGrown) {
    openRows(20000);
    nkfw::setAllocationProbe(countAllocation);
    allocations = 0;
    while (rs.GetRowNumber() < 10000)
        ASSERT_TRUE(rs.MoveNext());
    EXPECT_GT(allocations, 0) << "the counter counts";
    allocations = 0;
    while (rs.MoveNext() && rs.GetRowNumber() < 20000)
        continue;
    EXPECT_EQ(allocations, 0);
    EXPECT_EQ(number, 20000);
}

// Other work on the connection must not end the rows that are being read.
TEST_P(Streaming, RowsGoOnWhateverElseTheConnectionDoes) {
    openRows(5000);
    execute("CREATE TABLE ziel (a INTEGER PRIMARY KEY)");
    ASSERT_TRUE(rs.MoveNext());
    CDatabaseRecordset inner(db);
    inner.OpenTable("zeilen");
    long innerNumber = 0;
    inner.BindLong("nummer", innerNumber);
    while (rs.MoveNext()) {
        ASSERT_EQ(number, rs.GetRowNumber());
        ASSERT_TRUE(inner.MoveNext());
        ASSERT_EQ(innerNumber + 1, number);
        if (number % 1000 != 0) continue;
        EXPECT_EQ(db.GetColumns("zeilen").size(), 4U);
        EXPECT_EQ(db.GetTables().size(), 2U);
        CDatabaseTransaction transaction(db);
        db.ExecuteSQL(("INSERT INTO ziel VALUES (" + std::to_string(number) + ")").c_str());
        EXPECT_TRUE(thrownBy([&] { db.ExecuteSQL("INSERT INTO ziel VALUES (1000), (1000)"); }).thrown);
        transaction.Commit();
    }
    EXPECT_EQ(rs.GetRowNumber(), 5000);
    EXPECT_EQ(value("SELECT COUNT(*) FROM ziel"), "5");
}

// PostgreSQL ends its cursors with a rollback, which must not look like the end of the rows.
TEST_P(Streaming, ARollbackIsNeverMistakenForTheLastRow) {
    openRows(5000);
    execute("CREATE TABLE ziel (a INTEGER)");
    while (rs.GetRowNumber() < 1500)
        ASSERT_TRUE(rs.MoveNext());
    db.BeginTrans();
    db.ExecuteSQL("INSERT INTO ziel VALUES (1)");
    db.Rollback();
    const Thrown error = thrownBy([&] {
        while (rs.MoveNext())
            continue;
    });
    EXPECT_EQ(rs.IsEOF() != FALSE, rs.GetRowNumber() == 5000);
    EXPECT_EQ(error.thrown, rs.GetRowNumber() < 5000);
}

INSTANTIATE_TEST_SUITE_P(Each, Streaming, testing::Values(CDatabase::sqlite, CDatabase::postgresql),
                         databaseName);

}  // namespace
