// The conversions that every value class has: user-interface text, SQL, external text, recordset, archive.

#include <nkdt/NkDt.h>
#include <nkfo/NkFormat.h>
#include <nkfw/Recordset.h>

#include <functional>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ValueTesting.h"

namespace {

using namespace valuetest;

NkFormat numbers(ULONG most, FormatTausenderTrenner thousands) {
    return NkFormat(most, 0, FormatDezimalTrennerOhne, thousands, FormatVorzeichenVorn,
                    FormatVorzeichenNurMinus, 0, '0', 0, '0');
}

NkFormat realNumbers(ULONG most, FormatDezimalTrenner decimal, FormatTausenderTrenner thousands) {
    return NkFormat(most, 4, decimal, thousands, FormatVorzeichenVorn, FormatVorzeichenNurMinus, 0, '0', 0,
                    '0');
}

NkFormat durations(ULONG most, FormatZeitDarstellung display) {
    return NkFormat(FormatZeitArtDauer, display, FormatVorzeichenVorn, FormatVorzeichenNurMinus, most, 0,
                    '0');
}

const NkFormat kPoints = numbers(20, FormatTausenderTrennerPunkt);
const NkFormat kBlanks = numbers(20, FormatTausenderTrennerLeerzeichen);
const NkFormat kOneDigit = numbers(1, FormatTausenderTrennerOhne);
const NkFormat kRealPoints = realNumbers(20, FormatDezimalTrennerPunkt, FormatTausenderTrennerKomma);
const NkFormat kRealBlanks = realNumbers(20, FormatDezimalTrennerKomma, FormatTausenderTrennerLeerzeichen);
const NkFormat kSeconds = durations(7, FormatZeitDarstellungSekunden);
const NkFormat kHundredths = durations(7, FormatZeitDarstellungHundertstel);
const NkFormat kOneDigitDuration = durations(1, FormatZeitDarstellungMinuten);
const NkFormat kSlashes(FormatDatumArtTagMonatJahr, FormatDatumTrennerSchraegstrich,
                        FormatDatumJahrVierstellig, FormatDatumMonatZahl, 1, '0');
const NkFormat kDashes(FormatDatumArtJahrMonatTag, FormatDatumTrennerBindestrich, FormatDatumJahrVierstellig,
                       FormatDatumMonatZahl, 1, '0');
const NkFormat kStars(10, kulNkFoValidAll, FormatAuffuellenAmEnde, '*');
const NkFormat kDots(10, kulNkFoValidAll, FormatAuffuellenAmAnfang, '.');
const NkFormat kOneDigitCharacter(1, 1, FormatAuffuellenNicht, ' ');
const NkFormat kDigits(FormatModusZiffern, 1031);
const NkFormat kLetters(FormatModusBuchstaben, 1031);
const NkFormat kEnglish(FormatModusWorte, 1033);
const NkFormat kThreeCharacters(3, kulNkFoValidAll, FormatAuffuellenNicht, ' ');

/// How the formats show the first sample; one format is of another kind, one is too narrow for the sample.
template <class Value>
struct Formats {
    static const NkFormat& given() { return kPoints; }
    static const NkFormat& own() { return kBlanks; }
    static const NkFormat& foreign() { return kStars; }
    static const NkFormat& narrow() { return kOneDigit; }
};
struct RealFormats {
    static const NkFormat& given() { return kRealPoints; }
    static const NkFormat& own() { return kRealBlanks; }
    static const NkFormat& foreign() { return kStars; }
    static const NkFormat& narrow() { return kOneDigit; }
};
template <>
struct Formats<NkDtDouble> : RealFormats {};
template <>
struct Formats<NkDtDecimal> : RealFormats {};
template <>
struct Formats<NkDtTime> {
    static const NkFormat& given() { return kSeconds; }
    static const NkFormat& own() { return kHundredths; }
    static const NkFormat& foreign() { return kStars; }
    static const NkFormat& narrow() { return kOneDigitDuration; }
};
struct DateFormats {
    static const NkFormat& given() { return kSlashes; }
    static const NkFormat& own() { return kDashes; }
    static const NkFormat& foreign() { return kStars; }
    static const NkFormat& narrow() { return kSlashes; }  // shows every date, but does not read points
};
template <>
struct Formats<NkDtDateTime> : DateFormats {};
template <>
struct Formats<NkDtDateZp> : DateFormats {};
template <>
struct Formats<NkDtString> {
    static const NkFormat& given() { return kStars; }
    static const NkFormat& own() { return kDots; }
    static const NkFormat& foreign() { return kPoints; }
    static const NkFormat& narrow() { return kThreeCharacters; }
};
template <>
struct Formats<NkDtChar> {
    static const NkFormat& given() { return kStars; }
    static const NkFormat& own() { return kDots; }
    static const NkFormat& foreign() { return kPoints; }
    static const NkFormat& narrow() { return kOneDigitCharacter; }
};
template <>
struct Formats<NkDtBool> {
    static const NkFormat& given() { return kDigits; }
    static const NkFormat& own() { return kLetters; }
    static const NkFormat& foreign() { return kPoints; }
    static const NkFormat& narrow() { return kEnglish; }
};

template <class Value>
struct Shown;
template <>
struct Shown<NkDtLong> {
    static constexpr const char* given = "2.147.483.647";
    static constexpr const char* own = "2 147 483 647";
};
template <>
struct Shown<NkDtShort> {
    static constexpr const char* given = "32.767";
    static constexpr const char* own = "32 767";
};
template <>
struct Shown<NkDtDouble> {
    static constexpr const char* given = "1,234.5";
    static constexpr const char* own = "1 234,5";
};
template <>
struct Shown<NkDtDecimal> {
    static constexpr const char* given = "1,234.50";
    static constexpr const char* own = "1 234,50";
};
template <>
struct Shown<NkDtTime> {
    static constexpr const char* given = "25:30:00";
    static constexpr const char* own = "25,50";
};
template <>
struct Shown<NkDtDateTime> {
    static constexpr const char* given = "05/03/2004 14:07:00";
    static constexpr const char* own = "2004-03-05 14:07:00";
};
template <>
struct Shown<NkDtDateZp> {
    static constexpr const char* given = "05/03/2004";
    static constexpr const char* own = "2004-03-05";
};
template <>
struct Shown<NkDtString> {
    static constexpr const char* given = "M\xFCller****";
    static constexpr const char* own = "....M\xFCller";
};
template <>
struct Shown<NkDtChar> {
    static constexpr const char* given = "\xFC*********";
    static constexpr const char* own = ".........\xFC";
};
template <>
struct Shown<NkDtBool> {
    static constexpr const char* given = "1";
    static constexpr const char* own = "J";
};

/// Where the refusal of a user-interface text comes from.
template <class Value>
struct OflOrigin {
    static constexpr const char* shownBy = Sample<Value>::name;
    static constexpr const char* readIn = Forms<Value>::module;
    static constexpr const char* read = "SetFromOFL(LPCTSTR,NkFormat*)";
};
template <>
struct OflOrigin<NkDtDateZp> {
    static constexpr const char* shownBy = Sample<NkDtDateTime>::name;
    static constexpr const char* readIn = Sample<NkDtDateZp>::module;
    static constexpr const char* read = "SetFromOFL(LPCTSTR,NkFormat *)";
};

/// A format refuses no truth value, and no date that its setters took.
template <class Value>
constexpr bool canBeRefused = !std::is_same_v<Value, NkDtBool> && !std::is_base_of_v<NkDtDateTime, Value>;

template <class Value>
class Conversion : public ::testing::Test {
  protected:
    /// Defined with the sample, undefined, and undefined in mode 2; unmodified.
    static std::vector<Value> states() {
        std::vector<Value> values;
        for (const NkDtWorkingMode mode : kStoredModes) {
            values.push_back(holding(mode));
            values.push_back(undefined(mode));
        }
        return values;
    }
    static Value holding(NkDtWorkingMode mode) {
        Value value(mode);
        value = Sample<Value>::one();
        value.SetModified(FALSE);
        return value;
    }
    static Value undefined(NkDtWorkingMode mode) {
        Value value = emptyIn<Value>(mode);
        // In mode 2 a value is constructed defined; a load does not ask for the mode.
        Value nothing(NkDtWmNull);
        load(value, stored(nothing));
        value.SetModified(FALSE);
        return value;
    }
    /// What becomes of the value when it is cleared.
    static std::string cleared(Value value) {
        value.Clear();
        return describe(value);
    }
    /// What becomes of the value when its definedness alone is set.
    static std::string marked(const Value& value) {
        std::string text = describe(value);
        const std::string state = stateOf(value);
        text.resize(text.size() - state.size());
        return text + (value.IsDefined() && !value.IsModified() ? "defined" : "defined modified");
    }
};

TYPED_TEST_SUITE(Conversion, ValueClasses, ClassNames);

/// The classes that are marked defined before their external text is looked at.
template <class Value>
class MarkingConversion : public Conversion<Value> {};

using MarkingClasses = ::testing::Types<NkDtLong, NkDtShort, NkDtDouble, NkDtDecimal, NkDtTime, NkDtDateTime,
                                        NkDtDateZp, NkDtString, NkDtChar>;
TYPED_TEST_SUITE(MarkingConversion, MarkingClasses, ClassNames);

/// What the classes have in common whose texts can be malformed.
template <class Value>
class NumberConversion : public Conversion<Value> {};

using NumberClasses = ::testing::Types<NkDtLong, NkDtShort>;
TYPED_TEST_SUITE(NumberConversion, NumberClasses, ClassNames);

// --- User-interface text ----------------------------------------------------------------------------

TYPED_TEST(Conversion, ShowsAnUndefinedValueAsTheEmptyTextWithoutAskingAFormat) {
    using F = Formats<TypeParam>;
    for (const NkDtWorkingMode mode : kStoredModes) {
        TypeParam value = this->undefined(mode);
        EXPECT_EQ(value.ConvToOFL(), CString(""));
        EXPECT_EQ(value.ConvToOFL(&F::given()), CString(""));
        EXPECT_EQ(value.ConvToOFL(&F::foreign()), CString(""));  // it would refuse
        value.SetFormat(&F::foreign());
        EXPECT_EQ(value.ConvToOFL(), CString(""));
    }
}

TYPED_TEST(Conversion, ShowsAValueByTheFormatGivenElseByItsOwnElseByTheDefault) {
    using F = Formats<TypeParam>;
    for (const NkDtWorkingMode mode : kStoredModes) {
        TypeParam value = this->holding(mode);
        EXPECT_EQ(value.ConvToOFL(), CString(Forms<TypeParam>::oneShown));
        EXPECT_EQ(value.ConvToOFL(&F::given()), CString(Shown<TypeParam>::given));
        value.SetFormat(&F::own());
        EXPECT_EQ(value.ConvToOFL(), CString(Shown<TypeParam>::own));
        EXPECT_EQ(value.ConvToOFL(&F::given()), CString(Shown<TypeParam>::given));
        EXPECT_EQ(stateOf(value), "defined");
    }
}

TYPED_TEST(Conversion, ReadsATextByTheFormatGivenElseByItsOwnElseByTheDefault) {
    using F = Formats<TypeParam>;
    for (TypeParam& before : this->states()) {
        const auto read = [&](LPCTSTR text, const NkFormat* given, const NkFormat* own) {
            TypeParam value(before);
            value.SetFormat(own);
            value.SetFromOFL(text, given);
            EXPECT_EQ(textOf(value), Sample<TypeParam>::oneText);
            EXPECT_EQ(stateOf(value), before.IsDefined() ? "defined" : "defined modified");
            EXPECT_EQ(value.GetWorkingMode(), before.GetWorkingMode());
            EXPECT_EQ(value.GetFormat(), own);
        };
        read(Forms<TypeParam>::oneShown, nullptr, nullptr);
        read(Shown<TypeParam>::given, &F::given(), nullptr);
        read(Shown<TypeParam>::own, nullptr, &F::own());
        read(Shown<TypeParam>::given, &F::given(), &F::own());
        read(Shown<TypeParam>::given, &F::given(), &F::foreign());
    }
}

TYPED_TEST(Conversion, IsModifiedByAnotherTextOnly) {
    TypeParam value = Sample<TypeParam>::one();
    value.SetFromOFL(Forms<TypeParam>::oneShown);
    EXPECT_EQ(stateOf(value), "defined");
    value.SetFromOFL(Forms<TypeParam>::otherShown);
    EXPECT_EQ(stateOf(value), "defined modified");
    EXPECT_EQ(textOf(value), Sample<TypeParam>::otherText);
}

TYPED_TEST(Conversion, IsClearedByANullAndByAnEmptyText) {
    using F = Formats<TypeParam>;
    for (TypeParam& before : this->states()) {
        for (const LPCTSTR text : {LPCTSTR{nullptr}, LPCTSTR{""}}) {
            for (const NkFormat* const format : {static_cast<const NkFormat*>(nullptr), &F::foreign()}) {
                TypeParam value(before);
                value.SetFromOFL(text, format);
                EXPECT_EQ(describe(value), this->cleared(before));
                EXPECT_EQ(value.GetWorkingMode(), before.GetWorkingMode());
            }
        }
    }
}

TYPED_TEST(Conversion, ReplacesWhatAFormatRefusesToShow) {
    using F = Formats<TypeParam>;
    for (const NkDtWorkingMode mode : kStoredModes) {
        TypeParam value = this->holding(mode);
        const std::string before = describe(value);
        if constexpr (canBeRefused<TypeParam>)
            expectReplaced(NkFoFehlerWert, [&] { value.ConvToOFL(&F::narrow()); });
        const ErrorPtr error = expectReplaced(NkFoFehlerArt, [&] { value.ConvToOFL(&F::foreign()); });
        EXPECT_STREQ(error->GetSourceFile(), Forms<TypeParam>::module);
        EXPECT_STREQ(error->GetClassText(), OflOrigin<TypeParam>::shownBy);
        EXPECT_STREQ(error->GetFunctionText(), "ConvToOFL(NkFormat*)");
        value.SetFormat(&F::foreign());
        expectReplaced(NkFoFehlerArt, [&] { value.ConvToOFL(); });
        EXPECT_EQ(describe(value), before);
    }
}

TYPED_TEST(Conversion, ReplacesWhatAFormatRefusesToReadAndStaysAsItWas) {
    using F = Formats<TypeParam>;
    for (TypeParam& value : this->states()) {
        const std::string before = describe(value);
        const ErrorPtr error = expectReplaced(
            NkFoFehlerText, [&] { value.SetFromOFL(Forms<TypeParam>::otherShown, &F::narrow()); });
        EXPECT_STREQ(error->GetSourceFile(), OflOrigin<TypeParam>::readIn);
        EXPECT_STREQ(error->GetClassText(), Sample<TypeParam>::name);
        EXPECT_STREQ(error->GetFunctionText(), OflOrigin<TypeParam>::read);
        EXPECT_EQ(describe(value), before);
        expectReplaced(NkFoFehlerArt, [&] { value.SetFromOFL("1", &F::foreign()); });
        EXPECT_EQ(describe(value), before);
    }
}

TYPED_TEST(Conversion, TellsTheFormatsReasonAsTheCause) {
    TypeParam value;
    const ErrorPtr error = expectReplaced(NkFoFehlerText, [&] {
        value.SetFromOFL(Forms<TypeParam>::otherShown, &Formats<TypeParam>::narrow());
    });
    const std::string cause = error->GetCauseText();
    const std::string start = "\"" + std::string(Forms<TypeParam>::otherShown).substr(0, 3);
    EXPECT_EQ(cause.substr(0, start.size()), start);
    EXPECT_NE(cause.find("an Position"), std::string::npos) << cause;
}

// --- SQL ----------------------------------------------------------------------------------------------

TYPED_TEST(Conversion, WritesAnUndefinedValueAsTheWordNull) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        const NkDtString literal = this->undefined(mode).ConvToSQL();
        EXPECT_STREQ(literal.GetValue(), "NULL");
        EXPECT_EQ(stateOf(literal), "defined");
    }
}

