#include "Imp/dtstrini.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>

#include "Raise.h"
#include "TextMemory.h"
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
    wrapped(originFromText, [&] { Fill(pszText, copied, length, room); });
}

NkDtString_Imp::NkDtString_Imp(TCHAR ch) {
    const TCHAR text[2] = {ch, '\0'};
    StrAlloc(text, 1);
}

NkDtString_Imp::NkDtString_Imp(bool fNegative, ULONGLONG ulMagnitude, INT nAlloc) {
    Fill("", 0, 0, nAlloc);
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
}

void NkDtString_Imp::StrAlloc(LPCTSTR pszText, INT nAlloc) {
    StrAlloc(pszText, lengthUpTo(pszText, nAlloc), nAlloc);
}

void NkDtString_Imp::StrAlloc(LPCTSTR pszText, INT nLen, INT nAlloc) {
    Fill(pszText, lengthUpTo(pszText, nLen), nLen, nAlloc);
}

void NkDtString_Imp::Fill(LPCTSTR pszText, INT nCopied, INT nLen, INT nAlloc) {
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
}

void NkDtString_Imp::Write(INT nPos, LPCTSTR pch, INT nCount) noexcept {
    m_nLength = nPos + nCount;
    if (m_nAlloc == 0) return;  // the shared empty text stays as it is
    std::memmove(m_pText + nPos, pch, static_cast<std::size_t>(nCount));
    m_pText[m_nLength] = '\0';
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
