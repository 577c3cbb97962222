#include "Quorvi/platform/linux/portal/PortalShortcuts.h"

#include <gio/gio.h>

#include <algorithm>
#include <string>
#include <utility>

#include "Quorvi/platform/linux/gio/GLibThread.h"
#include "Quorvi/platform/linux/gnome/GnomeKeyRepeat.h"
#include "Quorvi/platform/linux/gnome/GrantedShortcuts.h"
#include "Quorvi/platform/linux/portal/PortalConnection.h"
#include "Quorvi/platform/linux/shortcuts/KeyNames.h"
#include "Quorvi/platform/linux/xkb/KeyMap.h"

namespace quorvi {
namespace {

constexpr Duration forEver = std::chrono::hours(1);
constexpr auto shortcuts = "org.freedesktop.portal.GlobalShortcuts";

// As the desktops' specification of shortcuts writes it; empty if the key has no name there.
std::string triggerOf(const SwallowedKey& key) {
    const auto symbol = symbolName(key.keyCode);
    if (symbol.empty()) return {};
    std::string trigger;
    for (const auto& [flag, name] :
         {std::pair(modifierFlag::control, "CTRL+"), std::pair(modifierFlag::option, "ALT+"),
          std::pair(modifierFlag::shift, "SHIFT+"), std::pair(modifierFlag::command, "LOGO+")})
        if (key.modifiers & flag) trigger += name;
    return trigger + symbol;
}

// A name of its own for each key: a desktop that knows the name gives the key that it has for it,
// and asks nothing.
std::string nameOf(const SwallowedKey& key) {
    return "dictate-" + std::to_string(key.keyCode) + '-' + std::to_string(key.modifiers >> 17);
}

GVariant* described(const std::string& name, const std::string& trigger) {
    GVariantBuilder values;
    g_variant_builder_init(&values, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&values, "{sv}", "description", g_variant_new_string("Dictate"));
    if (!trigger.empty())
        g_variant_builder_add(&values, "{sv}", "preferred_trigger",
                              g_variant_new_string(trigger.c_str()));
    GVariant* shortcut = g_variant_new("(sa{sv})", name.c_str(), &values);
    return g_variant_new_array(G_VARIANT_TYPE("(sa{sv})"), &shortcut, 1);
}

// The response's number says nothing: GNOME's portal sends 2 with the shortcuts that it has bound.
bool isAmong(GVariant* results, const std::string& name) {
    const GLibHandle<GVariant> bound(
        g_variant_lookup_value(results, "shortcuts", G_VARIANT_TYPE("a(sa{sv})")));
    const auto count = bound ? g_variant_n_children(bound.get()) : 0;
    for (gsize i = 0; i < count; ++i) {
        const GLibHandle<GVariant> shortcut(g_variant_get_child_value(bound.get(), i));
        const char* each = nullptr;
        g_variant_get_child(shortcut.get(), 0, "&s", &each);
        if (name == each) return true;
    }
    return false;
}

}  // namespace

// The portal's session, on a thread of its own. It can be bound once, so another key needs another
// session.
class PortalShortcuts::Session {
public:
    struct Sinks {
        std::function<void(bool)> heard;
        std::function<void(State)> answered;
        std::function<void(KeyRepeats::Timing)> timed;
    };
    Session(bool isGnome, Sinks sinks) : isGnome_(isGnome), sinks_(std::move(sinks)) {}

    void use(const std::optional<SwallowedKey>& key) {
        thread_.invoke([this, key] {
            key_ = key;
            leave();
            if (!portal_ || isLost_)
                connect();
            else
                open();
        });
    }

private:
    void connect() {
        isLost_ = isReady_ = false;
        portal_.emplace(
            [this](PortalConnection&) {
                isReady_ = true;
                listen();
                open();
            },
            [this] {
                isLost_ = true;
                session_.clear();
                if (key_) sinks_.answered(State::lost);
            });
    }

    void listen() {
        for (const bool isDown : {true, false})
            portal_->onSignal(
                shortcuts, isDown ? "Activated" : "Deactivated", [this, isDown](GVariant* told) {
                    const char *session = nullptr, *name = nullptr;
                    if (!g_variant_is_of_type(told, G_VARIANT_TYPE("(osta{sv})"))) return;
                    g_variant_get(told, "(&o&st@a{sv})", &session, &name, nullptr, nullptr);
                    if (key_ && session_ == session && nameOf(*key_) == name) sinks_.heard(isDown);
                });
    }

