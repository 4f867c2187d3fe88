#pragma once

/// @file
/// A signed decimal number: a mantissa of 96 bits and a count of decimal places.
///
/// Money and other quantities that people write with digits compute exactly here, where a double does not:
/// @code
/// Decimal96 price("19.99");
/// Decimal96 total = price * 3;                                             // 59.97
/// Decimal96 tax = Decimal96::multiplyRounded(total, Decimal96("0.19"), 2);  // 11.39, rounded once
/// char text[Decimal96::textSize];
/// (total + tax).toString(text);                                             // "71.36"
/// @endcode
///
/// - The number is mantissa * 10^-scale with a magnitude of the mantissa below 2^95, so that every number
///   of 28 digits can be held. Results have 0 to 28 places. 1.50 and 1.5 are equal, have the same hash, and
///   keep the places that they were written with.
/// - `+`, `-` and `*` have their natural scale (the larger of the two; the sum of both, at most 28) where the
///   result fits, else the largest scale at which it fits, rounded half away from zero, once.
/// - `/` gives an exact quotient the smallest scale from max(0, scale(a) - scale(b)) on, every other
///   quotient as many places as fit, at most 28, rounded half away from zero, once.
/// - What does not fit at scale 0, and a divisor of 0, calls the overflow handler, a loss of digits the
///   inexact handler (Decimal96Handlers.h). When a handler throws, no operand has changed.
/// - Made of parts, a number may have any scale of 16 bits, which it keeps and tells. Computing, comparing
///   and writing see it normalised: more than 28 places are rounded half away from zero to 28, a negative
///   scale is multiplied out, which calls the overflow handler if it does not fit.
/// - What is no number (the result of an overflow whose handler returned, or a text that is none) makes every
///   result that it takes part in the same, without a further call. It equals its like and is greater than
///   every number; as a double it is NaN, as a whole number 0, as a text "NaN".
///
/// A value of 16 bytes without memory of its own, free to be copied byte by byte. Different threads may use
/// different values, and read the same one.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>
#if defined(__cpp_impl_three_way_comparison)
#include <compare>
#endif

#include "nkdec/Decimal96Handlers.h"
#include "nkdec/Decimal96Narrow.h"
#include "nkdec/Export.h"

/// Whether a Decimal96 is a number.
enum class Decimal96State : std::uint8_t {
    number = 0,
    overflow = 1,  ///< the result did not fit
    invalid = 2,   ///< the text was no number
};

/// Why a text is no decimal.
enum class Decimal96TextError : int {
    none = 0,
    character,  ///< a character other than digits, one "." and a sign in front
    noDigit,    ///< characters, but not one digit
};

/// How reading a text ended.
struct Decimal96TextResult {
    Decimal96TextError error = Decimal96TextError::none;
    std::size_t position = 0;  ///< offset of the refused character, or the text's length

    constexpr explicit operator bool() const noexcept { return error == Decimal96TextError::none; }
};

class Decimal96 {
  public:
    /// What happens to the digits that go.
    enum Rounding : int {
        PLAIN = 0,  ///< half away from zero
        UP = 1,     ///< away from zero
        DOWN = 2,   ///< toward zero
    };

    static constexpr int maxScale = 28;          ///< most places of a result
    static constexpr std::size_t textSize = 33;  ///< bytes of a buffer for any text, its NUL included

    /// @name Construction
    /// @{

    /// 0 without places.
    constexpr Decimal96() noexcept = default;

    /// A whole number of any type up to 64 bits, exactly. Truth values and characters are no numbers.
    template <class T, std::enable_if_t<std::is_integral_v<T> && !std::is_same_v<T, bool> &&
                                            !std::is_same_v<T, char> && !std::is_same_v<T, wchar_t> &&
                                            !std::is_same_v<T, char16_t> && !std::is_same_v<T, char32_t>,
                                        int> = 0>
    constexpr Decimal96(T value) noexcept  // NOLINT(google-explicit-constructor): exact
        : m_low(static_cast<std::uint64_t>(value)), m_high(value < T{0} ? -1 : 0) {
        static_assert(sizeof(T) <= sizeof(std::uint64_t), "more than 64 bits");
    }

    /// The decimal with the fewest places that reads back as the same double, so 0.1 becomes 0.1; rounded
    /// half away from zero to 28 places. From 2^53 on it is the double's exact value. From 2^95 on, and for
    /// what is not finite: overflow.
    template <class T, std::enable_if_t<std::is_same_v<T, double> || std::is_same_v<T, float>, int> = 0>
    explicit Decimal96(T value) : Decimal96(from(static_cast<double>(value))) {}
    /// The same by name.
    NKDEC_API static Decimal96 from(double value);

