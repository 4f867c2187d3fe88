#include "nkfw/MemoryDialog.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>

#include "nkfw/Exception.h"
#include "nkfw/String.h"

namespace {

constexpr CRuntimeClass classMemoryDialog{"CMemoryDialog", sizeof(CMemoryDialog), 0, nullptr,
                                          &CDialogWnd::GetThisClass};

template <class Control, class... Arguments>
std::unique_ptr<Control> make(Arguments&... arguments) {
    std::unique_ptr<Control> pControl(new (std::nothrow) Control(arguments...));
    if (pControl == nullptr) CMemoryException::Throw();
    return pControl;
}

}  // namespace

// A control of either kind.
class NKDT_HIDDEN CMemoryDialog::Item : public CWnd {
  public:
    explicit Item(CMemoryDialog& rDialog) noexcept : m_rDialog(rDialog) {}
    void SetFocus() noexcept override { m_rDialog.m_pFocus = this; }
    void SetFailure(Failure eFailure) noexcept { m_eFailure = eFailure; }

  protected:
    void CheckAccess() const {
        if (m_eFailure == FailAccess) throw new CInvalidArgException;
    }
    // Tells whether this access fails quietly.
    bool Fails(Failure eFailure) const {
        CheckAccess();
        return m_eFailure == eFailure;
    }

  private:
    CMemoryDialog& m_rDialog;
    Failure m_eFailure = FailNot;
};

class NKDT_HIDDEN CMemoryDialog::Edit final : public Item {
  public:
    Edit(CMemoryDialog& rDialog, INT nTextLimit) noexcept : Item(rDialog), m_nTextLimit(nTextLimit) {}
    void SetTextLimit(INT nTextLimit) noexcept { m_nTextLimit = nTextLimit; }

  protected:
    INT TextLength() const override {
        CheckAccess();
        return m_strText.GetLength();
    }
    INT ReadText(LPTSTR pchBuffer, INT nMost) const override {
        if (Fails(FailReading)) return 0;
        return static_cast<INT>(m_strText.View().copy(pchBuffer, static_cast<std::size_t>(nMost)));
    }
    BOOL WriteText(std::string_view text) override {
        const auto nMost = static_cast<std::size_t>(std::max(m_nTextLimit, 0));
        if (Fails(FailWriting) || text.size() > nMost) return FALSE;
        m_strText.Assign(text);
        return TRUE;
    }

  private:
    CString m_strText;
    INT m_nTextLimit;
};

class NKDT_HIDDEN CMemoryDialog::CheckBox final : public Item {
  public:
    CheckBox(CMemoryDialog& rDialog, BOOL bThreeState) noexcept : Item(rDialog), m_bThreeState(bThreeState) {}

  protected:
    CheckState ReadCheck() const override {
        CheckAccess();
        return m_state;
    }
    void WriteCheck(CheckState state) override {
        CheckAccess();
        m_state = state;
    }
    BOOL IsThreeState() const override { return m_bThreeState; }

  private:
    BOOL m_bThreeState;
    CheckState m_state = Unchecked;
};

CMemoryDialog::~CMemoryDialog() = default;

const CRuntimeClass* CMemoryDialog::GetThisClass() noexcept {
    return &classMemoryDialog;
}

template <class Kind>
Kind& CMemoryDialog::ItemOf(int nID) const {
    auto* const pItem = dynamic_cast<Kind*>(GetDlgItem(nID));
    if (pItem == nullptr) throw new CInvalidArgException;
    return *pItem;
}

void CMemoryDialog::AddEdit(int nID, INT nTextLimit) {
    AddControl(nID, make<Edit>(*this, nTextLimit));
}

void CMemoryDialog::AddCheck(int nID, BOOL bThreeState) {
    AddControl(nID, make<CheckBox>(*this, bThreeState));
}

void CMemoryDialog::SetTextLimit(int nID, INT nTextLimit) {
    ItemOf<Edit>(nID).SetTextLimit(nTextLimit);
}

void CMemoryDialog::SetFailure(int nID, Failure eFailure) {
    ItemOf<Item>(nID).SetFailure(eFailure);
}
