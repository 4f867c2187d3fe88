#include "nkdt/NkDtTime.h"

#include <cstring>
#include <ostream>

#include "Conversion.h"
#include "DefaultFormats.h"
#include "Imp/dttimei.h"
#include "StoredValueFlow.h"

namespace nkdt {

namespace {

constexpr Origin originOf(const char* operation) {
    return {".\\dttime.cc", "NkDtTime", operation};
}

}  // namespace

template <>
struct ValuePart<NkDtTime> {
    static constexpr NkDtTyps typ = NkDtTypTime;
    static constexpr Origin assign = originOf("Assign(NkDtBasis&)");
};

template class Record<NkDtTime_Imp>;
template class StoredValue<NkDtTime>;

}  // namespace nkdt

using namespace nkdt;

namespace {

constexpr CRuntimeClass classNkDtTime{"NkDtTime", sizeof(NkDtTime), 1, &NkDtTime::CreateObject,
                                      &NkDtBasis::GetThisClass};
const CClassRegistration registration{classNkDtTime};

using TimeMode = NkDtTime::TimeMode;

constexpr Origin constructInMode = originOf("NkDtTime(NkDtWorkingMode)");
constexpr Origin constructFromText = originOf("NkDtTime(LPCTSTR,TimeMode)");
constexpr Origin constructFromTextValue = originOf("NkDtTime(NkDtString&,TimeMode)");
constexpr Origin constructFromParts = originOf("NkDtTime(LONG,LONG,TimeMode)");
constexpr Origin constructFromPartValues = originOf("NkDtTime(NkDtLong&,NkDtLong&,TimeMode)");
constexpr Origin constructCopy = originOf("NkDtTime(NkDtTime&)");

void requireMode(TimeMode eMode, const Origin& origin) {
    if (eMode < NkDtTime::Hundredths || eMode > NkDtTime::CurrentMode) raise(origin, NkDtErrZeitmodus);
}

void requireValue(const NkDtTime& value, const Origin& origin) {
    if (value.IsMissing()) raise(origin, NkDtErrUndefiniert);
}

/// The mode that a new duration stores.
TimeMode newMode(TimeMode eMode, const Origin& origin) {
    requireMode(eMode, origin);
    return eMode == NkDtTime::CurrentMode ? NkDtTime::Minutes : eMode;
}

Duration fromParts(LONG nHours, LONG nSubHour, TimeMode eMode, const Origin& origin) {
    const TimeMode mode = newMode(eMode, origin);
    return {NkDtTime_Imp::BuildTimeValue(nHours, nSubHour, mode), mode};
}

Duration fromText(LPCTSTR psz, TimeMode eMode, const Origin& origin) {
    const TimeMode mode = newMode(eMode, origin);
    return {NkDtTime_Imp::ConvStringToTime(psz, eMode).ticks, mode};
}

Duration fromTextValue(const NkDtString& text, TimeMode eMode, const Origin& origin) {
    requireMode(eMode, origin);
    return text.IsDefined() ? fromText(text, eMode, origin) : Duration();
}

bool arePresent(const NkDtLong& a, const NkDtLong& b) {
    return !a.IsMissing() && !b.IsMissing();
}

Duration fromPartValues(const NkDtLong& hours, const NkDtLong& subHour, TimeMode eMode,
                        const Origin& origin) {
    requireMode(eMode, origin);
    if (!arePresent(hours, subHour)) return {};
    return fromParts(narrowed<LONG>(hours.GetValue()), narrowed<LONG>(subHour.GetValue()), eMode, origin);
}

/// Whether the format shows hundredths of an hour, and so takes and gives them.
TimeMode modeOf(const NkFormat& format) {
    return format.GetZeitDarstellung() == FormatZeitDarstellungHundertstel ? NkDtTime::Hundredths
                                                                           : NkDtTime::Minutes;
}

const NkFormat& defaultFormatOf(bool hasHundredths) {
    return hasHundredths ? defaultFormat::durationHundredths : defaultFormat::durationMinutes;
}

}  // namespace

// Construction

