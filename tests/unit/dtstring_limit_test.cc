// The greatest length of a text, tried on texts of two gigabytes that take next to no memory: one small piece
// of memory is mapped again and again.

#include <nkdt/NkDtChar.h>
#include <nkdt/NkDtString.h>
#include <nkfw/Exception.h>
#include <nkfw/Memory.h>
#include <nkfw/String.h>

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "ValueTesting.h"
#include "support/Instruments.h"

namespace {

using namespace valuetest;

constexpr std::size_t kMaxLength = 2147483646;

#if defined(__SANITIZE_THREAD__)
constexpr bool kThreadSanitized = true;
#elif defined(__has_feature)
constexpr bool kThreadSanitized = __has_feature(thread_sanitizer);
#else
constexpr bool kThreadSanitized = false;
#endif

constexpr std::size_t kPiece = std::size_t{1} << 20;

/// Puts one small piece of memory behind all whole pages from @p begin to @p end. False if the system
/// refuses.
bool backByOnePiece(char* begin, char* end) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t skipped = (page - reinterpret_cast<std::uintptr_t>(begin) % page) % page;
    const std::size_t size = (static_cast<std::size_t>(end - begin) - skipped) / page * page;
    const int piece = memfd_create("piece", 0);
    if (piece < 0) return false;
    bool mapped = ftruncate(piece, static_cast<off_t>(kPiece)) == 0;
    for (std::size_t at = 0; mapped && at < size; at += kPiece) {
        mapped = mmap(begin + skipped + at, std::min(kPiece, size - at), PROT_READ | PROT_WRITE,
                      MAP_SHARED | MAP_FIXED, piece, 0) != MAP_FAILED;
    }
    close(piece);
    return mapped;
}

