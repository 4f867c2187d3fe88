#include "QtControl.h"

#include <QWidget>
#include <utility>

namespace nkdt::qt {

QtControl::QtControl(FormWindow& window, QWidget* widget, Row row)
    : m_window(window), m_widget(widget), m_row(std::move(row)) {
    m_widget->setAccessibleName(m_row.name);
}

void QtControl::setMessage(const QString& text) {
    m_window.setMessage(m_row, text);
    m_widget->setAccessibleDescription(text);
}

void QtControl::SetFocus() noexcept {
    m_window.focus(m_widget);
}

void QtControl::updateMark() {
    const bool modified = isModified();
    m_row.mark->setVisible(modified);
    m_widget->setAccessibleName(modified ? QStringLiteral("%1 (geändert)").arg(m_row.name) : m_row.name);
}

}  // namespace nkdt::qt
