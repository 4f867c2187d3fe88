// What a format writes reads back as the value it shows: random formats and random values of every kind,
// fixed seeds.

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "FormatTest.h"

namespace {

using namespace formattest;

constexpr int formatsOfAKind = 200;
constexpr int valuesOfAFormat = 60;

/// Draws from a seed, the same on every machine.
class Dice {
  public:
    explicit Dice(std::uint32_t seed) : m_engine(seed) {}
    std::uint64_t bits() { return m_engine(); }
    /// first to last, both included
    int number(int first, int last) {
        return first + static_cast<int>(bits() % (static_cast<std::uint64_t>(last - first) + 1));
    }
    bool coin() { return number(0, 1) == 1; }
    template <class T, std::size_t N>
    T oneOf(const T (&values)[N]) {
        return values[bits() % N];
    }

  private:
    std::mt19937_64 m_engine;
};

/// Writes with @p write; a value that the format cannot show is no case. Everything else goes to @p check.
template <class Write, class Check>
int whenWritten(Write&& write, Check&& check) {
    try {
        const CString shown = write();
        check(shown);
        return 1;
    } catch (NkEhBasis* caught) {
        const std::unique_ptr<NkEhBasis> error(caught);
        EXPECT_EQ(error->GetErrorNumber(), NkFoFehlerWert) << error->GetErrorText();
        return 0;
    }
}

NkFormat randomNumberFormat(Dice& dice) {
    for (;;) {
        const int decimal = dice.number(0, 3);
        const ULONG most = dice.oneOf<ULONG>({5, 11, 25, 40, unlimited});
        const ULONG mostPlaces = dice.oneOf<ULONG>({0, 1, 2, 4, 28, unlimited});
        const char fill = dice.oneOf({'0', '0', '*', ' ', 'x', '#'});
        const char fillPlaces = dice.oneOf({'0', '0', '*', ' ', 'x', '_'});
        const int fewest = dice.coin() ? 0 : dice.number(0, 9);
        const int fewestPlaces = dice.coin() ? 0 : dice.number(0, 6);
        const int thousands = dice.number(0, 4);
        const int sign = dice.number(0, 2);
        const int which = dice.number(0, 1);
        const auto error = errorOf([&] {
            return numberFormat(most, mostPlaces, decimal, thousands, sign, which, fewest, fill, fewestPlaces,
                                fillPlaces);
        });
        if (error) continue;  // settings that contradict each other
        return numberFormat(most, mostPlaces, decimal, thousands, sign, which, fewest, fill, fewestPlaces,
                            fillPlaces);
    }
}

LONG randomLong(Dice& dice) {
    const auto bits = static_cast<LONG>(static_cast<std::uint32_t>(dice.bits()));
    return dice.coin() ? bits : bits >> dice.number(1, 31);
}

TEST(FormatRoundTrip, WholeNumbers) {
    Dice dice(1);
    int written = 0;
    for (int i = 0; i < formatsOfAKind; ++i) {
        const NkFormat format = randomNumberFormat(dice);
        for (int j = 0; j < valuesOfAFormat; ++j) {
            const LONG value = randomLong(dice);
            const auto small = static_cast<SHORT>(value % 32768);
            written +=
                whenWritten([&] { return format.FormatLong(value); },
                            [&](LPCTSTR shown) { EXPECT_EQ(format.ParseLong(shown), value) << shown; });
            written +=
                whenWritten([&] { return format.FormatShort(small); },
                            [&](LPCTSTR shown) { EXPECT_EQ(format.ParseShort(shown), small) << shown; });
        }
    }
    EXPECT_GT(written, formatsOfAKind * valuesOfAFormat / 2);
}

/// The text without zeros at the end of its places, which a format may add.
std::string trimmed(std::string plain) {
    if (plain.find('.') == std::string::npos) return plain;
    plain.erase(plain.find_last_not_of('0') + 1);
    if (plain.back() == '.') plain.pop_back();
    return plain;
}

std::string randomPlainNumber(Dice& dice) {
    std::string plain = dice.coin() ? "-" : "";
    const int whole = dice.number(1, 20);
    const int places = dice.coin() ? 0 : dice.number(1, 28);
    plain += static_cast<char>('0' + dice.number(whole == 1 ? 0 : 1, 9));
    for (int i = 1; i < whole; ++i)
        plain += static_cast<char>('0' + dice.number(0, 9));
    if (places > 0) plain += '.';
    for (int i = 0; i < places; ++i)
        plain += static_cast<char>('0' + dice.number(0, 9));
    return plain;
}

TEST(FormatRoundTrip, Decimals) {
    Dice dice(2);
    int written = 0;
    for (int i = 0; i < formatsOfAKind; ++i) {
        const NkFormat format = randomNumberFormat(dice);
        for (int j = 0; j < valuesOfAFormat; ++j) {
            const std::string plain = randomPlainNumber(dice);
            written += whenWritten([&] { return format.FormatDecimalText(plain); },
                                   [&](const CString& shown) {
                                       const CString read = format.ParseDecimalText(shown);
                                       EXPECT_EQ(format.FormatDecimalText(read), shown)
                                           << plain << " was read as " << read;
                                   });
        }
    }
    EXPECT_GT(written, formatsOfAKind * valuesOfAFormat / 4);
}

TEST(FormatRoundTrip, DecimalsKeepEveryDigitWhenTheFormatHasRoom) {
    Dice dice(3);
    for (int i = 0; i < formatsOfAKind * valuesOfAFormat; ++i) {
        const int thousands = dice.oneOf({0, 1, 3, 4});
        const NkFormat format = numberFormat(
            unlimited, unlimited, FormatDezimalTrennerKomma, thousands, dice.number(1, 2), dice.number(0, 1),
            dice.number(0, 9), dice.oneOf({'0', '*'}), dice.number(0, 6), dice.oneOf({'0', '*'}));
        const std::string plain = randomPlainNumber(dice);
        const std::string read = text(format.ParseDecimalText(format.FormatDecimalText(plain)));
        const bool zero = plain.find_first_of("123456789") == std::string::npos;
        EXPECT_EQ(trimmed(read), zero ? "0" : trimmed(plain));
    }
}

double randomDouble(Dice& dice) {
    switch (dice.number(0, 3)) {
        case 0:
            return static_cast<double>(randomLong(dice)) / 100;
        case 1:
            return static_cast<double>(randomLong(dice)) * 1e-6;
        case 2:
            return static_cast<double>(static_cast<std::int64_t>(dice.bits()));
        default: {
            const double value = std::bit_cast<double>(dice.bits());
            return std::isfinite(value) ? value : 0.0;
        }
    }
}

TEST(FormatRoundTrip, Doubles) {
    Dice dice(4);
    const NkFormat roomy = numberFormat(unlimited, unlimited, 1, 1, 1, 1);
    int written = 0;
    for (int i = 0; i < formatsOfAKind; ++i) {
        const NkFormat format = randomNumberFormat(dice);
        for (int j = 0; j < valuesOfAFormat; ++j) {
            const double value = randomDouble(dice);
            EXPECT_EQ(roomy.ParseDouble(roomy.FormatDouble(value)), value);
            written +=
                whenWritten([&] { return format.FormatDouble(value); },
                            [&](const CString& shown) {
                                // Beyond 15 digits the nearest double may show others: read as a decimal
                                // then.
                                const CString read = format.ParseDecimalText(shown);
                                EXPECT_EQ(format.FormatDecimalText(read), shown);
                                double exact = 0;
                                std::from_chars(read.GetString(), read.GetString() + read.GetLength(), exact);
                                EXPECT_EQ(format.ParseDouble(shown), exact) << shown;
                            });
        }
    }
    EXPECT_GT(written, formatsOfAKind * valuesOfAFormat / 4);
}

constexpr int daysOfMonth(int year, int month) {
    const bool leapYear = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    const int days[] = {31, leapYear ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return days[month - 1];
}

NkFoDateTime randomDate(Dice& dice, int firstYear, int lastYear) {
    const int year = dice.number(firstYear, lastYear);
    const int month = dice.number(1, 12);
    const int day = dice.number(1, daysOfMonth(year, month));
    NkFoDateTime value = {
        static_cast<SHORT>(year), static_cast<SHORT>(month), static_cast<SHORT>(day), 0, 0, 0};
    if (dice.coin()) {
        value.hour = static_cast<SHORT>(dice.number(0, 23));
        value.minute = static_cast<SHORT>(dice.number(0, 59));
        value.second = static_cast<SHORT>(dice.number(0, 59));
    }
    return value;
}

TEST(FormatRoundTrip, Dates) {
    const ClockIn2023 clock;
    Dice dice(5);
    for (int i = 0; i < formatsOfAKind; ++i) {
        const PublishedLanguage language(dice.oneOf<USHORT>({0, 1031, 1033}));
        const int separator = dice.number(0, 4);
        const int year = dice.number(0, 2);
        const char fill = dice.oneOf({'0', '*', 'x', separator == 3 ? '0' : ' '});
        const NkFormat format =
            dateFormat(dice.number(0, 2), separator, year, dice.number(0, 2), dice.number(0, 1), fill);
        for (int j = 0; j < valuesOfAFormat; ++j) {
            // Without the whole year the date reads in the current century, or year.
            const NkFoDateTime value = year == 0   ? randomDate(dice, 1753, 9999)
                                       : year == 1 ? randomDate(dice, 2000, 2099)
                                                   : randomDate(dice, 2023, 2023);
            const CString shown = format.FormatDateTime(value);
            EXPECT_EQ(format.ParseDateTime(shown), value) << shown;
            const NkFoDateTime date = {value.year, value.month, value.day, 0, 0, 0};
            EXPECT_EQ(format.ParseDate(format.FormatDate(value)), date);
        }
    }
}

TEST(FormatRoundTrip, Times) {
    Dice dice(6);
    int written = 0;
    for (int i = 0; i < formatsOfAKind; ++i) {
        const int display = dice.number(0, 3);
        const int most = dice.number(1, 10);
        const NkFormat format =
            timeFormat(dice.number(0, 1), display, dice.number(0, 2), dice.number(0, 1),
                       static_cast<ULONG>(most), dice.number(0, most), dice.oneOf({'0', '*', ' ', 'h'}));
        for (int j = 0; j < valuesOfAFormat; ++j) {
            const bool negative = dice.coin();
            const LONG largestHours = dice.oneOf<LONG>({0, 23, 999, 1789569, 2147483647});
            const LONG hours = dice.number(0, largestHours) * (negative ? -1 : 1);
            const LONG sub =
                dice.number(0, display == FormatZeitDarstellungHundertstel ? 99 : 59) * (negative ? -1 : 1);
            written += whenWritten([&] { return format.FormatTime(hours, sub); },
                                   [&](LPCTSTR shown) {
                                       LONG readHours = 0;
                                       LONG readSub = 0;
                                       format.ParseTime(shown, readHours, readSub);
                                       EXPECT_EQ(readHours, hours) << shown;
                                       const bool hoursOnly = display == FormatZeitDarstellungStunden;
                                       EXPECT_EQ(readSub, hoursOnly ? 0 : sub) << shown;
                                   });
        }
    }
    EXPECT_GT(written, formatsOfAKind * valuesOfAFormat / 4);
}

TEST(FormatRoundTrip, Texts) {
    Dice dice(7);
    int written = 0;
    for (int i = 0; i < formatsOfAKind; ++i) {
        const int side = dice.number(0, 2);
        const char fill = dice.oneOf({' ', '*', '0', 'z'});
        const ULONG length = dice.oneOf<ULONG>({0, 1, 8, 20});
        const NkFormat format = textFormat(
            length, dice.coin() ? kulNkFoValidAll : static_cast<ULONG>(dice.number(0, 15)), side, fill);
        for (int j = 0; j < valuesOfAFormat; ++j) {
            std::string value;
            for (int n = dice.number(0, 12); n > 0; --n)
                value += static_cast<char>(dice.number(1, 255));
            written += whenWritten(
                [&] { return format.FormatText(value); },
                [&](const CString& shown) {
                    // The value's own fill characters on the filled side look like filling.
                    std::string expected = value;
                    if (length > 0 && side == FormatAuffuellenAmAnfang) {
                        expected.erase(0, std::min(expected.find_first_not_of(fill), expected.size()));
                    } else if (length > 0 && side == FormatAuffuellenAmEnde) {
                        expected.erase(expected.find_last_not_of(fill) + 1);
                    }
                    EXPECT_EQ(text(format.ParseText(shown)), expected);
                });
        }
    }
    EXPECT_GT(written, formatsOfAKind * valuesOfAFormat / 10);
}

}  // namespace
