// The character: what it has beside what every value class has.

#include <nkdt/NkDtChar.h>
#include <nkfo/NkFormat.h>
#include <nkfw/Recordset.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "TextTesting.h"
#include "ValueTesting.h"
#include "support/CodePages.h"

namespace {

using namespace valuetest;
using nktest::CodePages;

constexpr LPCTSTR noText = nullptr;

NkDtChar inMode(NkDtWorkingMode mode, TCHAR ch) {
    NkDtChar value(mode);
    value = ch;
    value.SetModified(FALSE);
    return value;
}

/// Undefined, but holding a character, as an assignment of the base alone leaves it.
NkDtChar undefinedWith(NkDtWorkingMode mode, TCHAR ch) {
    NkDtChar value(ch);
    value.SetWorkingMode(mode);
    static_cast<NkDtBasis&>(value) = static_cast<const NkDtBasis&>(NkDtChar(NkDtWmNull));
    value.SetModified(FALSE);
    return value;
}

TCHAR byteOf(unsigned value) {
    return static_cast<TCHAR>(static_cast<unsigned char>(value));
}

// --- Construction ------------------------------------------------------------------------------------

TEST(NkDtChar, IsBuiltFromAnyCharacter) {
    for (unsigned byte = 0; byte <= 255; ++byte) {
        const NkDtChar value(byteOf(byte));
        EXPECT_EQ(value.GetValue(), byteOf(byte));
        EXPECT_EQ(stateOf(value), "defined");
    }
}

TEST(NkDtChar, TakesTheFirstCharacterOfAText) {
    EXPECT_EQ(describe(NkDtChar("abc")), "'a' defined");
    EXPECT_EQ(describe(NkDtChar("\xFC")), "'\xFC' defined");
    EXPECT_EQ(describe(NkDtChar("")), "'' defined");
    EXPECT_EQ(NkDtChar("").GetValue(), '\0');
}

TEST(NkDtChar, RefusesANullText) {
    expectOrigins({{"constructor", [] { const NkDtChar value(noText); }, NkDtErrInitialwert, ".\\dtchar.cc",
                    "NkDtChar", "NkDtChar(LPCTSTR)"}});
}

TEST(NkDtChar, TakesStateAndFirstCharacterOfATextValue) {
    for (NkDtString& text : states<NkDtString>()) {
        const NkDtChar value(text);
        EXPECT_EQ(stateOf(value), stateOf(text));
        EXPECT_EQ(value.GetWorkingMode(), text.GetWorkingMode());
        EXPECT_EQ(textOf(value), text.IsDefined() && text.GetLength() > 0 ? "M" : "");
        EXPECT_EQ(value.GetFormat(), nullptr);
    }
    EXPECT_EQ(describe(NkDtChar(NkDtString(""))), "'' defined");
    EXPECT_EQ(describe(NkDtChar(undefinedWithText(NkDtWmNull, "abc"))), "'' null");
}

// --- Reading -----------------------------------------------------------------------------------------

TEST(NkDtChar, ReadsANullValueAsItsStoredCharacterAndRefusesAMissingOne) {
    EXPECT_EQ(NkDtChar(NkDtWmNull).GetValue(), '\0');
    EXPECT_EQ(undefinedWith(NkDtWmNull, 'x').GetValue(), 'x');
    EXPECT_EQ(NkDtChar(NkDtWmDefined).GetValue(), '\0');
    EXPECT_EQ(static_cast<char>(NkDtChar(NkDtWmMissing)), '\0');
    EXPECT_EQ(static_cast<char>(NkDtChar('x')), 'x');
    expectOrigins({{"GetValue", [] { NkDtChar(NkDtWmMissing).GetValue(); }, NkDtErrUndefiniert,
                    ".\\dtchar.cc", "NkDtChar", "GetValue()"}});
}

// --- Assignment --------------------------------------------------------------------------------------

TEST(NkDtChar, IsModifiedByAnotherCharacterOnly) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        NkDtChar value = inMode(mode, 'a');
        value = 'a';
        EXPECT_EQ(stateOf(value), "defined");
        value = 'b';
        EXPECT_EQ(describe(value), "'b' defined modified");
        value = '\0';
        EXPECT_EQ(describe(value), "'' defined modified");
    }
    NkDtChar null(NkDtWmNull);
    null = '\0';
    EXPECT_EQ(describe(null), "'' defined modified");
}

