#include "Quorvi/sync/CloudSyncEngine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>

#include "tests/fakes/FakeCloudDatabase.h"
#include "tests/fakes/VirtualScheduler.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {
namespace {

using namespace cloudEvent;
using namespace std::chrono_literals;
using Op = CloudOperation;

constexpr auto user = "anna";
constexpr auto zone = "Zone";

// Records the engine's events as words, and what they carry.
class Recorder : public CloudSyncEngineDelegate {
public:
    void handleEvent(CloudSyncEvent event, CloudSyncEngine& engine) override {
        std::visit([this](auto& one) { take(one); }, event);
        ++events;
        if (onEvent) onEvent(event, engine);
    }
    std::optional<CloudRecordBatch> nextRecordZoneChangeBatch(
        std::span<const CloudRecordID> pending, CloudSyncEngine&) override {
        return CloudRecordBatch::make(pending, [this](const CloudRecordID& id) {
            const auto found = local.find(id.name);
            return found == local.end() ? std::nullopt : std::optional(found->second);
        });
    }

    void put(const std::string& name, const std::string& text) {
        auto& record = local[name];
        record.id = {zone, name};
        record.type = "Item";
        record.payload = bytesOf(text);
    }

    std::string log;  // one word for each event
    int events = 0;
    Bytes state;
    std::map<std::string, CloudRecord> local;    // to be sent; saving sets the tag
    std::map<std::string, CloudRecord> fetched;  // by name
    std::vector<std::string> savedNames;
    std::map<std::string, CloudError> failures;  // the last of each record, or zone
    std::optional<CloudError> fetchFailure;
    std::function<void(const CloudSyncEvent&, CloudSyncEngine&)> onEvent;

private:
    void say(const std::string& word) { log += (log.empty() ? "" : " ") + word; }
    void take(StateUpdate& one) {
        state = std::move(one.serialization);
        say("state");
    }
    void take(AccountChange& one) {
        const char* kinds[] = {"in:", "out:", "switch:"};
        say(kinds[static_cast<int>(one.kind)] + one.previousUser + ">" + one.currentUser);
    }
    void take(FetchedDatabaseChanges& one) {
        std::string word = "zones";
        for (const auto& name : one.modified) word += "+" + name;
        for (const auto& name : one.deleted) word += "-" + name;
        say(word);
    }
    void take(FetchedRecordZoneChanges& one) {
        say("got" + std::to_string(one.modifications.size()) +
            (one.deletions.empty() ? "" : "-" + std::to_string(one.deletions.size())));
        for (auto& record : one.modifications) fetched[record.id.name] = std::move(record);
        for (const auto& id : one.deletions) fetched.erase(id.name);
    }
    void take(SentDatabaseChanges& one) {
        for (const auto& name : one.saved) say("made:" + name);
        for (const auto& [name, error] : one.failed) {
            failures.insert_or_assign(name, error);
            say("unmade:" + name);
        }
    }
    void take(SentRecordZoneChanges& one) {
        say("sent" + std::to_string(one.saved.size()) +
            (one.failed.empty() ? "" : "!" + std::to_string(one.failed.size())));
        for (auto& record : one.saved) {
            savedNames.push_back(record.id.name);
            local[record.id.name].changeTag = record.changeTag;
        }
        for (const auto& [record, error] : one.failed)
            failures.insert_or_assign(record.id.name, error);
    }
    void take(WillFetchChanges&) { say("fetch("); }
    void take(WillFetchRecordZoneChanges& one) { say(one.zone + "("); }
    void take(DidFetchRecordZoneChanges& one) {
        fetchFailure = one.error;
        say(one.error ? ")" + std::to_string(one.error->code()) : ")");
    }
    void take(DidFetchChanges&) { say(")"); }
    void take(WillSendChanges&) { say("send("); }
    void take(DidSendChanges&) { say(")"); }
};

// How an operation ended: "done", "cancelled", "code N", or "running".
struct Outcome {
    explicit Outcome(Task<void> task) : task_(watch(std::move(task))) { task_.start(); }
    std::string text = "running";

private:
    Task<void> watch(Task<void> task) {
        try {
            co_await task;
            text = "done";
        } catch (const Cancelled&) {
            text = "cancelled";
        } catch (const CloudError& error) {
            text = "code " + std::to_string(error.code());
        }
    }
    Task<void> task_;
};

class CloudSyncEngineTest : public testing::Test {
protected:
    void SetUp() override { start(); }

