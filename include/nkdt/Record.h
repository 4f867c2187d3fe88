#pragma once

/// @file
/// The owner of the records that a value object keeps on the heap: its state and its value. The only place
/// that makes, copies and ends them; the memory comes from a pool of the calling thread (see RecordPool.h).

#include <utility>

#include "nkfw/Export.h"

namespace nkdt {

/// Owns one record, or none after a move: such a husk makes itself a fresh record the first time that it is
/// asked for one.
template <class T>
class NKDT_API Record {
  public:
    /// A record in its start value.
    Record();
    /// A record built from @p args.
    template <class... Args>
    explicit Record(std::in_place_t, Args&&... args);
    /// A copy of the other's record.
    Record(const Record& r);
    Record(Record&& r) noexcept : m_pRecord(std::exchange(r.m_pRecord, nullptr)) {}
    /// Takes over a record that was made in a block of the pool.
    explicit Record(T* pRecord) noexcept : m_pRecord(pRecord) {}
    Record& operator=(const Record&) = delete;
    ~Record() {
        if (m_pRecord != nullptr) end();
    }

    bool isHusk() const noexcept { return m_pRecord == nullptr; }
    /// Takes the other's record; the other gets this one's, which is none for a husk.
    void steal(Record& r) noexcept { std::swap(m_pRecord, r.m_pRecord); }
    /// Gives the record up to the caller and becomes a husk.
    T* release() noexcept { return std::exchange(m_pRecord, nullptr); }

    T* operator->() { return &**this; }
    const T* operator->() const { return &**this; }
    T& operator*() {
        if (m_pRecord == nullptr) revive();
        return *m_pRecord;
    }
    const T& operator*() const {
        if (m_pRecord == nullptr) revive();
        return *m_pRecord;
    }

  private:
    [[gnu::cold]] void revive() const;
    void end() noexcept;

    mutable T* m_pRecord;
};

}  // namespace nkdt
