#pragma once

/// @file
/// The window of a dialog: fields beneath each other, a message, and the buttons.
///
/// A row is a label, a mark of what was modified, the control, and a message beside it. Rows that do not fit
/// on the screen are scrolled.

#include <QDialog>
#include <QGridLayout>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QString>
#include <functional>

namespace nkdt::qt {

class FieldArea;

/// What stands around a control.
struct Row {
    QString name;     // the label without its mnemonic
    QLabel* mark;     // shown when the control was modified
    QLabel* message;  // shown when there is something to say
};

class FormWindow : public QDialog {
  public:
    FormWindow(const QString& title, const QString& saveText);

    /// Asked when the person wants to save; true closes the window.
    void setOnSave(std::function<bool()> onSave) { m_onSave = std::move(onSave); }

    /// Takes the control over, with its label in front.
    Row addField(const QString& label, QWidget* control);
    /// Takes a check box over, which shows its label itself.
    template <class Box>
    Row addBox(const QString& label, Box* box) {
        const QString text = withMnemonic(label);
        box->setText(text);
        return addRow(nullptr, text, box);
    }

    /// Shows a message beside a control, or takes it away when it is empty.
    void setMessage(const Row& row, const QString& text);
    /// The same above the buttons.
    void setMessage(const QString& text);
    /// Puts the cursor into a control, where it can be seen.
    void focus(QWidget* control);
    /// The whole window, however small the screen is.
    QImage picture(int scale);

    void accept() override;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    Row addRow(QLabel* label, const QString& text, QWidget* control);
    QString withMnemonic(const QString& label);
    void show(QLabel* message);
    void grow();

    FieldArea* m_area;
    QGridLayout* m_grid;
    QLabel* m_message;
    QPushButton* m_save;
    QPushButton* m_cancel;
    QWidget* m_lastControl = nullptr;
    QString m_mnemonics;  // in capitals
    std::function<bool()> m_onSave;
};

}  // namespace nkdt::qt
