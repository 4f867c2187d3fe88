// Where things stand, how the keyboard reaches them, and the picture.

#include <nkfw/Exception.h>
#include <nkfw/File.h>

#include <QImage>
#include <QLayout>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>
#include <vector>

#include "integration/qt/QtTest.h"

namespace {

using namespace qttest;

const auto* const application = ::testing::AddGlobalTestEnvironment(new Application);

/// A field of each class.
class QtLayout : public ::testing::Test {
  protected:
    enum Id : int {
        kLong = 1,
        kShort,
        kDouble,
        kDecimal,
        kBool,
        kChar,
        kDateTime,
        kDate,
        kTime,
        kText,
        kBox
    };

    void SetUp() override {
        dialog.AddField(kLong, "Nummer", nLong);
        dialog.AddField(kShort, "Lagerort", nShort);
        dialog.AddField(kDouble, "Gewicht", dDouble);
        dialog.AddField(kDecimal, "Preis", dDecimal);
        dialog.AddField(kBool, "Aktiv", fBool);
        dialog.AddField(kChar, "Klasse", chChar);
        dialog.AddField(kDateTime, "Angelegt", dtDateTime);
        dialog.AddField(kDate, "Seit", dtDate);
        dialog.AddField(kTime, "Arbeitszeit", tTime);
        dialog.AddField(kText, "Bezeichnung", strText);
        dialog.AddCheckField(kBox, "Lieferbar", fBox);
        dialog.UpdateData(FALSE);
    }
    QRect placeOf(int id) { return place(dialog, *dialog.GetWidget(id)); }

    NkDtLong nLong{-2147483647};
    NkDtShort nShort{-32768};
    NkDtDouble dDouble{-1234567890.25};
    NkDtDecimal dDecimal{"-1234567890.25"};
    NkDtBool fBool{FALSE};
    NkDtChar chChar{'W'};
    NkDtDateTime dtDateTime{29, 2, 2004, 13, 5, 9};
    NkDtDateZp dtDate{29, 2, 2004};
    NkDtTime tTime{-1234, -30};
    NkDtString strText{"Ein Text von gut vierzig Zeichen L\xE4nge"};
    NkDtBool fBox{TRUE};
    CQtDialog dialog{"Alle Klassen"};
};

TEST_F(QtLayout, ControlsStandInOneColumnBeneathEachOther) {
    show(dialog);
    for (int id = kShort; id <= kBox; ++id) {
        EXPECT_EQ(placeOf(id).left(), placeOf(kLong).left()) << id;
        EXPECT_GT(placeOf(id).top(), placeOf(id - 1).bottom()) << id;
    }
}

TEST_F(QtLayout, LabelsStandInTheLineOfTheirControls) {
    show(dialog);
    int labels = 0;
    for (const QLabel* const label : dialog.GetDialog()->findChildren<QLabel*>()) {
        if (label->buddy() == nullptr) continue;
        ++labels;
        EXPECT_EQ(place(dialog, *label).left(), dialog.GetDialog()->layout()->contentsMargins().left());
        EXPECT_LE(std::abs(place(dialog, *label).center().y() - place(dialog, *label->buddy()).center().y()),
                  1);
        EXPECT_LT(place(dialog, *label).right(), place(dialog, *label->buddy()).left());
    }
    EXPECT_EQ(labels, 10);
}

TEST_F(QtLayout, WidthFollowsTheClassAndFitsItsText) {
    show(dialog);
    for (const auto& [narrow, wide] : std::vector<std::pair<int, int>>{{kChar, kBool},
                                                                       {kBool, kShort},
                                                                       {kShort, kTime},
                                                                       {kTime, kDate},
                                                                       {kDate, kLong},
                                                                       {kLong, kDateTime},
                                                                       {kDateTime, kDecimal},
                                                                       {kDecimal, kText}})
        EXPECT_LT(placeOf(narrow).width(), placeOf(wide).width()) << narrow << " and " << wide;
    EXPECT_EQ(placeOf(kDecimal).width(), placeOf(kDouble).width());
    for (int id = kLong; id <= kText; ++id) {
        const QLineEdit& control = edit(dialog, id);
        EXPECT_LT(control.fontMetrics().horizontalAdvance(control.text()) + 4, control.width())
            << control.text().toStdString();
    }
}

TEST_F(QtLayout, ANumberThatIsLongerThanUsualIsShownWhole) {
    dDecimal = NkDtDecimal("-123456789012345678.9012345678");
    dDouble = -1.7976931348623157e300;
    dialog.UpdateData(FALSE);
    show(dialog);
    const QLineEdit& control = edit(dialog, kDecimal);
    EXPECT_LT(control.fontMetrics().horizontalAdvance(control.text()) + 4, control.width());
    EXPECT_GT(edit(dialog, kDouble).text().size(), 400);
    const int digit = control.fontMetrics().horizontalAdvance('0');
    EXPECT_GT(edit(dialog, kDouble).width(), 40 * digit);
    EXPECT_LT(edit(dialog, kDouble).width(), 45 * digit) << "there is an end to it";
}

TEST_F(QtLayout, NumbersStandAtTheRight) {
    for (int id = kLong; id <= kText; ++id) {
        const bool right = id == kLong || id == kShort || id == kDouble || id == kDecimal || id == kTime;
        EXPECT_EQ(edit(dialog, id).alignment().testFlag(Qt::AlignRight), right) << id;
    }
}

TEST_F(QtLayout, TabGoesThroughTheFieldsAndTheButtonsAndBack) {
    show(dialog);
    QWidget* const window = dialog.GetDialog();
    EXPECT_EQ(window->focusWidget(), dialog.GetWidget(kLong));
    for (int id = kLong; id <= kBox; ++id) {
        EXPECT_EQ(window->focusWidget(), dialog.GetWidget(id)) << id;
        EXPECT_EQ(dialog.GetFocus(), dialog.GetDlgItem(id)) << id;
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(window->focusWidget(), button(dialog, "Speichern"));
    EXPECT_EQ(dialog.GetFocus(), nullptr);
    QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window->focusWidget(), button(dialog, "Abbrechen"));
    QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window->focusWidget(), dialog.GetWidget(kLong));
    QTest::keyClick(window->focusWidget(), Qt::Key_Backtab);
    EXPECT_EQ(window->focusWidget(), button(dialog, "Abbrechen"));
}

