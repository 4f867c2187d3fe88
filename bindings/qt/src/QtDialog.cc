#include "nkdt/qt/QtDialog.h"

#include <QApplication>
#include <QBuffer>
#include <QCheckBox>
#include <QPointer>
#include <QScopedValueRollback>
#include <QThread>
#include <algorithm>
#include <exception>
#include <utility>
#include <vector>

#include "CheckControl.h"
#include "EditControl.h"
#include "EditWidget.h"
#include "FormWindow.h"
#include "QtControl.h"
#include "Text.h"
#include "nkdt/DialogFields.h"
#include "nkdt/NkDtBool.h"
#include "nkfw/DataExchange.h"
#include "nkfw/Exception.h"
#include "nkfw/File.h"

using namespace nkdt::qt;

namespace {

constexpr CRuntimeClass classQtDialog{"CQtDialog", sizeof(CQtDialog), 0, nullptr, &CDialogWnd::GetThisClass};

constexpr int pictureScale = 2;

[[noreturn]] void refuse() {
    throw new CInvalidArgException;
}

// A widget without an application object, or in another thread, would end the program.
void checkThatWidgetsCanBe() {
    const auto* const application = qobject_cast<QApplication*>(QCoreApplication::instance());
    if (application == nullptr || application->thread() != QThread::currentThread()) refuse();
}

}  // namespace

struct CQtDialog::Impl {
    Impl(LPCTSTR pszTitle, LPCTSTR pszSaveText)
        : pWindow(new FormWindow(fromCp1252(pszTitle), fromCp1252(pszSaveText))) {}
    ~Impl() { delete pWindow; }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    FormWindow& Window() const {
        if (pWindow == nullptr) refuse();
        return *pWindow;
    }

    QPointer<FormWindow> pWindow;      // null when it ended with the application object
    std::vector<QtControl*> controls;  // in their order
    CDialogFields fields;
    bool bModal = false;
    std::exception_ptr thrown;  // by OnOK(), on its way past Qt
};

const CRuntimeClass* CQtDialog::GetThisClass() noexcept {
    return &classQtDialog;
}

CQtDialog::CQtDialog(LPCTSTR pszTitle, LPCTSTR pszSaveText) {
    checkThatWidgetsCanBe();
    m_impl = std::make_unique<Impl>(pszTitle, pszSaveText);
    m_impl->Window().setOnSave([this] {
        if (!m_impl->bModal) return OnOK() != FALSE;
        // Qt's event loop is no place to throw through.
        try {
            return OnOK() != FALSE;
        } catch (...) {
            m_impl->thrown = std::current_exception();
            m_impl->Window().reject();
            return false;
        }
    });
}

CQtDialog::~CQtDialog() = default;

// ---- Controls

void CQtDialog::AddEdit(int nID, LPCTSTR pszLabel, NkDtTyps eTyp, INT nTextLimit) {
    RequireFree(nID);
    Add(nID,
        std::make_unique<EditControl>(m_impl->Window(), fromCp1252(pszLabel),
                                      std::make_unique<EditWidget>(eTyp, std::min(nTextLimit, nNoLimit))));
}

void CQtDialog::AddCheck(int nID, LPCTSTR pszLabel, BOOL bThreeState) {
    RequireFree(nID);
    auto box = std::make_unique<QCheckBox>();
    box->setTristate(bThreeState != FALSE);
    Add(nID, std::make_unique<CheckControl>(m_impl->Window(), fromCp1252(pszLabel), std::move(box)));
}

void CQtDialog::AddField(int nID, LPCTSTR pszLabel, NkDtBasis& rValue) {
    RequireFree(nID);
    m_impl->fields.Bind(nID, rValue);
    AddEdit(nID, pszLabel, rValue.GetDtTyp());
    FollowField(nID);
}

void CQtDialog::AddCheckField(int nID, LPCTSTR pszLabel, NkDtBool& rValue, BOOL bThreeState) {
    RequireFree(nID);
    m_impl->fields.BindCheck(nID, rValue, bThreeState);
    AddCheck(nID, pszLabel, bThreeState);
    FollowField(nID);
}

// Before a widget is made, for which there must be a window.
void CQtDialog::RequireFree(int nID) const {
    if (m_impl->pWindow == nullptr || GetDlgItem(nID) != nullptr) refuse();
}

void CQtDialog::Add(int nID, std::unique_ptr<QtControl> pControl) {
    m_impl->controls.reserve(m_impl->controls.size() + 1);
    QtControl* const pAdded = pControl.get();
    AddControl(nID, std::move(pControl));
    m_impl->controls.push_back(pAdded);
}

// The mark of a control tells whether its field is edited.
void CQtDialog::FollowField(int nID) {
    Control(nID).bind([this, nID] { return m_impl->fields.IsEdited(*this, nID) != FALSE; });
}

QtControl& CQtDialog::Control(int nID) const {
    auto* const pControl = dynamic_cast<QtControl*>(GetDlgItem(nID));
    if (pControl == nullptr) refuse();
    return *pControl;
}

EditControl& CQtDialog::Edit(int nID) const {
    auto* const pEdit = dynamic_cast<EditControl*>(GetDlgItem(nID));
    if (pEdit == nullptr) refuse();
    return *pEdit;
}

