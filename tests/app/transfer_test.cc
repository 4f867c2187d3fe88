#include <sys/stat.h>

#include <tuple>

#include "AppTest.h"

using namespace nktest;

namespace {

/// Each database with each format of a file.
class Transfer : public testing::TestWithParam<std::tuple<CDatabase::Dbms, const char*>> {
  protected:
    void SetUp() override {
        if (isPostgresql() && PostgresServer::instance() == nullptr)
            GTEST_SKIP() << "PostgreSQL's server programs are not installed";
        db.Open(target.c_str(), CDatabase::createMissing);
        if (isPostgresql()) db.ExecuteSQL("DROP SCHEMA public CASCADE; CREATE SCHEMA public");
        execute(
            "CREATE TABLE \"Größen\" (\"Nummer\" INTEGER, \"Stück\" SMALLINT, \"Text, \"\"alt\"\" & "
            "O'Neill\" TEXT, \"Am\" DATE)");
    }

    bool isPostgresql() const { return std::get<0>(GetParam()) == CDatabase::postgresql; }
    std::string format() const { return std::get<1>(GetParam()); }
    void execute(std::string_view sql) { db.ExecuteSQL(ansi(sql)); }

    /// A row with a text in code page 1252, null for a null pointer.
    void insert(int number, const std::string* text) {
        CDatabaseStatement statement(db, ansi("INSERT INTO \"Größen\" VALUES (?, ?, ?, NULL)"));
        statement.SetValue(1, std::to_string(number), CDatabaseColumn::integer);
        statement.SetNull(2, CDatabaseColumn::smallInteger);
        if (text != nullptr) {
            statement.SetValue(3, *text);
        } else {
            statement.SetNull(3);
        }
        statement.Execute();
    }

    Outcome exportTo(const std::string& path) {
        return call({"export", target, "Größen", "--format", format(), "--output", path});
    }
    Outcome importFrom(const std::string& path, const std::string& table, Arguments more = {}) {
        Arguments arguments{"import", target, table, "--format", format(), "--input", path};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return call(arguments);
    }
    std::string countOf(const std::string& table) {
        return valueOf(target, "SELECT COUNT(*) FROM \"" + table + "\"");
    }

    TemporaryFolder folder;
    std::string target = isPostgresql() && PostgresServer::instance() != nullptr
                             ? PostgresServer::instance()->connectionString()
                             : folder.file("test.db");
    std::string file = folder.file("größen.dat");
    CDatabase db;
};

std::string nameOf(const testing::TestParamInfo<std::tuple<CDatabase::Dbms, const char*>>& info) {
    return std::string(std::get<0>(info.param) == CDatabase::postgresql ? "PostgreSQL_" : "SQLite_") +
           std::get<1>(info.param);
}

std::vector<std::string> nastyTexts() {
    std::string all;
    for (int byte = 1; byte < 256; ++byte)
        all += static_cast<char>(byte);
    return {"",
            " ",
            "'",
            "''",
            "O'Neill's",
            "NULL",
            "'NULL'",
            "\\",
            "\\n\\",
            "a\nb",
            "a\r\nb\r",
            "\n",
            "\t\t",
            ";",
            "');\nDROP TABLE x; --",
            "-- end 3",
            "end 3",
            "COMMIT;",
            "\"",
            "0:100:",
            "M\xFCller & S\xF6hne, 5 \x80",
            "  Blanks around  ",
            all,
            all + all,
            std::string(100000, '\''),
            std::string(100000, '\n'),
            std::string(300000, '\xE4')};
}

}  // namespace

TEST_P(Transfer, BringsEveryTextBack) {
    int number = 0;
    for (const std::string& text : nastyTexts())
        insert(++number, &text);
    insert(++number, nullptr);
    ASSERT_EQ(exportTo(file).status, 0);
    const Outcome imported = importFrom(file, "Kopie", {"--create"});
    ASSERT_EQ(imported.status, 0) << imported.err;
    const Outcome compared = call({"compare", target, "Größen", target, "Kopie"});
    EXPECT_EQ(compared.status, 0) << compared.err;
    EXPECT_THAT(compared.out, HasSubstr("28 rows, 4 columns"));
}

TEST_P(Transfer, BringsEveryNumberBack) {
    execute(
        "INSERT INTO \"Größen\" VALUES (2147483647, 32767, 'x', NULL), (-2147483648, -32768, NULL, NULL), "
        "(NULL, NULL, '', NULL), (0, 0, 'y', NULL)");
    ASSERT_EQ(exportTo(file).status, 0);
    ASSERT_EQ(importFrom(file, "Kopie", {"--create"}).status, 0);
    EXPECT_EQ(call({"compare", target, "Größen", target, "Kopie"}).status, 0);
    EXPECT_EQ(valueOf(target, "SELECT MIN(\"Nummer\") FROM \"Kopie\""), "-2147483648");
    EXPECT_EQ(valueOf(target, "SELECT COUNT(*) FROM \"Kopie\" WHERE \"Stück\" IS NULL"), "1");
}

