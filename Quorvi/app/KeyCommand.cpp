#include "Quorvi/app/KeyCommand.h"

#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <optional>
#include <string>

#include "Quorvi/app/StoredFiles.h"
#include "Quorvi/platform/linux/LoopScheduler.h"
#include "Quorvi/platform/linux/PosixFileStore.h"
#include "Quorvi/platform/linux/PropertyListPreferences.h"
#include "Quorvi/platform/linux/SecretServiceKeychain.h"
#include "Quorvi/platform/linux/SerialExecutor.h"
#include "Quorvi/system/KeychainStore.h"
#include "QuorviCore/Wipe.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

// The keyring may ask for its password, which takes the user's time.
constexpr Duration patience = 10min;

constexpr std::size_t longestKey = 4096;

// A terminal that does not show what is typed, while the object lives.
class Unseen {
public:
    Unseen() {
        if (tcgetattr(STDIN_FILENO, &before_) != 0) return;
        auto unseen = before_;
        unseen.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        isChanged_ = tcsetattr(STDIN_FILENO, TCSAFLUSH, &unseen) == 0;
    }
    Unseen(const Unseen&) = delete;
    Unseen& operator=(const Unseen&) = delete;
    ~Unseen() {
        if (isChanged_) tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
    }

private:
    termios before_{};
    bool isChanged_ = false;
};

std::string readKey() {
    const bool asks = isatty(STDIN_FILENO) != 0;
    if (asks) std::fprintf(stderr, "OpenAI API key: ");
    const Unseen unseen;
    std::string key;
    key.reserve(longestKey);  // so that no copy is left behind
    for (char c = 0; key.size() < longestKey && read(STDIN_FILENO, &c, 1) == 1 && c != '\n';)
        key += c;
    if (asks) std::fprintf(stderr, "\n");
    return key;
}

Task<void> carryOut(KeyCommand command, KeychainStore& store, std::optional<int>& status) {
    std::optional<std::string> problem;
    try {
        if (command == KeyCommand::store) {
            auto saving = store.save(readKey());
            co_await saving;
        } else {
            auto removing = store.remove();
            co_await removing;
        }
    } catch (const std::exception& error) {
        problem = error.what();
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
    LoopScheduler scheduler;
    PosixFileStore files;
    SerialExecutor disk("preferences");
    PropertyListPreferences preferences(files, preferencesFile(), disk, scheduler);
    SecretServiceKeychain keychain(scheduler);
    SerialExecutor secrets("secrets");
    KeychainStore store(keychain, preferences, secrets, scheduler);
    std::optional<int> status;
    auto task = carryOut(command, store, status);
    task.start();
    if (!scheduler.runUntil([&] { return status.has_value(); }, patience))
        std::fprintf(stderr, "quorvi: The keyring did not answer.\n");
    return status.value_or(1);
}

}  // namespace quorvi
