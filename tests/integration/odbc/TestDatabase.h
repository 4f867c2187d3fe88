#pragma once

/// @file
/// What the tests of the binding share: a database of each kind, texts, and a look at what was thrown.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "PostgresServer.h"
#include "nkcp/CodePage.h"
#include "nkdt/odbc/Odbc.h"
#include "nkfw/Exception.h"

namespace nktest {

/// The text in code page 1252.
inline CString ansi(std::string_view utf8) {
    std::string text;
    EXPECT_TRUE(nkcp::appendCp1252FromUtf8(utf8, text).complete) << utf8;
    return CString(std::string_view(text));
}

/// The text in UTF-8.
inline std::string utf8(std::string_view text) {
    std::string result;
    nkcp::appendUtf8FromCp1252(text, result);
    return result;
}

/// What an operation threw; `thrown` is false if it did not.
struct Thrown {
    bool thrown = false;
    std::string state;
    int nativeError = 0;
    std::string text;  // UTF-8
};

inline Thrown thrownBy(const std::function<void()>& operation) {
    try {
        operation();
    } catch (CDBException* e) {
        Thrown result{true, e->m_strState.GetString(), e->m_nNativeError, utf8(e->m_strError.View())};
        e->Delete();
        return result;
    }
    return {};
}

/// SQLite writes the digits of doubles with the processor's extended precision, which valgrind emulates
/// without it.
inline bool extendedPrecisionWorks() {
    volatile long double sum = 1.0L;
    sum = sum + 1.0L / (1ULL << 60U);
    return sum != 1.0L;
}

/// A folder that is gone after the test.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "nkdt-odbc-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
        m_path = pattern;
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string file(const std::string& name) const { return (m_path / name).string(); }

  private:
    std::filesystem::path m_path;
};

/// One behaviour, two databases: each test runs against a fresh SQLite file and an empty PostgreSQL schema.
class EachDatabase : public testing::TestWithParam<CDatabase::Dbms> {
  protected:
    void SetUp() override {
        if (isPostgresql() && PostgresServer::instance() == nullptr) {
            GTEST_SKIP() << "PostgreSQL's server programs are not installed";
        }
        db.Open(target().c_str(), CDatabase::createMissing);
        if (isPostgresql()) db.ExecuteSQL("DROP SCHEMA public CASCADE; CREATE SCHEMA public");
    }

    bool isPostgresql() const { return GetParam() == CDatabase::postgresql; }
    /// What to open to reach the test's database.
    std::string target() const {
        return isPostgresql() ? PostgresServer::instance()->connectionString() : folder.file("test.db");
    }
    /// Executes a statement that is written in UTF-8.
    void execute(std::string_view sql) { db.ExecuteSQL(ansi(sql)); }
    /// A text expression for a character by its code point.
    std::string character(int codePoint) const {
        return (isPostgresql() ? "chr(" : "char(") + std::to_string(codePoint) + ")";
    }
    /// The only value of a query's first row.
    std::string value(std::string_view sql) {
        CDatabaseRecordset rs(db);
        rs.OpenQuery(ansi(sql));
        CString text;
        rs.BindText(rs.GetColumns().front().strName, text);
        if (!rs.MoveNext()) return "(no row)";
        return rs.IsFieldNull(&text) ? "(null)" : utf8(text.View());
    }

    TemporaryFolder folder;
    CDatabase db;
};

inline std::string databaseName(const testing::TestParamInfo<CDatabase::Dbms>& info) {
    return info.param == CDatabase::postgresql ? "PostgreSQL" : "SQLite";
}

}  // namespace nktest