TEST_P(Transfer, AddsToATableThatExists) {
    execute("INSERT INTO \"Größen\" VALUES (1, 2, 'x', '2000-02-29')");
    ASSERT_EQ(exportTo(file).status, 0);
    execute("ALTER TABLE \"Größen\" ADD COLUMN \"Lager\" INTEGER");
    execute("UPDATE \"Größen\" SET \"Lager\" = 7");
    const Outcome outcome = importFrom(file, "Größen");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(countOf("Größen"), "2");
    EXPECT_EQ(valueOf(target, "SELECT COUNT(*) FROM \"Größen\" WHERE \"Am\" = '2000-02-29'"), "2");
    EXPECT_EQ(valueOf(target, "SELECT COUNT(*) FROM \"Größen\" WHERE \"Lager\" IS NULL"), "1")
        << "a column that the file lacks gets its default";
}

TEST_P(Transfer, BringsATableWithoutRows) {
    ASSERT_EQ(exportTo(file).status, 0);
    ASSERT_EQ(importFrom(file, "Kopie", {"--create"}).status, 0);
    EXPECT_EQ(countOf("Kopie"), "0");
}

TEST_P(Transfer, ImportsNothingWhenAMiddleRowFails) {
    execute(
        "CREATE TABLE \"Ziel\" (\"Nummer\" INTEGER PRIMARY KEY, \"Stück\" SMALLINT, \"Text, \"\"alt\"\" & "
        "O'Neill\" TEXT, \"Am\" DATE)");
    execute("INSERT INTO \"Ziel\" VALUES (3, 3, 'da', NULL)");
    for (int number = 1; number <= 5; ++number)
        insert(number, nullptr);
    ASSERT_EQ(exportTo(file).status, 0);
    const Outcome outcome = importFrom(file, "Ziel");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("Neue Zeile 3"));
    EXPECT_EQ(countOf("Ziel"), "1");
    EXPECT_EQ(valueOf(target, "SELECT \"Stück\" FROM \"Ziel\""), "3");
}

TEST_P(Transfer, UndoesTheNewTableWhenTheImportFails) {
    for (int number = 1; number <= 5; ++number)
        insert(number, nullptr);
    ASSERT_EQ(exportTo(file).status, 0);
    const std::string content = contentOf(file);
    writeFile(file, content.substr(0, content.size() - content.size() / 5));
    const Outcome outcome = importFrom(file, "Kopie", {"--create"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, Not(IsEmpty()));
    EXPECT_FALSE(hasTable(target, "Kopie"));
}

TEST_P(Transfer, RefusesToCreateATableThatExists) {
    ASSERT_EQ(exportTo(file).status, 0);
    const Outcome outcome = importFrom(file, "Größen", {"--create"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("already"));
}

TEST_P(Transfer, RefusesAColumnOfAnotherClass) {
    execute(
        "CREATE TABLE \"Ziel\" (\"Nummer\" TEXT, \"Stück\" SMALLINT, \"Text, \"\"alt\"\" & O'Neill\" TEXT, "
        "\"Am\" DATE)");
    insert(1, nullptr);
    ASSERT_EQ(exportTo(file).status, 0);
    const Outcome outcome = importFrom(file, "Ziel");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("column Nummer is NkDtLong in the file, but NkDtString in the table"));
    EXPECT_EQ(importFrom(file, "Ziel", {"--as", "Nummer=Long"}).status, 0);
    EXPECT_EQ(valueOf(target, "SELECT \"Nummer\" FROM \"Ziel\""), "1");
}

TEST_P(Transfer, RefusesATableThatLacksAColumn) {
    execute("CREATE TABLE \"Ziel\" (\"Nummer\" INTEGER, \"Stück\" TIME)");
    insert(1, nullptr);
    ASSERT_EQ(exportTo(file).status, 0);
    EXPECT_THAT(importFrom(file, "Ziel").err,
                HasSubstr("column Stück, but it cannot be written: not bindable by its type; --as Stück=TYPE "
                          "binds it"));
    execute("DROP TABLE \"Ziel\"");
    execute("CREATE TABLE \"Ziel\" (\"Nummer\" INTEGER, \"Stück\" SMALLINT)");
    EXPECT_THAT(importFrom(file, "Ziel").err, HasSubstr("table Ziel has no column Text"));
}

TEST_P(Transfer, RefusesAFileOfAnotherFormat) {
    writeFile(file, "Nummer;Name\n1;Müller\n");
    const Outcome outcome = importFrom(file, "Größen");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err,
              "nkdt: file \"" + file + "\": the file does not have the format " + format() + "\n");
}

TEST_P(Transfer, NamesTheFileThatCannotBeRead) {
    const Outcome outcome = importFrom("/dev/null", "Größen");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, testing::StartsWith("nkdt: file \"/dev/null\": "));
    EXPECT_THAT(outcome.err, Not(HasSubstr("line 0")));
}

