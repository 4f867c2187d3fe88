#pragma once

/// @file
/// The nullable date with a time of day, to the second, from the year 1753 on.
///
/// @code
/// NkDtDateTime dtEingang("05.03.2004 14:07:09");
/// dtEingang.AddMonth(1);                               // 05.04.2004 14:07:09
/// NkDtTime tLiegezeit = NkDtDateTime(10, 4, 2004, 8, 0, 0) - dtEingang;
/// NkDtString strSql = dtEingang.ConvToSQL();           // '05.04.2004 14:07'
/// if (dtEingang < NkDtDateTime(NkDtWmDefined)) ...;    // before now
/// NkDtDateTime dtNull(NkDtWmNull);                     // dtNull.GetYear() is 0
/// @endcode
///
/// The value is nine numbers in the order of `struct tm`. The class works with six of them, from the second
/// to the year; the days of the week and of the year and the daylight flag are only carried along. The empty
/// value is 1 January 1900, 00:00:00.
///
/// A year up to 99 is a year of the current century, wherever one is set: also a scanned or computed one.
///
/// Errors of a single field are 25 (day), 26 (month), 27 (year), 28 (hour), 29 (minute) and 30 (second).
/// Constructors, `Clear`, setters, moves and conversions replace every error by error 1 "Default-Catch /
/// Folgefehler", whose cause (GetCauseNumber()) is the first one. Only what is said to raise error 2
/// "Undefinierter Wert" raises that one itself.
///
/// The calendar is the Gregorian one. Moves and differences follow fixed steps, which depart from it in some
/// places, each told beside its operation.

#include <ctime>
#include <iosfwd>

#include "nkdt/Narrow.h"
#include "nkdt/NkDtShort.h"
#include "nkdt/NkDtString.h"
#include "nkdt/NkDtTime.h"
#include "nkdt/Operands.h"
#include "nkdt/StoredValue.h"
#include "nkfw/Export.h"
#include "nkfw/OleDateTime.h"

class CRecordset;
class NkDtDateTime_Imp;

namespace nkdt {

struct DateTimeFields;

/// What never stands beside a date: plain numbers, truth values, characters, modes.
template <class T>
inline constexpr bool isNoDateOperand =
    std::is_arithmetic_v<T> || std::is_enum_v<T> || std::is_same_v<T, std::nullptr_t> ||
    isKindOf<T, NkDtLong, NkDtShort, NkDtDouble, NkDtDecimal, NkDtBool, NkDtChar>;
/// What is never added to a date.
template <class T>
inline constexpr bool isNoDateAddend = isNoDateOperand<T> || isForeignPointer<T>;
/// Dates, of which no two are added: one would count as its text.
template <class T>
inline constexpr bool isDate = isKindOf<T, NkDtDateTime, COleDateTime>;
/// What no date is built from; a duration has a text, but that is no date.
template <class T>
inline constexpr bool isNoDateSource =
    (isNoDateOperand<T> && !isOneOf<T, NkDtWorkingMode, std::time_t>) || isKindOf<T, NkDtTime>;
/// What no date is compared with or subtracted from: texts as well, which say nothing of their form.
template <class T>
inline constexpr bool isNoDateComparand = isNoDateOperand<T> || isPointer<T> || isText<T>;

}  // namespace nkdt

template <>
struct nkdt::ValueTraits<NkDtDateTime> {
    using Imp = NkDtDateTime_Imp;
    using Value = DateTimeFields;
};

extern template class NKDT_API nkdt::Record<NkDtDateTime_Imp>;
extern template class NKDT_API nkdt::StoredValue<NkDtDateTime>;

class NKDT_API NkDtDateTime : public nkdt::StoredValue<NkDtDateTime> {
  protected:
    /// Whole types of which one at least is no SHORT.
    template <class... N>
    using IfWholes = nkdt::If<(nkdt::isWhole<N> && ...) && !(std::is_same_v<N, SHORT> && ...)>;
    template <class... N>
    static constexpr bool areCounts = (nkdt::isCount<N> && ...);
    /// Counts of which one at least is a value.
    template <class... N>
    using IfValues = nkdt::If<areCounts<N...> && !(nkdt::isWhole<N> && ...)>;

