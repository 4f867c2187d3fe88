// What saving takes over, and how a refusal is shown.

#include <nkdt/DialogExchange.h>
#include <nkfw/DataExchange.h>

#include <QTimer>
#include <functional>
#include <stdexcept>

#include "integration/qt/QtTest.h"

namespace {

using namespace qttest;

const auto* const application = ::testing::AddGlobalTestEnvironment(new Application);

constexpr int kNumber = 1;
constexpr int kReal = 2;
constexpr int kDate = 3;
constexpr int kBox = 4;

/// The dialog runs, and a person does something; the dialog is closed afterwards in any case.
BOOL run(CQtDialog& dialog, const std::function<void()>& person) {
    QTimer::singleShot(0, dialog.GetDialog(), [&] {
        EXPECT_TRUE(QTest::qWaitForWindowActive(dialog.GetDialog()));
        person();
        if (dialog.GetDialog()->isVisible()) {
            ADD_FAILURE() << "still open";
            dialog.GetDialog()->reject();
        }
    });
    return dialog.DoModal();
}

class QtSaving : public ::testing::Test {
  protected:
    void SetUp() override {
        dialog.AddField(kNumber, "&Nummer", number);
        dialog.AddField(kReal, "&Gewicht", real);
        dialog.AddField(kDate, "&Datum", date);
        dialog.AddCheckField(kBox, "&Lieferbar", flag);
    }
    void load() {
        dialog.UpdateData(FALSE);
        show(dialog);
    }

