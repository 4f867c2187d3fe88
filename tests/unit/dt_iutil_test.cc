#include <nkcp/CodePage.h>
#include <nkdt/NkDtExcep.h>
#include <nkdt/NkDtTypes.h>
#include <nkdt/NkDtUtil.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "support/CodePages.h"

namespace {

using nktest::CodePages;

using namespace std::string_literals;

template <class Operation>
std::unique_ptr<NkDtExcep> errorOf(Operation operation) {
    try {
        operation();
    } catch (NkDtExcep* caught) {
        return std::unique_ptr<NkDtExcep>(caught);
    }
    return nullptr;
}

// --- NkDtVglString ----------------------------------------------------------------------------

// The stated normalisation, a byte at a time.
unsigned char normalised(unsigned char byte) {
    switch (byte) {
        case 0xE4:
            return 0xC4;
        case 0xF6:
            return 0xD6;
        case 0xFC:
            return 0xDC;
        default:
            return byte >= 'a' && byte <= 'z' ? static_cast<unsigned char>(byte - 'a' + 'A') : byte;
    }
}

bool equalWithoutCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char left, char right) {
        return normalised(static_cast<unsigned char>(left)) == normalised(static_cast<unsigned char>(right));
    });
}

TEST(NkDtVglString, IgnoresTheCaseOfAsciiLettersAndUmlauts) {
    EXPECT_EQ(NkDtVglString("M\xFCller", "M\xDCLLER", FALSE), TRUE);
    EXPECT_EQ(NkDtVglString("\xE4\xF6\xFC", "\xC4\xD6\xDC", FALSE), TRUE);
    EXPECT_EQ(NkDtVglString("Stra\xDF"
                            "e",
                            "STRA\xDF"
                            "E",
                            FALSE),
              TRUE);
}

TEST(NkDtVglString, ExpandsNoSharpS) {
    EXPECT_EQ(NkDtVglString("Stra\xDF"
                            "e",
                            "STRASSE", FALSE),
              FALSE);
}

TEST(NkDtVglString, IgnoresTheCaseOfNoOtherLetter) {
    EXPECT_EQ(NkDtVglString("\xE9", "\xC9", FALSE), FALSE);
    EXPECT_EQ(NkDtVglString("\x9A", "\x8A", FALSE), FALSE);
}

TEST(NkDtVglString, ComparesBytesWhenTheCaseMatters) {
    EXPECT_EQ(NkDtVglString("M\xFCller", "M\xFCller", TRUE), TRUE);
    EXPECT_EQ(NkDtVglString("M\xFCller", "M\xDCller", TRUE), FALSE);
    EXPECT_EQ(NkDtVglString("abc", "ABC", TRUE), FALSE);
    EXPECT_EQ(NkDtVglString("abc", "ABC", 2), FALSE);
    EXPECT_EQ(NkDtVglString("abc", "ab", TRUE), FALSE);
}

TEST(NkDtVglString, NullEqualsNothing) {
    for (const BOOL caseSensitive : {TRUE, FALSE}) {
        EXPECT_EQ(NkDtVglString(nullptr, "abc", caseSensitive), FALSE);
        EXPECT_EQ(NkDtVglString("abc", nullptr, caseSensitive), FALSE);
        EXPECT_EQ(NkDtVglString("", nullptr, caseSensitive), FALSE);
        EXPECT_EQ(NkDtVglString(nullptr, nullptr, caseSensitive), FALSE);
    }
}

TEST(NkDtVglString, EmptyTextsAreEqual) {
    EXPECT_EQ(NkDtVglString("", "", FALSE), TRUE);
    EXPECT_EQ(NkDtVglString("", "", TRUE), TRUE);
    EXPECT_EQ(NkDtVglString("", "a", FALSE), FALSE);
    EXPECT_EQ(NkDtVglString("a", "", FALSE), FALSE);
}

