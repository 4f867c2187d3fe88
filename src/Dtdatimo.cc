// NkDtDateTime: conversions, comparisons, and computing with durations.

#include <algorithm>
#include <limits>
#include <ostream>
#include <string_view>

#include "CalendarSteps.h"
#include "Conversion.h"
#include "DateTimePart.h"
#include "DefaultFormats.h"
#include "nkdt/NkDtDateTime.h"
#include "nkdt/NkDtTime.h"

using namespace nkdt;

namespace {

using Imp = NkDtDateTime_Imp;
using Fields = DateTimeFields;

constexpr Origin originOf(const char* operation) {
    return {".\\Dtdatimo.cc", "NkDtDateTime", operation};
}

NkDtString textValue(std::string_view text) {
    return NkDtString(text.data(), static_cast<INT>(text.size()));
}

/// A field as a format or a recordset takes it; what does not fit, from an archive, becomes the bound.
template <class Number>
Number bounded(LONGLONG number) noexcept {
    using Limits = std::numeric_limits<Number>;
    return static_cast<Number>(std::clamp<LONGLONG>(number, Limits::min(), Limits::max()));
}

NkFoDateTime forFormat(const Fields& fields) noexcept {
    return {bounded<SHORT>(fields.year()),  bounded<SHORT>(fields.month()), bounded<SHORT>(fields.tm_mday),
            bounded<SHORT>(fields.tm_hour), bounded<SHORT>(fields.tm_min),  bounded<SHORT>(fields.tm_sec)};
}

}  // namespace

// Texts

NkDtString NkDtDateTime::MakeFormatString(USHORT usForm) const {
    Imp::Text text;
    return textValue(Imp::text(Stored(), usForm, text));
}

std::ostream& NkDtDateTime::Write(std::ostream& os, bool withTime) const {
    if (!IsDefined()) return os << std::string_view();
    Imp::Text text;
    return os << Imp::text(Stored(), withTime ? Imp::dateAndTime : Imp::date, text);
}

NkDtString NkDtDateTime::ConvToSQL(SQL_Language eLanguage) const {
    return IsDefined() ? MakeFormatString(static_cast<USHORT>(eLanguage)) : NkDtString("NULL");
}

void NkDtDateTime::SetFromSQL(LPCTSTR psz) {
    static constexpr Origin origin = originOf("SetFromSQL(LPCTSTR)");
    wrapped(origin, [&] {
        requireText(psz, origin);
        const std::string_view text = psz;
        if (text == "NULL") {
            Clear();
            return;
        }
        SetDefined(TRUE);
        changeFields(*this, InPlace(), [&] { Imp::setFromSql(InPlace(), text); });
    });
}

CString NkDtDateTime::ConvToOFL(const NkFormat* pFormat) const {
    static constexpr Origin origin = originOf("ConvToOFL(NkFormat*)");
    return convToOFL(*this, pFormat, defaultFormat::date, origin,
                     [this](const NkFormat& format) { return format.FormatDateTime(forFormat(Stored())); });
}

void NkDtDateTime::SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat) {
    static constexpr Origin origin = originOf("SetFromOFL(LPCTSTR,NkFormat*)");
    setFromOFL(
        *this, pszOFL, pFormat, defaultFormat::date, origin,
        [](const NkFormat& format, LPCTSTR psz) { return format.ParseDateTime(psz); },
        [this](const NkFoDateTime& read) {
            Fields fields;
            fields.tm_year = read.year - Fields::yearBase;
            fields.tm_mon = read.month - 1;
            fields.tm_mday = read.day;
            fields.tm_hour = read.hour;
            fields.tm_min = read.minute;
            fields.tm_sec = read.second;
            Store(fields);
        });
}

NkDtString NkDtDateTime::ConvToExtern(BOOL& rfDefiniert, USHORT& rusVersion) const {
    describeExtern(*this, rfDefiniert, rusVersion);
    if (!IsDefined()) return NkDtString(NkDtWmDefault);
    Imp::Text text;
    return textValue(Imp::externText(Stored(), text));
}

void NkDtDateTime::SetFromExtern(const NkDtString* pExternData, BOOL fDefiniert, USHORT usVersion) {
    static constexpr Origin origin = originOf("SetFromExtern(NkDtString*,BOOL,USHORT)");
    wrapped(origin, [&] {
        setFromExtern(*this, pExternData, fDefiniert, usVersion, origin, [this](const NkDtString& text) {
            changeFields(*this, InPlace(),
                         [&] { Imp::setFromExtern(InPlace(), static_cast<LPCTSTR>(text)); });
        });
    });
}

