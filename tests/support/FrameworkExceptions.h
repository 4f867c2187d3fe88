#pragma once

// Catching the framework's exceptions, which are thrown as pointers.

#include <nkfw/Exception.h>

#include <memory>

namespace frameworktest {

struct DeleteException {
    void operator()(CException* pException) const noexcept { pException->Delete(); }
};
using Caught = std::unique_ptr<CException, DeleteException>;

// The framework exception that the body throws, or null.
template <class Body>
Caught caught(Body body) {
    try {
        body();
    } catch (CException* pException) {
        return Caught(pException);
    }
    return nullptr;
}

// TRUE if the body throws an exception of exactly the class E.
template <class E, class Body>
bool throws(Body body) {
    const Caught pException = caught(body);
    return pException != nullptr && pException->GetRuntimeClass() == RUNTIME_CLASS(E);
}

}  // namespace frameworktest