/// A zero-terminated text of many times the character "a".
class HugeText {
  public:
    explicit HugeText(std::size_t length) {
        void* const area =
            mmap(nullptr, kArea, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (area == MAP_FAILED) return;
        m_area = static_cast<char*>(area);
        // The last piece stays the area's own, so that the terminator stands nowhere else.
        if (!backByOnePiece(m_area, m_area + kArea - kPiece)) return;
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

/// Lifts that for a scope.
class LargeMemory {
  public:
    LargeMemory() : m_before(nkfw::setAllocationProbe(nullptr)) {}
    ~LargeMemory() { nkfw::setAllocationProbe(m_before); }
    LargeMemory(const LargeMemory&) = delete;
    LargeMemory& operator=(const LargeMemory&) = delete;

  private:
    nkfw::AllocationProbe m_before;
};

// A block this large is a mapping of its own: the pages inside it can be changed for others, and are gone
// with it.

/// A framework text of @p length times the character "a", or null where the system does not give the room.
std::unique_ptr<CString> hugeFrameworkText(INT length) {
    const LargeMemory scope;
    auto text = std::make_unique<CString>();
    try {
        char* const buffer = text->GetBuffer(length);
        if (!backByOnePiece(buffer, buffer + length - kPiece)) return nullptr;
        std::memset(buffer, 'a', static_cast<std::size_t>(length));
    } catch (CMemoryException* exception) {
        exception->Delete();
        return nullptr;
    }
    text->ReleaseBuffer(length);
    return text;
}

/// The text "abc" with room for the greatest length, or null where the system does not give the room.
std::unique_ptr<NkDtString> textWithAllRoom() {
    const LargeMemory scope;
    std::unique_ptr<NkDtString> text;
    const ErrorPtr exhausted = errorOf(
        [&] { text = std::make_unique<NkDtString>("abc", NkDtStrLenAuto, static_cast<INT>(kMaxLength)); });
    if (exhausted != nullptr) return nullptr;
    char* const buffer = const_cast<char*>(text->GetValue());
    // The first page keeps the text; the last piece stays the text's own, so that its end stands nowhere
    // else.
    if (!backByOnePiece(buffer + 4, buffer + kMaxLength - kPiece)) return nullptr;
    return text;
}

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

TEST_F(NkDtStringLimit, AssignmentOfAFrameworkTextRefusesOneCharacterMoreUnchanged) {
    if (kThreadSanitized) GTEST_SKIP() << "too much shadow memory";
    const std::unique_ptr<CString> huge = hugeFrameworkText(static_cast<INT>(kMaxLength) + 1);
    if (huge == nullptr) GTEST_SKIP() << "no two gigabytes of addresses";
    NkDtString text("abc");
    expectOrigins({
        {"assigned", [&] { text = *huge; }, NkDtErrInitiallaenge, ".\\dtstrope.cc", "NkDtString",
         "operator=(CString&)"},
        {"appended", [&] { text += *huge; }, NkDtErrFolgefehler, ".\\dtstrope.cc", "NkDtString",
         "operator+=(CString&)", FALSE, NkDtErrWertebereich},
        {"constructed", [&] { const NkDtString copy(*huge); }, NkDtErrInitiallaenge, ".\\Imp\\dtstrini.cc",
         "NkDtString_Imp", "NkDtString_Imp( LPCTSTR,INT,INT)"},
    });
    EXPECT_EQ(describe(text), "'abc' 3/3 defined");
    huge->ReleaseBuffer(static_cast<INT>(kMaxLength));
    expectError(ulNkEhKeinSpeicher, [&] { text = *huge; });
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

TEST_F(NkDtStringLimit, ACharacterIsNotConcatenatedWithATextOfTheGreatestLength) {
    const NkDtChar ch('x');
    expectOrigins({
        {"left", [&] { static_cast<void>(ch + longest); }, NkDtErrWertebereich, ".\\dtstrope.cc",
         "NkDtString", "operator+(NkDtChar&,LPCTSTR)"},
        {"right", [&] { static_cast<void>(longest + ch); }, NkDtErrWertebereich, ".\\dtstrope.cc",
         "NkDtString", "operator+(LPCTSTR,NkDtChar&)"},
    });
    expectReplaced(ulNkEhKeinSpeicher, [&] { static_cast<void>(ch + (longest + 1)); });
}

TEST_F(NkDtStringLimit, APartOfAVeryLongTextCanBeTaken) {
    EXPECT_EQ(describe(NkDtString(tooLong.get(), 3)), "'aaa' 3/3 defined");
    NkDtString text;
    text.SetFromSQL(tooLong.get(), 4);
    EXPECT_EQ(describe(text), "'aaaa' 4/4 defined modified");
}

// --- A text of the greatest length ---------------------------------------------------------------------

class NkDtStringOfTheGreatestLength : public NkDtStringLimit {
  protected:
    void SetUp() override {
        if (kThreadSanitized) GTEST_SKIP() << "too much shadow memory";
        NkDtStringLimit::SetUp();
        if (IsSkipped()) return;
        text = textWithAllRoom();
        if (text == nullptr) GTEST_SKIP() << "no two gigabytes of addresses";
        *text += longest + 3;
        text->SetModified(FALSE);
    }
    void TearDown() override {
        if (text == nullptr) return;
        EXPECT_EQ(text->GetLength(), static_cast<INT>(kMaxLength));
        EXPECT_EQ(stateOf(*text), "defined");
    }

    std::unique_ptr<NkDtString> text;
};

TEST_F(NkDtStringOfTheGreatestLength, IsReachedByAppending) {
    EXPECT_EQ(std::strlen(*text), kMaxLength);
    EXPECT_EQ(text->GetAllocLength(), static_cast<INT>(kMaxLength));
}

TEST_F(NkDtStringOfTheGreatestLength, TakesNoFurtherCharacterAndTellsItUnwrapped) {
    expectOrigins({
        {"plain", [&] { *text += 'x'; }, NkDtErrWertebereich, ".\\dtstrope.cc", "NkDtString",
         "operator+=(TCHAR)"},
        {"NUL", [&] { *text += '\0'; }, NkDtErrWertebereich, ".\\dtstrope.cc", "NkDtString",
         "operator+=(TCHAR)"},
        {"value", [&] { *text += NkDtChar('x'); }, NkDtErrWertebereich, ".\\dtstrope.cc", "NkDtString",
         "operator+=(NkDtChar&)"},
    });
    *text += NkDtChar(NkDtWmMissing);  // nothing is appended
}

TEST_F(NkDtStringOfTheGreatestLength, TakesOneCharacterInPlaceOfItsLast) {
    text->Cut(static_cast<INT>(kMaxLength) - 1);
    *text += 'x';
    EXPECT_EQ((*text)[static_cast<INT>(kMaxLength) - 1], 'x');
    text->Cut(static_cast<INT>(kMaxLength) - 1);
    *text += NkDtString("y");
    EXPECT_EQ((*text)[static_cast<INT>(kMaxLength) - 1], 'y');
    text->SetModified(FALSE);
}

TEST_F(NkDtStringOfTheGreatestLength, TakesNoFurtherTextAndTellsItWrapped) {
    const auto refused = [](const char* name, std::function<void()> operation, const char* function) {
        return ErrorCase{
            name,  std::move(operation), NkDtErrFolgefehler, ".\\dtstrope.cc", "NkDtString", function,
            FALSE, NkDtErrWertebereich};
    };
    expectOrigins({
        refused(
            "plain", [&] { *text += "x"; }, "operator+=(LPCTSTR)"),
        refused(
            "framework text", [&] { *text += CString("x"); }, "operator+=(CString&)"),
        refused(
            "value", [&] { *text += NkDtString("x"); }, "operator+=(NkDtString&)"),
        refused(
            "itself", [&] { *text += *text; }, "operator+=(NkDtString&)"),
    });
    NkDtString undefined(NkDtWmNull);
    *text += "";
    *text += undefined;
}

TEST_F(NkDtStringOfTheGreatestLength, IsNotConcatenatedWithOneCharacterMore) {
    const NkDtString x("x");
    const NkDtChar ch('x');
    const auto refused = [](const char* name, std::function<void()> operation, const char* function) {
        return ErrorCase{name,    std::move(operation), NkDtErrWertebereich, ".\\dtstrope.cc", "NkDtString",
                         function};
    };
    expectOrigins({
        refused(
            "text right", [&] { static_cast<void>(*text + x); }, "operator+(NkDtString&)"),
        refused(
            "text left", [&] { static_cast<void>(x + *text); }, "operator+(NkDtString&)"),
        refused(
            "itself", [&] { static_cast<void>(*text + *text); }, "operator+(NkDtString&)"),
        refused(
            "plain right", [&] { static_cast<void>(*text + "x"); }, "operator+(LPCTSTR)"),
        refused(
            "plain left", [&] { static_cast<void>("x" + *text); }, "operator+(LPCTSTR,NkDtString&)"),
        refused(
            "framework text", [&] { static_cast<void>(*text + CString("x")); }, "operator+(CString&)"),
        refused(
            "TCHAR right", [&] { static_cast<void>(*text + 'x'); }, "operator+(TCHAR)"),
        refused(
            "TCHAR left", [&] { static_cast<void>('x' + *text); }, "operator+(TCHAR,NkDtString&)"),
        refused(
            "character right", [&] { static_cast<void>(*text + ch); }, "operator+(NkDtChar&)"),
        refused(
            "character left", [&] { static_cast<void>(ch + *text); }, "operator+(NkDtChar&,NkDtString&)"),
    });
}

TEST_F(NkDtStringOfTheGreatestLength, HasNoLiteral) {
    text->Cut(static_cast<INT>(kMaxLength) - 1);
    expectOrigins({{"one too long", [&] { static_cast<void>(text->ConvToSQL()); }, NkDtErrFolgefehler,
                    ".\\dtstrfkt.cc", "NkDtString", "ConvToSQL(UINT)const", FALSE, NkDtErrWertebereich}});
    text->Cut(static_cast<INT>(kMaxLength) - 2);
    expectReplaced(ulNkEhKeinSpeicher, [&] { static_cast<void>(text->ConvToSQL()); });
    text->SetAt(1, '\'');  // takes two characters
    expectReplaced(NkDtErrWertebereich, [&] { static_cast<void>(text->ConvToSQL()); });
    *text += "xy";
    text->SetModified(FALSE);
}

}  // namespace
