#pragma once

/// @file
/// A check box of a Qt dialog.

#include <QCheckBox>
#include <memory>

#include "QtControl.h"

namespace nkdt::qt {

class CheckControl final : public QtControl {
  public:
    CheckControl(FormWindow& window, const QString& label, std::unique_ptr<QCheckBox> box);

  protected:
    bool showsOther() const override { return box().checkState() != m_written; }
    CheckState ReadCheck() const override;
    void WriteCheck(CheckState state) override;
    BOOL IsThreeState() const override;

  private:
    QCheckBox& box() const { return static_cast<QCheckBox&>(widget()); }

    Qt::CheckState m_written = Qt::Unchecked;  // what the program wrote last
};

}  // namespace nkdt::qt
