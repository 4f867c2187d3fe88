#pragma once

// What the code blocks of the documentation run in.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include "nkcp/CodePage.h"
#include "nkdt/NkDtBasis.h"
#include "nkeh/NkEhBasis.h"
#include "nkeh/NkEhLogFile.h"
#include "nkfw/Exception.h"

namespace docs {

/// What is written to standard output while it lives, as UTF-8.
class Output {
  public:
    Output() : m_before(std::cout.rdbuf(m_stream.rdbuf())) {}
    ~Output() { std::cout.rdbuf(m_before); }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    std::string text() const {
        std::string utf8;
        nkcp::appendUtf8FromCp1252(m_stream.str(), utf8);
        return utf8;
    }

  private:
    std::ostringstream m_stream;
    std::streambuf* m_before;
};

/// The samples of one page, run in an empty folder that ends with the page.
class Folder {
  public:
    explicit Folder(std::string page) : m_page(std::move(page)), m_before(std::filesystem::current_path()) {
        std::string name = (std::filesystem::temp_directory_path() / "docs.XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) throw std::filesystem::filesystem_error(name, {});
        m_path = name;
        std::filesystem::current_path(m_path);
    }
    ~Folder() {
        std::filesystem::current_path(m_before);
        std::filesystem::remove_all(m_path);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    /// Runs the sample that begins in that line and holds what it prints against what the page says.
    template <class Sample>
    void expect(int line, std::string_view output, Sample sample) {
        const testing::ScopedTrace place(m_page.c_str(), line, "the sample of this line");
        const Output printed;
        try {
            sample();
        } catch (NkEhBasis* error) {
            ADD_FAILURE() << error->Report().GetString();
            error->Delete();
        } catch (CException* exception) {
            char message[256];
            exception->GetErrorMessage(message, sizeof message);
            ADD_FAILURE() << message;
            exception->Delete();
        }
        EXPECT_EQ(printed.text(), output);
        NkDtSetDefaultWorkingMode(NkDtWmMissing);
        NkEhLogFile::SetDefault(nullptr);
    }

  private:
    std::string m_page;
    std::filesystem::path m_before;
    std::filesystem::path m_path;
};

}  // namespace docs
