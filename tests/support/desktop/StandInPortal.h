#pragma once

#include <atomic>
#include <mutex>
#include <semaphore>
#include <set>
#include <string>

#include "Quorvi/platform/linux/gio/GLibThread.h"

typedef struct _GDBusConnection GDBusConnection;
typedef struct _GDBusMethodInvocation GDBusMethodInvocation;

namespace quorvi::test {

// The desktop's portals for shortcuts and for remote desktops, on the session's bus, with the store
// of what they remember. They answer as GNOME 48's were seen to: a shortcut that is bound with the
// number 2; a remote desktop whose token is not in the store asks the user, and what serves it does
// not notice that the portal dies.
class StandInPortal {
public:
    std::atomic<bool> grants{true};  // the user's answer
    std::atomic<int> binds{0};
    std::atomic<int> questions{0};    // about the remote desktop
    std::atomic<int> sessions{0};     // of remote desktops, open now
    std::atomic<bool> dies{false};    // at the next key that goes down
    std::atomic<bool> renews{false};  // the token, at each session

    StandInPortal();

    void tell(const char* signal, int times = 1);
    // What was pressed and let go of since the last call: "29+ 47+ 47- 29- ".
    std::string keys();
    // What the store knows of remote desktops.
    std::set<std::string> remembered();
    void remember(const std::string& token);
    void forgetAll();

private:
    void begin();
    static void called(GDBusConnection*, const char* sender, const char*, const char* interface,
                       const char* method, GVariant* arguments, GDBusMethodInvocation* invocation,
                       void* data);
    void answerStore(const std::string& method, GVariant* arguments,
                     GDBusMethodInvocation* invocation);
    void answerKey(GVariant* arguments, GDBusMethodInvocation* invocation);
    GVariant* results(const std::string& method, const char* sender, GVariant* arguments,
                      std::uint32_t& response);
    void emit(const char* path, const char* interface, const char* signal, GVariant* arguments);

    GLibHandle<GDBusConnection> bus_, backend_;
    std::string client_, session_, name_, offered_;
    std::mutex mutex_;  // guards what follows
    std::string keys_;
    std::set<std::string> remembered_;
    int tokens_ = 0;
    std::binary_semaphore ready_{0};
    GLibThread thread_{"portal's", [this] { begin(); },
                       [this] {
                           bus_.reset();
                           backend_.reset();
                       }};
};

}  // namespace quorvi::test
