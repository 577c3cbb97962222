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

// The Secret Service as one operation after another sees it. libsecret keeps the session in which
// secrets are encrypted; the calls are made here, since its own neither end when the user dismisses
// a prompt nor pass on a stop in the thread that they run in. The functions throw Failure. One
// thread at a time.
class Service {
public:
    Service() = default;
    ~Service();
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    // Where its operations run.
    GMainContext* context() const { return context_.get(); }

    // Connects, starts the service if need be, and notices that it is another one than before: the
    // session went with the former one. Comes first in every operation.
    void open(Operation& operation);

    struct Found {
        Paths unlocked;
        Paths locked;
    };
    Found search(Operation& operation, const Attributes& attributes);

    // The default collection if it is there and locked.
    Paths lockedCollection(Operation& operation);

    // Asks the user where that is needed.
    void unlock(Operation& operation, const Paths& paths);

    Secret secretOf(Operation& operation, const std::string& item);
    void setSecret(Operation& operation, const std::string& item, const Secret& secret);
    // In the default collection, which is made when there is none.
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
