#pragma once

/// @file
/// A dialog that owns its controls and finds them by their ids: the common base of dialogs of every kind.

#include <memory>
#include <vector>

#include "nkfw/Export.h"
#include "nkfw/Wnd.h"

class NKDT_API CDialogWnd : public CWnd {
  public:
    CDialogWnd() noexcept = default;
    ~CDialogWnd() override;
    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }

    CWnd* GetDlgItem(int nID) const override;

  protected:
    /// Takes a control over, which ends with the dialog. Throws a `CInvalidArgException*` for null and for an
    /// id that is taken, a `CMemoryException*` without memory; the control ends then.
    void AddControl(int nID, std::unique_ptr<CWnd> pControl);

  private:
    struct Item {
        int nID;
        std::unique_ptr<CWnd> pControl;
    };
    std::vector<Item> m_items;
};
