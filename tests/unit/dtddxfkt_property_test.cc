// Saving what loading wrote: the same value again where the format shows it whole, and exactly the stated
// loss where it does not.

#include <nkdt/NkDt.h>
#include <nkfo/NkFormat.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "support/Instruments.h"
#include "unit/ValueTesting.h"

namespace {

using valuetest::kStoredModes;
using valuetest::stateOf;
using valuetest::textOf;

constexpr int kId = 1;
/// Random values of a kind; fewer where a memory checker slows them down.
const int kRounds = nktest::isWatched() ? 2000 : 20000;

/// A dialog with one field, through which values go there and back.
class Trip {
  public:
    Trip() { m_dialog.AddEdit(kId); }

    /// Loads the control from the value, saves the value from the control, and returns the text between.
    template <class Value>
    std::string run(Value& value) {
        value.SetModified(FALSE);
        CDataExchange there(&m_dialog, FALSE);
        DDX_NkDtTyp(&there, kId, value);
        CDataExchange back(&m_dialog, TRUE);
        DDX_NkDtTyp(&back, kId, value);
        return std::string(m_dialog.GetDlgItemText(kId).View());
    }

  private:
    CMemoryDialog m_dialog;
};

/// A value that the trip leaves as it is, to the last byte that its class archives, and unmodified.
template <class Value>
void expectSame(Trip& trip, Value value, const NkFormat* format = nullptr) {
    value.SetFormat(format);
    const valuetest::Bytes before = valuetest::stored(value);
    const std::string text = trip.run(value);
    ASSERT_EQ(valuetest::stored(value), before) << text;
    ASSERT_EQ(stateOf(value), "defined") << text;
}

std::mt19937_64 generator() {
    return std::mt19937_64(20040229);
}

template <class Whole>
Whole random(std::mt19937_64& bits, Whole from, Whole to) {
    return std::uniform_int_distribution<Whole>(from, to)(bits);
}

/// A number of any magnitude: as many digits are as likely as others.
std::int64_t anyMagnitude(std::mt19937_64& bits, int mostDigits) {
    std::int64_t limit = 1;
    for (int digits = random(bits, 0, mostDigits); digits > 0; --digits)
        limit *= 10;
    return random<std::int64_t>(bits, 1 - limit, limit - 1);
}

// --- The same again -------------------------------------------------------------------------------

TEST(DialogRoundTrip, EveryLongComesBack) {
    Trip trip;
    auto bits = generator();
    constexpr INT limits[] = {-2147483647 - 1, -1, 0, 1, 2147483647};
    for (const INT n : limits)
        expectSame(trip, NkDtLong(n));
    for (int i = 0; i < kRounds; ++i) {
        expectSame(trip, NkDtLong(random<INT>(bits, limits[0], 2147483647)));
        expectSame(trip, NkDtLong(static_cast<INT>(anyMagnitude(bits, 9))));
    }
}

TEST(DialogRoundTrip, EveryShortComesBack) {
    Trip trip;
    for (INT n = -32768; n <= 32767; ++n)
        expectSame(trip, NkDtShort(n));
}

TEST(DialogRoundTrip, EveryDoubleOfTwoPlacesComesBack) {
    Trip trip;
    auto bits = generator();
    for (int i = 0; i < kRounds; ++i)
        expectSame(trip, NkDtDouble(static_cast<double>(anyMagnitude(bits, 15)) / 100));
}

TEST(DialogRoundTrip, EveryWholeDoubleComesBack) {
    Trip trip;
    auto bits = generator();
    expectSame(trip, NkDtDouble(std::numeric_limits<double>::max()));
    expectSame(trip, NkDtDouble(-std::numeric_limits<double>::max()));
    for (int i = 0; i < kRounds / 10; ++i)
        expectSame(trip, NkDtDouble(std::ldexp(static_cast<double>(random(bits, 1, 2147483647)),
                                               random(bits, 0, 990))));
}

/// A number of up to 28 digits with up to 28 places behind the point.
NkDtDecimal randomDecimal(std::mt19937_64& bits) {
    const int digits = random(bits, 1, 28);
    const int places = random(bits, 0, 28);
    std::string text;
    for (int i = 0; i < digits; ++i)
        text += static_cast<char>('0' + random(bits, 0, 9));
    if (digits <= places) text.insert(0, static_cast<std::size_t>(places + 1 - digits), '0');
    if (places > 0) text.insert(text.size() - static_cast<std::size_t>(places), 1, '.');
    NkDtDecimal number;
    number.SetFromSQL(text.c_str());
    if (random(bits, 0, 1) == 0) return number;
    return NkDtDecimal(0) - number;
}

void expectSameDecimal(Trip& trip, const NkDtDecimal& number) {
    static const NkFormat german(2147483647, 2147483647, FormatDezimalTrennerKomma,
                                 FormatTausenderTrennerPunkt, FormatVorzeichenVorn, FormatVorzeichenNurMinus,
                                 0, '0', 0, '0');
    for (const NkFormat* const format : {static_cast<const NkFormat*>(nullptr), &german}) {
        ASSERT_NO_FATAL_FAILURE(expectSame(trip, number, format));
        NkDtDecimal value(number);
        value.SetFormat(format);
        const std::string text = trip.run(value);
        ASSERT_EQ(value.GetPrecision(), number.GetPrecision()) << text;
    }
}

TEST(DialogRoundTrip, EveryDecimalComesBackWithItsPlaces) {
    Trip trip;
    auto bits = generator();
    for (int i = 0; i < kRounds; ++i)
        ASSERT_NO_FATAL_FAILURE(expectSameDecimal(trip, randomDecimal(bits)));
}

TEST(DialogRoundTrip, TheLargestDecimalsOf29DigitsComeBack) {
    Trip trip;
    const NkDtDecimal twoTo31(2147483648LL);
    const NkDtDecimal twoTo94 = twoTo31 * twoTo31 * twoTo31 * 2;
    const NkDtDecimal most = twoTo94 + (twoTo94 - 1);
    ASSERT_EQ(textOf(most), "39614081257132168796771975167");
    const NkDtDecimal smallest("0.0000000000000000000000000001");
    for (const NkDtDecimal& number : {most, NkDtDecimal(most * smallest), NkDtDecimal(twoTo94 * smallest)}) {
        expectSameDecimal(trip, number);
        expectSameDecimal(trip, NkDtDecimal(0) - number);
    }
}

TEST(DialogRoundTrip, TrueAndFalseComeBack) {
    Trip trip;
    expectSame(trip, NkDtBool(TRUE));
    expectSame(trip, NkDtBool(FALSE));
}

TEST(DialogRoundTrip, EveryCharacterButNulComesBack) {
    Trip trip;
    for (int byte = 1; byte < 256; ++byte)
        expectSame(trip, NkDtChar(static_cast<char>(byte)));
}

TEST(DialogRoundTrip, EveryTextThatIsNotEmptyComesBack) {
    Trip trip;
    auto bits = generator();
    for (int i = 0; i < kRounds / 4; ++i) {
        std::string text;
        for (int length = random(bits, 1, i % 10 == 0 ? 5000 : 60); length > 0; --length)
            text += static_cast<char>(random(bits, 1, 255));
        expectSame(trip, NkDtString(text.c_str()));
    }
}

constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

struct Date {
    int day, month, year;
};

/// Any day of the calendar between the years that dates are shown in.
Date randomDate(std::mt19937_64& bits) {
    const int year = random(bits, 1753, 9999);
    const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    const int month = random(bits, 1, 12);
    const int days = kDays[month - 1] + (leap && month == 2 ? 1 : 0);
    return {random(bits, 1, days), month, year};
}

TEST(DialogRoundTrip, EveryDateWithItsTimeComesBackToTheSecond) {
    Trip trip;
    auto bits = generator();
    for (int i = 0; i < kRounds; ++i) {
        const Date date = randomDate(bits);
        const bool midnight = i % 10 == 0;
        expectSame(trip,
                   NkDtDateTime(date.day, date.month, date.year, midnight ? 0 : random(bits, 0, 23),
                                midnight ? 0 : random(bits, 0, 59), midnight ? 0 : random(bits, 0, 59)));
    }
    expectSame(trip, NkDtDateTime(1, 1, 1753, 0, 0, 0));
    expectSame(trip, NkDtDateTime(31, 12, 9999, 23, 59, 59));
    expectSame(trip, NkDtDateTime(29, 2, 2000, 0, 0, 1));
}

TEST(DialogRoundTrip, EveryDateComesBack) {
    Trip trip;
    auto bits = generator();
    for (int i = 0; i < kRounds; ++i) {
        const Date date = randomDate(bits);
        expectSame(trip, NkDtDateZp(date.day, date.month, date.year));
    }
    expectSame(trip, NkDtDateZp(1, 1, 1753));
    expectSame(trip, NkDtDateZp(31, 12, 9999));
}

constexpr LONG kTicksOfMinute = 20;
constexpr LONG kTicksOfHundredth = 12;
constexpr LONG kMostTicks = 2147483647;

NkDtTime duration(LONG ticks, NkDtTime::TimeMode mode) {
    NkDtTime value;
    value.SetFromSQL(ticks);
    value.SetMode(mode);
    return value;
}

/// The unit in which a duration of that time mode is shown.
LONG unitOf(NkDtTime::TimeMode mode) {
    return mode == NkDtTime::Hundredths ? kTicksOfHundredth : kTicksOfMinute;
}

constexpr NkDtTime::TimeMode kTimeModes[] = {NkDtTime::Hundredths, NkDtTime::Minutes, NkDtTime::HoursOnly};

TEST(DialogRoundTrip, EveryDurationOfWholeUnitsOfItsModeComesBackInItsMode) {
    Trip trip;
    auto bits = generator();
    for (const NkDtTime::TimeMode mode : kTimeModes) {
        const LONG unit = unitOf(mode);
        const LONG most = kMostTicks / unit;
        for (int i = 0; i < kRounds; ++i) {
            const LONG count = i % 2 == 0 ? random(bits, -most, most) : random(bits, -200, 200);
            NkDtTime value = duration(count * unit, mode);
            ASSERT_NO_FATAL_FAILURE(expectSame(trip, value));
            trip.run(value);
            ASSERT_EQ(value.GetMode(), mode);
        }
    }
}

TEST(DialogRoundTrip, AnUndefinedValueComesBackUndefined) {
    Trip trip;
    const auto expectUndefined = [&](auto value) {
        const std::string before = stateOf(value);
        EXPECT_EQ(trip.run(value), "");
        EXPECT_EQ(stateOf(value), before);
        EXPECT_FALSE(value.IsDefined());
    };
    for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
        expectUndefined(NkDtLong(mode));
        expectUndefined(NkDtShort(mode));
        expectUndefined(NkDtDouble(mode));
        expectUndefined(NkDtDecimal(mode));
        expectUndefined(NkDtBool(mode));
        expectUndefined(NkDtChar(mode));
        expectUndefined(NkDtString(mode));
        expectUndefined(NkDtDateTime(mode));
        expectUndefined(NkDtDateZp(mode));
        expectUndefined(NkDtTime(mode));
    }
}

