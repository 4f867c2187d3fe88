#include "Text.h"

#include "AppTest.h"
#include "Error.h"
#include "SqlLiteral.h"
#include "TextTable.h"

using namespace nkdt::app;
using nktest::HasSubstr;

namespace {

std::string dataErrorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const DataError& error) {
        return error.what();
    }
    return "";
}

// A text with every byte but NUL.
std::string allBytes() {
    std::string text;
    for (int byte = 1; byte < 256; ++byte)
        text += static_cast<char>(byte);
    return text;
}

}  // namespace

TEST(VisibleText, ShowsControlCharactersAsOneSignEach) {
    EXPECT_EQ(visible("a\nb\tc"), "a␊b␉c");
    EXPECT_EQ(visible("\x7F"), "␡");
    EXPECT_EQ(visible("\x9D"), "\xEF\xBF\xBD");
}

TEST(PrintableText, IsOneLineOfUtf8WhateverComesFromOutside) {
    EXPECT_EQ(printable("客户 für 5 €"), "客户 für 5 €");
    EXPECT_EQ(printable("a\n\x1B[2J\x7F"), "a␊␛[2J␡");
    EXPECT_EQ(printable("M\xFCller\xC3"), "M\xEF\xBF\xBDller\xEF\xBF\xBD");
    EXPECT_EQ(printable(""), "");
}

TEST(CountedThings, AreOneOrSeveral) {
    EXPECT_EQ(counted(0, "row"), "0 rows");
    EXPECT_EQ(counted(1, "row"), "1 row");
    EXPECT_EQ(counted(2, "column"), "2 columns");
}

TEST(VisibleText, KeepsLettersBeyondAscii) {
    EXPECT_EQ(visible("M\xFCller \x80"), "Müller €");
}

TEST(VisibleText, HasAsManyCharactersAsTheTextHasBytes) {
    EXPECT_EQ(characterCount(visible(allBytes())), 255U);
}

TEST(SentenceText, TurnsLineEndsIntoBlanksAndDropsTheLast) {
    EXPECT_EQ(sentence("eins\nzwei\r\n"), "eins zwei");
}

TEST(AnsiText, RefusesWhatCodePage1252DoesNotHave) {
    EXPECT_THROW((void)ansi("中", "the table"), UsageError);
    EXPECT_EQ(ansi("Größe", "the table"),
              "Gr\xF6\xDF"
              "e");
}

TEST(ShortenedText, EndsInAnEllipsisWithinTheLength) {
    EXPECT_EQ(shortened("Größe", 5), "Größe");
    EXPECT_EQ(shortened("Größe", 4), "Grö…");
    EXPECT_EQ(shortened("Größe", 1), "…");
}

TEST(EscapedText, IsReadBackByteForByte) {
    EXPECT_EQ(unescaped(escaped(allBytes())).View(), allBytes());
}

TEST(EscapedText, StaysOnOneLineWithoutTabs) {
    EXPECT_EQ(escaped("a\nb\tc\rd\\e\x1B"), "a\\nb\\tc\\rd\\\\e\\x1B");
}

TEST(EscapedText, IsRefusedWhenItIsNotWellFormed) {
    for (const char* text : {"\\", "\\q", "\\x", "\\x1", "\\xG1", "\\x00", "\\x 1", "a\tb", "\xFF", "中"}) {
        EXPECT_NE(dataErrorOf([&] { (void)unescaped(text); }), "") << text;
    }
}

TEST(SqlLiterals, AreTakenOneByOne) {
    std::string_view text = "'O''Neill', -42,NULL)";
    const SqlLiteral name = takeSqlLiteral(text);
    EXPECT_EQ(name.form, SqlLiteral::quoted);
    EXPECT_EQ(name.text, "O'Neill");
    text.remove_prefix(2);
    const SqlLiteral number = takeSqlLiteral(text);
    EXPECT_EQ(number.form, SqlLiteral::plain);
    EXPECT_EQ(number.text, "-42");
    text.remove_prefix(1);
    EXPECT_EQ(takeSqlLiteral(text).form, SqlLiteral::null);
    EXPECT_EQ(text, ")");
}

TEST(SqlLiterals, KeepEmptyTextsAndApostrophesAlone) {
    std::string_view empty = "''";
    EXPECT_EQ(takeSqlLiteral(empty).text, "");
    std::string_view apostrophes = "''''''";
    EXPECT_EQ(takeSqlLiteral(apostrophes).text, "''");
}

TEST(SqlLiterals, AreRefusedWhenTheyAreNone) {
    for (std::string_view text : {"", "'abc", "'abc''", ")", "(SELECT 1)", "\"a\""}) {
        std::string_view rest = text;
        EXPECT_NE(dataErrorOf([&] { (void)takeSqlLiteral(rest); }), "") << text;
    }
}

TEST(TextTables, AlignNumbersRightAndCountCharacters) {
    std::ostringstream out;
    TextTable({{"Größe"}, {"n", TextTable::right}, {"x"}})
        .writeAll(out, {{"ü", "12", "a"}, {"", "", ""}, {"Straße", "345", ""}});
    EXPECT_EQ(out.str(),
              "Größe     n  x\n"
              "------  ---  -\n"
              "ü        12  a\n"
              "\n"
              "Straße  345\n");
}
