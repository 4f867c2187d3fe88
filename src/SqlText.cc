#include "SqlText.h"

#include <algorithm>
#include <cstring>

#include "nkcp/CodePage.h"

namespace nkdt {

std::optional<PageDirections> directionsOf(UINT uCodePage, PageOrder order) noexcept {
    constexpr PageDirections page850{NkDtCp850To1252, NkDtCp1252To850};
    constexpr PageDirections page437{NkDtCp437To1252, NkDtCp1252To437};
    constexpr PageDirections pageOem{NkDtCpOemToAnsi, NkDtCpAnsiToOem};
    if (uCodePage == 850) return page850;
    const bool isOem = uCodePage == GetOEMCP();
    if (isOem && order == PageOrder::oemBefore437) return pageOem;
    if (uCodePage == 437) return page437;
    return isOem ? std::optional(pageOem) : std::nullopt;
}

std::size_t literalLength(std::string_view text) noexcept {
    return text.size() + static_cast<std::size_t>(std::count(text.begin(), text.end(), '\'')) + 2;
}

LPTSTR writeLiteral(std::string_view text, LPTSTR out) noexcept {
    *out++ = '\'';
    while (!text.empty()) {
        const void* const apostrophe = std::memchr(text.data(), '\'', text.size());
        const std::size_t block =
            apostrophe == nullptr
                ? text.size()
                : static_cast<std::size_t>(static_cast<LPCTSTR>(apostrophe) - text.data()) + 1;
        std::memcpy(out, text.data(), block);
        out += block;
        if (apostrophe != nullptr) *out++ = '\'';
        text.remove_prefix(block);
    }
    *out++ = '\'';
    return out;
}

}  // namespace nkdt