TEST(NkDtVglString, NormalisesEveryPairOfBytesAsStated) {
    for (int left = 1; left < 256; ++left) {
        for (int right = 1; right < 256; ++right) {
            const char a[] = {static_cast<char>(left), '\0'};
            const char b[] = {static_cast<char>(right), '\0'};
            ASSERT_EQ(NkDtVglString(a, b, FALSE) != FALSE, equalWithoutCase(a, b))
                << left << " and " << right;
        }
    }
}

TEST(NkDtVglString, NormalisesEveryPairOfBytesInsideLongTexts) {
    std::string a = "abcdefghijklmnopqrs";
    std::string b = "ABCDEFGHIJKLMNOPQRS";
    const std::string unchangedA = a;
    const std::string unchangedB = b;
    for (std::size_t position = 0; position < a.size(); ++position) {
        for (int left = 1; left < 256; ++left) {
            for (int right = 1; right < 256; ++right) {
                a[position] = static_cast<char>(left);
                b[position] = static_cast<char>(right);
                ASSERT_EQ(NkDtVglString(a.c_str(), b.c_str(), FALSE) != FALSE,
                          normalised(static_cast<unsigned char>(left)) ==
                              normalised(static_cast<unsigned char>(right)))
                    << left << " and " << right << " at " << position;
            }
        }
        a[position] = unchangedA[position];
        b[position] = unchangedB[position];
    }
}

// Texts over few bytes, so that many are equal in part; every kind of byte is among them.
class RandomTexts {
  public:
    std::string next(std::size_t longest) {
        constexpr std::string_view bytes = "aAbBsS\xE4\xC4\xDF\xE9\xC9\xF7\x01\x1F !9\xFF\xFE\xDE";
        std::string text(m_random() % (longest + 1), '\0');
        for (char& ch : text)
            ch = bytes[m_random() % bytes.size()];
        return text;
    }
    std::size_t below(std::size_t bound) { return m_random() % bound; }

  private:
    std::mt19937 m_random{20040229};
};

TEST(NkDtVglString, AgreesWithTheNormalisedTextsForRandomOnes) {
    RandomTexts texts;
    for (int i = 0; i < 20000; ++i) {
        const std::string a = texts.next(40);
        std::string b = a;
        for (char& ch : b)
            ch = static_cast<char>(texts.below(3) == 0 ? normalised(static_cast<unsigned char>(ch))
                                                       : static_cast<unsigned char>(ch));
        ASSERT_EQ(NkDtVglString(a.c_str(), b.c_str(), FALSE), TRUE);
        const std::string c = texts.next(40);
        ASSERT_EQ(NkDtVglString(a.c_str(), c.c_str(), FALSE) != FALSE, equalWithoutCase(a, c));
        ASSERT_EQ(NkDtVglString(a.c_str(), b.c_str(), TRUE) != FALSE, a == b);
    }
}

// --- NkDtCompareUsingNorvaneSortOrder ---------------------------------------------------------

