#pragma once

/// @file
/// What the tests of the program share: calls inside the test and as a process of their own, and databases to
/// call it on.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "Program.h"
#include "integration/odbc/TestDatabase.h"

namespace nktest {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// How a call ended and what it wrote.
struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

inline void PrintTo(const Outcome& outcome, std::ostream* os) {
    *os << "status " << outcome.status << "\nout: " << outcome.out << "\nerr: " << outcome.err;
}

using Arguments = std::vector<std::string>;

/// A call inside this process.
inline Outcome call(const Arguments& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    nkdt::app::Console console{out, err};
    const int status = nkdt::app::run(arguments, console);
    return {status, out.str(), err.str()};
}

inline std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void writeFile(const std::string& path, std::string_view content) {
    std::ofstream file(path, std::ios::binary);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
}

/// The names in a folder in alphabetical order.
inline std::vector<std::string> filesIn(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

/// The program's file, or an empty text if the test was started by hand.
inline std::string programFile() {
    const char* const path = std::getenv("NKDT_PROGRAM");
    return path == nullptr ? "" : path;
}

/// A call as a process of its own.
/// @param largestFile the size in bytes that a file can have, 0 for any
inline Outcome callProgram(const TemporaryFolder& folder, const Arguments& arguments,
                           rlim_t largestFile = 0) {
    const std::string outFile = folder.file("program.out");
    const std::string errFile = folder.file("program.err");
    std::vector<std::string> command{programFile()};
    command.insert(command.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& text : command)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        (void)::dup2(::open(outFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
        (void)::dup2(::open(errFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
        const rlimit limit{largestFile, largestFile};
        if (largestFile != 0) (void)::setrlimit(RLIMIT_FSIZE, &limit);
        ::execv(pointers.front(), pointers.data());
        ::_exit(127);
    }
    int status = 0;
    (void)::waitpid(child, &status, 0);
    Outcome outcome{WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), contentOf(outFile),
                    contentOf(errFile)};
    std::filesystem::remove(outFile);
    std::filesystem::remove(errFile);
    return outcome;
}

/// A new SQLite file with what the statements (UTF-8) make.
inline std::string makeDatabase(const TemporaryFolder& folder, const std::string& name,
                                const std::vector<std::string>& statements) {
    const std::string path = folder.file(name);
    CDatabase db;
    db.Open(path.c_str(), CDatabase::createMissing);
    for (const std::string& statement : statements)
        db.ExecuteSQL(ansi(statement));
    return path;
}

/// The only value of a query's first row, from a database that is not open.
inline std::string valueOf(const std::string& target, std::string_view sql) {
    CDatabase db;
    db.Open(target.c_str());
    CDatabaseRecordset rs(db);
    rs.OpenQuery(ansi(sql));
    CString text;
    rs.BindText(rs.GetColumns().front().strName, text);
    if (!rs.MoveNext()) return "(no row)";
    return rs.IsFieldNull(&text) ? "(null)" : utf8(text.View());
}

inline bool hasTable(const std::string& target, const std::string& table) {
    CDatabase db;
    db.Open(target.c_str());
    return db.HasTable(ansi(table)) != FALSE;
}

/// The format of a file, and whether a table goes from SQLite to PostgreSQL and back, or the other way.
using BetweenDatabases = testing::TestWithParam<std::tuple<const char*, bool>>;

inline auto eachWayBetweenDatabases() {
    return testing::Combine(testing::Values("extern", "sql", "archive"), testing::Bool());
}

inline std::string nameOfWay(const testing::TestParamInfo<std::tuple<const char*, bool>>& test) {
    return std::string(std::get<0>(test.param)) +
           (std::get<1>(test.param) ? "_FromSQLite" : "_FromPostgreSQL");
}

/// Takes the table `t`, whose rows its column `n` sorts, to the other database and back to the first one as
/// `back`. All three are the same then, and every value survives in each.
/// @param fill    makes the table in the first database
/// @param kinds   options of all calls that bind columns
/// @param counted what the comparison counts
template <class Fill>
void expectToComeOverAndBack(const std::tuple<const char*, bool>& way, Fill&& fill, const Arguments& kinds,
                             const char* counted) {
    const char* const format = std::get<0>(way);
    const bool fromSqlite = std::get<1>(way);
    const TemporaryFolder folder;
    const std::string postgresql = PostgresServer::instance()->connectionString();
    const std::string sqlite = folder.file("a.db");
    const std::string& source = fromSqlite ? sqlite : postgresql;
    const std::string& target = fromSqlite ? postgresql : sqlite;
    {
        CDatabase server;
        server.Open(postgresql.c_str());
        server.ExecuteSQL("DROP SCHEMA public CASCADE; CREATE SCHEMA public");
        CDatabase file;
        file.Open(sqlite.c_str(), CDatabase::createMissing);
        fill(fromSqlite ? file : server);
    }
    const std::string file = folder.file("t");
    const auto bound = [&kinds](Arguments arguments) {
        arguments.insert(arguments.end(), kinds.begin(), kinds.end());
        return call(arguments);
    };
    const auto transfer = [&](const std::string& from, const std::string& to, const char* table) {
        const Outcome exported =
            bound({"export", from, "t", "--format", format, "--output", file, "--sort", "n"});
        ASSERT_EQ(exported.status, 0) << exported.err;
        const Outcome imported = call({"import", to, table, "--format", format, "--input", file, "--create"});
        ASSERT_EQ(imported.status, 0) << imported.err;
    };
    transfer(source, target, "t");
    transfer(target, source, "back");
    for (const auto& [database, table] : {std::pair(target, "t"), std::pair(source, "back")}) {
        const Outcome compared = bound({"compare", source, "t", database, table, "--sort", "n"});
        EXPECT_EQ(compared.status, 0) << compared.err;
        EXPECT_THAT(compared.out, HasSubstr(counted));
        EXPECT_EQ(bound({"check", database, table}).status, 0);
    }
}

}  // namespace nktest
