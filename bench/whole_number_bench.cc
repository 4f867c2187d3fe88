/// @file
/// Nullable whole numbers beside limits and peers. Figures are of one value.

#include <algorithm>
#include <vector>

#include "BenchSupport.h"
#include "WholeNumberSubjects.h"
#include "nkdt/RecordPool.h"

namespace bench {

namespace {

using Numbers = Subjects<Long, Short, PoolLimit, MallocLimit, Optional
#ifdef NK_PEER_POCO_FOUNDATION
                         ,
                         PocoNullable, PocoVar
#endif
#ifdef NK_PEER_QT6_CORE
                         ,
                         QtVariant
#endif
                         >;

using NumbersWithText = Subjects<Long, Short, DigitsLimit, Optional
#ifdef NK_PEER_POCO_FOUNDATION
                                 ,
                                 PocoNullable, PocoVar
#endif
#ifdef NK_PEER_QT6_CORE
                                 ,
                                 QtVariant
#endif
                                 >;

using OurNumbers = Subjects<Long, Short>;

/// The n-th input, in the range of 16 bits for all, so that every subject has the same work.
int number(std::size_t i) {
    static const std::vector<int> inputs = numbers(Ring<int>::size);
    return inputs[i] % 10000;
}

template <class Subject>
Ring<typename Subject::Value> values() {
    return Ring<typename Subject::Value>([](std::size_t i) { return Subject::make(number(i)); });
}

Ring<std::string> texts() {
    return Ring<std::string>([](std::size_t i) { return std::to_string(number(i)); });
}

// One value

constexpr auto construct = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    int n = 0;
    for (auto _ : state) {
        auto value = Subject::make(++n % 1024);
        keep(value);
    }
};

constexpr auto constructWithoutPool = [](benchmark::State& state, auto subject) {
    const bool wasOn = nkdt::enableRecordPool(false);
    construct(state, subject);
    nkdt::enableRecordPool(wasOn);
};

constexpr auto copy = [](benchmark::State& state, auto subject) {
    auto source = values<decltype(subject)>();
    for (auto _ : state) {
        auto value = source.next();
        keep(value);
    }
};

constexpr auto moveThereAndBack = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    auto value = Subject::make(12);
    for (auto _ : state) {
        auto other = std::move(value);
        keep(other);
        value = std::move(other);
        keep(value);
    }
};

constexpr auto assign = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    auto source = values<Subject>();
    auto value = Subject::make(12);
    for (auto _ : state) {
        value = source.next();
        keep(value);
    }
};

constexpr auto sum = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    auto left = values<Subject>();
    const auto right = Subject::make(12);
    for (auto _ : state) {
        auto result = Subject::sum(left.next(), right);
        keep(result);
    }
};

constexpr auto addTo = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    auto source = values<Subject>();
    auto total = Subject::make(0);
    for (auto _ : state) {
        Subject::add(total, source.next());
        keep(total);
    }
};

constexpr auto less = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    auto left = values<Subject>();
    const auto right = Subject::make(12);
    for (auto _ : state) {
        bool result = Subject::less(left.next(), right);
        keep(result);
    }
};

// Texts

constexpr auto fromText = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    auto source = texts();
    for (auto _ : state) {
        auto value = Subject::fromText(source.next());
        keep(value);
    }
};

constexpr auto toText = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    auto source = values<Subject>();
    for (auto _ : state) {
        auto text = Subject::toText(source.next());
        keep(text);
    }
};

constexpr auto toSql = [](benchmark::State& state, auto subject) {
    auto source = values<decltype(subject)>();
    for (auto _ : state) {
        auto literal = source.next().ConvToSQL();
        keep(literal);
    }
};

constexpr auto toExtern = [](benchmark::State& state, auto subject) {
    auto source = values<decltype(subject)>();
    for (auto _ : state) {
        BOOL defined = FALSE;
        USHORT version = 0;
        auto text = source.next().ConvToExtern(defined, version);
        keep(text);
    }
};

constexpr auto fromExtern = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    Ring<NkDtString> source([](std::size_t i) { return NkDtString(number(i)); });
    auto value = Subject::make(12);
    for (auto _ : state) {
        value.SetFromExtern(&source.next(), TRUE, NkDtExternVersion);
        keep(value);
    }
};

constexpr auto toUserText = [](benchmark::State& state, auto subject) {
    auto source = values<decltype(subject)>();
    for (auto _ : state) {
        auto text = source.next().ConvToOFL();
        keep(text);
    }
};

