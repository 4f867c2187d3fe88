#pragma once

/// @file
/// The nullable length of time: a signed number of ticks of 3 seconds.
///
/// @code
/// NkDtTime tArbeit("7:45");
/// NkDtTime tWoche = tArbeit + NkDtTime(30, 15);             // 38:00
/// LONG nMinuten = tWoche.GetTime(NkDtTime::Minutes);        // 2280
/// tArbeit.Round(NkDtTime::HalfHour);                        // 8:00, always away from zero
/// NkDtString strText = "Dauer: " + tArbeit;                 // "Dauer: 08:00"
/// CString strOfl = NkDtTime("1,50", NkDtTime::Hundredths).ConvToOFL();  // "1,50"
/// @endcode
///
/// A tick is the 1/1200 of an hour, so that minutes (20 ticks) and hundredths of an hour (12 ticks) are both
/// whole numbers of ticks; about 1,789,569 hours fit in either direction. Beside its ticks a duration has a
/// time mode, in which it is shown as text. Comparing and computing look at the ticks alone.
///
/// | time mode | text of 90 minutes | unit of GetMin() and GetTime() |
/// |---|---|---|
/// | `Hundredths` | 01,50 | the hundredth of an hour |
/// | `Minutes` | 01:30 | the minute |
/// | `HoursOnly` | 01 | there is no part below the hour; GetTime() gives the whole hours in minutes |
///
/// Text that is read is an optional sign, hours, and, behind ":" or ",", exactly two digits: "1:30", "-0,25",
/// "8". The time mode says which separator it must have; with `CurrentMode` the separator says how it is
/// read. A "-" in front counts for both parts.
///
/// Unless an operation says otherwise, whatever fails inside it reaches the caller as error 1
/// "Default-Catch / Folgefehler" with its cause; only error 2 "Undefinierter Wert" of a missing value and
/// error 17 "Ungültiger Zeitmodus" are seen as they are. In constructors, Clear() and SetValue() these two
/// are causes as well.
///
/// A duration is not multiplied, and is no number: what is meant by `t + 1` does not compile.

#include <cstddef>
#include <iosfwd>
#include <type_traits>

#include "nkdt/Narrow.h"
#include "nkdt/NkDtLong.h"
#include "nkdt/NkDtString.h"
#include "nkdt/Operands.h"
#include "nkdt/StoredValue.h"
#include "nkfw/Export.h"

class CRecordset;
class NkDtTime_Imp;

namespace nkdt {

struct Duration;

/// What counts hours, minutes or ticks.
template <class T>
inline constexpr bool isCount = isWhole<T> || isKindOf<T, NkDtLong, NkDtShort>;
template <class T>
inline constexpr bool isOtherCount = isCount<T> && !std::is_same_v<T, LONG>;

/// Two counts of which one at least is a value; two NkDtLong have an overload of their own.
template <class A, class B>
inline constexpr bool areCountValues =
    isCount<A>&& isCount<B> &&
    !(isWhole<A> && isWhole<B>)&&!(std::is_same_v<A, NkDtLong> && std::is_same_v<B, NkDtLong>);

/// What never counts: it would be cut or misread.
template <class T>
inline constexpr bool isNoCount = isNoWholeOperand<T> || std::is_enum_v<T> || isRealValue<T>;

/// What is no duration, though a text could be made of it that is read as one.
template <class T>
inline constexpr bool isNoDuration = std::is_arithmetic_v<T> || std::is_enum_v<T> ||
                                     std::is_same_v<T, std::nullptr_t> ||
                                     (isKindOf<T, NkDtBasis> && !isKindOf<T, NkDtString, NkDtTime>);

/// What is never added to a duration.
template <class T>
inline constexpr bool isNoDurationAddend = isNoDuration<T> || isForeignPointer<T>;

/// What a duration is never compared with.
template <class T>
inline constexpr bool isNoDurationComparand = isNoDuration<T> || isText<T> || isForeignPointer<T>;

}  // namespace nkdt

template <>
struct nkdt::ValueTraits<NkDtTime> {
    using Imp = NkDtTime_Imp;
    using Value = Duration;
};

extern template class NKDT_API nkdt::Record<NkDtTime_Imp>;
extern template class NKDT_API nkdt::StoredValue<NkDtTime>;

