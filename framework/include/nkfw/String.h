#pragma once

/// @file
/// The framework's 8-bit text: an owned, NUL-terminated buffer with a length and an allocated length.
///
/// @code
/// CString str("Nr. ");
/// str += "42";
/// std::string_view view = str;          // "Nr. 42"
/// LPTSTR buffer = str.GetBuffer(100);   // write into it, then
/// str.ReleaseBuffer();                  // take the length from the terminator
/// @endcode
///
/// Lengths count characters (bytes) without the terminator and reach 2147483647 at most. An empty text
/// without a buffer of its own points at one shared empty text. Operations that need memory throw a
/// `CMemoryException*` when there is none, or when the text would become too long, and leave the text as it
/// was. A source may always lie inside the text itself. A null pointer stands for the empty text.

#include <cstddef>
#include <cstring>
#include <string_view>
#include <type_traits>
#include <utility>
#if defined(__cpp_impl_three_way_comparison)
#include <compare>
#endif

#include "nkfw/Export.h"
#include "nkfw/Types.h"

class NKDT_API CString {
    // Construction and assignment take pointers only, so that a class with several conversions (to a pointer,
    // to a CString) converts in exactly one way. Where a character stands, no number is taken as its code.
    template <class P>
    using IfText = std::enable_if_t<std::is_pointer_v<P> && std::is_convertible_v<P, LPCTSTR>, int>;
    template <class P>
    using IfWide = std::enable_if_t<std::is_pointer_v<P> && std::is_convertible_v<P, const OLECHAR*>, int>;
    template <class C>
    using IfCharacter = std::enable_if_t<std::is_same_v<C, TCHAR>, int>;
    template <class N>
    using IfNumber =
        std::enable_if_t<(std::is_arithmetic_v<N> && !std::is_same_v<N, TCHAR>) || std::is_enum_v<N>,
                         CString>;

  public:
    CString() noexcept : m_pText(s_szEmpty), m_nLength(0), m_nAlloc(0) {}
    /// The allocated length of a copy is its length.
    CString(const CString& r) : CString() { Assign(r.View()); }
    CString(CString&& r) noexcept
        : m_pText(std::exchange(r.m_pText, s_szEmpty)),
          m_nLength(std::exchange(r.m_nLength, 0)),
          m_nAlloc(std::exchange(r.m_nAlloc, 0)) {}
    /// A zero-terminated text.
    template <class P, IfText<P> = 0>
    CString(P psz) : CString() {
        Assign(ViewOf(psz));
    }
    /// A zero-terminated 16-bit text turned into code page 1252. Throws a `CInvalidArgException*` for a
    /// character that the page does not have.
    template <class P, IfWide<P> = 0>
    CString(P pwsz) : CString() {
        AssignWide(pwsz);
    }
    /// The first @p nLength bytes of @p pch, NUL bytes included. A negative length counts as 0.
    CString(LPCTSTR pch, INT nLength);
    /// @p nRepeat times the character @p ch.
    template <class C, IfCharacter<C> = 0>
    explicit CString(C ch, INT nRepeat = 1) : CString() {
        Fill(ch, nRepeat);
    }
    explicit CString(std::string_view text) : CString() { Assign(text); }
    CString(std::nullptr_t) = delete;
    ~CString() {
        if (m_nAlloc != 0) Free();
    }

    /// Every assignment but that of a temporary keeps the buffer if the text fits.
    CString& operator=(const CString& r) { return Assign(r.View()); }
    CString& operator=(CString&& r) noexcept {
        std::swap(m_pText, r.m_pText);
        std::swap(m_nLength, r.m_nLength);
        std::swap(m_nAlloc, r.m_nAlloc);
        return *this;
    }
    template <class P, IfText<P> = 0>
    CString& operator=(P psz) {
        return Assign(ViewOf(psz));
    }
    /// As the constructor from a 16-bit text; unchanged when that throws.
    template <class P, IfWide<P> = 0>
    CString& operator=(P pwsz) {
        AssignWide(pwsz);
        return *this;
    }
    template <class C, IfCharacter<C> = 0>
    CString& operator=(C ch) {
        return Assign({&ch, 1});
    }
    /// Takes these bytes, NUL bytes included.
    CString& Assign(std::string_view text);

    INT GetLength() const noexcept { return m_nLength; }
    BOOL IsEmpty() const noexcept { return m_nLength == 0; }
    /// Characters that the buffer holds without growing, the terminator not counted.
    INT GetAllocLength() const noexcept { return m_nAlloc; }
    /// Makes the text empty and gives the buffer back.
    void Empty() noexcept { *this = CString(); }
    /// The character at @p nIndex, 0 to the length (there the terminator stands). Unchecked.
    TCHAR GetAt(INT nIndex) const noexcept { return m_pText[nIndex]; }
    TCHAR operator[](INT nIndex) const noexcept { return m_pText[nIndex]; }
    /// Replaces the character at @p nIndex, 0 to the length less 1. Unchecked.
    void SetAt(INT nIndex, TCHAR ch) noexcept { m_pText[nIndex] = ch; }

    LPCTSTR GetString() const noexcept { return m_pText; }
    operator LPCTSTR() const noexcept { return m_pText; }
    /// The text with its length; NUL bytes inside count.
    std::string_view View() const noexcept { return {m_pText, static_cast<std::size_t>(m_nLength)}; }
    operator std::string_view() const noexcept { return View(); }

