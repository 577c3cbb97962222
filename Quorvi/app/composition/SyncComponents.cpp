#include "Quorvi/app/composition/SyncComponents.h"

#include <cstdio>

#include "Quorvi/app/composition/CloudDatabases.h"
#include "Quorvi/app/composition/StoredFiles.h"
#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/platform/linux/secrets/SecretServiceKeychain.h"
#include "Quorvi/platform/linux/xdg/UserFolders.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "QuorviCore/Error.h"

namespace quorvi {

namespace {

// Returns null for an invalid address, after a line on standard error, and for an unknown one.
std::unique_ptr<CloudDatabase> openCloud(Preferences& preferences, Scheduler& scheduler,
                                         Executor& executor) {
    if (!preferences.couldBeRead()) return nullptr;  // the address is not known
    const auto address = Settings(preferences).get(setting::cloudDatabase);
    const auto userData = UserFolders::find().data;
    executor.run([address, userData] { removeUnusedCloud(address, userData); });
    try {
        const auto makeKeychain = [&]() -> std::unique_ptr<Keychain> {
            return std::make_unique<SecretServiceKeychain>(scheduler);
        };
        return openCloudDatabase(address, {scheduler, executor, makeKeychain, userData});
    } catch (const QuorviError& error) {
        std::fprintf(stderr, "quorvi: %s\n", shownInEnglish(error).c_str());
        return nullptr;
    }
}

SyncedStores syncedStores(AppModel& model, HistoryStore& history, CorrectionStore& corrections,
                          Preferences& preferences) {
    return {.history = history,
            .corrections = corrections,
            .preferences = preferences,
            .areInUse = [&model] { return isActive(model.stage()) || model.isChoosingShortcut(); }};
}

}  // namespace

SyncComponents::SyncComponents(AppModel& model, HistoryStore& history, CorrectionStore& corrections,
                               Preferences& preferences, FileStore& files, Scheduler& scheduler,
                               std::vector<std::string_view> chosen)
    : database_(openCloud(preferences, scheduler, cloudExecutor_)),
      sync_(std::make_unique<AccountSync>(AccountSync::Environment{
          .stores = syncedStores(model, history, corrections, preferences),
          .scheduler = scheduler,
          .database = database_.get(),
          .address = Settings(preferences).get(setting::cloudDatabase),
          .archive = {files, journals_, syncArchiveFile(), disk_, scheduler},
          .chosen = std::move(chosen)})) {}

}  // namespace quorvi