class NKDT_API NkDtTime : public nkdt::StoredValue<NkDtTime> {
  public:
    /// How a duration is shown and its parts are counted.
    enum TimeMode : int {
        Hundredths = 0,   ///< hours and hundredths of an hour, "01,50"
        Minutes = 1,      ///< hours and minutes, "01:30"
        HoursOnly = 2,    ///< whole hours, "01"
        CurrentMode = 3,  ///< the object's own mode; passed, never stored
    };

    /// The steps of Round().
    enum RoundMode : int {
        QuarterHour = 0,
        HalfHour = 1,
        FullHour = 2,
    };

    // All constructors: error 1 with the cause 17 for a time mode that is none. CurrentMode stores Minutes.

    /// Undefined with length 0 in that working mode (3: the default); defined in mode 2.
    NkDtTime(NkDtWorkingMode eMode = NkDtWmDefault);
    /// Reads a text as told at the head of this file. Causes: 5 "Ungültiger Initialwert" for null, an empty
    /// text and parts that are no numbers; 21 "Format nicht eingehalten" for another separator than the
    /// mode's, or one that is not the third character from the end; 8 "Wert außerhalb des Wertebereichs" for
    /// 60 minutes and more, and beyond 1789568 hours.
    NkDtTime(LPCTSTR psz, TimeMode eMode = Minutes);
    /// The base state of @p r; its text read as above, length 0 in Minutes when undefined.
    NkDtTime(const NkDtString& r, TimeMode eMode = Minutes);
    /// Hours and the part below the hour in the mode's unit, which HoursOnly ignores. The part may have any
    /// size and its own sign: (2, -30) is 1:30. Cause 8 when the length does not fit the ticks.
    NkDtTime(LONG nHours, LONG nSubHour, TimeMode eMode = Minutes);
    /// The same with other whole types; error 8 for a number that does not fit a LONG.
    template <class A, class B,
              nkdt::If<nkdt::isWhole<A> && nkdt::isWhole<B> &&
                       !(std::is_same_v<A, LONG> && std::is_same_v<B, LONG>)> = 0>
    NkDtTime(A nHours, B nSubHour, TimeMode eMode = Minutes)
        : NkDtTime(nkdt::countOf<LONG>(nHours), nkdt::countOf<LONG>(nSubHour), eMode) {}
    /// The same with numbers of which none is missing (a null one counts with its stored number); undefined
    /// with length 0 in Minutes otherwise.
    NkDtTime(const NkDtLong& rHours, const NkDtLong& rSubHour, TimeMode eMode = Minutes);
    template <class A, class B, nkdt::If<nkdt::areCountValues<A, B>> = 0>
    NkDtTime(const A& rHours, const B& rSubHour, TimeMode eMode = Minutes)
        : NkDtTime(NkDtLong(rHours), NkDtLong(rSubHour), eMode) {}
    NkDtTime(const NkDtTime& r);
    NkDtTime(NkDtTime&& r) noexcept = default;
    ~NkDtTime() override;
    template <class T, nkdt::If<nkdt::isNoDuration<T> && !std::is_same_v<T, NkDtWorkingMode>> = 0>
    NkDtTime(const T&, TimeMode = Minutes) = delete;
    template <class T, nkdt::If<std::is_same_v<T, NkDtWorkingMode>> = 0>
    NkDtTime(const T&, TimeMode) = delete;
    template <class A, class B,
              nkdt::If<nkdt::isNoCount<A> || (nkdt::isNoCount<B> && !std::is_same_v<B, TimeMode>)> = 0>
    NkDtTime(const A&, const B&, TimeMode = Minutes) = delete;

    static const CRuntimeClass* GetThisClass() noexcept;
    static CObject* CreateObject();
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    NkDtTime* NewObject() const override;

    /// Copies length and time mode (modified if one differs) and definedness; working mode and format stay.
    NkDtTime& operator=(const NkDtTime& r);
    NkDtTime& operator=(NkDtTime&& r) {
        MoveFrom(r);
        return *this;
    }
    template <class T, nkdt::If<nkdt::isNoDuration<T>> = 0>
    NkDtTime& operator=(const T&) = delete;

    /// Length 0 in Minutes, modified if it was another length or mode; undefined unless the working mode is
    /// 2.
    void Clear() override;
    /// Length 0 in that time mode (CurrentMode: the own one), modified if one of the two differs; defined.
    void Reset(TimeMode eMode = CurrentMode);

