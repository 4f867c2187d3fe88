// The value record of a decimal: its handlers, the binary record, currency, errors.

#include "Imp/dtdecimi.h"

#include <cstring>
#include <initializer_list>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "DecimalRecordTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;

// --- The record -------------------------------------------------------------------------------

TEST(DecimalRecord, StartsAs0) {
    const Imp record;
    EXPECT_TRUE(record.value.isZero());
    EXPECT_EQ(record.value.scale(), 0);
}

TEST(DecimalRecord, HoldsAndCopiesTheNumberAsItIs) {
    const Decimal96 raw = Decimal96::fromMantissa(0, 15, -3000);
    const Imp record(raw);
    Imp copy(record);
    expectSame(copy.value, raw);
    copy = Imp(Decimal96("1.50"));
    EXPECT_EQ(copy.value.scale(), 2);
}

// --- Handlers ---------------------------------------------------------------------------------

void foreignHandler(Decimal96Operation) {}

/// Whether the body sets both handlers again that a record has.
template <class Body>
void expectHandlersSet(const char* name, Body&& body) {
    SCOPED_TRACE(name);
    Imp::setHandlers();
    const Decimal96Handler overflow = setDecimal96OverflowHandler(&foreignHandler);
    const Decimal96Handler inexact = setDecimal96InexactHandler(&foreignHandler);
    ASSERT_NE(overflow, nullptr);
    ASSERT_NE(inexact, nullptr);
    body();
    EXPECT_EQ(setDecimal96OverflowHandler(overflow), overflow);
    EXPECT_EQ(setDecimal96InexactHandler(inexact), inexact);
}

TEST(DecimalHandlers, AreSetByEveryConstruction) {
    const Imp record;
    expectHandlersSet("default", [] { const Imp made; });
    expectHandlersSet("number", [] { const Imp made{Decimal96(5)}; });
    expectHandlersSet("copy", [&] { const Imp made(record); });
}

TEST(DecimalHandlers, AreSetBeforeANumberIsRead) {
    expectHandlersSet("text", [] { static_cast<void>(Imp::fromText("1")); });
    expectHandlersSet("field", [] { static_cast<void>(Imp::fromFieldText("1")); });
    expectHandlersSet("plain text", [] { static_cast<void>(Imp::fromPlainText("1")); });
    expectHandlersSet("external text", [] { static_cast<void>(Imp::fromExtern("1E+000")); });
    expectHandlersSet("record", [] { static_cast<void>(Imp::fromRecord(DEC{})); });
}

TEST(DecimalHandlers, AnOverflowRaisesError24) {
    const Imp record(largest());
    expectError(NkDtErrDezimal, [&] { static_cast<void>(record.value + record.value); });
    expectError(NkDtErrDezimal, [&] { static_cast<void>(record.value / Decimal96()); });
    expectError(NkDtErrDezimal, [&] { static_cast<void>(Decimal96::from(1e40)); });
}

TEST(DecimalHandlers, ALossOfDigitsIsSilent) {
    const Imp record(Decimal96(1));
    EXPECT_EQ(held(record.value / Decimal96(3)), "0." + std::string(28, '3'));
}

// --- The binary record ------------------------------------------------------------------------

DEC record(SHORT sign, SHORT scale, ULONG high, ULONG low) {
    DEC result = {};
    result.sign = sign;
    result.scale = scale;
    result.low = low;
    result.high = high;
    return result;
}

std::string bytesOf(const DEC& record) {
    static constexpr char digits[] = "0123456789abcdef";
    unsigned char bytes[sizeof record];
    std::memcpy(bytes, &record, sizeof record);
    std::string result;
    for (const unsigned char byte : bytes) {
        result += digits[byte >> 4U];
        result += digits[byte & 15U];
    }
    return result;
}

DEC recordOf(const char* number) {
    return Imp::toRecord(Decimal96(number));
}

TEST(DecimalBinary, TheRecordIs14BytesTheLowestFirst) {
    EXPECT_EQ(sizeof(DEC), 14U);
    EXPECT_EQ(bytesOf(record(1, 0x0203, 0x0C0B0A09, 0x08070605)),
              "0100"
              "0302"
              "05060708"
              "090a0b0c"
              "0000");
    EXPECT_EQ(bytesOf(record(-2, -3, 0xFFFFFFFF, 0)),
              "feff"
              "fdff"
              "00000000"
              "ffffffff"
              "0000");
}

