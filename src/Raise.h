#pragma once

/// @file
/// Raising errors: where an error comes from, and the one function that throws it.

#include <utility>

#include "nkdt/NkDtExcep.h"

namespace nkdt {

using ErrorNumber = NkDtErrorNumber;

/// Where an error arises. Each operation that can raise has a named constant beside it.
struct Origin {
    const char* module;     ///< source file as the build names it
    const char* classText;  ///< class or group of functions
    const char* operation;  ///< signature of the operation
};

/// Throws the error, final.
[[noreturn]] void raise(const Origin& origin, ErrorNumber number);

/// For use in a handler of all exceptions: replaces the one being handled by error 1, not final, keeping it
/// as the cause.
[[noreturn]] void raiseReplacing(const Origin& origin);

/// Runs the body; whatever fails inside, framework exceptions included, reaches the caller as error 1 with
/// its cause.
template <class Body>
decltype(auto) wrapped(const Origin& origin, Body&& body) {
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        raiseReplacing(origin);
    }
}

/// Refuses a null text with error 5.
inline void requireText(LPCTSTR pszText, const Origin& origin) {
    if (pszText == nullptr) raise(origin, NkDtErrInitialwert);
}

}  // namespace nkdt
