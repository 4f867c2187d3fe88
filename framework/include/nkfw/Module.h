#pragma once

/// @file
/// Extension modules: the shared libraries that bring framework classes register themselves while they are
/// loaded.
/// @code
/// static nkfw::ExtensionModule module;
/// if (!module.initialize(&module)) ...   // on loading
/// module.terminate();                    // on unloading
/// @endcode

#include <cstddef>

#include "nkfw/Export.h"
#include "nkfw/Types.h"

namespace nkfw {

/// Longest module file name that is kept, in bytes; a longer one is cut.
inline constexpr std::size_t maxModuleFileName = 260;

/// One loaded module. Has static lifetime in the module it describes.
class NKDT_API ExtensionModule {
  public:
    constexpr ExtensionModule() noexcept = default;
    ExtensionModule(const ExtensionModule&) = delete;
    ExtensionModule& operator=(const ExtensionModule&) = delete;

    /// Registers the module and records the name of the file that holds @p address (any function or static
    /// object of the module); false, and nothing changes, when it is registered already.
    [[nodiscard]] bool initialize(const void* address) noexcept;
    /// Takes the module out again; harmless when it is not registered.
    void terminate() noexcept;
    bool isRegistered() const noexcept { return m_fRegistered; }
    /// The module's file name as the system loaded it, or an empty text when it does not tell or nothing is
    /// registered.
    LPCTSTR fileName() const noexcept { return m_szFileName; }
    /// Number of modules registered now.
    static std::size_t count() noexcept;

  private:
    bool m_fRegistered = false;
    TCHAR m_szFileName[maxModuleFileName + 1] = {};
};

}  // namespace nkfw
