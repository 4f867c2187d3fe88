#include "RowForm.h"

#include <array>
#include <utility>

#include "Error.h"
#include "Literal1252.h"
#include "nkdt/NkDtBool.h"
#include "nkfw/DataExchange.h"
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

/// Another cell with the same value, not modified.
std::unique_ptr<Cell> copyOf(const BoundColumn& column, const Cell& from) {
    std::unique_ptr<Cell> copy = makeCellFor(column);
    copy->value().Assign(from.value());
    copy->value().SetModified(FALSE);
    return copy;
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
        m_fields.push_back(fieldOf(column, static_cast<int>(m_fields.size()) + 1));
        m_loaded.push_back({copyOf(column, *column.cell), {}});
    }
}

// A check box's state counts as its text.
CString RowForm::controlText(CDialogWnd& window, const FormField& field) {
    if (!field.checkBox) return window.GetDlgItemText(field.id);
    return CString(static_cast<TCHAR>('0' + window.IsDlgButtonChecked(field.id)));
}

// The exchange itself shows every undefined truth value as false, and the number 2 as indeterminate.
void RowForm::exchange(CDialogWnd& window, const FormField& field, bool save, Cell& cell) {
    CDataExchange run(&window, save ? TRUE : FALSE);
    if (!field.checkBox) {
        cell.exchangeEdit(run, field.id);
    } else if (save && window.IsDlgButtonChecked(field.id) == CWnd::Indeterminate) {
        cell.value().Clear();
    } else {
        cell.exchangeCheck(run, field.id);
        if (save) return;
        const auto& truth = static_cast<const NkDtBool&>(cell.value());
        if (!truth.IsDefined()) {
            window.CheckDlgButton(field.id, field.threeState ? CWnd::Indeterminate : CWnd::Unchecked);
        } else if (truth == 2) {
            window.CheckDlgButton(field.id, CWnd::Checked);
        }
    }
}

void RowForm::load(RowDialog& dialog) {
    CDialogWnd& window = dialog.window();
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        exchange(window, m_fields[i], false, *m_loaded[i].cell);
        m_loaded[i].shown = controlText(window, m_fields[i]);
    }
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

// Null if the control shows what loading wrote.
std::unique_ptr<Cell> RowForm::savedCell(CDialogWnd& window, std::size_t column) const {
    if (controlText(window, m_fields[column]) == m_loaded[column].shown) return nullptr;
    std::unique_ptr<Cell> cell = copyOf(m_columns[column], *m_loaded[column].cell);
    exchange(window, m_fields[column], true, *cell);
    return cell;
}

RowForm::Refusals RowForm::save(RowDialog& dialog) {
    std::vector<std::unique_ptr<Cell>> saved;
    Refusals refusals;
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        try {
            saved.push_back(savedCell(dialog.window(), i));
        } catch (...) {
            refusals.push_back({i, takeCaughtReason()});
        }
    }
    if (!refusals.empty()) return refusals;
    // An earlier saving may have left a value that the control shows no more.
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        NkDtBasis& value = m_columns[i].cell->value();
        const Cell& taken = saved[i] != nullptr ? *saved[i] : *m_loaded[i].cell;
        value.Assign(taken.value());
        value.SetModified(taken.value().IsModified());
    }
    return refusals;
}

CString RowForm::shownText(RowDialog& dialog, std::size_t column) const {
    const FormField& field = m_fields[column];
    if (!field.checkBox) return dialog.window().GetDlgItemText(field.id);
    static constexpr std::array states{"[ ]", "[x]", "[-]"};
    return CString(states.at(dialog.window().IsDlgButtonChecked(field.id)));
}

}  // namespace nkdt::app
