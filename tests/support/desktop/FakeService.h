#pragma once

#include <map>
#include <string>

#include "tests/support/Process.h"

typedef struct _GDBusConnection GDBusConnection;
typedef struct _GDBusMessage GDBusMessage;

namespace quorvi::test {

// A bus of the test's own in the system bus's place, where anybody may own any name.
class FakeSystemBus {
public:
    FakeSystemBus();
    ~FakeSystemBus();

private:
    TestFolder folder_;
    Process daemon_;
};

// A service on a bus, which says what the test wants it to. Values are in GVariant's text format.
class FakeService {
public:
    // `bus` is the environment variable with its address.
    static constexpr auto sessionBus = "DBUS_SESSION_BUS_ADDRESS";
    static constexpr auto systemBus = "DBUS_SYSTEM_BUS_ADDRESS";
    // `answers` has the answers to calls by their argument, a string; others fail.
    FakeService(const char* bus, const char* name, std::map<std::string, std::string> answers = {});
    ~FakeService();
    FakeService(const FakeService&) = delete;
    FakeService& operator=(const FakeService&) = delete;

    void emit(const std::string& path, const std::string& interface, const std::string& signal,
              const std::string& parameters) const;
    void changeProperties(const std::string& path, const std::string& interface,
                          const std::string& values) const {
        emit(path, "org.freedesktop.DBus.Properties", "PropertiesChanged",
             "('" + interface + "', " + values + ", @as [])");
    }
    // As logind.
    void prepareForSleep(bool sleeping) const {
        emit("/org/freedesktop/login1", "org.freedesktop.login1.Manager", "PrepareForSleep",
             sleeping ? "(true,)" : "(false,)");
    }

private:
    static GDBusMessage* answer(GDBusConnection* bus, GDBusMessage* message, int incoming,
                                void* self);

    const std::map<std::string, std::string> answers_;
    GDBusConnection* bus_ = nullptr;
};

}  // namespace quorvi::test
