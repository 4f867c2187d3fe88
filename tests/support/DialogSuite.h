#pragma once

/// @file
/// What every kind of dialog must do with the value classes, written once. The tests of a kind instantiate
/// both suites with a class that makes its dialogs:
/// @code
/// INSTANTIATE_TYPED_TEST_SUITE_P(Memory, EditOf, Subjects<InMemory>, SubjectNames);
/// INSTANTIATE_TYPED_TEST_SUITE_P(Memory, CheckBoxIn, InMemory);
/// @endcode
/// Such a class has
/// @code
/// CWnd& window();                                      // the dialog; runs `exchange` in DoDataExchange
/// std::function<void(CDataExchange*)>& exchange();
/// void addEdit(int id);                                // ids are greater than 0
/// void addCheck(int id, bool threeState);
/// void limitText(int id, int most);                    // the edit control takes no longer text
/// void type(int id, const std::string& text);          // as a person replaces the text
/// std::string shown(int id);                           // what a person sees; code page 1252, as above
/// void tick(int id, int state);                        // as a person brings the box into that CheckState
/// int ticked(int id);
/// int focused();                                       // id of the control with the focus, or 0
/// @endcode

#include <nkdt/NkDt.h>

#include <functional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "support/DialogFields.h"
#include "unit/ValueTesting.h"

namespace dialogtest {

using valuetest::describe;
using valuetest::errorOf;
using valuetest::ErrorPtr;
using valuetest::expectError;
using valuetest::kStoredModes;
using valuetest::stateOf;

inline constexpr const char* kModule = ".\\DTDDXFKT.cc";
inline constexpr const char* kCheckSignature = "DDX_NkDtTypCheck(CDataExchange*,int,NkDtBool &)";
inline std::string groupText() {
    return valuetest::cp1252("DDX-Funktionen für NkDt-Klassen");
}

/// A dialog of the class @p Base whose exchange the test writes.
template <class Base>
class Scripted : public Base {
  public:
    using Base::Base;
    std::function<void(CDataExchange*)> exchange;

