#include "Reserve.h"

#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <span>

#include "nkeh/NkEhBasis.h"

namespace nkeh {

namespace {

constexpr std::size_t blocksPerShare = NkEhBasis::nReservePerThread;
constexpr std::size_t firstShares = NkEhBasis::nReserveThreads;
constexpr std::size_t furtherShares = NkEhBasis::nReserveFurther / blocksPerShare;
static_assert(blocksPerShare <= 32 && NkEhBasis::nReserveFurther % blocksPerShare == 0);
static_assert(sizeof(NkEhBasis) <= NkEhBasis::nMaxSize);

struct alignas(std::max_align_t) ReserveBlock {
    std::byte bytes[NkEhBasis::nMaxSize];
};

// The blocks are dealt out in shares. A share belongs to one thread for as long as one of its blocks is in
// use; its state is the number of that thread in the upper half and a bit for each block in use in the lower
// half.
using State = std::uint64_t;
constexpr State oneBlock = 1;
constexpr State allBlocks = (State{1} << blocksPerShare) - 1;

constexpr State blocksOf(State state) noexcept {
    return state & 0xFFFFFFFFU;
}
constexpr State ownedBy(State thread, State blocks) noexcept {
    return thread << 32U | blocks;
}

ReserveBlock blocks[(firstShares + furtherShares) * blocksPerShare];
constinit std::array<std::atomic<State>, firstShares + furtherShares> shares{};

State thisThread() noexcept {
    static constinit std::atomic<std::uint32_t> lastThread{0};
    static thread_local const std::uint32_t number = ++lastThread;
    return number;
}

void* blockOf(const std::atomic<State>& share, int bit) noexcept {
    const auto index = static_cast<std::size_t>(&share - shares.data());
    return &blocks[index * blocksPerShare + static_cast<std::size_t>(bit)];
}

/// A block of a share that the thread has already; tells whether it has one.
void* claimFromOwn(State thread, bool& ownsShare) noexcept {
    for (std::atomic<State>& share : shares) {
        State state = share.load(std::memory_order_relaxed);
        while (blocksOf(state) != 0 && state == ownedBy(thread, blocksOf(state))) {
            ownsShare = true;
            if (blocksOf(state) == allBlocks) break;
            const int bit = std::countr_one(blocksOf(state));
            if (share.compare_exchange_weak(state, state | oneBlock << bit, std::memory_order_acquire,
                                            std::memory_order_relaxed)) {
                return blockOf(share, bit);
            }
        }
    }
    return nullptr;
}

/// The first block of a share that no thread has.
void* claimFromFree(State thread, std::span<std::atomic<State>> candidates) noexcept {
    for (std::atomic<State>& share : candidates) {
        State state = share.load(std::memory_order_relaxed);
        while (blocksOf(state) == 0) {
            if (share.compare_exchange_weak(state, ownedBy(thread, oneBlock), std::memory_order_acquire,
                                            std::memory_order_relaxed)) {
                return blockOf(share, 0);
            }
        }
    }
    return nullptr;
}

}  // namespace

void* claimReserveBlock() noexcept {
    const State thread = thisThread();
    bool ownsShare = false;
    void* block = claimFromOwn(thread, ownsShare);
    // The first shares are kept for threads that have none, whatever the others hold.
    const std::span<std::atomic<State>> all(shares);
    if (block == nullptr && !ownsShare) block = claimFromFree(thread, all.first(firstShares));
    if (block == nullptr) block = claimFromFree(thread, all.last(furtherShares));
    return block;
}

bool isReserveBlock(const void* block) noexcept {
    const std::less<const void*> before;
    return !before(block, std::begin(blocks)) && before(block, std::end(blocks));
}

void releaseReserveBlock(const void* block) noexcept {
    const auto index = static_cast<std::size_t>(static_cast<const ReserveBlock*>(block) - blocks);
    const State bit = oneBlock << index % blocksPerShare;
    shares[index / blocksPerShare].fetch_and(~bit, std::memory_order_release);
}

}  // namespace nkeh