    void start(Bytes state = {}) {
        engine = std::make_unique<CloudSyncEngine>(
            CloudSyncEngine::Configuration{device, scheduler, std::move(state), recorder});
    }
    void settle() { scheduler.advance(1s); }
    std::string fetch() { return ended(engine->fetchChanges()); }
    std::string send() { return ended(engine->sendChanges()); }
    std::string ended(Task<void> task) {
        Outcome outcome(std::move(task));
        settle();
        return outcome.text;
    }
    std::string logOf(const std::function<void()>& work) {
        recorder.log.clear();
        work();
        return recorder.log;
    }

    // Makes something to send.
    void edit(const std::string& name, const std::string& text = "x") {
        recorder.put(name, text);
        engine->state().add(PendingRecordZoneChange::saveRecord({zone, name}));
    }
    void editMany(int count) {
        for (int i = 0; i < count; ++i) edit("r" + std::to_string(i));
    }
    void makeZone(const std::string& name = zone) { run(other.saveZone(name, {})); }
    // Another machine saves records r0, r1, …, again if it has done so before.
    void remote(int count, const std::string& text = "remote", const std::string& in = zone) {
        const auto present = server.records(user, in);
        std::vector<CloudRecord> records;
        for (int i = 0; i < count; ++i) {
            const auto name = "r" + std::to_string(i);
            const auto found = present.find(name);
            records.push_back({{in, name},
                               "Item",
                               bytesOf(text),
                               found == present.end() ? "" : found->second.changeTag});
        }
        run(other.saveRecords(std::move(records), {}));
    }
    template <class T>
    void run(Task<T> task) {
        Running<T> running(std::move(task));
        settle();
        ASSERT_TRUE(running.value()) << running.failure();
    }
    std::size_t pending() { return engine->state().pendingRecordZoneChangeCount(); }
    std::vector<std::string> pendingNames() {
        std::vector<std::string> names;
        for (const auto& change : engine->state().pendingRecordZoneChanges())
            names.push_back(change.id.name);
        return names;
    }

