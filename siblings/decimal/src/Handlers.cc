#include "nkdec/Decimal96Handlers.h"

#include <atomic>

#include "Exact.h"
#include "HandlerSlots.h"

namespace nkdec {

constinit std::atomic<Decimal96Handler> overflowHandler{nullptr};
constinit std::atomic<Decimal96Handler> inexactHandler{nullptr};

namespace {

/// Whoever sets the same handler again and again writes nothing, so that no processor waits for another.
Decimal96Handler replace(std::atomic<Decimal96Handler>& slot, Decimal96Handler handler) noexcept {
    const Decimal96Handler before = slot.load(std::memory_order_acquire);
    return before == handler ? before : slot.exchange(handler, std::memory_order_acq_rel);
}

void call(const std::atomic<Decimal96Handler>& slot, Operation operation) {
    const Decimal96Handler handler = slot.load(std::memory_order_acquire);
    if (handler != nullptr) handler(operation);
}

}  // namespace

Decimal96 overflow(Operation operation) {
    call(overflowHandler, operation);
    return Decimal96Access::make(Decimal96State::overflow);
}

void reportInexact(Operation operation) {
    call(inexactHandler, operation);
}

}  // namespace nkdec

Decimal96Handler setDecimal96OverflowHandler(Decimal96Handler handler) noexcept {
    return nkdec::replace(nkdec::overflowHandler, handler);
}

Decimal96Handler setDecimal96InexactHandler(Decimal96Handler handler) noexcept {
    return nkdec::replace(nkdec::inexactHandler, handler);
}
