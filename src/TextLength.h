#pragma once

/// @file
/// The length that a text may reach.

#include <cstddef>

#include "Imp/dtstrini.h"
#include "Raise.h"

namespace nkdt {

/// The length of a text; error 8 when a text cannot be that long.
inline INT checkedLength(std::size_t length, const Origin& origin) {
    if (length > static_cast<std::size_t>(NkDtString_Imp::maxLength)) raise(origin, NkDtErrWertebereich);
    return static_cast<INT>(length);
}

/// The length of two texts together; error 8 as above. The sum itself does not overflow: texts are shorter
/// than 2^31, and what is put into one is made of fewer than 2^31 of them.
inline INT combinedLength(std::size_t left, std::size_t right, const Origin& origin) {
    return checkedLength(left + right, origin);
}

inline INT combinedLength(INT nLeft, INT nRight, const Origin& origin) {
    return combinedLength(static_cast<std::size_t>(nLeft), static_cast<std::size_t>(nRight), origin);
}

}  // namespace nkdt
