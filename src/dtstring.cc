#include "nkdt/NkDtString.h"

#include "Imp/dtstrini.h"
#include "NarrowText.h"
#include "RecordMemory.h"
#include "nkdt/NkDtLong.h"
#include "nkdt/NkDtShort.h"

using namespace nkdt;

template class nkdt::Record<NkDtString_Imp>;

namespace {

constexpr CRuntimeClass classNkDtString{"NkDtString", sizeof(NkDtString), 1, &NkDtString::CreateObject,
                                        &NkDtBasis::GetThisClass};
const CClassRegistration registration{classNkDtString};

constexpr Origin originFromWide = {".\\dtstring.cc", "NkDtString", "NkDtString(BSTR&)"};

constexpr INT intAllocLength = 11;   // "-2147483648"
constexpr INT wideAllocLength = 20;  // "-9223372036854775808"

using TextRecord = Record<NkDtString_Imp>;

TextRecord digitsOf(LONG n) {
    const auto bits = static_cast<ULONGLONG>(n);
    return TextRecord(std::in_place, n < 0, n < 0 ? ULONGLONG{0} - bits : bits, intAllocLength);
}

/// The digits of a value, or the empty text when it is undefined.
template <class Value>
TextRecord digitsOfValue(const Value& value) {
    return value.IsDefined() ? digitsOf(static_cast<LONG>(value.GetValue())) : TextRecord();
}

}  // namespace

NkDtString::NkDtString(NkDtWorkingMode eMode) : NkDtBasis(FALSE, eMode) {}

NkDtString::NkDtString(LPCTSTR psz, INT nLen, INT nAlloc)
    : NkDtBasis(TRUE, NkDtWmDefault), m_imp(std::in_place, psz, nLen, nAlloc) {}

NkDtString::NkDtString(const CString& r) : NkDtString(r.GetString(), NkDtStrLenAuto, NkDtStrLenAuto) {}

NkDtString::NkDtString(const BSTR& r) : NkDtString(narrowText(r, originFromWide)) {}

NkDtString::NkDtString(CHAR ch) : NkDtBasis(TRUE, NkDtWmDefault), m_imp(std::in_place, ch) {}

NkDtString::NkDtString(INT n) : NkDtBasis(TRUE, NkDtWmDefault), m_imp(digitsOf(n)) {}

NkDtString::NkDtString(UINT n)
    : NkDtBasis(TRUE, NkDtWmDefault), m_imp(std::in_place, false, ULONGLONG{n}, intAllocLength) {}

NkDtString::NkDtString(Digits digits)
    : NkDtBasis(TRUE, NkDtWmDefault),
      m_imp(std::in_place, digits.fNegative, digits.ulMagnitude, wideAllocLength) {}

NkDtString::NkDtString(const NkDtLong& r) : NkDtBasis(r), m_imp(digitsOfValue(r)) {}

NkDtString::NkDtString(const NkDtShort& r) : NkDtBasis(r), m_imp(digitsOfValue(r)) {}

NkDtString::NkDtString(const NkDtString& r) = default;

NkDtString::~NkDtString() = default;

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