NkDtTime::NkDtTime(NkDtWorkingMode eMode) try : StoredValue(FALSE, eMode) {
} catch (...) {
    raiseReplacing(constructInMode);
}

NkDtTime::NkDtTime(LPCTSTR psz, TimeMode eMode) try
    : StoredValue(TRUE, NkDtWmDefault, fromText(psz, eMode, constructFromText)) {
} catch (...) {
    raiseReplacing(constructFromText);
}

NkDtTime::NkDtTime(const NkDtString& r, TimeMode eMode) try
    : StoredValue(r, fromTextValue(r, eMode, constructFromTextValue)) {
} catch (...) {
    raiseReplacing(constructFromTextValue);
}

NkDtTime::NkDtTime(LONG nHours, LONG nSubHour, TimeMode eMode) try
    : StoredValue(TRUE, NkDtWmDefault, fromParts(nHours, nSubHour, eMode, constructFromParts)) {
} catch (...) {
    raiseReplacing(constructFromParts);
}

NkDtTime::NkDtTime(const NkDtLong& rHours, const NkDtLong& rSubHour, TimeMode eMode) try
    : StoredValue(arePresent(rHours, rSubHour), NkDtWmDefault,
                  fromPartValues(rHours, rSubHour, eMode, constructFromPartValues)) {
} catch (...) {
    raiseReplacing(constructFromPartValues);
}

[[gnu::flatten]] NkDtTime::NkDtTime(const NkDtTime& r) try : StoredValue(r) {
} catch (...) {
    raiseReplacing(constructCopy);
}

[[gnu::flatten]] NkDtTime::NkDtTime(const Duration& duration) : StoredValue(TRUE, NkDtWmDefault, duration) {}

[[gnu::flatten]] NkDtTime::~NkDtTime() = default;

const CRuntimeClass* NkDtTime::GetThisClass() noexcept {
    return &classNkDtTime;
}

CObject* NkDtTime::CreateObject() {
    return new NkDtTime;
}

NkDtTime* NkDtTime::NewObject() const {
    return new NkDtTime(*this);
}

// Assignment

NkDtTime& NkDtTime::operator=(const NkDtTime& r) {
    CopyFrom(r);
    return *this;
}

void NkDtTime::Clear() {
    static constexpr Origin origin = originOf("Clear()");
    wrapped(origin, [this] { StoredValue::Clear(); });
}

void NkDtTime::Reset(TimeMode eMode) {
    static constexpr Origin origin = originOf("Reset(TimeMode)");
    requireMode(eMode, origin);
    wrapped(origin, [&] { SetTo({0, Resolved(eMode)}); });
}

// Reading

LPTSTR NkDtTime::GetValue(LPTSTR pszBuffer, INT nSize) const {
    static constexpr Origin origin = originOf("GetValue(LPTSTR,INT)");
    requireValue(*this, origin);
    return wrapped(origin, [&] {
        requireText(pszBuffer, origin);
        NkDtTime_Imp::Text buffer;
        const std::string_view text = NkDtTime_Imp::ConvTimeToString(Stored(), buffer);
        if (nSize <= static_cast<INT>(text.size())) raise(origin, NkDtErrPuffer);
        std::memcpy(pszBuffer, buffer, text.size() + 1);
        return pszBuffer;
    });
}

LONG NkDtTime::GetHour() const {
    static constexpr Origin origin = originOf("GetHour()");
    requireValue(*this, origin);
    return Stored().ticks / NkDtTime_Imp::hour;
}

LONG NkDtTime::GetMin(TimeMode eMode) const {
    static constexpr Origin origin = originOf("GetMin(TimeMode)");
    requireValue(*this, origin);
    requireMode(eMode, origin);
    return NkDtTime_Imp::subHour(Stored().ticks, Resolved(eMode));
}

LONG NkDtTime::GetTime(TimeMode eMode) const {
    static constexpr Origin origin = originOf("GetTime(TimeMode)");
    requireValue(*this, origin);
    requireMode(eMode, origin);
    const LONG ticks = Stored().ticks;
    switch (Resolved(eMode)) {
        case Hundredths:
            return ticks / NkDtTime_Imp::hundredth;
        case HoursOnly:
            return ticks / NkDtTime_Imp::hour * 60;
        default:
            return ticks / NkDtTime_Imp::minute;
    }
}