TEST(NkDtChar, TakesAnUndefinedCharacterAsItsModeAllows) {
    struct Case {
        NkDtWorkingMode mode;
        const char* after;
    };
    constexpr Case cases[] = {{NkDtWmMissing, "'' missing modified"},
                              {NkDtWmNull, "'' null modified"},
                              {NkDtWmDefined, "'' defined modified"}};
    for (const Case& each : cases) {
        NkDtChar value = inMode(each.mode, 'a');
        value = NkDtChar(NkDtWmNull);
        EXPECT_EQ(describe(value), each.after);
    }
}

TEST(NkDtChar, TakesTheCharacterThatAnUndefinedOneStores) {
    struct Case {
        NkDtWorkingMode mode;
        const char* after;
    };
    constexpr Case cases[] = {{NkDtWmMissing, "'x' missing modified"},
                              {NkDtWmNull, "'x' null modified"},
                              {NkDtWmDefined, "'x' defined modified"}};
    for (const Case& each : cases) {
        NkDtChar value = inMode(each.mode, 'a');
        value = undefinedWith(NkDtWmNull, 'x');
        EXPECT_EQ(describe(value), each.after);
        EXPECT_EQ(value.GetWorkingMode(), each.mode);
    }
    NkDtChar same = inMode(NkDtWmMissing, 'x');
    same = undefinedWith(NkDtWmNull, 'x');
    EXPECT_EQ(describe(same), "'x' missing modified");
    same.SetModified(FALSE);
    same = undefinedWith(NkDtWmNull, 'x');
    EXPECT_EQ(describe(same), "'x' missing");
}

// --- Comparison --------------------------------------------------------------------------------------

TEST(NkDtChar, IsEqualByteForByte) {
    for (unsigned a = 0; a <= 255; ++a) {
        for (const unsigned b : {a, a ^ 0x20U, a ^ 0x80U}) {
            const NkDtChar left(byteOf(a));
            const NkDtChar right(byteOf(b));
            EXPECT_EQ(left == right, a == b);
            EXPECT_EQ(left != right, a != b);
            EXPECT_EQ(left == byteOf(b), a == b);
            EXPECT_EQ(byteOf(b) != left, a != b);
        }
    }
}

TEST(NkDtChar, ComparesANullValueAsItsStoredCharacter) {
    EXPECT_TRUE(NkDtChar(NkDtWmNull) == NkDtChar('\0'));
    EXPECT_TRUE(NkDtChar(NkDtWmNull) == '\0');
    EXPECT_TRUE(undefinedWith(NkDtWmNull, 'x') == 'x');
}

TEST(NkDtChar, RefusesToCompareAMissingValue) {
    const NkDtChar a('a');
    const NkDtChar missing(NkDtWmMissing);
    const char* const module = ".\\dtchar.cc";
    expectOrigins({
        {"left", [&] { (void)(missing == a); }, 2, module, "NkDtChar", "operator==(NkDtChar&)"},
        {"right", [&] { (void)(a == missing); }, 2, module, "NkDtChar", "operator==(NkDtChar&)"},
        {"both", [&] { (void)(missing != missing); }, 2, module, "NkDtChar", "operator!=(NkDtChar&)"},
        {"plain", [&] { (void)(missing == 'a'); }, 2, module, "NkDtChar", "operator==(TCHAR)"},
        {"plain left", [&] { (void)('a' != missing); }, 2, module, "NkDtChar", "operator!=(TCHAR)"},
        {"Assign", [&] { NkDtChar('a').Assign(NkDtString("a")); }, 10, module, "NkDtChar",
         "Assign(NkDtBasis&)"},
    });
}

// --- Letter case -------------------------------------------------------------------------------------

