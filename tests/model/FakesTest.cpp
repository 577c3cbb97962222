#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <string>

#include "QuorviCore/async/TaskScope.h"
#include "tests/fakes/FakeAccessibility.h"
#include "tests/fakes/FakeAudioInput.h"
#include "tests/fakes/FakeKeyEventPoster.h"
#include "tests/fakes/FakeKeyEventTap.h"
#include "tests/fakes/VirtualScheduler.h"

// What tests of the model rely on in their fakes.
namespace quorvi {
namespace {

using namespace std::chrono_literals;

TEST(FakeKeyEventTap, TheDeclaredKeyIsHeldBackWithItsRepeatAndReleaseOnly) {
    FakeKeyEventTap keyboard;
    keyboard.install([](const TapEvent&) { return TapVerdict::swallow; });
    keyboard.setSwallowed({{keyCode::space, modifierFlag::command}});
    keyboard.tap(keyCode::space);
    keyboard.press(keyCode::leftCommand);
    keyboard.press(keyCode::space);
    keyboard.release(keyCode::leftCommand);
    keyboard.press(keyCode::space);
    keyboard.release(keyCode::space);
    EXPECT_EQ(keyboard.swallowed.size(), 3u);
    EXPECT_EQ(keyboard.passed.size(), 4u);
    EXPECT_EQ(keyboard.contradictions.size(), 4u);  // this handler never lets anything pass
    EXPECT_EQ(keyboard.passed[2].flags, modifierFlag::command | modifierFlag::leftCommand);
    EXPECT_EQ(keyboard.passed[3].flags, 0u);
}

TEST(FakeKeyEventTap, ADisabledHookMissesEventsButTheKeysAreStillPhysical) {
    FakeKeyEventTap keyboard;
    int heard = 0;
    keyboard.install([&](const TapEvent&) { return ++heard, TapVerdict::pass; });
    keyboard.press(keyCode::rightOption);
    keyboard.disable();
    keyboard.release(keyCode::rightOption);
    EXPECT_EQ(heard, 2);  // the press and the news
    EXPECT_FALSE(keyboard.keyIsDown(keyCode::rightOption));
}

TEST(FakeKeyEventPoster, PostedEventsReachTheTapInALaterTurnWithTheirMarker) {
    VirtualScheduler scheduler;
    FakeKeyEventTap keyboard;
    std::vector<std::int64_t> markers;
    keyboard.install([&](const TapEvent& event) {
        markers.push_back(event.sourceUserData);
        return TapVerdict::pass;
    });
    FakeKeyEventPoster poster(scheduler, &keyboard);
    const std::vector<TapEvent> events{{.keyCode = keyCode::v, .sourceUserData = 7}};
    poster.post(events, 12);
    EXPECT_TRUE(markers.empty());
    scheduler.settle();
    EXPECT_EQ(markers, std::vector<std::int64_t>{7});
    EXPECT_FALSE(keyboard.keyIsDown(keyCode::v));
}

Task<void> record(FakeAudioInput& input, std::filesystem::path file, std::string& outcome) {
    auto capture = input.makeCapture();
    capture->onEnded = [&](CaptureEnd) { outcome += "ended "; };
    try {
        auto recording = capture->record(file, {}, {});
        co_await recording;
        outcome += "recording ";
        input.end(CaptureEnd::deviceLost);
        auto finishing = capture->finished();
        co_await finishing;
        outcome += std::to_string(std::filesystem::file_size(file));
    } catch (const std::exception& error) {
        outcome += error.what();
    }
}

TEST(FakeAudioInput, ALostDeviceIsReportedAndTheFileCanStillBeFinished) {
    VirtualScheduler scheduler;
    FakeAudioInput input(scheduler);
    input.setRecording({1, 2, 3});
    const auto file = std::filesystem::temp_directory_path() /
                      ("fake-recording-" + std::to_string(getpid()) + ".m4a");
    std::string lost, refused;
    TaskScope scope(scheduler);
    scope.start([&](std::stop_token) { return record(input, file, lost); });
    scheduler.settle();
    EXPECT_EQ(lost, "recording ended 3");
    EXPECT_FALSE(input.isCapturing());
    std::filesystem::remove(file);

    input.failRecord("No microphone.");
    scope.start([&](std::stop_token) { return record(input, file, refused); });
    scheduler.settle();
    EXPECT_EQ(refused, "No microphone.");
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST(FakeAccessibility, ASlowElementCostsItsTimeAndAtMostTheTimeOut) {
    VirtualScheduler scheduler;
    FakeAccessibility desktop(scheduler);
    const auto field = desktop.makeText(12, "Hello");
    desktop.setDelay(field, 30ms);
    const auto began = scheduler.now();
    EXPECT_TRUE(desktop.attribute(field, "AXValue", 50ms));
    EXPECT_EQ(scheduler.now() - began, 30ms);
    desktop.hang(field);
    EXPECT_FALSE(desktop.attribute(field, "AXValue", 50ms));
    EXPECT_EQ(scheduler.now() - began, 80ms);
}

TEST(FakeAccessibility, TypingReplacesTheSelectionInUtf16Units) {
    VirtualScheduler scheduler;
    FakeAccessibility desktop(scheduler);
    const auto field = desktop.makeText(12, "a😀éz");
    desktop.set(field, "AXSelectedTextRange", Utf16Range{1, 3});
    desktop.type(field, "ω");
    EXPECT_EQ(desktop.text(field), "aωz");
    EXPECT_EQ(std::get<Utf16Range>(*desktop.attribute(field, "AXSelectedTextRange", 1s)),
              (Utf16Range{2, 0}));
}

}  // namespace
}  // namespace quorvi
