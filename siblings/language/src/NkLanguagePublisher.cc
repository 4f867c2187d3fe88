#include "nklang/NkLanguagePublisher.h"

#include <atomic>

#include "Modules.h"
#include "nkfw/Exception.h"

namespace {

constinit std::atomic<const NkLanguageModule*> currentModule{&nklang::german};

}  // namespace

LPCTSTR NkLanguageModule::GetText(UINT uId) const noexcept {
    for (UINT i = 0; i < m_nEntries; ++i) {
        if (m_pEntries[i].uId == uId) return m_pEntries[i].pszText;
    }
    return nullptr;
}

NkLanguagePublisher* NkLanguagePublisher::Instance() noexcept {
    static constinit NkLanguagePublisher instance;
    return &instance;
}

const NkLanguageModule* NkLanguagePublisher::GetLangDependentResource() const noexcept {
    return currentModule.load(std::memory_order_acquire);
}

LPCTSTR NkLanguagePublisher::GetLangDependentResourceName() const {
    const NkLanguageModule* const module = GetLangDependentResource();
    if (module == nullptr) throw new CInvalidArgException;
    return module->GetName();
}

const NkLanguageModule* NkLanguagePublisher::SetLangDependentResource(
    const NkLanguageModule* pModule) noexcept {
    return currentModule.exchange(pModule, std::memory_order_acq_rel);
}

const NkLanguageModule* NkLanguagePublisher::GetModule(USHORT usLanguage) noexcept {
    switch (usLanguage) {
        case usNkLangDeutsch:
            return &nklang::german;
        case usNkLangEnglisch:
            return &nklang::english;
        default:
            return nullptr;
    }
}