  protected:
    void DoDataExchange(CDataExchange* pDX) override {
        if (exchange) exchange(pDX);
    }
};

// --- Dialogs and classes -----------------------------------------------------------------------------

/// A class beside a kind of dialog.
template <class DialogKind, class ValueClass>
struct Subject {
    using Dialog = DialogKind;
    using Value = ValueClass;
};

/// The ten classes in dialogs of a kind.
template <class Dialog>
using Subjects =
    ::testing::Types<Subject<Dialog, NkDtLong>, Subject<Dialog, NkDtShort>, Subject<Dialog, NkDtDouble>,
                     Subject<Dialog, NkDtDecimal>, Subject<Dialog, NkDtBool>, Subject<Dialog, NkDtChar>,
                     Subject<Dialog, NkDtDateTime>, Subject<Dialog, NkDtDateZp>, Subject<Dialog, NkDtString>,
                     Subject<Dialog, NkDtTime>>;

struct SubjectNames {
    template <class S>
    static std::string GetName(int) {
        return Field<typename S::Value>::name;
    }
};

inline constexpr int kEdit = 1001;
inline constexpr int kOther = 1002;
inline constexpr int kBox = 1003;
inline constexpr int kThreeStates = 1004;
inline constexpr int kNothing = 1999;

/// The control's text into the value.
template <class Dialog, class Value>
void save(Dialog& dialog, int id, Value& value) {
    CDataExchange dx(&dialog.window(), TRUE);
    DDX_NkDtTyp(&dx, id, value);
}

/// The value's text into the control.
template <class Dialog, class Value>
void load(Dialog& dialog, int id, Value& value) {
    CDataExchange dx(&dialog.window(), FALSE);
    DDX_NkDtTyp(&dx, id, value);
}

/// Where an error of the exchange says that it comes from.
inline void expectOrigin(const NkEhBasis& error, const char* signature) {
    EXPECT_STREQ(error.GetSourceFile(), kModule);
    EXPECT_EQ(error.GetClassText(), groupText());
    EXPECT_STREQ(error.GetFunctionText(), signature);
    EXPECT_EQ(error.GetTextNumber(), 0U);
    EXPECT_TRUE(error.IsKindOf(NkDtExcep::GetThisClass()));
}

/// Error 22, raised by the exchange itself.
template <class Operation>
void expectNotWritten(const char* signature, Operation&& operation) {
    const ErrorPtr error = expectError(NkDtErrFrameworkException, operation);
    expectOrigin(*error, signature);
    EXPECT_STREQ(error->GetErrorText(), "Folgefehler aufgrund einer MFC-Exception");
    EXPECT_EQ(error->GetClassification1(), 1U);
    EXPECT_EQ(error->GetClassification2(), 1U);
    EXPECT_EQ(error->GetCauseNumber(), 0U);
    EXPECT_EQ(error->GetException(), nullptr);
    EXPECT_TRUE(error->IsLogged());
}

/// Error 1 in place of a framework exception of the class @p Exception, which it owns.
template <class Exception, class Operation>
ErrorPtr expectWrapped(const char* signature, const std::string& message, Operation&& operation) {
    ErrorPtr error = expectError(NkDtErrFolgefehler, operation);
    expectOrigin(*error, signature);
    EXPECT_STREQ(error->GetErrorText(), "Default-Catch / Folgefehler");
    EXPECT_EQ(error->GetClassification1(), 0U);
    EXPECT_EQ(error->GetClassification2(), 0U);
    EXPECT_EQ(error->GetCauseNumber(), ULONG{NkDtErrFrameworkException});
    EXPECT_EQ(error->GetCauseText(), message);
    EXPECT_FALSE(error->IsLogged());
    if (error->GetException() == nullptr) {
        ADD_FAILURE() << "the exception was lost";
    } else {
        EXPECT_EQ(error->GetException()->GetRuntimeClass(), RUNTIME_CLASS(Exception));
    }
    return error;
}

// --- Edit controls --------------------------------------------------------------------------------

template <class S>
class EditOf : public ::testing::Test {
  protected:
    using Value = typename S::Value;

    EditOf() { dialog.addEdit(kEdit); }

    /// A defined value, not modified.
    static Value defined(NkDtWorkingMode mode = NkDtWmMissing) {
        Value value(mode);
        value = Field<Value>::value();
        value.SetModified(FALSE);
        return value;
    }

    typename S::Dialog dialog;
};
TYPED_TEST_SUITE_P(EditOf);

TYPED_TEST_P(EditOf, LoadingShowsTheUserInterfaceTextAndLeavesTheValueAlone) {
    using F = Field<typename TypeParam::Value>;
    this->dialog.type(kEdit, "an older text");
    for (const NkDtWorkingMode mode : kStoredModes) {
        auto value = this->defined(mode);
        const std::string before = describe(value);
        load(this->dialog, kEdit, value);
        EXPECT_EQ(this->dialog.shown(kEdit), F::shown);
        EXPECT_EQ(describe(value), before);
    }
}

TYPED_TEST_P(EditOf, LoadingShowsNothingOfAnUndefinedValue) {
    for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
        this->dialog.type(kEdit, "an older text");
        typename TypeParam::Value value(mode);
        value.SetFormat(&Field<typename TypeParam::Value>::format());
        const std::string before = describe(value);
        load(this->dialog, kEdit, value);
        EXPECT_EQ(this->dialog.shown(kEdit), "");
        EXPECT_EQ(describe(value), before);
    }
}

TYPED_TEST_P(EditOf, SavingReadsTheTextThatWasTyped) {
    using F = Field<typename TypeParam::Value>;
    this->dialog.type(kEdit, F::typed);
    for (const NkDtWorkingMode mode : kStoredModes) {
        const auto expected = F::read();
        auto value = this->defined(mode);
        save(this->dialog, kEdit, value);
        EXPECT_EQ(valuetest::textOf(value), valuetest::textOf(expected));
        EXPECT_EQ(stateOf(value), "defined modified");
        EXPECT_EQ(value.GetWorkingMode(), mode);
        typename TypeParam::Value undefined(mode);
        save(this->dialog, kEdit, undefined);
        EXPECT_TRUE(undefined.IsDefined());
        EXPECT_EQ(valuetest::textOf(undefined), valuetest::textOf(expected));
        EXPECT_EQ(this->dialog.shown(kEdit), F::typed);
    }
}

