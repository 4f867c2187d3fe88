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

/// A free block. At the bottom of every list lies a block that is never taken.
struct FreeBlock {
    FreeBlock* next;  // null at the bottom
    unsigned height;  // blocks below it
};

/// The bottoms, shared by all threads and never written: of a list that takes blocks back, and of one that
/// does not because it counts as full.
extern constinit FreeBlock openBottom __attribute__((visibility("hidden")));
extern constinit FreeBlock closedBottom __attribute__((visibility("hidden")));

/// The tops of a thread's lists: closed until the thread gives its first block back, and again when it has
/// ended. Trivially destructible: values with static lifetime end after the main thread's locals, and their
/// blocks then go past the closed list to the system.
// The initial-exec model saves a call on every access from inside the shared library; sixteen bytes fit into
// what a library loaded later may use of it.
extern thread_local constinit FreeBlock* top __attribute__((tls_model("initial-exec"), visibility("hidden")));
extern thread_local constinit FreeBlock* topOfLarge
    __attribute__((tls_model("initial-exec"), visibility("hidden")));

/// The calling thread's list of blocks of a size.
template <std::size_t size>
struct List {
    static_assert(size == recordBlockSize || size == largeRecordBlockSize);

    static FreeBlock* get() noexcept {
        if constexpr (size == recordBlockSize) return top;
        return topOfLarge;
    }
    static void set(FreeBlock* block) noexcept {
        if constexpr (size == recordBlockSize) {
            top = block;
        } else {
            topOfLarge = block;
        }
    }

    /// A new block from the system, or null.
    [[nodiscard]] static void* takeSlow() noexcept;
    /// Calls NkEhNorvaneNewHandler() for a block.
    [[noreturn]] static void exhausted();
    /// Gives the block to the system, or opens the list and keeps it.
    static void giveSlow(void* block) noexcept;
};

struct TwoBlocks {
    void* first;
    void* second;
};
/// Two blocks, taken one by one.
[[nodiscard]] TwoBlocks takeTwoSlow();
/// Gives two blocks, one by one.
void giveTwoSlow(void* first, void* second) noexcept;

/// A block of that size, or null.
template <std::size_t size = recordBlockSize>
[[nodiscard]] inline void* tryTake() noexcept {
    FreeBlock* const block = List<size>::get();
    FreeBlock* const below = block->next;
    if (below == nullptr) [[unlikely]]
        return List<size>::takeSlow();
    List<size>::set(below);
    return block;
}

/// A block of that size.
template <std::size_t size = recordBlockSize>
[[nodiscard]] inline void* take() {
    void* const block = tryTake<size>();
    if (block == nullptr) [[unlikely]]
        List<size>::exhausted();
    return block;
}

template <std::size_t size = recordBlockSize>
inline void give(void* block) noexcept {
    FreeBlock* const below = List<size>::get();
    if (below->height >= recordPoolLimit) [[unlikely]]
        return List<size>::giveSlow(block);
    List<size>::set(::new (block) FreeBlock{below, below->height + 1});
}

/// Two blocks of recordBlockSize with one look at the list: each look waits for the one before.
[[nodiscard]] inline TwoBlocks takeTwo() {
    FreeBlock* const first = top;
    FreeBlock* const second = first->next;
    FreeBlock* const below = second != nullptr ? second->next : nullptr;
    if (below == nullptr) [[unlikely]]
        return takeTwoSlow();
    top = below;
    return {first, second};
}

inline void giveTwo(void* first, void* second) noexcept {
    FreeBlock* const below = top;
    const unsigned height = below->height;
    if (height + 2 > recordPoolLimit) [[unlikely]]
        return giveTwoSlow(first, second);
    FreeBlock* const lower = ::new (second) FreeBlock{below, height + 1};
    top = ::new (first) FreeBlock{lower, height + 2};
}

/// The size of the block that a record stands in.
template <class T>
inline constexpr std::size_t blockSize = sizeof(T) <= recordBlockSize ? recordBlockSize
                                                                      : largeRecordBlockSize;

/// Two blocks for a value's records, the first for the state.
template <class Imp>
[[nodiscard]] inline TwoBlocks takeForValue() {
    if constexpr (blockSize<Imp> == recordBlockSize) {
        return takeTwo();
    } else {
        void* const first = take();
        void* const second = tryTake<blockSize<Imp>>();
        if (second == nullptr) [[unlikely]] {
            give(first);
            List<blockSize<Imp>>::exhausted();
        }
        return {first, second};
    }
}

template <class Imp>
inline void giveOfValue(void* first, void* second) noexcept {
    if constexpr (blockSize<Imp> == recordBlockSize) {
        giveTwo(first, second);
    } else {
        give<blockSize<Imp>>(second);
        give(first);
    }
}

/// A record in a block of the pool; the block goes back when its construction fails.
template <class T, class... Args>
[[nodiscard]] T* make(Args&&... args) {
    static_assert(sizeof(T) <= blockSize<T> && alignof(T) <= alignof(std::max_align_t));
    void* const block = take<blockSize<T>>();
    if constexpr (noexcept(T(std::forward<Args>(args)...))) {
        return ::new (block) T(std::forward<Args>(args)...);
    } else {
        try {
            return ::new (block) T(std::forward<Args>(args)...);
        } catch (...) {
            give<blockSize<T>>(block);
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
    pool::give<pool::blockSize<T>>(m_pRecord);
}

template <class T>
void Record<T>::revive() const {
    m_pRecord = pool::make<T>();
}

}  // namespace nkdt
