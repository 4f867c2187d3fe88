#include <QTimer>
#include <functional>

#include "../AppTest.h"
#include "Error.h"
#include "Picture.h"
#include "SaveRow.h"
#include "ScreenDialog.h"
#include "StoredRow.h"
#include "integration/qt/QtTest.h"

using namespace nktest;

namespace {

using nkdt::app::RowForm;
using nkdt::app::Screen;
using nkdt::app::ScreenDialog;
using nkdt::app::Selection;
using nkdt::app::StoredRow;
using nkdt::app::StoreFailure;

class EditDialog : public testing::Test {
  protected:
    enum Id : int { number = 1, name, price, ready };

    EditDialog() {
        database.Open(makeDatabase(folder, "a.db",
                                   {"CREATE TABLE Waren (Nummer INTEGER PRIMARY KEY, Name TEXT NOT NULL, "
                                    "Preis NUMERIC(10,2), Fertig BOOLEAN)",
                                    "INSERT INTO Waren VALUES (1, 'Hammer', 12.5, NULL)"})
                          .c_str());
        row = std::make_unique<StoredRow>(database, CString("Waren"), "1", Selection());
        form = std::make_unique<RowForm>(row->columns());
        screen = nkdt::app::makeScreenDialog(form->fields(), row->title(), Screen::offScreen);
    }

    CQtDialog& window() { return dynamic_cast<CQtDialog&>(screen->window()); }

    /// The dialog runs, and a person does something; it is closed afterwards in any case.
    bool run(const std::function<void()>& person, const std::function<StoreFailure()>& store) {
        QTimer::singleShot(0, window().GetDialog(), [&] {
            EXPECT_TRUE(QTest::qWaitForWindowActive(window().GetDialog()));
            person();
            if (window().GetDialog()->isVisible()) {
                ADD_FAILURE() << "still open";
                window().GetDialog()->reject();
            }
        });
        return screen->run(*form, 1, store);
    }
    bool run(const std::function<void()>& person) {
        return run(person, [&] { return nkdt::app::saveRow(*row, saved); });
    }
    /// The texts of all labels that are seen.
    std::string allText() {
        QCoreApplication::processEvents();
        QStringList texts;
        for (const QLabel* const label : window().GetDialog()->findChildren<QLabel*>()) {
            if (label->isVisible()) texts += label->text();
        }
        return texts.join('\n').toStdString();
    }
    void meanwhile(const char* sql) {
        CDatabase other;
        other.Open(folder.file("a.db").c_str());
        other.ExecuteSQL(sql);
    }
    std::string stored(const std::string& column) {
        return valueOf(folder.file("a.db"), "SELECT " + column + " FROM Waren WHERE Nummer = 1");
    }
    std::string focused() {
        const QWidget* const widget = window().GetDialog()->focusWidget();
        for (const auto& field : form->fields()) {
            if (window().GetWidget(field.id) == widget) return field.label.GetString();
        }
        return "";
    }

    TemporaryFolder folder;
    CDatabase database;
    std::unique_ptr<StoredRow> row;
    std::unique_ptr<RowForm> form;
    std::unique_ptr<ScreenDialog> screen;
    StoredRow::Saved saved{StoredRow::Saved::nothing, {}};
};

}  // namespace

TEST_F(EditDialog, StoresWhatAPersonTypes) {
    EXPECT_TRUE(run([&] {
        EXPECT_EQ(window().GetDialog()->windowTitle(), QStringLiteral("Waren, Nummer 1"));
        qttest::type(window(), name, QStringLiteral("Größe"));
        qttest::type(window(), price, QStringLiteral("1.234,50"));
        EXPECT_TRUE(qttest::isMarked(window(), price));
        qttest::click(window(), QStringLiteral("Speichern"));
    }));
    EXPECT_EQ(saved.columns, (std::vector<std::size_t>{1, 2}));
    EXPECT_EQ(stored("Name"), "Größe");
    EXPECT_EQ(stored("Preis"), "1234.5");
    EXPECT_EQ(stored("Fertig"), "(null)");
}

TEST_F(EditDialog, StoresNothingWhenAPersonGivesUp) {
    EXPECT_FALSE(run([&] {
        qttest::type(window(), name, QStringLiteral("neu"));
        qttest::click(window(), QStringLiteral("Abbrechen"));
    }));
    EXPECT_EQ(stored("Name"), "Hammer");
}

