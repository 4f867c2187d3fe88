/// @file
/// Texts of 8, 60, 200 and 10,000 bytes beside their peers.

#include <cstring>
#include <string>
#include <vector>

#include "BenchSupport.h"
#include "TextSubjects.h"
#include "nkcp/CodePage.h"

namespace bench {

namespace {

using Texts = Subjects<Text, StdString
#ifdef NK_PEER_QT6_CORE
                       ,
                       QtBytes
#endif
                       >;

using OurText = Subjects<Text>;
using OurTextAndLimit = Subjects<Text, BytesLimit>;

std::size_t length(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

/// Few texts, so that those of 10,000 bytes stay near too.
constexpr std::size_t variants = 4;

std::vector<std::string> plainTexts(const benchmark::State& state) {
    std::vector<std::string> result;
    for (unsigned i = 0; i < variants; ++i)
        result.push_back(text(length(state), i));
    return result;
}

template <class Subject>
std::vector<typename Subject::Value> values(const benchmark::State& state) {
    std::vector<typename Subject::Value> result;
    for (const std::string& plain : plainTexts(state))
        result.push_back(Subject::make(plain.c_str()));
    return result;
}

constexpr auto construct = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    const auto source = plainTexts(state);
    std::size_t i = 0;
    for (auto _ : state) {
        auto value = Subject::make(source[i++ % variants].c_str());
        keep(value);
    }
};

constexpr auto copy = [](benchmark::State& state, auto subject) {
    const auto source = values<decltype(subject)>(state);
    std::size_t i = 0;
    for (auto _ : state) {
        auto value = source[i++ % variants];
        keep(value);
    }
};

constexpr auto moveThereAndBack = [](benchmark::State& state, auto subject) {
    auto value = values<decltype(subject)>(state).front();
    for (auto _ : state) {
        auto other = std::move(value);
        keep(other);
        value = std::move(other);
        keep(value);
    }
};

constexpr auto assign = [](benchmark::State& state, auto subject) {
    const auto source = values<decltype(subject)>(state);
    auto value = source.front();
    std::size_t i = 0;
    for (auto _ : state) {
        value = source[i++ % variants];
        keep(value);
    }
};

constexpr auto add = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    const auto source = values<Subject>(state);
    const auto suffix = Subject::make("12345678");
    std::size_t i = 0;
    for (auto _ : state) {
        typename Subject::Value sum = source[i++ % variants] + suffix;
        keep(sum);
    }
};

/// Assigns first, so that the text stays as long as it was.
constexpr auto assignAndAddTo = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    const auto source = values<Subject>(state);
    const auto suffix = Subject::make("12345678");
    auto value = source.front() + suffix;
    std::size_t i = 0;
    for (auto _ : state) {
        value = source[i++ % variants];
        value += suffix;
        keep(value);
    }
};

constexpr auto equal = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    const auto left = values<Subject>(state);
    const auto right = values<Subject>(state);
    std::size_t i = 0;
    for (auto _ : state) {
        bool result = Subject::equal(left[i % variants], right[i % variants]);
        keep(result);
        ++i;
    }
};

/// Two texts that differ in their last character alone; ours in the sort order, which ignores case, the peers
/// byte by byte.
constexpr auto less = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    const auto left = values<Subject>(state);
    std::vector<typename Subject::Value> right;
    for (std::string plain : plainTexts(state)) {
        plain.back() = plain.back() == 'x' ? 'y' : 'x';
        right.push_back(Subject::make(plain.c_str()));
    }
    std::size_t i = 0;
    for (auto _ : state) {
        bool result = Subject::less(left[i % variants], right[i % variants]);
        keep(result);
        ++i;
    }
};

constexpr auto toSql = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    const auto source = values<Subject>(state);
    std::size_t i = 0;
    for (auto _ : state) {
        auto literal = Subject::quoted(source[i++ % variants]);
        keep(literal);
    }
};

constexpr auto toSqlIn850 = [](benchmark::State& state, auto subject) {
    const auto source = values<decltype(subject)>(state);
    std::size_t i = 0;
    for (auto _ : state) {
        auto literal = source[i++ % variants].ConvToSQL(850);
        keep(literal);
    }
};

constexpr auto fromSqlIn850 = [](benchmark::State& state, auto) {
    const auto source = plainTexts(state);
    const auto count = static_cast<INT>(length(state));
    NkDtString value;
    std::size_t i = 0;
    for (auto _ : state) {
        value.SetFromSQL(source[i++ % variants].c_str(), count, 850);
        keep(value);
    }
};

