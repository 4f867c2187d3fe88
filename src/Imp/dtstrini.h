#pragma once

/// @file
/// The value record of a text: its buffer and the rules of its growth.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string_view>

#include "nkfw/Types.h"

namespace nkdt {

class TextSearch;

/// Characters on their way into a text.
struct TextPiece {
    std::string_view characters;
    bool mayHoldNul = false;

    INT Length() const noexcept { return static_cast<INT>(characters.size()); }
};

/// As std::memmove(), without a call for 8 to 16 bytes.
inline void moveBytes(char* to, const char* from, std::size_t count) noexcept {
    if (count < 8 || count > 16) {
        std::memmove(to, from, count);
        return;
    }
    std::uint64_t first;
    std::uint64_t last;
    std::memcpy(&first, from, 8);
    std::memcpy(&last, from + count - 8, 8);
    std::memcpy(to, &first, 8);
    std::memcpy(to + count - 8, &last, 8);
}

}  // namespace nkdt

/// A zero-terminated text with a length, an allocated length and the position of the last search's hit. The
/// buffer is owned when the allocated length is not 0; else it is the shared empty text, which is never
/// written to and never freed.
///
/// When memory is exhausted, the operations give up the old buffer, leave the shared empty text and call
/// NkEhNorvaneNewHandler().
class NkDtString_Imp {
  public:
    /// The longest text.
    static constexpr INT maxLength = 2147483646;
    static constexpr INT notFound = -1;

    NkDtString_Imp() noexcept = default;
    /// The first @p nLen characters with room for @p nAlloc, as NkDtString's constructor describes it.
    NkDtString_Imp(LPCTSTR pszText, INT nLen, INT nAlloc);
    /// A text without NUL, with room for itself.
    explicit NkDtString_Imp(std::string_view text);
    /// The same with room for @p nAlloc, which is no less.
    NkDtString_Imp(std::string_view text, INT nAlloc);
    /// One character with room for one; the empty text for NUL.
    explicit NkDtString_Imp(TCHAR ch);
    /// The digits of a number, in a buffer of @p nAlloc characters.
    NkDtString_Imp(bool fNegative, ULONGLONG ulMagnitude, INT nAlloc);
    /// A copy whose allocated length is the length.
    NkDtString_Imp(const NkDtString_Imp& r);
    NkDtString_Imp& operator=(const NkDtString_Imp&) = delete;
    ~NkDtString_Imp() {
        if (m_nAlloc != 0) FreeBuffer();
    }

    LPCTSTR Text() const noexcept { return m_pText; }
    INT Length() const noexcept { return m_nLength; }
    INT AllocLength() const noexcept { return m_nAlloc; }
    /// The text with its length, NUL characters inside it included.
    std::string_view WholeText() const noexcept { return {m_pText, static_cast<std::size_t>(m_nLength)}; }
    /// The text up to its first NUL, as every conversion that leaves the class sees it.
    std::string_view VisibleText() const noexcept {
        return m_fMayHoldNul ? std::string_view(m_pText) : WholeText();
    }
    /// The text with its length, to be put into a text.
    nkdt::TextPiece Whole() const noexcept { return {WholeText(), m_fMayHoldNul}; }
    /// @p nCount characters from @p nPos on.
    nkdt::TextPiece Part(INT nPos, INT nCount) const noexcept {
        return {{m_pText + nPos, static_cast<std::size_t>(nCount)}, m_fMayHoldNul};
    }
    /// TRUE if the visible texts are equal.
    bool Equals(const NkDtString_Imp& r) const noexcept { return VisibleText() == r.VisibleText(); }
    /// TRUE if @p psz points into this text, its end included.
    bool Holds(LPCTSTR psz) const noexcept {
        return std::less_equal<>()(LPCTSTR{m_pText}, psz) &&
               std::less_equal<>()(psz, LPCTSTR{m_pText + m_nLength});
    }

