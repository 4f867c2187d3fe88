#pragma once

/// @file
/// What the tests of the decimals share: short notations, and handlers that count or throw.

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

#include <nkdec/Decimal96.h>
#include <nkdec/Decimal96Handlers.h>

/// How a failed expectation shows a number: as held.
inline void PrintTo(const Decimal96& number, std::ostream* os) {
    char text[Decimal96::textSize];
    *os << std::string(text, number.toString(text)) << " (scale " << number.scale() << ")";
}

namespace decimaltest {

inline Decimal96 dec(std::string_view text) {
    return Decimal96(text);
}

inline std::string text(const Decimal96& number) {
    char buffer[Decimal96::textSize];
    return std::string(buffer, number.toString(buffer));
}

/// The largest mantissa, 2^95 - 1.
inline Decimal96 largest(std::int16_t scale = 0) {
    return Decimal96::fromMantissa(0x7FFFFFFF, ~std::uint64_t{0}, scale);
}
inline const std::string largestDigits = "39614081257132168796771975167";

inline int overflows = 0;
inline int losses = 0;
inline Decimal96Operation lastOperation{};

/// Counts the calls of both handlers while it lives.
class CountingHandlers {
  public:
    CountingHandlers()
        : m_overflow(setDecimal96OverflowHandler([](Decimal96Operation operation) {
              ++overflows;
              lastOperation = operation;
          })),
          m_inexact(setDecimal96InexactHandler([](Decimal96Operation operation) {
              ++losses;
              lastOperation = operation;
          })) {
        overflows = losses = 0;
    }
    ~CountingHandlers() {
        setDecimal96OverflowHandler(m_overflow);
        setDecimal96InexactHandler(m_inexact);
    }
    CountingHandlers(const CountingHandlers&) = delete;
    CountingHandlers& operator=(const CountingHandlers&) = delete;

  private:
    Decimal96Handler m_overflow;
    Decimal96Handler m_inexact;
};

struct Overflow {
    Decimal96Operation operation;
};
struct Loss {
    Decimal96Operation operation;
};

/// Both handlers throw while it lives.
class ThrowingHandlers {
  public:
    ThrowingHandlers()
        : m_overflow(
              setDecimal96OverflowHandler([](Decimal96Operation operation) { throw Overflow{operation}; })),
          m_inexact(setDecimal96InexactHandler([](Decimal96Operation operation) { throw Loss{operation}; })) {
    }
    ~ThrowingHandlers() {
        setDecimal96OverflowHandler(m_overflow);
        setDecimal96InexactHandler(m_inexact);
    }
    ThrowingHandlers(const ThrowingHandlers&) = delete;
    ThrowingHandlers& operator=(const ThrowingHandlers&) = delete;

  private:
    Decimal96Handler m_overflow;
    Decimal96Handler m_inexact;
};

}  // namespace decimaltest