TYPED_TEST_P(EditOf, SavingWhatLoadingWroteChangesNothing) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        auto value = this->defined(mode);
        const std::string before = describe(value);
        load(this->dialog, kEdit, value);
        save(this->dialog, kEdit, value);
        EXPECT_EQ(describe(value), before);
    }
    for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
        typename TypeParam::Value value(mode);
        const std::string before = describe(value);
        load(this->dialog, kEdit, value);
        save(this->dialog, kEdit, value);
        EXPECT_EQ(describe(value), before);
    }
}

TYPED_TEST_P(EditOf, SavingAnEmptyControlClears) {
    this->dialog.type(kEdit, "");
    for (const NkDtWorkingMode mode : kStoredModes) {
        auto cleared = this->defined(mode);
        cleared.Clear();
        auto value = this->defined(mode);
        save(this->dialog, kEdit, value);
        EXPECT_EQ(describe(value), describe(cleared));
        EXPECT_EQ(value.IsDefined(), mode == NkDtWmDefined ? TRUE : FALSE);
        EXPECT_TRUE(value.IsModified());
    }
}

TYPED_TEST_P(EditOf, TheValuesOwnFormatShowsAndReads) {
    using F = Field<typename TypeParam::Value>;
    auto value = this->defined();
    value.SetFormat(&F::format());
    load(this->dialog, kEdit, value);
    EXPECT_EQ(this->dialog.shown(kEdit), F::formatted);
    const std::string before = describe(value);
    save(this->dialog, kEdit, value);
    EXPECT_EQ(describe(value), before);
    EXPECT_EQ(value.GetFormat(), &F::format());
}

TYPED_TEST_P(EditOf, ARefusedTextRaisesTheClassesOwnErrorAndChangesNothing) {
    using F = Field<typename TypeParam::Value>;
    this->dialog.type(kEdit, F::refused);
    for (const NkDtWorkingMode mode : kStoredModes) {
        auto value = this->defined(mode);
        value.SetFormat(F::refusing());
        const std::string before = describe(value);
        const ErrorPtr own = expectError(NkDtErrFolgefehler, [&] { value.SetFromOFL(F::refused); });
        CDataExchange dx(&this->dialog.window(), TRUE);
        const ErrorPtr error = expectError(NkDtErrFolgefehler, [&] { DDX_NkDtTyp(&dx, kEdit, value); });
        EXPECT_STREQ(error->GetSourceFile(), own->GetSourceFile());
        EXPECT_STREQ(error->GetClassText(), own->GetClassText());
        EXPECT_STREQ(error->GetFunctionText(), own->GetFunctionText());
        EXPECT_EQ(error->GetCauseNumber(), own->GetCauseNumber());
        EXPECT_STREQ(error->GetCauseText(), own->GetCauseText());
        EXPECT_STRNE(error->GetCauseText(), "");
        EXPECT_EQ(error->GetException(), nullptr);
        EXPECT_EQ(describe(value), before);
        EXPECT_EQ(this->dialog.shown(kEdit), F::refused);
        EXPECT_EQ(dx.m_pLastControl, this->dialog.window().GetDlgItem(kEdit));
        EXPECT_TRUE(dx.m_bEditLastControl);
    }
}

TYPED_TEST_P(EditOf, ARefusedTextLeavesAnUndefinedValueUndefined) {
    using F = Field<typename TypeParam::Value>;
    this->dialog.type(kEdit, F::refused);
    for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
        typename TypeParam::Value value(mode);
        value.SetFormat(F::refusing());
        const std::string before = describe(value);
        expectError(NkDtErrFolgefehler, [&] { save(this->dialog, kEdit, value); });
        EXPECT_EQ(describe(value), before);
    }
}

