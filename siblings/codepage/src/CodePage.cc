#include "nkcp/CodePage.h"

#include <atomic>
#include <cstring>

#include "Tables.h"

namespace {

constinit std::atomic<UINT> ansiCodePage{1252};
constinit std::atomic<UINT> oemCodePage{850};

BOOL convertBetween(LPTSTR text, UINT from, UINT to) noexcept {
    const nkcp::Table* const table = nkcp::bestFitTable(from, to);
    if (text == nullptr || table == nullptr) return FALSE;
    nkcp::convertInPlace(text, *table);
    return TRUE;
}

}  // namespace

UINT GetACP() noexcept {
    return ansiCodePage.load(std::memory_order_relaxed);
}
UINT GetOEMCP() noexcept {
    return oemCodePage.load(std::memory_order_relaxed);
}
BOOL NkEusy_CharToOem(LPTSTR pszText) noexcept {
    return convertBetween(pszText, GetACP(), GetOEMCP());
}
BOOL NkEusy_OemToChar(LPTSTR pszText) noexcept {
    return convertBetween(pszText, GetOEMCP(), GetACP());
}

namespace nkcp {

void setAnsiCodePage(UINT page) noexcept {
    ansiCodePage.store(page, std::memory_order_relaxed);
}
void setOemCodePage(UINT page) noexcept {
    oemCodePage.store(page, std::memory_order_relaxed);
}

const Table* bestFitTable(UINT from, UINT to) noexcept {
    if (from == 1252 && to == 437) return &table1252To437;
    if (from == 1252 && to == 850) return &table1252To850;
    if (from == 437 && to == 1252) return &table437To1252;
    if (from == 850 && to == 1252) return &table850To1252;
    return nullptr;
}

void convertInPlace(LPTSTR pszText, const Table& table) noexcept {
    const auto convert = [&table](TCHAR ch) {
        return static_cast<TCHAR>(table[static_cast<unsigned char>(ch)]);
    };
    // Four at a time, counted first: the bytes do not wait for each other then.
    std::size_t length = std::strlen(pszText);
    for (; length >= 4; length -= 4, pszText += 4) {
        const TCHAR converted[] = {convert(pszText[0]), convert(pszText[1]), convert(pszText[2]),
                                   convert(pszText[3])};
        std::memcpy(pszText, converted, sizeof converted);
    }
    for (; length > 0; --length, ++pszText)
        *pszText = convert(*pszText);
}

}  // namespace nkcp
