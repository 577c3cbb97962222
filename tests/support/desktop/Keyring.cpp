#include "tests/support/desktop/Keyring.h"

#include <stdexcept>

#include "tests/support/Waiting.h"

namespace quorvi::test {

std::vector<std::string> Keyring::daemon(Begin begin) {
    const std::string command = "exec gnome-keyring-daemon --foreground --components=secrets ";
    if (begin == Begin::locked) return {"sh", "-c", command + "--start"};
    return {"sh", "-c", "printf '" + std::string(password) + "' | " + command + "--unlock"};
}

Keyring::Keyring(Begin begin) {
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

void Keyring::start(Begin begin) {
    service_ = Process(daemon(begin), {"XDG_RUNTIME_DIR=" + folder_.path().string(),
                                       "XDG_DATA_HOME=" + files().string()});
    if (!eventually([] {
            return call(
                       "org.freedesktop.DBus -o / -m org.freedesktop.DBus.NameHasOwner "
                       "org.freedesktop.secrets") == "(true,)\n";
        }))
        throw std::runtime_error("The test's keyring did not come up.");
}

void Keyring::lock() const {
    call(
        "org.freedesktop.secrets -o /org/freedesktop/secrets -m "
        "org.freedesktop.Secret.Service.Lock \"['/org/freedesktop/secrets/collection/login']\"");
}

void Keyring::allowPrompter() {
    folder_.write("services/prompter.service",
                  "[D-BUS Service]\nName=org.gnome.keyring.SystemPrompter\n"
                  "Exec=/usr/libexec/gcr-prompter\n");
    call("org.freedesktop.DBus -o / -m org.freedesktop.DBus.ReloadConfig");
}

void Keyring::dismiss() {
    press("key Escape");
    if (!eventually([] { return !isAsking(); }))
        throw std::runtime_error("The question is still there.");
}

void Keyring::press(const std::string& keys) {
    if (!eventually(&Keyring::isAsking))
        throw std::runtime_error("The user was not asked for the password.");
    shell("xdotool " + keys);
}

}  // namespace quorvi::test
