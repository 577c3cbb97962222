#pragma once

#include <memory>
#include <utility>

#include "Quorvi/platform/ServiceProgram.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi::test {

// A program that serves a while after its start, unless it fails, and ends when told to.
class FakeServiceProgram : public ServiceProgram {
public:
    explicit FakeServiceProgram(Scheduler& scheduler) : scheduler_(scheduler) {}

    bool isInstalled() override { return installed; }
    Subscription onInstalledChange(std::function<void()> observer) override {
        return changes.subscribe(std::move(observer));
    }
    std::unique_ptr<Run> start(Events events) override {
        ++starts;
        auto run = std::make_unique<Running>(*this, std::move(events));
        run->timer = scheduler_.after(startsWithin, [this, run = run.get()] {
            if (fails)
                run->events.onEnd();
            else
                run->events.onServing({"http://127.0.0.1:7", "token"});
        });
        return run;
    }
    void crash() { running->events.onEnd(); }

    bool installed = true;
    bool fails = false;
    Duration startsWithin = std::chrono::milliseconds(800);
    int starts = 0;
    Observable changes;  // of `installed`
    bool isRunning() const { return running != nullptr; }

private:
    struct Running : Run {
        Running(FakeServiceProgram& owner, Events e) : program(owner), events(std::move(e)) {
            program.running = this;
        }
        ~Running() override { program.running = nullptr; }
        FakeServiceProgram& program;
        Events events;
        Timer timer;
    };
    Scheduler& scheduler_;
    Running* running = nullptr;
};

}  // namespace quorvi::test
