#include "Quorvi/app/commands/Doctor.h"

#include <QApplication>
#include <QSystemTrayIcon>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

#include "Quorvi/app/composition/CloudDatabases.h"
#include "Quorvi/app/composition/StoredFiles.h"
#include "Quorvi/dictation/PreferenceKeys.h"
#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"
#include "Quorvi/platform/linux/curl/CurlTransport.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/propertylist/PropertyListPreferences.h"
#include "Quorvi/platform/linux/pulse/PulseConnection.h"
#include "Quorvi/platform/linux/secrets/SecretServiceKeychain.h"
#include "Quorvi/platform/linux/x11/keyboard/X11InputSupport.h"
#include "Quorvi/shell/BusCommand.h"
#include "Quorvi/sync/AccountSync.h"
#include "QuorviCore/identity/BundleIdentifier.h"
#include "QuorviCore/transcription/ServiceAddress.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

// How long each subject has for its answer.
constexpr Duration patience = 10s;

class Doctor {
public:
    int run() {
        lookAtProgram();
        lookAtKeyboard();
        lookAtAccessibility();
        lookAtSound();
        lookAtTray();
        lookAtKeyring();
        lookAtService();
        lookAtCloud();
        if (needsUser_)
            std::printf("\nSomething needs you; see the lines marked with ✗.\n");
        else
            std::printf("\nEverything is in order.\n");
        return needsUser_ ? 1 : 0;
    }

private:
    static void line(const char* mark, const char* subject, const std::string& finding) {
        std::printf("%s %s: %s\n", mark, subject, finding.c_str());
        std::fflush(stdout);
    }
    static void good(const char* subject, const std::string& finding) {
        line("✓", subject, finding);
    }
    static void note(const char* subject, const std::string& finding) {
        line("–", subject, finding);
    }
    void bad(const char* subject, const std::string& finding, const char* remedy) {
        line("✗", subject, finding);
        std::printf("    %s\n", remedy);
        needsUser_ = true;
    }

