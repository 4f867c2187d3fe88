#pragma once

/// @file
/// Requests for memory, counted and failed at will.

#include <nkdt/RecordPool.h>
#include <nkfw/Memory.h>

#include <cstddef>
#include <limits>

namespace memorytest {

namespace detail {

inline bool armed = false;
inline long requests = 0;
inline long failing = 0;
inline std::size_t bytes = 0;

}  // namespace detail

/// Decides about one request.
inline bool grant(std::size_t bytes) noexcept {
    if (!detail::armed) return true;
    detail::bytes += bytes;
    return ++detail::requests != detail::failing;
}

/// Counts the requests of a scope and lets the n-th of them fail.
class Requests {
  public:
    static constexpr long none = std::numeric_limits<long>::max();

    explicit Requests(long failing = none) {
        detail::requests = 0;
        detail::bytes = 0;
        detail::failing = failing;
        nkfw::setAllocationProbe(&grant);
        detail::armed = true;
    }
    ~Requests() { end(); }
    Requests(const Requests&) = delete;
    Requests& operator=(const Requests&) = delete;

    void end() noexcept {
        detail::armed = false;
        nkfw::setAllocationProbe(nullptr);
    }
    static long count() { return detail::requests; }
    static std::size_t bytes() { return detail::bytes; }
    static bool failed() { return detail::requests >= detail::failing; }
};

/// The calling thread's pool switched for a scope.
class Pool {
  public:
    explicit Pool(bool on) : m_before(nkdt::enableRecordPool(on)) {}
    ~Pool() { nkdt::enableRecordPool(m_before); }
    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;

  private:
    bool m_before;
};

/// Whether this build and this run have a pool at all; it is off under an address sanitizer and under
/// valgrind.
inline bool poolExists() {
    const Pool on(true);
    return nkdt::enableRecordPool(true);
}

}  // namespace memorytest
