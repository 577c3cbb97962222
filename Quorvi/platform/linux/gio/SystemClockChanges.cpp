#include "Quorvi/platform/linux/gio/SystemClockChanges.h"

#include <sys/inotify.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

#include "Quorvi/platform/linux/gio/BusClient.h"
#include "Quorvi/platform/linux/gio/DescriptorSource.h"
#include "Quorvi/platform/linux/gio/GLibThread.h"
#include "Quorvi/platform/linux/gio/LogindSignals.h"
#include "Quorvi/platform/linux/posix/Descriptor.h"

namespace quorvi {

namespace {

// The zone's file is usually replaced as a whole.
constexpr std::uint32_t newFile =
    IN_CREATE | IN_MOVED_TO | IN_CLOSE_WRITE | IN_DELETE | IN_MOVED_FROM | IN_ONLYDIR;

// A timer that never expires and can be read only when the clock was set.
void watchClock(int timer) {
    itimerspec never{};
    never.it_value.tv_sec = std::numeric_limits<time_t>::max();
    ::timerfd_settime(timer, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &never, nullptr);
}

// Reads all pending events of a folder; returns whether one is about the file.
bool hasChanged(int events, std::string_view file) {
    alignas(inotify_event) char buffer[16 * 1024];
    bool found = false;
    for (;;) {
        const auto size = ::read(events, buffer, sizeof buffer);
        if (size <= 0) return found;
        for (const char* at = buffer; at < buffer + size;) {
            const auto* event = reinterpret_cast<const inotify_event*>(at);
            found = found || (event->len && event->name == file);
            at += sizeof *event + event->len;
        }
    }
}

}  // namespace

class SystemClockChanges::Watcher {
public:
    Watcher(Scheduler& scheduler, std::weak_ptr<Observable> changes, std::filesystem::path zone)
        : scheduler_(scheduler),
          changes_(std::move(changes)),
          zone_(std::move(zone)),
          thread_("quorvi-clock", [this] { begin(); }, [this] { end(); }) {}

private:
    void begin() {
        if (timer_) {
            watchClock(timer_.get());
            clockInput_.emplace(timer_.get(), [this] { return clockChanged(); });
        }
        if (events_ &&
            ::inotify_add_watch(events_.get(), zone_.parent_path().c_str(), newFile) >= 0)
            zoneInput_.emplace(events_.get(), [this, file = zone_.filename().string()] {
                if (hasChanged(events_.get(), file)) announce();
                return true;
            });
        bus_.emplace(BusClient::Bus::system, [this](BusClient& bus) {
            watchSleep(bus, [this](bool sleeping) {
                if (!sleeping) announce();
            });
            bus.onChange({"org.freedesktop.timedate1", "/org/freedesktop/timedate1",
                          "org.freedesktop.timedate1", "Timezone"},
                         [this](GVariant*) { announce(); });
        });
    }

    void end() {
        bus_.reset();
        zoneInput_.reset();
        clockInput_.reset();
    }

    bool clockChanged() {
        std::uint64_t expirations = 0;
        if (::read(timer_.get(), &expirations, sizeof expirations) >= 0) return true;
        if (errno != ECANCELED) return errno == EAGAIN;
        watchClock(timer_.get());
        announce();
        return true;
    }

    void announce() {
        scheduler_.post([weak = changes_] {
            if (const auto changes = weak.lock()) changes->notify();
        });
    }

    Scheduler& scheduler_;
    const std::weak_ptr<Observable> changes_;
    const std::filesystem::path zone_;
    const Descriptor timer_{::timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)};
    const Descriptor events_{::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)};
    std::optional<DescriptorSource> clockInput_, zoneInput_;
    std::optional<BusClient> bus_;
    GLibThread thread_;
};

SystemClockChanges::SystemClockChanges(Scheduler& scheduler, std::filesystem::path zone)
    : changes_(std::make_shared<Observable>()),
      watcher_(std::make_unique<Watcher>(scheduler, changes_, std::move(zone))) {}

SystemClockChanges::~SystemClockChanges() = default;

Subscription SystemClockChanges::onChange(std::function<void()> observer) {
    return changes_->subscribe(std::move(observer));
}

}  // namespace quorvi
