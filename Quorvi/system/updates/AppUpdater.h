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
#include "QuorviCore/updates/Appcast.h"

namespace quorvi {

// What the user's check has come to.
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

// Looks for releases of this program and takes the user from one to the system's installer. Once a
// day it looks by itself: what it finds is only published as availableVersion() and never shown in
// a window. A check that the user asks for opens the window and goes on there. Main thread; owned
// by the application and observed by the interface. Nothing of it but the switch and the date of
// the last check survives a restart.
class AppUpdater {
public:
    explicit AppUpdater(UpdateEnvironment environment);
    AppUpdater(const AppUpdater&) = delete;
    AppUpdater& operator=(const AppUpdater&) = delete;

    // Told after any change of the state below; observers re-read it.
    [[nodiscard]] Subscription onChange(std::function<void()> observer) {
        return changes_.subscribe(std::move(observer));
    }

    // The display version of a release that a scheduled check has found and the user has not
    // attended to.
    const std::optional<std::string>& availableVersion() const { return availableVersion_; }

    bool automaticChecks() const;
    void setAutomaticChecks(bool enabled);

    // The user's check. Shows the window; one that is already open is only brought to the front.
    void check();

    // What the window shows.
    UpdateStage stage() const { return stage_; }
    const std::string& message() const { return message_; }  // when up to date, over, or failed
    const std::optional<AppcastItem>& update() const { return update_; }
    const std::string& releaseNotes() const { return releaseNotes_; }  // safe markup
    std::uint64_t receivedBytes() const { return receivedBytes_; }
    const std::string& currentVersion() const { return environment_.configuration.currentVersion; }

    // What the user does there. Each does nothing at the wrong stage.
    void download();
    void cancelDownload();
    void install();
    // Ends the user's check wherever it is; a package that was not handed over is deleted.
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
    void enter(UpdateStage stage, std::string message = {});
    void removePackage();

    UpdateEnvironment environment_;
    Observable changes_;
    std::optional<std::string> availableVersion_;
    UpdateStage stage_ = UpdateStage::idle;
    std::string message_;
    std::optional<AppcastItem> update_;
    std::string releaseNotes_;
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
