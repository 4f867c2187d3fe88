#pragma once

/// @file
/// Editing texts: our class, its peers, and the least that each work asks for, done on bare buffers that are
/// there. Each subject states the same steps on its own kind of text.

#include <algorithm>
#include <bit>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <emmintrin.h>

#include "BenchSupport.h"
#include "nkdt/NkDt.h"

#ifdef NK_PEER_ABSL_STRINGS
#include <absl/strings/ascii.h>
#include <absl/strings/match.h>
#include <absl/strings/str_cat.h>
#include <absl/strings/str_replace.h>
#include <absl/strings/strip.h>
#endif
#ifdef NK_PEER_BOOST_HEADERS
#include <boost/algorithm/string.hpp>
#endif
#ifdef NK_PEER_QT6_CORE
#include <QByteArray>
#endif

namespace bench::editing {

struct Ours {
    static constexpr const char* name = "NkDtString";
    using Text = NkDtString;
    static Text make(const std::string& bytes) { return Text(bytes.c_str()); }
    static Text withRoom(std::size_t room) { return Text("", 0, static_cast<INT>(room)); }

    static std::size_t countOf(Text& text, const Text& part) {
        std::size_t count = 0;
        for (INT mode = NkDtStrPosFirst; text.GetPos(part, mode) >= 0; mode = NkDtStrPosNext)
            ++count;
        return count;
    }
    static bool contains(Text& text, const Text& part) { return text.GetPos(part, NkDtStrPosFirst) >= 0; }
    static void replaceAll(Text& text, const Text& from, const Text& to) {
        text.Change(from, to, NkDtStrAll);
    }
    static void deleteAll(Text& text, const Text& part) { text.DeleteParts(part, NkDtStrAll); }
    static void toUpper(Text& text) { text.ToUpper(); }
    static void toLower(Text& text) { text.ToLower(); }
    static bool equalWithoutCase(const Text& a, const Text& b) { return a.Compare(b, FALSE); }
    static void trim(Text& text) { text.Trim(NkDtStrAll); }
    static void append(Text& text, const Text& part) { text += part; }
    static void clear(Text& text) { text.Cut(0); }
    static Text quoted(const Text& text) { return text.ConvToSQL(); }
};

/// Loops over plain bytes with sixteen at a time where that helps; buffers are there and only filled. Each
/// work is a function that is called, as one of a library is.
struct Limit {
    static constexpr const char* name = "limit";

    /// A length, and bytes with room for whatever the works make of them, beyond the length for whole blocks.
    struct Text {
        std::size_t length = 0;
        std::vector<char> bytes;

        Text() = default;
        explicit Text(std::size_t room) : bytes(room + 64) {}
        Text(const Text&) = default;
        Text& operator=(const Text& r) {
            std::memcpy(bytes.data(), r.bytes.data(), r.length);
            length = r.length;
            return *this;
        }
    };
    static Text make(const std::string& bytes) {
        Text text(2 * bytes.size());
        std::copy(bytes.begin(), bytes.end(), text.bytes.begin());
        text.length = bytes.size();
        return text;
    }
    static Text withRoom(std::size_t room) { return Text(room); }

