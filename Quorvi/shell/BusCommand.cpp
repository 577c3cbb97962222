#include "Quorvi/shell/BusCommand.h"

#include <gio/gio.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

#include "Quorvi/platform/linux/gio/GLibHandles.h"
#include "Quorvi/shell/BusNames.h"

namespace quorvi {

namespace {

constexpr std::array<std::pair<std::string_view, const char*>, 8> commands{{
    {"start", "Start"},
    {"finish", "Finish"},
    {"toggle", "Toggle"},
    {"cancel", "Cancel"},
    {"retry", "Retry"},
    {"status", "Status"},
    {"show", "Show"},
    {"quit", "Quit"},
}};

constexpr int patience = 10'000;  // milliseconds

const char* methodOf(std::string_view command) {
    const auto* found = std::ranges::find(commands, command, [](const auto& c) { return c.first; });
    return found == commands.end() ? nullptr : found->second;
}

GLibHandle<GDBusConnection> sessionBus() {
    return GLibHandle<GDBusConnection>(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
}

void print(GVariant* status) {
    const char *stage = nullptr, *title = nullptr, *message = nullptr;
    gboolean ready = FALSE;
    g_variant_get(status, "(&s&s&sb)", &stage, &title, &message, &ready);
    std::printf("%s\n%s\n%s\n%s\n", stage, title, message, ready ? "ready" : "not ready");
}

}  // namespace

bool isBusCommand(std::string_view argument) {
    return methodOf(argument) != nullptr;
}

int runBusCommand(std::string_view command) {
    const auto connection = sessionBus();
    if (!connection) {
        std::fprintf(stderr,
                     "quorvi: There is no session bus. Use this inside a desktop session.\n");
        return 1;
    }
    const bool asks = command == "status";
    GError* failure = nullptr;
    const GLibHandle<GVariant> answer(g_dbus_connection_call_sync(
        connection.get(), bus::name, bus::path, bus::interface, methodOf(command), nullptr,
        asks ? G_VARIANT_TYPE("(sssb)") : nullptr,
        command == "show" ? G_DBUS_CALL_FLAGS_NONE : G_DBUS_CALL_FLAGS_NO_AUTO_START, patience,
        nullptr, &failure));
    if (!answer) {
        const GLibHandle<GError> error(failure);
        const bool absent =
            g_error_matches(failure, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) ||
            g_error_matches(failure, G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER) ||
            g_error_matches(failure, G_DBUS_ERROR,
                            G_DBUS_ERROR_UNKNOWN_OBJECT);  // it is quitting
        std::fprintf(stderr, "quorvi: %s\n", absent ? "Quorvi is not running." : failure->message);
        return 1;
    }
    if (asks) print(answer.get());
    return 0;
}

bool isRunning() {
    const auto connection = sessionBus();
    if (!connection) return false;
    const GLibHandle<GVariant> answer(g_dbus_connection_call_sync(
        connection.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "NameHasOwner", g_variant_new("(s)", bus::name), G_VARIANT_TYPE("(b)"),
        G_DBUS_CALL_FLAGS_NONE, patience, nullptr, nullptr));
    gboolean running = FALSE;
    if (answer) g_variant_get(answer.get(), "(b)", &running);
    return running;
}

}  // namespace quorvi
