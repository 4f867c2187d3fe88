// The greatest length of a text, tried on texts of two gigabytes that take next to no memory: one small piece
// of memory is mapped again and again.

#include <nkdt/NkDtString.h>
#include <nkfw/Memory.h>

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "ValueTesting.h"
#include "support/Instruments.h"

namespace {

using namespace valuetest;

constexpr std::size_t kMaxLength = 2147483646;

/// A zero-terminated text of many times the character "a".
class HugeText {
  public:
    explicit HugeText(std::size_t length) {
        const int piece = memfd_create("piece", 0);
        if (piece < 0 || ftruncate(piece, static_cast<off_t>(kPiece)) != 0) return;
        void* const area =
            mmap(nullptr, kArea, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (area == MAP_FAILED) {
            close(piece);
            return;
        }
        m_area = static_cast<char*>(area);
        bool mapped = true;
        // The last piece stays the area's own, so that the terminator stands nowhere else.
        for (std::size_t at = 0; at + kPiece < kArea; at += kPiece) {
            mapped = mapped && mmap(m_area + at, kPiece, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED,
                                    piece, 0) != MAP_FAILED;
        }
        close(piece);
        if (!mapped) return;
        std::memset(m_area, 'a', kPiece);
        std::memset(m_area + kArea - kPiece, 'a', kPiece - 1);
        m_area[kArea - 1] = '\0';
        m_text = m_area + kArea - 1 - length;
    }
    ~HugeText() {
        if (m_area != nullptr) munmap(m_area, kArea);
    }
    HugeText(const HugeText&) = delete;
    HugeText& operator=(const HugeText&) = delete;
    /// The text, or null where the system does not give it.
    LPCTSTR get() const { return m_text; }

  private:
    static constexpr std::size_t kPiece = std::size_t{1} << 20;
    static constexpr std::size_t kArea = (std::size_t{1} << 31) + kPiece;

    char* m_area = nullptr;
    LPCTSTR m_text = nullptr;
};

/// Refuses what is larger than a test should ever take.
class NoLargeMemory {
  public:
    NoLargeMemory() {
        nkfw::setAllocationProbe([](std::size_t bytes) noexcept { return bytes < (std::size_t{1} << 30); });
    }
    ~NoLargeMemory() { nkfw::setAllocationProbe(nullptr); }
    NoLargeMemory(const NoLargeMemory&) = delete;
    NoLargeMemory& operator=(const NoLargeMemory&) = delete;
};

class NkDtStringLimit : public ::testing::Test {
  protected:
    void SetUp() override {
        if (nktest::isUnderValgrind()) GTEST_SKIP() << "too slow under valgrind";
        if (tooLong.get() == nullptr) GTEST_SKIP() << "no two gigabytes of addresses";
    }

    const HugeText tooLong{kMaxLength + 1};
    const LPCTSTR longest = tooLong.get() == nullptr ? nullptr : tooLong.get() + 1;
    const NoLargeMemory noLargeMemory;
};

TEST_F(NkDtStringLimit, IsTriedOnATextOfOneCharacterMore) {
    EXPECT_EQ(std::strlen(tooLong.get()), kMaxLength + 1);
}

TEST_F(NkDtStringLimit, ConstructionRefusesOneCharacterMore) {
    expectError(NkDtErrInitiallaenge, [&] { const NkDtString text(tooLong.get()); });
    // The longest text passes the test and fails for want of memory alone.
    expectReplaced(ulNkEhKeinSpeicher, [&] { const NkDtString text(longest); });
}

TEST_F(NkDtStringLimit, AssignmentRefusesOneCharacterMoreUnchanged) {
    NkDtString text("abc");
    const ErrorPtr error = expectError(NkDtErrWertebereich, [&] { text = tooLong.get(); });
    EXPECT_STREQ(error->GetFunctionText(), "operator=(LPCTSTR)");
    EXPECT_EQ(describe(text), "'abc' 3/3 defined");
    expectError(ulNkEhKeinSpeicher, [&] { text = longest; });
    EXPECT_EQ(describe(text), "'' 0/0 defined modified");  // the buffer is given up
}

TEST_F(NkDtStringLimit, AppendingRefusesOneCharacterMoreUnchanged) {
    NkDtString text("abc");
    const ErrorPtr error = expectReplaced(NkDtErrWertebereich, [&] { text += longest + 2; });
    EXPECT_STREQ(error->GetFunctionText(), "operator+=(LPCTSTR)");
    EXPECT_EQ(describe(text), "'abc' 3/3 defined");
    NkDtString undefined(NkDtWmNull);
    expectReplaced(NkDtErrWertebereich, [&] { undefined += tooLong.get(); });
    EXPECT_EQ(describe(undefined), "'' 0/0 null");
    expectReplaced(ulNkEhKeinSpeicher, [&] { text += longest + 3; });
    EXPECT_EQ(describe(text), "'' 0/0 defined modified");  // the buffer is given up
}

TEST_F(NkDtStringLimit, ConcatenationRefusesOneCharacterMore) {
    const NkDtString text("abc");
    const ErrorPtr right = expectError(NkDtErrWertebereich, [&] { static_cast<void>(text + (longest + 2)); });
    EXPECT_STREQ(right->GetFunctionText(), "operator+(LPCTSTR)");
    const ErrorPtr left = expectError(NkDtErrWertebereich, [&] { static_cast<void>((longest + 2) + text); });
    EXPECT_STREQ(left->GetFunctionText(), "operator+(LPCTSTR,NkDtString&)");
    expectReplaced(ulNkEhKeinSpeicher, [&] { static_cast<void>(text + (longest + 3)); });
}

TEST_F(NkDtStringLimit, APartOfAVeryLongTextCanBeTaken) {
    EXPECT_EQ(describe(NkDtString(tooLong.get(), 3)), "'aaa' 3/3 defined");
    NkDtString text;
    text.SetFromSQL(tooLong.get(), 4);
    EXPECT_EQ(describe(text), "'aaaa' 4/4 defined modified");
}

}  // namespace
