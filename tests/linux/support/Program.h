#pragma once

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <utility>
#include <vector>

namespace quorvi::test {

// A real program, started for the test and ended with it.
class Program {
public:
    explicit Program(std::vector<std::string> words) {
        std::vector<char*> arguments;
        for (auto& word : words) arguments.push_back(word.data());
        arguments.push_back(nullptr);
        if (posix_spawnp(&pid_, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0)
            pid_ = -1;
    }
    ~Program() { end(); }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    pid_t pid() const { return pid_; }

    void end() {
        if (pid_ <= 0) return;
        kill(pid_, SIGKILL);
        waitpid(std::exchange(pid_, -1), nullptr, 0);
    }

private:
    pid_t pid_ = -1;
};

}  // namespace quorvi::test
