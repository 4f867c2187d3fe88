#include "nkdt/DialogFields.h"

#include <algorithm>
#include <utility>

#include "nkdt/DialogExchange.h"
#include "nkdt/NkDtBool.h"
#include "nkdt/NkDtChar.h"
#include "nkdt/NkDtDateTime.h"
#include "nkdt/NkDtDateZp.h"
#include "nkdt/NkDtDecimal.h"
#include "nkdt/NkDtDouble.h"
#include "nkdt/NkDtLong.h"
#include "nkdt/NkDtShort.h"
#include "nkdt/NkDtString.h"
#include "nkdt/NkDtTime.h"
#include "nkfw/Exception.h"

namespace {

// --- How a field is exchanged ---------------------------------------------------------------------

template <class Value>
void exchangeText(CDataExchange* pDX, int nID, NkDtBasis& value) {
    DDX_NkDtTyp(pDX, nID, static_cast<Value&>(value));
}

void exchangeCheck(CDataExchange* pDX, int nID, NkDtBasis& value) {
    DDX_NkDtTypCheck(pDX, nID, static_cast<NkDtBool&>(value));
}

int stateOf(const NkDtBool& truth) {
    if (!truth.IsDefined()) return CWnd::Indeterminate;
    return truth.GetValue() == FALSE ? CWnd::Unchecked : CWnd::Checked;
}

void exchangeThreeStates(CDataExchange* pDX, int nID, NkDtBasis& value) {
    auto& truth = static_cast<NkDtBool&>(value);
    NkDtBool state(stateOf(truth));
    DDX_NkDtTypCheck(pDX, nID, state);
    if (!pDX->m_bSaveAndValidate) return;
    if (state.GetValue() == CWnd::Indeterminate) {
        truth.Clear();
    } else {
        truth = state.GetValue();
    }
}

using Exchange = void (*)(CDataExchange* pDX, int nID, NkDtBasis& value);

Exchange exchangeOf(NkDtTyps type) {
    switch (type) {
        case NkDtTypChar:
            return &exchangeText<NkDtChar>;
        case NkDtTypString:
            return &exchangeText<NkDtString>;
        case NkDtTypLong:
            return &exchangeText<NkDtLong>;
        case NkDtTypShort:
            return &exchangeText<NkDtShort>;
        case NkDtTypDouble:
            return &exchangeText<NkDtDouble>;
        case NkDtTypDecimal:
            return &exchangeText<NkDtDecimal>;
        case NkDtTypBool:
            return &exchangeText<NkDtBool>;
        case NkDtTypDateTime:
            return &exchangeText<NkDtDateTime>;
        case NkDtTypTime:
            return &exchangeText<NkDtTime>;
        case NkDtTypDateZp:
            return &exchangeText<NkDtDateZp>;
        case NkDtTypBasis:
            break;
    }
    throw new CInvalidArgException;
}

// A check box's state counts as its text.
CString textOf(UINT state) {
    return CString(static_cast<TCHAR>('0' + state));
}

void restore(NkDtBasis& value, const NkDtBasis& from) {
    value.Assign(from);
    value.SetModified(from.IsModified());
}

}  // namespace

// --- What a saving does to the values -------------------------------------------------------------

struct NKDT_HIDDEN CDialogFields::Change {
    Field* pField;
    bool bEdited;
    std::unique_ptr<NkDtBasis> pBefore;
};

class NKDT_HIDDEN CDialogFields::Saving {
  public:
    explicit Saving(std::size_t nMost) { m_changes.reserve(nMost); }

    // Makes the field's value ready to be taken; back to what it was before an earlier saving, if there was
    // one.
    void Begin(Field& rField, bool bEdited) {
        m_changes.push_back({&rField, bEdited, std::unique_ptr<NkDtBasis>(rField.pValue->NewObject())});
        if (rField.pBefore != nullptr) restore(*rField.pValue, *rField.pBefore);
    }
    void Keep() noexcept {
        for (Change& change : m_changes) {
            std::unique_ptr<NkDtBasis>& pBefore = change.pField->pBefore;
            if (!change.bEdited) {
                pBefore.reset();
            } else if (pBefore == nullptr) {
                pBefore = std::move(change.pBefore);
            }
        }
    }
    // From the last change to the first, since two controls can be bound to one value.
    void TakeBack() {
        for (auto change = m_changes.rbegin(); change != m_changes.rend(); ++change)
            restore(*change->pField->pValue, *change->pBefore);
    }

