#pragma once

/// @file
/// Decimal96 as a key of unordered containers: 1.5 and 1.50 are one key.

#include <cstddef>
#include <functional>

#include "nkdec/Decimal96.h"

template <>
struct std::hash<Decimal96> {
    std::size_t operator()(const Decimal96& number) const noexcept { return number.hash(); }
};
