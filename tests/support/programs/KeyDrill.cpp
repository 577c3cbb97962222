// usage: key_drill CERTIFICATES SERVICE...
//
// Does everything there is to do with an API key, which comes on standard input, says "done" and
// how many services answered, with a child beside it and its connections open, and crashes at the
// next line of input.

#include <spawn.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "Quorvi/platform/linux/curl/CurlTransport.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/secrets/SecretServiceKeychain.h"
#include "Quorvi/system/KeychainStore.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "Quorvi/transcription/TranscriptionClient.h"
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

// One dictation's request to each service; some fail.
Task<void> dictate(KeychainStore& store, HttpTransport& transport,
                   std::vector<std::string> services, int& done, int& answered) {
    for (auto& service : services) {
        TranscriptionClient client(transport, std::move(service));
        client.openConnection();
        auto reading = store.read({});
        auto key = co_await reading;
        auto asking = client.transcribe(Bytes(50'000), std::move(key), {}, {});
        try {
            co_await asking;
            ++answered;
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s\n", error.what());
        }
        ++done;
    }
}

void crash(int answered) {
    char name[] = "sleep", time[] = "1000";
    char* arguments[] = {name, time, nullptr};
    pid_t child = 0;
    posix_spawnp(&child, name, nullptr, nullptr, arguments, environ);
    std::printf("done %d\n", answered);
    std::fflush(stdout);
    readLine();
    const rlimit unlimited{RLIM_INFINITY, RLIM_INFINITY};
    setrlimit(RLIMIT_CORE, &unlimited);
    std::abort();
}

}  // namespace

int main(int argc, char** arguments) {
    LoopScheduler loop;
    SecretServiceKeychain keychain(loop);
    SerialExecutor executor("secrets");
    MemoryPreferences preferences;
    KeychainStore store(keychain, preferences, executor, loop);
    CurlTransport transport(loop, arguments[1]);
    const auto run = [&](Task<void> task, const int& done, int all) {
        task.start();
        if (!loop.runUntil([&] { return done == all; }, std::chrono::minutes(2))) std::exit(1);
    };
    int kept = 0;
    {
        const auto key = readLine();
        run(drill(store, key, kept), kept, 4);
    }
    const std::vector<std::string> services(arguments + 2, arguments + argc);
    int sent = 0, answered = 0;
    run(dictate(store, transport, services, sent, answered), sent,
        static_cast<int>(services.size()));
    crash(answered);
}
