#include "TextMemory.h"

#include <algorithm>
#include <cstring>

namespace nkdt::textMemory {

char* reallocate(char* old, std::size_t oldBytes, std::size_t bytes) noexcept {
    if (isPooled(oldBytes) && isPooled(bytes)) return old;
    if (!isPooled(oldBytes) && !isPooled(bytes)) return static_cast<char*>(nkfw::reallocate(old, bytes));
    char* const fresh = allocate(bytes);
    if (fresh == nullptr) return nullptr;
    std::memcpy(fresh, old, std::min(oldBytes, bytes));
    release(old, oldBytes);
    return fresh;
}

}  // namespace nkdt::textMemory
