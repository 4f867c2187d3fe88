#pragma once

/// @file
/// Nullable whole numbers that are compared: our classes, limits that do the least possible work, and peers.
/// Each subject states the same steps; all computing is checked for overflow.

#include <array>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include "BareList.h"
#include "nkdt/NkDt.h"

#ifdef NK_PEER_POCO_FOUNDATION
#include <Poco/Dynamic/Var.h>
#include <Poco/Nullable.h>
#include <Poco/NumberFormatter.h>
#include <Poco/NumberParser.h>
#endif
#ifdef NK_PEER_QT6_CORE
#include <QVariant>
#endif

namespace bench {

inline int checkedSum(int a, int b) {
    int sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) std::abort();
    return sum;
}

/// One of our classes.
template <class T>
struct Ours {
    using Value = T;
    static Value make(int n) { return Value(n); }
    static Value sum(const Value& a, const Value& b) { return a + b; }
    static void add(Value& a, const Value& b) { a += b; }
    static bool less(const Value& a, const Value& b) { return a < b; }
    static Value fromText(const std::string& text) { return Value(text.c_str()); }
    static NkDtString toText(const Value& a) { return NkDtString(a); }
};
struct Long : Ours<NkDtLong> {
    static constexpr const char* name = "NkDtLong";
};
struct Short : Ours<NkDtShort> {
    static constexpr const char* name = "NkDtShort";
};

// Limits

struct PlainMalloc {
    static void* take() { return std::malloc(24); }
    static void give(void* memory) noexcept { std::free(memory); }
};

/// The least that a value with two records of 24 bytes must do.
template <class Memory>
class TwoRecords {
  public:
    explicit TwoRecords(int n)
        : m_state(::new (Memory::take()) State{0, 1, 0, nullptr}), m_value(::new (Memory::take()) int(n)) {}
    TwoRecords(const TwoRecords& r)
        : m_state(::new (Memory::take()) State(*r.m_state)),
          m_value(::new (Memory::take()) int(*r.m_value)) {}
    TwoRecords(TwoRecords&& r) noexcept
        : m_state(std::exchange(r.m_state, nullptr)), m_value(std::exchange(r.m_value, nullptr)) {}
    TwoRecords& operator=(const TwoRecords& r) {
        m_state->modified |= *m_value != *r.m_value;
        *m_value = *r.m_value;
        return *this;
    }
    TwoRecords& operator=(TwoRecords&& r) noexcept {
        std::swap(m_state, r.m_state);
        std::swap(m_value, r.m_value);
        return *this;
    }
    ~TwoRecords() {
        if (m_state == nullptr) return;
        Memory::give(m_value);
        Memory::give(m_state);
    }

    bool defined() const { return m_state->defined != 0; }
    int value() const { return *m_value; }
    void set(int n) {
        m_state->modified = 1;
        *m_value = n;
    }

  private:
    struct State {
        int mode;
        int defined;
        int modified;
        const void* format;
    };
    State* m_state;
    int* m_value;
};

template <class Memory>
struct Limit {
    using Value = TwoRecords<Memory>;
    static Value make(int n) { return Value(n); }
    static Value sum(const Value& a, const Value& b) {
        if (!a.defined() || !b.defined()) std::abort();
        return Value(checkedSum(a.value(), b.value()));
    }
    static void add(Value& a, const Value& b) {
        if (!a.defined() || !b.defined()) std::abort();
        a.set(checkedSum(a.value(), b.value()));
    }
    static bool less(const Value& a, const Value& b) { return a.value() < b.value(); }
};
struct PoolLimit : Limit<BareList> {
    static constexpr const char* name = "limit_pool";
};
struct MallocLimit : Limit<PlainMalloc> {
    static constexpr const char* name = "limit_malloc";
};

/// Digits in the caller's memory, without any value around them.
struct DigitsLimit {
    static constexpr const char* name = "limit_digits";
    using Value = int;
    static Value make(int n) { return n; }
    static Value fromText(const std::string& text) {
        int n = 0;
        if (std::from_chars(text.data(), text.data() + text.size(), n).ec != std::errc()) std::abort();
        return n;
    }
    // Too large for registers, through which the digits would go as words and stall.
    static std::array<char, 24> toText(Value n) {
        std::array<char, 24> digits;
        *std::to_chars(digits.data(), digits.data() + digits.size(), n).ptr = '\0';
        return digits;
    }
};

// Peers

struct Optional {
    static constexpr const char* name = "optional_int";
    using Value = std::optional<int>;
    static Value make(int n) { return Value(n); }
    static Value sum(const Value& a, const Value& b) { return Value(checkedSum(a.value(), b.value())); }
    static void add(Value& a, const Value& b) { a = checkedSum(a.value(), b.value()); }
    static bool less(const Value& a, const Value& b) { return a.value() < b.value(); }
    static Value fromText(const std::string& text) { return DigitsLimit::fromText(text); }
    static std::string toText(const Value& a) { return std::to_string(a.value()); }
};

#ifdef NK_PEER_POCO_FOUNDATION
struct PocoNullable {
    static constexpr const char* name = "Poco_Nullable";
    using Value = Poco::Nullable<Poco::Int32>;
    static Value make(int n) { return Value(n); }
    static Value sum(const Value& a, const Value& b) { return Value(checkedSum(a.value(), b.value())); }
    static void add(Value& a, const Value& b) { a = checkedSum(a.value(), b.value()); }
    static bool less(const Value& a, const Value& b) { return a < b; }
    static Value fromText(const std::string& text) { return Value(Poco::NumberParser::parse(text)); }
    static std::string toText(const Value& a) { return Poco::NumberFormatter::format(a.value()); }
};

struct PocoVar {
    static constexpr const char* name = "Poco_Var";
    using Value = Poco::Dynamic::Var;
    static Value make(int n) { return Value(n); }
    static Value sum(const Value& a, const Value& b) { return a + b; }
    static void add(Value& a, const Value& b) { a += b; }
    static bool less(const Value& a, const Value& b) { return a < b; }
    static Value fromText(const std::string& text) { return Value(Value(text).convert<int>()); }
    static std::string toText(const Value& a) { return a.toString(); }
};
#endif

#ifdef NK_PEER_QT6_CORE
struct QtVariant {
    static constexpr const char* name = "QVariant";
    using Value = QVariant;
    static Value make(int n) { return Value(n); }
    static Value sum(const Value& a, const Value& b) { return Value(checkedSum(a.toInt(), b.toInt())); }
    static void add(Value& a, const Value& b) { a = Value(checkedSum(a.toInt(), b.toInt())); }
    static bool less(const Value& a, const Value& b) { return a.toInt() < b.toInt(); }
    static Value fromText(const std::string& text) {
        return Value(QVariant(QString::fromStdString(text)).toInt());
    }
    static QString toText(const Value& a) { return a.toString(); }
};
#endif

}  // namespace bench
