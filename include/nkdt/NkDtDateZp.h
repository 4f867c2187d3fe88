#pragma once

/// @file
/// The nullable date: a NkDtDateTime that is built, moved and read without a time of day.
///
/// @code
/// NkDtDateZp dtFaellig("05.03.2004");
/// dtFaellig.AddDay365(30);                              // 04.04.2004
/// dtFaellig = dtFaellig + NkDtTime(24, 0);              // 05.04.2004
/// NkDtString strText = dtFaellig.ConvToOFL();           // 05.04.2004
/// if (dtFaellig < NkDtDateZp(NkDtDateTime(NkDtWmDefined))) ...;  // before today
/// @endcode
///
/// Constructors, the sum with a duration and user-interface text leave 00:00:00 behind. The other operations
/// are those of NkDtDateTime: a time of day that SetHour() or SetTime() gave is kept by assignment, compared,
/// and written to texts, SQL and fields, but not to an archive.

#include "nkdt/NkDtDateTime.h"

class NKDT_API NkDtDateZp : public NkDtDateTime {
  public:
    /// Undefined in that mode (3: the default); for NkDtWmDefined the current local date with its time of
    /// day.
    NkDtDateZp(NkDtWorkingMode eMode = NkDtWmDefault) : NkDtDateTime(eMode) {}
    /// As NkDtDateTime, the time of day wiped.
    NkDtDateZp(struct tm* pTime);
    NkDtDateZp(const NkDtDateTime& r);
    NkDtDateZp(const NkDtDateZp& r);
    NkDtDateZp(NkDtDateZp&& r) noexcept = default;
    NkDtDateZp(time_t t);
    template <class T, nkdt::If<nkdt::isNoDateSource<T>> = 0>
    NkDtDateZp(const T&) = delete;
    /// Undefined with the empty value unless all three are defined.
    NkDtDateZp(const NkDtShort& nDay, const NkDtShort& nMonth, const NkDtShort& nYear);
    NkDtDateZp(SHORT nDay, SHORT nMonth, SHORT nYear);
    /// A number that is no SHORT raises error 8 "Wert außerhalb des Wertebereichs".
    template <class A, class B, class C, IfWholes<A, B, C> = 0>
    NkDtDateZp(A nDay, B nMonth, C nYear)
        : NkDtDateZp(nkdt::narrowed<SHORT>(nDay), nkdt::narrowed<SHORT>(nMonth),
                     nkdt::narrowed<SHORT>(nYear)) {}
    template <class A, class B, class C, IfValues<A, B, C> = 0>
    NkDtDateZp(const A& nDay, const B& nMonth, const C& nYear)
        : NkDtDateZp(NkDtShort(nDay), NkDtShort(nMonth), NkDtShort(nYear)) {}
    template <class A, class B, class C, nkdt::If<!areCounts<A, B, C>> = 0>
    NkDtDateZp(const A&, const B&, const C&) = delete;
    /// Reads "TT.MM.JJJJ"; days and months may have one digit, years two.
    NkDtDateZp(LPCTSTR pszText);
    /// The base state of @p r; its text read as above, the empty value when it is undefined or empty.
    NkDtDateZp(const NkDtString& r);
    ~NkDtDateZp() override;

    static const CRuntimeClass* GetThisClass() noexcept;
    static CObject* CreateObject();
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    NkDtDateZp* NewObject() const override;
    NkDtTyps GetDtTyp() const override;

    /// As the assignment of NkDtDateTime, with the time of day.
    NkDtDateZp& operator=(const NkDtDateZp& r);
    NkDtDateZp& operator=(NkDtDateZp&& r) {
        if (!IsHusk()) return *this = static_cast<const NkDtDateZp&>(r);
        MoveFrom(r);
        return *this;
    }
    /// Takes the date of a valid one, without the time of day; undefined for any other.
    NkDtDateZp& operator=(const COleDateTime& r);
    /// Takes the date, without the time of day.
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtDateTime> && !nkdt::isKindOf<T, NkDtDateZp>> = 0>
    NkDtDateZp& operator=(const T& r) {
        return *this = NkDtDateZp(static_cast<const NkDtDateTime&>(r));
    }
    template <class T, nkdt::If<nkdt::isNoDateOperand<T> || nkdt::isKindOf<T, NkDtTime>> = 0>
    NkDtDateZp& operator=(const T&) = delete;
    /// Error 10 "Basistypen unterschiedlich" for a NkDtDateTime as well, although that one takes a
    /// NkDtDateZp.
    void Assign(const NkDtBasis& r) override;

    /// All nine fields, of a missing value too.
    operator struct tm() const;

    /// As NkDtDateTime. A time of day in the text counts for the modified flag, and is wiped then.
    void SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat = nullptr) override;
    /// The base state, then year less 1900, month less 1 and day. The time of day is left alone.
    void Serialize(CArchive& ar) override;

    /// The date that the duration's minutes lead to from the value; undefined in mode 3 when both are
    /// undefined or one is missing.
    // Templates, so that beside a date none of them is looked at.
    template <class T>
    friend nkdt::ResultIf<nkdt::isKindOf<T, NkDtTime>, NkDtDateZp> operator+(const NkDtDateZp& a,
                                                                             const T& t) {
        return a.MovedDate(t, true);
    }
    template <class T>
    friend nkdt::ResultIf<nkdt::isKindOf<T, NkDtTime>, NkDtDateZp> operator-(const NkDtDateZp& a,
                                                                             const T& t) {
        return a.MovedDate(t, false);
    }

    // Text and date make text, without a time of day.
    friend NkDtString operator+(const NkDtString& a, const NkDtDateZp& b) { return a + NkDtString(b); }
    friend NkDtString operator+(const NkDtDateZp& a, const NkDtString& b) { return NkDtString(a) + b; }
    friend NkDtString operator+(LPCTSTR a, const NkDtDateZp& b) { return a + NkDtString(b); }
    friend NkDtString operator+(const NkDtDateZp& a, LPCTSTR b) { return NkDtString(a) + b; }
    friend NkDtString operator+(const CString& a, const NkDtDateZp& b) { return a + NkDtString(b); }
    friend NkDtString operator+(const NkDtDateZp& a, const CString& b) { return NkDtString(a) + b; }

    /// Writes "DD.MM.YYYY"; nothing for an undefined value.
    friend std::ostream& operator<<(std::ostream& os, const NkDtDateZp& value) {
        return value.Write(os, false);
    }

  private:
    NkDtDateZp MovedDate(const NkDtTime& t, bool forward) const;
};
