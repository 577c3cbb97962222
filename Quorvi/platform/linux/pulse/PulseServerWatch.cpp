#include "Quorvi/platform/linux/pulse/PulseServerWatch.h"

#include <pulse/mainloop-api.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace quorvi {

namespace fs = std::filesystem;

struct PulseServerWatch::Impl {
    pa_mainloop_api* api;
    fs::path socket;
    std::function<void()> appeared;
    int inotify = -1;
    int watch = -1;
    fs::path awaited = {};  // the name whose appearance in the watched folder matters
    pa_io_event* event = nullptr;

    static void ready(pa_mainloop_api*, pa_io_event*, int, pa_io_event_flags_t, void* self) {
        static_cast<Impl*>(self)->drain();
    }

    void drain() {
        alignas(inotify_event) std::array<char, 4096> buffer{};
        bool concerned = false;
        for (ssize_t size; (size = ::read(inotify, buffer.data(), buffer.size())) > 0;)
            for (const char* at = buffer.data(); at < buffer.data() + size;) {
                inotify_event happened;
                std::memcpy(&happened, at, sizeof happened);
                const char* name = at + sizeof happened;
                if (happened.len == 0 || name == awaited.native()) concerned = true;
                at = name + happened.len;
            }
        if (!concerned) return;
        watchNearest();
        appeared();
    }

    void watchNearest() {
        constexpr auto mask = IN_CREATE | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
        const int former = watch;
        awaited = socket.filename();
        auto folder = socket.parent_path();
        while ((watch = inotify_add_watch(inotify, folder.c_str(), mask)) < 0) {
            if (folder == folder.root_path()) break;
            awaited = folder.filename();
            folder = folder.parent_path();
        }
        if (former >= 0 && former != watch) inotify_rm_watch(inotify, former);
    }
};

PulseServerWatch::PulseServerWatch(pa_mainloop_api* api, const fs::path& socket,
                                   std::function<void()> appeared)
    : impl_(new Impl{api, socket, std::move(appeared)}) {
    if (!socket.is_absolute()) return;
    impl_->inotify = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (impl_->inotify < 0) return;
    impl_->watchNearest();
    impl_->event = api->io_new(api, impl_->inotify, PA_IO_EVENT_INPUT, Impl::ready, impl_.get());
}

PulseServerWatch::~PulseServerWatch() {
    if (impl_->event) impl_->api->io_free(impl_->event);
    if (impl_->inotify >= 0) ::close(impl_->inotify);
}

fs::path PulseServerWatch::socketPath(const std::string& server) {
    const auto variable = [](const char* name) {
        const char* value = std::getenv(name);
        return std::string(value ? value : "");
    };
    const auto address = server.empty() ? variable("PULSE_SERVER") : server;
    if (address.starts_with("unix:/")) return address.substr(5);
    if (address.starts_with("/")) return address;
    if (!address.empty()) return {};
    if (const auto folder = variable("PULSE_RUNTIME_PATH"); !folder.empty())
        return fs::path(folder) / "native";
    if (const auto folder = variable("XDG_RUNTIME_DIR"); !folder.empty())
        return fs::path(folder) / "pulse" / "native";
    return {};
}

}  // namespace quorvi
