#pragma once

/// @file
/// An edit control of a Qt dialog.

#include <QString>

#include "EditWidget.h"
#include "QtControl.h"

namespace nkdt::qt {

class EditControl final : public QtControl {
  public:
    EditControl(FormWindow& window, const QString& label, EditWidget* widget);

    bool isModified() const override { return m_edit->text() != m_loaded; }
    void setTextLimit(int limit) { m_edit->setTextLimit(limit); }
    /// Enters a text as a person would; false when it is refused.
    bool enter(const QString& text);

    void SetFocus() noexcept override;

  protected:
    INT TextLength() const override;
    INT ReadText(LPTSTR pchBuffer, INT nMost) const override;
    BOOL WriteText(std::string_view text) override;

  private:
    EditWidget* m_edit;
    QString m_loaded;  // what the program wrote last
};

}  // namespace nkdt::qt