void CQtDialog::SetTextLimit(int nID, INT nTextLimit) {
    Edit(nID).setTextLimit(std::min(nTextLimit, nNoLimit));
}

void CQtDialog::SetReadOnly(int nID, BOOL bReadOnly) {
    Edit(nID).setReadOnly(bReadOnly != FALSE);
}

// ---- What a person did

BOOL CQtDialog::IsModified(int nID) const {
    return Control(nID).isModified() ? TRUE : FALSE;
}

BOOL CQtDialog::IsModified() const {
    return std::any_of(m_impl->controls.begin(), m_impl->controls.end(),
                       [](const QtControl* control) { return control->isModified(); })
               ? TRUE
               : FALSE;
}

BOOL CQtDialog::EnterText(int nID, LPCTSTR pszText) {
    return Edit(nID).enter(fromCp1252(pszText)) ? TRUE : FALSE;
}

CWnd* CQtDialog::GetFocus() const noexcept {
    const QWidget* const focused = m_impl->pWindow != nullptr ? m_impl->pWindow->focusWidget() : nullptr;
    if (focused == nullptr) return nullptr;
    for (QtControl* const control : m_impl->controls) {
        if (control->isOn(focused)) return control;
    }
    return nullptr;
}

// ---- Messages

void CQtDialog::ShowError(int nID, LPCTSTR pszText) {
    Control(nID).setMessage(fromCp1252(pszText));
}

void CQtDialog::ShowError(int nID, const NkEhBasis& rError) {
    ShowError(nID, CDialogFields::ReasonOf(rError));
}

void CQtDialog::ShowMessage(LPCTSTR pszText) {
    m_impl->Window().setMessage(fromCp1252(pszText));
}

void CQtDialog::ClearErrors() {
    for (QtControl* const control : m_impl->controls)
        control->setMessage({});
    ShowMessage(nullptr);
}

// ---- Exchange

void CQtDialog::DoDataExchange(CDataExchange* pDX) {
    if (pDX->m_bSaveAndValidate) {
        SaveFields(pDX);
    } else {
        LoadFields(pDX);
    }
}

void CQtDialog::LoadFields(CDataExchange* pDX) {
    CDialogFields::Refusals refusals = m_impl->fields.Load(*this);
    for (QtControl* const control : m_impl->controls)
        control->updateMark();
    Tell(pDX, refusals);
}

void CQtDialog::SaveFields(CDataExchange* pDX) {
    CDialogFields::Refusals refusals = m_impl->fields.Save(*this);
    Tell(pDX, refusals);
}

// The first refusal is the exchange's, which puts the focus there.
void CQtDialog::Tell(CDataExchange* pDX, CDialogFields::Refusals& rRefusals) {
    if (rRefusals.empty()) return;
    for (const CDialogFields::Refusal& refusal : rRefusals)
        ShowError(refusal.nID, *refusal.pError);
    CDialogFields::Refusal& first = rRefusals.front();
    if (dynamic_cast<EditControl*>(GetDlgItem(first.nID)) != nullptr) {
        pDX->PrepareEditCtrl(first.nID);
    } else {
        pDX->PrepareCtrl(first.nID);
    }
    throw first.pError.release();
}

void CQtDialog::OnInitDialog() {
    UpdateData(FALSE);
}

BOOL CQtDialog::OnOK() {
    ClearErrors();
    CDataExchange exchange(this, TRUE);
    try {
        DoDataExchange(&exchange);
        return TRUE;
    } catch (CUserException* pException) {
        pException->Delete();  // what is wrong was said already
    } catch (NkEhBasis* caught) {
        auto* const pControl = dynamic_cast<QtControl*>(exchange.m_pLastControl);
        if (pControl == nullptr) throw;
        const std::unique_ptr<NkEhBasis> error(caught);
        if (!pControl->hasMessage()) pControl->setMessage(fromCp1252(CDialogFields::ReasonOf(*error)));
    }
    if (exchange.m_pLastControl != nullptr) exchange.m_pLastControl->SetFocus();
    return FALSE;
}

// ---- On the screen

BOOL CQtDialog::DoModal() {
    FormWindow& window = m_impl->Window();
    if (m_impl->bModal) refuse();
    OnInitDialog();
    int nResult = QDialog::Rejected;
    {
        const QScopedValueRollback modal(m_impl->bModal, true);
        nResult = window.exec();
    }
    if (m_impl->thrown != nullptr) std::rethrow_exception(std::exchange(m_impl->thrown, nullptr));
    return nResult == QDialog::Accepted ? TRUE : FALSE;
}

void CQtDialog::SavePicture(LPCTSTR pszPath) {
    QBuffer buffer;
    if (!m_impl->Window().picture(pictureScale).save(&buffer, "PNG"))
        throw new CFileException(CFileException::genericException, 0, pszPath);
    CFile file(pszPath, CFile::modeWrite | CFile::modeCreate);
    file.Write(buffer.data().constData(), static_cast<UINT>(buffer.size()));
    file.Close();
}

QDialog* CQtDialog::GetDialog() const noexcept {
    return m_impl->pWindow;
}

QWidget* CQtDialog::GetWidget(int nID) const {
    return &Control(nID).widget();
}
