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

    bool run(RowForm& form, RowDialog& dialog, std::size_t first,
             const std::function<StoreFailure()>& store) {
        m_form = &form;
        m_dialog = &dialog;
        m_first = first;
        m_store = store;
        return DoModal() != FALSE;
    }

  protected:
    void OnInitDialog() override {
        m_form->load(*m_dialog);
        GetDlgItem(controlOf(m_first))->SetFocus();
    }

    BOOL OnOK() override {
        ClearErrors();
        StoreFailure failure{m_form->save(*m_dialog)};
        if (failure.refusals.empty()) failure = store();
        tell(failure.refusals);
        ShowMessage(failure.message);
        return failure.refusals.empty() && failure.message.IsEmpty() ? TRUE : FALSE;
    }

  private:
    // A form has a field for each column, in their order.
    int controlOf(std::size_t column) const { return m_form->fields().at(column).id; }

    // Beside the fields, with the cursor in the first of them.
    void tell(const RowForm::Refusals& refusals) {
        for (const RowForm::Refusal& refusal : refusals)
            ShowError(controlOf(refusal.column), refusal.reason);
        if (!refusals.empty()) GetDlgItem(controlOf(refusals.front().column))->SetFocus();
    }

    // A database that fails is no reason to lose what was typed.
    StoreFailure store() const {
        try {
            return m_store();
        } catch (...) {
            return {{}, takeCaughtReason()};
        }
    }

    RowForm* m_form = nullptr;
    RowDialog* m_dialog = nullptr;
    std::size_t m_first = 0;
    std::function<StoreFailure()> m_store;
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
    void lock(int id, const CString& reason) override {
        m_window.SetReadOnly(id);
        m_window.ShowError(id, reason);
    }
    bool run(RowForm& form, std::size_t first, const std::function<StoreFailure()>& store) override {
        return m_window.run(form, *this, first, store);
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
