#include "AppTest.h"
#include "RowForm.h"
#include "nkdt/NkDtBool.h"
#include "nkdt/NkDtDouble.h"
#include "nkdt/NkDtLong.h"
#include "nkdt/NkDtString.h"
#include "nkfw/MemoryDialog.h"

using namespace nktest;

namespace {

using nkdt::app::BoundColumn;
using nkdt::app::BoundColumns;
using nkdt::app::FormField;
using nkdt::app::RowDialog;
using nkdt::app::RowForm;

class Forms : public testing::Test {
  protected:
    enum Column : std::size_t { number, name, weight, ready, paid, letter };

    Forms() {
        add("Nummer", "NkDtLong", NkDtLong(4711));
        add("A & B", "NkDtString", NkDtString("Hammer"));
        add("Gewicht", "NkDtDouble", NkDtDouble(0.125));
        add("Fertig", "NkDtBool", NkDtBool(NkDtWmNull));
        add("Bezahlt", "NkDtBool", NkDtBool(TRUE));
        add("Klasse", "NkDtChar", NkDtString("A"));
        columns[paid].nullable = false;
        form = std::make_unique<RowForm>(columns);
        dialog = nkdt::app::makeMemoryDialog(form->fields());
        form->load(*dialog);
    }

    template <class Value>
    void add(const char* column, const char* className, const Value& value) {
        const auto* const kind = nkdt::app::findKind(className);
        columns.push_back({column, ansi(column), kind, kind->makeCell()});
        if (value.GetDtTyp() == columns.back().cell->value().GetDtTyp()) {
            columns.back().cell->value().Assign(value);
        } else {
            columns.back().cell->setText(NkDtString(value));
        }
        columns.back().cell->value().SetModified(FALSE);
    }

    std::string shown(Column column) { return utf8(form->shownText(*dialog, column).View()); }
    std::string entered(Column column, const char* text) {
        const auto reason = form->enter(*dialog, column, ansi(text));
        return reason ? utf8(reason->View()) : "";
    }
    const NkDtBasis& value(Column column) const { return columns[column].cell->value(); }
    std::vector<Column> modified() const {
        std::vector<Column> result;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (columns[i].cell->value().IsModified()) result.push_back(static_cast<Column>(i));
        }
        return result;
    }

    BoundColumns columns;
    std::unique_ptr<RowForm> form;
    std::unique_ptr<RowDialog> dialog;
};

}  // namespace

TEST_F(Forms, HaveAControlForEachColumn) {
    const auto& fields = form->fields();
    ASSERT_EQ(fields.size(), 6U);
    for (std::size_t i = 0; i < fields.size(); ++i)
        EXPECT_NE(dialog->window().GetDlgItem(fields[i].id), nullptr) << i;
    EXPECT_EQ(fields[name].label, "A && B");
    EXPECT_EQ(fields[weight].type, NkDtTypDouble);
    EXPECT_FALSE(fields[weight].checkBox);
    EXPECT_TRUE(fields[ready].checkBox);
    EXPECT_TRUE(fields[ready].threeState);
    EXPECT_FALSE(fields[paid].threeState) << "the database promises a value";
    EXPECT_EQ(fields[letter].textLimit, 1);
}

TEST_F(Forms, ShowTheValues) {
    EXPECT_EQ(shown(number), "4711");
    EXPECT_EQ(shown(name), "Hammer");
    EXPECT_EQ(shown(weight), "0,13");
    EXPECT_EQ(shown(ready), "[-]");
    EXPECT_EQ(shown(paid), "[x]");
    EXPECT_EQ(shown(letter), "A");
}

TEST_F(Forms, ChangeNothingUntouched) {
    EXPECT_THAT(form->save(*dialog), IsEmpty());
    EXPECT_THAT(modified(), IsEmpty());
    EXPECT_EQ(static_cast<const NkDtDouble&>(value(weight)).GetValue(), 0.125);
    EXPECT_FALSE(value(ready).IsDefined());
}

TEST_F(Forms, ChangeNothingWhenWhatWasEnteredIsTakenBack) {
    EXPECT_EQ(entered(weight, "7"), "");
    EXPECT_EQ(entered(weight, "0,13"), "");
    EXPECT_EQ(entered(ready, "Ja"), "");
    EXPECT_EQ(entered(ready, ""), "");
    EXPECT_THAT(form->save(*dialog), IsEmpty());
    EXPECT_THAT(modified(), IsEmpty());
    EXPECT_EQ(static_cast<const NkDtDouble&>(value(weight)).GetValue(), 0.125);
}