// --- The stated losses ----------------------------------------------------------------------------

/// What is left of a double's shortest decimal at two places, rounded half away from zero: digit by digit, as
/// one does it on paper.
double roundedToTwoPlaces(double number) {
    std::array<char, 2000> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::abs(number),
                                   std::chars_format::fixed);
    std::string digits(buffer.data(), end.ptr);
    const std::size_t point = digits.find('.');
    if (point != std::string::npos && digits.size() > point + 3) {
        const bool up = digits[point + 3] >= '5';
        digits.resize(point + 3);
        std::size_t at = digits.size();
        for (bool carry = up; carry;) {
            if (at == 0) {
                digits.insert(0, 1, '1');
                break;
            }
            char& digit = digits[--at];
            if (digit == '.') continue;
            carry = digit == '9';
            digit = carry ? '0' : static_cast<char>(digit + 1);
        }
    }
    double rounded = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), rounded);
    return number < 0 && rounded != 0 ? -rounded : rounded;
}

void expectRounded(Trip& trip, double number) {
    const double expected = roundedToTwoPlaces(number);
    NkDtDouble value(number);
    const std::string text = trip.run(value);
    ASSERT_EQ(value.GetValue(), expected) << number << " shown as " << text;
    ASSERT_EQ(stateOf(value), number == expected ? "defined" : "defined modified") << number;
}

