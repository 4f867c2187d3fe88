#pragma once

/// @file
/// The reserve: blocks for errors that are raised when memory is exhausted. Taking and giving back are single
/// atomic operations, so no thread waits for another.

namespace nkeh {

/// A block of NkEhBasis::nMaxSize bytes for the calling thread, or null.
void* claimReserveBlock() noexcept;
/// TRUE if the block is one of the reserve.
bool isReserveBlock(const void* block) noexcept;
/// Gives a block of the reserve back, on any thread.
void releaseReserveBlock(const void* block) noexcept;

}  // namespace nkeh
