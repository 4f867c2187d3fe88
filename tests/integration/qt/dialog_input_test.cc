// What a person can enter, and what is told about it.

#include <QClipboard>
#include <QGuiApplication>

#include "integration/qt/QtTest.h"

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
    QGuiApplication::clipboard()->setText("Meier und Жуков");
    edit(dialog, kText).selectAll();
    edit(dialog, kText).paste();
    EXPECT_EQ(edit(dialog, kText).text(), "Müller");
    EXPECT_EQ(messageBeside(dialog, kText), "Das Zeichen „Ж“ (U+0416) kann nicht gespeichert werden.");
    QGuiApplication::clipboard()->setText("Meier");
    edit(dialog, kText).paste();
    EXPECT_EQ(dialog.GetDlgItemText(kText), "Meier");
    QGuiApplication::clipboard()->clear();
}

TEST_F(QtInput, ALetterAndItsAccentAreTheLetterWithTheAccent) {
    QGuiApplication::clipboard()->setText(QString::fromUtf8("Mu\u0308ller"));
    edit(dialog, kText).clear();
    edit(dialog, kText).paste();
    EXPECT_EQ(dialog.GetDlgItemText(kText), "M\xFCller");
    EXPECT_EQ(messageBeside(dialog, kText), "");
    QGuiApplication::clipboard()->clear();
}

TEST_F(QtInput, ATextThatIsTooLongIsRefusedAsAWhole) {
    dialog.SetTextLimit(kText, 8);
    QGuiApplication::clipboard()->setText("123456789");
    edit(dialog, kText).selectAll();
    edit(dialog, kText).paste();
    EXPECT_EQ(edit(dialog, kText).text(), "Müller");
    EXPECT_EQ(messageBeside(dialog, kText), "Der Text darf höchstens 8 Zeichen lang sein.");
    type(dialog, kText, "12345678");
    EXPECT_EQ(messageBeside(dialog, kText), "");
    typeInto(edit(dialog, kText), "9");
    EXPECT_EQ(dialog.GetDlgItemText(kText), "12345678");
    EXPECT_NE(messageBeside(dialog, kText), "");
    QGuiApplication::clipboard()->clear();
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
            EXPECT_STREQ(error->GetCauseText(),
                         alien.size() == 5 ? "Das Zeichen U+0416 ist in Codepage 1252 nicht darstellbar"
                                           : "Das Zeichen U+0000 ist in Codepage 1252 nicht darstellbar");
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

TEST_F(QtInput, AnIdWithoutSuchAControlIsRefused) {
    const auto refuses = [](auto&& operation) {
        try {
            operation();
            return false;
        } catch (CInvalidArgException* exception) {
            exception->Delete();
            return true;
        }
    };
    EXPECT_TRUE(refuses([&] { dialog.AddEdit(kText, "Zweiter"); }));
    EXPECT_TRUE(refuses([&] { dialog.AddCheck(kText, "Zweiter"); }));
    EXPECT_TRUE(refuses([&] { dialog.SetTextLimit(kBox, 5); }));
    EXPECT_TRUE(refuses([&] { dialog.EnterText(kBox, "x"); }));
    EXPECT_TRUE(refuses([&] { dialog.IsModified(99); }));
    EXPECT_TRUE(refuses([&] { dialog.ShowError(99, "x"); }));
    EXPECT_TRUE(refuses([&] { dialog.GetWidget(99); }));

    class Unknown : public NkDtLong {
      public:
        NkDtTyps GetDtTyp() const override { return NkDtTypBasis; }
    };
    Unknown value;
    EXPECT_TRUE(refuses([&] { dialog.AddField(99, "Unbekannt", value); }));
    EXPECT_EQ(dialog.GetDlgItem(99), nullptr);
}

}  // namespace
