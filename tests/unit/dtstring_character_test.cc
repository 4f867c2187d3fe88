// Texts with characters and truth values: building, assigning, appending, joining, comparing.

#include <nkdt/NkDtBool.h>
#include <nkdt/NkDtChar.h>
#include <nkdt/NkDtString.h>
#include <nkfw/String.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "MemoryTesting.h"
#include "TextTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;

NkDtChar missingCharacter() {
    return NkDtChar(NkDtWmMissing);
}

/// Undefined, but holding a value, as it is loaded from an archive.
NkDtChar loadedUndefined(TCHAR ch) {
    NkDtChar value(NkDtWmNull);
    load(value, {0, 0, 0, 0, static_cast<BYTE>(ch)});
    value.SetModified(FALSE);
    return value;
}

// --- Building ----------------------------------------------------------------------------------------

TEST(NkDtStringFromCharacter, HasTheStateOfTheCharacterAndRoomForOne) {
    for (NkDtChar& ch : states<NkDtChar>()) {
        const NkDtString text(ch);
        const bool visible = ch.IsDefined() && textOf(ch) != "";
        const std::string expected = !ch.IsDefined() ? "'' 0/0 " : visible ? "'\xFC' 1/1 " : "'' 0/1 ";
        EXPECT_EQ(describe(text), expected + stateOf(ch));
        EXPECT_EQ(text.GetWorkingMode(), ch.GetWorkingMode());
        EXPECT_EQ(text.GetFormat(), nullptr);
    }
    EXPECT_EQ(describe(NkDtString(NkDtChar('\0'))), "'' 0/1 defined");
    EXPECT_EQ(describe(NkDtString(loadedUndefined('x'))), "'' 0/0 null");
}

TEST(NkDtStringFromTruthValue, HasTheStateOfTheValueAndItsWord) {
    for (NkDtBool& value : states<NkDtBool>()) {
        const NkDtString text(value);
        const std::string expected = !value.IsDefined()          ? "'' 0/0 "
                                     : value.GetValue() != FALSE ? "'Ja' 2/2 "
                                                                 : "'Nein' 4/4 ";
        EXPECT_EQ(describe(text), expected + stateOf(value));
        EXPECT_EQ(text.GetWorkingMode(), value.GetWorkingMode());
    }
}

TEST(NkDtStringFromTruthValue, IsEmptyAndUndefinedInModeTwoTooWhateverNumberIsStored) {
    NkDtBool value(NkDtWmDefined);
    load(value, {0, 0, 0, 0, 5, 0, 0, 0});  // a load does not ask for the mode
    value.SetModified(FALSE);
    ASSERT_EQ(describe(value), "5 undefined");
    const NkDtString text(value);
    EXPECT_EQ(describe(text), "'' 0/0 undefined");
    EXPECT_EQ(text.GetWorkingMode(), NkDtWmDefined);
    NkDtString assigned("abc");
    assigned = value;
    EXPECT_EQ(describe(assigned), "'' 0/0 missing");
    NkDtString appended("abc");
    appended += value;
    EXPECT_EQ(describe(appended), "'abc' 3/3 defined");
    EXPECT_EQ(describe(appended + value), "'abc' 3/3 defined");
    BOOL defined = TRUE;
    USHORT version = 0;
    EXPECT_EQ(describe(value.ConvToExtern(defined, version)), "'' 0/0 undefined");
}

// --- Assigning ---------------------------------------------------------------------------------------

TEST(NkDtStringAssignedACharacter, IsAssignedItAsAPlainOne) {
    for (const NkDtString& before : states<NkDtString>()) {
        for (const TCHAR ch : {'x', '\xFC', '\0'}) {
            NkDtString plain(before);
            NkDtString value(before);
            plain = ch;
            value = NkDtChar(ch);
            EXPECT_EQ(describe(value), describe(plain));
            EXPECT_EQ(value.GetWorkingMode(), before.GetWorkingMode());
        }
    }
    NkDtString same("x");
    same = NkDtChar('x');
    EXPECT_EQ(describe(same), "'x' 1/1 defined");
}

TEST(NkDtStringAssignedACharacter, BecomesUndefinedByAnUndefinedOneWhateverItsMode) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        const char* const undefined = mode == NkDtWmMissing ? "missing"
                                      : mode == NkDtWmNull  ? "null"
                                                            : "undefined";
        NkDtString text = inMode(mode, "abc");
        text = missingCharacter();
        EXPECT_EQ(describe(text), std::string("'' 0/0 ") + undefined + " modified");
        text.SetModified(FALSE);
        text = loadedUndefined('x');
        EXPECT_EQ(describe(text), std::string("'' 0/0 ") + undefined);
    }
}

