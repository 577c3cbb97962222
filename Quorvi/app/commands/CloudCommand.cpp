#include "Quorvi/app/commands/CloudCommand.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <string>

#include "Quorvi/app/commands/CloudCheckCommand.h"
#include "Quorvi/app/commands/SecretInput.h"
#include "Quorvi/app/commands/StoredPreferences.h"
#include "Quorvi/app/composition/CloudDatabases.h"
#include "Quorvi/app/composition/CloudPassword.h"
#include "Quorvi/platform/linux/secrets/SecretServiceKeychain.h"
#include "Quorvi/ui/translations/ShownMessage.h"

namespace quorvi {

namespace {

constexpr std::string_view addressArgument = "--cloud-database=";
constexpr std::string_view passwordArgument = "--store-cloud-password";

int complain(const std::string& problem) {
    std::fprintf(stderr, "quorvi: %s\n", problem.c_str());
    return 1;
}

int storeAddress(const std::string& address) {
    if (const auto problem = cloudAddressProblem(address))
        return complain(shownInEnglish(*problem));
    StoredPreferences stored;
    if (address.empty())
        stored.settings.reset(setting::cloudDatabase);
    else
        stored.settings.set(setting::cloudDatabase, address);
    stored.preferences.flush();
    if (const auto problem = stored.preferences.persistenceError())
        return complain(shownInEnglish(*problem));
    std::printf("Quorvi will use this cloud from its next start on.\n");
    return 0;
}

int storePassword() {
    StoredPreferences stored;
    const auto known = stored.cloudAddress();
    if (!known) return complain(shownInEnglish(stored.problem()));
    const auto& address = *known;
    if (!isServerAddress(address)) return complain("The cloud is a folder, which has no password.");
    const auto password = readSecret("Password of the database: ");
    SecretServiceKeychain keychain(stored.scheduler);
    const auto status = storeCloudPassword(keychain, address, password, {});
    if (status != KeychainStatus::success)
        return complain("The keyring did not take the password (" +
                        std::to_string(static_cast<int>(status)) + ").");
    std::printf("The password is in your keyring.\n");
    return 0;
}

}  // namespace

std::optional<int> runCloudCommand(const std::vector<std::string_view>& arguments) {
    if (std::ranges::count(arguments, cloudCheckArgument)) {
        if (arguments.size() > 1)
            std::fprintf(stderr, "quorvi: %s stands by itself; the rest is ignored.\n",
                         cloudCheckArgument.data());
        return runCloudCheck();
    }
    if (arguments.size() != 1) return std::nullopt;
    const auto argument = arguments[0];
    if (argument == passwordArgument) return storePassword();
    if (argument.starts_with(addressArgument))
        return storeAddress(std::string(argument.substr(addressArgument.size())));
    return std::nullopt;
}

}  // namespace quorvi
