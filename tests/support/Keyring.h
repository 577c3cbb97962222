#pragma once

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/Process.h"
#include "tests/support/TestFolder.h"
#include "tests/support/Waiting.h"

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
    static std::vector<std::string> daemon(Begin begin) {
        const std::string command = "exec gnome-keyring-daemon --foreground --components=secrets ";
        if (begin == Begin::locked) return {"sh", "-c", command + "--start"};
        return {"sh", "-c", "printf '" + std::string(password) + "' | " + command + "--unlock"};
    }

    explicit Keyring(Begin begin = Begin::unlocked) {
        std::filesystem::create_directory(folder_.path() / "services");
        const auto configuration = folder_.write(
            "bus.conf", "<busconfig><type>session</type><listen>unix:path=" + socket() +
                            "</listen><servicedir>" + (folder_.path() / "services").string() +
                            "</servicedir><policy context='default'><allow send_destination='*' "
                            "eavesdrop='true'/><allow eavesdrop='true'/><allow own='*'/></policy>"
                            "</busconfig>");
        bus_ = Process({"dbus-daemon", "--config-file=" + configuration, "--nofork", "--nosyslog"});
        if (!eventually([this] { return std::filesystem::exists(socket()); }))
            throw std::runtime_error("The test's bus did not come up.");
        start(begin);
    }

    // What its files are in.
    std::filesystem::path files() const { return folder_.path() / "data"; }

    void start(Begin begin = Begin::unlocked) {
        service_ = onBus(daemon(begin));
        if (!eventually([this] { return has("org.freedesktop.secrets"); }))
            throw std::runtime_error("The test's keyring did not come up.");
    }
    void kill() { service_.kill(); }
    void freeze() const { service_.freeze(); }
    void lock() const {
        call("org.freedesktop.secrets", "/org/freedesktop/secrets",
             "org.freedesktop.Secret.Service.Lock",
             "['/org/freedesktop/secrets/collection/login']");
    }

    // From now on the program that asks the user for the password is there when it is needed;
    // without it every question is dismissed.
    void allowPrompter() {
        folder_.write("services/prompter.service",
                      "[D-BUS Service]\nName=org.gnome.keyring.SystemPrompter\n"
                      "Exec=/usr/libexec/gcr-prompter\n");
        call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.ReloadConfig");
    }
    static bool isAsking() { return !windows().empty(); }
    // At the keyboard, once the window is there.
    static void answer(const std::string& text) {
        press("type --delay 30 '" + text + "'");
        press("key Return");
    }
    static void dismiss() {
        press("key Escape");
        if (!eventually([] { return !isAsking(); }))
            throw std::runtime_error("The question is still there.");
    }

private:
    std::string socket() const { return folder_.path() / "bus"; }
    Process onBus(std::vector<std::string> command) const {
        const auto folder = folder_.path().string();
        return Process(std::move(command),
                       {"XDG_RUNTIME_DIR=" + folder, "XDG_DATA_HOME=" + files().string()});
    }
    std::string call(const std::string& name, const std::string& path, const std::string& method,
                     const std::string& argument = {}) const {
        std::vector<std::string> command{"gdbus", "call", "--session", "-d",  name,
                                         "-o",    path,   "-m",        method};
        if (!argument.empty()) command.push_back(argument);
        auto program = onBus(std::move(command));
        auto output = program.readAll();
        program.wait();
        return output;
    }
    bool has(const std::string& name) const {
        return call("org.freedesktop.DBus", "/org/freedesktop/DBus",
                    "org.freedesktop.DBus.NameHasOwner", name) == "(true,)\n";
    }
    static std::string windows() {
        return shell("xdotool search --onlyvisible --class gcr-prompter");
    }
    static void press(const std::string& keys) {
        if (!eventually(&Keyring::isAsking))
            throw std::runtime_error("The user was not asked for the password.");
        shell("xdotool " + keys);
    }

    TestFolder folder_;
    const SessionBus session_{"unix:path=" + socket()};
    Process bus_, service_;
};

}  // namespace quorvi::test
