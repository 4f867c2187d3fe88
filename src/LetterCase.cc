#include "LetterCase.h"

#include <cstdint>
#include <cstring>

namespace nkdt {

namespace {

// Characters that are mapped at once.
using Eight = unsigned char __attribute__((vector_size(8)));
using Sixteen = unsigned char __attribute__((vector_size(16)));

template <class Block>
Block loadBlock(const char* text) noexcept {
    Block bytes;
    std::memcpy(&bytes, text, sizeof bytes);
    return bytes;
}

// 0xFF for each small letter, else 0.
template <class Block>
Block smallLetters(Block bytes) noexcept {
    return (Block)((bytes - 'a') < 26) | (Block)(bytes == 0xE4) | (Block)(bytes == 0xF6) |
           (Block)(bytes == 0xFC);
}

template <class Block>
Block capitals(Block bytes) noexcept {
    return smallLetters(bytes ^ smallLetterBit);
}

template <class Block>
bool isAnySet(Block bytes) noexcept {
    std::uint64_t words[sizeof(Block) / sizeof(std::uint64_t)];
    std::memcpy(words, &bytes, sizeof words);
    std::uint64_t all = 0;
    for (const std::uint64_t word : words)
        all |= word;
    return all != 0;
}

struct Upper {
    template <class Block>
    static Block toBeMapped(Block bytes) noexcept {
        return smallLetters(bytes);
    }
    template <class Block>
    static Block asItShouldBe(Block bytes) noexcept {
        return capitals(bytes);
    }
};

struct Lower {
    template <class Block>
    static Block toBeMapped(Block bytes) noexcept {
        return capitals(bytes);
    }
    template <class Block>
    static Block asItShouldBe(Block bytes) noexcept {
        return smallLetters(bytes);
    }
};

/// Maps a block in place and returns other than 0 for each character that was looked at.
template <class Case, class Block>
Block mapBlock(LPTSTR text) noexcept {
    constexpr unsigned char sharpS = 0xDF;
    const auto bytes = loadBlock<Block>(text);
    const Block mapped = bytes ^ (Case::toBeMapped(bytes) & smallLetterBit);
    std::memcpy(text, &mapped, sizeof mapped);
    return ~(Case::asItShouldBe(bytes) | (Block)(bytes == sharpS));
}

/// A text of a block or more; the last block ends with the text, what it maps again does not change.
template <class Case, class Block>
bool mapBlocks(LPTSTR text, std::size_t length) noexcept {
    const std::size_t last = length - sizeof(Block);
    Block looked{};
    for (std::size_t i = 0; i < last; i += sizeof(Block))
        looked |= mapBlock<Case, Block>(text + i);
    looked |= mapBlock<Case, Block>(text + last);
    return isAnySet(looked);
}

/// A text shorter than a block.
template <class Case>
bool mapFew(LPTSTR text, std::size_t length) noexcept {
    char few[sizeof(Eight)];
    std::memset(few, 0xDF, sizeof few);
    std::memcpy(few, text, length);
    const bool looked = isAnySet(mapBlock<Case, Eight>(few));
    std::memcpy(text, few, length);
    return looked;
}

template <class Case>
bool map(LPTSTR text, std::size_t length) noexcept {
    if (length >= sizeof(Sixteen)) return mapBlocks<Case, Sixteen>(text, length);
    if (length >= sizeof(Eight)) return mapBlocks<Case, Eight>(text, length);
    return mapFew<Case>(text, length);
}

// Comparing

template <class Block>
Block lowered(Block bytes) noexcept {
    return bytes ^ (capitals(bytes) & smallLetterBit);
}

template <class Block>
bool blocksAreEqual(Block a, Block b) noexcept {
    return !isAnySet(lowered(a) ^ lowered(b));
}

/// Two texts of a block or more; the last block ends with the text, so it may overlap the one before.
template <class Block>
bool textsAreEqual(const char* a, const char* b, std::size_t length) noexcept {
    const std::size_t last = length - sizeof(Block);
    for (std::size_t i = 0; i < last; i += sizeof(Block)) {
        if (!blocksAreEqual(loadBlock<Block>(a + i), loadBlock<Block>(b + i))) return false;
    }
    return blocksAreEqual(loadBlock<Block>(a + last), loadBlock<Block>(b + last));
}

/// A text shorter than a block, some bytes of it twice.
Eight gather(const char* text, std::size_t length) noexcept {
    Eight bytes{};
    if (length >= 4) {
        std::memcpy(&bytes, text, 4);
        std::memcpy(reinterpret_cast<char*>(&bytes) + 4, text + length - 4, 4);
    } else if (length > 0) {
        bytes[0] = static_cast<unsigned char>(text[0]);
        bytes[1] = static_cast<unsigned char>(text[length / 2]);
        bytes[2] = static_cast<unsigned char>(text[length - 1]);
    }
    return bytes;
}

}  // namespace

bool equalWithoutCase(std::string_view a, std::string_view b) noexcept {
    const std::size_t length = a.size();
    if (b.size() != length) return false;
    if (length >= sizeof(Sixteen)) return textsAreEqual<Sixteen>(a.data(), b.data(), length);
    if (length >= sizeof(Eight)) return textsAreEqual<Eight>(a.data(), b.data(), length);
    return blocksAreEqual(gather(a.data(), length), gather(b.data(), length));
}

bool mapToUpper(LPTSTR text, std::size_t length) noexcept {
    return map<Upper>(text, length);
}

bool mapToLower(LPTSTR text, std::size_t length) noexcept {
    return map<Lower>(text, length);
}

}  // namespace nkdt
