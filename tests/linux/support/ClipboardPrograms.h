#pragma once

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

// Real programs beside a test.
namespace quorvi::test {

// What a shell command prints, whole; its standard error goes to the test's.
inline std::string outputOf(const std::string& command) {
    std::FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) throw std::runtime_error("cannot run " + command);
    std::string output;
    std::array<char, 65536> buffer{};
    while (const auto size = std::fread(buffer.data(), 1, buffer.size(), pipe))
        output.append(buffer.data(), size);
    pclose(pipe);
    return output;
}

// A program that runs until it is killed or its object dies.
class RunningProgram {
public:
    explicit RunningProgram(std::vector<std::string> arguments) {
        if (pipe2(pipe_, O_CLOEXEC) != 0) throw std::runtime_error("pipe");
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, pipe_[1], 1);
        std::vector<char*> argv;
        for (auto& argument : arguments) argv.push_back(argument.data());
        argv.push_back(nullptr);
        const int error = posix_spawnp(&pid_, argv[0], &actions, nullptr, argv.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        close(pipe_[1]);
        if (error != 0) throw std::runtime_error("cannot start " + arguments[0]);
    }
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;
    ~RunningProgram() {
        kill();
        close(pipe_[0]);
    }

    pid_t pid() const { return pid_; }

    // Ends it and waits for its end.
    void kill() {
        if (pid_ <= 0) return;
        ::kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
        pid_ = 0;
    }

    // The next line that it prints; waits for it.
    std::string readLine() {
        std::string line;
        char c = 0;
        while (::read(pipe_[0], &c, 1) == 1 && c != '\n') line.push_back(c);
        return line;
    }

private:
    pid_t pid_ = 0;
    int pipe_[2] = {-1, -1};
};

}  // namespace quorvi::test