constexpr auto fromUserText = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    auto source = texts();
    auto value = Subject::make(12);
    for (auto _ : state) {
        value.SetFromOFL(source.next().c_str());
        keep(value);
    }
};

// Archives: many values in one, since opening it is no business of a value

constexpr int archived = 1024;

constexpr auto toArchive = [](benchmark::State& state, auto subject) {
    auto source = values<decltype(subject)>();
    CMemFile file;
    for (auto _ : state) {
        file.Seek(0, CFile::begin);
        CArchive archive(&file, CArchive::store);
        for (int i = 0; i < archived; ++i)
            source.next().Serialize(archive);
        archive.Close();
    }
    state.SetItemsProcessed(state.iterations() * archived);
};

constexpr auto fromArchive = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    auto source = values<Subject>();
    CMemFile file;
    CArchive filled(&file, CArchive::store);
    for (int i = 0; i < archived; ++i)
        source.next().Serialize(filled);
    filled.Close();
    auto value = Subject::make(12);
    for (auto _ : state) {
        file.Seek(0, CFile::begin);
        CArchive archive(&file, CArchive::load);
        for (int i = 0; i < archived; ++i)
            value.Serialize(archive);
        keep(value);
    }
    state.SetItemsProcessed(state.iterations() * archived);
};

// Vectors of many values

constexpr std::size_t many = 100000;

template <class Subject>
std::vector<typename Subject::Value> manyValues() {
    std::vector<typename Subject::Value> result;
    result.reserve(many);
    for (const int n : numbers(many))
        result.push_back(Subject::make(n % 32768));
    return result;
}

/// Values pushed back one by one, the vector growing as it likes.
constexpr auto grow = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    for (auto _ : state) {
        std::vector<typename Subject::Value> vector;
        for (std::size_t i = 0; i < many; ++i)
            vector.push_back(Subject::make(static_cast<int>(i % 32768)));
        keep(vector);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(many));
};

constexpr auto sort = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    const auto shuffled = manyValues<Subject>();
    for (auto _ : state) {
        state.PauseTiming();
        auto vector = shuffled;
        state.ResumeTiming();
        std::sort(vector.begin(), vector.end(),
                  [](const auto& a, const auto& b) { return Subject::less(a, b); });
        state.PauseTiming();
        keep(vector);
        vector.clear();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(many));
};

/// How many records a vector asks for while it grows and is sorted, beyond the two of each value.
constexpr auto countRequests = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    const bool wasOn = nkdt::enableRecordPool(false);
    std::size_t growing = 0;
    std::size_t sorting = 0;
    for (auto _ : state) {
        std::vector<typename Subject::Value> vector;
        const RequestCount requests;
        for (const int n : numbers(many))
            vector.push_back(Subject::make(n % 32768));
        growing = requests.value();
        std::sort(vector.begin(), vector.end(),
                  [](const auto& a, const auto& b) { return Subject::less(a, b); });
        sorting = requests.value() - growing;
    }
    nkdt::enableRecordPool(wasOn);
    state.counters["beyond_growing"] = static_cast<double>(growing) - 2.0 * many;
    state.counters["sorting"] = static_cast<double>(sorting);
};

const bool registered = [] {
    compare(Numbers(), "construct", construct);
    compare(OurNumbers(), "construct_pool_off", constructWithoutPool);
    compare(Numbers(), "copy", copy);
    compare(Numbers(), "move_there_and_back", moveThereAndBack);
    compare(Numbers(), "assign", assign);
    compare(Numbers(), "add", sum);
    compare(Numbers(), "add_to", addTo);
    compare(Numbers(), "less", less);
    compare(NumbersWithText(), "from_text", fromText);
    compare(NumbersWithText(), "to_text", toText);
    compare(OurNumbers(), "to_sql", toSql);
    compare(OurNumbers(), "to_extern", toExtern);
    compare(OurNumbers(), "from_extern", fromExtern);
    compare(OurNumbers(), "to_user_text", toUserText);
    compare(OurNumbers(), "from_user_text", fromUserText);
    compare(OurNumbers(), "to_archive_1024", toArchive);
    compare(OurNumbers(), "from_archive_1024", fromArchive);
    const auto inMilliseconds = [](auto* benchmark) { benchmark->Unit(benchmark::kMillisecond); };
    compare(Numbers(), "grow_100000", grow, inMilliseconds);
    compare(Numbers(), "sort_100000", sort, inMilliseconds);
    compare(OurNumbers(), "requests_100000", countRequests,
            [](auto* benchmark) { benchmark->Iterations(1)->Unit(benchmark::kMillisecond); });
    return true;
}();

}  // namespace

}  // namespace bench
