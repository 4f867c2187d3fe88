#include <nkfw/File.h>

#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <fstream>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "framework/FrameworkTest.h"

namespace {

using frameworktest::caught;
using frameworktest::Caught;
using frameworktest::FailingMemory;
using frameworktest::nothingThrown;
using frameworktest::TestFolder;
using frameworktest::throws;
using frameworktest::WatchedMemory;

constexpr UINT modeNew = CFile::modeCreate | CFile::modeReadWrite;

template <class Body>
int fileCauseOf(Body body) {
    return frameworktest::causeOf<CFileException>(body);
}

std::string contentOf(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void write(CFile& rFile, const std::string& text) {
    rFile.Write(text.data(), static_cast<UINT>(text.size()));
}

std::string read(CFile& rFile, UINT nCount) {
    std::string text(nCount, '#');
    text.resize(rFile.Read(text.data(), nCount));
    return text;
}

void makeFile(const std::string& path, const std::string& text) {
    CFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite);
    write(file, text);
    file.Close();
}

// While it lives, no file of this process grows beyond a number of bytes.
class FullDisk {
  public:
    explicit FullDisk(rlim_t nBytes) {
        m_signal = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = nBytes;
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_signal);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

  private:
    void (*m_signal)(int);
    rlimit m_before{};
};

// What a file and a file in memory have in common is one set of rules, run for both.
class EveryFile : public testing::TestWithParam<bool> {
  protected:
    EveryFile() {
        if (GetParam()) {
            m_pFile = std::make_unique<CFile>(m_folder.path("datei").c_str(), modeNew);
        } else {
            m_pFile = std::make_unique<CMemFile>();
        }
    }
    CFile& file() { return *m_pFile; }

