#pragma once

/// @file
/// What edit controls and check boxes of a Qt dialog have in common: focus, the mark of what was modified, a
/// message beside them.

#include <QString>

#include "FormWindow.h"
#include "nkfw/Wnd.h"

class QWidget;

namespace nkdt::qt {

class QtControl : public CWnd {
  public:
    /// Whether it shows something else than the program wrote last.
    virtual bool isModified() const = 0;
    QWidget* widget() const noexcept { return m_widget; }
    /// Shows a message beside it; an empty one takes it away.
    void setMessage(const QString& text);
    bool hasMessage() const { return !m_row.message->text().isEmpty(); }

    void SetFocus() noexcept override;

  protected:
    /// The widget is the window's.
    QtControl(FormWindow& window, QWidget* widget, Row row);
    /// To be called whenever what is shown has changed.
    void updateMark();

  private:
    FormWindow& m_window;
    QWidget* m_widget;
    Row m_row;
};

}  // namespace nkdt::qt
