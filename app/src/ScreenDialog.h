#pragma once

/// @file
/// The real dialog of a row, where the program was built with one.

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "RowForm.h"
#include "nkfw/String.h"

namespace nkdt::app {

/// Where a dialog is drawn.
enum class Screen {
    display,    ///< where a person sees it
    offScreen,  ///< into memory alone
};

/// Why values cannot be stored, in German; both are empty if they are.
struct StoreFailure {
    RowForm::Refusals refusals{};  ///< what is wrong with single values, in the order of the columns
    CString message{};             ///< what is wrong with all of them
};

class ScreenDialog : public RowDialog {
  public:
    /// Shows the form until the person saves or gives up. Refused values are told beside their fields; the
    /// dialog then stays open.
    /// @param first the column whose field has the cursor at first
    /// @param store called when all values are taken; a failure keeps the dialog open
    /// @return true if the values were stored
    virtual bool run(RowForm& form, std::size_t first, const std::function<StoreFailure()>& store) = 0;
    /// Writes what the dialog looks like as a PNG file. Throws a `CFileException*`.
    virtual void savePicture(const std::string& path) = 0;
};

/// Whether the program was built with dialogs.
bool hasScreenDialogs() noexcept;
/// Whether there is a display that a person sees: one that the environment names, and, as soon as there is a
/// dialog, one that has answered.
bool hasDisplay() noexcept;
/// A dialog with the controls; only where hasScreenDialogs(), and one at a time.
std::unique_ptr<ScreenDialog> makeScreenDialog(const FormFields& fields, const CString& title, Screen screen);

}  // namespace nkdt::app