// Fields and archives

void NkDtDateTime::SetFromRecordSet(CRecordset& rs, const TIMESTAMP_STRUCT& rField) {
    static constexpr Origin origin = originOf("SetFromRecordSet(CRecordset&,TIMESTAMP_STRUCT&");
    wrapped(origin, [&] {
        setFromRecordSet(*this, rs, rField, [this](const TIMESTAMP_STRUCT& field) {
            Fields fields = Stored();
            fields.setDate(field.day, field.month, field.year);
            fields.setTime(field.hour, field.minute, field.second);
            Store(fields);
        });
    });
}

void NkDtDateTime::ConvToRecordSet(CRecordset& rs, TIMESTAMP_STRUCT& rField) const {
    convToRecordSet(*this, rs, rField, [this](TIMESTAMP_STRUCT& field) {
        const Fields& fields = Stored();
        field.year = bounded<SHORT>(fields.year());
        field.month = bounded<USHORT>(fields.month());
        field.day = bounded<USHORT>(fields.tm_mday);
        field.hour = bounded<USHORT>(fields.tm_hour);
        field.minute = bounded<USHORT>(fields.tm_min);
        field.second = bounded<USHORT>(fields.tm_sec);
    });
}

void NkDtDateTime::Serialize(CArchive& ar) {
    static constexpr Origin origin = originOf("Serialize(CArchive&)");
    wrapped(origin, [&] { Serialize(ar, true); });
}

void NkDtDateTime::Serialize(CArchive& ar, bool withTime) {
    if (ar.IsStoring()) {
        StoredValue::Serialize(ar);
        const Fields& fields = Stored();
        if (withTime) {
            ar << fields.tm_sec << fields.tm_min << fields.tm_hour << fields.tm_year << fields.tm_mon
               << fields.tm_mday;
        } else {
            ar << fields.tm_year << fields.tm_mon << fields.tm_mday;
        }
        return;
    }
    load(
        *this, [&] { StoredValue::Serialize(ar); },
        [&] {
            Fields fields = Stored();
            if (withTime) ar >> fields.tm_sec >> fields.tm_min >> fields.tm_hour;
            ar >> fields.tm_year >> fields.tm_mon >> fields.tm_mday;
            Store(fields);
        });
}

NkDtDateTime::operator COleDateTime() const {
    COleDateTime date;
    if (!IsDefined()) {
        date.SetStatus(COleDateTime::null);
        return date;
    }
    const Fields& fields = Stored();
    return COleDateTime(bounded<SHORT>(fields.year()), bounded<SHORT>(fields.month()), fields.tm_mday,
                        fields.tm_hour, fields.tm_min, fields.tm_sec);
}

// Computing

NkDtDateTime NkDtDateTime::Moved(const NkDtTime& t, bool forward) const {
    if (!CheckDefinedForArithmetic(*this, t)) return NkDtDateTime(NkDtWmDefault);
    NkDtDateTime result(*this);
    const LONG minutes = t.GetTime(NkDtTime::Minutes);
    if (forward) {
        result.AddMin(minutes);
    } else {
        result.SubMin(minutes);
    }
    return result;
}

NkDtTime NkDtDateTime::Difference(const NkDtDateTime& a, const NkDtDateTime& b) {
    NkDtTime result(NkDtWmDefault);
    if (!CheckDefinedForArithmetic(a, b)) return result;
    static constexpr Origin origin = originOf("operator-(NkDateTime&)");
    if (!a.Stored().hasMonth() || !b.Stored().hasMonth()) raise(origin, NkDtErrMonat);
    const calendar::Difference difference = calendar::difference(a.Stored(), b.Stored());
    result.SetHour(bounded<LONG>(difference.hours));
    result.SetMin(bounded<LONG>(difference.minutes), NkDtTime::Minutes);
    return result;
}

int NkDtDateTime::Compare(const NkDtDateTime& a, const NkDtDateTime& b, Comparison comparison) {
    static constexpr Origin origins[] = {
        originOf("operator<(NkDtDateTime&)"),  originOf("operator>(NkDtDateTime&)"),
        originOf("operator<=(NkDtDateTime&)"), originOf("operator>=(NkDtDateTime&)"),
        originOf("operator==(NkDtDateTime&)"), originOf("operator!=(NkDtDateTime&)")};
    if (a.IsMissing() || b.IsMissing()) [[unlikely]]
        raise(origins[comparison], NkDtErrUndefiniert);
    const std::strong_ordering order = a.Stored() <=> b.Stored();
    return (order > 0) - (order < 0);
}
