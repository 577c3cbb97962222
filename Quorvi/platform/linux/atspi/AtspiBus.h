#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Quorvi/platform/linux/atspi/AtspiProtocol.h"

struct _GDBusConnection;

namespace quorvi::atspi {

// Receives what applications report by themselves. Called on the bus's thread.
class BusObserver {
public:
    virtual ~BusObserver() = default;
    virtual void focusChanged(const ObjectRef& object, bool focused) = 0;
    virtual void windowActiveChanged(const ObjectRef& window, bool active) = 0;
    virtual void peerLeft(const std::string& bus) = 0;
    virtual void busLost() = 0;
    // isUsable() may have changed.
    virtual void usabilityChanged() {}
};

// The connection to the accessibility bus: finds it through the session bus, follows its starts and
// ends by name-owner changes, and passes focus and window events to the observer. A thread of its
// own runs from construction to destruction. Thread-safe; only the destructor blocks.
class AtspiBus {
public:
    explicit AtspiBus(BusObserver& observer);
    ~AtspiBus();
    AtspiBus(const AtspiBus&) = delete;
    AtspiBus& operator=(const AtspiBus&) = delete;

    // Whether the bus answers and the desktop says that accessibility is on.
    bool isUsable() const;

    // Switches the desktop's accessibility on; D-Bus activation starts its bus if necessary.
    void enable();

    // The current connection, which may close at any time; null while there is none.
    std::shared_ptr<_GDBusConnection> connection() const;

    // Runs `work` on the bus's thread; not at all once the destructor has been called.
    void run(std::function<void()> work);

    // Ask the application, or nobody any more, to report changes of texts and carets. Applications
    // report them while there is a listener. The bus's thread; in pairs.
    void addTextListener(const std::string& application);
    void removeTextListener();

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvi::atspi