NkDtTime::TimeMode NkDtTime::GetMode() const {
    return Stored().mode;
}

// Setting

void NkDtTime::SetValue(LPCTSTR psz, TimeMode eMode) {
    static constexpr Origin origin = originOf("SetValue(LPCTSTR,TimeMode)");
    wrapped(origin, [&] {
        requireMode(eMode, origin);
        const Duration read = NkDtTime_Imp::ConvStringToTime(psz, eMode);
        Take(read.ticks, read.mode);
        SetDefined(TRUE);
    });
}

void NkDtTime::SetHour(LONG nHours) {
    static constexpr Origin origin = originOf("SetHour(LONG)");
    wrapped(origin, [&] {
        const Duration now = Stored();
        const LONG subHour = NkDtTime_Imp::subHour(now.ticks, now.mode);
        Become(NkDtTime_Imp::BuildTimeValue(nHours, subHour, now.mode), CurrentMode);
    });
}

void NkDtTime::SetMin(LONG nSubHour, TimeMode eMode) {
    static constexpr Origin origin = originOf("SetMin(LONG,TimeMode)");
    requireMode(eMode, origin);
    wrapped(origin, [&] {
        const LONG hours = Stored().ticks / NkDtTime_Imp::hour;
        Become(NkDtTime_Imp::BuildTimeValue(hours, nSubHour, Resolved(eMode)), eMode);
    });
}

void NkDtTime::SetTime(LONG nTime, TimeMode eMode) {
    static constexpr Origin origin = originOf("SetTime(LONG,TimeMode)");
    requireMode(eMode, origin);
    wrapped(origin, [&] {
        const TimeMode mode = Resolved(eMode);
        const bool isWholeHours = mode == HoursOnly;
        Become(NkDtTime_Imp::BuildTimeValue(isWholeHours ? nTime / 60 : 0, nTime, mode), eMode);
    });
}

void NkDtTime::SetMode(TimeMode eMode) {
    static constexpr Origin origin = originOf("SetMode(TimeMode)");
    requireMode(eMode, origin);
    wrapped(origin, [&] { Store({Stored().ticks, Resolved(eMode)}); });
}

void NkDtTime::Round(RoundMode eMode) {
    static constexpr Origin origin = originOf("Round(RoundMode)");
    static constexpr LONG steps[] = {NkDtTime_Imp::hour / 4, NkDtTime_Imp::hour / 2, NkDtTime_Imp::hour};
    if (eMode < QuarterHour || eMode > FullHour) raise(origin, NkDtErrOption);
    if (!IsDefined()) return;
    const Duration now = Stored();
    const LONGLONG step = steps[eMode];
    const LONGLONG rest = now.ticks % step;
    if (rest == 0) return;
    const LONGLONG rounded = rest > 0 ? now.ticks + step - rest : now.ticks - (rest + step);
    Take(NkDtTime_Imp::fitting(rounded, origin), now.mode);
}

// Moving

void NkDtTime::AddHour(LONG nHours) {
    static constexpr Origin origin = originOf("AddHour(LONG)");
    MoveHours(nHours, Operation::add, origin);
}

void NkDtTime::SubHour(LONG nHours) {
    static constexpr Origin origin = originOf("SubHour(LONG)");
    MoveHours(nHours, Operation::subtract, origin);
}

void NkDtTime::AddMin(LONG nSubHour, TimeMode eMode) {
    static constexpr Origin origin = originOf("AddMin(LONG,TimeMode)");
    MoveParts(nSubHour, eMode, Operation::add, origin);
}

void NkDtTime::SubMin(LONG nSubHour, TimeMode eMode) {
    static constexpr Origin origin = originOf("SubMin(LONG,TimeMode)");
    MoveParts(nSubHour, eMode, Operation::subtract, origin);
}