/// There and back, so that the text stays as it was; the limit is one look at a table for each byte.
constexpr auto convertThereAndBack = [](benchmark::State& state, auto subject) {
    std::string plain = text(length(state));
    if constexpr (std::is_same_v<decltype(subject), BytesLimit>) {
        const nkcp::Table& there = *nkcp::bestFitTable(1252, 850);
        const nkcp::Table& back = *nkcp::bestFitTable(850, 1252);
        for (auto _ : state) {
            for (const nkcp::Table* table : {&there, &back}) {
                for (char& ch : plain)
                    ch = static_cast<char>((*table)[static_cast<unsigned char>(ch)]);
                keep(plain.front());
            }
        }
    } else {
        NkDtString value(plain.c_str());
        for (auto _ : state) {
            value.ConvertCodePage(NkDtCp1252To850);
            value.ConvertCodePage(NkDtCp850To1252);
            keep(value);
        }
    }
};

constexpr auto toExtern = [](benchmark::State& state, auto subject) {
    const auto source = values<decltype(subject)>(state);
    std::size_t i = 0;
    for (auto _ : state) {
        BOOL defined = FALSE;
        USHORT version = 0;
        auto external = source[i++ % variants].ConvToExtern(defined, version);
        keep(external);
    }
};

constexpr auto fromExtern = [](benchmark::State& state, auto subject) {
    const auto source = values<decltype(subject)>(state);
    NkDtString value;
    std::size_t i = 0;
    for (auto _ : state) {
        value.SetFromExtern(&source[i++ % variants], TRUE, NkDtExternVersion);
        keep(value);
    }
};

// Archives: many texts in one, since opening it is no business of a text

constexpr std::size_t archived = 256;

template <class Subject>
void fill(CMemFile& file, const std::vector<typename Subject::Value>& source) {
    file.Seek(0, CFile::begin);
    CArchive archive(&file, CArchive::store);
    for (std::size_t i = 0; i < archived; ++i) {
        auto value = source[i % variants];
        value.Serialize(archive);
    }
    archive.Close();
}

constexpr auto toArchive = [](benchmark::State& state, auto subject) {
    auto source = values<decltype(subject)>(state);
    CMemFile file;
    for (auto _ : state) {
        file.Seek(0, CFile::begin);
        CArchive archive(&file, CArchive::store);
        for (std::size_t i = 0; i < archived; ++i)
            source[i % variants].Serialize(archive);
        archive.Close();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(archived));
};

constexpr auto fromArchive = [](benchmark::State& state, auto subject) {
    using Subject = decltype(subject);
    CMemFile file;
    fill<Subject>(file, values<Subject>(state));
    NkDtString value;
    for (auto _ : state) {
        file.Seek(0, CFile::begin);
        CArchive archive(&file, CArchive::load);
        for (std::size_t i = 0; i < archived; ++i)
            value.Serialize(archive);
        keep(value);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(archived));
};

const bool registered = [] {
    const auto lengths = [](auto* benchmark) {
        for (const int bytes : {8, 60, 200, 10000})
            benchmark->Arg(bytes);
    };
    compare(Texts(), "construct", construct, lengths);
    compare(Texts(), "copy", copy, lengths);
    compare(Texts(), "move_there_and_back", moveThereAndBack, lengths);
    compare(Texts(), "assign", assign, lengths);
    compare(Texts(), "add_8", add, lengths);
    compare(Texts(), "assign_and_add_to_8", assignAndAddTo, lengths);
    compare(Texts(), "equal", equal, lengths);
    compare(Texts(), "less", less, lengths);
    compare(Texts(), "to_sql", toSql, lengths);
    compare(OurText(), "to_sql_850", toSqlIn850, lengths);
    compare(OurText(), "from_sql_850", fromSqlIn850, lengths);
    compare(OurTextAndLimit(), "convert_850_there_and_back", convertThereAndBack, lengths);
    compare(OurText(), "to_extern", toExtern, lengths);
    compare(OurText(), "from_extern", fromExtern, lengths);
    compare(OurText(), "to_archive_256", toArchive, lengths);
    compare(OurText(), "from_archive_256", fromArchive, lengths);
    return true;
}();

}  // namespace

}  // namespace bench