/// ASCII letters, and the three umlauts; every other byte is its own capital.
unsigned capitalOf(unsigned byte) {
    if (byte >= 'a' && byte <= 'z') return byte - 'a' + 'A';
    if (byte == 0xE4) return 0xC4;
    if (byte == 0xF6) return 0xD6;
    if (byte == 0xFC) return 0xDC;
    return byte;
}

unsigned smallOf(unsigned byte) {
    for (unsigned small = 0; small <= 255; ++small) {
        if (small != byte && capitalOf(small) == byte) return small;
    }
    return byte;
}

TEST(NkDtChar, ToUpperAndToLowerMapEachByteAndAreModifiedByAChangeOnly) {
    for (unsigned byte = 0; byte <= 255; ++byte) {
        NkDtChar upper(byteOf(byte));
        upper.ToUpper();
        EXPECT_EQ(upper.GetValue(), byteOf(capitalOf(byte))) << byte;
        EXPECT_EQ(stateOf(upper), capitalOf(byte) == byte ? "defined" : "defined modified") << byte;
        NkDtChar lower(byteOf(byte));
        lower.ToLower();
        EXPECT_EQ(lower.GetValue(), byteOf(smallOf(byte))) << byte;
        EXPECT_EQ(stateOf(lower), smallOf(byte) == byte ? "defined" : "defined modified") << byte;
    }
}

TEST(NkDtChar, ToUpperAndToLowerLeaveAnUndefinedCharacterUndefined) {
    for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
        NkDtChar value(mode);
        const std::string before = describe(value);
        value.ToUpper();
        value.ToLower();
        EXPECT_EQ(describe(value), before);
    }
}

TEST(NkDtChar, ToUpperAndToLowerMapTheLetterThatAnUndefinedCharacterStores) {
    struct Case {
        TCHAR small;
        TCHAR capital;
    };
    constexpr Case cases[] = {{'x', 'X'}, {'\xE4', '\xC4'}};
    for (const Case& each : cases) {
        NkDtChar value = undefinedWith(NkDtWmNull, each.small);
        value.ToLower();
        EXPECT_EQ(describe(value), describe(undefinedWith(NkDtWmNull, each.small)));
        value.ToUpper();
        EXPECT_EQ(value.GetValue(), each.capital);
        EXPECT_EQ(stateOf(value), "null modified");
        value.SetModified(FALSE);
        value.ToLower();
        EXPECT_EQ(value.GetValue(), each.small);
        EXPECT_EQ(stateOf(value), "null modified");
    }
}

// --- SQL ---------------------------------------------------------------------------------------------

/// The reference tables by source and target page; empty when the data are not there.
using Tables = std::map<std::pair<UINT, UINT>, std::array<unsigned, 256>>;

Tables referenceTables() {
    Tables tables;
    const char* const folder = std::getenv("NKDT_REFERENCE_DATA");
    if (folder == nullptr) return tables;
    std::ifstream file(std::string(folder) + "/codepages.tsv");
    for (std::string line; std::getline(file, line);) {
        std::istringstream fields(line);
        UINT from = 0;
        UINT to = 0;
        unsigned source = 0;
        unsigned target = 0;
        if (fields >> std::dec >> from >> to >> std::hex >> source >> target)
            tables[{from, to}].at(source) = target;
    }
    return tables;
}

unsigned mapped(const Tables& tables, UINT from, UINT to, unsigned byte) {
    return tables.at({from, to}).at(byte);
}

std::string literalOf(unsigned byte) {
    if (byte == 0) return "''";
    if (byte == '\'') return "''''";
    return "'" + std::string(1, byteOf(byte)) + "'";
}

TEST(NkDtChar, ConvertsEachByteFromAndToTheDatabasesPage) {
    const Tables tables = referenceTables();
    if (tables.empty()) GTEST_SKIP() << "NKDT_REFERENCE_DATA is not set";
    for (const UINT oem : {437U, 850U}) {
        const CodePages scope(1252, oem);
        for (const UINT page : {437U, 850U}) {
            for (unsigned byte = 0; byte <= 255; ++byte) {
                NkDtChar value;
                value.SetFromSQL(byteOf(byte), page);
                EXPECT_EQ(value.GetValue(), byteOf(mapped(tables, page, 1252, byte))) << page << " " << byte;
                EXPECT_STREQ(NkDtChar(byteOf(byte)).ConvToSQL(page),
                             literalOf(mapped(tables, 1252, page, byte)).c_str())
                    << page << " " << byte;
            }
        }
    }
}

