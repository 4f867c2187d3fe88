// Who ends first: the application object, the dialog, the widgets.

#include <nkfw/Exception.h>

#include <QApplication>
#include <QPointer>
#include <optional>

#include "integration/qt/QtTest.h"
#include "support/FrameworkExceptions.h"

using frameworktest::throws;

namespace {

using namespace qttest;

class QtLifetime : public ::testing::Test {
  protected:
    void SetUp() override { qputenv("QT_QPA_PLATFORM", "offscreen"); }
};

TEST_F(QtLifetime, ADialogThatOutlivesTheApplicationHasNoWindowAnyMore) {
    NkDtLong number(5);
    std::optional<CQtApplication> application(std::in_place);
    CQtDialog dialog("Artikel");
    dialog.AddField(1, "&Nummer", number);
    dialog.AddCheck(2, "&Lieferbar");
    dialog.UpdateData(FALSE);
    dialog.GetDialog()->show();
    application.reset();

    EXPECT_EQ(dialog.GetDialog(), nullptr);
    EXPECT_EQ(dialog.GetFocus(), nullptr);
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.GetDlgItemText(1); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.SetDlgItemText(1, "6"); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.EnterText(1, "6"); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.IsDlgButtonChecked(2); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.CheckDlgButton(2, 1); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.ShowError(1, "x"); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.ShowMessage("x"); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.GetWidget(1); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.AddEdit(3, "x"); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.DoModal(); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.SavePicture("x.png"); }));
    dialog.GetDlgItem(1)->SetFocus();
}

TEST_F(QtLifetime, DialogsOfOneApplicationAfterTheOther) {
    for (int i = 0; i < 3; ++i) {
        std::optional<CQtApplication> application(std::in_place);
        const CQtDialog longer("Artikel");
        {
            CQtDialog shorter("Artikel");
            shorter.AddEdit(1, "&Nummer");
            EXPECT_TRUE(shorter.SetDlgItemText(1, "5"));
        }
        application.reset();
        EXPECT_EQ(longer.GetDialog(), nullptr);
    }
}

/// Does not tell which ids are taken, so that a control is made that cannot be added.
class Forgetful : public CQtDialog {
  public:
    bool forgets = false;
    CWnd* GetDlgItem(int nID) const override { return forgets ? nullptr : CQtDialog::GetDlgItem(nID); }
};

TEST_F(QtLifetime, AControlThatCannotBeAddedLeavesNothingInTheWindow) {
    const CQtApplication application;
    Forgetful dialog;
    dialog.AddEdit(1, "&Nummer");
    dialog.AddCheck(2, "&Lieferbar");
    show(dialog);
    dialog.forgets = true;
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.AddEdit(1, "&Ort"); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.AddCheck(2, "&Aktiv"); }));
    dialog.forgets = false;
    EXPECT_EQ(dialog.GetDialog()->findChildren<QLineEdit*>().size(), 1);
    EXPECT_EQ(dialog.GetDialog()->findChildren<QCheckBox*>().size(), 1);
    EXPECT_EQ(labels(dialog), QStringList("&Nummer"));
    dialog.AddEdit(3, "&Ort");
    QCoreApplication::processEvents();  // shows it
    typeInto(edit(dialog, 1), "5");
    QTest::keyClick(&edit(dialog, 1), Qt::Key_Tab);
    QTest::keyClick(&box(dialog, 2), Qt::Key_Tab);
    typeInto(edit(dialog, 3), "Ulm");
    EXPECT_TRUE(edit(dialog, 3).hasFocus());
    EXPECT_EQ(dialog.GetDlgItemText(1), "5");
    EXPECT_EQ(dialog.GetDlgItemText(3), "Ulm");
}

TEST_F(QtLifetime, AWindowThatTheProgramEndsItselfIsMissing) {
    const CQtApplication application;
    CQtDialog dialog("Artikel");
    dialog.AddEdit(1, "&Nummer");
    delete dialog.GetDialog();
    EXPECT_EQ(dialog.GetDialog(), nullptr);
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.GetDlgItemText(1); }));
}

}  // namespace
