#include <nkfw/DataExchange.h>
#include <nkfw/Exception.h>
#include <nkfw/MemoryDialog.h>

#include <gtest/gtest.h>

#include "framework/FrameworkTest.h"

namespace {

using frameworktest::throws;

constexpr int kEdit = 1;
constexpr int kBox = 2;
constexpr int kThreeStates = 3;
constexpr int kNothing = 4;

class DataExchange : public ::testing::Test {
  protected:
    void SetUp() override {
        dialog.AddEdit(kEdit);
        dialog.AddCheck(kBox);
        dialog.AddCheck(kThreeStates, TRUE);
    }

    CMemoryDialog dialog;
};

TEST_F(DataExchange, KnowsItsDialogAndDirectionAndNoControlYet) {
    for (const BOOL saving : {TRUE, FALSE, -1}) {
        const CDataExchange dx(&dialog, saving);
        EXPECT_EQ(dx.m_pDlgWnd, &dialog);
        EXPECT_EQ(dx.m_bSaveAndValidate, saving);
        EXPECT_EQ(dx.m_pLastControl, nullptr);
        EXPECT_FALSE(dx.m_bEditLastControl);
    }
}

TEST_F(DataExchange, RemembersTheControlPreparedLast) {
    CDataExchange dx(&dialog, TRUE);
    EXPECT_EQ(dx.PrepareEditCtrl(kEdit), dialog.GetDlgItem(kEdit));
    EXPECT_EQ(dx.m_pLastControl, dialog.GetDlgItem(kEdit));
    EXPECT_TRUE(dx.m_bEditLastControl);
    EXPECT_EQ(dx.PrepareCtrl(kBox), dialog.GetDlgItem(kBox));
    EXPECT_EQ(dx.m_pLastControl, dialog.GetDlgItem(kBox));
    EXPECT_FALSE(dx.m_bEditLastControl);
}

TEST_F(DataExchange, RefusesAnIdWithoutControlAndForgetsTheLastOne) {
    CDataExchange dx(&dialog, TRUE);
    dx.PrepareEditCtrl(kEdit);
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dx.PrepareCtrl(kNothing); }));
    EXPECT_EQ(dx.m_pLastControl, nullptr);
    EXPECT_FALSE(dx.m_bEditLastControl);
    dx.PrepareEditCtrl(kEdit);
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dx.PrepareEditCtrl(kNothing); }));
    EXPECT_EQ(dx.m_pLastControl, nullptr);
    EXPECT_FALSE(dx.m_bEditLastControl);
}

TEST_F(DataExchange, RefusesEveryIdWithoutDialog) {
    CDataExchange dx(nullptr, FALSE);
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dx.PrepareCtrl(kEdit); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dx.PrepareEditCtrl(kEdit); }));
}

TEST_F(DataExchange, FailsWithAUserException) {
    CDataExchange dx(&dialog, TRUE);
    dx.PrepareEditCtrl(kEdit);
    EXPECT_TRUE(throws<CUserException>([&] { dx.Fail(); }));
    EXPECT_EQ(dx.m_pLastControl, dialog.GetDlgItem(kEdit));
}

TEST_F(DataExchange, SavesTheStateOfACheckBox) {
    CDataExchange dx(&dialog, TRUE);
    for (const int box : {kBox, kThreeStates}) {
        for (const UINT state : {0U, 1U, 2U}) {
            if (box == kBox && state == 2) continue;
            dialog.CheckDlgButton(box, state);
            int value = 99;
            DDX_Check(&dx, box, value);
            EXPECT_EQ(value, static_cast<int>(state));
            EXPECT_EQ(dialog.IsDlgButtonChecked(box), state);
        }
    }
}

TEST_F(DataExchange, LoadsEveryNumberIntoACheckBoxAndLeavesItAlone) {
    struct Case {
        int value;
        UINT twoStates;
        UINT threeStates;
    };
    constexpr Case cases[] = {{0, 0, 0}, {1, 1, 1}, {2, 1, 2}, {3, 1, 1}, {-1, 1, 1}, {2147483647, 1, 1}};
    CDataExchange dx(&dialog, FALSE);
    for (const Case& each : cases) {
        int value = each.value;
        DDX_Check(&dx, kBox, value);
        DDX_Check(&dx, kThreeStates, value);
        EXPECT_EQ(value, each.value);
        EXPECT_EQ(dialog.IsDlgButtonChecked(kBox), each.twoStates) << each.value;
        EXPECT_EQ(dialog.IsDlgButtonChecked(kThreeStates), each.threeStates) << each.value;
    }
}

TEST_F(DataExchange, SavesForEveryDirectionButFalse) {
    dialog.CheckDlgButton(kBox, 1);
    CDataExchange dx(&dialog, -1);
    int value = 0;
    DDX_Check(&dx, kBox, value);
    EXPECT_EQ(value, 1);
}

TEST_F(DataExchange, AnExchangeWithAMissingControlOrNoCheckBoxChangesNothing) {
    for (const BOOL saving : {TRUE, FALSE}) {
        CDataExchange dx(&dialog, saving);
        int value = 99;
        EXPECT_TRUE(throws<CInvalidArgException>([&] { DDX_Check(&dx, kNothing, value); }));
        EXPECT_EQ(dx.m_pLastControl, nullptr);
        EXPECT_TRUE(throws<CInvalidArgException>([&] { DDX_Check(&dx, kEdit, value); }));
        EXPECT_EQ(dx.m_pLastControl, dialog.GetDlgItem(kEdit));
        EXPECT_EQ(value, 99);
    }
}

}  // namespace