TYPED_TEST_P(EditOf, ATextThatTheControlCannotHoldWholeIsError22) {
    using F = Field<typename TypeParam::Value>;
    auto value = this->defined();
    const std::string before = describe(value);
    const int length = static_cast<int>(std::string_view(F::shown).size());
    this->dialog.limitText(kEdit, length);
    load(this->dialog, kEdit, value);
    EXPECT_EQ(this->dialog.shown(kEdit), F::shown);
    this->dialog.type(kEdit, "");
    this->dialog.limitText(kEdit, length - 1);
    expectNotWritten(F::signature, [&] { load(this->dialog, kEdit, value); });
    EXPECT_EQ(this->dialog.shown(kEdit), "");
    EXPECT_EQ(describe(value), before);
}

TYPED_TEST_P(EditOf, AnIdWithoutControlIsError1) {
    using F = Field<typename TypeParam::Value>;
    const std::string message = valuetest::cp1252("Ungültiges Argument");
    auto value = this->defined();
    const std::string before = describe(value);
    expectWrapped<CInvalidArgException>(F::signature, message, [&] { load(this->dialog, kNothing, value); });
    expectWrapped<CInvalidArgException>(F::signature, message, [&] { save(this->dialog, kNothing, value); });
    EXPECT_EQ(describe(value), before);
}

TYPED_TEST_P(EditOf, ACheckBoxIsNoEditControl) {
    using F = Field<typename TypeParam::Value>;
    const std::string message = valuetest::cp1252("Ungültiges Argument");
    this->dialog.addCheck(kBox, false);
    auto value = this->defined();
    const std::string before = describe(value);
    expectWrapped<CInvalidArgException>(F::signature, message, [&] { load(this->dialog, kBox, value); });
    expectWrapped<CInvalidArgException>(F::signature, message, [&] { save(this->dialog, kBox, value); });
    EXPECT_EQ(describe(value), before);
    EXPECT_EQ(this->dialog.ticked(kBox), CWnd::Unchecked);
}

TYPED_TEST_P(EditOf, UpdateDataLoadsAndSavesAllFields) {
    using F = Field<typename TypeParam::Value>;
    this->dialog.addEdit(kOther);
    auto first = this->defined();
    typename TypeParam::Value second(NkDtWmNull);
    this->dialog.exchange() = [&](CDataExchange* pDX) {
        DDX_NkDtTyp(pDX, kEdit, first);
        DDX_NkDtTyp(pDX, kOther, second);
    };
    EXPECT_TRUE(this->dialog.window().UpdateData(FALSE));
    EXPECT_EQ(this->dialog.shown(kEdit), F::shown);
    EXPECT_EQ(this->dialog.shown(kOther), "");
    this->dialog.type(kEdit, "");
    this->dialog.type(kOther, F::typed);
    EXPECT_TRUE(this->dialog.window().UpdateData(TRUE));
    EXPECT_EQ(stateOf(first), "missing modified");
    EXPECT_EQ(valuetest::textOf(second), valuetest::textOf(F::read()));
    EXPECT_TRUE(second.IsDefined());
}

TYPED_TEST_P(EditOf, UpdateDataPassesTheErrorAndPutsTheFocusIntoTheControl) {
    using F = Field<typename TypeParam::Value>;
    this->dialog.addEdit(kOther);
    this->dialog.addEdit(kBox);
    auto first = this->defined();
    auto second = this->defined();
    auto third = this->defined();
    second.SetFormat(F::refusing());
    const std::string before = describe(second);
    this->dialog.exchange() = [&](CDataExchange* pDX) {
        DDX_NkDtTyp(pDX, kEdit, first);
        DDX_NkDtTyp(pDX, kOther, second);
        DDX_NkDtTyp(pDX, kBox, third);
    };
    this->dialog.type(kEdit, "");
    this->dialog.type(kOther, F::refused);
    this->dialog.type(kBox, "");
    this->dialog.window().GetDlgItem(kEdit)->SetFocus();
    EXPECT_EQ(this->dialog.focused(), kEdit);
    expectError(NkDtErrFolgefehler, [&] { this->dialog.window().UpdateData(TRUE); });
    EXPECT_EQ(this->dialog.focused(), kOther);
    EXPECT_EQ(stateOf(first), "missing modified") << "saved before the failure";
    EXPECT_EQ(describe(second), before);
    EXPECT_EQ(stateOf(third), "defined") << "behind the failure";
}

