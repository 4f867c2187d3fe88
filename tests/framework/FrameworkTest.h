#pragma once

// What the framework's tests share: catching its exceptions, making memory fail, folders for files.

#include <nkfw/Exception.h>
#include <nkfw/Memory.h>

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "support/FrameworkExceptions.h"

namespace frameworktest {

inline constexpr int nothingThrown = -1;
inline constexpr int anotherException = -2;

// The cause of the exception of class E that the body throws.
template <class E, class Body>
int causeOf(Body body) {
    const Caught pException = caught(body);
    if (pException == nullptr) return nothingThrown;
    const auto* const pKnown = dynamic_cast<const E*>(pException.get());
    return pKnown != nullptr ? pKnown->m_cause : anotherException;
}

// While it lives, the request number n (from 0 on) for memory fails, and those after it.
class FailingMemory {
  public:
    explicit FailingMemory(int nGranted) noexcept {
        s_nLeft = nGranted;
        s_fRefused = false;
        nkfw::setAllocationProbe(&isGranted);
    }
    ~FailingMemory() { nkfw::setAllocationProbe(nullptr); }
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;

    bool refused() const noexcept { return s_fRefused; }

  private:
    static bool isGranted(std::size_t) noexcept {
        if (s_nLeft-- > 0) return true;
        s_fRefused = true;
        return false;
    }
    static inline int s_nLeft = 0;
    static inline bool s_fRefused = false;
};

// While it lives, requests for memory are counted and the largest is remembered.
class WatchedMemory {
  public:
    WatchedMemory() noexcept {
        s_nRequests = 0;
        s_nLargest = 0;
        nkfw::setAllocationProbe(&isGranted);
    }
    ~WatchedMemory() { nkfw::setAllocationProbe(nullptr); }
    WatchedMemory(const WatchedMemory&) = delete;
    WatchedMemory& operator=(const WatchedMemory&) = delete;

    std::size_t requests() const noexcept { return s_nRequests; }
    std::size_t largest() const noexcept { return s_nLargest; }

  private:
    static bool isGranted(std::size_t nBytes) noexcept {
        ++s_nRequests;
        if (nBytes > s_nLargest) s_nLargest = nBytes;
        return true;
    }
    static inline std::size_t s_nRequests = 0;
    static inline std::size_t s_nLargest = 0;
};

// A folder of its own for a test's files.
class TestFolder {
  public:
    TestFolder() {
        std::string path = (std::filesystem::temp_directory_path() / "nkfw-XXXXXX").string();
        if (::mkdtemp(path.data()) == nullptr) std::abort();
        m_path = path;
    }
    ~TestFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    std::string path(const std::string& name) const { return (m_path / name).string(); }

  private:
    std::filesystem::path m_path;
};

}  // namespace frameworktest
