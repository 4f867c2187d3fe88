#include "TestDatabase.h"

using namespace nktest;

namespace {

// A table of rows that fill many pages.
void fill(CDatabase& db, int rows, const char* numbers) {
    db.ExecuteSQL("CREATE TABLE t (a INTEGER, b TEXT)");
    db.ExecuteSQL(("INSERT INTO t SELECT i, '" + std::string(500, 'x') + "' FROM " + numbers).c_str());
    CDatabaseRecordset rs(db);
    rs.OpenQuery("SELECT COUNT(*) AS n FROM t");
    long n = 0;
    rs.BindLong("n", n);
    ASSERT_TRUE(rs.MoveNext());
    ASSERT_EQ(n, rows);
}

class VanishingFile : public testing::Test {
  protected:
    void SetUp() override {
        db.Open(path.c_str(), CDatabase::createMissing);
        fill(db, 20000,
             "(WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000) SELECT i FROM "
             "n)");
        db.Open(path.c_str());
        rs.OpenTable("t");
        rs.BindLong("a", a);
        rs.BindText("b", b);
    }
    Thrown readToTheEnd() {
        return thrownBy([&] {
            while (rs.MoveNext())
                continue;
        });
    }

    TemporaryFolder folder;
    const std::string path = folder.file("test.db");
    CDatabase db;
    CDatabaseRecordset rs{db};
    long a = 0;
    CString b;
};

TEST_F(VanishingFile, AFileCutOffWhileItIsReadIsAnErrorWithItsRow) {
    ASSERT_TRUE(rs.MoveNext());
    std::filesystem::resize_file(path, 4096 * 20);
    const Thrown error = readToTheEnd();
    ASSERT_TRUE(error.thrown);
    EXPECT_NE(error.nativeError, 0);
    EXPECT_EQ(error.text.substr(0, 6), "Zeile ");
    EXPECT_GT(rs.GetRowNumber(), 1);
    EXPECT_LT(rs.GetRowNumber(), 20000);
    EXPECT_FALSE(rs.IsEOF()) << "that is not the end of the table";
    EXPECT_EQ(thrownBy([&] { rs.MoveNext(); }).state, "24000");
}

TEST_F(VanishingFile, AFileThatIsEmptiedWhileItIsReadIsAnError) {
    ASSERT_TRUE(rs.MoveNext());
    std::filesystem::resize_file(path, 0);
    EXPECT_TRUE(readToTheEnd().thrown);
    EXPECT_FALSE(rs.IsEOF());
}

TEST_F(VanishingFile, ADamagedPageIsAnError) {
    std::FILE* file = std::fopen(path.c_str(), "r+b");
    ASSERT_NE(file, nullptr);
    ASSERT_EQ(std::fseek(file, 4096 * 900, SEEK_SET), 0);
    const std::string rubbish(4096, '\xA5');
    ASSERT_EQ(std::fwrite(rubbish.data(), 1, rubbish.size(), file), rubbish.size());
    std::fclose(file);
    const Thrown error = readToTheEnd();
    EXPECT_EQ(error.nativeError, 11) << error.text;
    EXPECT_LT(rs.GetRowNumber(), 20000);
}

class VanishingServer : public testing::Test {
  protected:
    void SetUp() override {
        if (PostgresServer::instance() == nullptr)
            GTEST_SKIP() << "PostgreSQL's server programs are not installed";
        db.Open(PostgresServer::instance()->connectionString().c_str());
        db.ExecuteSQL("DROP SCHEMA public CASCADE; CREATE SCHEMA public");
        fill(db, 5000, "generate_series(1, 5000) AS g(i)");
    }
    void terminateBackend() {
        CDatabaseRecordset id(db);
        id.OpenQuery("SELECT pg_backend_pid() AS pid");
        long pid = 0;
        id.BindLong("pid", pid);
        ASSERT_TRUE(id.MoveNext());
        id.Close();
        CDatabase other;
        other.Open(PostgresServer::instance()->connectionString().c_str());
        CDatabaseRecordset kill(other);
        kill.OpenQuery(("SELECT pg_terminate_backend(" + std::to_string(pid) + ", 5000) AS t").c_str());
        CString killed;
        kill.BindText("t", killed);
        ASSERT_TRUE(kill.MoveNext());
        ASSERT_EQ(killed, "1");
    }

    CDatabase db;
};

TEST_F(VanishingServer, ABackendThatIsTerminatedWhileRowsAreReadIsAnError) {
    CDatabaseRecordset rs(db);
    rs.OpenTable("t");
    long a = 0;
    rs.BindLong("a", a);
    ASSERT_TRUE(rs.MoveNext());
    terminateBackend();
    const Thrown error = thrownBy([&] {
        while (rs.MoveNext())
            continue;
    });
    ASSERT_TRUE(error.thrown);
    EXPECT_TRUE(error.state == "57P01" || error.state.substr(0, 2) == "08")
        << error.state << " " << error.text;
    EXPECT_LT(rs.GetRowNumber(), 5000);
    EXPECT_FALSE(rs.IsEOF());
    EXPECT_EQ(thrownBy([&] { rs.MoveNext(); }).state, "24000");
    EXPECT_TRUE(thrownBy([&] { db.ExecuteSQL("SELECT 1"); }).thrown);
    db.Open(PostgresServer::instance()->connectionString().c_str());
    EXPECT_TRUE(db.HasTable("t")) << "and the database can be opened again";
}

TEST_F(VanishingServer, ATransactionWhoseBackendIsTerminatedIsNotCommitted) {
    {
        CDatabaseTransaction transaction(db);
        db.ExecuteSQL("DELETE FROM t");
        terminateBackend();
        EXPECT_TRUE(thrownBy([&] { transaction.Commit(); }).thrown);
    }
    EXPECT_FALSE(db.IsInTransaction());
    db.Open(PostgresServer::instance()->connectionString().c_str());
    CDatabaseRecordset rs(db);
    rs.OpenQuery("SELECT COUNT(*) AS n FROM t");
    long n = 0;
    rs.BindLong("n", n);
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_EQ(n, 5000);
}

// SQLite texts need not be UTF-8.
TEST(BrokenText, BytesThatAreNoUtf8NameRowAndColumn) {
    TemporaryFolder folder;
    CDatabase db;
    db.Open(folder.file("test.db").c_str(), CDatabase::createMissing);
    db.ExecuteSQL("CREATE TABLE t (a TEXT)");
    db.ExecuteSQL("INSERT INTO t VALUES ('gut'), (CAST(x'41FC42' AS TEXT))");
    for (const BOOL bestFit : {FALSE, TRUE}) {
        CDatabaseRecordset rs(db);
        rs.SetBestFit(bestFit);
        rs.OpenTable("t");
        CString a;
        rs.BindText("a", a);
        ASSERT_TRUE(rs.MoveNext());
        const Thrown error = thrownBy([&] { rs.MoveNext(); });
        EXPECT_EQ(error.state, "22021");
        EXPECT_EQ(error.text, "Zeile 2, Spalte a: Byte 2 ist kein gültiges UTF-8");
    }
}

}  // namespace
