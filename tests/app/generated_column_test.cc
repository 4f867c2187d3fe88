#include "AppTest.h"

using namespace nktest;

namespace {

// A table whose column "B" the database computes.
class GeneratedColumn : public EachDatabase {
  protected:
    void SetUp() override {
        EachDatabase::SetUp();
        if (IsSkipped()) return;
        createTable("t");
        execute("INSERT INTO \"t\" (\"A\", \"C\") VALUES (1, 'x'), (21, 'y')");
    }
    void createTable(const std::string& name) {
        execute("CREATE TABLE \"" + name +
                "\" (\"A\" INTEGER, \"B\" INTEGER GENERATED ALWAYS AS (\"A\" * 2) STORED, \"C\" TEXT)");
    }
    Outcome importInto(const std::string& table, Arguments more = {}) {
        const std::string file = folder.file("t.sql");
        const Outcome exported = call({"export", target(), "t", "--format", "sql", "--output", file});
        EXPECT_EQ(exported.status, 0) << exported.err;
        EXPECT_THAT(exported.err, IsEmpty());
        Arguments arguments{"import", target(), table, "--format", "sql", "--input", file};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return call(arguments);
    }
};

}  // namespace

TEST_P(GeneratedColumn, IsShownLikeAnyOther) {
    EXPECT_EQ(call({"show", target(), "t", "--sort", "\"A\""}).out,
              " A   B  C\n"
              "--  --  -\n"
              " 1   2  x\n"
              "21  42  y\n");
    EXPECT_EQ(call({"show", target(), "t", "--columns", "B", "--limit", "0"}).out, "B\n-\n");
}

TEST_P(GeneratedColumn, IsExportedAndMadeAnOrdinaryColumnOfANewTable) {
    const Outcome outcome = importInto("Kopie", {"--create"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.err, IsEmpty());
    EXPECT_EQ(call({"compare", target(), "t", target(), "Kopie"}).status, 0);
    execute("UPDATE \"Kopie\" SET \"B\" = 5");
    EXPECT_EQ(valueOf(target(), "SELECT COUNT(*) FROM \"Kopie\" WHERE \"B\" = 5"), "2");
}

TEST_P(GeneratedColumn, OfTheTableIsNotWrittenByAnImportAndNamed) {
    createTable("Ziel");
    const Outcome outcome = importInto("Ziel");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "nkdt: table Ziel, column B is left out: the database computes its values\n");
    EXPECT_EQ(call({"compare", target(), "t", target(), "Ziel"}).status, 0);
}

TEST_P(GeneratedColumn, IsNotChangedByAnEdit) {
    execute("ALTER TABLE \"t\" RENAME TO \"alt\"");
    execute(
        "CREATE TABLE \"t\" (\"A\" INTEGER PRIMARY KEY, \"B\" INTEGER GENERATED ALWAYS AS (\"A\" * 2) "
        "STORED, "
        "\"C\" TEXT)");
    execute("INSERT INTO \"t\" (\"A\", \"C\") VALUES (1, 'x')");
    EXPECT_EQ(call({"edit", target(), "t", "1", "--set", "C=z"}).status, 0);
    EXPECT_EQ(valueOf(target(), "SELECT \"C\" FROM \"t\""), "z");
    const Outcome outcome = call({"edit", target(), "t", "1", "--set", "B=5"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("die Datenbank berechnet den Wert selbst"));
}

INSTANTIATE_TEST_SUITE_P(Databases, GeneratedColumn,
                         testing::Values(CDatabase::sqlite, CDatabase::postgresql), databaseName);

TEST(GeneratedColumnOfSqlite, IsShownWhenItIsVirtual) {
    const TemporaryFolder folder;
    const std::string database =
        makeDatabase(folder, "a.db",
                     {"CREATE TABLE t (A INTEGER, B DECIMAL(10,2) AS (A / 2.0) VIRTUAL)",
                      "INSERT INTO t VALUES (1), (3)"});
    EXPECT_EQ(call({"show", database, "t"}).out, "A     B\n-  ----\n1  0,50\n3  1,50\n");
}
