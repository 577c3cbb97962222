#pragma once

#include <map>
#include <memory>
#include <string>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/postgres/PostgresCloudDatabase.h"
#include "tests/support/cloud/CloudDesk.h"
#include "tests/support/cloud/PostgresServer.h"

namespace quorvi::test {

// The base of fixtures whose machines are on a server.
class PostgresDesk : public CloudDesk {
protected:
    bool runUntil(const std::function<bool()>& condition) override {
        return until(loop, condition, std::chrono::seconds(120));
    }
    std::unique_ptr<PostgresCloudDatabase> machine(const std::string& address,
                                                   PostgresTimes times = {},
                                                   const std::string& secret = "pass word") {
        return std::make_unique<PostgresCloudDatabase>(loop, address, password(secret), times);
    }
    // Returns all records of the zone "Notes".
    std::map<std::string, CloudRecord> everything(CloudDatabase& database) {
        std::map<std::string, CloudRecord> all;
        for (CloudRecordChanges page{.more = true}; page.more;) {
            page = get(database.recordChanges("Notes", page.token, {}));
            for (auto& one : page.modified) all.insert_or_assign(one.id.name, one);
        }
        return all;
    }

    LoopScheduler loop;
};

}  // namespace quorvi::test
