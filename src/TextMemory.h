#pragma once

/// @file
/// Buffers of texts: short ones from the pool of the records, longer ones from the system.

#include <cstddef>

namespace nkdt::textMemory {

/// A buffer of @p bytes, or null.
[[nodiscard]] char* allocate(std::size_t bytes) noexcept;
/// A buffer of @p bytes that holds the first min(oldBytes, bytes) bytes of @p old, which is given back; null,
/// @p old untouched, when there is none.
[[nodiscard]] char* reallocate(char* old, std::size_t oldBytes, std::size_t bytes) noexcept;
/// Gives a buffer of @p bytes back.
void release(char* buffer, std::size_t bytes) noexcept;

}  // namespace nkdt::textMemory
