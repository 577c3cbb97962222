#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/postgres/PostgresCloudDatabase.h"
#include "tests/support/Waiting.h"
#include "tests/support/cloud/PostgresServer.h"

namespace quorvi::test {

// Runs tasks to their end on a loop of its own.
struct PostgresDesk {
    LoopScheduler loop;

    template <class T>
    T get(Task<T> task) {
        Running<T> running(std::move(task));
        EXPECT_TRUE(await(loop, running));
        EXPECT_TRUE(running.value()) << running.failure();
        if constexpr (!std::is_void_v<T>) return running.value().value_or(T{});
    }
    // What the task fails with; nothing when it succeeds.
    template <class T>
    std::optional<CloudError> failure(Task<T> task) {
        std::optional<CloudError> error;
        Running<void> running(collect(std::move(task), error));
        EXPECT_TRUE(await(loop, running));
        return error;
    }
    template <class T>
    int code(Task<T> task) {
        const auto error = failure(std::move(task));
        return error ? error->code() : 0;
    }

    // All records of the zone "Notes".
    std::map<std::string, CloudRecord> everything(CloudDatabase& database) {
        std::map<std::string, CloudRecord> all;
        for (CloudRecordChanges page{.more = true}; page.more;) {
            page = get(database.recordChanges("Notes", page.token, {}));
            for (auto& one : page.modified) all.insert_or_assign(one.id.name, one);
        }
        return all;
    }

private:
    template <class T>
    static Task<void> collect(Task<T> task, std::optional<CloudError>& error) {
        try {
            if constexpr (std::is_void_v<T>)
                co_await task;
            else
                (void)co_await task;
        } catch (const CloudError& caught) {
            error = caught;
        }
    }
};

inline CloudRecord noteRecord(const std::string& name, const std::string& text,
                              const std::string& tag = {}) {
    return {{"Notes", name}, "Note", bytesOf(text), tag};
}

}  // namespace quorvi::test
