#include "nkfw/Object.h"

#include <cstring>
#include <mutex>

namespace {

constexpr CRuntimeClass classObject{"CObject", sizeof(CObject), 0, nullptr, nullptr};

// The registry: a list through the registrations themselves, the youngest first. It is complete before any
// static object is constructed and never destroyed, so that modules may come and go at any time.
constinit std::atomic<CClassRegistration*> firstRegistration{nullptr};
// Two removals side by side could unlink through each other; additions and searches need no lock.
constinit std::mutex removalMutex;

}  // namespace

CObject* CRuntimeClass::CreateObject() const {
    return m_pfnCreateObject != nullptr ? m_pfnCreateObject() : nullptr;
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* pBaseClass) const noexcept {
    for (const CRuntimeClass* pClass = this; pClass != nullptr;
         pClass = pClass->m_pfnGetBaseClass != nullptr ? pClass->m_pfnGetBaseClass() : nullptr) {
        if (pClass == pBaseClass) return TRUE;
    }
    return FALSE;
}

const CRuntimeClass* CRuntimeClass::FromName(LPCSTR lpszClassName) noexcept {
    if (lpszClassName == nullptr) return nullptr;
    for (const CClassRegistration* p = firstRegistration.load(std::memory_order_acquire); p != nullptr;
         p = p->m_pNext.load(std::memory_order_acquire)) {
        if (std::strcmp(p->m_rClass.m_lpszClassName, lpszClassName) == 0) return &p->m_rClass;
    }
    return nullptr;
}

CClassRegistration::CClassRegistration(const CRuntimeClass& rClass) noexcept : m_rClass(rClass) {
    CClassRegistration* pFirst = firstRegistration.load(std::memory_order_relaxed);
    do {
        m_pNext.store(pFirst, std::memory_order_relaxed);
    } while (!firstRegistration.compare_exchange_weak(pFirst, this, std::memory_order_release,
                                                      std::memory_order_relaxed));
}

CClassRegistration::~CClassRegistration() {
    const std::lock_guard<std::mutex> lock(removalMutex);
    CClassRegistration* const pNext = m_pNext.load(std::memory_order_relaxed);
    CClassRegistration* pBefore = this;
    if (firstRegistration.compare_exchange_strong(pBefore, pNext, std::memory_order_acq_rel)) return;
    while (pBefore->m_pNext.load(std::memory_order_acquire) != this) {
        pBefore = pBefore->m_pNext.load(std::memory_order_acquire);
    }
    pBefore->m_pNext.store(pNext, std::memory_order_release);
}

const CRuntimeClass* CObject::GetThisClass() noexcept {
    return &classObject;
}

const CRuntimeClass* CObject::GetRuntimeClass() const {
    return GetThisClass();
}

void CObject::Serialize(CArchive&) {}

void CObject::AssertValid() const {}

void CObject::Dump(CDumpContext&) const {}

BOOL CObject::IsKindOf(const CRuntimeClass* pClass) const noexcept {
    return GetRuntimeClass()->IsDerivedFrom(pClass);
}
