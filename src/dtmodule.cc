#include <cstdio>
#include <exception>

#include "Module.h"
#include "nkfw/Module.h"

namespace {

constinit nkfw::ExtensionModule module;

/// Registers the library while it is loaded and takes it out when it is unloaded. A library that cannot
/// register must not be used; nothing but the end of the program stops a load from within.
struct ModuleStart {
    ModuleStart() noexcept {
        if (!module.initialize(&module)) {
            std::fputs("libnkdt: the module could not be registered\n", stderr);
            std::terminate();
        }
    }
    ~ModuleStart() { module.terminate(); }
    ModuleStart(const ModuleStart&) = delete;
    ModuleStart& operator=(const ModuleStart&) = delete;
};

const ModuleStart moduleStart;

}  // namespace

namespace nkdt {

LPCTSTR moduleFileName() noexcept {
    return module.fileName();
}

}  // namespace nkdt
