#include "nkdt/qt/QtDialog.h"

#include <QApplication>
#include <QBuffer>
#include <QCheckBox>
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
#include "nkdt/DialogExchange.h"
#include "nkdt/NkDt.h"
#include "nkeh/NkEhBasis.h"
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

using Exchange = void (*)(CDataExchange*, int, NkDtBasis&);

template <class Value>
void exchangeText(CDataExchange* pDX, int nID, NkDtBasis& rValue) {
    DDX_NkDtTyp(pDX, nID, static_cast<Value&>(rValue));
}

void exchangeCheck(CDataExchange* pDX, int nID, NkDtBasis& rValue) {
    DDX_NkDtTypCheck(pDX, nID, static_cast<NkDtBool&>(rValue));
}

Exchange exchangeOf(NkDtTyps eTyp) {
    switch (eTyp) {
        case NkDtTypChar:
            return &exchangeText<NkDtChar>;
        case NkDtTypString:
            return &exchangeText<NkDtString>;
        case NkDtTypLong:
            return &exchangeText<NkDtLong>;
        case NkDtTypShort:
            return &exchangeText<NkDtShort>;
        case NkDtTypDouble:
            return &exchangeText<NkDtDouble>;
        case NkDtTypDecimal:
            return &exchangeText<NkDtDecimal>;
        case NkDtTypBool:
            return &exchangeText<NkDtBool>;
        case NkDtTypDateTime:
            return &exchangeText<NkDtDateTime>;
        case NkDtTypTime:
            return &exchangeText<NkDtTime>;
        case NkDtTypDateZp:
            return &exchangeText<NkDtDateZp>;
        case NkDtTypBasis:
            break;
    }
    refuse();
}

std::unique_ptr<NkDtBasis> copyOf(const NkDtBasis& value) {
    std::unique_ptr<NkDtBasis> copy(value.NewObject());
    copy->SetFormat(value.GetFormat());
    return copy;
}

}  // namespace

/// A control with its value.
struct CQtDialog::Bound {
    int nID;
    QtControl* pControl;
    NkDtBasis* pValue;
    Exchange exchange;
};

struct CQtDialog::Impl {
    Impl(LPCTSTR pszTitle, LPCTSTR pszSaveText) : window(fromCp1252(pszTitle), fromCp1252(pszSaveText)) {}

    FormWindow window;
    std::vector<QtControl*> controls;  // in their order
    std::vector<Bound> bound;
    bool fModal = false;
    std::exception_ptr thrown;  // by OnOK(), on its way past Qt
};

const CRuntimeClass* CQtDialog::GetThisClass() noexcept {
    return &classQtDialog;
}

CQtDialog::CQtDialog(LPCTSTR pszTitle, LPCTSTR pszSaveText) {
    checkThatWidgetsCanBe();
    m_impl = std::make_unique<Impl>(pszTitle, pszSaveText);
    m_impl->window.setOnSave([this] {
        if (!m_impl->fModal) return OnOK() != FALSE;
        // Qt's event loop is no place to throw through.
        try {
            return OnOK() != FALSE;
        } catch (...) {
            m_impl->thrown = std::current_exception();
            m_impl->window.reject();
            return false;
        }
    });
}

CQtDialog::~CQtDialog() = default;

// ---- Controls

void CQtDialog::AddEdit(int nID, LPCTSTR pszLabel, NkDtTyps eTyp, INT nTextLimit) {
    if (GetDlgItem(nID) != nullptr) refuse();
    auto control = std::make_unique<EditControl>(m_impl->window, fromCp1252(pszLabel),
                                                 new EditWidget(eTyp, std::min(nTextLimit, nNoLimit)));
    QtControl* const pControl = control.get();
    AddControl(nID, std::move(control));
    m_impl->controls.push_back(pControl);
}

void CQtDialog::AddCheck(int nID, LPCTSTR pszLabel, BOOL bThreeState) {
    if (GetDlgItem(nID) != nullptr) refuse();
    auto* const box = new QCheckBox;
    box->setTristate(bThreeState != FALSE);
    auto control = std::make_unique<CheckControl>(m_impl->window, fromCp1252(pszLabel), box);
    QtControl* const pControl = control.get();
    AddControl(nID, std::move(control));
    m_impl->controls.push_back(pControl);
}

void CQtDialog::AddField(int nID, LPCTSTR pszLabel, NkDtBasis& rValue) {
    const Exchange exchange = exchangeOf(rValue.GetDtTyp());
    AddEdit(nID, pszLabel, rValue.GetDtTyp());
    m_impl->bound.push_back({nID, &Control(nID), &rValue, exchange});
}

