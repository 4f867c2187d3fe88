// The rules of decimal numbers across their operations: working modes, the value itself as an operand, what a
// failure leaves behind, the names in errors, virtual functions.

#include <nkdt/NkDtDecimal.h>
#include <nkdt/NkDtDouble.h>
#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtShort.h>
#include <nkdt/NkDtString.h>
#include <nkfo/NkFormat.h>
#include <nkfw/Archive.h>
#include <nkfw/Recordset.h>

#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "DecimalTesting.h"

namespace {

using namespace valuetest;

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr const char* kLargest = "039614081257132168796771975167";  // the zero lifts the bound of digits
const NkFormat kText(10, kulNkFoValidAll, FormatAuffuellenNicht, ' ');

NkDtDecimal decimal(const char* text) {
    return NkDtDecimal(text);
}

NkDtDecimal inMode(const NkDtDecimal& number, NkDtWorkingMode mode) {
    NkDtDecimal value(number);
    value.SetWorkingMode(mode);
    return value;
}

/// Undefined with that number: only in mode 2, which only a change of the default gives to an undefined
/// value.
NkDtDecimal undefinedInModeTwo(const char* number) {
    NkDtDecimal value(NkDtWmMissing);
    const DefaultMode mode(NkDtWmDefined);
    value.SetWorkingMode(NkDtWmDefault);
    value = decimal(number);
    value.SetModified(FALSE);
    return value;
}

DEC record(SHORT sign, SHORT scale, ULONG high, ULONG low) {
    DEC result = {};
    result.sign = sign;
    result.scale = scale;
    result.low = low;
    result.high = high;
    return result;
}

/// 10^30, which a record can hold but no decimal can compute with. A raised flag spares the comparison.
NkDtDecimal tooLarge() {
    NkDtDecimal value(0);
    value.SetModified(TRUE);
    value.SetFromBTR(record(0, -30, 0, 1), TRUE);
    value.SetModified(FALSE);
    return value;
}

/// An operation on a value, with the name that a failure of the test tells.
struct Named {
    const char* name;
    std::function<void(NkDtDecimal&)> operation;
};

std::string after(NkDtDecimal value, const std::function<void(NkDtDecimal&)>& operation) {
    operation(value);
    return describe(value);
}

// --- Working modes ----------------------------------------------------------------------------------

TEST(NkDtDecimalModes, APlainSourceMakesAValueThatIsDefinedInTheDefaultMode) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        const DefaultMode scope(mode);
        for (const NkDtDecimal& value :
             {NkDtDecimal(5), NkDtDecimal(5.0), NkDtDecimal("5"), NkDtDecimal(currency(5'0000))}) {
            EXPECT_EQ(describe(value), "5 defined");
            EXPECT_EQ(value.GetWorkingMode(), mode);
            EXPECT_EQ(value.GetFormat(), nullptr);
        }
    }
}

TEST(NkDtDecimalModes, AnInvalidCurrencyMakesAnUndefinedValueExceptUnderDefaultModeTwo) {
    COleCurrency none = currency(5);
    none.SetStatus(COleCurrency::invalid);
    const std::pair<NkDtWorkingMode, const char*> cases[] = {
        {NkDtWmMissing, "0 missing"}, {NkDtWmNull, "0 null"}, {NkDtWmDefined, "0 defined"}};
    for (const auto& [mode, state] : cases) {
        const DefaultMode scope(mode);
        EXPECT_EQ(describe(NkDtDecimal(none)), state);
    }
}

TEST(NkDtDecimalModes, AnotherValueGivesItsModeDefinednessAndFlagButNoFormat) {
    const auto check = [](const auto& number) {
        using Source = std::decay_t<decltype(number)>;
        for (const NkDtWorkingMode mode : kStoredModes) {
            for (const BOOL modified : {FALSE, TRUE}) {
                Source undefined(mode);
                undefined.SetModified(modified);
                undefined.SetFormat(&kText);
                Source defined(number);
                defined.SetWorkingMode(mode);
                defined.SetModified(modified);
                const NkDtDecimal fromUndefined(undefined);
                EXPECT_EQ(describe(fromUndefined), "0 " + stateOf(undefined));
                EXPECT_EQ(fromUndefined.GetWorkingMode(), mode);
                EXPECT_EQ(fromUndefined.GetFormat(), nullptr);
                const NkDtDecimal fromDefined(defined);
                EXPECT_EQ(describe(fromDefined), "7 " + stateOf(defined));
                EXPECT_EQ(fromDefined.GetWorkingMode(), mode);
            }
        }
    };
    check(NkDtLong(7));
    check(NkDtShort(7));
    check(NkDtDouble(7.0));
    check(NkDtDecimal("7.00"));
}

TEST(NkDtDecimalModes, ATextGivesItsModeDefinednessAndFlag) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        NkDtString text(mode);
        text.SetModified(TRUE);
        EXPECT_EQ(describe(NkDtDecimal(text)), "0 " + stateOf(text));
        text = "7.00";
        text.SetModified(FALSE);
        const NkDtDecimal value(text);
        EXPECT_EQ(describe(value), "7 defined");
        EXPECT_EQ(value.GetPrecision(), 2);
        EXPECT_EQ(value.GetWorkingMode(), mode);
    }
}