TEST_P(Transfer, ReplacesAFileOnlyByACompleteOne) {
    writeFile(file, "alt");
    ASSERT_EQ(::chmod(file.c_str(), 0640), 0);
    insert(1, nullptr);
    execute("INSERT INTO \"Größen\" (\"Text, \"\"alt\"\" & O'Neill\") VALUES (" +
            std::string(isPostgresql() ? "chr" : "char") + "(20013))");
    EXPECT_EQ(exportTo(file).status, 1);
    EXPECT_EQ(contentOf(file), "alt");
    execute("DELETE FROM \"Größen\" WHERE \"Nummer\" IS NULL");
    EXPECT_EQ(exportTo(file).status, 0);
    EXPECT_NE(contentOf(file), "alt");
    struct stat status {};
    ASSERT_EQ(::stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U) << "what others may not read stays so";
    for (const std::string& name : filesIn(folder.file("")))
        EXPECT_TRUE(name == "test.db" || name == "größen.dat") << name;
}

TEST_P(Transfer, LeavesNoPartialFileOnAFullDisk) {
    if (programFile().empty()) GTEST_SKIP() << "NKDT_PROGRAM is not set";
    const std::string text(1000, 'x');
    execute("BEGIN");
    for (int number = 0; number < 300; ++number)
        insert(number, &text);
    execute("COMMIT");
    const Outcome outcome =
        callProgram(folder, {"export", target, "Größen", "--format", format(), "--output", file}, 100000);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("voll"));
    for (const std::string& name : filesIn(folder.file("")))
        EXPECT_EQ(name, "test.db");
}

TEST_P(Transfer, WritesToADeviceDirectly) {
    insert(1, nullptr);
    EXPECT_EQ(exportTo("/dev/null").status, 0);
    EXPECT_EQ(exportTo("/dev/full").status, 1);
    struct stat status {};
    ASSERT_EQ(::stat("/dev/full", &status), 0);
    EXPECT_TRUE(S_ISCHR(status.st_mode));
}

TEST_P(Transfer, FollowsALinkToTheFile) {
    writeFile(folder.file("ziel"), "alt");
    std::filesystem::create_symlink("ziel", file);
    ASSERT_EQ(exportTo(file).status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(file));
    EXPECT_NE(contentOf(folder.file("ziel")), "alt");
}

TEST_P(Transfer, TellsDifferencesWithRowAndColumn) {
    insert(1, nullptr);
    insert(2, nullptr);
    ASSERT_EQ(exportTo(file).status, 0);
    ASSERT_EQ(importFrom(file, "Kopie", {"--create"}).status, 0);
    execute("UPDATE \"Kopie\" SET \"Nummer\" = NULL WHERE \"Nummer\" = 2");
    const Outcome value =
        call({"compare", target, "Größen", target, "Kopie", "--sort", "\"Nummer\" IS NULL, \"Nummer\""});
    EXPECT_EQ(value.status, 1);
    EXPECT_THAT(value.err,
                HasSubstr("row 2, column Nummer: \"2\" in the first table, undefined in the second"));
    execute("DELETE FROM \"Kopie\" WHERE \"Nummer\" IS NULL");
    const Outcome rows = call({"compare", target, "Größen", target, "Kopie"});
    EXPECT_EQ(rows.status, 1);
    EXPECT_THAT(rows.err, HasSubstr("row 2 is only in the first table"));
    EXPECT_EQ(call({"compare", target, "Größen", target, "Kopie", "--columns", "Nummer"}).status, 1);
    const Outcome same = call({"compare", target, "Kopie", target, "Kopie", "--columns", "Nummer"});
    EXPECT_EQ(same.out, "The tables are the same: 1 row, 1 column\n");
}

TEST_P(Transfer, TellsWhichColumnsOnlyOneTableHas) {
    execute("CREATE TABLE \"Kopie\" (\"Stück\" SMALLINT, \"NUMMER\" INTEGER)");
    const auto compareAll = [&] { return call({"compare", target, "Größen", target, "Kopie"}); };
    EXPECT_EQ(compareAll().err,
              "nkdt: the two tables have not the same columns: only the first has Text, \"alt\" & O'Neill, "
              "Am\n");
    execute("ALTER TABLE \"Kopie\" ADD COLUMN \"Ort\" TEXT");
    EXPECT_THAT(compareAll().err, HasSubstr("O'Neill, Am; only the second has Ort\n"));
    EXPECT_EQ(call({"compare", target, "Größen", target, "Größen", "--columns", "Nummer"}).status, 0);
    execute("ALTER TABLE \"Größen\" DROP COLUMN \"Text, \"\"alt\"\" & O'Neill\"");
    execute("ALTER TABLE \"Größen\" DROP COLUMN \"Am\"");
    execute("ALTER TABLE \"Kopie\" DROP COLUMN \"Ort\"");
    EXPECT_EQ(compareAll().err,
              "nkdt: the two tables have not the same columns in the same order: --columns sets one\n");
    EXPECT_EQ(call({"compare", target, "Größen", target, "Kopie", "--columns", "Nummer,Stück"}).status, 0);
}

INSTANTIATE_TEST_SUITE_P(All, Transfer,
                         testing::Combine(testing::Values(CDatabase::sqlite, CDatabase::postgresql),
                                          testing::Values("extern", "sql", "archive")),
                         nameOf);
