// NkDtDateTime: construction, the text setters, the object's operations.

#include "nkdt/NkDtDateTime.h"

#include "DateTimePart.h"
#include "nkdt/NkDtShort.h"

namespace nkdt {

template class Record<NkDtDateTime_Imp>;
template class StoredValue<NkDtDateTime>;

}  // namespace nkdt

using namespace nkdt;

namespace {

constexpr CRuntimeClass classNkDtDateTime{"NkDtDateTime", sizeof(NkDtDateTime), 1,
                                          &NkDtDateTime::CreateObject, &NkDtBasis::GetThisClass};
const CClassRegistration registration{classNkDtDateTime};

using Imp = NkDtDateTime_Imp;
using Fields = DateTimeFields;

constexpr Origin originOf(const char* operation) {
    return {".\\Dtdatime.cc", "NkDtDateTime", operation};
}

constexpr SHORT hourOfNow = 32767;

Fields build(LONGLONG day, LONGLONG month, LONGLONG year, LONGLONG hour = 0, LONGLONG minute = 0,
             LONGLONG second = 0) {
    Fields fields;
    fields.setDate(day, month, year);
    fields.setTime(hour, minute, second);
    return fields;
}

Fields build(LONGLONG hour, LONGLONG minute) {
    if (hour == hourOfNow) return Imp::now();
    Fields fields;
    fields.setHour(hour);
    fields.setMinute(minute);
    return fields;
}

Fields build(LPCTSTR pszText, NkDtDateTime::FormOfDateTimeString eForm) {
    static constexpr Origin origin = {".\\Imp\\dtdatimi.cc", "DtDateTime_Imp",
                                      "NkDtDateTime_Imp(LPCTSTR,FormOfDateTimeString)"};
    constexpr std::size_t startOfTime = 11;
    constexpr std::size_t shortest = 16;
    requireText(pszText, origin);
    const std::string_view text = pszText;
    Fields fields;
    switch (eForm) {
        case NkDtDateTime::DateOnly:
            Imp::parseDate(fields, text);
            break;
        case NkDtDateTime::TimeOnly:
            Imp::parseTime(fields, text);
            break;
        default:
            if (text.size() < shortest) raise(origin, NkDtErrInitialwert);
            Imp::parseDate(fields, text);
            Imp::parseTime(fields, text.substr(startOfTime));
            break;
    }
    return fields;
}

Fields build(const NkDtString& text, NkDtDateTime::FormOfDateTimeString eForm) {
    return text.IsDefined() && !text.IsEmpty() ? build(static_cast<LPCTSTR>(text), eForm) : Fields();
}

/// What the fields are built from when all these values are defined, which builds the empty ones otherwise.
template <class... Values>
BOOL areDefined(const Values&... values) {
    return (values.IsDefined() && ...) ? TRUE : FALSE;
}

template <class... Values>
Fields buildOf(const Values&... values) {
    return areDefined(values...) ? build(values.GetValue()...) : Fields();
}

bool isValid(const COleDateTime& date) {
    return date.GetStatus() == COleDateTime::valid;
}

constexpr Origin constructInMode = originOf("NkDtDateTime(NkDtWorkingMode)");
constexpr Origin constructFromTm = originOf("NkDtDateTime(struct tm*)");
constexpr Origin constructFromOleDate = originOf("NkDtDateTime(COleDateTime&)");
constexpr Origin constructFromTime = originOf("NkDtDateTime(time_t)");
constexpr Origin constructFromDateValues = originOf("NkDtDateTime(NkDtShort&,NkDtShort&,NkDtShort&)");
constexpr Origin constructFromSix = originOf("NkDtDateTime(SHORT,SHORT,SHORT,SHORT,SHORT,SHORT)");
constexpr Origin constructFromTwo = originOf("NkDtDateTime(SHORT,SHORT)");
constexpr Origin constructFromTwoValues = originOf("NkDtDateTime(NkDtShort&,NkDtShort&)");
constexpr Origin constructFromSixValues =
    originOf("NkDtDateTime(NkDtShort&,NkDtShort&,NkDtShort&,NkDtShort&,NkDtShort&,NkDtShort&)");
constexpr Origin constructFromText = originOf("NkDtDateTime(LPCTSTR const,FormOfDateTimeString)");
constexpr Origin constructFromTextValue = originOf("NkDtDateTime(NkDtString&,FormOfDateTimeString)");
constexpr Origin constructCopy = originOf("NkDtDateTime(NkDtDateTime&)");

}  // namespace

// Construction

NkDtDateTime::NkDtDateTime(NkDtWorkingMode eMode) try
    : StoredValue(FALSE, eMode, eMode == NkDtWmDefined ? Imp::now() : Fields()) {
} catch (...) {
    raiseReplacing(constructInMode);
}

NkDtDateTime::NkDtDateTime(struct tm* pTime) try : StoredValue(TRUE, NkDtWmDefault, Imp::of(pTime)) {
} catch (...) {
    raiseReplacing(constructFromTm);
}

NkDtDateTime::NkDtDateTime(const COleDateTime& r) try
    : StoredValue(
          isValid(r), NkDtWmDefault,
          isValid(r) ? build(r.GetDay(), r.GetMonth(), r.GetYear(), r.GetHour(), r.GetMinute(), r.GetSecond())
                     : Fields()) {
} catch (...) {
    raiseReplacing(constructFromOleDate);
}

NkDtDateTime::NkDtDateTime(time_t t) try : StoredValue(TRUE, NkDtWmDefault, Imp::of(t)) {
} catch (...) {
    raiseReplacing(constructFromTime);
}