TEST(NkDtDecimalModes, AResultHasTheDefaultModeNoFormatAndNoFlag) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        const DefaultMode scope(mode);
        NkDtDecimal a = inMode(decimal("7.5"), NkDtWmMissing);
        a.SetModified(TRUE);
        a.SetFormat(&kText);
        for (const NkDtDecimal& result :
             {a + a, a * a, a % a, a + 1, a - 0.5, 1 - a, 1.5 / a, 8 % a, a / NkDtDecimal(NkDtWmNull)}) {
            EXPECT_EQ(stateOf(result), "defined");
            EXPECT_EQ(result.GetWorkingMode(), mode);
            EXPECT_EQ(result.GetFormat(), nullptr);
        }
    }
}

TEST(NkDtDecimalModes, AnUndefinedResultIsADefinedZeroUnderDefaultModeTwo) {
    const NkDtDecimal missing(NkDtWmMissing);
    const NkDtDecimal null(NkDtWmNull);
    const DefaultMode scope(NkDtWmDefined);
    for (const NkDtDecimal& result :
         {missing + decimal("1"), null * null, missing % 2, 1 / missing, 0.5 * missing})
        EXPECT_EQ(describe(result), "0 defined");
}

TEST(NkDtDecimalModes, AnUndefinedValueOfModeTwoIsNeitherMissingNorNullAndCountsWithItsNumber) {
    const NkDtDecimal value = undefinedInModeTwo("5");
    const NkDtDecimal two("2");
    EXPECT_EQ(describe(value), "5 undefined");
    EXPECT_EQ(value.GetValue(), 5.0);
    EXPECT_EQ(value.GetPrecision(), 0);
    EXPECT_EQ(describe(value + two), "7 defined");
    EXPECT_EQ(describe(two * value), "10 defined");  // not neutral
    EXPECT_EQ(describe(value * two), "10 defined");
    EXPECT_EQ(describe(two / value), "0.4 defined");
    EXPECT_EQ(describe(decimal("7.5") % value), "2.5 defined");
    EXPECT_EQ(describe(10 / value), "2 defined");
    EXPECT_EQ(describe(3 * value), "15 defined");
    EXPECT_EQ(describe(value + value), "0 missing");  // none of both is defined
    EXPECT_TRUE(value > two);
    EXPECT_TRUE(value == 5);
    EXPECT_EQ(after(value, [](auto& d) { d += 1; }), "6 defined modified");
    EXPECT_EQ(after(value, [](auto& d) { d.Round(1, NkDtDecimal::RundenVonNull); }), "5 undefined");
    EXPECT_STREQ(value.ConvToSQL(), "NULL");
    EXPECT_STREQ(value.ConvToOFL(), "");
}

