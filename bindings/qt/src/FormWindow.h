#pragma once

/// @file
/// The window of a dialog: fields beneath each other, a message, and the buttons.
///
/// A row is a label, a mark of what was modified, the control, and a message beside it. Rows that do not fit
/// on the screen are scrolled, labels that are very long are cut. The window ends with the application object
/// at the latest.

#include <QDialog>
#include <QGridLayout>
#include <QImage>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QString>
#include <functional>
#include <utility>
#include <vector>

class QAbstractButton;

namespace nkdt::qt {

class FieldArea;

/// A control and what stands around it.
struct Row {
    QString name;               // the label without its mnemonic
    QPointer<QWidget> control;  // null when it has ended
    QPointer<QLabel> label;     // null if the control shows it itself
    QPointer<QLabel> mark;      // shown when the control was modified
    QPointer<QLabel> message;   // shown when there is something to say
};

class FormWindow : public QDialog {
  public:
    FormWindow(const QString& title, const QString& saveText);

    /// Asked when the person wants to save; true closes the window.
    void setOnSave(std::function<bool()> onSave) { m_onSave = std::move(onSave); }

    /// Takes the control over, with its label in front.
    Row addField(const QString& label, QWidget& control);
    /// Takes a check box over, which shows its label itself.
    Row addBox(const QString& label, QAbstractButton& box);
    /// Ends the control and what stands around it.
    void removeRow(const Row& row);

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
    Row addRow(QLabel* label, const QString& text, QWidget& control);
    void addCaption(QWidget& widget, const QString& text);
    void setCaption(QWidget& widget, const QString& text);
    void assignMnemonics();
    QString withMnemonic(const QString& label);
    void updateMessage(QLabel& message);
    void grow();

    // A label or button that gets its mnemonic when those that the program chose are known.
    struct Caption {
        QPointer<QWidget> widget;
        QString text;
    };

    FieldArea* m_area;
    QGridLayout* m_grid;
    QLabel* m_message;
    QPushButton* m_save;
    QPushButton* m_cancel;
    std::vector<QWidget*> m_controls;  // in tab order
    QString m_mnemonics;               // in capitals
    std::vector<Caption> m_captions;
    std::function<bool()> m_onSave;
};

}  // namespace nkdt::qt
