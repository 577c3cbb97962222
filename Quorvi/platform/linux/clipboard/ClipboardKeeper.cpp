#include "Quorvi/platform/linux/clipboard/ClipboardKeeper.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

extern char** environ;

namespace quorvi {

namespace {

using Items = std::vector<PasteboardItem>;

std::vector<const Bytes*> blocksOf(const Items& items) {
    std::vector<const Bytes*> blocks;
    for (const auto& item : items)
        for (const auto& one : item.representations) blocks.push_back(one.data.get());
    return blocks;
}

// Whether both are copies of one content, which is seen without reading it.
bool areShared(const Items& a, const Items& b) {
    return blocksOf(a) == blocksOf(b);
}

}  // namespace

ClipboardKeeper::~ClipboardKeeper() {
    socket_.reset();  // the keeper ends by itself, or goes on offering
    if (process_ > 0) waitpid(process_, nullptr, WNOHANG);
}

void ClipboardKeeper::prepare(const Items& items) {
    if (program_.empty() || areShared(items, content_)) return;
    content_ = items;
    if (!socket_ || !sendContent()) start();
}

void ClipboardKeeper::guard(std::uint32_t window, const Items& items) {
    using enum ClipboardMessage::Kind;
    tell({areShared(items, content_) ? guard : standIn, window});
}

void ClipboardKeeper::takeOver() {
    tell({ClipboardMessage::Kind::takeOver});
}

void ClipboardKeeper::forget() {
    if (content_.empty()) return;
    content_.clear();
    if (socket_) sendContent();
}

void ClipboardKeeper::tell(ClipboardMessage message) {
    if (program_.empty()) return;
    if (socket_ && sendClipboardMessage(*socket_, message)) return;
    if (start()) sendClipboardMessage(*socket_, message);
}

bool ClipboardKeeper::sendContent() {
    // Without memory nothing is kept; the outdated content would be worse.
    const auto file = content_.empty() ? nullptr : clipboardFile(content_);
    return sendClipboardMessage(*socket_, {}, file.get());
}

// Starts a keeper that knows the present content.
bool ClipboardKeeper::start() {
    socket_.reset();
    if (process_ > 0) waitpid(std::exchange(process_, -1), nullptr, WNOHANG);
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) return false;
    auto ours = std::make_unique<Descriptor>(ends[0]);
    const Descriptor theirs(ends[1]);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, theirs.get(), STDIN_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    // A signal that ends this program's terminal or session must not end the keeper.
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    std::string name = program_;
    std::string argument = argument_;
    char* arguments[] = {name.data(), argument.empty() ? nullptr : argument.data(), nullptr};
    const int failed =
        posix_spawn(&process_, program_.c_str(), &actions, &attributes, arguments, environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (failed) {
        process_ = -1;
        return false;
    }
    socket_ = std::move(ours);
    return sendContent();
}

}  // namespace quorvi
