#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Quorvi/platform/linux/gio/GLibHandles.h"

namespace quorvi {

// Receives the signals of services on a bus, and asks them. Without the bus nothing happens. Used
// and calling back on one thread, which runs its default GLib context (see GLibThread); nothing
// blocks.
class BusClient {
public:
    enum class Bus { session, system };
    struct Signal {
        std::string service;  // owner of this name
        std::string interface;
        std::string name;
        std::string path;           // any if empty
        std::string firstArgument;  // any if empty
    };
    struct Property {
        std::string service;
        std::string path;
        std::string interface;
        std::string name;
    };
    struct Method {
        std::string service;
        std::string path;
        std::string interface;
        std::string name;
    };
    using Receiver = std::function<void(GVariant*)>;

    // `connected` is called once there is a connection; the functions below are for it and later.
    BusClient(Bus bus, std::function<void(BusClient&)> connected);
    ~BusClient();
    BusClient(const BusClient&) = delete;
    BusClient& operator=(const BusClient&) = delete;

    // `received` is given the signal's parameters.
    void onSignal(const Signal& signal, Receiver received);

    // `changed` is given the new value; null if the service does not tell it.
    void onChange(const Property& property, Receiver changed);

    // This client's own name on the bus (":1.23").
    std::string uniqueName() const;

    // Takes floating arguments. `answered` is given the answer, null on failure.
    void call(const Method& method, GVariant* arguments, Receiver answered);

private:
    struct Link;
    std::unique_ptr<Link> link_;
};

}  // namespace quorvi
