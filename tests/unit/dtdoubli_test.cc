// The value record of a double: its texts, held against the C library's own in the C locale.

#include "Imp/dtdoubli.h"

#include <bit>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "MemoryTesting.h"
#include "ValueTesting.h"
#include "support/Instruments.h"

namespace {

using namespace valuetest;
using Limits = std::numeric_limits<double>;

constexpr double kInfinity = Limits::infinity();
constexpr double kNaN = Limits::quiet_NaN();
const int kRounds = nktest::isWatched() ? 2'000 : 100'000;

/// -0.0 and 0.0 differ.
std::uint64_t bitsOf(double number) {
    return std::bit_cast<std::uint64_t>(number);
}

double anyDouble(std::mt19937_64& random) {
    return std::bit_cast<double>(random());
}

/// What the body prints into a buffer of this size.
template <class Body>
std::string printed(Body&& body) {
    char buffer[1200];
    const int length = body(buffer, sizeof buffer);
    return std::string(buffer, static_cast<std::size_t>(length));
}

/// The text that the C library writes: with 15 digits, with 16, with 17, which tell every double, and
/// with 31.
std::string printed15(double number) {
    return printed(
        [&](char* buffer, std::size_t size) { return std::snprintf(buffer, size, "%.15g", number); });
}
std::string printed16(double number) {
    return printed(
        [&](char* buffer, std::size_t size) { return std::snprintf(buffer, size, "%.16G", number); });
}
std::string printed17(double number) {
    return printed(
        [&](char* buffer, std::size_t size) { return std::snprintf(buffer, size, "%.17g", number); });
}
std::string printed31(double number) {
    return printed(
        [&](char* buffer, std::size_t size) { return std::snprintf(buffer, size, "%.30e", number); });
}

std::string shortText(double number) {
    NkDtDouble_Imp::Text buffer;
    const std::string_view text = NkDtDouble_Imp::shortText(number, buffer);
    EXPECT_STREQ(text.data(), buffer);
    EXPECT_EQ(text.size(), std::strlen(buffer));
    return buffer;
}

std::string externText(double number) {
    NkDtDouble_Imp::Text buffer;
    const std::string_view text = NkDtDouble_Imp::externText(number, buffer);
    EXPECT_STREQ(text.data(), buffer);
    EXPECT_EQ(text.size(), std::strlen(buffer));
    return buffer;
}

/// Reads the text as the record does and as the C library does: the same number, the same errno behind it
/// and, where the number is not the whole text, the same decision. Both start with this errno.
void expectReadAlike(const std::string& text, int before = 0) {
    errno = before;
    char* end = nullptr;
    const double expected = std::strtod(text.c_str(), &end);
    const int expectedErrno = errno;
    const bool complete = std::abs(expected) != HUGE_VAL && *end == '\0';
    const ULONG expectedError = !complete && expectedErrno == ERANGE ? ULONG{NkDtErrWertebereich} : ULONG{0};

    double number = kNaN;
    errno = before;
    const ErrorPtr error = errorOf([&] { number = NkDtDouble_Imp::fromString(text.c_str()); });
    const int numberErrno = errno;
    EXPECT_EQ(numberErrno, expectedErrno) << text;
    EXPECT_EQ(error == nullptr ? 0 : error->GetErrorNumber(), expectedError) << text;
    if (error != nullptr) return;
    EXPECT_EQ(bitsOf(number), bitsOf(expected)) << text;
}

double read(const std::string& text) {
    errno = 0;
    return NkDtDouble_Imp::fromString(text.c_str());
}

// --- Reading --------------------------------------------------------------------------------------

TEST(DoubleFromText, ReadsWhiteSpaceASignDigitsAndAnExponent) {
    for (const char* const text : {"0",
                                   "-0",
                                   "+0",
                                   "1",
                                   "-1",
                                   "+1",
                                   "12.5",
                                   ".5",
                                   "-.5",
                                   "+.5",
                                   "5.",
                                   "-5.",
                                   "1e3",
                                   "1E3",
                                   "1e+3",
                                   "1e-3",
                                   "1.5e300",
                                   "  12.5",
                                   "\t\n\v\f\r12.5",
                                   " -12.5",
                                   "007",
                                   "0.1",
                                   "0.30000000000000004",
                                   "1.7976931348623157e308",
                                   "2.2250738585072014e-308",
                                   "123456789012345678901234567890",
                                   "9007199254740993",
                                   "9007199254740992.9999999999999999999",
                                   "0e400",
                                   "0e99999999999999999999",
                                   "1e0000000000000000000000001",
                                   "0.00000000000000000000000000001e29",
                                   "00000000000000000001e-5"}) {
        expectReadAlike(text);
    }
}

TEST(DoubleFromText, IgnoresWhatFollowsTheNumber) {
    struct Case {
        const char* text;
        double number;
    };
    constexpr Case cases[] = {{"1,5", 1},      {"12abc", 12}, {"12 ", 12},  {"1.2.3", 1.2}, {"1e", 1},
                              {"1e+", 1},      {"1e-", 1},    {"1ex", 1},   {"1e+x", 1},    {"1 2", 1},
                              {"1e3.5", 1000}, {"5.e1", 50},  {"5.x", 5},   {"1e5e5", 1e5}, {"1-", 1},
                              {"-7,5", -7},    {"0,5", 0},    {".5.5", 0.5}};
    for (const Case& each : cases) {
        EXPECT_EQ(bitsOf(read(each.text)), bitsOf(each.number)) << each.text;
        expectReadAlike(each.text);
    }
}

TEST(DoubleFromText, IsZeroWithoutANumber) {
    for (const char* const text : {"", " ", "\t\n", "abc", "-", "+", ".", "-.", "+.", "e5", ".e5", "--1",
                                   "+-1", "-+1", "- 1", "+ 1", ",5", "$1",
                                   "\xA0"
                                   "1"}) {
        EXPECT_EQ(bitsOf(read(text)), bitsOf(0.0)) << text;
        expectReadAlike(text);
    }
}

TEST(DoubleFromText, KnowsDecimalFormsOnly) {
    struct Case {
        const char* text;
        double number;
    };
    constexpr Case cases[] = {{"inf", 0},    {"-inf", 0}, {"INFINITY", 0}, {"nan", 0},   {"-NaN", 0},
                              {"nan(1)", 0}, {"0x10", 0}, {"-0x10", -0.0}, {"0x1p4", 0}, {"0X.8", 0}};
    for (const Case& each : cases)
        EXPECT_EQ(bitsOf(read(each.text)), bitsOf(each.number)) << each.text;
}

TEST(DoubleFromText, RefusesANumberBeyondTheRange) {
    for (const char* const text :
         {"1e400", "-1e400", "1e309", "1.7976931348623159e308", "-1.7976931348623159e308", "1e400abc",
          "0.001e312", "179769313486231590000e289", ".1e310", "1e99999999999999999999",
          "1e9223372036854775807", "1e2147483647", "1e2147483648"}) {
        expectReadAlike(text);
        const ErrorPtr error = expectError(NkDtErrWertebereich, [&] { read(text); });
        EXPECT_EQ(errno, ERANGE) << text;
        EXPECT_EQ(error->GetErrorText(), cp1252("Wert außerhalb des Wertebereichs"));
    }
    const std::string digits(400, '9');
    expectReadAlike(digits);
    expectReadAlike(digits + ".5x");
    expectError(NkDtErrWertebereich, [&] { read(digits); });
}

TEST(DoubleFromText, TakesANumberTooSmallForWhatRemainsOfItAndSetsErrno) {
    struct Case {
        const char* text;
        double number;
    };
    constexpr Case cases[] = {{"1e-400", 0.0},
                              {"-1e-400", -0.0},
                              {"2e-324", 0.0},
                              {"1e-99999999999999999999", 0.0},
                              {"1e-2147483649", 0.0},
                              {"1e-9223372036854775807", 0.0},
                              {"1000e-400", 0.0},
                              {".0001e-330", 0.0},
                              {"3e-324", Limits::denorm_min()},
                              {"-4.9406564584124654e-324", -Limits::denorm_min()},
                              {"1e-310", 1e-310},
                              {"2.2250738585072009e-308", 2.2250738585072009e-308}};
    for (const Case& each : cases) {
        EXPECT_EQ(bitsOf(read(each.text)), bitsOf(each.number)) << each.text;
        EXPECT_EQ(errno, ERANGE) << each.text;
        expectReadAlike(each.text);
    }
    EXPECT_EQ(read("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(errno, ERANGE);
    expectError(NkDtErrWertebereich, [] { read("1e-400x"); });
}

TEST(DoubleFromText, CountsAnErrnoLeftOverFromEarlierAndNeverClearsIt) {
    for (const char* const text :
         {"12", "", "1e308", "0", "12abc", "abc", " ", "1,5", "-", "1e-310", "1e-310x", "1e400"}) {
        expectReadAlike(text, ERANGE);
        expectReadAlike(text, EINVAL);
        expectReadAlike(text, 0);
    }
    errno = ERANGE;
    expectError(NkDtErrWertebereich, [] { NkDtDouble_Imp::fromString("12abc"); });
    EXPECT_EQ(errno, ERANGE);
    EXPECT_EQ(NkDtDouble_Imp::fromString("12"), 12.0);
    EXPECT_EQ(errno, ERANGE);
    errno = 0;
    EXPECT_EQ(NkDtDouble_Imp::fromString("12abc"), 12.0);
    EXPECT_EQ(errno, 0);
}

TEST(DoubleFromText, RefusesNull) {
    expectOrigins({{"null", [] { NkDtDouble_Imp::fromString(nullptr); }, NkDtErrInitialwert,
                    ".\\Imp\\dtdoubli.cc", "NkDtDouble_Imp", "ConvAsciiToDouble(LPCTSTR)"},
                   {"range", [] { NkDtDouble_Imp::fromString("1e400"); }, NkDtErrWertebereich,
                    ".\\Imp\\dtdoubli.cc", "NkDtDouble_Imp", "ConvAsciiToDouble(LPCTSTR)"}});
}

TEST(DoubleFromText, ReadsEveryTextOfADoubleAsTheCLibraryDoes) {
    std::mt19937_64 random(20260401);
    for (int i = 0; i < kRounds; ++i) {
        const double number = anyDouble(random);
        if (!std::isfinite(number)) continue;
        const std::string text = printed17(number);
        expectReadAlike(text);
        EXPECT_EQ(bitsOf(read(text)), bitsOf(number)) << text;
        expectReadAlike(printed15(number));
        expectReadAlike(printed31(number) + "x");
    }
}

TEST(DoubleFromText, ReadsTheMiddleBetweenTwoDoublesAsTheCLibraryDoes) {
    std::mt19937_64 random(20260402);
    for (int i = 0; i < kRounds / 20; ++i) {
        const double number = std::abs(anyDouble(random));
        if (!std::isfinite(number) || number < 1e-300 || number > 1e300) continue;
        // A long double holds the middle exactly, and 1100 digits show it exactly.
        const double half = std::ldexp(1.0, std::ilogb(number) - 53);
        const long double exact = static_cast<long double>(number) + static_cast<long double>(half);
        const std::string middle = printed(
            [&](char* buffer, std::size_t size) { return std::snprintf(buffer, size, "%.1100Le", exact); });
        const std::size_t exponent = middle.find('e');
        expectReadAlike(middle);
        expectReadAlike(middle.substr(0, exponent) + "1" + middle.substr(exponent));
    }
}

TEST(DoubleFromText, ReadsEveryTextOfItsCharactersAsTheCLibraryDoes) {
    constexpr char characters[] = " \t+--..00123456789999eeE,a";
    std::mt19937_64 random(20260403);
    std::uniform_int_distribution<std::size_t> length(0, 12);
    std::uniform_int_distribution<std::size_t> character(0, sizeof characters - 2);
    for (int i = 0; i < kRounds; ++i) {
        std::string text(length(random), ' ');
        for (char& each : text)
            each = characters[character(random)];
        expectReadAlike(text, i % 4 == 0 ? ERANGE : 0);
    }
}

// --- Writing --------------------------------------------------------------------------------------

TEST(DoubleToText, HasFifteenSignificantDigits) {
    struct Case {
        double number;
        const char* text;
    };
    const Case cases[] = {{0.0, "0"},
                          {-0.0, "-0"},
                          {1.0, "1"},
                          {-1.5, "-1.5"},
                          {0.1, "0.1"},
                          {0.1 + 0.2, "0.3"},
                          {1.0 / 3, "0.333333333333333"},
                          {1e14, "100000000000000"},
                          {1e15, "1e+15"},
                          {1e20, "1e+20"},
                          {123456789012345678.0, "1.23456789012346e+17"},
                          {0.0001, "0.0001"},
                          {0.00001, "1e-05"},
                          {Limits::max(), "1.79769313486232e+308"},
                          {-Limits::min(), "-2.2250738585072e-308"},
                          {Limits::denorm_min(), "4.94065645841247e-324"},
                          {kInfinity, "inf"},
                          {-kInfinity, "-inf"},
                          {kNaN, "nan"}};
    for (const Case& each : cases) {
        EXPECT_EQ(shortText(each.number), each.text);
        EXPECT_EQ(printed15(each.number), each.text);
    }
}

TEST(DoubleToText, HasSixteenDigitsAndACapitalEOutside) {
    struct Case {
        double number;
        const char* text;
    };
    const Case cases[] = {{0.0, "0"},
                          {-0.0, "-0"},
                          {0.1, "0.1"},
                          {1e20, "1E+20"},
                          {1.0 / 3, "0.3333333333333333"},
                          {-1.0 / 3, "-0.3333333333333333"},
                          {1e15, "1000000000000000"},
                          {1e16, "1E+16"},
                          {0.00001, "1E-05"},
                          {0.1 + 0.2, "0.3"},
                          {Limits::max(), "1.797693134862316E+308"},
                          {Limits::denorm_min(), "4.940656458412465E-324"},
                          {kInfinity, "INF"},
                          {-kInfinity, "-INF"},
                          {kNaN, "NAN"}};
    for (const Case& each : cases) {
        EXPECT_EQ(externText(each.number), each.text);
        EXPECT_EQ(printed16(each.number), each.text);
    }
}

TEST(DoubleToText, IsWrittenAsTheCLibraryDoes) {
    std::mt19937_64 random(20260404);
    std::size_t longest = 0;
    for (int i = 0; i < kRounds; ++i) {
        // Bit patterns of every size, and numbers as people have them.
        const double number =
            i % 2 == 0 ? anyDouble(random)
                       : static_cast<double>(static_cast<std::int64_t>(random()) >> (i % 60)) / 1000.0;
        EXPECT_EQ(shortText(number), printed15(number));
        EXPECT_EQ(externText(number), printed16(number));
        longest = std::max(longest, externText(number).size());
    }
    EXPECT_EQ(longest, 23U);
    EXPECT_LT(longest, NkDtDouble_Imp::textSize);
}

TEST(DoubleRecord, ReadsAndWritesWithoutMemory) {
    const std::string digits = "0." + std::string(2000, '7');
    NkDtDouble_Imp::Text buffer;
    const memorytest::Requests requests;
    const double small = NkDtDouble_Imp::fromString("12.5e-300");
    const double sevenNinths = NkDtDouble_Imp::fromString(digits.c_str());
    const std::size_t shortLength = NkDtDouble_Imp::shortText(Limits::max(), buffer).size();
    const std::size_t externLength = NkDtDouble_Imp::externText(Limits::denorm_min(), buffer).size();
    EXPECT_EQ(memorytest::Requests::count(), 0);
    EXPECT_EQ(small, 12.5e-300);
    EXPECT_EQ(sevenNinths, 7.0 / 9.0);
    EXPECT_EQ(shortLength, 21U);
    EXPECT_EQ(externLength, 22U);
}

TEST(DoubleRecord, StartsAtZero) {
    EXPECT_EQ(bitsOf(NkDtDouble_Imp().value), bitsOf(0.0));
    EXPECT_EQ(NkDtDouble_Imp(-1.5).value, -1.5);
}

}  // namespace