TEST(NkDtDecimalModes, OnlyADefinedZeroIsRefusedAsADivisorByName) {
    const NkDtDecimal zero = undefinedInModeTwo("0");
    expectReplaced(NkDtErrDezimal, [&] { static_cast<void>(1 / zero); });
    EXPECT_EQ(describe(0 / zero), "0 defined");
}

/// Everything that clears a value.
std::vector<Named> clearings() {
    return {{"Clear", [](auto& d) { d.Clear(); }},
            {"SetFromOFL", [](auto& d) { d.SetFromOFL(""); }},
            {"SetFromOFL of null", [](auto& d) { d.SetFromOFL(nullptr, &kText); }},
            {"SetFromBTR", [](auto& d) { d.SetFromBTR(record(0, 0, 0, 9), FALSE); }},
            {"SetFromExtern", [](auto& d) { d.SetFromExtern(nullptr, TRUE, 100); }},
            {"SetFromExtern by the flag",
             [](auto& d) {
                 const NkDtString text("9E+000");
                 d.SetFromExtern(&text, 2, 100);
             }},
            {"SetFromRecordSet",
             [](auto& d) {
                 CRecordset rs;
                 const CString field("9");
                 rs.SetFieldNull(&field, TRUE);
                 d.SetFromRecordSet(rs, field);
             }},
            {"currency", [](auto& d) {
                 COleCurrency none;
                 none.SetStatus(COleCurrency::null);
                 d = none;
             }}};
}

TEST(NkDtDecimalModes, WhatClearsSetsZeroWithoutPlacesAndLeavesModeTwoDefined) {
    for (const Named& each : clearings()) {
        SCOPED_TRACE(each.name);
        const auto& clear = each.operation;
        EXPECT_EQ(after(inMode(decimal("5.0"), NkDtWmMissing), clear), "0 missing modified");
        EXPECT_EQ(after(inMode(decimal("5.0"), NkDtWmNull), clear), "0 null modified");
        EXPECT_EQ(after(inMode(decimal("5.0"), NkDtWmDefined), clear), "0 defined modified");
        EXPECT_EQ(after(inMode(decimal("0.0"), NkDtWmDefined), clear), "0 defined");
        EXPECT_EQ(after(NkDtDecimal(NkDtWmNull), clear), "0 null");
        EXPECT_EQ(after(tooLarge(), clear), "0 missing modified");
        NkDtDecimal placed("0.00");
        placed.SetWorkingMode(NkDtWmDefined);
        clear(placed);
        EXPECT_EQ(placed.GetPrecision(), 0);
    }
}

TEST(NkDtDecimalModes, AnUndefinedSourceLeavesTheModeAndInModeTwoTheDefinedness) {
    const NkDtDecimal missing(NkDtWmMissing);
    const auto assign = [&](auto& d) { d = missing; };
    EXPECT_EQ(after(inMode(decimal("5"), NkDtWmMissing), assign), "0 missing modified");
    EXPECT_EQ(after(inMode(decimal("5"), NkDtWmNull), assign), "0 null modified");
    EXPECT_EQ(after(inMode(decimal("5"), NkDtWmDefined), assign), "0 defined modified");
    EXPECT_EQ(after(inMode(decimal("0"), NkDtWmDefined), assign), "0 defined");
}

TEST(NkDtDecimalModes, EverySetterMakesTheValueDefinedAndLeavesModeAndFormat) {
    const Named setters[] = {
        {"INT", [](auto& d) { d = 0; }},
        {"double", [](auto& d) { d = 0.0; }},
        {"currency", [](auto& d) { d = currency(0); }},
        {"value", [](auto& d) { d = decimal("0"); }},
        {"SetFromSQL", [](auto& d) { d.SetFromSQL("0"); }},
        {"SetFromBTR", [](auto& d) { d.SetFromBTR(DEC{}, TRUE); }},
        {"SetFromExtern",
         [](auto& d) {
             const NkDtString text("0E+000");
             d.SetFromExtern(&text, TRUE, 100);
         }},
        {"SetFromRecordSet",
         [](auto& d) {
             CRecordset rs;
             const CString field("0.00");
             rs.SetFieldNull(&field, FALSE);
             d.SetFromRecordSet(rs, field);
         }},
        {"+= INT", [](auto& d) { d += 0; }},
        {"-= double", [](auto& d) { d -= 0.0; }},
    };
    for (const Named& each : setters) {
        SCOPED_TRACE(each.name);
        const auto& set = each.operation;
        NkDtDecimal null(NkDtWmNull);
        null.SetFormat(&kText);
        set(null);
        EXPECT_EQ(describe(null), "0 defined modified");  // the definedness is a change
        EXPECT_EQ(null.GetWorkingMode(), NkDtWmNull);
        EXPECT_EQ(null.GetFormat(), &kText);
        EXPECT_EQ(after(decimal("0"), set), "0 defined");
    }
}

