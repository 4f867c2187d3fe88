#include "NewRequests.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t requests = 0;

}  // namespace

void* operator new(std::size_t bytes) {
    ++requests;
    if (void* const block = std::malloc(bytes)) return block;
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

std::size_t bench::newRequests() noexcept {
    return requests;
}
