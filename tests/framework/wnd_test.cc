#include <nkeh/NkEhBasis.h>
#include <nkfw/DataExchange.h>
#include <nkfw/DialogWnd.h>
#include <nkfw/Exception.h>
#include <nkfw/Wnd.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "framework/FrameworkTest.h"

namespace {

using frameworktest::throws;

// --- Text ---------------------------------------------------------------------------------------

/// A control whose answers are what the test makes them.
class TextControl : public CWnd {
  public:
    std::string text;
    std::optional<INT> length;   // what it tells instead of its length
    std::optional<INT> claimed;  // what it claims to have read
    bool refuses = false;
    bool throwsOnReading = false;
    int focused = 0;

    void SetFocus() noexcept override { ++focused; }

  protected:
    INT TextLength() const override { return length.value_or(static_cast<INT>(text.size())); }
    INT ReadText(LPTSTR pchBuffer, INT nMost) const override {
        if (throwsOnReading) throw new CUserException;
        const std::size_t copied = text.copy(pchBuffer, static_cast<std::size_t>(nMost));
        return claimed.value_or(static_cast<INT>(copied));
    }
    BOOL WriteText(std::string_view written) override {
        if (refuses) return FALSE;
        text = written;
        return TRUE;
    }
};

TEST(Wnd, ReadsATextIntoABufferCutToFitAndTerminated) {
    TextControl control;
    control.text = "M\xFCller";
    struct Case {
        INT bytes;
        INT read;
        const char* text;
    };
    constexpr Case cases[] = {
        {100, 6, "M\xFCller"}, {7, 6, "M\xFCller"}, {6, 5, "M\xFClle"}, {2, 1, "M"}, {1, 0, ""}};
    for (const Case& each : cases) {
        std::string buffer(static_cast<std::size_t>(each.bytes) + 1, '#');
        EXPECT_EQ(control.GetWindowText(buffer.data(), each.bytes), each.read);
        EXPECT_STREQ(buffer.c_str(), each.text);
        EXPECT_EQ(buffer.back(), '#') << "written behind the buffer";
    }
}

TEST(Wnd, ReadsNothingWithoutABuffer) {
    TextControl control;
    control.text = "abc";
    char buffer[] = "###";
    EXPECT_EQ(control.GetWindowText(nullptr, 4), 0);
    EXPECT_EQ(control.GetWindowText(buffer, 0), 0);
    EXPECT_EQ(control.GetWindowText(buffer, -5), 0);
    EXPECT_STREQ(buffer, "###");
}

TEST(Wnd, ReadsATextWhole) {
    TextControl control;
    CString text("before");
    for (const std::size_t length : {1U, 6U, 70000U}) {
        control.text = std::string(length, 'x');
        EXPECT_EQ(control.GetWindowText(text), static_cast<INT>(length));
        EXPECT_EQ(text.View(), control.text);
    }
    control.text.clear();
    EXPECT_EQ(control.GetWindowText(text), 0);
    EXPECT_EQ(text, "");
}

TEST(Wnd, ATextMayBeShorterThanItsLengthTells) {
    TextControl control;
    control.text = "abc";
    control.length = 10;
    CString text;
    EXPECT_EQ(control.GetWindowTextLength(), 10);
    EXPECT_EQ(control.GetWindowText(text), 3);
    EXPECT_EQ(text.View(), "abc");
}

TEST(Wnd, TrustsNoCountOfCharactersRead) {
    TextControl control;
    control.text = "abc";
    control.claimed = 1000;
    CString text;
    EXPECT_EQ(control.GetWindowText(text), 3);
    EXPECT_EQ(text.View(), "abc");
    char buffer[3] = {};
    EXPECT_EQ(control.GetWindowText(buffer, 3), 2);
    EXPECT_STREQ(buffer, "ab");
    control.claimed = -5;
    EXPECT_EQ(control.GetWindowText(buffer, 3), 0);
    EXPECT_STREQ(buffer, "");
    control.length = -5;
    EXPECT_EQ(control.GetWindowTextLength(), 0);
    EXPECT_EQ(control.GetWindowText(text), 0);
    EXPECT_EQ(text, "");
}

TEST(Wnd, AReadingThatThrowsLeavesTheTextAlone) {
    TextControl control;
    control.text = "abc";
    control.throwsOnReading = true;
    CString text("before");
    EXPECT_TRUE(throws<CUserException>([&] { control.GetWindowText(text); }));
    EXPECT_EQ(text, "before");
}

TEST(Wnd, ReplacesATextOrTellsThatItDidNot) {
    TextControl control;
    EXPECT_TRUE(control.SetWindowText("\xC4pfel"));
    EXPECT_EQ(control.text, "\xC4pfel");
    control.refuses = true;
    EXPECT_FALSE(control.SetWindowText("Birnen"));
    EXPECT_EQ(control.text, "\xC4pfel");
}

TEST(Wnd, ANullTextIsAnEmptyOne) {
    TextControl control;
    control.text = "abc";
    EXPECT_TRUE(control.SetWindowText(nullptr));
    EXPECT_EQ(control.text, "");
}

// --- Check state --------------------------------------------------------------------------------

class CheckControl : public CWnd {
  public:
    explicit CheckControl(bool threeState) : m_threeState(threeState) {}

