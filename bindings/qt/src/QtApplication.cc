#include "nkdt/qt/QtApplication.h"

#include <QApplication>
#include <QTemporaryDir>
#include <optional>

#include "GermanTexts.h"

namespace {

bool isDisplayNamed() {
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

// The environment has to be right before Qt's application object is made.
class Environment {
  public:
    Environment() {
        if (!isDisplayNamed() && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) {
            m_folder.emplace();
            qputenv("XDG_RUNTIME_DIR", m_folder->path().toLocal8Bit());
        }
    }
    ~Environment() {
        if (m_folder.has_value()) qunsetenv("XDG_RUNTIME_DIR");
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

  private:
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
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (!platform.isEmpty())
        return platform.startsWith("offscreen") || platform.startsWith("minimal") ? FALSE : TRUE;
    return isDisplayNamed() ? TRUE : FALSE;
}