TEST(DecimalBinary, FieldsReadBackWhatTheyTook) {
    DEC fields = record(-2, std::numeric_limits<SHORT>::min(), 0x80000000, 0xFFFFFFFF);
    fields.reserved = 0xBEEF;
    EXPECT_EQ(fields.sign, -2);
    EXPECT_EQ(fields.scale, -32768);
    EXPECT_EQ(fields.high, 0x80000000U);
    EXPECT_EQ(fields.low, 0xFFFFFFFFU);
    EXPECT_EQ(fields.reserved, 0xBEEF);
}

TEST(DecimalBinary, WritesSignScaleAndMagnitude) {
    EXPECT_EQ(bytesOf(recordOf("1.50")),
              "0000"
              "0200"
              "96000000"
              "00000000"
              "0000");
    EXPECT_EQ(bytesOf(recordOf("-1.50")),
              "0100"
              "0200"
              "96000000"
              "00000000"
              "0000");
    EXPECT_EQ(bytesOf(recordOf("18446744073709551615")),
              "0000"
              "0000"
              "ffffffff"
              "ffffffff"
              "0000");
    EXPECT_EQ(bytesOf(recordOf("-4294967296")),
              "0100"
              "0000"
              "00000000"
              "01000000"
              "0000");
}

TEST(DecimalBinary, ZeroIsWrittenAs14ZeroBytes) {
    EXPECT_EQ(bytesOf(recordOf("0")), std::string(28, '0'));
    EXPECT_EQ(bytesOf(recordOf("0.00")), std::string(28, '0'));
    EXPECT_EQ(bytesOf(Imp::toRecord(Decimal96::fromMantissa(0, 0, -5))), std::string(28, '0'));
}

TEST(DecimalBinary, WhatIsNoNumberIsWrittenAs14ZeroBytes) {
    setDecimal96OverflowHandler(nullptr);
    const Decimal96 none = largest() + largest();
    Imp::setHandlers();
    EXPECT_EQ(bytesOf(Imp::toRecord(none)), std::string(28, '0'));
}

TEST(DecimalBinary, ALargePositiveNumberLosesPlacesTowardZeroUntilItFits) {
    const Decimal96 number("18446744073709551615.99");
    const DEC cut = Imp::toRecord(number);
    EXPECT_EQ(bytesOf(cut),
              "0000"
              "0000"
              "ffffffff"
              "ffffffff"
              "0000");
    EXPECT_EQ(held(Imp::fromRecord(recordOf("1844674407370955161.59"))), "1844674407370955161.5");
    EXPECT_EQ(held(Imp::fromRecord(Imp::toRecord(largest(28)))), "3.961408125713216879");
}

TEST(DecimalBinary, ALargePositiveNumberWithoutPlacesIsError8) {
    const std::vector<Decimal96> numbers = {Decimal96("18446744073709551616"),
                                            Decimal96("18446744073709551616.5"), largest(), largest(9),
                                            Decimal96::fromMantissa(1, 0, -1)};
    for (const Decimal96& number : numbers)
        expectError(NkDtErrWertebereich, [&] { Imp::toRecord(number); });
}

TEST(DecimalBinary, OfALargeNegativeNumberTheLower64BitsAreWritten) {
    EXPECT_EQ(bytesOf(recordOf("-18446744073709551615")),
              "0100"
              "0000"
              "ffffffff"
              "ffffffff"
              "0000");
    EXPECT_EQ(bytesOf(recordOf("-18446744073709551616")), std::string(28, '0'));
    EXPECT_EQ(bytesOf(recordOf("-184467440737095516.17")),
              "0100"
              "0200"
              "01000000"
              "00000000"
              "0000");
    EXPECT_EQ(bytesOf(Imp::toRecord(-largest(28))),
              "0100"
              "1c00"
              "ffffffff"
              "ffffffff"
              "0000");
}

TEST(DecimalBinary, ReadsSignScaleAndMagnitude) {
    EXPECT_EQ(held(Imp::fromRecord(record(0, 2, 0, 150))), "1.50");
    EXPECT_EQ(held(Imp::fromRecord(record(1, 2, 0, 150))), "-1.50");
    EXPECT_EQ(held(Imp::fromRecord(record(0, 0, 1, 0))), "4294967296");
    EXPECT_EQ(held(Imp::fromRecord(record(1, 0, 0xFFFFFFFF, 0xFFFFFFFF))), "-18446744073709551615");
}

TEST(DecimalBinary, EverySignButZeroIsNegative) {
    for (const SHORT sign : std::initializer_list<SHORT>{1, 2, -1, 256, 32767, -32768})
        EXPECT_EQ(held(Imp::fromRecord(record(sign, 0, 0, 5))), "-5") << sign;
}

