#pragma once

/// @file
/// What NkDtDecimal states of itself for the common flows.

#include <string_view>

#include "Imp/dtdecimi.h"
#include "Literal1252.h"
#include "RealNumberFlow.h"
#include "nkdt/NkDtDecimal.h"

namespace nkdt {

constexpr Origin decimalOrigin(const char* operation) {
    return {".\\Dtdecope.cc", "NkDtDecimal", operation};
}

template <>
struct ValuePart<NkDtDecimal> {
    static constexpr NkDtTyps typ = NkDtTypDecimal;
    static constexpr Origin assign = {".\\Dtdecima.cc", "NkDtDecimal", "Assign(NkDtBasis&)"};
    static constexpr Origin comparisons[] = {
        decimalOrigin("operator==(NkDtDecimal&)"), decimalOrigin("operator!=(NkDtDecimal&)"),
        decimalOrigin("operator<(NkDtDecimal&)"),  decimalOrigin("operator>(NkDtDecimal&)"),
        decimalOrigin("operator<=(NkDtDecimal&)"), decimalOrigin("operator>=(NkDtDecimal&)")};
    static constexpr Origin wholeComparisons[] = {
        decimalOrigin("operator==(INT)"), decimalOrigin("operator!=(INT)"), decimalOrigin("operator<(INT)"),
        decimalOrigin("operator>(INT)"),  decimalOrigin("operator<=(INT)"), decimalOrigin("operator>=(INT)")};
    static constexpr Origin floatingComparisons[] = {
        decimalOrigin("operator==(double)"), decimalOrigin("operator!=(double)"),
        decimalOrigin("operator<(double)"),  decimalOrigin("operator>(double)"),
        decimalOrigin("operator<=(double)"), decimalOrigin("operator>=(double)")};
    static constexpr bool alwaysModified = false;
    static constexpr bool keepsEqual = true;

    static bool differ(const Decimal96& a, const Decimal96& b) { return NkDtDecimal_Imp::differ(a, b); }

    static Decimal96 toValue(const PlainNumber& number) {
        return valueOf<Decimal96>(number, [](double floating) {
            NkDtDecimal_Imp::setHandlers();  // there may be no value yet
            return Decimal96::from(floating);
        });
    }

    /// A divisor of 0 is the decimal's own error.
    static Decimal96 divide(RealOperation operation, const Decimal96& a, const Decimal96& b, RealForm) {
        return operation == RealOperation::remainder ? a % b : a / b;
    }

    static Decimal96 computeFirst(RealOperation operation, const PlainNumber& a, const NkDtDecimal& b) {
        if (operation == RealOperation::divide) return divideFirst(a, b);
        if (isNeutral(b, operation)) return toValue(a);
        return compute<ValuePart>(operation, toValue(a), b.Stored(), formOf(a, true));
    }

    static NkDtDecimal taken(const NkDtDecimal& operand, RealOperation operation) {
        const Decimal96 number = operand.Stored();
        return NkDtDecimal(operation == RealOperation::remainder ? number - number.truncate(0) : number);
    }

    static bool related(RealComparison comparison, const Decimal96& a, const PlainNumber& b,
                        const Origin& origin) {
        const auto compare = [&] { return holds(comparison, a, toValue(b)); };
        return b.kind() == PlainNumber::Kind::floating ? wrapped(origin, compare) : compare();
    }

    using Text = char[Decimal96::textSize];
    static std::string_view text(const Decimal96& number, Text& buffer) {
        return NkDtDecimal_Imp::plainText(number, buffer);
    }

  private:
    static Decimal96 divideFirst(const PlainNumber& a, const NkDtDecimal& divisor) {
        const Decimal96 b = divisor.Stored();
        using namespace nkfw::literals;
        static constexpr const char* friends = "Friend-Operatoren für NkDtDecimal"_cp1252;
        static constexpr Origin whole = {".\\Dtdecope.cc", friends, "operator/(INT,NkDtDecimal&)"};
        static constexpr Origin floating = {".\\Dtdecope.cc", friends, "operator/(double,NkDtDecimal&)"};
        const Origin& origin = a.kind() == PlainNumber::Kind::floating ? floating : whole;
        const bool isZero = divisor.IsDefined() && wrapped(origin, [&b] { return b == 0; });
        if (isZero) raise(origin, NkDtErrDivisionDurchNull);
        return wrapped(origin, [&] {
            const Decimal96 dividend = toValue(a);
            return dividend == 0 || isNeutral(divisor, RealOperation::divide) ? dividend : dividend / b;
        });
    }
};

}  // namespace nkdt