TEST(NkDtStringAssignedATruthValue, TakesItsWordOrBecomesUndefined) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        NkDtString text = inMode(mode, "Ja");
        text = NkDtBool(TRUE);
        EXPECT_EQ(describe(text), "'Ja' 2/2 defined");
        text = NkDtBool(FALSE);
        EXPECT_EQ(describe(text), "'Nein' 4/4 defined modified");
        text = NkDtBool(NkDtWmMissing);
        EXPECT_FALSE(text.IsDefined());
        EXPECT_EQ(text.GetLength(), 0);
        EXPECT_EQ(text.GetWorkingMode(), mode);
    }
}

// --- Appending ---------------------------------------------------------------------------------------

TEST(NkDtStringAppendedACharacter, AppendsADefinedOneAndNothingElse) {
    for (const NkDtString& before : states<NkDtString>()) {
        for (const TCHAR ch : {'x', '\0'}) {
            NkDtString plain(before);
            NkDtString value(before);
            plain += ch;
            value += NkDtChar(ch);
            EXPECT_EQ(describe(value), describe(plain));
        }
        for (const NkDtChar& undefined : {missingCharacter(), loadedUndefined('x')}) {
            NkDtString value(before);
            value += undefined;
            EXPECT_EQ(describe(value), describe(before));
        }
    }
}

TEST(NkDtStringAppendedATruthValue, AppendsItsWord) {
    NkDtString text("a");
    text += NkDtBool(FALSE);
    EXPECT_EQ(describe(text), "'aNein' 5/5 defined modified");
    NkDtString undefined(NkDtWmNull);
    undefined += NkDtBool(NkDtWmNull);
    EXPECT_EQ(describe(undefined), "'' 0/0 null");
    undefined += NkDtBool(TRUE);
    EXPECT_EQ(describe(undefined), "'Ja' 2/2 defined modified");
}

// --- Joining -----------------------------------------------------------------------------------------

TEST(Concatenation, OfDefinedOperandsIsDefinedUnmodifiedAndHasRoomForBoth) {
    NkDtChar a('a');
    NkDtChar b('b');
    NkDtString text("xy", NkDtStrLenAuto, 20);
    for (NkDtBasis* const operand :
         {static_cast<NkDtBasis*>(&a), static_cast<NkDtBasis*>(&b), static_cast<NkDtBasis*>(&text)}) {
        operand->SetModified(TRUE);
        operand->SetWorkingMode(NkDtWmNull);
    }
    const DefaultMode scope(NkDtWmDefined);
    EXPECT_EQ(describe(a + b), "'ab' 2/2 defined");
    EXPECT_EQ(describe(text + a), "'xya' 3/3 defined");
    EXPECT_EQ(describe(a + text), "'axy' 3/3 defined");
    EXPECT_EQ(describe(a + 'x'), "'ax' 2/2 defined");
    EXPECT_EQ(describe('x' + a), "'xa' 2/2 defined");
    EXPECT_EQ(describe(a + "xyz"), "'axyz' 4/4 defined");
    EXPECT_EQ(describe("xyz" + a), "'xyza' 4/4 defined");
    EXPECT_EQ(describe(a + CString("cs")), "'acs' 3/3 defined");
    EXPECT_EQ(describe(CString("cs") + a), "'csa' 3/3 defined");
    EXPECT_EQ((a + text).GetWorkingMode(), NkDtWmDefined);
}

TEST(Concatenation, CountsANulAsACharacter) {
    const NkDtChar nul('\0');
    const NkDtChar a('a');
    EXPECT_EQ(describe(a + nul), "'a\\0' 2/2 defined");
    EXPECT_EQ(describe(nul + a), "'\\0a' 2/2 defined");
    EXPECT_EQ(describe(nul + nul), "'\\0\\0' 2/2 defined");
    EXPECT_EQ(describe(NkDtString("x") + nul), "'x\\0' 2/2 defined");
    EXPECT_EQ(describe(nul + NkDtString("x")), "'\\0x' 2/2 defined");
    EXPECT_EQ(describe(nul + "x"), "'\\0x' 2/2 defined");
    EXPECT_EQ(describe('\0' + a), "'\\0a' 2/2 defined");
}

TEST(Concatenation, WithAnUndefinedOperandIsTheOtherOne) {
    const DefaultMode scope(NkDtWmMissing);
    NkDtChar a('a');
    a.SetWorkingMode(NkDtWmNull);
    a.SetModified(TRUE);
    NkDtString text("xy", NkDtStrLenAuto, 20);
    text.SetWorkingMode(NkDtWmNull);
    text.SetModified(TRUE);
    const NkDtString noText(NkDtWmNull);
    const auto expect = [](const NkDtString& result, const char* description, NkDtWorkingMode mode) {
        EXPECT_EQ(describe(result), description);
        EXPECT_EQ(result.GetWorkingMode(), mode);
    };
    for (const NkDtChar& undefined : {missingCharacter(), loadedUndefined('z')}) {
        // A value is copied with its state, a plain operand is new.
        expect(text + undefined, "'xy' 2/2 defined modified", NkDtWmNull);
        expect(undefined + text, "'xy' 2/2 defined modified", NkDtWmNull);
        expect(undefined + a, "'a' 1/1 defined modified", NkDtWmNull);
        expect(a + undefined, "'a' 1/1 defined modified", NkDtWmNull);
        expect(undefined + 'x', "'x' 1/1 defined", NkDtWmMissing);
        expect('x' + undefined, "'x' 1/1 defined", NkDtWmMissing);
        expect(undefined + "xyz", "'xyz' 3/3 defined", NkDtWmMissing);
        expect("xyz" + undefined, "'xyz' 3/3 defined", NkDtWmMissing);
    }
    expect(noText + a, "'a' 1/1 defined", NkDtWmMissing);
    expect(a + noText, "'a' 1/1 defined modified", NkDtWmNull);
}

