#include "nkdt/NkDtDateZp.h"

#include "Imp/dtdatimi.h"
#include "Raise.h"
#include "nkdt/NkDtShort.h"

using namespace nkdt;

namespace {

constexpr CRuntimeClass classNkDtDateZp{"NkDtDateZp", sizeof(NkDtDateZp), 1, &NkDtDateZp::CreateObject,
                                        &NkDtDateTime::GetThisClass};
const CClassRegistration registration{classNkDtDateZp};

constexpr Origin originOf(const char* operation) {
    return {".\\Dtdatzp.cc", "NkDtDateZp", operation};
}

}  // namespace

NkDtDateZp::NkDtDateZp(struct tm* pTime) : NkDtDateTime(pTime) {
    WipeTime();
}

NkDtDateZp::NkDtDateZp(const NkDtDateTime& r) : NkDtDateTime(r) {
    WipeTime();
}

NkDtDateZp::NkDtDateZp(const NkDtDateZp& r) : NkDtDateTime(r) {
    WipeTime();
}

NkDtDateZp::NkDtDateZp(time_t t) : NkDtDateTime(t) {
    WipeTime();
}

NkDtDateZp::NkDtDateZp(const NkDtShort& nDay, const NkDtShort& nMonth, const NkDtShort& nYear)
    : NkDtDateTime(nDay, nMonth, nYear) {}

NkDtDateZp::NkDtDateZp(SHORT nDay, SHORT nMonth, SHORT nYear)
    : NkDtDateTime(nDay, nMonth, nYear, SHORT{0}, SHORT{0}, SHORT{0}) {}

NkDtDateZp::NkDtDateZp(LPCTSTR pszText) : NkDtDateTime(pszText, DateOnly) {}

NkDtDateZp::NkDtDateZp(const NkDtString& r) : NkDtDateTime(r, DateOnly) {}

NkDtDateZp::~NkDtDateZp() = default;

const CRuntimeClass* NkDtDateZp::GetThisClass() noexcept {
    return &classNkDtDateZp;
}

CObject* NkDtDateZp::CreateObject() {
    return new NkDtDateZp;
}

NkDtDateZp* NkDtDateZp::NewObject() const {
    return new NkDtDateZp(*this);
}

NkDtTyps NkDtDateZp::GetDtTyp() const {
    return NkDtTypDateZp;
}

NkDtDateZp& NkDtDateZp::operator=(const NkDtDateZp& r) {
    static constexpr Origin origin = originOf("operator=(NkDtDateZp&)");
    wrapped(origin, [&] { CopyFrom(r); });
    return *this;
}

NkDtDateZp& NkDtDateZp::operator=(const COleDateTime& r) {
    if (r.GetStatus() != COleDateTime::valid) {
        Clear();  // a date built of it would be defined under default mode 2
        return *this;
    }
    return *this = NkDtDateZp(NkDtDateTime(r));
}

void NkDtDateZp::Assign(const NkDtBasis& r) {
    static constexpr Origin origin = originOf("Assign(NkDtBasis&)");
    if (!r.IsKindOf(GetThisClass())) raise(origin, NkDtErrBasistypen);
    *this = static_cast<const NkDtDateZp&>(r);
}

NkDtDateZp::operator struct tm() const {
    return NkDtDateTime_Imp::toTm(Stored());
}

void NkDtDateZp::SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat) {
    static constexpr Origin origin = originOf("SetFromOFL(LPCTSTR,NkFormat *)");
    wrapped(origin, [&] {
        NkDtDateTime::SetFromOFL(pszOFL, pFormat);
        WipeTime();
    });
}

void NkDtDateZp::Serialize(CArchive& ar) {
    static constexpr Origin origin = originOf("Serialize(CArchive&)");
    wrapped(origin, [&] { NkDtDateTime::Serialize(ar, false); });
}

NkDtDateZp NkDtDateZp::MovedDate(const NkDtTime& t, bool forward) const {
    static constexpr Origin plus = originOf("operator+(NkDtTime&)");
    static constexpr Origin minus = originOf("operator-(NkDtTime&)");
    if (!CheckDefinedForArithmetic(*this, t)) return NkDtDateZp(NkDtWmDefault);
    return wrapped(forward ? plus : minus, [&] { return NkDtDateZp(Moved(t, forward)); });
}
