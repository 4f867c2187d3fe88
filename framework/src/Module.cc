#include "nkfw/Module.h"

#include <dlfcn.h>

#include <atomic>
#include <cstring>

namespace nkfw {

namespace {

constinit std::atomic<std::size_t> registeredModules{0};

}  // namespace

bool ExtensionModule::initialize(const void* address) noexcept {
    if (m_fRegistered) return false;
    Dl_info info;
    if (dladdr(address, &info) != 0 && info.dli_fname != nullptr) {
        const std::size_t length = ::strnlen(info.dli_fname, maxModuleFileName);
        std::memcpy(m_szFileName, info.dli_fname, length);
        m_szFileName[length] = '\0';
    }
    m_fRegistered = true;
    registeredModules.fetch_add(1, std::memory_order_relaxed);
    return true;
}

void ExtensionModule::terminate() noexcept {
    if (!m_fRegistered) return;
    m_fRegistered = false;
    m_szFileName[0] = '\0';
    registeredModules.fetch_sub(1, std::memory_order_relaxed);
}

std::size_t ExtensionModule::count() noexcept {
    return registeredModules.load(std::memory_order_relaxed);
}

}  // namespace nkfw
