#include "Quorvi/platform/linux/secrets/SecretServiceCall.h"

#include <libsecret/secret.h>

#include <exception>
#include <utility>

namespace quorvi::secrets {

using Status = KeychainStatus;

namespace {

Status statusOfSecretError(int code) {
    switch (code) {
        case SECRET_ERROR_IS_LOCKED:
            return Status::interactionNotAllowed;
        case SECRET_ERROR_NO_SUCH_OBJECT:
            return Status::itemNotFound;
        case SECRET_ERROR_ALREADY_EXISTS:
            return Status::duplicateItem;
        case SECRET_ERROR_PROTOCOL:
            return Status::decode;
        default:
            return Status::internalComponent;
    }
}

Status statusOfBusError(int code) {
    switch (code) {
        case G_DBUS_ERROR_SERVICE_UNKNOWN:
        case G_DBUS_ERROR_NAME_HAS_NO_OWNER:
        case G_DBUS_ERROR_NO_SERVER:
        case G_DBUS_ERROR_SPAWN_EXEC_FAILED:
        case G_DBUS_ERROR_SPAWN_FORK_FAILED:
        case G_DBUS_ERROR_SPAWN_CHILD_EXITED:
        case G_DBUS_ERROR_SPAWN_CHILD_SIGNALED:
        case G_DBUS_ERROR_SPAWN_FAILED:
        case G_DBUS_ERROR_SPAWN_SERVICE_INVALID:
        case G_DBUS_ERROR_SPAWN_SERVICE_NOT_FOUND:
            return Status::notAvailable;
        case G_DBUS_ERROR_ACCESS_DENIED:
        case G_DBUS_ERROR_AUTH_FAILED:
            return Status::missingEntitlement;
        case G_DBUS_ERROR_NO_REPLY:
        case G_DBUS_ERROR_TIMEOUT:
        case G_DBUS_ERROR_TIMED_OUT:
        case G_DBUS_ERROR_DISCONNECTED:
            return Status::ioError;
        case G_DBUS_ERROR_UNKNOWN_OBJECT:
            return Status::itemNotFound;
        default:
            return Status::internalComponent;
    }
}

Status statusOfIoError(int code) {
    switch (code) {
        case G_IO_ERROR_CANCELLED:
            return Status::userCanceled;
        case G_IO_ERROR_CLOSED:
        case G_IO_ERROR_BROKEN_PIPE:
        case G_IO_ERROR_TIMED_OUT:
            return Status::ioError;
        // The result of finding and opening the bus.
        case G_IO_ERROR_NOT_FOUND:
        case G_IO_ERROR_CONNECTION_REFUSED:
        case G_IO_ERROR_INVALID_ARGUMENT:
        case G_IO_ERROR_NOT_SUPPORTED:
        case G_IO_ERROR_FAILED:
            return Status::notAvailable;
        case G_IO_ERROR_PERMISSION_DENIED:
            return Status::missingEntitlement;
        default:
            return Status::internalComponent;
    }
}

}  // namespace

KeychainStatus statusOf(const GError& error) {
    if (error.domain == SECRET_ERROR) return statusOfSecretError(error.code);
    if (error.domain == G_DBUS_ERROR) return statusOfBusError(error.code);
    if (error.domain == G_IO_ERROR) return statusOfIoError(error.code);
    if (error.domain == G_SPAWN_ERROR) return Status::notAvailable;
    return Status::internalComponent;
}

Error::~Error() noexcept(false) {
    if (error_ == nullptr) return;
    const auto status = statusOf(*error_);
    g_error_free(error_);
    if (std::uncaught_exceptions() == 0) throw Failure{status};
}

Operation::Operation(GMainContext* context, std::stop_token stop) : context_(context) {
    g_main_context_push_thread_default(context_);
    onStop_.emplace(std::move(stop), OnStop{*this});
}

Operation::~Operation() {
    onStop_.reset();
    // A cancelled call still reports back.
    while (g_main_context_iteration(context_, FALSE)) continue;
    g_main_context_pop_thread_default(context_);
}

void Operation::OnStop::operator()() const {
    const GLibHandle<GSource> source(g_idle_source_new());
    g_source_set_callback(
        source.get(),
        [](gpointer cancellable) -> gboolean {
            g_cancellable_cancel(static_cast<GCancellable*>(cancellable));
            return G_SOURCE_REMOVE;
        },
        g_object_ref(operation.cancellable_.get()), g_object_unref);
    g_source_attach(source.get(), operation.context_);
}

void Operation::answered(GObject*, GAsyncResult* result, gpointer self) {
    static_cast<Operation*>(self)->result_.reset(static_cast<GAsyncResult*>(g_object_ref(result)));
}

GLibHandle<GAsyncResult> Operation::result() {
    while (!result_) g_main_context_iteration(context_, TRUE);
    return std::move(result_);
}

Variant Operation::call(GDBusConnection* bus, const char* name, const char* path,
                        const char* interface, const char* method, GVariant* arguments,
                        const char* answerType) {
    const auto answer = await([&](auto... callback) {
        g_dbus_connection_call(bus, name, path, interface, method, arguments,
                               G_VARIANT_TYPE(answerType), G_DBUS_CALL_FLAGS_NONE, -1, callback...);
    });
    return Variant(g_dbus_connection_call_finish(bus, answer.get(), Error()));
}

}  // namespace quorvi::secrets
