#include "EditWidget.h"

#include <QStyle>
#include <QStyleOptionFrame>
#include <QValidator>
#include <algorithm>
#include <limits>

#include "Text.h"

namespace nkdt::qt {

namespace {

constexpr int narrowest = 3;
constexpr int widestNumber = 40;  // a decimal with all its digits and separators

// Digits that fit side by side: what the values of the class usually need.
int charactersOf(NkDtTyps type) {
    switch (type) {
        case NkDtTypChar:
            return narrowest;
        case NkDtTypBool:
            return 6;
        case NkDtTypShort:
            return 8;
        case NkDtTypTime:
            return 10;
        case NkDtTypDateZp:
            return 11;
        case NkDtTypLong:
            return 14;
        case NkDtTypDateTime:
            return 20;
        case NkDtTypDouble:
        case NkDtTypDecimal:
            return 22;
        default:
            return 40;
    }
}

bool isNumber(NkDtTyps type) {
    return type == NkDtTypLong || type == NkDtTypShort || type == NkDtTypDouble || type == NkDtTypDecimal ||
           type == NkDtTypTime;
}

}  // namespace

// Refuses an input as a whole, so that nothing of it is lost silently.
class EditWidget::Validator : public QValidator {
  public:
    explicit Validator(EditWidget& edit) : QValidator(&edit), m_edit(edit) {}

    State validate(QString& input, int& /*position*/) const override {
        std::optional<char32_t> character = firstWithoutByte(input);
        if (character.has_value()) {
            // A letter and its accent one behind the other are the letter with the accent.
            const QString composed = input.normalized(QString::NormalizationForm_C);
            if (!firstWithoutByte(composed).has_value()) {
                input = composed;
                character.reset();
            }
        }
        if (character.has_value()) {
            m_edit.m_refusal = QStringLiteral("Das Zeichen %1 kann nicht gespeichert werden.")
                                   .arg(describeCharacter(*character));
            return Invalid;
        }
        if (input.size() > m_edit.m_textLimit) {
            m_edit.m_refusal =
                QStringLiteral("Der Text darf höchstens %1 Zeichen lang sein.").arg(m_edit.m_textLimit);
            return Invalid;
        }
        return Acceptable;
    }

  private:
    EditWidget& m_edit;
};

EditWidget::EditWidget(NkDtTyps type, int textLimit)
    : m_number(isNumber(type)), m_characters(charactersOf(type)), m_textLimit(0) {
    // The length is the validator's business: the widget's own limit would cut a text that is pasted.
    setMaxLength(std::numeric_limits<int>::max());
    setValidator(new Validator(*this));
    setTextLimit(textLimit);
    if (m_number) setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    // Texts use the room that there is.
    setSizePolicy(type == NkDtTypString ? QSizePolicy::Expanding : QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void EditWidget::setTextLimit(int limit) {
    m_textLimit = std::max(limit, 0);
    updateGeometry();
}

void EditWidget::makeRoomFor(const QString& text) {
    const int needed = static_cast<int>(std::min<qsizetype>(text.size(), widestNumber));
    if (!m_number || needed <= m_characters) return;
    m_characters = needed;
    updateGeometry();
}

void EditWidget::enter(const QString& text) {
    selectAll();
    insert(text);
}

QSize EditWidget::sizeHint() const {
    const int characters = std::clamp(m_textLimit, narrowest, m_characters);
    const QFontMetrics metrics = fontMetrics();
    // The cursor wants a pixel or two beside the last character.
    const int width = metrics.horizontalAdvance(QLatin1Char('0')) * characters + metrics.averageCharWidth();
    QStyleOptionFrame option;
    initStyleOption(&option);
    const QSize whole =
        style()->sizeFromContents(QStyle::CT_LineEdit, &option, QSize(width, metrics.height()), this);
    return {whole.width(), QLineEdit::sizeHint().height()};
}

}  // namespace nkdt::qt
