#pragma once

/// @file
/// The one place that asks the system for memory for texts, value records and errors.
///
/// Everything here reports exhaustion by a null pointer and leaves the reaction to the caller. A probe can be
/// set that decides about each request, so that a program can be tried with the n-th request failing.

#include <cstddef>

#include "nkfw/Export.h"

namespace nkfw {

/// Decides about a request of @p bytes: false makes it fail. Called on the requesting thread; must not
/// allocate here.
using AllocationProbe = bool (*)(std::size_t bytes) noexcept;

/// Sets the probe (null: none, the start value) for all threads and returns the one before. Meant for tests;
/// pools keep nothing back while a probe is set, so that every request is seen.
NKDT_API AllocationProbe setAllocationProbe(AllocationProbe probe) noexcept;

/// The probe in force, or null.
NKDT_API AllocationProbe allocationProbe() noexcept;

/// A block of @p bytes (at least 1), or null. Release it with release().
[[nodiscard]] NKDT_API void* allocate(std::size_t bytes) noexcept;

/// The block resized to @p bytes, its contents kept as far as they fit; null if that fails, the old block
/// untouched.
[[nodiscard]] NKDT_API void* reallocate(void* block, std::size_t bytes) noexcept;

/// Gives a block of allocate() or reallocate() back; null is allowed.
NKDT_API void release(void* block) noexcept;

}  // namespace nkfw
