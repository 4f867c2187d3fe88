#pragma once

/// @file
/// One run of the dialog data exchange: the dialog, the direction, and the control that is being exchanged.
///
/// CWnd::UpdateData() makes one for all controls of a dialog. A program that wants every refusal, not the
/// first one alone, makes one for each field:
/// @code
/// CDataExchange dx(&dialog, TRUE);
/// try {
///     DDX_NkDtTyp(&dx, idPreis, dPreis);
/// } catch (NkEhBasis* caught) {
///     std::unique_ptr<NkEhBasis> error(caught);
///     showBeside(*dx.m_pLastControl, error->GetCauseText());
/// }
/// @endcode

#include "nkfw/Export.h"
#include "nkfw/Types.h"
#include "nkfw/Wnd.h"

class NKDT_API CDataExchange {
  public:
    /// @param pDlgWnd          the dialog, which stays the caller's
    /// @param bSaveAndValidate TRUE: from the controls into variables; FALSE: from variables into the
    /// controls
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate) noexcept
        : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd) {}
    CDataExchange(const CDataExchange&) = delete;
    CDataExchange& operator=(const CDataExchange&) = delete;

    /// The dialog's control of that id, remembered as the last one; never null. Throws a
    /// `CInvalidArgException*` when there is no dialog or no such control; no control is the last one then.
    CWnd* PrepareCtrl(int nIDC);
    /// The same, remembered as an edit control.
    CWnd* PrepareEditCtrl(int nIDC);
    /// Ends the exchange: throws a `CUserException*`. What is wrong has been said to the user already.
    [[noreturn]] void Fail();

    BOOL m_bSaveAndValidate;          ///< the direction; every number but FALSE saves
    CWnd* m_pDlgWnd;                  ///< the dialog
    CWnd* m_pLastControl = nullptr;   ///< the control prepared last, or null
    BOOL m_bEditLastControl = FALSE;  ///< TRUE if that one was prepared as an edit control
};

/// Exchanges a check box with a number: saving gives one of CWnd::CheckState, loading is CWnd::SetCheck().
/// Throws a `CInvalidArgException*` for a control that is missing or no check box.
/// @param pDX    the exchange, not null
/// @param nIDC   id of the check box
/// @param rnValue read when loading, written when saving
NKDT_API void DDX_Check(CDataExchange* pDX, int nIDC, int& rnValue);
