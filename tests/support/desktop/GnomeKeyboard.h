#pragma once

#include <cstdint>
#include <string>

#include "Quorvi/platform/linux/gio/GLibHandles.h"

typedef struct _GDBusConnection GDBusConnection;

namespace quorvi::test {

// A keyboard of GNOME Shell, through the interface that its remote desktop uses. Keys have reached
// the shell when a call returns.
class GnomeKeyboard {
public:
    GnomeKeyboard();
    ~GnomeKeyboard();

    // An X keycode, as in TestUser.
    void send(std::uint8_t keycode, bool isDown);

private:
    GLibHandle<GVariant> call(const char* path, const char* interface, const char* method,
                              GVariant* arguments);

    GLibHandle<GDBusConnection> bus_;
    std::string session_;
};

}  // namespace quorvi::test