    /// Writes the text in the own time mode into the caller's buffer of @p nSize bytes and returns it; 12 are
    /// enough for every duration. Error 2 when missing. Causes: 5 for a null buffer, 4 "Puffer zu klein".
    LPTSTR GetValue(LPTSTR pszBuffer, INT nSize) const;
    /// The whole hours, cut toward zero. Error 2 when missing.
    LONG GetHour() const;
    /// The part below the hour in the mode's unit, cut toward zero, with the sign of the duration; 0 for
    /// HoursOnly. Error 2 when missing, then error 17.
    LONG GetMin(TimeMode eMode = CurrentMode) const;
    /// The whole length in the mode's unit, cut toward zero; for HoursOnly the whole hours counted in
    /// minutes. Error 2 when missing, then error 17.
    LONG GetTime(TimeMode eMode = CurrentMode) const;

    // Setters. They do not ask whether the value is missing. An undefined value becomes defined and takes the
    // time mode that is given (CurrentMode: keeps its own), a defined one keeps its own. Modified if the
    // length or the definedness differs. Cause 8 when the length does not fit; nothing is changed then.

    /// Reads a text as the construction does, and takes the time mode in which it was read: with CurrentMode
    /// Minutes for ":", Hundredths for "," and HoursOnly for neither.
    void SetValue(LPCTSTR psz, TimeMode eMode = CurrentMode);
    /// Other hours; the part below the hour stays as GetMin() tells it, with its sign. Ticks below the own
    /// mode's unit are lost.
    void SetHour(LONG nHours);
    /// Another part below the hour, of any size and sign; the hours stay as GetHour() tells them. Error 17.
    void SetMin(LONG nSubHour, TimeMode eMode = CurrentMode);
    /// Another length in the mode's unit; for HoursOnly in minutes, cut to whole hours. Error 17.
    void SetTime(LONG nTime, TimeMode eMode = CurrentMode);

    // Moving. Error 2 when missing. A null value becomes defined; 0 changes nothing beside that, every other
    // number raises the modified flag.

    /// More or fewer hours; the part below the hour stays as GetMin() tells it. Cause 8 when the length does
    /// not fit; the value is defined then.
    void AddHour(LONG nHours);
    void SubHour(LONG nHours);
    /// More or fewer minutes, or hundredths of an hour in every other mode. A length that does not fit wraps
    /// around. Error 17.
    void AddMin(LONG nSubHour, TimeMode eMode = CurrentMode);
    void SubMin(LONG nSubHour, TimeMode eMode = CurrentMode);

    /// Another time mode for the same length, modified if it differs; CurrentMode does nothing. Missing
    /// values too. Error 17.
    void SetMode(TimeMode eMode);
    /// The own time mode, also of an undefined value.
    TimeMode GetMode() const;
    /// The next multiple of the step, always away from zero: 1:01 becomes 1:15, -1:01 becomes -1:15. Modified
    /// if the length differs; nothing for an undefined value. Error 31 "Unbekannte Option" for a step that is
    /// none; error 8, nothing changed, for a length that would not fit.
    void Round(RoundMode eMode);

