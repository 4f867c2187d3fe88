#pragma once

/// @file
/// The export mark of this room, which stands on the standard library alone.

/// Marks what the shared library exports; everything else stays hidden.
#define NKDEC_API __attribute__((visibility("default")))
