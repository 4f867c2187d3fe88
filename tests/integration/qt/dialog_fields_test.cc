// The fields bound to values: what counts as edited, over one saving and several.

#include <nkfw/DataExchange.h>
#include <nkfw/Exception.h>

#include <QTimer>
#include <stdexcept>

#include "integration/qt/QtTest.h"
#include "support/DialogFields.h"
#include "unit/ValueTesting.h"

namespace {

using namespace qttest;
using valuetest::describe;

const auto* const application = ::testing::AddGlobalTestEnvironment(new Application);

constexpr int kFirst = 1;
constexpr int kSecond = 2;
constexpr int kBox = 3;

template <class Value>
class QtFieldOf : public ::testing::Test {};

TYPED_TEST_SUITE(QtFieldOf, valuetest::ValueClasses, valuetest::ClassNames);

TYPED_TEST(QtFieldOf, EmptiedIsUndefinedAndModified) {
    TypeParam value(dialogtest::Field<TypeParam>::value());
    value.SetModified(FALSE);
    TestedDialog dialog("Eins");
    dialog.AddField(kFirst, "&Feld", value);
    dialog.UpdateData(FALSE);
    type(dialog, kFirst, "");
    EXPECT_TRUE(dialog.OnOK());
    EXPECT_FALSE(value.IsDefined());
    EXPECT_TRUE(value.IsModified());
}

class QtFields : public ::testing::Test {
  protected:
    void SetUp() override {
        number.SetModified(FALSE);
        dialog.AddField(kFirst, "&Nummer", number);
        dialog.AddField(kSecond, "&Gewicht", real);
        dialog.AddCheckField(kBox, "&Lieferbar", flag);
        dialog.UpdateData(FALSE);
        show(dialog);
    }

    NkDtLong number{5};
    NkDtDouble real{0.125};
    NkDtBool flag{FALSE};
    TestedDialog dialog{"Artikel"};
};

TEST_F(QtFields, EditedBackAfterASavingHaveTheirFirstValueAgain) {
    type(dialog, kFirst, "6");
    type(dialog, kSecond, "7");
    EXPECT_TRUE(dialog.OnOK());
    EXPECT_EQ(number, 6);
    EXPECT_TRUE(dialog.IsModified(kFirst)) << "as long as it is not loaded again";

    type(dialog, kFirst, "5");
    type(dialog, kSecond, "0,13");
    EXPECT_FALSE(dialog.IsModified());
    EXPECT_TRUE(dialog.OnOK());
    EXPECT_EQ(describe(number), "5 defined");
    EXPECT_EQ(real.GetValue(), 0.125);
    EXPECT_FALSE(real.IsModified());
}

TEST_F(QtFields, TakeWhatTheProgramPutsIntoThem) {
    dialog.SetDlgItemText(kFirst, "7");
    dialog.CheckDlgButton(kBox, 1);
    EXPECT_TRUE(dialog.IsModified(kFirst));
    EXPECT_TRUE(isMarked(dialog, kFirst));
    EXPECT_TRUE(isMarked(dialog, kBox));
    EXPECT_FALSE(isMarked(dialog, kSecond));
    EXPECT_TRUE(dialog.UpdateData(TRUE));
    EXPECT_EQ(describe(number), "7 defined modified");
    EXPECT_EQ(describe(flag), "1 defined modified");

    dialog.UpdateData(FALSE);
    EXPECT_FALSE(dialog.IsModified());
    EXPECT_FALSE(isMarked(dialog, kFirst));
}

TEST_F(QtFields, ThatRefuseTellTheExchangeWhatKindOfControlTheyAre) {
    type(dialog, kSecond, "zwei");
    CDataExchange exchange(&dialog, TRUE);
    class Reached : public CQtDialog {
      public:
        static void run(CQtDialog& dialog, CDataExchange& exchange) {
            (dialog.*(&Reached::DoDataExchange))(&exchange);
        }
    };
    const valuetest::ErrorPtr error =
        valuetest::expectError(NkDtErrFolgefehler, [&] { Reached::run(dialog, exchange); });
    EXPECT_EQ(exchange.m_pLastControl, dialog.GetDlgItem(kSecond));
    EXPECT_TRUE(exchange.m_bEditLastControl);
}

TEST(QtCheckFields, WithAThirdStateMakeATruthValueUndefinedAndBack) {
    NkDtBool flag(NkDtWmNull);
    TestedDialog dialog("Artikel");
    dialog.AddCheckField(kBox, "&Lieferbar", flag, TRUE);
    dialog.UpdateData(FALSE);
    show(dialog);
    EXPECT_EQ(dialog.IsDlgButtonChecked(kBox), UINT{CWnd::Indeterminate});
    for (const char* const expected : {"1 defined modified", "0 defined modified", "0 null"}) {
        QTest::keyClick(&box(dialog, kBox), Qt::Key_Space);
        EXPECT_TRUE(dialog.OnOK());
        EXPECT_EQ(describe(flag), expected);
    }
    EXPECT_FALSE(isMarked(dialog, kBox));
}

TEST(QtCheckFields, WithTwoStatesLeaveANullValueAloneUntilTheyAreChecked) {
    NkDtBool flag(NkDtWmNull);
    TestedDialog dialog("Artikel");
    dialog.AddCheckField(kBox, "&Lieferbar", flag);
    dialog.UpdateData(FALSE);
    for (const char* const expected : {"1 defined modified", "0 null"}) {
        QTest::keyClick(&box(dialog, kBox), Qt::Key_Space);
        EXPECT_TRUE(dialog.OnOK());
        EXPECT_EQ(describe(flag), expected);
    }
}

TEST(QtLoading, ThatIsRefusedIsToldBesideTheFieldAndThrown) {
    NkDtString text(std::string(static_cast<std::size_t>(CQtDialog::nNoLimit) + 1, 'x').c_str());
    NkDtLong number(5);
    CQtDialog dialog("Artikel");
    dialog.AddField(kFirst, "&Text", text);
    dialog.AddField(kSecond, "&Nummer", number);
    valuetest::expectError(NkDtErrFrameworkException, [&] { dialog.UpdateData(FALSE); });
    show(dialog);
    EXPECT_EQ(messageBeside(dialog, kFirst), "Folgefehler aufgrund einer MFC-Exception");
    EXPECT_EQ(edit(dialog, kSecond).text(), "5");
    EXPECT_TRUE(dialog.UpdateData(TRUE));
    EXPECT_EQ(text.GetLength(), CQtDialog::nNoLimit + 1);
}

// ---- While it runs

/// Asks to be run once more while it runs.
class Nested : public CQtDialog {
  public:
    Nested() : CQtDialog("Artikel", "OK") {}
    bool refused = false;

  protected:
    BOOL OnOK() override {
        try {
            DoModal();
        } catch (CInvalidArgException* exception) {
            exception->Delete();
            refused = true;
        }
        throw std::runtime_error("the database is gone");
    }
};

TEST(QtModal, RunsOnceAtATimeAndStillPassesExceptions) {
    Nested dialog;
    QTimer::singleShot(0, dialog.GetDialog(), [&] { click(dialog, "OK"); });
    EXPECT_THROW(dialog.DoModal(), std::runtime_error);
    EXPECT_TRUE(dialog.refused);
    EXPECT_FALSE(dialog.GetDialog()->isVisible());
}

}  // namespace
