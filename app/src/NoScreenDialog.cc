#include <stdexcept>

#include "ScreenDialog.h"

namespace nkdt::app {

bool hasScreenDialogs() noexcept {
    return false;
}

bool hasDisplay() noexcept {
    return false;
}

std::unique_ptr<ScreenDialog> makeScreenDialog(const FormFields&, const CString&, Screen) {
    throw std::logic_error("no dialogs");
}

}  // namespace nkdt::app
