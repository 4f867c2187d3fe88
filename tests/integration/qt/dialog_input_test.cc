// What a person can enter, and what is told about it.

#include "integration/qt/QtTest.h"
#include "support/FrameworkExceptions.h"

using frameworktest::throws;

namespace {

using namespace qttest;

const auto* const application = ::testing::AddGlobalTestEnvironment(new Application);

constexpr int kText = 1;
constexpr int kAmount = 2;
constexpr int kBox = 3;
constexpr int kThreeStates = 4;

class QtInput : public ::testing::Test {
  protected:
    void SetUp() override {
        text = "M\xFCller";
        amount.SetFormat(nullptr);
        amount = "12.50";
        dialog.AddField(kText, "&Name", text);
        dialog.AddField(kAmount, "&Betrag", amount);
        dialog.AddCheckField(kBox, "&Lieferbar", flag);
        dialog.AddCheck(kThreeStates, "&Unklar", TRUE);
        text.SetModified(FALSE);
        amount.SetModified(FALSE);
        dialog.UpdateData(FALSE);
        show(dialog);
    }

    NkDtString text;
    NkDtDecimal amount;
    NkDtBool flag{TRUE};
    CQtDialog dialog{"Eingabe"};
};

TEST_F(QtInput, TextCrossesAsUnicode) {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    EXPECT_TRUE(dialog.SetDlgItemText(kText, bytes.c_str()));
    EXPECT_EQ(toCp1252(edit(dialog, kText).text()), bytes);
    EXPECT_EQ(dialog.GetDlgItemText(kText).View(), bytes);
    type(dialog, kText, "Öl für 5 €, „groß“ – Žižka");
    EXPECT_EQ(dialog.GetDlgItemText(kText), "\xD6l f\xFCr 5 \x80, \x84gro\xDF\x93 \x96 \x8Ei\x9Eka");
    EXPECT_EQ(messageBeside(dialog, kText), "");
}

TEST_F(QtInput, ACharacterBeyondThePageIsRefusedWithAMessage) {
    struct Case {
        const char* typed;
        const char* told;
    };
    for (const Case& each :
         {Case{"Ж", "„Ж“ (U+0416)"}, Case{"中", "„中“ (U+4E2D)"}, Case{"🙂", "„🙂“ (U+1F642)"},
          Case{"\u0301", "U+0301"}, Case{"\u200B", "U+200B"}, Case{"\u2009", "U+2009"}}) {
        typeInto(edit(dialog, kText), QString::fromUtf8(each.typed));
        EXPECT_EQ(edit(dialog, kText).text(), "Müller") << each.told;
        EXPECT_EQ(messageBeside(dialog, kText),
                  std::string("Das Zeichen ") + each.told + " kann nicht gespeichert werden.");
        EXPECT_FALSE(dialog.IsModified(kText));
    }
    EXPECT_TRUE(dialog.UpdateData(TRUE));
    EXPECT_EQ(text, "M\xFCller");
    EXPECT_FALSE(text.IsModified());
}

TEST_F(QtInput, TheMessageEndsWithTheNextInputThatIsTaken) {
    edit(dialog, kText).end(false);
    typeInto(edit(dialog, kText), "Ж");
    EXPECT_NE(messageBeside(dialog, kText), "");
    EXPECT_NE(edit(dialog, kText).accessibleDescription(), "");
    typeInto(edit(dialog, kText), "s");
    EXPECT_EQ(messageBeside(dialog, kText), "");
    EXPECT_EQ(edit(dialog, kText).accessibleDescription(), "");
    EXPECT_EQ(dialog.GetDlgItemText(kText), "M\xFCllers");
}

TEST_F(QtInput, APastedTextIsRefusedAsAWhole) {
    edit(dialog, kText).selectAll();
    paste(edit(dialog, kText), "Meier und Жуков");
    EXPECT_EQ(edit(dialog, kText).text(), "Müller");
    EXPECT_EQ(messageBeside(dialog, kText), "Das Zeichen „Ж“ (U+0416) kann nicht gespeichert werden.");
    edit(dialog, kText).selectAll();
    paste(edit(dialog, kText), "Meier");
    EXPECT_EQ(dialog.GetDlgItemText(kText), "Meier");
}

TEST_F(QtInput, ALetterAndItsAccentAreTheLetterWithTheAccent) {
    edit(dialog, kText).clear();
    paste(edit(dialog, kText), QString::fromUtf8("Mu\u0308ller"));
    EXPECT_EQ(dialog.GetDlgItemText(kText), "M\xFCller");
    EXPECT_EQ(messageBeside(dialog, kText), "");
}

TEST_F(QtInput, TheCursorStaysBehindALetterThatGotItsAccent) {
    type(dialog, kText, "abcdef");
    edit(dialog, kText).setCursorPosition(2);
    paste(edit(dialog, kText), QString::fromUtf8("u\u0308"));
    typeInto(edit(dialog, kText), "Z");
    EXPECT_EQ(edit(dialog, kText).text(), "abüZcdef");
}

TEST_F(QtInput, TheLineEndBehindAPastedTextIsDropped) {
    for (const char* const pasted : {"12\n", "12\r\n", "12", "12\n\n", "12\u2029"}) {
        edit(dialog, kAmount).clear();
        paste(edit(dialog, kAmount), QString::fromUtf8(pasted));
        EXPECT_EQ(edit(dialog, kAmount).text(), "12");
    }
    type(dialog, kText, "abcd");
    edit(dialog, kText).setCursorPosition(2);
    paste(edit(dialog, kText), "x\r\n");
    typeInto(edit(dialog, kText), "y");
    EXPECT_EQ(edit(dialog, kText).text(), "abxycd");
}

TEST_F(QtInput, LineEndsThatTheValueHasStayWhileAPersonTypes) {
    text = "eins\r\nzwei\r\n";
    text.SetModified(FALSE);
    dialog.UpdateData(FALSE);
    EXPECT_EQ(dialog.GetDlgItemText(kText), "eins\r\nzwei\r\n");
    EXPECT_FALSE(dialog.IsModified());
    edit(dialog, kText).setCursorPosition(4);
    typeInto(edit(dialog, kText), "x");
    edit(dialog, kText).end(false);
    typeInto(edit(dialog, kText), "y");
    QTest::keyClick(&edit(dialog, kText), Qt::Key_Backspace);
    EXPECT_EQ(dialog.GetDlgItemText(kText), "einsx\r\nzwei\r\n");
}

TEST_F(QtInput, ATextThatIsTooLongIsRefusedAsAWhole) {
    dialog.SetTextLimit(kText, 8);
    edit(dialog, kText).selectAll();
    paste(edit(dialog, kText), "123456789");
    EXPECT_EQ(edit(dialog, kText).text(), "Müller");
    EXPECT_EQ(messageBeside(dialog, kText), "Der Text darf höchstens 8 Zeichen lang sein.");
    type(dialog, kText, "12345678");
    EXPECT_EQ(messageBeside(dialog, kText), "");
    typeInto(edit(dialog, kText), "9");
    EXPECT_EQ(dialog.GetDlgItemText(kText), "12345678");
    EXPECT_NE(messageBeside(dialog, kText), "");
}

TEST_F(QtInput, ATextThatIsTooLongAlreadyCanBecomeShorter) {
    type(dialog, kText, "1234567890");
    dialog.SetTextLimit(kText, 5);
    EXPECT_EQ(dialog.GetDlgItemText(kText), "1234567890");
    QTest::keyClick(&edit(dialog, kText), Qt::Key_Backspace);
    EXPECT_EQ(edit(dialog, kText).text(), "123456789");
    EXPECT_EQ(messageBeside(dialog, kText), "");
    typeInto(edit(dialog, kText), "x");
    EXPECT_EQ(edit(dialog, kText).text(), "123456789");
    EXPECT_EQ(messageBeside(dialog, kText), "Der Text darf höchstens 5 Zeichen lang sein.");
}

TEST_F(QtInput, TextsOfAnyLengthUpToTheLimitAreHeldWhole) {
    const std::string longest(static_cast<std::size_t>(CQtDialog::nNoLimit), '\xE4');
    EXPECT_FALSE(dialog.SetDlgItemText(kText, (longest + 'x').c_str()));
    EXPECT_EQ(dialog.GetDlgItemText(kText), "M\xFCller");
    EXPECT_TRUE(dialog.SetDlgItemText(kText, longest.c_str()));
    EXPECT_EQ(dialog.GetDlgItemText(kText).View(), longest);
}

TEST_F(QtInput, WhatAProgramPutsIntoTheWidgetItselfNeverReachesTheValue) {
    for (const QString& alien : {QString("Жуков"), QString("a") + QChar(0) + "b"}) {
        edit(dialog, kText).setText(alien);
        try {
            dialog.UpdateData(TRUE);
            ADD_FAILURE() << "saved";
        } catch (NkEhBasis* caught) {
            const std::unique_ptr<NkEhBasis> error(caught);
            EXPECT_EQ(error->GetErrorNumber(), ULONG{NkDtErrFolgefehler});
            EXPECT_STREQ(error->GetCauseText(), alien.size() == 5
                                                    ? "Das Zeichen U+0416 kann nicht gespeichert werden."
                                                    : "Das Zeichen U+0000 kann nicht gespeichert werden.");
        }
        EXPECT_EQ(text, "M\xFCller");
        EXPECT_NE(messageBeside(dialog, kText), "");
    }
}

TEST_F(QtInput, WhatWasModifiedIsMarkedUntilItIsAsItWas) {
    QLineEdit& name = edit(dialog, kText);
    EXPECT_FALSE(dialog.IsModified());
    EXPECT_FALSE(isMarked(dialog, kText));
    EXPECT_EQ(name.accessibleName(), "Name");

    name.end(false);
    typeInto(name, "s");
    EXPECT_TRUE(dialog.IsModified(kText));
    EXPECT_TRUE(dialog.IsModified());
    EXPECT_TRUE(isMarked(dialog, kText));
    EXPECT_FALSE(isMarked(dialog, kAmount));
    EXPECT_EQ(name.accessibleName(), "Name (geändert)");

    QTest::keyClick(&name, Qt::Key_Backspace);
    EXPECT_FALSE(dialog.IsModified());
    EXPECT_FALSE(isMarked(dialog, kText));
    EXPECT_EQ(name.accessibleName(), "Name");
}

TEST_F(QtInput, ATickedBoxIsMarkedAsModified) {
    EXPECT_FALSE(isMarked(dialog, kBox));
    QTest::mouseClick(&box(dialog, kBox), Qt::LeftButton, {}, QPoint(8, box(dialog, kBox).height() / 2));
    EXPECT_EQ(dialog.IsDlgButtonChecked(kBox), 0U);
    EXPECT_TRUE(dialog.IsModified(kBox));
    EXPECT_TRUE(isMarked(dialog, kBox));
    EXPECT_EQ(box(dialog, kBox).accessibleName(), "Lieferbar (geändert)");
    QTest::keyClick(&box(dialog, kBox), Qt::Key_Space);
    EXPECT_FALSE(dialog.IsModified(kBox));
    EXPECT_FALSE(isMarked(dialog, kBox));
}

TEST_F(QtInput, AThreeStateBoxGoesThroughThreeStates) {
    for (const UINT state : {2U, 1U, 0U}) {
        QTest::keyClick(&box(dialog, kThreeStates), Qt::Key_Space);
        EXPECT_EQ(dialog.IsDlgButtonChecked(kThreeStates), state);
    }
}

TEST_F(QtInput, LoadingTakesMarksAndMessagesAway) {
    type(dialog, kText, "Meier");
    dialog.ShowError(kText, "Diesen Namen gibt es schon.");
    EXPECT_EQ(messageBeside(dialog, kText), "Diesen Namen gibt es schon.");
    dialog.UpdateData(FALSE);
    EXPECT_EQ(edit(dialog, kText).text(), "Müller");
    EXPECT_FALSE(isMarked(dialog, kText));
    EXPECT_EQ(messageBeside(dialog, kText), "");
}

TEST_F(QtInput, EnteringIsWhatAPersonDoes) {
    EXPECT_TRUE(dialog.EnterText(kText, "\xC4pfel"));
    EXPECT_EQ(dialog.GetDlgItemText(kText), "\xC4pfel");
    EXPECT_TRUE(dialog.IsModified(kText));
    dialog.SetTextLimit(kText, 5);
    EXPECT_FALSE(dialog.EnterText(kText, "Birnen"));
    EXPECT_EQ(dialog.GetDlgItemText(kText), "\xC4pfel");
    EXPECT_EQ(messageBeside(dialog, kText), "Der Text darf höchstens 5 Zeichen lang sein.");
    EXPECT_TRUE(dialog.EnterText(kText, nullptr));
    EXPECT_EQ(dialog.GetDlgItemText(kText), "");
}

TEST_F(QtInput, AReadOnlyControlTakesNothingFromAPerson) {
    const QColor usual = edit(dialog, kText).palette().color(QPalette::Base);
    dialog.SetReadOnly(kText);
    EXPECT_NE(edit(dialog, kText).palette().color(QPalette::Base), usual);
    typeInto(edit(dialog, kText), "x");
    EXPECT_FALSE(dialog.EnterText(kText, "Meier"));
    EXPECT_EQ(edit(dialog, kText).text(), "Müller");
    EXPECT_TRUE(dialog.SetDlgItemText(kText, "Meier"));
    dialog.SetReadOnly(kText, FALSE);
    EXPECT_EQ(edit(dialog, kText).palette().color(QPalette::Base), usual);
    EXPECT_TRUE(dialog.EnterText(kText, "Huber"));
    EXPECT_EQ(edit(dialog, kText).text(), "Huber");
}

TEST_F(QtInput, AnIdWithoutSuchAControlIsRefused) {
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.AddEdit(kText, "Zweiter"); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.AddCheck(kText, "Zweiter"); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.SetTextLimit(kBox, 5); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.SetReadOnly(kBox); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.EnterText(kBox, "x"); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.IsModified(99); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.ShowError(99, "x"); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.GetWidget(99); }));

    class Unknown : public NkDtLong {
      public:
        NkDtTyps GetDtTyp() const override { return NkDtTypBasis; }
    };
    Unknown value;
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.AddField(99, "Unbekannt", value); }));
    EXPECT_EQ(dialog.GetDlgItem(99), nullptr);
}

}  // namespace
