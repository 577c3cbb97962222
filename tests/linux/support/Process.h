#pragma once

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace quorvi::testing {

// A program that a test runs beside itself; killed with the object.
class Process {
public:
    Process() = default;
    // `settings` change this program's environment for it: NAME=value, or first "-u", NAME.
    explicit Process(std::vector<std::string> command,
                     const std::vector<std::string>& settings = {}) {
        command.insert(command.begin(), settings.begin(), settings.end());
        command.insert(command.begin(), "env");
        std::vector<char*> arguments;
        for (auto& argument : command) arguments.push_back(argument.data());
        arguments.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        if (posix_spawnp(&pid_, "env", &actions, nullptr, arguments.data(), environ) != 0)
            pid_ = -1;
        posix_spawn_file_actions_destroy(&actions);
    }
    Process(Process&& other) noexcept : pid_(std::exchange(other.pid_, -1)) {}
    Process& operator=(Process&& other) noexcept {
        kill();
        pid_ = std::exchange(other.pid_, -1);
        return *this;
    }
    ~Process() { kill(); }

    void signal(int number) const {
        if (pid_ > 0) ::kill(pid_, number);
    }
    void kill() {
        signal(SIGKILL);
        wait();
    }
    int wait() {
        int status = -1;
        if (pid_ > 0) ::waitpid(pid_, &status, 0);
        pid_ = -1;
        return status;
    }

private:
    pid_t pid_ = -1;
};

// What a shell command prints.
inline std::string output(const std::string& command) {
    std::string text;
    auto* pipe = ::popen((command + " 2>/dev/null").c_str(), "r");
    if (!pipe) return text;
    for (int c; (c = std::fgetc(pipe)) != EOF;) text.push_back(static_cast<char>(c));
    ::pclose(pipe);
    return text;
}

}  // namespace quorvi::testing
