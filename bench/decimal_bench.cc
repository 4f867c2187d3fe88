/// @file
/// Decimals beside limits and peers, on the same operands. One iteration works through all operands; the
/// counter "each" is the time of one.

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "BenchSupport.h"
#include "DecimalSubjects.h"

namespace bench {

namespace {

/// Lists of subjects are joined, so that each peer is named where it is at hand.
template <class A, class B>
struct Join;
template <class... A, class... B>
struct Join<Subjects<A...>, Subjects<B...>> {
    using Type = Subjects<A..., B...>;
};

#ifdef NK_PEER_INTELRDFP_BID
using Bid = Subjects<Bid128>;
#else
using Bid = Subjects<>;
#endif
#ifdef NK_PEER_GCC_DECIMAL128
using Gcc = Subjects<GccDecimal128>;
#else
using Gcc = Subjects<>;
#endif
#ifdef NK_PEER_BOOST_HEADERS
using BoostFloats = Subjects<BoostFloat>;
using BoostIntegers = Subjects<BoostInteger>;
#else
using BoostFloats = Subjects<>;
using BoostIntegers = Subjects<>;
#endif

using Peers = Join<Bid, Join<Gcc, Join<BoostFloats, BoostIntegers>::Type>::Type>::Type;
using Computing = Join<Subjects<Ours, Limit>, Peers>::Type;
using Rounding = Join<Subjects<Ours, OursInSteps, Limit>, Peers>::Type;
using Dividing = Join<Subjects<Ours>, Join<Bid, Join<Gcc, BoostFloats>::Type>::Type>::Type;
using Texts = Join<Subjects<Ours, Limit>, Join<Bid, BoostFloats>::Type>::Type;
using Doubles = Join<Subjects<Ours, Limit>, Join<Bid, BoostFloats>::Type>::Type;

/// Too many for a branch predictor to learn, few enough to stay in the second cache.
constexpr std::size_t count = 4096;

std::mt19937_64 seeded(unsigned variant) {
    return std::mt19937_64(seed + variant);
}

/// Amounts of up to 8 digits and 2 places, of every length and either sign.
std::vector<Digits> amounts() {
    std::mt19937_64 random = seeded(1);
    std::vector<Digits> result(count);
    for (Digits& digits : result) {
        const std::int64_t most = power(1 + static_cast<int>(random() % 10));
        digits = {static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(most)), 2};
        if (random() % 2 == 0) digits.mantissa = -digits.mantissa;
    }
    return result;
}

std::vector<Digits> mixed(unsigned variant) {
    std::mt19937_64 random = seeded(variant);
    std::vector<Digits> result = amounts();
    for (Digits& digits : result)
        digits = {digits.mantissa + static_cast<std::int64_t>(random() % 1000),
                  static_cast<int>(random() % 7)};
    return result;
}

/// Of up to 2 digits and 4 places.
std::vector<Digits> rates() {
    std::mt19937_64 random = seeded(4);
    std::vector<Digits> result(count);
    for (Digits& digits : result)
        digits = {static_cast<std::int64_t>(random() % 1000000), 4};
    return result;
}

std::vector<Digits> quantities() {
    std::mt19937_64 random = seeded(5);
    std::vector<Digits> result(count);
    for (Digits& digits : result)
        digits = {static_cast<std::int64_t>(1 + random() % 1000), 0};
    return result;
}

template <class Subject>
std::vector<typename Subject::Value> made(const std::vector<Digits>& from) {
    std::vector<typename Subject::Value> result;
    for (const Digits& digits : from)
        result.push_back(Subject::make(digits));
    return result;
}

std::vector<std::string> textsOf(const std::vector<Digits>& from) {
    std::vector<std::string> result;
    for (const Digits& digits : from)
        result.push_back(textOf(digits));
    return result;
}

/// 28 digits with some places.
std::vector<std::string> longTexts(unsigned variant) {
    std::mt19937_64 random = seeded(variant);
    std::vector<std::string> result(count);
    for (std::string& text : result) {
        text = static_cast<char>('1' + random() % 9);
        while (text.size() < 28)
            text += static_cast<char>('0' + random() % 10);
        text.insert(28 - random() % 20, ".");
        if (text.back() == '.') text.pop_back();
    }
    return result;
}

void each(benchmark::State& state) {
    state.counters["each"] =
        benchmark::Counter(static_cast<double>(count),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/// Every pair of operands through the work, each result stored.
template <class Operands, class Work>
void pairwise(benchmark::State& state, const Operands& left, const Operands& right, Work work) {
    for (auto _ : state) {
        for (std::size_t i = 0; i < count; ++i) {
            auto result = work(left[i], right[i]);
            keep(result);
        }
    }
    each(state);
}

constexpr auto sumOfAmounts = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    const auto values = made<Subject>(amounts());
    for (auto _ : state) {
        auto total = Subject::make({0, 2});
        for (const auto& value : values)
            Subject::add(total, value);
        keep(total);
    }
    each(state);
};

constexpr auto addMixed = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    pairwise(state, made<Subject>(mixed(2)), made<Subject>(mixed(3)),
             [](const auto& a, const auto& b) { return Subject::sum(a, b); });
};

constexpr auto timesRate = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    pairwise(state, made<Subject>(amounts()), made<Subject>(rates()),
             [](const auto& a, const auto& b) { return Subject::timesRounded(a, b); });
};

