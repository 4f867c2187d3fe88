#pragma once

/// @file
/// A person in front of a Qt dialog: types, clicks, and looks. The dialogs are drawn off-screen.

#include <nkcp/CodePage.h>
#include <nkdt/NkDt.h>
#include <nkdt/qt/QtApplication.h>
#include <nkdt/qt/QtDialog.h>

#include <QCheckBox>
#include <QClipboard>
#include <QDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QString>
#include <QTest>
#include <memory>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

/// How a failed test shows a text.
inline void PrintTo(const QString& text, std::ostream* stream) {
    *stream << '"' << text.toStdString() << '"';
}

namespace qttest {

/// A dialog whose save button a test can press without a screen.
class TestedDialog : public CQtDialog {
  public:
    using CQtDialog::CQtDialog;
    using CQtDialog::OnOK;
};

/// The application object of a test program, made before its first test and ended behind the last.
class Application : public ::testing::Environment {
  public:
    void SetUp() override {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        m_application = std::make_unique<CQtApplication>();
    }
    void TearDown() override { m_application.reset(); }

  private:
    std::unique_ptr<CQtApplication> m_application;
};

inline QString fromCp1252(const std::string& text) {
    std::u16string utf16;
    nkcp::appendUtf16FromCp1252(text, utf16);
    return QString::fromStdU16String(utf16);
}

inline std::string toCp1252(const QString& text) {
    std::string bytes;
    EXPECT_TRUE(nkcp::appendCp1252FromUtf16(text.toStdU16String(), bytes).complete) << text.toStdString();
    return bytes;
}

inline QLineEdit& edit(const CQtDialog& dialog, int id) {
    return dynamic_cast<QLineEdit&>(*dialog.GetWidget(id));
}

inline QCheckBox& box(const CQtDialog& dialog, int id) {
    return dynamic_cast<QCheckBox&>(*dialog.GetWidget(id));
}

/// One press of a key for each character.
inline void typeInto(QLineEdit& edit, const QString& text) {
    for (const char32_t character : text.toUcs4())
        QTest::sendKeyEvent(QTest::Click, &edit, Qt::Key_unknown, QString::fromUcs4(&character, 1),
                            Qt::NoModifier);
}

/// Replaces the text.
inline void type(const CQtDialog& dialog, int id, const QString& text) {
    edit(dialog, id).selectAll();
    QTest::keyClick(&edit(dialog, id), Qt::Key_Delete);
    typeInto(edit(dialog, id), text);
}

/// The button of that text, which is told without its mnemonic, or null.
inline QPushButton* button(const CQtDialog& dialog, const QString& text) {
    for (QPushButton* const each : dialog.GetDialog()->findChildren<QPushButton*>()) {
        if (each->text().remove('&') == text) return each;
    }
    return nullptr;
}

inline void click(const CQtDialog& dialog, const QString& text) {
    QPushButton* const found = button(dialog, text);
    ASSERT_NE(found, nullptr) << text.toStdString();
    QTest::mouseClick(found, Qt::LeftButton);
}

inline void show(const CQtDialog& dialog) {
    dialog.GetDialog()->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.GetDialog()));
}

/// Replaces what is selected by a text from the clipboard.
inline void paste(QLineEdit& edit, const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    edit.paste();
    QGuiApplication::clipboard()->clear();
}

/// The labels in front of the edit controls, as they are written.
inline QStringList labels(const CQtDialog& dialog) {
    QStringList texts;
    for (const QLabel* const label : dialog.GetDialog()->findChildren<QLabel*>()) {
        if (label->buddy() != nullptr) texts += label->text();
    }
    return texts;
}

/// Where a widget is in the dialog.
inline QRect place(const CQtDialog& dialog, const QWidget& widget) {
    return {widget.mapTo(dialog.GetDialog(), QPoint()), widget.size()};
}

/// The text beside a control of a dialog that is shown: to its right, in its line.
inline std::string messageBeside(const CQtDialog& dialog, int id) {
    QCoreApplication::processEvents();
    const QRect control = place(dialog, *dialog.GetWidget(id));
    for (const QLabel* const label : dialog.GetDialog()->findChildren<QLabel*>()) {
        const QRect message = place(dialog, *label);
        if (label->isVisible() && message.left() > control.right() && message.top() < control.center().y() &&
            message.bottom() > control.center().y())
            return label->text().toStdString();
    }
    return {};
}

/// Whether the mark of what was modified stands to the left of a control of a dialog that is shown.
inline bool isMarked(const CQtDialog& dialog, int id) {
    const QRect control = place(dialog, *dialog.GetWidget(id));
    for (const QLabel* const label : dialog.GetDialog()->findChildren<QLabel*>()) {
        const QRect mark = place(dialog, *label);
        if (label->isVisible() && label->toolTip() == QStringLiteral("geändert") &&
            mark.right() < control.left() && mark.contains(mark.center().x(), control.center().y()))
            return true;
    }
    return false;
}

}  // namespace qttest
