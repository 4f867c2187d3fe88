#include "SqlText.h"

#include <algorithm>
#include <cstdint>
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

namespace {

using Bytes = signed char __attribute__((vector_size(16)));
using Words = std::uint64_t __attribute__((vector_size(16)));

/// The sum of the counts in the bytes.
std::size_t sumOf(Bytes counts) noexcept {
    constexpr std::uint64_t evenBytes = 0x00FF00FF00FF00FF;
    const Words pairs =
        (reinterpret_cast<Words>(counts) & evenBytes) + (reinterpret_cast<Words>(counts) >> 8U & evenBytes);
    constexpr std::uint64_t ones = 0x0001000100010001;
    return static_cast<std::size_t>((pairs[0] * ones >> 48U) + (pairs[1] * ones >> 48U));
}

std::size_t apostrophesIn(std::string_view text) noexcept {
    constexpr std::size_t mostBlocks = 127;  // until a count would leave its byte
    std::size_t count = 0;
    while (text.size() >= sizeof(Bytes)) {
        Bytes counts{};
        const std::size_t blocks = std::min(text.size() / sizeof(Bytes), mostBlocks);
        for (std::size_t i = 0; i < blocks; ++i) {
            Bytes bytes;
            std::memcpy(&bytes, text.data() + i * sizeof bytes, sizeof bytes);
            counts -= bytes == '\'';
        }
        count += sumOf(counts);
        text.remove_prefix(blocks * sizeof(Bytes));
    }
    return count + static_cast<std::size_t>(std::count(text.begin(), text.end(), '\''));
}

}  // namespace

std::size_t literalLength(std::string_view text) noexcept {
    return text.size() + apostrophesIn(text) + 2;
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
