#include "Quorvi/platform/linux/folder/FolderWatch.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <system_error>
#include <utility>

#include "Quorvi/platform/linux/folder/FolderError.h"
#include "QuorviCore/identity/Uuid.h"

namespace quorvi {

namespace {

// Combines bursts of writes into one notification.
constexpr int togetherMs = 20;

constexpr std::uint32_t newMachine = IN_CREATE | IN_MOVED_TO | IN_ONLYDIR;
constexpr std::uint32_t newContent =
    IN_MODIFY | IN_CLOSE_WRITE | IN_MOVED_TO | IN_DELETE | IN_ONLYDIR;

}  // namespace

FolderWatch::FolderWatch(std::filesystem::path folder, std::string own,
                         std::function<void()> changed)
    : folder_(std::move(folder)),
      own_(std::move(own)),
      changed_(std::move(changed)),
      events_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)),
      ending_(::eventfd(0, EFD_CLOEXEC)) {
    if (!events_ || !ending_ || ::inotify_add_watch(events_.get(), folder_.c_str(), newMachine) < 0)
        failFolder("watch", folder_);
    std::error_code error;
    for (const auto& one : std::filesystem::directory_iterator(folder_, error))
        watchMachine(one.path().filename().string());
    thread_ = std::thread([this] { run(); });
}

FolderWatch::~FolderWatch() {
    const std::uint64_t one = 1;
    if (::write(ending_.get(), &one, sizeof one) == sizeof one) thread_.join();
}

void FolderWatch::watchMachine(const std::string& name) {
    if (isUuid(name) && name != own_)
        ::inotify_add_watch(events_.get(), (folder_ / name).c_str(), newContent);
}

// Reads pending events; returns false if there were none.
bool FolderWatch::takeEvents() {
    alignas(inotify_event) char buffer[64 * 1024];
    bool any = false;
    for (;;) {
        const auto size = ::read(events_.get(), buffer, sizeof buffer);
        if (size <= 0) return any;
        any = true;
        for (const char* at = buffer; at < buffer + size;) {
            const auto* event = reinterpret_cast<const inotify_event*>(at);
            if (event->len) watchMachine(event->name);
            at += sizeof *event + event->len;
        }
    }
}

void FolderWatch::run() {
    pollfd ready[] = {{events_.get(), POLLIN, 0}, {ending_.get(), POLLIN, 0}};
    for (;;) {
        ::poll(ready, 2, -1);
        if (ready[1].revents) return;
        if (!takeEvents()) continue;
        ::poll(ready + 1, 1, togetherMs);
        if (ready[1].revents) return;
        takeEvents();
        changed_();
    }
}

}  // namespace quorvi
