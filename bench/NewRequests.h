#pragma once

/// @file
/// A program that links NewRequests.cc counts its requests to operator new, those of the libraries included.

#include <cstddef>

namespace bench {

/// The requests of the calling thread so far.
std::size_t newRequests() noexcept;

}  // namespace bench
