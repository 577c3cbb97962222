#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/platform/Surroundings.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "QuorviCore/async/Lifetime.h"

namespace quorvi {

// The adapters of a Linux desktop, put together. Lives on the main thread, outlives the controller
// that stands on it, and ends its threads when it is destroyed.
class LinuxDesktop {
public:
    // `clipboardKeeper` is the program that goes on offering the clipboard when this one is gone;
    // without one the clipboard goes, too.
    explicit LinuxDesktop(Scheduler& scheduler, std::string clipboardKeeper = {});
    ~LinuxDesktop();
    LinuxDesktop(const LinuxDesktop&) = delete;
    LinuxDesktop& operator=(const LinuxDesktop&) = delete;

    // What a controller stands on, with the caller's stores and windows. The caller adds the
    // service, and the synchronisation.
    AppModel::Environment environment(LocalKeyMonitor& localKeys, Preferences& preferences,
                                      KeyStore& keyStore, HistoryStore& history,
                                      CorrectionStore& corrections);

    // Where the user's API key is kept, in the desktop's keychain. The desktop outlives it.
    std::unique_ptr<KeyStore> keychainStore(Preferences& preferences);

    // What a history in that file stands on.
    HistoryStore::Environment historyEnvironment(Preferences& preferences,
                                                 std::filesystem::path file);

    // Keeps the history from being read and written while it lives.
    std::unique_ptr<SerialExecutor::Hold> holdHistory();

    // Told when the desktop has granted or withdrawn something: accessibility, a microphone.
    [[nodiscard]] Subscription onPermissionsChanged(std::function<void()> observer) {
        return permissionsChanged_.subscribe(std::move(observer));
    }

    // Hands what this program still offers on the clipboard over to the keeper, so that quitting
    // takes nothing from the user. Resumes when that is done, or when it is clear that it can't be.
    Task<void> leaveClipboard();

    // What surrounds a window, as last known; asking has a fresh look taken, which is told of when
    // it finds something else. Never block.
    Surroundings surroundings();
    [[nodiscard]] Subscription onSurroundingsChanged(std::function<void()> observer) {
        return surroundingsChanged_.subscribe(std::move(observer));
    }

private:
    struct Adapters;
    void lookAround();

    Scheduler& scheduler_;
    Observable permissionsChanged_;
    Observable surroundingsChanged_;
    Surroundings surroundings_;
    Lifetime lifetime_;
    std::unique_ptr<Adapters> adapters_;
};

}  // namespace quorvi
