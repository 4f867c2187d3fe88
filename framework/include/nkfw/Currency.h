#pragma once

/// @file
/// An amount of money as automation interfaces exchange it: a 64-bit count of ten-thousandths, and a status.
///
/// @code
/// COleCurrency price(1234, 5678);           // 1234.5678
/// price.m_cur.int64;                        // 12345678
/// price.Format();                           // "1234.5678"
/// COleCurrency::FromDouble(0.00005).m_cur;  // { 1 }, that is 0.0001
/// COleCurrency().ParseCurrency("12,5");     // FALSE
/// @endcode
///
/// The range is -922337203685477.5808 to 922337203685477.5807. What is made from a number or a text beyond
/// it, or from a text that is no amount, has the status `invalid` and the count 0.

#include "nkfw/Export.h"
#include "nkfw/String.h"
#include "nkfw/Types.h"

/// The bare count.
struct CURRENCY {
    LONGLONG int64;  ///< ten-thousandths of the unit
};

class NKDT_API COleCurrency {
  public:
    enum CurrencyStatus : int {
        valid = 0,
        invalid = 1,  ///< made from something that is no amount or beyond the range
        null = 2,     ///< no amount at all
    };

    CURRENCY m_cur = {0};
    CurrencyStatus m_status = valid;

    /// A valid 0.
    constexpr COleCurrency() noexcept = default;
    /// The amount of this count, valid.
    constexpr COleCurrency(CURRENCY cur) noexcept : m_cur(cur) {}  // NOLINT(google-explicit-constructor)
    /// The sum of both parts; an amount below zero has both negative: (-1, -5000) is -1.5.
    /// @param nFractionalUnits ten-thousandths, -9999 to 9999; others make the amount invalid
    COleCurrency(long nUnits, long nFractionalUnits) noexcept { SetCurrency(nUnits, nFractionalUnits); }

    /// The amount nearest to the number, rounded half away from zero on the shortest decimal that reads back
    /// as the same double: 1.00005 gives 1.0001. What is not finite is invalid.
    static COleCurrency FromDouble(double dValue) noexcept;
    /// The nearest double, whatever the status.
    double GetDouble() const noexcept;

    /// As the construction from parts.
    void SetCurrency(long nUnits, long nFractionalUnits) noexcept;

    /// Reads "[+|-]digits[.digits]" with one to four places; digits stand on both sides of a point. The
    /// locale does not matter.
    /// @param pszText null is no amount
    /// @return FALSE for any other text, more places and an amount beyond the range; the status is invalid
    BOOL ParseCurrency(LPCTSTR pszText) noexcept;
    /// The amount with "." and four places, "-" in front of negative ones; empty unless the status is valid.
    CString Format() const;

    constexpr CurrencyStatus GetStatus() const noexcept { return m_status; }
    /// The count stays.
    constexpr void SetStatus(CurrencyStatus status) noexcept { m_status = status; }

    /// Equal are amounts of the same status and count.
    friend constexpr bool operator==(const COleCurrency& a, const COleCurrency& b) noexcept {
        return a.m_status == b.m_status && a.m_cur.int64 == b.m_cur.int64;
    }
    friend constexpr bool operator!=(const COleCurrency& a, const COleCurrency& b) noexcept {
        return !(a == b);
    }
    /// Only valid amounts have an order; beside any other, all four are false.
    friend constexpr bool operator<(const COleCurrency& a, const COleCurrency& b) noexcept {
        return areValid(a, b) && a.m_cur.int64 < b.m_cur.int64;
    }
    friend constexpr bool operator>(const COleCurrency& a, const COleCurrency& b) noexcept { return b < a; }
    friend constexpr bool operator<=(const COleCurrency& a, const COleCurrency& b) noexcept {
        return areValid(a, b) && a.m_cur.int64 <= b.m_cur.int64;
    }
    friend constexpr bool operator>=(const COleCurrency& a, const COleCurrency& b) noexcept { return b <= a; }

  private:
    static constexpr bool areValid(const COleCurrency& a, const COleCurrency& b) noexcept {
        return a.m_status == valid && b.m_status == valid;
    }
    void Set(CURRENCY cur, CurrencyStatus status) noexcept {
        m_cur = cur;
        m_status = status;
    }
};
