#include "Quorvi/platform/linux/kde/KGlobalAccel.h"

#include <cstring>

namespace quorvi {
namespace {

constexpr int patience = 1000;  // milliseconds

// The keys are set as they are, whatever the desktop's settings remember of the action.
constexpr std::uint32_t isPresent = 2, isNotLoaded = 4;

GVariant* idOf(const KGlobalAccel::Action& action) {
    const char* const id[] = {KGlobalAccel::component, action.name, "Quorvi", action.title};
    return g_variant_new_strv(id, std::size(id));
}

GVariant* tupleOf(GVariant* only) {
    return g_variant_new_tuple(&only, 1);
}

}  // namespace

GLibHandle<GVariant> KGlobalAccel::call(const char* method, GVariant* arguments,
                                        const char* answer) const {
    const GLibHandle<GVariant> owned(g_variant_ref_sink(arguments));
    if (!bus_) return nullptr;
    return GLibHandle<GVariant>(g_dbus_connection_call_sync(
        bus_.get(), service, "/kglobalaccel", "org.kde.KGlobalAccel", method, owned.get(),
        G_VARIANT_TYPE(answer), G_DBUS_CALL_FLAGS_NO_AUTO_START, patience, nullptr, nullptr));
}

std::string KGlobalAccel::ownerOf(const char* name) const {
    if (!bus_) return {};
    const GLibHandle<GVariant> answer(g_dbus_connection_call_sync(
        bus_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "GetNameOwner", g_variant_new("(s)", name), G_VARIANT_TYPE("(s)"), G_DBUS_CALL_FLAGS_NONE,
        patience, nullptr, nullptr));
    const char* owner = "";
    if (answer) g_variant_get(answer.get(), "(&s)", &owner);
    return owner;
}

bool KGlobalAccel::isCompositors() const {
    const auto owner = ownerOf(service);
    return !owner.empty() && owner == ownerOf("org.kde.KWin");
}

bool KGlobalAccel::set(const Action& action, std::int32_t key) const {
    call("doRegister", tupleOf(idOf(action)), "()");
    GVariant* arguments[] = {idOf(action),
                             g_variant_new_fixed_array(G_VARIANT_TYPE_INT32, &key, 1, sizeof key),
                             g_variant_new_uint32(isPresent | isNotLoaded)};
    const auto answer = call("setShortcut", g_variant_new_tuple(arguments, 3), "(ai)");
    if (!answer) return false;
    const GLibHandle<GVariant> keys(g_variant_get_child_value(answer.get(), 0));
    gint32 first = 0;
    if (g_variant_n_children(keys.get()) > 0) g_variant_get_child(keys.get(), 0, "i", &first);
    return first == key;
}

void KGlobalAccel::rest(const Action& action) const {
    call("setInactive", tupleOf(idOf(action)), "()");
}

void KGlobalAccel::remove(const Action& action) const {
    call("unregister", g_variant_new("(ss)", component, action.name), "(b)");
}

std::string KGlobalAccel::useOf(std::int32_t key) const {
    const auto answer = call("action", g_variant_new("(i)", key), "(as)");
    if (!answer) return {};
    const GLibHandle<GVariant> id(g_variant_get_child_value(answer.get(), 0));
    gsize count = 0;
    const std::unique_ptr<const char*, void (*)(void*)> parts(g_variant_get_strv(id.get(), &count),
                                                              g_free);
    if (count < 4 || std::strcmp(parts.get()[0], component) == 0) return {};
    return std::string(parts.get()[2]) + ": " + parts.get()[3];
}

}  // namespace quorvi