  public:
    /// What a text holds; every other number counts as DateAndTime.
    enum FormOfDateTimeString : int {
        DateAndTime = 0,
        DateOnly = 1,
        TimeOnly = 2,
    };

  private:
    template <class T, class Form>
    static constexpr bool isTextWithForm =
        std::is_same_v<Form, FormOfDateTimeString> && !nkdt::isCount<T> && !nkdt::isNoCount<T>;

  public:
    /// The order of an SQL literal.
    enum SQL_Language : int {
        SqlDayFirst = 0,    ///< 'DD.MM.YYYY hh:mm'
        SqlMonthFirst = 1,  ///< 'MM.DD.YYYY hh:mm'
    };

    /// Undefined in that mode (3: the default); for NkDtWmDefined the current local date and time. Where the
    /// default is NkDtWmDefined, mode 3 makes a defined empty value.
    NkDtDateTime(NkDtWorkingMode eMode = NkDtWmDefault);
    /// The fields of a broken-down time from the second to the year, checked. Its `tm_year` is the year
    /// itself from 1000 on, else the years since 1900.
    NkDtDateTime(struct tm* pTime);
    /// The date's fields; undefined for one that is not valid.
    NkDtDateTime(const COleDateTime& r);
    /// The local time of @p t with all nine fields.
    NkDtDateTime(time_t t);
    template <class T, nkdt::If<nkdt::isNoDateSource<T>> = 0>
    NkDtDateTime(const T&) = delete;
    /// The date at 00:00:00; undefined with the empty value unless all three are defined.
    NkDtDateTime(const NkDtShort& nDay, const NkDtShort& nMonth, const NkDtShort& nYear);
    NkDtDateTime(SHORT nDay, SHORT nMonth, SHORT nYear, SHORT nHour, SHORT nMin, SHORT nSecond);
    /// A number that is no SHORT raises error 8 "Wert außerhalb des Wertebereichs".
    template <class A, class B, class C, class D, class E, class F, IfWholes<A, B, C, D, E, F> = 0>
    NkDtDateTime(A nDay, B nMonth, C nYear, D nHour, E nMin, F nSecond)
        : NkDtDateTime(nkdt::narrowed<SHORT>(nDay), nkdt::narrowed<SHORT>(nMonth),
                       nkdt::narrowed<SHORT>(nYear), nkdt::narrowed<SHORT>(nHour),
                       nkdt::narrowed<SHORT>(nMin), nkdt::narrowed<SHORT>(nSecond)) {}
    /// The time of day on 1 January 1900. An hour of 32767 gives the current local date and time, whatever
    /// the minute.
    NkDtDateTime(SHORT nHour, SHORT nMin);
    template <class A, class B, IfWholes<A, B> = 0>
    NkDtDateTime(A nHour, B nMin) : NkDtDateTime(nkdt::narrowed<SHORT>(nHour), nkdt::narrowed<SHORT>(nMin)) {}
    /// The same; undefined with the empty value unless both are defined.
    NkDtDateTime(const NkDtShort& nHour, const NkDtShort& nMin);
    template <class A, class B, IfValues<A, B> = 0>
    NkDtDateTime(const A& nHour, const B& nMin) : NkDtDateTime(NkDtShort(nHour), NkDtShort(nMin)) {}
    /// Undefined with the empty value unless all six are defined.
    NkDtDateTime(const NkDtShort& nDay, const NkDtShort& nMonth, const NkDtShort& nYear,
                 const NkDtShort& nHour, const NkDtShort& nMin, const NkDtShort& nSecond);
    template <class A, class B, class C, class D, class E, class F, IfValues<A, B, C, D, E, F> = 0>
    NkDtDateTime(const A& nDay, const B& nMonth, const C& nYear, const D& nHour, const E& nMin,
                 const F& nSecond)
        : NkDtDateTime(NkDtShort(nDay), NkDtShort(nMonth), NkDtShort(nYear), NkDtShort(nHour),
                       NkDtShort(nMin), NkDtShort(nSecond)) {}
    /// Reads a date "TT.MM.JJJJ", a time of day "HH:MM" or "HH:MM:SS", or, in 16 characters at least, both,
    /// the time from the twelfth character on. Days and months may have one digit, years two. What follows
    /// both is passed over. Causes: 5 "Ungültiger Initialwert" for null and a text in another form, 25 to 30.
    NkDtDateTime(LPCTSTR pszText, FormOfDateTimeString eForm = DateAndTime);
    /// The base state of @p r; its text read as above, the empty value when it is undefined or empty.
    NkDtDateTime(const NkDtString& r, FormOfDateTimeString eForm = DateAndTime);
    template <class A, class B, nkdt::If<!areCounts<A, B> && !isTextWithForm<A, B>> = 0>
    NkDtDateTime(const A&, const B&) = delete;
    template <class... N, nkdt::If<(sizeof...(N) == 3 || sizeof...(N) == 6) && !areCounts<N...>> = 0>
    NkDtDateTime(const N&...) = delete;
    NkDtDateTime(const NkDtDateTime& r);
    NkDtDateTime(NkDtDateTime&& r) noexcept = default;
    ~NkDtDateTime() override;

