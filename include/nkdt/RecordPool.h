#pragma once

/// @file
/// The pool behind the records. Each thread keeps the blocks that it gave back in lists of its own, one for
/// each size of block, without locks, up to a bound; what is left goes back to the system when the thread
/// ends.
///
/// The pool is off in builds with an address sanitizer, under valgrind, and where the environment variable
/// NKDT_POOL is "off", because it would hide a use after the end of a value.

#include <cstddef>

#include "nkfw/Export.h"

namespace nkdt {

/// Size of a pooled block in bytes: most records, and the buffer of a short text, fit into one.
inline constexpr std::size_t recordBlockSize = 24;
/// Size of the blocks for the records of dates.
inline constexpr std::size_t largeRecordBlockSize = 40;
/// Blocks of each size that a thread keeps back at most.
inline constexpr unsigned recordPoolLimit = 4096;

/// Switches the calling thread's pool on or off, off empties it; returns whether it was on. For tests that
/// count or fail allocations.
NKDT_API bool enableRecordPool(bool enable) noexcept;

}  // namespace nkdt
