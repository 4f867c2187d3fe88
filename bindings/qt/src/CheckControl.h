#pragma once

/// @file
/// A check box of a Qt dialog.

#include <QCheckBox>

#include "QtControl.h"

namespace nkdt::qt {

class CheckControl final : public QtControl {
  public:
    CheckControl(FormWindow& window, const QString& label, QCheckBox* widget);

    bool isModified() const override { return m_box->checkState() != m_loaded; }

  protected:
    CheckState ReadCheck() const override;
    void WriteCheck(CheckState state) override;
    BOOL IsThreeState() const override;

  private:
    QCheckBox* m_box;
    Qt::CheckState m_loaded;  // what the program wrote last
};

}  // namespace nkdt::qt
