// The dialog data exchange: the behaviour of every kind of dialog on the one in memory, and what only that
// one can be told to do.

#include <nkdt/NkDt.h>
#include <nkeh/NkEhLogFile.h>

#include <functional>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "support/DialogSuite.h"

namespace dialogtest {

/// The dialog in memory; a person is its `SetDlgItemText` and `CheckDlgButton`.
class InMemory {
  public:
    CWnd& window() { return m_dialog; }
    std::function<void(CDataExchange*)>& exchange() { return m_dialog.exchange; }
    void addEdit(int id) { m_dialog.AddEdit(id); }
    void addCheck(int id, bool threeState) { m_dialog.AddCheck(id, threeState ? TRUE : FALSE); }
    void limitText(int id, int most) { m_dialog.SetTextLimit(id, most); }
    void type(int id, const std::string& text) { EXPECT_TRUE(m_dialog.SetDlgItemText(id, text.c_str())); }
    std::string shown(int id) { return std::string(m_dialog.GetDlgItemText(id).View()); }
    void tick(int id, int state) { m_dialog.CheckDlgButton(id, static_cast<UINT>(state)); }
    int ticked(int id) { return static_cast<int>(m_dialog.IsDlgButtonChecked(id)); }
    int focused() {
        for (const int id : {kEdit, kOther, kBox, kThreeStates}) {
            const CWnd* const control = m_dialog.GetDlgItem(id);
            if (control != nullptr && control == m_dialog.GetFocus()) return id;
        }
        return 0;
    }
    CMemoryDialog& memory() { return m_dialog; }

  private:
    Scripted<CMemoryDialog> m_dialog;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, EditOf, Subjects<InMemory>, SubjectNames);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, CheckBoxIn, InMemory);

