/// @file
/// Dates with a time of day: reading and writing "05.03.2004 14:07:09", moving by days and months, comparing.

#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "BenchSupport.h"
#include "DateSubjects.h"

namespace bench {

namespace {

using Calendars = Subjects<Value, Record, Limit
#ifdef NK_PEER_DATE_DATE
                           ,
                           Hinnant
#endif
#ifdef NK_PEER_ABSL_TIME
                           ,
                           Abseil
#endif
#ifdef NK_PEER_QT6_CORE
                           ,
                           Qt
#endif
#ifdef NK_PEER_BOOST_HEADERS
                           ,
                           Boost
#endif
                           >;

/// A date between 1990 and 2029.
Parts parts(std::size_t i) {
    std::mt19937 random(seed + static_cast<unsigned>(i));
    const auto below = [&random](unsigned bound) { return static_cast<int>(random() % bound); };
    const int year = 1990 + below(40);
    const int month = 1 + below(12);
    return {year,      month,     1 + below(static_cast<unsigned>(nkfw::daysInMonth(year, month))),
            below(24), below(60), below(60)};
}

std::string text(std::size_t i) {
    const Parts p = parts(i);
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%02d.%02d.%04d %02d:%02d:%02d", p[2], p[1], p[0], p[3], p[4], p[5]);
    return buffer;
}

template <class Subject>
auto dates() {
    return Ring<typename Subject::Date>([](std::size_t i) { return Subject::make(parts(i)); });
}

constexpr auto parse = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    Ring<std::string> source(text);
    auto date = Subject::make(parts(0));
    for (auto _ : state) {
        Subject::parse(date, source.next());
        keep(date);
    }
};

constexpr auto write = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    auto source = dates<Subject>();
    for (auto _ : state) {
        auto result = Subject::write(source.next());
        keep(result);
    }
};

/// Each date moves by the count that belongs to its place.
template <class Subject, class Move>
void move(benchmark::State& state, const std::vector<int>& counts, Move move) {
    auto source = dates<Subject>();
    std::size_t i = 0;
    for (auto _ : state) {
        auto& date = source.next();
        move(date, counts[i++ % counts.size()]);
        keep(date);
    }
}

/// Counts from 1 up to a bound. Within a ring one date meets one count, and on the next round the way back.
std::vector<int> thereAndBack(unsigned most) {
    std::vector<int> counts(2 * Ring<int>::size);
    std::mt19937 random(seed);
    for (std::size_t i = 0; i < Ring<int>::size; ++i) {
        counts[i] = 1 + static_cast<int>(random() % most);
        counts[i + Ring<int>::size] = -counts[i];
    }
    return counts;
}

constexpr auto addDays = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    move<Subject>(state, thereAndBack(90), [](auto& date, int days) { Subject::addDays(date, days); });
};

constexpr auto addMonths = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    move<Subject>(state, thereAndBack(11), [](auto& date, int months) { Subject::addMonths(date, months); });
};

constexpr auto less = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    auto left = dates<Subject>();
    auto right = dates<Subject>();
    right.next();
    for (auto _ : state) {
        bool result = Subject::less(left.next(), right.next());
        keep(result);
    }
};

/// AddDay365() over any count costs the same.
void addManyDays(benchmark::State& state) {
    NkDtDateTime date(5, 3, 2004, 14, 7, 9);
    const auto days = static_cast<SHORT>(state.range(0));
    for (auto _ : state) {
        date.AddDay365(days);
        keep(date);
        date.SubDay365(days);
        keep(date);
    }
}

const bool registered = [] {
    compare(Calendars(), "parse", parse);
    compare(Calendars(), "write", write);
    compare(Calendars(), "add_days", addDays);
    compare(Calendars(), "add_months", addMonths);
    compare(Calendars(), "less", less);
    benchmark::RegisterBenchmark("add_and_subtract_days/NkDtDateTime", addManyDays)
        ->Arg(1)
        ->Arg(30)
        ->Arg(365)
        ->Arg(3650)
        ->Arg(32767);
    return true;
}();

}  // namespace

}  // namespace bench