    /// Calls onHit for each occurrence; the part has two bytes or more, the buffer 16 beyond the length.
    template <class OnHit>
    static void forEachHit(const Text& text, const Text& part, OnHit onHit) {
        if (text.length < part.length) return;
        const char* const base = text.bytes.data();
        const std::size_t end = text.length - part.length + 1;
        const __m128i first = _mm_set1_epi8(part.bytes.front());
        const __m128i last = _mm_set1_epi8(part.bytes[part.length - 1]);
        std::size_t next = 0;
        for (std::size_t block = 0; block < end; block += 16) {
            const auto load = [base](std::size_t at) {
                return _mm_loadu_si128(reinterpret_cast<const __m128i*>(base + at));
            };
            auto mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_and_si128(
                _mm_cmpeq_epi8(load(block), first), _mm_cmpeq_epi8(load(block + part.length - 1), last))));
            for (; mask != 0; mask &= mask - 1) {
                const std::size_t at = block + static_cast<std::size_t>(std::countr_zero(mask));
                if (at < next || at >= end) continue;
                if (std::memcmp(base + at, part.bytes.data(), part.length) != 0) continue;
                onHit(at);
                next = at + part.length;
            }
        }
    }
    [[gnu::noinline]] static std::size_t countOf(const Text& text, const Text& part) {
        std::size_t count = 0;
        forEachHit(text, part, [&count](std::size_t) { ++count; });
        return count;
    }
    [[gnu::noinline]] static bool contains(const Text& text, const Text& part) {
        return countOf(text, part) != 0;
    }
    /// Into the other buffer of the scratch, which then is the text's.
    [[gnu::noinline]] static void replaceAll(Text& text, const Text& from, const Text& to) {
        static Text other;
        if (other.bytes.size() != text.bytes.size()) other.bytes.resize(text.bytes.size());
        std::size_t done = 0;
        char* out = other.bytes.data();
        forEachHit(text, from, [&](std::size_t at) {
            std::memcpy(out, text.bytes.data() + done, at - done);
            out += at - done;
            std::memcpy(out, to.bytes.data(), to.length);
            out += to.length;
            done = at + from.length;
        });
        std::memcpy(out, text.bytes.data() + done, text.length - done);
        text.length = static_cast<std::size_t>(out - other.bytes.data()) + text.length - done;
        text.bytes.swap(other.bytes);
    }
    /// In one pass: what a deletion brings about stays.
    static void deleteAll(Text& text, const Text& part) {
        static const Text nothing(0);
        replaceAll(text, part, nothing);
    }

    static __m128i isLetter(__m128i bytes, char firstLetter, char firstUmlaut) {
        const __m128i folded = _mm_add_epi8(bytes, _mm_set1_epi8(static_cast<char>(0x80 - firstLetter)));
        __m128i letters = _mm_cmplt_epi8(folded, _mm_set1_epi8(static_cast<char>(0x80 + 26)));
        for (const int step : {0, 0x12, 0x18}) {
            const auto umlaut = static_cast<char>(firstUmlaut + step);
            letters = _mm_or_si128(letters, _mm_cmpeq_epi8(bytes, _mm_set1_epi8(umlaut)));
        }
        return letters;
    }
    static __m128i flipped(__m128i bytes, __m128i letters) {
        return _mm_xor_si128(bytes, _mm_and_si128(letters, _mm_set1_epi8(0x20)));
    }
    static void flip(Text& text, char firstLetter, char firstUmlaut) {
        for (std::size_t i = 0; i < text.length; i += 16) {
            auto* const block = reinterpret_cast<__m128i*>(text.bytes.data() + i);
            const __m128i bytes = _mm_loadu_si128(block);
            _mm_storeu_si128(block, flipped(bytes, isLetter(bytes, firstLetter, firstUmlaut)));
        }
    }
    [[gnu::noinline]] static void toUpper(Text& text) { flip(text, 'a', '\xE4'); }
    [[gnu::noinline]] static void toLower(Text& text) { flip(text, 'A', '\xC4'); }
    [[gnu::noinline]] static bool equalWithoutCase(const Text& a, const Text& b) {
        if (a.length != b.length) return false;
        for (std::size_t i = 0; i < a.length; i += 16) {
            const auto small = [i](const Text& text) {
                const __m128i bytes =
                    _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.bytes.data() + i));
                return flipped(bytes, isLetter(bytes, 'A', '\xC4'));
            };
            const int equal = _mm_movemask_epi8(_mm_cmpeq_epi8(small(a), small(b)));
            if (equal != 0xFFFF &&
                i + static_cast<std::size_t>(std::countr_one(static_cast<unsigned>(equal))) < a.length)
                return false;
        }
        return true;
    }
    [[gnu::noinline]] static void trim(Text& text) {
        const char* begin = text.bytes.data();
        const char* end = begin + text.length;
        while (begin < end && *begin == ' ')
            ++begin;
        while (begin < end && end[-1] == ' ')
            --end;
        text.length = static_cast<std::size_t>(end - begin);
        std::memmove(text.bytes.data(), begin, text.length);
    }
    [[gnu::noinline]] static void append(Text& text, const Text& part) {
        std::memcpy(text.bytes.data() + text.length, part.bytes.data(), part.length);
        text.length += part.length;
    }
    static void clear(Text& text) { text.length = 0; }
    /// Into memory from malloc: a literal is a new text with everybody.
    [[gnu::noinline]] static auto quoted(const Text& text) {
        struct Free {
            void operator()(char* bytes) const { std::free(bytes); }
        };
        std::unique_ptr<char, Free> literal(static_cast<char*>(std::malloc(2 * text.length + 2)));
        char* to = literal.get();
        const char* from = text.bytes.data();
        const char* const end = from + text.length;
        *to++ = '\'';
        while (const void* const hit = std::memchr(from, '\'', static_cast<std::size_t>(end - from))) {
            const auto block = static_cast<std::size_t>(static_cast<const char*>(hit) - from) + 1;
            std::memcpy(to, from, block);
            to += block;
            *to++ = '\'';
            from += block;
        }
        std::memcpy(to, from, static_cast<std::size_t>(end - from));
        to[end - from] = '\'';
        return literal;
    }
};

/// What a program writes with the language's own string.
struct StdString {
    static constexpr const char* name = "std_string";
    using Text = std::string;
    static Text make(const std::string& bytes) { return bytes; }
    static Text withRoom(std::size_t room) {
        Text text;
        text.reserve(room);
        return text;
    }

