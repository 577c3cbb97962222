#include "tests/support/desktop/FakeService.h"

#include <gio/gio.h>

#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace quorvi::test {

namespace {

GVariant* parsed(const std::string& text) {
    auto* value = g_variant_parse(nullptr, text.c_str(), nullptr, nullptr, nullptr);
    if (value == nullptr) throw std::invalid_argument(text);
    return value;
}

}  // namespace

FakeSystemBus::FakeSystemBus() {
    const auto config = folder_.write(
        "bus.conf",
        "<busconfig><type>system</type><listen>unix:path=" + (folder_.path() / "socket").string() +
            "</listen><policy context=\"default\"><allow send_destination=\"*\"/>"
            "<allow receive_sender=\"*\"/><allow own=\"*\"/><allow user=\"*\"/>"
            "</policy></busconfig>\n");
    daemon_ = Process(
        {"dbus-daemon", "--nofork", "--nopidfile", "--print-address", "--config-file=" + config});
    // It prints the address when it accepts connections.
    setenv(FakeService::systemBus, daemon_.readLine().c_str(), 1);
}

FakeSystemBus::~FakeSystemBus() {
    unsetenv(FakeService::systemBus);
}

FakeService::FakeService(const char* bus, const char* name,
                         std::map<std::string, std::string> answers)
    : answers_(std::move(answers)),
      bus_(g_dbus_connection_new_for_address_sync(
          std::getenv(bus),
          static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                            G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
          nullptr, nullptr, nullptr)) {
    if (bus_ == nullptr) throw std::runtime_error("no bus");
    g_dbus_connection_add_filter(bus_, answer, this, nullptr);
    g_variant_unref(g_dbus_connection_call_sync(
        bus_, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "RequestName", g_variant_new("(su)", name, 0U), nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
        nullptr, nullptr));
}

FakeService::~FakeService() {
    g_dbus_connection_close_sync(bus_, nullptr, nullptr);
    g_object_unref(bus_);
}

void FakeService::emit(const std::string& path, const std::string& interface,
                       const std::string& signal, const std::string& parameters) const {
    g_dbus_connection_emit_signal(bus_, nullptr, path.c_str(), interface.c_str(), signal.c_str(),
                                  parsed(parameters), nullptr);
    g_dbus_connection_flush_sync(bus_, nullptr, nullptr);
}

// On the bus library's own thread.
GDBusMessage* FakeService::answer(GDBusConnection* bus, GDBusMessage* message, int incoming,
                                  void* self) {
    if (!incoming || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL)
        return message;
    const auto& answers = static_cast<FakeService*>(self)->answers_;
    const auto* argument = g_dbus_message_get_arg0(message);
    const auto found = answers.find(argument != nullptr ? argument : "");
    auto* reply = found == answers.end() ? g_dbus_message_new_method_error_literal(
                                               message, "org.example.Unknown", "unknown")
                                         : g_dbus_message_new_method_reply(message);
    if (found != answers.end()) g_dbus_message_set_body(reply, parsed(found->second));
    g_dbus_connection_send_message(bus, reply, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
    g_object_unref(reply);
    g_object_unref(message);
    return nullptr;
}

}  // namespace quorvi::test
