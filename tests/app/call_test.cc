#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "AppTest.h"
#include "TemporaryFile.h"

using namespace nktest;

namespace {

class Calls : public testing::Test {
  protected:
    TemporaryFolder folder;
    std::string database = makeDatabase(
        folder, "test.db",
        {"CREATE TABLE Kunden (Nummer INTEGER, Name TEXT, Preis NUMERIC, Bild BLOB)",
         "INSERT INTO Kunden VALUES (1, 'Müller', 1.5, NULL)", "CREATE TABLE Bilder (Bild BLOB)"});
};

/// A wrong call: status 2, and one line that tells why.
void expectWrongCall(const Arguments& arguments, const std::string& reason) {
    const Outcome outcome = call(arguments);
    EXPECT_EQ(outcome.status, 2) << testing::PrintToString(arguments);
    EXPECT_THAT(outcome.err, HasSubstr(reason));
    EXPECT_TRUE(outcome.err.starts_with("nkdt: ")) << outcome.err;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    EXPECT_THAT(outcome.out, IsEmpty());
}

}  // namespace

TEST_F(Calls, ForHelpAndVersionAreGood) {
    const Outcome help = call({"--help"});
    EXPECT_EQ(help.status, 0);
    for (const char* command : {"show", "check", "export", "import", "compare", "edit", "demo"})
        EXPECT_THAT(help.out, HasSubstr(command));
    EXPECT_THAT(help.err, IsEmpty());
    EXPECT_EQ(call({"export", "--help"}).status, 0);
    const Outcome version = call({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_THAT(version.out, testing::MatchesRegex("nkdt [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST_F(Calls, WithoutWhatTheyNeedAreWrong) {
    expectWrongCall({}, "subcommand");
    expectWrongCall({"verkaufen"}, "verkaufen");
    expectWrongCall({"show"}, "DB");
    expectWrongCall({"show", database}, "TABLE");
    expectWrongCall({"check", database}, "TABLE");
    expectWrongCall({"edit", database, "Kunden"}, "KEY");
    expectWrongCall({"export", database, "Kunden", "--format", "extern"}, "--output");
    expectWrongCall({"import", database, "Kunden", "--input", "x"}, "--format");
}

TEST_F(Calls, WithMalformedOptionsAreWrong) {
    expectWrongCall({"show", database, "Kunden", "--limit", "viele"}, "viele");
    expectWrongCall({"show", database, "Kunden", "--limit", "-1"}, "--limit");
    expectWrongCall({"show", database, "Kunden", "--width", "0"}, "--width");
    expectWrongCall({"show", database, "Kunden", "--farbig"}, "--farbig");
    expectWrongCall({"show", database, "Kunden", "Lieferanten"}, "Lieferanten");
    expectWrongCall({"export", database, "Kunden", "--format", "csv", "--output", folder.file("x")}, "csv");
    expectWrongCall({"demo", folder.file("neu.db"), "--rows", "-5"}, "--rows");
}

TEST_F(Calls, ThatNameNoDatabaseAreWrong) {
    expectWrongCall({"show", folder.file("fehlt.db"), "Kunden"}, "fehlt.db");
    expectWrongCall({"show", folder.file("a;b.db"), "Kunden"}, "\";\"");
    expectWrongCall({"show", folder.file(""), "Kunden"}, "folder");
    expectWrongCall({"show", "", "Kunden"}, "no database");
    expectWrongCall({"show", folder.file("test.db/x.db"), "Kunden"}, "no database file");
    EXPECT_EQ(filesIn(folder.file("")), std::vector<std::string>{"test.db"})
        << "a mistyped path makes no file";
}

TEST_F(Calls, ThatNameNoTableAreWrong) {
    for (const char* command : {"show", "check"})
        expectWrongCall({command, database, "Lieferanten"}, "no table \"Lieferanten\"");
    expectWrongCall({"check", database, "Kunden", "Lieferanten"}, "no table \"Lieferanten\"");
    expectWrongCall({"show", database, "客户"}, "code page 1252");
    expectWrongCall({"export", database, "Lieferanten", "--format", "sql", "--output", folder.file("x")},
                    "Lieferanten");
    writeFile(folder.file("leer"), "");
    expectWrongCall({"import", database, "Lieferanten", "--format", "sql", "--input", folder.file("leer")},
                    "Lieferanten");
}

TEST_F(Calls, ThatNameNoColumnOrTypeAreWrong) {
    expectWrongCall({"show", database, "Kunden", "--columns", "Nummer,Ort"}, "no column \"Ort\"");
    expectWrongCall({"show", database, "Kunden", "--as", "Ort=String"}, "no column \"Ort\"");
    expectWrongCall({"show", database, "Kunden", "--as", "Name"}, "COLUMN=TYPE");
    expectWrongCall({"show", database, "Kunden", "--as", "Name=Zahl"}, "no type \"Zahl\"");
    expectWrongCall({"show", database, "Kunden", "--as", "Name=String", "--as", "name=Long"}, "twice");
    expectWrongCall({"show", database, "Kunden", "--columns", "Nummer,Name,nummer"},
                    "--columns names the column Nummer twice");
    expectWrongCall({"check", database, "Kunden", "Bilder", "--as", "Name=String"}, "one table");
}

TEST_F(Calls, ThatNameNoFileAreWrong) {
    expectWrongCall({"import", database, "Kunden", "--format", "sql", "--input", folder.file("fehlt")},
                    "fehlt");
    expectWrongCall({"import", database, "Kunden", "--format", "sql", "--input", folder.file("")}, "folder");
    expectWrongCall({"export", database, "Kunden", "--format", "sql", "--output", folder.file("")}, "folder");
    expectWrongCall({"export", database, "Kunden", "--format", "sql", "--output", folder.file("fehlt/x")},
                    "no folder");
}

TEST_F(Calls, WithNamesThatAreNoUtf8AreToldInUtf8) {
    expectWrongCall({"show", database, "Kund\xFC"}, "the table \"Kund\xEF\xBF\xBD\" is no UTF-8");
    expectWrongCall({"show", folder.file("\xFC.db"), "Kunden"}, "/\xEF\xBF\xBD.db\"");
    expectWrongCall({"show", database, "Kunden", "--as", "a\nb=Long"}, "no column \"a␊b\"");
    expectWrongCall({"show", database, "客户\uFFFD"}, "\"客户\uFFFD\" has a character that code page 1252");
}

TEST_F(Calls, FailWithTheDataForAFileThatIsNoDatabase) {
    const std::string file = folder.file("text.db");
    writeFile(file, std::string(5000, 'x'));
    const Outcome outcome = call({"show", file, "Kunden"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("\"" + file + "\": "));
}

TEST_F(Calls, FailWithTheSystemsReasonForAPathThatCannotBeLookedAt) {
    const std::string path = folder.file(std::string(300, 'x'));
    const Outcome outcome = call({"show", path, "Kunden"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("\"" + path + "\""));
    EXPECT_THAT(outcome.err, HasSubstr(std::strerror(ENAMETOOLONG)));
}

TEST_F(Calls, FailWithTheDataWhenNoColumnCanBeBound) {
    const Outcome outcome = call({"show", database, "Bilder"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err,
                HasSubstr("no column of table Bilder can be bound by its type; --as COLUMN=TYPE binds one"));
}

TEST_F(Calls, OfTheProgramEndWithTheSameStatus) {
    if (programFile().empty()) GTEST_SKIP() << "NKDT_PROGRAM is not set";
    EXPECT_EQ(callProgram(folder, {"--version"}).status, 0);
    EXPECT_EQ(callProgram(folder, {"show", database, "Kunden"}).status, 0);
    EXPECT_EQ(callProgram(folder, {"show", database, "Bilder"}).status, 1);
    EXPECT_EQ(callProgram(folder, {"show", database, "Lieferanten"}).status, 2);
    EXPECT_EQ(callProgram(folder, {}).status, 2);
}

TEST_F(Calls, WriteNoProgressLineIntoAPipe) {
    if (programFile().empty()) GTEST_SKIP() << "NKDT_PROGRAM is not set";
    const Outcome outcome = callProgram(folder, {"demo", "--rows", "20000"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, IsEmpty());
}

TEST(ProgressLines, AppearOnATerminalAndVanish) {
    std::ostringstream out;
    std::ostringstream err;
    nkdt::app::Console console{out, err, true};
    {
        nkdt::app::Progress progress(console, "reading");
        for (LONGLONG rows = 0; err.str().empty(); rows += 256)
            progress.show(rows);
    }
    EXPECT_THAT(err.str(), testing::MatchesRegex("\rreading: [0-9]+ rows\r\033\\[K"));
    EXPECT_THAT(out.str(), IsEmpty());
}

TEST(TemporaryFiles, VanishWithTheirObjectUnlessKept) {
    const TemporaryFolder folder;
    std::string kept;
    {
        const nkdt::app::TemporaryFile file(nkdt::app::TemporaryFile::make(folder.file("a.XXXXXX")));
        nkdt::app::TemporaryFile other(nkdt::app::TemporaryFile::make(folder.file("b.XXXXXX")));
        kept = std::filesystem::path(other.path()).filename().string();
        EXPECT_EQ(filesIn(folder.file("")).size(), 2U);
        other.keep();
    }
    EXPECT_EQ(filesIn(folder.file("")), std::vector<std::string>{kept});
}

TEST(TemporaryFiles, VanishWhenASignalEndsTheProgram) {
    const TemporaryFolder folder;
    const pid_t child = ::fork();
    if (child == 0) {
        nkdt::app::TemporaryFile::watchSignals();
        const nkdt::app::TemporaryFile file(nkdt::app::TemporaryFile::make(folder.file("a.XXXXXX")));
        (void)::raise(SIGTERM);
        ::_exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_THAT(filesIn(folder.file("")), IsEmpty());
}
