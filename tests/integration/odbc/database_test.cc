#include <dlfcn.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>

#include "TestDatabase.h"

using namespace nktest;

namespace {

class Database : public EachDatabase {};

TEST_P(Database, TheKindOfDatabaseIsKnown) {
    EXPECT_TRUE(db.IsOpen());
    EXPECT_EQ(db.GetDbms(), GetParam());
    db.Close();
    EXPECT_FALSE(db.IsOpen());
    EXPECT_EQ(db.GetDbms(), CDatabase::otherDbms);
    db.Close();
}

TEST_P(Database, AStatementTellsHowManyRowsItChanged) {
    db.ExecuteSQL("CREATE TABLE t (a INTEGER, b VARCHAR(20))");
    EXPECT_EQ(db.ExecuteSQL(ansi("INSERT INTO t VALUES (1, 'ä'), (2, 'ö'), (3, '€')")), 3);
    EXPECT_EQ(db.ExecuteSQL("UPDATE t SET a = a + 1 WHERE a > 1"), 2);
    EXPECT_EQ(db.ExecuteSQL("DELETE FROM t WHERE a > 100"), 0);
    EXPECT_EQ(value("SELECT b FROM t WHERE a = 4"), "€");
}

TEST_P(Database, WhatTheDatabaseRefusesCarriesStateNumberAndText) {
    const Thrown error = thrownBy([&] { db.ExecuteSQL(ansi("SELECT * FROM \"Ärger\"")); });
    EXPECT_EQ(error.state, isPostgresql() ? "42P01" : "HY000");
    EXPECT_EQ(error.nativeError, 1);
    EXPECT_NE(error.text.find("Ärger"), std::string::npos) << error.text;
    EXPECT_TRUE(thrownBy([&] { db.ExecuteSQL("no statement"); }).thrown);
    EXPECT_TRUE(thrownBy([&] { db.ExecuteSQL(nullptr); }).thrown);
    EXPECT_EQ(value("SELECT 1"), "1") << "the connection goes on";
}

TEST_P(Database, ATransactionIsRolledBackUnlessItIsCommitted) {
    db.ExecuteSQL("CREATE TABLE t (a INTEGER)");
    {
        CDatabaseTransaction transaction(db);
        EXPECT_TRUE(db.IsInTransaction());
        db.ExecuteSQL("INSERT INTO t VALUES (1)");
    }
    EXPECT_FALSE(db.IsInTransaction());
    EXPECT_EQ(value("SELECT COUNT(*) FROM t"), "0");
    {
        CDatabaseTransaction transaction(db);
        db.ExecuteSQL("INSERT INTO t VALUES (1)");
        transaction.Commit();
    }
    EXPECT_FALSE(db.IsInTransaction());
    CDatabase other;
    other.Open(target().c_str());
    CDatabaseRecordset rs(other);
    rs.OpenQuery("SELECT COUNT(*) AS n FROM t");
    long n = 0;
    rs.BindLong("n", n);
    ASSERT_TRUE(rs.MoveNext());
    EXPECT_EQ(n, 1) << "others see what was committed";
}

TEST_P(Database, AStatementThatFailsLeavesTheTransactionUsable) {
    db.ExecuteSQL("CREATE TABLE t (a INTEGER PRIMARY KEY)");
    CDatabaseTransaction transaction(db);
    db.ExecuteSQL("INSERT INTO t VALUES (1)");
    EXPECT_TRUE(thrownBy([&] { db.ExecuteSQL("INSERT INTO t VALUES (1)"); }).thrown);
    db.ExecuteSQL("INSERT INTO t VALUES (2)");
    transaction.Commit();
    EXPECT_EQ(value("SELECT COUNT(*) FROM t"), "2");
}

TEST_P(Database, TransactionsDoNotNest) {
    EXPECT_EQ(thrownBy([&] { db.CommitTrans(); }).state, "25000");
    EXPECT_EQ(thrownBy([&] { db.Rollback(); }).state, "25000");
    db.BeginTrans();
    EXPECT_EQ(thrownBy([&] { db.BeginTrans(); }).state, "25001");
    db.Rollback();
    EXPECT_FALSE(db.IsInTransaction());
}

TEST_P(Database, ClosingRollsBack) {
    db.ExecuteSQL("CREATE TABLE t (a INTEGER)");
    db.BeginTrans();
    db.ExecuteSQL("INSERT INTO t VALUES (1)");
    db.Open(target().c_str());
    EXPECT_EQ(value("SELECT COUNT(*) FROM t"), "0");
}

TEST_P(Database, WhatUsesAClosedDatabaseThrows) {
    db.ExecuteSQL("CREATE TABLE t (a INTEGER)");
    db.ExecuteSQL("INSERT INTO t VALUES (1), (2)");
    CDatabaseRecordset rs(db);
    rs.OpenTable("t");
    long a = 0;
    rs.BindLong("a", a);
    ASSERT_TRUE(rs.MoveNext());
    CDatabaseStatement statement(db, "INSERT INTO t VALUES (3)");
    db.Close();
    CDatabase other;
    other.Open(target().c_str());
    other.ExecuteSQL("DROP TABLE t");  // no lock is left
    EXPECT_EQ(thrownBy([&] { rs.MoveNext(); }).state, "08003");
    EXPECT_EQ(thrownBy([&] { statement.Execute(); }).state, "08003");
    EXPECT_EQ(thrownBy([&] { db.ExecuteSQL("SELECT 1"); }).state, "08003");
    EXPECT_EQ(thrownBy([&] { db.BeginTrans(); }).state, "08003");
    EXPECT_EQ(thrownBy([&] { db.GetTables(); }).state, "08003");
}

TEST_P(Database, PreparedStatementsKeepTheirParameters) {
    db.ExecuteSQL(
        "CREATE TABLE t (a INTEGER, b VARCHAR(20), c NUMERIC(10,2), d DATE, e TIMESTAMP, f BOOLEAN, g "
        "CHAR(1))");
    CDatabaseStatement insert(db, "INSERT INTO t VALUES (?, ?, ?, ?, ?, ?, ?)");
    insert.SetValue(1, "1", CDatabaseColumn::integer);
    insert.SetValue(2, ansi("Größe"));
    insert.SetValue(3, "-12.50", CDatabaseColumn::decimal);
    insert.SetValue(4, "2004-02-29", CDatabaseColumn::date);
    insert.SetValue(5, "2004-02-29 23:59:58", CDatabaseColumn::timestamp);
    insert.SetValue(6, "1", CDatabaseColumn::boolean);
    insert.SetValue(7, ansi("ß"), CDatabaseColumn::character);
    EXPECT_EQ(insert.Execute(), 1);
    insert.SetValue(1, "2", CDatabaseColumn::integer);
    insert.SetNull(2);
    EXPECT_EQ(insert.Execute(), 1);
    EXPECT_EQ(value("SELECT b FROM t WHERE a = 1"), "Größe");
    EXPECT_EQ(value("SELECT b FROM t WHERE a = 2"), "(null)");
    EXPECT_EQ(
        value("SELECT COUNT(*) FROM t WHERE c < -12 AND d = '2004-02-29' AND e = '2004-02-29 23:59:58'"),
        "2");
    EXPECT_EQ(value("SELECT g FROM t WHERE a = 2"), "ß");
    EXPECT_EQ(value("SELECT f FROM t WHERE a = 1"), "1");
    EXPECT_EQ(thrownBy([&] { insert.SetValue(2, std::string_view("a\0b", 3)); }).state, "22021");
}

TEST_P(Database, AParameterThatTheStatementDoesNotHaveIsRefused) {
    db.ExecuteSQL("CREATE TABLE t (a INTEGER, b VARCHAR(20))");
    CDatabaseStatement insert(db, "INSERT INTO t VALUES (?, 'was?')");
    for (const INT number : {-1, 0, 2, 3}) {
        EXPECT_EQ(thrownBy([&] { insert.SetValue(number, "1"); }).state, "07009") << number;
        EXPECT_EQ(thrownBy([&] { insert.SetNull(number); }).state, "07009") << number;
    }
    insert.SetValue(1, "1", CDatabaseColumn::integer);
    EXPECT_EQ(insert.Execute(), 1);
    CDatabaseStatement plain(db, "DELETE FROM t");
    EXPECT_EQ(thrownBy([&] { plain.SetValue(1, "x"); }).text, "Parameter 1 gibt es nicht");
    EXPECT_EQ(plain.Execute(), 1);
}

TEST_P(Database, AStatementWithoutAllItsParametersThrows) {
    db.ExecuteSQL("CREATE TABLE t (a INTEGER, b INTEGER)");
    CDatabaseStatement insert(db, "INSERT INTO t VALUES (?, ?)");
    insert.SetValue(1, "1", CDatabaseColumn::integer);
    EXPECT_TRUE(thrownBy([&] { insert.Execute(); }).thrown);
}

TEST_P(Database, ColumnsComeInOrderWithTypesAndKey) {
    db.ExecuteSQL(
        "CREATE TABLE t (z INTEGER NOT NULL, s SMALLINT, b BIGINT NOT NULL, n NUMERIC(12,3), p NUMERIC, d "
        "DOUBLE PRECISION, "
        "r REAL, c CHAR(1), c9 CHAR(9), v VARCHAR(40), t TEXT, w BOOLEAN, da DATE, ts TIMESTAMP, PRIMARY KEY "
        "(b, z))");
    struct Expected {
        const char* name;
        CDatabaseColumn::Type type;
        INT length;
        INT scale;
        INT key;
    };
    const Expected expected[] = {
        {"z", CDatabaseColumn::integer, 0, 0, 2},    {"s", CDatabaseColumn::smallInteger, 0, 0, 0},
        {"b", CDatabaseColumn::bigInteger, 0, 0, 1}, {"n", CDatabaseColumn::decimal, 12, 3, 0},
        {"p", CDatabaseColumn::decimal, 0, 0, 0},    {"d", CDatabaseColumn::floating, 0, 0, 0},
        {"r", CDatabaseColumn::floating, 0, 0, 0},   {"c", CDatabaseColumn::character, 1, 0, 0},
        {"c9", CDatabaseColumn::text, 9, 0, 0},      {"v", CDatabaseColumn::text, 40, 0, 0},
        {"t", CDatabaseColumn::text, 0, 0, 0},       {"w", CDatabaseColumn::boolean, 0, 0, 0},
        {"da", CDatabaseColumn::date, 0, 0, 0},      {"ts", CDatabaseColumn::timestamp, 0, 0, 0},
    };
    const std::vector<CDatabaseColumn> columns = db.GetColumns("t");
    ASSERT_EQ(columns.size(), std::size(expected));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        SCOPED_TRACE(expected[i].name);
        EXPECT_EQ(columns[i].strName, expected[i].name);
        EXPECT_EQ(columns[i].nType, expected[i].type) << columns[i].strTypeName.GetString();
        EXPECT_EQ(columns[i].nLength, expected[i].length);
        EXPECT_EQ(columns[i].nScale, expected[i].scale);
        EXPECT_EQ(columns[i].nKeyPosition, expected[i].key);
    }
    if (isPostgresql()) {
        EXPECT_FALSE(columns[0].fNullable);
    }
    EXPECT_TRUE(columns[1].fNullable);
}