  private:
    TestFolder m_folder;
    std::unique_ptr<CFile> m_pFile;
};

INSTANTIATE_TEST_SUITE_P(Files, EveryFile, testing::Bool(),
                         [](const auto& rInfo) { return rInfo.param ? "OnDisk" : "InMemory"; });

TEST_P(EveryFile, GivesBackWhatWasWritten) {
    write(file(), "Hallo ");
    write(file(), "Welt");
    EXPECT_EQ(file().GetPosition(), 10U);
    EXPECT_EQ(file().GetLength(), 10U);
    EXPECT_EQ(file().Seek(0, CFile::begin), 0U);
    EXPECT_EQ(read(file(), 5), "Hallo");
    EXPECT_EQ(file().GetPosition(), 5U);
    EXPECT_EQ(read(file(), 100), " Welt");
    EXPECT_EQ(read(file(), 100), "");
}

TEST_P(EveryFile, TurnsFromReadingToWritingAndBackAtAnyPosition) {
    write(file(), "0123456789");
    EXPECT_EQ(read(file(), 1), "");
    file().Seek(2, CFile::begin);
    EXPECT_EQ(read(file(), 2), "23");
    write(file(), "AB");
    EXPECT_EQ(read(file(), 2), "67");
    write(file(), "CDEF");
    EXPECT_EQ(file().GetLength(), 12U);
    file().Seek(0, CFile::begin);
    EXPECT_EQ(read(file(), 100), "0123AB67CDEF");
}

TEST_P(EveryFile, WhatIsAppendedAfterTheEndWasMetIsReadNext) {
    write(file(), "ab");
    EXPECT_EQ(read(file(), 5), "");
    write(file(), "cd");
    file().Seek(2, CFile::begin);
    EXPECT_EQ(read(file(), 5), "cd");
}

TEST_P(EveryFile, SeeksFromTheStartThePositionAndTheEnd) {
    write(file(), "0123456789");
    EXPECT_EQ(file().Seek(4, CFile::begin), 4U);
    EXPECT_EQ(file().Seek(3, CFile::current), 7U);
    EXPECT_EQ(file().Seek(-2, CFile::current), 5U);
    EXPECT_EQ(file().Seek(-1, CFile::end), 9U);
    EXPECT_EQ(read(file(), 5), "9");
    EXPECT_EQ(file().Seek(0, CFile::end), 10U);
}

TEST_P(EveryFile, BytesThatAreSkippedAreZero) {
    write(file(), "ab");
    EXPECT_EQ(file().Seek(3, CFile::end), 5U);
    EXPECT_EQ(file().GetLength(), 2U);
    EXPECT_EQ(read(file(), 1), "");
    write(file(), "c");
    EXPECT_EQ(file().GetLength(), 6U);
    file().Seek(0, CFile::begin);
    EXPECT_EQ(read(file(), 10), std::string("ab\0\0\0c", 6));
}

TEST_P(EveryFile, APositionBeforeTheStartIsRefusedAndThePositionStays) {
    write(file(), "0123");
    file().Seek(1, CFile::begin);
    EXPECT_EQ(fileCauseOf([&] { file().Seek(-1, CFile::begin); }), CFileException::badSeek);
    EXPECT_EQ(fileCauseOf([&] { file().Seek(-2, CFile::current); }), CFileException::badSeek);
    EXPECT_EQ(fileCauseOf([&] { file().Seek(-5, CFile::end); }), CFileException::badSeek);
    EXPECT_EQ(fileCauseOf([&] { file().Seek(std::numeric_limits<LONGLONG>::min(), CFile::current); }),
              CFileException::badSeek);
    EXPECT_EQ(file().GetPosition(), 1U);
    EXPECT_EQ(read(file(), 1), "1");
}

TEST_P(EveryFile, APositionThatCannotBeCountedIsRefused) {
    write(file(), "0123");
    constexpr LONGLONG nFarthest = std::numeric_limits<LONGLONG>::max();
    EXPECT_EQ(fileCauseOf([&] { file().Seek(nFarthest, CFile::current); }), CFileException::badSeek);
    EXPECT_EQ(fileCauseOf([&] { file().Seek(nFarthest, CFile::end); }), CFileException::badSeek);
}

TEST_P(EveryFile, SeekingFromNowhereIsAnInvalidArgument) {
    EXPECT_TRUE(throws<CInvalidArgException>([&] { file().Seek(0, 3); }));
}

TEST_P(EveryFile, NoBytesNeedNoBuffer) {
    write(file(), "ab");
    file().Write(nullptr, 0);
    file().Seek(0, CFile::begin);
    EXPECT_EQ(file().Read(nullptr, 0), 0U);
    EXPECT_EQ(file().GetPosition(), 0U);
    EXPECT_EQ(file().GetLength(), 2U);
}

TEST_P(EveryFile, HoldsItsBytesThroughRandomReadsWritesAndSeeks) {
    std::mt19937 random(19991231);
    const auto number = [&](unsigned nBound) { return static_cast<unsigned>(random() % nBound); };
    std::string model;
    std::size_t nPosition = 0;
    for (int step = 0; step < 3000; ++step) {
        switch (number(4)) {
            case 0: {
                const std::string text(number(50), static_cast<char>(number(256)));
                write(file(), text);
                if (!text.empty()) {
                    if (model.size() < nPosition + text.size()) model.resize(nPosition + text.size(), '\0');
                    model.replace(nPosition, text.size(), text);
                    nPosition += text.size();
                }
                break;
            }
            case 1: {
                const unsigned nCount = number(50);
                const std::string expected = nPosition < model.size() ? model.substr(nPosition, nCount) : "";
                ASSERT_EQ(read(file(), nCount), expected);
                nPosition += expected.size();
                break;
            }
            case 2:
                nPosition = number(static_cast<unsigned>(model.size()) + 20);
                file().Seek(static_cast<LONGLONG>(nPosition), CFile::begin);
                break;
            default:
                file().Flush();
                ASSERT_EQ(file().GetLength(), model.size());
        }
        ASSERT_EQ(file().GetPosition(), nPosition);
    }
}

// ---- Opening and closing

TEST(File, CreatingEmptiesAFileUnlessToldNotTo) {
    const TestFolder folder;
    const std::string path = folder.path("x");
    makeFile(path, "alter Inhalt");
    CFile(path.c_str(), CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite).Close();
    EXPECT_EQ(contentOf(path), "alter Inhalt");
    CFile(path.c_str(), CFile::modeWrite).Close();
    EXPECT_EQ(contentOf(path), "alter Inhalt");
    CFile(path.c_str(), CFile::modeReadWrite).Close();
    EXPECT_EQ(contentOf(path), "alter Inhalt");
    CFile(path.c_str(), CFile::modeCreate | CFile::modeWrite).Close();
    EXPECT_EQ(contentOf(path), "");
}

TEST(File, NotTruncatedAFileIsWrittenOverFromTheStart) {
    const TestFolder folder;
    const std::string path = folder.path("x");
    makeFile(path, "alter Inhalt");
    CFile file(path.c_str(), CFile::modeCreate | CFile::modeNoTruncate | CFile::modeReadWrite);
    write(file, "neuer");
    file.Close();
    EXPECT_EQ(contentOf(path), "neuer Inhalt");
}

struct OpenRow {
    std::string name;
    UINT nOpenFlags;
    int cause;
};

TEST(File, AFileThatCannotBeOpenedTellsWhy) {
    const TestFolder folder;
    makeFile(folder.path("da"), "x");
    const OpenRow table[] = {
        {"fehlt", CFile::modeRead, CFileException::fileNotFound},
        {"fehlt", CFile::modeWrite, CFileException::fileNotFound},
        {"fehlt", CFile::modeReadWrite, CFileException::fileNotFound},
        {"da/x", CFile::modeRead, CFileException::badPath},
        {std::string(300, 'x'), CFile::modeRead, CFileException::badPath},
        {".", CFile::modeRead, CFileException::accessDenied},
        {".", CFile::modeWrite, CFileException::accessDenied},
    };
    for (const OpenRow& row : table) {
        const std::string path = folder.path(row.name);
        const Caught pException = caught([&] { CFile(path.c_str(), row.nOpenFlags); });
        const auto* const pFile = dynamic_cast<const CFileException*>(pException.get());
        ASSERT_NE(pFile, nullptr) << row.name;
        EXPECT_EQ(pFile->m_cause, row.cause) << row.name;
        EXPECT_NE(pFile->m_lOsError, 0);
        EXPECT_EQ(pFile->m_strFileName, path.c_str());
    }
}

TEST(File, UnknownFlagsAndMissingNamesAreInvalidArguments) {
    const TestFolder folder;
    const std::string path = folder.path("x");
    const auto refuses = [](LPCTSTR lpszFileName, UINT nOpenFlags) {
        return throws<CInvalidArgException>([&] { CFile(lpszFileName, nOpenFlags); });
    };
    EXPECT_TRUE(refuses(nullptr, CFile::modeRead));
    EXPECT_TRUE(refuses("", CFile::modeRead));
    EXPECT_TRUE(refuses(path.c_str(), CFile::modeWrite | CFile::modeReadWrite));
    EXPECT_TRUE(refuses(path.c_str(), 0x0004));
    EXPECT_TRUE(refuses(path.c_str(), CFile::modeCreate | 0x8000));
}

TEST(File, TheDirectionThatWasNotOpenedIsDenied) {
    const TestFolder folder;
    const std::string path = folder.path("x");
    makeFile(path, "abc");
    CFile reading(path.c_str(), CFile::modeRead);
    EXPECT_EQ(fileCauseOf([&] {
                  write(reading, "x");
                  reading.Flush();
              }),
              CFileException::accessDenied);
    CFile writing(path.c_str(), CFile::modeWrite);
    EXPECT_EQ(fileCauseOf([&] { read(writing, 1); }), CFileException::accessDenied);
}

TEST(File, WithoutAnOpenFileEverythingButClosingThrows) {
    CFile file;
    CStdioFile text;
    CString str("bleibt");
    EXPECT_EQ(fileCauseOf([&] { read(file, 1); }), CFileException::invalidFile);
    EXPECT_EQ(fileCauseOf([&] { write(file, "x"); }), CFileException::invalidFile);
    EXPECT_EQ(fileCauseOf([&] { file.Seek(0, CFile::begin); }), CFileException::invalidFile);
    EXPECT_EQ(fileCauseOf([&] { file.GetPosition(); }), CFileException::invalidFile);
    EXPECT_EQ(fileCauseOf([&] { file.GetLength(); }), CFileException::invalidFile);
    EXPECT_EQ(fileCauseOf([&] { file.Flush(); }), CFileException::invalidFile);
    EXPECT_EQ(fileCauseOf([&] { text.ReadString(str); }), CFileException::invalidFile);
    EXPECT_EQ(fileCauseOf([&] { text.WriteString("x"); }), CFileException::invalidFile);
    EXPECT_EQ(str, "bleibt");
    EXPECT_EQ(fileCauseOf([&] { file.Close(); }), nothingThrown);
    file.Abort();
    EXPECT_STREQ(file.GetFilePath(), "");
}

TEST(File, OpeningAnotherFileClosesTheOneBefore) {
    const TestFolder folder;
    CFile file(folder.path("a").c_str(), modeNew);
    write(file, "erste");
    file.Open(folder.path("b").c_str(), modeNew);
    EXPECT_EQ(contentOf(folder.path("a")), "erste");
    EXPECT_EQ(file.GetFilePath(), folder.path("b"));
    write(file, "zweite");
    file.Close();
    EXPECT_EQ(contentOf(folder.path("b")), "zweite");
}

TEST(File, ItsEndClosesIt) {
    const TestFolder folder;
    {
        CFile file(folder.path("a").c_str(), modeNew);
        write(file, "Inhalt");
    }
    EXPECT_EQ(contentOf(folder.path("a")), "Inhalt");
    CFile file(folder.path("a").c_str(), CFile::modeRead);
    file.Abort();
    EXPECT_EQ(fileCauseOf([&] { file.GetLength(); }), CFileException::invalidFile);
}

TEST(File, FlushHandsOverWhatIsBuffered) {
    const TestFolder folder;
    CFile file(folder.path("a").c_str(), modeNew);
    write(file, "Inhalt");
    file.Flush();
    EXPECT_EQ(contentOf(folder.path("a")), "Inhalt");
}

TEST(File, PositionsReachBeyond32Bits) {
    const TestFolder folder;
    CFile file(folder.path("gross").c_str(), modeNew);
    constexpr ULONGLONG nFar = 5'000'000'000;
    EXPECT_EQ(file.Seek(static_cast<LONGLONG>(nFar), CFile::begin), nFar);
    write(file, "x");
    EXPECT_EQ(file.GetLength(), nFar + 1);
    file.Seek(-1, CFile::end);
    EXPECT_EQ(file.GetPosition(), nFar);
    EXPECT_EQ(read(file, 2), "x");
}

TEST(File, WhatHasNoPositionsRefusesThem) {
    int pipe[2];
    ASSERT_EQ(::pipe(pipe), 0);
    CFile file(("/proc/self/fd/" + std::to_string(pipe[0])).c_str(), CFile::modeRead);
    EXPECT_EQ(fileCauseOf([&] { file.GetPosition(); }), CFileException::badSeek);
    EXPECT_EQ(fileCauseOf([&] { file.Seek(1, CFile::begin); }), CFileException::badSeek);
    ::close(pipe[0]);
    ::close(pipe[1]);
}

TEST(File, WithoutMemoryForItsNameTheFileThatIsOpenStaysOpen) {
    const TestFolder folder;
    const std::string path = folder.path("b");
    CFile file(folder.path("a").c_str(), modeNew);
    bool fThrown = false;
    {
        const FailingMemory memory(0);
        fThrown = throws<CMemoryException>([&] { file.Open(path.c_str(), modeNew); });
    }
    EXPECT_TRUE(fThrown);
    EXPECT_EQ(file.GetFilePath(), folder.path("a"));
    EXPECT_EQ(fileCauseOf([&] { write(file, "x"); }), nothingThrown);
}

// ---- Full disk

TEST(FileOnAFullDisk, ALargeWriteIsRefused) {
    const TestFolder folder;
    CFile file(folder.path("x").c_str(), modeNew);
    const std::string large(100000, 'x');
    const FullDisk disk(4096);
    EXPECT_EQ(fileCauseOf([&] { write(file, large); }), CFileException::diskFull);
}

TEST(FileOnAFullDisk, FlushGetLengthSeekAndTurningReportIt) {
    const TestFolder folder;
    const struct {
        const char* name;
        void (*operation)(CFile&);
    } table[] = {
        {"Flush", [](CFile& rFile) { rFile.Flush(); }},
        {"GetLength", [](CFile& rFile) { rFile.GetLength(); }},
        {"Seek", [](CFile& rFile) { rFile.Seek(0, CFile::begin); }},
        {"Read", [](CFile& rFile) { read(rFile, 1); }},
    };
    for (const auto& row : table) {
        CFile file(folder.path(row.name).c_str(), modeNew);
        int cause = 0;
        {
            const FullDisk disk(10);
            write(file, "mehr als zehn Bytes");
            cause = fileCauseOf([&] { row.operation(file); });
            file.Abort();
        }
        EXPECT_EQ(cause, CFileException::diskFull) << row.name;
    }
}

TEST(FileOnAFullDisk, CloseReportsItAndTheFileIsClosed) {
    const TestFolder folder;
    CFile file(folder.path("x").c_str(), modeNew);
    Caught pException;
    {
        const FullDisk disk(10);
        write(file, "mehr als zehn Bytes");
        pException = caught([&] { file.Close(); });
    }
    const auto* const pFile = dynamic_cast<const CFileException*>(pException.get());
    ASSERT_NE(pFile, nullptr);
    EXPECT_EQ(pFile->m_cause, CFileException::diskFull);
    EXPECT_EQ(pFile->m_strFileName, folder.path("x").c_str());
    EXPECT_EQ(fileCauseOf([&] { file.GetLength(); }), CFileException::invalidFile);
    EXPECT_EQ(fileCauseOf([&] { file.Close(); }), nothingThrown);
}

// ---- Text files

struct LinesRow {
    std::string content;
    std::vector<std::string> lines;
};

TEST(StdioFile, ReadsLinesWithoutTheirEnds) {
    const TestFolder folder;
    const std::string path = folder.path("text");
    const LinesRow table[] = {
        {"", {}},
        {"\n", {""}},
        {"\r\n", {""}},
        {"eins", {"eins"}},
        {"eins\n", {"eins"}},
        {"eins\r\nzwei\r\n", {"eins", "zwei"}},
        {"eins\nzwei\r\ndrei", {"eins", "zwei", "drei"}},
        {"eins\n\n\r\nvier\n", {"eins", "", "", "vier"}},
        {"a\rb\r\r\n", {"a\rb\r"}},
        {"am Ende\r", {"am Ende\r"}},
        {std::string("a\0b\nc", 5), {std::string("a\0b", 3), "c"}},
        {"\xFF\xFE\x1A\n", {"\xFF\xFE\x1A"}},
        {std::string(255, 'x') + "\n" + std::string(256, 'y') + "\r\n" + std::string(10000, 'z'),
         {std::string(255, 'x'), std::string(256, 'y'), std::string(10000, 'z')}},
    };
    for (const LinesRow& row : table) {
        makeFile(path, row.content);
        CStdioFile file(path.c_str(), CFile::modeRead);
        std::vector<std::string> lines;
        CString str;
        while (file.ReadString(str))
            lines.emplace_back(str.View());
        EXPECT_EQ(lines, row.lines);
        EXPECT_TRUE(str.IsEmpty());
        EXPECT_FALSE(file.ReadString(str));
    }
}

TEST(StdioFile, WritesTextsAsTheyAre) {
    const TestFolder folder;
    CStdioFile file(folder.path("text").c_str(), modeNew);
    file.WriteString("eins\n");
    file.WriteString("");
    file.WriteString(nullptr);
    file.WriteString("zwei\r\ndrei");
    file.Seek(0, CFile::begin);
    CString str;
    EXPECT_TRUE(file.ReadString(str));
    EXPECT_EQ(str, "eins");
    file.Close();
    EXPECT_EQ(contentOf(folder.path("text")), "eins\nzwei\r\ndrei");
}

TEST(StdioFile, ALineThatCannotBeReadLeavesTheReceiver) {
    const TestFolder folder;
    makeFile(folder.path("text"), std::string(1000, 'x'));
    CStdioFile writing(folder.path("text").c_str(), CFile::modeWrite);
    CString str("bleibt");
    EXPECT_EQ(fileCauseOf([&] { writing.ReadString(str); }), CFileException::accessDenied);
    EXPECT_EQ(str, "bleibt");
    for (int nGranted = 0;; ++nGranted) {
        CStdioFile file(folder.path("text").c_str(), CFile::modeRead);
        bool fThrown = false;
        bool fRefused = false;
        {
            const FailingMemory memory(nGranted);
            fThrown = throws<CMemoryException>([&] { file.ReadString(str); });
            fRefused = memory.refused();
        }
        ASSERT_EQ(fThrown, fRefused);
        if (!fRefused) break;
        EXPECT_EQ(str, "bleibt");
    }
    EXPECT_EQ(str.GetLength(), 1000);
}

// ---- Files in memory

TEST(MemFile, StartsWithACopyOfBytesAtTheStart) {
    std::string bytes("\0\1\2", 3);
    CMemFile file(bytes.data(), 3);
    bytes = "xxx";
    EXPECT_EQ(file.GetPosition(), 0U);
    EXPECT_EQ(file.GetLength(), 3U);
    EXPECT_EQ(read(file, 10), std::string("\0\1\2", 3));
    CMemFile empty(nullptr, 0);
    EXPECT_EQ(empty.GetLength(), 0U);
}

TEST(MemFile, GrowsAtLeastDoubling) {
    const WatchedMemory memory;
    CMemFile file;
    for (int i = 0; i < 100000; ++i)
        file.Write("x", 1);
    EXPECT_EQ(file.GetLength(), 100000U);
    EXPECT_LE(memory.requests(), 12U);
    EXPECT_LE(memory.largest(), 200000U);
}

TEST(MemFile, AWriteWithoutMemoryLeavesItAsItWas) {
    CMemFile file("abc", 3);
    file.Seek(0, CFile::end);
    const std::string large(1000, 'x');
    bool fThrown = false;
    {
        const FailingMemory memory(0);
        fThrown = throws<CMemoryException>([&] { write(file, large); });
    }
    EXPECT_TRUE(fThrown);
    EXPECT_EQ(file.GetLength(), 3U);
    EXPECT_EQ(file.GetPosition(), 3U);
    file.Seek(0, CFile::begin);
    EXPECT_EQ(read(file, 10), "abc");
}

TEST(MemFile, AWriteFarBeyondAllMemoryLeavesItAsItWas) {
    CMemFile file("abc", 3);
    constexpr LONGLONG nFarthest = std::numeric_limits<LONGLONG>::max();
    EXPECT_EQ(file.Seek(nFarthest, CFile::begin), static_cast<ULONGLONG>(nFarthest));
    bool fThrown = false;
    {
        const FailingMemory memory(0);
        fThrown = throws<CMemoryException>([&] { file.Write("x", 1); });
    }
    EXPECT_TRUE(fThrown);
    EXPECT_EQ(file.GetLength(), 3U);
}

TEST(MemFile, WithoutMemoryItIsNotMade) {
    const FailingMemory memory(0);
    EXPECT_TRUE(throws<CMemoryException>([] { const CMemFile file("abc", 3); }));
}

TEST(MemFile, StaysOpen) {
    CMemFile file("abc", 3);
    file.Flush();
    file.Close();
    file.Abort();
    EXPECT_EQ(read(file, 10), "abc");
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(file.GetData()), 3), "abc");
}

TEST(File, EveryClassIsToldAtRunTime) {
    EXPECT_STREQ(CFile().GetRuntimeClass()->m_lpszClassName, "CFile");
    EXPECT_STREQ(CStdioFile().GetRuntimeClass()->m_lpszClassName, "CStdioFile");
    EXPECT_STREQ(CMemFile().GetRuntimeClass()->m_lpszClassName, "CMemFile");
    EXPECT_TRUE(CStdioFile().IsKindOf(RUNTIME_CLASS(CFile)));
    EXPECT_TRUE(CMemFile().IsKindOf(RUNTIME_CLASS(CFile)));
    EXPECT_FALSE(CMemFile().IsKindOf(RUNTIME_CLASS(CStdioFile)));
}

}  // namespace
