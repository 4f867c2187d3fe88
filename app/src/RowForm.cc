#include "RowForm.h"

#include <array>
#include <utility>

#include "Error.h"
#include "Literal1252.h"
#include "nkdt/NkDtBool.h"
#include "nkdt/NkDtExcep.h"
#include "nkfw/MemoryDialog.h"

namespace nkdt::app {

using namespace nkfw::literals;

namespace {

constexpr INT noLimit = CMemoryDialog::nNoLimit;

CString labelOf(const CString& name) {
    CString label;
    for (LPCTSTR p = name.GetString(); *p != '\0'; ++p) {
        if (*p == '&') label += '&';
        label += *p;
    }
    return label;
}

FormField fieldOf(const BoundColumn& column, int id) {
    const NkDtTyps type = column.cell->value().GetDtTyp();
    return {id,
            labelOf(column.ansiName),
            type,
            column.kind->checkBox,
            column.kind->checkBox && column.nullable,
            type == NkDtTypChar ? 1 : noLimit};
}

std::size_t columnOf(int id) {
    return static_cast<std::size_t>(id) - 1;
}

// The one error that the exchange has for it.
bool isTooLong(const CDialogFields::Refusal& refusal) {
    return refusal.pError->GetErrorNumber() == NkDtErrFrameworkException;
}

CString tooLongToEdit() {
    return CString("Der Text ist zu lang, um ihn hier zu ändern."_cp1252);
}

class MemoryRowDialog final : public RowDialog {
  public:
    explicit MemoryRowDialog(const FormFields& fields) {
        for (const FormField& field : fields) {
            if (field.checkBox) {
                m_dialog.AddCheck(field.id, field.threeState ? TRUE : FALSE);
            } else {
                m_dialog.AddEdit(field.id, field.textLimit);
            }
        }
    }
    CDialogWnd& window() noexcept override { return m_dialog; }
    bool enter(int id, LPCTSTR text) override { return m_dialog.SetDlgItemText(id, text) != FALSE; }

  private:
    CMemoryDialog m_dialog;
};

}  // namespace

std::unique_ptr<RowDialog> makeMemoryDialog(const FormFields& fields) {
    return std::make_unique<MemoryRowDialog>(fields);
}

RowForm::RowForm(BoundColumns& columns) : m_columns(columns) {
    for (const BoundColumn& column : columns) {
        const FormField field = fieldOf(column, static_cast<int>(m_fields.size()) + 1);
        NkDtBasis& value = column.cell->value();
        if (field.checkBox) {
            m_bound.BindCheck(field.id, static_cast<NkDtBool&>(value), field.threeState ? TRUE : FALSE);
        } else {
            m_bound.Bind(field.id, value);
        }
        m_fields.push_back(field);
    }
}

CString RowForm::beginningOf(std::size_t column) const {
    constexpr std::size_t most = 100;
    const CString whole = m_columns[column].cell->value().ConvToOFL();
    return CString(whole.View().substr(0, most)) + "…"_cp1252;
}

void RowForm::load(RowDialog& dialog) {
    m_shortened.clear();
    for (const CDialogFields::Refusal& refusal : m_bound.Load(dialog.window())) {
        if (!isTooLong(refusal)) {
            dialog.lock(refusal.nID, refusal.GetReason());
            continue;
        }
        m_shortened.push_back(columnOf(refusal.nID));
        dialog.window().SetDlgItemText(refusal.nID, beginningOf(m_shortened.back()));
        dialog.lock(refusal.nID, tooLongToEdit());
    }
    m_bound.KeepAsLoaded(dialog.window());
}

std::optional<CString> RowForm::enter(RowDialog& dialog, std::size_t column, const CString& text) const {
    const FormField& field = m_fields[column];
    if (!field.checkBox) {
        if (dialog.enter(field.id, text)) return std::nullopt;
        return CString("Der Text ist zu lang für das Feld."_cp1252);
    }
    if (text.IsEmpty()) {
        if (!field.threeState) return CString("Der Wert muss wahr oder falsch sein.");
        dialog.window().CheckDlgButton(field.id, CWnd::Indeterminate);
        return std::nullopt;
    }
    try {
        NkDtBool truth;
        truth.SetFromOFL(text, nullptr);
        dialog.window().CheckDlgButton(field.id, truth.IsFalse() ? CWnd::Unchecked : CWnd::Checked);
        return std::nullopt;
    } catch (...) {
        return takeCaughtReason();
    }
}

// What would be saved is the beginning alone.
RowForm::Refusals RowForm::refusalsOfShortened(CDialogWnd& window) const {
    Refusals refusals;
    for (const std::size_t column : m_shortened) {
        if (m_bound.IsEdited(window, m_fields[column].id)) refusals.push_back({column, tooLongToEdit()});
    }
    return refusals;
}

RowForm::Refusals RowForm::save(RowDialog& dialog) {
    Refusals refusals = refusalsOfShortened(dialog.window());
    if (!refusals.empty()) return refusals;
    for (const CDialogFields::Refusal& refusal : m_bound.Save(dialog.window()))
        refusals.push_back({columnOf(refusal.nID), CString(refusal.GetReason())});
    return refusals;
}

CString RowForm::shownText(RowDialog& dialog, std::size_t column) const {
    const FormField& field = m_fields[column];
    if (!field.checkBox) return dialog.window().GetDlgItemText(field.id);
    static constexpr std::array states{"[ ]", "[x]", "[-]"};
    return CString(states.at(dialog.window().IsDlgButtonChecked(field.id)));
}

}  // namespace nkdt::app
