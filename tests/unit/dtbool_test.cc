// The truth value: what it has beside what every value class has.

#include <nkdt/NkDtBool.h>
#include <nkfo/NkFormat.h>
#include <nkfw/Recordset.h>
#include <nklang/NkLanguagePublisher.h>

#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "TextTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;

constexpr LPCTSTR noText = nullptr;
constexpr const char* sourceFile = ".\\dtbool.cc";
constexpr BOOL lowest = std::numeric_limits<BOOL>::min();
constexpr BOOL highest = std::numeric_limits<BOOL>::max();

/// The language module of the program for a scope.
class Language {
  public:
    explicit Language(const NkLanguageModule* module)
        : m_before(NkLanguagePublisher::Instance()->SetLangDependentResource(module)) {}
    ~Language() { NkLanguagePublisher::Instance()->SetLangDependentResource(m_before); }
    Language(const Language&) = delete;
    Language& operator=(const Language&) = delete;

  private:
    const NkLanguageModule* m_before;
};

const NkLanguageModule* english() {
    return NkLanguagePublisher::GetModule(usNkLangEnglisch);
}

/// The text with a NUL and more behind.
NkDtString withNulBehind(const char* text) {
    NkDtString value(text);
    value += '\0';
    value += 'x';
    value.SetModified(FALSE);
    return value;
}

NkDtBool inMode(NkDtWorkingMode mode, BOOL f) {
    NkDtBool value(mode);
    value = f;
    value.SetModified(FALSE);
    return value;
}

/// Undefined, but holding a number, as an assignment of the base alone leaves it.
NkDtBool undefinedWith(NkDtWorkingMode mode, BOOL f) {
    NkDtBool value(f);
    value.SetWorkingMode(mode);
    static_cast<NkDtBasis&>(value) = static_cast<const NkDtBasis&>(NkDtBool(NkDtWmNull));
    value.SetModified(FALSE);
    return value;
}

// --- Construction and reading ------------------------------------------------------------------------

TEST(NkDtBool, KeepsEveryNumberAsItIs) {
    for (const BOOL number : {0, 1, 5, -1, lowest, highest}) {
        const NkDtBool value(number);
        EXPECT_EQ(value.GetValue(), number);
        EXPECT_EQ(value.IsTrue(), number);
        EXPECT_EQ(value.IsFalse(), number == 0);
        EXPECT_EQ(static_cast<int>(value), number);
        EXPECT_EQ(stateOf(value), "defined");
    }
}

TEST(NkDtBool, ANullValueIsNeitherTrueNorFalse) {
    const NkDtBool null(NkDtWmNull);
    EXPECT_EQ(null.IsTrue(), 0);
    EXPECT_EQ(null.IsFalse(), FALSE);
    EXPECT_EQ(null.GetValue(), 0);
    EXPECT_EQ(undefinedWith(NkDtWmNull, 5).IsTrue(), 5);
    EXPECT_EQ(undefinedWith(NkDtWmNull, 5).IsFalse(), FALSE);
}

TEST(NkDtBool, AValueInModeTwoIsDefinedAndFalse) {
    const NkDtBool value(NkDtWmDefined);
    EXPECT_EQ(value.IsTrue(), 0);
    EXPECT_EQ(value.IsFalse(), TRUE);
}