    VirtualScheduler scheduler;
    FakeCloudServer server{scheduler};
    FakeCloudDatabase device{scheduler, server, user};
    FakeCloudDatabase other{scheduler, server, user};
    Recorder recorder;
    std::unique_ptr<CloudSyncEngine> engine;
};

using Names = std::vector<std::string>;

TEST_F(CloudSyncEngineTest, SendsZonesFirstAndThenTheRecordsOldestFirst) {
    engine->state().add(PendingDatabaseChange::saveZone(zone));
    engine->state().add(PendingDatabaseChange::saveZone(zone));
    editMany(2500);
    edit("r7");
    EXPECT_EQ(pending(), 2500u);
    EXPECT_EQ(send(), "done");
    EXPECT_TRUE(recorder.log.starts_with("send( in:>anna made:Zone sent200 sent200"))
        << recorder.log;
    EXPECT_TRUE(recorder.log.ends_with("sent100 state )")) << recorder.log;
    EXPECT_EQ(device.savedBatchSizes, (std::vector<std::size_t>{1000, 1000, 500}));
    EXPECT_EQ(pending(), 0u);
    EXPECT_TRUE(engine->state().pendingDatabaseChanges().empty());
    EXPECT_EQ(server.records(user, zone).size(), 2500u);
    EXPECT_EQ(recorder.savedNames.front(), "r0");
    EXPECT_EQ(recorder.savedNames.back(), "r2499");
    EXPECT_EQ(logOf([this] { send(); }), "send( )");
}

TEST_F(CloudSyncEngineTest, LimitsABatchByItsSizeInBytes) {
    makeZone();
    for (int i = 0; i < 5; ++i) edit("big" + std::to_string(i), std::string(400'000, 'b'));
    edit("huge", std::string(CloudRecordBatch::maximumBytes + 1, 'h'));
    EXPECT_EQ(send(), "done");
    EXPECT_EQ(device.savedBatchSizes, (std::vector<std::size_t>{2, 2, 1, 1}));
}

TEST_F(CloudSyncEngineTest, SendsSmallerBatchesOnRequest) {
    makeZone();
    editMany(1500);
    device.fail(Op::saveRecords, CloudError(cloudErrorCode::limitExceeded));
    EXPECT_EQ(send(), "done");
    EXPECT_EQ(server.records(user, zone).size(), 1500u);
    EXPECT_EQ(pending(), 0u);
    EXPECT_LE(device.savedBatchSizes.back(), 500u);
    device.fail(Op::saveRecords, CloudError(cloudErrorCode::limitExceeded), true);
    edit("too big");
    EXPECT_EQ(send(), "done");
    EXPECT_EQ(recorder.failures.at("too big").code(), cloudErrorCode::limitExceeded);
    EXPECT_EQ(pending(), 0u);
}

TEST_F(CloudSyncEngineTest, FetchesEverythingInPagesAndThenOnlyWhatIsNew) {
    makeZone();
    remote(1000);
    std::map<int, int> askedAt;  // pages asked for, by number of records received
    recorder.onEvent = [&](const CloudSyncEvent& event, CloudSyncEngine&) {
        if (std::holds_alternative<FetchedRecordZoneChanges>(event))
            askedAt[static_cast<int>(recorder.fetched.size())] = device.calls[Op::recordChanges];
    };
    EXPECT_EQ(fetch(), "done");
    EXPECT_EQ(recorder.log,
              "fetch( in:>anna zones+Zone state Zone( got200 got200 state got200 got200 state "
              "got200 state ) )");
    EXPECT_EQ(recorder.fetched, server.records(user, zone));
    EXPECT_EQ(askedAt[200], 2) << "the next page is under way while one is taken in";
    EXPECT_EQ(logOf([this] { fetch(); }), "fetch( )");

    remote(2, "newer");
    start(recorder.state);
    EXPECT_EQ(logOf([this] { fetch(); }), "fetch( zones+Zone state Zone( got2 state ) )");
    EXPECT_EQ(recorder.fetched, server.records(user, zone));

    server.deleteRecord(user, {zone, "r1"});
    EXPECT_EQ(logOf([this] { fetch(); }), "fetch( zones+Zone state Zone( got0-1 state ) )");
    server.resetZone(user, zone);
    EXPECT_EQ(logOf([this] { fetch(); }), "fetch( zones-Zone state )");
}

TEST_F(CloudSyncEngineTest, StartsOverWhenItsTokensHaveExpired) {
    makeZone();
    makeZone("Doomed");
    remote(3);
    EXPECT_EQ(fetch(), "done");
    run(other.deleteZone("Doomed", {}));
    server.expireTokens();
    recorder.fetched.clear();
    EXPECT_EQ(logOf([this] { fetch(); }), "fetch( zones+Zone-Doomed state Zone( got3 state ) )");
    EXPECT_EQ(recorder.fetched, server.records(user, zone));

    // Also in the middle of a fetch. A database that refuses every token is not asked forever.
    remote(900, "newer");
    device.pageSize = 300;
    recorder.onEvent = [this](const CloudSyncEvent& event, CloudSyncEngine&) {
        if (!std::holds_alternative<FetchedRecordZoneChanges>(event)) return;
        recorder.onEvent = nullptr;
        server.expireTokens();
    };
    recorder.fetched.clear();
    EXPECT_EQ(fetch(), "done");
    EXPECT_EQ(recorder.fetched, server.records(user, zone));
    device.fail(Op::recordChanges, CloudError(cloudErrorCode::changeTokenExpired), true);
    remote(1, "newest");
    EXPECT_EQ(fetch(), "done");
    EXPECT_EQ(recorder.fetchFailure->code(), cloudErrorCode::changeTokenExpired);
    device.fail(Op::zoneChanges, CloudError(cloudErrorCode::changeTokenExpired), true);
    EXPECT_EQ(fetch(), "code 21");
}

TEST_F(CloudSyncEngineTest, FetchesAFailedZoneAgain) {
    makeZone("A");
    makeZone("B");
    remote(1, "x", "B");
    device.fail(Op::recordChanges, CloudError(cloudErrorCode::networkFailure, "cut", 5s));
    EXPECT_EQ(fetch(), "done");
    EXPECT_TRUE(recorder.log.ends_with("A( state )4 B( got1 state ) )")) << recorder.log;
    // The zone is remembered, although the database reports it only once.
    start(recorder.state);
    EXPECT_EQ(logOf([this] { fetch(); }), "fetch( A( state ) )");
    EXPECT_EQ(logOf([this] { fetch(); }), "fetch( )");

    remote(1, "y", "B");
    device.fail(Op::recordChanges, CloudError(cloudErrorCode::zoneNotFound));
    EXPECT_EQ(logOf([this] { fetch(); }), "fetch( zones+B state B( state )26 )");
    EXPECT_EQ(logOf([this] { fetch(); }), "fetch( )");
}

TEST_F(CloudSyncEngineTest, ReportsTheUserAndDropsTheTokensOfAnother) {
    makeZone();
    remote(2);
    EXPECT_EQ(fetch(), "done");
    const auto change = [this](const std::string& to) {
        return logOf([&] {
            device.signIn(to);
            settle();
        });
    };
    EXPECT_EQ(change(""), "out:anna>");
    EXPECT_EQ(fetch(), "code 9");
    EXPECT_EQ(change("bert"), "in:>bert");
    EXPECT_EQ(logOf([this] { fetch(); }), "fetch( state )");
    EXPECT_EQ(change(user), "switch:bert>anna");
    EXPECT_EQ(logOf([this] { fetch(); }), "fetch( zones+Zone state Zone( got2 state ) )");
    // An unknown account is no change.
    device.fail(Op::userRecordName, CloudError(cloudErrorCode::networkFailure));
    EXPECT_EQ(change("bert"), "");
    // An operation for one user must not continue for another.
    device.signIn(user);
    device.hold(Op::zoneChanges);
    Outcome fetching(engine->fetchChanges());
    settle();
    EXPECT_EQ(change("bert"), "switch:anna>bert");
    EXPECT_EQ(fetching.text, "code 20");
    device.release(Op::zoneChanges);
}

// Ends operations in every way, at every event and within every call to the database.
TEST_F(CloudSyncEngineTest, EndsAndContinuesAtAnyMoment) {
    makeZone();
    const auto round = [this](const std::string& how, std::optional<Op> held, int atEvent) {
        recorder = {};
        start();
        remote(450, how + std::to_string(atEvent));
        edit("mine", how);
        std::optional<Outcome> both[2];
        std::stop_source stop;
        bool isReached = false;
        const auto end = [&] {
            isReached = true;
            if (how == "cancel") engine->cancelOperations();
            if (how == "stop") stop.request_stop();
            if (how == "destroy") engine.reset();
        };
        const int limit = atEvent;
        recorder.onEvent = [&](const CloudSyncEvent&, CloudSyncEngine&) {
            if (recorder.events == limit) end();
        };
        if (held) device.hold(*held);
        both[0].emplace(engine->sendChanges(stop.get_token()));
        if (engine) both[1].emplace(engine->fetchChanges(stop.get_token()));
        settle();
        if (held) {
            end();
            settle();
            device.release(*held);
        }
        settle();
        const auto told = recorder.events;
        if (isReached && both[1]) {
            const std::string expected = how == "cancel" ? "code 20" : "cancelled";
            EXPECT_TRUE(both[1]->text == expected || (both[1]->text == "done" && !held)) << how;
            if (how == "destroy" && !held) {
                EXPECT_EQ(told, limit);
            }
        }
        settle();
        EXPECT_EQ(recorder.events, told);
        recorder.onEvent = nullptr;
        if (!engine) {
            start(recorder.state);
            edit("mine", how);
        }
        EXPECT_EQ(send(), "done");
        EXPECT_EQ(fetch(), "done");
        for (const auto& [name, record] : server.records(user, zone))
            if (name != "mine") {
                EXPECT_EQ(recorder.fetched[name], record);
            }
        server.deleteRecord(user, {zone, "mine"});
        return isReached;
    };
    for (const auto* how : {"cancel", "stop", "destroy"}) {
        for (const auto operation :
             {Op::userRecordName, Op::saveRecords, Op::zoneChanges, Op::recordChanges})
            EXPECT_TRUE(round(how, operation, 0));
        int event = 1;
        while (round(how, std::nullopt, event)) ++event;
        EXPECT_GT(event, 10) << how;
    }
}

TEST_F(CloudSyncEngineTest, ItsStateHasOnlyTheOldestPendingSaves) {
    engine->state().add(PendingDatabaseChange::saveZone(zone));
    editMany(1500);
    makeZone();
    EXPECT_EQ(fetch(), "done");
    start(recorder.state);
    EXPECT_EQ(pending(), CloudSyncEngine::serializedPendingSaves);
    EXPECT_EQ(pendingNames().front(), "r0");
    EXPECT_EQ(engine->state().pendingDatabaseChanges().size(), 1u);
    editMany(1500);
    EXPECT_EQ(send(), "done");
    EXPECT_EQ(server.records(user, zone).size(), 1500u);
}

}  // namespace
}  // namespace quorvi::test
