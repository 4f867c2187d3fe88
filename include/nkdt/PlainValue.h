#pragma once

/// @file
/// What the classes do alike that hold one plain value and do not compute with it: NkDtChar and NkDtBool.
/// Each class adds its constructors and its conversions.

#include <iosfwd>

#include "nkdt/Operands.h"
#include "nkdt/StoredValue.h"
#include "nkfw/Export.h"

namespace nkdt {

/// Of each class its traits state, beside its types, what never stands beside it in a comparison
/// (`isNoComparand`) or in an order (`isNoOrdered`).
template <class Derived>
class NKDT_API PlainValue : public StoredValue<Derived> {
    using Traits = ValueTraits<Derived>;

  public:
    using typename StoredValue<Derived>::Value;

    // Comparing looks at the stored value as it is. Error 2 "Undefinierter Wert" when an operand is missing;
    // a null one compares with its stored value, normally the empty one.
    friend BOOL operator==(const Derived& a, const Derived& b) { return Equal(a, b, Comparison::equal); }
    friend BOOL operator!=(const Derived& a, const Derived& b) { return !Equal(a, b, Comparison::unequal); }
    friend BOOL operator==(const Derived& a, Value b) { return Equal(a, b, Comparison::equal); }
    friend BOOL operator!=(const Derived& a, Value b) { return !Equal(a, b, Comparison::unequal); }
    friend BOOL operator==(Value a, const Derived& b) { return b == a; }
    friend BOOL operator!=(Value a, const Derived& b) { return b != a; }

    template <class T>
    friend ResultIf<Traits::template isNoComparand<T>, BOOL> operator==(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<Traits::template isNoComparand<T>, BOOL> operator!=(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<Traits::template isNoComparand<T>, BOOL> operator==(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<Traits::template isNoComparand<T>, BOOL> operator!=(const T&, const Derived&) = delete;

    // There is no order: the built-in one would read a missing value as the empty one.
    template <class T>
    friend ResultIf<Traits::template isNoOrdered<T>, BOOL> operator<(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<Traits::template isNoOrdered<T>, BOOL> operator>(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<Traits::template isNoOrdered<T>, BOOL> operator<=(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<Traits::template isNoOrdered<T>, BOOL> operator>=(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<Traits::template isNoOrdered<T>, BOOL> operator<(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<Traits::template isNoOrdered<T>, BOOL> operator>(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<Traits::template isNoOrdered<T>, BOOL> operator<=(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<Traits::template isNoOrdered<T>, BOOL> operator>=(const T&, const Derived&) = delete;

    // Nothing is computed with these values, though the language would with the stored one.
    friend void operator-(const Derived&) = delete;
    friend void operator~(const Derived&) = delete;
    friend void operator*(const Derived&, const Derived&) = delete;
    friend void operator/(const Derived&, const Derived&) = delete;
    friend void operator%(const Derived&, const Derived&) = delete;
    friend void operator-(const Derived&, const Derived&) = delete;
    friend void operator&(const Derived&, const Derived&) = delete;
    friend void operator|(const Derived&, const Derived&) = delete;
    friend void operator^(const Derived&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoFactor<T, Derived>, void> operator*(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoFactor<T, Derived>, void> operator*(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoFactor<T, Derived>, void> operator/(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoFactor<T, Derived>, void> operator/(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoFactor<T, Derived>, void> operator%(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoFactor<T, Derived>, void> operator%(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoFactor<T, Derived>, void> operator-(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoFactor<T, Derived>, void> operator-(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoFactor<T, Derived>, void> operator&(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoFactor<T, Derived>, void> operator&(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoFactor<T, Derived>, void> operator|(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoFactor<T, Derived>, void> operator|(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoFactor<T, Derived>, void> operator^(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoFactor<T, Derived>, void> operator^(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoFactor<T, Derived>, void> operator<<(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoFactor<T, Derived>, void> operator<<(const T&, const Derived&) = delete;
    friend void operator<<(const Derived&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoFactor<T, Derived>, void> operator>>(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoFactor<T, Derived>, void> operator>>(const T&, const Derived&) = delete;
    friend void operator>>(const Derived&, const Derived&) = delete;

    /// Writes the text of the value; nothing for an undefined value.
    friend std::ostream& operator<<(std::ostream& os, const Derived& value) { return Write(os, value); }

  protected:
    using StoredValue<Derived>::StoredValue;
    using StoredValue<Derived>::Stored;

  private:
    enum class Comparison : unsigned char { equal, unequal };

    static bool Equal(const Derived& a, const Derived& b, Comparison comparison);
    static bool Equal(const Derived& a, Value b, Comparison comparison);
    static std::ostream& Write(std::ostream& os, const Derived& value);

#if defined(__cpp_impl_three_way_comparison)
    friend void operator<=>(const Derived&, const Derived&) = delete;
    template <class T>
    friend ResultIf<Traits::template isNoOrdered<T> && !isKindOf<T, Derived>, void> operator<=>(
        const Derived&, const T&) = delete;
#endif
};

}  // namespace nkdt
