#pragma once

/// @file
/// One row in a dialog: a control for each column, bound by the dialog data exchange.
///
/// The form knows nothing of screens; it works on any dialog that has its controls:
/// @code
/// RowForm form(columns);
/// const auto dialog = makeMemoryDialog(form);
/// form.load(*dialog);
/// dialog->enter(form.fields()[1].id, "Müller");
/// const auto refusals = form.save(*dialog);   // none: the columns' values have it, and are modified
/// @endcode
///
/// Saving takes the fields alone whose control shows something else than loading wrote, so an untouched
/// dialog changes nothing.

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Table.h"
#include "nkdt/NkDtTypes.h"
#include "nkfw/DialogWnd.h"
#include "nkfw/String.h"

namespace nkdt::app {

/// A control of the form.
struct FormField {
    int id;
    CString label;    ///< the column's name; a "&" in it is doubled
    NkDtTyps type;    ///< the class of the value
    bool checkBox;    ///< a check box, or else an edit control
    bool threeState;  ///< a check box that is indeterminate while the value is undefined
    INT textLimit;    ///< greatest length of an edit control's text
};
using FormFields = std::vector<FormField>;

/// A dialog with the controls of a form.
class RowDialog {
  public:
    virtual ~RowDialog() = default;
    virtual CDialogWnd& window() noexcept = 0;
    /// Enters a text into an edit control as a person would; false if it does not take it.
    virtual bool enter(int id, LPCTSTR text) = 0;
};

/// A dialog without a screen.
std::unique_ptr<RowDialog> makeMemoryDialog(const FormFields& fields);

class RowForm {
  public:
    /// Why a field's value refuses what its control shows.
    struct Refusal {
        std::size_t column;
        CString reason;  ///< a text for a person, in German
    };
    using Refusals = std::vector<Refusal>;

    /// The columns must outlive the form; their values are the loaded ones.
    explicit RowForm(BoundColumns& columns);

    /// The controls, one for each column in their order.
    const FormFields& fields() const noexcept { return m_fields; }

    /// Shows the values.
    void load(RowDialog& dialog);
    /// Enters what a text says into the control of a column; a check box takes the texts that its class
    /// reads. Returns why it is refused, nothing if it is not.
    std::optional<CString> enter(RowDialog& dialog, std::size_t column, const CString& text) const;
    /// Takes the values from the controls: all of them, or none if one refuses. A value that is modified
    /// afterwards differs from the loaded one. Returns every refusal, in the order of the columns.
    Refusals save(RowDialog& dialog);
    /// What the control of a column shows, for a person.
    CString shownText(RowDialog& dialog, std::size_t column) const;

  private:
    struct Loaded {
        std::unique_ptr<Cell> cell;  // the value
        CString shown;               // what its control showed of it
    };

    static CString controlText(CDialogWnd& window, const FormField& field);
    static void exchange(CDialogWnd& window, const FormField& field, bool save, Cell& cell);
    std::unique_ptr<Cell> savedCell(CDialogWnd& window, std::size_t column) const;

    BoundColumns& m_columns;
    FormFields m_fields;
    std::vector<Loaded> m_loaded;
};

}  // namespace nkdt::app
