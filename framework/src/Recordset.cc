#include "nkfw/Recordset.h"

#include <new>

#include "nkfw/Exception.h"

namespace {

constexpr CRuntimeClass classRecordset{"CRecordset", sizeof(CRecordset), 0, nullptr, &CObject::GetThisClass};

}  // namespace

CRecordset::~CRecordset() = default;

const CRuntimeClass* CRecordset::GetThisClass() noexcept {
    return &classRecordset;
}

std::size_t CRecordset::Find(const void* pField) const noexcept {
    const std::size_t nFields = m_fields.size();
    std::size_t nField = m_nNext.load(std::memory_order_relaxed);
    for (std::size_t nTried = 0; nTried < nFields; ++nTried, ++nField) {
        if (nField >= nFields) nField = 0;
        if (m_fields[nField].pAddress == pField) {
            m_nNext.store(nField + 1, std::memory_order_relaxed);
            return nField;
        }
    }
    return nNotFound;
}

BOOL CRecordset::IsFieldNull(const void* pField) const {
    const std::size_t nField = Find(pField);
    return nField != nNotFound && m_fields[nField].fNull ? TRUE : FALSE;
}

void CRecordset::SetFieldNull(const void* pField, BOOL fNull) {
    if (pField == nullptr) {
        for (Field& field : m_fields)
            field.fNull = fNull != FALSE;
        return;
    }
    const std::size_t nField = Find(pField);
    if (nField != nNotFound) {
        m_fields[nField].fNull = fNull != FALSE;
        return;
    }
    try {
        m_fields.push_back({pField, fNull != FALSE});
    } catch (const std::bad_alloc&) {
        CMemoryException::Throw();
    }
}