// The weights from the rules that make them, built a rule at a time.
std::array<int, 256> weightsFromRules() {
    std::array<int, 256> weights{};
    const auto count = [&weights](int first, int last, int weight) {
        for (int byte = first; byte <= last; ++byte)
            weights[static_cast<std::size_t>(byte)] = weight++;
    };
    const auto set = [&weights](std::initializer_list<int> bytes, int weight) {
        for (const int byte : bytes)
            weights[static_cast<std::size_t>(byte)] = weight;
    };
    // Symbols in the order of their bytes, then the blank, then the digits.
    count(0x21, 0x2F, 1);
    count(0x3A, 0x40, 16);
    count(0x5B, 0x60, 23);
    count(0x7B, 0x7F, 29);
    count(0x80, 0xBF, 0x80 - 94);
    set({0xD7}, 44);
    set({' '}, 98);
    count('0', '9', 99);
    // Letters: each base letter, behind it its accented forms; capital and small weigh the same.
    struct Letter {
        std::initializer_list<int> bytes;
        int weight;
    };
    const Letter letters[] = {{{'A', 'a'}, 109},       {{0xC0, 0xE0}, 110}, {{0xC1, 0xE1}, 111},
                              {{0xC2, 0xE2}, 112},     {{0xC3, 0xE3}, 113}, {{0xC4, 0xE4}, 114},
                              {{0xC5, 0xE5}, 115},     {{0xC6, 0xE6}, 116}, {{'B', 'b'}, 117},
                              {{'C', 'c'}, 118},       {{0xC7, 0xE7}, 119}, {{'D', 'd'}, 120},
                              {{'E', 'e'}, 121},       {{0xC8, 0xE8}, 122}, {{0xC9, 0xE9}, 124},
                              {{0xCA, 0xEA}, 126},     {{0xCB, 0xEB}, 128}, {{'F', 'f'}, 129},
                              {{'G', 'g'}, 130},       {{'H', 'h'}, 131},   {{'I', 'i'}, 132},
                              {{0xCC, 0xEC}, 133},     {{0xCD, 0xED}, 134}, {{0xCE, 0xEE}, 135},
                              {{0xCF, 0xEF}, 136},     {{'J', 'j'}, 137},   {{'K', 'k'}, 138},
                              {{'L', 'l'}, 139},       {{'M', 'm'}, 140},   {{'N', 'n'}, 141},
                              {{0xD1, 0xF1}, 142},     {{'O', 'o'}, 143},   {{0xD2, 0xF2}, 145},
                              {{0xD3, 0xF3}, 146},     {{0xD4, 0xF4}, 147}, {{0xD5, 0xF5}, 148},
                              {{0xD6, 0xF6}, 149},     {{0xD8, 0xF8}, 150}, {{0x8C, 0x9C}, 151},
                              {{'P', 'p'}, 152},       {{'Q', 'q'}, 153},   {{'R', 'r'}, 154},
                              {{'S', 's', 0xDF}, 155}, {{0x8A, 0x9A}, 156}, {{'T', 't'}, 158},
                              {{'U', 'u'}, 159},       {{0xD9, 0xF9}, 160}, {{0xDA, 0xFA}, 161},
                              {{0xDB, 0xFB}, 162},     {{0xDC, 0xFC}, 163}, {{'V', 'v'}, 164},
                              {{'W', 'w'}, 165},       {{'X', 'x'}, 166},   {{'Y', 'y', 0x9F}, 167},
                              {{0xDD, 0xFD}, 168},     {{0xFF}, 169},       {{'Z', 'z', 0xDE}, 170},
                              {{0xD0, 0xF0}, 171},     {{0xFE}, 172}};
    for (const Letter& letter : letters)
        set(letter.bytes, letter.weight);
    return weights;
}

int weightOf(char ch) {
    static const std::array<int, 256> weights = weightsFromRules();
    return weights[static_cast<unsigned char>(ch)];
}

