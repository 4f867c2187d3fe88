#pragma once

/// @file
/// The four best-fit tables.

#include "nkcp/CodePage.h"

namespace nkcp {

extern const Table table437To1252;
extern const Table table850To1252;
extern const Table table1252To437;
extern const Table table1252To850;

}  // namespace nkcp
