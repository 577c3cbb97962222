#pragma once

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

namespace quorvi::test {

// A second X server of the test's own, which may be killed. The test's other windows stay where
// they are.
class NestedServer {
public:
    NestedServer() {
        int channel[2];
        if (pipe(channel) != 0) return;
        const auto number = std::to_string(channel[1]);
        std::string words[] = {"Xvfb", "-displayfd", number, "-nolisten", "tcp", "-noreset"};
        char* arguments[7] = {};
        for (int i = 0; i < 6; ++i) arguments[i] = words[i].data();
        if (posix_spawnp(&pid_, "Xvfb", nullptr, nullptr, arguments, environ) != 0) pid_ = -1;
        close(channel[1]);
        std::string answer;
        for (char c = 0; read(channel[0], &c, 1) == 1 && c != '\n';) answer += c;
        close(channel[0]);
        if (!answer.empty()) display_ = ":" + answer;
    }
    ~NestedServer() { kill(); }
    NestedServer(const NestedServer&) = delete;
    NestedServer& operator=(const NestedServer&) = delete;

    const std::string& display() const { return display_; }

    void kill() {
        if (pid_ <= 0) return;
        ::kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
        pid_ = -1;
    }

private:
    pid_t pid_ = -1;
    std::string display_;
};

}  // namespace quorvi::test