    NkDtLong number{4711};
    NkDtDouble real{0.125};
    NkDtDateZp date{1, 3, 2004};
    NkDtBool flag{NkDtWmNull};
    TestedDialog dialog{"Artikel"};
};

TEST_F(QtSaving, AnUntouchedDialogChangesNothing) {
    load();
    EXPECT_EQ(edit(dialog, kReal).text(), "0,13");
    EXPECT_TRUE(dialog.OnOK());
    EXPECT_EQ(real.GetValue(), 0.125);
    EXPECT_TRUE(flag.IsNull());
    EXPECT_FALSE(number.IsModified() || real.IsModified() || date.IsModified() || flag.IsModified());
}

TEST_F(QtSaving, WhatWasModifiedIsTaken) {
    load();
    type(dialog, kNumber, "4712");
    type(dialog, kDate, "");
    QTest::keyClick(&box(dialog, kBox), Qt::Key_Space);
    EXPECT_TRUE(dialog.OnOK());
    EXPECT_EQ(number, 4712);
    EXPECT_TRUE(number.IsModified());
    EXPECT_FALSE(real.IsModified());
    EXPECT_FALSE(date.IsDefined());
    EXPECT_TRUE(flag.IsDefined() && flag.IsTrue());
}

TEST_F(QtSaving, TheValuesOwnFormatReads) {
    const NkFormat format(FormatDatumArtJahrMonatTag, FormatDatumTrennerBindestrich,
                          FormatDatumJahrVierstellig, FormatDatumMonatZahl, 1, '0');
    date.SetFormat(&format);
    load();
    EXPECT_EQ(edit(dialog, kDate).text(), "2004-03-01");
    type(dialog, kDate, "2004-12-24");
    EXPECT_TRUE(dialog.OnOK());
    EXPECT_EQ(date, NkDtDateZp(24, 12, 2004));
    EXPECT_EQ(date.GetFormat(), &format);
}

TEST_F(QtSaving, EveryRefusalIsShownAndNoValueChanges) {
    load();
    type(dialog, kNumber, "4712");
    type(dialog, kReal, "zwei");
    type(dialog, kDate, "31.02.2004");
    edit(dialog, kNumber).setFocus();
    EXPECT_FALSE(dialog.OnOK());
    EXPECT_EQ(messageBeside(dialog, kNumber), "");
    EXPECT_EQ(messageBeside(dialog, kReal), "\"zwei\" an Position 1: Ziffer erwartet");
    EXPECT_EQ(messageBeside(dialog, kDate), "\"31.02.2004\" an Position 1: Tag nicht im Monat");
    EXPECT_EQ(edit(dialog, kDate).accessibleDescription(),
              "\"31.02.2004\" an Position 1: Tag nicht im Monat");
    EXPECT_EQ(dialog.GetFocus(), dialog.GetDlgItem(kReal));
    EXPECT_TRUE(edit(dialog, kReal).hasFocus());
    EXPECT_EQ(edit(dialog, kReal).selectedText(), "zwei");
    EXPECT_EQ(number, 4711);
    EXPECT_EQ(real.GetValue(), 0.125);
    EXPECT_FALSE(number.IsModified() || real.IsModified() || date.IsModified());
    EXPECT_TRUE(dialog.IsModified(kNumber)) << "still to be saved";

    type(dialog, kReal, "2,00");
    EXPECT_EQ(messageBeside(dialog, kReal), "");
    type(dialog, kDate, "29.02.2004");
    EXPECT_TRUE(dialog.OnOK());
    EXPECT_EQ(number, 4712);
    EXPECT_EQ(real.GetValue(), 2.0);
    EXPECT_EQ(date, NkDtDateZp(29, 2, 2004));
}

TEST_F(QtSaving, UpdateDataThrowsTheFirstRefusal) {
    load();
    type(dialog, kReal, "zwei");
    type(dialog, kDate, "31.02.2004");
    try {
        dialog.UpdateData(TRUE);
        FAIL() << "saved";
    } catch (NkEhBasis* caught) {
        const std::unique_ptr<NkEhBasis> error(caught);
        EXPECT_STREQ(error->GetCauseText(), "\"zwei\" an Position 1: Ziffer erwartet");
    }
    EXPECT_EQ(dialog.GetFocus(), dialog.GetDlgItem(kReal));
    EXPECT_NE(messageBeside(dialog, kDate), "");
}

TEST_F(QtSaving, AMessageOfTheProgramStandsBesideTheFieldOrAboveTheButtons) {
    load();
    dialog.ShowError(kNumber, "Diese Nummer gibt es schon f\xFCr M\xFCller.");
    dialog.ShowMessage("Der Datensatz wurde inzwischen gel\xF6scht.");
    EXPECT_EQ(messageBeside(dialog, kNumber), "Diese Nummer gibt es schon für Müller.");
    QCoreApplication::processEvents();
    const QLabel* message = nullptr;
    for (const QLabel* const label : dialog.GetDialog()->findChildren<QLabel*>()) {
        if (label->text() == "Der Datensatz wurde inzwischen gelöscht.") message = label;
    }
    ASSERT_NE(message, nullptr);
    EXPECT_TRUE(message->isVisible());
    EXPECT_GT(place(dialog, *message).top(), place(dialog, box(dialog, kBox)).bottom());
    EXPECT_LT(place(dialog, *message).bottom(), place(dialog, *button(dialog, "Speichern")).top());

    dialog.ClearErrors();
    EXPECT_EQ(messageBeside(dialog, kNumber), "");
    EXPECT_FALSE(message->isVisible());
}

TEST_F(QtSaving, AnErrorWithoutCauseShowsItsOwnText) {
    load();
    const NkDtExcep plain("test.cc", "Test", "Test", NkDtErrWertebereich, 0, FALSE);
    dialog.ShowError(kNumber, plain);
    EXPECT_EQ(messageBeside(dialog, kNumber), "Wert außerhalb des Wertebereichs");
    NkDtExcep replaced("test.cc", "Test", "Test", NkDtErrFolgefehler, 0, FALSE);
    replaced.SetCause(plain);
    dialog.ShowError(kNumber, "");
    EXPECT_EQ(messageBeside(dialog, kNumber), "");
    dialog.ShowError(kNumber, replaced);
    EXPECT_EQ(messageBeside(dialog, kNumber), "Wert außerhalb des Wertebereichs");
}

// ---- While it runs

TEST_F(QtSaving, TheSaveButtonSaves) {
    EXPECT_TRUE(run(dialog, [&] {
        EXPECT_EQ(edit(dialog, kNumber).text(), "4711") << "loaded";
        type(dialog, kNumber, "1");
        click(dialog, "Speichern");
    }));
    EXPECT_EQ(number, 1);
}

TEST_F(QtSaving, ReturnSaves) {
    EXPECT_TRUE(run(dialog, [&] {
        type(dialog, kNumber, "1");
        QTest::keyClick(&edit(dialog, kNumber), Qt::Key_Return);
    }));
    EXPECT_EQ(number, 1);
}

TEST_F(QtSaving, AbbrechenAndEscapeChangeNothing) {
    EXPECT_FALSE(run(dialog, [&] {
        type(dialog, kNumber, "1");
        click(dialog, "Abbrechen");
    }));
    EXPECT_FALSE(run(dialog, [&] {
        EXPECT_EQ(edit(dialog, kNumber).text(), "4711") << "loaded again";
        type(dialog, kNumber, "x");
        QTest::keyClick(&edit(dialog, kNumber), Qt::Key_Escape);
    }));
    EXPECT_EQ(number, 4711);
    EXPECT_FALSE(number.IsModified());
}

TEST_F(QtSaving, ARefusalKeepsTheDialogOpenWithTheCursorInTheField) {
    EXPECT_TRUE(run(dialog, [&] {
        type(dialog, kReal, "zwei");
        click(dialog, "Speichern");
        EXPECT_TRUE(dialog.GetDialog()->isVisible());
        EXPECT_TRUE(edit(dialog, kReal).hasFocus());
        EXPECT_NE(messageBeside(dialog, kReal), "");
        typeInto(edit(dialog, kReal), "2");  // over the selected text
        QTest::keyClick(&edit(dialog, kReal), Qt::Key_Return);
    }));
    EXPECT_EQ(real.GetValue(), 2.0);
}

// ---- With an exchange of the program's own

class OwnDialog : public CQtDialog {
  public:
    OwnDialog() : CQtDialog("Eigener", "OK") {
        AddEdit(kNumber, "Nummer", NkDtTypLong);
        AddEdit(kReal, "Gewicht", NkDtTypDouble);
        AddCheck(kBox, "Gesperrt");
    }
    using CQtDialog::OnOK;