// The stated comparison, position by position, the terminator of the shorter text included.
int compareFromRules(const std::string& a, const std::string& b) {
    const std::size_t last = std::min(a.size(), b.size());
    for (std::size_t i = 0; i <= last; ++i) {
        const int left = weightOf(a.c_str()[i]);
        const int right = weightOf(b.c_str()[i]);
        if (left != right) return left < right ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

INT compare(const std::string& a, const std::string& b) {
    const INT result = NkDtCompareUsingNorvaneSortOrder(a.c_str(), b.c_str());
    EXPECT_EQ(NkDtCompareUsingNorvaneSortOrder(b.c_str(), a.c_str()), -result);
    return result;
}

TEST(NkDtSortOrder, PutsTheBlankBehindTheSymbols) {
    EXPECT_EQ(compare("a b", "a!b"), 1);
}

TEST(NkDtSortOrder, PutsUmlautsAmongTheirBaseLetters) {
    EXPECT_EQ(compare("Zebra", "\xC4pfel"), 1);
    EXPECT_EQ(compare("\xC4pfel", "Apfel"), 1);
    EXPECT_EQ(compare("\xC4pfel", "Birne"), -1);
}

TEST(NkDtSortOrder, IgnoresCase) {
    EXPECT_EQ(compare("ab", "AB"), 0);
    EXPECT_EQ(compare("\xE4\xF6\xFC\xE9", "\xC4\xD6\xDC\xC9"), 0);
}

TEST(NkDtSortOrder, TakesSharpSForS) {
    EXPECT_EQ(compare("Ma\xDF", "MAS"), 0);
    EXPECT_EQ(compare("Ma\xDF", "Mass"), -1);
}

TEST(NkDtSortOrder, EmptyTextsAreEqualAndStandFirst) {
    EXPECT_EQ(compare("", ""), 0);
    EXPECT_EQ(compare("", "!"), -1);
    EXPECT_EQ(compare("", "a"), -1);
}

TEST(NkDtSortOrder, BytesWithoutWeightCountThroughTheLengthOnly) {
    EXPECT_EQ(compare("abc\x01", "abc"), 1);
    EXPECT_EQ(compare("abc\xF7", "abc"), 1);
    EXPECT_EQ(compare("abc\x01", "abc\xF7"), 0);
    EXPECT_EQ(compare("abc\x01z", "abc"), 1);
    EXPECT_EQ(compare("\x01", ""), 1);
    EXPECT_EQ(compare("\t", "!"), -1);
    EXPECT_EQ(compare("abc\x01", "abca"), -1);
}

TEST(NkDtSortOrder, ThePrefixStandsFirst) {
    EXPECT_EQ(compare("abc", "abcd"), -1);
    EXPECT_EQ(compare("ABC", "abcd"), -1);
}

TEST(NkDtSortOrder, OrdersEveryPairOfBytesByTheirWeights) {
    for (int left = 1; left < 256; ++left) {
        for (int right = 1; right < 256; ++right) {
            const std::string a(1, static_cast<char>(left));
            const std::string b(1, static_cast<char>(right));
            const int expected = weightOf(a[0]) == weightOf(b[0])  ? 0
                                 : weightOf(a[0]) < weightOf(b[0]) ? -1
                                                                   : 1;
            ASSERT_EQ(NkDtCompareUsingNorvaneSortOrder(a.c_str(), b.c_str()), expected)
                << left << " and " << right;
        }
    }
}

TEST(NkDtSortOrder, PutsEveryTextBehindItsBeginning) {
    for (int byte = 1; byte < 256; ++byte)
        EXPECT_EQ(compare("a"s + static_cast<char>(byte), "a"), 1) << byte;
}

TEST(NkDtSortOrder, ComparesShortTextsAsStated) {
    RandomTexts texts;
    for (int i = 0; i < 50000; ++i) {
        const std::string a = texts.next(5);
        const std::string b = texts.next(5);
        ASSERT_EQ(compare(a, b), compareFromRules(a, b))
            << testing::PrintToString(a) << testing::PrintToString(b);
    }
}

TEST(NkDtSortOrder, ComparesLongTextsThatBeginAlikeAsStated) {
    RandomTexts texts;
    for (int i = 0; i < 20000; ++i) {
        const std::string beginning = texts.next(60);
        const std::string a = beginning + texts.next(12);
        const std::string b = beginning + texts.next(12);
        ASSERT_EQ(compare(a, b), compareFromRules(a, b))
            << testing::PrintToString(a) << testing::PrintToString(b);
    }
}

TEST(NkDtSortOrder, FindsADifferenceAtEveryPositionOfALongText) {
    for (std::size_t length = 1; length < 50; ++length) {
        const std::string text(length, 'm');
        EXPECT_EQ(compare(text, text), 0);
        EXPECT_EQ(compare(text, text + "a"), -1);
        for (std::size_t position = 0; position < length; ++position) {
            std::string other = text;
            other[position] = 'n';
            ASSERT_EQ(compare(text, other), -1);
            other[position] = 'M';
            ASSERT_EQ(compare(text, other), 0);
        }
    }
}

TEST(NkDtSortOrder, RefusesNullTexts) {
    for (const auto& [left, right] :
         {std::pair<LPCTSTR, LPCTSTR>{nullptr, "a"}, {"a", nullptr}, {nullptr, nullptr}}) {
        const auto error = errorOf([l = left, r = right] { NkDtCompareUsingNorvaneSortOrder(l, r); });
        ASSERT_NE(error, nullptr);
        EXPECT_EQ(error->GetErrorNumber(), NkDtErrInitialwert);
        EXPECT_STREQ(error->GetClassText(), "Interne Utility-Funktionen");
        EXPECT_EQ(error->IsLogged(), TRUE);
    }
}

// --- NkDtConvertCodePageFkt -------------------------------------------------------------------

std::string allBytes() {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte)
        bytes.push_back(static_cast<char>(byte));
    return bytes;
}

struct Direction {
    INT code;
    UINT from;
    UINT to;
};
constexpr Direction numberedDirections[] = {{NkDtCp1252To437, 1252, 437},
                                            {NkDtCp437To1252, 437, 1252},
                                            {NkDtCp1252To850, 1252, 850},
                                            {NkDtCp850To1252, 850, 1252}};

TEST(NkDtConvertCodePageFkt, NumberedDirectionsConvertUnderAllPages) {
    for (const auto& [ansi, oem] : {std::pair{1252U, 850U}, std::pair{1252U, 437U}, std::pair{1250U, 852U}}) {
        const CodePages pages(ansi, oem);
        for (const Direction& direction : numberedDirections) {
            std::string text = allBytes();
            EXPECT_EQ(NkDtConvertCodePageFkt(text.data(), direction.code), TRUE);
            const nkcp::Table& table = *nkcp::bestFitTable(direction.from, direction.to);
            for (std::size_t byte = 1; byte < 256; ++byte) {
                ASSERT_EQ(static_cast<unsigned char>(text[byte - 1]), table[byte])
                    << direction.code << ", byte " << byte;
            }
        }
    }
}

TEST(NkDtConvertCodePageFkt, DirectionsZeroAndOneConvertBetweenTheProgramsPages) {
    const CodePages pages(1252, 437);
    char text[] = "\xD8l f\xFCr M\xFCller";
    EXPECT_EQ(NkDtConvertCodePageFkt(text, NkDtCpAnsiToOem), TRUE);
    EXPECT_STREQ(text, "Ol f\x81r M\x81ller");
    EXPECT_EQ(NkDtConvertCodePageFkt(text, NkDtCpOemToAnsi), TRUE);
    EXPECT_STREQ(text, "Ol f\xFCr M\xFCller");
}

TEST(NkDtConvertCodePageFkt, DirectionsZeroAndOneRefusePagesWithoutATable) {
    const CodePages pages(1252, 852);
    char text[] = "M\xFCller";
    EXPECT_EQ(NkDtConvertCodePageFkt(text, NkDtCpAnsiToOem), FALSE);
    EXPECT_EQ(NkDtConvertCodePageFkt(text, NkDtCpOemToAnsi), FALSE);
    EXPECT_STREQ(text, "M\xFCller");
}

TEST(NkDtConvertCodePageFkt, OtherDirectionsLeaveTheTextUnchanged) {
    for (const INT direction : {2, -1, 437, 850, 1252, 437850, 1252852, 2147483647}) {
        char text[] = "M\xFCller";
        EXPECT_EQ(NkDtConvertCodePageFkt(text, direction), FALSE) << direction;
        EXPECT_STREQ(text, "M\xFCller");
    }
}

TEST(NkDtConvertCodePageFkt, RefusesANullText) {
    for (const INT direction : {0, 1, 2})
        EXPECT_EQ(NkDtConvertCodePageFkt(nullptr, direction), FALSE);
    for (const Direction& direction : numberedDirections)
        EXPECT_EQ(NkDtConvertCodePageFkt(nullptr, direction.code), FALSE);
}

// --- NkDtMemSetTCHAR --------------------------------------------------------------------------

TEST(NkDtMemSetTCHAR, FillsAsManyCharactersAsTold) {
    char text[] = "abcdef";
    EXPECT_EQ(NkDtMemSetTCHAR(text + 1, '\xE4', 3), text + 1);
    EXPECT_STREQ(text,
                 "a\xE4\xE4\xE4"
                 "ef");
    EXPECT_EQ(NkDtMemSetTCHAR(text, 'x', 0), text);
    EXPECT_STREQ(text,
                 "a\xE4\xE4\xE4"
                 "ef");
}

TEST(NkDtMemSetTCHAR, RefusesNullOnlyWhenThereIsSomethingToFill) {
    EXPECT_EQ(NkDtMemSetTCHAR(nullptr, 'x', 0), nullptr);
    const auto error = errorOf([] { NkDtMemSetTCHAR(nullptr, 'x', 1); });
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->GetErrorNumber(), NkDtErrInitialwert);
}

