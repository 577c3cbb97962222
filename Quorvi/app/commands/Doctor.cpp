#include "Quorvi/app/commands/Doctor.h"

#include <unistd.h>

#include <QApplication>
#include <QSystemTrayIcon>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

#include "Quorvi/app/commands/StoredPreferences.h"
#include "Quorvi/app/composition/CloudDatabases.h"
#include "Quorvi/app/composition/StoredFiles.h"
#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"
#include "Quorvi/platform/linux/curl/CurlTransport.h"
#include "Quorvi/platform/linux/gnome/CustomShortcutSettings.h"
#include "Quorvi/platform/linux/kde/KGlobalAccelShortcuts.h"
#include "Quorvi/platform/linux/pulse/PulseConnection.h"
#include "Quorvi/platform/linux/remote/KeptKeyConsent.h"
#include "Quorvi/platform/linux/secrets/SecretServiceKeychain.h"
#include "Quorvi/platform/linux/wayland/probe/WaylandProbe.h"
#include "Quorvi/platform/linux/wayland/sway/SwayConfig.h"
#include "Quorvi/platform/linux/x11/keyboard/X11InputSupport.h"
#include "Quorvi/shell/BusCommand.h"
#include "Quorvi/shell/HelperPrograms.h"
#include "Quorvi/system/DesktopParts.h"
#include "Quorvi/system/KeychainStore.h"
#include "Quorvi/transcription/SpeechServiceChoice.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "Quorvi/ui/translations/ShownShortcut.h"
#include "Quorvi/ui/translations/Translations.h"
#include "QuorviCore/transcription/ServiceAddress.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

// The limit for each answer.
constexpr Duration patience = 10s;

