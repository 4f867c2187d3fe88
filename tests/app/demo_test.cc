#include "AppTest.h"
#include "NewRow.h"
#include "ScreenDialog.h"

using namespace nktest;

namespace {

class Demo : public testing::Test {
  protected:
    TemporaryFolder folder;
    std::string database = folder.file("demo.db");
};

}  // namespace

TEST_F(Demo, TakesARowDownTheRoadAndBack) {
    const Outcome outcome = call({"demo", database});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.err, IsEmpty());
    for (const char* station :
         {"read from the database", "dialog", "user-interface text", "computation", "SQL literal",
          "external text", "archive", "recordset field", "back in the database"}) {
        EXPECT_THAT(outcome.out, HasSubstr(std::string("\n") + station));
    }
    EXPECT_THAT(outcome.out, HasSubstr("'Müllers \"Größe\" O''Neill & Söhne'"));
    EXPECT_THAT(outcome.out, HasSubstr("small letter = ü"));
    EXPECT_THAT(outcome.out, HasSubstr("not = Ja"));
    EXPECT_THAT(outcome.out, HasSubstr("defined, 100, \"J\""));
    EXPECT_THAT(outcome.out, HasSubstr("* 3 = -37037036703703703.6703703701"));
    EXPECT_THAT(outcome.out, HasSubstr("-12.345.678.901.234.567,8901234567"));
    EXPECT_THAT(outcome.out, HasSubstr("14 bytes (not representable: a record has 64 bits for the digits)"));
    EXPECT_THAT(outcome.out, HasSubstr("0,00 (not representable: the default format shows two places)"));
    EXPECT_THAT(outcome.out, HasSubstr("+ 1 month = 29.03.2000"));
    EXPECT_THAT(outcome.out, HasSubstr("'29.03.2000 00:00'"));
    EXPECT_THAT(outcome.out, HasSubstr("defined, 100, \"D29032000\""));
    EXPECT_THAT(outcome.out, HasSubstr("29.02.2000 12:30:00"));
    EXPECT_THAT(outcome.out, HasSubstr("+ 13 hours = 01.03.2000 01:30:00"));
    EXPECT_THAT(outcome.out, HasSubstr("defined, 100, \"C01032000013000\""));
    EXPECT_THAT(outcome.out, HasSubstr("NkDtTime -01:30"));
    EXPECT_THAT(outcome.out, HasSubstr("+ 0:45 = -00:45"));
    EXPECT_THAT(outcome.out, HasSubstr("\"T004500\" (not representable: it has no sign below one hour)"));
    EXPECT_THAT(outcome.out, HasSubstr("'2000-03-29', '2000-03-01 01:30:00', -900)"));
    EXPECT_THAT(outcome.out, HasSubstr("Bild (BLOB): not bindable"));
}

TEST_F(Demo, TellsTheRoadOfOneAmountThatIsCorrectedInTheDialog) {
    const Outcome outcome = call({"demo", database});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const std::string story = outcome.out.substr(outcome.out.find("One amount on its road"));
    std::size_t place = 0;
    for (const char* line :
         {"read from the database  NkDtDecimal -9007199254740993\n",
          "dialog                  -9.007.199.254.740.993,00, entered -9.007.199.254.740.990,00\n",
          "computation             * 3 = -27021597764222970\n",
          "SQL literal             -27021597764222970.00\n",
          "external text           defined, 100, \"-2.702159776422297000E+016\"\n", "archive  ",
          "DEC record              defined, 01000200A8FDFFFFFFFF7F250000, 14 bytes\n",
          "back in the database    -27021597764222970\n"}) {
        place = story.find(line, place);
        ASSERT_NE(place, std::string::npos) << line << '\n' << story;
    }
    EXPECT_EQ(valueOf(database, "SELECT Bestandswert FROM Artikel WHERE Nummer = 1002"),
              "-27021597764222970");
}