TEST(DialogLoss, ADoubleComesBackRoundedToTwoPlaces) {
    struct Case {
        double number;
        double back;
    };
    constexpr Case cases[] = {{0.125, 0.13}, {1.005, 1.01},   {-1.005, -1.01},  {0.004, 0.0},
                              {-0.004, 0.0}, {0.005, 0.01},   {9.995, 10.0},    {99.999, 100.0},
                              {1e-300, 0.0}, {1.0 / 3, 0.33}, {-2.0 / 3, -0.67}};
    Trip trip;
    for (const Case& each : cases) {
        EXPECT_EQ(roundedToTwoPlaces(each.number), each.back);
        expectRounded(trip, each.number);
    }
    auto bits = generator();
    for (int i = 0; i < kRounds; ++i) {
        const double fraction = std::uniform_real_distribution<double>(-1, 1)(bits);
        expectRounded(trip, fraction * std::pow(10, random(bits, -3, 17)));
        expectRounded(trip, static_cast<double>(anyMagnitude(bits, 12)) / 1000);
    }
}

TEST(DialogLoss, ADurationLosesTheTicksBelowItsUnit) {
    Trip trip;
    auto bits = generator();
    for (const NkDtTime::TimeMode mode : kTimeModes) {
        for (int i = 0; i < kRounds; ++i) {
            const LONG ticks =
                i % 2 == 0 ? random(bits, -kMostTicks - 1, kMostTicks) : random<LONG>(bits, -2500, 2500);
            const LONG expected = ticks / unitOf(mode) * unitOf(mode);  // toward zero
            NkDtTime value = duration(ticks, mode);
            const std::string text = trip.run(value);
            ASSERT_EQ(textOf(value), std::to_string(expected)) << text;
            ASSERT_EQ(value.GetMode(), mode);
            ASSERT_EQ(stateOf(value), ticks == expected ? "defined" : "defined modified") << text;
        }
    }
}

