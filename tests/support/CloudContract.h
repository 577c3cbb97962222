#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

#include "Quorvi/platform/CloudDatabase.h"
#include "tests/support/Waiting.h"

// What every cloud database promises, checked against the one in memory and the real ones. A rig
// supplies the machines, with nothing in the cloud at first:
//   CloudDatabase& first();     CloudDatabase& second();   two machines of one account
//   CloudDatabase& stranger();  a machine of another account, on the same server where there is one
//   bool runUntil(condition);   runs the main thread; false after a generous limit
namespace quorvi::test {

// Drives the machines; the base of every fixture.
template <class Rig>
class CloudContract : public testing::Test {
protected:
    static constexpr auto zone = "Notes";

    // What a machine has learnt by fetching, and how far it has got.
    struct Copy {
        std::map<std::string, CloudRecord> records;
        std::map<std::string, int> seen;  // how often each record came
        std::string token;
        int pages = 0;
    };

    template <class T>
    bool ends(const Running<T>& running) {
        return rig.runUntil([&] { return running.ended(); });
    }
    // The result; a failure is a failure of the test.
    template <class T>
    T get(Task<T> task) {
        Running<T> running(std::move(task));
        EXPECT_TRUE(ends(running)) << "the operation never ended";
        EXPECT_TRUE(running.value()) << running.failure();
        if constexpr (!std::is_void_v<T>) return running.value().value_or(T{});
    }
    // The code of the error that the operation ends with; 0 when there is none.
    template <class T>
    int errorCode(Task<T> task) {
        int code = 0;
        Running<void> running(catchCode(std::move(task), code));
        EXPECT_TRUE(ends(running)) << "the operation never ended";
        return code;
    }
    void makeZone(CloudDatabase& database, const std::string& name = zone) {
        get(database.saveZone(name, {}));
    }
    static CloudRecord record(const std::string& name, const std::string& text,
                              const std::string& changeTag = {}, const std::string& in = zone) {
        return {{in, name}, "Note", bytesOf(text), changeTag};
    }
    std::vector<CloudSaveResult> save(CloudDatabase& database, std::vector<CloudRecord> records) {
        return get(database.saveRecords(std::move(records), {}));
    }
    // Saves one record, which must succeed; the record with its new tag.
    CloudRecord saved(CloudDatabase& database, CloudRecord one) {
        auto results = save(database, {std::move(one)});
        EXPECT_EQ(results.size(), 1u);
        if (results.empty()) return {};
        EXPECT_FALSE(results[0].error) << results[0].error->what();
        return results[0].record;
    }
    // Brings the copy up to date.
    void fetch(CloudDatabase& database, Copy& copy, const std::string& from = zone) {
        for (bool more = true; more;) {
            auto page = get(database.recordChanges(from, copy.token, {}));
            ++copy.pages;
            for (auto& one : page.modified) {
                ++copy.seen[one.id.name];
                copy.records.insert_or_assign(one.id.name, std::move(one));
            }
            for (const auto& id : page.deleted) copy.records.erase(id.name);
            copy.token = std::move(page.token);
            more = page.more;
            ASSERT_LT(copy.pages, 10'000) << "the pages never end";
        }
    }
    static std::string textOfRecord(const CloudRecord& one) {
        return one.payload ? std::string(textOf(*one.payload)) : "(none)";
    }

    Rig rig;

private:
    template <class T>
    static Task<void> catchCode(Task<T> task, int& code) {
        try {
            if constexpr (std::is_void_v<T>)
                co_await task;
            else
                (void)co_await task;
        } catch (const CloudError& error) {
            code = error.code();
        }
    }
};
TYPED_TEST_SUITE_P(CloudContract);

TYPED_TEST_P(CloudContract, KnowsItsAccountAndKeepsOthersOut) {}
TYPED_TEST_P(CloudContract, MakesAndDeletesZonesAndTellsOfThem) {}
TYPED_TEST_P(CloudContract, KeepsRecordsByteForByteUnderAnyName) {}
TYPED_TEST_P(CloudContract, RefusesASaveThatDoesNotNameTheVersionItReplaces) {}
TYPED_TEST_P(CloudContract, FetchesEachChangeOnceFromAToken) {}
TYPED_TEST_P(CloudContract, RefusesATokenOfAZoneThatWasMadeAgain) {}
TYPED_TEST_P(CloudContract, RefusesWhatItDoesNotKnow) {}
TYPED_TEST_P(CloudContract, PushesToTheOtherMachine) {}
TYPED_TEST_P(CloudContract, CarriesBigBatchesInPages) {}
TYPED_TEST_P(CloudContract, LetsManyOperationsRunAtOnce) {}
TYPED_TEST_P(CloudContract, StopsWhenAskedAndGoesOnAfterwards) {}

REGISTER_TYPED_TEST_SUITE_P(CloudContract, KnowsItsAccountAndKeepsOthersOut,
                            MakesAndDeletesZonesAndTellsOfThem, KeepsRecordsByteForByteUnderAnyName,
                            RefusesASaveThatDoesNotNameTheVersionItReplaces,
                            FetchesEachChangeOnceFromAToken, RefusesATokenOfAZoneThatWasMadeAgain,
                            RefusesWhatItDoesNotKnow, PushesToTheOtherMachine,
                            CarriesBigBatchesInPages, LetsManyOperationsRunAtOnce,
                            StopsWhenAskedAndGoesOnAfterwards);

}  // namespace quorvi::test
