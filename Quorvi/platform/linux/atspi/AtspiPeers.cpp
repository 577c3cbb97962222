#include "Quorvi/platform/linux/atspi/AtspiPeers.h"

#include <gio/gio.h>

#include <algorithm>
#include <chrono>
#include <utility>

#include "Quorvi/platform/linux/posix/ProcessName.h"
#include "Quorvi/platform/linux/posix/Sandbox.h"

namespace quorvi::atspi {
namespace {

// The program that stands between a sandbox and each bus.
constexpr const char* busProxy = "xdg-dbus-proxy";

// Milliseconds until the deadline, rounded up; 0 when it has passed.
int millisecondsUntil(TimePoint deadline) {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now())
            .count();
    return static_cast<int>(std::clamp<long long>(left, 0, 60'000));
}

// Replies that are being waited for, in a main context of their own.
class Batch {
public:
    explicit Batch(std::size_t count) : replies(count) {
        g_main_context_push_thread_default(context_.get());
    }
    ~Batch() { g_main_context_pop_thread_default(context_.get()); }
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

    void send(GDBusConnection* connection, std::size_t index, const Call& call, int timeoutMs) {
        ++pending_;
        g_dbus_connection_call(connection, call.object.bus.c_str(), call.object.path.c_str(),
                               call.interface, call.method, call.arguments.get(), nullptr,
                               G_DBUS_CALL_FLAGS_NO_AUTO_START, timeoutMs, nullptr, &Batch::finish,
                               new Slot{*this, index});
    }

    // Every call ends by its own time-out at the latest.
    void wait() {
        while (pending_ > 0) g_main_context_iteration(context_.get(), TRUE);
    }

    std::vector<Variant> replies;

private:
    struct Slot {
        Batch& batch;
        std::size_t index;
    };

    static void finish(GObject* source, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Slot> slot(static_cast<Slot*>(data));
        auto& batch = slot->batch;
        batch.replies[slot->index].reset(
            g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr));
        --batch.pending_;
    }

    const GLibHandle<GMainContext> context_{g_main_context_new()};
    std::size_t pending_ = 0;
};

Call busCall(const char* method, Variant arguments) {
    return {{"org.freedesktop.DBus", "/org/freedesktop/DBus"},
            "org.freedesktop.DBus",
            method,
            std::move(arguments)};
}

}  // namespace

Call propertyCall(const ObjectRef& object, const char* interface, const char* name) {
    return {object, propertiesInterface, "Get", arguments(interface, name)};
}

std::vector<Variant> AtspiPeers::callAll(std::vector<Call> calls, TimePoint deadline) {
    const auto connection = bus_.connection();
    const int timeoutMs = millisecondsUntil(deadline);
    if (!connection || timeoutMs == 0 || calls.empty()) {
        std::vector<Variant> none(calls.size());
        return none;
    }
    Batch batch(calls.size());
    for (std::size_t i = 0; i < calls.size(); ++i)
        batch.send(connection.get(), i, calls[i], timeoutMs);
    batch.wait();
    return std::move(batch.replies);
}

Variant AtspiPeers::call(Call call, TimePoint deadline) {
    std::vector<Call> one;
    one.push_back(std::move(call));
    return std::move(callAll(std::move(one), deadline).front());
}

std::optional<pid_t> AtspiPeers::process(const std::string& bus, TimePoint deadline) {
    {
        std::lock_guard lock(mutex_);
        const auto found = peers_.find(bus);
        if (found != peers_.end() && found->second.pid) return found->second.pid;
    }
    const auto pid =
        readUnsigned(call(busCall("GetConnectionUnixProcessID", arguments(bus)), deadline));
    if (!pid) return std::nullopt;
    std::lock_guard lock(mutex_);
    return peers_[bus].pid = static_cast<pid_t>(*pid);
}

std::vector<std::string> AtspiPeers::allNames(TimePoint deadline) {
    const auto applications = readObjects(call(
        {{registryName, rootPath}, accessibleInterface, "GetChildren", arguments()}, deadline));
    std::vector<std::string> names;
    if (applications)
        for (const auto& application : *applications) names.push_back(application.bus);
    return names;
}

std::vector<std::string> AtspiPeers::namesOf(pid_t pid, TimePoint deadline) {
    const auto known = [&] {
        std::lock_guard lock(mutex_);
        std::vector<std::string> names;
        for (const auto& [name, peer] : peers_)
            if (peer.pid == pid) names.push_back(name);
        return names;
    };
    if (auto names = known(); !names.empty()) return names;
    for (const auto& name : allNames(deadline)) process(name, deadline);
    return known();
}

std::vector<std::string> AtspiPeers::proxiedNamesOf(pid_t pid, TimePoint deadline) {
    const auto sandbox = sandboxOf(pid);
    if (!sandbox) return {};
    std::vector<std::string> names;
    for (auto& name : allNames(deadline)) {
        const auto connected = process(name, deadline);
        if (!connected || processName(*connected) != busProxy) continue;
        const auto its = sandboxOf(*connected).value_or("");
        if (sandbox->empty() || its.empty() || its == *sandbox) names.push_back(std::move(name));
    }
    return names;
}

std::string AtspiPeers::toolkit(const std::string& bus, TimePoint deadline) {
    {
        std::lock_guard lock(mutex_);
        const auto found = peers_.find(bus);
        if (found != peers_.end() && found->second.toolkit) return *found->second.toolkit;
    }
    const auto toolkit = readText(
        call(propertyCall({bus, rootPath}, applicationInterface, "ToolkitName"), deadline));
    if (!toolkit) return {};
    std::lock_guard lock(mutex_);
    peers_[bus].toolkit = *toolkit;
    return *toolkit;
}

void AtspiPeers::forget(const std::string& bus) {
    std::lock_guard lock(mutex_);
    peers_.erase(bus);
}

void AtspiPeers::forgetAll() {
    std::lock_guard lock(mutex_);
    peers_.clear();
}

}  // namespace quorvi::atspi
