#include "QtControl.h"

#include <QWidget>

#include "nkfw/Exception.h"

namespace nkdt::qt {

QtControl::QtControl(FormWindow& window, Row row) : m_window(&window), m_row(std::move(row)) {
    m_row.control->setAccessibleName(m_row.name);
}

QtControl::~QtControl() {
    if (m_window != nullptr) m_window->removeRow(m_row);
}

QWidget& QtControl::widget() const {
    if (!isAlive()) throw new CInvalidArgException;
    return *m_row.control;
}

void QtControl::setMessage(const QString& text) {
    widget().setAccessibleDescription(text);
    m_window->setMessage(m_row, text);
}

bool QtControl::hasMessage() const {
    return !widget().accessibleDescription().isEmpty();
}

void QtControl::SetFocus() noexcept {
    if (isAlive()) m_window->focus(m_row.control);
}

void QtControl::updateMark() {
    QWidget& control = widget();
    const bool modified = isModified();
    m_row.mark->setVisible(modified);
    control.setAccessibleName(modified ? QStringLiteral("%1 (geändert)").arg(m_row.name) : m_row.name);
}

}  // namespace nkdt::qt
