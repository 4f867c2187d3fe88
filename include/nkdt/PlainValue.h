#pragma once

/// @file
/// What the classes do alike that hold one plain value and do not compute with it: NkDtChar and NkDtBool.
/// Each class adds its constructors and its conversions.

#include <iosfwd>

#include "nkdt/NkDtBasis.h"
#include "nkdt/NkDtTypes.h"
#include "nkdt/Operands.h"
#include "nkdt/Record.h"
#include "nkfw/Export.h"

class CArchive;

namespace nkdt {

/// Of each class: its record `Imp`, the stored type `Value`, and what never stands beside it in a comparison
/// (`isNoComparand`) or in an order (`isNoOrdered`).
template <class Derived>
struct PlainValueTraits;

template <class Imp>
struct NewRecords;

template <class Derived>
class NKDT_API PlainValue : public NkDtBasis {
    using Traits = PlainValueTraits<Derived>;

  public:
    using Value = typename Traits::Value;  ///< the stored type

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

    /// The base state, then the stored value in its own width, also when the value is undefined. A load that
    /// fails half way leaves everything as it was.
    void Serialize(CArchive& ar) override;
    void Clear() override;
    void Assign(const NkDtBasis& r) override;
    NkDtTyps GetDtTyp() const override;

  protected:
    using Imp = typename Traits::Imp;

    PlainValue(BOOL fDefined, NkDtWorkingMode eMode, Value value = Value{});
    /// The base state of @p r and this stored value.
    PlainValue(const NkDtBasis& r, Value value);
    PlainValue(const PlainValue& r);
    PlainValue(PlainValue&& r) noexcept = default;
    ~PlainValue() override;

    Value Stored() const;
    /// Stores the value, modified if it differs.
    void Store(Value value);
    /// The same, and makes the value defined.
    void SetTo(Value value);
    /// Copies value and definedness, modified if they differ.
    void CopyFrom(const PlainValue& r);
    /// Takes everything onto a husk; copies onto any other value.
    void MoveFrom(PlainValue& r) {
        if (!IsHusk()) return CopyFrom(r);
        StealState(r);
        m_imp.steal(r.m_imp);
    }

  private:
    explicit PlainValue(const NewRecords<Imp>& records) noexcept;

    enum class Comparison : unsigned char { equal, unequal };

    Derived& Self() noexcept { return static_cast<Derived&>(*this); }
    static bool Equal(const Derived& a, const Derived& b, Comparison comparison);
    static bool Equal(const Derived& a, Value b, Comparison comparison);
    static std::ostream& Write(std::ostream& os, const Derived& value);

    Record<Imp> m_imp;

#if defined(__cpp_impl_three_way_comparison)
    friend void operator<=>(const Derived&, const Derived&) = delete;
    template <class T>
    friend ResultIf<Traits::template isNoOrdered<T> && !isKindOf<T, Derived>, void> operator<=>(
        const Derived&, const T&) = delete;
#endif
};

}  // namespace nkdt
