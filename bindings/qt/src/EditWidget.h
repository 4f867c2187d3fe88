#pragma once

/// @file
/// The edit control on the screen: takes what code page 1252 has, up to a length, and tells why it refuses
/// anything else.

#include <QLineEdit>
#include <QString>

#include "nkdt/NkDtTypes.h"

namespace nkdt::qt {

class EditWidget : public QLineEdit {
  public:
    /// As wide as texts of the class need it, and aligned as they are.
    EditWidget(NkDtTyps type, int textLimit);

    int textLimit() const noexcept { return m_textLimit; }
    void setTextLimit(int limit);
    /// Makes a number's control wide enough for this one, since one that is cut off reads as another.
    void makeRoomFor(const QString& text);
    /// Replaces the text as a person would; the text stays if that is refused.
    void enter(const QString& text);
    /// Why the last input was refused.
    const QString& refusal() const noexcept { return m_refusal; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  private:
    class Validator;

    bool m_number;
    int m_characters;
    int m_textLimit;
    QString m_refusal;
};

}  // namespace nkdt::qt
