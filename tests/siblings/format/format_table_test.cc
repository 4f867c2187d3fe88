// Holds NkFormat against the table formats.tsv, which tests/models/formats.py generates from the rules; the
// model explains the columns.

#include <charconv>
#include <cstdlib>
#include <fstream>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "FormatTest.h"

namespace {

using namespace formattest;

constexpr std::size_t fewestRows = 30'000;
constexpr std::size_t reportedMismatches = 20;

// ---- The table's notation ----

std::vector<std::string> split(std::string_view line, char separator) {
    std::vector<std::string> parts;
    for (;;) {
        const std::size_t end = line.find(separator);
        parts.emplace_back(line.substr(0, end));
        if (end == std::string_view::npos) return parts;
        line.remove_prefix(end + 1);
    }
}

LONGLONG number(std::string_view cell) {
    LONGLONG value = 0;
    const auto [end, error] = std::from_chars(cell.data(), cell.data() + cell.size(), value);
    if (error != std::errc() || end != cell.data() + cell.size()) {
        throw std::invalid_argument("not a number in the table: " + std::string(cell));
    }
    return value;
}

std::vector<LONGLONG> numbers(std::string_view cell) {
    std::vector<LONGLONG> values;
    for (const std::string& part : split(cell, ','))
        values.push_back(number(part));
    return values;
}

double realNumber(const std::string& cell) {
    return std::strtod(cell.c_str(), nullptr);
}

std::string unquoted(std::string_view cell) {
    if (cell.size() < 2 || cell.front() != '"' || cell.back() != '"') {
        throw std::invalid_argument("not a text in the table: " + std::string(cell));
    }
    cell = cell.substr(1, cell.size() - 2);
    std::string text;
    for (std::size_t i = 0; i < cell.size(); ++i) {
        if (cell[i] != '\\') {
            text += cell[i];
            continue;
        }
        unsigned byte = 0;
        std::from_chars(cell.data() + i + 2, cell.data() + i + 4, byte, 16);
        text += static_cast<char>(byte);
        i += 3;
    }
    return text;
}

std::string quoted(std::string_view text) {
    std::string cell = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte < 0x7F && c != '"' && c != '\\') {
            cell += c;
        } else {
            constexpr std::string_view digits = "0123456789ABCDEF";
            cell += "\\x";
            cell += digits[byte >> 4U];
            cell += digits[byte & 15U];
        }
    }
    return cell + '"';
}

std::string quoted(const CString& text) {
    return quoted(text.View());
}

std::string joined(std::initializer_list<LONG> values) {
    std::string cell;
    for (const LONG value : values)
        cell += (cell.empty() ? "" : ",") + std::to_string(value);
    return cell;
}

// ---- Carrying out a row ----

struct Row {
    std::string kind;
    std::vector<LONGLONG> settings;
    std::string operation;
    std::string input;
    std::string expected;
};

NkFormat build(const Row& row) {
    const auto n = [&](std::size_t i) { return static_cast<int>(row.settings.at(i)); };
    const auto u = [&](std::size_t i) { return static_cast<ULONG>(row.settings.at(i)); };
    const auto c = [&](std::size_t i) { return static_cast<char>(row.settings.at(i)); };
    if (row.kind == "number") return numberFormat(u(0), u(1), n(2), n(3), n(4), n(5), n(6), c(7), n(8), c(9));
    if (row.kind == "time") return timeFormat(n(0), n(1), n(2), n(3), u(4), n(5), c(6));
    if (row.kind == "date") return dateFormat(n(0), n(1), n(2), n(3), n(4), c(5));
    if (row.kind == "text") return textFormat(u(0), u(1), n(2), c(3));
    return truthFormat(n(0), static_cast<USHORT>(row.settings.at(1)));
}

NkFoDateTime dateTime(std::string_view cell) {
    const std::vector<LONGLONG> fields = numbers(cell);
    const auto at = [&](std::size_t i) { return static_cast<SHORT>(fields.at(i)); };
    return {at(0), at(1), at(2), at(3), at(4), at(5)};
}

using Operation = std::string (*)(const NkFormat& format, const std::string& cell);