TYPED_TEST(Conversion, WritesADefinedValueAsALiteral) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        const TypeParam value = this->holding(mode);
        const DefaultMode scope(mode);
        const NkDtString literal = value.ConvToSQL();
        EXPECT_STREQ(literal.GetValue(), Sample<TypeParam>::oneSql);
        EXPECT_EQ(stateOf(literal), "defined");
        EXPECT_EQ(literal.GetWorkingMode(), mode);
    }
}

TYPED_TEST(Conversion, TakesANativeValueAndBecomesDefined) {
    for (TypeParam& before : this->states()) {
        TypeParam same(before);
        Sample<TypeParam>::setFromSql(same, true);
        EXPECT_EQ(textOf(same), Sample<TypeParam>::oneText);
        EXPECT_EQ(stateOf(same), before.IsDefined() ? "defined" : "defined modified");
        TypeParam other(before);
        Sample<TypeParam>::setFromSql(other, false);
        EXPECT_EQ(textOf(other), Sample<TypeParam>::otherText);
        EXPECT_EQ(stateOf(other), "defined modified");
        EXPECT_EQ(other.GetWorkingMode(), before.GetWorkingMode());
    }
}

// --- External text ------------------------------------------------------------------------------------

TYPED_TEST(Conversion, WritesTheStoredValueWithItsDefinednessAndVersion100) {
    for (const TypeParam& value : this->states()) {
        BOOL defined = -1;
        USHORT version = 0;
        const NkDtString text = value.ConvToExtern(defined, version);
        EXPECT_EQ(defined, value.IsDefined());
        EXPECT_EQ(version, 100);
        EXPECT_STREQ(static_cast<LPCTSTR>(text),
                     value.IsDefined() ? Forms<TypeParam>::oneExtern : Forms<TypeParam>::undefinedExtern);
    }
}