TEST(DialogLoss, EveryTrueNumberComesBackAsOne) {
    Trip trip;
    for (const BOOL number : {2, 5, -1, 2147483647}) {
        NkDtBool value(number);
        EXPECT_EQ(trip.run(value), "Ja");
        EXPECT_EQ(value.GetValue(), TRUE);
        EXPECT_EQ(stateOf(value), "defined modified");
    }
}

/// What a defined value that shows an empty text is after the trip.
constexpr const char* kCleared[] = {"missing modified", "null modified", "defined"};

TEST(DialogLoss, AnEmptyTextComesBackUndefined) {
    Trip trip;
    for (const NkDtWorkingMode mode : kStoredModes) {
        NkDtString value(mode);
        value = "";
        EXPECT_EQ(trip.run(value), "");
        EXPECT_EQ(stateOf(value), kCleared[mode]);
        EXPECT_EQ(value.GetLength(), 0);
    }
}

TEST(DialogLoss, ANulCharacterComesBackUndefined) {
    Trip trip;
    for (const NkDtWorkingMode mode : kStoredModes) {
        NkDtChar value(mode);
        value = '\0';
        EXPECT_EQ(trip.run(value), "");
        EXPECT_EQ(stateOf(value), kCleared[mode]);
    }
}

TEST(DialogLoss, ATextComesBackUpToItsFirstNul) {
    Trip trip;
    NkDtString value("abc");
    value += '\0';
    value += "def";
    ASSERT_EQ(valuetest::bytesOf(value), "abc\\0def");
    EXPECT_EQ(trip.run(value), "abc");
    EXPECT_EQ(valuetest::bytesOf(value), "abc");
    EXPECT_EQ(stateOf(value), "defined") << "up to the NUL the texts are equal";
}

TEST(DialogLoss, ADateShowsAndLosesATimeOfDay) {
    Trip trip;
    NkDtDateZp value(5, 3, 2004);
    value.SetHour(13);
    EXPECT_EQ(trip.run(value), "05.03.2004 13:00:00");
    EXPECT_EQ(value.GetHour(), 0);
    EXPECT_EQ(value.GetDay365(), 5);
    EXPECT_EQ(stateOf(value), "defined") << "the text told the stored time";
}

TEST(DialogLoss, ANullWithAStoredValueLosesThatValue) {
    Trip trip;
    NkDtLong full(17);
    valuetest::Bytes bytes = valuetest::stored(full);
    bytes.at(0) = 0;  // the defined flag
    NkDtLong value(NkDtWmNull);
    valuetest::load(value, bytes);
    ASSERT_EQ(value.GetValue(), 17);
    EXPECT_EQ(trip.run(value), "");
    EXPECT_EQ(valuetest::describe(value), "0 null modified");
}

}  // namespace