    /// The first min(length of the text, @p nAlloc) characters with room for @p nAlloc.
    void StrAlloc(LPCTSTR pszText, INT nAlloc);
    /// At most @p nLen characters, up to the text's end, the rest NUL; the length is @p nLen. The text may
    /// lie in this buffer.
    void StrAlloc(LPCTSTR pszText, INT nLen, INT nAlloc);
    /// Makes the room exactly @p nAlloc characters; the text and its length are kept as far as they fit.
    void StrRealloc(INT nAlloc);
    /// StrRealloc() if there is less room.
    void Reserve(INT nAlloc) {
        if (m_nAlloc < nAlloc) StrRealloc(nAlloc);
    }
    /// The same, but the text stays as it is when memory is exhausted.
    void ReserveBesides(INT nAlloc);
    /// The shared empty text, no hit.
    void StrReset() noexcept;
    /// Writes the piece, which may lie in this buffer, at @p nPos, ends the text behind it and makes that the
    /// length. There is room.
    void Write(INT nPos, const nkdt::TextPiece& piece) noexcept {
        const INT nCount = piece.Length();
        m_nLength = nPos + nCount;
        m_fMayHoldNul = piece.mayHoldNul || (m_fMayHoldNul && nPos != 0);
        if (m_nAlloc == 0) return;  // the shared empty text stays as it is
        nkdt::moveBytes(m_pText + nPos, piece.characters.data(), piece.characters.size());
        m_pText[m_nLength] = '\0';
    }
    /// Writes the piece, which may lie in this buffer, over what stands at @p nPos; the length stays. There
    /// is room.
    void Overwrite(INT nPos, const nkdt::TextPiece& piece) noexcept {
        nkdt::moveBytes(m_pText + nPos, piece.characters.data(), piece.characters.size());
        m_fMayHoldNul = m_fMayHoldNul || piece.mayHoldNul;
    }
    /// The same with @p nCount times @p ch.
    void Fill(INT nPos, TCHAR ch, INT nCount) noexcept;
    /// Moves what stands from @p nPos on @p nCount characters to the right and makes the text longer by as
    /// many. There is room; the gap keeps what stood there.
    void OpenGap(INT nPos, INT nCount) noexcept;
    /// Removes @p nCount characters at @p nPos.
    void CloseGap(INT nPos, INT nCount) noexcept;
    /// Removes every occurrence of the part, and those that a removal brings about. FALSE if there is none.
    bool RemoveAll(const nkdt::TextSearch& search) noexcept;
    /// Replaces @p nHits stretches of @p nOld characters by @p strNew, which lies elsewhere; the room grows
    /// only if it must. The result is not longer than maxLength.
    /// @param pnHits positions of the stretches from the left on, at most @p nHitsKnown of them; @p search
    /// finds the others
    void Replace(const INT* pnHits, std::size_t nHitsKnown, std::size_t nHits, std::size_t nOld,
                 const nkdt::TextPiece& strNew, const nkdt::TextSearch& search);
    /// Makes @p nLength the length of what stands in the buffer, and ends the text there.
    void SetLength(INT nLength) noexcept {
        m_nLength = nLength;
        if (m_nAlloc > 0) m_pText[nLength] = '\0';
    }
    void SetAt(INT nPos, TCHAR ch) noexcept { m_pText[nPos] = ch; }
    /// Where the last search found its part, or notFound.
    INT LastFound() const noexcept { return m_nLastFound; }
    void SetLastFound(INT nPos) noexcept { m_nLastFound = nPos; }
    /// The buffer, for a conversion that keeps the length and makes no NUL.
    LPTSTR Buffer() noexcept { return m_pText; }

  private:
    /// @p nCopied characters, none of them NUL, then NUL up to @p nLen, with room for @p nAlloc.
    void Build(LPCTSTR pszText, INT nCopied, INT nLen, INT nAlloc);
    void FreeBuffer() noexcept;
    [[noreturn]] void Exhausted(std::size_t nBytes);

    static TCHAR m_szEmpty[1];  // constant in effect: shared, never written

    LPTSTR m_pText = m_szEmpty;
    INT m_nLength = 0;
    INT m_nAlloc = 0;
    INT m_nLastFound = notFound;
    bool m_fMayHoldNul = false;
};
