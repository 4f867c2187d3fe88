#include "TemporaryFile.h"

#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "Error.h"

namespace nkdt::app {

namespace {

// What the signal handler removes. The texts are those of the living objects.
std::array<std::atomic<const char*>, 8> g_paths{};

int takeSlot(const char* path) noexcept {
    for (std::size_t i = 0; i < g_paths.size(); ++i) {
        const char* expected = nullptr;
        if (g_paths[i].compare_exchange_strong(expected, path)) return static_cast<int>(i);
    }
    return -1;
}

void removeAndEnd(int signal) {
    for (const auto& path : g_paths) {
        if (const char* const text = path.load()) (void)::unlink(text);
    }
    (void)::raise(signal);  // the default action was restored
}

}  // namespace

TemporaryFile::TemporaryFile(std::string path) : m_path(std::move(path)), m_slot(takeSlot(m_path.c_str())) {}

TemporaryFile::~TemporaryFile() {
    if (m_path.empty()) return;
    (void)::unlink(m_path.c_str());
    keep();
}

void TemporaryFile::keep() noexcept {
    if (m_slot >= 0) g_paths[static_cast<std::size_t>(m_slot)].store(nullptr);
    m_slot = -1;
    m_path.clear();
}

std::string TemporaryFile::make(std::string pattern, unsigned mode) {
    const int file = ::mkstemp(pattern.data());
    if (file < 0) throw DataError("the file \"" + pattern + "\" cannot be made: " + std::strerror(errno));
    (void)::fchmod(file, static_cast<mode_t>(mode));
    (void)::close(file);
    return pattern;
}

void TemporaryFile::watchSignals() {
    struct sigaction action {};
    action.sa_handler = removeAndEnd;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE})
        (void)::sigaction(signal, &action, nullptr);
}

}  // namespace nkdt::app
