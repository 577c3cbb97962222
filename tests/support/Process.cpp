#include "tests/support/Process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <stdexcept>

namespace quorvi::test {

Process::Process(std::vector<std::string> command, const std::vector<std::string>& settings,
                 Input input)
    : home_(std::make_unique<TestFolder>()) {
    std::vector<std::string> environment;
    for (char** one = environ; *one; ++one) environment.emplace_back(*one);
    for (const auto* name :
         {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"})
        set(environment, name);
    set(environment, "HOME=" + home_->path().string());
    for (const auto& setting : settings) set(environment, setting);
    spawn(pointers(command), pointers(environment), input);
}

Process& Process::operator=(Process&& other) noexcept {
    end();
    pid_ = std::exchange(other.pid_, -1);
    output_ = std::exchange(other.output_, -1);
    input_ = std::exchange(other.input_, -1);
    unread_ = std::move(other.unread_);
    home_ = std::move(other.home_);
    return *this;
}

int Process::wait() {
    int status = 0;
    waitpid(std::exchange(pid_, -1), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

std::string Process::readLine() {
    auto end = unread_.find('\n');
    for (; end == unread_.npos; end = unread_.find('\n'))
        if (!readMore()) throw std::runtime_error("the program ended or said nothing");
    auto line = unread_.substr(0, end);
    unread_.erase(0, end + 1);
    return line;
}

void Process::set(std::vector<std::string>& environment, const std::string& setting) {
    const auto name = setting.substr(0, setting.find('='));
    std::erase_if(environment, [&](const auto& one) { return one.starts_with(name + "="); });
    if (name != setting) environment.push_back(setting);
}

std::vector<char*> Process::pointers(std::vector<std::string>& strings) {
    std::vector<char*> result;
    for (auto& string : strings) result.push_back(string.data());
    result.push_back(nullptr);
    return result;
}

void Process::spawn(std::vector<char*> arguments, std::vector<char*> environment, Input input) {
    int ends[2], inputs[2] = {-1, -1};
    if (input == Input::own && socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, inputs) != 0)
        throw std::runtime_error("no sockets");
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    const auto log = std::filesystem::temp_directory_path() / "programs.log";
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, log.c_str(),
                                     O_WRONLY | O_CREAT | O_APPEND, 0600);
    if (inputs[1] >= 0) posix_spawn_file_actions_adddup2(&actions, inputs[1], STDIN_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    const int failed = posix_spawnp(&pid_, arguments[0], &actions, &attributes, arguments.data(),
                                    environment.data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    output_ = ends[0];
    if (inputs[1] >= 0) close(inputs[1]);
    input_ = inputs[0];
    if (failed) pid_ = -1;
}

bool Process::readMore() {
    pollfd ready{output_, POLLIN, 0};
    char buffer[65536];
    if (poll(&ready, 1, 60'000) <= 0) return false;
    const auto size = read(output_, buffer, sizeof buffer);
    if (size > 0) unread_.append(buffer, static_cast<std::size_t>(size));
    return size > 0;
}

void Process::end() {
    kill();
    if (output_ >= 0) close(std::exchange(output_, -1));
    if (input_ >= 0) close(std::exchange(input_, -1));
}

std::string outputOf(const std::vector<std::string>& command) {
    Process program(command);
    auto output = program.readAll();
    if (program.pid() < 0 || program.wait() != 0)
        throw std::runtime_error(command.front() + " failed");
    return output;
}

std::string shell(const std::string& command) {
    Process program({"sh", "-c", command});
    auto output = program.readAll();
    program.wait();
    return output;
}

NestedServer::NestedServer(const std::string& number) {
    std::vector<std::string> command{"Xvfb", "-displayfd", "1", "-nolisten", "tcp", "-noreset"};
    if (!number.empty()) command.insert(command.begin() + 1, ":" + number);
    process_ = Process(command);
    display_ = ":" + process_.readLine();
}

void Process::signal(int number) const {
    if (pid_ > 0) ::kill(-pid_, number);
}

void Process::kill() {
    signal(SIGKILL);
    if (pid_ > 0) wait();
}

bool Process::hasEnded() {
    if (pid_ > 0 && waitpid(pid_, nullptr, WNOHANG) == pid_) pid_ = -1;
    return pid_ < 0;
}

void Process::closeInput() const {
    shutdown(input_, SHUT_WR);
}

void Process::writeLine(const std::string& line) const {
    const auto all = line + "\n";
    if (send(input_, all.data(), all.size(), MSG_NOSIGNAL) < 0) return;
}

}  // namespace quorvi::test
