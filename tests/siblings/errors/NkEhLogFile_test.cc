#include <nkeh/NkEhBasis.h>
#include <nkeh/NkEhLogFile.h>
#include <nkfw/Exception.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <memory>
#include <optional>
#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

std::unique_ptr<NkEhBasis> makeError(ULONG number, BOOL final) {
    return std::unique_ptr<NkEhBasis>(new NkEhBasis(".\\dtlong.cc", "NkDtLong", "GetValue()",
                                                    "Undefinierter Wert", number, 3, 4, nullptr, TRUE, 77,
                                                    final));
}

std::string linesOf(ULONG number) {
    return "Quelldatei: .\\dtlong.cc\r\n"
           "Klasse: NkDtLong\r\n"
           "Funktion: GetValue()\r\n"
           "Fehlernummer: " +
           std::to_string(number) +
           "\r\n"
           "Fehlertext: Undefinierter Wert\r\n"
           "Klassifikation 1: 3\r\n"
           "Klassifikation 2: 4\r\n"
           "Textnummer: 77\r\n";
}

// A log in memory that is the default log for as long as it lives.
class DefaultLog {
  public:
    DefaultLog() : m_log(m_stream) { NkEhLogFile::SetDefault(&m_log); }
    ~DefaultLog() { NkEhLogFile::SetDefault(nullptr); }
    DefaultLog(const DefaultLog&) = delete;
    DefaultLog& operator=(const DefaultLog&) = delete;

    NkEhLogFile& log() { return m_log; }
    std::string text() const { return m_stream.str(); }

  private:
    std::ostringstream m_stream;
    NkEhLogFile m_log;
};

std::string logged(const NkEhBasis& error) {
    std::ostringstream stream;
    NkEhLogFile log(stream);
    error.Log(log);
    return stream.str();
}

class IndentedError : public NkEhBasis {
  public:
    IndentedError()
        : NkEhBasis(LogLater{}, ".\\dtlong.cc", "NkDtLong", "GetValue()", "Undefinierter Wert", 2, 3, 4,
                    nullptr, TRUE, 77, TRUE) {
        LogIfFinal();
    }
    void Log(NkEhLogFile& rLog) const override {
        rLog.Write("Fehlerart: IndentedError\r\n");
        rLog.SetBlanks(6);
        NkEhBasis::Log(rLog);
    }
};

std::string indentedLines() {
    std::istringstream lines(linesOf(2));
    std::string expected = "Fehlerart: IndentedError\r\n";
    for (std::string line; std::getline(lines, line);)
        expected += "      " + line + "\n";
    return expected;
}

