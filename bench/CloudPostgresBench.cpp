// The first upload and the first fetch of ten years of dictations through a PostgreSQL server on
// loopback with durable commits. The reference sends one record per round trip.

#include <cstdlib>
#include <deque>
#include <random>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/postgres/PostgresCloudDatabase.h"
#include "bench/Figure.h"
#include "tests/support/Waiting.h"
#include "tests/support/cloud/PostgresServer.h"

namespace quorvi::bench {
namespace {

using namespace quorvi::test;

constexpr int items = 200'000;
// Records as a device sends them.
constexpr int itemsAtATime = 1'000;
constexpr std::size_t batchesAbreast = 4;
constexpr int referenceItems = 2'000;

std::vector<CloudRecord> batch(std::mt19937_64& random, int size) {
    std::vector<CloudRecord> records;
    char name[64];
    for (int i = 0; i < size; ++i) {
        const auto high = random(), low = random();
        std::snprintf(name, sizeof name, "history:%08X-%04X-%04X-%04X-%012llX",
                      static_cast<unsigned>(high >> 32), static_cast<unsigned>(high >> 16 & 0xFFFF),
                      static_cast<unsigned>(high & 0xFFFF), static_cast<unsigned>(low >> 48),
                      static_cast<unsigned long long>(low & 0xFFFFFFFFFFFF));
        std::string payload = "{\"id\":\"" + std::string(name) + "\",\"payload\":\"";
        while (payload.size() < 598) payload += static_cast<char>('a' + random() % 26);
        records.push_back({{"QuorviAccount", name}, "QuorviItem", bytesOf(payload + "\"}"), ""});
    }
    return records;
}

class Bench {
public:
    void run() {
        const auto reference = upload(referenceItems, 1, 1);
        const auto uploaded = upload(items, itemsAtATime, batchesAbreast);
        rate("pg_upload", uploaded, "items/s", reference);
        rate("pg_fetch", fetchAll(), "items/s", fetchOneByOne());
        figure("pg_fetch_again", fetchAll(), "items/s");
        figure("pg_update", update(), "items/s");
        figure("pg_push", push(), "ms");
    }

private:
    template <class T>
    T get(Task<T> task) {
        Running<T> running(std::move(task));
        if (!await(loop, running) || !running.value()) throw std::runtime_error(running.failure());
        if constexpr (!std::is_void_v<T>) return T(*running.value());
    }

    std::unique_ptr<PostgresCloudDatabase> machine() {
        return std::make_unique<PostgresCloudDatabase>(loop, server.address(account),
                                                       password("pass word"));
    }

    // Items per second, up to the last acknowledgement.
    double upload(int count, int atATime, std::size_t abreast) {
        account = newAccount(server);
        const auto database = machine();
        get(database->saveZone("QuorviAccount", {}));
        std::mt19937_64 random(1);
        std::vector<std::vector<CloudRecord>> batches;
        names.clear();
        for (int done = 0; done < count; done += atATime) {
            batches.push_back(batch(random, atATime));
            for (const auto& record : batches.back()) names.push_back(record.id.name);
        }
        using Saving = Running<std::vector<CloudSaveResult>>;
        std::deque<std::unique_ptr<Saving>> underWay;
        const double start = millisecondsNow();
        for (std::size_t next = 0; next < batches.size() || !underWay.empty();) {
            while (next < batches.size() && underWay.size() < abreast)
                underWay.push_back(std::make_unique<Saving>(
                    database->saveRecords(std::move(batches[next++]), {})));
            await(loop, *underWay.front());
            for (const auto& result : underWay.front()->value().value())
                if (result.error) throw std::runtime_error(result.error->what());
            underWay.pop_front();
        }
        return count / (millisecondsNow() - start) * 1'000;
    }

    double fetchAll() {
        const auto database = machine();
        get(database->accountStatus({}));
        const double start = millisecondsNow();
        std::size_t count = 0, bytes = 0;
        for (CloudRecordChanges page{.more = true}; page.more;) {
            page = get(database->recordChanges("QuorviAccount", page.token, {}));
            count += page.modified.size();
            for (const auto& record : page.modified) bytes += record.payload->size();
        }
        if (count != items || bytes < items * 590u) std::abort();
        return items / (millisecondsNow() - start) * 1'000;
    }

    double fetchOneByOne() {
        const auto database = machine();
        get(database->accountStatus({}));
        const double start = millisecondsNow();
        for (int i = 0; i < referenceItems; ++i)
            get(database->fetchRecord({"QuorviAccount", names[static_cast<std::size_t>(i)]}, {}));
        return referenceItems / (millisecondsNow() - start) * 1'000;
    }

    // New versions of existing records, one batch after another.
    double update() {
        const auto database = machine();
        auto page = get(database->recordChanges("QuorviAccount", "", {}));
        std::vector<CloudRecord> records = std::move(page.modified);
        while (page.more && records.size() < 20'000) {
            page = get(database->recordChanges("QuorviAccount", page.token, {}));
            std::ranges::move(page.modified, std::back_inserter(records));
        }
        const double start = millisecondsNow();
        for (const auto& result : get(database->saveRecords(records, {})))
            if (result.error) throw std::runtime_error(result.error->what());
        return static_cast<double>(records.size()) / (millisecondsNow() - start) * 1'000;
    }

    // Median time from a save to the other machine's notification.
    double push() {
        const auto writer = machine(), listener = machine();
        int told = 0;
        const auto subscription = listener->onRemoteChange([&] { ++told; });
        get(listener->saveSubscription("changes", {}));
        std::vector<double> times;
        std::mt19937_64 random(2);
        for (int i = 0; i < 101; ++i) {
            const int before = told;
            const double start = millisecondsNow();
            Running<std::vector<CloudSaveResult>> saving(writer->saveRecords(batch(random, 1), {}));
            loop.runUntil([&] { return told > before; }, std::chrono::seconds(10));
            times.push_back(millisecondsNow() - start);
            await(loop, saving);
        }
        return median(times);
    }

    LoopScheduler loop;
    PostgresServer server{"127.0.0.1", {}, {"shared_buffers=256MB"}};
    std::string account;
    std::vector<std::string> names;
};

}  // namespace
}  // namespace quorvi::bench

int main() {
    quorvi::bench::Bench().run();
}
