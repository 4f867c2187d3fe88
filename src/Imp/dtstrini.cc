#include "Imp/dtstrini.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>

#include "Raise.h"
#include "TextMemory.h"
#include "TextSearch.h"
#include "nkdt/NkDtTypes.h"
#include "nkdt/NkDtUtil.h"
#include "nkeh/NkEhBasis.h"

using namespace nkdt;

namespace {

constexpr Origin originFromText = {".\\Imp\\dtstrini.cc", "NkDtString_Imp",
                                   "NkDtString_Imp( LPCTSTR,INT,INT)"};

constexpr INT tooLong = std::numeric_limits<INT>::max();

/// Bytes of a buffer with room for @p nAlloc characters.
std::size_t bufferSize(INT nAlloc) noexcept {
    return static_cast<std::size_t>(nAlloc) + 1;
}

/// The length of the text, but not more than @p nMost: what lies beyond is not looked at.
INT lengthUpTo(LPCTSTR pszText, INT nMost) noexcept {
    const void* const end = std::memchr(pszText, '\0', static_cast<std::size_t>(nMost));
    return end == nullptr ? nMost : static_cast<INT>(static_cast<LPCTSTR>(end) - pszText);
}

/// The length that is taken from the text; error 6 for one that the text does not allow.
INT checkedLength(LPCTSTR pszText, INT nLen) {
    requireText(pszText, originFromText);
    if (nLen == NkDtStrLenAuto) {
        const std::size_t length = std::strlen(pszText);
        if (length >= static_cast<std::size_t>(tooLong)) raise(originFromText, NkDtErrInitiallaenge);
        return static_cast<INT>(length);
    }
    // An empty text may have any length; a longer one must have the characters.
    if (nLen < 0 || nLen == tooLong || (*pszText != '\0' && lengthUpTo(pszText, nLen) < nLen)) {
        raise(originFromText, NkDtErrInitiallaenge);
    }
    return nLen;
}

}  // namespace

TCHAR NkDtString_Imp::m_szEmpty[1] = {'\0'};

NkDtString_Imp::NkDtString_Imp(LPCTSTR pszText, INT nLen, INT nAlloc) {
    const INT length = checkedLength(pszText, nLen);
    if (nAlloc == tooLong) raise(originFromText, NkDtErrInitiallaenge);
    const INT room = nAlloc < 1 || nAlloc < length ? length : nAlloc;
    const INT copied = *pszText == '\0' ? 0 : length;  // an empty text with a length is filled with NUL
    wrapped(originFromText, [&] { Build(pszText, copied, length, room); });
}

NkDtString_Imp::NkDtString_Imp(std::string_view text) : NkDtString_Imp(text, static_cast<INT>(text.size())) {}

NkDtString_Imp::NkDtString_Imp(std::string_view text, INT nAlloc) {
    const auto length = static_cast<INT>(text.size());
    Build(text.data(), length, length, nAlloc);
}

NkDtString_Imp::NkDtString_Imp(TCHAR ch) {
    const TCHAR text[2] = {ch, '\0'};
    StrAlloc(text, 1);
}

NkDtString_Imp::NkDtString_Imp(bool fNegative, ULONGLONG ulMagnitude, INT nAlloc) {
    Build("", 0, 0, nAlloc);
    LPTSTR out = m_pText;
    if (fNegative) *out++ = '-';
    out = std::to_chars(out, m_pText + m_nAlloc, ulMagnitude).ptr;
    *out = '\0';
    m_nLength = static_cast<INT>(out - m_pText);
}

NkDtString_Imp::NkDtString_Imp(const NkDtString_Imp& r) {
    if (r.m_nLength == 0) return;
    LPTSTR const buffer = textMemory::allocate(bufferSize(r.m_nLength));
    if (buffer == nullptr) Exhausted(bufferSize(r.m_nLength));
    std::memcpy(buffer, r.m_pText, bufferSize(r.m_nLength));
    m_pText = buffer;
    m_nLength = m_nAlloc = r.m_nLength;
    m_fMayHoldNul = r.m_fMayHoldNul;
}

void NkDtString_Imp::StrAlloc(LPCTSTR pszText, INT nAlloc) {
    StrAlloc(pszText, lengthUpTo(pszText, nAlloc), nAlloc);
}

void NkDtString_Imp::StrAlloc(LPCTSTR pszText, INT nLen, INT nAlloc) {
    Build(pszText, lengthUpTo(pszText, nLen), nLen, nAlloc);
}

void NkDtString_Imp::Build(LPCTSTR pszText, INT nCopied, INT nLen, INT nAlloc) {
    m_fMayHoldNul = nCopied < nLen;
    if (nAlloc == 0) {
        FreeBuffer();
        m_nLength = 0;
        return;
    }
    LPTSTR const buffer = textMemory::allocate(bufferSize(nAlloc));
    if (buffer == nullptr) Exhausted(bufferSize(nAlloc));
    std::memcpy(buffer, pszText, static_cast<std::size_t>(nCopied));
    if (nCopied < nLen) std::memset(buffer + nCopied, '\0', static_cast<std::size_t>(nLen - nCopied));
    buffer[nLen] = '\0';
    FreeBuffer();
    m_pText = buffer;
    m_nLength = nLen;
    m_nAlloc = nAlloc;
}