TEST(NkDtBool, RefusesToReadOrCompareAMissingValue) {
    const NkDtBool missing(NkDtWmMissing);
    const NkDtBool yes(TRUE);
    const char* const equal = "BOOL  NkDtBool :: operator== ( const NkDtBool & krCmpObj ) const";
    const char* const unequal = "BOOL  NkDtBool :: operator!= ( const NkDtBool & krCmpObj ) const";
    expectOrigins({
        {"IsTrue", [&] { missing.IsTrue(); }, 2, sourceFile, "NkDtBool",
         "BOOL  NkDtBool :: IsTrue ( VOID ) const"},
        {"IsFalse", [&] { missing.IsFalse(); }, 2, sourceFile, "NkDtBool",
         "BOOL  NkDtBool :: IsFalse ( VOID ) const"},
        {"GetValue", [&] { missing.GetValue(); }, 2, sourceFile, "NkDtBool",
         "BOOL  NkDtBool :: GetValue ( VOID ) const"},
        {"int", [&] { (void)static_cast<int>(missing); }, 2, sourceFile, "NkDtBool",
         "BOOL  NkDtBool :: GetValue ( VOID ) const"},
        {"== left", [&] { (void)(missing == yes); }, 2, sourceFile, "NkDtBool", equal},
        {"== right", [&] { (void)(yes == missing); }, 2, sourceFile, "NkDtBool", equal},
        {"!=", [&] { (void)(missing != missing); }, 2, sourceFile, "NkDtBool", unequal},
        {"== plain", [&] { (void)(TRUE == missing); }, 2, sourceFile, "NkDtBool",
         "BOOL  NkDtBool :: operator== ( BOOL fCmp ) const"},
        {"!= plain", [&] { (void)(missing != TRUE); }, 2, sourceFile, "NkDtBool",
         "BOOL  NkDtBool :: operator!= ( BOOL fCmp ) const"},
        {"Assign", [&] { NkDtBool(TRUE).Assign(NkDtString("Ja")); }, 10, sourceFile, "NkDtBool",
         "VOID  NkDtBool :: Assign ( const NkDtBasis & krCopyObj )"},
    });
}

TEST(NkDtBool, ComparesStoredNumbers) {
    EXPECT_FALSE(NkDtBool(5) == NkDtBool(TRUE));
    EXPECT_TRUE(NkDtBool(5) != NkDtBool(TRUE));
    EXPECT_TRUE(NkDtBool(5) == NkDtBool(5));
    EXPECT_TRUE(NkDtBool(5) == 5);
    EXPECT_TRUE(NkDtBool(NkDtWmNull) == NkDtBool(FALSE));
    EXPECT_TRUE(undefinedWith(NkDtWmNull, 5) == 5);
}

// --- Text --------------------------------------------------------------------------------------------

TEST(NkDtBool, ReadsTheLanguagesWordsInAnyLetterCaseAndTheTwoDigits) {
    const auto expectRead = [](std::initializer_list<const char*> yes,
                               std::initializer_list<const char*> no) {
        for (const char* text : yes) {
            EXPECT_EQ(describe(NkDtBool(text)), "1 defined") << text;
            EXPECT_EQ(describe(NkDtBool(NkDtString(text))), "1 defined") << text;
        }
        for (const char* text : no) {
            EXPECT_EQ(describe(NkDtBool(text)), "0 defined") << text;
            EXPECT_EQ(describe(NkDtBool(NkDtString(text))), "0 defined") << text;
        }
    };
    expectRead({"Ja", "ja", "JA", "jA", "1"}, {"Nein", "nein", "NEIN", "nEiN", "0"});
    {
        const Language scope(english());
        expectRead({"Yes", "YES", "1"}, {"No", "no", "0"});
        expectError(NkDtErrInitialwert, [] { const NkDtBool value("Ja"); });
    }
    const Language none(nullptr);
    expectRead({"Ja", "1"}, {"Nein", "0"});
}

TEST(NkDtBool, RefusesEveryOtherText) {
    for (const char* text : {"2", "", "J", "N", "Ja ", " Ja", "01", "-1", "true", "Yes", "Neinn", "11"}) {
        expectOrigins({
            {text, [=] { const NkDtBool value(text); }, NkDtErrInitialwert, ".\\Imp\\dtbooli.cc",
             "NkDtBool_Imp", "NkDtBool_Imp(BOOL)"},
            {text, [=] { const NkDtBool value((NkDtString(text))); }, NkDtErrInitialwert,
             ".\\Imp\\dtbooli.cc", "NkDtBool_Imp", "NkDtBool_Imp(BOOL)"},
        });
    }
    expectOrigins({{"null", [] { const NkDtBool value(noText); }, NkDtErrInitialwert, sourceFile, "NkDtBool",
                    "NkDtBool :: NkDtBool ( LPCTSTR const pszInit) "}});
}

