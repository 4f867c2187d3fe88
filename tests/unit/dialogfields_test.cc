// Fields bound to values: what loading shows, what saving takes, and what it leaves alone.

#include <nkdt/DialogFields.h>
#include <nkdt/NkDt.h>
#include <nkfw/Exception.h>

#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/DialogFields.h"
#include "support/FrameworkExceptions.h"
#include "unit/ValueTesting.h"

using frameworktest::throws;

namespace {

using dialogtest::Field;
using valuetest::describe;
using valuetest::kStoredModes;
using valuetest::stateOf;
using valuetest::textOf;

constexpr int kFirst = 1;
constexpr int kSecond = 2;

/// What a person reads of the refusals: "2: Ziffer erwartet".
std::vector<std::string> told(const CDialogFields::Refusals& refusals) {
    std::vector<std::string> texts;
    for (const auto& refusal : refusals)
        texts.push_back(std::to_string(refusal.nID) + ": " + refusal.GetReason());
    return texts;
}
const std::vector<std::string> kNothing;

// --- Every class ----------------------------------------------------------------------------------

template <class Value>
class FieldOf : public ::testing::Test {
  protected:
    FieldOf() {
        dialog.AddEdit(kFirst);
        dialog.AddEdit(kSecond);
        fields.Bind(kFirst, value);
        fields.Bind(kSecond, other);
    }
    /// A defined value in the mode, not modified, shown in its control.
    void start(NkDtWorkingMode mode = NkDtWmMissing) {
        for (Value* const each : {&value, &other}) {
            each->SetWorkingMode(mode);
            *each = Field<Value>::value();
            each->SetModified(FALSE);
        }
        EXPECT_EQ(told(fields.Load(dialog)), kNothing);
    }
    void type(const char* text) { EXPECT_TRUE(dialog.SetDlgItemText(kFirst, text)); }
    std::vector<std::string> save() { return told(fields.Save(dialog)); }
    std::string shown() { return std::string(dialog.GetDlgItemText(kFirst).View()); }

    Value value;
    Value other;
    CMemoryDialog dialog;
    CDialogFields fields;
};

TYPED_TEST_SUITE(FieldOf, valuetest::ValueClasses, valuetest::ClassNames);

TYPED_TEST(FieldOf, UntouchedChangesNothing) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        this->start(mode);
        const std::string before = describe(this->value);
        EXPECT_EQ(this->shown(), Field<TypeParam>::shown);
        EXPECT_FALSE(this->fields.IsEdited(this->dialog));
        EXPECT_EQ(this->save(), kNothing);
        EXPECT_EQ(describe(this->value), before);
    }
}

TYPED_TEST(FieldOf, TakesWhatWasTyped) {
    using F = Field<TypeParam>;
    for (const NkDtWorkingMode mode : kStoredModes) {
        this->start(mode);
        this->type(F::typed);
        EXPECT_TRUE(this->fields.IsEdited(this->dialog, kFirst));
        EXPECT_FALSE(this->fields.IsEdited(this->dialog, kSecond));
        EXPECT_EQ(this->save(), kNothing);
        EXPECT_EQ(textOf(this->value), textOf(F::read()));
        EXPECT_EQ(stateOf(this->value), "defined modified");
        EXPECT_EQ(this->value.GetWorkingMode(), mode);
        EXPECT_EQ(stateOf(this->other), "defined");
    }
}

TYPED_TEST(FieldOf, EmptiedIsUndefinedAndModified) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        this->start(mode);
        TypeParam cleared(this->value);
        cleared.Clear();
        this->type("");
        EXPECT_EQ(this->save(), kNothing);
        EXPECT_EQ(describe(this->value), describe(cleared));
        EXPECT_TRUE(this->value.IsModified());
        EXPECT_EQ(this->value.IsDefined(), mode == NkDtWmDefined ? TRUE : FALSE);
    }
}

