#pragma once

/// @file
/// The length that a text may reach.

#include <cstddef>

#include "Imp/dtstrini.h"
#include "Raise.h"

namespace nkdt {

/// The length of two texts together; error 8 when a text cannot be that long.
inline INT combinedLength(std::size_t left, std::size_t right, const Origin& origin) {
    constexpr auto maxLength = static_cast<std::size_t>(NkDtString_Imp::maxLength);
    if (left > maxLength || right > maxLength - left) raise(origin, NkDtErrWertebereich);
    return static_cast<INT>(left + right);
}

inline INT combinedLength(INT nLeft, INT nRight, const Origin& origin) {
    return combinedLength(static_cast<std::size_t>(nLeft), static_cast<std::size_t>(nRight), origin);
}

}  // namespace nkdt