TEST(NkDtBool, TakesTheStateOfATextValueAndReadsADefinedOne) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (const BOOL modified : {FALSE, TRUE}) {
            NkDtString text = valuetest::inMode(mode, "ja");
            text.SetModified(modified);
            const NkDtBool value(text);
            EXPECT_EQ(describe(value), "1 " + stateOf(text));
            EXPECT_EQ(value.GetWorkingMode(), mode);
            NkDtString undefined = undefinedWithText(mode == NkDtWmDefined ? NkDtWmNull : mode, "unread");
            undefined.SetModified(modified);
            EXPECT_EQ(describe(NkDtBool(undefined)), "0 " + stateOf(undefined));
        }
    }
}

TEST(NkDtBool, IsWrittenAsTheLanguagesWord) {
    const auto shown = [](const NkDtBool& value) {
        std::ostringstream os;
        os << value;
        EXPECT_EQ(os.str(), static_cast<LPCTSTR>(NkDtString(value)));
        return os.str();
    };
    EXPECT_EQ(shown(NkDtBool(TRUE)), "Ja");
    EXPECT_EQ(shown(NkDtBool(5)), "Ja");
    EXPECT_EQ(shown(NkDtBool(FALSE)), "Nein");
    EXPECT_EQ(shown(NkDtBool(NkDtWmNull)), "");
    EXPECT_EQ(shown(undefinedWith(NkDtWmMissing, TRUE)), "");
    {
        const Language scope(english());
        EXPECT_EQ(shown(NkDtBool(TRUE)), "Yes");
        EXPECT_EQ(shown(NkDtBool(FALSE)), "No");
    }
    const Language none(nullptr);
    EXPECT_EQ(shown(NkDtBool(TRUE)), "Ja");
}

TEST(NkDtBool, TakesTheGermanWordsFromALanguageModuleThatHasNone) {
    static constexpr NkLanguageModule empty("empty", usNkLangDeutsch, nullptr, 0);
    const Language scope(&empty);
    EXPECT_EQ(describe(NkDtString(NkDtBool(TRUE))), "'Ja' 2/2 defined");
    EXPECT_EQ(describe(NkDtBool("nein")), "0 defined");
}

TEST(NkDtBool, TakesNoMoreRoomAsATextThanItsWord) {
    const Language scope(english());
    EXPECT_EQ(describe(NkDtString(NkDtBool(TRUE))), "'Yes' 3/3 defined");
    EXPECT_EQ(describe(NkDtString(NkDtBool(FALSE))), "'No' 2/2 defined");
    EXPECT_EQ(describe(NkDtString(undefinedWith(NkDtWmNull, TRUE))), "'' 0/0 null");
}

TEST(NkDtBool, FoldsTheUmlautsOfTheWords) {
    const std::string yes = cp1252("währ");
    const std::string no = cp1252("FÄLSCHÜNGÖ");
    const NkLanguageModule::Entry entries[] = {{uNkLangWahr, yes.c_str()}, {uNkLangFalsch, no.c_str()}};
    const NkLanguageModule module("umlauts", usNkLangDeutsch, entries, 2);
    const Language scope(&module);
    for (const char* text : {"währ", "WÄHR", "wÄhR", "Währ", "1"})
        EXPECT_EQ(describe(NkDtBool(cp1252(text).c_str())), "1 defined") << text;
    for (const char* text : {"FÄLSCHÜNGÖ", "fälschüngö", "FäLSCHüNGö", "0"})
        EXPECT_EQ(describe(NkDtBool(cp1252(text).c_str())), "0 defined") << text;
    for (const char* text : {"wahr", "WAHR", "waehr", "wåhr", "FALSCHUNGO", "Ja", "Nein"}) {
        const std::string other = cp1252(text);
        expectError(NkDtErrInitialwert, [&] { const NkDtBool value(other.c_str()); });
    }
    EXPECT_EQ(describe(NkDtString(NkDtBool(TRUE))), "'" + yes + "' 4/4 defined");
    EXPECT_EQ(describe(NkDtString(NkDtBool(FALSE))), "'" + no + "' 10/10 defined");
}