    /// A text as parse() reads it; the state tells whether it was a number.
    explicit Decimal96(std::string_view text) { static_cast<void>(parse(text, *this)); }

    /// Reads "[+|-]digits[.digits]" with a digit on one side of the point at least; an empty text is 0. Keeps
    /// exactly the written places. What does not fit loses places behind, rounded half away from zero, once;
    /// too large a number is an overflow.
    /// @param value receives the number; what has no number, the state Decimal96State::invalid
    NKDEC_API static Decimal96TextResult parse(std::string_view text, Decimal96& value);

    /// The number of a two's-complement mantissa of 96 bits: @p high * 2^64 + @p low. -2^95 is an overflow.
    /// @param scale any; kept as it is
    static Decimal96 fromMantissa(std::int32_t high, std::uint64_t low, std::int16_t scale = 0) {
        return fromWide(widened(high, low), scale);
    }
    /// The number of a sign and the three words of a magnitude, the lowest first. From 2^95 on: overflow.
    /// Zero has no sign.
    static Decimal96 fromParts(std::uint32_t low, std::uint32_t middle, std::uint32_t high, bool negative,
                               std::int16_t scale = 0) {
        const auto lower = static_cast<nkdec::Int128>(std::uint64_t{middle} << 32U | low);
        const nkdec::Int128 magnitude = static_cast<nkdec::Int128>(high) * (nkdec::Int128{1} << 64U) + lower;
        return fromWide(negative ? -magnitude : magnitude, scale);
    }
    /// @}

    /// @name Parts
    /// As held, not normalised.
    /// @{
    constexpr Decimal96State state() const noexcept { return static_cast<Decimal96State>(m_tag >> 16U); }
    constexpr bool isNumber() const noexcept { return state() == Decimal96State::number; }
    /// The count of decimal places: 0 to 28, unless the number was made of parts.
    constexpr int scale() const noexcept { return static_cast<std::int16_t>(m_tag & 0xFFFFU); }
    /// The lower 64 and the upper 32 bits of the two's-complement mantissa.
    constexpr std::uint64_t mantissaLow() const noexcept { return m_low; }
    constexpr std::int32_t mantissaHigh() const noexcept { return m_high; }
    /// -1, 0 or 1; of what is no number 0.
    constexpr int sign() const noexcept {
        return m_high < 0 ? -1 : static_cast<int>(m_low != 0 || m_high != 0);
    }
    constexpr bool isNegative() const noexcept { return m_high < 0; }
    /// Whether the number is 0, of whatever scale.
    constexpr bool isZero() const noexcept { return isNumber() && sign() == 0; }
    /// @}

    /// @name Arithmetic
    /// Results, rounding and handlers as told at the head of this file.
    /// @{
    friend Decimal96 operator+(const Decimal96& a, const Decimal96& b) {
        if (haveOneScale(a, b)) {
            // Word by word, which compilers keep in registers.
            const std::uint64_t low = a.m_low + b.m_low;
            const std::int64_t high =
                std::int64_t{a.m_high} + b.m_high + static_cast<std::int64_t>(low < a.m_low);
            if (__builtin_expect(fitsAbove(high), 1))
                return Decimal96(low, static_cast<std::int32_t>(high), a.m_tag);
        } else if (__builtin_expect(canBeAligned(a, b), 1)) {
            const nkdec::Alignment factors = alignment(a, b);
            const nkdec::Int128 sum = times(a.narrow(), factors.left) + times(b.narrow(), factors.right);
            if (__builtin_expect(fits(sum), 1)) return Decimal96(sum, a.m_tag < b.m_tag ? b.m_tag : a.m_tag);
        }
        return addWide(a, b);
    }
    friend Decimal96 operator-(const Decimal96& a, const Decimal96& b) { return a + -b; }
    friend Decimal96 operator*(const Decimal96& a, const Decimal96& b) {
        if (__builtin_expect(a.isNarrow() && b.isNarrow() && a.m_tag + b.m_tag <= maxScale, 1)) {
            const nkdec::Int128 product = times(a.narrow(), b.narrow());
            if (__builtin_expect(fits(product), 1)) return Decimal96(product, a.m_tag + b.m_tag);
        }
        return multiplyWide(a, b);
    }
    friend Decimal96 operator/(const Decimal96& a, const Decimal96& b) { return divideWide(a, b); }
    /// a less the truncated quotient times b, exactly, at the larger scale: the sign of a, and smaller than
    /// b. A quotient beyond the mantissa and a divisor of 0: overflow.
    friend Decimal96 operator%(const Decimal96& a, const Decimal96& b) { return remainderWide(a, b); }

