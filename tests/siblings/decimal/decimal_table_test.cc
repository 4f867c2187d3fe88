// Holds Decimal96 against the table decimals.tsv, which tests/models/decimals.py generates from the rules;
// the model explains the columns.

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "DecimalTest.h"
#include "support/Instruments.h"
#include "support/TableReader.h"

namespace {

using namespace decimaltest;
using namespace nktest;

constexpr std::size_t fewestOfAnOperation = 20'000;
constexpr std::size_t rowsToOneUnderValgrind = 23;  // odd, since some operations take turns

__extension__ typedef __int128 Int128;
__extension__ typedef unsigned __int128 UInt128;

// ---- The table's notation ----

Decimal96 decimal(std::string_view cell) {
    const std::size_t colon = cell.find(':');
    const bool negative = cell.front() == '-';
    Int128 mantissa = 0;
    for (const char c : cell.substr(negative ? 1 : 0, colon - (negative ? 1 : 0)))
        mantissa = mantissa * 10 + (c - '0');
    if (negative) mantissa = -mantissa;
    return Decimal96::fromMantissa(static_cast<std::int32_t>(mantissa >> 64),
                                   static_cast<std::uint64_t>(mantissa),
                                   number<std::int16_t>(cell.substr(colon + 1)));
}

std::string mantissaText(const Decimal96& value) {
    const Int128 mantissa = static_cast<Int128>(value.mantissaHigh()) * (Int128{1} << 64) +
                            static_cast<Int128>(value.mantissaLow());
    auto magnitude = static_cast<UInt128>(mantissa < 0 ? -mantissa : mantissa);
    std::string digits;
    do {
        digits.insert(digits.begin(), static_cast<char>('0' + static_cast<int>(magnitude % 10)));
        magnitude /= 10;
    } while (magnitude != 0);
    return (mantissa < 0 ? "-" : "") + digits;
}

std::string held(const Decimal96& value) {
    if (value.state() == Decimal96State::overflow) return "overflow";
    if (value.state() == Decimal96State::invalid) return "invalid";
    return mantissaText(value) + ":" + std::to_string(value.scale());
}

/// Places and rounding method.
struct Rounding {
    int places;
    Decimal96::Rounding method;
};
Rounding rounding(std::string_view cell) {
    const std::size_t colon = cell.find(':');
    return {number<int>(cell.substr(0, colon)),
            static_cast<Decimal96::Rounding>(number<int>(cell.substr(colon + 1)))};
}

// ---- Carrying out a row ----

/// Comparing must agree in all its forms.
std::string compared(const Decimal96& a, const Decimal96& b) {
    const int order = a < b ? -1 : a > b ? 1 : 0;
    const int calls = overflows;
    const int lost = losses;
    const bool agree = (a == b) == (order == 0) && (a != b) == (order != 0) && (a <= b) == (order <= 0) &&
                       (a >= b) == (order >= 0) && (b < a) == (order > 0) && (a <=> b < 0) == (order < 0) &&
                       (a <=> b > 0) == (order > 0) && (order != 0 || a.hash() == b.hash());
    overflows = calls > 0 ? 1 : 0;
    losses = lost;
    if (!agree) return "comparisons disagree";
    return calls > 0 ? "overflow" : std::to_string(order);
}

std::string wholeNumber(bool done, std::int64_t value) {
    return done ? std::to_string(value) : value == 77 ? "invalid" : "changed";
}

using Operation = std::string (*)(std::string_view left, std::string_view right);

const std::map<std::string, Operation, std::less<>> operations = {
    {"+", [](std::string_view l, std::string_view r) { return held(decimal(l) + decimal(r)); }},
    {"-", [](std::string_view l, std::string_view r) { return held(decimal(l) - decimal(r)); }},
    {"*", [](std::string_view l, std::string_view r) { return held(decimal(l) * decimal(r)); }},
    {"/", [](std::string_view l, std::string_view r) { return held(decimal(l) / decimal(r)); }},
    {"%", [](std::string_view l, std::string_view r) { return held(decimal(l) % decimal(r)); }},
    {"quotient",
     [](std::string_view l, std::string_view r) { return held(decimal(l).truncatedQuotient(decimal(r))); }},
    {"compare", [](std::string_view l, std::string_view r) { return compared(decimal(l), decimal(r)); }},
    {"round",
     [](std::string_view l, std::string_view r) {
         const Rounding how = rounding(r);
         return held(decimal(l).round(how.places, how.method));
     }},
    {"int",
     [](std::string_view l, std::string_view r) {
         std::int32_t value = 77;
         const bool done = decimal(l).tryToInt(value, rounding(r).method);
         return wholeNumber(done, value);
     }},
    {"int64",
     [](std::string_view l, std::string_view r) {
         std::int64_t value = 77;
         const bool done = decimal(l).tryToInt64(value, rounding(r).method);
         return wholeNumber(done, value);
     }},
    {"write",
     [](std::string_view l, std::string_view) {
         const std::string written = text(decimal(l));
         return written == "NaN" ? "overflow" : inQuotes(written);
     }},
    {"parse", [](std::string_view l, std::string_view) { return held(dec(unquoted(l))); }},
    {"from double", [](std::string_view l, std::string_view) { return held(Decimal96::from(doubleOf(l))); }},
    {"to double",
     [](std::string_view l, std::string_view) {
         const double value = decimal(l).toDouble();
         return value != value ? "overflow" : hexOf(value);
     }},
};

std::string carriedOut(std::string_view operation, std::string_view left, std::string_view right) {
    const std::size_t blank = operation.find(' ');
    if (operation.front() == '*' && blank != std::string_view::npos) {
        const Rounding how = rounding(operation.substr(blank + 1));
        return held(Decimal96::multiplyRounded(decimal(left), decimal(right), how.places, how.method));
    }
    if (operation.front() == '/' && blank != std::string_view::npos) {
        const Rounding how = rounding(operation.substr(blank + 1));
        return held(Decimal96::divideRounded(decimal(left), decimal(right), how.places, how.method));
    }
    return operations.find(operation)->second(left, right);
}

/// What is read without a handler.
bool isSilent(std::string_view operation) {
    return operation == "int" || operation == "int64" || operation == "to double";
}

std::string mismatch(const std::vector<std::string_view>& cells) {
    overflows = losses = 0;
    const std::string found = carriedOut(cells[0], cells[1], cells[2]);
    const bool refused = cells[3] == "overflow";
    // A whole number that does not fit and a scale that cannot be multiplied out are alike to the caller.
    const bool alike = found == cells[3] || (isSilent(cells[0]) && refused && found == "invalid");
    if (!alike) return "found " + found;
    if (isSilent(cells[0])) return overflows + losses == 0 ? "" : "a handler is called";
    if (overflows != (refused ? 1 : 0))
        return "overflow handler called " + std::to_string(overflows) + " times";
    if (!refused && (losses > 0) != (cells[4] == "1")) {
        return "inexact handler called " + std::to_string(losses) + " times";
    }
    return "";
}

TEST(DecimalTable, EveryRowComesOutAsTheRulesDemand) {
    const CountingHandlers counting;
    const std::string table = readTable("decimals.tsv");
    std::string_view rest = table;
    const std::size_t step = isUnderValgrind() ? rowsToOneUnderValgrind : 1;
    Findings findings;
    for (std::size_t count = 0; !rest.empty(); ++count) {
        const std::string_view line = take(rest, '\n');
        if (count % step != 0) continue;
        const std::vector<std::string_view> cells = split(line, '\t');
        ASSERT_EQ(cells.size(), 5U) << line;
        findings.count(cells[0].substr(0, cells[0].front() == '*' || cells[0].front() == '/' ? 2 : 20));
        findings.note(line, mismatch(cells));
    }
    findings.expectNone();
    findings.expectAllTried(operations, fewestOfAnOperation / step);
    for (const char* fused : {"* ", "/ "})
        EXPECT_GE(findings.rows(fused), fewestOfAnOperation / step) << fused;
}

}  // namespace