TEST(QtMnemonics, PutTheCursorIntoTheField) {
    CQtDialog dialog;
    dialog.AddEdit(1, "&Nummer");
    dialog.AddEdit(2, "&Bezeichnung");
    dialog.AddCheck(3, "&Lieferbar");
    show(dialog);
    QTest::keyClick(dialog.GetDialog(), Qt::Key_B, Qt::AltModifier);
    EXPECT_TRUE(edit(dialog, 2).hasFocus());
    QTest::keyClick(dialog.GetDialog(), Qt::Key_N, Qt::AltModifier);
    EXPECT_TRUE(edit(dialog, 1).hasFocus());
    QTest::keyClick(dialog.GetDialog(), Qt::Key_L, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return box(dialog, 3).isChecked(); }));
}

TEST(QtMnemonics, AreFoundWhereTheLabelHasNone) {
    CQtDialog dialog;
    dialog.AddEdit(1, "Preis");
    dialog.AddEdit(2, "Ei&n && aus");
    dialog.AddEdit(3, "PEN");
    dialog.AddEdit(4, "Soll && Haben");
    dialog.AddCheck(5, "Platz");
    dialog.AddEdit(6, "pnEr");
    dialog.AddEdit(7, "NPE");
    show(dialog);
    EXPECT_EQ(labels(dialog).join(", ").toStdString(),
              "&Preis, Ei&n && aus, P&EN, S&oll && Haben, pnE&r, NPE");
    EXPECT_EQ(box(dialog, 5).text(), "P&latz");
    EXPECT_EQ(edit(dialog, 2).accessibleName(), "Ein & aus");
}

TEST(QtMnemonics, ThatTheProgramChoseComeFirstAndTheButtonsNext) {
    CQtDialog dialog;
    dialog.AddEdit(1, "Name");
    dialog.AddEdit(2, "Sache");
    dialog.AddEdit(3, "&Nummer");
    dialog.AddEdit(4, "&Art");
    show(dialog);
    EXPECT_EQ(labels(dialog).join(", ").toStdString(), "Na&me, Sa&che, &Nummer, &Art");
    EXPECT_EQ(button(dialog, "Speichern")->text(), "&Speichern");
    EXPECT_EQ(button(dialog, "Abbrechen")->text(), "A&bbrechen");
    dialog.AddEdit(5, "Neu");
    EXPECT_EQ(labels(dialog).back(), "N&eu") << "later on";
}

TEST(QtMnemonics, AreInThePictureToo) {
    const QTemporaryDir folder;
    CQtDialog dialog;
    dialog.AddEdit(1, "Name");
    dialog.SavePicture(folder.filePath("bild.png").toLocal8Bit().constData());
    EXPECT_EQ(labels(dialog).join("").toStdString(), "&Name");
}

