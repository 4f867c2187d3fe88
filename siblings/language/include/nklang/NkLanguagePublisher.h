#pragma once

/// @file
/// Which language the program speaks: the publisher tells every library the module that holds the
/// language-dependent texts.

#include "nkfw/Export.h"
#include "nkfw/Types.h"

/// Language ids as the platform numbers them.
inline constexpr USHORT usNkLangDeutsch = 1031;
inline constexpr USHORT usNkLangEnglisch = 1033;

/// Resource ids of the texts that this library keeps.
inline constexpr UINT uNkLangTextInfo = 371;  ///< explanation beside an error text
inline constexpr UINT uNkLangCaption = 372;   ///< caption of an error message
inline constexpr UINT uNkLangWahr = 3206;     ///< the word for true
inline constexpr UINT uNkLangFalsch = 3207;   ///< the word for false

/// A module of language-dependent texts: one table of texts by resource id. Constant data.
class NKDT_API NkLanguageModule {
  public:
    struct Entry {
        UINT uId;
        LPCTSTR pszText;  ///< code page 1252
    };
    constexpr NkLanguageModule(LPCTSTR pszName, USHORT usLanguage, const Entry* pEntries,
                               UINT nEntries) noexcept
        : m_pszName(pszName), m_pEntries(pEntries), m_nEntries(nEntries), m_usLanguage(usLanguage) {}

    LPCTSTR GetName() const noexcept { return m_pszName; }
    USHORT GetLanguage() const noexcept { return m_usLanguage; }
    /// The text of that id, or null.
    LPCTSTR GetText(UINT uId) const noexcept;

  private:
    LPCTSTR m_pszName;
    const Entry* m_pEntries;
    UINT m_nEntries;
    USHORT m_usLanguage;
};

/// The process-wide publisher. The start value is the German module. Set the module before other threads use
/// the library.
class NKDT_API NkLanguagePublisher {
  public:
    static NkLanguagePublisher* Instance() noexcept;

    /// The module that holds the language-dependent texts, or null when the program has none.
    const NkLanguageModule* GetLangDependentResource() const noexcept;
    /// That module's name; throws a `CInvalidArgException*` when there is none.
    LPCTSTR GetLangDependentResourceName() const;

    /// Sets the module (null: none) and returns the one before. The module must outlive its use.
    const NkLanguageModule* SetLangDependentResource(const NkLanguageModule* pModule) noexcept;
    /// The library's own module of that language, or null for a language that it does not speak.
    static const NkLanguageModule* GetModule(USHORT usLanguage) noexcept;

  private:
    constexpr NkLanguagePublisher() noexcept = default;
};