  private:
    std::vector<Change> m_changes;
};

// --- Binding --------------------------------------------------------------------------------------

void CDialogFields::Bind(int nID, NkDtBasis& rValue) {
    Add({nID, false, &rValue, exchangeOf(rValue.GetDtTyp()), CString()});
}

void CDialogFields::BindCheck(int nID, NkDtBool& rValue, BOOL bThreeState) {
    Add({nID, true, &rValue, bThreeState != FALSE ? &exchangeThreeStates : &exchangeCheck,
         textOf(CWnd::Unchecked)});
}

void CDialogFields::Add(Field&& rField) {
    const auto isTaken = [&](const Field& field) { return field.nID == rField.nID; };
    if (std::any_of(m_fields.begin(), m_fields.end(), isTaken)) throw new CInvalidArgException;
    m_fields.push_back(std::move(rField));
}

// --- Edited or not --------------------------------------------------------------------------------

std::optional<CString> CDialogFields::ShownIn(const CWnd& rDialog, const Field& rField) {
    try {
        return rField.bCheck ? textOf(rDialog.IsDlgButtonChecked(rField.nID))
                             : rDialog.GetDlgItemText(rField.nID);
    } catch (CException* pException) {
        pException->Delete();
        return std::nullopt;
    }
}

bool CDialogFields::IsEdited(const CWnd& rDialog, const Field& rField) {
    return ShownIn(rDialog, rField) != rField.strLoaded;
}

BOOL CDialogFields::IsEdited(const CWnd& rDialog, int nID) const {
    const auto found = std::find_if(m_fields.begin(), m_fields.end(),
                                    [nID](const Field& field) { return field.nID == nID; });
    if (found == m_fields.end()) throw new CInvalidArgException;
    return IsEdited(rDialog, *found) ? TRUE : FALSE;
}

BOOL CDialogFields::IsEdited(const CWnd& rDialog) const {
    const auto isEdited = [&](const Field& field) { return IsEdited(rDialog, field); };
    return std::any_of(m_fields.begin(), m_fields.end(), isEdited) ? TRUE : FALSE;
}

// --- Exchange -------------------------------------------------------------------------------------

LPCTSTR CDialogFields::ReasonOf(const NkEhBasis& rError) noexcept {
    const LPCTSTR pszCause = rError.GetCauseText();
    return *pszCause != '\0' ? pszCause : rError.GetErrorText();
}

void CDialogFields::Run(CWnd& rDialog, BOOL bSave, const Field& rField, Refusals& rRefusals) {
    CDataExchange exchange(&rDialog, bSave);
    try {
        rField.exchange(&exchange, rField.nID, *rField.pValue);
    } catch (NkEhBasis* caught) {
        std::unique_ptr<NkEhBasis> error(caught);
        rRefusals.push_back({rField.nID, std::move(error)});
    }
}

CDialogFields::Refusals CDialogFields::Load(CWnd& rDialog) {
    Refusals refusals;
    for (const Field& field : m_fields)
        Run(rDialog, FALSE, field, refusals);
    KeepAsLoaded(rDialog);
    return refusals;
}

CDialogFields::Refusals CDialogFields::Save(CWnd& rDialog) {
    Refusals refusals;
    Saving saving(m_fields.size());
    try {
        for (Field& field : m_fields) {
            const bool bEdited = IsEdited(rDialog, field);
            if (!bEdited && field.pBefore == nullptr) continue;
            saving.Begin(field, bEdited);
            if (bEdited) Run(rDialog, TRUE, field, refusals);
        }
    } catch (...) {
        saving.TakeBack();
        throw;
    }
    if (refusals.empty()) {
        saving.Keep();
    } else {
        saving.TakeBack();
    }
    return refusals;
}

void CDialogFields::KeepAsLoaded(const CWnd& rDialog) {
    for (Field& field : m_fields) {
        field.strLoaded = ShownIn(rDialog, field);
        field.pBefore.reset();
    }
}
