#include "EditControl.h"

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
        const std::string text = "Das Zeichen " + codePointName(m_character).toStdString() +
                                 " ist in Codepage 1252 nicht darstellbar";
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

EditControl::EditControl(FormWindow& window, const QString& label, EditWidget* widget)
    : QtControl(window, widget, window.addField(label, widget)), m_edit(widget), m_loaded(widget->text()) {
    QObject::connect(m_edit, &QLineEdit::textChanged, m_edit, [this] { updateMark(); });
    QObject::connect(m_edit, &QLineEdit::textEdited, m_edit, [this] { setMessage({}); });
    QObject::connect(m_edit, &QLineEdit::inputRejected, m_edit, [this] { setMessage(m_edit->refusal()); });
}

bool EditControl::enter(const QString& text) {
    m_edit->enter(text);
    return m_edit->text() == text;
}

void EditControl::SetFocus() noexcept {
    QtControl::SetFocus();
    m_edit->selectAll();
}

INT EditControl::TextLength() const {
    return static_cast<INT>(m_edit->text().size());
}

INT EditControl::ReadText(LPTSTR pchBuffer, INT nMost) const {
    const QString text = m_edit->text();
    if (const auto character = firstWithoutByte(text)) throw new CharacterException(*character);
    const auto count = std::min<qsizetype>(text.size(), nMost);
    std::transform(text.begin(), text.begin() + count, pchBuffer,
                   [](QChar character) { return static_cast<char>(byteOf(character)); });
    return static_cast<INT>(count);
}

BOOL EditControl::WriteText(std::string_view text) {
    if (text.size() > static_cast<std::size_t>(m_edit->textLimit())) return FALSE;
    m_loaded = fromCp1252(text);
    m_edit->makeRoomFor(m_loaded);
    m_edit->setText(m_loaded);
    m_edit->setCursorPosition(0);
    updateMark();
    setMessage({});
    return TRUE;
}

}  // namespace nkdt::qt
