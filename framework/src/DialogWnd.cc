#include "nkfw/DialogWnd.h"

#include <new>
#include <utility>

#include "nkfw/Exception.h"

namespace {

constexpr CRuntimeClass classDialogWnd{"CDialogWnd", sizeof(CDialogWnd), 0, nullptr, &CWnd::GetThisClass};

}  // namespace

CDialogWnd::~CDialogWnd() = default;

const CRuntimeClass* CDialogWnd::GetThisClass() noexcept {
    return &classDialogWnd;
}

CWnd* CDialogWnd::GetDlgItem(int nID) const {
    for (const Item& item : m_items) {
        if (item.nID == nID) return item.pControl.get();
    }
    return nullptr;
}

void CDialogWnd::AddControl(int nID, std::unique_ptr<CWnd> pControl) {
    if (pControl == nullptr || CDialogWnd::GetDlgItem(nID) != nullptr) throw new CInvalidArgException;
    try {
        m_items.push_back({nID, std::move(pControl)});
    } catch (const std::bad_alloc&) {
        CMemoryException::Throw();
    }
}
