#pragma once

/// @file
/// The least that a pool of blocks must do.

#include <cstddef>
#include <cstdlib>
#include <new>

namespace bench {

/// Blocks of one size from a bare list, never bounded and never given back.
class BareList {
  public:
    static void* take() {
        Block* const block = s_head;
        if (block == nullptr) return std::malloc(blockSize);
        s_head = block->next;
        return block;
    }
    static void give(void* memory) noexcept { s_head = ::new (memory) Block{s_head}; }

  private:
    static constexpr std::size_t blockSize = 24;
    struct Block {
        Block* next;
    };
    static inline thread_local constinit Block* s_head = nullptr;
};

}  // namespace bench