    Decimal96& operator+=(const Decimal96& other) { return *this = *this + other; }
    Decimal96& operator-=(const Decimal96& other) { return *this = *this - other; }
    Decimal96& operator*=(const Decimal96& other) { return *this = *this * other; }
    Decimal96& operator/=(const Decimal96& other) { return *this = *this / other; }
    Decimal96& operator%=(const Decimal96& other) { return *this = *this % other; }

    constexpr Decimal96 operator+() const noexcept { return *this; }
    /// The scale stays, and raw ones too.
    constexpr Decimal96 operator-() const noexcept { return Decimal96(-mantissa(), m_tag); }
    constexpr Decimal96 abs() const noexcept { return m_high < 0 ? -*this : *this; }

    /// The whole part of the exact quotient, toward zero, without places. A divisor of 0 and a quotient
    /// beyond the mantissa: overflow.
    NKDEC_API Decimal96 truncatedQuotient(const Decimal96& divisor) const;

    /// The exact product rounded to @p places, once, where `*` and round() may round twice. The result has
    /// exactly these places, or as many as fit.
    /// @param places 0 to 28; numbers outside count as the bound
    static Decimal96 multiplyRounded(const Decimal96& a, const Decimal96& b, int places,
                                     Rounding method = PLAIN) {
        const unsigned dropped = a.m_tag + b.m_tag - static_cast<unsigned>(places);
        if (__builtin_expect(a.isNarrow() && b.isNarrow() && a.m_tag <= maxScale && b.m_tag <= maxScale &&
                                 static_cast<unsigned>(places) <= maxScale && dropped <= 18,
                             1)) {
            std::int64_t product = 0;
            if (__builtin_expect(
                    !__builtin_mul_overflow(a.narrow(), b.narrow(), &product) && isShort(product), 1)) {
                return Decimal96(shortened(product, dropped, method), static_cast<unsigned>(places));
            }
        }
        return multiplyRoundedWide(a, b, places, method);
    }
    /// The exact quotient rounded to @p places, once. The result has exactly these places, or as many as fit.
    /// @param places 0 to 28; numbers outside count as the bound
    static Decimal96 divideRounded(const Decimal96& a, const Decimal96& b, int places,
                                   Rounding method = PLAIN) {
        const auto digits = static_cast<int>(static_cast<unsigned>(places) - a.m_tag + b.m_tag);
        if (__builtin_expect(a.isNarrow() && b.isNarrow() && a.m_tag <= maxScale && b.m_tag <= maxScale &&
                                 static_cast<unsigned>(places) <= maxScale && digits <= 18 && digits >= -18,
                             1)) {
            const std::size_t longer = digits < 0 ? 0 : static_cast<std::size_t>(digits);
            const std::size_t shorter = digits < 0 ? static_cast<std::size_t>(-digits) : 0;
            const nkdec::UInt128 dividend =
                nkdec::UInt128{nkdec::magnitudeOf(a.narrow())} * nkdec::tenTo[longer];
            const nkdec::UInt128 divisor =
                nkdec::UInt128{nkdec::magnitudeOf(b.narrow())} * nkdec::tenTo[shorter];
            if (__builtin_expect((dividend | divisor) >> 63U == 0 && divisor != 0, 1)) {
                const std::uint64_t quotient = divided(static_cast<std::uint64_t>(dividend),
                                                       static_cast<std::uint64_t>(divisor), method);
                const std::int64_t sign = nkdec::signOf(a.narrow()) ^ nkdec::signOf(b.narrow());
                return Decimal96(nkdec::withSign(quotient, sign), static_cast<unsigned>(places));
            }
        }
        return divideRoundedWide(a, b, places, method);
    }
    /// @}

