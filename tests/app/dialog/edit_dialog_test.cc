#include <QTimer>
#include <functional>

#include "../AppTest.h"
#include "Error.h"
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

class EditDialog : public testing::Test {
  protected:
    enum Id : int { number = 1, name, price, ready };

    EditDialog() {
        database.Open(makeDatabase(folder, "a.db",
                                   {"CREATE TABLE Waren (Nummer INTEGER PRIMARY KEY, Name TEXT, Preis "
                                    "NUMERIC(10,2), Fertig BOOLEAN)",
                                    "INSERT INTO Waren VALUES (1, 'Hammer', 12.5, NULL)"})
                          .c_str());
        row = std::make_unique<StoredRow>(database, CString("Waren"), "1", Selection());
        form = std::make_unique<RowForm>(row->columns());
        screen = nkdt::app::makeScreenDialog(form->fields(), row->title(), Screen::offScreen);
    }

    CQtDialog& window() { return dynamic_cast<CQtDialog&>(screen->window()); }

    /// The dialog runs, and a person does something; it is closed afterwards in any case.
    bool run(const std::function<void()>& person, const std::function<CString()>& store) {
        QTimer::singleShot(0, window().GetDialog(), [&] {
            EXPECT_TRUE(QTest::qWaitForWindowActive(window().GetDialog()));
            person();
            if (window().GetDialog()->isVisible()) {
                ADD_FAILURE() << "still open";
                window().GetDialog()->reject();
            }
        });
        return screen->run(*form, store);
    }
    bool run(const std::function<void()>& person) {
        return run(person, [&] {
            saved = row->save();
            return CString();
        });
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

TEST_F(EditDialog, StaysOpenWhenTheRowCannotBeStored) {
    int attempts = 0;
    const auto store = [&]() -> CString {
        if (++attempts == 1) return "Der erste Versuch";
        if (attempts == 2) throw nkdt::app::DataError("der zweite Versuch");
        saved = row->save();
        return {};
    };
    const auto message = [&] {
        QCoreApplication::processEvents();
        std::string text;
        for (const QLabel* const label : window().GetDialog()->findChildren<QLabel*>()) {
            if (label->isVisible() && label->text().contains(QStringLiteral("Versuch")))
                text = label->text().toStdString();
        }
        return text;
    };
    EXPECT_TRUE(run(
        [&] {
            qttest::type(window(), name, QStringLiteral("neu"));
            qttest::click(window(), QStringLiteral("Speichern"));
            EXPECT_EQ(message(), "Der erste Versuch");
            qttest::click(window(), QStringLiteral("Speichern"));
            EXPECT_EQ(message(), "der zweite Versuch");
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

TEST_F(EditDialog, WritesItsPicture) {
    form->load(*screen);
    screen->savePicture(folder.file("bild.png"));
    EXPECT_TRUE(contentOf(folder.file("bild.png")).starts_with("\x89PNG"));
}
