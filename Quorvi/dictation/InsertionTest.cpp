#include "Quorvi/dictation/InsertionTest.h"

#include <optional>
#include <utility>

#include "QuorviCore/Error.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr int countdownSeconds = 10;
constexpr auto plainSample = "Hello, world. Καλημέρα, κόσμε.";
constexpr auto learningSample = "This is a test for oxygen.";

}  // namespace

InsertionTest::InsertionTest(Environment environment)
    : environment_(environment), tasks_(environment.scheduler) {}

void InsertionTest::arm(Sample sample) {
    auto& e = environment_;
    if (!e.session.canBegin()) return;
    e.status.withdrawOffer();
    e.permissions.refresh();
    if (!e.permissions.insertion()) {
        e.session.fail(say::testNeedsAccessibility());
        return;
    }
    e.status.keepOverlay();
    isArmed_ = true;
    sample_ = sample;
    e.hotkey.setCancelEnabled(true);
    e.status.enter(DictationStage::idle, say::testArmed());
    e.status.showOverlay();
    countdown_.cancel();
    countdown_ = tasks_.start([this](std::stop_token stop) { return countDown(std::move(stop)); });
}

Task<void> InsertionTest::countDown(std::stop_token stop) {
    for (int n = countdownSeconds; n > 0; --n) {
        environment_.status.say(say::testCountdown(n));
        auto second = sleepFor(environment_.scheduler, 1s, stop);
        co_await second;
    }
    run();
}

void InsertionTest::run() {
    if (!isArmed_) return;
    auto& e = environment_;
    countdown_.cancel();
    isArmed_ = false;
    e.learning.finishWatch();
    // Busy from here on, so that neither the shortcut's release nor another press starts anything.
    e.status.enter(DictationStage::inserting, e.status.message());
    pasting_ = tasks_.start([this, id = e.session.supersede()](std::stop_token stop) {
        return paste(id, std::move(stop));
    });
}

Task<void> InsertionTest::paste(DictationSession::Id id, std::stop_token stop) {
    auto& e = environment_;
    const bool learns = sample_ == Sample::learning;
    InsertionTarget target;
    std::optional<Message> problem;
    TextInsertion::Outcome outcome;
    const auto isCurrent = [&session = e.session, id, stop] {
        return session.isCurrent(id) && !stop.stop_requested();
    };
    try {
        auto capturing = e.insertion.capture(e.hotkey.inputGeneration(), stop);
        target = co_await capturing;
        if (!isCurrent()) co_return;
        e.status.say(say::testPasting(target.app()));
        auto request = e.learning.request(target, {}, isCurrent);
        request.learnCorrections = learns;
        auto inserting = e.insertion.insert(learns ? learningSample : plainSample, target,
                                            std::move(request), stop);
        outcome = co_await inserting;
    } catch (const std::exception& error) {
        problem = messageOf(error);
    }
    if (!isCurrent()) co_return;
    if (problem) {
        e.session.fail(*std::move(problem));
        co_return;
    }
    if (learns && !outcome.verified) e.corrections.setLearningStatus(say::testCouldNotLearn());
    e.hotkey.setCancelEnabled(false);
    if (!outcome.isTaken) {
        e.status.enter(DictationStage::clipboard, say::textNotTaken(target.app()));
        e.status.hideOverlayAfter(12s);
        co_return;
    }
    e.status.enter(DictationStage::success, say::testSampleSent(target.app()));
    e.status.hideOverlayAfter(2s);
}

void InsertionTest::cancel() {
    countdown_.cancel();
    pasting_.cancel();
    isArmed_ = false;
}

}  // namespace quorvi