TEST_F(EditDialog, TellsEveryRefusalBesideItsFieldAndPutsTheCursorIntoTheFirst) {
    EXPECT_TRUE(run([&] {
        qttest::type(window(), number, QStringLiteral("1x"));
        qttest::type(window(), price, QStringLiteral("12y"));
        qttest::click(window(), QStringLiteral("Speichern"));
        EXPECT_EQ(qttest::messageBeside(window(), number), "\"1x\" an Position 2: unerwartetes Zeichen");
        EXPECT_EQ(qttest::messageBeside(window(), name), "");
        EXPECT_EQ(qttest::messageBeside(window(), price), "\"12y\" an Position 3: unerwartetes Zeichen");
        EXPECT_EQ(focused(), "Nummer");
        EXPECT_EQ(stored("Preis"), "12.5");
        qttest::type(window(), number, QStringLiteral("1"));
        qttest::type(window(), price, QStringLiteral("12"));
        qttest::click(window(), QStringLiteral("Speichern"));
    }));
    EXPECT_EQ(saved.columns, std::vector<std::size_t>{2});
    EXPECT_EQ(stored("Preis"), "12");
}

TEST_F(EditDialog, HasTheCursorBesideTheKeyAtFirst) {
    EXPECT_FALSE(run([&] {
        EXPECT_EQ(focused(), "Name");
        qttest::click(window(), QStringLiteral("Abbrechen"));
    }));
}

TEST_F(EditDialog, TellsWhatTheColumnsRefuseBesideTheirFields) {
    EXPECT_TRUE(run([&] {
        qttest::type(window(), name, QString());
        qttest::type(window(), price, QStringLiteral("12.345.678.901.234.567,5"));
        qttest::click(window(), QStringLiteral("Speichern"));
        EXPECT_EQ(qttest::messageBeside(window(), number), "");
        EXPECT_EQ(qttest::messageBeside(window(), name), "Dieses Feld darf nicht leer sein.");
        EXPECT_THAT(qttest::messageBeside(window(), price), HasSubstr("12345678901234567.5"));
        EXPECT_THAT(qttest::messageBeside(window(), price), Not(HasSubstr("Zeile")));
        EXPECT_EQ(focused(), "Name");
        EXPECT_EQ(saved.outcome, StoredRow::Saved::refused);
        qttest::type(window(), name, QStringLiteral("neu"));
        qttest::type(window(), price, QStringLiteral("12"));
        qttest::click(window(), QStringLiteral("Speichern"));
    }));
    EXPECT_EQ(saved.columns, (std::vector<std::size_t>{1, 2}));
    EXPECT_EQ(stored("Name"), "neu");
    EXPECT_EQ(stored("Preis"), "12");
}

TEST_F(EditDialog, TellsThatTheDatabaseRefusesTheRow) {
    database.ExecuteSQL(
        "CREATE TRIGGER waechter BEFORE UPDATE OF Preis ON Waren BEGIN SELECT RAISE(ABORT, 'verboten'); END");
    EXPECT_FALSE(run([&] {
        qttest::type(window(), price, QStringLiteral("13"));
        qttest::click(window(), QStringLiteral("Speichern"));
        EXPECT_THAT(allText(), HasSubstr("Die Datenbank lehnt das Speichern ab: "));
        EXPECT_THAT(allText(), HasSubstr("verboten"));
        EXPECT_THAT(allText(), Not(HasSubstr("Zeile 1")));
        qttest::click(window(), QStringLiteral("Abbrechen"));
    }));
}

TEST_F(EditDialog, TellsThatSomebodyElseWasFasterAndTheWayOut) {
    EXPECT_FALSE(run([&] {
        qttest::type(window(), name, QStringLiteral("neu"));
        meanwhile("UPDATE Waren SET Preis = 13, Fertig = 1");
        qttest::click(window(), QStringLiteral("Speichern"));
        EXPECT_THAT(allText(), HasSubstr("von jemand anderem geändert (Preis, Fertig). Es ist nichts "
                                         "gespeichert; bitte brechen Sie ab und öffnen Sie die Zeile neu."));
        meanwhile("DELETE FROM Waren");
        qttest::click(window(), QStringLiteral("Speichern"));
        EXPECT_THAT(allText(),
                    HasSubstr("Diese Zeile wurde inzwischen gelöscht. Es ist nichts gespeichert."));
        qttest::click(window(), QStringLiteral("Abbrechen"));
    }));
}

