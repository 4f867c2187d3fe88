#pragma once

/// @file
/// The formats that values are shown in when neither the caller nor the object gives one; they live as long
/// as the library.

#include "nkfo/NkFormat.h"

namespace nkdt::defaultFormat {

extern const NkFormat text;
extern const NkFormat character;
extern const NkFormat truth;
extern const NkFormat longNumber;
extern const NkFormat shortNumber;
extern const NkFormat doubleNumber;
extern const NkFormat date;
extern const NkFormat durationHundredths;
extern const NkFormat durationMinutes;

}  // namespace nkdt::defaultFormat
