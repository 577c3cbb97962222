#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/postgres/PostgresSettings.h"
#include "tests/support/Process.h"

namespace quorvi::test {

// A PostgreSQL server of a test's own with a database that scripts/cloud-server has set up, on a
// loopback port and a socket in a folder of its own. PostgreSQL refuses to run as root; then it
// runs as the user postgres.
class PostgresServer {
public:
    // It listens on `host`; `prefix` begins the command that starts it; `settings` are NAME=value.
    // A test does without waiting for the disk, which matters when the machine itself crashes.
    explicit PostgresServer(const std::string& host = "127.0.0.1",
                            std::vector<std::string> prefix = {},
                            std::vector<std::string> settings = {"fsync=off"});
    ~PostgresServer();
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;

    void start();
    // As an administrator would: sessions are told, and ended.
    void stop();
    // With all its processes, in the midst of whatever they do. They stand still before the first
    // of them dies: one that is left over for a moment would tell its client of the others' end.
    void kill();
    // With all its processes, too.
    void freeze() const;
    void thaw() const;
    pid_t pid() const { return process_.pid(); }

    // What the database answers an administrator, a line for each row.
    std::string sql(const std::string& statement, const std::string& database = "quorvi") const {
        return outputOf({"psql", "-XqAt", "-v", "ON_ERROR_STOP=1", "-h", folder_.string(), "-p",
                         port(), "-U", "postgres", "-d", database, "-c", statement});
    }
    // The same as an account.
    std::string sqlAs(const std::string& account, const std::string& password,
                      const std::string& statement) const;

    // scripts/cloud-server with what it reads.
    void manage(const std::string& command, const std::string& account = {},
                const std::string& input = {}) const;
    void addAccount(const std::string& name, const std::string& password) const {
        manage("add", name, password);
    }

    std::string address(const std::string& account, const std::string& query = {}) const {
        return "postgresql://" + account + "@" + host_ + ":" + port() + "/quorvi" + query;
    }
    std::string socketAddress(const std::string& account) const {
        return "postgresql://" + account + "@/quorvi?host=" + folder_.string() + "&port=" + port();
    }
    std::string port() const { return std::to_string(port_); }
    std::string data() const { return folder_ / "data"; }
    const std::filesystem::path& folder() const { return folder_; }

    // Makes a file or folder the server's.
    static void own(const std::string& path);

private:
    std::string children() const;
    static std::string program(const std::string& name);
    static std::vector<std::string> asServer(std::vector<std::string> command);
    static int freePort();
    // Until it takes connections, or has ended.
    bool eventuallyReady();

    const std::vector<std::string> prefix_;
    const std::vector<std::string> settings_;
    const std::string host_;
    const int port_;
    std::filesystem::path folder_;
    Process process_;
};

// A provider of a known password.
PostgresPassword password(std::string text);

// Creates an account with a name that the server does not have yet, and returns the name.
std::string newAccount(const PostgresServer& server, const std::string& secret = "pass word");

}  // namespace quorvi::test
