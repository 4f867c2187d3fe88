#include "nkfw/Memory.h"

#include <atomic>
#include <cstdlib>

namespace nkfw {

namespace {

constinit std::atomic<AllocationProbe> currentProbe{nullptr};

bool isRefused(std::size_t bytes) noexcept {
    const AllocationProbe probe = allocationProbe();
    return probe != nullptr && !probe(bytes);
}

// The system may answer a request of no bytes with null, which would read as exhaustion.
constexpr std::size_t atLeastOne(std::size_t bytes) noexcept {
    return bytes == 0 ? 1 : bytes;
}

}  // namespace

AllocationProbe setAllocationProbe(AllocationProbe probe) noexcept {
    return currentProbe.exchange(probe, std::memory_order_acq_rel);
}

AllocationProbe allocationProbe() noexcept {
    return currentProbe.load(std::memory_order_acquire);
}

void* allocate(std::size_t bytes) noexcept {
    if (isRefused(bytes)) [[unlikely]] {
        return nullptr;
    }
    return std::malloc(atLeastOne(bytes));
}

void* reallocate(void* block, std::size_t bytes) noexcept {
    if (isRefused(bytes)) [[unlikely]] {
        return nullptr;
    }
    return std::realloc(block, atLeastOne(bytes));
}

void release(void* block) noexcept {
    std::free(block);
}

}  // namespace nkfw