// --- AssignRecordsetMemberCString -------------------------------------------------------------

CString memberWithCapacity(INT capacity, LPCTSTR text = "") {
    CString member;
    std::string_view(text).copy(member.GetBuffer(capacity), static_cast<std::size_t>(capacity));
    member.ReleaseBuffer(static_cast<INT>(std::string_view(text).size()));
    return member;
}

TEST(AssignRecordsetMemberCString, CutsToTheBoundCapacityLessOne) {
    CString member = memberWithCapacity(11);
    ASSERT_EQ(member.GetAllocLength(), 11);
    AssignRecordsetMemberCString(member, "1234567890123456789012345678901234567890");
    EXPECT_STREQ(member, "1234567890");
    EXPECT_EQ(member.GetLength(), 10);
}

TEST(AssignRecordsetMemberCString, KeepsTheBuffer) {
    CString member = memberWithCapacity(11, "vorher");
    const LPCTSTR buffer = member.GetString();
    for (const LPCTSTR text : {"", "a", "1234567890", "12345678901", "123456789012"}) {
        AssignRecordsetMemberCString(member, text);
        EXPECT_EQ(member.GetString(), buffer);
        EXPECT_EQ(member.GetAllocLength(), 11);
        EXPECT_EQ(member.View(), std::string_view(text).substr(0, 10));
    }
}

