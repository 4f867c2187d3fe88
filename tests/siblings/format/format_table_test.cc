// Holds NkFormat against the table formats.tsv, which tests/models/formats.py generates from the rules; the
// model explains the columns.

#include <charconv>
#include <cstdlib>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "FormatTest.h"
#include "support/TableReader.h"

namespace {

using namespace formattest;
using nktest::split;
using nktest::take;

constexpr std::size_t fewestRows = 30'000;

// ---- The table's notation ----

LONGLONG number(std::string_view cell) {
    return nktest::number<LONGLONG>(cell);
}

std::vector<LONGLONG> numbers(std::string_view cell) {
    return nktest::numbers<LONGLONG>(cell, ',');
}

double realNumber(const std::string& cell) {
    return std::strtod(cell.c_str(), nullptr);
}

std::string unquoted(std::string_view cell) {
    const std::string plain = nktest::unquoted(cell);
    std::string text;
    for (std::size_t i = 0; i < plain.size(); ++i) {
        if (plain[i] != '\\') {
            text += plain[i];
            continue;
        }
        text += static_cast<char>(nktest::number<unsigned>(std::string_view(plain).substr(i + 2, 2), 16));
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

TEST(FormatTable, EveryRowComesOutAsTheRulesDemand) {
    const ClockIn2023 clock;
    const std::string table = nktest::readTable("formats.tsv");
    std::string_view rest = table;
    nktest::Findings findings;
    while (!rest.empty()) {
        const std::string_view line = take(rest, '\n');
        const std::vector<std::string_view> cells = split(line, '\t');
        ASSERT_EQ(cells.size(), 5U) << line;
        const Row row = {std::string(cells[0]), numbers(cells[1]), std::string(cells[2]),
                         std::string(cells[3]), std::string(cells[4])};
        findings.count(row.kind);
        const std::string found = outcome(row);
        if (!same(row, found)) findings.note(line, "found " + found);
    }
    findings.expectNone();
    EXPECT_GE(findings.rows(), fewestRows);
    for (const char* kind : {"number", "time", "date", "text", "bool"})
        EXPECT_GE(findings.rows(kind), 100U) << kind;
}

}  // namespace
