#include "nkfw/BStr.h"

#include <cstring>
#include <limits>
#include <string>

#include "nkfw/Memory.h"

namespace {

constexpr std::size_t nPrefix = sizeof(UINT);
// The length in bytes must fit the prefix.
constexpr UINT nMaxCharacters = (std::numeric_limits<UINT>::max() - sizeof(OLECHAR)) / sizeof(OLECHAR);

void* blockOf(BSTR bstr) noexcept {
    return reinterpret_cast<BYTE*>(bstr) - nPrefix;
}

}  // namespace

BSTR SysAllocString(const OLECHAR* psz) noexcept {
    if (psz == nullptr) return nullptr;
    const std::size_t nLength = std::char_traits<OLECHAR>::length(psz);
    if (nLength > nMaxCharacters) return nullptr;
    return SysAllocStringLen(psz, static_cast<UINT>(nLength));
}

BSTR SysAllocStringLen(const OLECHAR* pch, UINT cch) noexcept {
    if (cch > nMaxCharacters) return nullptr;
    const std::size_t nBytes = std::size_t{cch} * sizeof(OLECHAR);
    void* const pBlock = nkfw::allocate(nPrefix + nBytes + sizeof(OLECHAR));
    if (pBlock == nullptr) return nullptr;

    const auto nStored = static_cast<UINT>(nBytes);
    std::memcpy(pBlock, &nStored, nPrefix);
    const auto bstr = reinterpret_cast<BSTR>(static_cast<BYTE*>(pBlock) + nPrefix);
    if (pch != nullptr) std::memcpy(bstr, pch, nBytes);
    bstr[cch] = u'\0';
    return bstr;
}

void SysFreeString(BSTR bstr) noexcept {
    if (bstr != nullptr) nkfw::release(blockOf(bstr));
}

UINT SysStringLen(const OLECHAR* bstr) noexcept {
    return SysStringByteLen(bstr) / static_cast<UINT>(sizeof(OLECHAR));
}

UINT SysStringByteLen(const OLECHAR* bstr) noexcept {
    if (bstr == nullptr) return 0;
    UINT nBytes;
    std::memcpy(&nBytes, reinterpret_cast<const BYTE*>(bstr) - nPrefix, nPrefix);
    return nBytes;
}