    void lookAtProgram() {
        if (const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS"); !address || !*address)
            note("Session bus", "DBUS_SESSION_BUS_ADDRESS does not name it.");
        note("Quorvi", isRunning() ? "It is running." : "It is not running at the moment.");
    }

    void lookAtKeyboard() {
        canInstallTap_ = x11InputHookIsPossible();
        if (canInstallTap_) return good("Global shortcut", "The display offers what it needs.");
        const char* display = std::getenv("DISPLAY");
        if (!display || !*display)
            return bad("Global shortcut", "There is no X display.",
                       "Run Quorvi on a desktop with X11, or with XWayland.");
        bad("Global shortcut", "The display can't be reached, or lacks XInput 2.2, XTest or XKB.",
            "Check DISPLAY and XAUTHORITY; a remote or nested display may lack these extensions.");
    }

    void lookAtAccessibility() {
        const AtspiAccessibility accessibility([this] { return canInstallTap_; });
        if (scheduler_.runUntil([&] { return accessibility.isTrusted() || !canInstallTap_; },
                                patience) &&
            canInstallTap_)
            return good("Accessibility", "The accessibility bus answers.");
        bad("Accessibility",
            canInstallTap_ ? "The accessibility bus does not answer."
                           : "It is of no use without a display.",
            "Install at-spi2-core, and turn on assistive technologies in the desktop's settings.");
    }

    void lookAtSound() {
        PulseConnection sound(scheduler_);
        std::optional<bool> connected;
        sound.run([&] {
            sound.whenReady(
                [&](bool ready) { scheduler_.post([&connected, ready] { connected = ready; }); });
        });
        scheduler_.runUntil([&] { return connected.has_value(); }, patience);
        if (!connected.value_or(false)) {
            bad("Sound server", "Neither PulseAudio nor PipeWire answers.",
                "Start it: systemctl --user start pipewire-pulse, or pulseaudio --start.");
            return;
        }
        good("Sound server", "It answers.");
        scheduler_.runUntil([&] { return sound.hasMicrophone().has_value(); }, patience);
        if (sound.hasMicrophone().value_or(false)) return good("Microphone", "There is one.");
        bad("Microphone", "The sound server has none.",
            "Plug one in, or choose an input device in the desktop's sound settings.");
    }

    void lookAtCloud() {
        if (!preferences_.boolean(AccountSync::enabledKey).value_or(true))
            return note("Synchronisation", "It is switched off.");
        const auto address = preferences_.string(preferenceKey::cloudDatabase).value_or("");
        if (const auto problem = cloudAddressProblem(address))
            return bad("Synchronisation", *problem,
                       "Set another address: quorvi --cloud-database=ADDRESS.");
        note("Synchronisation",
             (address.empty() ? "In a folder of this machine alone" : "Through " + address) +
                 "; quorvi --cloud-release-check tries it.");
    }

    void lookAtTray() {
        if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
            return note("Tray", "It can't be looked for without a display.");
        if (QSystemTrayIcon::isSystemTrayAvailable())
            return good("Tray", "The desktop shows icons.");
        note("Tray",
             "The desktop has none; Quorvi shows its window instead. On GNOME the extension "
             "\"AppIndicator\" adds one.");
    }

    void lookAtKeyring() {
        SecretServiceKeychain keychain(scheduler_);
        const auto service = std::string(bundleIdentifier) + ".openai";
        const auto ask = [&](bool synchronised) {
            return keychain.exists({service, "api-key", synchronised}, {});
        };
        auto status = ask(true);
        if (status != KeychainStatus::success) status = ask(false);
        switch (status) {
            case KeychainStatus::success:
                return good("Keyring", "Your API key is in it.");
            case KeychainStatus::itemNotFound:
                return bad("Keyring", "It answers, but your API key is not in it.",
                           "Put it there: in Quorvi's Settings, or with quorvi --store-key.");
            case KeychainStatus::interactionNotAllowed:
                return note("Keyring", "It is locked. You will be asked to unlock it.");
            default:
                return bad(
                    "Keyring",
                    "No keyring answers (" + std::to_string(static_cast<std::int32_t>(status)) +
                        ").",
                    "Install and start GNOME Keyring or KDE Wallet, or use QUORVI_API_KEY for "
                    "a single run.");
        }
    }

    void lookAtService() {
        const char* variable = std::getenv("QUORVI_SERVICE");
        std::string address;
        try {
            address =
                serviceAddress(variable ? variable : preferences_.string("service").value_or(""));
        } catch (const std::exception& error) {
            return bad("Speech service", error.what(),
                       "Correct QUORVI_SERVICE: https://host[:port].");
        }
        CurlTransport transport(scheduler_);
        std::optional<std::string> problem;
        bool done = false;
        auto asking = reach(transport, address, problem, done);
        asking.start();
        scheduler_.runUntil([&] { return done; }, 2 * patience);
        if (!done) problem = "It does not answer.";
        if (!problem) return good("Speech service", address + " can be reached.");
        bad("Speech service", address + ": " + *problem,
            "Check the connection to the network, its proxy and its firewall.");
    }

    // Any answer will do: without a key it is a refusal.
    static Task<void> reach(CurlTransport& transport, std::string address,
                            std::optional<std::string>& problem, bool& done) {
        try {
            auto sending = transport.send(
                {.method = "GET", .url = address + "/v1/models", .timeout = patience}, {});
            const auto response = co_await sending;
            if (response.status == 0) problem = "It does not speak HTTP.";
        } catch (const std::exception& error) {
            problem = error.what();
        }
        done = true;
    }

    LoopScheduler scheduler_;
    PosixFileStore files_;
    SerialExecutor disk_{"preferences"};
    PropertyListPreferences preferences_{files_, preferencesFile(), disk_, scheduler_};
    bool canInstallTap_ = false;
    bool needsUser_ = false;
};

}  // namespace

int runDoctor() {
    return Doctor().run();
}

}  // namespace quorvi