TEST_P(Database, AGeneratedColumnIsAColumnThatSaysSo) {
    db.ExecuteSQL(
        "CREATE TABLE t (a INTEGER NOT NULL, b INTEGER GENERATED ALWAYS AS (a * 2) STORED, c INTEGER)");
    const std::vector<CDatabaseColumn> columns = db.GetColumns("t");
    ASSERT_EQ(columns.size(), 3U);
    EXPECT_EQ(columns[1].strName, "b");
    EXPECT_EQ(columns[1].strTypeName, isPostgresql() ? "int4" : "INTEGER");
    EXPECT_EQ(columns[1].nType, CDatabaseColumn::integer);
    EXPECT_TRUE(columns[1].fGenerated);
    EXPECT_FALSE(columns[0].fGenerated);
    EXPECT_FALSE(columns[2].fGenerated);
    EXPECT_FALSE(columns[0].fNullable);
    EXPECT_TRUE(columns[1].fNullable);
}

TEST_P(Database, TablesAndViewsAreListedByName) {
    EXPECT_TRUE(db.GetTables().empty());
    execute("CREATE TABLE \"zürich\" (a INTEGER)");
    execute("CREATE TABLE \"Alte Kunden\" (a INTEGER)");
    execute("CREATE VIEW sicht AS SELECT 1 AS x");
    const std::vector<CString> tables = db.GetTables();
    ASSERT_EQ(tables.size(), 3U);
    EXPECT_EQ(tables[0], "Alte Kunden");
    EXPECT_EQ(tables[1], "sicht");
    EXPECT_EQ(utf8(tables[2].View()), "zürich");
    EXPECT_TRUE(db.HasTable("sicht"));
    EXPECT_TRUE(db.HasTable(ansi("zürich")));
    EXPECT_FALSE(db.HasTable("z%rich"));
    EXPECT_FALSE(db.HasTable(""));
    EXPECT_FALSE(db.HasTable(nullptr));
    EXPECT_EQ(thrownBy([&] { db.GetColumns("gibtsnicht"); }).state, "42S02");
}

