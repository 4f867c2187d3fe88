#pragma once

/// @file
/// A PostgreSQL server for one test program: started on demand in a temporary folder, on a free loopback
/// port.
///
/// A guardian process stops the server and removes its folder when the test program ends, however it ends.

#include <arpa/inet.h>
#include <fcntl.h>
#include <glob.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace nktest {

class PostgresServer {
  public:
    /// The program's server, or null if PostgreSQL's server programs are not installed. Throws if it cannot
    /// be started.
    static const PostgresServer* instance() {
        static const std::string programs = programFolder();
        if (programs.empty()) return nullptr;
        static const PostgresServer server(programs);
        return &server;
    }

    /// A connection string for the database "postgres", without any option that the binding adds.
    std::string connectionString() const {
        return "Driver={PostgreSQL Unicode};Server=127.0.0.1;Port=" + std::to_string(m_port) +
               ";Database=postgres;UID=nkdt";
    }

    ~PostgresServer() {
        (void)::close(m_guardianPipe);
        (void)::waitpid(m_guardian, nullptr, 0);
    }
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;

  private:
    explicit PostgresServer(const std::string& programs) : m_programs(programs) {
        std::string pattern = (std::filesystem::temp_directory_path() / "nkdt-postgres-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("no temporary folder for PostgreSQL");
        m_folder = pattern;
        startGuardian();
        if (::geteuid() == 0) giveFolderToPostgres();
        run({m_programs + "/initdb", "-D", m_folder + "/data", "-U", "nkdt", "-A", "trust", "-E", "UTF8",
             "--locale=C.UTF-8", "--no-sync"});
        start();
    }

    static std::string programFolder() {
        glob_t found{};
        std::string folder;
        if (::glob("/usr/lib/postgresql/*/bin/initdb", 0, nullptr, &found) == 0 && found.gl_pathc > 0) {
            folder = std::filesystem::path(found.gl_pathv[found.gl_pathc - 1]).parent_path().string();
        }
        ::globfree(&found);
        return folder;
    }

    // Another program may take the port between its choice and its use; then the next one is tried.
    void start() {
        for (int attempt = 1;; ++attempt) {
            m_port = freePort();
            const std::string options = "-p " + std::to_string(m_port) + " -k " + m_folder +
                                        " -c listen_addresses=127.0.0.1 -c fsync=off -c max_connections=20";
            try {
                run({m_programs + "/pg_ctl", "-D", m_folder + "/data", "-w", "-l", m_folder + "/server.log",
                     "-o", options, "start"});
                return;
            } catch (const std::runtime_error&) {
                if (attempt == 5) throw;
            }
        }
    }

    // The guardian waits until the other end of its pipe is closed, by the destructor or by the end of this
    // process.
    void startGuardian() {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe for PostgreSQL's guardian");
        const pid_t child = ::fork();
        if (child < 0) throw std::runtime_error("no process for PostgreSQL's guardian");
        if (child == 0) {
            (void)::setsid();
            (void)::close(ends[1]);
            silence("/dev/null");
            char byte = 0;
            while (::read(ends[0], &byte, 1) > 0)
                continue;
            execute(
                asServerUser({"/bin/sh", "-c",
                              "\"$1\" -D \"$2/data\" -m immediate stop; cd /; exec rm -rf \"$2/data\" \"$2\"",
                              "sh", m_programs + "/pg_ctl", m_folder}));
        }
        (void)::close(ends[0]);
        m_guardianPipe = ends[1];
        m_guardian = child;
    }

    void giveFolderToPostgres() const {
        const passwd* user = ::getpwnam("postgres");
        if (user == nullptr || ::chown(m_folder.c_str(), user->pw_uid, user->pw_gid) != 0) {
            throw std::runtime_error("no user postgres to run the server as");
        }
    }

    static int freePort() {
        const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof(address);
        auto* general = reinterpret_cast<sockaddr*>(&address);
        const bool found = listener >= 0 && ::bind(listener, general, length) == 0 &&
                           ::getsockname(listener, general, &length) == 0;
        if (listener >= 0) (void)::close(listener);
        if (!found) throw std::runtime_error("no free loopback port");
        return ntohs(address.sin_port);
    }

    // The server refuses to run as root.
    static std::vector<std::string> asServerUser(std::vector<std::string> command) {
        if (::geteuid() == 0) {
            static const char* const prefix[] = {"/usr/sbin/runuser", "-u", "postgres", "--"};
            command.insert(command.begin(), std::begin(prefix), std::end(prefix));
        }
        return command;
    }

    void run(const std::vector<std::string>& command) const {
        const std::string log = m_folder + "/command.log";
        const pid_t child = ::fork();
        if (child == 0) {
            silence(log.c_str());
            execute(asServerUser(command));
        }
        int status = 0;
        if (child < 0 || ::waitpid(child, &status, 0) != child)
            throw std::runtime_error("cannot run " + command.front());
        if (status != 0) throw std::runtime_error(command.front() + " failed: " + textOf(log));
    }

    static std::string textOf(const std::string& path) {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static void silence(const char* log) {
        const int in = ::open("/dev/null", O_RDONLY);
        const int out = ::open(log, O_WRONLY | O_CREAT | O_TRUNC, 0600);
        (void)::dup2(in, STDIN_FILENO);
        (void)::dup2(out, STDOUT_FILENO);
        (void)::dup2(out, STDERR_FILENO);
    }

    [[noreturn]] static void execute(std::vector<std::string> command) {
        std::vector<char*> arguments;
        for (std::string& argument : command)
            arguments.push_back(argument.data());
        arguments.push_back(nullptr);
        if (::chdir("/") == 0) ::execv(arguments.front(), arguments.data());
        ::_exit(127);
    }

    std::string m_programs;
    std::string m_folder;
    int m_port = 0;
    int m_guardianPipe = -1;
    pid_t m_guardian = -1;
};

}  // namespace nktest