TEST(NkDtBool, TakesTheGermanWordForTheOneThatALanguageModuleDoesNotHave) {
    static constexpr NkLanguageModule::Entry yes[] = {{uNkLangWahr, "Oui"}};
    static constexpr NkLanguageModule::Entry no[] = {{uNkLangFalsch, "Non"}};
    static constexpr NkLanguageModule onlyYes("yes", 1036, yes, 1);
    static constexpr NkLanguageModule onlyNo("no", 1036, no, 1);
    {
        const Language scope(&onlyYes);
        EXPECT_EQ(describe(NkDtString(NkDtBool(TRUE))), "'Oui' 3/3 defined");
        EXPECT_EQ(describe(NkDtString(NkDtBool(FALSE))), "'Nein' 4/4 defined");
        EXPECT_EQ(describe(NkDtBool("OUI")), "1 defined");
        EXPECT_EQ(describe(NkDtBool("nein")), "0 defined");
        for (const char* text : {"Ja", "Non", ""})
            expectError(NkDtErrInitialwert, [=] { const NkDtBool value(text); });
    }
    const Language scope(&onlyNo);
    EXPECT_EQ(describe(NkDtString(NkDtBool(TRUE))), "'Ja' 2/2 defined");
    EXPECT_EQ(describe(NkDtString(NkDtBool(FALSE))), "'Non' 3/3 defined");
    EXPECT_EQ(describe(NkDtBool("ja")), "1 defined");
    EXPECT_EQ(describe(NkDtBool("non")), "0 defined");
    for (const char* text : {"Oui", "Nein", ""})
        expectError(NkDtErrInitialwert, [=] { const NkDtBool value(text); });
}

TEST(NkDtBool, ReadsATextValueUpToItsFirstNul) {
    EXPECT_EQ(describe(NkDtBool(withNulBehind("Ja"))), "1 defined");
    EXPECT_EQ(describe(NkDtBool(withNulBehind("nein"))), "0 defined");
    EXPECT_EQ(describe(NkDtBool(withNulBehind("1"))), "1 defined");
    expectError(NkDtErrInitialwert, [] { const NkDtBool value(withNulBehind("J")); });
    expectError(NkDtErrInitialwert, [] { const NkDtBool value(withNulBehind("")); });
    expectError(NkDtErrInitialwert, [] { const NkDtBool value(NkDtString("", 2, 0)); });
}

// --- Assignment --------------------------------------------------------------------------------------

TEST(NkDtBool, IsModifiedByAnotherNumberOnly) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        NkDtBool value = inMode(mode, TRUE);
        value = TRUE;
        EXPECT_EQ(stateOf(value), "defined");
        value.Set(TRUE);
        EXPECT_EQ(stateOf(value), "defined");
        value = 5;
        EXPECT_EQ(describe(value), "5 defined modified");
        value.SetModified(FALSE);
        value.Set(FALSE);
        EXPECT_EQ(describe(value), "0 defined modified");
    }
    for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
        NkDtBool assigned(mode);
        assigned = FALSE;
        EXPECT_EQ(describe(assigned), "0 defined modified");
        NkDtBool set(mode);
        set.Set(FALSE);
        EXPECT_EQ(describe(set), "0 defined modified");
    }
}

TEST(NkDtBool, TakesAnUndefinedValueAsItsModeAllows) {
    struct Case {
        NkDtWorkingMode mode;
        const char* after;
    };
    constexpr Case cases[] = {{NkDtWmMissing, "0 missing modified"},
                              {NkDtWmNull, "0 null modified"},
                              {NkDtWmDefined, "0 defined modified"}};
    for (const Case& each : cases) {
        NkDtBool value = inMode(each.mode, 5);
        value = NkDtBool(NkDtWmNull);
        EXPECT_EQ(describe(value), each.after);
    }
}

TEST(NkDtBool, TakesTheNumberThatAnUndefinedValueStores) {
    struct Case {
        NkDtWorkingMode mode;
        const char* after;
    };
    constexpr Case cases[] = {{NkDtWmMissing, "5 missing modified"},
                              {NkDtWmNull, "5 null modified"},
                              {NkDtWmDefined, "5 defined modified"}};
    for (const Case& each : cases) {
        NkDtBool value = inMode(each.mode, TRUE);
        value = undefinedWith(NkDtWmNull, 5);
        EXPECT_EQ(describe(value), each.after);
        EXPECT_EQ(value.GetWorkingMode(), each.mode);
    }
    NkDtBool same = undefinedWith(NkDtWmMissing, 5);
    same = undefinedWith(NkDtWmNull, 5);
    EXPECT_EQ(describe(same), "5 missing");
}

