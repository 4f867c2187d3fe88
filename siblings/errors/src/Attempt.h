#pragma once

#include "nkeh/NkEhBasis.h"
#include "nkfw/Exception.h"

namespace nkeh {

/// Runs the body; whatever it throws is released and forgotten. For what must not fail: ending an error,
/// logging it.
template <class Body>
void attempt(Body&& body) noexcept {
    try {
        body();
    } catch (NkEhBasis* error) {
        delete error;
    } catch (CException* exception) {
        exception->Delete();
    } catch (...) {  // NOLINT(bugprone-empty-catch): forgotten, as stated
    }
}

}  // namespace nkeh