TEST_F(Demo, HasNoPictureWithoutDialogs) {
    if (nkdt::app::hasScreenDialogs()) GTEST_SKIP() << "built with dialogs";
    for (const Arguments& wish : {Arguments{"--picture", folder.file("bild.png")}, Arguments{"--dialog"}}) {
        Arguments arguments{"demo", database};
        arguments.insert(arguments.end(), wish.begin(), wish.end());
        const Outcome outcome = call(arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_THAT(outcome.err, HasSubstr("without dialogs"));
    }
}

TEST_F(Demo, EntersTheAmountItselfWhereNobodySeesTheDialog) {
    if (programFile().empty()) GTEST_SKIP() << "NKDT_PROGRAM is not set";
    if (!nkdt::app::hasScreenDialogs()) GTEST_SKIP() << "built without dialogs";
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        ASSERT_EQ(::unsetenv(name), 0);
    const Outcome outcome = callProgram(folder, {"demo", database, "--dialog"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("entered -9.007.199.254.740.990,00"));
}

TEST_F(Demo, EntersTheAmountItselfWhereTheDisplayDoesNotAnswer) {
    if (programFile().empty()) GTEST_SKIP() << "NKDT_PROGRAM is not set";
    if (!nkdt::app::hasScreenDialogs()) GTEST_SKIP() << "built without dialogs";
    for (const char* name : {"WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        ASSERT_EQ(::unsetenv(name), 0);
    ASSERT_EQ(::setenv("DISPLAY", ":9999", 1), 0);
    const Outcome outcome = callProgram(folder, {"demo", database, "--dialog"});
    ASSERT_EQ(::unsetenv("DISPLAY"), 0);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("entered -9.007.199.254.740.990,00"));
}

TEST_F(Demo, TellsAPersonWhyARowCannotBeANewOne) {
    const std::string path = makeDatabase(
        folder, "a.db",
        {"CREATE TABLE t (n INTEGER PRIMARY KEY, s SMALLINT)", "INSERT INTO t VALUES (1, 1), (1005, NULL)"});
    CDatabase db;
    db.Open(path.c_str());
    auto columns = nkdt::app::columnsOf(db, CString("t"), nkdt::app::Selection());
    const auto refusals = [&](const char* number, const char* quantity) {
        columns.bound[0].cell->value().SetFromOFL(number);
        columns.bound[1].cell->value().SetFromOFL(quantity);
        std::vector<std::string> texts;
        for (const auto& refusal : nkdt::app::refusalsOfNewRow(db, CString("t"), columns.bound))
            texts.push_back(columns.bound[refusal.column].name + ": " + utf8(refusal.reason.View()));
        return texts;
    };
    using testing::ElementsAre;
    using testing::StartsWith;
    EXPECT_THAT(refusals("1", "1"), IsEmpty());
    EXPECT_THAT(refusals("6", ""), IsEmpty());
    EXPECT_THAT(refusals("5", "1"), ElementsAre("n: Die Zeile 1005 gibt es schon."));
    EXPECT_THAT(refusals("", "1"), ElementsAre("n: Dieses Feld darf nicht leer sein."));
    EXPECT_THAT(refusals("2147483647", "32767"), ElementsAre(StartsWith("n: "), StartsWith("s: ")));
    EXPECT_EQ(columns.bound[0].cell->value().ConvToOFL(), CString("2147483647")) << "as it was";
}

TEST_F(Demo, LeavesADatabaseThatTheOtherCommandsTake) {
    if (!extendedPrecisionWorks()) GTEST_SKIP() << "no extended precision";
    ASSERT_EQ(call({"demo", database, "--rows", "50"}).status, 0);
    EXPECT_EQ(valueOf(database, "SELECT COUNT(*) FROM Artikel"), "57");
    EXPECT_EQ(valueOf(database, "SELECT Preis FROM Artikel WHERE Nummer = 2"),
              "-12345678901234567.8901234567");
    EXPECT_EQ(call({"check", database, "Artikel"}).status, 0);
    EXPECT_EQ(call({"check", database, "Artikel", "--as", "Rüstzeit=Time"}).status, 0);
    EXPECT_EQ(call({"show", database, "Artikel"}).status, 0);
    EXPECT_EQ(filesIn(folder.file("")), std::vector<std::string>{"demo.db"});
}

TEST_F(Demo, AddsTheSameRowsEveryTime) {
    if (!extendedPrecisionWorks()) GTEST_SKIP() << "no extended precision";
    ASSERT_EQ(call({"demo", database, "--rows", "100"}).status, 0);
    ASSERT_EQ(call({"demo", folder.file("second.db"), "--rows", "100"}).status, 0);
    EXPECT_EQ(call({"compare", database, "Artikel", folder.file("second.db"), "Artikel"}).status, 0);
}

TEST_F(Demo, NeverTouchesAFileThatExists) {
    writeFile(database, "wertvoll");
    const Outcome outcome = call({"demo", database});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("exists already"));
    EXPECT_EQ(contentOf(database), "wertvoll");
}

TEST_F(Demo, RefusesAPathThatCannotBeOne) {
    EXPECT_EQ(call({"demo", folder.file("a;b.db")}).status, 2);
    EXPECT_EQ(call({"demo", folder.file("fehlt/a.db")}).status, 2);
    EXPECT_THAT(filesIn(folder.file("")), IsEmpty());
}

TEST_F(Demo, LeavesNothingWithoutADatabaseNamed) {
    if (programFile().empty()) GTEST_SKIP() << "NKDT_PROGRAM is not set";
    ASSERT_EQ(::setenv("TMPDIR", folder.file("").c_str(), 1), 0);
    const Outcome outcome = callProgram(folder, {"demo"});
    ASSERT_EQ(::unsetenv("TMPDIR"), 0);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(filesIn(folder.file("")), IsEmpty());
}

TEST_F(Demo, LeavesNothingWhenItFails) {
    if (programFile().empty()) GTEST_SKIP() << "NKDT_PROGRAM is not set";
    const Outcome outcome = callProgram(folder, {"demo", database, "--rows", "20000"}, 100000);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, Not(IsEmpty()));
    EXPECT_THAT(filesIn(folder.file("")), IsEmpty());
}

TEST_F(Demo, WorksOnPostgresqlOnceForATable) {
    if (PostgresServer::instance() == nullptr)
        GTEST_SKIP() << "PostgreSQL's server programs are not installed";
    if (!extendedPrecisionWorks()) GTEST_SKIP() << "no extended precision";
    const std::string target = PostgresServer::instance()->connectionString();
    const Outcome outcome = call({"demo", target, "--rows", "20"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(valueOf(target, "SELECT COUNT(*) FROM \"Artikel\""), "27");
    EXPECT_EQ(call({"check", target, "Artikel"}).status, 0);
    ASSERT_EQ(call({"demo", database, "--rows", "20"}).status, 0);
    EXPECT_EQ(call({"compare", target, "Artikel", database, "Artikel", "--sort", "\"Nummer\""}).status, 0);
    EXPECT_EQ(call({"demo", target}).status, 2);
}
