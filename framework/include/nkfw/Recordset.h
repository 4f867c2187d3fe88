#pragma once

/// @file
/// A recordset as the value classes see it: fields known by their addresses, each null or not.
///
/// It can be used as it stands, for fields held in memory:
/// @code
/// CRecordset rs;
/// long nAnzahl = 5;
/// NkDtLong value;
/// value.SetFromRecordSet(rs, nAnzahl);   // 5
/// rs.SetFieldNull(&nAnzahl, TRUE);
/// value.SetFromRecordSet(rs, nAnzahl);   // cleared
/// @endcode
/// A database binding derives from it.

#include <atomic>
#include <cstddef>
#include <vector>

#include "nkfw/Export.h"
#include "nkfw/Object.h"
#include "nkfw/Types.h"

/// Remembers which fields are null. Fields are told by their addresses, which stay the caller's.
class NKDT_API CRecordset : public CObject {
  public:
    CRecordset() = default;
    ~CRecordset() override;
    CRecordset(const CRecordset&) = delete;
    CRecordset& operator=(const CRecordset&) = delete;
    static const CRuntimeClass* GetThisClass() noexcept;
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }

    /// TRUE if the field at that address was marked null. A field that was never mentioned is not null.
    virtual BOOL IsFieldNull(const void* pField) const;
    /// Marks the field at that address null or not null, and mentions it if it was not yet; a null address
    /// means all fields mentioned so far. Throws a `CMemoryException*` when a new field finds no memory.
    virtual void SetFieldNull(const void* pField, BOOL fNull = TRUE);

  private:
    struct Field {
        const void* pAddress;
        bool fNull;
    };
    static constexpr std::size_t nNotFound = static_cast<std::size_t>(-1);
    std::size_t Find(const void* pField) const noexcept;

    std::vector<Field> m_fields;
    // Fields are mostly asked for in the order of their registration: the search starts here. Only a hint, so
    // that several threads may ask.
    mutable std::atomic<std::size_t> m_nNext{0};
};
