#pragma once

/// @file
/// What every class does alike that holds one number or character in its value record: storing it, copying
/// it, clearing it, archiving it. The families add what their classes compute and convert.

#include "nkdt/NkDtBasis.h"
#include "nkdt/NkDtTypes.h"
#include "nkdt/Record.h"
#include "nkfw/Export.h"

class CArchive;

namespace nkdt {

/// The types of a class, which specialises it: its value record `Imp`, the stored type `Value`, and what its
/// family asks for beside them.
template <class Derived>
struct ValueTraits;

/// What a class states of itself for the operations, in its source.
template <class Derived>
struct ValuePart;

template <class Imp>
struct NewRecords;

template <class Derived>
class NKDT_API StoredValue : public NkDtBasis {
  public:
    using Value = typename ValueTraits<Derived>::Value;  ///< the stored type

    /// The base state, then a plain number in its own width, also when the value is undefined. A load that
    /// fails half way leaves everything as it was.
    void Serialize(CArchive& ar) override;
    void Clear() override;
    void Assign(const NkDtBasis& r) override;
    NkDtTyps GetDtTyp() const override;

  protected:
    using Imp = typename ValueTraits<Derived>::Imp;

    StoredValue(BOOL fDefined, NkDtWorkingMode eMode, Value value = Value{});
    /// The base state of @p r and this stored value.
    StoredValue(const NkDtBasis& r, Value value);
    StoredValue(const StoredValue& r);
    StoredValue(StoredValue&& r) noexcept = default;
    ~StoredValue() override;

    /// Valid until the value is assigned to or ends.
    const Value& Stored() const;
    /// The same to be changed bit by bit; nothing is noted.
    Value& InPlace();
    /// Stores the value, modified if it differs.
    void Store(const Value& value);
    /// The same, and makes the value defined.
    void SetTo(const Value& value);
    /// Stores the value and looks at nothing.
    void Replace(const Value& value);
    /// Copies value and definedness, modified if they differ; nothing happens to a value itself.
    void CopyFrom(const StoredValue& r);
    /// Takes everything onto a husk; copies onto any other value.
    void MoveFrom(StoredValue& r) {
        if (!IsHusk()) return CopyFrom(r);
        StealState(r);
        m_imp.steal(r.m_imp);
    }
    Derived& Self() noexcept { return static_cast<Derived&>(*this); }

  private:
    explicit StoredValue(const NewRecords<Imp>& records) noexcept;

    Record<Imp> m_imp;
};

}  // namespace nkdt