void NkDtString_Imp::StrRealloc(INT nAlloc) {
    if (nAlloc == m_nAlloc) return;
    if (nAlloc < m_nLength) SetLength(nAlloc);
    if (nAlloc == 0) return FreeBuffer();
    LPTSTR const buffer = m_nAlloc == 0
                              ? textMemory::allocate(bufferSize(nAlloc))
                              : textMemory::reallocate(m_pText, bufferSize(m_nAlloc), bufferSize(nAlloc));
    if (buffer == nullptr) Exhausted(bufferSize(nAlloc));
    if (m_nAlloc == 0) NkDtMemSetTCHAR(buffer, '\0', static_cast<UINT>(bufferSize(nAlloc)));
    m_pText = buffer;
    m_nAlloc = nAlloc;
}

void NkDtString_Imp::ReserveBesides(INT nAlloc) {
    if (m_nAlloc >= nAlloc) return;
    LPTSTR const buffer = textMemory::allocate(bufferSize(nAlloc));
    if (buffer == nullptr) NkEhNorvaneNewHandler(bufferSize(nAlloc));
    std::memcpy(buffer, m_pText, bufferSize(m_nLength));
    FreeBuffer();
    m_pText = buffer;
    m_nAlloc = nAlloc;
}

void NkDtString_Imp::StrReset() noexcept {
    FreeBuffer();
    m_nLength = 0;
    m_nLastFound = notFound;
    m_fMayHoldNul = false;
}

void NkDtString_Imp::Fill(INT nPos, TCHAR ch, INT nCount) noexcept {
    std::memset(m_pText + nPos, static_cast<unsigned char>(ch), static_cast<std::size_t>(nCount));
    m_fMayHoldNul = m_fMayHoldNul || ch == '\0';
}

void NkDtString_Imp::OpenGap(INT nPos, INT nCount) noexcept {
    std::memmove(m_pText + nPos + nCount, m_pText + nPos, static_cast<std::size_t>(m_nLength - nPos));
    SetLength(m_nLength + nCount);
}

void NkDtString_Imp::CloseGap(INT nPos, INT nCount) noexcept {
    const INT nRest = m_nLength - nPos - nCount;
    std::memmove(m_pText + nPos, m_pText + nPos + nCount, static_cast<std::size_t>(nRest));
    SetLength(nPos + nRest);
}

bool NkDtString_Imp::RemoveAll(const TextSearch& search) noexcept {
    // What is kept stands from the start of the buffer on, what is still to be searched at its end.
    const std::size_t part = search.partLength();
    const std::string_view visible = VisibleText();
    const char* const end = m_pText + m_nLength;
    char* kept = m_pText;
    char* rest = m_pText;
    const auto moveToKept = [&kept, &rest](std::size_t count) {
        if (kept != rest) std::memmove(kept, rest, count);
        kept += count;
        rest += count;
    };
    for (;;) {
        const std::size_t hit = search.find({rest, static_cast<std::size_t>(visible.end() - rest)});
        if (hit == TextSearch::notFound) break;
        moveToKept(hit);
        rest += part;
        // Only the bytes before the gap can form a new hit with those behind it: they are searched once more.
        const std::size_t again = std::min(part - 1, static_cast<std::size_t>(kept - m_pText));
        kept -= again;
        rest -= again;
        std::memmove(rest, kept, again);
    }
    if (kept == rest) return false;
    moveToKept(static_cast<std::size_t>(end - rest));
    SetLength(static_cast<INT>(kept - m_pText));
    return true;
}

void NkDtString_Imp::Replace(const INT* pnHits, std::size_t nHitsKnown, std::size_t nHits, std::size_t nOld,
                             const TextPiece& strNew, const TextSearch& search) {
    const std::string_view inserted = strNew.characters;
    const auto oldLength = static_cast<std::size_t>(m_nLength);
    const std::size_t newLength = oldLength - nHits * nOld + nHits * inserted.size();
    const auto nNewLength = static_cast<INT>(newLength);

    // The pieces are copied from left to right, so a source in the same buffer must lie ahead of its target.
    const bool fits = nNewLength <= m_nAlloc;
    LPTSTR const target = fits ? m_pText : textMemory::allocate(bufferSize(nNewLength));
    if (target == nullptr) Exhausted(bufferSize(nNewLength));
    LPTSTR source = m_pText;
    if (fits && newLength > oldLength) {
        source += newLength - oldLength;
        std::memmove(source, m_pText, oldLength);
    }
    const std::string_view visible(source, m_fMayHoldNul ? ::strnlen(source, oldLength) : oldLength);
    std::size_t done = 0;
    LPTSTR out = target;
    const auto copyUpTo = [&](std::size_t position) {
        if (out != source + done) std::memmove(out, source + done, position - done);
        out += position - done;
    };
    for (std::size_t i = 0; i < nHits; ++i) {
        const std::size_t hit =
            i < nHitsKnown ? static_cast<std::size_t>(pnHits[i]) : search.find(visible, done);
        copyUpTo(hit);
        std::memcpy(out, inserted.data(), inserted.size());
        out += inserted.size();
        done = hit + nOld;
    }
    copyUpTo(oldLength);
    *out = '\0';
    if (!fits) {
        FreeBuffer();
        m_pText = target;
        m_nAlloc = nNewLength;
    }
    m_nLength = nNewLength;
    m_fMayHoldNul = m_fMayHoldNul || strNew.mayHoldNul;
}

void NkDtString_Imp::FreeBuffer() noexcept {
    if (m_nAlloc == 0) return;
    textMemory::release(m_pText, bufferSize(m_nAlloc));
    m_pText = m_szEmpty;
    m_nAlloc = 0;
}

void NkDtString_Imp::Exhausted(std::size_t nBytes) {
    FreeBuffer();
    m_nLength = 0;
    NkEhNorvaneNewHandler(nBytes);
}