TEST_P(Database, ANameOutsideTheCodePageIsAnErrorNotAnotherName) {
    // U+4E2D as the column's name, made by the database itself.
    CDatabaseRecordset rs(db);
    if (isPostgresql()) {
        db.ExecuteSQL("DO $$ BEGIN EXECUTE 'CREATE TABLE t (' || chr(20013) || ' INTEGER)'; END $$");
    } else {
        db.ExecuteSQL("PRAGMA writable_schema = 1");
        db.ExecuteSQL("CREATE TABLE t (a INTEGER)");
        db.ExecuteSQL(
            "UPDATE sqlite_master SET sql = 'CREATE TABLE t (' || char(20013) || ' INTEGER)' WHERE name = "
            "'t'");
        db.Open(target().c_str());
    }
    const Thrown error = thrownBy([&] { rs.OpenTable("t"); });
    EXPECT_EQ(error.state, "22021");
    EXPECT_NE(error.text.find("U+4E2D"), std::string::npos) << error.text;
}

INSTANTIATE_TEST_SUITE_P(Each, Database, testing::Values(CDatabase::sqlite, CDatabase::postgresql),
                         databaseName);

// Opening
// ------------------------------------------------------------------------------------------------------------

class SqliteOpening : public testing::Test {
  protected:
    TemporaryFolder folder;
    CDatabase db;
};

