#pragma once

/// @file
/// A window as the dialog data exchange sees it: a dialog with controls, or a control with a text or a check
/// state.
///
/// A dialog names its controls and variables once, in DoDataExchange(); UpdateData() runs that in either
/// direction:
/// @code
/// void Artikeldialog::DoDataExchange(CDataExchange* pDX) {
///     DDX_NkDtTyp(pDX, idBezeichnung, m_strBezeichnung);
///     DDX_NkDtTypCheck(pDX, idLieferbar, m_fLieferbar);
/// }
///
/// dialog.UpdateData(FALSE);      // the variables into the controls
/// if (dialog.UpdateData()) ...;  // the controls into the variables
/// @endcode
///
/// A kind of window derives from this class and supplies what its windows have, in the protected operations
/// at the end; what it does not supply throws a `CInvalidArgException*`. CDialogWnd owns controls, and
/// CMemoryDialog is a whole dialog without a screen.
///
/// All text is code page 1252. A window that holds other characters refuses to hand them out by throwing a
/// `CException*`; it never replaces them.

#include <string_view>

#include "nkfw/Export.h"
#include "nkfw/Object.h"
#include "nkfw/String.h"
#include "nkfw/Types.h"

class CDataExchange;

class NKDT_API CWnd : public CObject {
  public:
    /// What a check box shows.
    enum CheckState : INT {
        Unchecked = 0,
        Checked = 1,
        Indeterminate = 2,  ///< on a three-state box alone
    };

    CWnd() noexcept = default;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;
    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }

    /// @name A control's text
    /// @{

    /// Number of characters of the text; never fewer than GetWindowText() reads.
    INT GetWindowTextLength() const;
    /// Copies the text into a buffer of @p nMaxCount bytes, cut to fit and zero-terminated.
    /// @return the number of characters copied, the terminator not counted; 0 when reading failed, or when
    /// there is no buffer
    INT GetWindowText(LPTSTR pszText, INT nMaxCount) const;
    /// Reads the whole text.
    /// @return as above; @p rText is empty when that is 0
    INT GetWindowText(CString& rText) const;
    /// Replaces the text; a null one counts as empty.
    /// @return FALSE when the control cannot take the text whole; it keeps its old text then
    BOOL SetWindowText(LPCTSTR pszText);
    /// @}

    /// @name A check box's state
    /// @{

    /// One of #CheckState.
    INT GetCheck() const { return ReadCheck(); }
    /// 0 unchecks; 2 is indeterminate on a three-state box; every other number checks.
    void SetCheck(INT nCheck);
    /// @}

    /// Puts the input focus here; does nothing in a window that takes none.
    virtual void SetFocus() noexcept;

    /// @name A dialog's controls
    /// The operations that take an id throw a `CInvalidArgException*` when there is no such control.
    /// @{

    /// The control of that id, which stays the dialog's, or null.
    virtual CWnd* GetDlgItem(int nID) const;
    /// The text of a control, empty when reading fails.
    CString GetDlgItemText(int nID) const;
    /// As SetWindowText() of the control.
    BOOL SetDlgItemText(int nID, LPCTSTR pszText);
    /// One of #CheckState.
    UINT IsDlgButtonChecked(int nID) const;
    /// As SetCheck() of the control.
    void CheckDlgButton(int nID, UINT uCheck);
    /// @}

    /// Exchanges the data of all controls that DoDataExchange() names. A saving that fails half way has saved
    /// the controls before, and puts the focus into the control at which it failed.
    /// @param bSaveAndValidate TRUE saves the controls into variables; FALSE loads them
    /// @return FALSE after a CUserException, which is released; every other exception, library errors
    /// (`NkEhBasis*`) included, passes to the caller
    BOOL UpdateData(BOOL bSaveAndValidate = TRUE);

  protected:
    /// Exchanges each control with its variable; nothing here.
    virtual void DoDataExchange(CDataExchange* pDX);

    /// @name What a kind of control supplies
    /// @{

    /// Number of characters, or more.
    virtual INT TextLength() const;
    /// Writes the first characters of the text, at most @p nMost (at least 0), without a terminator, and
    /// returns how many; 0 when reading fails.
    virtual INT ReadText(LPTSTR pchBuffer, INT nMost) const;
    /// Takes the text whole, or returns FALSE and takes nothing.
    virtual BOOL WriteText(std::string_view text);
    virtual CheckState ReadCheck() const;
    /// @p state is Indeterminate on a three-state box alone.
    virtual void WriteCheck(CheckState state);
    virtual BOOL IsThreeState() const;
    /// @}

  private:
    CWnd& Control(int nID) const;
};