    /// @name Rounding
    /// More places than are held leave the number as it is. Negative places round to tens, hundreds ... and
    /// give scale 0; what then does not fit is an overflow.
    /// @{
    Decimal96 round(int places, Rounding method = PLAIN) const {
        const unsigned dropped = m_tag - static_cast<unsigned>(places);
        if (__builtin_expect(isNarrow() && m_tag <= maxScale && places >= 0 && dropped <= 18, 1)) {
            const auto low = static_cast<std::int64_t>(m_low);
            if (isShort(low))
                return Decimal96(shortened(low, dropped, method), static_cast<unsigned>(places));
        }
        return roundWide(*this, places, method);
    }
    Decimal96 truncate(int places) const { return round(places, DOWN); }
    /// @}

    /// @name Comparisons
    /// By value, exactly: 2.50 equals 2.5.
    /// @{
    friend bool operator==(const Decimal96& a, const Decimal96& b) {
        return related(a, b, [](nkdec::Int128 left, nkdec::Int128 right) { return left == right; });
    }
    friend bool operator!=(const Decimal96& a, const Decimal96& b) { return !(a == b); }
    friend bool operator<(const Decimal96& a, const Decimal96& b) {
        return related(a, b, [](nkdec::Int128 left, nkdec::Int128 right) { return left < right; });
    }
    friend bool operator>(const Decimal96& a, const Decimal96& b) { return b < a; }
    friend bool operator<=(const Decimal96& a, const Decimal96& b) { return !(b < a); }
    friend bool operator>=(const Decimal96& a, const Decimal96& b) { return !(a < b); }
#if defined(__cpp_impl_three_way_comparison)
    /// Weak, since equal numbers may differ in their places.
    friend std::weak_ordering operator<=>(const Decimal96& a, const Decimal96& b) {
        return related(a, b, [](nkdec::Int128 left, nkdec::Int128 right) {
            return left < right   ? std::weak_ordering::less
                   : left > right ? std::weak_ordering::greater
                                  : std::weak_ordering::equivalent;
        });
    }
#endif
    /// @}

    /// @name Conversion
    /// @{

    /// The nearest double, half to even.
    NKDEC_API double toDouble() const noexcept;

    /// The whole number, its places rounded by the method. Outside the type: the overflow handler, then 0.
    NKDEC_API std::int32_t toInt(Rounding method = DOWN) const;
    NKDEC_API std::int64_t toInt64(Rounding method = DOWN) const;
    /// The same without a handler.
    /// @return false outside the type; @p value is then as it was
    NKDEC_API bool tryToInt(std::int32_t& value, Rounding method = DOWN) const noexcept;
    NKDEC_API bool tryToInt64(std::int64_t& value, Rounding method = DOWN) const noexcept;

    /// Writes the plain text with all held places and a NUL: "-", digits, "." and places if there are any.
    /// One digit at least stands in front of the point; no sign in front of 0.
    /// @param buffer of the caller, at least textSize bytes; what stands behind the NUL is not defined
    /// @return the end of the text, where the NUL stands
    NKDEC_API char* toString(char* buffer) const;
    /// @}

    /// A hash that equal numbers share (Decimal96Hash.h has the std::hash).
    NKDEC_API std::size_t hash() const noexcept;

  private:
    friend struct Decimal96Access;

    /// Cuts the mantissa to 96 bits; it fits.
    constexpr Decimal96(nkdec::Int128 mantissa, std::uint32_t tag) noexcept
        : m_low(static_cast<std::uint64_t>(mantissa)),
          m_high(static_cast<std::int32_t>(static_cast<std::int64_t>(mantissa >> 64))),
          m_tag(tag) {}

    constexpr Decimal96(std::uint64_t low, std::int32_t high, std::uint32_t tag) noexcept
        : m_low(low), m_high(high), m_tag(tag) {}

