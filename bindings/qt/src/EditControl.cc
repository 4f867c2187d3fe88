#include "EditControl.h"

#include <QApplication>
#include <QPalette>
#include <algorithm>
#include <string>

#include "Text.h"
#include "nkfw/Exception.h"

namespace nkdt::qt {

namespace {

// The widget was given a text that the library cannot have, past all checks of what a person types.
class CharacterException : public CException {
  public:
    explicit CharacterException(char32_t character) noexcept : m_character(character) {}
    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    void GetErrorMessage(LPTSTR pszText, UINT nMaxLen) const noexcept override {
        if (pszText == nullptr || nMaxLen == 0) return;
        const std::string text = cannotBeStored(codePointName(m_character)).toStdString();
        pszText[text.copy(pszText, nMaxLen - 1U)] = '\0';
    }

  private:
    char32_t m_character;
};

constexpr CRuntimeClass classCharacterException{"CharacterException", sizeof(CharacterException), 0, nullptr,
                                                &CException::GetThisClass};

const CRuntimeClass* CharacterException::GetThisClass() noexcept {
    return &classCharacterException;
}

}  // namespace

EditControl::EditControl(FormWindow& window, const QString& label, std::unique_ptr<EditWidget> widget)
    : QtControl(window, window.addField(label, *widget)) {
    EditWidget& made = *widget.release();  // the window has it
    QObject::connect(&made, &QLineEdit::textChanged, &context(), [this] { updateMark(); });
    QObject::connect(&made, &QLineEdit::textEdited, &context(), [this] { setMessage({}); });
    QObject::connect(&made, &QLineEdit::inputRejected, &context(), [this] { setMessage(edit().refusal()); });
}

// What cannot be edited has the window's own colour.
void EditControl::setReadOnly(bool readOnly) {
    QPalette palette = edit().palette();
    const QPalette usual = QApplication::palette(&edit());
    palette.setColor(QPalette::Base, usual.color(readOnly ? QPalette::Window : QPalette::Base));
    edit().setPalette(palette);
    edit().setReadOnly(readOnly);
}

bool EditControl::enter(const QString& text) {
    edit().enter(text);
    return edit().text() == text;
}

void EditControl::SetFocus() noexcept {
    QtControl::SetFocus();
    if (isAlive()) edit().selectAll();
}

INT EditControl::TextLength() const {
    return static_cast<INT>(edit().text().size());
}

INT EditControl::ReadText(LPTSTR pchBuffer, INT nMost) const {
    const QString text = edit().text();
    if (const auto character = firstWithoutByte(text)) throw new CharacterException(*character);
    const auto count = std::min<qsizetype>(text.size(), nMost);
    std::transform(text.begin(), text.begin() + count, pchBuffer,
                   [](QChar character) { return static_cast<char>(byteOf(character)); });
    return static_cast<INT>(count);
}

BOOL EditControl::WriteText(std::string_view text) {
    if (text.size() > static_cast<std::size_t>(edit().textLimit())) return FALSE;
    m_written = fromCp1252(text);
    edit().showText(m_written);
    updateMark();
    setMessage({});
    return TRUE;
}

}  // namespace nkdt::qt