const std::map<std::string, Operation> operations = {
    {"build", [](const NkFormat&, const std::string&) { return std::string("ok"); }},
    {"write text",
     [](const NkFormat& f, const std::string& cell) { return quoted(f.FormatText(unquoted(cell))); }},
    {"read text",
     [](const NkFormat& f, const std::string& cell) { return quoted(f.ParseText(unquoted(cell).c_str())); }},
    {"write bool",
     [](const NkFormat& f, const std::string& cell) {
         return quoted(f.FormatBool(static_cast<BOOL>(number(cell))));
     }},
    {"read bool", [](const NkFormat& f,
                     const std::string& cell) { return joined({f.ParseBool(unquoted(cell).c_str())}); }},
    {"write long",
     [](const NkFormat& f, const std::string& cell) {
         return quoted(f.FormatLong(static_cast<LONG>(number(cell))));
     }},
    {"read long", [](const NkFormat& f,
                     const std::string& cell) { return joined({f.ParseLong(unquoted(cell).c_str())}); }},
    {"read short", [](const NkFormat& f,
                      const std::string& cell) { return joined({f.ParseShort(unquoted(cell).c_str())}); }},
    {"write decimal",
     [](const NkFormat& f, const std::string& cell) { return quoted(f.FormatDecimalText(unquoted(cell))); }},
    {"read decimal",
     [](const NkFormat& f, const std::string& cell) {
         return quoted(f.ParseDecimalText(unquoted(cell).c_str()));
     }},
    {"write double",
     [](const NkFormat& f, const std::string& cell) { return quoted(f.FormatDouble(realNumber(cell))); }},
    {"read double",
     [](const NkFormat& f, const std::string& cell) {
         char text[32];
         const double value = f.ParseDouble(unquoted(cell).c_str());
         return std::string(text, std::to_chars(text, text + sizeof text, value).ptr);
     }},
    {"write datetime",
     [](const NkFormat& f, const std::string& cell) { return quoted(f.FormatDateTime(dateTime(cell))); }},
    {"read datetime",
     [](const NkFormat& f, const std::string& cell) {
         const NkFoDateTime v = f.ParseDateTime(unquoted(cell).c_str());
         return joined({v.year, v.month, v.day, v.hour, v.minute, v.second});
     }},
    {"write date",
     [](const NkFormat& f, const std::string& cell) { return quoted(f.FormatDate(dateTime(cell))); }},
    {"read date",
     [](const NkFormat& f, const std::string& cell) {
         const NkFoDateTime v = f.ParseDate(unquoted(cell).c_str());
         return joined({v.year, v.month, v.day});
     }},
    {"write time",
     [](const NkFormat& f, const std::string& cell) {
         const std::vector<LONGLONG> parts = numbers(cell);
         return quoted(f.FormatTime(static_cast<LONG>(parts.at(0)), static_cast<LONG>(parts.at(1))));
     }},
    {"read time",
     [](const NkFormat& f, const std::string& cell) {
         LONG hours = 0;
         LONG sub = 0;
         f.ParseTime(unquoted(cell).c_str(), hours, sub);
         return joined({hours, sub});
     }},
};

std::string outcome(const Row& row) {
    std::optional<PublishedLanguage> language;
    if (row.kind == "date") language.emplace(static_cast<USHORT>(row.settings.at(6)));
    std::string result;
    const auto error = errorOf([&] {
        result = operations.at(row.operation)(build(row), row.input);
        return 0;
    });
    return error ? "!" + std::to_string(error->GetErrorNumber()) : result;
}

/// Doubles are compared as numbers, since one number has several shortest notations.
bool same(const Row& row, const std::string& found) {
    if (found == row.expected) return true;
    const bool refused = found[0] == '!' || row.expected[0] == '!';
    return row.operation == "read double" && !refused && realNumber(found) == realNumber(row.expected);
}

std::ifstream openTable() {
    const char* const folder = std::getenv("NKDT_TABLES");
#ifdef NKDT_TABLES
    return std::ifstream(std::string(folder != nullptr ? folder : NKDT_TABLES) + "/formats.tsv");
#else
    return std::ifstream(std::string(folder != nullptr ? folder : ".") + "/formats.tsv");
#endif
}

TEST(FormatTable, EveryRowComesOutAsTheRulesDemand) {
    const ClockIn2023 clock;
    std::ifstream table = openTable();
    ASSERT_TRUE(table) << "no table formats.tsv";
    std::map<std::string, std::size_t> rows;
    std::size_t mismatches = 0;
    for (std::string line; std::getline(table, line);) {
        const std::vector<std::string> cells = split(line, '\t');
        ASSERT_EQ(cells.size(), 5U) << line;
        const Row row = {cells[0], numbers(cells[1]), cells[2], cells[3], cells[4]};
        ++rows[row.kind];
        ++rows["all"];
        const std::string found = outcome(row);
        if (same(row, found)) continue;
        if (++mismatches <= reportedMismatches) ADD_FAILURE() << line << "\nfound " << found;
    }
    EXPECT_EQ(mismatches, 0U);
    EXPECT_GE(rows["all"], fewestRows);
    for (const char* kind : {"number", "time", "date", "text", "bool"})
        EXPECT_GE(rows[kind], 100U) << kind;
}

}  // namespace
