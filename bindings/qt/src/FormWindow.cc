#include "FormWindow.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

namespace nkdt::qt {

namespace {

enum Column : int { labelColumn, markColumn, controlColumn };

constexpr int markGap = 4;         // between mark and control
constexpr int messageGap = 10;     // between control and message
constexpr int messageLength = 40;  // characters, before it goes on in the next line
constexpr int labelLength = 40;    // characters, before it is cut

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < 128;
}

// A red that can be read on the window's own colour.
QLabel* messageLabel(QWidget* parent) {
    auto* const label = new QLabel(parent);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, isDark(palette) ? QColor(255, 138, 128) : QColor(176, 0, 32));
    label->setPalette(palette);
    label->hide();
    return label;
}

QLabel* markLabel(QWidget* parent) {
    auto* const label = new QLabel(QStringLiteral("●"), parent);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, palette.color(QPalette::Highlight));
    label->setPalette(palette);
    label->setToolTip(QStringLiteral("geändert"));
    // The place is kept, so that nothing moves when it appears.
    QSizePolicy policy = label->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    label->setSizePolicy(policy);
    label->hide();
    return label;
}

QChar mnemonicOf(const QString& label) {
    for (qsizetype at = label.indexOf(QLatin1Char('&')); at >= 0 && at + 1 < label.size();
         at = label.indexOf(QLatin1Char('&'), at + 2)) {
        if (label[at + 1] != QLatin1Char('&')) return label[at + 1].toUpper();
    }
    return {};
}

QString withoutMnemonic(const QString& label) {
    QString text;
    for (qsizetype at = 0; at < label.size(); ++at) {
        if (label[at] == QLatin1Char('&') && ++at == label.size()) break;
        text += label[at];
    }
    return text;
}

// Without the application object, no window can end.
void endWindows() {
    std::vector<QPointer<FormWindow>> windows;  // one can end with another
    for (QWidget* const widget : QApplication::topLevelWidgets())
        windows.emplace_back(dynamic_cast<FormWindow*>(widget));
    for (const QPointer<FormWindow>& window : windows)
        delete window;
}

bool isReadOnly(const QWidget* widget) {
    const auto* const edit = qobject_cast<const QLineEdit*>(widget);
    return edit != nullptr && edit->isReadOnly();
}

}  // namespace

// The rows. Its own size is that of all of them, as far as the screen has room.
class FieldArea : public QScrollArea {
  public:
    explicit FieldArea(QWidget* parent) : QScrollArea(parent) {
        setWidget(new QWidget);
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
    }

    QSize wholeSize() const {
        QLayout* const rows = widget()->layout();
        rows->activate();
        const QSize size = rows->sizeHint();
        return rows->hasHeightForWidth() ? QSize(size.width(), rows->heightForWidth(size.width())) : size;
    }
    QSize sizeHint() const override {
        const QSize whole = wholeSize();
        const QSize screenSize = screen()->availableGeometry().size();
        const QSize most(screenSize.width() * 19 / 20, screenSize.height() * 3 / 4);
        QSize size = whole;
        if (whole.height() > most.height()) size.rwidth() += verticalScrollBar()->sizeHint().width();
        if (size.width() > most.width()) size.rheight() += horizontalScrollBar()->sizeHint().height();
        return size.boundedTo(most);
    }
    QSize minimumSizeHint() const override {
        const QSize hint = sizeHint();
        return {hint.width(), std::min(hint.height(), fontMetrics().height() * 6)};
    }
};

FormWindow::FormWindow(const QString& title, const QString& saveText)
    : m_area(new FieldArea(this)), m_grid(new QGridLayout(m_area->widget())), m_message(messageLabel(this)) {
    // Once, however many windows there are.
    qRemovePostRoutine(endWindows);
    qAddPostRoutine(endWindows);

    setWindowTitle(title);
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setHorizontalSpacing(markGap);
    m_grid->setColumnStretch(controlColumn, 1);

    auto* const buttons = new QDialogButtonBox(this);
    m_save = buttons->addButton(saveText, QDialogButtonBox::AcceptRole);
    m_cancel = buttons->addButton(QStringLiteral("Abbrechen"), QDialogButtonBox::RejectRole);
    m_save->setDefault(true);
    addCaption(*m_save, m_save->text());
    addCaption(*m_cancel, m_cancel->text());
    connect(m_save, &QPushButton::clicked, this, [this] { accept(); });
    connect(m_cancel, &QPushButton::clicked, this, [this] { reject(); });

    auto* const column = new QVBoxLayout(this);
    column->addWidget(m_area, 1);
    column->addWidget(m_message);
    column->addSpacing(column->spacing());
    column->addWidget(buttons);
}

// ---- Labels

void FormWindow::addCaption(QWidget& widget, const QString& text) {
    const QChar mnemonic = mnemonicOf(text);
    setCaption(widget, text);
    if (mnemonic.isNull()) {
        m_captions.push_back({&widget, text});
    } else {
        m_mnemonics += mnemonic;
    }
}

