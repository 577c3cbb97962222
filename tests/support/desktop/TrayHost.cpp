#include "tests/support/desktop/TrayHost.h"

#include <chrono>
#include <stdexcept>

namespace quorvi::test {

TrayHost::TrayHost() {
    context_ = g_main_context_new();
    loop_ = g_main_loop_new(context_, FALSE);
    std::promise<void> ready;
    auto isReady = ready.get_future();
    thread_ = std::thread([this, &ready] { run(ready); });
    isReady.get();
}

TrayHost::~TrayHost() {
    g_main_context_invoke(
        context_,
        [](gpointer loop) -> gboolean {
            g_main_loop_quit(static_cast<GMainLoop*>(loop));
            return G_SOURCE_REMOVE;
        },
        loop_);
    thread_.join();
    g_object_unref(connection_);
    g_main_loop_unref(loop_);
    g_main_context_unref(context_);
}

bool TrayHost::waitForItem() {
    std::unique_lock lock(mutex_);
    return announced_.wait_for(lock, std::chrono::minutes(1), [this] { return !item_.empty(); });
}

std::string TrayHost::property(const std::string& name, const KeepRunning& keepRunning) {
    auto* answer = call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
                        g_variant_new("(ss)", itemInterface, name.c_str()), keepRunning);
    GVariant* value = nullptr;
    g_variant_get(answer, "(v)", &value);
    std::string text = g_variant_is_of_type(value, G_VARIANT_TYPE_STRING) ||
                               g_variant_is_of_type(value, G_VARIANT_TYPE_OBJECT_PATH)
                           ? g_variant_get_string(value, nullptr)
                           : std::string();
    g_variant_unref(value);
    g_variant_unref(answer);
    return text;
}

std::vector<TrayHost::Row> TrayHost::menu(const KeepRunning& keepRunning) {
    const auto path = property("Menu", keepRunning);
    auto* answer =
        call(path, menuInterface, "GetLayout",
             g_variant_new("(ii@as)", 0, -1, g_variant_new_strv(nullptr, 0)), keepRunning);
    auto* layout = g_variant_get_child_value(answer, 1);
    auto* children = g_variant_get_child_value(layout, 2);
    std::vector<Row> rows;
    for (gsize i = 0; i < g_variant_n_children(children); ++i) {
        auto* boxed = g_variant_get_child_value(children, i);
        auto* child = g_variant_get_variant(boxed);
        rows.push_back(row(child));
        g_variant_unref(child);
        g_variant_unref(boxed);
    }
    g_variant_unref(children);
    g_variant_unref(layout);
    g_variant_unref(answer);
    return rows;
}

void TrayHost::click(const Row& row, const KeepRunning& keepRunning) {
    const auto path = property("Menu", keepRunning);
    g_variant_unref(call(path, menuInterface, "Event",
                         g_variant_new("(isvu)", row.id, "clicked", g_variant_new_int32(0), 0),
                         keepRunning));
}

std::string TrayHost::shown(const std::string& label) {
    std::string text;
    bool marked = false;
    for (const char c : label) {
        marked = c == '_' && !marked;
        if (!marked) text += c;
    }
    return text;
}

TrayHost::Row TrayHost::row(GVariant* child) {
    Row result;
    GVariant* properties = nullptr;
    GVariant* children = nullptr;
    g_variant_get(child, "(i@a{sv}@av)", &result.id, &properties, &children);
    const char* text = nullptr;
    if (g_variant_lookup(properties, "label", "&s", &text)) result.label = shown(text);
    if (g_variant_lookup(properties, "type", "&s", &text) && std::string("separator") == text)
        result.label = "-";
    gboolean enabled = TRUE;
    if (g_variant_lookup(properties, "enabled", "b", &enabled)) result.enabled = enabled;
    g_variant_unref(properties);
    g_variant_unref(children);
    return result;
}

GVariant* TrayHost::call(const std::string& path, const char* interface, const char* method,
                         GVariant* arguments, const KeepRunning& keepRunning) {
    auto calling = std::async(std::launch::async, [&] {
        GError* error = nullptr;
        auto* answer = g_dbus_connection_call_sync(
            connection_, item().c_str(), path.c_str(), interface, method, arguments, nullptr,
            G_DBUS_CALL_FLAGS_NO_AUTO_START, 20'000, nullptr, &error);
        if (answer) return answer;
        const std::string problem = error->message;
        g_error_free(error);
        throw std::runtime_error(problem);
    });
    while (calling.wait_for(std::chrono::seconds(0)) != std::future_status::ready) keepRunning();
    return calling.get();
}

void TrayHost::run(std::promise<void>& ready) {
    g_main_context_push_thread_default(context_);
    auto* address = g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    connection_ = g_dbus_connection_new_for_address_sync(
        address,
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr);
    g_free(address);
    auto* node = g_dbus_node_info_new_for_xml(watcherXml, nullptr);
    static constexpr GDBusInterfaceVTable table{onCall, onGet, nullptr, {}};
    const auto object = g_dbus_connection_register_object(
        connection_, "/StatusNotifierWatcher", node->interfaces[0], &table, this, nullptr, nullptr);
    const auto name = g_bus_own_name_on_connection(
        connection_, watcherName, G_BUS_NAME_OWNER_FLAGS_NONE,
        [](GDBusConnection*, const char*, gpointer promise) {
            static_cast<std::promise<void>*>(promise)->set_value();
        },
        nullptr, &ready, nullptr);
    g_main_loop_run(loop_);
    g_bus_unown_name(name);
    g_dbus_connection_unregister_object(connection_, object);
    g_dbus_node_info_unref(node);
    g_dbus_connection_close_sync(connection_, nullptr, nullptr);
    while (g_main_context_iteration(context_, FALSE)) continue;
    g_main_context_pop_thread_default(context_);
}

void TrayHost::onCall(GDBusConnection*, const char* sender, const char*, const char*,
                      const char* method, GVariant*, GDBusMethodInvocation* invocation,
                      gpointer self) {
    if (std::string("RegisterStatusNotifierItem") == method) {
        auto& host = *static_cast<TrayHost*>(self);
        std::lock_guard lock(host.mutex_);
        host.item_ = sender;
        host.announced_.notify_all();
    }
    g_dbus_method_invocation_return_value(invocation, nullptr);
}

GVariant* TrayHost::onGet(GDBusConnection*, const char*, const char*, const char*,
                          const char* property, GError**, gpointer) {
    const std::string name = property;
    if (name == "IsStatusNotifierHostRegistered") return g_variant_new_boolean(TRUE);
    if (name == "ProtocolVersion") return g_variant_new_int32(0);
    return g_variant_new_strv(nullptr, 0);
}

}  // namespace quorvi::test
