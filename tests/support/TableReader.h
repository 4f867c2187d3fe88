#pragma once

/// @file
/// Tables that a model generates and a test holds a class against: the notation of their cells, and what a
/// test finds while it goes through the rows.
///
/// @code
/// const std::string table = nktest::readTable("integers.tsv");
/// std::string_view rest = table;
/// ASSERT_EQ(nktest::take(rest, '\n'), "operation\tleft\tright\tresult");
/// nktest::Findings findings;
/// while (!rest.empty()) {
///     const Row row(nktest::take(rest, '\n'));
///     findings.count(row.operation);
///     findings.note(row.line, deviation(row));  // empty if the row holds
/// }
/// findings.expectNone();
/// findings.expectAllTried(operations);
/// @endcode

#include <bit>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace nktest {

// --- Cells ------------------------------------------------------------------------------------

/// Cuts the part before the next separator off the rest; all of it when there is none.
inline std::string_view take(std::string_view& rest, char separator) {
    const std::size_t end = rest.find(separator);
    const std::string_view part = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    return part;
}

/// All parts, empty ones as well: one more than there are separators.
inline std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

/// The whole cell as a number that fits.
template <class Integer = int>
Integer number(std::string_view cell, int base = 10) {
    Integer value = 0;
    const auto [end, error] = std::from_chars(cell.data(), cell.data() + cell.size(), value, base);
    if (error != std::errc() || end != cell.data() + cell.size()) {
        throw std::invalid_argument("not a number in the table: " + std::string(cell));
    }
    return value;
}

template <class Integer = int>
std::vector<Integer> numbers(std::string_view cell, char separator) {
    std::vector<Integer> values;
    for (const std::string_view part : split(cell, separator))
        values.push_back(number<Integer>(part));
    return values;
}

inline std::string inQuotes(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

inline std::string unquoted(std::string_view cell) {
    if (cell.size() < 2 || cell.front() != '"' || cell.back() != '"') {
        throw std::invalid_argument("not a text in the table: " + std::string(cell));
    }
    return std::string(cell.substr(1, cell.size() - 2));
}

inline std::string hexOf(const unsigned char* bytes, std::size_t count) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += digits[bytes[i] >> 4];
        text += digits[bytes[i] & 15];
    }
    return text;
}

inline std::vector<unsigned char> bytesOf(std::string_view hex) {
    std::vector<unsigned char> bytes;
    for (std::size_t i = 0; hex != "empty" && i + 1 < hex.size(); i += 2)
        bytes.push_back(number<unsigned char>(hex.substr(i, 2), 16));
    return bytes;
}

/// The bits of a double, the highest first.
inline std::string hexOf(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    unsigned char bytes[8];
    for (std::size_t i = 0; i < sizeof bytes; ++i)
        bytes[i] = static_cast<unsigned char>(bits >> (56 - 8 * i));
    return hexOf(bytes, sizeof bytes);
}

inline double doubleOf(std::string_view hex) {
    return std::bit_cast<double>(number<std::uint64_t>(hex, 16));
}

// --- The table --------------------------------------------------------------------------------

/// The text of a table of the folder NKDT_TABLES.
inline std::string readTable(const std::string& name) {
    const char* const folder = std::getenv("NKDT_TABLES");
    std::ifstream file((folder != nullptr ? folder : NKDT_TABLES) + ("/" + name), std::ios::binary);
    if (!file) throw std::runtime_error("no table " + name);
    std::string text;
    // In large pieces: bytes one by one are what takes longest under valgrind.
    std::vector<char> piece(1 << 16);
    while (file) {
        file.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        text.append(piece.data(), static_cast<std::size_t>(file.gcount()));
    }
    return text;
}

/// How many rows try each operation, and which of them do not hold.
class Findings {
  public:
    void count(std::string_view operation) {
        ++m_rows;
        ++rowsOf(operation);
    }

    /// @param found what happened instead of what the row demands; empty if it holds
    void note(std::string_view row, std::string_view found) {
        constexpr std::size_t reported = 20;
        if (found.empty() || ++m_mismatches > reported) return;
        m_report += "\n  " + std::string(row) + "\n    got: " + std::string(found);
    }

    std::size_t rows() const { return m_rows; }
    std::size_t rows(std::string_view operation) const {
        const auto entry = m_rowsOf.find(operation);
        return entry == m_rowsOf.end() ? 0 : entry->second;
    }

    void expectNone() const {
        EXPECT_EQ(m_mismatches, 0U) << "of " << m_rows << " rows; the first ones:" << m_report;
    }

    /// Each of the operations, the keys of a map, has so many rows.
    template <class Operations>
    void expectAllTried(const Operations& operations, std::size_t fewest = 1) const {
        for (const auto& entry : operations)
            EXPECT_GE(rows(entry.first), fewest) << "too few rows try " << entry.first;
    }

  private:
    std::size_t& rowsOf(std::string_view operation) {
        const auto entry = m_rowsOf.find(operation);
        return entry != m_rowsOf.end() ? entry->second : m_rowsOf[std::string(operation)];
    }

    std::size_t m_rows = 0;
    std::size_t m_mismatches = 0;
    std::string m_report;
    std::map<std::string, std::size_t, std::less<>> m_rowsOf;
};

}  // namespace nktest
