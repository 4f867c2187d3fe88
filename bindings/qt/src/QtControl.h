#pragma once

/// @file
/// What edit controls and check boxes of a Qt dialog have in common: focus, the mark of what was modified, a
/// message beside them.

#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>
#include <utility>

#include "FormWindow.h"
#include "nkfw/Wnd.h"

class QWidget;

namespace nkdt::qt {

/// While its widget lives, that is: afterwards every operation but SetFocus() throws a
/// `CInvalidArgException*`.
class QtControl : public CWnd {
  public:
    /// Takes its row out of the window, if that still lives.
    ~QtControl() override;

    /// Makes it a field that knows by itself whether it is edited.
    void bind(std::function<bool()> isEdited) { m_isEdited = std::move(isEdited); }
    /// Whether it shows something else than the program wrote last; of a field, whether it is edited.
    bool isModified() const { return m_isEdited ? m_isEdited() : showsOther(); }
    /// To be called whenever isModified() may have changed.
    void updateMark();

    bool isAlive() const noexcept { return m_row.control != nullptr; }
    QWidget& widget() const;
    bool isOn(const QWidget* widget) const noexcept { return m_row.control == widget; }
    /// Shows a message beside it; an empty one takes it away.
    void setMessage(const QString& text);
    bool hasMessage() const;

    void SetFocus() noexcept override;

  protected:
    QtControl(FormWindow& window, Row row);
    /// Whether it shows something else than the program wrote last.
    virtual bool showsOther() const = 0;
    /// To be connected with the widget's signals, so that they end with this object.
    const QObject& context() const noexcept { return m_context; }

  private:
    QPointer<FormWindow> m_window;
    Row m_row;
    std::function<bool()> m_isEdited;
    QObject m_context;
};

}  // namespace nkdt::qt
