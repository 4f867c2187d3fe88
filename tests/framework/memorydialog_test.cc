#include <nkfw/Exception.h>
#include <nkfw/MemoryDialog.h>

#include <string>

#include <gtest/gtest.h>

#include "framework/FrameworkTest.h"

namespace {

using frameworktest::FailingMemory;
using frameworktest::throws;

constexpr int kEdit = 1;
constexpr int kBox = 2;
constexpr int kNothing = 3;

class MemoryDialog : public ::testing::Test {
  protected:
    void SetUp() override {
        dialog.AddEdit(kEdit);
        dialog.AddCheck(kBox);
    }

    CMemoryDialog dialog;
};

TEST_F(MemoryDialog, StartsWithEmptyTextsAndUncheckedBoxes) {
    EXPECT_EQ(dialog.GetDlgItemText(kEdit), "");
    EXPECT_EQ(dialog.GetDlgItem(kEdit)->GetWindowTextLength(), 0);
    EXPECT_EQ(dialog.IsDlgButtonChecked(kBox), 0U);
    EXPECT_EQ(dialog.GetFocus(), nullptr);
    EXPECT_EQ(dialog.GetDlgItem(kNothing), nullptr);
}

TEST_F(MemoryDialog, KeepsTheTextAndTheStateOfEachControl) {
    dialog.AddEdit(10);
    EXPECT_TRUE(dialog.SetDlgItemText(kEdit, "M\xFCller"));
    EXPECT_TRUE(dialog.SetDlgItemText(10, "Meier"));
    dialog.CheckDlgButton(kBox, 1);
    EXPECT_EQ(dialog.GetDlgItemText(kEdit), "M\xFCller");
    EXPECT_EQ(dialog.GetDlgItem(kEdit)->GetWindowTextLength(), 6);
    EXPECT_EQ(dialog.GetDlgItemText(10), "Meier");
    EXPECT_EQ(dialog.IsDlgButtonChecked(kBox), 1U);
    EXPECT_TRUE(dialog.SetDlgItemText(kEdit, ""));
    EXPECT_EQ(dialog.GetDlgItemText(kEdit), "");
}

TEST_F(MemoryDialog, HoldsTextsOfAnyLengthAndEveryByte) {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    const std::string text = bytes + std::string(100000, '\xE4');
    EXPECT_TRUE(dialog.SetDlgItemText(kEdit, text.c_str()));
    EXPECT_EQ(dialog.GetDlgItemText(kEdit).View(), text);
}

TEST_F(MemoryDialog, IndeterminateIsAStateOfThreeStateBoxesAlone) {
    dialog.AddCheck(20, TRUE);
    dialog.CheckDlgButton(20, 2);
    dialog.CheckDlgButton(kBox, 2);
    EXPECT_EQ(dialog.IsDlgButtonChecked(20), 2U);
    EXPECT_EQ(dialog.IsDlgButtonChecked(kBox), 1U);
}

TEST_F(MemoryDialog, RefusesATextLongerThanTheLimitAndKeepsTheOldOne) {
    dialog.AddEdit(30, 5);
    EXPECT_TRUE(dialog.SetDlgItemText(30, "12345"));
    EXPECT_FALSE(dialog.SetDlgItemText(30, "123456"));
    EXPECT_EQ(dialog.GetDlgItemText(30), "12345");
    dialog.SetTextLimit(30, 2);
    EXPECT_EQ(dialog.GetDlgItemText(30), "12345");
    EXPECT_FALSE(dialog.SetDlgItemText(30, "123"));
    EXPECT_TRUE(dialog.SetDlgItemText(30, "12"));
    dialog.SetTextLimit(30, -1);
    EXPECT_FALSE(dialog.SetDlgItemText(30, "1"));
    EXPECT_TRUE(dialog.SetDlgItemText(30, ""));
    dialog.SetTextLimit(30, CMemoryDialog::nNoLimit);
    EXPECT_TRUE(dialog.SetDlgItemText(30, "123456"));
}

TEST_F(MemoryDialog, AControlFailsToReadAsItIsTold) {
    CWnd& edit = *dialog.GetDlgItem(kEdit);
    dialog.SetDlgItemText(kEdit, "abc");
    dialog.SetFailure(kEdit, CMemoryDialog::FailReading);
    char buffer[8] = "before";
    EXPECT_EQ(edit.GetWindowTextLength(), 3);
    EXPECT_EQ(edit.GetWindowText(buffer, 8), 0);
    EXPECT_STREQ(buffer, "");
    EXPECT_EQ(dialog.GetDlgItemText(kEdit), "");
    EXPECT_TRUE(dialog.SetDlgItemText(kEdit, "xyz"));
    dialog.SetFailure(kEdit, CMemoryDialog::FailNot);
    EXPECT_EQ(dialog.GetDlgItemText(kEdit), "xyz");
}

TEST_F(MemoryDialog, AControlFailsToWriteAsItIsTold) {
    dialog.SetDlgItemText(kEdit, "abc");
    dialog.SetFailure(kEdit, CMemoryDialog::FailWriting);
    EXPECT_FALSE(dialog.SetDlgItemText(kEdit, "xyz"));
    EXPECT_EQ(dialog.GetDlgItemText(kEdit), "abc");
    dialog.SetFailure(kEdit, CMemoryDialog::FailNot);
    EXPECT_TRUE(dialog.SetDlgItemText(kEdit, "xyz"));
}

TEST_F(MemoryDialog, AControlThrowsAtEveryAccessAsItIsTold) {
    dialog.SetDlgItemText(kEdit, "abc");
    dialog.CheckDlgButton(kBox, 1);
    dialog.SetFailure(kEdit, CMemoryDialog::FailAccess);
    dialog.SetFailure(kBox, CMemoryDialog::FailAccess);
    char buffer[8];
    const CWnd& edit = *dialog.GetDlgItem(kEdit);
    EXPECT_TRUE(throws<CInvalidArgException>([&] { edit.GetWindowTextLength(); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { edit.GetWindowText(buffer, 8); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.GetDlgItemText(kEdit); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.SetDlgItemText(kEdit, "xyz"); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.IsDlgButtonChecked(kBox); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.CheckDlgButton(kBox, 0); }));
    dialog.SetFailure(kEdit, CMemoryDialog::FailNot);
    dialog.SetFailure(kBox, CMemoryDialog::FailNot);
    EXPECT_EQ(dialog.GetDlgItemText(kEdit), "abc");
    EXPECT_EQ(dialog.IsDlgButtonChecked(kBox), 1U);
}

TEST_F(MemoryDialog, TheFocusGoesFromControlToControl) {
    dialog.GetDlgItem(kEdit)->SetFocus();
    EXPECT_EQ(dialog.GetFocus(), dialog.GetDlgItem(kEdit));
    dialog.GetDlgItem(kBox)->SetFocus();
    EXPECT_EQ(dialog.GetFocus(), dialog.GetDlgItem(kBox));
}

TEST_F(MemoryDialog, RefusesAnIdThatIsTaken) {
    dialog.SetDlgItemText(kEdit, "abc");
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.AddEdit(kEdit); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.AddCheck(kEdit); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.AddEdit(kBox); }));
    EXPECT_EQ(dialog.GetDlgItemText(kEdit), "abc");
}

