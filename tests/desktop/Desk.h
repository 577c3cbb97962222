#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Quorvi/app/composition/LinuxDesktop.h"
#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/system/MemoryKeyStore.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "tests/fakes/FakeLocalKeyMonitor.h"
#include "tests/fakes/PrintedMessage.h"
#include "tests/support/Paths.h"
#include "tests/support/Process.h"
#include "tests/support/desktop/Editors.h"
#include "tests/support/desktop/FieldReader.h"
#include "tests/support/desktop/TestUser.h"

namespace quorvi::test {

inline constexpr auto spokenSentence = "the weather is nice today";
inline constexpr auto writtenSentence = "The weather is nice today.";

// The offline speech service, knowing the sentence that is spoken.
class SpeechService {
public:
    explicit SpeechService(const std::string& program = builtProgram("quorvi-speech-service"))
        : process_({program, "--port", "0", "--punctuate", "--sentences",
                    folder_.write("sentences", std::string(spokenSentence) + "\n")}) {
        const auto line = process_.readLine();
        address_ = line.substr(line.rfind(' ') + 1);
    }
    const std::string& address() const { return address_; }
    void end() { process_.kill(); }

private:
    TestFolder folder_;
    Process process_;
    std::string address_;
};

// A user's desk: the real controller on the real adapters, a keyboard, a voice, and somebody who
// looks at the fields of other programs. The main thread's loop runs inside the waiting functions.
class Desk : public testing::Test {
protected:
    static void SetUpTestSuite() {
        service = std::make_unique<SpeechService>();
        voice = std::filesystem::temp_directory_path() / "speech.wav";
        outputOf({"espeak-ng", "-v", "en-us+f2", "-s", "130", "-w", voice, spokenSentence});
    }
    static void TearDownTestSuite() { service.reset(); }

    Desk() : desktop_(std::make_unique<LinuxDesktop>(scheduler)), reader(lookingGlass_) {
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
    void startQuorvi(std::string address = {}) {
        auto environment =
            desktop_->environment(localKeys, preferences, keyStore, history, corrections);
        environment.accountSync = [this]() -> SyncControl& { return sync; };
        environment.service =
            serviceAddress(address.empty() ? service->address() : std::move(address));
        model = std::make_unique<AppModel>(std::move(environment));
        ASSERT_TRUE(until([this] { return model->ready(); })) << "Quorvi did not become ready";
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
        Process playing({"paplay", "-d", getenv("QUORVI_MIC_FEED"), voice});
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
    void expectSentence(const AXElement& field, const std::string& before = {},
                        const std::string& after = {}) {
        EXPECT_EQ(model->stage(), DictationStage::success) << model->message();
        EXPECT_TRUE(untilText(field, before + writtenSentence + after))
            << reader.value(field).value_or("(unreadable)");
    }

    // Starts a program, waits for its field to have the focus and to answer, and yields the field.
    std::optional<AXElement> open(const std::vector<std::string>& command,
                                  std::string_view role = "AXTextArea") {
        editor = Process(command);
        user.bringToFront(editor.pid());
        const auto field = reader.waitForFocus(editor.pid(), role);
        if (!field) ADD_FAILURE() << command.front() << " shows no " << role;
        // A program that is still starting takes its time over the first question.
        if (field) until([&] { return reader.selection(*field).has_value(); });
        return field;
    }
    bool untilText(const AXElement& field, std::string_view text) {
        return until([&] { return reader.value(field) == text; });
    }

    static std::string clipboard(const std::string& target = "UTF8_STRING") {
        return outputOf({"timeout", "20", "xclip", "-selection", "clipboard", "-o", "-t", target});
    }
    void copy(const std::string& text) {
        shell("xclip -selection clipboard -i " + folder.write("copied", text) + " >/dev/null");
    }
    static std::ptrdiff_t recordingsLeft() {
        const auto recordings = std::filesystem::temp_directory_path() / "VeskRecordings";
        if (!std::filesystem::exists(recordings)) return 0;
        return std::distance(std::filesystem::directory_iterator(recordings), {});
    }

    static inline std::unique_ptr<SpeechService> service;
    static inline std::string voice;

    TestFolder folder;
    LoopScheduler scheduler;
    std::unique_ptr<LinuxDesktop> desktop_;
    FakeLocalKeyMonitor localKeys;
    MemoryPreferences preferences;
    MemoryKeyStore keyStore;
    HistoryStore history{desktop_->historyEnvironment(preferences, folder.path() / "history.json")};
    CorrectionStore corrections{preferences, scheduler};
    SyncDisabled sync;
    std::unique_ptr<AppModel> model;

    AtspiAccessibility lookingGlass_{[] { return true; }};
    FieldReader reader;
    TestUser user;
    Process editor;
};

}  // namespace quorvi::test
