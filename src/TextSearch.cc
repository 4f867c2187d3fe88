#include "TextSearch.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace nkdt {

namespace {

// What may be compared in vain before the linear search takes over: so much, and so much for each byte
// passed.
constexpr std::size_t patience = 1024;
constexpr std::size_t patiencePerByte = 8;

constexpr std::size_t blockSize = 16;
using Bytes = unsigned char __attribute__((vector_size(blockSize)));
/// A bit for each byte of one block or of two, the lowest for the first.
using Mask = std::uint32_t;

Bytes load(const char* text) noexcept {
    Bytes bytes;
    std::memcpy(&bytes, text, blockSize);
    return bytes;
}

Bytes filledWith(char ch) noexcept {
    return Bytes{} + static_cast<unsigned char>(ch);
}

/// Where both blocks hold the byte that they are compared with.
Mask bothEqual(Bytes a, Bytes first, Bytes b, Bytes last) noexcept {
#if defined(__SSE2__)
    const auto equal = (a == first) & (b == last);
    return static_cast<Mask>(_mm_movemask_epi8(reinterpret_cast<__m128i>(equal)));
#else
    const auto halves = std::bit_cast<std::array<std::uint64_t, 2>>((a == first) & (b == last));
    const auto gather = [](std::uint64_t half) {
        if constexpr (std::endian::native == std::endian::big) half = __builtin_bswap64(half);
        return static_cast<Mask>(((half & 0x0101010101010101) * 0x0102040810204080) >> 56U);
    };
    return gather(halves[0]) | gather(halves[1]) << 8U;
#endif
}

}  // namespace

// Each scan calls onHit with a position; it returns the position from which to go on, or notFound to end.

template <class OnHit>
void TextSearch::scan(std::string_view text, std::size_t from, OnHit&& onHit) const noexcept {
    const std::size_t length = m_part.size();
    if (length > text.size() || from > text.size() - length) return;
    if (length == 1) return scanByte(text, from, onHit);
    const char* const base = text.data();
    const std::size_t end = text.size() - length + 1;  // of the positions at which the part can begin
    const char first = m_part.front();
    const char last = m_part.back();
    const auto middleIsEqual = [this, base, length](std::size_t position) {
        return length == 2 || std::memcmp(base + position + 1, m_part.data() + 1, length - 2) == 0;
    };

    if (end < blockSize) {
        while (from < end) {
            const bool hit = base[from] == first && base[from + length - 1] == last && middleIsEqual(from);
            from = hit ? onHit(from) : from + 1;
        }
        return;
    }
    const Bytes firsts = filledWith(first);
    const Bytes lasts = filledWith(last);
    const auto candidates = [&](std::size_t block) {
        return bothEqual(load(base + block), firsts, load(base + block + length - 1), lasts);
    };
    const std::size_t start = from;
    std::size_t wasted = 0;  // bytes that may have been compared in vain
    // Looks at the candidates in a block, those before `from` left out; false to end the search there.
    const auto examine = [&](std::size_t block, Mask mask) {
        for (; mask != 0; mask &= mask - 1) {
            const std::size_t position = block + static_cast<std::size_t>(std::countr_zero(mask));
            if (position < from) continue;
            if (middleIsEqual(position)) {
                from = onHit(position);
                if (from >= end) return false;
                continue;
            }
            wasted += length;
            if (wasted > patience + patiencePerByte * (position - start)) {
                scanLinear(text, position + 1, onHit);
                return false;
            }
        }
        return true;
    };

    std::size_t block = from;
    for (; block + 2 * blockSize <= end; block += 2 * blockSize) {
        const Mask mask = candidates(block) | candidates(block + blockSize) << blockSize;
        if (mask != 0 && !examine(block, mask)) return;
    }
    // The last block ends with the last position, so it may overlap the one before.
    for (; block < end; block += blockSize) {
        block = std::min(block, end - blockSize);
        if (!examine(block, candidates(block))) return;
        from = std::max(from, block + blockSize);
    }
}

template <class OnHit>
void TextSearch::scanByte(std::string_view text, std::size_t from, OnHit&& onHit) const noexcept {
    while (from < text.size()) {
        const void* const hit = std::memchr(text.data() + from, m_part.front(), text.size() - from);
        if (hit == nullptr) return;
        from = onHit(static_cast<std::size_t>(static_cast<const char*>(hit) - text.data()));
    }
}

template <class OnHit>
void TextSearch::scanLinear(std::string_view text, std::size_t from, OnHit&& onHit) const noexcept {
    while (from < text.size()) {
        const void* const hit =
            ::memmem(text.data() + from, text.size() - from, m_part.data(), m_part.size());
        if (hit == nullptr) return;
        from = onHit(static_cast<std::size_t>(static_cast<const char*>(hit) - text.data()));
    }
}

std::size_t TextSearch::find(std::string_view text, std::size_t from) const noexcept {
    // Many searches end in their first block.
    const std::size_t length = m_part.size();
    if (length > 1 && text.size() >= length + blockSize && from <= text.size() - length - blockSize) {
        const char* const block = text.data() + from;
        Mask mask = bothEqual(load(block), filledWith(m_part.front()), load(block + length - 1),
                              filledWith(m_part.back()));
        for (; mask != 0; mask &= mask - 1) {
            const auto offset = static_cast<std::size_t>(std::countr_zero(mask));
            if (length == 2 || std::memcmp(block + offset, m_part.data(), length) == 0) return from + offset;
        }
        from += blockSize;
    }
    std::size_t found = notFound;
    scan(text, from, [&found](std::size_t position) {
        found = position;
        return notFound;
    });
    return found;
}

std::size_t TextSearch::collect(std::string_view text, std::size_t most, INT* positions,
                                std::size_t room) const noexcept {
    std::size_t count = 0;
    scan(text, 0, [&](std::size_t position) {
        if (count < room) positions[count] = static_cast<INT>(position);
        return ++count < most ? position + m_part.size() : notFound;
    });
    return count;
}

}  // namespace nkdt
