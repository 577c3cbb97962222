#pragma once

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>
#include <string>
#include <vector>

// Environment of this process, which a child inherits.
extern char** environ;

namespace quorvi::test {

// A program that a test starts and ends, with its standard output to read from. Its end is part of
// the destructor, so no server outlives its test.
class ServerProcess {
public:
    explicit ServerProcess(const std::vector<std::string>& arguments) {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
        std::vector<char*> argv;
        for (const auto& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
        argv.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        const int failed = posix_spawnp(&pid_, argv[0], &actions, nullptr, argv.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        close(ends[1]);
        output_ = ends[0];
        if (failed) throw std::runtime_error("could not start " + arguments.front());
    }
    ~ServerProcess() {
        if (pid_ > 0) {
            kill(pid_, SIGKILL);
            waitpid(pid_, nullptr, 0);
        }
        close(output_);
    }
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    pid_t pid() const { return pid_; }

    // The next line of the output, without its end. Throws when none comes within a minute.
    std::string readLine() {
        for (;;) {
            if (const auto end = unread_.find('\n'); end != unread_.npos) {
                auto line = unread_.substr(0, end);
                unread_.erase(0, end + 1);
                return line;
            }
            if (!readMore()) throw std::runtime_error("the program ended or said nothing");
        }
    }

    // Everything that is still to come, up to the program's end.
    std::string readAll() {
        while (readMore()) {
        }
        return unread_;
    }

    // The exit code, or minus the signal that ended the program. Waits for the end.
    int wait() {
        int status = 0;
        waitpid(pid_, &status, 0);
        pid_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

private:
    bool readMore() {
        pollfd ready{output_, POLLIN, 0};
        if (poll(&ready, 1, 60'000) <= 0) return false;
        char buffer[4096];
        const auto n = read(output_, buffer, sizeof buffer);
        if (n > 0) unread_.append(buffer, static_cast<std::size_t>(n));
        return n > 0;
    }

    pid_t pid_ = -1;
    int output_ = -1;
    std::string unread_;
};

// Runs a program to its end and returns what it printed. Throws when it fails.
inline std::string outputOf(const std::vector<std::string>& arguments) {
    ServerProcess program(arguments);
    auto output = program.readAll();
    if (program.wait() != 0) throw std::runtime_error(arguments.front() + " failed");
    return output;
}

}  // namespace quorvi::test