    static const CRuntimeClass* GetThisClass() noexcept;
    static CObject* CreateObject();
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    NkDtDateTime* NewObject() const override;

    /// Copies all nine fields (modified if one of the six differs) and the definedness; mode and format stay.
    NkDtDateTime& operator=(const NkDtDateTime& r);
    NkDtDateTime& operator=(NkDtDateTime&& r) {
        MoveFrom(r);
        return *this;
    }
    /// Takes the fields of a valid date one by one, modified if one differs; clears for any other.
    NkDtDateTime& operator=(const COleDateTime& r);
    template <class T, nkdt::If<nkdt::isNoDateOperand<T> || nkdt::isKindOf<T, NkDtTime>> = 0>
    NkDtDateTime& operator=(const T&) = delete;
    void Clear() override;

    /// @name From text
    /// The value is marked defined first. A text that is refused leaves the fields that were read before, and
    /// raises the modified flag only if the value was undefined.
    /// @{

    /// Reads date and time of day, 00:00:00 if the text is no longer than 11 characters; null is the current
    /// local date and time. Modified if the value differs.
    void SetDateTime(LPCTSTR pszText);
    /// Reads the date; the time of day stays.
    void SetDate(LPCTSTR pszText);
    /// Reads the time of day; the date stays, but the day of an undefined value becomes 1.
    void SetTime(LPCTSTR pszText);
    /// @}

    /// All nine fields. Error 2 "Undefinierter Wert" when missing.
    struct tm GetValue() const;
    operator struct tm() const;

    /// @name Fields
    /// Reading a missing value raises error 2. Of a null value day, month and year are 0, the time of day is
    /// the stored one.
    ///
    /// Setting raises the modified flag if the given number differs from the stored one, before the number is
    /// checked: the flag stays after a refusal.
    /// @{

    SHORT GetDay365() const;  ///< the day of the month, 1 to 31
    SHORT GetMonth() const;   ///< 1 to 12
    SHORT GetYear() const;    ///< with all its digits
    SHORT GetHour() const;
    SHORT GetMin() const;
    SHORT GetSecond() const;

    /// Error 2 when missing.
    void SetDay365(SHORT nDay);
    /// Lowers the day to the last one of the month. Error 2 when missing.
    void SetMonth(SHORT nMonth);
    /// 29 February becomes the 28th in a common year. A year below 1753 is refused, but stored.
    void SetYear(SHORT nYear);
    /// 24 counts as 0; the date stays.
    void SetHour(SHORT nHour);
    void SetMin(SHORT nMin);
    void SetSecond(SHORT nSecond);
    /// Sets the time of day to 00:00:00, without any other effect.
    void WipeTime();
    /// @}

    /// @name Moves
    /// A missing value raises error 2; a null one moves from its stored fields. The result is defined, and
    /// modified if it differs. A negative count moves the other way. A year beyond 32767 is refused (error 8)
    /// and changes nothing.
    /// @{