    NkDtLong number{7};
    NkDtDouble real{0.5};
    NkDtBool flag{FALSE};
    std::function<void(CDataExchange*)> then;

  protected:
    void DoDataExchange(CDataExchange* pDX) override {
        DDX_NkDtTyp(pDX, kNumber, number);
        DDX_NkDtTyp(pDX, kReal, real);
        DDX_NkDtTypCheck(pDX, kBox, flag);
        if (then && pDX->m_bSaveAndValidate) then(pDX);
    }
};

TEST(QtOwnExchange, IsSavedByTheButton) {
    OwnDialog dialog;
    EXPECT_TRUE(run(dialog, [&] {
        EXPECT_EQ(edit(dialog, kReal).text(), "0,5");
        type(dialog, kNumber, "8");
        QTest::keyClick(&box(dialog, kBox), Qt::Key_Space);
        click(dialog, "OK");
    }));
    EXPECT_EQ(dialog.number, 8);
    EXPECT_TRUE(dialog.flag.IsTrue());
}

TEST(QtOwnExchange, ARefusalIsShownWhereItArose) {
    OwnDialog dialog;
    dialog.UpdateData(FALSE);
    show(dialog);
    type(dialog, kReal, "1.5");
    EXPECT_FALSE(dialog.OnOK());
    EXPECT_NE(messageBeside(dialog, kReal), "");
    EXPECT_EQ(messageBeside(dialog, kReal).find("Folgefehler"), std::string::npos);
    EXPECT_TRUE(edit(dialog, kReal).hasFocus());
    EXPECT_EQ(dialog.real.GetValue(), 0.5);
}

TEST(QtOwnExchange, FailKeepsItOpenWithTheProgramsMessage) {
    OwnDialog dialog;
    dialog.UpdateData(FALSE);
    show(dialog);
    dialog.then = [&](CDataExchange* pDX) {
        pDX->PrepareEditCtrl(kNumber);
        dialog.ShowError(kNumber, "Die Nummer ist vergeben.");
        pDX->Fail();
    };
    edit(dialog, kReal).setFocus();
    EXPECT_FALSE(dialog.OnOK());
    EXPECT_EQ(messageBeside(dialog, kNumber), "Die Nummer ist vergeben.");
    EXPECT_TRUE(edit(dialog, kNumber).hasFocus());
}

TEST(QtOwnExchange, OtherExceptionsCloseTheDialogAndReachTheCaller) {
    OwnDialog dialog;
    dialog.then = [](CDataExchange*) { throw std::runtime_error("the database is gone"); };
    EXPECT_THROW(run(dialog, [&] { click(dialog, "OK"); }), std::runtime_error);
    EXPECT_FALSE(dialog.GetDialog()->isVisible());
    dialog.then = nullptr;
    EXPECT_TRUE(run(dialog, [&] { click(dialog, "OK"); })) << "usable afterwards";
}

TEST(QtOwnExchange, AFieldWithoutControlReachesTheCaller) {
    OwnDialog dialog;
    dialog.then = [&](CDataExchange* pDX) { DDX_NkDtTyp(pDX, 99, dialog.number); };
    try {
        run(dialog, [&] { click(dialog, "OK"); });
        FAIL() << "closed";
    } catch (NkEhBasis* caught) {
        const std::unique_ptr<NkEhBasis> error(caught);
        EXPECT_EQ(error->GetErrorNumber(), ULONG{NkDtErrFolgefehler});
    }
}

}  // namespace
