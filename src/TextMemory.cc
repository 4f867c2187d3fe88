#include "TextMemory.h"

#include <algorithm>
#include <cstring>

#include "RecordMemory.h"
#include "nkfw/Memory.h"

namespace nkdt::textMemory {

namespace {

bool isPooled(std::size_t bytes) noexcept {
    return bytes <= recordBlockSize;
}

}  // namespace

char* allocate(std::size_t bytes) noexcept {
    return static_cast<char*>(isPooled(bytes) ? pool::tryTake() : nkfw::allocate(bytes));
}

char* reallocate(char* old, std::size_t oldBytes, std::size_t bytes) noexcept {
    if (isPooled(oldBytes) && isPooled(bytes)) return old;
    if (!isPooled(oldBytes) && !isPooled(bytes)) return static_cast<char*>(nkfw::reallocate(old, bytes));
    char* const fresh = allocate(bytes);
    if (fresh == nullptr) return nullptr;
    std::memcpy(fresh, old, std::min(oldBytes, bytes));
    release(old, oldBytes);
    return fresh;
}

void release(char* buffer, std::size_t bytes) noexcept {
    if (isPooled(bytes)) {
        pool::give(buffer);
    } else {
        nkfw::release(buffer);
    }
}

}  // namespace nkdt::textMemory
