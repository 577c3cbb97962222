#include "Quorvi/app/Synchronisation.h"

#include <cstdio>
#include <stdexcept>

#include "Quorvi/app/CloudDatabases.h"
#include "Quorvi/app/StoredFiles.h"
#include "Quorvi/app/UnusableCloudDatabase.h"
#include "Quorvi/dictation/PreferenceKeys.h"
#include "Quorvi/platform/linux/UserFolders.h"

namespace quorvi {

namespace {

std::unique_ptr<CloudDatabase> cloud(const Preferences& preferences, Scheduler& scheduler,
                                     Executor& executor, Keychain& keychain) {
    const auto address = preferences.string(preferenceKey::cloudDatabase).value_or("");
    try {
        return openCloudDatabase(address, {scheduler, executor, keychain, UserFolders::find().data});
    } catch (const std::invalid_argument& error) {
        std::fprintf(stderr, "quorvi: %s\n", error.what());
        return std::make_unique<UnusableCloudDatabase>(error.what());
    }
}

}  // namespace

Synchronisation::Synchronisation(AppModel& model, HistoryStore& history,
                                 CorrectionStore& corrections, Preferences& preferences,
                                 FileStore& files, Scheduler& scheduler,
                                 std::vector<std::string_view> chosen)
    : keychain_(scheduler),
      database_(cloud(preferences, scheduler, cloudExecutor_, keychain_)),
      sync_(std::make_unique<AccountSync>(AccountSync::Environment{
          model, history, corrections, preferences, scheduler, *database_,
          {files, journals_, syncArchiveFile(), disk_, scheduler}, std::move(chosen)})) {}

}  // namespace quorvi
