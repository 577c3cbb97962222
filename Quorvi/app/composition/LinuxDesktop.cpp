#include "Quorvi/app/composition/LinuxDesktop.h"

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "Quorvi/app/composition/DisplayAdapters.h"
#include "Quorvi/app/composition/StoredFiles.h"
#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"
#include "Quorvi/platform/linux/curl/CurlTransport.h"
#include "Quorvi/platform/linux/gio/GioNetwork.h"
#include "Quorvi/platform/linux/gio/SystemClockChanges.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "Quorvi/platform/linux/posix/PosixRecordingFiles.h"
#include "Quorvi/platform/linux/posix/PosixServiceProgram.h"
#include "Quorvi/platform/linux/pulse/PulseAudioInput.h"
#include "Quorvi/platform/linux/pulse/PulseConnection.h"
#include "Quorvi/platform/linux/pulse/PulsePermissions.h"
#include "Quorvi/platform/linux/pulse/PulseSoundOutput.h"
#include "Quorvi/platform/linux/secrets/SecretServiceKeychain.h"
#include "Quorvi/platform/linux/x11/desktop/X11Bars.h"
#include "Quorvi/platform/linux/x11/desktop/X11Compositing.h"
#include "Quorvi/platform/linux/x11/desktop/X11Settings.h"
#include "Quorvi/platform/linux/x11/keyboard/X11InputSupport.h"
#include "Quorvi/platform/linux/xdg/SettingsProgram.h"
#include "Quorvi/platform/linux/xdg/UserFolders.h"
#include "Quorvi/system/KeychainStore.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

// How long quitting waits for another program to take the clipboard.
constexpr Duration handoverPatience = 1s;
constexpr Duration handoverStep = 5ms;

constexpr std::size_t longestPasteChords = 64 * 1024;

// Looks for the programs of the desktop's settings, on the disk.
bool hasSettings(PrivacyPane pane) {
    const char* desktops = std::getenv("XDG_CURRENT_DESKTOP");
    const char* path = std::getenv("PATH");
    return hasSettingsProgram(pane, desktops ? desktops : "", path ? path : "");
}

}  // namespace

// In the order of dependence: an executor ends before the adapters that its jobs use. The disk's
// ends last, so that a deletion asked for at the end is still done.
struct LinuxDesktop::Adapters {
    // `permissionsChanged` may be called on any thread.
    Adapters(Scheduler& scheduler, std::string clipboardKeeper, std::string speechProgram,
             const DesktopCapabilities& capabilities,
             const std::function<void()>& permissionsChanged)
        : display(DisplayAdapters::make(capabilities, scheduler, std::move(clipboardKeeper),
                                        permissionsChanged)),
          accessibility([this] { return inputHookIsPossible.load(); }, permissionsChanged),
          sound(scheduler),
          audioInput(sound, scheduler),
          soundOutput(sound),
          permissions(sound, scheduler),
          transport(scheduler),
          recogniser(scheduler, probes, std::move(speechProgram), {"--supervised", "--punctuate"}),
          network(scheduler),
          clockChanges(scheduler),
          calendar(clockChanges, history, scheduler) {
        microphoneChanges = sound.changed().subscribe(permissionsChanged);
        probes.run([this, permissionsChanged] {
            inputHookIsPossible = display->inputHookIsPossible();
            rightAltIsAltGr = x11RightAltIsAltGr();
            hasMicrophoneSettings = hasSettings(PrivacyPane::microphone);
            hasAccessibilitySettings = hasSettings(PrivacyPane::accessibility);
            permissionsChanged();
        });
    }

    std::atomic<bool> inputHookIsPossible{false};
    std::atomic<bool> rightAltIsAltGr{false};
    std::atomic<bool> hasMicrophoneSettings{true};
    std::atomic<bool> hasAccessibilitySettings{true};
    SerialExecutor disk{"disk"};
    PosixFileStore files;
    PosixRecordingFiles recordings{UserFolders::find().recordings,
                                   std::filesystem::temp_directory_path() / "VeskRecordings"};
    // Of its own: writing a long history must not hold up a recording.
    SerialExecutor history{"history", SerialExecutor::Afterwards::giveMemoryBack};
    std::unique_ptr<DisplayAdapters> display;
    AtspiAccessibility accessibility;
    SerialExecutor accessibilityQueries{"accessibility"};
    PulseConnection sound;
    PulseAudioInput audioInput;
    PulseSoundOutput soundOutput;
    PulsePermissions permissions;
    CurlTransport transport;
    PosixServiceProgram recogniser;
    GioNetwork network;
    SystemClockChanges clockChanges;
    SystemCalendar calendar;
    Subscription microphoneChanges;
    std::unique_ptr<SecretServiceKeychain> keychain;  // when it is used
    SerialExecutor secrets{"secrets"};
    SerialExecutor probes{"probes"};
};

LinuxDesktop::LinuxDesktop(Scheduler& scheduler, std::string clipboardKeeper,
                           std::string recogniser, const DesktopCapabilities& capabilities)
    : scheduler_(scheduler),
      adapters_(std::make_unique<Adapters>(
          scheduler, std::move(clipboardKeeper), std::move(recogniser), capabilities,
          [&scheduler, report = lifetime_.guard([this] { permissionsChanged_.notify(); })] {
              scheduler.post(report);
          })) {
    readPasteChords();
    lookAround();
}