    void open() {
        if (!isReady_ || !key_) return;
        portal_->request(
            shortcuts, "CreateSession", {},
            {{"session_handle_token", g_variant_new_string(portal_->newToken().c_str())}},
            [this, attempt = attempt_](std::uint32_t response, GVariant* results) {
                const char* session = nullptr;
                if (response == 0) g_variant_lookup(results, "session_handle", "&s", &session);
                if (attempt != attempt_) return close(session ? session : "");
                if (!session) return sinks_.answered(State::lost);
                session_ = session;
                portal_->onSignal(
                    "org.freedesktop.portal.Session", "Closed",
                    [this, attempt](GVariant*) {
                        if (attempt != attempt_) return;
                        session_.clear();
                        sinks_.answered(State::lost);
                    },
                    session_);
                bind();
            });
    }

    void bind() {
        const auto name = nameOf(*key_);
        portal_->request(shortcuts, "BindShortcuts",
                         {g_variant_new_object_path(session_.c_str()),
                          described(name, triggerOf(*key_)), g_variant_new_string("")},
                         {}, [this, name, attempt = attempt_](std::uint32_t, GVariant* results) {
                             if (attempt != attempt_) return;
                             if (!results) return sinks_.answered(State::lost);
                             const bool isBound = isAmong(results, name);
                             if (isBound) forgetGrantedShortcuts(name);
                             sinks_.answered(isBound ? State::bound : State::refused);
                         });
    }

    void leave() {
        ++attempt_;
        if (isReady_ && !isLost_) close(std::exchange(session_, {}));
    }

    void close(const std::string& session) {
        if (!session.empty())
            portal_->call(
                "org.freedesktop.portal.Session", "Close", nullptr, [](GVariant*) {}, session);
    }

    // GNOME tells no release if a modifier goes up before its key, but its repeats then stop.
    void begin() {
        auto timing = KeyRepeats::Timing::unknown();
        const auto repeat = isGnome_ ? gnomeKeyRepeat(gnomeKeyboardSettings().get())
                                     : GnomeKeyRepeat{.isOn = false};
        if (repeat.isOn)
            timing = repeat.timing;
        else
            timing.latest = forEver;
        timing.hasRelease = true;
        sinks_.timed(timing);
    }

    const bool isGnome_;
    const Sinks sinks_;
    std::optional<PortalConnection> portal_;
    std::optional<SwallowedKey> key_;
    std::string session_;
    int attempt_ = 0;
    bool isReady_ = false, isLost_ = false;
    GLibThread thread_{"portal", [this] { begin(); }, [this] { portal_.reset(); }};
};

PortalShortcuts::PortalShortcuts(Scheduler& scheduler, bool isGnome)
    : scheduler_(scheduler),
      isGnome_(isGnome),
      presses_(scheduler, KeyRepeats::Timing::unknown(), [this](KeyRepeats::Change change) {
          const bool isDown = change == KeyRepeats::Change::pressed;
          if (key_) changed_(*key_, isDown ? Change::pressed : Change::released);
      }) {}

PortalShortcuts::~PortalShortcuts() = default;

void PortalShortcuts::start(std::function<void(const SwallowedKey&, Change)> changed,
                            std::function<void()> boundChanged) {
    changed_ = std::move(changed);
    boundChanged_ = std::move(boundChanged);
    const auto onMain = [this](auto work) {
        return [&scheduler = scheduler_, call = lifetime_.guard(std::move(work))](auto value) {
            scheduler.post([call, value] { call(value); });
        };
    };
    session_ = std::make_unique<Session>(
        isGnome_,
        Session::Sinks{
            onMain([this](bool isDown) { isDown ? presses_.note() : presses_.release(); }),
            onMain([this](State state) { enter(state); }),
            onMain([this](KeyRepeats::Timing timing) { presses_.setTiming(timing); })});
}

void PortalShortcuts::bind(std::vector<SwallowedKey> keys) {
    const auto found = std::ranges::find_if(
        keys, [](const SwallowedKey& key) { return key.keyCode != keyCode::escape; });
    const auto key = found == keys.end() ? std::nullopt : std::optional(*found);
    if (key == key_ && (state_ != State::lost || !key)) return;
    presses_.release();
    // GNOME would grant a modifier alone, and then tell no release of it.
    const bool isPossible = key && !changesFlags(key->keyCode);
    const bool wasBound = isBound();
    key_ = key;
    state_ = isPossible || !key ? State::asking : State::refused;
    session_->use(isPossible ? key : std::nullopt);
    if (isBound() != wasBound) boundChanged_();
}

void PortalShortcuts::enter(State state) {
    const bool wasBound = isBound();
    state_ = state;
    if (state == State::lost) presses_.release();
    if (isBound() != wasBound) boundChanged_();
}

}  // namespace quorvi