TEST(AssignRecordsetMemberCString, AMemberWithoutABufferStaysEmpty) {
    CString member;
    AssignRecordsetMemberCString(member, "Text");
    EXPECT_STREQ(member, "");
    EXPECT_EQ(member.GetLength(), 0);
    EXPECT_EQ(member.GetAllocLength(), 0);
}

TEST(AssignRecordsetMemberCString, ACapacityOfOneHoldsTheEmptyText) {
    CString member("x");
    ASSERT_EQ(member.GetAllocLength(), 1);
    AssignRecordsetMemberCString(member, "Text");
    EXPECT_STREQ(member, "");
    EXPECT_EQ(member.GetAllocLength(), 1);
}

TEST(AssignRecordsetMemberCString, TakesATextFromItsOwnBuffer) {
    CString member = memberWithCapacity(11, "abcdefghij");
    AssignRecordsetMemberCString(member, member.GetString() + 3);
    EXPECT_STREQ(member, "defghij");
    AssignRecordsetMemberCString(member, member.GetString());
    EXPECT_STREQ(member, "defghij");
}

TEST(AssignRecordsetMemberCString, ReplacesEveryErrorByErrorOne) {
    CString member = memberWithCapacity(11, "vorher");
    const auto error = errorOf([&] { AssignRecordsetMemberCString(member, nullptr); });
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->GetErrorNumber(), NkDtErrFolgefehler);
    EXPECT_EQ(error->GetCauseNumber(), NkDtErrInitialwert);
    EXPECT_EQ(error->IsLogged(), FALSE);
    EXPECT_STREQ(error->GetClassText(), "Interne Utility-Funktionen");
    EXPECT_STREQ(error->GetFunctionText(), "AssignRecordsetMemberCString(CString,LPCTSTR)");
    EXPECT_STREQ(error->GetSourceFile(), ".\\dt_iutil.cc");
    EXPECT_STREQ(member, "vorher");
}

}  // namespace