TEST_F(Forms, TakeWhatWasEntered) {
    EXPECT_EQ(entered(number, "-5"), "");
    EXPECT_EQ(entered(name, ""), "");
    EXPECT_EQ(entered(ready, "Nein"), "");
    EXPECT_EQ(entered(paid, "Nein"), "");
    EXPECT_THAT(form->save(*dialog), IsEmpty());
    EXPECT_EQ(modified(), (std::vector<Column>{number, name, ready, paid}));
    EXPECT_EQ(static_cast<const NkDtLong&>(value(number)).GetValue(), -5);
    EXPECT_FALSE(value(name).IsDefined());
    EXPECT_TRUE(static_cast<const NkDtBool&>(value(ready)).IsFalse());
    EXPECT_TRUE(static_cast<const NkDtBool&>(value(paid)).IsFalse());
}

TEST_F(Forms, MakeATruthValueUndefinedWhereTheColumnTakesThat) {
    EXPECT_EQ(entered(ready, "Ja"), "");
    EXPECT_THAT(form->save(*dialog), IsEmpty());
    EXPECT_TRUE(value(ready).IsDefined());
    EXPECT_EQ(entered(ready, ""), "");
    EXPECT_THAT(form->save(*dialog), IsEmpty());
    EXPECT_FALSE(value(ready).IsDefined());
    EXPECT_EQ(entered(paid, ""), "Der Wert muss wahr oder falsch sein.");
    EXPECT_EQ(shown(paid), "[x]");
}

TEST_F(Forms, TakeNothingWhenOneRefuses) {
    EXPECT_EQ(entered(number, "12x"), "");
    EXPECT_EQ(entered(name, "neu"), "");
    EXPECT_EQ(entered(weight, "1,2,3"), "");
    const RowForm::Refusals refusals = form->save(*dialog);
    ASSERT_EQ(refusals.size(), 2U);
    EXPECT_EQ(refusals[0].column, number);
    EXPECT_EQ(utf8(refusals[0].reason.View()), "\"12x\" an Position 3: unerwartetes Zeichen");
    EXPECT_EQ(refusals[1].column, weight);
    EXPECT_THAT(modified(), IsEmpty());
    EXPECT_EQ(static_cast<const NkDtString&>(value(name)), "Hammer");

    EXPECT_EQ(entered(number, "12"), "");
    EXPECT_EQ(entered(weight, "0,13"), "");
    EXPECT_THAT(form->save(*dialog), IsEmpty());
    EXPECT_EQ(modified(), (std::vector<Column>{number, name}));
}

TEST_F(Forms, StartEachSavingFromWhatWasLoaded) {
    EXPECT_EQ(entered(weight, "7"), "");
    EXPECT_THAT(form->save(*dialog), IsEmpty());
    EXPECT_EQ(modified(), std::vector<Column>{weight});
    EXPECT_EQ(entered(weight, "0,13"), "");
    EXPECT_THAT(form->save(*dialog), IsEmpty());
    EXPECT_THAT(modified(), IsEmpty());
    EXPECT_EQ(static_cast<const NkDtDouble&>(value(weight)).GetValue(), 0.125);
}

TEST_F(Forms, TakeNoTextThatIsTooLongForItsControl) {
    EXPECT_EQ(entered(letter, "AB"), "Der Text ist zu lang für das Feld.");
    EXPECT_EQ(shown(letter), "A");
}

TEST_F(Forms, CollectAControlThatFails) {
    EXPECT_EQ(entered(number, "5"), "");
    EXPECT_EQ(entered(name, "neu"), "");
    dynamic_cast<CMemoryDialog&>(dialog->window())
        .SetFailure(form->fields()[name].id, CMemoryDialog::FailAccess);
    const RowForm::Refusals refusals = form->save(*dialog);
    ASSERT_EQ(refusals.size(), 1U);
    EXPECT_EQ(refusals[0].column, name);
    EXPECT_THAT(modified(), IsEmpty());
}

TEST_F(Forms, KeepATruthValueThatIsNeitherOneNorZero) {
    columns[ready].cell->value().Assign(NkDtBool(2));
    columns[ready].cell->value().SetModified(FALSE);
    RowForm other(columns);
    other.load(*dialog);
    EXPECT_EQ(utf8(other.shownText(*dialog, ready).View()), "[x]");
    EXPECT_THAT(other.save(*dialog), IsEmpty());
    EXPECT_THAT(modified(), IsEmpty());
    EXPECT_EQ(static_cast<const NkDtBool&>(value(ready)).GetValue(), 2);
}

