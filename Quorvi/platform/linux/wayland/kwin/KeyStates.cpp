#include "Quorvi/platform/linux/wayland/kwin/KeyStates.h"

#include <wayland-client.h>

#include <utility>

#include "protocols/key-state.h"

namespace quorvi {
namespace {

constexpr std::uint32_t firstWithModifiers = 5;

}  // namespace

struct KeyStates::Listeners {
    static void changed(void* data, org_kde_kwin_keystate*, std::uint32_t key,
                        std::uint32_t state) {
        constexpr std::pair<std::uint32_t, KeyCode> keys[] = {
            {ORG_KDE_KWIN_KEYSTATE_KEY_ALT, keyCode::leftOption},
            {ORG_KDE_KWIN_KEYSTATE_KEY_CONTROL, keyCode::leftControl},
            {ORG_KDE_KWIN_KEYSTATE_KEY_SHIFT, keyCode::leftShift},
            {ORG_KDE_KWIN_KEYSTATE_KEY_META, keyCode::leftCommand},
            {ORG_KDE_KWIN_KEYSTATE_KEY_ALTGR, keyCode::rightOption}};
        for (const auto& [theirs, ours] : keys)
            if (theirs == key)
                static_cast<KeyStates*>(data)->told_(ours,
                                                     state == ORG_KDE_KWIN_KEYSTATE_STATE_PRESSED);
    }
    static constexpr org_kde_kwin_keystate_listener states{changed};
};

bool KeyStates::isOffered(const WaylandConnection& connection) {
    return connection.versionOf(org_kde_kwin_keystate_interface.name) >= firstWithModifiers;
}

KeyStates::KeyStates(WaylandConnection& connection, std::function<void(KeyCode, bool)> told)
    : told_(std::move(told)) {
    if (!isOffered(connection)) return;
    states_ =
        connection.bind<org_kde_kwin_keystate>(org_kde_kwin_keystate_interface, firstWithModifiers);
    org_kde_kwin_keystate_add_listener(states_, &Listeners::states, this);
    org_kde_kwin_keystate_fetchStates(states_);
}

KeyStates::~KeyStates() {
    if (states_) org_kde_kwin_keystate_destroy(states_);
}

}  // namespace quorvi
