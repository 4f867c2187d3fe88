#pragma once

/// @file
/// The real dialog of a row, where the program was built with one.

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

class ScreenDialog : public RowDialog {
  public:
    /// Shows the form until the person saves or gives up. Refused values are told beside their fields; the
    /// dialog then stays open.
    /// @param store called when all values are taken; returns why they cannot be stored, in German, which
    ///              keeps the dialog open, or an empty text
    /// @return true if the values were stored
    virtual bool run(RowForm& form, const std::function<CString()>& store) = 0;
    /// Writes what the dialog looks like as a PNG file. Throws a `CFileException*`.
    virtual void savePicture(const std::string& path) = 0;
};

/// Whether the program was built with dialogs.
bool hasScreenDialogs() noexcept;
/// Whether there is a display that a person sees.
bool hasDisplay() noexcept;
/// A dialog with the controls; only where hasScreenDialogs(), and one at a time.
std::unique_ptr<ScreenDialog> makeScreenDialog(const FormFields& fields, const CString& title, Screen screen);

}  // namespace nkdt::app