// --- The value itself as an operand ---------------------------------------------------------------------

TEST(NkDtDecimalItself, ComputesAsWithACopy) {
    const NkDtDecimal a("-2.50");
    EXPECT_EQ(describe(a + a), "-5 defined");
    EXPECT_EQ(describe(a - a), "0 defined");
    EXPECT_EQ(describe(a * a), "6.25 defined");
    EXPECT_EQ(describe(a / a), "1 defined");
    EXPECT_EQ(describe(a % a), "0 defined");
    EXPECT_TRUE(a == a && a <= a && a >= a);
    EXPECT_FALSE(a != a || a < a || a > a);
    EXPECT_EQ(after(a, [](auto& d) { d = d * d; }), "6.25 defined modified");
    EXPECT_EQ(after(a, [](auto& d) { d -= d; }), "0 defined modified");
}

TEST(NkDtDecimalItself, AssignedToItselfStaysAsItIs) {
    for (NkDtDecimal value : {decimal("2.50"), NkDtDecimal(NkDtWmNull), undefinedInModeTwo("5")}) {
        const std::string before = describe(value);
        NkDtDecimal& same = value;
        value = std::as_const(same);
        value = std::move(same);
        value.Assign(same);
        EXPECT_EQ(describe(value), before);
    }
}

TEST(NkDtDecimalItself, ReadsWhatItWroteItself) {
    NkDtDecimal value("-1234.50");
    value.SetFromOFL(value.ConvToOFL());
    value.SetFromSQL(value.ConvToSQL());
    BOOL defined = FALSE;
    USHORT version = 0;
    const NkDtString external = value.ConvToExtern(defined, version);
    value.SetFromExtern(&external, defined, version);
    value.SetFromBTR(value.ConvToBTR(defined), defined);
    load(value, stored(value));
    EXPECT_EQ(describe(value), "-1234.5 defined");
    EXPECT_EQ(value.GetPrecision(), 2);
}

// --- Kind -----------------------------------------------------------------------------------------------

TEST(NkDtDecimalKind, AssignTakesDecimalsAndDerivedClassesAndRefusesEveryOther) {
    NkDtDecimal value("1.5");
    value.Assign(Derived<NkDtDecimal>(decimal("2.5")));
    EXPECT_EQ(describe(value), "2.5 defined modified");
    value.SetModified(FALSE);
    for (const std::unique_ptr<NkDtBasis>& other :
         {std::unique_ptr<NkDtBasis>(new NkDtLong(5)), std::unique_ptr<NkDtBasis>(new NkDtShort(5)),
          std::unique_ptr<NkDtBasis>(new NkDtDouble(5.0)), std::unique_ptr<NkDtBasis>(new NkDtString("5")),
          std::unique_ptr<NkDtBasis>(new NkDtLong(NkDtWmNull))}) {
        expectOrigins({{"Assign", [&] { value.Assign(*other); }, NkDtErrBasistypen, ".\\Dtdecima.cc",
                        "NkDtDecimal", "Assign(NkDtBasis&)"}});
        EXPECT_EQ(describe(value), "2.5 defined");
    }
}

