#pragma once

/// @file
/// DEC: the binary decimal record of files, 14 bytes whose layout is the same on every machine.
///
/// @code
/// DEC record = {};       // 0
/// record.scale = 2;
/// record.low = 150;      // 1.50
/// NkDtDecimal dPreis;
/// dPreis.SetFromBTR(record, TRUE);
/// @endcode
///
/// A record has no padding and needs no alignment: 14 bytes of a file can be copied into it, and out of it,
/// as they are. Any 14 bytes are a record.

#include <cstddef>
#include <type_traits>

#include "nkfw/Types.h"

namespace nkdt {

/// A whole number that lies in memory with its lowest byte first. It reads and takes a number of type T.
template <class T>
class LittleEndian {
  public:
    LittleEndian() = default;
    constexpr LittleEndian(T number) noexcept : m_bytes{} {  // NOLINT(google-explicit-constructor)
        auto rest = static_cast<ULONG>(number);
        for (BYTE& byte : m_bytes) {
            byte = static_cast<BYTE>(rest & 0xFFU);
            rest >>= 8U;
        }
    }
    constexpr operator T() const noexcept {  // NOLINT(google-explicit-constructor)
        ULONG number = 0;
        for (std::size_t i = 0; i < sizeof(T); ++i)
            number |= static_cast<ULONG>(m_bytes[i]) << (8U * i);
        return static_cast<T>(number);
    }

  private:
    static_assert(std::is_integral_v<T> && sizeof(T) <= sizeof(ULONG), "more than 32 bits");

    BYTE m_bytes[sizeof(T)];
};

}  // namespace nkdt

/// Sign and magnitude: the number is magnitude * 10^-scale, where the magnitude is high * 2^32 + low.
///
/// Reading takes a few forms that writing never makes: a sign other than 0 and 1 is negative as well, and
/// with a magnitude of 0 it reads as -2^32 (times 10^-scale).
struct DEC {
    nkdt::LittleEndian<SHORT> sign;       ///< 0 positive, 1 negative
    nkdt::LittleEndian<SHORT> scale;      ///< the count of decimal places; any number is kept as it is
    nkdt::LittleEndian<ULONG> low;        ///< the lower 32 bits of the magnitude
    nkdt::LittleEndian<ULONG> high;       ///< the upper 32 bits of the magnitude
    nkdt::LittleEndian<USHORT> reserved;  ///< written as 0, ignored on reading
};

static_assert(sizeof(DEC) == 14 && alignof(DEC) == 1 && std::is_trivial_v<DEC>);