TYPED_TEST(FieldOf, ThatWasUndefinedTakesAText) {
    using F = Field<TypeParam>;
    TypeParam undefined(NkDtWmNull);
    CDialogFields single;
    single.Bind(kFirst, undefined);
    EXPECT_EQ(told(single.Load(this->dialog)), kNothing);
    EXPECT_EQ(this->shown(), "");
    EXPECT_EQ(told(single.Save(this->dialog)), kNothing);
    EXPECT_EQ(stateOf(undefined), "null");
    this->type(F::typed);
    EXPECT_EQ(told(single.Save(this->dialog)), kNothing);
    EXPECT_EQ(textOf(undefined), textOf(F::read()));
    EXPECT_EQ(stateOf(undefined), "defined modified");
    this->type("");
    EXPECT_EQ(told(single.Save(this->dialog)), kNothing);
    EXPECT_EQ(describe(undefined), describe(TypeParam(NkDtWmNull)));
}

TYPED_TEST(FieldOf, EditedBackAfterASavingHasItsFirstValueAgain) {
    using F = Field<TypeParam>;
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (const char* const between : {F::typed, ""}) {
            this->start(mode);
            const std::string before = describe(this->value);
            this->type(between);
            EXPECT_EQ(this->save(), kNothing);
            EXPECT_EQ(this->save(), kNothing) << "once more";
            EXPECT_TRUE(this->value.IsModified());
            this->type(F::shown);
            EXPECT_FALSE(this->fields.IsEdited(this->dialog));
            EXPECT_EQ(this->save(), kNothing);
            EXPECT_EQ(describe(this->value), before);
        }
    }
}

TYPED_TEST(FieldOf, RefusedChangesNoValueAtAll) {
    using F = Field<TypeParam>;
    for (const NkDtWorkingMode mode : kStoredModes) {
        this->start(mode);
        const std::string before = describe(this->value);
        this->value.SetFormat(nullptr);
        this->other.SetFormat(F::refusing());
        this->type(F::typed);
        this->dialog.SetDlgItemText(kSecond, F::refused);
        const CDialogFields::Refusals refusals = this->fields.Save(this->dialog);
        ASSERT_EQ(refusals.size(), 1U);
        EXPECT_EQ(refusals[0].nID, kSecond);
        EXPECT_STREQ(refusals[0].GetReason(), refusals[0].pError->GetCauseText());
        EXPECT_STRNE(refusals[0].GetReason(), "");
        EXPECT_EQ(describe(this->value), before);
        EXPECT_EQ(describe(this->other), before);
        EXPECT_EQ(this->other.GetFormat(), F::refusing());
        EXPECT_TRUE(this->fields.IsEdited(this->dialog, kFirst)) << "still to be saved";
        this->other.SetFormat(nullptr);
    }
}

TYPED_TEST(FieldOf, RefusedAfterASavingKeepsWhatThatOneTook) {
    using F = Field<TypeParam>;
    this->start();
    const std::string before = describe(this->value);
    this->type(F::typed);
    EXPECT_EQ(this->save(), kNothing);
    const std::string taken = describe(this->value);

    this->other.SetFormat(F::refusing());
    this->type(F::shown);
    this->dialog.SetDlgItemText(kSecond, F::refused);
    EXPECT_EQ(this->save().size(), 1U);
    EXPECT_EQ(describe(this->value), taken);

    this->dialog.SetDlgItemText(kSecond, F::shown);
    EXPECT_EQ(this->save(), kNothing);
    EXPECT_EQ(describe(this->value), before);
}

TYPED_TEST(FieldOf, IsReadByTheValuesOwnFormat) {
    using F = Field<TypeParam>;
    this->value.SetFormat(&F::format());
    this->start();
    EXPECT_EQ(this->shown(), F::formatted);
    const std::string before = describe(this->value);
    this->type("");
    EXPECT_EQ(this->save(), kNothing);
    this->type(F::formatted);
    EXPECT_EQ(this->save(), kNothing);
    EXPECT_EQ(describe(this->value), before);
    EXPECT_EQ(this->value.GetFormat(), &F::format());
}

