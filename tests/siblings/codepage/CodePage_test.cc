#include <nkcp/CodePage.h>

#include <cstdlib>
#include <fstream>
#include <ios>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "support/CodePages.h"

namespace {

using nktest::CodePages;

constexpr std::pair<UINT, UINT> directions[] = {{1252, 437}, {1252, 850}, {437, 1252}, {850, 1252}};

unsigned convert(UINT from, UINT to, unsigned byte) {
    return (*nkcp::bestFitTable(from, to))[byte];
}

TEST(BestFitTable, ExistsBetweenTheAnsiPageAndTheOemPagesOnly) {
    for (const UINT from : {0U, 437U, 850U, 1250U, 1252U, 65001U}) {
        for (const UINT to : {0U, 437U, 850U, 1250U, 1252U, 65001U}) {
            const bool ansiAndOem =
                (from == 1252 && (to == 437 || to == 850)) || (to == 1252 && (from == 437 || from == 850));
            EXPECT_EQ(nkcp::bestFitTable(from, to) != nullptr, ansiAndOem) << from << " to " << to;
        }
    }
}

TEST(BestFitTable, MatchesTheReferenceData) {
    const char* const folder = std::getenv("NKDT_REFERENCE_DATA");
    if (folder == nullptr) GTEST_SKIP() << "NKDT_REFERENCE_DATA is not set";
    std::ifstream file(std::string(folder) + "/codepages.tsv");
    ASSERT_TRUE(file);
    std::map<std::pair<UINT, UINT>, unsigned> rows;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.front() == '#') continue;
        std::istringstream fields(line);
        UINT from = 0;
        UINT to = 0;
        unsigned source = 0;
        unsigned target = 0;
        ASSERT_TRUE(fields >> std::dec >> from >> to >> std::hex >> source >> target) << line;
        ASSERT_NE(nkcp::bestFitTable(from, to), nullptr) << line;
        EXPECT_EQ(convert(from, to, source), target) << line;
        ++rows[{from, to}];
    }
    ASSERT_EQ(rows.size(), std::size(directions));
    for (const auto& direction : directions)
        EXPECT_EQ(rows[direction], 256U);
}

TEST(BestFitTable, LeavesAsciiAlone) {
    for (const auto& [from, to] : directions) {
        for (unsigned byte = 0x20; byte <= 0x7F; ++byte)
            EXPECT_EQ(convert(from, to, byte), byte);
    }
}

TEST(BestFitTable, MapsTheOemControlBytesThatShowAsCharacters) {
    for (const UINT oem : {437U, 850U}) {
        EXPECT_EQ(convert(oem, 1252, 0x0F), 0xA4U);
        EXPECT_EQ(convert(oem, 1252, 0x14), 0xB6U);
        EXPECT_EQ(convert(oem, 1252, 0x15), 0xA7U);
        for (unsigned byte = 0; byte < 0x20; ++byte) {
            EXPECT_EQ(convert(1252, oem, byte), byte);
            if (byte != 0x0F && byte != 0x14 && byte != 0x15) {
                EXPECT_EQ(convert(oem, 1252, byte), byte);
            }
        }
    }
    EXPECT_EQ(convert(1252, 437, 0xA4), 0x0FU);
    EXPECT_EQ(convert(1252, 437, 0xB6), 0x14U);
    EXPECT_EQ(convert(1252, 437, 0xA7), 0x15U);
}

TEST(BestFitTable, CharactersOfBothPagesComeBack) {
    // Umlauts, sharp s, accents, money: "ÄÖÜäöüßéàñ£¥"
    for (const char ch : std::string_view("\xC4\xD6\xDC\xE4\xF6\xFC\xDF\xE9\xE0\xF1\xA3\xA5")) {
        const auto byte = static_cast<unsigned char>(ch);
        for (const UINT oem : {437U, 850U})
            EXPECT_EQ(convert(oem, 1252, convert(1252, oem, byte)), byte);
    }
    EXPECT_EQ(convert(1252, 437, 0xC4), 0x8EU);
    EXPECT_EQ(convert(1252, 850, 0xDF), 0xE1U);
}

TEST(BestFitTable, TheWholeUpperHalfOf1252ComesBackFrom850) {
    for (unsigned byte = 0xA0; byte <= 0xFF; ++byte) {
        EXPECT_EQ(convert(850, 1252, convert(1252, 850, byte)), byte) << std::hex << byte;
    }
}

