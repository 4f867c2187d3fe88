#pragma once

/// @file
/// The language modules that the library brings itself.

#include "nklang/NkLanguagePublisher.h"

namespace nklang {

extern const NkLanguageModule german;
extern const NkLanguageModule english;

}  // namespace nklang