// --- SQL ---------------------------------------------------------------------------------------------

TEST(NkDtBool, ReadsTwoCharactersFromADatabaseAndNoOther) {
    for (int byte = 0; byte <= 255; ++byte) {
        const auto ch = static_cast<TCHAR>(static_cast<unsigned char>(byte));
        NkDtBool value(NkDtWmNull);
        if (ch == '0' || ch == '1') {
            value.SetFromSQL(ch);
            EXPECT_EQ(describe(value), std::string(1, ch) + " defined modified");
        } else {
            const ErrorPtr error = expectError(NkDtErrInitialwert, [&] { value.SetFromSQL(ch); });
            EXPECT_EQ(describe(value), "0 null");
        }
    }
    NkDtBool value = inMode(NkDtWmNull, 5);
    expectOrigins({{"SetFromSQL", [&] { value.SetFromSQL('J'); }, NkDtErrInitialwert, sourceFile, "NkDtBool",
                    "VOID  NkDtBool::SetFromSQL ( TCHAR chSQL )"}});
    EXPECT_EQ(describe(value), "5 defined");
    value.SetFromSQL('1');
    EXPECT_EQ(describe(value), "1 defined modified");
}

TEST(NkDtBool, WritesOneOrZeroInApostrophes) {
    for (const BOOL number : {1, 5, -1, lowest, highest})
        EXPECT_STREQ(NkDtBool(number).ConvToSQL(), "'1'");
    EXPECT_STREQ(NkDtBool(FALSE).ConvToSQL(), "'0'");
    EXPECT_STREQ(undefinedWith(NkDtWmNull, 5).ConvToSQL(), "NULL");
}

// --- External text -----------------------------------------------------------------------------------

TEST(NkDtBool, WritesAnUndefinedValueAsAnUndefinedTextWithItsState) {
    for (const NkDtWorkingMode defaultMode : kStoredModes) {
        const DefaultMode scope(defaultMode);
        for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
            BOOL defined = -1;
            USHORT version = 0;
            const NkDtString text = undefinedWith(mode, TRUE).ConvToExtern(defined, version);
            EXPECT_EQ(defined, FALSE);
            EXPECT_EQ(version, 100);
            EXPECT_FALSE(text.IsDefined());
            EXPECT_EQ(text.GetWorkingMode(), mode);
            EXPECT_EQ(bytesOf(text), "");
        }
    }
}

TEST(NkDtBool, WritesEveryNumberButZeroAsTrue) {
    for (const BOOL number : {0, 1, 5, -1, lowest, highest}) {
        BOOL defined = -1;
        USHORT version = 0;
        EXPECT_STREQ(NkDtBool(number).ConvToExtern(defined, version).GetValue(), number != 0 ? "J" : "N");
        EXPECT_EQ(defined, TRUE);
        EXPECT_EQ(version, 100);
    }
}

TEST(NkDtBool, ReadsTwoExternalTextsAndOnlyMarksItselfDefinedByAnyOther) {
    const auto read = [](NkDtBool value, const char* text) {
        const NkDtString external(text);
        value.SetFromExtern(&external, TRUE, 100);
        return describe(value);
    };
    EXPECT_EQ(read(inMode(NkDtWmNull, FALSE), "J"), "1 defined modified");
    EXPECT_EQ(read(inMode(NkDtWmNull, TRUE), "J"), "1 defined");
    EXPECT_EQ(read(inMode(NkDtWmNull, 5), "J"), "1 defined modified");
    EXPECT_EQ(read(inMode(NkDtWmNull, TRUE), "N"), "0 defined modified");
    EXPECT_EQ(read(inMode(NkDtWmNull, FALSE), "N"), "0 defined");
    for (const char* text : {"X", "", "j", "n", "Ja", "JN", "1", "0"}) {
        for (const BOOL number : {0, 1, 5})
            EXPECT_EQ(read(inMode(NkDtWmNull, number), text), std::to_string(number) + " defined") << text;
        EXPECT_EQ(read(NkDtBool(NkDtWmMissing), text), "0 defined modified") << text;
        EXPECT_EQ(read(undefinedWith(NkDtWmNull, 5), text), "5 defined modified") << text;
    }
}

