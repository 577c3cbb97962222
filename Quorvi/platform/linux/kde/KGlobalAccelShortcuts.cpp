#include "Quorvi/platform/linux/kde/KGlobalAccelShortcuts.h"

#include <sys/socket.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <utility>

#include "Quorvi/platform/linux/gio/GLibThread.h"
#include "Quorvi/platform/linux/kde/KGlobalAccel.h"
#include "Quorvi/platform/linux/kde/KdeKeys.h"
#include "Quorvi/platform/linux/posix/HelperProcess.h"
#include "Quorvi/platform/linux/shortcuts/CommandAddress.h"
#include "Quorvi/platform/linux/shortcuts/KeyNames.h"
#include "Quorvi/platform/linux/wayland/input/SeatKeymap.h"

namespace quorvi {
namespace {

// An Escape that is pressed while the shortcut is held arrives after the shortcut's release.
constexpr auto escapeDelay = std::chrono::milliseconds(20);

constexpr SwallowedKey escapeKey{keyCode::escape, 0};

// The key under the layout of now.
std::int32_t currentKeyOf(const SwallowedKey& key) {
    if (isSameInAllLayouts(key.keyCode)) return kdeKeyOf(key);
    WaylandConnection compositor;
    return kdeKeyOf(key, KeymapText(seatKeymap(compositor)));
}

std::vector<SwallowedKey> withoutEscape(std::vector<SwallowedKey> keys) {
    std::erase(keys, escapeKey);
    return keys;
}

}  // namespace

// The thread.
class KGlobalAccelShortcuts::Session {
public:
    using Tell = std::function<void(const SwallowedKey&, Change)>;
    using Report = std::function<void(const State&)>;

    Session(std::vector<std::string> guard, Tell tell, Report report)
        : guardCommand_(std::move(guard)), tell_(std::move(tell)), report_(std::move(report)) {
        thread_.emplace("quorvi-kde", [this] { begin(); }, [this] { end(); });
    }

    void bind(std::vector<SwallowedKey> keys) {
        thread_->invoke([this, keys = std::move(keys)] {
            wanted_ = keys;
            if (state_.isServed) apply();
        });
    }

private:
    void begin() {
        service_.emplace();
        auto* bus = service_->bus();
        if (!bus) return;
        pressing_ = g_dbus_connection_signal_subscribe(
            bus, KGlobalAccel::service, "org.kde.kglobalaccel.Component", nullptr, nullptr,
            KGlobalAccel::component, G_DBUS_SIGNAL_FLAGS_NONE, keyChanged, this, nullptr);
        changing_ = g_dbus_connection_signal_subscribe(
            bus, KGlobalAccel::service, "org.kde.KGlobalAccel", "yourShortcutsChanged", nullptr,
            nullptr, G_DBUS_SIGNAL_FLAGS_NONE, keysTaken, this, nullptr);
        watching_ = g_bus_watch_name_on_connection(bus, KGlobalAccel::service,
                                                   G_BUS_NAME_WATCHER_FLAGS_NONE, appeared,
                                                   vanished, this, nullptr);
    }

    void end() {
        if (auto* bus = service_->bus()) {
            g_bus_unwatch_name(watching_);
            g_dbus_connection_signal_unsubscribe(bus, changing_);
            g_dbus_connection_signal_unsubscribe(bus, pressing_);
        }
        if (state_.isServed) {
            service_->remove(KGlobalAccel::dictate);
            service_->remove(KGlobalAccel::cancel);
        }
        // Nothing is left to give back.
        if (guard_) send(guard_->socket().get(), "", 1, MSG_NOSIGNAL | MSG_DONTWAIT);
        guard_.reset();
        service_.reset();
    }

    static Session& self(gpointer data) { return *static_cast<Session*>(data); }

    static void appeared(GDBusConnection*, const gchar*, const gchar*, gpointer data) {
        auto& session = self(data);
        session.state_.isServed = true;
        if (!session.guard_) session.guard_ = HelperProcess::start(session.guardCommand_);
        session.service_->remove(KGlobalAccel::cancel);  // a killed run may have left it
        session.apply();
    }
    static void vanished(GDBusConnection*, const gchar*, gpointer data) {
        auto& session = self(data);
        session.state_ = {};
        session.hasEscape_ = false;
        session.isDown_[0] = session.isDown_[1] = false;
        session.report_(session.state_);
    }

    static void keyChanged(GDBusConnection*, const gchar*, const gchar*, const gchar*,
                           const gchar* signal, GVariant* parameters, gpointer data) {
        if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ssx)"))) return;
        const char* component = nullptr;
        const char* action = nullptr;
        gint64 time = 0;
        g_variant_get(parameters, "(&s&sx)", &component, &action, &time);
        const bool isEscape = std::strcmp(action, KGlobalAccel::cancel.name) == 0;
        if (std::strcmp(signal, "globalShortcutPressed") == 0)
            self(data).pressed(isEscape);
        else if (std::strcmp(signal, "globalShortcutReleased") == 0)
            self(data).released(isEscape);
    }

    // The user has given the keys of an action another meaning in the desktop's settings.
    static void keysTaken(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*,
                          GVariant* parameters, gpointer data) {
        if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(asa(ai))"))) return;
        const GLibHandle<GVariant> id(g_variant_get_child_value(parameters, 0));
        if (g_variant_n_children(id.get()) < 2) return;
        const char* component = nullptr;
        const char* action = nullptr;
        g_variant_get_child(id.get(), 0, "&s", &component);
        g_variant_get_child(id.get(), 1, "&s", &action);
        if (std::strcmp(component, KGlobalAccel::component) == 0 &&
            std::strcmp(action, KGlobalAccel::dictate.name) == 0)
            self(data).lose();
    }

