#pragma once

/// @file
/// The door through which the common flows reach what a value keeps protected.

#include "nkdt/NkDtBasis.h"

namespace nkdt {

struct ValueAccess {
    static void setDefined(NkDtBasis& value, BOOL fDefined) { value.SetDefined(fDefined); }
    static State& state(NkDtBasis& value) { return *value.m_state; }
    static const State& state(const NkDtBasis& value) { return *value.m_state; }
    static Record<State>& stateRecord(NkDtBasis& value) noexcept { return value.m_state; }
};

}  // namespace nkdt
