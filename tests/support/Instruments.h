#pragma once

/// @file
/// What watches the test program while it runs.

#include <cstdlib>
#include <cstring>

namespace nktest {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool kSanitized = true;
#elif defined(__has_feature)
inline constexpr bool kSanitized = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
inline constexpr bool kSanitized = false;
#endif

inline bool isUnderValgrind() {
    const char* const preloaded = std::getenv("LD_PRELOAD");
    return preloaded != nullptr && std::strstr(preloaded, "vgpreload") != nullptr;
}

/// Whether a memory checker slows the program down, and keeps for a while what was freed.
inline bool isWatched() {
    return kSanitized || isUnderValgrind();
}

}  // namespace nktest