    /// Without a format hours and hundredths in time mode Hundredths, else hours and minutes; hours have as
    /// many digits as needed.
    CString ConvToOFL(const NkFormat* pFormat = nullptr) const override;
    /// Without a format a text with "," is read as hundredths, any other as minutes. The value is built from
    /// what is read alone; the time mode stays. Nothing is changed when the text is refused.
    void SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat = nullptr) override;
    /// As if it were a date with days of 24 hours, months of 30 days and years of 12 months: "T" and hours,
    /// minutes, seconds below a day; "D" and day, month, year for whole days; "C" and both otherwise; "-"
    /// behind the letter when there are negative hours. So the sign of less than an hour is lost, and what is
    /// below a minute. An undefined text in the default mode for an undefined value.
    NkDtString ConvToExtern(BOOL& rfDefiniert, USHORT& rusVersion) const override;
    /// Takes length and time mode Minutes from such a text; parts that it lacks are 0, seconds do not count.
    /// Modified if the length or the definedness differs. Error 1 whatever fails: cause 14 before anything
    /// is changed; causes 13, 18 "Ungültige Externe Darstellung" and 8 with the value marked defined.
    void SetFromExtern(const NkDtString* pExternData, BOOL fDefiniert, USHORT usVersion) override;
    /// The base state, then the ticks as a 32-bit number, also when the value is undefined. The time mode is
    /// not archived and stays. An archive's exception becomes error 1; a load that fails changes nothing.
    void Serialize(CArchive& ar) override;

    /// Takes the number of ticks, modified if it differs, and becomes defined; the time mode stays.
    virtual void SetFromSQL(LONG nTicks);
    /// The number of ticks; "NULL" for an undefined value.
    virtual NkDtString ConvToSQL() const;
    /// Clears for a field that the recordset reports null; else takes the field as SetFromSQL().
    virtual void SetFromRecordSet(CRecordset& rs, const LONG& rField);
    /// Writes the number of ticks to the field and marks it not null; marks it null, the field unchanged, for
    /// an undefined value.
    virtual void ConvToRecordSet(CRecordset& rs, LONG& rField) const;

    // Other whole types and whole-number values as counts: error 8 for a number that does not fit a LONG,
    // error 2 for a missing one.
    template <class T, nkdt::If<nkdt::isOtherCount<T>> = 0>
    void SetHour(const T& n) {
        SetHour(nkdt::countOf<LONG>(n));
    }
    template <class T, nkdt::If<nkdt::isOtherCount<T>> = 0>
    void SetMin(const T& n, TimeMode eMode = CurrentMode) {
        SetMin(nkdt::countOf<LONG>(n), eMode);
    }
    template <class T, nkdt::If<nkdt::isOtherCount<T>> = 0>
    void SetTime(const T& n, TimeMode eMode = CurrentMode) {
        SetTime(nkdt::countOf<LONG>(n), eMode);
    }
    template <class T, nkdt::If<nkdt::isOtherCount<T>> = 0>
    void AddHour(const T& n) {
        AddHour(nkdt::countOf<LONG>(n));
    }
    template <class T, nkdt::If<nkdt::isOtherCount<T>> = 0>
    void SubHour(const T& n) {
        SubHour(nkdt::countOf<LONG>(n));
    }
    template <class T, nkdt::If<nkdt::isOtherCount<T>> = 0>
    void AddMin(const T& n, TimeMode eMode = CurrentMode) {
        AddMin(nkdt::countOf<LONG>(n), eMode);
    }
    template <class T, nkdt::If<nkdt::isOtherCount<T>> = 0>
    void SubMin(const T& n, TimeMode eMode = CurrentMode) {
        SubMin(nkdt::countOf<LONG>(n), eMode);
    }
    template <class T, nkdt::If<nkdt::isOtherCount<T>> = 0>
    void SetFromSQL(const T& n) {
        SetFromSQL(nkdt::countOf<LONG>(n));
    }
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void SetHour(const T&) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void SetMin(const T&, TimeMode = CurrentMode) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void SetTime(const T&, TimeMode = CurrentMode) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void AddHour(const T&) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void SubHour(const T&) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void AddMin(const T&, TimeMode = CurrentMode) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void SubMin(const T&, TimeMode = CurrentMode) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void SetFromSQL(const T&) = delete;
    /// A field of another type would be copied, and a recordset knows a field by its address.
    template <class T, nkdt::If<!std::is_same_v<T, LONG>> = 0>
    void SetFromRecordSet(CRecordset&, const T&) = delete;

    /// The sum, defined, in the left operand's time mode. Undefined when one operand is missing or both are
    /// undefined; a null one counts with its stored length. Error 8 when it does not fit.
    friend NkDtTime operator+(const NkDtTime& a, const NkDtTime& b) { return Combine(a, b, Operation::add); }
    friend NkDtTime operator-(const NkDtTime& a, const NkDtTime& b) {
        return Combine(a, b, Operation::subtract);
    }
    /// The same in place, modified if length or definedness differ. What cannot be computed with leaves an
    /// undefined length 0, whatever the working mode. Error 8, nothing changed, when the result does not fit.
    NkDtTime& operator+=(const NkDtTime& r) { return Accumulate(r, Operation::add); }
    NkDtTime& operator-=(const NkDtTime& r) { return Accumulate(r, Operation::subtract); }

    // Text and duration make text.
    friend NkDtString operator+(const NkDtString& a, const NkDtTime& b) { return a + NkDtString(b); }
    friend NkDtString operator+(const NkDtTime& a, const NkDtString& b) { return NkDtString(a) + b; }
    friend NkDtString operator+(LPCTSTR a, const NkDtTime& b) { return a + NkDtString(b); }
    friend NkDtString operator+(const NkDtTime& a, LPCTSTR b) { return NkDtString(a) + b; }
    friend NkDtString operator+(const CString& a, const NkDtTime& b) { return a + NkDtString(b); }
    friend NkDtString operator+(const NkDtTime& a, const CString& b) { return NkDtString(a) + b; }

    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDurationAddend<T>, void> operator+(const NkDtTime&, const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDurationAddend<T> && !nkdt::isKindOf<T, NkDtDateTime>, void> operator+(
        const T&, const NkDtTime&) = delete;  // a date is moved by a duration
    // A text, which `+` would append, is no operand here either.
    template <class T>
    friend nkdt::ResultIf<!nkdt::isKindOf<T, NkDtTime>, void> operator-(const NkDtTime&, const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<!nkdt::isKindOf<T, NkDtTime, NkDtDateTime>, void> operator-(
        const T&, const NkDtTime&) = delete;
    template <class T, nkdt::If<!nkdt::isKindOf<T, NkDtTime>> = 0>
    NkDtTime& operator+=(const T&) = delete;
    template <class T, nkdt::If<!nkdt::isKindOf<T, NkDtTime>> = 0>
    NkDtTime& operator-=(const T&) = delete;

    // Comparing looks at the length as it is, not at the time mode. Error 2 "Undefinierter Wert" when an
    // operand is missing; a null one compares with its stored length.
    friend BOOL operator==(const NkDtTime& a, const NkDtTime& b) {
        return Order(a, b, Comparison::equal) == 0;
    }
    friend BOOL operator!=(const NkDtTime& a, const NkDtTime& b) {
        return Order(a, b, Comparison::unequal) != 0;
    }
    friend BOOL operator<(const NkDtTime& a, const NkDtTime& b) { return Order(a, b, Comparison::less) < 0; }
    friend BOOL operator>(const NkDtTime& a, const NkDtTime& b) {
        return Order(a, b, Comparison::greater) > 0;
    }
    friend BOOL operator<=(const NkDtTime& a, const NkDtTime& b) {
        return Order(a, b, Comparison::lessEqual) <= 0;
    }
    friend BOOL operator>=(const NkDtTime& a, const NkDtTime& b) {
        return Order(a, b, Comparison::greaterEqual) >= 0;
    }

    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDurationComparand<T>, BOOL> operator==(const NkDtTime&,
                                                                           const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDurationComparand<T>, BOOL> operator!=(const NkDtTime&,
                                                                           const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDurationComparand<T>, BOOL> operator<(const NkDtTime&, const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDurationComparand<T>, BOOL> operator>(const NkDtTime&, const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDurationComparand<T>, BOOL> operator<=(const NkDtTime&,
                                                                           const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDurationComparand<T>, BOOL> operator>=(const NkDtTime&,
                                                                           const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDurationComparand<T>, BOOL> operator==(const T&,
                                                                           const NkDtTime&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDurationComparand<T>, BOOL> operator!=(const T&,
                                                                           const NkDtTime&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDurationComparand<T>, BOOL> operator<(const T&, const NkDtTime&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDurationComparand<T>, BOOL> operator>(const T&, const NkDtTime&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDurationComparand<T>, BOOL> operator<=(const T&,
                                                                           const NkDtTime&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDurationComparand<T>, BOOL> operator>=(const T&,
                                                                           const NkDtTime&) = delete;

    /// Writes the text of the duration; nothing for an undefined value.
    friend std::ostream& operator<<(std::ostream& os, const NkDtTime& t) { return Write(os, t); }

  private:
    enum class Operation : unsigned char { add, subtract };
    enum class Comparison : unsigned char { equal, unequal, less, greater, lessEqual, greaterEqual };

    /// A defined duration in the default working mode.
    explicit NkDtTime(const nkdt::Duration& duration);

    /// The mode, with CurrentMode resolved.
    TimeMode Resolved(TimeMode eMode) const;
    /// Stores ticks and mode; modified if the ticks differ.
    void Take(LONG nTicks, TimeMode eMode);
    /// What every setter does with the ticks that it has made.
    void Become(LONG nTicks, TimeMode eMode);
    void MoveHours(LONG nHours, Operation operation, const nkdt::Origin& origin);
    void MoveParts(LONG nSubHour, TimeMode eMode, Operation operation, const nkdt::Origin& origin);
    static NkDtTime Combine(const NkDtTime& a, const NkDtTime& b, Operation operation);
    NkDtTime& Accumulate(const NkDtTime& r, Operation operation);
    static INT Order(const NkDtTime& a, const NkDtTime& b, Comparison comparison);
    static std::ostream& Write(std::ostream& os, const NkDtTime& t);
};
