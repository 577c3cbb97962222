#include "Quorvi/platform/linux/folder/FolderCloudDatabase.h"

#include <chrono>
#include <mutex>
#include <utility>
#include <vector>

#include "Quorvi/platform/linux/folder/FolderCloud.h"
#include "Quorvi/platform/linux/folder/FolderWatch.h"
#include "QuorviCore/async/Async.h"
#include "QuorviCore/async/Future.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

// So long changes are collected before this machine's files are rewritten without what is outdated.
constexpr auto untilCompaction = 30s;

// For the executor: calls `tell` on the main thread if there is something to compact after `work`.
template <class Tell, class Work>
auto noticing(FolderCloud& cloud, Scheduler& scheduler, Tell tell, Work work) {
    struct Notice {
        ~Notice() {
            if (cloud.isOutdated()) scheduler.post(tell);
        }
        FolderCloud& cloud;
        Scheduler& scheduler;
        Tell& tell;
    } const notice{cloud, scheduler, tell};
    return work();
}

void compact(FolderCloud& cloud) {
    try {
        if (cloud.isOutdated()) cloud.compact();
    } catch (const std::exception&) {
        // The next access tries again.
    }
}

}  // namespace

// Collects saves while the disk is busy, to write them together.
struct FolderCloudDatabase::Saves {
    void carryOut(FolderCloud& cloud) {
        std::vector<std::vector<CloudRecord>> taken;
        std::vector<Promise<std::vector<CloudSaveResult>>> answers;
        {
            std::lock_guard lock(mutex);
            taken.swap(batches);
            answers.swap(promises);
        }
        if (taken.empty()) return;
        auto outcomes = cloud.saveTogether(std::move(taken));
        for (std::size_t i = 0; i < outcomes.size(); ++i) {
            if (outcomes[i].failure)
                answers[i].reject(outcomes[i].failure);
            else
                answers[i].resolve(std::move(outcomes[i].results));
        }
    }

    std::mutex mutex;  // guards the rest
    std::vector<std::vector<CloudRecord>> batches;
    std::vector<Promise<std::vector<CloudSaveResult>>> promises;
};

FolderCloudDatabase::FolderCloudDatabase(Scheduler& scheduler, Executor& executor, Place place)
    : scheduler_(scheduler),
      executor_(executor),
      folder_(place.folder),
      cloud_(std::make_shared<FolderCloud>(std::move(place.folder), std::move(place.deviceFile),
                                           FolderCloud::Limits(), place.isShared)),
      saves_(std::make_shared<Saves>()) {}

// On a network mount even closing the files, and ending the watch, may block.
FolderCloudDatabase::~FolderCloudDatabase() {
    executor_.run([cloud = std::move(cloud_),
                   watch = std::shared_ptr<FolderWatch>(std::move(watch_))]() mutable {
        watch.reset();
        compact(*cloud);
    });
}

void FolderCloudDatabase::compactSoon() {
    if (std::exchange(isToCompact_, true)) return;
    compaction_ = scheduler_.after(untilCompaction, [this] {
        isToCompact_ = false;
        executor_.run([cloud = cloud_] { compact(*cloud); });
    });
}

template <class Work>
auto FolderCloudDatabase::run(Work work, std::stop_token stop) {
    return inBackground(
        executor_, scheduler_,
        [cloud = cloud_, &scheduler = scheduler_, stop,
         tell = lifetime_.guard([this] { compactSoon(); }), work = std::move(work)]() mutable {
            throwIfStopped(stop);
            return noticing(*cloud, scheduler, tell, [&] { return work(*cloud); });
        },
        stop);
}

Task<CloudAccountStatus> FolderCloudDatabase::accountStatus(std::stop_token stop) {
    return run(
        [](FolderCloud& cloud) {
            cloud.owner();
            return CloudAccountStatus::available;
        },
        stop);
}

Task<std::string> FolderCloudDatabase::userRecordName(std::stop_token stop) {
    auto asking = run([](FolderCloud& cloud) { return cloud.owner(); }, stop);
    auto owner = co_await asking;
    const bool isAnother = !owner_.empty() && owner != owner_;
    owner_ = owner;
    // The folder has been replaced by another one.
    if (isAnother)
        scheduler_.post([weak = std::weak_ptr(accountChange_)] {
            if (const auto observers = weak.lock()) observers->notify();
        });
    co_return owner;
}

Task<void> FolderCloudDatabase::saveZone(std::string zone, std::stop_token stop) {
    return run([zone](FolderCloud& cloud) { cloud.saveZone(zone); }, stop);
}

Task<void> FolderCloudDatabase::deleteZone(std::string zone, std::stop_token stop) {
    return run([zone](FolderCloud& cloud) { cloud.deleteZone(zone); }, stop);
}

Task<std::vector<CloudSaveResult>> FolderCloudDatabase::saveRecords(
    std::vector<CloudRecord> records, std::stop_token stop) {
    throwIfStopped(stop);
    Promise<std::vector<CloudSaveResult>> promise(scheduler_);
    auto saving = promise.future(stop);
    {
        std::lock_guard lock(saves_->mutex);
        saves_->batches.push_back(std::move(records));
        saves_->promises.push_back(promise);
    }
    executor_.run([cloud = cloud_, &scheduler = scheduler_, saves = saves_,
                   tell = lifetime_.guard([this] { compactSoon(); })] {
        noticing(*cloud, scheduler, tell, [&] { saves->carryOut(*cloud); });
    });
    co_return co_await saving;
}

Task<CloudRecord> FolderCloudDatabase::fetchRecord(CloudRecordID id, std::stop_token stop) {
    return run([id](FolderCloud& cloud) { return cloud.fetchRecord(id); }, stop);
}

Task<CloudZoneChanges> FolderCloudDatabase::zoneChanges(std::string token, std::stop_token stop) {
    return run([token](FolderCloud& cloud) { return cloud.zoneChanges(token); }, stop);
}

Task<CloudRecordChanges> FolderCloudDatabase::recordChanges(std::string zone, std::string token,
                                                            std::stop_token stop) {
    return run([zone, token](FolderCloud& cloud) { return cloud.recordChanges(zone, token); },
               stop);
}

Task<void> FolderCloudDatabase::saveSubscription(std::string, std::stop_token stop) {
    const auto changed = [&scheduler = scheduler_, weak = std::weak_ptr(remoteChange_)] {
        scheduler.post([weak] {
            if (const auto observers = weak.lock()) observers->notify();
        });
    };
    // On a network mount this may block as well.
    auto watching = run(
        [changed, folder = folder_](FolderCloud& cloud) {
            return std::make_unique<FolderWatch>(folder, cloud.ownFolder().filename().string(),
                                                 changed);
        },
        stop);
    watch_ = co_await watching;
}

Subscription FolderCloudDatabase::onRemoteChange(std::function<void()> observer) {
    return remoteChange_->subscribe(std::move(observer));
}

Subscription FolderCloudDatabase::onAccountChange(std::function<void()> observer) {
    return accountChange_->subscribe(std::move(observer));
}

Task<void> FolderCloudDatabase::removeComputer(Uuid other, std::stop_token stop) {
    return run(
        [other](FolderCloud& cloud) {
            cloud.remove(other);
            cloud.compact();
        },
        stop);
}

}  // namespace quorvi