    void AddDay365(SHORT nDays);
    /// Crossing a year, leap days count by the month that the move starts in: from March or later onto
    /// 1 January of a leap year leads to 32 December of the year before. A result before 1753 is refused, but
    /// stored.
    void SubDay365(SHORT nDays);
    /// Keeps the day, or takes the last one of the month. A count that leads to December of a later year is
    /// refused (error 26) after the year has moved.
    void AddMonth(SHORT nMonths);
    void SubMonth(SHORT nMonths);
    /// Sets the year, with the rules of SetYear(): what is 99 or less is a year of the current century.
    void AddYear(SHORT nYears);
    void SubYear(SHORT nYears);
    /// The days that are carried over are cut to 16 bits: from 32768 days on the date goes elsewhere, without
    /// an error. This holds for minutes too.
    void AddHour(LONG nHours);
    void SubHour(LONG nHours);
    void AddMin(LONG nMinutes);
    void SubMin(LONG nMinutes);
    /// @}

    // Other whole types and whole-number values: error 8 for a number that does not fit, error 2 for a
    // missing one. Anything else, a fraction say, does not compile.
    template <class T, nkdt::If<nkdt::isCount<T> && !std::is_same_v<T, SHORT>> = 0>
    void SetDay365(const T& n) {
        SetDay365(nkdt::countOf<SHORT>(n));
    }
    template <class T, nkdt::If<nkdt::isCount<T> && !std::is_same_v<T, SHORT>> = 0>
    void SetMonth(const T& n) {
        SetMonth(nkdt::countOf<SHORT>(n));
    }
    template <class T, nkdt::If<nkdt::isCount<T> && !std::is_same_v<T, SHORT>> = 0>
    void SetYear(const T& n) {
        SetYear(nkdt::countOf<SHORT>(n));
    }
    template <class T, nkdt::If<nkdt::isCount<T> && !std::is_same_v<T, SHORT>> = 0>
    void SetHour(const T& n) {
        SetHour(nkdt::countOf<SHORT>(n));
    }
    template <class T, nkdt::If<nkdt::isCount<T> && !std::is_same_v<T, SHORT>> = 0>
    void SetMin(const T& n) {
        SetMin(nkdt::countOf<SHORT>(n));
    }
    template <class T, nkdt::If<nkdt::isCount<T> && !std::is_same_v<T, SHORT>> = 0>
    void SetSecond(const T& n) {
        SetSecond(nkdt::countOf<SHORT>(n));
    }
    template <class T, nkdt::If<nkdt::isCount<T> && !std::is_same_v<T, SHORT>> = 0>
    void AddDay365(const T& n) {
        AddDay365(nkdt::countOf<SHORT>(n));
    }
    template <class T, nkdt::If<nkdt::isCount<T> && !std::is_same_v<T, SHORT>> = 0>
    void SubDay365(const T& n) {
        SubDay365(nkdt::countOf<SHORT>(n));
    }
    template <class T, nkdt::If<nkdt::isCount<T> && !std::is_same_v<T, SHORT>> = 0>
    void AddMonth(const T& n) {
        AddMonth(nkdt::countOf<SHORT>(n));
    }
    template <class T, nkdt::If<nkdt::isCount<T> && !std::is_same_v<T, SHORT>> = 0>
    void SubMonth(const T& n) {
        SubMonth(nkdt::countOf<SHORT>(n));
    }
    template <class T, nkdt::If<nkdt::isCount<T> && !std::is_same_v<T, SHORT>> = 0>
    void AddYear(const T& n) {
        AddYear(nkdt::countOf<SHORT>(n));
    }
    template <class T, nkdt::If<nkdt::isCount<T> && !std::is_same_v<T, SHORT>> = 0>
    void SubYear(const T& n) {
        SubYear(nkdt::countOf<SHORT>(n));
    }
    template <class T, nkdt::If<nkdt::isCount<T> && !std::is_same_v<T, LONG>> = 0>
    void AddHour(const T& n) {
        AddHour(nkdt::countOf<LONG>(n));
    }
    template <class T, nkdt::If<nkdt::isCount<T> && !std::is_same_v<T, LONG>> = 0>
    void SubHour(const T& n) {
        SubHour(nkdt::countOf<LONG>(n));
    }
    template <class T, nkdt::If<nkdt::isCount<T> && !std::is_same_v<T, LONG>> = 0>
    void AddMin(const T& n) {
        AddMin(nkdt::countOf<LONG>(n));
    }
    template <class T, nkdt::If<nkdt::isCount<T> && !std::is_same_v<T, LONG>> = 0>
    void SubMin(const T& n) {
        SubMin(nkdt::countOf<LONG>(n));
    }
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void SetDay365(const T&) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void SetMonth(const T&) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void SetYear(const T&) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void SetHour(const T&) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void SetMin(const T&) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void SetSecond(const T&) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void AddDay365(const T&) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void SubDay365(const T&) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void AddMonth(const T&) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void SubMonth(const T&) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void AddYear(const T&) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void SubYear(const T&) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void AddHour(const T&) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void SubHour(const T&) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void AddMin(const T&) = delete;
    template <class T, nkdt::If<nkdt::isNoCount<T>> = 0>
    void SubMin(const T&) = delete;