    static std::size_t countOf(const Text& text, const Text& part) {
        std::size_t count = 0;
        for (std::size_t at = text.find(part); at != Text::npos; at = text.find(part, at + part.size()))
            ++count;
        return count;
    }
    static bool contains(const Text& text, const Text& part) { return text.find(part) != Text::npos; }
    static void replaceAll(Text& text, const Text& from, const Text& to) {
        for (std::size_t at = text.find(from); at != Text::npos; at = text.find(from, at + to.size()))
            text.replace(at, from.size(), to);
    }
    static void deleteAll(Text& text, const Text& part) {
        for (std::size_t at = text.find(part); at != Text::npos; at = text.find(part, at))
            text.erase(at, part.size());
    }
    static void toUpper(Text& text) {
        for (char& ch : text)
            ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
    }
    static void toLower(Text& text) {
        for (char& ch : text)
            ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
    }
    static bool equalWithoutCase(const Text& a, const Text& b) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](unsigned char x, unsigned char y) {
            return std::tolower(x) == std::tolower(y);
        });
    }
    static void trim(Text& text) {
        text.erase(text.find_last_not_of(' ') + 1);
        text.erase(0, text.find_first_not_of(' '));
    }
    static void append(Text& text, const Text& part) { text += part; }
    static void clear(Text& text) { text.clear(); }
    static Text quoted(const Text& text) {
        Text result;
        result.reserve(text.size() + 2);
        result += '\'';
        for (const char ch : text) {
            result += ch;
            if (ch == '\'') result += ch;
        }
        result += '\'';
        return result;
    }
};

#ifdef NK_PEER_ABSL_STRINGS
struct Abseil : StdString {
    static constexpr const char* name = "Abseil";
    static void replaceAll(Text& text, const Text& from, const Text& to) {
        absl::StrReplaceAll({{from, to}}, &text);
    }
    static void deleteAll(Text& text, const Text& part) { absl::StrReplaceAll({{part, ""}}, &text); }
    static void toUpper(Text& text) { absl::AsciiStrToUpper(&text); }
    static void toLower(Text& text) { absl::AsciiStrToLower(&text); }
    static bool equalWithoutCase(const Text& a, const Text& b) { return absl::EqualsIgnoreCase(a, b); }
    static void trim(Text& text) { absl::StripAsciiWhitespace(&text); }
    static void append(Text& text, const Text& part) { absl::StrAppend(&text, part); }
    static Text quoted(const Text& text) {
        return absl::StrCat("'", absl::StrReplaceAll(text, {{"'", "''"}}), "'");
    }
};
#endif

#ifdef NK_PEER_BOOST_HEADERS
struct Boost : StdString {
    static constexpr const char* name = "Boost";
    static std::size_t countOf(const Text& text, const Text& part) {
        std::vector<boost::iterator_range<Text::const_iterator>> hits;
        return boost::algorithm::find_all(hits, text, part).size();
    }
    static bool contains(const Text& text, const Text& part) {
        return boost::algorithm::contains(text, part);
    }
    static void replaceAll(Text& text, const Text& from, const Text& to) {
        boost::algorithm::replace_all(text, from, to);
    }
    static void deleteAll(Text& text, const Text& part) { boost::algorithm::erase_all(text, part); }
    static void toUpper(Text& text) { boost::algorithm::to_upper(text); }
    static void toLower(Text& text) { boost::algorithm::to_lower(text); }
    static bool equalWithoutCase(const Text& a, const Text& b) { return boost::algorithm::iequals(a, b); }
    static void trim(Text& text) { boost::algorithm::trim(text); }
    static Text quoted(const Text& text) {
        return '\'' + boost::algorithm::replace_all_copy(text, "'", "''") + '\'';
    }
};
#endif

#ifdef NK_PEER_QT6_CORE
struct Qt {
    static constexpr const char* name = "QByteArray";
    using Text = QByteArray;
    static Text make(const std::string& bytes) {
        return Text(bytes.data(), static_cast<qsizetype>(bytes.size()));
    }
    static Text withRoom(std::size_t room) {
        Text text;
        text.reserve(static_cast<qsizetype>(room));
        return text;
    }

    static std::size_t countOf(const Text& text, const Text& part) {
        std::size_t count = 0;
        for (qsizetype at = text.indexOf(part); at >= 0; at = text.indexOf(part, at + part.size()))
            ++count;
        return count;
    }
    static bool contains(const Text& text, const Text& part) { return text.contains(part); }
    static void replaceAll(Text& text, const Text& from, const Text& to) { text.replace(from, to); }
    static void deleteAll(Text& text, const Text& part) { text.replace(part, ""); }
    static void toUpper(Text& text) { text = std::move(text).toUpper(); }
    static void toLower(Text& text) { text = std::move(text).toLower(); }
    static bool equalWithoutCase(const Text& a, const Text& b) {
        return a.compare(b, ::Qt::CaseInsensitive) == 0;
    }
    static void trim(Text& text) { text = std::move(text).trimmed(); }
    static void append(Text& text, const Text& part) { text.append(part); }
    static void clear(Text& text) { text.resize(0); }
    static Text quoted(const Text& text) {
        Text result = text;
        result.replace('\'', "''");
        result.prepend('\'');
        result.append('\'');
        return result;
    }
};
#endif

/// All that are there.
using All = Subjects<Ours, Limit, StdString
#ifdef NK_PEER_ABSL_STRINGS
                     ,
                     Abseil
#endif
#ifdef NK_PEER_BOOST_HEADERS
                     ,
                     Boost
#endif
#ifdef NK_PEER_QT6_CORE
                     ,
                     Qt
#endif
                     >;

}  // namespace bench::editing
