#pragma once

// For adapter sources only: it brings GLib with it.
#include <cstdint>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/gio/BusConnection.h"

namespace quorvi {

// Calls to KDE's shortcut service on the session's bus. Each waits for its answer, at most a
// second; without the bus or the service it fails. One thread.
class KGlobalAccel {
public:
    static constexpr const char* service = "org.kde.kglobalaccel";
    static constexpr const char* component = "app.quorvi.Quorvi";

    struct Action {
        const char* name;
        const char* title;  // in the desktop's settings
    };
    static constexpr Action dictate{"dictate", "Dictate"};
    static constexpr Action cancel{"cancel", "Cancel the dictation"};

    KGlobalAccel() : bus_(connectToBus(G_BUS_TYPE_SESSION, nullptr)) {}

    GDBusConnection* bus() const { return bus_.get(); }

    // Whether the compositor itself is the service: another can't see the keys on Wayland.
    bool isCompositors() const;

    // Returns whether the action has the key from now on; not if the key is something else's.
    bool set(const Action& action, std::int32_t key) const;
    // The key is free again; the desktop's settings remember the action.
    void rest(const Action& action) const;
    // Nothing of the action is left.
    void remove(const Action& action) const;

    // What uses the key: "KWin: Show Desktop". Empty if nothing does, or Quorvi.
    std::string useOf(std::int32_t key) const;

private:
    GLibHandle<GVariant> call(const char* method, GVariant* arguments, const char* answer) const;
    std::string ownerOf(const char* name) const;

    GLibHandle<GDBusConnection> bus_;
};

}  // namespace quorvi
