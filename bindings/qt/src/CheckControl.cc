#include "CheckControl.h"

namespace nkdt::qt {

CheckControl::CheckControl(FormWindow& window, const QString& label, std::unique_ptr<QCheckBox> widget)
    : QtControl(window, window.addBox(label, *widget)) {
    (void)widget.release();  // the window has it
    QObject::connect(&box(), &QCheckBox::stateChanged, &context(), [this] {
        updateMark();
        setMessage({});
    });
}

CWnd::CheckState CheckControl::ReadCheck() const {
    switch (box().checkState()) {
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
            m_written = Qt::Unchecked;
            break;
        case Indeterminate:
            m_written = Qt::PartiallyChecked;
            break;
        case Checked:
            m_written = Qt::Checked;
            break;
    }
    box().setCheckState(m_written);
    updateMark();
    setMessage({});
}

BOOL CheckControl::IsThreeState() const {
    return box().isTristate() ? TRUE : FALSE;
}

}  // namespace nkdt::qt
