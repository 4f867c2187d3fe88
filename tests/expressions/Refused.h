#pragma once

/// @file
/// Checks for expressions that must not compile.
///
/// An expression is written as a lambda whose result type holds it:
/// `[](auto&& s) -> decltype(void(s = 5)) {}`. Beside each refused one stands a sister that does compile, so
/// that none is refused for another reason than the one that it is about.

#include <cstddef>
#include <tuple>
#include <type_traits>

#include "Check.h"

namespace expressions {

/// What a row is about, and where it stands.
struct Row {
    Row(const char* psz, Here place = {__builtin_FILE(), __builtin_LINE()}) : what(psz), here(place) {}
    const char* what;
    Here here;
};

/// The expression compiles for a variable of the type.
template <class Operand, class Expression>
constexpr bool compiles(const Expression&) {
    return std::is_invocable_v<Expression, Operand&>;
}

/// Of the expressions with an operand of the type, the first compiles and no other does.
template <class Operand, class Good, class... Bad>
void onlyFirstCompiles(const Row& row, const Good& good, const Bad&... bad) {
    static_assert(sizeof...(Bad) > 0);
    count(compiles<Operand>(good), row.what, row.here);
    (count(!compiles<Operand>(bad), row.what, row.here), ...);
}

/// A function that takes a `const Class&` can be given a Good, and none of the others.
template <class Class, class Good, class... Bad>
void refusedAsArgument(const Row& row) {
    static_assert(sizeof...(Bad) > 0);
    count(std::is_convertible_v<Good, const Class&>, row.what, row.here);
    (count(!std::is_convertible_v<Bad, const Class&>, row.what, row.here), ...);
}

inline constexpr auto comparisons = std::make_tuple(
    [](auto&& a, auto&& b) -> decltype(void(a == b)) {}, [](auto&& a, auto&& b) -> decltype(void(a != b)) {},
    [](auto&& a, auto&& b) -> decltype(void(a < b)) {}, [](auto&& a, auto&& b) -> decltype(void(a > b)) {},
    [](auto&& a, auto&& b) -> decltype(void(a <= b)) {}, [](auto&& a, auto&& b) -> decltype(void(a >= b)) {});
inline constexpr auto addition = std::make_tuple([](auto&& a, auto&& b) -> decltype(void(a + b)) {});
inline constexpr auto arithmetic = std::make_tuple(
    [](auto&& a, auto&& b) -> decltype(void(a + b)) {}, [](auto&& a, auto&& b) -> decltype(void(a - b)) {},
    [](auto&& a, auto&& b) -> decltype(void(a * b)) {}, [](auto&& a, auto&& b) -> decltype(void(a / b)) {});

inline constexpr auto computing = std::make_tuple(
    [](auto&& a, auto&& b) -> decltype(void(a - b)) {}, [](auto&& a, auto&& b) -> decltype(void(a * b)) {},
    [](auto&& a, auto&& b) -> decltype(void(a / b)) {}, [](auto&& a, auto&& b) -> decltype(void(a % b)) {},
    [](auto&& a, auto&& b) -> decltype(void(a & b)) {}, [](auto&& a, auto&& b) -> decltype(void(a | b)) {},
    [](auto&& a, auto&& b) -> decltype(void(a ^ b)) {}, [](auto&& a, auto&& b) -> decltype(void(a << b)) {},
    [](auto&& a, auto&& b) -> decltype(void(a >> b)) {});

/// How many of the operators compile with these operands, each counted in both orders.
template <class A, class B, class... Operators>
constexpr std::size_t compiling(const std::tuple<Operators...>&) {
    return (... + (std::size_t{std::is_invocable_v<Operators, A, B>} +
                   std::size_t{std::is_invocable_v<Operators, B, A>}));
}

/// All operators compile between two operands of the type A, none beside an operand of a type Bad.
template <class A, class... Bad, class Operators>
void refusedBeside(const Row& row, const Operators& operators) {
    count(compiling<const A&, const A&>(operators) == 2 * std::tuple_size_v<Operators>, row.what, row.here);
    (count(compiling<const A&, const Bad&>(operators) == 0, row.what, row.here), ...);
}

/// Nothing is computed with an A, alone, with another one or with a Bad.
template <class A, class... Bad>
void refusedInComputing(const Row& row) {
    count(compiling<const int&, const int&>(computing) == 2 * std::tuple_size_v<decltype(computing)>,
          row.what, row.here);
    count(compiling<const A&, const A&>(computing) == 0, row.what, row.here);
    (count(compiling<const A&, const Bad&>(computing) == 0, row.what, row.here), ...);
    onlyFirstCompiles<A>(
        row, [](auto&& a) -> decltype(void(a == a)) {}, [](auto&& a) -> decltype(void(-a)) {},
        [](auto&& a) -> decltype(void(~a)) {}, [](auto&& a) -> decltype(void(++a)) {},
        [](auto&& a) -> decltype(void(a *= 2)) {});
}

}  // namespace expressions