void CQtDialog::AddCheckField(int nID, LPCTSTR pszLabel, NkDtBool& rValue) {
    AddCheck(nID, pszLabel);
    m_impl->bound.push_back({nID, &Control(nID), &rValue, &exchangeCheck});
}

QtControl& CQtDialog::Control(int nID) const {
    auto* const pControl = dynamic_cast<QtControl*>(GetDlgItem(nID));
    if (pControl == nullptr) refuse();
    return *pControl;
}

void CQtDialog::SetTextLimit(int nID, INT nTextLimit) {
    auto* const pEdit = dynamic_cast<EditControl*>(GetDlgItem(nID));
    if (pEdit == nullptr) refuse();
    pEdit->setTextLimit(std::min(nTextLimit, nNoLimit));
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
    auto* const pEdit = dynamic_cast<EditControl*>(GetDlgItem(nID));
    if (pEdit == nullptr) refuse();
    return pEdit->enter(fromCp1252(pszText)) ? TRUE : FALSE;
}

CWnd* CQtDialog::GetFocus() const noexcept {
    const QWidget* const focused = m_impl->window.focusWidget();
    for (QtControl* const control : m_impl->controls) {
        if (control->widget() == focused) return control;
    }
    return nullptr;
}

// ---- Messages

void CQtDialog::ShowError(int nID, LPCTSTR pszText) {
    Control(nID).setMessage(fromCp1252(pszText));
}

void CQtDialog::ShowError(int nID, const NkEhBasis& rError) {
    ShowRefusal(Control(nID), rError);
}

void CQtDialog::ShowRefusal(QtControl& rControl, const NkEhBasis& rError) {
    const LPCTSTR pszCause = rError.GetCauseText();
    rControl.setMessage(fromCp1252(*pszCause != '\0' ? pszCause : rError.GetErrorText()));
}

void CQtDialog::ShowMessage(LPCTSTR pszText) {
    m_impl->window.setMessage(fromCp1252(pszText));
}

void CQtDialog::ClearErrors() {
    for (QtControl* const control : m_impl->controls)
        control->setMessage({});
    ShowMessage(nullptr);
}

// ---- Exchange

void CQtDialog::DoDataExchange(CDataExchange* pDX) {
    if (pDX->m_bSaveAndValidate) {
        SaveBound(pDX);
    } else {
        LoadBound(pDX);
    }
}

void CQtDialog::LoadBound(CDataExchange* pDX) {
    for (const Bound& field : m_impl->bound)
        field.exchange(pDX, field.nID, *field.pValue);
}

void CQtDialog::SaveBound(CDataExchange* pDX) {
    std::vector<std::pair<NkDtBasis*, std::unique_ptr<NkDtBasis>>> taken;
    std::unique_ptr<NkEhBasis> first;
    int nFirst = 0;
    for (const Bound& field : m_impl->bound) {
        if (!field.pControl->isModified()) continue;
        auto copy = copyOf(*field.pValue);
        try {
            field.exchange(pDX, field.nID, *copy);
            taken.emplace_back(field.pValue, std::move(copy));
        } catch (NkEhBasis* caught) {
            std::unique_ptr<NkEhBasis> error(caught);
            ShowRefusal(*field.pControl, *error);
            if (first != nullptr) continue;
            first = std::move(error);
            nFirst = field.nID;
        }
    }
    if (first != nullptr) {
        pDX->PrepareCtrl(nFirst);
        throw first.release();
    }
    for (const auto& [pValue, copy] : taken)
        pValue->Assign(*copy);
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
        if (!pControl->hasMessage()) ShowRefusal(*pControl, *error);
    }
    if (exchange.m_pLastControl != nullptr) exchange.m_pLastControl->SetFocus();
    return FALSE;
}

// ---- On the screen

BOOL CQtDialog::DoModal() {
    OnInitDialog();
    m_impl->fModal = true;
    const int nResult = m_impl->window.exec();
    m_impl->fModal = false;
    if (m_impl->thrown != nullptr) std::rethrow_exception(std::exchange(m_impl->thrown, nullptr));
    return nResult == QDialog::Accepted ? TRUE : FALSE;
}

void CQtDialog::SavePicture(LPCTSTR pszPath) {
    QBuffer buffer;
    m_impl->window.picture(pictureScale).save(&buffer, "PNG");
    CFile file(pszPath, CFile::modeWrite | CFile::modeCreate);
    file.Write(buffer.data().constData(), static_cast<UINT>(buffer.size()));
    file.Close();
}

QDialog* CQtDialog::GetDialog() const noexcept {
    return &m_impl->window;
}

QWidget* CQtDialog::GetWidget(int nID) const {
    return Control(nID).widget();
}
