#pragma once

/// @file
/// Finding a part in a text.

#include <cstddef>
#include <string_view>

#include "nkfw/Types.h"

namespace nkdt {

/// Compares sixteen positions at a time by the part's first and last byte, and the bytes between them only
/// where both agree. Where they agree too often in vain, the C library's search, which is linear in any case,
/// goes on.
class TextSearch {
  public:
    static constexpr std::size_t notFound = static_cast<std::size_t>(-1);
    static constexpr std::size_t all = static_cast<std::size_t>(-1);

    /// @param part not empty; must live as long as the search
    explicit TextSearch(std::string_view part) noexcept : m_part(part) {}

    std::size_t partLength() const noexcept { return m_part.size(); }

    /// The position of the first occurrence that begins at @p from or later, or notFound.
    std::size_t find(std::string_view text, std::size_t from = 0) const noexcept;

    /// Counts the occurrences from the left on, @p most at most, none overlapping the one before, and stores
    /// the positions of the first @p room.
    std::size_t collect(std::string_view text, std::size_t most, INT* positions,
                        std::size_t room) const noexcept;

  private:
    template <class OnHit>
    void scan(std::string_view text, std::size_t from, OnHit&& onHit) const noexcept;
    template <class OnHit>
    void scanByte(std::string_view text, std::size_t from, OnHit&& onHit) const noexcept;
    template <class OnHit>
    void scanLinear(std::string_view text, std::size_t from, OnHit&& onHit) const noexcept;

    std::string_view m_part;
};

}  // namespace nkdt
