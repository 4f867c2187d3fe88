#include "Literal1252.h"
#include "Raise.h"
#include "nkdt/DialogExchange.h"
#include "nkdt/NkDtBool.h"
#include "nkdt/NkDtChar.h"
#include "nkdt/NkDtDateTime.h"
#include "nkdt/NkDtDateZp.h"
#include "nkdt/NkDtDecimal.h"
#include "nkdt/NkDtDouble.h"
#include "nkdt/NkDtLong.h"
#include "nkdt/NkDtShort.h"
#include "nkdt/NkDtString.h"
#include "nkdt/NkDtTime.h"
#include "nkfw/Exception.h"
#include "nkfw/String.h"

using namespace nkdt;
using namespace nkfw::literals;

namespace {

constexpr Origin originOf(const char* operation) {
    return {".\\DTDDXFKT.cc", "DDX-Funktionen für NkDt-Klassen"_cp1252, operation};
}

/// Throws error 1 in place of the framework exception, which the error owns from now on.
[[noreturn]] void raiseOwning(CException* pException, const Origin& origin) {
    auto* const error = new NkDtExcep(pException, TRUE, origin.module, origin.classText, origin.operation,
                                      NkDtErrFolgefehler, 0, FALSE);
    TCHAR szMessage[256];
    pException->GetErrorMessage(szMessage, sizeof szMessage);
    error->SetCause(NkDtErrFrameworkException, szMessage);
    throw error;
}

/// Runs an exchange; a framework exception inside it reaches the caller as error 1, library errors as they
/// are.
template <class Body>
void exchange(const Origin& origin, Body&& body) {
    try {
        body();
    } catch (CException* pException) {
        raiseOwning(pException, origin);
    }
}

void save(const CWnd& control, NkDtBasis& value) {
    if (control.GetWindowTextLength() == 0) {
        value.Clear();
        return;
    }
    CString text;
    if (control.GetWindowText(text) != 0) value.SetFromOFL(text, nullptr);
}

void load(CWnd& control, const NkDtBasis& value, const Origin& origin) {
    if (!control.SetWindowText(value.ConvToOFL(nullptr))) raise(origin, NkDtErrFrameworkException);
}

/// The exchange of every class with an edit control.
void exchangeText(CDataExchange* pDX, int nIDC, NkDtBasis& value, const Origin& origin) {
    exchange(origin, [&] {
        CWnd* const pControl = pDX->PrepareEditCtrl(nIDC);
        if (pDX->m_bSaveAndValidate) {
            save(*pControl, value);
        } else {
            load(*pControl, value, origin);
        }
    });
}

}  // namespace

void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtLong& rValue) {
    static constexpr Origin origin = originOf("DDX_NkDtTyp(CDataExchange*,int,NkDtLong&)");
    exchangeText(pDX, nIDC, rValue, origin);
}

void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtShort& rValue) {
    static constexpr Origin origin = originOf("DDX_NkDtTyp(CDataExchange*,int,NkDtShort&)");
    exchangeText(pDX, nIDC, rValue, origin);
}

void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtDouble& rValue) {
    static constexpr Origin origin = originOf("DDX_NkDtTyp(CDataExchange*,int,NkDtDouble&)");
    exchangeText(pDX, nIDC, rValue, origin);
}

void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtDecimal& rValue) {
    static constexpr Origin origin = originOf("DDX_NkDtTyp(CDataExchange*,int,NkDtDecimal&)");
    exchangeText(pDX, nIDC, rValue, origin);
}

void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtBool& rValue) {
    static constexpr Origin origin = originOf("DDX_NkDtTyp(CDataExchange*,int,NkDtBool&)");
    exchangeText(pDX, nIDC, rValue, origin);
}

void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtChar& rValue) {
    static constexpr Origin origin = originOf("DDX_NkDtTyp(CDataExchange*,int,NkDtChar&)");
    exchangeText(pDX, nIDC, rValue, origin);
}

void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtDateTime& rValue) {
    static constexpr Origin origin = originOf("DDX_NkDtTyp(CDataExchange*,int,NkDtDateTime&)");
    exchangeText(pDX, nIDC, rValue, origin);
}

void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtDateZp& rValue) {
    static constexpr Origin origin = originOf("DDX_NkDtTyp(CDataExchange*,int,NkDtDateZp&)");
    exchangeText(pDX, nIDC, rValue, origin);
}

void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtString& rValue) {
    // The one text of another form; it is part of the interface.
    static constexpr Origin origin = originOf("DDX_NkDtString(CDataExchange*,int,NkDtString&)");
    exchangeText(pDX, nIDC, rValue, origin);
}

void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtTime& rValue) {
    static constexpr Origin origin = originOf("DDX_NkDtTyp(CDataExchange*,int,NkDtTime&)");
    exchangeText(pDX, nIDC, rValue, origin);
}

void DDX_NkDtTypCheck(CDataExchange* pDX, int nIDC, NkDtBool& rValue) {
    static constexpr Origin origin = originOf("DDX_NkDtTypCheck(CDataExchange*,int,NkDtBool &)");
    exchange(origin, [&] {
        int nCheck = 0;
        if (pDX->m_bSaveAndValidate) {
            DDX_Check(pDX, nIDC, nCheck);
            rValue = nCheck;
        } else {
            if (!rValue.IsMissing()) nCheck = rValue.GetValue();
            DDX_Check(pDX, nIDC, nCheck);
        }
    });
}
