#pragma once

/// @file
/// What the benchmarks share: subjects that are compared in the same work, inputs that are the same in every
/// run, and the count of requests for memory.
///
/// A benchmark is called `work/subject`; the quotient of two subjects of one work is what counts.
/// @code
/// bench::compare(Subjects<Long, Limit>(), "copy", [](benchmark::State& state, auto subject) {
///     using Subject = decltype(subject);
///     ...
/// });
/// @endcode

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#include "nkfw/Memory.h"

namespace bench {

/// Lets the compiler believe that the object is read and changed elsewhere.
template <class T>
inline void keep(T& object) {
    asm volatile("" : : "g"(&object) : "memory");
}

/// Types with a static member `name`, compared with each other.
template <class... Subject>
struct Subjects {};

/// Registers the work for each subject.
/// @param run  called with the state and a subject
/// @param adapt what more there is to say of the benchmark, e.g. its arguments
template <class... Subject, class Run, class Adapt>
void compare(Subjects<Subject...>, const std::string& work, Run run, Adapt adapt) {
    (adapt(benchmark::RegisterBenchmark((work + '/' + Subject::name).c_str(),
                                        [run](benchmark::State& state) { run(state, Subject()); })),
     ...);
}

template <class... Subject, class Run>
void compare(Subjects<Subject...> subjects, const std::string& work, Run run) {
    compare(subjects, work, run, [](benchmark::internal::Benchmark*) {});
}

inline constexpr unsigned seed = 20041231;

/// Inputs taken in turn; few enough to stay in the nearest cache.
template <class T>
class Ring {
  public:
    static constexpr std::size_t size = 64;

    /// @param make makes the n-th input
    template <class Make>
    explicit Ring(Make make) {
        m_items.reserve(size);
        for (std::size_t i = 0; i < size; ++i)
            m_items.push_back(make(i));
    }
    T& next() noexcept { return m_items[m_next++ % size]; }

  private:
    std::vector<T> m_items;
    std::size_t m_next = 0;
};

/// Whole numbers of up to six digits; each stands beside its opposite, so that their sum stays small however
/// often they are added up.
inline std::vector<int> numbers(std::size_t count) {
    std::mt19937 random(seed);
    std::vector<int> result(count);
    for (std::size_t i = 0; i < count; ++i)
        result[i] = i % 2 == 0 ? static_cast<int>(random() % 1000000) : -result[i - 1];
    return result;
}

/// Text of letters, digits, blanks, umlauts and here and there an apostrophe, in code page 1252.
inline std::string text(std::size_t length, unsigned variant = 0) {
    static constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789    \xE4\xF6\xFC\xDF'";
    std::mt19937 random(seed + variant);
    std::string result(length, ' ');
    for (char& ch : result)
        ch = alphabet[random() % alphabet.size()];
    return result;
}

/// Counts the library's requests for memory while it lives. Pools that keep blocks back are not seen: switch
/// them off first.
class RequestCount {
  public:
    RequestCount() : m_before(nkfw::setAllocationProbe(&count)) { s_requests = 0; }
    ~RequestCount() { nkfw::setAllocationProbe(m_before); }
    RequestCount(const RequestCount&) = delete;
    RequestCount& operator=(const RequestCount&) = delete;

    std::size_t value() const noexcept { return s_requests; }

  private:
    static bool count(std::size_t) noexcept {
        s_requests.fetch_add(1, std::memory_order_relaxed);
        return true;
    }

    static inline std::atomic<std::size_t> s_requests{0};
    nkfw::AllocationProbe m_before;
};

}  // namespace bench