TEST(NkDtBool, ReadsAnExternalTextUpToItsFirstNul) {
    const auto read = [](BOOL before, const NkDtString& external) {
        NkDtBool value = inMode(NkDtWmNull, before);
        value.SetFromExtern(&external, TRUE, 100);
        return describe(value);
    };
    EXPECT_EQ(read(FALSE, withNulBehind("J")), "1 defined modified");
    EXPECT_EQ(read(5, withNulBehind("N")), "0 defined modified");
    EXPECT_EQ(read(5, withNulBehind("")), "5 defined");
    EXPECT_EQ(read(5, withNulBehind("JN")), "5 defined");
}

TEST(NkDtBool, RefusesAnUndefinedExternalTextBeforeAnythingIsMarked) {
    const char* const signature =
        "void NkDtBool::SetFromExtern ( const DtString * pExternData, BOOL fDefiniert,USHORT usVersion)";
    const NkDtString undefined(NkDtWmNull);
    const NkDtString withText = undefinedWithText(NkDtWmMissing, "J");
    for (NkDtBool& value : states<NkDtBool>()) {
        const std::string before = describe(value);
        expectOrigins({
            {"undefined", [&] { value.SetFromExtern(&undefined, TRUE, 100); }, NkDtErrDefiniertheit,
             sourceFile, "NkDtBool", signature},
            {"with text", [&] { value.SetFromExtern(&withText, TRUE, 100); }, NkDtErrDefiniertheit,
             sourceFile, "NkDtBool", signature},
            {"version first", [&] { value.SetFromExtern(&undefined, TRUE, 99); }, NkDtErrVersion, sourceFile,
             "NkDtBool", signature},
        });
        EXPECT_EQ(describe(value), before);
    }
}

// --- Other conversions -------------------------------------------------------------------------------

TEST(NkDtBool, IsShownInGermanUnlessAFormatSaysOtherwise) {
    const Language scope(english());
    EXPECT_EQ(NkDtBool(5).ConvToOFL(), CString("Ja"));
    const NkFormat words(FormatModusWorte, usNkLangEnglisch);
    EXPECT_EQ(NkDtBool(5).ConvToOFL(&words), CString("Yes"));
    const NkFormat cross(FormatModusKreuz, usNkLangDeutsch);
    EXPECT_EQ(NkDtBool(FALSE).ConvToOFL(&cross), CString(" "));
    NkDtBool value(TRUE);
    value.SetFromOFL(" ", &cross);
    EXPECT_EQ(describe(value), "0 defined modified");
    value = 5;
    value.SetModified(FALSE);
    value.SetFromOFL("ja");
    EXPECT_EQ(describe(value), "1 defined modified");
}

TEST(NkDtBool, CrossesARecordsetAsTheNumberThatItIs) {
    CRecordset rs;
    for (const BOOL number : {0, 1, 5, -1, lowest, highest}) {
        BOOL field = 77;
        NkDtBool(number).ConvToRecordSet(rs, field);
        EXPECT_EQ(field, number);
        NkDtBool back(NkDtWmNull);
        back.SetFromRecordSet(rs, field);
        EXPECT_EQ(back.GetValue(), number);
    }
}

TEST(NkDtBool, IsArchivedAsItsDefinednessAndTheNumber) {
    NkDtBool value(-2);
    EXPECT_EQ(stored(value), (Bytes{1, 0, 0, 0, 0xFE, 0xFF, 0xFF, 0xFF}));
    NkDtBool undefined = undefinedWith(NkDtWmNull, 5);
    EXPECT_EQ(stored(undefined), (Bytes{0, 0, 0, 0, 5, 0, 0, 0}));
    NkDtBool back(FALSE);
    load(back, {0, 0, 0, 0, 5, 0, 0, 0});
    EXPECT_EQ(describe(back), "5 missing modified");
    back.SetModified(FALSE);
    back.Clear();  // undefined already, but not empty
    EXPECT_EQ(describe(back), "0 missing modified");
}

}  // namespace
