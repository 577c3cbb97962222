// Does everything there is to do with an API key, which comes on standard input, says "done" with a
// child beside it, and crashes at the next line of input.

#include <spawn.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/secrets/SecretServiceKeychain.h"
#include "Quorvi/system/KeychainStore.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "QuorviCore/async/Async.h"
#include "QuorviCore/base/Wipe.h"

namespace {

using namespace quorvi;

Secret readLine() {
    char buffer[256];
    const auto size = read(STDIN_FILENO, buffer, sizeof buffer);
    Secret line(std::string_view(buffer, size > 0 ? static_cast<std::size_t>(size) : 0));
    wipe(buffer, sizeof buffer);
    return line;
}

std::string copyOf(const Secret& key) {
    return std::string(key.view());
}

Task<void> drill(KeychainStore& store, const Secret& key, int& done) {
    for (const bool sync : {false, true, false}) {
        auto switching = store.setSyncEnabled(sync);
        co_await switching;
        auto saving = store.save(copyOf(key));
        co_await saving;
        auto reading = store.read({});
        auto read = co_await reading;
        if (!read.empty()) ++done;
        wipe(read);
    }
    try {
        auto refused = store.save(copyOf(key) + " and more");
        co_await refused;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    auto removing = store.remove();
    co_await removing;
    auto saving = store.save(copyOf(key));
    co_await saving;
    ++done;
}

void work(const Secret& key) {
    LoopScheduler loop;
    SecretServiceKeychain keychain(loop);
    SerialExecutor executor("secrets");
    MemoryPreferences preferences;
    KeychainStore store(keychain, preferences, executor, loop);
    int done = 0;
    auto drilling = drill(store, key, done);
    drilling.start();
    if (!loop.runUntil([&] { return done == 4; }, std::chrono::minutes(2))) std::exit(1);
}

}  // namespace

int main() {
    work(readLine());
    char name[] = "sleep", time[] = "1000";
    char* arguments[] = {name, time, nullptr};
    pid_t child = 0;
    posix_spawnp(&child, name, nullptr, nullptr, arguments, environ);
    std::puts("done");
    std::fflush(stdout);
    readLine();
    const rlimit unlimited{RLIM_INFINITY, RLIM_INFINITY};
    setrlimit(RLIMIT_CORE, &unlimited);
    std::abort();
}
