#pragma once

/// @file
/// Buffers of texts: short ones from the pool of the records, longer ones from the system.

#include <cstddef>

#include "RecordMemory.h"
#include "nkfw/Memory.h"

namespace nkdt::textMemory {

constexpr bool isPooled(std::size_t bytes) noexcept {
    return bytes <= recordBlockSize;
}

/// A buffer of @p bytes, or null.
[[nodiscard]] inline char* allocate(std::size_t bytes) noexcept {
    return static_cast<char*>(isPooled(bytes) ? pool::tryTake() : nkfw::allocate(bytes));
}
/// A buffer of @p bytes that holds the first min(oldBytes, bytes) bytes of @p old, which is given back; null,
/// @p old untouched, when there is none.
[[nodiscard]] char* reallocate(char* old, std::size_t oldBytes, std::size_t bytes) noexcept;
/// Gives a buffer of @p bytes back.
inline void release(char* buffer, std::size_t bytes) noexcept {
    if (isPooled(bytes)) {
        pool::give(buffer);
    } else {
        nkfw::release(buffer);
    }
}

}  // namespace nkdt::textMemory
