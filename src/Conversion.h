#pragma once

/// @file
/// The conversion families as one flow each. A class supplies what is its own: how a format shows its native
/// type, how its external text is read, where its value is stored.

#include "Raise.h"
#include "ValueAccess.h"
#include "nkdt/NkDtBasis.h"
#include "nkdt/NkDtString.h"
#include "nkfo/NkFormat.h"
#include "nkfw/Archive.h"
#include "nkfw/Recordset.h"

namespace nkdt {

/// The format given, else the value's own, else the class's default.
inline const NkFormat& chosenFormat(const NkDtBasis& value, const NkFormat* pFormat,
                                    const NkFormat& classDefault) {
    if (pFormat != nullptr) return *pFormat;
    return value.GetFormat() != nullptr ? *value.GetFormat() : classDefault;
}

/// @param format turns the stored value into text by the format that it is given
template <class Format>
CString convToOFL(const NkDtBasis& value, const NkFormat* pFormat, const NkFormat& classDefault,
                  const Origin& origin, Format&& format) {
    if (!value.IsDefined()) return CString();
    return wrapped(origin, [&] { return format(chosenFormat(value, pFormat, classDefault)); });
}

/// @param parse reads the text by the format that it is given
/// @param store stores what was read, raising the modified flag if it differs
template <class Parse, class Store>
void setFromOFL(NkDtBasis& value, LPCTSTR pszOFL, const NkFormat* pFormat, const NkFormat& classDefault,
                const Origin& origin, Parse&& parse, Store&& store) {
    if (pszOFL == nullptr || *pszOFL == '\0') {
        value.Clear();
        return;
    }
    wrapped(origin, [&] {
        store(parse(chosenFormat(value, pFormat, classDefault), pszOFL));
        ValueAccess::setDefined(value, TRUE);
    });
}

/// What every external text carries beside itself.
inline void describeExtern(const NkDtBasis& value, BOOL& rfDefiniert, USHORT& rusVersion) {
    rfDefiniert = value.IsDefined();
    rusVersion = NkDtExternVersion;
}

/// @param read reads the defined text and stores its value
template <class Read>
void setFromExtern(NkDtBasis& value, const NkDtString* pExternData, BOOL fDefiniert, USHORT usVersion,
                   const Origin& origin, Read&& read) {
    if (usVersion != NkDtExternVersion) raise(origin, NkDtErrVersion);
    if (fDefiniert != TRUE || pExternData == nullptr) {
        value.Clear();
        return;
    }
    // Marked first: a text that turns out undefined or malformed leaves the value defined.
    ValueAccess::setDefined(value, TRUE);
    if (!pExternData->IsDefined()) raise(origin, NkDtErrDefiniertheit);
    wrapped(origin, [&] { read(*pExternData); });
}

/// @param store stores the field, raising the modified flag if it differs
template <class Field, class Store>
void setFromRecordSet(NkDtBasis& value, const CRecordset& rs, const Field& rField, Store&& store) {
    if (rs.IsFieldNull(&rField)) {
        value.Clear();
        return;
    }
    store(rField);
    ValueAccess::setDefined(value, TRUE);
}

/// @param write writes the value to the field
template <class Field, class Write>
void convToRecordSet(const NkDtBasis& value, CRecordset& rs, Field& rField, Write&& write) {
    const BOOL fDefined = value.IsDefined();
    if (fDefined) write(rField);
    rs.SetFieldNull(&rField, !fDefined);
}

/// Loads a value whose base state @p loadBase reads and whose own part @p loadValue reads and stores. A load
/// that fails half way leaves definedness and flag as they were.
template <class LoadBase, class LoadValue>
void load(NkDtBasis& value, LoadBase&& loadBase, LoadValue&& loadValue) {
    State& state = ValueAccess::state(value);
    const BOOL fDefined = state.defined;
    const BOOL fModified = state.modified;
    try {
        loadBase();
        loadValue();
    } catch (...) {
        state.defined = fDefined;
        state.modified = fModified;
        throw;
    }
}

}  // namespace nkdt