NkDtDateTime::NkDtDateTime(const NkDtShort& nDay, const NkDtShort& nMonth, const NkDtShort& nYear) try
    : StoredValue(areDefined(nDay, nMonth, nYear), NkDtWmDefault, buildOf(nDay, nMonth, nYear)) {
} catch (...) {
    raiseReplacing(constructFromDateValues);
}

NkDtDateTime::NkDtDateTime(SHORT nDay, SHORT nMonth, SHORT nYear, SHORT nHour, SHORT nMin, SHORT nSecond) try
    : StoredValue(TRUE, NkDtWmDefault, build(nDay, nMonth, nYear, nHour, nMin, nSecond)) {
} catch (...) {
    raiseReplacing(constructFromSix);
}

NkDtDateTime::NkDtDateTime(SHORT nHour, SHORT nMin) try
    : StoredValue(TRUE, NkDtWmDefault, build(nHour, nMin)) {
} catch (...) {
    raiseReplacing(constructFromTwo);
}

NkDtDateTime::NkDtDateTime(const NkDtShort& nHour, const NkDtShort& nMin) try
    : StoredValue(areDefined(nHour, nMin), NkDtWmDefault, buildOf(nHour, nMin)) {
} catch (...) {
    raiseReplacing(constructFromTwoValues);
}

NkDtDateTime::NkDtDateTime(const NkDtShort& nDay, const NkDtShort& nMonth, const NkDtShort& nYear,
                           const NkDtShort& nHour, const NkDtShort& nMin, const NkDtShort& nSecond) try
    : StoredValue(areDefined(nDay, nMonth, nYear, nHour, nMin, nSecond), NkDtWmDefault,
                  buildOf(nDay, nMonth, nYear, nHour, nMin, nSecond)) {
} catch (...) {
    raiseReplacing(constructFromSixValues);
}

NkDtDateTime::NkDtDateTime(LPCTSTR pszText, FormOfDateTimeString eForm) try
    : StoredValue(TRUE, NkDtWmDefault, build(pszText, eForm)) {
} catch (...) {
    raiseReplacing(constructFromText);
}

NkDtDateTime::NkDtDateTime(const NkDtString& r, FormOfDateTimeString eForm) try
    : StoredValue(r, build(r, eForm)) {
} catch (...) {
    raiseReplacing(constructFromTextValue);
}

NkDtDateTime::NkDtDateTime(const NkDtDateTime& r) try : StoredValue(r) {
} catch (...) {
    raiseReplacing(constructCopy);
}

NkDtDateTime::~NkDtDateTime() = default;

const CRuntimeClass* NkDtDateTime::GetThisClass() noexcept {
    return &classNkDtDateTime;
}

CObject* NkDtDateTime::CreateObject() {
    return new NkDtDateTime;
}

NkDtDateTime* NkDtDateTime::NewObject() const {
    return new NkDtDateTime(*this);
}

// Assignment

NkDtDateTime& NkDtDateTime::operator=(const NkDtDateTime& r) {
    CopyFrom(r);
    return *this;
}

NkDtDateTime& NkDtDateTime::operator=(const COleDateTime& r) {
    if (!isValid(r)) {
        Clear();
        return *this;
    }
    const Fields& stored = Stored();
    const bool isOther = stored.year() != r.GetYear() || stored.month() != r.GetMonth() ||
                         stored.tm_mday != r.GetDay() || stored.tm_hour != r.GetHour() ||
                         stored.tm_min != r.GetMinute() || stored.tm_sec != r.GetSecond();
    if (IsDefined() && isOther) SetModified(TRUE);
    SetYear(r.GetYear());
    SetMonth(r.GetMonth());
    SetDay365(r.GetDay());
    SetHour(r.GetHour());
    SetMin(r.GetMinute());
    SetSecond(r.GetSecond());
    SetDefined(TRUE);
    return *this;
}

void NkDtDateTime::Clear() {
    static constexpr Origin origin = originOf("Clear()");
    wrapped(origin, [this] { StoredValue::Clear(); });
}

// From text

void NkDtDateTime::SetDateTime(LPCTSTR pszText) {
    static constexpr Origin origin = originOf("SetDateTime(LPCTSTR)");
    wrapped(origin, [&] {
        SetDefined(TRUE);
        Fields& fields = InPlace();
        changeFields(*this, fields, [&] {
            if (pszText == nullptr) {
                fields = Imp::now();
                return;
            }
            Imp::parseDateAndTime(fields, pszText);
        });
    });
}

void NkDtDateTime::SetDate(LPCTSTR pszText) {
    static constexpr Origin origin = originOf("SetDate(LPCTSTR)");
    wrapped(origin, [&] {
        requireText(pszText, origin);
        SetDefined(TRUE);
        changeFields(*this, InPlace(), [&] { Imp::parseDate(InPlace(), pszText); });
    });
}

void NkDtDateTime::SetTime(LPCTSTR pszText) {
    static constexpr Origin origin = originOf("SetTime(LPCTSTR)");
    wrapped(origin, [&] {
        requireText(pszText, origin);
        changeFields(*this, InPlace(), [&] {
            if (!IsDefined()) {
                InPlace().tm_mday = 1;
                SetDefined(TRUE);
            }
            Imp::parseTime(InPlace(), pszText);
        });
    });
}

// Access

struct tm NkDtDateTime::GetValue() const {
    static constexpr Origin origin = originOf("GetValue()");
    if (IsMissing()) raise(origin, NkDtErrUndefiniert);
    return Imp::toTm(Stored());
}

NkDtDateTime::operator struct tm() const {
    static constexpr Origin origin = originOf("operator struct tm()");
    if (IsMissing()) raise(origin, NkDtErrUndefiniert);
    return Imp::toTm(Stored());
}
