#pragma once

/// Marks what the shared libraries export; everything else stays hidden.
#define NKDT_API __attribute__((visibility("default")))
