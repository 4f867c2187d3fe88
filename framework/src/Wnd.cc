#include "nkfw/Wnd.h"

#include <algorithm>
#include <utility>

#include "nkfw/DataExchange.h"
#include "nkfw/Exception.h"

namespace {

constexpr CRuntimeClass classWnd{"CWnd", sizeof(CWnd), 0, nullptr, &CObject::GetThisClass};

[[noreturn]] void refuse() {
    throw new CInvalidArgException;
}

// What a window claims to have read, within what it was asked for.
INT countRead(INT nRead, INT nMost) {
    return std::clamp(nRead, 0, nMost);
}

}  // namespace

const CRuntimeClass* CWnd::GetThisClass() noexcept {
    return &classWnd;
}

// Text

INT CWnd::GetWindowTextLength() const {
    return std::max(TextLength(), 0);
}

INT CWnd::GetWindowText(LPTSTR pszText, INT nMaxCount) const {
    if (pszText == nullptr || nMaxCount <= 0) return 0;
    *pszText = '\0';
    const INT nMost = nMaxCount - 1;
    const INT nRead = countRead(ReadText(pszText, nMost), nMost);
    pszText[nRead] = '\0';
    return nRead;
}

INT CWnd::GetWindowText(CString& rText) const {
    const INT nLength = GetWindowTextLength();
    CString text;
    const INT nRead = countRead(ReadText(text.GetBuffer(nLength), nLength), nLength);
    text.ReleaseBuffer(nRead);
    rText = std::move(text);
    return nRead;
}

BOOL CWnd::SetWindowText(LPCTSTR pszText) {
    return WriteText(pszText != nullptr ? std::string_view(pszText) : std::string_view());
}

// Check state

void CWnd::SetCheck(INT nCheck) {
    if (nCheck == Unchecked) {
        WriteCheck(Unchecked);
    } else {
        WriteCheck(nCheck == Indeterminate && IsThreeState() ? Indeterminate : Checked);
    }
}

// Controls

CWnd& CWnd::Control(int nID) const {
    CWnd* const pControl = GetDlgItem(nID);
    if (pControl == nullptr) refuse();
    return *pControl;
}

CString CWnd::GetDlgItemText(int nID) const {
    CString text;
    Control(nID).GetWindowText(text);
    return text;
}

BOOL CWnd::SetDlgItemText(int nID, LPCTSTR pszText) {
    return Control(nID).SetWindowText(pszText);
}

UINT CWnd::IsDlgButtonChecked(int nID) const {
    return static_cast<UINT>(Control(nID).GetCheck());
}

void CWnd::CheckDlgButton(int nID, UINT uCheck) {
    Control(nID).SetCheck(static_cast<INT>(uCheck));
}

// Exchange

BOOL CWnd::UpdateData(BOOL bSaveAndValidate) {
    CDataExchange exchange(this, bSaveAndValidate);
    try {
        try {
            DoDataExchange(&exchange);
        } catch (...) {
            if (exchange.m_bSaveAndValidate && exchange.m_pLastControl != nullptr)
                exchange.m_pLastControl->SetFocus();
            throw;
        }
    } catch (CUserException* pException) {
        pException->Delete();
        return FALSE;
    }
    return TRUE;
}

// What a plain window has not

void CWnd::SetFocus() noexcept {}

CWnd* CWnd::GetDlgItem(int) const {
    return nullptr;
}

void CWnd::DoDataExchange(CDataExchange*) {}

INT CWnd::TextLength() const {
    refuse();
}

INT CWnd::ReadText(LPTSTR, INT) const {
    refuse();
}

BOOL CWnd::WriteText(std::string_view) {
    refuse();
}

CWnd::CheckState CWnd::ReadCheck() const {
    refuse();
}

void CWnd::WriteCheck(CheckState) {
    refuse();
}

BOOL CWnd::IsThreeState() const {
    return FALSE;
}
