#pragma once

/// @file
/// Value classes as keys of the standard's unordered containers.
///
/// @code
/// std::unordered_map<NkDtString, long> counts;
/// counts["Köln"] += 1;
/// @endcode
///
/// Values that are equal have the same hash. So a text hashes by what comparing sees of it, its characters up
/// to the first NUL, and a null value by its stored value: a null number is the same key as 0, a null text
/// the same as "". A missing value has a hash too, always the same, and hashing raises nothing; but comparing
/// a missing value raises error 2 "Undefinierter Wert", and a container compares a key with every one that it
/// finds in the same place. Missing values are therefore no keys.

#include <cstddef>
#include <functional>
#include <string_view>

#include "nkdt/NkDtBool.h"
#include "nkdt/NkDtChar.h"
#include "nkdt/NkDtDateTime.h"
#include "nkdt/NkDtDateZp.h"
#include "nkdt/NkDtDecimal.h"
#include "nkdt/NkDtDouble.h"
#include "nkdt/NkDtLong.h"
#include "nkdt/NkDtShort.h"
#include "nkdt/NkDtString.h"
#include "nkdt/NkDtTime.h"

namespace nkdt {

/// The hash of a class whose GetValue() gives a plain value; the one of 0 for a missing value.
template <class Value>
struct PlainHash {
    std::size_t operator()(const Value& value) const {
        using Plain = decltype(value.GetValue());
        return std::hash<Plain>()(value.IsMissing() ? Plain{} : value.GetValue());
    }
};

}  // namespace nkdt

template <>
struct std::hash<NkDtString> {
    std::size_t operator()(const NkDtString& str) const {
        return std::hash<std::string_view>()(static_cast<LPCTSTR>(str));
    }
};
template <>
struct std::hash<NkDtChar> : nkdt::PlainHash<NkDtChar> {};
template <>
struct std::hash<NkDtBool> : nkdt::PlainHash<NkDtBool> {};
template <>
struct std::hash<NkDtLong> : nkdt::PlainHash<NkDtLong> {};
template <>
struct std::hash<NkDtShort> : nkdt::PlainHash<NkDtShort> {};
template <>
struct std::hash<NkDtDouble> : nkdt::PlainHash<NkDtDouble> {};
/// By the nearest double, which does not depend on the places.
template <>
struct std::hash<NkDtDecimal> : nkdt::PlainHash<NkDtDecimal> {};
/// By the hundredths of an hour, which are the same for equal lengths in whatever time mode.
template <>
struct std::hash<NkDtTime> {
    std::size_t operator()(const NkDtTime& t) const {
        return std::hash<LONG>()(t.IsMissing() ? LONG{0} : t.GetTime(NkDtTime::Hundredths));
    }
};
/// By the six fields that comparing sees.
template <>
struct std::hash<NkDtDateTime> {
    std::size_t operator()(const NkDtDateTime& date) const {
        std::tm fields{};
        fields.tm_mday = 1;  // the empty value
        if (!date.IsMissing()) fields = date.GetValue();
        std::size_t sum = 0;
        for (const int field :
             {fields.tm_year, fields.tm_mon, fields.tm_mday, fields.tm_hour, fields.tm_min, fields.tm_sec})
            sum = sum * 1000003 + static_cast<std::size_t>(field);
        return sum;
    }
};
template <>
struct std::hash<NkDtDateZp> : std::hash<NkDtDateTime> {};