LinuxDesktop::~LinuxDesktop() = default;

Task<void> LinuxDesktop::leaveClipboard() {
    auto& pasteboard = adapters_->display->pasteboard();
    const auto ours = pasteboard.changeCount();
    auto handing = pasteboard.handOver();
    const bool isHandedOver = co_await handing;
    if (!isHandedOver) co_return;
    const auto latest = scheduler_.now() + handoverPatience;
    while (pasteboard.changeCount() == ours && scheduler_.now() < latest) {
        auto pause = sleepFor(scheduler_, handoverStep, {});
        co_await pause;
    }
}

std::unique_ptr<KeyStore> LinuxDesktop::keychainStore(Preferences& preferences) {
    auto& a = *adapters_;
    a.keychain = std::make_unique<SecretServiceKeychain>(scheduler_);
    return std::make_unique<KeychainStore>(*a.keychain, preferences, a.secrets, scheduler_);
}

SystemCalendar& LinuxDesktop::calendar() {
    return adapters_->calendar;
}

ServiceKeyStore::Factory LinuxDesktop::otherKeys(Preferences& preferences) {
    return [this, &preferences](const std::string& address) {
        auto& a = *adapters_;
        return std::make_unique<KeychainStore>(*a.keychain, preferences, a.secrets, scheduler_,
                                               address);
    };
}

std::unique_ptr<SerialExecutor::Hold> LinuxDesktop::holdHistory() {
    return std::make_unique<SerialExecutor::Hold>(adapters_->history);
}

KeyConsent* LinuxDesktop::keyConsent() {
    return adapters_->display->keyConsent();
}

bool LinuxDesktop::hasSettingsFor(PrivacyPane pane) const {
    return pane == PrivacyPane::microphone ? adapters_->hasMicrophoneSettings
                                           : adapters_->hasAccessibilitySettings;
}

bool LinuxDesktop::rightAltIsAltGr() const {
    return adapters_->rightAltIsAltGr;
}

Surroundings LinuxDesktop::surroundings() {
    lookAround();
    return surroundings_;
}

void LinuxDesktop::readPasteChords() {
    auto use = lifetime_.guard([this](const std::string& lines) {
        adapters_->display->setPasteChords(PasteChords(lines));
    });
    adapters_->probes.run([use = std::move(use), &scheduler = scheduler_] {
        std::ifstream file(pasteChordsFile());
        std::string lines(longestPasteChords, '\0');
        file.read(lines.data(), static_cast<std::streamsize>(lines.size()));
        lines.resize(static_cast<std::size_t>(file.gcount()));
        scheduler.post([use, lines = std::move(lines)] { use(lines); });
    });
}

void LinuxDesktop::lookAround() {
    auto report = lifetime_.guard([this](const Surroundings& seen) {
        if (seen == surroundings_) return;
        surroundings_ = seen;
        surroundingsChanged_.notify();
    });
    adapters_->probes.run([&a = *adapters_, report = std::move(report), &scheduler = scheduler_] {
        a.rightAltIsAltGr = x11RightAltIsAltGr();
        Surroundings seen{.isComposited = x11IsComposited(),
                          .reducesMotion = x11ReducesMotion(),
                          .bars = x11Bars()};
        scheduler.post([report, seen = std::move(seen)] { report(seen); });
    });
}

HistoryStore::Environment LinuxDesktop::historyEnvironment(Preferences& preferences,
                                                           std::filesystem::path file) {
    auto& a = *adapters_;
    return {.preferences = preferences,
            .files = a.files,
            .path = std::move(file),
            .executor = a.history,
            .scheduler = scheduler_,
            .pasteboard = a.display->pasteboard(),
            .calendar = [&a] { return a.calendar.get(); }};
}

AppModel::Environment LinuxDesktop::environment(LocalKeyMonitor& localKeys,
                                                Preferences& preferences, KeyStore& keyStore,
                                                HistoryStore& history,
                                                CorrectionStore& corrections) {
    auto& a = *adapters_;
    return {.scheduler = scheduler_,
            .accessibilityQueries = a.accessibilityQueries,
            .disk = a.disk,
            .tap = a.display->tap(),
            .poster = a.display->poster(),
            .accessibility = a.accessibility,
            .workspace = a.display->workspace(),
            .pasteboard = a.display->pasteboard(),
            .audioInput = a.audioInput,
            .recordings = a.recordings,
            .soundOutput = a.soundOutput,
            .permissions = a.permissions,
            .localKeys = localKeys,
            .preferences = preferences,
            .keyStore = keyStore,
            .transport = a.transport,
            .history = history,
            .corrections = corrections,
            .offlineProgram = &a.recogniser,
            .network = &a.network,
            .committer = a.display->committer(),
            .desktopShortcut = a.display->shortcut(),
            .typing = a.display->seesAllKeys() ? nullptr : &a.accessibility};
}

}  // namespace quorvi