namespace {

// --- Controls that fail ---------------------------------------------------------------------------

template <class S>
class FailingEditOf : public EditOf<S> {};
TYPED_TEST_SUITE(FailingEditOf, Subjects<InMemory>, SubjectNames);

TYPED_TEST(FailingEditOf, ATextThatIsNotHandedOutLeavesTheValueAlone) {
    using F = Field<typename TypeParam::Value>;
    this->dialog.type(kEdit, F::typed);
    this->dialog.memory().SetFailure(kEdit, CMemoryDialog::FailReading);
    for (const NkDtWorkingMode mode : kStoredModes) {
        auto value = this->defined(mode);
        const std::string before = describe(value);
        save(this->dialog, kEdit, value);
        EXPECT_EQ(describe(value), before);
        typename TypeParam::Value undefined(mode);
        const std::string undefinedBefore = describe(undefined);
        save(this->dialog, kEdit, undefined);
        EXPECT_EQ(describe(undefined), undefinedBefore);
    }
}

TYPED_TEST(FailingEditOf, AnEmptyControlClearsWithoutBeingRead) {
    this->dialog.memory().SetFailure(kEdit, CMemoryDialog::FailReading);
    auto value = this->defined();
    save(this->dialog, kEdit, value);
    EXPECT_EQ(stateOf(value), "missing modified");
}

TYPED_TEST(FailingEditOf, AControlThatIsNotWrittenIsError22) {
    using F = Field<typename TypeParam::Value>;
    this->dialog.type(kEdit, "an older text");
    this->dialog.memory().SetFailure(kEdit, CMemoryDialog::FailWriting);
    auto value = this->defined();
    const std::string before = describe(value);
    expectNotWritten(F::signature, [&] { load(this->dialog, kEdit, value); });
    EXPECT_EQ(this->dialog.shown(kEdit), "an older text");
    EXPECT_EQ(describe(value), before);
    typename TypeParam::Value null(NkDtWmNull);
    expectNotWritten(F::signature, [&] { load(this->dialog, kEdit, null); });
    EXPECT_EQ(stateOf(null), "null");
}

TYPED_TEST(FailingEditOf, AControlThatThrowsIsError1) {
    using F = Field<typename TypeParam::Value>;
    const std::string message = valuetest::cp1252("Ungültiges Argument");
    this->dialog.type(kEdit, F::typed);
    this->dialog.memory().SetFailure(kEdit, CMemoryDialog::FailAccess);
    auto value = this->defined();
    const std::string before = describe(value);
    expectWrapped<CInvalidArgException>(F::signature, message, [&] { load(this->dialog, kEdit, value); });
    expectWrapped<CInvalidArgException>(F::signature, message, [&] { save(this->dialog, kEdit, value); });
    EXPECT_EQ(describe(value), before);
    this->dialog.memory().SetFailure(kEdit, CMemoryDialog::FailNot);
    EXPECT_EQ(this->dialog.shown(kEdit), F::typed);
}

TYPED_TEST(FailingEditOf, AnExchangeThatHasNoDialogIsError1) {
    using F = Field<typename TypeParam::Value>;
    auto value = this->defined();
    const std::string before = describe(value);
    for (const BOOL saving : {TRUE, FALSE}) {
        CDataExchange dx(nullptr, saving);
        expectWrapped<CInvalidArgException>(F::signature, valuetest::cp1252("Ungültiges Argument"),
                                            [&] { DDX_NkDtTyp(&dx, kEdit, value); });
    }
    EXPECT_EQ(describe(value), before);
}

TYPED_TEST(FailingEditOf, EveryDirectionButFalseSaves) {
    this->dialog.type(kEdit, "");
    auto value = this->defined();
    CDataExchange dx(&this->dialog.window(), -1);
    DDX_NkDtTyp(&dx, kEdit, value);
    EXPECT_FALSE(value.IsDefined());
}

TYPED_TEST(FailingEditOf, AValueThatWasMovedFromIsLikeANewOne) {
    using F = Field<typename TypeParam::Value>;
    typename TypeParam::Value value = F::value();
    const typename TypeParam::Value taken(std::move(value));
    this->dialog.type(kEdit, "an older text");
    load(this->dialog, kEdit, value);  // NOLINT(bugprone-use-after-move): that is the case
    EXPECT_EQ(this->dialog.shown(kEdit), "");
    this->dialog.type(kEdit, F::typed);
    save(this->dialog, kEdit, value);
    EXPECT_EQ(valuetest::textOf(value), valuetest::textOf(F::read()));
}

TEST(FailingCheckBox, AControlThatThrowsIsError1) {
    CMemoryDialog dialog;
    dialog.AddCheck(kBox);
    dialog.SetFailure(kBox, CMemoryDialog::FailAccess);
    NkDtBool value(TRUE);
    for (const BOOL saving : {TRUE, FALSE}) {
        CDataExchange dx(&dialog, saving);
        expectWrapped<CInvalidArgException>(kCheckSignature, valuetest::cp1252("Ungültiges Argument"),
                                            [&] { DDX_NkDtTypCheck(&dx, kBox, value); });
        EXPECT_EQ(dx.m_pLastControl, dialog.GetDlgItem(kBox));
        EXPECT_FALSE(dx.m_bEditLastControl);
    }
    EXPECT_EQ(describe(value), "1 defined");
}

// --- Exceptions from controls ---------------------------------------------------------------------

/// A framework exception that counts its kind.
class Counted : public CException {
  public:
    Counted() { ++alive; }
    ~Counted() override { --alive; }
    void GetErrorMessage(LPTSTR pszText, UINT nMaxLen) const noexcept override {
        const std::size_t copied = std::string_view("Papier fehlt").copy(pszText, nMaxLen - 1U);
        pszText[copied] = '\0';
    }
    static inline int alive = 0;
};

/// A control that does what the test says at every access.
class Acting : public CWnd {
  public:
    explicit Acting(std::function<void()> action) : m_action(std::move(action)) {}

  protected:
    INT TextLength() const override { return 3; }
    INT ReadText(LPTSTR, INT) const override { return act(), 0; }
    BOOL WriteText(std::string_view) override { return act(), TRUE; }
    CheckState ReadCheck() const override { return act(), Checked; }
    void WriteCheck(CheckState) override { act(); }