TEST(DecimalBinary, AMagnitudeOf0WithAnotherSignThan0And1ReadsAsMinus2To32) {
    EXPECT_TRUE(Imp::fromRecord(record(0, 3, 0, 0)).isZero());
    EXPECT_TRUE(Imp::fromRecord(record(1, 3, 0, 0)).isZero());
    for (const SHORT sign : std::initializer_list<SHORT>{2, -1, -32768})
        EXPECT_EQ(held(Imp::fromRecord(record(sign, 1, 0, 0))), "-429496729.6") << sign;
}

TEST(DecimalBinary, KeepsTheScaleAsItIs) {
    for (const SHORT scale : std::initializer_list<SHORT>{0, 28, 29, 32767, -1, -32768}) {
        EXPECT_EQ(Imp::fromRecord(record(0, scale, 0, 7)).scale(), scale);
        EXPECT_EQ(Imp::fromRecord(record(0, scale, 0, 0)).scale(), scale);
        EXPECT_EQ(Imp::toRecord(Imp::fromRecord(record(0, scale, 0, 7))).scale, scale);
    }
}

TEST(DecimalBinary, IgnoresTheReservedWord) {
    DEC given = record(1, 2, 0, 150);
    given.reserved = 0xFFFF;
    EXPECT_EQ(held(Imp::fromRecord(given)), "-1.50");
    EXPECT_EQ(bytesOf(Imp::toRecord(Imp::fromRecord(given))), bytesOf(record(1, 2, 0, 150)));
}

TEST(DecimalBinary, EveryRecordThatIsWrittenComesBack) {
    forManyNumbers([](const Decimal96& number) {
        if (number.abs() > Decimal96::fromMantissa(0, kAllBits, static_cast<std::int16_t>(number.scale())))
            return;
        if (number.isZero()) return;
        expectSame(Imp::fromRecord(Imp::toRecord(number)), number);
    });
}

TEST(DecimalBinary, Any14BytesAreSafe) {
    std::mt19937_64 random(20040229);
    int refused = 0;
    for (int i = 0; i < 4000; ++i) {
        unsigned char bytes[sizeof(DEC)];
        for (unsigned char& byte : bytes)
            byte = static_cast<unsigned char>(random());
        if (i % 2 != 0) bytes[3] = 0;  // places as they are in use
        DEC given;
        std::memcpy(&given, bytes, sizeof given);
        const Decimal96 number = Imp::fromRecord(given);
        const DEC back = Imp::toRecord(number);
        EXPECT_EQ(back.low, given.low);
        EXPECT_EQ(back.high, given.high);
        EXPECT_EQ(back.scale, given.scale);
        EXPECT_EQ(back.sign != 0, given.sign != 0);
        EXPECT_EQ(back.reserved, 0);
        if (errorOf([&] { external(number); }) != nullptr) ++refused;
    }
    EXPECT_GT(refused, 500);
    EXPECT_LT(refused, 1500);
}

// --- Currency ---------------------------------------------------------------------------------

std::string currencyOf(const Decimal96& number) {
    const COleCurrency currency = Imp::toCurrency(number);
    EXPECT_EQ(currency.GetStatus(), COleCurrency::valid);
    return currency.Format().GetString();
}

TEST(DecimalToCurrency, IsRoundedHalfAwayFromZeroToFourPlaces) {
    EXPECT_EQ(currencyOf(Decimal96("12.5")), "12.5000");
    EXPECT_EQ(currencyOf(Decimal96("-7")), "-7.0000");
    EXPECT_EQ(currencyOf(Decimal96("0.00005")), "0.0001");
    EXPECT_EQ(currencyOf(Decimal96("-0.00005")), "-0.0001");
    EXPECT_EQ(currencyOf(Decimal96("0.00004999")), "0.0000");
    EXPECT_EQ(currencyOf(Decimal96::fromMantissa(0, 15, -2)), "1500.0000");
    EXPECT_EQ(currencyOf(Decimal96::fromMantissa(0, 0, -3000)), "0.0000");
}

TEST(DecimalToCurrency, ReachesTheBoundsOfCurrencies) {
    EXPECT_EQ(currencyOf(Decimal96("922337203685477.5807")), "922337203685477.5807");
    EXPECT_EQ(currencyOf(Decimal96("922337203685477.58074999")), "922337203685477.5807");
    EXPECT_EQ(currencyOf(Decimal96("-922337203685477.5808")), "-922337203685477.5808");
    EXPECT_EQ(currencyOf(Decimal96("-922337203685477.58084999")), "-922337203685477.5808");
}

TEST(DecimalToCurrency, BeyondThemIsError8) {
    const std::vector<Decimal96> numbers = {Decimal96("922337203685477.5808"),
                                            Decimal96("922337203685477.58075"),
                                            Decimal96("-922337203685477.5809"),
                                            Decimal96("-922337203685477.58085"),
                                            largest(),
                                            -largest(),
                                            Decimal96::fromMantissa(0, 1, -28)};
    for (const Decimal96& number : numbers)
        expectError(NkDtErrWertebereich, [&] { Imp::toCurrency(number); });
}