REGISTER_TYPED_TEST_SUITE_P(EditOf, LoadingShowsTheUserInterfaceTextAndLeavesTheValueAlone,
                            LoadingShowsNothingOfAnUndefinedValue, SavingReadsTheTextThatWasTyped,
                            SavingWhatLoadingWroteChangesNothing, SavingAnEmptyControlClears,
                            TheValuesOwnFormatShowsAndReads,
                            ARefusedTextRaisesTheClassesOwnErrorAndChangesNothing,
                            ARefusedTextLeavesAnUndefinedValueUndefined,
                            ATextThatTheControlCannotHoldWholeIsError22, AnIdWithoutControlIsError1,
                            ACheckBoxIsNoEditControl, UpdateDataLoadsAndSavesAllFields,
                            UpdateDataPassesTheErrorAndPutsTheFocusIntoTheControl);

// --- Check boxes ----------------------------------------------------------------------------------

template <class DialogKind>
class CheckBoxIn : public ::testing::Test {
  protected:
    CheckBoxIn() {
        dialog.addEdit(kEdit);
        dialog.addCheck(kBox, false);
        dialog.addCheck(kThreeStates, true);
    }
    void load(int id, NkDtBool& value) {
        CDataExchange dx(&dialog.window(), FALSE);
        DDX_NkDtTypCheck(&dx, id, value);
    }
    void save(int id, NkDtBool& value) {
        CDataExchange dx(&dialog.window(), TRUE);
        DDX_NkDtTypCheck(&dx, id, value);
    }

    DialogKind dialog;
};
TYPED_TEST_SUITE_P(CheckBoxIn);

/// An undefined truth value that stores this number, as an archive can leave it.
inline NkDtBool undefinedTruth(NkDtWorkingMode mode, BOOL number) {
    NkDtBool value(number);
    valuetest::Bytes bytes = valuetest::stored(value);
    bytes.at(0) = 0;  // the defined flag
    NkDtBool loaded(mode);
    valuetest::load(loaded, bytes);
    loaded.SetModified(FALSE);
    return loaded;
}

TYPED_TEST_P(CheckBoxIn, LoadingShowsTheTruthValue) {
    struct Case {
        const char* what;
        NkDtBool value;
        int twoStates;
        int threeStates;
    };
    const Case cases[] = {
        {"true", NkDtBool(TRUE), 1, 1},
        {"false", NkDtBool(FALSE), 0, 0},
        {"missing", NkDtBool(NkDtWmMissing), 0, 0},
        {"missing, stored true", undefinedTruth(NkDtWmMissing, TRUE), 0, 0},
        {"null", NkDtBool(NkDtWmNull), 0, 0},
        {"null, stored true", undefinedTruth(NkDtWmNull, TRUE), 1, 1},
        {"null, stored 2", undefinedTruth(NkDtWmNull, 2), 1, 2},
        {"always defined", NkDtBool(NkDtWmDefined), 0, 0},
        {"2", NkDtBool(2), 1, 2},
        {"5", NkDtBool(5), 1, 1},
        {"-1", NkDtBool(-1), 1, 1},
    };
    for (const Case& each : cases) {
        for (const int state : {CWnd::Unchecked, CWnd::Checked}) {
            SCOPED_TRACE(each.what);
            this->dialog.tick(kBox, state);
            this->dialog.tick(kThreeStates, CWnd::Indeterminate);
            NkDtBool value(each.value);
            this->load(kBox, value);
            this->load(kThreeStates, value);
            EXPECT_EQ(this->dialog.ticked(kBox), each.twoStates);
            EXPECT_EQ(this->dialog.ticked(kThreeStates), each.threeStates);
            EXPECT_EQ(describe(value), describe(each.value));
        }
    }
}

