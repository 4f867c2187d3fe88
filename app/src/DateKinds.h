#pragma once

/// @file
/// The kinds of dates and durations.

#include "ColumnKind.h"

namespace nkdt::app {

ColumnKind dateTimeKind() noexcept;
ColumnKind dateKind() noexcept;
ColumnKind durationKind() noexcept;

}  // namespace nkdt::app
