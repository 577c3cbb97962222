#include "Quorvi/platform/linux/secrets/SecretService.h"

#define SECRET_API_SUBJECT_TO_CHANGE  // encoding of secrets, unchanged since 2012
#include <libsecret/secret.h>

namespace quorvi::secrets {

using Status = KeychainStatus;

namespace {

constexpr auto servicePath = "/org/freedesktop/secrets";
constexpr auto busPath = "/org/freedesktop/DBus";
constexpr auto serviceInterface = "org.freedesktop.Secret.Service";
constexpr auto collectionInterface = "org.freedesktop.Secret.Collection";
constexpr auto itemInterface = "org.freedesktop.Secret.Item";
constexpr auto promptInterface = "org.freedesktop.Secret.Prompt";
constexpr auto propertiesInterface = "org.freedesktop.DBus.Properties";
constexpr auto noObject = "/";

struct UnrefValue {
    void operator()(SecretValue* value) const { secret_value_unref(value); }  // overwrites it
};
using Value = std::unique_ptr<SecretValue, UnrefValue>;

Paths pathsIn(GVariant* tuple, gsize index) {
    const Variant list(g_variant_get_child_value(tuple, index));
    Paths paths;
    for (gsize i = 0; i < g_variant_n_children(list.get()); ++i) {
        const Variant path(g_variant_get_child_value(list.get(), i));
        paths.emplace_back(g_variant_get_string(path.get(), nullptr));
    }
    return paths;
}

std::string pathIn(GVariant* tuple, gsize index) {
    const Variant path(g_variant_get_child_value(tuple, index));
    return g_variant_get_string(path.get(), nullptr);
}

GVariant* variantOf(const Attributes& attributes) {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE("a{ss}"));
    for (const auto& [name, value] : attributes)
        g_variant_builder_add(&builder, "{ss}", name.c_str(), value.c_str());
    return g_variant_builder_end(&builder);
}

// Waits for the user's answer to a prompt.
struct Answer {
    bool isThere = false;
    bool wasDismissed = true;
    bool serviceEnded = false;
    Variant result;

    static void completed(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*,
                          GVariant* parameters, gpointer data) {
        auto& answer = *static_cast<Answer*>(data);
        answer.isThere = true;
        if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(bv)"))) return;
        gboolean dismissed = FALSE;
        GVariant* result = nullptr;
        g_variant_get(parameters, "(bv)", &dismissed, &result);
        answer.result.reset(result);
        answer.wasDismissed = dismissed != FALSE;
    }
    static void ownerChanged(GDBusConnection*, const gchar*, const gchar*, const gchar*,
                             const gchar*, GVariant*, gpointer data) {
        static_cast<Answer*>(data)->serviceEnded = true;
    }
};

// A subscription to a signal while the object lives.
class Listening {
public:
    Listening(GDBusConnection* bus, const char* sender, const char* interface, const char* member,
              const char* path, const char* argument, GDBusSignalCallback callback, Answer& answer)
        : bus_(bus),
          id_(g_dbus_connection_signal_subscribe(bus, sender, interface, member, path, argument,
                                                 G_DBUS_SIGNAL_FLAGS_NONE, callback, &answer,
                                                 nullptr)) {}
    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;
    ~Listening() { g_dbus_connection_signal_unsubscribe(bus_, id_); }

private:
    GDBusConnection* bus_;
    guint id_;
};

}  // namespace

Service::~Service() {
    session_.reset();
    bus_.reset();
    // Releases libsecret's own subscriptions.
    while (g_main_context_iteration(context_.get(), FALSE)) continue;
}

void Service::open(Operation& operation) {
    if (!bus_ || g_dbus_connection_is_closed(bus_.get())) connect(operation);
    auto owner = ownerOfName(operation);
    if (owner.empty()) {
        operation.call(bus_.get(), busName, busPath, busName, "StartServiceByName",
                       g_variant_new("(su)", serviceName, 0U), "(u)");
        owner = ownerOfName(operation);
    }
    if (owner != owner_) session_.reset();
    owner_ = owner;
}