TEST(NkDtChar, ConvertsNothingForAnyOtherPage) {
    for (const UINT oem : {437U, 850U}) {
        const CodePages scope(1252, oem);
        for (const UINT page : {0U, 1252U, 1250U, 65001U}) {
            for (unsigned byte = 0; byte <= 255; ++byte) {
                NkDtChar value;
                value.SetFromSQL(byteOf(byte), page);
                EXPECT_EQ(value.GetValue(), byteOf(byte));
                EXPECT_STREQ(value.ConvToSQL(page), literalOf(byte).c_str());
            }
        }
    }
}

TEST(NkDtChar, ConvertsNothingUnlessAPageIsGiven) {
    NkDtChar value;
    value.SetFromSQL('\x81');
    EXPECT_EQ(value.GetValue(), '\x81');
    EXPECT_STREQ(NkDtChar('\xFC').ConvToSQL(), "'\xFC'");
}

TEST(NkDtChar, ConvertsUmlautsToTheOemPages) {
    for (const UINT page : {437U, 850U}) {
        EXPECT_STREQ(NkDtChar('\xFC').ConvToSQL(page), "'\x81'");
        NkDtChar value;
        value.SetFromSQL('\x81', page);
        EXPECT_EQ(value.GetValue(), '\xFC');
    }
}

TEST(NkDtChar, ConvertsTheLettersAndSignsThatBothPagesHave) {
    struct Case {
        const char* utf8;
        unsigned in850;
        unsigned in437;
    };
    constexpr Case cases[] = {{"ä", 0x84, 0x84}, {"ö", 0x94, 0x94}, {"ü", 0x81, 0x81}, {"Ä", 0x8E, 0x8E},
                              {"Ö", 0x99, 0x99}, {"Ü", 0x9A, 0x9A}, {"ß", 0xE1, 0xE1}, {"é", 0x82, 0x82},
                              {"à", 0x85, 0x85}, {"ç", 0x87, 0x87}, {"ñ", 0xA4, 0xA4}, {"£", 0x9C, 0x9C},
                              {"¥", 0xBE, 0x9D}, {"½", 0xAB, 0xAB}, {"°", 0xF8, 0xF8}, {"ÿ", 0x98, 0x98}};
    for (const UINT oem : {437U, 850U}) {
        const CodePages scope(1252, oem);
        for (const Case& each : cases) {
            const TCHAR ch = cp1252(each.utf8).front();
            EXPECT_STREQ(NkDtChar(ch).ConvToSQL(850), literalOf(each.in850).c_str()) << each.utf8;
            EXPECT_STREQ(NkDtChar(ch).ConvToSQL(437), literalOf(each.in437).c_str()) << each.utf8;
            NkDtChar value;
            value.SetFromSQL(byteOf(each.in850), 850);
            EXPECT_EQ(value.GetValue(), ch) << each.utf8;
            value.SetFromSQL(byteOf(each.in437), 437);
            EXPECT_EQ(value.GetValue(), ch) << each.utf8;
        }
    }
}

TEST(NkDtChar, ConvertsACharacterThatThePageDoesNotHaveToOneThatLooksLikeItOrALine) {
    const auto literal = [](const char* utf8, UINT page) {
        return std::string(NkDtChar(cp1252(utf8).front()).ConvToSQL(page).GetValue());
    };
    for (const UINT page : {437U, 850U})
        EXPECT_EQ(literal("€", page), "'_'");
    EXPECT_EQ(literal("À", 437), "'A'");
    EXPECT_EQ(literal("ø", 437), "'o'");
    EXPECT_EQ(literal("ø", 850), "'\x9B'");
    EXPECT_EQ(literal("À", 850), "'\xB7'");
    NkDtChar value;
    value.SetFromSQL('\x9B', 850);
    EXPECT_EQ(value.GetValue(), cp1252("ø").front());
    value.SetFromSQL('\x9B', 437);
    EXPECT_EQ(value.GetValue(), cp1252("¢").front());
}