TYPED_TEST(FieldOf, ThatWasModifiedBeforeStaysModified) {
    using F = Field<TypeParam>;
    this->start();
    this->value.SetModified(TRUE);
    EXPECT_EQ(this->save(), kNothing);
    EXPECT_TRUE(this->value.IsModified()) << "untouched";
    this->type(F::typed);
    EXPECT_EQ(this->save(), kNothing);
    this->type(F::shown);
    EXPECT_EQ(this->save(), kNothing);
    EXPECT_EQ(stateOf(this->value), "defined modified");
    EXPECT_EQ(textOf(this->value), textOf(F::value()));
}

// --- What counts as edited ------------------------------------------------------------------------

class Fields : public ::testing::Test {
  protected:
    Fields() {
        dialog.AddEdit(kFirst);
        dialog.AddEdit(kSecond);
        fields.Bind(kFirst, number);
        fields.Bind(kSecond, real);
        number.SetModified(FALSE);
        real.SetModified(FALSE);
    }
    void load() { EXPECT_EQ(told(fields.Load(dialog)), kNothing); }
    std::vector<std::string> save() { return told(fields.Save(dialog)); }

    NkDtLong number{5};
    NkDtDouble real{0.125};
    CMemoryDialog dialog;
    CDialogFields fields;
};

TEST_F(Fields, LoseNothingThatTheirTextDoesNotHold) {
    load();
    EXPECT_EQ(dialog.GetDlgItemText(kSecond), "0,13");
    EXPECT_TRUE(dialog.SetDlgItemText(kSecond, "7"));
    EXPECT_EQ(save(), kNothing);
    EXPECT_EQ(real.GetValue(), 7.0);
    EXPECT_TRUE(dialog.SetDlgItemText(kSecond, "0,13"));
    EXPECT_EQ(save(), kNothing);
    EXPECT_EQ(real.GetValue(), 0.125);
    EXPECT_FALSE(real.IsModified());
}

TEST_F(Fields, AreNotModifiedByTheSameValueInOtherWords) {
    load();
    EXPECT_TRUE(dialog.SetDlgItemText(kFirst, " 5"));
    EXPECT_TRUE(fields.IsEdited(dialog));
    EXPECT_EQ(save(), kNothing);
    EXPECT_EQ(number, 5);
    EXPECT_FALSE(number.IsModified());
}

TEST_F(Fields, CountAsEmptyBeforeTheyAreLoaded) {
    EXPECT_FALSE(fields.IsEdited(dialog));
    EXPECT_EQ(save(), kNothing);
    EXPECT_EQ(number, 5);
    EXPECT_TRUE(dialog.SetDlgItemText(kFirst, "6"));
    EXPECT_EQ(save(), kNothing);
    EXPECT_EQ(number, 6);
    EXPECT_EQ(real.GetValue(), 0.125);
}

TEST_F(Fields, ThatAreNotEditedLeaveTheValueToTheProgram) {
    load();
    number = 8;
    EXPECT_EQ(save(), kNothing);
    EXPECT_EQ(number, 8);
    EXPECT_TRUE(number.IsModified());
}

TEST_F(Fields, AreLoadedAgainFromTheValues) {
    load();
    EXPECT_TRUE(dialog.SetDlgItemText(kFirst, "6"));
    EXPECT_EQ(save(), kNothing);
    load();
    EXPECT_EQ(dialog.GetDlgItemText(kFirst), "6");
    EXPECT_FALSE(fields.IsEdited(dialog));
    EXPECT_TRUE(dialog.SetDlgItemText(kFirst, "7"));
    EXPECT_EQ(save(), kNothing);
    EXPECT_TRUE(dialog.SetDlgItemText(kFirst, "6"));
    EXPECT_EQ(save(), kNothing);
    EXPECT_EQ(number, 6);
}

