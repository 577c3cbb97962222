#include "Quorvi/dictation/Permissions.h"

#include <utility>

namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr Duration pollInterval = 2s;

}  // namespace

void Permissions::start() {
    refresh();
    poll_ = environment_.scheduler.every(pollInterval, [this] { refresh(); });
    wake_ = environment_.workspace.onDidWake([this] {
        environment_.hotkey.stop();
        refresh();
    });
}

void Permissions::stop() {
    isStopped_ = true;
    poll_.cancel();
    wake_ = {};
}

void Permissions::refresh() {
    if (isStopped_) return;
    auto& e = environment_;
    if (!isActive(e.status.stage())) e.key.refresh();
    set(microphone_, e.system.microphone() == MicrophoneAuthorization::authorized);
    set(accessibility_, e.accessibility.isTrusted());
    if (!accessibility_) e.hotkey.stop();
    set(keyboard_, accessibility_ && e.hotkey.start());
    if (onRefresh) onRefresh();
}

void Permissions::requestMicrophone() {
    auto& system = environment_.system;
    if (system.microphone() == MicrophoneAuthorization::notDetermined)
        system.requestMicrophone([this] { refresh(); });
    else
        system.openPrivacyPane(PrivacyPane::microphone);
}

void Permissions::requestAccessibility() {
    environment_.accessibility.requestTrust();
    environment_.system.openPrivacyPane(PrivacyPane::accessibility);
}

void Permissions::set(bool& state, bool now) {
    if (std::exchange(state, now) != now && onChange) onChange();
}

}  // namespace quorvi