/// Counts what reaches the virtual functions.
class Watched : public NkDtDecimal {
  public:
    explicit Watched(const char* text) : NkDtDecimal(text) {}
    using NkDtDecimal::operator=;
    void SetModified(BOOL fModified) override {
        ++raised;
        NkDtDecimal::SetModified(fModified);
    }
    void Clear() override {
        ++cleared;
        NkDtDecimal::Clear();
    }
    int raised = 0;
    int cleared = 0;
};

TEST(NkDtDecimalKind, TheFlagIsRaisedThroughTheVirtualFunction) {
    struct Case {
        const char* name;
        std::function<void(Watched&)> operation;
        int unmodified;  // calls for a value without the flag
        int modified;
    };
    const Case cases[] = {
        {"+= 1", [](auto& d) { d += 1; }, 1, 1},
        {"+= 0", [](auto& d) { d += 0; }, 0, 0},
        {"-= 0.0", [](auto& d) { d -= 0.0; }, 0, 0},
        {"+= value", [](auto& d) { d += decimal("1"); }, 1, 0},
        {"+= equal", [](auto& d) { d += decimal("0"); }, 0, 0},
        {"++", [](auto& d) { ++d; }, 1, 1},
        {"--", [](auto& d) { d--; }, 1, 1},
        {"= INT", [](auto& d) { d = 6; }, 1, 0},
        {"= integer part", [](auto& d) { d = 5; }, 0, 0},
        {"= double", [](auto& d) { d = 6.5; }, 1, 0},
        {"= value", [](auto& d) { d = decimal("6"); }, 1, 1},
        {"SetFromBTR", [](auto& d) { d.SetFromBTR(record(0, 0, 0, 6), TRUE); }, 1, 0},
        {"SetFromOFL", [](auto& d) { d.SetFromOFL("6"); }, 1, 0},
        {"Round", [](auto& d) { d.Round(0, NkDtDecimal::RundenZurNull); }, 1, 1},
        {"Round of all places", [](auto& d) { d.Round(-2, NkDtDecimal::RundenZurNull); }, 0, 0},
        {"Truncate", [](auto& d) { d.Truncate(0); }, 1, 1},
        {"Truncate to more", [](auto& d) { d.Truncate(3); }, 1, 1},
        {"Truncate to the same", [](auto& d) { d.Truncate(2); }, 0, 0},
        {"Clear", [](auto& d) { d.Clear(); }, 1, 1}};
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        Watched value("5.70");
        each.operation(value);
        EXPECT_EQ(value.raised, each.unmodified);
        Watched modified("5.70");
        modified.SetModified(TRUE);
        modified.raised = 0;
        each.operation(modified);
        EXPECT_EQ(modified.raised, each.modified);
    }
}

TEST(NkDtDecimalKind, WhatClearsDoesSoThroughTheVirtualFunction) {
    for (const Named& each : clearings()) {
        SCOPED_TRACE(each.name);
        const auto& clear = each.operation;
        Watched value("5.70");
        clear(value);
        EXPECT_EQ(value.cleared, 1);
    }
}

// --- Errors ---------------------------------------------------------------------------------------------

constexpr const char* kSigns[] = {"==", "!=", "<", ">", "<=", ">="};

template <class Left, class Right>
std::vector<std::function<void()>> comparisons(const Left& a, const Right& b) {
    return {[=] { static_cast<void>(a == b); }, [=] { static_cast<void>(a != b); },
            [=] { static_cast<void>(a < b); },  [=] { static_cast<void>(a > b); },
            [=] { static_cast<void>(a <= b); }, [=] { static_cast<void>(a >= b); }};
}

template <class Right>
void expectComparisons(const NkDtDecimal& a, const Right& b, const std::string& parameter, ULONG number,
                       BOOL final, ULONG cause) {
    const auto all = comparisons(a, b);
    for (std::size_t i = 0; i < all.size(); ++i) {
        const std::string function = std::string("operator") + kSigns[i] + "(" + parameter + ")";
        expectOrigins(
            {{kSigns[i], all[i], number, ".\\Dtdecope.cc", "NkDtDecimal", function.c_str(), final, cause}});
    }
}

