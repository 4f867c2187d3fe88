#include "TableFile.h"

#include "AppTest.h"
#include "Error.h"
#include "nkfw/File.h"

using namespace nktest;

namespace {

using nkdt::app::BoundColumns;

/// A small table as a file of each format.
class TableFiles : public testing::TestWithParam<const char*> {
  protected:
    static std::string exported(const std::string& condition) {
        const TemporaryFolder folder;
        const std::string source = makeDatabase(
            folder, "a.db",
            {"CREATE TABLE Waren (Nummer INTEGER, Stück SMALLINT, Name TEXT)",
             "INSERT INTO Waren VALUES (1, -2, 'O''Neill\nMüller'), (NULL, NULL, NULL), (4711, 300, '')"});
        const std::string file = folder.file("waren");
        EXPECT_EQ(
            call({"export", source, "Waren", "--format", GetParam(), "--output", file, "--where", condition})
                .status,
            0);
        return contentOf(file);
    }

    /// The texts of all rows that the file holds. Throws what the reader throws.
    static std::vector<std::string> read(const std::string& content) {
        CMemFile file(content.data(), static_cast<UINT>(content.size()));
        const auto reader = nkdt::app::requireFormat(GetParam()).makeReader(file);
        BoundColumns columns;
        for (const auto& column : reader->head().columns)
            columns.push_back({column.name.GetString(), column.name, column.kind, column.kind->makeCell()});
        std::vector<std::string> rows;
        for (LONGLONG row = 1; reader->next(row, columns); ++row) {
            rows.emplace_back();
            for (const auto& column : columns)
                rows.back() += column.cell->value().IsDefined()
                                   ? column.cell->text().GetValue() + std::string("|")
                                   : "-|";
        }
        return rows;
    }

    /// Whether the file is refused, with an error that says something.
    static bool isRefused(const std::string& content) {
        try {
            (void)read(content);
            return false;
        } catch (...) {
            EXPECT_THAT(nkdt::app::takeCaughtText(), Not(IsEmpty()));
            return true;
        }
    }
};

class TextTableFiles : public TableFiles {};

class BadExternFiles : public testing::TestWithParam<const char*> {};
class BadSqlStatements : public testing::TestWithParam<const char*> {};
class BadSqlValues : public testing::TestWithParam<const char*> {};

const std::string externHead =
    "nkdt extern 1\ntable Waren\ncolumn NkDtLong Nummer\ncolumn NkDtString Name\nrows\n";
const std::string sqlHead =
    "-- nkdt sql 1\n-- table Waren\n-- column NkDtLong Nummer\n-- column NkDtString Name\n-- rows\n";

const std::string sqlStart = "INSERT INTO \"Waren\" (\"Nummer\", \"Name\") VALUES (";

Outcome importContent(const char* format, const std::string& content) {
    const TemporaryFolder folder;
    const std::string target =
        makeDatabase(folder, "ziel.db", {"CREATE TABLE Waren (Nummer INTEGER, Name TEXT)"});
    writeFile(folder.file("waren"), content);
    const Outcome outcome =
        call({"import", target, "Waren", "--format", format, "--input", folder.file("waren")});
    EXPECT_EQ(valueOf(target, "SELECT COUNT(*) FROM Waren"), outcome.status == 0 ? "1" : "0");
    return outcome;
}

}  // namespace

TEST_P(TableFiles, HoldTheRowsThatWereWritten) {
    EXPECT_THAT(read(exported("1 = 1")),
                testing::ElementsAre("1|-2|O'Neill\nM\xFCller|", "-|-|-|", "4711|300||"));
    EXPECT_THAT(read(exported("1 = 0")), IsEmpty());
}

TEST_P(TableFiles, AreRefusedWhenTheyAreCutOffAnywhere) {
    const std::string content = exported("1 = 1");
    // Without its last line end a text file is complete all the same.
    const std::size_t needed = content.size() - (content.back() == '\n' ? 1 : 0);
    for (std::size_t length = 0; length < needed; ++length)
        EXPECT_TRUE(isRefused(content.substr(0, length))) << length;
}

TEST_P(TableFiles, WithOneWrongByteAreRefusedOrReadWithAsManyRows) {
    const std::string content = exported("1 = 1");
    int refused = 0;
    for (std::size_t position = 0; position < content.size(); ++position) {
        for (const char byte : {'\0', '\1', '\n', '\'', '0', '\x7F', '\x80', '\xFF'}) {
            std::string changed = content;
            changed[position] = byte;
            if (isRefused(changed)) {
                ++refused;
            } else {
                ASSERT_EQ(read(changed).size(), 3U) << position << " " << int{byte};
            }
        }
    }
    EXPECT_GT(refused, static_cast<int>(content.size()));
}

