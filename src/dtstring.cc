#include "nkdt/NkDtString.h"

#include "Imp/dtbooli.h"
#include "Imp/dtdatimi.h"
#include "Imp/dtdoubli.h"
#include "Imp/dtstrini.h"
#include "NarrowText.h"
#include "ValueRecords.h"
#include "nkdt/NkDtBool.h"
#include "nkdt/NkDtChar.h"
#include "nkdt/NkDtDateZp.h"
#include "nkdt/NkDtDecimal.h"
#include "nkdt/NkDtDouble.h"
#include "nkdt/NkDtLong.h"
#include "nkdt/NkDtShort.h"
#include "nkdt/NkDtTime.h"

using namespace nkdt;

template class nkdt::Record<NkDtString_Imp>;

namespace {

constexpr CRuntimeClass classNkDtString{"NkDtString", sizeof(NkDtString), 1, &NkDtString::CreateObject,
                                        &NkDtBasis::GetThisClass};
const CClassRegistration registration{classNkDtString};

constexpr Origin originFromWide = {".\\dtstring.cc", "NkDtString", "NkDtString(BSTR&)"};

constexpr INT intAllocLength = 11;   // "-2147483648"
constexpr INT wideAllocLength = 20;  // "-9223372036854775808"
constexpr INT doubleAllocLength = 316;
constexpr INT decimalAllocLength = 38;
constexpr std::size_t decimalTextSize = 33;
constexpr INT dateTimeAllocLength = 19;  // "05.03.2004 14:07:09"
constexpr INT dateAllocLength = 10;
constexpr std::size_t durationTextSize = 12;

using TextRecords = NewRecords<NkDtString_Imp>;

template <class... Args>
TextRecords newText(const State& state, Args&&... args) {
    return newRecords<NkDtString_Imp>(state, std::forward<Args>(args)...);
}

/// A defined text in the default mode.
template <class... Args>
TextRecords newDefined(Args&&... args) {
    return newText(newState(TRUE, NkDtWmDefault), std::forward<Args>(args)...);
}

TextRecords newDigits(const State& state, LONG n) {
    const auto bits = static_cast<ULONGLONG>(n);
    return newText(state, n < 0, n < 0 ? ULONGLONG{0} - bits : bits, intAllocLength);
}

/// The state of a value with its digits, or with the empty text when it is undefined.
template <class Value>
TextRecords newDigitsOf(const Value& value) {
    const State& state = ValueAccess::state(value);
    return value.IsDefined() ? newDigits(state, static_cast<LONG>(value.GetValue())) : newText(state);
}

TextRecords newDigitsOf(const NkDtDouble& value) {
    const State& state = ValueAccess::state(value);
    if (!value.IsDefined()) return newText(state);
    NkDtDouble_Imp::Text text;
    return newText(state, NkDtDouble_Imp::shortText(value, text), doubleAllocLength);
}

TextRecords newDigitsOf(const NkDtDecimal& value) {
    const State& state = ValueAccess::state(value);
    if (!value.IsDefined()) return newText(state);
    char text[decimalTextSize];
    return newText(state, std::string_view(value.DecimalToAscii(text)), decimalAllocLength);
}

/// At most as many characters as are allocated.
TextRecords newTextOf(const NkDtDateTime& value, USHORT form, INT allocLength) {
    const State& state = ValueAccess::state(value);
    if (!value.IsDefined()) return newText(state);
    NkDtDateTime_Imp::Text text;
    const std::string_view whole =
        NkDtDateTime_Imp::text(NkDtDateTime_Imp::unchecked(value.GetValue()), form, text);
    return newText(state, whole.substr(0, static_cast<std::size_t>(allocLength)), allocLength);
}

TextRecords newTextOf(const NkDtTime& value) {
    const State& state = ValueAccess::state(value);
    if (!value.IsDefined()) return newText(state);
    char text[durationTextSize];
    return newText(state, std::string_view(value.GetValue(text, sizeof text)));
}

TextRecords newCharacterOf(const NkDtChar& value) {
    const State& state = ValueAccess::state(value);
    return value.IsDefined() ? newText(state, static_cast<TCHAR>(value)) : newText(state);
}

TextRecords newWordOf(const NkDtBool& value) {
    const State& state = ValueAccess::state(value);
    if (!value.IsDefined()) return newText(state);
    return newText(state, std::string_view(NkDtBool_Imp::word(value.GetValue())));
}

}  // namespace

NkDtString::NkDtString(NkDtWorkingMode eMode) : NkDtBasis(FALSE, eMode) {}

NkDtString::NkDtString(LPCTSTR psz, INT nLen, INT nAlloc) : NkDtString(newDefined(psz, nLen, nAlloc)) {}

NkDtString::NkDtString(const CString& r) : NkDtString(r.GetString(), NkDtStrLenAuto, NkDtStrLenAuto) {}

NkDtString::NkDtString(const OLECHAR* pwsz) : NkDtString(narrowText(pwsz, originFromWide)) {}

NkDtString::NkDtString(CHAR ch) : NkDtString(newDefined(ch)) {}

NkDtString::NkDtString(INT n) : NkDtString(newDigits(newState(TRUE, NkDtWmDefault), n)) {}

NkDtString::NkDtString(UINT n) : NkDtString(newDefined(false, ULONGLONG{n}, intAllocLength)) {}

NkDtString::NkDtString(Digits digits)
    : NkDtString(newDefined(digits.fNegative, digits.ulMagnitude, wideAllocLength)) {}

NkDtString::NkDtString(const NkDtLong& r) : NkDtString(newDigitsOf(r)) {}

NkDtString::NkDtString(const NkDtShort& r) : NkDtString(newDigitsOf(r)) {}

NkDtString::NkDtString(const NkDtDouble& r) : NkDtString(newDigitsOf(r)) {}

NkDtString::NkDtString(const NkDtDecimal& r) : NkDtString(newDigitsOf(r)) {}

NkDtString::NkDtString(const NkDtChar& r) : NkDtString(newCharacterOf(r)) {}

NkDtString::NkDtString(const NkDtBool& r) : NkDtString(newWordOf(r)) {}

NkDtString::NkDtString(const NkDtDateTime& r)
    : NkDtString(newTextOf(r, NkDtDateTime_Imp::dateAndTime, dateTimeAllocLength)) {}

NkDtString::NkDtString(const NkDtDateZp& r)
    : NkDtString(newTextOf(r, NkDtDateTime_Imp::date, dateAllocLength)) {}

NkDtString::NkDtString(const NkDtTime& r) : NkDtString(newTextOf(r)) {}

NkDtString::NkDtString(const NkDtString& r) : NkDtString(newText(ValueAccess::state(r), r.Text())) {}

NkDtString::NkDtString(const NewRecords<NkDtString_Imp>& records) noexcept
    : NkDtBasis(records.state), m_imp(records.imp) {}

NkDtString::~NkDtString() {
    endRecords(*this, m_imp);
}

const CRuntimeClass* NkDtString::GetThisClass() noexcept {
    return &classNkDtString;
}

CObject* NkDtString::CreateObject() {
    return new NkDtString;
}

NkDtString* NkDtString::NewObject() const {
    return new NkDtString(*this);
}

NkDtTyps NkDtString::GetDtTyp() const {
    return NkDtTypString;
}
