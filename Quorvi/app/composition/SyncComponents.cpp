#include "Quorvi/app/composition/SyncComponents.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "Quorvi/app/composition/CloudDatabases.h"
#include "Quorvi/app/composition/CloudPassword.h"
#include "Quorvi/app/composition/StoredFiles.h"
#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/platform/linux/folder/FolderCloudDatabase.h"
#include "Quorvi/platform/linux/folder/FolderComputers.h"
#include "Quorvi/platform/linux/folder/FolderMachine.h"
#include "Quorvi/platform/linux/secrets/SecretServiceKeychain.h"
#include "Quorvi/platform/linux/xdg/UserFolders.h"
#include "Quorvi/sync/CloudMessage.h"
#include "Quorvi/sync/CloudReleaseCheck.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"

namespace quorvi {

namespace {

SyncedStores syncedStores(AppModel& model, HistoryStore& history, CorrectionStore& corrections,
                          Preferences& preferences) {
    return {.history = history,
            .corrections = corrections,
            .preferences = preferences,
            .areInUse = [&model] { return isActive(model.stage()) || model.isChoosingShortcut(); }};
}

// Blocks.
std::vector<CloudComputer> computersIn(const std::filesystem::path& folder,
                                       const std::filesystem::path& machineFile) {
    const auto own = FolderMachine::idsIn(machineFile);
    std::vector<CloudComputer> computers;
    for (const auto& each : folderComputers(folder))
        computers.push_back({.id = each.id.string(),
                             .name = each.name,
                             .lastChange = Date::fromUnixSeconds(double(each.lastChange)),
                             .isThis = std::ranges::count(own, each.id) > 0});
    return computers;
}

}  // namespace

// Keeps the database while a task uses it.
class SyncComponents::Use {
public:
    explicit Use(SyncComponents& owner) : owner_(owner) { ++owner_.uses_; }
    ~Use() {
        if (--owner_.uses_ == 0) owner_.followSoon();
    }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

private:
    SyncComponents& owner_;
};

SyncComponents::SyncComponents(AppModel& model, HistoryStore& history, CorrectionStore& corrections,
                               Preferences& preferences, FileStore& files, Scheduler& scheduler,
                               std::vector<std::string_view> chosen)
    : stores_(syncedStores(model, history, corrections, preferences)),
      files_(files),
      scheduler_(scheduler),
      userData_(UserFolders::find().data) {
    startSync(std::move(chosen));
    addressChanges_ =
        Settings(preferences).onChange({&setting::cloudDatabase}, [this] { followSoon(); });
}

SyncComponents::~SyncComponents() = default;

// --- the present cloud ---

// Returns null for an invalid address, after a line on standard error, and for an unknown one.
std::unique_ptr<CloudDatabase> SyncComponents::openCloud() {
    if (!stores_.preferences.couldBeRead()) return nullptr;  // the address is not known
    cloudExecutor_.run(
        [address = address_, data = userData_] { removeUnusedCloud(address, data); });
    try {
        const auto makeKeychain = [this]() -> std::unique_ptr<Keychain> {
            return std::make_unique<SecretServiceKeychain>(scheduler_);
        };
        return openCloudDatabase(address_,
                                 {scheduler_, cloudExecutor_, makeKeychain, userData_, &aside_});
    } catch (const QuorviError& error) {
        std::fprintf(stderr, "quorvi: %s\n", shownInEnglish(error).c_str());
        return nullptr;
    }
}

void SyncComponents::startSync(std::vector<std::string_view> chosen) {
    address_ = Settings(stores_.preferences).get(setting::cloudDatabase);
    database_ = openCloud();
    checks_.emplace(scheduler_);
    sync_ = std::make_unique<AccountSync>(AccountSync::Environment{
        .stores = stores_,
        .scheduler = scheduler_,
        .database = database_.get(),
        .address = address_,
        .archive = {files_, journals_, syncArchiveFile(), disk_, scheduler_},
        .chosen = std::move(chosen)});
    syncChanges_ = sync_->onChange([this] {
        changes_.notify();
        followSoon();
    });
}

// In a turn of its own, since AccountSync may be on the stack.
void SyncComponents::followSoon() {
    if (!isShutDown_ && Settings(stores_.preferences).get(setting::cloudDatabase) != address_)
        scheduler_.post(lifetime_.guard([this] { follow(); }));
}

// Goes over to the cloud in the preferences. While that has to wait, a later change tries again.
// The executors do their jobs in order: the archive is read, and a folder is opened, after the
// present ones have been closed.
void SyncComponents::follow() {
    if (isShutDown_ || uses_ > 0 || sync_->isOpening() ||
        Settings(stores_.preferences).get(setting::cloudDatabase) == address_)
        return;
    checks_.reset();
    sync_->retire();
    syncChanges_ = {};
    sync_.reset();
    database_.reset();
    startSync({});
    changes_.notify();
}

Subscription SyncComponents::onChange(std::function<void()> observer) {
    return changes_.subscribe(std::move(observer));
}

void SyncComponents::shutdown() {
    isShutDown_ = true;
    sync_->shutdown();
}

// --- what the window asks for ---

std::optional<Message> SyncComponents::problem(const std::string& address) const {
    return cloudAddressProblem(address);
}

Task<bool> SyncComponents::storePassword(std::string address, Secret password,
                                         std::stop_token stop) {
    const auto keychain = std::make_shared<SecretServiceKeychain>(scheduler_);
    auto storing = inBackground(
        aside_, scheduler_,
        [keychain, address = std::move(address),
         password = std::make_shared<Secret>(std::move(password)),
         stop] { return storeCloudPassword(*keychain, address, *password, stop); },
        stop);
    const auto status = co_await storing;
    co_return status == KeychainStatus::success;
}

Task<std::optional<Message>> SyncComponents::check(std::stop_token stop) {
    if (!database_) co_return cloudAddressProblem(address_).value_or(sync_->status());
    const Use use(*this);
    Promise<std::optional<Message>> outcome(scheduler_);
    auto answer = outcome.future(stop);
    auto trying =
        checks_->start([&](std::stop_token end) { return tryOut(outcome, std::move(end)); });
    const std::stop_callback cancel(stop, [&trying] { trying.cancel(); });
    co_return co_await answer;
}

// After a stop it goes on without anybody waiting, to remove what it has written, as long as the
// cloud is the present one.
Task<void> SyncComponents::tryOut(Promise<std::optional<Message>> outcome, std::stop_token stop) {
    std::optional<Message> problem;
    try {
        auto trying = CloudReleaseCheck::tryOut(*database_, std::move(stop));
        const bool hasAccount = co_await trying;
        if (!hasAccount) problem = say::syncSignIn();
    } catch (const std::exception& error) {
        problem = cloudMessage(error);
    }
    outcome.resolve(std::move(problem));
}

bool SyncComponents::isSharedFolder() const {
    return database_ && !address_.empty() && !isServerAddress(address_);
}

Task<std::vector<CloudComputer>> SyncComponents::computers(std::stop_token stop) {
    if (!isSharedFolder()) co_return std::vector<CloudComputer>();
    auto listing = inBackground(
        cloudExecutor_, scheduler_,
        [folder = cloudFolder(address_), file = cloudDeviceFile(userData_)] {
            try {
                return computersIn(folder, file);
            } catch (const std::exception&) {
                return std::vector<CloudComputer>();
            }
        },
        std::move(stop));
    co_return co_await listing;
}

Task<void> SyncComponents::nameThisComputer(std::string name, std::stop_token stop) {
    if (!isSharedFolder()) co_return;
    auto naming = inBackground(
        cloudExecutor_, scheduler_,
        [name = std::move(name), folder = cloudFolder(address_),
         file = cloudDeviceFile(userData_)] {
            try {
                storeComputerName(computerNameFile(file), name);
                for (const auto& id : FolderMachine::idsIn(file))
                    if (std::filesystem::exists(folder / id.string()))
                        nameFolderComputer(folder / id.string(), computerNameFile(file));
            } catch (const std::exception&) {
                return;  // it keeps its name
            }
        },
        std::move(stop));
    co_await naming;
}

Task<std::optional<Message>> SyncComponents::removeComputer(std::string id, std::stop_token stop) {
    auto* folder = dynamic_cast<FolderCloudDatabase*>(database_.get());
    const auto which = Uuid::parse(id);
    if (!folder || !which) co_return std::nullopt;
    const Use use(*this);
    std::optional<Message> problem;
    try {
        auto removing = folder->removeComputer(*which, std::move(stop));
        co_await removing;
    } catch (const std::exception& error) {
        problem = cloudMessage(error);
    }
    co_return problem;
}

}  // namespace quorvi