TEST(NkDtChar, DoublesAnApostropheThatTheConversionMakes) {
    EXPECT_STREQ(NkDtChar('\'').ConvToSQL(850), "''''");
    for (const char ch : {'\x82', '\x91', '\x92'})
        EXPECT_STREQ(NkDtChar(ch).ConvToSQL(850), "''''");
    for (const char ch : {'\x92', '\xB4'})
        EXPECT_STREQ(NkDtChar(ch).ConvToSQL(437), "''''");
    const CodePages scope(1252, 437);
    EXPECT_STREQ(NkDtChar('\xB4').ConvToSQL(437), "''''");  // by the system's direction
}

TEST(NkDtChar, WritesAnUndefinedCharacterAsTheWordNullWhateverThePage) {
    const CodePages scope(1250, 852);
    for (const UINT page : {0U, 437U, 850U, 852U, 1250U})
        EXPECT_STREQ(NkDtChar(NkDtWmMissing).ConvToSQL(page), "NULL");
    EXPECT_STREQ(undefinedWith(NkDtWmNull, 'x').ConvToSQL(), "NULL");
}

TEST(NkDtChar, RefusesAPageThatCannotBeConvertedAndStaysAsItWas) {
    const CodePages scope(1252, 852);  // no table
    for (NkDtChar& value : states<NkDtChar>()) {
        const std::string before = describe(value);
        expectOrigins({{"SetFromSQL", [&] { value.SetFromSQL('x', 852); }, NkDtErrCodepage, ".\\dtchar.cc",
                        "NkDtChar", "SetFromSQL(CHAR,UINT)"}});
        EXPECT_EQ(describe(value), before);
    }
    for (const TCHAR ch : {'x', '\'', '\0'}) {  // those of a special literal too
        expectOrigins({{"ConvToSQL", [=] { NkDtChar(ch).ConvToSQL(852); }, NkDtErrCodepage, ".\\dtchar.cc",
                        "NkDtChar", "ConvToSQL(UINT)"}});
    }
}

TEST(NkDtChar, AsksForPage437BeforeTheSystemsPageWhenReadingAndBehindItWhenWriting) {
    const CodePages scope(1250, 437);  // the system's directions have no table, the numbered ones have
    NkDtChar value;
    value.SetFromSQL('\x81', 437);
    EXPECT_EQ(value.GetValue(), '\xFC');
    expectError(NkDtErrCodepage, [&] { value.ConvToSQL(437); });
    EXPECT_STREQ(value.ConvToSQL(850), "'\x81'");
}

TEST(NkDtChar, DecidesOnItsFlagByTheConvertedCharacter) {
    NkDtChar value = inMode(NkDtWmNull, '\xFC');
    value.SetFromSQL('\x81', 850);
    EXPECT_EQ(stateOf(value), "defined");
    value.SetFromSQL('\xFC', 850);
    EXPECT_EQ(stateOf(value), "defined modified");
}

// --- Other conversions -------------------------------------------------------------------------------

TEST(NkDtChar, ShowsNulAsTheEmptyText) {
    EXPECT_EQ(NkDtChar('\0').ConvToOFL(), CString(""));
    std::ostringstream os;
    os << NkDtChar('\0') << NkDtChar(NkDtWmNull) << NkDtChar('\xFC') << undefinedWith(NkDtWmNull, 'x');
    EXPECT_EQ(os.str(), "\xFC");
}

TEST(NkDtChar, ReadsOneCharacterOnly) {
    NkDtChar value = inMode(NkDtWmNull, 'a');
    expectReplaced(NkFoFehlerText, [&] { value.SetFromOFL("bc"); });
    EXPECT_EQ(describe(value), "'a' defined");
    value.SetFromOFL("b");
    EXPECT_EQ(describe(value), "'b' defined modified");
}