TEST(NkDtDecimalErrors, EveryComparisonRefusesAMissingValueByItsOwnName) {
    const NkDtDecimal missing(NkDtWmMissing);
    expectComparisons(missing, decimal("1"), "NkDtDecimal&", NkDtErrUndefiniert, TRUE, 0);
    expectComparisons(decimal("1"), missing, "NkDtDecimal&", NkDtErrUndefiniert, TRUE, 0);
    expectComparisons(missing, 1, "INT", NkDtErrUndefiniert, TRUE, 0);
    expectComparisons(missing, 1.0, "double", NkDtErrUndefiniert, TRUE, 0);
    expectComparisons(missing, kNoNumber, "double", NkDtErrUndefiniert, TRUE, 0);
}

TEST(NkDtDecimalErrors, EveryComparisonWithADoubleThatIsNoDecimalIsReplacedAndNotLogged) {
    for (const NkDtDecimal& value : {decimal("1"), NkDtDecimal(NkDtWmNull)}) {
        expectComparisons(value, kNoNumber, "double", NkDtErrFolgefehler, FALSE, NkDtErrDezimal);
        expectComparisons(value, -1e29, "double", NkDtErrFolgefehler, FALSE, NkDtErrDezimal);
    }
}

TEST(NkDtDecimalErrors, DivisionOfAPlainNumberReplacesByTheNameOfTheFriends) {
    const std::string friends = cp1252("Friend-Operatoren für NkDtDecimal");
    const NkDtDecimal tiny("0.0000000000000000000000000001");
    const NkDtDecimal null(NkDtWmNull);
    const char* const module = ".\\Dtdecope.cc";
    const char* const whole = "operator/(INT,NkDtDecimal&)";
    const char* const floating = "operator/(double,NkDtDecimal&)";
    const ULONG number = NkDtErrFolgefehler;
    const ULONG cause = NkDtErrDezimal;
    expectOrigins(
        {{"9 / tiny", [&] { static_cast<void>(9 / tiny); }, number, module, friends, whole, FALSE, cause},
         {"9.0 / tiny", [&] { static_cast<void>(9.0 / tiny); }, number, module, friends, floating, FALSE,
          cause},
         {"NaN / 1", [&] { static_cast<void>(kNoNumber / decimal("1")); }, number, module, friends, floating,
          FALSE, cause},
         {"NaN / null", [&] { static_cast<void>(kNoNumber / null); }, number, module, friends, floating,
          FALSE, cause}});
    EXPECT_EQ(describe(kNoNumber / NkDtDecimal(NkDtWmMissing)), "0 missing");
}

TEST(NkDtDecimalErrors, ConversionsTellTheirNames) {
    const char* const module = ".\\Dtdecfkt.cc";
    const char* const show = "ConvToOFL(NkFormat*)";
    const char* const read = "SetFromOFL(LPCTSTR,NkFormat*)";
    const char* const external = "SetFromExtern(NkDtString*,BOOL,USHORT)";
    const NkDtString good("1E+000");
    const NkDtString bad("1");
    const NkDtString undefined(NkDtWmNull);
    const NkDtDecimal large = tooLarge();
    NkDtDecimal value("1.5");
    expectOrigins({{"foreign format", [&] { static_cast<void>(value.ConvToOFL(&kText)); }, NkDtErrFolgefehler,
                    module, "NkDtDecimal", show, FALSE, NkFoFehlerArt},
                   {"foreign format", [&] { value.SetFromOFL("1", &kText); }, NkDtErrFolgefehler, module,
                    "NkDtDecimal", read, FALSE, NkFoFehlerArt},
                   {"no number", [&] { value.SetFromOFL("x"); }, NkDtErrFolgefehler, module, "NkDtDecimal",
                    read, FALSE, NkDtErrFormatUnzulaessig},
                   {"version", [&] { value.SetFromExtern(&good, TRUE, 101); }, NkDtErrVersion, module,
                    "NkDtDecimal", external},
                   {"definedness", [&] { value.SetFromExtern(&undefined, TRUE, 100); }, NkDtErrDefiniertheit,
                    module, "NkDtDecimal", external},
                   {"form", [&] { value.SetFromExtern(&bad, TRUE, 100); }, NkDtErrFolgefehler, module,
                    "NkDtDecimal", external, FALSE, NkDtErrExtern},
                   {"GetValue", [&] { static_cast<void>(large.GetValue()); }, NkDtErrFolgefehler, module,
                    "NkDtDecimal", "GetValue()", FALSE, NkDtErrDezimal},
                   {"no buffer", [&] { value.DecimalToAscii(nullptr); }, NkDtErrInitialwert, module,
                    "NkDtDecimal", "DecimalToAscii(LPCTSTR)"}});
    EXPECT_EQ(describe(value), "1.5 defined");
}

