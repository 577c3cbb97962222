#include "Quorvi/platform/linux/posix/HelperProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <utility>

extern char** environ;

namespace quorvi {

std::unique_ptr<HelperProcess> HelperProcess::start(std::vector<std::string> command) {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) return nullptr;
    auto ours = std::make_unique<Descriptor>(ends[0]);
    const Descriptor theirs(ends[1]);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, theirs.get(), STDIN_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    std::vector<char*> arguments;
    for (auto& word : command) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t process = -1;
    const int failed = posix_spawn(&process, command.front().c_str(), &actions, &attributes,
                                   arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (failed) return nullptr;
    return std::unique_ptr<HelperProcess>(new HelperProcess(std::move(ours), process));
}

HelperProcess::~HelperProcess() {
    socket_.reset();
    waitpid(process_, nullptr, WNOHANG);
}

}  // namespace quorvi
