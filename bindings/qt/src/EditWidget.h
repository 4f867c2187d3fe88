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
    /// Replaces the text as the program does, whatever it is. A number's control becomes wide enough for it,
    /// since a number that is cut off reads as another.
    void showText(const QString& text);
    /// Replaces the text as a person would; the text stays if that is refused.
    void enter(const QString& text);
    /// Why the last input was refused.
    const QString& refusal() const noexcept { return m_refusal; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  private:
    class Validator;
    void makeRoomFor(const QString& text);

    bool m_number;
    int m_characters;
    int m_textLimit;
    QString m_refusal;
    QString m_before;          // the text before what is being entered
    bool m_isShowing = false;  // the program writes
};

}  // namespace nkdt::qt
