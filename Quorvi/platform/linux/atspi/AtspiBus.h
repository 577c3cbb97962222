#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Quorvi/platform/linux/atspi/AtspiProtocol.h"

struct _GDBusConnection;

namespace quorvi::atspi {

// What applications report by themselves. Called on the bus's own thread.
class BusObserver {
public:
    virtual ~BusObserver() = default;
    virtual void focusChanged(const ObjectRef& object, bool focused) = 0;
    virtual void windowActiveChanged(const ObjectRef& window, bool active) = 0;
    virtual void peerLeft(const std::string& bus) = 0;
    virtual void busLost() = 0;
    // isUsable() may say something else now.
    virtual void usabilityChanged() {}
};

// The connection to the accessibility bus: finds it through the session bus, follows its coming
// and going by name-owner changes, subscribes to focus and window events and hands them to the
// observer. A thread of its own runs from construction to destruction; every member function is
// safe from any thread and none blocks, except that the destructor waits for that thread.
class AtspiBus {
public:
    explicit AtspiBus(BusObserver& observer);
    ~AtspiBus();
    AtspiBus(const AtspiBus&) = delete;
    AtspiBus& operator=(const AtspiBus&) = delete;

    // Whether the bus answers and the desktop says that accessibility is on.
    bool isUsable() const;

    // Switches the desktop's accessibility on, starting its bus by activation when need be.
    void enable();

    // The connection as it is now; null while there is none. It may close at any time.
    std::shared_ptr<_GDBusConnection> connection() const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvi::atspi
