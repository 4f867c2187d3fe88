#pragma once

/// @file
/// Where the two process-wide handlers are kept, for the one library that sets its own with every value.

#include <atomic>

#include "nkdec/Decimal96Handlers.h"

namespace nkdec {

extern std::atomic<Decimal96Handler> overflowHandler __attribute__((visibility("hidden")));
extern std::atomic<Decimal96Handler> inexactHandler __attribute__((visibility("hidden")));

}  // namespace nkdec