  protected:
    CheckState ReadCheck() const override { return m_state; }
    void WriteCheck(CheckState state) override { m_state = state; }
    BOOL IsThreeState() const override { return m_threeState ? TRUE : FALSE; }

  private:
    bool m_threeState;
    CheckState m_state = Unchecked;
};

TEST(Wnd, ChecksForEveryNumberButZeroAndTwoOfThreeStates) {
    struct Case {
        INT given;
        CWnd::CheckState twoStates;
        CWnd::CheckState threeStates;
    };
    constexpr Case cases[] = {{0, CWnd::Unchecked, CWnd::Unchecked},     {1, CWnd::Checked, CWnd::Checked},
                              {2, CWnd::Checked, CWnd::Indeterminate},   {3, CWnd::Checked, CWnd::Checked},
                              {-1, CWnd::Checked, CWnd::Checked},        {256, CWnd::Checked, CWnd::Checked},
                              {2147483647, CWnd::Checked, CWnd::Checked}};
    for (const Case& each : cases) {
        for (const CWnd::CheckState before : {CWnd::Unchecked, CWnd::Checked}) {
            CheckControl two(false);
            CheckControl three(true);
            two.SetCheck(before);
            three.SetCheck(before);
            two.SetCheck(each.given);
            three.SetCheck(each.given);
            EXPECT_EQ(two.GetCheck(), each.twoStates) << each.given;
            EXPECT_EQ(three.GetCheck(), each.threeStates) << each.given;
        }
    }
}

// --- What a window has not ------------------------------------------------------------------------

TEST(Wnd, APlainWindowHasNeitherTextNorCheckStateNorControls) {
    CWnd window;
    CString text;
    char buffer[8];
    EXPECT_TRUE(throws<CInvalidArgException>([&] { window.GetWindowTextLength(); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { window.GetWindowText(text); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { window.GetWindowText(buffer, 8); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { window.SetWindowText("x"); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { window.GetCheck(); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { window.SetCheck(0); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { window.SetCheck(1); }));
    EXPECT_EQ(window.GetDlgItem(0), nullptr);
    EXPECT_TRUE(window.UpdateData(TRUE));
    EXPECT_TRUE(window.UpdateData(FALSE));
    window.SetFocus();
}

TEST(Wnd, IsAFrameworkObject) {
    const CWnd window;
    EXPECT_STREQ(window.GetRuntimeClass()->m_lpszClassName, "CWnd");
    EXPECT_TRUE(window.IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_EQ(RUNTIME_CLASS(CWnd)->CreateObject(), nullptr);
}

// --- Controls of a dialog -------------------------------------------------------------------------

constexpr int kEdit = 1001;
constexpr int kBox = -2;
constexpr int kNothing = 7;

class Dialog : public CDialogWnd {
  public:
    Dialog() {
        auto edit = std::make_unique<TextControl>();
        m_pEdit = edit.get();
        AddControl(kEdit, std::move(edit));
        AddControl(kBox, std::make_unique<CheckControl>(true));
    }
    using CDialogWnd::AddControl;
    TextControl& edit() { return *m_pEdit; }

    std::function<void(CDataExchange&)> exchange;

  protected:
    void DoDataExchange(CDataExchange* pDX) override {
        if (exchange) exchange(*pDX);
    }

  private:
    TextControl* m_pEdit = nullptr;
};

TEST(DialogWnd, FindsItsControlsByTheirIds) {
    Dialog dialog;
    EXPECT_EQ(dialog.GetDlgItem(kEdit), &dialog.edit());
    EXPECT_NE(dialog.GetDlgItem(kBox), nullptr);
    EXPECT_NE(dialog.GetDlgItem(kBox), dialog.GetDlgItem(kEdit));
    EXPECT_EQ(dialog.GetDlgItem(kNothing), nullptr);
    EXPECT_STREQ(dialog.GetRuntimeClass()->m_lpszClassName, "CDialogWnd");
    EXPECT_TRUE(dialog.IsKindOf(RUNTIME_CLASS(CWnd)));
}

TEST(DialogWnd, TakesNoSecondControlOfAnIdAndNoNull) {
    Dialog dialog;
    EXPECT_TRUE(
        throws<CInvalidArgException>([&] { dialog.AddControl(kEdit, std::make_unique<TextControl>()); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.AddControl(kNothing, nullptr); }));
    EXPECT_EQ(dialog.GetDlgItem(kEdit), &dialog.edit());
    EXPECT_EQ(dialog.GetDlgItem(kNothing), nullptr);
}

TEST(Wnd, ReachesAControlsTextAndStateByItsId) {
    Dialog dialog;
    EXPECT_TRUE(dialog.SetDlgItemText(kEdit, "abc"));
    EXPECT_EQ(dialog.edit().text, "abc");
    EXPECT_EQ(dialog.GetDlgItemText(kEdit), "abc");
    dialog.edit().refuses = true;
    EXPECT_FALSE(dialog.SetDlgItemText(kEdit, "x"));
    for (const UINT state : {1U, 2U, 0U}) {
        dialog.CheckDlgButton(kBox, state);
        EXPECT_EQ(dialog.IsDlgButtonChecked(kBox), state);
    }
    dialog.CheckDlgButton(kBox, 4294967295U);
    EXPECT_EQ(dialog.IsDlgButtonChecked(kBox), 1U);
}

TEST(Wnd, RefusesAnIdWithoutControl) {
    Dialog dialog;
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.GetDlgItemText(kNothing); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.SetDlgItemText(kNothing, ""); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.IsDlgButtonChecked(kNothing); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.CheckDlgButton(kNothing, 1); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.IsDlgButtonChecked(kEdit); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.GetDlgItemText(kBox); }));
}

// --- UpdateData ----------------------------------------------------------------------------------

TEST(Wnd, UpdateDataRunsTheExchangeOnceInTheDirectionGiven) {
    Dialog dialog;
    for (const BOOL saving : {TRUE, FALSE, 5}) {
        int runs = 0;
        dialog.exchange = [&](CDataExchange& dx) {
            ++runs;
            EXPECT_EQ(dx.m_bSaveAndValidate, saving);
            EXPECT_EQ(dx.m_pDlgWnd, &dialog);
            EXPECT_EQ(dx.m_pLastControl, nullptr);
        };
        EXPECT_EQ(dialog.UpdateData(saving), TRUE);
        EXPECT_EQ(runs, 1);
    }
    dialog.exchange = [](CDataExchange& dx) { EXPECT_EQ(dx.m_bSaveAndValidate, TRUE); };
    EXPECT_EQ(dialog.UpdateData(), TRUE);
}

TEST(Wnd, UpdateDataGivesFalseWhenTheExchangeFails) {
    Dialog dialog;
    dialog.exchange = [](CDataExchange& dx) { dx.Fail(); };
    EXPECT_EQ(dialog.UpdateData(TRUE), FALSE);
    EXPECT_EQ(dialog.UpdateData(FALSE), FALSE);
}

TEST(Wnd, UpdateDataLetsLibraryErrorsAndOtherExceptionsPass) {
    Dialog dialog;
    NkEhBasis* thrown = nullptr;
    dialog.exchange = [&](CDataExchange&) {
        thrown = new NkEhBasis("", "", "", "refused", 4711, 0, 0, nullptr, FALSE, 0, FALSE);
        throw thrown;
    };
    NkEhBasis* caught = nullptr;
    try {
        dialog.UpdateData(TRUE);
    } catch (NkEhBasis* error) {
        caught = error;
    }
    ASSERT_NE(caught, nullptr);
    EXPECT_EQ(caught, thrown);
    EXPECT_EQ(caught->GetErrorNumber(), 4711U);
    caught->Delete();

    dialog.exchange = [](CDataExchange&) { CMemoryException::Throw(); };
    EXPECT_TRUE(throws<CMemoryException>([&] { dialog.UpdateData(TRUE); }));
    dialog.exchange = [](CDataExchange& dx) { dx.PrepareCtrl(kNothing); };
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.UpdateData(TRUE); }));
}

TEST(Wnd, ASavingThatFailsPutsTheFocusIntoTheLastControl) {
    Dialog dialog;
    dialog.exchange = [](CDataExchange& dx) {
        dx.PrepareEditCtrl(kEdit);
        dx.Fail();
    };
    EXPECT_FALSE(dialog.UpdateData(TRUE));
    EXPECT_EQ(dialog.edit().focused, 1);

    dialog.exchange = [](CDataExchange& dx) {
        dx.PrepareEditCtrl(kEdit);
        CMemoryException::Throw();
    };
    EXPECT_TRUE(throws<CMemoryException>([&] { dialog.UpdateData(TRUE); }));
    EXPECT_EQ(dialog.edit().focused, 2);
}

TEST(Wnd, TheFocusStaysOtherwise) {
    Dialog dialog;
    dialog.exchange = [](CDataExchange& dx) { dx.PrepareEditCtrl(kEdit); };
    EXPECT_TRUE(dialog.UpdateData(TRUE));
    EXPECT_TRUE(dialog.UpdateData(FALSE));
    dialog.exchange = [](CDataExchange& dx) {
        dx.PrepareEditCtrl(kEdit);
        dx.Fail();
    };
    EXPECT_FALSE(dialog.UpdateData(FALSE));
    dialog.exchange = [](CDataExchange& dx) {
        dx.PrepareEditCtrl(kEdit);
        dx.PrepareCtrl(kNothing);
    };
    EXPECT_TRUE(throws<CInvalidArgException>([&] { dialog.UpdateData(TRUE); }));
    EXPECT_EQ(dialog.edit().focused, 0);
}

}  // namespace