TEST_F(Fields, KeptAsLoadedAreEditedNoMore) {
    load();
    EXPECT_TRUE(dialog.SetDlgItemText(kSecond, "7"));
    EXPECT_EQ(save(), kNothing);
    real.SetModified(FALSE);
    fields.KeepAsLoaded(dialog);
    EXPECT_FALSE(fields.IsEdited(dialog));
    EXPECT_EQ(dialog.GetDlgItemText(kSecond), "7");
    EXPECT_TRUE(dialog.SetDlgItemText(kSecond, "8"));
    EXPECT_EQ(save(), kNothing);
    EXPECT_TRUE(dialog.SetDlgItemText(kSecond, "7"));
    EXPECT_EQ(save(), kNothing);
    EXPECT_EQ(real.GetValue(), 7.0);
    EXPECT_FALSE(real.IsModified());
}

// --- Refusals -------------------------------------------------------------------------------------

TEST_F(Fields, AreAllToldWhenTheyRefuse) {
    load();
    EXPECT_TRUE(dialog.SetDlgItemText(kFirst, "5x"));
    EXPECT_TRUE(dialog.SetDlgItemText(kSecond, "zwei"));
    EXPECT_EQ(save(), (std::vector<std::string>{"1: \"5x\" an Position 2: unerwartetes Zeichen",
                                                "2: \"zwei\" an Position 1: Ziffer erwartet"}));
    EXPECT_EQ(describe(number), "5 defined");
}

TEST_F(Fields, ThatCannotBeShownAreToldAndLeftAlone) {
    dialog.SetTextLimit(kSecond, 3);
    EXPECT_EQ(told(fields.Load(dialog)),
              std::vector<std::string>{"2: Folgefehler aufgrund einer MFC-Exception"});
    EXPECT_EQ(dialog.GetDlgItemText(kFirst), "5") << "the others are shown";
    EXPECT_EQ(save(), kNothing);
    EXPECT_EQ(real.GetValue(), 0.125);
    EXPECT_TRUE(dialog.SetDlgItemText(kSecond, "0,5"));
    EXPECT_EQ(save(), kNothing);
    EXPECT_EQ(real.GetValue(), 0.5);
}

TEST_F(Fields, WithoutAControlAreRefused) {
    NkDtLong lost(1);
    fields.Bind(99, lost);
    const std::vector<std::string> missing = {valuetest::cp1252("99: Ungültiges Argument")};
    EXPECT_EQ(save(), missing);
    EXPECT_EQ(told(fields.Load(dialog)), missing);
    EXPECT_EQ(save(), kNothing) << "it was told already";
}

TEST_F(Fields, WhoseControlFailsAreRefused) {
    load();
    EXPECT_TRUE(dialog.SetDlgItemText(kFirst, "6"));
    EXPECT_TRUE(dialog.SetDlgItemText(kSecond, "7"));
    dialog.SetFailure(kSecond, CMemoryDialog::FailAccess);
    EXPECT_EQ(save(), std::vector<std::string>{valuetest::cp1252("2: Ungültiges Argument")});
    EXPECT_EQ(describe(number), "5 defined");
    dialog.SetFailure(kSecond, CMemoryDialog::FailNot);
    EXPECT_EQ(save(), kNothing);
    EXPECT_EQ(number, 6);
    EXPECT_EQ(real.GetValue(), 7.0);
}

TEST_F(Fields, WhoseControlDoesNotHandOutItsTextAreLeftAlone) {
    load();
    dialog.SetFailure(kSecond, CMemoryDialog::FailReading);
    EXPECT_EQ(save(), kNothing);
    EXPECT_EQ(real.GetValue(), 0.125);
    EXPECT_FALSE(real.IsModified());
}

TEST(FieldErrors, AreToldByTheirCauseOrTheirOwnText) {
    const NkDtExcep plain("test.cc", "Test", "Test", NkDtErrDivisionDurchNull, 0, FALSE);
    EXPECT_STREQ(CDialogFields::ReasonOf(plain), "Division durch 0");
    NkDtExcep replaced("test.cc", "Test", "Test", NkDtErrFolgefehler, 0, FALSE);
    replaced.SetCause(plain);
    EXPECT_STREQ(CDialogFields::ReasonOf(replaced), "Division durch 0");
}

