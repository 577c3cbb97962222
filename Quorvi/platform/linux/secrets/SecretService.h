#pragma once

// Included by the adapter's sources only: it brings GLib with it.
#include <map>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/secrets/SecretServiceCall.h"

typedef struct _SecretService SecretService;

namespace quorvi::secrets {

using Attributes = std::map<std::string, std::string>;
using Paths = std::vector<std::string>;  // of objects on the bus

// The Secret Service, for one operation after another. libsecret keeps the encrypted session; calls
// are made here, since libsecret's neither end when the user dismisses a prompt nor can be stopped
// on the thread that they run on. The functions throw Failure. One thread at a time.
class Service {
public:
    Service() = default;
    ~Service();
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    // The context of its operations.
    GMainContext* context() const { return context_.get(); }

    // Connects, starts the service if necessary, and drops the session of a former service. The
    // first step of every operation.
    void open(Operation& operation);

    struct Found {
        Paths unlocked;
        Paths locked;
    };
    Found search(Operation& operation, const Attributes& attributes);

    // The default collection if it exists and is locked.
    Paths lockedCollection(Operation& operation);

    // Asks the user if necessary.
    void unlock(Operation& operation, const Paths& paths);

    Secret secretOf(Operation& operation, const std::string& item);
    void setSecret(Operation& operation, const std::string& item, const Secret& secret);
    // In the default collection, which is created if missing.
    void createItem(Operation& operation, const Attributes& attributes, const char* label,
                    const Secret& secret);
    void erase(Operation& operation, const std::string& item);

private:
    void connect(Operation& operation);
    void openSession(Operation& operation);
    std::string ownerOfName(Operation& operation);
    std::string defaultCollection(Operation& operation);
    std::string createDefaultCollection(Operation& operation);
    GVariant* encoded(const Secret& secret);
    Variant prompt(Operation& operation, const std::string& path);
    Variant call(Operation& operation, const std::string& path, const char* interface,
                 const char* method, GVariant* arguments, const char* answerType);

    const GLibHandle<GMainContext> context_{g_main_context_new()};
    GLibHandle<GDBusConnection> bus_;
    GLibHandle<SecretService> session_;
    std::string owner_;  // the service's own name on the bus
};

}  // namespace quorvi::secrets