TEST_F(SqliteOpening, AMissingFileIsAnErrorAndStaysMissing) {
    const std::string path = folder.file("fehlt.db");
    const Thrown error = thrownBy([&] { db.Open(path.c_str()); });
    EXPECT_EQ(error.state, "08001");
    EXPECT_NE(error.text.find("fehlt.db"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_FALSE(db.IsOpen());
    const std::string string = "Driver=SQLite3;Database=" + path;
    EXPECT_TRUE(thrownBy([&] { db.Open(string.c_str()); }).thrown) << "through a connection string as well";
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(SqliteOpening, AFileIsCreatedOnRequest) {
    const std::string path = folder.file("Größe neu.db");
    db.Open(path.c_str(), CDatabase::createMissing);
    db.ExecuteSQL("CREATE TABLE t (a INTEGER)");
    db.Close();
    EXPECT_TRUE(std::filesystem::exists(path));
    db.Open(path.c_str());
    EXPECT_TRUE(db.HasTable("t"));
    EXPECT_TRUE(db.HasTable("T")) << "SQLite ignores the letter case";
    const std::string string = "DRIVER={SQLite3};Database=" + path;
    db.Open(string.c_str());
    EXPECT_EQ(db.GetDbms(), CDatabase::sqlite);
    EXPECT_TRUE(db.HasTable("t"));
}

TEST_F(SqliteOpening, APathWithASemicolonIsRefused) {
    const std::string path = folder.file("a;b.db");
    EXPECT_NE(thrownBy([&] { db.Open(path.c_str(), CDatabase::createMissing); }).text.find("\";\""),
              std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder.file("a")));
}

TEST_F(SqliteOpening, APathInBracesIsAPath) {
    const auto here = std::filesystem::current_path();
    std::filesystem::current_path(std::filesystem::path(folder.file("x")).parent_path());
    db.Open("{klammern}.db", CDatabase::createMissing);
    db.ExecuteSQL("CREATE TABLE t (a INTEGER)");
    db.Close();
    std::filesystem::current_path(here);
    EXPECT_TRUE(std::filesystem::exists(folder.file("{klammern}.db")));
}

TEST_F(SqliteOpening, WhatIsNoDatabaseIsNoticedAtOnce) {
    const std::string path = folder.file("text.db");
    std::ofstream(path) << std::string(5000, 'x');
    EXPECT_EQ(thrownBy([&] { db.Open(path.c_str()); }).nativeError, 26);
    EXPECT_FALSE(db.IsOpen());
    const std::string directory = std::filesystem::path(path).parent_path().string();
    EXPECT_NE(thrownBy([&] { db.Open(directory.c_str()); }).text.find("ist ein Ordner"), std::string::npos);
    EXPECT_EQ(thrownBy([&] { db.Open(""); }).state, "08001");
    EXPECT_EQ(thrownBy([&] { db.Open(nullptr); }).state, "08001");
}

TEST_F(SqliteOpening, WhatCannotBeOpenedIsNamed) {
    const std::string path = folder.file("größe.db");
    const std::string start = "Datenbank \"" + path + "\": ";
    std::ofstream(path) << std::string(5000, 'x');
    EXPECT_EQ(thrownBy([&] { db.Open(path.c_str()); }).text, start + "[SQLite]file is not a database (26)");
    const std::string string = "Driver=SQLite3;Database=" + path + ".fehlt;PWD=geheim";
    const std::string text = thrownBy([&] { db.Open(string.c_str()); }).text;
    EXPECT_NE(text.find("\"" + path + ".fehlt\": [SQLite]"), std::string::npos) << text;
    EXPECT_EQ(text.find("geheim"), std::string::npos) << "a connection string may hold a secret";
    EXPECT_EQ(thrownBy([&] { db.Open("DSN=GibtEsNicht"); }).text.find("Datenbank \"GibtEsNicht\": "), 0U);
}

// The superuser may read everything, so that he cannot see this.
TEST_F(SqliteOpening, AFileWithoutRightsTellsThat) {
    const std::string path = folder.file("zu.db");
    std::ofstream(path) << "x";
    std::filesystem::permissions(path, std::filesystem::perms::none);
    if (::access(path.c_str(), R_OK) == 0) GTEST_SKIP() << "the superuser may read every file";
    const std::string text = thrownBy([&] { db.Open(path.c_str()); }).text;
    EXPECT_NE(text.find("ist nicht zu öffnen: " + std::string(std::strerror(EACCES))), std::string::npos)
        << text;
}

TEST_F(SqliteOpening, AVirtualGeneratedColumnIsOneTooAndAHiddenColumnNone) {
    db.Open(folder.file("a.db").c_str(), CDatabase::createMissing);
    db.ExecuteSQL("CREATE TABLE t (a DECIMAL(10,2), b NUMERIC(12,3) AS (a / 2) VIRTUAL)");
    const std::vector<CDatabaseColumn> columns = db.GetColumns("t");
    ASSERT_EQ(columns.size(), 2U);
    EXPECT_TRUE(columns[1].fGenerated);
    EXPECT_EQ(columns[1].nLength, 12);
    EXPECT_EQ(columns[1].nScale, 3);
    EXPECT_EQ(db.GetColumns("pragma_user_version").size(), 1U) << "the schema's name is a hidden parameter";
}

TEST_F(SqliteOpening, AnUnknownDriverIsTheDriverManagersError) {
    EXPECT_EQ(thrownBy([&] { db.Open("Driver=NoSuchDriver;Database=x"); }).state, "01000");
    EXPECT_EQ(thrownBy([&] { db.Open("SQLite3;Database=x"); }).text,
              "Verbindungsangabe ohne \"=\" vor \";\"");
    EXPECT_EQ(thrownBy([&] { db.Open("Driver=SQLite3;Database"); }).text,
              "Verbindungsangabe ohne \"=\" am Ende");
}

// A data source does not tell its driver, so every driver's options are added.
TEST(DataSource, IsOpenedByItsNameWithTheOptionsOfItsDriver) {
    TemporaryFolder folder;
    const std::string path = folder.file("quelle.db");
    CDatabase db;
    db.Open(path.c_str(), CDatabase::createMissing);
    db.ExecuteSQL("CREATE TABLE t (a INTEGER)");
    std::ofstream(folder.file("odbc.ini")) << "[NkdtTestQuelle]\nDriver=SQLite3\nDatabase=" << path << "\n"
                                           << "[NkdtTestFehlt]\nDriver=SQLite3\nDatabase=" << path << "2\n";
    // The cache of settings would be lost, and count as leaked, if its library were unloaded.
    ASSERT_NE(::dlopen("libodbcinst.so.2", RTLD_NOW | RTLD_NODELETE), nullptr);
    ASSERT_EQ(::setenv("ODBCINI", folder.file("odbc.ini").c_str(), 1), 0);
    CDatabase source;
    source.Open("DSN=NkdtTestQuelle");
    EXPECT_EQ(source.GetDbms(), CDatabase::sqlite);
    EXPECT_TRUE(source.HasTable("t"));
    EXPECT_TRUE(thrownBy([&] { source.Open("DSN=NkdtTestFehlt"); }).thrown);
    EXPECT_FALSE(std::filesystem::exists(path + "2"));
    ::unsetenv("ODBCINI");
}

TEST(PostgresqlOpening, SettingsOfTheApplicationKeepUtf8AndTheLockWait) {
    if (PostgresServer::instance() == nullptr)
        GTEST_SKIP() << "PostgreSQL's server programs are not installed";
    const std::string base = PostgresServer::instance()->connectionString();
    struct Case {
        const char* settings;
        const char* wait;
        const char* style;
    };
    for (const Case& c : {Case{"SET lock_timeout%3D0%3BSET IntervalStyle%3Diso_8601", "5s", "iso_8601"},
                          Case{"{SET lock_timeout=700;SET IntervalStyle=iso_8601}", "700ms", "iso_8601"},
                          Case{"SET lock_timeout%3D60000", "5s", "postgres"},
                          Case{"SELECT set_config('client_encoding', 'LATIN1', false)", "5s", "postgres"}}) {
        SCOPED_TRACE(c.settings);
        CDatabase db;
        db.Open((base + ";ConnSettings=" + c.settings).c_str());
        CDatabaseRecordset rs(db);
        rs.OpenQuery(ansi(
            "SELECT current_setting('lock_timeout') AS w, current_setting('intervalstyle') AS i, 'ü€' AS u"));
        CString wait, style, text;
        rs.BindText("w", wait);
        rs.BindText("i", style);
        rs.BindText("u", text);
        ASSERT_TRUE(rs.MoveNext());
        EXPECT_EQ(wait, c.wait);
        EXPECT_EQ(style, c.style);
        EXPECT_EQ(utf8(text.View()), "ü€");
    }
}

TEST(PostgresqlOpening, AServerThatIsNotThereIsAnError) {
    CDatabase db;
    const Thrown error =
        thrownBy([&] { db.Open("Driver={PostgreSQL Unicode};Server=127.0.0.1;Port=1;Database=x;UID=u"); });
    EXPECT_EQ(error.state, "08001");
    EXPECT_FALSE(db.IsOpen());
}

TEST(PostgresqlCatalog, OnlyTheTableThatTheNameMeansIsDescribed) {
    if (PostgresServer::instance() == nullptr)
        GTEST_SKIP() << "PostgreSQL's server programs are not installed";
    CDatabase db;
    db.Open(PostgresServer::instance()->connectionString().c_str());
    db.ExecuteSQL(
        "DROP SCHEMA public CASCADE; CREATE SCHEMA public; DROP SCHEMA IF EXISTS anderes CASCADE; CREATE "
        "SCHEMA anderes");
    db.ExecuteSQL("CREATE TABLE anderes.t (falsch INTEGER PRIMARY KEY)");
    db.ExecuteSQL("CREATE TABLE public.t (richtig INTEGER)");
    ASSERT_EQ(db.GetColumns("t").size(), 1U);
    EXPECT_EQ(db.GetColumns("t")[0].strName, "richtig");
    EXPECT_EQ(db.GetColumns("t")[0].nKeyPosition, 0);
    EXPECT_FALSE(db.HasTable("T"));
    db.ExecuteSQL("DROP SCHEMA anderes CASCADE");
}

TEST(QuoteName, DoublesQuotationMarks) {
    EXPECT_EQ(CDatabase::QuoteName("a"), "\"a\"");
    EXPECT_EQ(CDatabase::QuoteName("a\"b"), "\"a\"\"b\"");
    EXPECT_EQ(CDatabase::QuoteName(""), "\"\"");
    EXPECT_EQ(CDatabase::QuoteName(nullptr), "\"\"");
}

}  // namespace