void NkDtTime::MoveHours(LONG nHours, Operation operation, const Origin& origin) {
    requireValue(*this, origin);
    wrapped(origin, [&] {
        SetDefined(TRUE);
        if (nHours == 0) return;
        const Duration now = Stored();
        const LONGLONG hours = now.ticks / NkDtTime_Imp::hour;
        const LONGLONG moved = operation == Operation::add ? hours + nHours : hours - nHours;
        const LONG subHour = NkDtTime_Imp::subHour(now.ticks, now.mode);
        const LONG ticks = NkDtTime_Imp::BuildTimeValue(moved, subHour, now.mode);
        SetModified(TRUE);
        Replace({ticks, now.mode});
    });
}

void NkDtTime::MoveParts(LONG nSubHour, TimeMode eMode, Operation operation, const Origin& origin) {
    requireValue(*this, origin);
    requireMode(eMode, origin);
    wrapped(origin, [&] {
        SetDefined(TRUE);
        if (nSubHour == 0) return;
        const Duration now = Stored();
        // Unsigned, where wrapping around is defined.
        const LONG unit = Resolved(eMode) == Minutes ? NkDtTime_Imp::minute : NkDtTime_Imp::hundredth;
        const ULONG distance = static_cast<ULONG>(nSubHour) * static_cast<ULONG>(unit);
        const auto ticks = static_cast<ULONG>(now.ticks);
        SetModified(TRUE);
        Replace(
            {static_cast<LONG>(operation == Operation::add ? ticks + distance : ticks - distance), now.mode});
    });
}

TimeMode NkDtTime::Resolved(TimeMode eMode) const {
    return eMode == CurrentMode ? Stored().mode : eMode;
}

void NkDtTime::Take(LONG nTicks, TimeMode eMode) {
    if (Stored().ticks != nTicks) SetModified(TRUE);
    Replace({nTicks, eMode});
}

void NkDtTime::Become(LONG nTicks, TimeMode eMode) {
    Take(nTicks, IsDefined() ? Stored().mode : Resolved(eMode));
    SetDefined(TRUE);
}

// Operators

NkDtTime NkDtTime::Combine(const NkDtTime& a, const NkDtTime& b, Operation operation) {
    static constexpr Origin origins[] = {originOf("operator+(NkDtTime&)"), originOf("operator-(NkDtTime&)")};
    if (!CheckDefinedForArithmetic(a, b)) return NkDtTime(NkDtWmDefault);
    const bool isSum = operation == Operation::add;
    const LONGLONG left = a.Stored().ticks;
    const LONGLONG right = b.Stored().ticks;
    const LONG ticks = NkDtTime_Imp::fitting(isSum ? left + right : left - right,
                                             origins[static_cast<unsigned char>(operation)]);
    return NkDtTime(Duration{ticks, a.Stored().mode});
}

NkDtTime& NkDtTime::Accumulate(const NkDtTime& r, Operation operation) {
    static constexpr Origin origins[] = {originOf("operator+=(NkDtTime&)"),
                                         originOf("operator-=(NkDtTime&)")};
    const Duration now = Stored();
    if (!CheckDefinedForArithmetic(*this, r)) {
        Take(0, now.mode);
        SetDefined(FALSE);
        return *this;
    }
    const bool isSum = operation == Operation::add;
    const LONGLONG left = now.ticks;
    const LONGLONG right = r.Stored().ticks;
    Take(NkDtTime_Imp::fitting(isSum ? left + right : left - right,
                               origins[static_cast<unsigned char>(operation)]),
         now.mode);
    SetDefined(TRUE);
    return *this;
}

INT NkDtTime::Order(const NkDtTime& a, const NkDtTime& b, Comparison comparison) {
    static constexpr Origin origins[] = {
        originOf("operator==(NkDtTime&)"), originOf("operator!=(NkDtTime&)"),
        originOf("operator<(NkDtTime&)"),  originOf("operator>(NkDtTime&)"),
        originOf("operator<=(NkDtTime&)"), originOf("operator>=(NkDtTime&)")};
    if (a.IsMissing() || b.IsMissing()) [[unlikely]]
        raise(origins[static_cast<unsigned char>(comparison)], NkDtErrUndefiniert);
    const LONG left = a.Stored().ticks;
    const LONG right = b.Stored().ticks;
    return (left > right) - (left < right);
}