TEST(QtButtons, AreGerman) {
    const CQtDialog dialog;
    EXPECT_NE(button(dialog, "Speichern"), nullptr);
    EXPECT_NE(button(dialog, "Abbrechen"), nullptr);
    EXPECT_TRUE(button(dialog, "Speichern")->isDefault());
    const CQtDialog other(
        "Pr\xFC"
        "fung",
        "Pr\xFC"
        "fen");
    EXPECT_NE(button(other, "Prüfen"), nullptr);
    EXPECT_EQ(other.GetDialog()->windowTitle(), "Prüfung");
}

TEST(QtButtons, AreReachedByTheirMnemonics) {
    CQtDialog dialog;
    dialog.AddEdit(1, "Name");
    show(dialog);
    QTest::keyClick(dialog.GetDialog(), Qt::Key_A, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog.GetDialog()->isVisible(); }));
    EXPECT_EQ(dialog.GetDialog()->result(), QDialog::Rejected);
}

// ---- Labels

TEST(QtLabels, AreShownAsTheyAre) {
    CQtDialog dialog;
    dialog.AddEdit(1, "&a<i>b</i>");
    dialog.AddEdit(2, "&Ort");
    show(dialog);
    for (const QLabel* const label : dialog.GetDialog()->findChildren<QLabel*>()) {
        if (label->buddy() != nullptr) {
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
        }
    }
    EXPECT_EQ(labels(dialog).front(), "&a<i>b</i>");
    edit(dialog, 2).setFocus();
    QTest::keyClick(dialog.GetDialog(), Qt::Key_A, Qt::AltModifier);
    EXPECT_TRUE(edit(dialog, 1).hasFocus());
}

TEST(QtLabels, ThatAreVeryLongAreCutAndWholeInTheirTooltip) {
    const std::string whole = "W<b>&&" + std::string(300, 'x');
    CQtDialog dialog;
    dialog.AddEdit(1, ("&" + whole).c_str());
    dialog.AddCheck(2, ("&" + std::string(300, 'y')).c_str());
    show(dialog);
    EXPECT_LE(dialog.GetDialog()->width(), dialog.GetDialog()->screen()->availableGeometry().width());
    const QString shown = labels(dialog).front();
    EXPECT_TRUE(shown.startsWith("&W<b>&&xxx")) << shown.toStdString();
    EXPECT_TRUE(shown.endsWith(QStringLiteral("…"))) << shown.toStdString();
    EXPECT_TRUE(box(dialog, 2).text().endsWith(QStringLiteral("…")));
    const QString name = QString("W<b>&%1").arg(QString(300, 'x'));
    EXPECT_EQ(edit(dialog, 1).accessibleName(), name);
    for (const QLabel* const label : dialog.GetDialog()->findChildren<QLabel*>()) {
        if (label->buddy() != nullptr) {
            EXPECT_EQ(label->toolTip(), QString("<p>%1</p>").arg(name.toHtmlEscaped()));
        }
    }
}

TEST(QtLabels, OfUsualLengthHaveNoTooltip) {
    CQtDialog dialog;
    dialog.AddCheck(1, "&Lieferbar && bestellt");
    show(dialog);
    EXPECT_EQ(box(dialog, 1).text(), "&Lieferbar && bestellt");
    EXPECT_EQ(box(dialog, 1).toolTip(), "");
}

TEST(QtFocus, StartsInTheFirstFieldThatCanBeEdited) {
    CQtDialog dialog;
    dialog.AddEdit(1, "&Nummer");
    dialog.AddEdit(2, "&Ort");
    dialog.AddEdit(3, "&Name");
    dialog.SetReadOnly(1);
    dialog.SetReadOnly(2);
    show(dialog);
    EXPECT_TRUE(edit(dialog, 3).hasFocus());
}

TEST(QtFocus, GoesToTheButtonsWhenNothingCanBeEdited) {
    CQtDialog dialog;
    dialog.AddEdit(1, "&Nummer");
    dialog.SetReadOnly(1);
    show(dialog);
    EXPECT_TRUE(button(dialog, "Speichern")->hasFocus());
}

// ---- Many fields

class QtManyFields : public ::testing::Test {
  protected:
    static constexpr int kFields = 100;
    QtManyFields() {
        for (int id = 1; id <= kFields; ++id)
            dialog.AddEdit(id, "Feld");
    }
    CQtDialog dialog;
};

