#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Quorvi/app/composition/LinuxDesktop.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/system/MemoryKeyStore.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "QuorviCore/transcription/ServiceAddress.h"
#include "tests/fakes/FakeLocalKeyMonitor.h"
#include "tests/fakes/PrintedMessage.h"
#include "tests/support/desktop/EditorUser.h"
#include "tests/support/desktop/Speaker.h"

namespace quorvi::test {

// A user's desk: the real controller on the real adapters, a keyboard, a voice, and an editor. The
// main thread's loop runs inside the waiting functions.
class Desk : public testing::Test, protected EditorUser {
protected:
    Desk() : desktop_(std::make_unique<LinuxDesktop>(scheduler)) {
        keyStore.save("sk-test").start();
        useShortcut(Hotkey::f8);
    }
    ~Desk() override {
        if (!model) return;
        model->shutdown();
        until([this] { return model->isIdle(); });
        model.reset();
        desktop_.reset();
        EXPECT_EQ(recordingsLeft(), 0) << "a recording outlived its dictation";
    }

    // Before Quorvi starts, so that it holds the key back from its first moment on.
    void useShortcut(const Hotkey& shortcut, DictationMode mode = DictationMode::hold) {
        Settings settings(preferences);
        settings.set(setting::hotkey, shortcut);
        settings.set(setting::mode, mode);
    }

    // Starts Quorvi and waits until it is ready to dictate.
    void startQuorvi() {
        auto environment =
            desktop_->environment(localKeys, preferences, keyStore, history, corrections);
        environment.accountSync = [this]() -> SyncControl& { return sync; };
        environment.service = serviceAddress(speaker().service);
        workspace = &environment.workspace;
        model = std::make_unique<AppModel>(std::move(environment));
        ASSERT_TRUE(until([this] { return model->ready(); })) << "Quorvi did not become ready";
    }

    static Speaker& speaker() {
        static Speaker only;
        return only;
    }
    bool until(const std::function<bool()>& condition) { return test::until(scheduler, condition); }
    bool untilStage(DictationStage stage) {
        return until([&] { return model->stage() == stage; });
    }
    // The dictation has ended, well or not.
    bool untilDone() {
        return until([this] { return !isActive(model->stage()); });
    }
    void wait(Duration time) { scheduler.runFor(time); }

    // Speaks the sentence into the virtual microphone, to its end.
    void speak() {
        auto playing = speaker().speak();
        ASSERT_TRUE(until([&] { return playing.hasEnded(); }));
        wait(std::chrono::milliseconds(150));
    }

    void record(std::uint8_t keycode = key::f8) {
        user.press(keycode);
        ASSERT_TRUE(untilStage(DictationStage::recording)) << model->message();
        speak();
    }
    void release(std::uint8_t keycode = key::f8) {
        user.release(keycode);
        ASSERT_TRUE(until([this] { return model->stage() != DictationStage::recording; }));
    }
    // One dictation with the key held, up to its end.
    void dictate(std::uint8_t keycode = key::f8) {
        record(keycode);
        release(keycode);
        ASSERT_TRUE(untilDone());
    }
    // Nothing but the sentence between the two: no key of ours has leaked into the field.
    void expectSentence(const AXElement& element, const std::string& before = {},
                        const std::string& after = {}) {
        EXPECT_EQ(model->stage(), DictationStage::success) << model->message();
        EXPECT_TRUE(until([&] {
            return reader.value(element) == before + writtenSentence + after;
        })) << reader.value(element).value_or("(unreadable)");
    }

    void copy(const std::string& text) { copyFile(folder.write("copied", text)); }

    LoopScheduler scheduler;
    std::unique_ptr<LinuxDesktop> desktop_;
    FakeLocalKeyMonitor localKeys;
    MemoryPreferences preferences;
    MemoryKeyStore keyStore;
    HistoryStore history{desktop_->historyEnvironment(preferences, folder.path() / "history.json")};
    CorrectionStore corrections{preferences, scheduler};
    SyncDisabled sync;
    std::unique_ptr<AppModel> model;
    const Workspace* workspace = nullptr;  // the started Quorvi's
};

}  // namespace quorvi::test
