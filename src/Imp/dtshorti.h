#pragma once

#include "Imp/WholeNumberImp.h"

namespace nkdt {

struct ShortLimits {
    using Value = SHORT;
    static constexpr std::size_t separatedLength = 6;
    static const Origin add, subtract, multiply, divide, construct, fromString;
};

}  // namespace nkdt

/// The value record of NkDtShort.
class NkDtShort_Imp : public nkdt::WholeNumberImp<nkdt::ShortLimits> {
  public:
    using WholeNumberImp::WholeNumberImp;
};