TEST(BestFitTable, MissingLettersBecomeTheirBaseLetters) {
    EXPECT_EQ(convert(1252, 437, 0xC0), unsigned{'A'});
    EXPECT_EQ(convert(1252, 437, 0xD5), unsigned{'O'});
    EXPECT_EQ(convert(1252, 850, 0x8A), unsigned{'S'});
    EXPECT_EQ(convert(1252, 850, 0x9E), unsigned{'z'});
}

TEST(BestFitTable, DrawnLinesBecomePlainCharacters) {
    for (const UINT oem : {437U, 850U}) {
        EXPECT_EQ(convert(oem, 1252, 0xC4), unsigned{'-'});
        EXPECT_EQ(convert(oem, 1252, 0xC5), unsigned{'+'});
        EXPECT_EQ(convert(oem, 1252, 0xB3), 0xA6U);
        EXPECT_EQ(convert(oem, 1252, 0xDC), unsigned{'_'});
    }
}

TEST(BestFitTable, MakesApostrophesOfTypographicQuotes) {
    const std::map<UINT, std::string> expected = {{437, "'\x92\xB4"}, {850, "'\x82\x91\x92"}};
    for (const auto& [oem, sources] : expected) {
        std::string found;
        for (unsigned byte = 0; byte < 256; ++byte) {
            if (convert(1252, oem, byte) == '\'') found.push_back(static_cast<char>(byte));
        }
        EXPECT_EQ(found, sources) << oem;
    }
}

TEST(ConvertInPlace, StopsAtTheTerminator) {
    char text[] = "\xC4\0\xC4";
    nkcp::convertInPlace(text, *nkcp::bestFitTable(1252, 437));
    EXPECT_EQ(std::string_view(text, 3), std::string_view("\x8E\0\xC4", 3));
}

TEST(CodePages, Are1252And850UnlessSet) {
    EXPECT_EQ(GetACP(), 1252U);
    EXPECT_EQ(GetOEMCP(), 850U);
    {
        const CodePages pages(1250, 437);
        EXPECT_EQ(GetACP(), 1250U);
        EXPECT_EQ(GetOEMCP(), 437U);
    }
    EXPECT_EQ(GetACP(), 1252U);
    EXPECT_EQ(GetOEMCP(), 850U);
}

TEST(CharToOem, ConvertsFromTheAnsiToTheOemPage) {
    char under850[] = "M\xFCller \xD8";
    EXPECT_TRUE(NkEusy_CharToOem(under850));
    EXPECT_STREQ(under850, "M\x81ller \x9D");

    const CodePages pages(1252, 437);
    char under437[] = "M\xFCller \xD8";
    EXPECT_TRUE(NkEusy_CharToOem(under437));
    EXPECT_STREQ(under437, "M\x81ller O");
}

TEST(OemToChar, ConvertsFromTheOemToTheAnsiPage) {
    char under850[] = "M\x81ller \x9D";
    EXPECT_TRUE(NkEusy_OemToChar(under850));
    EXPECT_STREQ(under850, "M\xFCller \xD8");

    const CodePages pages(1252, 437);
    char under437[] = "M\x81ller \x9D";
    EXPECT_TRUE(NkEusy_OemToChar(under437));
    EXPECT_STREQ(under437, "M\xFCller \xA5");
}

TEST(CharToOemAndOemToChar, RefusePagesWithoutATable) {
    for (const auto& [ansi, oem] :
         {std::pair{1250U, 850U}, std::pair{1252U, 852U}, std::pair{1252U, 1252U}}) {
        const CodePages pages(ansi, oem);
        char text[] = "M\xFCller";
        EXPECT_FALSE(NkEusy_CharToOem(text));
        EXPECT_FALSE(NkEusy_OemToChar(text));
        EXPECT_STREQ(text, "M\xFCller");
    }
}

TEST(CharToOemAndOemToChar, RefuseANullText) {
    EXPECT_FALSE(NkEusy_CharToOem(nullptr));
    EXPECT_FALSE(NkEusy_OemToChar(nullptr));
}

TEST(CharToOemAndOemToChar, TakeAnEmptyText) {
    char text[] = "";
    EXPECT_TRUE(NkEusy_CharToOem(text));
    EXPECT_TRUE(NkEusy_OemToChar(text));
    EXPECT_STREQ(text, "");
}

}  // namespace
