#include "Quorvi/platform/linux/pulse/PulseConnection.h"

#include <pulse/context.h>
#include <pulse/error.h>
#include <pulse/introspect.h>
#include <pulse/subscribe.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "Quorvi/platform/linux/pulse/PulseServerWatch.h"
#include "Quorvi/platform/linux/pulse/PulseThread.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr Duration firstPause = 25ms;
constexpr Duration longestPause = 30s;

struct Source {
    std::string name;
    std::string description;
    bool monitor = false;
    bool pluggedIn = true;
};

void release(pa_operation* operation) {
    if (operation) pa_operation_unref(operation);
}

}  // namespace

// Main thread and sound thread share no state; they communicate by posted functions.
struct PulseConnection::Impl {
    Impl(Scheduler& s, std::string address)
        : scheduler(s), server(std::move(address)), socket(PulseServerWatch::socketPath(server)) {}

    Scheduler& scheduler;
    const std::string server;
    const std::filesystem::path socket;

    // Main thread.
    struct Shown {
        bool isKnown = false;
        std::vector<Microphone> microphones;
        Observable changed;
    };
    std::shared_ptr<Shown> shown = std::make_shared<Shown>();

    // Sound thread.
    std::unique_ptr<PulseServerWatch> watch;
    pa_context* context = nullptr;
    bool ready = false;
    std::vector<std::function<void(bool)>> waiting;
    Duration pause = firstPause;
    Timer retry;
    std::string defaultSource;
    std::vector<Source> sources, incoming;
    bool querying = false;
    bool outdated = false;  // something changed while querying

    PulseThread thread;

    void begin() {
        watch = std::make_unique<PulseServerWatch>(thread.api(), socket, [this] {
            if (context) return;
            pause = firstPause;
            connect();
        });
        connect();
    }

    void end() {
        retry.cancel();
        watch.reset();
        dropContext();
        answer(false);
    }