    void lose() {
        if (!state_.bound) return;
        const auto key = std::exchange(state_.bound, std::nullopt);
        tellRelease(false, *key);
        state_.takenBy = service_->useOf(currentKeyOf(*key));
        report_(state_);
    }

    void apply() {
        const auto shortcuts = withoutEscape(wanted_);
        if (shortcuts != bound()) bindShortcut(shortcuts);
        const bool wantsEscape = shortcuts.size() < wanted_.size();
        if (wantsEscape != hasEscape_) bindEscape(wantsEscape);
        report_(state_);
    }

    std::vector<SwallowedKey> bound() const {
        return state_.bound ? std::vector{*state_.bound} : std::vector<SwallowedKey>{};
    }

    void bindShortcut(const std::vector<SwallowedKey>& keys) {
        if (const auto former = std::exchange(state_.bound, std::nullopt)) {
            tellRelease(false, *former);
            service_->remove(KGlobalAccel::dictate);
        }
        state_.takenBy.clear();
        const auto key = keys.size() == 1 ? currentKeyOf(keys.front()) : 0;
        if (key == 0) return;
        if (service_->set(KGlobalAccel::dictate, key)) {
            state_.bound = keys.front();
            return;
        }
        state_.takenBy = service_->useOf(key);
        service_->remove(KGlobalAccel::dictate);
    }

    void bindEscape(bool wanted) {
        hasEscape_ = wanted && service_->set(KGlobalAccel::cancel, kdeKeyOf(escapeKey));
        if (hasEscape_) return;
        service_->rest(KGlobalAccel::cancel);
        tellRelease(true, escapeKey);
    }

    void pressed(bool isEscape) {
        if (!isEscape) finishRelease();
        if (!isEscape && !state_.bound) return;
        if (std::exchange(isDown_[isEscape], true)) return;  // the auto-repeat
        tell_(isEscape ? escapeKey : *state_.bound, Change::pressed);
    }

    void released(bool isEscape) {
        if (isEscape) return tellRelease(true, escapeKey);
        if (!state_.bound) return;
        releasing_ = state_.bound;
        if (!hasEscape_) return finishRelease();
        thread_->invoke(
            [this, release = ++releases_] {
                if (release == releases_) finishRelease();
            },
            escapeDelay);
    }

    void finishRelease() {
        if (const auto key = std::exchange(releasing_, std::nullopt)) tellRelease(false, *key);
    }

    void tellRelease(bool isEscape, const SwallowedKey& key) {
        if (std::exchange(isDown_[isEscape], false)) tell_(key, Change::released);
    }

    const std::vector<std::string> guardCommand_;
    const Tell tell_;
    const Report report_;
    std::optional<KGlobalAccel> service_;
    std::unique_ptr<HelperProcess> guard_;
    guint pressing_ = 0, changing_ = 0, watching_ = 0;
    std::vector<SwallowedKey> wanted_;
    State state_;
    bool hasEscape_ = false;
    bool isDown_[2] = {};                    // the shortcut, Escape
    std::optional<SwallowedKey> releasing_;  // its release is held back for a moment
    unsigned releases_ = 0;
    std::optional<GLibThread> thread_;
};

KGlobalAccelShortcuts::KGlobalAccelShortcuts(Scheduler& scheduler, std::string helper,
                                             std::string program)
    : scheduler_(scheduler),
      guard_{std::move(helper), guardWord, std::move(program), "shortcut", "release"} {}

KGlobalAccelShortcuts::~KGlobalAccelShortcuts() = default;

void KGlobalAccelShortcuts::start(std::function<void(const SwallowedKey&, Change)> changed,
                                  std::function<void()> boundChanged) {
    changed_ = std::move(changed);
    boundChanged_ = std::move(boundChanged);
    const auto tell =
        lifetime_.guard([this](const auto& key, auto change) { changed_(key, change); });
    const auto report = lifetime_.guard([this](const State& state) {
        if (std::exchange(state_, state) != state) boundChanged_();
    });
    session_ = std::make_unique<Session>(
        guard_,
        [tell, &scheduler = scheduler_](const SwallowedKey& key, Change change) {
            scheduler.post([tell, key, change] { tell(key, change); });
        },
        [report, &scheduler = scheduler_](const State& state) {
            scheduler.post([report, state] { report(state); });
        });
}

void KGlobalAccelShortcuts::bind(std::vector<SwallowedKey> keys) {
    wanted_ = withoutEscape(keys);
    if (session_) session_->bind(std::move(keys));
}

bool KGlobalAccelShortcuts::isBound() const {
    return state_.isServed &&
           (wanted_.empty() || (state_.bound && wanted_ == std::vector{*state_.bound}));
}

bool hasKdeShortcuts() {
    return KGlobalAccel().isCompositors();
}

std::string kdeUseOf(const SwallowedKey& key) {
    const auto code = currentKeyOf(key);
    return code == 0 ? "" : KGlobalAccel().useOf(code);
}

void removeKdeShortcuts() {
    const KGlobalAccel service;
    if (!service.isCompositors()) return;
    service.remove(KGlobalAccel::dictate);
    service.remove(KGlobalAccel::cancel);
}

}  // namespace quorvi
