#pragma once

/// @file
/// An edit control of a Qt dialog.

#include <QString>
#include <memory>

#include "EditWidget.h"
#include "QtControl.h"

namespace nkdt::qt {

class EditControl final : public QtControl {
  public:
    EditControl(FormWindow& window, const QString& label, std::unique_ptr<EditWidget> widget);

    void setTextLimit(int limit) { edit().setTextLimit(limit); }
    void setReadOnly(bool readOnly);
    /// Enters a text as a person would; false when it is refused.
    bool enter(const QString& text);

    void SetFocus() noexcept override;

  protected:
    bool showsOther() const override { return edit().text() != m_written; }
    INT TextLength() const override;
    INT ReadText(LPTSTR pchBuffer, INT nMost) const override;
    BOOL WriteText(std::string_view text) override;

  private:
    EditWidget& edit() const { return static_cast<EditWidget&>(widget()); }

    QString m_written;  // what the program wrote last
};

}  // namespace nkdt::qt