TYPED_TEST(Conversion, RefusesAnotherVersionBeforeAnythingElse) {
    const NkDtString good = Forms<TypeParam>::otherExtern;
    const NkDtString undefined(NkDtWmNull);
    for (TypeParam& value : this->states()) {
        const std::string before = describe(value);
        for (const USHORT version : {USHORT{0}, USHORT{99}, USHORT{101}, USHORT{65535}}) {
            for (const NkDtString* const text :
                 {&good, &undefined, static_cast<const NkDtString*>(nullptr)}) {
                for (const BOOL flag : {FALSE, TRUE}) {
                    expectRefused<TypeParam>(NkDtErrVersion, "Falsche Versionsnummer",
                                             [&] { value.SetFromExtern(text, flag, version); });
                    EXPECT_EQ(describe(value), before);
                }
            }
        }
    }
}

TYPED_TEST(Conversion, IsClearedByAnExternalValueThatIsNotDefined) {
    const NkDtString text = Forms<TypeParam>::otherExtern;
    for (const TypeParam& before : this->states()) {
        for (const BOOL flag : {0, 2, -1, 100}) {
            TypeParam value(before);
            value.SetFromExtern(&text, flag, 100);
            EXPECT_EQ(describe(value), this->cleared(before)) << flag;
        }
        TypeParam value(before);
        value.SetFromExtern(nullptr, TRUE, 100);
        EXPECT_EQ(describe(value), this->cleared(before));
    }
}

