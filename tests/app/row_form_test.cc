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