TEST_F(QtManyFields, AreScrolledWithinTheScreen) {
    show(dialog);
    EXPECT_LE(dialog.GetDialog()->height(), dialog.GetDialog()->screen()->availableGeometry().height());
    EXPECT_FALSE(edit(dialog, 1).visibleRegion().isEmpty());
    EXPECT_TRUE(edit(dialog, kFields).visibleRegion().isEmpty());
    dialog.GetDlgItem(kFields)->SetFocus();
    EXPECT_EQ(edit(dialog, kFields).visibleRegion().boundingRect().size(), edit(dialog, kFields).size());
}

TEST_F(QtManyFields, AreReachedSidewaysWhereTheScreenIsTooNarrow) {
    dialog.AddEdit(kFields + 1, "Ein Name von einiger L\xE4nge, vierzig", NkDtTypString);
    const std::string message(200, 'm');
    dialog.ShowError(kFields + 1, (message + " " + message).c_str());
    dialog.GetWidget(kFields + 1)->setMinimumWidth(2000);
    show(dialog);
    EXPECT_LE(dialog.GetDialog()->width(), dialog.GetDialog()->screen()->availableGeometry().width());
    const auto* const bar = dialog.GetDialog()->findChild<QScrollArea*>()->horizontalScrollBar();
    EXPECT_TRUE(bar->isVisible());
    EXPECT_GT(bar->maximum(), 1000);
}

TEST_F(QtManyFields, AreAllInThePicture) {
    const QTemporaryDir folder;
    const QByteArray path = folder.filePath("bild.png").toLocal8Bit();
    dialog.SavePicture(path.constData());
    const QImage picture(path);
    EXPECT_GT(picture.height(), 2 * kFields * edit(dialog, 1).sizeHint().height());
}

// ---- The picture

TEST_F(QtLayout, ThePictureHasTwoPixelsForOne) {
    const QTemporaryDir folder;
    const QByteArray path = folder.filePath(QStringLiteral("für README.png")).toLocal8Bit();
    show(dialog);
    dialog.SavePicture(path.constData());
    const QImage picture(path, "PNG");
    EXPECT_EQ(picture.size(), dialog.GetDialog()->size() * 2);
    // The text of a field and the paper around it.
    const QRect field = placeOf(kText);
    const QImage part =
        picture.copy(QRect(field.topLeft() * 2, field.size() * 2)).convertToFormat(QImage::Format_Grayscale8);
    int dark = 0;
    int light = 0;
    for (int y = 0; y < part.height(); ++y) {
        for (int x = 0; x < part.width(); ++x) {
            const int gray = qGray(part.pixel(x, y));
            dark += gray < 64 ? 1 : 0;
            light += gray > 240 ? 1 : 0;
        }
    }
    EXPECT_GT(dark, 500);
    EXPECT_GT(light, dark * 5);
}

TEST_F(QtLayout, ThePictureShowsWhatIsTold) {
    const QTemporaryDir folder;
    const QByteArray before = folder.filePath("a.png").toLocal8Bit();
    const QByteArray after = folder.filePath("b.png").toLocal8Bit();
    dialog.SavePicture(before.constData());
    dialog.ShowError(kText, "Eine Meldung neben dem breitesten Feld, die nicht in eine einzige Zeile passt.");
    dialog.SavePicture(after.constData());
    EXPECT_GT(QImage(after).width(), QImage(before).width() + 200);
    EXPECT_GT(QImage(after).height(), QImage(before).height());
}

TEST_F(QtLayout, APictureThatCannotBeWrittenIsAnError) {
    try {
        dialog.SavePicture("/nonexistent/bild.png");
        FAIL() << "written";
    } catch (CFileException* exception) {
        EXPECT_EQ(exception->m_cause, CFileException::fileNotFound);
        exception->Delete();
    }
}

TEST_F(QtLayout, AMessageMakesTheWindowGrowAndHidesNothing) {
    show(dialog);
    const QSize before = dialog.GetDialog()->size();
    dialog.ShowError(kText, "Eine Meldung neben dem breitesten Feld, die nicht in eine einzige Zeile passt.");
    QCoreApplication::processEvents();
    EXPECT_GT(dialog.GetDialog()->width(), before.width());
    for (const QLabel* const label : dialog.GetDialog()->findChildren<QLabel*>()) {
        if (!label->isVisible()) continue;
        EXPECT_EQ(label->visibleRegion().boundingRect().size(), label->size()) << label->text().toStdString();
        EXPECT_GE(label->height(), label->heightForWidth(label->width())) << label->text().toStdString();
    }
    dialog.ClearErrors();
    QCoreApplication::processEvents();
    EXPECT_GE(dialog.GetDialog()->width(), before.width());
}

}  // namespace
