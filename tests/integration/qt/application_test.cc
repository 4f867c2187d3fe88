#include <nkdt/qt/QtApplication.h>
#include <nkdt/qt/QtDialog.h>
#include <nkfw/Exception.h>

#include <QApplication>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>

#include <gtest/gtest.h>

#include "support/FrameworkExceptions.h"

using frameworktest::throws;

namespace {

/// Takes the variables that decide on the platform out of the environment.
class QtApplication : public ::testing::Test {
  protected:
    void SetUp() override { clear(); }
    void TearDown() override { clear(); }

  private:
    static void clear() {
        for (const char* const name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_RUNTIME_DIR"})
            qunsetenv(name);
    }
};

TEST_F(QtApplication, WithoutADisplayDialogsAreDrawnOffScreen) {
    EXPECT_FALSE(CQtApplication::HasDisplay());
    const CQtApplication application;
    EXPECT_EQ(QGuiApplication::platformName(), "offscreen");
    EXPECT_FALSE(CQtApplication::HasDisplay());
}

TEST_F(QtApplication, ADisplayIsWhatTheEnvironmentNames) {
    qputenv("DISPLAY", ":0");
    EXPECT_TRUE(CQtApplication::HasDisplay());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    EXPECT_FALSE(CQtApplication::HasDisplay());
    qputenv("QT_QPA_PLATFORM", "minimal");
    EXPECT_FALSE(CQtApplication::HasDisplay());
    qputenv("QT_QPA_PLATFORM", "xcb");
    EXPECT_TRUE(CQtApplication::HasDisplay());
    qunsetenv("QT_QPA_PLATFORM");
    qunsetenv("DISPLAY");
    EXPECT_FALSE(CQtApplication::HasDisplay());
    qputenv("WAYLAND_DISPLAY", "wayland-0");
    EXPECT_TRUE(CQtApplication::HasDisplay());
}

TEST_F(QtApplication, ADisplayThatDoesNotAnswerIsNone) {
    qputenv("DISPLAY", ":9999");
    {
        const CQtApplication application;
        EXPECT_EQ(QGuiApplication::platformName(), "offscreen");
        EXPECT_FALSE(CQtApplication::HasDisplay());
    }
    EXPECT_TRUE(CQtApplication::HasDisplay()) << "it is named";
    EXPECT_TRUE(qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"));
}

TEST_F(QtApplication, APlatformThatIsNamedStays) {
    qputenv("DISPLAY", ":9999");
    qputenv("QT_QPA_PLATFORM", "minimal");
    {
        const CQtApplication application;
        EXPECT_EQ(QGuiApplication::platformName(), "minimal");
        EXPECT_FALSE(CQtApplication::HasDisplay());
    }
    EXPECT_EQ(qgetenv("QT_QPA_PLATFORM"), "minimal");
}

TEST_F(QtApplication, ASecondOneIsRefused) {
    const auto isRefused = [] { return throws<CInvalidArgException>([] { const CQtApplication second; }); };
    {
        const CQtApplication application;
        EXPECT_TRUE(isRefused());
        EXPECT_NE(QCoreApplication::instance(), nullptr) << "the first one is left alone";
        EXPECT_EQ(QApplication::allWidgets().size(), 0);
    }
    EXPECT_FALSE(isRefused()) << "one after the other";
    char name[] = "program";
    char* arguments[] = {name, nullptr};
    int count = 1;
    const QCoreApplication another(count, arguments);
    EXPECT_TRUE(isRefused());
}

TEST_F(QtApplication, AMissingRuntimeFolderIsMadeAndTakenAway) {
    QString folder;
    {
        const CQtApplication application;
        folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
        const QFileInfo info(folder);
        EXPECT_TRUE(info.isDir());
        EXPECT_FALSE(info.permission(QFileDevice::ReadGroup));
        EXPECT_FALSE(info.permission(QFileDevice::ReadOther));
    }
    EXPECT_FALSE(QFileInfo::exists(folder));
    EXPECT_TRUE(qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"));
}

TEST_F(QtApplication, ARuntimeFolderThatIsNamedStays) {
    qputenv("XDG_RUNTIME_DIR", "/");
    const CQtApplication application;
    EXPECT_EQ(qEnvironmentVariable("XDG_RUNTIME_DIR"), "/");
}

TEST_F(QtApplication, QtsArgumentsAreTakenOutOfTheProgrammes) {
    char name[] = "program";
    char option[] = "-platform";
    char platform[] = "offscreen";
    char rest[] = "rest";
    char* arguments[] = {name, option, platform, rest, nullptr};
    int count = 4;
    const CQtApplication application(count, arguments);
    EXPECT_EQ(count, 2);
    EXPECT_STREQ(arguments[1], "rest");
}

TEST_F(QtApplication, TheMenuOfAnEditControlIsGerman) {
    const CQtApplication application;
    QLineEdit edit;
    const std::unique_ptr<QMenu> menu(edit.createStandardContextMenu());
    QStringList texts;
    for (const QAction* const action : menu->actions()) {
        const QString text = action->text().section('\t', 0, 0);  // without the keys
        if (!text.isEmpty()) texts += text;
    }
    EXPECT_EQ(
        texts.join(", ").toStdString(),
        "&Rückgängig, &Wiederherstellen, &Ausschneiden, &Kopieren, &Einfügen, Löschen, Alles auswählen");
}

TEST_F(QtApplication, ADialogWithoutApplicationIsRefused) {
    EXPECT_TRUE(throws<CInvalidArgException>([] { const CQtDialog dialog; }));
}

}  // namespace