TEST(NkDtDecimalErrors, AFailureLeavesNumberPlacesDefinednessAndFlagAsTheyWere) {
    const Named operations[] = {
        {"+= NaN", [](auto& d) { d += kNoNumber; }},
        {"-= 1e30", [](auto& d) { d -= 1e30; }},
        {"= NaN", [](auto& d) { d = kNoNumber; }},
        {"SetFromSQL", [](auto& d) { d.SetFromSQL("1.2.3"); }},
        {"SetFromSQL too long", [](auto& d) { d.SetFromSQL("1234567890123456789012345678901234567.89"); }},
        {"SetFromSQL too large", [](auto& d) { d.SetFromSQL("039614081257132168796771975168"); }},
        {"SetFromSQL of null", [](auto& d) { d.SetFromSQL(nullptr); }},
        {"SetFromOFL", [](auto& d) { d.SetFromOFL("1,5"); }},
        {"SetFromOFL by a format", [](auto& d) { d.SetFromOFL("1", &kText); }},
        {"SetFromRecordSet",
         [](auto& d) {
             CRecordset rs;
             const CString field("1-");
             rs.SetFieldNull(&field, FALSE);
             d.SetFromRecordSet(rs, field);
         }},
        {"Assign", [](auto& d) { d.Assign(NkDtLong(1)); }},
        {"text", [](auto& d) { d = NkDtDecimal("1a"); }},
    };
    for (const Named& each : operations) {
        SCOPED_TRACE(each.name);
        const auto& operation = each.operation;
        for (NkDtDecimal value : {decimal("1.50"), inMode(decimal("1.50"), NkDtWmDefined),
                                  NkDtDecimal(NkDtWmNull), undefinedInModeTwo("5.0")}) {
            for (const BOOL modified : {FALSE, TRUE}) {
                value.SetModified(modified);
                const NkDtDecimal before(value);
                EXPECT_NE(errorOf([&] { operation(value); }), nullptr);
                EXPECT_EQ(describe(value), describe(before));
                EXPECT_EQ(value.GetPrecision(), before.GetPrecision());
                EXPECT_EQ(value.GetWorkingMode(), before.GetWorkingMode());
            }
        }
    }
}

TEST(NkDtDecimalErrors, AnOverflowOfTheNumberItselfChangesNothing) {
    const Named operations[] = {
        {"+= 1", [](auto& d) { d += 1; }},
        {"+= value", [](auto& d) { d += decimal("1"); }},
        {"++", [](auto& d) { d++; }},
        {"Round", [](auto& d) { d.Round(1, NkDtDecimal::RundenVonNull); }},
        {"Round to 0.05", [](auto& d) { d.Round(1, NkDtDecimal::RundenAuf005); }},
    };
    for (const Named& each : operations) {
        SCOPED_TRACE(each.name);
        const auto& operation = each.operation;
        NkDtDecimal value(kLargest);
        expectError(NkDtErrDezimal, [&] { operation(value); });
        EXPECT_EQ(describe(value), "39614081257132168796771975167 defined");
    }
}

// --- Rounding -------------------------------------------------------------------------------------------

