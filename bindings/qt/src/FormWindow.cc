#include "FormWindow.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeySequence>
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

}  // namespace

// The rows. Its own size is that of all of them, as far as the screen has room.
class FieldArea : public QScrollArea {
  public:
    explicit FieldArea(QWidget* parent) : QScrollArea(parent) {
        setWidget(new QWidget);
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }

    QSize wholeSize() const {
        QLayout* const rows = widget()->layout();
        rows->activate();
        const QSize size = rows->sizeHint();
        return rows->hasHeightForWidth() ? QSize(size.width(), rows->heightForWidth(size.width())) : size;
    }
    QSize sizeHint() const override {
        const QSize whole = wholeSize();
        const int most = screen()->availableGeometry().height() * 3 / 4;
        if (whole.height() <= most) return whole;
        return {whole.width() + verticalScrollBar()->sizeHint().width(), most};
    }
    QSize minimumSizeHint() const override {
        const QSize hint = sizeHint();
        return {hint.width(), std::min(hint.height(), fontMetrics().height() * 6)};
    }
};

FormWindow::FormWindow(const QString& title, const QString& saveText)
    : m_area(new FieldArea(this)), m_grid(new QGridLayout(m_area->widget())), m_message(messageLabel(this)) {
    setWindowTitle(title);
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setHorizontalSpacing(markGap);
    m_grid->setColumnStretch(controlColumn, 1);

    auto* const buttons = new QDialogButtonBox(this);
    m_save = buttons->addButton(saveText, QDialogButtonBox::AcceptRole);
    m_cancel = buttons->addButton(QStringLiteral("Abbrechen"), QDialogButtonBox::RejectRole);
    m_save->setDefault(true);
    connect(m_save, &QPushButton::clicked, this, [this] { accept(); });
    connect(m_cancel, &QPushButton::clicked, this, [this] { reject(); });

    auto* const column = new QVBoxLayout(this);
    column->addWidget(m_area, 1);
    column->addWidget(m_message);
    column->addSpacing(column->spacing());
    column->addWidget(buttons);
}

// A label without a mnemonic gets the first of its letters that is free.
QString FormWindow::withMnemonic(const QString& label) {
    QString text = label;
    if (mnemonicOf(text).isNull()) {
        const auto* const free = std::find_if(text.begin(), text.end(), [this](QChar character) {
            return character.isLetterOrNumber() && !m_mnemonics.contains(character.toUpper());
        });
        if (free != text.end()) text.insert(free - text.begin(), QLatin1Char('&'));
    }
    const QChar mnemonic = mnemonicOf(text);
    if (!mnemonic.isNull()) m_mnemonics += mnemonic;
    return text;
}

Row FormWindow::addField(const QString& label, QWidget* control) {
    const QString text = withMnemonic(label);
    auto* const before = new QLabel(text, m_area->widget());
    before->setBuddy(control);
    return addRow(before, text, control);
}

Row FormWindow::addRow(QLabel* label, const QString& text, QWidget* control) {
    Row row{withoutMnemonic(text), markLabel(m_area->widget()), messageLabel(m_area->widget())};
    row.message->setFixedWidth(fontMetrics().averageCharWidth() * messageLength);

    const int line = m_grid->rowCount();
    if (label != nullptr) m_grid->addWidget(label, line, labelColumn);
    m_grid->addWidget(row.mark, line, markColumn);
    auto* const place = new QHBoxLayout;
    place->setSpacing(messageGap);
    place->addWidget(control);
    place->addWidget(row.message);
    if (control->sizePolicy().horizontalPolicy() != QSizePolicy::Expanding) place->addStretch();
    m_grid->addLayout(place, line, controlColumn);

    if (m_lastControl != nullptr) {
        setTabOrder(m_lastControl, control);
    } else {
        control->setFocus();
    }
    setTabOrder(control, m_save);
    setTabOrder(m_save, m_cancel);
    m_lastControl = control;
    return row;
}

void FormWindow::setMessage(const Row& row, const QString& text) {
    if (row.message->text() == text) return;
    row.message->setText(text);
    // The row is as high as its message.
    row.message->setMinimumHeight(row.message->heightForWidth(row.message->maximumWidth()));
    show(row.message);
}

void FormWindow::setMessage(const QString& text) {
    if (m_message->text() == text) return;
    m_message->setText(text);
    show(m_message);
}

void FormWindow::show(QLabel* message) {
    message->setVisible(!message->text().isEmpty());
    m_area->updateGeometry();
    if (isVisible()) grow();
}

// Makes room for what there is to show; never takes any away, since a window that shrinks is a nuisance.
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
    QDialog::showEvent(event);
    grow();
}

}  // namespace nkdt::qt
