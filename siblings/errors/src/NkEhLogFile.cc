#include "nkeh/NkEhLogFile.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <ostream>
#include <string_view>

#include "nkfw/Exception.h"

namespace {

constinit std::atomic<NkEhLogFile*> defaultLog{nullptr};

constexpr std::string_view someBlanks = "                                ";

}  // namespace

NkEhLogFile::NkEhLogFile(LPCTSTR pszFileName) {
    if (pszFileName == nullptr) CFileException::ThrowOsError(EINVAL, "");
    m_pFile = std::fopen(pszFileName, "ab");
    if (m_pFile == nullptr) CFileException::ThrowOsError(errno, pszFileName);
}

NkEhLogFile::NkEhLogFile(std::ostream& rStream) : m_pStream(&rStream) {}

NkEhLogFile::~NkEhLogFile() {
    NkEhLogFile* expected = this;
    defaultLog.compare_exchange_strong(expected, nullptr);
    if (m_pFile != nullptr) std::fclose(m_pFile);
}

void NkEhLogFile::Write(LPCTSTR psz) {
    if (psz == nullptr || *psz == '\0') return;
    const std::lock_guard lock(m_mutex);
    std::string_view rest = psz;
    while (!rest.empty()) {
        if (m_fLineStart) {
            for (auto blanks = static_cast<std::size_t>(m_nBlanks); blanks > 0;) {
                const std::size_t count = blanks < someBlanks.size() ? blanks : someBlanks.size();
                WriteBytes(someBlanks.data(), count);
                blanks -= count;
            }
        }
        const std::size_t lineEnd = rest.find('\n');
        m_fLineStart = lineEnd != std::string_view::npos;
        const std::size_t count = m_fLineStart ? lineEnd + 1 : rest.size();
        WriteBytes(rest.data(), count);
        rest.remove_prefix(count);
    }
    if (m_fLineStart) Flush();
}

void NkEhLogFile::SetBlanks(int nBlanks) {
    const std::lock_guard lock(m_mutex);
    m_nBlanks = nBlanks > 0 ? nBlanks : 0;
}

void NkEhLogFile::SetDefault(NkEhLogFile* pLog) noexcept {
    defaultLog.store(pLog, std::memory_order_release);
}
NkEhLogFile* NkEhLogFile::GetDefault() noexcept {
    return defaultLog.load(std::memory_order_acquire);
}

void NkEhLogFile::WriteBytes(const char* pch, std::size_t nCount) {
    if (m_pFile != nullptr) {
        [[maybe_unused]] const std::size_t written = std::fwrite(pch, 1, nCount, m_pFile);
    } else {
        m_pStream->write(pch, static_cast<std::streamsize>(nCount));
    }
}

void NkEhLogFile::Flush() {
    if (m_pFile != nullptr) {
        std::fflush(m_pFile);
    } else {
        m_pStream->flush();
    }
}
