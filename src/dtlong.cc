#include "nkdt/NkDtLong.h"

#include "DefaultFormats.h"
#include "Imp/dtlongi.h"
#include "WholeNumberFlow.h"
#include "nkdt/NkDtDecimal.h"
#include "nkdt/NkDtDouble.h"
#include "nkdt/NkDtShort.h"

namespace nkdt {

template <>
struct ValuePart<NkDtLong> {
    static constexpr const char* module = ".\\dtlong.cc";
    static constexpr const char* classText = "NkDtLong";
    static constexpr NkDtTyps typ = NkDtTypLong;
    static constexpr Origin assign = {module, classText, "Assign(NkDtBasis&)"};
    static constexpr const char* comparisons[] = {"operator==(NkDtLong&)", "operator!=(NkDtLong&)",
                                                  "operator<(NkDtLong&)",  "operator>(NkDtLong&)",
                                                  "operator<=(NkDtLong&)", "operator>=(NkDtLong&)"};
    static constexpr const char* numberComparisons[] = {"operator==(INT)", "operator!=(INT)",
                                                        "operator<(INT)",  "operator>(INT)",
                                                        "operator<=(INT)", "operator>=(INT)"};
    static constexpr const char* setFromSql = "SetFromSQL(long)";

    static const NkFormat& defaultFormat() { return defaultFormat::longNumber; }
    static CString format(const NkFormat& format, LONG n) { return format.FormatLong(n); }
    static LONG parse(const NkFormat& format, LPCTSTR pszText) { return format.ParseLong(pszText); }
    static LONG fromField(long field) {
        static constexpr Origin origin = originOf<NkDtLong>("SetFromRecordSet(CRecordset&,long&)");
        if (!fits<LONG>(field)) raise(origin, NkDtErrWertebereich);
        return static_cast<LONG>(field);
    }
};

template class Record<NkDtLong_Imp>;
template class StoredValue<NkDtLong>;
template class WholeNumber<NkDtLong>;

}  // namespace nkdt

namespace {

constexpr CRuntimeClass classNkDtLong{"NkDtLong", sizeof(NkDtLong), 1, &NkDtLong::CreateObject,
                                      &NkDtBasis::GetThisClass};
const CClassRegistration registration{classNkDtLong};

}  // namespace

NkDtLong::NkDtLong(NkDtWorkingMode eMode) : WholeNumber(FALSE, eMode) {}

[[gnu::flatten]] NkDtLong::NkDtLong(INT n) : WholeNumber(TRUE, NkDtWmDefault, n) {}

NkDtLong::NkDtLong(LPCTSTR psz) : WholeNumber(TRUE, NkDtWmDefault, NkDtLong_Imp::fromString(psz)) {}

NkDtLong::NkDtLong(const NkDtShort& r) : WholeNumber(r, r.IsDefined() ? LONG{r.GetValue()} : 0) {}

NkDtLong::NkDtLong(const NkDtDecimal& r)
    : WholeNumber(r, r.IsDefined() ? NkDtLong_Imp::fromDouble(r.GetValue()) : 0) {}

NkDtLong::NkDtLong(const NkDtDouble& r)
    : WholeNumber(r, r.IsDefined() ? NkDtLong_Imp::fromDouble(r.GetValue()) : 0) {}

NkDtLong::NkDtLong(const NkDtString& r)
    : WholeNumber(r, r.IsDefined() ? NkDtLong_Imp::fromString(r) : LONG{0}) {}

[[gnu::flatten]] NkDtLong::NkDtLong(const NkDtLong& r) = default;

[[gnu::flatten]] NkDtLong::~NkDtLong() = default;

const CRuntimeClass* NkDtLong::GetThisClass() noexcept {
    return &classNkDtLong;
}

CObject* NkDtLong::CreateObject() {
    return new NkDtLong;
}

NkDtLong* NkDtLong::NewObject() const {
    return new NkDtLong(*this);
}

NkDtLong& NkDtLong::operator=(const NkDtLong& r) {
    CopyFrom(r);
    return *this;
}
