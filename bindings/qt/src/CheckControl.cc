#include "CheckControl.h"

namespace nkdt::qt {

CheckControl::CheckControl(FormWindow& window, const QString& label, QCheckBox* widget)
    : QtControl(window, widget, window.addBox(label, widget)), m_box(widget), m_loaded(widget->checkState()) {
    QObject::connect(m_box, &QCheckBox::stateChanged, m_box, [this] {
        updateMark();
        setMessage({});
    });
}

CWnd::CheckState CheckControl::ReadCheck() const {
    switch (m_box->checkState()) {
        case Qt::Unchecked:
            return Unchecked;
        case Qt::PartiallyChecked:
            return Indeterminate;
        case Qt::Checked:
            break;
    }
    return Checked;
}

void CheckControl::WriteCheck(CheckState state) {
    switch (state) {
        case Unchecked:
            m_loaded = Qt::Unchecked;
            break;
        case Indeterminate:
            m_loaded = Qt::PartiallyChecked;
            break;
        case Checked:
            m_loaded = Qt::Checked;
            break;
    }
    m_box->setCheckState(m_loaded);
    updateMark();
    setMessage({});
}

BOOL CheckControl::IsThreeState() const {
    return m_box->isTristate() ? TRUE : FALSE;
}

}  // namespace nkdt::qt