class Doctor {
public:
    int run() {
        checkProgram();
        checkWayland();
        checkKeyboard();
        checkAccessibility();
        checkSound();
        checkTray();
        checkKeyring();
        checkService();
        checkCloud();
        if (needsUser_)
            std::printf("\nAction needed: see the lines marked with ✗.\n");
        else
            std::printf("\nAll checks passed.\n");
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

    void checkProgram() {
        if (const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS"); !address || !*address)
            note("Session bus", "DBUS_SESSION_BUS_ADDRESS is not set.");
        note("Quorvi", isRunning() ? "running." : "not running.");
    }

    // One line for each thing that dictating into the windows of Wayland programs needs.
    void checkWayland() {
        if (!wayland_.isWayland) return;
        const KeptKeyConsent keys(keyConsentFile(), wayland_.hasRemoteDesktop);
        for (const auto& part : describe(wayland_, keys.token().has_value())) {
            auto finding = shownInEnglish(part.finding);
            if (part.consequence) finding += " " + shownInEnglish(*part.consequence);
            line(part.isOffered ? "✓" : "–", ("Wayland: " + shownInEnglish(part.subject)).c_str(),
                 finding);
        }
        if (wayland_.hasInputMethod && waylandInputMethodIsTaken())
            note("Wayland",
                 "another input method (fcitx5, IBus) is running: text is pasted through the "
                 "clipboard. Quit it to have text put into fields and terminals directly.");
        if (!wayland_.isNative()) note("Wayland", shownInEnglish(say::desktopIsNotNative()));
    }

    void checkKeyboard() {
        const bool hasX11 = x11InputHookIsPossible();
        canInstallTap_ = wayland_.isNative() || hasX11;
        if (hasX11) setRightAltIsAltGr(x11RightAltIsAltGr());
        const auto shortcut = shown(settings_.get(setting::hotkey));
        if (wayland_.isNative() && wayland_.hasSway)
            return checkSwayShortcut(shortcut.toStdString());
        if (wayland_.isNative() && !wayland_.hasShortcut())
            return note("Global shortcut", shownInEnglish(say::desktopHasNoShortcuts()));
        if (wayland_.isNative()) return checkDesktopShortcut(shortcut.toStdString());
        if (hasX11)
            return good(
                "Global shortcut",
                shortcut.toStdString() +
                    (wayland_.isWayland ? ", XWayland: available in windows of X11 programs only."
                                        : ", X11 display with XInput 2.2 and XTest: available."));
        const char* display = std::getenv("DISPLAY");
        if (!display || !*display)
            return bad("Global shortcut", "no X11 display.",
                       "Run Quorvi on a desktop with X11, or with XWayland.");
        bad("Global shortcut", "X11 display unreachable, or without XInput 2.2, XTest or XKB.",
            "Check DISPLAY and XAUTHORITY; a remote or nested display may lack these extensions.");
    }

    void checkSwayShortcut(const std::string& shortcut) {
        const auto key = settings_.get(setting::hotkey);
        if (!isBoundInSway({key.keyCode, key.modifiers}))
            return good("Global shortcut", shortcut + ", sway: available.");
        bad("Global shortcut", shortcut + ": sway's configuration uses it.",
            "Choose another in Quorvi's Settings, or remove the line from the configuration.");
    }

    void checkDesktopShortcut(const std::string& shortcut) {
        const auto key = settings_.get(setting::hotkey);
        if (key.isModifier())
            return bad("Global shortcut", shortcut + ": this desktop reports no lone modifiers.",
                       "Choose a combination or a function key in Quorvi's Settings.");
        if (const auto use = wayland_.hasKdeShortcuts ? kdeUseOf({key.keyCode, key.modifiers}) : "";
            !use.empty())
            return bad("Global shortcut", shortcut + ": KDE uses it for: " + use + ".",
                       "Choose another in Quorvi's Settings, or free it in KDE's.");
        if (wayland_.hasKdeShortcuts || wayland_.hasShortcutsPortal)
            return good("Global shortcut", shortcut + ": available.");
        const CustomShortcutSettings gnome;
        if (const auto use = gnome.takenBy({key.keyCode, key.modifiers}); !use.empty())
            return bad("Global shortcut", shortcut + ": GNOME uses it for: " + use + ".",
                       "Choose another in Quorvi's Settings.");
        if (!gnome.isInstalled())
            return bad("Global shortcut", shortcut + ": not in GNOME's settings.",
                       "Run: quorvi shortcut install. Or switch it on in Quorvi's Settings.");
        good("Global shortcut", shortcut + ", GNOME's custom shortcuts: available.");
    }

    void checkAccessibility() {
        const AtspiAccessibility accessibility([this] { return canInstallTap_; });
        if (scheduler_.runUntil([&] { return accessibility.isTrusted() || !canInstallTap_; },
                                patience) &&
            canInstallTap_)
            return good("Accessibility", "AT-SPI bus: available.");
        bad("Accessibility",
            canInstallTap_ ? "AT-SPI bus: no answer." : "not usable without a display.",
            "Install at-spi2-core, and turn on assistive technologies in the desktop's settings.");
    }

    void checkSound() {
        PulseConnection sound(scheduler_);
        std::optional<bool> connected;
        sound.run([&] {
            sound.whenReady(
                [&](bool ready) { scheduler_.post([&connected, ready] { connected = ready; }); });
        });
        scheduler_.runUntil([&] { return connected.has_value(); }, patience);
        if (!connected.value_or(false)) {
            bad("Sound server", "PulseAudio or PipeWire: no answer.",
                "Start it: systemctl --user start pipewire-pulse, or pulseaudio --start.");
            return;
        }
        good("Sound server", "PulseAudio protocol: available.");
        scheduler_.runUntil([&] { return sound.hasMicrophone().has_value(); }, patience);
        if (sound.hasMicrophone().value_or(false))
            return good("Microphone", "input device: available.");
        bad("Microphone", "no input device.",
            "Plug one in, or choose an input device in the desktop's sound settings.");
    }

    void checkCloud() {
        if (!settings_.get(setting::iCloudSyncEnabled)) return note("Synchronisation", "off.");
        const auto address = stored_.cloudAddress();
        if (!address)
            return bad("Synchronisation", "the preferences can't be read.",
                       "Move ~/.config/Quorvi/preferences.plist away, or bring back a copy of it.");
        if (const auto problem = cloudAddressProblem(*address))
            return bad("Synchronisation", shownInEnglish(*problem),
                       "Choose another place under \"Account & sync\" in Settings.");
        note("Synchronisation", (address->empty() ? "local folder, not shared" : *address) +
                                    ". Test it: quorvi --cloud-release-check.");
    }

    void checkTray() {
        if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
            return note("Tray", "not checked, no display.");
        if (QSystemTrayIcon::isSystemTrayAvailable()) return good("Tray", "available.");
        note("Tray",
             "not available; Quorvi opens its window instead. On GNOME, the extension "
             "\"AppIndicator\" adds a tray.");
    }

    void checkKeyring() {
        if (!choice_.takesKey()) return note("Keyring", "no API key is needed.");
        if (choice_.validAddress().empty())
            return note("Keyring", "not checked, the speech service's address is not valid.");
        SecretServiceKeychain keychain(scheduler_);
        auto name = choice_.usesMainKey() ? mainKeyQuery() : otherKeyQuery(choice_.validAddress());
        auto status = keychain.exists(name, {});
        name.synchronizable = true;
        if (status != KeychainStatus::success) status = keychain.exists(name, {});
        switch (status) {
            case KeychainStatus::success:
                return good("Keyring", "API key: stored.");
            case KeychainStatus::itemNotFound:
                return bad("Keyring", "API key: not stored.",
                           "Store it in Quorvi's Settings, or with quorvi --store-key.");
            case KeychainStatus::interactionNotAllowed:
                return note("Keyring", "locked. The next dictation asks you to unlock it.");
            default:
                return bad(
                    "Keyring",
                    "Secret Service: no answer (" +
                        std::to_string(static_cast<std::int32_t>(status)) + ").",
                    "Install and start GNOME Keyring or KDE Wallet, or use QUORVI_API_KEY for "
                    "a single run.");
        }
    }

    void checkService() {
        if (!choice_.isFixed() && choice_.kind() == SpeechServiceKind::offline) {
            if (access(programBeside("quorvi-speech-service").c_str(), X_OK) == 0)
                return good("Speech service", "offline recogniser: installed.");
            return bad("Speech service", "the offline recogniser is not installed.",
                       "Install it: sudo apt install quorvi-speech-service");
        }
        std::string address;
        try {
            address =
                choice_.isFixed() ? serviceAddress(choice_.fixedAddress()) : choice_.address();
        } catch (const std::exception& error) {
            return bad("Speech service", shownInEnglish(error),
                       "Correct it in Quorvi's Settings, or in QUORVI_SERVICE: "
                       "https://host[:port].");
        }
        CurlTransport transport(scheduler_);
        std::optional<std::string> problem;
        bool done = false;
        auto asking = reach(transport, address, problem, done);
        asking.start();
        scheduler_.runUntil([&] { return done; }, 2 * patience);
        if (!done) problem = "no answer.";
        if (!problem) return good("Speech service", address + ": reachable.");
        bad("Speech service", address + ": " + *problem,
            "Check the connection to the network, its proxy and its firewall.");
    }

    static std::string environmentText(const char* name) {
        const char* value = std::getenv(name);
        return value ? value : "";
    }

    // Any HTTP answer counts: without a key it is a refusal.
    static Task<void> reach(CurlTransport& transport, std::string address,
                            std::optional<std::string>& problem, bool& done) {
        try {
            auto sending = transport.send(
                {.method = "GET", .url = address + "/v1/models", .timeout = patience}, {});
            const auto response = co_await sending;
            if (response.status == 0) problem = "the answer is not HTTP.";
        } catch (const std::exception& error) {
            problem = shownInEnglish(error);
        }
        done = true;
    }

    StoredPreferences stored_;
    LoopScheduler& scheduler_ = stored_.scheduler;
    Settings& settings_ = stored_.settings;
    const SpeechServiceChoice choice_{settings_, environmentText("QUORVI_SERVICE")};
    const DesktopCapabilities wayland_ = probeWayland();
    bool canInstallTap_ = false;
    bool needsUser_ = false;
};

}  // namespace

int runDoctor() {
    const auto english = installTranslation(QLocale(QLocale::English));  // as all that it prints
    return Doctor().run();
}

}  // namespace quorvi
