#include "nklang/NkLanguageResManager.h"

#include "Modules.h"

NkLanguageResManager::NkLanguageResManager(const NkLanguageModule* pModule) noexcept
    : m_pModule(pModule != nullptr ? pModule : &nklang::german) {}

LPCTSTR NkLanguageResManager::FindString(UINT uId) const noexcept {
    return m_pModule->GetText(uId);
}

CString NkLanguageResManager::LoadString(UINT uId) const {
    return FindString(uId);
}