std::ostream& NkDtTime::Write(std::ostream& os, const NkDtTime& t) {
    if (!t.IsDefined()) return os << std::string_view();
    NkDtTime_Imp::Text text;
    return os << NkDtTime_Imp::ConvTimeToString(t.Stored(), text);
}

// Conversions

CString NkDtTime::ConvToOFL(const NkFormat* pFormat) const {
    static constexpr Origin origin = originOf("ConvToOFL(NkFormat*)");
    return convToOFL(*this, pFormat, defaultFormatOf(Stored().mode == Hundredths), origin,
                     [this](const NkFormat& format) {
                         const LONG ticks = Stored().ticks;
                         return format.FormatTime(ticks / NkDtTime_Imp::hour,
                                                  NkDtTime_Imp::subHour(ticks, modeOf(format)));
                     });
}

void NkDtTime::SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat) {
    static constexpr Origin origin = originOf("SetFromOFL(LPCTSTR,NkFormat*)");
    const bool hasComma = pszOFL != nullptr && std::strchr(pszOFL, ',') != nullptr;
    setFromOFL(
        *this, pszOFL, pFormat, defaultFormatOf(hasComma), origin,
        [](const NkFormat& format, LPCTSTR psz) {
            LONG hours = 0;
            LONG subHour = 0;
            format.ParseTime(psz, hours, subHour);
            return NkDtTime_Imp::BuildTimeValue(hours, subHour, modeOf(format));
        },
        [this](LONG ticks) { Take(ticks, Stored().mode); });
}

NkDtString NkDtTime::ConvToExtern(BOOL& rfDefiniert, USHORT& rusVersion) const {
    describeExtern(*this, rfDefiniert, rusVersion);
    if (!IsDefined()) return NkDtString(NkDtWmDefault);
    NkDtTime_Imp::ExternText text;
    NkDtTime_Imp::externText(Stored().ticks, text);
    return NkDtString(text);
}

void NkDtTime::SetFromExtern(const NkDtString* pExternData, BOOL fDefiniert, USHORT usVersion) {
    static constexpr Origin origin = originOf("SetFromExtern(NkDtString*,BOOL,USHORT)");
    wrapped(origin, [&] {
        setFromExtern(*this, pExternData, fDefiniert, usVersion, origin, [this](const NkDtString& text) {
            Take(NkDtTime_Imp::fromExtern(static_cast<LPCTSTR>(text), origin), Minutes);
        });
    });
}

void NkDtTime::Serialize(CArchive& ar) {
    static constexpr Origin origin = originOf("Serialize(CArchive&)");
    wrapped(origin, [&] {
        if (ar.IsStoring()) {
            StoredValue::Serialize(ar);
            ar << Stored().ticks;
            return;
        }
        load(
            *this, [&] { StoredValue::Serialize(ar); },
            [&] {
                LONG ticks = 0;
                ar >> ticks;
                Take(ticks, Stored().mode);
            });
    });
}

void NkDtTime::SetFromSQL(LONG nTicks) {
    static constexpr Origin origin = originOf("SetFromSQL(LONG)");
    wrapped(origin, [&] { SetTo({nTicks, Stored().mode}); });
}

NkDtString NkDtTime::ConvToSQL() const {
    if (!IsDefined()) return NkDtString("NULL");
    return NkDtString(INT{Stored().ticks});
}

void NkDtTime::SetFromRecordSet(CRecordset& rs, const LONG& rField) {
    static constexpr Origin origin = originOf("SetFromRecordSet(CRecordset&,LONG&)");
    wrapped(origin,
            [&] { setFromRecordSet(*this, rs, rField, [this](LONG field) { Take(field, Stored().mode); }); });
}

void NkDtTime::ConvToRecordSet(CRecordset& rs, LONG& rField) const {
    convToRecordSet(*this, rs, rField, [this](LONG& field) { field = Stored().ticks; });
}
