// The first upload of a user's items and their first fetch, through the engine and a shared folder,
// all costs included. The reference writes and reads one file per item.

#include <fcntl.h>
#include <time.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/folder/FolderCloudDatabase.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/sync/CloudSyncEngine.h"
#include "QuorviCore/identity/Uuid.h"
#include "bench/Figure.h"
#include "tests/support/TestFolder.h"

namespace quorvi::bench {
namespace {

constexpr std::size_t items = 200'000;
constexpr std::size_t payloadSize = 600;
constexpr std::size_t referenceItems = 2'000;
constexpr auto zone = "QuorviAccount";

Bytes payloadOf(std::size_t item) {
    auto payload = bytesOf("item " + std::to_string(item) + " ");
    payload.resize(payloadSize, 'x');
    return payload;
}

// A machine that sends its items and counts those that it fetches.
struct Machine : CloudSyncEngineDelegate {
    Machine(const std::filesystem::path& folder, const std::filesystem::path& file)
        : database(loop, executor, {folder, file}), engine({database, loop, {}, *this}) {}

    void handleEvent(CloudSyncEvent event, CloudSyncEngine&) override {
        if (const auto* got = std::get_if<cloudEvent::FetchedRecordZoneChanges>(&event))
            for (const auto& record : got->modifications) {
                ++fetched;
                bytes += record.payload->size();
            }
        if (const auto* sent = std::get_if<cloudEvent::SentRecordZoneChanges>(&event))
            saved += sent->saved.size();
    }
    std::optional<CloudRecordBatch> nextRecordZoneChangeBatch(
        std::span<const CloudRecordID> pending, CloudSyncEngine&) override {
        return CloudRecordBatch::make(pending, [](const CloudRecordID& id) {
            return std::optional(CloudRecord{.id = id,
                                             .type = "QuorviItem",
                                             .payload = payloadOf(id.name.size()),
                                             .changeTag = {}});
        });
    }
    // Returns the time in milliseconds.
    double run(Task<void> task) {
        bool ended = false;
        auto watching = watch(std::move(task), ended);
        const auto start = millisecondsNow();
        longestTurn = 0;
        busy = busyMilliseconds();
        processor = -busyMilliseconds(CLOCK_PROCESS_CPUTIME_ID);
        watching.start();
        loop.runUntil(
            [&] {
                longestTurn = std::max(longestTurn, busyMilliseconds() - busy);
                busy = busyMilliseconds();
                return ended;
            },
            std::chrono::minutes(5));
        processor += busyMilliseconds(CLOCK_PROCESS_CPUTIME_ID);
        return millisecondsNow() - start;
    }
    static Task<void> watch(Task<void> task, bool& ended) {
        co_await task;
        ended = true;
    }
    // Processor time of this thread.
    static double busyMilliseconds(clockid_t clock = CLOCK_THREAD_CPUTIME_ID) {
        timespec time{};
        clock_gettime(clock, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    }

    LoopScheduler loop;
    SerialExecutor executor{"cloud"};
    FolderCloudDatabase database;
    CloudSyncEngine engine;
    std::size_t fetched = 0, saved = 0, bytes = 0;
    double longestTurn = 0;  // of the main thread, processor milliseconds
    double busy = 0;
    double processor = 0;  // milliseconds of all threads
};

double perSecond(std::size_t count, double milliseconds) {
    return static_cast<double>(count) * 1e3 / milliseconds;
}

void measure() {
    const test::TestFolder home;
    const auto folder = home.path() / "shared";

    // The reference: one durable file per item.
    const auto files = home.path() / "files";
    std::filesystem::create_directories(files);
    auto start = millisecondsNow();
    for (std::size_t i = 0; i < referenceItems; ++i) {
        const auto path = files / std::to_string(i);
        const auto payload = payloadOf(i);
        const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        if (::write(file, payload.data(), payload.size()) < 0 || ::fdatasync(file) != 0) return;
        ::close(file);
    }
    const auto literalUpload = perSecond(referenceItems, millisecondsNow() - start);
    start = millisecondsNow();
    std::size_t read = 0;
    for (const auto& one : std::filesystem::directory_iterator(files))
        read += test::contentOf(one.path()).size();
    const auto literalFetch = perSecond(referenceItems, millisecondsNow() - start);
    if (read != referenceItems * payloadSize) return;

    Machine first(folder, home.path() / "first");
    first.engine.state().add(PendingDatabaseChange::saveZone(zone));
    for (std::size_t i = 0; i < items; ++i)
        first.engine.state().add(
            PendingRecordZoneChange::saveRecord({zone, "history:" + newUuid()}));
    const auto upload = first.run(first.engine.sendChanges());
    const auto uploadTurn = first.longestTurn, uploadProcessor = first.processor;
    Machine second(folder, home.path() / "second");
    const auto fetch = second.run(second.engine.fetchChanges());
    if (first.saved != items || second.fetched != items || second.bytes != items * payloadSize)
        std::printf("%zu saved, %zu fetched\n", first.saved, second.fetched);

    rate("folder_upload", perSecond(items, upload), "items/s", literalUpload);
    rate("folder_fetch", perSecond(items, fetch), "items/s", literalFetch);
    // Processor time is independent of the machine's load.
    figure("folder_upload_processor", uploadProcessor * 1e3 / items, "us/item");
    figure("folder_fetch_processor", second.processor * 1e3 / items, "us/item");
    figure("folder_upload_longest_turn", uploadTurn, "ms");
    figure("folder_fetch_longest_turn", second.longestTurn, "ms");
}

}  // namespace
}  // namespace quorvi::bench

int main() {
    quorvi::bench::measure();
}