TYPED_TEST_P(CheckBoxIn, SavingTakesTheStateAndMakesTheValueDefined) {
    for (const int box : {kBox, kThreeStates}) {
        for (const int state : {CWnd::Unchecked, CWnd::Checked, CWnd::Indeterminate}) {
            if (box == kBox && state == CWnd::Indeterminate) continue;
            this->dialog.tick(box, state);
            for (const NkDtWorkingMode mode : kStoredModes) {
                NkDtBool value(mode);
                this->save(box, value);
                EXPECT_TRUE(value.IsDefined());
                EXPECT_EQ(value.GetValue(), state);
                EXPECT_EQ(value.GetWorkingMode(), mode);
                EXPECT_EQ(value.IsModified(), mode != NkDtWmDefined || state != 0 ? TRUE : FALSE);
            }
            EXPECT_EQ(this->dialog.ticked(box), state);
        }
    }
}

TYPED_TEST_P(CheckBoxIn, SavingWhatLoadingShowedChangesNothing) {
    for (const BOOL number : {0, 1, 2}) {
        NkDtBool value(number);
        this->load(kThreeStates, value);
        this->save(kThreeStates, value);
        EXPECT_EQ(value.GetValue(), number);
        EXPECT_FALSE(value.IsModified());
        if (number == 2) continue;
        this->load(kBox, value);
        this->save(kBox, value);
        EXPECT_EQ(value.GetValue(), number);
        EXPECT_FALSE(value.IsModified());
    }
}

TYPED_TEST_P(CheckBoxIn, SavingABoxThatShowsAMissingValueMakesItFalse) {
    NkDtBool value(NkDtWmMissing);
    this->load(kBox, value);
    this->save(kBox, value);
    EXPECT_EQ(describe(value), "0 defined modified");
}

TYPED_TEST_P(CheckBoxIn, AControlThatIsMissingOrNoCheckBoxIsError1) {
    const std::string message = valuetest::cp1252("Ungültiges Argument");
    for (const int id : {kNothing, kEdit}) {
        NkDtBool value(TRUE);
        expectWrapped<CInvalidArgException>(kCheckSignature, message, [&] { this->load(id, value); });
        expectWrapped<CInvalidArgException>(kCheckSignature, message, [&] { this->save(id, value); });
        EXPECT_EQ(describe(value), "1 defined");
    }
    EXPECT_EQ(this->dialog.shown(kEdit), "");
}

TYPED_TEST_P(CheckBoxIn, UpdateDataExchangesItAndPutsTheFocusIntoItAfterAFailure) {
    NkDtBool value(TRUE);
    bool fails = false;
    this->dialog.exchange() = [&](CDataExchange* pDX) {
        DDX_NkDtTypCheck(pDX, kBox, value);
        if (fails) pDX->Fail();
    };
    EXPECT_TRUE(this->dialog.window().UpdateData(FALSE));
    EXPECT_EQ(this->dialog.ticked(kBox), CWnd::Checked);
    this->dialog.tick(kBox, CWnd::Unchecked);
    EXPECT_TRUE(this->dialog.window().UpdateData(TRUE));
    EXPECT_EQ(describe(value), "0 defined modified");
    this->dialog.window().GetDlgItem(kEdit)->SetFocus();
    EXPECT_EQ(this->dialog.focused(), kEdit);
    fails = true;
    EXPECT_FALSE(this->dialog.window().UpdateData(TRUE));
    EXPECT_EQ(this->dialog.focused(), kBox);
}

REGISTER_TYPED_TEST_SUITE_P(CheckBoxIn, LoadingShowsTheTruthValue, SavingTakesTheStateAndMakesTheValueDefined,
                            SavingWhatLoadingShowedChangesNothing,
                            SavingABoxThatShowsAMissingValueMakesItFalse,
                            AControlThatIsMissingOrNoCheckBoxIsError1,
                            UpdateDataExchangesItAndPutsTheFocusIntoItAfterAFailure);

}  // namespace dialogtest