TEST(Concatenation, OfTwoUndefinedOperandsCopiesTheOneThatIsStated) {
    const NkDtString nullText(NkDtWmNull);
    const NkDtString missingText(NkDtWmMissing);
    const NkDtChar nullCharacter(NkDtWmNull);
    const NkDtChar missing = missingCharacter();
    EXPECT_EQ(describe(nullText + missing), "'' 0/0 null");  // text and character: the left one
    EXPECT_EQ(describe(missingText + nullCharacter), "'' 0/0 missing");
    EXPECT_EQ(describe(nullCharacter + missingText), "'' 0/0 missing");  // character and text: the right one
    EXPECT_EQ(describe(missing + nullText), "'' 0/0 null");
    EXPECT_EQ(describe(nullCharacter + missing), "'' 0/0 missing");  // two characters: the right one
    EXPECT_EQ(describe(missing + nullCharacter), "'' 0/0 null");
}

TEST(Concatenation, WithANullPointerIsRefused) {
    const LPCTSTR nothing = nullptr;
    const NkDtChar a('a');
    expectOrigins({
        {"right", [&] { (void)(a + nothing); }, NkDtErrInitialwert, ".\\dtstrope.cc", "NkDtString",
         "operator+(NkDtChar&,LPCTSTR)"},
        {"left", [&] { (void)(nothing + missingCharacter()); }, NkDtErrInitialwert, ".\\dtstrope.cc",
         "NkDtString", "operator+(LPCTSTR,NkDtChar&)"},
    });
}

TEST(Concatenation, WithATruthValueHasItsWord) {
    EXPECT_EQ(describe(NkDtString("a") + NkDtBool(TRUE)), "'aJa' 3/3 defined");
    EXPECT_EQ(describe(NkDtBool(FALSE) + NkDtString("a")), "'Neina' 5/5 defined");
    EXPECT_EQ(describe("a" + NkDtBool(NkDtWmMissing)), "'a' 1/1 defined");
    EXPECT_FALSE((NkDtString(NkDtWmNull) + NkDtBool(NkDtWmNull)).IsDefined());
}

TEST(CharacterBesideText, NeedsNoMemory) {
    const memorytest::Pool off(false);
    NkDtString text("abc");
    const NkDtChar ch('a');
    const NkDtBool truth(TRUE);
    const memorytest::Requests requests;
    EXPECT_TRUE(text != ch);
    EXPECT_TRUE(ch < text);
    EXPECT_TRUE(ch == 'a');
    EXPECT_TRUE(truth == TRUE);
    text = ch;
    EXPECT_EQ(requests.count(), 0);
}

// --- Comparing ---------------------------------------------------------------------------------------

TEST(CharacterBesideText, IsComparedAsAText) {
    EXPECT_TRUE(NkDtString("a") == NkDtChar('a'));
    EXPECT_TRUE(NkDtChar('a') == NkDtString("a"));
    EXPECT_TRUE(NkDtString("A") != NkDtChar('a'));
    EXPECT_TRUE(NkDtString("ab") != NkDtChar('a'));
    EXPECT_TRUE(NkDtString("") == NkDtChar('\0'));
    EXPECT_TRUE(NkDtString(NkDtWmNull) == NkDtChar(NkDtWmNull));
    EXPECT_TRUE(NkDtString("\xC4") < NkDtChar('b'));  // the sort order of texts
    EXPECT_TRUE(NkDtChar('b') > NkDtString("\xC4"));
    EXPECT_TRUE(NkDtString("A") <= NkDtChar('a'));
}

TEST(CharacterBesideText, IsNotComparedWhenOneIsMissing) {
    const NkDtString text("a");
    const NkDtChar ch('a');
    const char* const module = ".\\dtstrope.cc";
    expectOrigins({
        {"character", [&] { (void)(text == missingCharacter()); }, 2, module, "NkDtString",
         "operator==(LPCTSTR)"},
        {"character left", [&] { (void)(missingCharacter() != text); }, 2, module, "NkDtString",
         "operator!=(LPCTSTR)"},
        {"text", [&] { (void)(NkDtString(NkDtWmMissing) == ch); }, 2, module, "NkDtString",
         "operator==(LPCTSTR)"},
        {"order", [&] { (void)(text < missingCharacter()); }, 2, module, "NkDtString", "operator<(LPCTSTR)"},
    });
}

}  // namespace