// libsecret takes the connection that the process shares, which must not end the process.
void Service::connect(Operation& operation) {
    session_.reset();
    bus_.reset();
    const auto result = operation.await([](GCancellable* cancellable, auto... callback) {
        g_bus_get(G_BUS_TYPE_SESSION, cancellable, callback...);
    });
    try {
        bus_.reset(g_bus_get_finish(result.get(), Error()));
    } catch (const Failure& failure) {
        // Any fault of the bus means that there is no keychain.
        if (failure.status == Status::userCanceled) throw;
        throw Failure{Status::notAvailable};
    }
    g_dbus_connection_set_exit_on_close(bus_.get(), FALSE);
}

// Empty if the name has no owner.
std::string Service::ownerOfName(Operation& operation) {
    const auto answer = operation.await([this](auto... callback) {
        g_dbus_connection_call(bus_.get(), busName, busPath, busName, "GetNameOwner",
                               g_variant_new("(s)", serviceName), G_VARIANT_TYPE("(s)"),
                               G_DBUS_CALL_FLAGS_NONE, -1, callback...);
    });
    GError* error = nullptr;
    const Variant owner(g_dbus_connection_call_finish(bus_.get(), answer.get(), &error));
    if (owner) return pathIn(owner.get(), 0);
    const auto status = statusOf(*error);
    g_error_free(error);
    if (status != Status::notAvailable) throw Failure{status};
    return {};
}

void Service::openSession(Operation& operation) {
    if (!session_) {
        const auto result = operation.await([](auto... callback) {
            secret_service_open(SECRET_TYPE_SERVICE, serviceName, SECRET_SERVICE_NONE, callback...);
        });
        session_.reset(secret_service_open_finish(result.get(), Error()));
    }
    const auto result = operation.await(
        [this](auto... callback) { secret_service_ensure_session(session_.get(), callback...); });
    secret_service_ensure_session_finish(session_.get(), result.get(), Error());
}

Variant Service::call(Operation& operation, const std::string& path, const char* interface,
                      const char* method, GVariant* arguments, const char* answerType) {
    return operation.call(bus_.get(), serviceName, path.c_str(), interface, method, arguments,
                          answerType);
}

Service::Found Service::search(Operation& operation, const Attributes& attributes) {
    const auto answer = call(operation, servicePath, serviceInterface, "SearchItems",
                             g_variant_new("(@a{ss})", variantOf(attributes)), "(aoao)");
    return {pathsIn(answer.get(), 0), pathsIn(answer.get(), 1)};
}

std::string Service::defaultCollection(Operation& operation) {
    const auto answer = call(operation, servicePath, serviceInterface, "ReadAlias",
                             g_variant_new("(s)", "default"), "(o)");
    return pathIn(answer.get(), 0);
}

Paths Service::lockedCollection(Operation& operation) {
    const auto collection = defaultCollection(operation);
    if (collection == noObject) return {};
    const auto answer = call(operation, collection, propertiesInterface, "Get",
                             g_variant_new("(ss)", collectionInterface, "Locked"), "(v)");
    const Variant box(g_variant_get_child_value(answer.get(), 0));
    const Variant locked(g_variant_get_variant(box.get()));
    if (!g_variant_is_of_type(locked.get(), G_VARIANT_TYPE_BOOLEAN)) throw Failure{Status::decode};
    return g_variant_get_boolean(locked.get()) ? Paths{collection} : Paths{};
}

void Service::unlock(Operation& operation, const Paths& paths) {
    if (paths.empty()) return;
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("ao"));
    for (const auto& path : paths) g_variant_builder_add(&list, "o", path.c_str());
    const auto answer = call(operation, servicePath, serviceInterface, "Unlock",
                             g_variant_new("(ao)", &list), "(aoo)");
    prompt(operation, pathIn(answer.get(), 1));
}

