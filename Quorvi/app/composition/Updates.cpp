#include "Quorvi/app/composition/Updates.h"

#include <QStandardPaths>
#include <QSysInfo>
#include <filesystem>

#include "Quorvi/platform/linux/curl/CurlDownloader.h"
#include "Quorvi/platform/linux/gio/GioUpdateInstaller.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"

namespace quorvi {

namespace {

UpdateConfiguration configuration() {
    const std::filesystem::path cache =
        QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation).toStdString();
    return {.feed = QUORVI_UPDATE_FEED,
            .publicKey = QUORVI_UPDATE_PUBLIC_KEY,
            .currentVersion = QUORVI_VERSION,
            .systemVersion = QSysInfo::productVersion().toStdString(),
            .folder = cache / "Quorvi" / "updates"};
}

}  // namespace

// In the order of dependence. The executor is destroyed last and so finishes pending deletions.
struct Updates::Adapters {
    explicit Adapters(Scheduler& scheduler)
        : downloader(scheduler), installer(executor, scheduler) {}

    SerialExecutor executor{"updates"};
    CurlDownloader downloader;
    GioUpdateInstaller installer;
};

Updates::Updates(Scheduler& scheduler, Preferences& preferences)
    : adapters_(std::make_unique<Adapters>(scheduler)),
      updater_(std::make_unique<AppUpdater>(UpdateEnvironment{.scheduler = scheduler,
                                                              .executor = adapters_->executor,
                                                              .preferences = preferences,
                                                              .downloader = adapters_->downloader,
                                                              .installer = adapters_->installer,
                                                              .configuration = configuration()})) {
    updater_->showWindow = [this] { showWindow(); };
}

Updates::~Updates() = default;

void Updates::showWindow() {
    if (!window_) window_ = std::make_unique<UpdateWindow>(*updater_);
    window_->present();
}

}  // namespace quorvi