TEST_F(EditDialog, StaysOpenWhenTheRowCannotBeStored) {
    int attempts = 0;
    const auto store = [&]() -> StoreFailure {
        if (++attempts == 1) return {{}, "Der erste Versuch."};
        if (attempts == 2) throw nkdt::app::DataError("der zweite Versuch.");
        saved = row->save();
        return {};
    };
    EXPECT_TRUE(run(
        [&] {
            qttest::type(window(), name, QStringLiteral("neu"));
            qttest::click(window(), QStringLiteral("Speichern"));
            EXPECT_THAT(allText(), HasSubstr("Der erste Versuch."));
            qttest::click(window(), QStringLiteral("Speichern"));
            EXPECT_THAT(allText(), HasSubstr("der zweite Versuch."));
            EXPECT_THAT(allText(), Not(HasSubstr("Der erste Versuch.")));
            qttest::click(window(), QStringLiteral("Speichern"));
        },
        store));
    EXPECT_EQ(stored("Name"), "neu");
}

TEST_F(EditDialog, ShowsAnUndefinedTruthValueAsNeitherAndTakesItBack) {
    EXPECT_TRUE(run([&] {
        QCheckBox& box = qttest::box(window(), ready);
        EXPECT_EQ(box.checkState(), Qt::PartiallyChecked);
        box.click();
        EXPECT_EQ(box.checkState(), Qt::Checked);
        qttest::click(window(), QStringLiteral("Speichern"));
    }));
    EXPECT_EQ(saved.columns, std::vector<std::size_t>{3});
    EXPECT_EQ(stored("Fertig"), "1");
}

TEST_F(EditDialog, KeepsTheLineEndsOfATextThatIsChanged) {
    row->columns()[1].cell->value().SetFromOFL("a\nb");
    row->columns()[1].cell->value().SetModified(FALSE);
    form = std::make_unique<RowForm>(row->columns());
    EXPECT_TRUE(run([&] {
        qttest::edit(window(), name).setCursorPosition(3);
        qttest::typeInto(qttest::edit(window(), name), QStringLiteral("c"));
        qttest::click(window(), QStringLiteral("Speichern"));
    }));
    EXPECT_EQ(stored("Name"), "a\nbc");
}

TEST_F(EditDialog, ShowsTheBeginningOfATextThatIsTooLongForItAndSavesTheOthers) {
    const std::string longText(1000001, 'x');
    database.ExecuteSQL(CString(std::string_view("UPDATE Waren SET Name = '" + longText + "'")));
    row = std::make_unique<StoredRow>(database, CString("Waren"), "1", Selection());
    form = std::make_unique<RowForm>(row->columns());
    EXPECT_TRUE(run([&] {
        EXPECT_TRUE(qttest::edit(window(), name).text().startsWith(QStringLiteral("xxxxxxxx")));
        EXPECT_TRUE(qttest::edit(window(), name).isReadOnly());
        EXPECT_NE(qttest::messageBeside(window(), name), "");
        qttest::type(window(), price, QStringLiteral("13"));
        qttest::click(window(), QStringLiteral("Speichern"));
    }));
    EXPECT_EQ(stored("Preis"), "13");
    EXPECT_EQ(stored("LENGTH(Name)"), "1000001");
}

TEST_F(EditDialog, WritesItsPicture) {
    form->load(*screen);
    screen->savePicture(folder.file("bild.png"));
    const QImage picture(QString::fromStdString(folder.file("bild.png")), "PNG");
    EXPECT_GT(picture.height(), 2 * 4 * qttest::edit(window(), name).sizeHint().height());
    EXPECT_GT(picture.width(), 2 * qttest::edit(window(), name).sizeHint().width());
    EXPECT_GT(qttest::darkPixels(picture), 500);

    ASSERT_TRUE(screen->enter(form->fields()[1].id, ""));
    screen->savePicture(folder.file("leer.png"));
    const QImage empty(QString::fromStdString(folder.file("leer.png")), "PNG");
    EXPECT_LT(qttest::darkPixels(empty), qttest::darkPixels(picture)) << "without the name";
}