TEST_P(TableFiles, WithSomethingBehindTheEndAreRefused) {
    EXPECT_TRUE(isRefused(exported("1 = 1") + "x"));
}

TEST_P(TextTableFiles, MayHaveLineEndsOfTwoCharacters) {
    std::string content = exported("Nummer = 4711");
    for (std::size_t end = 0; (end = content.find('\n', end)) != std::string::npos; end += 2)
        content.insert(end, "\r");
    EXPECT_THAT(read(content), testing::ElementsAre("4711|300||"));
}

constexpr auto formatName = [](const testing::TestParamInfo<const char*>& format) {
    return std::string(format.param);
};
INSTANTIATE_TEST_SUITE_P(Formats, TableFiles, testing::Values("extern", "sql", "archive"), formatName);
INSTANTIATE_TEST_SUITE_P(Formats, TextTableFiles, testing::Values("extern", "sql"), formatName);

TEST(ExternFiles, LookAsDocumented) {
    const TemporaryFolder folder;
    const std::string source =
        makeDatabase(folder, "a.db",
                     {"CREATE TABLE \"Groß Kunden\" (\"Kunden Nr\" INTEGER, Name TEXT)",
                      "INSERT INTO \"Groß Kunden\" VALUES (4711, 'Müller\nKöln\\'), (NULL, NULL)"});
    ASSERT_EQ(
        call({"export", source, "Groß Kunden", "--format", "extern", "--output", folder.file("f")}).status,
        0);
    EXPECT_EQ(contentOf(folder.file("f")),
              "nkdt extern 1\ntable Groß Kunden\ncolumn NkDtLong Kunden Nr\ncolumn NkDtString Name\nrows\n"
              "1:100:4711\t1:100:Müller\\nKöln\\\\\n"
              "0:100:0\t0:100:\n"
              "end 2\n");
}

TEST(SqlFiles, LookAsDocumented) {
    const TemporaryFolder folder;
    const std::string source = makeDatabase(folder, "a.db",
                                            {"CREATE TABLE Kunden (Nummer INTEGER, Name TEXT)",
                                             "INSERT INTO Kunden VALUES (4711, 'Müller''s'), (NULL, NULL)"});
    ASSERT_EQ(call({"export", source, "Kunden", "--format", "sql", "--output", folder.file("f")}).status, 0);
    EXPECT_EQ(contentOf(folder.file("f")),
              "-- nkdt sql 1\n-- table Kunden\n-- column NkDtLong Nummer\n-- column NkDtString Name\n-- "
              "rows\nBEGIN;\n"
              "INSERT INTO \"Kunden\" (\"Nummer\", \"Name\") VALUES (4711, 'Müller''s');\n"
              "INSERT INTO \"Kunden\" (\"Nummer\", \"Name\") VALUES (NULL, NULL);\n"
              "COMMIT;\n-- end 2\n");
}

TEST(ExternFiles, AreReadAsTheyAreWritten) {
    EXPECT_EQ(importContent("extern", externHead + "1:100:5\t1:100:a\nend 1\n").status, 0);
}

TEST(SqlFiles, AreReadAsTheyAreWritten) {
    EXPECT_EQ(
        importContent(
            "sql",
            sqlHead +
                "BEGIN;\nINSERT INTO \"Waren\" (\"Nummer\", \"Name\") VALUES (5, 'a');\nCOMMIT;\n-- end 1\n")
            .status,
        0);
}

