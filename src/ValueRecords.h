#pragma once

/// @file
/// The two records of a value, made and ended together: with one look at the pool, and nothing half-built
/// when the second fails. Derived classes that make or end their records one by one are served as well.

#include <new>
#include <utility>

#include "RecordMemory.h"
#include "ValueAccess.h"
#include "nkdt/NkDtBasis.h"

namespace nkdt {

/// The mode of values that are given none; never NkDtWmDefault.
extern constinit NkDtWorkingMode defaultWorkingMode __attribute__((visibility("hidden")));

/// The mode that is stored where @p mode is given: 3, and every number that is no mode, stands for the
/// default.
inline NkDtWorkingMode storedMode(NkDtWorkingMode mode) noexcept {
    return mode == NkDtWmMissing || mode == NkDtWmNull || mode == NkDtWmDefined ? mode : defaultWorkingMode;
}

/// The state of a new value, as NkDtBasis's constructor describes it.
inline State newState(BOOL fDefined, NkDtWorkingMode mode) noexcept {
    return State(fDefined, storedMode(mode));
}

/// A value's records on their way to the value, which takes them over.
template <class Imp>
struct NewRecords {
    State* state;
    Imp* imp;
};

/// @param state copied as a value copies it, without the format
/// @param args  what the value record is built from
template <class Imp, class... Args>
[[nodiscard]] NewRecords<Imp> newRecords(const State& state, Args&&... args) {
    const auto [first, second] = pool::takeForValue<Imp>();
    if constexpr (noexcept(Imp(std::forward<Args>(args)...))) {
        return {::new (first) State(state), ::new (second) Imp(std::forward<Args>(args)...)};
    } else {
        try {
            return {::new (first) State(state), ::new (second) Imp(std::forward<Args>(args)...)};
        } catch (...) {
            pool::giveOfValue<Imp>(first, second);
            throw;
        }
    }
}

/// The first thing that a value's destructor does. Records that do not end here end with their owners.
template <class Imp>
void endRecords(NkDtBasis& value, Record<Imp>& imp) noexcept {
    Record<State>& state = ValueAccess::stateRecord(value);
    if (state.isHusk() || imp.isHusk()) [[unlikely]]
        return;
    State* const first = state.release();
    Imp* const second = imp.release();
    first->~State();
    second->~Imp();
    pool::giveOfValue<Imp>(first, second);
}

}  // namespace nkdt
