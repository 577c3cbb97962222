#include "tests/support/cloud/PostgresServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <fstream>
#include <stdexcept>

#include "tests/support/Paths.h"
#include "tests/support/Texts.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {

PostgresServer::PostgresServer(const std::string& host, std::vector<std::string> prefix,
                               std::vector<std::string> settings)
    : prefix_(std::move(prefix)), settings_(std::move(settings)), host_(host), port_(freePort()) {
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

PostgresServer::~PostgresServer() {
    stop();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void PostgresServer::start() {
    auto command = split(program("postgres") + " -D " + data() + " -k " + folder_.string() +
                         " -p " + port() + " -c listen_addresses=" + host_);
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

void PostgresServer::stop() {
    if (process_.pid() < 0) return;
    process_.signal(SIGINT);
    process_.wait();
}

// Each session's process is the leader of a group of its own, so a signal to the server's group
// does not reach it.
std::string PostgresServer::children() const {
    return "$(ps -o pid= --ppid " + std::to_string(process_.pid()) + ")";
}

void PostgresServer::freeze() const {
    shell("kill -STOP " + std::to_string(process_.pid()) + "; kill -STOP " + children());
}

void PostgresServer::thaw() const {
    shell("kill -CONT " + std::to_string(process_.pid()) + " " + children());
}

void PostgresServer::kill() {
    freeze();
    shell("kill -9 " + std::to_string(process_.pid()) + " " + children());
    process_.wait();
}

std::string PostgresServer::sqlAs(const std::string& account, const std::string& password,
                                  const std::string& statement) const {
    return shell("PGPASSWORD='" + password + "' psql -XqAt -v ON_ERROR_STOP=1 -h " +
                 folder_.string() + " -p " + port() + " -U " + account + " -d quorvi -c \"" +
                 statement + "\" 2>&1");
}

void PostgresServer::manage(const std::string& command, const std::string& account,
                            const std::string& input) const {
    const auto file = folder_ / "input";
    std::ofstream(file) << input << '\n';
    std::vector<std::string> words{"sh",
                                   "-c",
                                   "exec \"$0\" \"$@\" <" + file.string(),
                                   sourceFolder() + "/scripts/cloud-server",
                                   command,
                                   "--database",
                                   socketAddress("postgres")};
    if (!account.empty()) words.push_back(account);
    outputOf(words);
    std::filesystem::remove(file);
}

void PostgresServer::own(const std::string& path) {
    const passwd* user = geteuid() == 0 ? getpwnam("postgres") : nullptr;
    if (user && chown(path.c_str(), user->pw_uid, user->pw_gid) != 0)
        throw std::runtime_error("chown " + path);
}

std::string PostgresServer::program(const std::string& name) {
    static const auto folder =
        split(outputOf({"sh", "-c", "ls -d /usr/lib/postgresql/*/bin | sort -V | tail -n 1"}))
            .at(0);
    return folder + "/" + name;
}

std::vector<std::string> PostgresServer::asServer(std::vector<std::string> command) {
    if (geteuid() == 0)
        command.insert(command.begin(),
                       {"setpriv", "--reuid=postgres", "--regid=postgres", "--clear-groups"});
    return command;
}

int PostgresServer::freePort() {
    const int probe = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{
        .sin_family = AF_INET, .sin_port = 0, .sin_addr = {htonl(INADDR_LOOPBACK)}, .sin_zero = {}};
    socklen_t size = sizeof address;
    if (bind(probe, reinterpret_cast<sockaddr*>(&address), size) != 0)
        throw std::runtime_error("no free port");
    getsockname(probe, reinterpret_cast<sockaddr*>(&address), &size);
    close(probe);
    return ntohs(address.sin_port);
}

bool PostgresServer::eventuallyReady() {
    bool ready = false;
    eventually([&] {
        ready = contentOf(data() + "/postmaster.pid").find("\nready") != std::string::npos &&
                contentOf(data() + "/postmaster.pid")
                    .starts_with(std::to_string(process_.pid()) + "\n");
        return ready || process_.hasEnded();
    });
    return ready;
}

PostgresPassword password(std::string text) {
    return [text = std::move(text)](std::stop_token) { return Secret(std::string_view(text)); };
}

std::string newAccount(const PostgresServer& server, const std::string& secret) {
    static std::atomic<int> number = 0;
    const auto name = "account" + std::to_string(++number);
    server.sql("CREATE ROLE " + name + " LOGIN IN ROLE quorvi_accounts PASSWORD '" + secret + "'");
    return name;
}

}  // namespace quorvi::test
