#include "Quorvi/system/updates/AppUpdater.h"

#include <utility>

#include "Quorvi/settings/Settings.h"
#include "Quorvi/system/updates/UpdateFeed.h"
#include "Quorvi/system/updates/UpdatePackage.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"
#include "QuorviCore/updates/UpdateSignature.h"

namespace quorvi {

namespace {

Message upToDate(const UpdateChoice& choice, const std::string& current) {
    if (!choice.forNewerSystem) return say::updateNewest(current);
    const auto& item = *choice.forNewerSystem;
    return say::updateNeedsNewerSystem(item.displayVersion, item.minimumSystemVersion);
}

}  // namespace

AppUpdater::AppUpdater(UpdateEnvironment environment)
    : environment_(std::move(environment)),
      automaticChecks_(automaticChecks()),
      schedule_(environment_.scheduler, environment_.preferences,
                [this] {
                    if (stage_ != UpdateStage::idle) return;
                    scheduledCheck_.cancel();
                    scheduledCheck_ = tasks_.start(
                        [this](std::stop_token stop) { return checkBySchedule(stop); });
                }),
      tasks_(environment_.scheduler) {
    environment_.executor.run(
        [folder = environment_.configuration.folder] { removeUpdateFolder(folder); });
    preferencesChanges_ = environment_.preferences.onChange([this] {
        if (automaticChecks() == std::exchange(automaticChecks_, automaticChecks())) return;
        if (automaticChecks_ && isConfigured()) {
            schedule_.start();
        } else {
            schedule_.stop();
            scheduledCheck_.cancel();
        }
        changes_.notify();
    });
    if (automaticChecks_ && isConfigured()) schedule_.start();
}

bool AppUpdater::isConfigured() const {
    const auto& configuration = environment_.configuration;
    return isSecureAddress(configuration.feed) && updateKeyFromBase64(configuration.publicKey);
}

bool AppUpdater::automaticChecks() const {
    return Settings(environment_.preferences).get(setting::automaticUpdateChecks);
}

void AppUpdater::setAutomaticChecks(bool enabled) {
    Settings(environment_.preferences).set(setting::automaticUpdateChecks, enabled);
}

// Failures stay quiet: nobody has asked, and the next look follows in an hour.
Task<void> AppUpdater::checkBySchedule(std::stop_token stop) {
    try {
        auto reading = readUpdateFeed(environment_, stop);
        const auto choice = co_await reading;
        schedule_.noteChecked();
        throwIfStopped(stop);
        publish(choice.update ? std::optional(choice.update->displayVersion) : std::nullopt);
    } catch (const std::exception&) {
    }
}

void AppUpdater::check() {
    if (stage_ == UpdateStage::idle) {
        scheduledCheck_.cancel();
        if (isConfigured()) {
            enter(UpdateStage::checking);
            session_ = tasks_.start([this](std::stop_token stop) { return checkForUser(stop); });
        } else {
            enter(UpdateStage::failed, say::updatesNotConfigured());
        }
    }
    if (showWindow) showWindow();
}

Task<void> AppUpdater::checkForUser(std::stop_token stop) {
    try {
        auto reading = readUpdateFeed(environment_, stop);
        const auto choice = co_await reading;
        schedule_.noteChecked();
        throwIfStopped(stop);
        if (!choice.update) {
            enter(UpdateStage::upToDate, upToDate(choice, currentVersion()));
            co_return;
        }
        auto readingNotes = readReleaseNotes(environment_, *choice.update, stop);
        auto notes = co_await readingNotes;
        throwIfStopped(stop);
        update_ = choice.update;
        releaseNotes_ = std::move(notes);
        enter(UpdateStage::available);
    } catch (const std::exception& error) {
        if (!stop.stop_requested()) enter(UpdateStage::failed, messageOf(error));
    }
}

void AppUpdater::download() {
    if (stage_ != UpdateStage::available) return;
    receivedBytes_ = 0;
    publish(std::nullopt);
    enter(UpdateStage::downloading);
    session_ = tasks_.start([this](std::stop_token stop) { return downloadForUser(stop); });
}

Task<void> AppUpdater::downloadForUser(std::stop_token stop) {
    try {
        const auto progress = [this, stop](std::uint64_t bytes) {
            if (stop.stop_requested()) return;
            receivedBytes_ = bytes;
            changes_.notify();
        };
        auto folder = environment_.configuration.folder / std::to_string(++downloads_);
        auto downloading =
            downloadUpdate(environment_, *update_, std::move(folder), progress, stop);
        package_ = co_await downloading;
        receivedBytes_ = update_->length;
        enter(UpdateStage::ready);
    } catch (const std::exception& error) {
        if (!stop.stop_requested()) enter(UpdateStage::failed, messageOf(error));
    }
}

void AppUpdater::cancelDownload() {
    if (stage_ != UpdateStage::downloading) return;
    session_.cancel();
    enter(UpdateStage::available);
}

void AppUpdater::install() {
    if (stage_ != UpdateStage::ready) return;
    enter(UpdateStage::opening);
    // From here on the file is no longer this object's to delete: the installer may have it.
    const auto package = std::exchange(package_, {});
    tasks_.start([this, package](std::stop_token) { return installForUser(package); });
}

Task<void> AppUpdater::installForUser(std::filesystem::path package) {
    try {
        auto verifying = verifyUpdate(environment_, *update_, package);
        co_await verifying;
        auto opening = environment_.installer.open(package);
        co_await opening;
        if (stage_ == UpdateStage::opening)
            enter(UpdateStage::handedOver, say::updateHandedOver(update_->displayVersion));
    } catch (const std::exception& error) {
        if (stage_ == UpdateStage::opening) enter(UpdateStage::failed, messageOf(error));
    }
}

void AppUpdater::close() {
    if (stage_ == UpdateStage::idle) return;
    session_.cancel();
    removePackage();
    update_.reset();
    releaseNotes_ = {};
    publish(std::nullopt);
    enter(UpdateStage::idle);
}

void AppUpdater::publish(std::optional<std::string> version) {
    if (availableVersion_ == version) return;
    availableVersion_ = std::move(version);
    changes_.notify();
}

void AppUpdater::enter(UpdateStage stage, Message message) {
    stage_ = stage;
    message_ = std::move(message);
    changes_.notify();
}

void AppUpdater::removePackage() {
    if (package_.empty()) return;
    environment_.executor.run([folder = package_.parent_path()] { removeUpdateFolder(folder); });
    package_.clear();
}

}  // namespace quorvi
