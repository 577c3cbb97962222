#include "Quorvi/app/commands/SecretInput.h"

#include <termios.h>
#include <unistd.h>

#include <cstdio>
#include <string>

namespace quorvi {

namespace {

constexpr std::size_t longestSecret = 4096;

// Turns the terminal's echo off while it lives.
class Unseen {
public:
    Unseen() {
        if (tcgetattr(STDIN_FILENO, &before_) != 0) return;
        auto unseen = before_;
        unseen.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        isChanged_ = tcsetattr(STDIN_FILENO, TCSAFLUSH, &unseen) == 0;
    }
    Unseen(const Unseen&) = delete;
    Unseen& operator=(const Unseen&) = delete;
    ~Unseen() {
        if (isChanged_) tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
    }

private:
    termios before_{};
    bool isChanged_ = false;
};

}  // namespace

Secret readSecret(const char* prompt) {
    const bool asks = isatty(STDIN_FILENO) != 0;
    if (asks) std::fprintf(stderr, "%s", prompt);
    const Unseen unseen;
    std::string line;
    line.reserve(longestSecret);  // so that no copy is left behind
    for (char c = 0; line.size() < longestSecret && read(STDIN_FILENO, &c, 1) == 1 && c != '\n';)
        line += c;
    if (asks) std::fprintf(stderr, "\n");
    return Secret(std::move(line));
}

}  // namespace quorvi
