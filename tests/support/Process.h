#pragma once

#include <unistd.h>
#include <csignal>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/TestFolder.h"

namespace quorvi::test {

// A program beside a test, with an empty HOME of its own; killed with all its processes at the end
// of the scope. Its standard output can be read; what it complains about is in programs.log in the
// session's folder for temporary files. `settings` change its environment: NAME=value sets, NAME
// alone removes.
class Process {
public:
    Process() = default;
    enum class Input { inherited, own };
    explicit Process(std::vector<std::string> command,
                     const std::vector<std::string>& settings = {}, Input input = Input::inherited);
    Process(Process&& other) noexcept { *this = std::move(other); }
    Process& operator=(Process&& other) noexcept;
    ~Process() { end(); }

    pid_t pid() const { return pid_; }

    // To all its processes.
    void signal(int number) const;
    void freeze() const { signal(SIGSTOP); }
    void thaw() const { signal(SIGCONT); }
    // Ends it at once, like a crash.
    void kill();
    // The exit code, or minus the signal that ended it. Waits for the end.
    int wait();
    bool hasEnded();

    // A line for its standard input, if that is its own; nothing when it is dead.
    void writeLine(const std::string& line) const;
    void closeInput() const;

    // The next line of the output, without its end. Throws when none comes within a minute.
    std::string readLine();
    // Everything that is still to come, up to its end.
    std::string readAll() {
        while (readMore()) continue;
        return std::exchange(unread_, {});
    }

private:
    static void set(std::vector<std::string>& environment, const std::string& setting);
    static std::vector<char*> pointers(std::vector<std::string>& strings);
    void spawn(std::vector<char*> arguments, std::vector<char*> environment, Input input);
    bool readMore();
    void end();

    std::unique_ptr<TestFolder> home_;
    pid_t pid_ = -1;
    int output_ = -1;
    int input_ = -1;
    std::string unread_;
};

// What a program prints, run to its end. Throws when it fails.
std::string outputOf(const std::vector<std::string>& command);

// What a shell command prints, whether it succeeds or not.
std::string shell(const std::string& command);

// A second X server, which may be killed. Without a number it chooses a free one.
class NestedServer {
public:
    explicit NestedServer(const std::string& number = {});
    const std::string& display() const { return display_; }
    void kill() { process_.kill(); }

private:
    Process process_;
    std::string display_;
};

}  // namespace quorvi::test
