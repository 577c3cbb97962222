#pragma once

#include <gio/gio.h>

#include <condition_variable>
#include <functional>
#include <future>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace quorvi::test {

// A desktop's tray as programs see it over D-Bus: the watcher that they announce their icons to,
// and a host that reads an icon's menu and clicks in it. On a thread of its own. What asks the
// program is given a function that keeps the program's loop running meanwhile.
class TrayHost {
public:
    struct Row {
        int id = 0;
        std::string label;  // "-" for a separator
        bool enabled = true;
    };
    using KeepRunning = std::function<void()>;

    TrayHost();
    ~TrayHost();
    TrayHost(const TrayHost&) = delete;
    TrayHost& operator=(const TrayHost&) = delete;

    // The bus name of the icon that was announced last; empty before.
    std::string item() const {
        std::lock_guard lock(mutex_);
        return item_;
    }
    // Waits, a minute at most, for an icon that was announced since the last one was forgotten.
    bool waitForItem();
    void forgetItem() {
        std::lock_guard lock(mutex_);
        item_.clear();
    }
    std::string property(const std::string& name, const KeepRunning& keepRunning);
    std::vector<Row> menu(const KeepRunning& keepRunning);
    void click(const Row& row, const KeepRunning& keepRunning);

private:
    static constexpr auto itemInterface = "org.kde.StatusNotifierItem";
    static constexpr auto menuInterface = "com.canonical.dbusmenu";
    static constexpr auto watcherName = "org.kde.StatusNotifierWatcher";
    static constexpr auto watcherXml =
        "<node><interface name='org.kde.StatusNotifierWatcher'>"
        "<method name='RegisterStatusNotifierItem'><arg type='s' direction='in'/></method>"
        "<method name='RegisterStatusNotifierHost'><arg type='s' direction='in'/></method>"
        "<property name='IsStatusNotifierHostRegistered' type='b' access='read'/>"
        "<property name='RegisteredStatusNotifierItems' type='as' access='read'/>"
        "<property name='ProtocolVersion' type='i' access='read'/>"
        "<signal name='StatusNotifierHostRegistered'/>"
        "</interface></node>";

    // A label as a tray shows it: an underscore marks the next character, two are one.
    static std::string shown(const std::string& label);

    static Row row(GVariant* child);

    GVariant* call(const std::string& path, const char* interface, const char* method,
                   GVariant* arguments, const KeepRunning& keepRunning);

    void run(std::promise<void>& ready);

    static void onCall(GDBusConnection*, const char* sender, const char*, const char*,
                       const char* method, GVariant*, GDBusMethodInvocation* invocation,
                       gpointer self);
    static GVariant* onGet(GDBusConnection*, const char*, const char*, const char*,
                           const char* property, GError**, gpointer);

    GMainContext* context_ = nullptr;
    GMainLoop* loop_ = nullptr;
    GDBusConnection* connection_ = nullptr;
    mutable std::mutex mutex_;
    std::string item_;
    std::condition_variable announced_;
    std::thread thread_;
};

}  // namespace quorvi::test
