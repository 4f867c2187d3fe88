#include "nkdt/NkDtBasis.h"

#include "NullRule.h"
#include "ValueRecords.h"
#include "nkfw/Archive.h"

namespace {

constexpr CRuntimeClass classNkDtBasis{"NkDtBasis", sizeof(NkDtBasis), 1, nullptr, &CObject::GetThisClass};
const CClassRegistration registration{classNkDtBasis};

}  // namespace

constinit NkDtWorkingMode nkdt::defaultWorkingMode = NkDtWmMissing;

template class nkdt::Record<nkdt::State>;

using namespace nkdt;

void NkDtSetDefaultWorkingMode(NkDtWorkingMode eMode) noexcept {
    defaultWorkingMode = eMode == NkDtWmNull || eMode == NkDtWmDefined ? eMode : NkDtWmMissing;
}

NkDtWorkingMode NkDtGetDefaultWorkingMode() noexcept {
    return defaultWorkingMode;
}

State::State() noexcept : State(FALSE, defaultWorkingMode) {}

NkDtBasis::NkDtBasis(BOOL fDefined, NkDtWorkingMode eMode)
    : m_state(std::in_place, newState(fDefined, eMode)) {}

NkDtBasis::NkDtBasis(const NkDtBasis& r) : CObject(), m_state(r.m_state) {}

const CRuntimeClass* NkDtBasis::GetThisClass() noexcept {
    return &classNkDtBasis;
}

void NkDtBasis::Serialize(CArchive& ar) {
    if (ar.IsStoring()) {
        ar << m_state->defined;
        return;
    }
    BOOL fDefined = FALSE;
    ar >> fDefined;
    SetDefined(fDefined);
}

void NkDtBasis::Clear() {
    if (IsDefined() && m_state->mode != NkDtWmDefined) SetDefined(FALSE);
}

void NkDtBasis::SetModified(BOOL fModified) {
    m_state->modified = fModified;
}

NkDtTyps NkDtBasis::GetDtTyp() const {
    return NkDtTypBasis;
}

const NkDeBasis* NkDtBasis::GetDeBasisPtr() const {
    return nullptr;
}

BOOL NkDtBasis::GetAndResetModified(BOOL fNew) {
    return std::exchange(m_state->modified, fNew);
}

void NkDtBasis::SetWorkingMode(NkDtWorkingMode eMode) {
    m_state->mode = storedMode(eMode);
    // The argument decides, not the mode that it stands for: 3 leaves an undefined value undefined.
    if (eMode == NkDtWmDefined) m_state->defined = TRUE;
}

NkDtBasis& NkDtBasis::operator=(const NkDtBasis& r) {
    if (this != &r && m_state->mode != NkDtWmDefined) SetDefined(r.m_state->defined);
    return *this;
}

BOOL NkDtBasis::CheckDefinedForArithmetic(const NkDtBasis& a, const NkDtBasis& b) {
    return decide(OperandState(a), OperandState(b), Neutral::none) != Outcome::undefined;
}