TYPED_TEST(MarkingConversion, IsMarkedDefinedBeforeAnUndefinedTextIsRefused) {
    const NkDtString undefined(NkDtWmNull);
    for (const TypeParam& before : this->states()) {
        TypeParam value(before);
        expectRefused<TypeParam>(NkDtErrDefiniertheit, "Inkonsistente Definiertheit",
                                 [&] { value.SetFromExtern(&undefined, TRUE, 100); });
        EXPECT_EQ(describe(value), this->marked(before));
    }
}

TYPED_TEST(NumberConversion, IsMarkedDefinedBeforeAMalformedTextIsRefused) {
    const NkDtString malformed("12x");
    const NkDtString large("99999999999");
    for (const TypeParam& before : this->states()) {
        TypeParam value(before);
        expectReplaced(NkDtErrInitialwert, [&] { value.SetFromExtern(&malformed, TRUE, 100); });
        EXPECT_EQ(describe(value), this->marked(before));
        TypeParam another(before);
        expectReplaced(NkDtErrWertebereich, [&] { another.SetFromExtern(&large, TRUE, 100); });
        EXPECT_EQ(describe(another), this->marked(before));
    }
}

TYPED_TEST(Conversion, TakesAnExternalText) {
    const NkDtString text = Forms<TypeParam>::oneExtern;
    for (const TypeParam& before : this->states()) {
        TypeParam value(before);
        value.SetFromExtern(&text, TRUE, 100);
        EXPECT_EQ(textOf(value), Sample<TypeParam>::oneText);
        EXPECT_EQ(stateOf(value), before.IsDefined() ? "defined" : "defined modified");
        EXPECT_EQ(value.GetWorkingMode(), before.GetWorkingMode());
    }
}

