/// @file
/// NkDtDecimal beside the bare Decimal96 that it holds, and beside Decimal96 with two records from a bare
/// list.

#include <string>
#include <vector>

#include "BareList.h"
#include "BenchSupport.h"
#include "nkdec/Decimal96.h"
#include "nkdt/NkDtDecimal.h"

namespace bench {

namespace {

struct DecimalValue {
    static constexpr const char* name = "NkDtDecimal";
    using Value = NkDtDecimal;
    static Value make(const Decimal96& number) { return Value(number); }
    static Value fromText(const char* text) { return Value(text); }
    static void toText(const Value& value, char* buffer) { value.DecimalToAscii(buffer); }
};

struct BareDecimal {
    static constexpr const char* name = "Decimal96";
    using Value = Decimal96;
    static Value make(const Decimal96& number) { return number; }
    static Value fromText(const char* text) { return Value(text); }
    static void toText(const Value& value, char* buffer) { value.toString(buffer); }
};

/// The number in the second of two records.
struct Recorded {
    static constexpr const char* name = "limit_pool";

    class Value {
      public:
        explicit Value(const Decimal96& number)
            : m_state(BareList::take()), m_number(::new (BareList::take()) Decimal96(number)) {}
        Value(const Value& r) : Value(*r.m_number) {}
        Value& operator=(const Value& r) {
            *m_number = *r.m_number;
            return *this;
        }
        ~Value() {
            BareList::give(m_number);
            BareList::give(m_state);
        }
        Value& operator+=(const Value& r) {
            *m_number += *r.m_number;
            return *this;
        }
        friend Value operator+(const Value& a, const Value& b) { return Value(*a.m_number + *b.m_number); }
        friend Value operator*(const Value& a, const Value& b) { return Value(*a.m_number * *b.m_number); }
        friend bool operator<(const Value& a, const Value& b) { return *a.m_number < *b.m_number; }

      private:
        void* m_state;
        Decimal96* m_number;
    };
    static Value make(const Decimal96& number) { return Value(number); }
};

using All = Subjects<DecimalValue, BareDecimal, Recorded>;
using WithTexts = Subjects<DecimalValue, BareDecimal>;

/// Amounts with two places; each stands beside its opposite, so that their sum stays small.
Decimal96 amount(std::size_t i) {
    static const std::vector<int> amounts = numbers(Ring<int>::size);
    return Decimal96::fromMantissa(amounts[i] < 0 ? -1 : 0,
                                   static_cast<std::uint64_t>(std::int64_t{amounts[i]}), 2);
}

template <class Subject>
auto amounts() {
    return Ring<typename Subject::Value>([](std::size_t i) { return Subject::make(amount(i)); });
}

constexpr auto construct = [](benchmark::State& state, auto subject) {
    Ring<Decimal96> source(amount);
    for (auto _ : state) {
        auto value = decltype(subject)::make(source.next());
        keep(value);
    }
};

constexpr auto copy = [](benchmark::State& state, auto subject) {
    auto source = amounts<decltype(subject)>();
    for (auto _ : state) {
        auto value = source.next();
        keep(value);
    }
};

constexpr auto assign = [](benchmark::State& state, auto subject) {
    auto source = amounts<decltype(subject)>();
    auto value = source.next();
    for (auto _ : state) {
        value = source.next();
        keep(value);
    }
};

constexpr auto add = [](benchmark::State& state, auto subject) {
    auto left = amounts<decltype(subject)>();
    auto right = amounts<decltype(subject)>();
    right.next();
    for (auto _ : state) {
        auto sum = left.next() + right.next();
        keep(sum);
    }
};

constexpr auto addTo = [](benchmark::State& state, auto subject) {
    auto source = amounts<decltype(subject)>();
    auto sum = decltype(subject)::make(Decimal96());
    for (auto _ : state) {
        sum += source.next();
        keep(sum);
    }
};

constexpr auto multiply = [](benchmark::State& state, auto subject) {
    auto left = amounts<decltype(subject)>();
    auto right = amounts<decltype(subject)>();
    for (auto _ : state) {
        auto product = left.next() * right.next();
        keep(product);
    }
};

constexpr auto less = [](benchmark::State& state, auto subject) {
    auto left = amounts<decltype(subject)>();
    auto right = amounts<decltype(subject)>();
    right.next();
    for (auto _ : state) {
        bool result = left.next() < right.next();
        keep(result);
    }
};

constexpr auto fromText = [](benchmark::State& state, auto subject) {
    Ring<std::string> source([](std::size_t i) {
        char text[Decimal96::textSize];
        amount(i).toString(text);
        return std::string(text);
    });
    for (auto _ : state) {
        auto value = decltype(subject)::fromText(source.next().c_str());
        keep(value);
    }
};

constexpr auto toText = [](benchmark::State& state, auto subject) {
    auto source = amounts<decltype(subject)>();
    char buffer[Decimal96::textSize];
    for (auto _ : state) {
        decltype(subject)::toText(source.next(), buffer);
        keep(buffer);
    }
};

const bool registered = [] {
    compare(All(), "construct", construct);
    compare(All(), "copy", copy);
    compare(All(), "assign", assign);
    compare(All(), "add", add);
    compare(All(), "add_to", addTo);
    compare(All(), "multiply", multiply);
    compare(All(), "less", less);
    compare(WithTexts(), "from_text", fromText);
    compare(WithTexts(), "to_text", toText);
    return true;
}();

}  // namespace

}  // namespace bench
