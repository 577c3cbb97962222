// The load that one PostgreSQL server can take: accounts with several devices each. One device
// saves changes as fast as they are acknowledged; the others are notified and fetch them.
//
//   CloudLoadBench [ACCOUNTS DEVICES SECONDS]
//
// Each device saves hundreds of times faster than a person, so it represents many.

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/postgres/PostgresCloudDatabase.h"
#include "QuorviCore/async/TaskScope.h"
#include "bench/Figure.h"
#include "tests/support/cloud/PostgresServer.h"

namespace quorvi::bench {
namespace {

using namespace quorvi::test;

constexpr double changesOfADevice = 50;  // a day, with heavy use

// The server's processes: processor seconds, and mean private memory.
struct Processes {
    double seconds = 0;
    double megabytes = 0;
};

Processes processesOf(pid_t server) {
    Processes all;
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const auto process = entry.path().filename().string();
        if (process.find_first_not_of("0123456789") != process.npos) continue;
        std::ifstream file(entry.path() / "stat");
        std::string text((std::istreambuf_iterator<char>(file)), {});
        if (text.rfind(')') == text.npos) continue;
        std::istringstream fields(text.substr(text.rfind(')') + 2));
        std::string state;
        long parent = 0, user = 0, system = 0;
        fields >> state >> parent;
        for (int i = 0; i < 9; ++i) fields >> text;
        fields >> user >> system;
        if (parent != server) continue;
        all.seconds +=
            static_cast<double>(user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
        std::ifstream memory(entry.path() / "smaps_rollup");
        for (std::string line; std::getline(memory, line);)
            if (line.starts_with("Private_Dirty:")) {
                all.megabytes += std::strtod(line.c_str() + 14, nullptr) / 1'024;
                ++count;
            }
    }
    all.megabytes /= std::max(count, 1);
    return all;
}

struct Totals {
    int changes = 0;
    std::vector<double> acknowledged, received;  // milliseconds since the start of the save
};

// A user with some devices.
class User {
public:
    User(LoopScheduler& loop, const PostgresServer& server, int devices, Totals& totals)
        : totals_(totals), account_(newAccount(server)), tasks_(loop) {
        for (int i = 0; i < devices; ++i) {
            auto& device = *devices_.emplace_back(std::make_unique<Device>());
            device.database = std::make_unique<PostgresCloudDatabase>(
                loop, server.address(account_), password("pass word"));
            device.told = device.database->onRemoteChange([this, &device] { fetch(device); });
            tasks_.start([this, &device](std::stop_token stop) { return connect(device, stop); });
        }
    }
    bool ready() const { return connected_ == devices_.size(); }
    void begin(TimePoint end) {
        tasks_.start([this, end](std::stop_token stop) { return dictate(end, stop); });
    }
    bool done() const { return tasks_.isEmpty(); }

private:
    struct Device {
        std::unique_ptr<PostgresCloudDatabase> database;
        Subscription told;
        std::string token;
        bool fetching = false, again = false;
    };

    Task<void> connect(Device& device, std::stop_token stop) {
        auto saving = device.database->saveZone("QuorviAccount", stop);
        co_await saving;
        auto subscribing = device.database->saveSubscription("changes", stop);
        co_await subscribing;
        ++connected_;
    }
    Task<void> dictate(TimePoint end, std::stop_token stop) {
        while (std::chrono::steady_clock::now() < end) {
            const auto name = "history:" + std::to_string(++number_);
            begun_[name] = millisecondsNow();
            std::vector<CloudRecord> records;
            records.push_back({{"QuorviAccount", name}, "QuorviItem", Bytes(600, 'x'), ""});
            auto saving = devices_[0]->database->saveRecords(std::move(records), stop);
            const auto results = co_await saving;
            if (results.at(0).error) throw CloudError(*results[0].error);
            totals_.acknowledged.push_back(millisecondsNow() - begun_[name]);
            ++totals_.changes;
        }
    }
    void fetch(Device& device) {
        if (std::exchange(device.again, true) || device.fetching) return;
        tasks_.start([this, &device](std::stop_token stop) { return follow(device, stop); });
    }
    Task<void> follow(Device& device, std::stop_token stop) {
        device.fetching = true;
        while (std::exchange(device.again, false)) {
            auto fetching = device.database->recordChanges("QuorviAccount", device.token, stop);
            auto page = co_await fetching;
            device.token = page.token;
            device.again |= page.more;
            for (const auto& record : page.modified)
                totals_.received.push_back(millisecondsNow() - begun_[record.id.name]);
        }
        device.fetching = false;
    }

    Totals& totals_;
    const std::string account_;
    std::vector<std::unique_ptr<Device>> devices_;
    std::size_t connected_ = 0;
    int number_ = 0;
    std::map<std::string, double> begun_;
    TaskScope tasks_;
};

void run(int accounts, int devices, int seconds, bool push) {
    PostgresServer server(
        "127.0.0.1", {},
        {"shared_buffers=256MB", "max_connections=" + std::to_string(accounts * devices + 20)});
    if (!push) server.sql("UPDATE quorvi.server SET push = false");
    LoopScheduler loop;
    Totals totals;
    std::vector<std::unique_ptr<User>> users;
    for (int i = 0; i < accounts; ++i)
        users.push_back(std::make_unique<User>(loop, server, devices, totals));
    const auto all = [&](bool (User::*what)() const) {
        return [&users, what] {
            return std::ranges::all_of(users, [what](const auto& user) { return (*user.*what)(); });
        };
    };
    if (!loop.runUntil(all(&User::ready), std::chrono::minutes(2)))
        throw std::runtime_error("not all devices are connected");
    loop.runFor(std::chrono::seconds(1));

    const auto before = processesOf(server.pid());
    const double start = millisecondsNow();
    for (const auto& user : users)
        user->begin(std::chrono::steady_clock::now() + std::chrono::seconds(seconds));
    loop.runUntil(all(&User::done), std::chrono::minutes(10));
    const double spent = (millisecondsNow() - start) / 1'000;
    const auto after = processesOf(server.pid());

    const std::string suffix = push ? "" : "_without_push";
    figure("pg_load_changes" + suffix, totals.changes / spent, "changes/s");
    figure("pg_load_acknowledged_p95" + suffix, percentile(totals.acknowledged, 0.95), "ms");
    figure("pg_load_server_cpu" + suffix, (after.seconds - before.seconds) / totals.changes * 1e6,
           "us/change");
    figure("pg_load_devices" + suffix, totals.changes / spent * 86'400 / changesOfADevice / 10,
           "devices");
    if (!push || totals.received.empty()) return;
    figure("pg_load_received_p50", percentile(totals.received, 0.5), "ms");
    figure("pg_load_received_p95", percentile(totals.received, 0.95), "ms");
    figure("pg_load_session_memory", after.megabytes, "MB");
}

}  // namespace
}  // namespace quorvi::bench

int main(int count, char** arguments) {
    const auto number = [&](int place, int otherwise) {
        return count > place ? std::atoi(arguments[place]) : otherwise;
    };
    for (const bool push : {true, false})
        quorvi::bench::run(number(1, 12), number(2, 3), number(3, 5), push);
}
