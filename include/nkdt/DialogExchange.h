#pragma once

/// @file
/// The dialog data exchange of the value classes: a control's text or check mark into a value, and back.
///
/// @code
/// void Artikeldialog::DoDataExchange(CDataExchange* pDX) {
///     DDX_NkDtTyp(pDX, idPreis, m_dPreis);
///     DDX_NkDtTypCheck(pDX, idLieferbar, m_fLieferbar);
/// }
/// @endcode
///
/// A control shows a value's user-interface text (`ConvToOFL`), by the value's own format or the default of
/// its class. Such texts do not hold every value: a double shows two places by default, a duration no ticks
/// below a minute. So saving what loading wrote can round the value; a program saves only the fields whose
/// text differs from what loading wrote.
///
/// Errors, all thrown as `NkDtExcep*`; no message is shown, and CDataExchange::Fail() is not called:
/// - the value's own error when it refuses the text, or when its format cannot show it, unchanged;
/// - error 22 "Folgefehler aufgrund einer MFC-Exception" when the control does not take the text whole;
/// - error 1 "Default-Catch / Folgefehler" when the framework throws a `CException*`, for an id without a
///   control, say. The error owns that exception (`GetException()`); its message is the cause (number 22).
///
/// The value changes only when all of it succeeds.

#include "nkdt/NkDtTypes.h"
#include "nkfw/DataExchange.h"
#include "nkfw/Export.h"

/// @name Edit controls
/// Saving: an empty control clears the value; any other text is read by the value's `SetFromOFL`. A control
/// that has a text but does not hand it out (`GetWindowText` gives 0) leaves the value alone.
/// Loading: the control shows the value's `ConvToOFL`; an undefined value shows an empty text.
/// @param pDX    the exchange, not null
/// @param nIDC   id of the edit control
/// @param rValue the value
/// @{
NKDT_API void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtLong& rValue);
NKDT_API void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtShort& rValue);
NKDT_API void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtDouble& rValue);
NKDT_API void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtDecimal& rValue);
NKDT_API void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtBool& rValue);
NKDT_API void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtChar& rValue);
NKDT_API void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtDateTime& rValue);
NKDT_API void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtDateZp& rValue);
NKDT_API void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtString& rValue);
NKDT_API void DDX_NkDtTyp(CDataExchange* pDX, int nIDC, NkDtTime& rValue);
/// @}

/// Exchanges a check box with a truth value.
/// Saving: the check state (0, 1, or 2 on a three-state box) becomes the value, which is defined then.
/// Loading: 0 unchecks; 2 is indeterminate on a three-state box; every other number checks. A missing value
/// unchecks, a null one shows the number that it holds.
/// @param pDX    the exchange, not null
/// @param nIDC   id of the check box
/// @param rValue the value
NKDT_API void DDX_NkDtTypCheck(CDataExchange* pDX, int nIDC, NkDtBool& rValue);
