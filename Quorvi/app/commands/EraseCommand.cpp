#include "Quorvi/app/commands/EraseCommand.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <string>
#include <system_error>

#include "Quorvi/app/commands/KeyCommand.h"
#include "Quorvi/app/commands/ShortcutCommand.h"
#include "Quorvi/app/commands/StoredPreferences.h"
#include "Quorvi/app/composition/CloudDatabases.h"
#include "Quorvi/app/composition/CloudPassword.h"
#include "Quorvi/app/composition/StoredFiles.h"
#include "Quorvi/platform/linux/remote/KeptKeyConsent.h"
#include "Quorvi/platform/linux/secrets/SecretServiceKeychain.h"
#include "Quorvi/platform/linux/xdg/XdgLoginItem.h"
#include "Quorvi/shell/SingleInstance.h"
#include "Quorvi/system/KeychainStore.h"
#include "Quorvi/ui/translations/ShownMessage.h"

namespace quorvi {

namespace {

namespace fs = std::filesystem;

void explain(const UserFolders& folders, const std::optional<std::string>& cloud) {
    std::printf(
        "This removes from this machine, for good:\n"
        "  %s: your dictations, and what is kept for the synchronisation\n"
        "  %s: your rules and settings\n"
        "  the API keys%s in your keyring\n"
        "  the start at login, if it is on, and Quorvi's shortcuts in the desktop's settings\n",
        folders.data.c_str(), folders.config.c_str(),
        cloud && isServerAddress(*cloud) ? " and the password of the cloud" : "");
    if (!cloud)
        std::printf(
            "The settings cannot be read: a cloud that they name keeps what it has, and the "
            "keyring\n"
            "the password of its server.\n");
    else if (cloud->empty())
        std::printf("Nothing was shared with other machines.\n");
    else
        std::printf(
            "Your other machines keep what they have, and so does the cloud, %s: set to it again,\n"
            "this machine gets everything back from there. To be rid of that, too, erase each\n"
            "machine, and then the folder or the account of the server.\n",
            cloud->c_str());
}

bool isConfirmed() {
    if (!isatty(STDIN_FILENO)) {
        std::fprintf(stderr, "quorvi: Nothing was removed. Without a terminal, say --yes.\n");
        return false;
    }
    std::printf("Type \"erase\" to go on: ");
    std::fflush(stdout);
    std::string answer;
    std::getline(std::cin, answer);
    if (answer == "erase") return true;
    std::fprintf(stderr, "quorvi: Nothing was removed.\n");
    return false;
}

// Also removes the targets of symbolic links, for users who keep the files elsewhere.
bool removeFolder(const fs::path& folder) {
    std::error_code error;
    for (const auto& file : {historyFile(), preferencesFile(), syncArchiveFile()})
        if (file.parent_path() == folder && fs::is_symlink(file, error))
            fs::remove(fs::weakly_canonical(file, error), error);
    fs::remove_all(folder, error);
    if (!error) return true;
    std::fprintf(stderr, "quorvi: %s could not be removed (%s).\n", folder.c_str(),
                 error.message().c_str());
    return false;
}

bool removeSecrets(const KeychainQuery& query, const char* what) {
    LoopScheduler scheduler;
    SecretServiceKeychain keychain(scheduler);
    const auto status = keychain.remove(query, {});
    if (status == KeychainStatus::success || status == KeychainStatus::itemNotFound) return true;
    std::fprintf(stderr, "quorvi: %s could not be removed.\n", what);
    return false;
}

bool removeCloudPassword(const std::string& cloud) {
    bool isRemoved = true;
    if (isServerAddress(cloud))
        for (const auto& query : cloudPasswordQueries(cloud))
            isRemoved = removeSecrets(query, "The password of the cloud") && isRemoved;
    return isRemoved;
}

bool removeLoginItem() {
    try {
        XdgLoginItem item(XdgLoginItem::Places::current());
        const auto status = item.status();
        if (status == LoginItemStatus::enabled || status == LoginItemStatus::requiresApproval)
            item.unregisterItem();
        return true;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quorvi: The start at login is still on (%s).\n",
                     shownInEnglish(error).c_str());
        return false;
    }
}

int erase(bool isSure) {
    const SingleInstance instance;
    if (!instance.isFirst()) {
        std::fprintf(stderr, "quorvi: Quorvi is running. Quit it first: quorvi quit\n");
        return 1;
    }
    const auto folders = UserFolders::find();
    const auto cloud = StoredPreferences().cloudAddress();
    explain(folders, cloud);
    if (!isSure && !isConfirmed()) return 1;
    KeptKeyConsent(keyConsentFile(), true).forget();
    // Goes on after a failure. The keyring first, since the settings say what is in it.
    const std::array done{runKeyCommand(KeyCommand::remove) == 0,
                          removeSecrets(otherKeyQuery({}), "The keys of other speech services"),
                          removeCloudPassword(cloud.value_or("")),
                          removeLoginItem(),
                          removeDesktopShortcuts(),
                          removeFolder(folders.data),
                          removeFolder(folders.config),
                          removeFolder(folders.recordings)};
    const bool isAll = std::ranges::all_of(done, [](bool one) { return one; });
    if (isAll) std::printf("Everything was removed.\n");
    return isAll ? 0 : 1;
}

}  // namespace

std::optional<int> runEraseCommand(const std::vector<std::string_view>& arguments) {
    if (arguments.empty() || arguments[0] != "erase") return std::nullopt;
    const bool isSure = arguments.size() == 2 && arguments[1] == "--yes";
    if (arguments.size() != 1 && !isSure) {
        std::fprintf(stderr, "quorvi: erase takes nothing but --yes (see quorvi --help)\n");
        return 2;
    }
    try {
        return erase(isSure);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quorvi: %s\n", shownInEnglish(error).c_str());
        return 1;
    }
}

}  // namespace quorvi
