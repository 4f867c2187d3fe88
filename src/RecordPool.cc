#include "nkdt/RecordPool.h"

#include <cstdlib>
#include <cstring>

#include "RecordMemory.h"
#include "nkeh/NkEhBasis.h"
#include "nkfw/Memory.h"

namespace nkdt::pool {

constinit FreeBlock openBottom = {nullptr, 0};
constinit FreeBlock closedBottom = {nullptr, recordPoolLimit};

thread_local constinit FreeBlock* top = &closedBottom;
thread_local constinit FreeBlock* topOfLarge = &closedBottom;

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool builtWithAddressSanitizer = true;
#elif defined(__has_feature)
constexpr bool builtWithAddressSanitizer = __has_feature(address_sanitizer);
#else
constexpr bool builtWithAddressSanitizer = false;
#endif

bool poolWanted() noexcept {
    if (builtWithAddressSanitizer) return false;
    const char* const setting = std::getenv("NKDT_POOL");
    if (setting != nullptr && std::strcmp(setting, "off") == 0) return false;
    const char* const preloaded = std::getenv("LD_PRELOAD");  // valgrind enters itself here
    return preloaded == nullptr || std::strstr(preloaded, "vgpreload") == nullptr;
}

/// Gives all blocks of the list back to the system and closes it.
template <std::size_t size>
void closeList() noexcept {
    FreeBlock* block = List<size>::get();
    while (FreeBlock* const below = block->next) {
        nkfw::release(block);
        block = below;
    }
    List<size>::set(&closedBottom);
}

void close() noexcept {
    closeList<recordBlockSize>();
    closeList<largeRecordBlockSize>();
}

enum class ThreadState : unsigned char { fresh, running, switchedOff, ended };
thread_local constinit ThreadState threadState = ThreadState::fresh;

/// Empties the thread's lists when the thread ends; made with the first block that it gives back.
struct ThreadEnd {
    ThreadEnd() noexcept = default;
    ~ThreadEnd() {
        close();
        threadState = ThreadState::ended;
    }
    ThreadEnd(const ThreadEnd&) = delete;
    ThreadEnd& operator=(const ThreadEnd&) = delete;
};

void start() noexcept {
    static const bool wanted = poolWanted();
    threadState = wanted ? ThreadState::running : ThreadState::switchedOff;
    if (!wanted) return;
    static thread_local const ThreadEnd threadEnd;
    static_cast<void>(threadEnd);
    top = &openBottom;
    topOfLarge = &openBottom;
}

}  // namespace

template <std::size_t size>
void* List<size>::takeSlow() noexcept {
    return nkfw::allocate(size);
}

template <std::size_t size>
void List<size>::exhausted() {
    NkEhNorvaneNewHandler(size);
}

template <std::size_t size>
void List<size>::giveSlow(void* block) noexcept {
    if (threadState == ThreadState::fresh) {
        start();
        if (threadState == ThreadState::running) return give<size>(block);
    }
    nkfw::release(block);
}

template struct List<recordBlockSize>;
template struct List<largeRecordBlockSize>;

TwoBlocks takeTwoSlow() {
    void* const first = take();
    void* const second = tryTake();
    if (second == nullptr) {
        give(first);
        List<recordBlockSize>::exhausted();
    }
    return {first, second};
}

void giveTwoSlow(void* first, void* second) noexcept {
    give(second);
    give(first);
}

}  // namespace nkdt::pool

namespace nkdt {

bool enableRecordPool(bool enable) noexcept {
    using namespace pool;
    if (threadState == ThreadState::ended) return false;
    if (threadState == ThreadState::fresh) start();
    const bool wasOn = threadState == ThreadState::running;
    if (!enable) {
        close();
        threadState = ThreadState::switchedOff;
    } else if (!wasOn && !builtWithAddressSanitizer) {
        threadState = ThreadState::fresh;
        start();
    }
    return wasOn;
}

}  // namespace nkdt
