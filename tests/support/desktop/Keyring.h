#pragma once

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/support/Process.h"
#include "tests/support/TestFolder.h"

namespace quorvi::test {

// Another bus for the session of this process, while the object lives and there are no other
// threads.
class SessionBus {
public:
    explicit SessionBus(const std::string& address) {
        setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
    }
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;
    ~SessionBus() { setenv("DBUS_SESSION_BUS_ADDRESS", before_.c_str(), 1); }

private:
    const std::string before_ = std::getenv("DBUS_SESSION_BUS_ADDRESS");
};

// GNOME's keyring with its files in a folder of the test's, on a bus on which nothing
// else starts by itself, and which is this process's session bus while the object lives.
class Keyring {
public:
    enum class Begin { unlocked, locked };

    static constexpr auto password = "open sesame";

    // The command that runs it.
    static std::vector<std::string> daemon(Begin begin);

    explicit Keyring(Begin begin = Begin::unlocked);

    // What its files are in.
    std::filesystem::path files() const { return folder_.path() / "data"; }

    void start(Begin begin = Begin::unlocked);
    void kill() { service_.kill(); }
    void freeze() const { service_.freeze(); }
    void lock() const;

    // From now on the program that asks the user for the password is there when it is needed;
    // without it every question is dismissed.
    void allowPrompter();
    static bool isAsking() { return !windows().empty(); }
    // At the keyboard, once the window is there.
    static void answer(const std::string& text) {
        press("type --delay 30 '" + text + "'");
        press("key Return");
    }
    static void dismiss();

private:
    std::string socket() const { return folder_.path() / "bus"; }
    static std::string call(const std::string& arguments) {
        return shell("gdbus call --session -d " + arguments);
    }
    static std::string windows() {
        return shell("xdotool search --onlyvisible --class gcr-prompter");
    }
    static void press(const std::string& keys);

    TestFolder folder_;
    const SessionBus session_{"unix:path=" + socket()};
    Process bus_, service_;
};

}  // namespace quorvi::test
