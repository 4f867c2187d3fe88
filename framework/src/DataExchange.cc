#include "nkfw/DataExchange.h"

#include "nkfw/Exception.h"

CWnd* CDataExchange::PrepareCtrl(int nIDC) {
    m_bEditLastControl = FALSE;
    m_pLastControl = m_pDlgWnd != nullptr ? m_pDlgWnd->GetDlgItem(nIDC) : nullptr;
    if (m_pLastControl == nullptr) throw new CInvalidArgException;
    return m_pLastControl;
}

CWnd* CDataExchange::PrepareEditCtrl(int nIDC) {
    CWnd* const pControl = PrepareCtrl(nIDC);
    m_bEditLastControl = TRUE;
    return pControl;
}

void CDataExchange::Fail() {
    throw new CUserException;
}

void DDX_Check(CDataExchange* pDX, int nIDC, int& rnValue) {
    CWnd* const pControl = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        rnValue = pControl->GetCheck();
    } else {
        pControl->SetCheck(rnValue);
    }
}
