#pragma once

/// Marks what the shared libraries export; everything else stays hidden.
#define NKDT_API __attribute__((visibility("default")))
/// Marks, where it is defined, a class inside an exported one that the libraries keep to themselves.
#define NKDT_HIDDEN __attribute__((visibility("hidden")))
