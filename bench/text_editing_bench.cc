/// @file
/// Searching, replacing, changing case, trimming, appending and quoting in texts of 8, 60, 200 and 10,000
/// bytes, beside peers and bare loops. The peers' letter case knows ASCII alone.

#include <random>
#include <string>
#include <vector>

#include "BenchSupport.h"
#include "EditingSubjects.h"

namespace bench::editing {

namespace {

constexpr const char* part = "ab";
constexpr const char* longerPart = "XYZ";

std::size_t length(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

/// A few texts in turn; what is cut off stays near even in those of 10,000 bytes.
constexpr std::size_t variants = 4;

template <class Make>
std::vector<std::string> texts(const benchmark::State& state, Make make) {
    std::vector<std::string> result;
    for (unsigned i = 0; i < variants; ++i)
        result.push_back(make(length(state), i));
    return result;
}

/// With the part in it once every 32 bytes on average, and nowhere else.
std::string textWithParts(std::size_t bytes, unsigned variant) {
    std::string result = text(bytes, variant);
    std::replace(result.begin(), result.end(), 'a', 'e');
    std::replace(result.begin(), result.end(), 'X', 'K');
    std::mt19937 random(seed + variant);
    for (std::size_t at = random() % 5; at + 2 <= bytes; at += 2 + random() % 61)
        result.replace(at, 2, part);
    return result;
}

/// Between blanks, an eighth of the text at each end.
std::string textBetweenBlanks(std::size_t bytes, unsigned variant) {
    const std::size_t blanks = bytes / 8;
    std::string result = text(bytes - 2 * blanks, variant);
    result.front() = result.back() = 'x';
    return std::string(blanks, ' ') + result + std::string(blanks, ' ');
}

template <class Subject>
auto made(const std::vector<std::string>& sources) {
    std::vector<typename Subject::Text> result;
    for (const std::string& source : sources)
        result.push_back(Subject::make(source));
    return result;
}

constexpr auto findAll = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    auto source = made<Subject>(texts(state, textWithParts));
    const auto needle = Subject::make(part);
    std::size_t i = 0;
    for (auto _ : state) {
        auto count = Subject::countOf(source[i++ % variants], needle);
        keep(count);
    }
};

constexpr auto findNothing = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    auto source = made<Subject>(texts(state, textWithParts));
    const auto needle = Subject::make("abX");
    std::size_t i = 0;
    for (auto _ : state) {
        bool found = Subject::contains(source[i++ % variants], needle);
        keep(found);
    }
};

/// There and back, so that the text stays as it was.
constexpr auto replaceAll = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    auto source = made<Subject>(texts(state, textWithParts));
    const auto shorter = Subject::make(part);
    const auto longer = Subject::make(longerPart);
    std::size_t i = 0;
    for (auto _ : state) {
        auto& text = source[i++ % variants];
        Subject::replaceAll(text, shorter, longer);
        keep(text);
        Subject::replaceAll(text, longer, shorter);
        keep(text);
    }
};

/// Assigns first, since what is deleted is gone.
constexpr auto deleteAll = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    const auto source = made<Subject>(texts(state, textWithParts));
    const auto needle = Subject::make(part);
    auto text = source.front();
    std::size_t i = 0;
    for (auto _ : state) {
        text = source[i++ % variants];
        Subject::deleteAll(text, needle);
        keep(text);
    }
};

constexpr auto upperAndLower = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    auto text = Subject::make(bench::text(length(state)));
    for (auto _ : state) {
        Subject::toUpper(text);
        keep(text);
        Subject::toLower(text);
        keep(text);
    }
};

constexpr auto equalWithoutCase = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    const auto sources = texts(state, bench::text);
    const auto left = made<Subject>(sources);
    auto right = left;
    for (auto& text : right)
        Subject::toUpper(text);
    std::size_t i = 0;
    for (auto _ : state) {
        bool equal = Subject::equalWithoutCase(left[i % variants], right[i % variants]);
        keep(equal);
        ++i;
    }
};

/// Assigns first, since the blanks are gone afterwards.
constexpr auto trim = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    const auto source = made<Subject>(texts(state, textBetweenBlanks));
    auto text = source.front();
    std::size_t i = 0;
    for (auto _ : state) {
        text = source[i++ % variants];
        Subject::trim(text);
        keep(text);
    }
};

/// Fills a text that has the room with pieces of 8 bytes.
constexpr auto appendIntoRoom = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    auto text = Subject::withRoom(length(state));
    const auto piece = Subject::make("12345678");
    const std::size_t pieces = length(state) / 8;
    for (auto _ : state) {
        Subject::clear(text);
        for (std::size_t i = 0; i < pieces; ++i)
            Subject::append(text, piece);
        keep(text);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(pieces));
};

/// Builds a new text from pieces of 8 bytes, without room made beforehand; the limit has it.
constexpr auto appendToNothing = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    const auto piece = Subject::make("12345678");
    const std::size_t pieces = length(state) / 8;
    for (auto _ : state) {
        auto text = [&state] {
            if constexpr (std::is_same_v<Subject, Limit>) return Subject::withRoom(length(state));
            return typename Subject::Text();
        }();
        for (std::size_t i = 0; i < pieces; ++i)
            Subject::append(text, piece);
        keep(text);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(pieces));
};

constexpr auto quote = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    const auto source = made<Subject>(texts(state, bench::text));
    std::size_t i = 0;
    for (auto _ : state) {
        auto&& literal = Subject::quoted(source[i++ % variants]);
        keep(literal);
    }
};

const bool registered = [] {
    const auto lengths = [](auto* benchmark) {
        for (const int bytes : {8, 60, 200, 10000})
            benchmark->Arg(bytes);
    };
    compare(All(), "find_all", findAll, lengths);
    compare(All(), "find_nothing", findNothing, lengths);
    compare(All(), "replace_all_there_and_back", replaceAll, lengths);
    compare(All(), "assign_and_delete_all", deleteAll, lengths);
    compare(All(), "upper_and_lower", upperAndLower, lengths);
    compare(All(), "equal_without_case", equalWithoutCase, lengths);
    compare(All(), "assign_and_trim", trim, lengths);
    compare(All(), "append_8_into_room", appendIntoRoom, lengths);
    compare(All(), "append_8_to_nothing", appendToNothing, lengths);
    compare(All(), "quote", quote, lengths);
    return true;
}();

}  // namespace

}  // namespace bench::editing
