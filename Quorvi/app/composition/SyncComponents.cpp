#include "Quorvi/app/composition/SyncComponents.h"

#include <cstdio>
#include <stdexcept>

#include "Quorvi/app/composition/CloudDatabases.h"
#include "Quorvi/app/composition/StoredFiles.h"
#include "Quorvi/app/composition/UnusableCloudDatabase.h"
#include "Quorvi/dictation/PreferenceKeys.h"
#include "Quorvi/platform/linux/secrets/SecretServiceKeychain.h"
#include "Quorvi/platform/linux/xdg/UserFolders.h"

namespace quorvi {

namespace {

std::unique_ptr<CloudDatabase> cloud(const Preferences& preferences, Scheduler& scheduler,
                                     Executor& executor) {
    const auto address = preferences.string(preferenceKey::cloudDatabase).value_or("");
    try {
        const auto makeKeychain = [&]() -> std::unique_ptr<Keychain> {
            return std::make_unique<SecretServiceKeychain>(scheduler);
        };
        return openCloudDatabase(address,
                                 {scheduler, executor, makeKeychain, UserFolders::find().data});
    } catch (const std::invalid_argument& error) {
        std::fprintf(stderr, "quorvi: %s\n", error.what());
        return std::make_unique<UnusableCloudDatabase>(error.what());
    }
}

}  // namespace

SyncComponents::SyncComponents(AppModel& model, HistoryStore& history, CorrectionStore& corrections,
                               Preferences& preferences, FileStore& files, Scheduler& scheduler,
                               std::vector<std::string_view> chosen)
    : database_(cloud(preferences, scheduler, cloudExecutor_)),
      sync_(std::make_unique<AccountSync>(
          AccountSync::Environment{model,
                                   history,
                                   corrections,
                                   preferences,
                                   scheduler,
                                   *database_,
                                   {files, journals_, syncArchiveFile(), disk_, scheduler},
                                   std::move(chosen)})) {}

}  // namespace quorvi
