#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/history/SystemCalendar.h"
#include "Quorvi/platform/KeyConsent.h"
#include "Quorvi/platform/Surroundings.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/wayland/probe/WaylandProbe.h"
#include "QuorviCore/async/Lifetime.h"

namespace quorvi {

// All adapters of a Linux desktop. Main thread; outlives the controller that uses them. The
// destructor ends their threads.
class LinuxDesktop {
public:
    // `clipboardKeeper` is the path of the program that offers the clipboard after this one has
    // ended; if empty, the clipboard is lost then.
    // `recogniser` is the path of the offline speech service; it need not be there.
    // `capabilities` are this desktop's, as the caller has found them.
    explicit LinuxDesktop(Scheduler& scheduler, std::string clipboardKeeper = {},
                          std::string recogniser = {},
                          const DesktopCapabilities& capabilities = probeWayland());
    ~LinuxDesktop();
    LinuxDesktop(const LinuxDesktop&) = delete;
    LinuxDesktop& operator=(const LinuxDesktop&) = delete;

    // The controller's environment with the caller's stores. The caller adds the service and the
    // synchronisation.
    AppModel::Environment environment(LocalKeyMonitor& localKeys, Preferences& preferences,
                                      KeyStore& keyStore, HistoryStore& history,
                                      CorrectionStore& corrections);

    // The API key in the desktop's keyring. This object outlives the result.
    std::unique_ptr<KeyStore> keychainStore(Preferences& preferences);
    // Makes stores of the keys of other speech services there. It and its results end before this
    // object.
    ServiceKeyStore::Factory otherKeys(Preferences& preferences);

    // The environment of a history in that file.
    HistoryStore::Environment historyEnvironment(Preferences& preferences,
                                                 std::filesystem::path file);

    SystemCalendar& calendar();

    // Holds all reading and writing of the history back while the result lives.
    std::unique_ptr<SerialExecutor::Hold> holdHistory();

    // Notifies of a change of the permissions: accessibility, a microphone.
    [[nodiscard]] Subscription onPermissionsChanged(std::function<void()> observer) {
        return permissionsChanged_.subscribe(std::move(observer));
    }

    // Hands the clipboard over to the keeper, so that it survives this program. Resumes when that
    // is done or has failed.
    Task<void> leaveClipboard();

    // The user's leave to press keys; null where none is needed. This object outlives it.
    KeyConsent* keyConsent();

    // Whether this desktop has settings for the subject that can be opened, as known at the start.
    bool hasSettingsFor(PrivacyPane pane) const;

    // Whether the layout made AltGr of the right Alt key when last looked at: at the start and with
    // the surroundings.
    bool rightAltIsAltGr() const;

    // Returns the last known surroundings without blocking, and starts a new look, which notifies
    // the observers if it finds a change.
    Surroundings surroundings();
    [[nodiscard]] Subscription onSurroundingsChanged(std::function<void()> observer) {
        return surroundingsChanged_.subscribe(std::move(observer));
    }

private:
    struct Adapters;
    void readPasteChords();
    void lookAround();

    Scheduler& scheduler_;
    Observable permissionsChanged_;
    Observable surroundingsChanged_;
    Surroundings surroundings_;
    Lifetime lifetime_;
    std::unique_ptr<Adapters> adapters_;
};

}  // namespace quorvi
