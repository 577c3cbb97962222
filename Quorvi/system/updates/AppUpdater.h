#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "Quorvi/system/updates/UpdateEnvironment.h"
#include "Quorvi/system/updates/UpdateSchedule.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/TaskScope.h"
#include "QuorviCore/messages/Message.h"
#include "QuorviCore/updates/Appcast.h"

namespace quorvi {

// How far the user's check for updates has got.
enum class UpdateStage {
    idle,
    checking,
    upToDate,
    available,    // waits for the user to begin the download
    downloading,  // also while the signature is verified
    ready,        // verified; waits for the user to install it
    opening,
    handedOver,  // the system's installer has it
    failed
};

// Finds new releases, downloads and verifies them, and hands them to the system's installer. A
// scheduled check, once a day, only publishes availableVersion(); a check by the user opens the
// window and continues there. Main thread; owned by the application, observed by the interface.
// Only the switch and the date of the last check survive a restart.
class AppUpdater {
public:
    explicit AppUpdater(UpdateEnvironment environment);
    AppUpdater(const AppUpdater&) = delete;
    AppUpdater& operator=(const AppUpdater&) = delete;

    // Called after any change of the state below; observers re-read it.
    [[nodiscard]] Subscription onChange(std::function<void()> observer) {
        return changes_.subscribe(std::move(observer));
    }

    // The display version of a release that a scheduled check has found, until the user downloads
    // it or closes the window.
    const std::optional<std::string>& availableVersion() const { return availableVersion_; }

    bool automaticChecks() const;
    void setAutomaticChecks(bool enabled);

    // Starts the user's check and shows the window. If the window is open it only comes to the
    // front.
    void check();

    // What the window shows.
    UpdateStage stage() const { return stage_; }
    const Message& message() const { return message_; }  // if upToDate, handedOver or failed
    const std::optional<AppcastItem>& update() const { return update_; }
    const Message& releaseNotes() const { return releaseNotes_; }  // safe markup
    std::uint64_t receivedBytes() const { return receivedBytes_; }
    const std::string& currentVersion() const { return environment_.configuration.currentVersion; }

    // The user's actions there; no-ops at any other stage than theirs.
    void download();
    void cancelDownload();
    void install();
    // Ends the user's check at any stage and deletes a package that was not handed over.
    void close();

    // Installed by the application's shell: shows the window, or brings it to the front.
    std::function<void()> showWindow;

private:
    bool isConfigured() const;
    Task<void> checkBySchedule(std::stop_token stop);
    Task<void> checkForUser(std::stop_token stop);
    Task<void> downloadForUser(std::stop_token stop);
    Task<void> installForUser(std::filesystem::path package);
    void publish(std::optional<std::string> version);
    void enter(UpdateStage stage, Message message = {});
    void removePackage();

    UpdateEnvironment environment_;
    Observable changes_;
    std::optional<std::string> availableVersion_;
    UpdateStage stage_ = UpdateStage::idle;
    Message message_;
    std::optional<AppcastItem> update_;
    Message releaseNotes_;
    std::uint64_t receivedBytes_ = 0;
    int downloads_ = 0;              // each has a folder of its own
    std::filesystem::path package_;  // downloaded and verified
    bool automaticChecks_;           // as last announced
    UpdateSchedule schedule_;
    Subscription preferencesChanges_;
    TaskHandle scheduledCheck_;
    TaskHandle session_;
    TaskScope tasks_;  // last: tasks end before what they use
};

}  // namespace quorvi
