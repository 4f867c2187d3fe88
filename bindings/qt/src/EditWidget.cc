#include "EditWidget.h"

#include <QScopedValueRollback>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QValidator>
#include <algorithm>
#include <limits>
#include <optional>

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

    State validate(QString& input, int& position) const override {
        if (m_edit.m_isShowing) return Acceptable;
        dropLineEnds(input, position);
        composeAccents(input, position);
        const QString refusal = refusalOf(input);
        if (refusal.isEmpty()) return Acceptable;
        m_edit.m_refusal = refusal;
        return Invalid;
    }

  private:
    // A cell of a table comes from the clipboard with the end of its line.
    void dropLineEnds(QString& input, int& position) const {
        const auto* const entered =
            std::mismatch(input.cbegin(), input.cend(), m_edit.m_before.cbegin(), m_edit.m_before.cend())
                .first;
        const auto first = static_cast<int>(entered - input.cbegin());
        while (position > first && isLineEnd(input[position - 1]))
            input.remove(--position, 1);
    }
    static bool isLineEnd(QChar character) {
        return character == QLatin1Char('\r') || character == QLatin1Char('\n') ||
               character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
    }

    // A letter and its accent one behind the other are the letter with the accent.
    static void composeAccents(QString& input, int& position) {
        if (!firstWithoutByte(input).has_value()) return;
        const QString composed = input.normalized(QString::NormalizationForm_C);
        if (firstWithoutByte(composed).has_value()) return;
        position = static_cast<int>(input.left(position).normalized(QString::NormalizationForm_C).size());
        input = composed;
    }

    // A text that is too long already can become shorter step by step.
    QString refusalOf(const QString& input) const {
        if (const auto character = firstWithoutByte(input))
            return cannotBeStored(describeCharacter(*character));
        if (input.size() > std::max<qsizetype>(m_edit.m_textLimit, m_edit.m_before.size()))
            return QStringLiteral("Der Text darf höchstens %1 Zeichen lang sein.").arg(m_edit.m_textLimit);
        return {};
    }

    EditWidget& m_edit;
};

EditWidget::EditWidget(NkDtTyps type, int textLimit)
    : m_number(isNumber(type)), m_characters(charactersOf(type)), m_textLimit(0) {
    // The length is the validator's business: the widget's own limit would cut a text that is pasted.
    setMaxLength(std::numeric_limits<int>::max());
    setValidator(new Validator(*this));
    connect(this, &QLineEdit::textChanged, this, [this](const QString& text) { m_before = text; });
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

void EditWidget::showText(const QString& text) {
    makeRoomFor(text);
    const QScopedValueRollback showing(m_isShowing, true);
    setText(text);
    setCursorPosition(0);
}

void EditWidget::enter(const QString& text) {
    if (isReadOnly()) return;
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
