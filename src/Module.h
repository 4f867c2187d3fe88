#pragma once

/// @file
/// The library as a module of the framework.

#include "nkfw/Types.h"

namespace nkdt {

/// Full name of the file that this library was loaded from, at most 260 characters; recorded when it is
/// loaded.
LPCTSTR moduleFileName() noexcept;

}  // namespace nkdt
