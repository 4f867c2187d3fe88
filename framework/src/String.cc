#include "nkfw/String.h"

#include <algorithm>
#include <functional>
#include <limits>

#include "nkfw/BStr.h"
#include "nkfw/Cp1252.h"
#include "nkfw/Exception.h"
#include "nkfw/Memory.h"

namespace {

constexpr std::size_t nMaxLength = static_cast<std::size_t>(std::numeric_limits<INT>::max());

std::size_t notNegative(INT n) noexcept {
    return n > 0 ? static_cast<std::size_t>(n) : 0;
}

INT positionOrMiss(std::size_t nPosition) noexcept {
    return nPosition == std::string_view::npos ? -1 : static_cast<INT>(nPosition);
}

}  // namespace

// Writable, because a caller of GetBuffer(0) may put a terminator there.
TCHAR CString::s_szEmpty[1] = {'\0'};

// ---- The buffer

// A buffer of nAlloc characters; the text is kept.
void CString::Grow(std::size_t nAlloc) {
    if (nAlloc > nMaxLength) CMemoryException::Throw();
    void* const pBlock = m_nAlloc != 0 ? nkfw::reallocate(m_pText, nAlloc + 1) : nkfw::allocate(nAlloc + 1);
    if (pBlock == nullptr) CMemoryException::Throw();
    if (m_nAlloc == 0) *static_cast<TCHAR*>(pBlock) = '\0';
    m_pText = static_cast<LPTSTR>(pBlock);
    m_nAlloc = static_cast<INT>(nAlloc);
}

// An empty text in a buffer of nAlloc characters.
CString CString::WithRoom(std::size_t nAlloc) {
    CString str;
    if (nAlloc != 0) str.Grow(nAlloc);
    return str;
}

void CString::SetLength(std::size_t nLength) noexcept {
    m_nLength = static_cast<INT>(nLength);
    if (m_nAlloc != 0) m_pText[nLength] = '\0';
}

void CString::Free() noexcept {
    nkfw::release(m_pText);
}

LPTSTR CString::GetBuffer(INT nMinLength) {
    if (nMinLength > m_nAlloc) Grow(static_cast<std::size_t>(nMinLength));
    return m_pText;
}

void CString::ReleaseBuffer(INT nNewLength) noexcept {
    const std::size_t nAlloc = notNegative(m_nAlloc);
    SetLength(nNewLength < 0 ? ::strnlen(m_pText, nAlloc) : std::min(notNegative(nNewLength), nAlloc));
}

// ---- Taking texts

CString::CString(LPCTSTR pch, INT nLength) : CString() {
    if (pch != nullptr) Assign({pch, notNegative(nLength)});
}

// Turns the empty text into one of equal characters.
void CString::Fill(TCHAR ch, INT nCount) {
    const std::size_t nLength = notNegative(nCount);
    if (nLength == 0) return;
    Grow(nLength);
    std::memset(m_pText, ch, nLength);
    SetLength(nLength);
}

CString& CString::Assign(std::string_view text) {
    if (text.size() > notNegative(m_nAlloc)) {
        CString strFresh = WithRoom(text.size());
        strFresh.Assign(text);
        return *this = std::move(strFresh);
    }
    if (!text.empty()) std::memmove(m_pText, text.data(), text.size());
    SetLength(text.size());
    return *this;
}

void CString::AssignWide(const OLECHAR* pwsz) {
    const std::u16string_view text = pwsz != nullptr ? std::u16string_view(pwsz) : std::u16string_view();
    for (const OLECHAR character : text) {
        if (nkfw::cp1252FromUnicode(character) < 0) throw new CInvalidArgException;
    }
    if (text.size() > notNegative(m_nAlloc)) *this = WithRoom(text.size());
    std::transform(text.begin(), text.end(), m_pText,
                   [](OLECHAR character) { return static_cast<TCHAR>(nkfw::cp1252FromUnicode(character)); });
    SetLength(text.size());
}

CString& CString::Append(std::string_view text) {
    if (text.empty()) return *this;
    const std::size_t nLength = notNegative(m_nLength);
    if (text.size() > nMaxLength - nLength) CMemoryException::Throw();

    const std::size_t nNewLength = nLength + text.size();
    if (nNewLength > notNegative(m_nAlloc)) {
        const std::less_equal<LPCTSTR> upTo;
        const bool fOwnText = upTo(m_pText, text.data()) && upTo(text.data(), m_pText + nLength);
        const std::size_t nOffset = fOwnText ? static_cast<std::size_t>(text.data() - m_pText) : 0;
        Grow(std::max(nNewLength, std::min(2 * notNegative(m_nAlloc), nMaxLength)));
        if (fOwnText) text = {m_pText + nOffset, text.size()};
    }
    std::memmove(m_pText + nLength, text.data(), text.size());
    SetLength(nNewLength);
    return *this;
}

CString operator+(LPCTSTR a, const CString& b) {
    const std::string_view first = CString::ViewOf(a);
    CString sum = CString::WithRoom(first.size() + b.View().size());
    return static_cast<CString&&>(sum.Append(first).Append(b.View()));
}

// ---- Asking

INT CString::Compare(LPCTSTR psz) const noexcept {
    const int nOrder = View().compare(ViewOf(psz));
    return (nOrder > 0) - (nOrder < 0);
}

INT CString::Find(TCHAR ch, INT nStart) const noexcept {
    return positionOrMiss(View().find(ch, notNegative(nStart)));
}

INT CString::Find(LPCTSTR pszSub, INT nStart) const noexcept {
    return positionOrMiss(View().find(ViewOf(pszSub), notNegative(nStart)));
}

CString CString::Mid(INT nFirst, INT nCount) const {
    const std::string_view text = View();
    return CString(text.substr(std::min(notNegative(nFirst), text.size()), notNegative(nCount)));
}

CString CString::Right(INT nCount) const {
    const std::string_view text = View();
    return CString(text.substr(text.size() - std::min(notNegative(nCount), text.size())));
}

BSTR CString::AllocSysString() const {
    const BSTR bstr = SysAllocStringLen(nullptr, static_cast<UINT>(m_nLength));
    if (bstr == nullptr) CMemoryException::Throw();
    const std::string_view text = View();
    std::transform(text.begin(), text.end(), bstr,
                   [](TCHAR ch) { return nkfw::unicodeFromCp1252(static_cast<unsigned char>(ch)); });
    return bstr;
}
