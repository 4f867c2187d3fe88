#include "AppTest.h"

using namespace nktest;

namespace {

class Show : public EachDatabase {
  protected:
    void SetUp() override {
        EachDatabase::SetUp();
        if (IsSkipped()) return;
        execute(
            "CREATE TABLE \"Größen\" (\"Nummer\" INTEGER, \"Stück\" SMALLINT, \"Name\" VARCHAR(40), \"Ort, "
            "Straße\" TEXT, \"Preis\" "
            "NUMERIC(10,2), \"Am\" DATE, \"Um\" TIME)");
        execute(
            "INSERT INTO \"Größen\" VALUES (1, -5, 'Müller', NULL, 1.5, '2004-03-05', NULL), (-2147483648, "
            "32767, NULL, '', NULL, NULL, NULL), (NULL, NULL, 'a', 'Köln', -1234567.8, '1999-12-31', NULL)");
    }

    Outcome show(Arguments options) {
        options.insert(options.begin(), {"show", target(), "Größen"});
        return call(options);
    }
};

}  // namespace

TEST_P(Show, AlignsByCharactersAndShowsUndefinedValuesAsEmpty) {
    const Outcome outcome = show({"--sort", "\"Stück\" IS NULL, \"Stück\""});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out,
              "     Nummer  Stück  Name    Ort, Straße          Preis  Am\n"
              "-----------  -----  ------  -----------  -------------  ----------\n"
              "          1     -5  Müller                        1,50  05.03.2004\n"
              "-2147483648  32767\n"
              "                    a       Köln         -1.234.567,80  31.12.1999\n");
}

TEST_P(Show, NamesAColumnThatNoClassTakesAndWhatBindsIt) {
    EXPECT_THAT(show({}).err, HasSubstr("column Um ("));
    EXPECT_THAT(show({}).err, HasSubstr(") is left out: not bindable by its type; --as Um=TYPE binds it\n"));
    EXPECT_THAT(show({"--as", "Um=String"}).err, IsEmpty());
}

TEST_P(Show, TakesTheColumnsInTheOrderAskedFor) {
    const Outcome outcome = show({"--columns", "name,Nummer", "--columns", "Ort, Straße", "--limit", "1"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out,
              "Name    Nummer  Ort, Straße\n"
              "------  ------  -----------\n"
              "Müller       1\n");
    EXPECT_THAT(outcome.err, IsEmpty());
}

TEST_P(Show, BindsAColumnAsAnotherType) {
    const Outcome outcome = show({"--as", "Preis=String", "--as", "Nummer=nkdtstring", "--columns",
                                  "Nummer,Preis", "--where", "\"Nummer\" = 1"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, testing::StartsWith("Nummer  Preis\n------  -----\n1       1.5"));
}

TEST_P(Show, RefusesATypeThatThereIsNot) {
    const Outcome outcome = show({"--as", "Preis=Uhrzeit"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("there is no type \"Uhrzeit\"; there are Long, Short, String, Char, "
                                       "Bool, Decimal, Double, DateTime, Date, Time\n"));
}

TEST_P(Show, StopsAtTheLimit) {
    const std::string none = show({"--limit", "0"}).out;
    EXPECT_EQ(std::count(none.begin(), none.end(), '\n'), 2);
    const std::string two = show({"--limit", "2"}).out;
    EXPECT_EQ(std::count(two.begin(), two.end(), '\n'), 4);
}

TEST_P(Show, ShortensLongTextsOnlyWhenAsked) {
    execute("DELETE FROM \"Größen\"");
    execute("INSERT INTO \"Größen\" (\"Name\", \"Ort, Straße\") VALUES ('äöüÄÖÜ', 'a\nb\tc')");
    EXPECT_THAT(show({"--columns", "Name"}).out, HasSubstr("\näöüÄÖÜ\n"));
    EXPECT_THAT(show({"--columns", "Name", "--width", "4"}).out, HasSubstr("\näöü…\n"));
    EXPECT_THAT(show({"--columns", "Ort, Straße"}).out, HasSubstr("\na␊b␉c\n"))
        << "a value stays on its line";
}

TEST_P(Show, MarksAndTellsAValueThatCannotBeReadAndGoesOn) {
    execute("DELETE FROM \"Größen\"");
    execute("INSERT INTO \"Größen\" (\"Nummer\", \"Name\") VALUES (1, 'a'), (2, " + character(0x4E2D) +
            "), (3, 'c')");
    const Outcome outcome = show({"--columns", "Nummer,Name", "--sort", "\"Nummer\""});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, testing::StartsWith("nkdt: Zeile 2, Spalte Name: Zeichen U+4E2D"));
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    EXPECT_EQ(outcome.out,
              "Nummer  Name\n"
              "------  ----\n"
              "     1  a\n"
              "     2  ✗\n"
              "     3  c\n");
    EXPECT_EQ(show({"--best-fit"}).status, 0);
    EXPECT_EQ(show({"--sort", "\"Nummer\"", "--limit", "1"}).status, 0) << "the row is not reached";
}

TEST_P(Show, FailsWithTheDatabasesOwnWordsForAWrongCondition) {
    const Outcome outcome = show({"--columns", "Nummer", "--where", "Quatsch ="});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, testing::StartsWith("nkdt: the condition \"Quatsch =\": "));
    EXPECT_THAT(outcome.err, Not(HasSubstr("Zeile 1")));
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
}

TEST_P(Show, NamesAWrongOrderToo) {
    EXPECT_THAT(show({"--columns", "Nummer", "--sort", "Quatsch,,"}).err,
                testing::StartsWith("nkdt: the order \"Quatsch,,\": "));
    EXPECT_THAT(show({"--columns", "Nummer", "--where", "1 = 1", "--sort", "Quatsch"}).err,
                testing::StartsWith("nkdt: the condition \"1 = 1\", the order \"Quatsch\": "));
}

TEST_P(Show, FailsWhenTheOutputIsFull) {
    if (programFile().empty()) GTEST_SKIP() << "NKDT_PROGRAM is not set";
    const Outcome outcome = callProgram(folder, {"show", target(), "Größen"}, 10);
    EXPECT_EQ(outcome.status, 1);
}

INSTANTIATE_TEST_SUITE_P(Databases, Show, testing::Values(CDatabase::sqlite, CDatabase::postgresql),
                         databaseName);