  private:
    void act() const { m_action(); }
    std::function<void()> m_action;
};

class ActingDialog : public CDialogWnd {
  public:
    explicit ActingDialog(std::function<void()> action) {
        AddControl(kEdit, std::make_unique<Acting>(std::move(action)));
    }
};

void exchangeText(CWnd& dialog, BOOL saving) {
    NkDtLong value(5);
    CDataExchange dx(&dialog, saving);
    DDX_NkDtTyp(&dx, kEdit, value);
}

void exchangeCheck(CWnd& dialog, BOOL saving) {
    NkDtBool value(TRUE);
    CDataExchange dx(&dialog, saving);
    DDX_NkDtTypCheck(&dx, kEdit, value);
}

constexpr void (*kExchanges[])(CWnd&, BOOL) = {&exchangeText, &exchangeCheck};

TEST(DialogExchange, AnErrorOwnsTheFrameworkExceptionAndDeletesItOnce) {
    Counted* thrown = nullptr;
    ActingDialog dialog([&] {
        thrown = new Counted;
        throw static_cast<CException*>(thrown);
    });
    for (const auto& exchange : kExchanges) {
        for (const BOOL saving : {TRUE, FALSE}) {
            ErrorPtr error = errorOf([&] { exchange(dialog, saving); });
            ASSERT_NE(error, nullptr);
            EXPECT_EQ(error->GetException(), thrown);
            EXPECT_EQ(error->GetCauseNumber(), ULONG{NkDtErrFrameworkException});
            EXPECT_STREQ(error->GetCauseText(), "Papier fehlt");
            EXPECT_EQ(Counted::alive, 1);
            error.reset();
            EXPECT_EQ(Counted::alive, 0);
        }
    }
}

TEST(DialogExchange, FrameworkExceptionsOfEveryClassAreReplaced) {
    ActingDialog memory([] { CMemoryException::Throw(); });
    ActingDialog file([] { CFileException::ThrowOsError(2, "liste.txt"); });
    ActingDialog user([] { throw new CUserException; });
    for (const BOOL saving : {TRUE, FALSE}) {
        const char* const signature = Field<NkDtLong>::signature;
        expectWrapped<CMemoryException>(signature, valuetest::cp1252("Nicht genügend Speicher"),
                                        [&] { exchangeText(memory, saving); });
        expectWrapped<CFileException>(signature, "Datei nicht gefunden: liste.txt",
                                      [&] { exchangeText(file, saving); });
        expectWrapped<CUserException>(signature, "Vorgang abgebrochen", [&] { exchangeText(user, saving); });
        expectWrapped<CMemoryException>(kCheckSignature, valuetest::cp1252("Nicht genügend Speicher"),
                                        [&] { exchangeCheck(memory, saving); });
    }
}

TEST(DialogExchange, LibraryErrorsAndForeignExceptionsFromAControlPass) {
    NkEhBasis* thrown = nullptr;
    ActingDialog library([&] {
        thrown = new NkEhBasis("", "", "", "", 4711, 0, 0, nullptr, FALSE, 0, FALSE);
        throw thrown;
    });
    ActingDialog foreign([] { throw std::runtime_error("foreign"); });
    for (const auto& exchange : kExchanges) {
        for (const BOOL saving : {TRUE, FALSE}) {
            const ErrorPtr error = errorOf([&] { exchange(library, saving); });
            EXPECT_EQ(error.get(), thrown);
            EXPECT_THROW(exchange(foreign, saving), std::runtime_error);
        }
    }
}

TEST(DialogExchange, WhatTheErrorReplacedIsReportedToAPerson) {
    CMemoryDialog dialog;
    const ErrorPtr error = errorOf([&] { exchangeText(dialog, TRUE); });
    ASSERT_NE(error, nullptr);
    EXPECT_NE(error->Report().Find(valuetest::cp1252("Ursache: Ungültiges Argument").c_str()), -1)
        << error->Report().GetString();
}

TEST(DialogExchange, WritesTheErrorsThatAreItsOwnToTheLogAndNoReplacement) {
    struct Log {
        std::ostringstream text;
        NkEhLogFile file{text};
        Log() { NkEhLogFile::SetDefault(&file); }
        ~Log() { NkEhLogFile::SetDefault(nullptr); }
    } log;
    CMemoryDialog dialog;
    errorOf([&] { exchangeText(dialog, FALSE); });
    EXPECT_EQ(log.text.str(), "");
    dialog.AddEdit(kEdit);
    dialog.SetFailure(kEdit, CMemoryDialog::FailWriting);
    errorOf([&] { exchangeText(dialog, FALSE); });
    EXPECT_NE(log.text.str().find("DTDDXFKT"), std::string::npos);
    EXPECT_NE(log.text.str().find("Fehlernummer: 22"), std::string::npos) << log.text.str();
}

// --- Values that cannot be shown ------------------------------------------------------------------

/// The class's own error, the control as it was.
template <class Value>
void expectNotShown(Value& value) {
    InMemory dialog;
    dialog.addEdit(kEdit);
    dialog.type(kEdit, "before");
    const std::string before = describe(value);
    const ErrorPtr own = expectError(NkDtErrFolgefehler, [&] { value.ConvToOFL(); });
    const ErrorPtr error = expectError(NkDtErrFolgefehler, [&] { load(dialog, kEdit, value); });
    EXPECT_STREQ(error->GetFunctionText(), own->GetFunctionText());
    EXPECT_STREQ(error->GetClassText(), own->GetClassText());
    EXPECT_STREQ(error->GetCauseText(), own->GetCauseText());
    EXPECT_EQ(dialog.shown(kEdit), "before");
    EXPECT_EQ(describe(value), before);
}

TEST(DialogExchange, AValueThatItsFormatCannotShowRaisesTheClassesOwnError) {
    const NkFormat oneDigit(1, 0, FormatDezimalTrennerOhne, FormatTausenderTrennerOhne, FormatVorzeichenVorn,
                            FormatVorzeichenNurMinus, 0, '0', 0, '0');
    NkDtLong number(12);
    number.SetFormat(&oneDigit);
    expectNotShown(number);
    const NkFormat letters(0, kulNkFoValidLetters, FormatAuffuellenNicht, ' ');
    NkDtString text("a1");
    text.SetFormat(&letters);
    expectNotShown(text);
    NkDtDateTime far(31, 12, 9999, 0, 0, 0);
    far.AddDay365(1);
    expectNotShown(far);
}

TEST(DialogExchange, AFormatOfAnotherKindRaisesTheClassesOwnErrorBothWays) {
    const NkFormat truth(FormatModusWorte, 1031);
    NkDtDecimal value("1.5");
    value.SetFormat(&truth);
    expectNotShown(value);
    InMemory dialog;
    dialog.addEdit(kEdit);
    dialog.type(kEdit, "1.5");
    expectError(NkDtErrFolgefehler, [&] { save(dialog, kEdit, value); });
    EXPECT_EQ(describe(value), "1.5 defined");
}

// --- Derived classes ------------------------------------------------------------------------------

TEST(DialogExchange, ReachesAClassThroughItsVirtualOperations) {
    class Article : public NkDtLong {
      public:
        using NkDtLong::operator=;
        CString ConvToOFL(const NkFormat* pFormat) const override {
            EXPECT_EQ(pFormat, nullptr);
            return CString("Nr. 7");
        }
        void SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat) override {
            EXPECT_EQ(pFormat, nullptr);
            read = pszOFL;
        }
        void Clear() override { ++cleared; }
        std::string read;
        int cleared = 0;
    } value;
    InMemory dialog;
    dialog.addEdit(kEdit);
    load(dialog, kEdit, value);
    EXPECT_EQ(dialog.shown(kEdit), "Nr. 7");
    save(dialog, kEdit, value);
    EXPECT_EQ(value.read, "Nr. 7");
    dialog.type(kEdit, "");
    save(dialog, kEdit, value);
    EXPECT_EQ(value.cleared, 1);
}

}  // namespace

}  // namespace dialogtest