TEST_F(MemoryDialog, RefusesAnIdThatNoControlOfTheKindHas) {
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.SetTextLimit(kNothing, 5); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.SetTextLimit(kBox, 5); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.SetFailure(kNothing, CMemoryDialog::FailNot); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.SetDlgItemText(kBox, "x"); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.GetDlgItemText(kBox); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.CheckDlgButton(kEdit, 1); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.IsDlgButtonChecked(kEdit); }));
}

TEST_F(MemoryDialog, AControlWithoutMemoryIsNotAdded) {
    int granted = 0;
    for (bool refused = true; refused; ++granted) {
        CMemoryDialog fresh;
        bool thrown = false;
        {
            const FailingMemory memory(granted);
            thrown = throws<CMemoryException>([&] { fresh.AddEdit(kEdit); });
            refused = memory.refused();
        }
        EXPECT_EQ(thrown, refused);
        EXPECT_EQ(fresh.GetDlgItem(kEdit) == nullptr, refused);
    }
    EXPECT_EQ(granted, 3) << "the control and the place for it are tried without memory";
}

TEST_F(MemoryDialog, ATextWithoutMemoryIsNotTaken) {
    dialog.SetDlgItemText(kEdit, "abc");
    bool thrown = false;
    {
        const FailingMemory memory(0);
        thrown =
            throws<CMemoryException>([&] { dialog.SetDlgItemText(kEdit, "a text that needs a buffer"); });
    }
    EXPECT_TRUE(thrown);
    EXPECT_EQ(dialog.GetDlgItemText(kEdit), "abc");
}

TEST_F(MemoryDialog, IsAFrameworkObject) {
    EXPECT_STREQ(dialog.GetRuntimeClass()->m_lpszClassName, "CMemoryDialog");
    EXPECT_TRUE(dialog.IsKindOf(RUNTIME_CLASS(CDialogWnd)));
    EXPECT_EQ(RUNTIME_CLASS(CMemoryDialog)->CreateObject(), nullptr);
}

}  // namespace