// --- Classes of a program's own -------------------------------------------------------------------

/// Takes no negative numbers.
class Menge : public NkDtLong {
  public:
    using NkDtLong::NkDtLong;
    void SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat = nullptr) override {
        if (pszOFL != nullptr && *pszOFL == '-')
            throw new NkDtExcep("test.cc", "Menge", "SetFromOFL", NkDtErrWertebereich, 0, FALSE);
        if (pszOFL != nullptr && *pszOFL == '!') throw std::runtime_error("no library error");
        NkDtLong::SetFromOFL(pszOFL, pFormat);
    }
};

class OwnFields : public ::testing::Test {
  protected:
    OwnFields() {
        dialog.AddEdit(kFirst);
        dialog.AddEdit(kSecond);
        fields.Bind(kFirst, number);
        fields.Bind(kSecond, menge);
        number.SetModified(FALSE);
        menge.SetModified(FALSE);
        EXPECT_EQ(told(fields.Load(dialog)), kNothing);
        EXPECT_TRUE(dialog.SetDlgItemText(kFirst, "6"));
    }

    NkDtLong number{5};
    Menge menge{7};
    CMemoryDialog dialog;
    CDialogFields fields;
};

TEST_F(OwnFields, KeepTheirOwnRules) {
    EXPECT_TRUE(dialog.SetDlgItemText(kSecond, "-6"));
    EXPECT_EQ(told(fields.Save(dialog)),
              std::vector<std::string>{valuetest::cp1252("2: Wert außerhalb des Wertebereichs")});
    EXPECT_EQ(describe(number), "5 defined");
    EXPECT_TRUE(dialog.SetDlgItemText(kSecond, "8"));
    EXPECT_EQ(told(fields.Save(dialog)), kNothing);
    EXPECT_EQ(number, 6);
    EXPECT_EQ(menge, 8);
}

TEST_F(OwnFields, ThatThrowSomethingElseChangeNothing) {
    EXPECT_TRUE(dialog.SetDlgItemText(kSecond, "!"));
    EXPECT_THROW((void)fields.Save(dialog), std::runtime_error);
    EXPECT_EQ(describe(number), "5 defined");
    EXPECT_EQ(menge, 7);
    EXPECT_TRUE(dialog.SetDlgItemText(kSecond, "7"));
    EXPECT_EQ(told(fields.Save(dialog)), kNothing);
    EXPECT_EQ(number, 6);
}

