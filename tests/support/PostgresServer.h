#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/Process.h"
#include "tests/support/Waiting.h"

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
                            std::vector<std::string> settings = {"fsync=off"})
        : prefix_(std::move(prefix)),
          settings_(std::move(settings)),
          host_(host),
          port_(freePort()) {
        std::string pattern = "/tmp/quorvi-postgres-XXXXXX";
        if (!mkdtemp(pattern.data())) throw std::runtime_error("no folder for a server");
        folder_ = pattern;
        chmod(pattern.c_str(), 0755);
        own(pattern);
        outputOf(asServer({program("initdb"), "-D", data(), "--username=postgres", "--auth=trust",
                           "--encoding=UTF8", "--locale=C", "--no-sync"}));
        std::ofstream(data() + "/pg_hba.conf") << "local all postgres trust\n"
                                                  "local all all scram-sha-256\n"
                                                  "host all all 0.0.0.0/0 scram-sha-256\n";
        start();
        sql("CREATE DATABASE quorvi", "postgres");
        manage("set-up");
    }
    ~PostgresServer() {
        stop();
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;

    void start() {
        std::vector<std::string> command{program("postgres"),
                                         "-D",
                                         data(),
                                         "-k",
                                         folder_.string(),
                                         "-p",
                                         std::to_string(port_),
                                         "-c",
                                         "listen_addresses=" + host_};
        for (const auto& setting : settings_) command.insert(command.end(), {"-c", setting});
        command = asServer(std::move(command));
        command.insert(command.begin(), prefix_.begin(), prefix_.end());
        // After a crash the processes that the dead server left behind take a moment to go.
        const bool started = eventually([&] {
            if (process_.pid() < 0 || process_.hasEnded()) process_ = Process(command);
            return eventuallyReady();
        });
        if (!started) throw std::runtime_error("the server did not start");
    }
    // As an administrator would: sessions are told, and ended.
    void stop() {
        if (process_.pid() < 0) return;
        process_.signal(SIGINT);
        process_.wait();
    }
    // With all its processes, in the midst of whatever they do. They stand still before the first
    // of them dies: one that is left over for a moment would tell its client of the others' end.
    void kill() {
        const auto pid = std::to_string(process_.pid());
        shell("kill -STOP " + pid + "; children=$(ps -o pid= --ppid " + pid +
              "); kill -STOP $children; kill -9 " + pid + " $children");
        process_.wait();
    }
    void freeze() const { process_.freeze(); }
    void thaw() const { process_.thaw(); }
    pid_t pid() const { return process_.pid(); }

    // What the database answers an administrator, a line for each row.
    std::string sql(const std::string& statement, const std::string& database = "quorvi") const {
        return outputOf({"psql", "-XqAt", "-v", "ON_ERROR_STOP=1", "-h", folder_.string(), "-p",
                         port(), "-U", "postgres", "-d", database, "-c", statement});
    }
    // The same as an account.
    std::string sqlAs(const std::string& account, const std::string& password,
                      const std::string& statement) const {
        return shell("PGPASSWORD='" + password + "' psql -XqAt -v ON_ERROR_STOP=1 -h " +
                     folder_.string() + " -p " + port() + " -U " + account + " -d quorvi -c \"" +
                     statement + "\" 2>&1");
    }

    // scripts/cloud-server with what it reads.
    void manage(const std::string& command, const std::string& account = {},
                const std::string& input = {}) const {
        const auto file = folder_ / "input";
        std::ofstream(file) << input << '\n';
        std::vector<std::string> words{"sh",
                                       "-c",
                                       "exec \"$0\" \"$@\" <" + file.string(),
                                       QUORVI_SOURCE "/scripts/cloud-server",
                                       command,
                                       "--database",
                                       socketAddress("postgres")};
        if (!account.empty()) words.push_back(account);
        outputOf(words);
        std::filesystem::remove(file);
    }
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
    static void own(const std::string& path) {
        const passwd* user = geteuid() == 0 ? getpwnam("postgres") : nullptr;
        if (user && chown(path.c_str(), user->pw_uid, user->pw_gid) != 0)
            throw std::runtime_error("chown " + path);
    }

private:
    static std::string program(const std::string& name) {
        static const std::string folder = [] {
            auto output =
                outputOf({"sh", "-c", "ls -d /usr/lib/postgresql/*/bin | sort -V | tail -n 1"});
            output.pop_back();
            return output;
        }();
        return folder + "/" + name;
    }
    static std::vector<std::string> asServer(std::vector<std::string> command) {
        if (geteuid() == 0)
            command.insert(command.begin(),
                           {"setpriv", "--reuid=postgres", "--regid=postgres", "--clear-groups"});
        return command;
    }
    static int freePort() {
        const int probe = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address{.sin_family = AF_INET,
                            .sin_port = 0,
                            .sin_addr = {htonl(INADDR_LOOPBACK)},
                            .sin_zero = {}};
        socklen_t size = sizeof address;
        if (bind(probe, reinterpret_cast<sockaddr*>(&address), size) != 0)
            throw std::runtime_error("no free port");
        getsockname(probe, reinterpret_cast<sockaddr*>(&address), &size);
        close(probe);
        return ntohs(address.sin_port);
    }
    // Until it takes connections, or has ended.
    bool eventuallyReady() {
        bool ready = false;
        eventually([&] {
            ready = contentOf(data() + "/postmaster.pid").find("\nready") != std::string::npos &&
                    contentOf(data() + "/postmaster.pid")
                        .starts_with(std::to_string(process_.pid()) + "\n");
            return ready || process_.hasEnded();
        });
        return ready;
    }

    const std::vector<std::string> prefix_;
    const std::vector<std::string> settings_;
    const std::string host_;
    const int port_;
    std::filesystem::path folder_;
    Process process_;
};

}  // namespace quorvi::test
