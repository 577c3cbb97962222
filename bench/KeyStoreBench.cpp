// The main thread's cost of knowing whether there is a key, compared with calling the keyring each
// time; and the time of the keyring's operations off the main thread. With GNOME Keyring on a
// private bus.

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/platform/linux/secrets/SecretServiceKeychain.h"
#include "Quorvi/system/KeychainStore.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "bench/Figure.h"
#include "tests/support/Waiting.h"
#include "tests/support/desktop/Keyring.h"

namespace {

using namespace quorvi;

constexpr int rounds = 200;
constexpr int callsPerRound = 1000;

template <class Work>
double medianOf(Work work) {
    std::vector<double> times;
    for (int i = 0; i < rounds; ++i) {
        const double begin = bench::millisecondsNow();
        work();
        times.push_back(bench::millisecondsNow() - begin);
    }
    return bench::median(times);
}

template <class T>
T finish(LoopScheduler& loop, Task<T> task) {
    test::Running<T> running(std::move(task));
    if (!loop.runUntil([&] { return running.ended(); }, std::chrono::minutes(1)) ||
        !running.value())
        throw std::runtime_error("the operation failed: " + running.failure());
    if constexpr (!std::is_void_v<T>) return *running.value();
}

void run() {
    test::Keyring keyring;
    LoopScheduler loop;
    SecretServiceKeychain keychain(loop);
    SerialExecutor executor("secrets");
    MemoryPreferences preferences;
    KeychainStore store(keychain, preferences, executor, loop);
    const double first = bench::millisecondsNow();
    finish(loop, store.save("sk-key"));
    bench::figure("key_first_save", bench::millisecondsNow() - first, "ms");

    int found = 0;
    KeyStore* volatile port = &store;  // keeps the compiler from dropping calls
    const double cached = medianOf([&] {
                              for (int i = 0; i < callsPerRound; ++i) found += port->hasKey();
                          }) /
                          callsPerRound;
    if (found != rounds * callsPerRound) throw std::runtime_error("the key is not known");
    // The reference: two silent look-ups in the keyring, on the same thread.
    const KeychainQuery local{"app.quorvi.Quorvi.openai", "api-key", false};
    const KeychainQuery synchronized{"app.quorvi.Quorvi.openai", "api-key", true};
    SecretServiceKeychain asked(loop);
    const double blocking = medianOf([&] {
        if (asked.exists(synchronized, {}) == KeychainStatus::success ||
            asked.exists(local, {}) != KeychainStatus::success)
            throw std::runtime_error("the look-up is wrong");
    });
    bench::figure("has_key", cached, "ms", blocking);
    bench::figure("key_refresh", medianOf([&] { finish(loop, store.refresh()); }), "ms", blocking);
    bench::figure("key_read", medianOf([&] { finish(loop, store.read({})); }), "ms");
    bench::figure("key_save", medianOf([&] { finish(loop, store.save("sk-key")); }), "ms");
}

}  // namespace

int main() {
    try {
        run();
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "KeyStoreBench: %s\n", error.what());
        return 1;
    }
}
