#include <nkdec/Decimal96Format.h>

#include <string>

#include <gtest/gtest.h>

#include "DecimalTest.h"

namespace {

using namespace decimaltest;

std::string written(const Decimal96Format& format, const Decimal96& number) {
    char buffer[Decimal96Format::textSize];
    return std::string(buffer, format.write(number, buffer));
}

TEST(Decimal96Format, WritesThePlainTextAtFirst) {
    const Decimal96Format format;
    for (const char* const plain : {"1.50", "-12", "0.00", "-0.5"})
        EXPECT_EQ(written(format, dec(plain)), plain);
    EXPECT_EQ(format.decimalSeparator(), '.');
    EXPECT_TRUE(format.showDecimalPoint());
    EXPECT_TRUE(format.showAllDecimals());
    EXPECT_EQ(format.rightFill(), '0');
    EXPECT_EQ(format.rounding(), Decimal96::PLAIN);
}

TEST(Decimal96Format, WritesAnotherSeparator) {
    Decimal96Format format;
    format.setDecimalSeparator(',');
    EXPECT_EQ(written(format, dec("-1.50")), "-1,50");
    EXPECT_EQ(written(format, dec("150")), "150");
}

TEST(Decimal96Format, ShowsTheSetPlaces) {
    Decimal96Format format;
    format.setPlaces(2);
    EXPECT_FALSE(format.showAllDecimals());
    EXPECT_EQ(written(format, dec("1.005")), "1.01");
    EXPECT_EQ(written(format, dec("1.5")), "1.50");
    EXPECT_EQ(written(format, dec("-1")), "-1.00");
    EXPECT_EQ(written(format, dec("-0.001")), "0.00");
    format.setShowAllDecimals(true);
    EXPECT_EQ(written(format, dec("1.005")), "1.005");
}

TEST(Decimal96Format, RoundsByItsMethod) {
    Decimal96Format format;
    format.setPlaces(1);
    format.setRounding(Decimal96::DOWN);
    EXPECT_EQ(written(format, dec("-1.59")), "-1.5");
    format.setRounding(Decimal96::UP);
    EXPECT_EQ(written(format, dec("1.51")), "1.6");
}

TEST(Decimal96Format, FillsWithItsCharacterOrNotAtAll) {
    Decimal96Format format;
    format.setPlaces(3);
    format.setRightFill('-');
    EXPECT_EQ(written(format, dec("1.5")), "1.5--");
    format.setRightFill('\0');
    EXPECT_EQ(written(format, dec("1.5")), "1.5");
    EXPECT_EQ(written(format, dec("1")), "1");
}

TEST(Decimal96Format, WithoutThePointANumberIsWhole) {
    Decimal96Format format;
    format.setShowDecimalPoint(false);
    EXPECT_EQ(written(format, dec("1.5")), "2");
    format.setPlaces(2);
    EXPECT_EQ(written(format, dec("-1.4")), "-1");
}

TEST(Decimal96Format, TheLongestTextFitsTheBuffer) {
    Decimal96Format format;
    format.setPlaces(99);
    EXPECT_EQ(format.places(), 28);
    EXPECT_EQ(written(format, -largest()), "-" + largestDigits + "." + std::string(28, '0'));
    EXPECT_EQ(written(format, dec("x")), "NaN");
    format.setPlaces(-1);
    EXPECT_EQ(format.places(), 0);
}

}  // namespace
