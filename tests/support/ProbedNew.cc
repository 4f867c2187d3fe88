// In the programs that link this, the C++ library's own requests pass through the framework too, so that an
// allocation probe sees and refuses them as well.

#include <nkfw/Memory.h>

#include <new>

void* operator new(std::size_t bytes) {
    if (void* const block = nkfw::allocate(bytes)) return block;
    throw std::bad_alloc();
}

void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return nkfw::allocate(bytes);
}

void operator delete(void* block) noexcept {
    nkfw::release(block);
}

void operator delete(void* block, std::size_t) noexcept {
    nkfw::release(block);
}

void operator delete(void* block, const std::nothrow_t&) noexcept {
    nkfw::release(block);
}
