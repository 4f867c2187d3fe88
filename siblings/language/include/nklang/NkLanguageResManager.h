#pragma once

/// @file
/// Loads texts from one language module.

#include "nkfw/Export.h"
#include "nkfw/String.h"
#include "nklang/NkLanguagePublisher.h"

/// Holds the module that it loads from, for a load or several; the module must outlive it.
/// @code
/// NkLanguageResManager resources(NkLanguagePublisher::Instance()->GetLangDependentResource());
/// CString word = resources.LoadString(uNkLangWahr);   // "Ja"
/// @endcode
class NKDT_API NkLanguageResManager {
  public:
    /// @param pModule the module to load from; null: the library's German one.
    explicit NkLanguageResManager(const NkLanguageModule* pModule) noexcept;
    NkLanguageResManager(const NkLanguageResManager&) = delete;
    NkLanguageResManager& operator=(const NkLanguageResManager&) = delete;

    /// The text of that id, or an empty text when the module does not have it.
    CString LoadString(UINT uId) const;
    /// The same without a copy; null when the module does not have it.
    LPCTSTR FindString(UINT uId) const noexcept;

  private:
    const NkLanguageModule* m_pModule;
};