TYPED_TEST(Conversion, ComesBackFromItsExternalText) {
    for (const TypeParam& value : this->states()) {
        BOOL defined = FALSE;
        USHORT version = 0;
        const NkDtString text = value.ConvToExtern(defined, version);
        TypeParam back(NkDtWmNull);
        back.SetFromExtern(&text, defined, version);
        EXPECT_EQ(textOf(back), textOf(value));
        EXPECT_EQ(back.IsDefined(), value.IsDefined());
    }
}

// --- Recordset ------------------------------------------------------------------------------------------

TYPED_TEST(Conversion, IsClearedByANullFieldWhateverStandsInIt) {
    using Field = typename Sample<TypeParam>::Field;
    for (const TypeParam& before : this->states()) {
        CRecordset rs;
        const Field field = Sample<TypeParam>::otherField();
        const Field otherField = Sample<TypeParam>::otherField();
        rs.SetFieldNull(&field, TRUE);
        rs.SetFieldNull(&otherField, FALSE);
        TypeParam value(before);
        value.SetFromRecordSet(rs, field);
        EXPECT_EQ(describe(value), this->cleared(before));
    }
}

TYPED_TEST(Conversion, TakesAFieldThatIsNotNull) {
    using Field = typename Sample<TypeParam>::Field;
    for (const TypeParam& before : this->states()) {
        CRecordset rs;
        const Field same = Sample<TypeParam>::oneField();
        const Field other = Sample<TypeParam>::otherField();
        rs.SetFieldNull(&other, FALSE);
        TypeParam value(before);
        value.SetFromRecordSet(rs, same);
        EXPECT_EQ(textOf(value), Sample<TypeParam>::oneText);
        EXPECT_EQ(stateOf(value), before.IsDefined() ? "defined" : "defined modified");
        EXPECT_EQ(value.GetWorkingMode(), before.GetWorkingMode());
        value.SetFromRecordSet(rs, other);
        EXPECT_EQ(textOf(value), Sample<TypeParam>::otherText);
        EXPECT_EQ(stateOf(value), "defined modified");
    }
}