TEST(BoundFields, RefuseAnIdTwiceAndAClassThatIsNoneOfTheTen) {
    class Unknown : public NkDtLong {
      public:
        NkDtTyps GetDtTyp() const override { return NkDtTypBasis; }
    };
    CDialogFields fields;
    NkDtBool truth;
    Unknown unknown;
    fields.Bind(kFirst, truth);
    EXPECT_TRUE(throws<CInvalidArgException>([&] { fields.Bind(kFirst, truth); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { fields.BindCheck(kFirst, truth); }));
    EXPECT_TRUE(throws<CInvalidArgException>([&] { fields.Bind(kSecond, unknown); }));
    const CMemoryDialog dialog;
    EXPECT_TRUE(throws<CInvalidArgException>([&] { (void)fields.IsEdited(dialog, kSecond); }));
}

// --- Check boxes ----------------------------------------------------------------------------------

struct BoxCase {
    const char* what;
    NkDtBool value;
    UINT shown;
};

/// Loads the value, and then brings the box into each state in turn; the last one is what loading showed.
void expectStates(const BoxCase& each, BOOL threeState, const char* const (&expected)[3]) {
    SCOPED_TRACE(each.what);
    NkDtBool value(each.value);
    value.SetModified(FALSE);
    const std::string before = describe(value);
    CMemoryDialog dialog;
    dialog.AddCheck(kFirst, threeState);
    CDialogFields fields;
    fields.BindCheck(kFirst, value, threeState);
    EXPECT_EQ(told(fields.Load(dialog)), kNothing);
    EXPECT_EQ(dialog.IsDlgButtonChecked(kFirst), each.shown);
    EXPECT_EQ(told(fields.Save(dialog)), kNothing);
    EXPECT_EQ(describe(value), before) << "untouched";
    for (UINT state = 0; state < (threeState != FALSE ? 3U : 2U); ++state) {
        dialog.CheckDlgButton(kFirst, state);
        EXPECT_EQ(fields.IsEdited(dialog), state != each.shown ? TRUE : FALSE);
        EXPECT_EQ(told(fields.Save(dialog)), kNothing);
        EXPECT_EQ(describe(value), state == each.shown ? before : expected[state]) << state;
    }
    dialog.CheckDlgButton(kFirst, each.shown);
    EXPECT_EQ(told(fields.Save(dialog)), kNothing);
    EXPECT_EQ(describe(value), before) << "back again";
}

TEST(CheckFields, WithTwoStatesShowEveryUndefinedValueUnchecked) {
    for (const BoxCase& each :
         {BoxCase{"true", NkDtBool(TRUE), CWnd::Checked}, BoxCase{"false", NkDtBool(FALSE), CWnd::Unchecked},
          BoxCase{"missing", NkDtBool(NkDtWmMissing), CWnd::Unchecked},
          BoxCase{"null", NkDtBool(NkDtWmNull), CWnd::Unchecked}, BoxCase{"2", NkDtBool(2), CWnd::Checked}})
        expectStates(each, FALSE, {"0 defined modified", "1 defined modified", nullptr});
}

TEST(CheckFields, WithThreeStatesAreIndeterminateWhileUndefined) {
    expectStates({"true", NkDtBool(TRUE), CWnd::Checked}, TRUE,
                 {"0 defined modified", "1 defined modified", "0 missing modified"});
    expectStates({"false", NkDtBool(FALSE), CWnd::Unchecked}, TRUE,
                 {"0 defined modified", "1 defined modified", "0 missing modified"});
    for (const BoxCase& each : {BoxCase{"missing", NkDtBool(NkDtWmMissing), CWnd::Indeterminate},
                                BoxCase{"null", NkDtBool(NkDtWmNull), CWnd::Indeterminate}})
        expectStates(each, TRUE, {"0 defined modified", "1 defined modified", nullptr});
    expectStates({"2", NkDtBool(2), CWnd::Checked}, TRUE,
                 {"0 defined modified", nullptr, "0 missing modified"});
}

TEST(CheckFields, AnAlwaysDefinedValueThatIsMadeIndeterminateIsFalse) {
    NkDtBool value(NkDtWmDefined);
    value = TRUE;
    value.SetModified(FALSE);
    CMemoryDialog dialog;
    dialog.AddCheck(kFirst, TRUE);
    CDialogFields fields;
    fields.BindCheck(kFirst, value, TRUE);
    EXPECT_EQ(told(fields.Load(dialog)), kNothing);
    dialog.CheckDlgButton(kFirst, CWnd::Indeterminate);
    EXPECT_EQ(told(fields.Save(dialog)), kNothing);
    EXPECT_EQ(describe(value), "0 defined modified");
}

TEST(CheckFields, OnAnEditControlAreRefused) {
    NkDtBool value(TRUE);
    CMemoryDialog dialog;
    dialog.AddEdit(kFirst);
    CDialogFields fields;
    fields.BindCheck(kFirst, value);
    const std::vector<std::string> refused = {valuetest::cp1252("1: Ungültiges Argument")};
    EXPECT_EQ(told(fields.Save(dialog)), refused);
    EXPECT_EQ(told(fields.Load(dialog)), refused);
    EXPECT_EQ(describe(value), "1 defined");
}

}  // namespace