    /// A buffer of at least @p nMinLength characters (a negative number counts as 0) and a terminator, to be
    /// written by the caller until ReleaseBuffer(). Makes the allocated length exactly @p nMinLength when it
    /// was smaller; the text is kept. In a buffer of allocated length 0 nothing but a terminator may be
    /// written.
    LPTSTR GetBuffer(INT nMinLength);
    /// Ends the writing: the length is @p nNewLength, at most the allocated length, or up to the first NUL
    /// when it is negative. Never shrinks the buffer.
    void ReleaseBuffer(INT nNewLength = -1) noexcept;

    CString& operator+=(const CString& r) { return Append(r.View()); }
    CString& operator+=(LPCTSTR psz) { return Append(ViewOf(psz)); }
    template <class C, IfCharacter<C> = 0>
    CString& operator+=(C ch) {
        return Append({&ch, 1});
    }
    /// Appends these bytes, NUL bytes included. The buffer at least doubles when it has to grow.
    CString& Append(std::string_view text);

    /// Order of the unsigned bytes: -1, 0 or 1. NUL bytes inside this text count.
    INT Compare(LPCTSTR psz) const noexcept;
    /// The position of the first @p ch or @p pszSub from @p nStart (not below 0) on, or -1. The empty text is
    /// found at once, up to the end of this text.
    INT Find(TCHAR ch, INT nStart = 0) const noexcept;
    INT Find(LPCTSTR pszSub, INT nStart = 0) const noexcept;
    /// @p nCount characters from @p nFirst on, as far as there are any; a negative number counts as 0.
    CString Mid(INT nFirst, INT nCount) const;
    CString Left(INT nCount) const { return Mid(0, nCount); }
    CString Right(INT nCount) const;

    /// The whole text as a new 16-bit text, to be freed with SysFreeString().
    BSTR AllocSysString() const;

    friend bool operator==(const CString& a, const CString& b) noexcept { return a.View() == b.View(); }
    friend bool operator==(const CString& a, LPCTSTR b) noexcept { return a.Compare(b) == 0; }
    friend bool operator==(LPCTSTR a, const CString& b) noexcept { return b.Compare(a) == 0; }
    friend bool operator!=(const CString& a, const CString& b) noexcept { return !(a == b); }
    friend bool operator!=(const CString& a, LPCTSTR b) noexcept { return !(a == b); }
    friend bool operator!=(LPCTSTR a, const CString& b) noexcept { return !(a == b); }
    friend bool operator<(const CString& a, const CString& b) noexcept { return a.View() < b.View(); }
    friend bool operator<(const CString& a, LPCTSTR b) noexcept { return a.Compare(b) < 0; }
    friend bool operator<(LPCTSTR a, const CString& b) noexcept { return b.Compare(a) > 0; }
    friend bool operator>(const CString& a, const CString& b) noexcept { return b < a; }
    friend bool operator>(const CString& a, LPCTSTR b) noexcept { return b < a; }
    friend bool operator>(LPCTSTR a, const CString& b) noexcept { return b < a; }
    friend bool operator<=(const CString& a, const CString& b) noexcept { return !(b < a); }
    friend bool operator<=(const CString& a, LPCTSTR b) noexcept { return !(b < a); }
    friend bool operator<=(LPCTSTR a, const CString& b) noexcept { return !(b < a); }
    friend bool operator>=(const CString& a, const CString& b) noexcept { return !(a < b); }
    friend bool operator>=(const CString& a, LPCTSTR b) noexcept { return !(a < b); }
    friend bool operator>=(LPCTSTR a, const CString& b) noexcept { return !(a < b); }

    friend CString operator+(CString a, const CString& b) { return static_cast<CString&&>(a += b); }
    friend CString operator+(CString a, LPCTSTR b) { return static_cast<CString&&>(a += b); }
    template <class C, IfCharacter<C> = 0>
    friend CString operator+(CString a, C b) {
        return static_cast<CString&&>(a += b);
    }
    friend NKDT_API CString operator+(LPCTSTR a, const CString& b);
    template <class C, IfCharacter<C> = 0>
    friend CString operator+(C a, const CString& b) {
        const TCHAR szFirst[] = {a, '\0'};
        return static_cast<LPCTSTR>(szFirst) + b;
    }
    // A number would move the pointer.
    template <class N>
    friend IfNumber<N> operator+(const CString&, N) = delete;
    template <class N>
    friend IfNumber<N> operator+(N, const CString&) = delete;

  private:
    static std::string_view ViewOf(LPCTSTR psz) noexcept {
        return psz != nullptr ? std::string_view(psz, std::strlen(psz)) : std::string_view();
    }
    void Fill(TCHAR ch, INT nCount);
    void AssignWide(const OLECHAR* pwsz);
    void Grow(std::size_t nAlloc);
    static CString WithRoom(std::size_t nAlloc);
    void SetLength(std::size_t nLength) noexcept;
    void Free() noexcept;

    static TCHAR s_szEmpty[1];  // the shared empty text

    LPTSTR m_pText;  // owned when m_nAlloc > 0, else the shared empty text
    INT m_nLength;
    INT m_nAlloc;

#if defined(__cpp_impl_three_way_comparison)
    // Without these a `<=>`, written or made for a pair of texts, would compare the pointers.
    friend std::strong_ordering operator<=>(const CString& a, const CString& b) noexcept {
        return a.View().compare(b.View()) <=> 0;
    }
    friend std::strong_ordering operator<=>(const CString& a, LPCTSTR b) noexcept {
        return a.Compare(b) <=> 0;
    }
#endif
};
