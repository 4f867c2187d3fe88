#pragma once

#include "Imp/WholeNumberImp.h"

namespace nkdt {

struct LongLimits {
    using Value = LONG;
    static constexpr std::size_t separatedLength = 11;
    static const Origin add, subtract, multiply, divide, construct, fromString;
};

}  // namespace nkdt

/// The value record of NkDtLong.
class NkDtLong_Imp : public nkdt::WholeNumberImp<nkdt::LongLimits> {
  public:
    using WholeNumberImp::WholeNumberImp;
};
