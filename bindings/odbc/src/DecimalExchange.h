#pragma once

/// @file
/// The way of decimals between a column and a field of text, and what numbers, doubles too, a column holds
/// unchanged.

#include <cstdint>
#include <memory>
#include <optional>

#include "FieldExchange.h"
#include "PlainDecimal.h"
#include "nkdt/odbc/Database.h"
#include "nkdt/odbc/DatabaseColumn.h"

namespace nkdt::odbc {

/// What SQLite makes of the values of a column by its declared type's name.
enum class Affinity { integer, text, blob, real, numeric };
Affinity affinityOf(std::string_view typeName) noexcept;

/// Which decimals a column gives back as it was given them. Databases round the others without a word.
class DecimalCapacity {
  public:
    DecimalCapacity(const CDatabaseColumn& column, CDatabase::Dbms dbms);

    /// Throws a Refusal for a number that the column would round or could not hold.
    void check(const PlainDecimal& number) const;
    /// Whether the column holds places even where they are zeros.
    bool keepsZeros() const noexcept { return m_keepsZeros; }

  private:
    struct Range {
        std::int64_t lowest;
        std::int64_t highest;
    };
    struct Digits {
        int before;  ///< most digits before the point
        int behind;  ///< most places; negative: as many zeros before the point at least
    };

    void allowWhole(CDatabaseColumn::Type type);
    void followAffinity(Affinity affinity);
    void followDeclaration(const CDatabaseColumn& column);

    std::optional<Range> m_range;      ///< whole numbers that are held
    std::optional<Digits> m_digits;    ///< the declared digits
    std::optional<int> m_significant;  ///< what else is held: numbers of so many digits; nothing if 0
    bool m_keepsZeros = true;
};

/// Which doubles a column gives back as they were given it.
class DoubleCapacity {
  public:
    DoubleCapacity(const CDatabaseColumn& column, CDatabase::Dbms dbms);

    /// Throws a Refusal for a finite number that the column would round.
    void check(double number) const;

  private:
    bool m_single = false;                     ///< the column has 32 bits
    std::optional<DecimalCapacity> m_decimal;  ///< the column has declared digits
};

/// @param doublesInFull whether a text with an exponent is a double, told with more digits than it has
std::unique_ptr<FieldExchange> exchangeDecimal(CString& field, const DecimalCapacity& capacity,
                                               bool doublesInFull);

}  // namespace nkdt::odbc