TEST(NkDtChar, WritesItsExternalTextWithItsOwnState) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (const NkDtChar& value : {inMode(mode, 'x'), inMode(mode, '\0'), undefinedWith(mode, 'x')}) {
            BOOL defined = -1;
            USHORT version = 0;
            const NkDtString text = value.ConvToExtern(defined, version);
            EXPECT_EQ(text.GetWorkingMode(), mode);
            EXPECT_EQ(stateOf(text), stateOf(value));
            EXPECT_EQ(bytesOf(text), value.IsDefined() ? textOf(value) : "");
        }
    }
}

TEST(NkDtChar, TakesTheFirstCharacterOfAnExternalText) {
    const NkDtString text("xyz");
    const NkDtString empty("");
    NkDtChar value(NkDtWmNull);
    value.SetFromExtern(&text, TRUE, 100);
    EXPECT_EQ(describe(value), "'x' defined modified");
    value.SetModified(FALSE);
    value.SetFromExtern(&empty, TRUE, 100);
    EXPECT_EQ(describe(value), "'' defined modified");
    expectOrigins(
        {{"version", [&] { value.SetFromExtern(&text, TRUE, 99); }, NkDtErrVersion, ".\\dtchar.cc",
          "NkDtChar", "SetFromExtern(NkDtString*,BOOL,USHORT)"},
         {"undefined",
          [&] {
              const NkDtString undefined;
              value.SetFromExtern(&undefined, TRUE, 100);
          },
          NkDtErrDefiniertheit, ".\\dtchar.cc", "NkDtChar", "SetFromExtern(NkDtString*,BOOL,USHORT)"}});
}

TEST(NkDtChar, TakesTheNulThatAnExternalTextBeginsWith) {
    NkDtString nul("");
    nul += '\0';
    nul += 'b';
    nul.SetModified(FALSE);
    ASSERT_EQ(bytesOf(nul), "\\0b");
    NkDtChar value = inMode(NkDtWmNull, 'a');
    value.SetFromExtern(&nul, TRUE, 100);
    EXPECT_EQ(describe(value), "'' defined modified");
    NkDtChar null(NkDtWmNull);
    null.SetFromExtern(&nul, TRUE, 100);
    EXPECT_EQ(describe(null), "'' defined modified");
    EXPECT_EQ(describe(NkDtChar(nul)), "'' defined");
}

TEST(NkDtChar, TakesTheFirstCharacterOfAField) {
    CRecordset rs;
    const CString longer("xyz");
    const CString empty;
    NkDtChar value(NkDtWmNull);
    value.SetFromRecordSet(rs, longer);
    EXPECT_EQ(describe(value), "'x' defined modified");
    value.SetFromRecordSet(rs, empty);
    EXPECT_EQ(describe(value), "'' defined modified");
}

TEST(NkDtChar, WritesItsCharacterIntoAFieldWithOrWithoutABuffer) {
    CRecordset rs;
    CString without;
    NkDtChar('x').ConvToRecordSet(rs, without);
    EXPECT_EQ(without, CString("x"));
    CString with("a longer text");
    const INT room = with.GetAllocLength();
    NkDtChar('y').ConvToRecordSet(rs, with);
    EXPECT_EQ(with, CString("y"));
    EXPECT_EQ(with.GetAllocLength(), room);
    NkDtChar('\0').ConvToRecordSet(rs, with);
    EXPECT_EQ(with, CString(""));
    EXPECT_FALSE(rs.IsFieldNull(&with));
}

TEST(NkDtChar, IsArchivedAsItsDefinednessAndOneByte) {
    NkDtChar value('\xFC');
    EXPECT_EQ(stored(value), (Bytes{1, 0, 0, 0, 0xFC}));
    NkDtChar undefined = undefinedWith(NkDtWmNull, 'x');
    EXPECT_EQ(stored(undefined), (Bytes{0, 0, 0, 0, 'x'}));
    NkDtChar back('y');
    load(back, {0, 0, 0, 0, 'x'});
    EXPECT_EQ(describe(back), "'x' missing modified");
    back.SetModified(FALSE);
    back.Clear();  // undefined already, but not empty
    EXPECT_EQ(describe(back), "'' missing modified");
}

}  // namespace
