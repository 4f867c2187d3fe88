#pragma once

/// @file
/// Making and ending records: the pool's fast path and the members of Record, for the sources that know the
/// record's type.

#include <cstddef>
#include <new>
#include <utility>

#include "nkdt/Record.h"
#include "nkdt/RecordPool.h"

namespace nkdt::pool {

struct FreeBlock {
    FreeBlock* next;
};

/// A thread's free blocks. Trivially destructible: values with static lifetime end after the main thread's
/// locals, and their blocks then go past the emptied list to the system.
struct FreeList {
    FreeBlock* head = nullptr;
    unsigned count = 0;
    unsigned limit = 0;  // 0 until the thread gives its first block back, and again when it has ended
};

// The initial-exec model saves a call on every access from inside the shared library; the block of 16 bytes
// fits into what a library loaded later may use of it.
extern thread_local constinit FreeList freeList
    __attribute__((tls_model("initial-exec"), visibility("hidden")));

/// A new block from the system, or null.
[[nodiscard]] void* takeSlow() noexcept;
/// Calls NkEhNorvaneNewHandler() for a block.
[[noreturn]] void exhausted();
/// Gives the block to the system, or makes the list ready and keeps it.
void giveSlow(void* block) noexcept;

struct TwoBlocks {
    void* first;
    void* second;
};
/// Two blocks, taken one by one.
[[nodiscard]] TwoBlocks takeTwoSlow();
/// Gives two blocks, one by one.
void giveTwoSlow(void* first, void* second) noexcept;

/// A block of recordBlockSize bytes, or null.
[[nodiscard]] inline void* tryTake() noexcept {
    FreeList& list = freeList;
    FreeBlock* const block = list.head;
    if (block == nullptr) [[unlikely]]
        return takeSlow();
    list.head = block->next;
    --list.count;
    return block;
}

/// A block of recordBlockSize bytes.
[[nodiscard]] inline void* take() {
    void* const block = tryTake();
    if (block == nullptr) [[unlikely]]
        exhausted();
    return block;
}

inline void give(void* block) noexcept {
    FreeList& list = freeList;
    if (list.count >= list.limit) [[unlikely]]
        return giveSlow(block);
    list.head = ::new (block) FreeBlock{list.head};
    ++list.count;
}

/// Two blocks with one look at the list: each look waits for the one before.
[[nodiscard]] inline TwoBlocks takeTwo() {
    FreeList& list = freeList;
    FreeBlock* const first = list.head;
    FreeBlock* const second = first != nullptr ? first->next : nullptr;
    if (second == nullptr) [[unlikely]]
        return takeTwoSlow();
    list.head = second->next;
    list.count -= 2;
    return {first, second};
}

inline void giveTwo(void* first, void* second) noexcept {
    FreeList& list = freeList;
    if (list.count + 2 > list.limit) [[unlikely]]
        return giveTwoSlow(first, second);
    FreeBlock* const below = ::new (second) FreeBlock{list.head};
    list.head = ::new (first) FreeBlock{below};
    list.count += 2;
}

/// A record in a block of the pool; the block goes back when its construction fails.
template <class T, class... Args>
[[nodiscard]] T* make(Args&&... args) {
    static_assert(sizeof(T) <= recordBlockSize && alignof(T) <= alignof(std::max_align_t));
    void* const block = take();
    if constexpr (noexcept(T(std::forward<Args>(args)...))) {
        return ::new (block) T(std::forward<Args>(args)...);
    } else {
        try {
            return ::new (block) T(std::forward<Args>(args)...);
        } catch (...) {
            give(block);
            throw;
        }
    }
}

}  // namespace nkdt::pool

namespace nkdt {

template <class T>
Record<T>::Record() : m_pRecord(pool::make<T>()) {}

template <class T>
template <class... Args>
Record<T>::Record(std::in_place_t, Args&&... args) : m_pRecord(pool::make<T>(std::forward<Args>(args)...)) {}

template <class T>
Record<T>::Record(const Record& r) : m_pRecord(pool::make<T>(*r)) {}

template <class T>
void Record<T>::end() noexcept {
    m_pRecord->~T();
    pool::give(m_pRecord);
}

template <class T>
void Record<T>::revive() const {
    m_pRecord = pool::make<T>();
}

}  // namespace nkdt