// A label that is cut is whole in its tooltip.
void FormWindow::setCaption(QWidget& widget, const QString& text) {
    const QFontMetrics metrics = widget.fontMetrics();
    const int most = metrics.averageCharWidth() * labelLength;
    const QString cut = metrics.elidedText(text, Qt::ElideRight, most, Qt::TextShowMnemonic);
    if (cut != text)
        widget.setToolTip(QStringLiteral("<p>%1</p>").arg(withoutMnemonic(text).toHtmlEscaped()));
    if (auto* const label = qobject_cast<QLabel*>(&widget)) {
        label->setText(cut);
    } else if (auto* const button = qobject_cast<QAbstractButton*>(&widget)) {
        button->setText(cut);
    }
}

void FormWindow::assignMnemonics() {
    for (const Caption& caption : std::exchange(m_captions, {})) {
        if (caption.widget != nullptr) setCaption(*caption.widget, withMnemonic(caption.text));
    }
}

// The first of its letters that is free becomes the mnemonic.
QString FormWindow::withMnemonic(const QString& label) {
    const auto* const free = std::find_if(label.begin(), label.end(), [this](QChar character) {
        return character.isLetterOrNumber() && !m_mnemonics.contains(character.toUpper());
    });
    if (free == label.end()) return label;
    m_mnemonics += free->toUpper();
    QString text = label;
    text.insert(free - label.begin(), QLatin1Char('&'));
    return text;
}

// ---- Rows

Row FormWindow::addField(const QString& label, QWidget& control) {
    auto* const before = new QLabel(m_area->widget());
    before->setTextFormat(Qt::PlainText);
    before->setBuddy(&control);
    addCaption(*before, label);
    return addRow(before, label, control);
}

Row FormWindow::addBox(const QString& label, QAbstractButton& box) {
    addCaption(box, label);
    return addRow(nullptr, label, box);
}

Row FormWindow::addRow(QLabel* label, const QString& text, QWidget& control) {
    Row row{withoutMnemonic(text), &control, label, markLabel(m_area->widget()),
            messageLabel(m_area->widget())};
    row.message->setFixedWidth(fontMetrics().averageCharWidth() * messageLength);

    const int line = m_grid->rowCount();
    if (label != nullptr) m_grid->addWidget(label, line, labelColumn);
    m_grid->addWidget(row.mark, line, markColumn);
    auto* const place = new QHBoxLayout;
    place->setSpacing(messageGap);
    place->addWidget(&control);
    place->addWidget(row.message);
    if (control.sizePolicy().horizontalPolicy() != QSizePolicy::Expanding) place->addStretch();
    m_grid->addLayout(place, line, controlColumn);

    if (m_controls.empty()) {
        control.setFocus();
    } else {
        setTabOrder(m_controls.back(), &control);
    }
    setTabOrder(&control, m_save);
    setTabOrder(m_save, m_cancel);
    m_controls.push_back(&control);
    if (isVisible()) assignMnemonics();
    return row;
}

void FormWindow::removeRow(const Row& row) {
    m_controls.erase(std::remove(m_controls.begin(), m_controls.end(), row.control), m_controls.end());
    delete row.label;
    delete row.mark;
    delete row.control;
    delete row.message;
}

// ---- Messages

void FormWindow::setMessage(const Row& row, const QString& text) {
    if (row.message->text() == text) return;
    row.message->setText(text);
    // The row is as high as its message.
    row.message->setMinimumHeight(row.message->heightForWidth(row.message->maximumWidth()));
    updateMessage(*row.message);
}

void FormWindow::setMessage(const QString& text) {
    if (m_message->text() == text) return;
    m_message->setText(text);
    updateMessage(*m_message);
}

void FormWindow::updateMessage(QLabel& message) {
    message.setVisible(!message.text().isEmpty());
    m_area->updateGeometry();
    if (isVisible()) grow();
}

void FormWindow::grow() {
    layout()->activate();
    resize(size().expandedTo(sizeHint()));
}

void FormWindow::focus(QWidget* control) {
    control->setFocus(Qt::OtherFocusReason);
    m_area->ensureWidgetVisible(control);
}

QImage FormWindow::picture(int scale) {
    ensurePolished();
    assignMnemonics();
    layout()->activate();
    const QSize before = size();
    resize(sizeHint() - m_area->sizeHint() + m_area->wholeSize());
    QImage image(size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(palette().color(QPalette::Window));
    render(&image);
    resize(before);
    return image;
}

void FormWindow::accept() {
    if (!m_onSave || m_onSave()) QDialog::accept();
}

void FormWindow::showEvent(QShowEvent* event) {
    assignMnemonics();
    QDialog::showEvent(event);
    grow();
    // The first field that can be edited.
    for (const QWidget* first = focusWidget(); isReadOnly(focusWidget());) {
        if (!focusNextChild() || focusWidget() == first) break;
    }
}

}  // namespace nkdt::qt
