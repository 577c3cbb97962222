#pragma once

#include <functional>
#include <vector>

#include "Quorvi/platform/KeyEventPoster.h"
#include "QuorviCore/async/Scheduler.h"
#include "tests/fakes/FakeKeyEventTap.h"

namespace quorvi::test {

// Records what is posted. In the next turn the hook `tap`, if there is one, receives the events,
// and then `onPost` in place of the application.
class FakeKeyEventPoster : public KeyEventPoster {
public:
    struct Post {
        std::vector<TapEvent> events;
        pid_t pid = 0;
    };

    explicit FakeKeyEventPoster(Scheduler& scheduler, FakeKeyEventTap* tap = nullptr)
        : scheduler_(scheduler), tap_(tap) {}

    bool isAvailable() const override { return available; }
    Task<void> prepare(std::stop_token) override {
        if (losesDesktop) available = false;
        co_return;
    }
    Task<bool> looksBeforePasting(pid_t, std::stop_token) override { co_return looksFirst; }
    void post(std::span<const TapEvent> events, pid_t pid) override {
        posts.push_back({{events.begin(), events.end()}, pid});
        scheduler_.post([this, sent = posts.back()] {
            if (tap_)
                for (const auto& event : sent.events) tap_->deliver(event);
            if (onPost) onPost(sent);
        });
    }

    bool available = true;
    bool losesDesktop = false;  // when it is to prepare
    bool looksFirst = false;
    std::vector<Post> posts;
    std::function<void(const Post&)> onPost;

private:
    Scheduler& scheduler_;
    FakeKeyEventTap* tap_;
};

}  // namespace quorvi::test
