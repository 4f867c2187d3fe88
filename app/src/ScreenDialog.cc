#include "ScreenDialog.h"

#include <cstdlib>

#include "Error.h"
#include "nkdt/qt/QtApplication.h"
#include "nkdt/qt/QtDialog.h"

namespace nkdt::app {

namespace {

/// The window, which asks the form instead of fields of its own.
class Window final : public CQtDialog {
  public:
    using CQtDialog::CQtDialog;

    bool run(RowForm& form, RowDialog& dialog, const std::function<CString()>& store) {
        m_form = &form;
        m_dialog = &dialog;
        m_store = store;
        return DoModal() != FALSE;
    }

  protected:
    void OnInitDialog() override { m_form->load(*m_dialog); }

    BOOL OnOK() override {
        ClearErrors();
        const RowForm::Refusals refusals = m_form->save(*m_dialog);
        for (const RowForm::Refusal& refusal : refusals)
            ShowError(m_form->fields()[refusal.column].id, refusal.reason);
        if (!refusals.empty()) {
            GetDlgItem(m_form->fields()[refusals.front().column].id)->SetFocus();
            return FALSE;
        }
        const CString failure = store();
        ShowMessage(failure);
        return failure.IsEmpty() ? TRUE : FALSE;
    }

  private:
    // A database that fails is no reason to lose what was typed.
    CString store() const {
        try {
            return m_store();
        } catch (...) {
            return takeCaughtReason();
        }
    }

    RowForm* m_form = nullptr;
    RowDialog* m_dialog = nullptr;
    std::function<CString()> m_store;
};

/// Tells Qt where to draw; to be said before Qt starts.
class Platform {
  public:
    explicit Platform(Screen screen) {
        if (screen == Screen::offScreen) (void)::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
};

class QtRowDialog final : public ScreenDialog {
  public:
    QtRowDialog(const FormFields& fields, const CString& title, Screen screen)
        : m_platform(screen), m_window(title) {
        for (const FormField& field : fields) {
            if (field.checkBox) {
                m_window.AddCheck(field.id, field.label, field.threeState ? TRUE : FALSE);
            } else {
                m_window.AddEdit(field.id, field.label, field.type, field.textLimit);
            }
        }
    }

    CDialogWnd& window() noexcept override { return m_window; }
    bool enter(int id, LPCTSTR text) override { return m_window.EnterText(id, text) != FALSE; }
    bool run(RowForm& form, const std::function<CString()>& store) override {
        return m_window.run(form, *this, store);
    }
    void savePicture(const std::string& path) override { m_window.SavePicture(path.c_str()); }

  private:
    Platform m_platform;
    CQtApplication m_application;
    Window m_window;
};

}  // namespace

bool hasScreenDialogs() noexcept {
    return true;
}

bool hasDisplay() noexcept {
    return CQtApplication::HasDisplay() != FALSE;
}

std::unique_ptr<ScreenDialog> makeScreenDialog(const FormFields& fields, const CString& title,
                                               Screen screen) {
    return std::make_unique<QtRowDialog>(fields, title, screen);
}

}  // namespace nkdt::app
