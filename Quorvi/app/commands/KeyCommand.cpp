#include "Quorvi/app/commands/KeyCommand.h"

#include <chrono>
#include <cstdio>
#include <optional>
#include <string>

#include "Quorvi/app/commands/SecretInput.h"
#include "Quorvi/app/commands/StoredPreferences.h"
#include "Quorvi/platform/linux/secrets/SecretServiceKeychain.h"
#include "Quorvi/system/KeychainStore.h"
#include "Quorvi/ui/translations/ShownMessage.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

// The keyring may ask the user for its password.
constexpr Duration patience = 10min;

Task<void> carryOut(KeyCommand command, KeychainStore& store, std::optional<int>& status) {
    std::optional<std::string> problem;
    try {
        if (command == KeyCommand::store) {
            auto saving = store.save(std::string(readSecret("OpenAI API key: ").view()));
            co_await saving;
        } else {
            auto removing = store.remove();
            co_await removing;
        }
    } catch (const std::exception& error) {
        problem = shownInEnglish(error);
    }
    if (problem)
        std::fprintf(stderr, "quorvi: %s\n", problem->c_str());
    else
        std::printf(command == KeyCommand::store ? "The API key is in your keyring.\n"
                                                 : "There is no API key in your keyring.\n");
    status = problem ? 1 : 0;
}

}  // namespace

std::optional<KeyCommand> keyCommandFromArgument(std::string_view argument) {
    if (argument == "--store-key") return KeyCommand::store;
    if (argument == "--remove-key") return KeyCommand::remove;
    return std::nullopt;
}

int runKeyCommand(KeyCommand command) {
    StoredPreferences stored;
    SecretServiceKeychain keychain(stored.scheduler);
    SerialExecutor secrets("secrets");
    KeychainStore store(keychain, stored.preferences, secrets, stored.scheduler);
    std::optional<int> status;
    auto task = carryOut(command, store, status);
    task.start();
    if (!stored.scheduler.runUntil([&] { return status.has_value(); }, patience))
        std::fprintf(stderr, "quorvi: The keyring did not answer.\n");
    return status.value_or(1);
}

}  // namespace quorvi
