#include "nkdt/Narrow.h"

#include "Raise.h"

namespace nkdt {

void raiseTooWide() {
    static constexpr Origin origin = {".\\Narrow.cc", "Narrow", "narrowed(n)"};
    raise(origin, NkDtErrWertebereich);
}

}  // namespace nkdt