TEST(NkDtDecimalRounding, EveryOtherWayIsHalfAwayFromZero) {
    for (const int way : {0, -1, 6, 99, std::numeric_limits<int>::min()}) {
        const auto round = [way](auto& d) { d.Round(-1, static_cast<NkDtDecimal::Rundungsart>(way)); };
        EXPECT_EQ(after(decimal("0.25"), round), "0.3 defined modified");
        EXPECT_EQ(after(decimal("-0.25"), round), "-0.3 defined modified");
        EXPECT_EQ(after(decimal("0.249"), round), "0.2 defined modified");
    }
}

TEST(NkDtDecimalRounding, AsksForThePlacesThatAreHeldNotForThoseThatCount) {
    const auto round = [](auto& d) { d.Round(-1, NkDtDecimal::RundenKaufmaennisch); };
    EXPECT_EQ(after(decimal("1.2"), round), "1.2 defined");
    EXPECT_EQ(after(decimal("1.20"), round), "1.2 defined modified");
    EXPECT_EQ(after(decimal("0.00"), round), "0 defined modified");
}

TEST(NkDtDecimalRounding, TakesEveryPowerOfTen) {
    const auto round = [](SHORT power, NkDtDecimal::Rundungsart way) {
        return [=](NkDtDecimal& d) { d.Round(power, way); };
    };
    EXPECT_EQ(after(decimal("155.5"), round(1, NkDtDecimal::RundenKaufmaennisch)), "160 defined modified");
    EXPECT_EQ(after(decimal("155.5"), round(3, NkDtDecimal::RundenAufwaerts)), "1000 defined modified");
    EXPECT_EQ(after(decimal("-155.5"), round(3, NkDtDecimal::RundenAufwaerts)), "0 defined modified");
    EXPECT_EQ(after(decimal("155.5"), round(32767, NkDtDecimal::RundenZurNull)), "0 defined modified");
    EXPECT_EQ(after(decimal("155.5"), round(-32768, NkDtDecimal::RundenVonNull)), "155.5 defined");
    NkDtDecimal value("155.5");
    expectError(NkDtErrDezimal, [&] { value.Round(32767, NkDtDecimal::RundenVonNull); });
    EXPECT_EQ(describe(value), "155.5 defined");
}

TEST(NkDtDecimalRounding, ToStepsOf005TakesAWholeNumberIfThePowerIsAboveIt) {
    const auto round = [](SHORT power) {
        return [=](NkDtDecimal& d) { d.Round(power, NkDtDecimal::RundenAuf005); };
    };
    EXPECT_EQ(after(decimal("7"), round(0)), "7 defined");
    EXPECT_EQ(after(decimal("7"), round(1)), "7 defined modified");
    EXPECT_EQ(after(decimal("-7"), round(1)), "-7.05 defined modified");
    EXPECT_EQ(after(decimal("0.0"), round(0)), "0 defined modified");
    EXPECT_EQ(after(decimal("-0.04"), round(0)), "0 defined modified");
}

// --- Whole numbers --------------------------------------------------------------------------------------

TEST(NkDtDecimalWhole, AnIntegerPartAtTheBoundsOfTheTypeIsCompared) {
    EXPECT_EQ(after(decimal("2147483647.9"), [](auto& d) { d = 2147483647; }), "2147483647 defined");
    EXPECT_EQ(after(decimal("2147483648.1"), [](auto& d) { d = 2147483647; }), "2147483647 defined modified");
    EXPECT_EQ(after(decimal("-2147483648.9"), [](auto& d) { d = std::numeric_limits<INT>::min(); }),
              "-2147483648 defined");
    EXPECT_EQ(after(decimal("-0.9"), [](auto& d) { d = 0; }), "0 defined");
    EXPECT_EQ(after(tooLarge(), [](auto& d) { d = 5; }), "5 defined modified");
}

TEST(NkDtDecimalWhole, ZeroLessAValueHasItsPlaces) {
    const NkDtDecimal value("2.50");
    EXPECT_EQ(describe(0 - value), "-2.5 defined");
    EXPECT_EQ((0 - value).GetPrecision(), 2);
    EXPECT_EQ((0 - decimal("0.00")).GetPrecision(), 2);
}

}  // namespace
