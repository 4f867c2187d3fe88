#pragma once

/// @file
/// Growing a text, when memory may be exhausted.

#include "nkdt/NkDtString.h"

namespace nkdt {

/// Lets a text grow. One that is lost with its buffer because memory is exhausted becomes modified: an
/// application must notice.
template <class Growth>
void grow(NkDtString& text, Growth&& growth) {
    const bool hadText = text.GetLength() != 0;
    try {
        growth();
    } catch (...) {
        if (hadText && text.GetLength() == 0) text.SetModified(TRUE);
        throw;
    }
}

}  // namespace nkdt