    void connect() {
        if (context) return;
        retry.cancel();
        context = pa_context_new(thread.api(), "Quorvi");
        pa_context_set_state_callback(context, &Impl::stateChanged, this);
        pa_context_set_subscribe_callback(context, &Impl::somethingChanged, this);
        const char* address = server.empty() ? nullptr : server.c_str();
        if (pa_context_connect(context, address, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) lost();
    }

    void dropContext() {
        ready = querying = outdated = false;
        sources.clear();
        auto* former = std::exchange(context, nullptr);
        if (!former) return;
        pa_context_set_state_callback(former, nullptr, nullptr);
        pa_context_set_subscribe_callback(former, nullptr, nullptr);
        pa_context_disconnect(former);
        pa_context_unref(former);
    }

    void lost() {
        if (!context) return;
        dropContext();
        show({});
        retry = thread.after(pause, [this] { connect(); });
        pause = std::min(2 * pause, longestPause);
        answer(false);
    }

    static void stateChanged(pa_context* context, void* data) {
        auto* self = static_cast<Impl*>(data);
        const auto state = pa_context_get_state(context);
        if (state == PA_CONTEXT_READY) {
            self->pause = firstPause;
            constexpr auto mask = static_cast<pa_subscription_mask_t>(PA_SUBSCRIPTION_MASK_SOURCE |
                                                                      PA_SUBSCRIPTION_MASK_SERVER);
            release(pa_context_subscribe(context, mask, nullptr, nullptr));
            self->query();
        } else if (!PA_CONTEXT_IS_GOOD(state)) {
            // libpulse goes on to fail the context's streams, so the context may only go later.
            self->ready = false;
            self->thread.run([self, context] {
                if (self->context == context) self->lost();
            });
        }
    }

    static void somethingChanged(pa_context*, pa_subscription_event_type_t, std::uint32_t,
                                 void* data) {
        static_cast<Impl*>(data)->query();
    }

    void query() {
        if (querying) {
            outdated = true;
            return;
        }
        querying = true;
        incoming.clear();
        release(pa_context_get_server_info(context, &Impl::serverKnown, this));
        release(pa_context_get_source_info_list(context, &Impl::sourceKnown, this));
    }

    static void serverKnown(pa_context*, const pa_server_info* info, void* data) {
        auto* self = static_cast<Impl*>(data);
        self->defaultSource = info && info->default_source_name ? info->default_source_name : "";
    }

    static void sourceKnown(pa_context*, const pa_source_info* info, int end, void* data) {
        auto* self = static_cast<Impl*>(data);
        if (end) return self->queried();
        Source source{info->name, info->description ? info->description : info->name,
                      info->monitor_of_sink != PA_INVALID_INDEX};
        if (info->active_port)
            source.pluggedIn = info->active_port->available != PA_PORT_AVAILABLE_NO;
        self->incoming.push_back(std::move(source));
    }

    void queried() {
        querying = false;
        if (std::exchange(outdated, false)) return query();
        sources = std::move(incoming);
        ready = true;
        show(microphones());
        answer(true);
    }

    void answer(bool connected) {
        for (const auto& told : std::exchange(waiting, {})) told(connected);
    }

    void whenReady(std::function<void(bool)> told) {
        if (ready) return told(true);
        waiting.push_back(std::move(told));
        connect();
    }

    // The default one is kept even if nothing is plugged in: its driver may not know.
    std::vector<Microphone> microphones() const {
        std::vector<Microphone> usable, real;
        for (const auto& source : sources) {
            if (source.monitor) continue;
            const bool isDefault = source.name == defaultSource;
            real.push_back({source.name, source.description});
            if (isDefault)
                usable.insert(usable.begin(), real.back());
            else if (source.pluggedIn)
                usable.push_back(real.back());
        }
        return usable.empty() ? real : usable;
    }

    void show(std::vector<Microphone> microphones) {
        scheduler.post([shared = std::weak_ptr(shown), all = std::move(microphones)] {
            const auto target = shared.lock();
            if (!target || (std::exchange(target->isKnown, true) && target->microphones == all))
                return;
            target->microphones = all;
            target->changed.notify();
        });
    }
};

PulseConnection::PulseConnection(Scheduler& scheduler, std::string server)
    : impl_(std::make_unique<Impl>(scheduler, std::move(server))) {
    run([impl = impl_.get()] { impl->begin(); });
}

PulseConnection::~PulseConnection() {
    run([impl = impl_.get()] { impl->end(); });
    // The jobs of the end still use the connection.
    impl_->thread.end();
}

std::optional<bool> PulseConnection::hasMicrophone() const {
    const auto& shown = *impl_->shown;
    return shown.isKnown ? std::optional(!shown.microphones.empty()) : std::nullopt;
}

const std::vector<Microphone>& PulseConnection::microphones() const {
    return impl_->shown->microphones;
}

Observable& PulseConnection::changed() {
    return impl_->shown->changed;
}

void PulseConnection::refresh(std::function<void()> answered) {
    run([impl = impl_.get(), answered = std::move(answered)]() mutable {
        // Only useful while connected; a new connection asks by itself.
        if (impl->ready) {
            impl->ready = false;
            impl->query();
        }
        impl->whenReady([impl, told = std::move(answered)](bool) { impl->scheduler.post(told); });
    });
}

void PulseConnection::run(std::function<void()> job) {
    impl_->thread.run(std::move(job));
}

Timer PulseConnection::after(Duration delay, std::function<void()> work) {
    return impl_->thread.after(delay, std::move(work));
}

pa_context* PulseConnection::context() const {
    return impl_->ready ? impl_->context : nullptr;
}

void PulseConnection::whenReady(std::function<void(bool)> answer) {
    impl_->whenReady(std::move(answer));
}

std::optional<std::string> PulseConnection::microphone(const std::string& preferred) const {
    const auto all = impl_->microphones();
    if (all.empty()) return std::nullopt;
    const auto found = std::ranges::find(all, preferred, &Microphone::name);
    return found == all.end() ? all.front().name : found->name;
}

bool PulseConnection::isMonitor(const std::string& source) const {
    const auto found = std::ranges::find(impl_->sources, source, &Source::name);
    return found != impl_->sources.end() && found->monitor;
}

}  // namespace quorvi
