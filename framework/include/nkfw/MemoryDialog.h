#pragma once

/// @file
/// A dialog without a screen: edit controls and check boxes in memory, addressed by ids.
///
/// @code
/// CMemoryDialog dialog;
/// dialog.AddEdit(1);
/// dialog.AddCheck(2);
/// dialog.SetDlgItemText(1, "1.234,50");
/// CDataExchange dx(&dialog, TRUE);
/// DDX_NkDtTyp(&dx, 1, dPreis);
/// @endcode
///
/// A control can be told to fail as real ones do, so that a program's handling of that can be tried.

#include "nkfw/DialogWnd.h"
#include "nkfw/Export.h"
#include "nkfw/Types.h"

class NKDT_API CMemoryDialog : public CDialogWnd {
  public:
    /// How a control fails.
    enum Failure : INT {
        FailNot = 0,
        FailReading = 1,  ///< GetWindowText() reads nothing, whatever GetWindowTextLength() tells
        FailWriting = 2,  ///< SetWindowText() returns FALSE
        FailAccess = 3,   ///< every access to text or check state throws a `CInvalidArgException*`
    };

    /// Length of a text without a limit.
    static constexpr INT nNoLimit = 2147483647;

    CMemoryDialog() noexcept = default;
    ~CMemoryDialog() override;
    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }

    // All operations that take an id throw a `CInvalidArgException*` for one that is taken already, or that
    // no control of the kind has.

    /// Adds an empty edit control.
    /// @param nTextLimit greatest length of its text: SetWindowText() of a longer one returns FALSE
    void AddEdit(int nID, INT nTextLimit = nNoLimit);
    /// Adds a check box that is not checked.
    void AddCheck(int nID, BOOL bThreeState = FALSE);
    /// Changes the greatest length of an edit control's text; the text that it has stays.
    void SetTextLimit(int nID, INT nTextLimit);
    /// Makes a control fail from now on, or work again.
    void SetFailure(int nID, Failure eFailure);

    /// The control that took the focus last, or null.
    CWnd* GetFocus() const noexcept { return m_pFocus; }

  private:
    class Item;
    class Edit;
    class CheckBox;
    template <class Kind>
    Kind& ItemOf(int nID) const;

    CWnd* m_pFocus = nullptr;
};
