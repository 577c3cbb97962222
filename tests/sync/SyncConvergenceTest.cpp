#include <gtest/gtest.h>

#include <random>

#include "tests/fakes/FakeCloudDatabase.h"
#include "tests/support/Seeds.h"
#include "tests/support/cloud/SyncEdits.h"
#include "tests/support/cloud/UnreliableCloud.h"
#include "tests/sync/SyncMachine.h"

// Several machines make random changes, with unreliable clouds, wrong clocks and crashes; at the
// end all must hold the same. QUORVI_SYNC_SEEDS is the number of histories, QUORVI_SYNC_FIRST_SEED
// the first of them.
namespace quorvi::test {
namespace {

class Household {
public:
    explicit Household(std::uint64_t seed) : random_(seed) {
        const auto count = 3 + below(3);
        for (std::uint64_t i = 0; i < count; ++i) {
            clouds_.push_back(std::make_unique<FakeCloudDatabase>(clock_, server_, "ada"));
            clouds_.back()->pageSize = 1 + below(20);
            clouds_.back()->delay = std::chrono::milliseconds(below(50));
            networks_.push_back(std::make_unique<UnreliableCloud>(*clouds_.back(), random_()));
            auto machine = std::make_unique<SyncMachine>(clock_, *networks_.back());
            machine->scheduler.skew = static_cast<double>(below(2 * 86400)) - 86400;
            if (chance(2)) machine->wholeUpTo = 500;  // the journal is used
            machines_.push_back(std::move(machine));
        }
    }

    void live() {
        for (int step = 0; step < 60; ++step) {
            act(below(machines_.size()));
            clock_.advance(std::chrono::milliseconds(below(4) ? below(3000) : below(40)));
        }
    }

    // Repairs everything and waits until nothing is under way.
    void settle() {
        for (std::size_t i = 0; i < machines_.size(); ++i) {
            networks_[i]->isAway = networks_[i]->isBad = false;
            if (!machines_[i]->isRunning()) machines_[i]->start();
            machines_[i]->sync->setEnabled(true);
        }
        clock_.advance(180s);
        // A regular pass may be under way at this moment.
        for (const auto& machine : machines_)
            for (int i = 0; i < 100 && machine->sync->working(); ++i) clock_.advance(10ms);
    }

    void check() {
        for (std::size_t i = 0; i < machines_.size(); ++i) noteKept(i);
        const auto expected = machines_[0]->values();
        for (const auto& machine : machines_) {
            EXPECT_EQ(machine->sync->status(), say::syncUpToDate());
            EXPECT_EQ(machine->sync->pendingCount(), 0u);
            EXPECT_EQ(machine->values(), expected);
            EXPECT_EQ(machine->rules(), machines_[0]->rules());
        }
        judge_.check(expected);
    }

private:
    std::uint64_t below(std::uint64_t limit) { return random_() % limit; }
    bool chance(std::uint64_t oneOf) { return below(oneOf) == 0; }
    // Tells the judge which edits the ledger has recorded.
    void noteKept(std::size_t who) {
        for (const auto& edit : waiting_[who].takenIn(*machines_[who])) judge_.wasKept(edit);
    }

    void act(std::size_t who) {
        auto& machine = *machines_[who];
        if (!machine.isRunning()) {
            machine.start();
            return;
        }
        noteKept(who);
        switch (below(18)) {
            case 12:
                machine.sync->setEnabled(!machine.sync->enabled());
                break;
            case 13:
            case 14:
                networks_[who]->isAway = !networks_[who]->isAway;
                break;
            case 15:
                if (chance(2)) clock_.advance(2ms);
                machine.kill();
                waiting_[who].clear();
                break;
            case 16:
                machine.quit();
                waiting_[who].clear();
                break;
            default: {
                SyncEditor editor(machine, machine.scheduler, random_(),
                                  [this](const SyncEdit& edit) { judge_.wasTried(edit); });
                for (auto& edit : editor.edit()) waiting_[who].add(std::move(edit), machine);
            }
        }
    }

    std::mt19937_64 random_;
    VirtualScheduler clock_;
    FakeCloudServer server_{clock_};
    std::vector<std::unique_ptr<FakeCloudDatabase>> clouds_;
    std::vector<std::unique_ptr<UnreliableCloud>> networks_;
    std::vector<std::unique_ptr<SyncMachine>> machines_;
    std::map<std::size_t, WaitingEdits> waiting_;
    SyncJudge judge_;
};

TEST(SyncConvergenceTest, AllMachinesEndWithTheSame) {
    forEachSyncSeed(200, [](unsigned seed) {
        Household household(seed);
        household.live();
        household.settle();
        household.check();
    });
}

}  // namespace
}  // namespace quorvi::test