// Shows the user what the service asks and waits for the answer; null when there is nothing to ask.
// A stop ends the waiting and leaves the question with the user: GNOME's keyring, up to version 42
// at least, aborts when it is told to dismiss one.
Variant Service::prompt(Operation& operation, const std::string& path) {
    if (path == noObject) return nullptr;
    Answer answer;
    const Listening completion(bus_.get(), owner_.c_str(), promptInterface, "Completed",
                               path.c_str(), nullptr, &Answer::completed, answer);
    const Listening end(bus_.get(), busName, busName, "NameOwnerChanged", busPath, serviceName,
                        &Answer::ownerChanged, answer);
    call(operation, path, promptInterface, "Prompt", g_variant_new("(s)", ""), "()");
    operation.waitUntil([&] {
        return answer.isThere || answer.serviceEnded || g_dbus_connection_is_closed(bus_.get());
    });
    if (!answer.isThere) throw Failure{Status::ioError};
    if (answer.wasDismissed) throw Failure{Status::userCanceled};
    return std::move(answer.result);
}

Secret Service::secretOf(Operation& operation, const std::string& item) {
    openSession(operation);
    const auto answer = call(
        operation, item, itemInterface, "GetSecret",
        g_variant_new("(o)", secret_service_get_session_dbus_path(session_.get())), "((oayays))");
    const Variant encrypted(g_variant_get_child_value(answer.get(), 0));
    const Value value(secret_service_decode_dbus_secret(session_.get(), encrypted.get()));
    if (!value) throw Failure{Status::decode};
    gsize size = 0;
    const gchar* bytes = secret_value_get(value.get(), &size);
    return Secret(std::string_view(bytes, size));
}

GVariant* Service::encoded(const Secret& secret) {
    const auto bytes = secret.view();
    const Value value(
        secret_value_new(bytes.data(), static_cast<gssize>(bytes.size()), "text/plain"));
    return secret_service_encode_dbus_secret(session_.get(), value.get());
}

void Service::setSecret(Operation& operation, const std::string& item, const Secret& secret) {
    openSession(operation);
    call(operation, item, itemInterface, "SetSecret", g_variant_new("(@(oayays))", encoded(secret)),
         "()");
}

std::string Service::createDefaultCollection(Operation& operation) {
    GVariantBuilder properties;
    g_variant_builder_init(&properties, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&properties, "{sv}", "org.freedesktop.Secret.Collection.Label",
                          g_variant_new_string("Default keyring"));
    const auto answer = call(operation, servicePath, serviceInterface, "CreateCollection",
                             g_variant_new("(a{sv}s)", &properties, "default"), "(oo)");
    const auto result = prompt(operation, pathIn(answer.get(), 1));
    if (!result) return pathIn(answer.get(), 0);
    if (!g_variant_is_of_type(result.get(), G_VARIANT_TYPE_OBJECT_PATH))
        throw Failure{Status::decode};
    return g_variant_get_string(result.get(), nullptr);
}

void Service::createItem(Operation& operation, const Attributes& attributes, const char* label,
                         const Secret& secret) {
    auto collection = defaultCollection(operation);
    if (collection == noObject) collection = createDefaultCollection(operation);
    openSession(operation);
    GVariantBuilder properties;
    g_variant_builder_init(&properties, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&properties, "{sv}", "org.freedesktop.Secret.Item.Label",
                          g_variant_new_string(label));
    g_variant_builder_add(&properties, "{sv}", "org.freedesktop.Secret.Item.Attributes",
                          variantOf(attributes));
    // Replaces an item with the same attributes, which another program may have just created.
    const auto answer =
        call(operation, collection, collectionInterface, "CreateItem",
             g_variant_new("(a{sv}@(oayays)b)", &properties, encoded(secret), TRUE), "(oo)");
    prompt(operation, pathIn(answer.get(), 1));
}

void Service::erase(Operation& operation, const std::string& item) {
    const auto answer = call(operation, item, itemInterface, "Delete", nullptr, "(o)");
    prompt(operation, pathIn(answer.get(), 0));
}

}  // namespace quorvi::secrets
