// Several machines, processes that are killed at any moment, over each real cloud: at the end all
// must hold the same, and no acknowledged change may be missing. QUORVI_SYNC_SEEDS is the number of
// histories, QUORVI_SYNC_FIRST_SEED the first of them.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <span>
#include <sstream>
#include <thread>

#include "tests/support/Paths.h"
#include "tests/support/Process.h"
#include "tests/support/Seeds.h"
#include "tests/support/Waiting.h"
#include "tests/support/cloud/PostgresServer.h"
#include "tests/support/cloud/SyncEdits.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

// The values of one machine.
struct Holdings {
    std::map<std::string, std::string> values;
    std::vector<std::string> rules;
    bool operator==(const Holdings&) const = default;
};

// A machine. Its process serves several histories, until it is killed.
class Device {
public:
    void move(std::filesystem::path home, const std::string& cloud, int skew) {
        home_ = std::move(home);
        std::filesystem::create_directories(home_);
        std::filesystem::permissions(home_, std::filesystem::perms::owner_all);
        place_ = home_.string() + ' ' + cloud + ' ' + std::to_string(skew) + ' ';
        isRunning_ = false;
    }
    bool isRunning() const { return isRunning_; }
    void start(std::uint64_t seed) {
        if (process_.pid() < 0)
            process_ = Process({builtProgram("sync_device")}, {}, Process::Input::own);
        tell("start " + place_ + std::to_string(seed));
        isRunning_ = true;
    }
    void tell(const std::string& command) { process_.writeLine(command); }
    void stop(SyncJudge& judge) {
        if (!isRunning_) return;
        tell("stop");
        await("stopped", judge);
        isRunning_ = false;
    }
    void kill(SyncJudge& judge) {
        process_.signal(SIGKILL);
        std::istringstream lines(process_.readAll());
        for (std::string line; std::getline(lines, line);) take(line, judge);
        process_.kill();
        isRunning_ = false;
    }
    // Reads lines up to this one.
    void await(const std::string& line, SyncJudge& judge) {
        for (auto read = process_.readLine(); read != line; read = process_.readLine())
            take(read, judge);
    }
    Holdings holdings(SyncJudge& judge) {
        holdings_ = {};
        tell("values");
        await("values", judge);
        return holdings_;
    }

private:
    void take(const std::string& line, SyncJudge& judge) {
        std::istringstream words(line);
        std::string what, id, value, device;
        words >> what;
        if (what == "stuck") throw std::runtime_error(home_.filename().string() + ": " + line);
        if (what == "value" && words >> id >> value) {
            holdings_.values[fromWord(id)] = fromWord(value);
        } else if (what == "rule" && words >> value) {
            holdings_.rules.push_back(fromWord(value));
        } else if (what == "tried" || what == "kept") {
            int kind = 0;
            SyncEdit edit{};
            words >> kind >> id >> value >> edit.revision >> device;
            edit.kind = static_cast<SyncEdit::Kind>(kind);
            edit.id = fromWord(id);
            edit.value = fromWord(value);
            edit.device = fromWord(device);
            if (what == "tried")
                judge.wasTried(edit);
            else
                judge.wasKept(edit);
        }
    }

    std::filesystem::path home_;
    std::string place_;
    Process process_;
    bool isRunning_ = false;
    Holdings holdings_;
};

class SyncBetweenDevicesTest : public testing::Test {
protected:
    // `newCloud` returns the address of an empty cloud, which may be in the folder.
    void tryAll(unsigned seeds,
                const std::function<std::string(const std::filesystem::path&)>& newCloud) {
        forEachSyncSeed(seeds, [&](unsigned seed) { liveOnce(seed, newCloud); });
        std::printf("%zu changes were acknowledged, %d processes killed\n", kept_, killed_);
        EXPECT_GT(kept_, 0u);
    }

private:
    void liveOnce(std::uint64_t seed,
                  const std::function<std::string(const std::filesystem::path&)>& newCloud) {
        random_.seed(seed);
        const TestFolder homes(true);
        const auto cloud = newCloud(homes.path() / "cloud");
        SyncJudge judge;
        const std::span devices(devices_.data(), 3 + below(3));
        for (auto& device : devices)
            device.move(homes.path() / std::to_string(&device - devices.data()), cloud,
                        static_cast<int>(below(2 * 86400)) - 86400);
        for (int step = 0; step < 40; ++step) {
            act(devices[below(devices.size())], judge);
            if (below(3) == 0) std::this_thread::sleep_for(std::chrono::milliseconds(below(12)));
        }
        for (auto& device : devices) {
            if (!device.isRunning()) device.start(random_());
            device.tell("settle");
        }
        check(devices, judge);
        for (auto& device : devices) device.stop(judge);
        kept_ += judge.keptCount();
    }

    void act(Device& device, SyncJudge& judge) {
        if (!device.isRunning()) {
            device.start(random_());
            return;
        }
        switch (below(20)) {
            case 0:
                device.tell("away");
                break;
            case 1:
            case 2:
                device.tell("back");
                break;
            case 3:
                device.tell("switch");
                break;
            case 4:
                device.stop(judge);
                break;
            case 5:
                // Also during the last command.
                std::this_thread::sleep_for(std::chrono::microseconds(below(5000)));
                device.kill(judge);
                ++killed_;
                break;
            default:
                device.tell("edit " + std::to_string(random_()));
                break;
        }
    }

    // Runs rounds of passes until all machines agree and nothing has changed in two rounds.
    void check(std::span<Device> devices, SyncJudge& judge) {
        std::vector<Holdings> before, now;
        for (int round = 0; round < 100; ++round) {
            for (auto& device : devices) device.tell("round");
            now.clear();
            for (auto& device : devices) device.await("round", judge);
            for (auto& device : devices) now.push_back(device.holdings(judge));
            const bool areSame =
                std::ranges::all_of(now, [&](const Holdings& one) { return one == now.front(); });
            if (areSame && now == before) break;
            before = now;
        }
        for (const auto& one : now) {
            EXPECT_EQ(one.values, now.front().values);
            EXPECT_EQ(one.rules, now.front().rules);
        }
        judge.check(now.front().values);
    }

    std::uint64_t below(std::uint64_t limit) { return random_() % limit; }

    std::mt19937_64 random_;
    std::array<Device, 5> devices_;
    std::size_t kept_ = 0;
    int killed_ = 0;
};

TEST_F(SyncBetweenDevicesTest, EndWithTheSameThroughAFolder) {
    tryAll(300, [](const std::filesystem::path& place) { return "folder:" + place.string(); });
}

TEST_F(SyncBetweenDevicesTest, EndWithTheSameThroughAServer) {
    const PostgresServer server;
    int count = 0;
    tryAll(200, [&](const std::filesystem::path&) {
        if (count % 50 == 0) {
            std::string statements;
            for (int i = count; i < count + 50; ++i)
                statements += "CREATE ROLE account" + std::to_string(i) +
                              " LOGIN IN ROLE quorvi_accounts PASSWORD 'pass word';";
            server.sql(statements);
        }
        return server.address("account" + std::to_string(count++));
    });
}

}  // namespace
}  // namespace quorvi::test
