#pragma once

/// @file
/// One row in a dialog: a control for each column, bound by the dialog data exchange.
///
/// The form knows nothing of screens; it works on any dialog that has its controls:
/// @code
/// RowForm form(columns);
/// const auto dialog = makeMemoryDialog(form.fields());
/// form.load(*dialog);
/// dialog->enter(form.fields()[1].id, "Müller");
/// const auto refusals = form.save(*dialog);   // none: the columns' values have it, and are modified
/// @endcode
///
/// Saving takes the fields that were edited and no other (CDialogFields), so an untouched dialog changes
/// nothing.

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Table.h"
#include "nkdt/DialogFields.h"
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
    INT textLimit;    ///< greatest length of an edit control's text; a dialog may hold less
};
using FormFields = std::vector<FormField>;

/// A dialog with the controls of a form.
class RowDialog {
  public:
    virtual ~RowDialog() = default;
    virtual CDialogWnd& window() noexcept = 0;
    /// Enters a text into an edit control as a person would; false if it does not take it.
    virtual bool enter(int id, LPCTSTR text) = 0;
    /// Keeps a person from editing a control, and tells why; nothing where there is no person.
    virtual void lock(int /*id*/, const CString& /*reason*/) {}
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

    /// The columns must outlive the form.
    explicit RowForm(BoundColumns& columns);

    /// The controls, one for each column in their order: the field of a column has the column's index.
    const FormFields& fields() const noexcept { return m_fields; }

    /// Shows the values. One that its control cannot show is locked, and stays as it is; of a text that is
    /// too long, the beginning is shown.
    void load(RowDialog& dialog);
    /// Enters what a text says into the control of a column; a check box takes the texts that its class
    /// reads. Returns why it is refused, nothing if it is not.
    std::optional<CString> enter(RowDialog& dialog, std::size_t column, const CString& text) const;
    /// Takes the values from the controls: all of them, or none if one refuses. A value that is modified
    /// afterwards was so before, or differs from the loaded one. Returns every refusal, in the order of the
    /// columns.
    Refusals save(RowDialog& dialog);
    /// What the control of a column shows, for a person.
    CString shownText(RowDialog& dialog, std::size_t column) const;

  private:
    CString beginningOf(std::size_t column) const;
    Refusals refusalsOfShortened(CDialogWnd& window) const;

    BoundColumns& m_columns;
    FormFields m_fields;
    CDialogFields m_bound;
    std::vector<std::size_t> m_shortened;  // columns that show their beginning alone
};

}  // namespace nkdt::app
