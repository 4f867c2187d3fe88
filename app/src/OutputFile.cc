#include "OutputFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <limits>

#include "Error.h"
#include "nkfw/Exception.h"

namespace nkdt::app {

namespace {

unsigned modeOfNewFiles() noexcept {
    const mode_t mask = ::umask(0);
    (void)::umask(mask);
    return 0666U & ~mask;
}

std::string withLinksFollowed(const std::string& path) {
    std::error_code failed;
    const std::filesystem::path real = std::filesystem::canonical(path, failed);
    return failed ? path : real.string();
}

}  // namespace

OutputFile::OutputFile(const std::string& path) : m_path(withLinksFollowed(path)) {
    struct stat status {};
    const bool exists = ::stat(m_path.c_str(), &status) == 0;
    if (path.empty()) throw UsageError("no output file is named");
    if (exists && S_ISDIR(status.st_mode)) throw UsageError("the output \"" + path + "\" is a folder");
    if (exists && !S_ISREG(status.st_mode)) {
        m_file.Open(m_path.c_str(), CFile::modeCreate | CFile::modeWrite);
        return;
    }
    const std::filesystem::path folder = std::filesystem::path(m_path).parent_path();
    if (!folder.empty() && !std::filesystem::is_directory(folder))
        throw UsageError("there is no folder \"" + folder.string() + "\"");
    const unsigned mode = exists ? status.st_mode & 0777U : modeOfNewFiles();
    m_temporary = std::make_unique<TemporaryFile>(TemporaryFile::make(m_path + ".XXXXXX", mode));
    m_file.Open(m_temporary->path().c_str(), CFile::modeCreate | CFile::modeWrite);
}

void OutputFile::write(std::string_view text) {
    constexpr std::size_t most = std::numeric_limits<UINT>::max();
    for (; text.size() > most; text.remove_prefix(most))
        m_file.Write(text.data(), std::numeric_limits<UINT>::max());
    m_file.Write(text.data(), static_cast<UINT>(text.size()));
}

void OutputFile::complete() {
    m_file.Close();
    if (!m_temporary) return;
    if (std::rename(m_temporary->path().c_str(), m_path.c_str()) != 0)
        CFileException::ThrowOsError(errno, m_path.c_str());
    m_temporary->keep();
}

}  // namespace nkdt::app
