#include "AppTest.h"

using namespace nktest;

namespace {

// Columns of one character and of truth values.
class SingleValues : public EachDatabase {
  protected:
    void SetUp() override {
        EachDatabase::SetUp();
        if (IsSkipped()) return;
        execute("CREATE TABLE t (n INTEGER PRIMARY KEY, art CHAR(1), aktiv BOOLEAN)");
    }
    void fill() {
        execute(
            "INSERT INTO t VALUES (1, 'Ü', '1'), (2, '''', '0'), (3, NULL, NULL), (4, ' ', '1'), (5, '€', "
            "NULL)");
    }
    Outcome transfer(const std::string& format) {
        const std::string file = folder.file("t." + format);
        const Outcome exported = call({"export", target(), "t", "--format", format, "--output", file});
        if (exported.status != 0) return exported;
        return call({"import", target(), "u", "--format", format, "--input", file, "--create"});
    }
    /// Imports a file that was exported and then changed.
    Outcome importChanged(const std::string& format, const std::string& from, const std::string& to) {
        execute("INSERT INTO t VALUES (1, 'a', '0'), (2, 'q', '1')");
        const std::string file = folder.file("t." + format);
        EXPECT_EQ(call({"export", target(), "t", "--format", format, "--output", file}).status, 0);
        std::string content = contentOf(file);
        const std::size_t place = content.find(from);
        EXPECT_NE(place, std::string::npos) << content;
        if (place == std::string::npos) return {};
        writeFile(file, content.replace(place, from.size(), to));
        execute("CREATE TABLE u (n INTEGER PRIMARY KEY, art CHAR(1), aktiv BOOLEAN)");
        return call({"import", target(), "u", "--format", format, "--input", file});
    }

    TemporaryFolder folder;
};

}  // namespace

TEST_P(SingleValues, AreShownAsCharacterAndWord) {
    fill();
    const Outcome outcome = call({"show", target(), "t", "--sort", "n"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out,
              "n  art  aktiv\n"
              "-  ---  -----\n"
              "1  Ü    Ja\n"
              "2  '    Nein\n"
              "3\n"
              "4       Ja\n"
              "5  €\n");
}

TEST_P(SingleValues, SurviveEveryRepresentationThatCanHoldThem) {
    fill();
    const Outcome outcome = call({"check", target(), "t"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, testing::ContainsRegex("art +NkDtChar +5 +1 +5 +0 +0\n"));
    EXPECT_THAT(outcome.out, testing::ContainsRegex("aktiv +NkDtBool +5 +2 +3 +2 +0\n"));
    EXPECT_THAT(outcome.out,
                HasSubstr("Not representable: column aktiv, 2 values as check box: it is never undefined\n"));
    EXPECT_THAT(outcome.out, Not(HasSubstr("Not representable: column art")));
    EXPECT_EQ(call({"check", target(), "t", "--strict", "--where", "aktiv IS NOT NULL"}).status, 0);
}

TEST_P(SingleValues, AreBoundWhereTheyAreAskedFor) {
    execute("CREATE TABLE zahlen (n INTEGER, s TEXT)");
    execute("INSERT INTO zahlen VALUES (1, 'x'), (0, 'y'), (NULL, NULL)");
    const Outcome outcome = call({"show", target(), "zahlen", "--as", "n=Bool", "--as", "s=NkDtChar"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "n     s\n----  -\nJa    x\nNein  y\n\n");
}

TEST_P(SingleValues, OfMoreThanOneCharacterAreRefusedWithRowAndColumn) {
    execute("CREATE TABLE texte (s TEXT)");
    execute("INSERT INTO texte VALUES ('a'), ('ab'), ('ü')");
    const Outcome shown = call({"show", target(), "texte", "--as", "s=Char"});
    EXPECT_EQ(shown.status, 1);
    EXPECT_THAT(shown.err, HasSubstr("Zeile 2, Spalte s: Der Text ist länger als ein Zeichen"));
    const Outcome checked = call({"check", target(), "texte", "--as", "s=Char"});
    EXPECT_EQ(checked.status, 1);
    EXPECT_THAT(checked.err, HasSubstr("Zeile 2, Spalte s"));
    EXPECT_THAT(checked.out, testing::ContainsRegex("s +NkDtChar +3 +0 +2 +0 +1\n"));
}

TEST_P(SingleValues, AreBroughtBackByEveryFormat) {
    fill();
    for (const char* format : {"extern", "sql", "archive"}) {
        const Outcome outcome = transfer(format);
        ASSERT_EQ(outcome.status, 0) << format << ": " << outcome.err;
        const Outcome compared = call({"compare", target(), "t", target(), "u", "--sort", "n"});
        EXPECT_EQ(compared.status, 0) << format << ": " << compared.err;
        EXPECT_THAT(compared.out, HasSubstr("5 rows, 3 columns"));
        const Outcome checked = call({"check", target(), "u"});
        EXPECT_THAT(checked.out, testing::ContainsRegex("art +NkDtChar +5 "));  // the created types
        EXPECT_THAT(checked.out, testing::ContainsRegex("aktiv +NkDtBool +5 "));
        execute("DROP TABLE u");
    }
}

TEST_P(SingleValues, OfAFileThatIsNotTheirsAreRefusedAndNothingIsImported) {
    struct Case {
        const char* format;
        const char* from;
        const char* to;
        const char* message;
    };
    constexpr Case cases[] = {
        {"extern", "1:100:q", "1:100:qx", "row 2, column art: \"qx\" is longer than one character"},
        {"extern", "1:100:J", "1:100:X", "row 2, column aktiv: \"X\" is no truth value"},
        {"extern", "1:100:J", "1:100:", "row 2, column aktiv: \"\" is no truth value"},
        {"sql", "'q'", "'qx'", "row 2, column art: \"qx\" is longer than one character"},
        {"sql", "'1'", "'10'", "row 2, column aktiv: \"10\" is no truth value"},
        {"sql", "'1'", "'2'", "row 2, column aktiv: "},
        {"sql", "'1'", "1", "row 2, column aktiv: "},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.to);
        const Outcome outcome = importChanged(each.format, each.from, each.to);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.err, HasSubstr(each.message));
        EXPECT_EQ(valueOf(target(), "SELECT COUNT(*) FROM u"), "0");
        execute("DROP TABLE u");
        execute("DELETE FROM t");
    }
}

TEST(SingleValuesOfSqlite, NameANumberThatTextsDoNotKeep) {
    const TemporaryFolder folder;
    const std::string database = makeDatabase(
        folder, "a.db", {"CREATE TABLE t (b BIT)", "INSERT INTO t VALUES (5), (1), (0), (NULL)"});
    const Outcome outcome = call({"check", database, "t"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, testing::ContainsRegex("b +NkDtBool +4 +1 +2 +2 +0\n"));
    EXPECT_THAT(outcome.out, HasSubstr("Not representable: column b, 1 value as SQL literal: "));
    EXPECT_THAT(outcome.out, HasSubstr("Not representable: column b, 1 value as edit control: "));
    EXPECT_EQ(call({"check", database, "t", "--strict"}).status, 1);
}

INSTANTIATE_TEST_SUITE_P(Databases, SingleValues, testing::Values(CDatabase::sqlite, CDatabase::postgresql),
                         databaseName);