namespace {

/// A dialog like one on a screen, whose controls do not hold every text.
class ShortDialog final : public RowDialog {
  public:
    explicit ShortDialog(const nkdt::app::FormFields& fields)
        : m_dialog(nkdt::app::makeMemoryDialog(fields)) {}
    CDialogWnd& window() noexcept override { return m_dialog->window(); }
    bool enter(int id, LPCTSTR text) override { return m_dialog->enter(id, text); }
    void lock(int id, const CString& reason) override {
        locked.push_back(std::to_string(id) + ": " + utf8(reason.View()));
    }
    void limit(int id, INT most) { dynamic_cast<CMemoryDialog&>(window()).SetTextLimit(id, most); }

    std::vector<std::string> locked;

  private:
    std::unique_ptr<RowDialog> m_dialog;
};

}  // namespace

TEST_F(Forms, ShowTheBeginningOfATextThatIsTooLongForItsControl) {
    const std::string whole(150, 'x');
    columns[name].cell->value().SetFromOFL(whole.c_str());
    columns[name].cell->value().SetModified(FALSE);
    ShortDialog screen(form->fields());
    const int id = form->fields()[name].id;
    screen.limit(id, 149);
    form->load(screen);
    EXPECT_EQ(utf8(form->shownText(screen, name).View()), std::string(100, 'x') + "…");
    EXPECT_EQ(form->shownText(screen, number), "4711") << "the others are shown whole";
    EXPECT_THAT(screen.locked,
                testing::ElementsAre(std::to_string(id) + ": Der Text ist zu lang, um ihn hier zu ändern."));

    EXPECT_FALSE(form->enter(screen, number, "4712"));
    EXPECT_THAT(form->save(screen), IsEmpty());
    EXPECT_EQ(modified(), std::vector<Column>{number});
    EXPECT_EQ(static_cast<const NkDtString&>(value(name)), whole.c_str());

    EXPECT_TRUE(screen.enter(id, "y"));
    const RowForm::Refusals refusals = form->save(screen);
    ASSERT_EQ(refusals.size(), 1U);
    EXPECT_EQ(refusals[0].column, name);
    EXPECT_EQ(utf8(refusals[0].reason.View()), "Der Text ist zu lang, um ihn hier zu ändern.");
    EXPECT_EQ(static_cast<const NkDtString&>(value(name)), whole.c_str());

    screen.limit(id, 150);
    form->load(screen);
    EXPECT_TRUE(screen.enter(id, "y"));
    EXPECT_THAT(form->save(screen), IsEmpty());
    EXPECT_EQ(static_cast<const NkDtString&>(value(name)), "y");
}

TEST_F(Forms, LockAValueThatItsFormatCannotShow) {
    static const NkFormat narrow(4, 0, FormatDezimalTrennerKomma, FormatTausenderTrennerOhne,
                                 FormatVorzeichenVorn, FormatVorzeichenNurMinus, 0, '0', 0, '0');
    columns[number].cell->value().SetFromOFL("47110");
    columns[number].cell->value().SetModified(FALSE);
    columns[number].cell->value().SetFormat(&narrow);
    ShortDialog screen(form->fields());
    form->load(screen);
    ASSERT_EQ(screen.locked.size(), 1U);
    EXPECT_THAT(screen.locked[0], testing::StartsWith("1: "));
    EXPECT_THAT(screen.locked[0], Not(HasSubstr("Folgefehler")));
    EXPECT_THAT(form->save(screen), IsEmpty());
    EXPECT_THAT(modified(), IsEmpty());
    EXPECT_EQ(static_cast<const NkDtLong&>(value(number)).GetValue(), 47110);
}

TEST_F(Forms, LeaveAValueThatWasModifiedBeforeModified) {
    columns[name].cell->value().SetModified(TRUE);
    form->load(*dialog);
    EXPECT_EQ(entered(number, "5"), "");
    EXPECT_THAT(form->save(*dialog), IsEmpty());
    EXPECT_EQ(modified(), (std::vector<Column>{number, name}));
    EXPECT_EQ(entered(number, "4711"), "");
    EXPECT_THAT(form->save(*dialog), IsEmpty());
    EXPECT_EQ(modified(), std::vector<Column>{name});
}