    static constexpr nkdec::Int128 widened(std::int32_t high, std::uint64_t low) noexcept {
        return static_cast<nkdec::Int128>(
            static_cast<nkdec::UInt128>(static_cast<nkdec::Int128>(high)) << 64U | low);
    }
    constexpr nkdec::Int128 mantissa() const noexcept {
        return widened(m_high, m_low);
    }
    /// The mantissa, where it is narrow.
    constexpr std::int64_t narrow() const noexcept {
        return static_cast<std::int64_t>(m_low);
    }
    /// Whether the mantissa fits 64 bits.
    constexpr bool isNarrow() const noexcept {
        return static_cast<std::int32_t>(static_cast<std::int64_t>(m_low) >> 63) == m_high;
    }
    /// Whether the number fits a mantissa. False for a few that do, next to -2^95: they take the wide way.
    static constexpr bool fits(nkdec::Int128 number) noexcept {
        return fitsAbove(static_cast<std::int64_t>(number >> 64));
    }
    static constexpr bool fitsAbove(std::int64_t high) noexcept {
        return static_cast<std::uint64_t>(high) + 0x7FFFFFFFU < 0xFFFFFFFFU;
    }
    /// Whether the magnitude is below 2^62, so that a half of 10^18 can be added.
    static constexpr bool isShort(std::int64_t number) noexcept {
        return static_cast<std::uint64_t>(number) + (std::uint64_t{1} << 62U) < std::uint64_t{1} << 63U;
    }
    /// The short number without its last digits, rounded.
    static constexpr std::int64_t shortened(std::int64_t number, unsigned digits, Rounding method) noexcept {
        const std::uint64_t divisor = nkdec::tenTo[digits];
        const std::uint64_t carry = method == PLAIN ? divisor / 2 : method == UP ? divisor - 1 : 0;
        const std::uint64_t quotient = nkdec::withoutDigits(nkdec::magnitudeOf(number) + carry, digits);
        return nkdec::withSign(quotient, nkdec::signOf(number));
    }

    /// The quotient of two magnitudes below 2^63, rounded.
    static constexpr std::uint64_t divided(std::uint64_t dividend, std::uint64_t divisor,
                                           Rounding method) noexcept {
        const std::uint64_t quotient = dividend / divisor;
        const std::uint64_t rest = dividend % divisor;
        const bool carry = method == PLAIN ? rest >= divisor - rest : method == UP && rest != 0;
        return quotient + (carry ? 1 : 0);
    }

    static constexpr nkdec::Int128 times(std::int64_t a, std::int64_t b) noexcept {
        return static_cast<nkdec::Int128>(a) * b;
    }

    /// The common case: both mantissas can be taken as they are.
    static constexpr bool haveOneScale(const Decimal96& a, const Decimal96& b) noexcept {
        return a.m_tag == b.m_tag && a.m_tag <= maxScale;
    }
    /// Whether narrow mantissas can be multiplied to one scale.
    static constexpr bool canBeAligned(const Decimal96& a, const Decimal96& b) noexcept {
        return a.isNarrow() && b.isNarrow() && a.m_tag <= maxScale && b.m_tag <= maxScale &&
               a.m_tag - b.m_tag + nkdec::mostAligned <= 2 * nkdec::mostAligned;
    }
    /// Two factors, one of which is 1, cost less than a branch that is hard to predict.
    static constexpr nkdec::Alignment alignment(const Decimal96& a, const Decimal96& b) noexcept {
        return nkdec::alignments[a.m_tag - b.m_tag + nkdec::mostAligned];
    }
    template <class Relation>
    static std::invoke_result_t<Relation, nkdec::Int128, nkdec::Int128> related(const Decimal96& a,
                                                                                const Decimal96& b,
                                                                                Relation relation) {
        if (haveOneScale(a, b)) return relation(a.mantissa(), b.mantissa());
        if (__builtin_expect(canBeAligned(a, b), 1)) {
            const nkdec::Alignment factors = alignment(a, b);
            return relation(times(a.narrow(), factors.left), times(b.narrow(), factors.right));
        }
        return relation(compareWide(a, b), 0);
    }

    // All numbers, however wide, and what is none.
    NKDEC_API static Decimal96 fromWide(nkdec::Int128 mantissa, std::int16_t scale);
    NKDEC_API static Decimal96 addWide(Decimal96 a, Decimal96 b);
    NKDEC_API static Decimal96 multiplyWide(Decimal96 a, Decimal96 b);
    NKDEC_API static Decimal96 multiplyRoundedWide(Decimal96 a, Decimal96 b, int places, Rounding method);
    NKDEC_API static Decimal96 divideWide(Decimal96 a, Decimal96 b);
    NKDEC_API static Decimal96 divideRoundedWide(Decimal96 a, Decimal96 b, int places, Rounding method);
    NKDEC_API static Decimal96 remainderWide(Decimal96 a, Decimal96 b);
    NKDEC_API static Decimal96 roundWide(Decimal96 number, int places, Rounding method);
    /// Negative, 0 or positive.
    NKDEC_API static int compareWide(Decimal96 a, Decimal96 b);

    std::uint64_t m_low = 0;
    std::int32_t m_high = 0;
    std::uint32_t m_tag = 0;  // scale in the lower 16 bits, state above: up to 28 it is a normalised number
};

static_assert(sizeof(Decimal96) == 16 && std::is_trivially_copyable_v<Decimal96>);
