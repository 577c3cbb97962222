#pragma once

#include <string>
#include <vector>

#include "tests/support/TestFolder.h"

// The command lines of the applications that tests dictate into, each in a process of its own.
namespace quorvi::test {

using Command = std::vector<std::string>;

inline Command mousepad(const std::string& file) {
    return {"mousepad", "--disable-server", file};
}
inline Command gnomeTextEditor(const std::string& file) {
    return {"gnome-text-editor", "--standalone", file};
}
inline Command featherpad(const std::string& file) {
    return {"featherpad", "--standalone", file};
}

// A page with this body, in a browser with a profile below the folder.
inline Command chromium(const std::string& body, const TestFolder& folder) {
    const auto page =
        folder.write("page.html", "<!doctype html><meta charset=utf-8><title>Page</title>" + body);
    return {"chromium",
            "--no-sandbox",
            "--disable-gpu",
            "--no-first-run",
            "--password-store=basic",  // else an installed keyring asks for a password, with a grab
            "--disable-background-networking",
            "--user-data-dir=" + folder.path().string(),
            "file://" + page};
}

// A program in a sandbox of its own, which reaches the accessibility bus through a proxy. Flatpak
// writes `info` into both.
inline Command sandboxed(const std::string& program, const std::string& info,
                         const TestFolder& folder) {
    const auto script = folder.write("sandbox", R"(
box=(bwrap --ro-bind /usr /usr --ro-bind /etc /etc --symlink usr/bin /bin --symlink usr/lib /lib
     --symlink usr/lib64 /lib64 --dev /dev --proc /proc --bind /tmp /tmp --unshare-pid
     --die-with-parent --bind "$QUORVI_SESSION_DIR" "$QUORVI_SESSION_DIR")
[[ -z $2 ]] || { echo "[Instance]
instance-id=$2" >"$3/info"; box+=(--ro-bind "$3/info" /.flatpak-info); }
bus=$(gdbus call --session -d org.a11y.Bus -o /org/a11y/bus -m org.a11y.Bus.GetAddress | cut -d"'" -f2)
registry=--call=org.a11y.atspi.Registry=org.a11y.atspi
root=/org/a11y/atspi
"${box[@]}" xdg-dbus-proxy --fd=1 "$bus" "$3/bus" --filter --sloppy-names \
    $registry.Socket.{Embed,Unembed}@$root/accessible/root \
    $registry.Registry.GetRegisteredEvents@$root/registry \
    $registry.DeviceEventController.{GetKeystrokeListeners,GetDeviceEventListeners,NotifyListeners{Sync,Async}}@$root/registry/deviceeventcontroller |
    { read -rN1; AT_SPI_BUS_ADDRESS=unix:path=$3/bus "${box[@]}" $1; }
)");
    return {"bash", script, program, info, folder.path().string()};
}

}  // namespace quorvi::test