TEST(DecimalToCurrency, AFailureOfTheArithmeticIsReplaced) {
    const Imp record(Decimal96::fromMantissa(0, 1, -30));
    expectReplaced(NkDtErrDezimal, [&] { Imp::toCurrency(record.value); });
}

TEST(DecimalToCurrency, WhatIsNoNumberIsNull) {
    setDecimal96OverflowHandler(nullptr);
    const Decimal96 none = largest() + largest();
    Imp::setHandlers();
    EXPECT_EQ(Imp::toCurrency(none).GetStatus(), COleCurrency::null);
}

TEST(DecimalFromCurrency, HasFourPlaces) {
    EXPECT_EQ(held(Imp::fromCurrency(COleCurrency(12, 5000))), "12.5000");
    EXPECT_EQ(held(Imp::fromCurrency(COleCurrency(0, -1))), "-0.0001");
    EXPECT_EQ(held(Imp::fromCurrency(COleCurrency())), "0.0000");
    for (const LONGLONG count :
         {std::numeric_limits<LONGLONG>::min(), std::numeric_limits<LONGLONG>::max()}) {
        const COleCurrency currency(CURRENCY{count});
        EXPECT_EQ(Imp::toCurrency(Imp::fromCurrency(currency)), currency);
        EXPECT_EQ(held(Imp::fromCurrency(currency)), currency.Format().GetString());
    }
}

TEST(DecimalFromCurrency, WhatIsNotValidIs0) {
    COleCurrency currency(5, 0);
    currency.SetStatus(COleCurrency::null);
    EXPECT_EQ(held(Imp::fromCurrency(currency)), "0");
    currency.SetStatus(COleCurrency::invalid);
    EXPECT_EQ(held(Imp::fromCurrency(currency)), "0");
}

// --- Origins ----------------------------------------------------------------------------------

TEST(DecimalRecordErrors, TellWhereTheyComeFrom) {
    constexpr const char* module = ".\\Imp\\dtdecimi.cc";
    constexpr const char* record = "NkDtDecimal_Imp";
    constexpr const char* text = "NkDtDecimal_Imp(LPCTSTR)";
    constexpr const char* conversion = "ConvAsciiToRW96(LPCTSTR)";
    constexpr const char* external = "SetFromExtern(NkDtString*,BOOL,USHORT)";
    constexpr const char* handler = "NkDtDecimalOverflowHandler(RWDecimal96OverflowErr&)";
    const Imp raw(Decimal96::fromMantissa(0, 1, -30));
    std::vector<ErrorCase> cases;
    for (const Reader reader : kAllReaders)
        cases.push_back({"null", [=] { reader(nullptr); }, NkDtErrInitialwert, module, record, text});
    const std::vector<ErrorCase> others = {
        {"38", [] { Imp::fromText(zeros(39).c_str()); }, NkDtErrEingabeZuLang, module, record, text},
        {"28", [] { Imp::fromText(nines(29).c_str()); }, NkDtErrEingabeZuLang, module, record, text},
        {"points", [] { Imp::fromText("1.2.3"); }, NkDtErrFormatUnzulaessig, module, record, text},
        {"letter", [] { Imp::fromText("12a"); }, NkDtErrFormatUnzulaessig, module, record, text},
        {"sign", [] { Imp::fromText("1-"); }, NkDtErrFormatUnzulaessig, module, record, conversion},
        {"plain", [] { Imp::fromPlainText("1,5"); }, NkDtErrFormatUnzulaessig, module, record, conversion},
        {"no E", [] { Imp::fromExtern("1"); }, NkDtErrExtern, ".\\Dtdecfkt.cc", "NkDtDecimal", external},
        {"mantissa", [] { Imp::fromExtern("E+000"); }, NkDtErrFormatUnzulaessig, module, record, conversion},
        {"overflow", [&] { held(raw.value); }, NkDtErrDezimal, "RWDecimal", record, handler},
        {"record", [] { Imp::toRecord(largest()); }, NkDtErrWertebereich, module, record,
         "ConvRWToDecimal(RWDecimal96&)"},
        {"range", [] { Imp::toCurrency(largest()); }, NkDtErrWertebereich, module, record, "ToCurrency()"},
        {"arithmetic", [&] { Imp::toCurrency(raw.value); }, NkDtErrFolgefehler, module, record,
         "ToCurrency()", FALSE, NkDtErrDezimal},
    };
    cases.insert(cases.end(), others.begin(), others.end());
    expectOrigins(cases);
}

}  // namespace
