#pragma once

// Included by the adapter's sources only: it brings GLib with it.
#include <gio/gio.h>

#include <optional>
#include <stop_token>

#include "Quorvi/platform/Keychain.h"
#include "Quorvi/platform/linux/gio/GLibHandles.h"

namespace quorvi::secrets {

using Variant = GLibHandle<GVariant>;

inline constexpr auto serviceName = "org.freedesktop.secrets";
inline constexpr auto busName = "org.freedesktop.DBus";

// Why an operation ended without success.
struct Failure {
    KeychainStatus status;
};

// How errors of the service, the bus and the library are reported:
//   userCanceled           the user dismissed the prompt, or the operation was stopped
//   interactionNotAllowed  a locked collection
//   itemNotFound           no such object
//   duplicateItem          there is one already
//   notAvailable           no bus, or nobody offers the service on it
//   missingEntitlement     the bus's rules keep the service from this program
//   ioError                the service ended, or did not answer, in the middle
//   decode                 an invalid answer
//   internalComponent      anything else
KeychainStatus statusOf(const GError& error);

// Receives the error of a call and throws it as a Failure at the end of the statement:
//     finish(result, Error())
class Error {
public:
    Error() = default;
    Error(const Error&) = delete;
    Error& operator=(const Error&) = delete;
    ~Error() noexcept(false);
    operator GError**() { return &error_; }

private:
    GError* error_ = nullptr;
};

// One operation of the keychain, on one thread. Its calls are asynchronous in the keychain's
// context, so that a stop from another thread takes effect on this one, and the libraries see one
// thread.
class Operation {
public:
    Operation(GMainContext* context, std::stop_token stop);
    ~Operation();
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

    // Starts a call, `start(cancellable, callback, data)`, and waits for its result.
    template <class Start>
    GLibHandle<GAsyncResult> await(Start start) {
        start(cancellable_.get(), &Operation::answered, this);
        return result();
    }

    // Calls a method of an object on the bus; the answer must have the type. Throws Failure.
    Variant call(GDBusConnection* bus, const char* name, const char* path, const char* interface,
                 const char* method, GVariant* arguments, const char* answerType);

    // Runs the context until the condition holds. Throws Failure if the operation is stopped.
    template <class Condition>
    void waitUntil(Condition condition) {
        while (!condition()) {
            if (g_cancellable_is_cancelled(cancellable_.get()))
                throw Failure{KeychainStatus::userCanceled};
            g_main_context_iteration(context_, TRUE);
        }
    }

private:
    struct OnStop {
        Operation& operation;
        void operator()() const;
    };

    static void answered(GObject*, GAsyncResult* result, gpointer self);
    GLibHandle<GAsyncResult> result();

    GMainContext* const context_;
    const GLibHandle<GCancellable> cancellable_{g_cancellable_new()};
    GLibHandle<GAsyncResult> result_;
    std::optional<std::stop_callback<OnStop>> onStop_;
};

}  // namespace quorvi::secrets
