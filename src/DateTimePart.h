#pragma once

/// @file
/// What NkDtDateTime states of itself for the common flows, and what its sources share.

#include "Imp/dtdatimi.h"
#include "StoredValueFlow.h"
#include "nkdt/NkDtDateTime.h"

namespace nkdt {

template <>
struct ValuePart<NkDtDateTime> {
    static constexpr NkDtTyps typ = NkDtTypDateTime;
    static constexpr Origin assign = {".\\Dtdatime.cc", "NkDtDateTime", "Assign(NkDtBasis&)"};
};

/// Runs a change of a value's fields; modified if they differ afterwards. What a change sets before it fails
/// stays.
template <class Change>
void changeFields(NkDtBasis& value, DateTimeFields& fields, Change&& change) {
    const DateTimeFields before = fields;
    change();
    if (fields != before) value.SetModified(TRUE);
}

}  // namespace nkdt
