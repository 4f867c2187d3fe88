#pragma once

/// @file
/// The value record of NkDtDecimal with the number's conversions: texts, the binary record, currency.
///
/// Every construction of a record, and every conversion into a number, sets the two handlers of the decimal
/// arithmetic: an overflow raises error 24 "Fehler bei Berechung mit Dezimalwerten", a loss of digits is
/// accepted silently.
///
/// Texts are written into a buffer of the caller and have a NUL behind their end. Writing a number whose
/// negative scale cannot be multiplied out (only a binary record makes such) is an overflow.

#include <atomic>
#include <cstddef>
#include <string_view>

#include "HandlerSlots.h"
#include "nkdec/Decimal96.h"
#include "nkdt/DecRecord.h"
#include "nkfw/Currency.h"
#include "nkfw/Types.h"

class NkDtDecimal_Imp {
  public:
    using Text = char[Decimal96::textSize];
    /// Room for a sign, 29 digits, the point, "E+028" and the NUL.
    using ExternText = char[37];

    NkDtDecimal_Imp() noexcept { setHandlers(); }
    explicit NkDtDecimal_Imp(Decimal96 number) noexcept : value(number) { setHandlers(); }
    NkDtDecimal_Imp(const NkDtDecimal_Imp& r) noexcept : NkDtDecimal_Imp(r.value) {}
    NkDtDecimal_Imp& operator=(const NkDtDecimal_Imp&) noexcept = default;
    ~NkDtDecimal_Imp() = default;

    /// Two looks, in all but the first call.
    static void setHandlers() noexcept {
        const bool areSet = nkdec::overflowHandler.load(std::memory_order_relaxed) == &raiseOverflow &&
                            nkdec::inexactHandler.load(std::memory_order_relaxed) == &acceptInexact;
        if (!areSet) [[unlikely]]
            replaceHandlers();
    }

    /// Whether the numbers differ. One whose negative scale cannot be multiplied out cannot be computed with;
    /// it differs from all but its like.
    static bool differ(const Decimal96& a, const Decimal96& b) {
        if (a.scale() >= 0 && b.scale() >= 0) [[likely]]
            return a != b;
        return differOutside(a, b);
    }

    /// @name From text
    /// Error 5 "Ungültiger Initialwert" for null. An empty text is 0, except as external text. A number
    /// beyond the mantissa raises error 24; places beyond the 28th are rounded half away from zero.
    /// @{

    /// Reads digits with one point and a sign in front; commas and blanks are left out. Checked in this
    /// order: error 11 "Der Eingabetext ist zu lang" beyond 38 characters; error 20 "Format nicht zugelassen"
    /// for a second point, then for any other character; error 11 for more than 28 characters (a point and
    /// the sign in front not counted, commas and blanks counted) unless what is kept begins with "0"; error
    /// 20 for a sign elsewhere and for a text without a digit.
    static Decimal96 fromText(LPCTSTR pszText);
    /// The same for the text of a recordset's field: a sign at its start, one zero in front of other digits,
    /// and zeros at the end of the places beyond the 28th digit do not count as characters.
    static Decimal96 fromFieldText(LPCTSTR pszText);
    /// Reads digits with one point and a sign in front, and nothing else: error 20. No more than the first 38
    /// characters are used.
    static Decimal96 fromPlainText(LPCTSTR pszText);
    /// Reads what externText() writes. Error 18 "Ungültige Externe Darstellung" without an "E", or when
    /// behind the first "E" not a sign and one to three digits follow; error 20 when something else than
    /// digits with one point and a sign in front stands before it; error 11 when the number without its
    /// exponent has more than 28 digits, except that 29 are taken for a number from 1 on.
    static Decimal96 fromExtern(LPCTSTR pszText);
    /// @}

    /// @name To text
    /// @{

    /// Digits and places without zeros at their end, "-" in front of negative numbers: 12.500 gives "12.5".
    static std::string_view plainText(const Decimal96& number, Text& buffer);
    /// All held places: 12.500 gives "12.500".
    static std::string_view sqlText(const Decimal96& number, Text& buffer);
    /// All held places, at least one: 5 gives "5.0"; every 0 gives "0.00".
    static std::string_view fieldText(const Decimal96& number, Text& buffer);
    /// All held digits and an exponent of three digits: 123.45 gives "1.2345E+002", every 0 "0E+000".
    static std::string_view externText(const Decimal96& number, ExternText& buffer);
    /// @}

    /// @name The binary record
    /// @{

    /// Any 14 bytes give a number, with the record's scale whatever it is.
    static Decimal96 fromRecord(const DEC& record);
    /// A positive number of more than 64 bits loses places, toward zero, until it fits; error 8 "Wert
    /// außerhalb des Wertebereichs" when none are left. Of a negative one the lower 64 bits are written.
    /// What is 0 in its lower 64 bits, and what is no number, gives 14 zero bytes.
    static DEC toRecord(const Decimal96& number);
    /// @}

    /// @name Currency
    /// @{

    /// Four places; 0 for a currency that is not valid.
    static Decimal96 fromCurrency(const COleCurrency& currency);
    /// Rounded half away from zero to four places. Error 8 beyond the range of currencies; any failure of the
    /// arithmetic is replaced by error 1 "Default-Catch / Folgefehler". What is no number gives a currency
    /// of status null.
    static COleCurrency toCurrency(const Decimal96& number);
    /// @}

    Decimal96 value;

  private:
    /// The same when one has a negative scale.
    static bool differOutside(const Decimal96& a, const Decimal96& b);
    [[noreturn]] static void raiseOverflow(Decimal96Operation operation);
    static void acceptInexact(Decimal96Operation operation);
    static void replaceHandlers() noexcept;
};
