#pragma once

/// @file
/// Checks for expressions as applications write them.
///
/// The same sources are compiled by each compiler in each language standard, so they use no test framework:
/// each program prints what does not hold and ends with 1.

#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtShort.h>
#include <nkdt/NkDtString.h>
#include <nkdt/NkDtTypes.h>
#include <nkeh/NkEhBasis.h>

#include <memory>
#include <string_view>
#include <type_traits>

namespace expressions {

/// The rows of each class.
void characterValues();
void dates();
void doubles();
void decimals();
void durations();
void text();
void truthValues();
void wholeNumbers();

/// The place of a check.
struct Here {
    const char* file;
    int line;
};

/// Counts a check, and prints it when it does not hold.
void count(bool holds, std::string_view what, Here here);

/// A comparison of value classes gives a BOOL, and gives TRUE.
template <class Result>
void isTrue(Result result, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    static_assert(std::is_same_v<Result, BOOL>);
    count(result == TRUE, "is TRUE", here);
}

template <class Result>
void isFalse(Result result, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    static_assert(std::is_same_v<Result, BOOL>);
    count(result == FALSE, "is FALSE", here);
}

/// A fact about the world around the value classes.
inline void holds(bool fact, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    count(fact, "holds", here);
}

/// The expression has this very type, is defined and has this value.
template <class Number, class Result>
void isNumber(const Result& result, long value, Here here) {
    static_assert(std::is_same_v<Result, Number>);
    count(result.IsDefined() && result.GetValue() == value, "is the number", here);
}

template <class Result>
void isLong(const Result& result, long value, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    isNumber<NkDtLong>(result, value, here);
}

template <class Result>
void isShort(const Result& result, long value, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    isNumber<NkDtShort>(result, value, here);
}

template <class Result>
void isText(const Result& result, std::string_view text, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    static_assert(std::is_same_v<Result, NkDtString>);
    count(result.IsDefined() && result.GetValue() == text, "is the text", here);
}

/// All twelve comparisons of two equal operands.
template <class A, class B>
void equal(const A& a, const B& b, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    isTrue(a == b, here);
    isTrue(b == a, here);
    isTrue(a <= b, here);
    isTrue(b <= a, here);
    isTrue(a >= b, here);
    isTrue(b >= a, here);
    isFalse(a != b, here);
    isFalse(b != a, here);
    isFalse(a < b, here);
    isFalse(b < a, here);
    isFalse(a > b, here);
    isFalse(b > a, here);
}

/// All twelve comparisons of a smaller with a larger operand.
template <class A, class B>
void less(const A& a, const B& b, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    isTrue(a < b, here);
    isTrue(b > a, here);
    isTrue(a <= b, here);
    isTrue(b >= a, here);
    isTrue(a != b, here);
    isTrue(b != a, here);
    isFalse(a == b, here);
    isFalse(b == a, here);
    isFalse(a > b, here);
    isFalse(b < a, here);
    isFalse(a >= b, here);
    isFalse(b <= a, here);
}

/// The expression raises this error.
template <class Expression>
void raises(ULONG error, Expression expression, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    try {
        expression();
        count(false, "raises an error", here);
    } catch (NkEhBasis* caught) {
        const std::unique_ptr<NkEhBasis> owner(caught);
        count(caught->GetErrorNumber() == error, "raises the right error", here);
    }
}

}  // namespace expressions
