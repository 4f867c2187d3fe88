#pragma once

/// @file
/// What a program needs once before it makes dialogs: Qt's application object, with or without a screen.
///
/// @code
/// int main(int argc, char** argv) {
///     CQtApplication application(argc, argv);
///     CArtikeldialog dialog;
///     return dialog.DoModal() ? 0 : 1;
/// }
/// @endcode
///
/// A program that has a `QApplication` of its own needs none of this. There can be one at a time, made and
/// used by the main thread. It is made before the first dialog, and ends after the last one.

#include <memory>

#include "nkfw/Export.h"
#include "nkfw/Types.h"

class NKDT_API CQtApplication {
  public:
    /// A program without arguments for Qt.
    ///
    /// Both constructors throw a `CInvalidArgException*` when there is an application object of Qt already.
    CQtApplication();
    /// Takes Qt's own arguments (`-style`, `-platform`, ...) out of the program's; both stay in use as long
    /// as this object lives.
    ///
    /// When the environment names no platform (`QT_QPA_PLATFORM`), the dialogs are drawn on the display that
    /// it names (`WAYLAND_DISPLAY`, `DISPLAY`), or off-screen, if it names none or none answers; HasDisplay()
    /// tells. When it names no `XDG_RUNTIME_DIR`, a folder
    /// of its own serves until this object ends. Texts of Qt's own that a dialog can show, such as an edit
    /// control's menu, are German from now on.
    CQtApplication(int& argc, char** argv);
    ~CQtApplication();
    CQtApplication(const CQtApplication&) = delete;
    CQtApplication& operator=(const CQtApplication&) = delete;

    /// TRUE if a person sees the dialogs. As long as there is no application object, that is what the
    /// environment promises: it names a display, and no platform without one.
    static BOOL HasDisplay() noexcept;

  private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};
