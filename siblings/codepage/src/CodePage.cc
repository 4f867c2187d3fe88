#include "nkcp/CodePage.h"

#include <atomic>

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
    for (; *pszText != '\0'; ++pszText)
        *pszText = static_cast<TCHAR>(table[static_cast<unsigned char>(*pszText)]);
}

}  // namespace nkcp
