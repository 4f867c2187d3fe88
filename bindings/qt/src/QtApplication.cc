#include "nkdt/qt/QtApplication.h"

#include <QApplication>
#include <QTemporaryDir>
#include <optional>

#include "GermanTexts.h"
#include "nkfw/Exception.h"

namespace {

constexpr const char* platformVariable = "QT_QPA_PLATFORM";

bool isNamed(const char* variable) {
    return !qEnvironmentVariableIsEmpty(variable);
}

// Qt ends a program whose only platform cannot be used, so the list closes with one that always can.
QByteArray platformsToTry() {
    QByteArray platforms;
    if (isNamed("WAYLAND_DISPLAY")) platforms += "wayland;";
    if (isNamed("DISPLAY")) platforms += "xcb;";
    return platforms + "offscreen";
}

bool isSeen(const QByteArray& platform) {
    return !platform.startsWith("offscreen") && !platform.startsWith("minimal");
}

// Two application objects end the program, at the latest when the second one ends.
void checkThatThereIsNone() {
    if (QCoreApplication::instance() != nullptr) throw new CInvalidArgException;
}

// The environment has to be right before Qt's application object is made.
class Environment {
  public:
    Environment() {
        checkThatThereIsNone();
        m_platformChosen = !isNamed(platformVariable);
        if (m_platformChosen) qputenv(platformVariable, platformsToTry());
        if (!isNamed("XDG_RUNTIME_DIR")) {
            m_folder.emplace();
            qputenv("XDG_RUNTIME_DIR", m_folder->path().toLocal8Bit());
        }
    }
    ~Environment() {
        if (m_folder.has_value()) qunsetenv("XDG_RUNTIME_DIR");
        if (m_platformChosen) qunsetenv(platformVariable);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

  private:
    bool m_platformChosen = false;
    std::optional<QTemporaryDir> m_folder;
};

}  // namespace

class CQtApplication::Impl {
  public:
    Impl() : m_application(m_count, m_arguments) { QCoreApplication::installTranslator(&m_german); }
    Impl(int& argc, char** argv) : m_application(argc, argv) {
        QCoreApplication::installTranslator(&m_german);
    }

  private:
    // Qt keeps referring to the arguments.
    int m_count = 1;
    char m_name[5] = "nkdt";
    char* m_arguments[2] = {m_name, nullptr};

    Environment m_environment;
    nkdt::qt::GermanTexts m_german;
    QApplication m_application;
};

CQtApplication::CQtApplication() : m_impl(std::make_unique<Impl>()) {}

CQtApplication::CQtApplication(int& argc, char** argv) : m_impl(std::make_unique<Impl>(argc, argv)) {}

CQtApplication::~CQtApplication() = default;

BOOL CQtApplication::HasDisplay() noexcept {
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr)
        return isSeen(QGuiApplication::platformName().toLatin1()) ? TRUE : FALSE;
    if (isNamed(platformVariable)) return isSeen(qgetenv(platformVariable)) ? TRUE : FALSE;
    return isNamed("DISPLAY") || isNamed("WAYLAND_DISPLAY") ? TRUE : FALSE;
}