TEST_P(BadExternFiles, AreRefusedWithTheirRow) {
    const Outcome outcome = importContent("extern", externHead + GetParam() + "\nend 1\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("row 1"));
}

INSTANTIATE_TEST_SUITE_P(Rows, BadExternFiles,
                         testing::Values("", "1:100:5", "1:100:5\t1:100:a\t1:100:b", "2:100:5\t1:100:a",
                                         "1:101:5\t1:100:a", "1::5\t1:100:a", "1:100\t1:100:a",
                                         "1:70000:5\t1:100:a", "1:100:x\t1:100:a", "1:100:5x\t1:100:a",
                                         "1:100:2147483648\t1:100:a", "1:100:5\t1:100:\\q",
                                         "1:100:5\t1:100:\xFF", "1:100:5\t1:100:中", "1:100:5\t1:100:\x01"));

TEST(ExternFiles, NameTheErrorAndItsColumn) {
    EXPECT_THAT(importContent("extern", externHead + "1:100:5\t1:100:a\n1:101:6\t1:100:b\nend 2\n").err,
                HasSubstr("row 2, column Nummer: \"6\": Falsche Versionsnummer"));
    EXPECT_THAT(importContent("extern", externHead + "1:100:2147483648\t1:100:b\nend 1\n").err,
                HasSubstr("row 1, column Nummer: \"2147483648\": Default-Catch / Folgefehler"));
}

TEST(ExternFiles, WithABadHeadAreRefused) {
    for (const char* head :
         {"nkdt extern 2\n", "nkdt extern 1\nrows\n", "nkdt extern 1\ntable Waren\nrows\n",
          "nkdt extern 1\ntable Waren\ncolumn NkDtLong\nrows\n",
          "nkdt extern 1\ntable Waren\ncolumn NkDtFloat x\nrows\n",
          "nkdt extern 1\ntable Waren\ncolumn Long x\nrows\n",
          "nkdt extern 1\ntable Waren\\q\ncolumn NkDtLong Nummer\nrows\n",
          "nkdt extern 1\ntable Waren\ncolumn NkDtLong Nummer\ncolumn NkDtLong Nummer\nrows\n"}) {
        EXPECT_EQ(importContent("extern", head + std::string("end 0\n")).status, 1) << head;
    }
    EXPECT_THAT(importContent("extern", "nkdt extern 7\n").err, HasSubstr("version 7"));
    EXPECT_THAT(importContent("extern", "nkdt extern 1\ntable Waren\ncolumn NkDtFloat Nummer\nrows\n").err,
                HasSubstr("a column of the class \"NkDtFloat\", which there is not"));
    EXPECT_THAT(importContent("extern", "nkdt extern 1\ntable Waren\ncolumn NkDtTime Nummer\nrows\n").err,
                HasSubstr("column Nummer is NkDtTime in the file, but NkDtLong in the table"));
}

TEST(ExternFiles, WithAWrongNumberOfRowsAreRefused) {
    EXPECT_THAT(importContent("extern", externHead + "1:100:5\t1:100:a\nend 2\n").err,
                HasSubstr("tells 2 rows, but there are 1"));
}

TEST_P(BadSqlStatements, AreRefusedWithTheirRowAndNeverExecuted) {
    const Outcome outcome = importContent("sql", sqlHead + "BEGIN;\n" + GetParam() + "\nCOMMIT;\n-- end 1\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("row 1"));
}

INSTANTIATE_TEST_SUITE_P(Statements, BadSqlStatements,
                         testing::Values("", "DROP TABLE Waren;", "DELETE FROM \"Waren\";",
                                         "INSERT INTO Waren VALUES (1, 'a');",
                                         "INSERT INTO \"Waren\" (\"Name\", \"Nummer\") VALUES (1, 'a');",
                                         "insert into \"Waren\" (\"Nummer\", \"Name\") values (1, 'a');"));

TEST_P(BadSqlValues, AreRefusedWithTheirRow) {
    const Outcome outcome =
        importContent("sql", sqlHead + "BEGIN;\n" + sqlStart + GetParam() + "\nCOMMIT;\n-- end 1\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("row 1"));
}

INSTANTIATE_TEST_SUITE_P(Values, BadSqlValues,
                         testing::Values("1);", "1, 'a', 2);", "1, 'a'", "1, 'a')",
                                         "1, 'a'); DROP TABLE Waren;", "1, 'a;", "'1', 'a');", "1, a);",
                                         "1, 5);", "x, 'a');", "1+1, 'a');", "(1), 'a');",
                                         "2147483648, 'a');", "1,'a');", ", 'a');", "'', 'a');",
                                         "1, '\xFF');", "1, '中');"));

TEST(SqlFiles, NameTheTextThatIsNoValue) {
    const auto errorOf = [](const std::string& values) {
        return importContent("sql", sqlHead + "BEGIN;\n" + sqlStart + values + "\nCOMMIT;\n-- end 1\n").err;
    };
    EXPECT_THAT(errorOf("1+1, 'a');"), HasSubstr("row 1, column Nummer: \"1+1\": Ungültiger Initialwert"));
    const std::string digits(100, '1');
    EXPECT_THAT(errorOf(digits + ", 'a');"), HasSubstr("\"" + digits.substr(0, 39) + "…\": "))
        << "a long text is shortened";
}

TEST(SqlFiles, WithANulInsideAreRefused) {
    std::string content =
        sqlHead +
        "BEGIN;\nINSERT INTO \"Waren\" (\"Nummer\", \"Name\") VALUES (5, 'a!b');\nCOMMIT;\n-- end 1\n";
    content[content.find('!')] = '\0';
    EXPECT_THAT(importContent("sql", content).err, HasSubstr("NUL"));
}