TYPED_TEST(Conversion, WritesADefinedValueIntoAFieldAndMarksItNotNull) {
    using Field = typename Sample<TypeParam>::Field;
    for (const NkDtWorkingMode mode : kStoredModes) {
        CRecordset rs;
        Field field = Sample<TypeParam>::otherField();
        rs.SetFieldNull(&field, TRUE);
        const TypeParam value = this->holding(mode);
        value.ConvToRecordSet(rs, field);
        EXPECT_EQ(field, Sample<TypeParam>::oneField());
        EXPECT_EQ(rs.IsFieldNull(&field), FALSE);
        EXPECT_EQ(stateOf(value), "defined");
    }
}

TYPED_TEST(Conversion, MarksAFieldNullAndLeavesItForAnUndefinedValue) {
    using Field = typename Sample<TypeParam>::Field;
    for (const NkDtWorkingMode mode : kStoredModes) {
        CRecordset rs;
        Field field = Sample<TypeParam>::otherField();
        const Field untouched = Sample<TypeParam>::otherField();
        rs.SetFieldNull(&untouched, FALSE);
        const TypeParam value = this->undefined(mode);
        value.ConvToRecordSet(rs, field);
        EXPECT_EQ(field, Sample<TypeParam>::otherField());
        EXPECT_EQ(rs.IsFieldNull(&field), TRUE);
        EXPECT_EQ(rs.IsFieldNull(&untouched), FALSE);
    }
}

// --- Bounds ---------------------------------------------------------------------------------------------