    /// The text of a form, also of an undefined value: 0 and 1 as SQL_Language has them, with apostrophes and
    /// without seconds; 1100 "DDMMYYYY"; 1102 "DD.MM.YYYY"; any other "DD.MM.YYYY hh:mm:ss".
    NkDtString MakeFormatString(USHORT usForm) const;

    CString ConvToOFL(const NkFormat* pFormat = nullptr) const override;
    /// A refused text leaves everything as it was.
    void SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat = nullptr) override;
    /// "D05032004" at 00:00:00, "C05032004140709" at any other time of day; an undefined text for an
    /// undefined value.
    NkDtString ConvToExtern(BOOL& rfDefiniert, USHORT& rusVersion) const override;
    /// Sets the fields one by one: after a refusal those stay that were set before. Causes: error 14
    /// "Falsche Versionsnummer" (nothing changed), error 13 "Inkonsistente Definiertheit" for an undefined
    /// text, error 18 "Ungültige Externe Darstellung" for one that does not fill its fields.
    void SetFromExtern(const NkDtString* pExternData, BOOL fDefiniert, USHORT usVersion) override;
    /// The base state, then second, minute, hour, year less 1900, month less 1 and day. Loading checks
    /// nothing; a load that fails half way raises error 1 and leaves everything as it was.
    void Serialize(CArchive& ar) override;

    /// The literal in that order, without seconds; "NULL" for an undefined value.
    virtual NkDtString ConvToSQL(SQL_Language eLanguage = SqlDayFirst) const;
    /// Reads "Mär  5 2004 02:07PM": month, day, year, hour, minute and AM or PM at fixed places; "NULL"
    /// clears. Months are known by their English and German short names; any other counts as January. Errors
    /// as in the text setters.
    virtual void SetFromSQL(LPCTSTR psz);
    /// Clears for a field that the recordset reports null. A field that holds no date leaves everything as it
    /// was. Its fraction is not read.
    virtual void SetFromRecordSet(CRecordset& rs, const TIMESTAMP_STRUCT& rField);
    /// Writes all but the fraction and marks the field not null; marks it null, the field unchanged, for an
    /// undefined value.
    virtual void ConvToRecordSet(CRecordset& rs, TIMESTAMP_STRUCT& rField) const;
    /// Null for an undefined value; invalid for a date that such a date cannot hold.
    operator COleDateTime() const;

    /// The value moved by the duration's whole minutes as AddMin() moves it, a copy otherwise. Undefined in
    /// mode 3 when both are undefined or one is missing.
    friend NkDtDateTime operator+(const NkDtDateTime& a, const NkDtTime& t) { return a.Moved(t, true); }
    friend NkDtDateTime operator-(const NkDtDateTime& a, const NkDtTime& t) { return a.Moved(t, false); }
    /// Hours and minutes from @p b to @p a, rounded down: a second more gives 00:00, a second less -00:01.
    /// Within one year a leap day counts as none. Whole years are left out when the later date has the
    /// earlier day of the year: 10.01.2005 less 01.06.2004 gives -3408 hours. Undefined as above.
    friend NkDtTime operator-(const NkDtDateTime& a, const NkDtDateTime& b) { return Difference(a, b); }

    // By the six fields, year first. Error 2 when an operand is missing; a null one compares by its stored
    // fields.
    friend int operator<(const NkDtDateTime& a, const NkDtDateTime& b) { return Compare(a, b, less) < 0; }
    friend int operator>(const NkDtDateTime& a, const NkDtDateTime& b) { return Compare(a, b, greater) > 0; }
    friend int operator<=(const NkDtDateTime& a, const NkDtDateTime& b) {
        return Compare(a, b, lessEqual) <= 0;
    }
    friend int operator>=(const NkDtDateTime& a, const NkDtDateTime& b) {
        return Compare(a, b, greaterEqual) >= 0;
    }
    friend int operator==(const NkDtDateTime& a, const NkDtDateTime& b) { return Compare(a, b, equal) == 0; }
    friend int operator!=(const NkDtDateTime& a, const NkDtDateTime& b) {
        return Compare(a, b, unequal) != 0;
    }

    // Text and date make text.
    friend NkDtString operator+(const NkDtString& a, const NkDtDateTime& b) { return a + NkDtString(b); }
    friend NkDtString operator+(const NkDtDateTime& a, const NkDtString& b) { return NkDtString(a) + b; }
    friend NkDtString operator+(LPCTSTR a, const NkDtDateTime& b) { return a + NkDtString(b); }
    friend NkDtString operator+(const NkDtDateTime& a, LPCTSTR b) { return NkDtString(a) + b; }
    friend NkDtString operator+(const CString& a, const NkDtDateTime& b) { return a + NkDtString(b); }
    friend NkDtString operator+(const NkDtDateTime& a, const CString& b) { return NkDtString(a) + b; }

    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDateAddend<T>, void> operator+(const NkDtDateTime&, const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDateAddend<T>, void> operator+(const T&, const NkDtDateTime&) = delete;
    template <class A, class B>
    friend nkdt::ResultIf<nkdt::isDate<A> && nkdt::isDate<B>, void> operator+(const A&, const B&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDateComparand<T>, void> operator-(const NkDtDateTime&, const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDateComparand<T>, void> operator-(const T&, const NkDtDateTime&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDateComparand<T>, int> operator==(const NkDtDateTime&, const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDateComparand<T>, int> operator==(const T&, const NkDtDateTime&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDateComparand<T>, int> operator!=(const NkDtDateTime&, const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDateComparand<T>, int> operator!=(const T&, const NkDtDateTime&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDateComparand<T>, int> operator<(const NkDtDateTime&, const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDateComparand<T>, int> operator<(const T&, const NkDtDateTime&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDateComparand<T>, int> operator>(const NkDtDateTime&, const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDateComparand<T>, int> operator>(const T&, const NkDtDateTime&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDateComparand<T>, int> operator<=(const NkDtDateTime&, const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDateComparand<T>, int> operator<=(const T&, const NkDtDateTime&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDateComparand<T>, int> operator>=(const NkDtDateTime&, const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoDateComparand<T>, int> operator>=(const T&, const NkDtDateTime&) = delete;

    /// Writes "DD.MM.YYYY hh:mm:ss"; nothing for an undefined value.
    friend std::ostream& operator<<(std::ostream& os, const NkDtDateTime& value) {
        return value.Write(os, true);
    }

  protected:
    /// The base state and the fields, with the time of day or without.
    void Serialize(CArchive& ar, bool withTime);
    /// The value moved by the duration, or an undefined one.
    NkDtDateTime Moved(const NkDtTime& t, bool forward) const;
    std::ostream& Write(std::ostream& os, bool withTime) const;

  private:
    enum Comparison : unsigned char { less, greater, lessEqual, greaterEqual, equal, unequal };

    void MoveToYear(LONGLONG year);
    void MoveByYears(LONGLONG years);
    void MoveDays(LONGLONG days, bool forward);
    void MoveMonths(LONGLONG months, bool forward);
    void MoveBackByMonths(LONGLONG months);
    void MoveHours(LONGLONG hours, bool forward);
    void MoveMinutes(LONGLONG minutes, bool forward);
    void StoreField(INT& rField, LONGLONG number);

    static NkDtTime Difference(const NkDtDateTime& a, const NkDtDateTime& b);
    /// Negative, 0 or positive.
    static int Compare(const NkDtDateTime& a, const NkDtDateTime& b, Comparison comparison);
};
