#include "nkdt/NkDtShort.h"

#include "DefaultFormats.h"
#include "Imp/dtshorti.h"
#include "WholeNumberFlow.h"
#include "nkdt/NkDtDecimal.h"

namespace nkdt {

template <>
struct ValuePart<NkDtShort> {
    static constexpr const char* module = ".\\dtshort.cc";
    static constexpr const char* classText = "NkDtShort";
    static constexpr NkDtTyps typ = NkDtTypShort;
    static constexpr Origin assign = {module, classText, "Assign(NkDtBasis&)"};
    static constexpr const char* comparisons[] = {"operator==(NkDtShort&)", "operator!=(NkDtShort&)",
                                                  "operator<(NkDtShort&)",  "operator>(NkDtShort&)",
                                                  "operator<=(NkDtShort&)", "operator>=(NkDtShort&)"};
    static constexpr const char* numberComparisons[] = {"operator==(INT)", "operator!=(INT)",
                                                        "operator<(INT)",  "operator>(INT)",
                                                        "operator<=(INT)", "operator>=(INT)"};
    static constexpr const char* setFromSql = "SetFromSQL(short)";

    static const NkFormat& defaultFormat() { return defaultFormat::shortNumber; }
    static CString format(const NkFormat& format, SHORT n) { return format.FormatShort(n); }
    static SHORT parse(const NkFormat& format, LPCTSTR pszText) { return format.ParseShort(pszText); }
    // The field's low 16 bits, whatever stands above them.
    static SHORT fromField(int field) { return static_cast<SHORT>(field); }
};

template class Record<NkDtShort_Imp>;
template class StoredValue<NkDtShort>;
template class WholeNumber<NkDtShort>;

}  // namespace nkdt

namespace {

constexpr CRuntimeClass classNkDtShort{"NkDtShort", sizeof(NkDtShort), 1, &NkDtShort::CreateObject,
                                       &NkDtBasis::GetThisClass};
const CClassRegistration registration{classNkDtShort};

}  // namespace

NkDtShort::NkDtShort(NkDtWorkingMode eMode) : WholeNumber(FALSE, eMode) {}

NkDtShort::NkDtShort(short n) : WholeNumber(TRUE, NkDtWmDefault, n) {}

[[gnu::flatten]] NkDtShort::NkDtShort(INT n)
    : WholeNumber(TRUE, NkDtWmDefault, NkDtShort_Imp::fromNumber(n)) {}

NkDtShort::NkDtShort(LPCTSTR psz) : WholeNumber(TRUE, NkDtWmDefault, NkDtShort_Imp::fromString(psz)) {}

NkDtShort::NkDtShort(const NkDtLong& r)
    : WholeNumber(r, r.IsDefined() ? NkDtShort_Imp::fromNumber(r.GetValue()) : SHORT{0}) {}

NkDtShort::NkDtShort(const NkDtDecimal& r)
    : WholeNumber(r, r.IsDefined() ? NkDtShort_Imp::fromDouble(r.GetValue()) : SHORT{0}) {}

NkDtShort::NkDtShort(const NkDtString& r)
    : WholeNumber(r, r.IsDefined() ? NkDtShort_Imp::fromString(r) : SHORT{0}) {}

[[gnu::flatten]] NkDtShort::NkDtShort(const NkDtShort& r) = default;

[[gnu::flatten]] NkDtShort::~NkDtShort() = default;

const CRuntimeClass* NkDtShort::GetThisClass() noexcept {
    return &classNkDtShort;
}

CObject* NkDtShort::CreateObject() {
    return new NkDtShort;
}

NkDtShort* NkDtShort::NewObject() const {
    return new NkDtShort(*this);
}

NkDtShort& NkDtShort::operator=(const NkDtShort& r) {
    CopyFrom(r);
    return *this;
}