TYPED_TEST(NumberConversion, ComesBackAtItsBoundsFromEveryRepresentation) {
    using Number = typename TypeParam::Value;
    using Limits = std::numeric_limits<Number>;
    for (const Number number : {Limits::min(), static_cast<Number>(Limits::min() + 1), Number{-1}, Number{0},
                                Number{1}, Limits::max()}) {
        TypeParam value{INT{number}};
        const auto check = [&](const char* representation, const std::function<void(TypeParam&)>& read) {
            TypeParam back;
            read(back);
            EXPECT_EQ(back.GetValue(), number) << representation;
        };
        check("user-interface text", [&](TypeParam& back) { back.SetFromOFL(value.ConvToOFL()); });
        check("SQL", [&](TypeParam& back) { back = TypeParam(value.ConvToSQL()); });
        check("external text", [&](TypeParam& back) {
            BOOL defined = FALSE;
            USHORT version = 0;
            const NkDtString text = value.ConvToExtern(defined, version);
            back.SetFromExtern(&text, defined, version);
        });
        check("recordset", [&](TypeParam& back) {
            CRecordset rs;
            typename Sample<TypeParam>::Field field = 5;
            value.ConvToRecordSet(rs, field);
            back.SetFromRecordSet(rs, field);
        });
        check("archive", [&](TypeParam& back) { load(back, stored(value)); });
        check("text", [&](TypeParam& back) { back = TypeParam(NkDtString(value)); });
    }
}

// --- Archive --------------------------------------------------------------------------------------------

TYPED_TEST(Conversion, ComesBackFromAnArchiveInItsOwnModeAndFormat) {
    using F = Formats<TypeParam>;
    for (TypeParam& value : this->states()) {
        for (const TypeParam& before : this->states()) {
            TypeParam back(before);
            back.SetFormat(&F::own());
            const bool same = textOf(back) == textOf(value) && back.IsDefined() == value.IsDefined();
            load(back, stored(value));
            EXPECT_EQ(textOf(back), textOf(value));
            EXPECT_EQ(back.IsDefined(), value.IsDefined());
            EXPECT_EQ(back.IsModified(), !same);
            EXPECT_EQ(back.GetWorkingMode(), before.GetWorkingMode());
            EXPECT_EQ(back.GetFormat(), &F::own());
        }
    }
}

TYPED_TEST(Conversion, IsNotChangedByStoring) {
    for (TypeParam& value : this->states()) {
        const std::string before = describe(value);
        stored(value);
        EXPECT_EQ(describe(value), before);
    }
}

TYPED_TEST(Conversion, KeepsAFlagThatWasSetWhenItIsLoadedUnchanged) {
    for (TypeParam& value : this->states()) {
        value.SetModified(TRUE);
        load(value, stored(value));
        EXPECT_TRUE(value.IsModified());
    }
}

TYPED_TEST(Conversion, StaysAsItWasWhenAnArchiveEndsInItsMiddle) {
    TypeParam undefined = this->undefined(NkDtWmNull);
    TypeParam other = Sample<TypeParam>::other();
    for (TypeParam* const source : {&undefined, &other}) {
        const Bytes whole = stored(*source);
        for (const TypeParam& state : this->states()) {
            for (const BOOL modified : {FALSE, TRUE}) {
                for (std::size_t length = 0; length < whole.size(); ++length) {
                    TypeParam value(state);
                    value.SetModified(modified);
                    const std::string before = describe(value);
                    const Bytes prefix(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
                    if constexpr (replacesErrors<TypeParam>) {
                        expectReplaced(NkDtErrFrameworkException, [&] { load(value, prefix); });
                    } else {
                        const int cause = expectException<CArchiveException>([&] { load(value, prefix); });
                        EXPECT_EQ(cause, CArchiveException::endOfFile);
                    }
                    EXPECT_EQ(describe(value), before) << length;
                }
            }
        }
    }
}

TYPED_TEST(Conversion, TellsTheExceptionOfAnArchiveThatFailed) {
    struct FullDisk : CMemFile {
        void Write(const void*, UINT) override { throw new CFileException(CFileException::diskFull); }
    } file;
    TypeParam value = Sample<TypeParam>::one();
    CArchive archive(&file, CArchive::store);
    value.Serialize(archive);
    EXPECT_EQ(expectException<CFileException>([&] { archive.Flush(); }), CFileException::diskFull);
    if constexpr (replacesErrors<TypeParam>) {
        expectReplaced(NkDtErrFrameworkException, [&] { value.Serialize(archive); });
    } else {
        EXPECT_EQ(expectException<CArchiveException>([&] { value.Serialize(archive); }),
                  CArchiveException::genericException);
    }
    EXPECT_EQ(stateOf(value), "defined");
}

}  // namespace