constexpr auto byQuantity = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    pairwise(state, made<Subject>(amounts()), made<Subject>(quantities()),
             [](const auto& a, const auto& b) { return Subject::dividedRounded(a, b); });
};

constexpr auto lessMixed = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    pairwise(state, made<Subject>(mixed(2)), made<Subject>(mixed(3)),
             [](const auto& a, const auto& b) { return Subject::less(a, b); });
};

constexpr auto lessAmounts = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    const auto values = made<Subject>(amounts());
    auto shifted = values;
    std::rotate(shifted.begin(), shifted.begin() + 1, shifted.end());
    pairwise(state, values, shifted, [](const auto& a, const auto& b) { return Subject::less(a, b); });
};

constexpr auto divideLong = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    std::vector<typename Subject::Value> left;
    std::vector<typename Subject::Value> right;
    for (const std::string& text : longTexts(6))
        left.push_back(Subject::fromText(text));
    for (const std::string& text : longTexts(7))
        right.push_back(Subject::fromText(text));
    pairwise(state, left, right, [](const auto& a, const auto& b) { return Subject::divided(a, b); });
};

constexpr auto parseAmounts = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    const std::vector<std::string> texts = textsOf(amounts());
    for (auto _ : state) {
        for (const std::string& text : texts) {
            auto value = Subject::parse(text);
            keep(value);
        }
    }
    each(state);
};

constexpr auto writeAmounts = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    const auto values = made<Subject>(amounts());
    char text[128];
    for (auto _ : state) {
        for (const auto& value : values) {
            char* end = Subject::write(value, text);
            keep(end);
            keep(text);
        }
    }
    each(state);
};

constexpr auto fromDoubles = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    std::vector<double> doubles;
    for (const Digits& digits : amounts())
        doubles.push_back(static_cast<double>(digits.mantissa) / 100.0);
    for (auto _ : state) {
        for (const double value : doubles) {
            auto result = Subject::fromDouble(value);
            keep(result);
        }
    }
    each(state);
};

const bool registered = [] {
    compare(Computing(), "sum_of_amounts", sumOfAmounts);
    compare(Computing(), "add_mixed_scales", addMixed);
    compare(Rounding(), "amount_times_rate", timesRate);
    compare(Rounding(), "amount_by_quantity", byQuantity);
    compare(Dividing(), "divide_28_digits", divideLong);
    compare(Computing(), "less_amounts", lessAmounts);
    compare(Computing(), "less_mixed_scales", lessMixed);
    compare(Texts(), "parse_amount", parseAmounts);
    compare(Texts(), "write_amount", writeAmounts);
    compare(Doubles(), "from_double", fromDoubles);
    return true;
}();

}  // namespace

}  // namespace bench