class TemporaryFile {
  public:
    TemporaryFile()
        : m_name(testing::TempDir() + "nkeh_" +
                 testing::UnitTest::GetInstance()->current_test_info()->name() + ".log") {
        std::remove(m_name.c_str());
    }
    ~TemporaryFile() { std::remove(m_name.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const char* name() const { return m_name.c_str(); }
    std::string contents() const {
        std::ifstream file(m_name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

  private:
    std::string m_name;
};

// --- What an error writes ---------------------------------------------------------------------

TEST(NkEhBasisLog, WritesALineForEachPart) {
    EXPECT_EQ(logged(*makeError(2, FALSE)), linesOf(2));
}

TEST(NkEhBasisLog, WritesTheCauseIfThereIsOne) {
    const auto error = makeError(1, FALSE);
    error->SetCause(5, "Ung\xFCltiger Initialwert");
    EXPECT_EQ(logged(*error),
              linesOf(1) + "Ursache Nummer: 5\r\nUrsache Text: Ung\xFCltiger Initialwert\r\n");
}

TEST(NkEhBasisLog, WritesTheWrappedExceptionsMessage) {
    CInvalidArgException exception;
    TCHAR message[256];
    exception.GetErrorMessage(message, sizeof message);
    const NkEhBasis error(".\\dtlong.cc", "NkDtLong", "GetValue()", "Undefinierter Wert", 22, 3, 4,
                          &exception, FALSE, 77, FALSE);
    EXPECT_EQ(logged(error), linesOf(22) + "Ausnahme: " + message + "\r\n");
}

TEST(NkEhBasisLog, TakesTheBlanksBackBehindTheError) {
    std::ostringstream stream;
    NkEhLogFile log(stream);
    log.SetBlanks(2);
    makeError(2, FALSE)->Log(log);
    log.Write("danach\r\n");
    const std::string text = stream.str();
    EXPECT_TRUE(text.starts_with("  Quelldatei: .\\dtlong.cc\r\n  Klasse: NkDtLong\r\n"));
    EXPECT_TRUE(text.ends_with("\r\n  Textnummer: 77\r\ndanach\r\n"));
}

// --- The default log --------------------------------------------------------------------------

TEST(NkEhLogFileDefault, IsNoneAtFirst) {
    EXPECT_EQ(NkEhLogFile::GetDefault(), nullptr);
    EXPECT_NE(makeError(2, TRUE), nullptr);
}

TEST(NkEhLogFileDefault, TakesFinalErrorsOnce) {
    const DefaultLog log;
    makeError(2, TRUE).reset();
    EXPECT_EQ(log.text(), linesOf(2));
}

TEST(NkEhLogFileDefault, TakesNoErrorsThatAreNotFinal) {
    const DefaultLog log;
    makeError(2, FALSE).reset();
    EXPECT_EQ(log.text(), "");
}

TEST(NkEhLogFileDefault, TakesTheLinesOfTheWholeDerivedError) {
    const DefaultLog log;
    std::make_unique<IndentedError>().reset();
    std::make_unique<IndentedError>().reset();
    EXPECT_EQ(log.text(), indentedLines() + indentedLines());
}

TEST(NkEhLogFileDefault, CanBeTakenBack) {
    DefaultLog log;
    EXPECT_EQ(NkEhLogFile::GetDefault(), &log.log());
    NkEhLogFile::SetDefault(nullptr);
    makeError(2, TRUE).reset();
    EXPECT_EQ(log.text(), "");
}

TEST(NkEhLogFileDefault, IsNoneAfterItsEnd) {
    std::ostringstream stream;
    std::optional<NkEhLogFile> log(stream);
    NkEhLogFile::SetDefault(&*log);
    log.reset();
    EXPECT_EQ(NkEhLogFile::GetDefault(), nullptr);
}

TEST(NkEhLogFileDefault, StaysWhenAnotherLogEnds) {
    const DefaultLog log;
    {
        std::ostringstream stream;
        const NkEhLogFile other(stream);
    }
    EXPECT_NE(NkEhLogFile::GetDefault(), nullptr);
}

class FailingBuffer : public std::streambuf {
    int_type overflow(int_type) override { return traits_type::eof(); }
    std::streamsize xsputn(const char*, std::streamsize) override { return 0; }
};

TEST(NkEhLogFileDefault, AFailingLogDoesNotHideTheError) {
    FailingBuffer buffer;
    std::ostream stream(&buffer);
    stream.exceptions(std::ios::badbit | std::ios::failbit);
    NkEhLogFile log(stream);
    EXPECT_THROW(log.Write("Zeile\r\n"), std::ios_base::failure);
    NkEhLogFile::SetDefault(&log);
    EXPECT_NO_THROW(makeError(2, TRUE).reset());
    EXPECT_NO_THROW(std::make_unique<IndentedError>().reset());
    NkEhLogFile::SetDefault(nullptr);
}

// --- Lines and blanks -------------------------------------------------------------------------

TEST(NkEhLogFile, StartsEachLineWithTheBlanksSet) {
    std::ostringstream stream;
    NkEhLogFile log(stream);
    log.Write("a\r\n");
    log.SetBlanks(3);
    log.Write("b\r\nc");
    log.Write("d\r\n");
    log.SetBlanks(1);
    log.Write("e");
    log.SetBlanks(5);
    log.Write("f\n");
    log.SetBlanks(-4);
    log.Write("g\r\n");
    EXPECT_EQ(stream.str(), "a\r\n   b\r\n   cd\r\n ef\ng\r\n");
}

TEST(NkEhLogFile, WritesAnyNumberOfBlanks) {
    for (const int count : {31, 32, 33, 64, 100}) {
        std::ostringstream stream;
        NkEhLogFile log(stream);
        log.SetBlanks(count);
        log.Write("x");
        EXPECT_EQ(stream.str(), std::string(static_cast<std::size_t>(count), ' ') + "x");
    }
}

TEST(NkEhLogFile, WritesNothingForNullAndEmptyTexts) {
    std::ostringstream stream;
    NkEhLogFile log(stream);
    log.SetBlanks(3);
    log.Write(nullptr);
    log.Write("");
    EXPECT_EQ(stream.str(), "");
}

// --- Files ------------------------------------------------------------------------------------

TEST(NkEhLogFile, AppendsToItsFile) {
    const TemporaryFile file;
    for (const char* line : {"eins\r\n", "zwei\r\n"}) {
        NkEhLogFile log(file.name());
        log.Write(line);
    }
    EXPECT_EQ(file.contents(), "eins\r\nzwei\r\n");
}

TEST(NkEhLogFile, FinishedLinesReachTheFileAtOnce) {
    const TemporaryFile file;
    NkEhLogFile log(file.name());
    log.Write("eins\r\n");
    EXPECT_EQ(file.contents(), "eins\r\n");
}

TEST(NkEhLogFile, AFileThatCannotBeOpenedRaises) {
    try {
        const NkEhLogFile log((testing::TempDir() + "nkeh_no_such_folder/fehler.log").c_str());
        FAIL() << "opened";
    } catch (CFileException* exception) {
        EXPECT_EQ(exception->m_cause, CFileException::fileNotFound);
        exception->Delete();
    }
}

TEST(NkEhLogFile, ANullFileNameRaises) {
    try {
        const NkEhLogFile log(static_cast<LPCTSTR>(nullptr));
        FAIL() << "opened";
    } catch (CFileException* exception) {
        exception->Delete();
    }
}

// --- Threads ----------------------------------------------------------------------------------

TEST(NkEhLogFile, KeepsAnErrorsLinesTogetherWhenThreadsLogAtATime) {
    constexpr ULONG threadCount = 4;
    constexpr ULONG errorsEach = 200;
    const DefaultLog log;
    std::vector<std::thread> threads;
    for (ULONG t = 0; t < threadCount; ++t) {
        threads.emplace_back([t] {
            for (ULONG i = 0; i < errorsEach; ++i)
                makeError(t * errorsEach + i, TRUE).reset();
        });
    }
    for (std::thread& thread : threads)
        thread.join();

    std::string rest = log.text();
    std::vector<ULONG> numbers;
    const std::string label = "Fehlernummer: ";
    while (!rest.empty()) {
        const std::size_t at = rest.find(label);
        ASSERT_NE(at, std::string::npos);
        numbers.push_back(static_cast<ULONG>(std::stoul(rest.substr(at + label.size(), 10))));
        const std::string lines = linesOf(numbers.back());
        ASSERT_EQ(rest.substr(0, lines.size()), lines);
        rest.erase(0, lines.size());
    }
    std::sort(numbers.begin(), numbers.end());
    ASSERT_EQ(numbers.size(), threadCount * errorsEach);
    for (ULONG i = 0; i < numbers.size(); ++i)
        ASSERT_EQ(numbers[i], i);
}

// Asks, while it writes its lines, whether another thread could write between them.
class AskingError : public NkEhBasis {
  public:
    explicit AskingError(bool& interruptible)
        : NkEhBasis(LogLater{}, "", "", "", "", 2, 1, 1, nullptr, TRUE, 0, TRUE),
          m_interruptible(interruptible) {
        LogIfFinal();
    }
    void Log(NkEhLogFile& rLog) const override {
        rLog.Write("Fehlerart: AskingError\r\n");
        std::thread([&] {
            m_interruptible = rLog.Mutex().try_lock();
            if (m_interruptible) rLog.Mutex().unlock();
        }).join();
        NkEhBasis::Log(rLog);
    }

  private:
    bool& m_interruptible;
};

TEST(NkEhLogFile, IsHeldWhileADerivedErrorWritesItself) {
    const DefaultLog log;
    bool interruptible = true;
    std::make_unique<AskingError>(interruptible).reset();
    EXPECT_FALSE(interruptible);
    EXPECT_TRUE(log.text().starts_with("Fehlerart: AskingError\r\nQuelldatei: \r\n"));
}

TEST(NkEhLogFile, KeepsADerivedErrorsLinesTogetherWhenThreadsLogAtATime) {
    const DefaultLog log;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([] {
            for (int i = 0; i < 100; ++i)
                std::make_unique<IndentedError>().reset();
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    std::string expected;
    for (int i = 0; i < 400; ++i)
        expected += indentedLines();
    EXPECT_EQ(log.text(), expected);
}

}  // namespace
