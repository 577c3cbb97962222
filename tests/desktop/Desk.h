#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Quorvi/app/LinuxDesktop.h"
#include "Quorvi/platform/linux/AtspiAccessibility.h"
#include "Quorvi/platform/linux/LoopScheduler.h"
#include "Quorvi/system/MemoryKeyStore.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "tests/linux/support/EditorProcess.h"
#include "tests/linux/support/FieldReader.h"
#include "tests/linux/support/ServerProcess.h"
#include "tests/linux/support/TestUser.h"

namespace quorvi::test {

inline constexpr auto spokenSentence = "the weather is nice today";
inline constexpr auto writtenSentence = "The weather is nice today.";

// The offline speech service, knowing the sentence that is spoken.
class SpeechService {
public:
    SpeechService() {
        std::ofstream(sentences_) << spokenSentence << "\n";
        process_ = std::make_unique<ServerProcess>(std::vector<std::string>{
            QUORVI_SPEECH_SERVICE, "--port", "0", "--punctuate", "--sentences", sentences_});
        const auto line = process_->readLine();
        address_ = line.substr(line.rfind(' ') + 1);
    }
    const std::string& address() const { return address_; }
    void end() { process_.reset(); }

private:
    std::string sentences_ = std::filesystem::temp_directory_path() / "sentences";
    std::unique_ptr<ServerProcess> process_;
    std::string address_;
};

// A user's desk: the real controller on the real adapters, a keyboard, a voice, and somebody who
// looks at the fields of other programs. The main thread's loop runs inside the waiting functions.
class Desk : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        service = std::make_unique<SpeechService>();
        voice = std::filesystem::temp_directory_path() / "speech.wav";
        outputOf({"espeak-ng", "-v", "en-us+f2", "-s", "130", "-w", voice, spokenSentence});
    }
    static void TearDownTestSuite() { service.reset(); }

    Desk() : desktop_(std::make_unique<LinuxDesktop>(scheduler)), reader(lookingGlass_) {
        keyStore.save("sk-test").start();
        preferences.setString("mode", "hold");
    }
    ~Desk() override {
        if (!model) return;
        model->shutdown();
        until([this] { return model->isIdle(); });
        model.reset();
        desktop_.reset();
        EXPECT_EQ(recordingsLeft(), 0) << "a recording outlived its dictation";
    }

    // Starts Quorvi and waits until it is ready to dictate.
    void startQuorvi(std::string address = {}) {
        auto environment =
            desktop_->environment(preferences, keyStore, history, corrections, observer);
        environment.accountSync = [this]() -> AccountSync& { return sync; };
        environment.service =
            serviceAddress(address.empty() ? service->address() : std::move(address));
        model = std::make_unique<AppModel>(std::move(environment));
        model->setShortcut(Hotkey::f8);
        ASSERT_TRUE(until([this] { return model->ready(); })) << "Quorvi did not become ready";
    }

    // Runs the loop until the condition holds; false when that takes longer than a test may hang.
    bool until(const std::function<bool()>& condition) {
        const auto tick = scheduler.every(std::chrono::milliseconds(10), [] {});
        return scheduler.runUntil(condition, std::chrono::seconds(60));
    }
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
        EditorProcess playing({"paplay", "-d", getenv("QUORVI_MIC_FEED"), voice});
        int status = 0;
        ASSERT_TRUE(until([&] { return waitpid(playing.pid(), &status, WNOHANG) != 0; }));
        wait(std::chrono::milliseconds(150));
    }

    // One dictation with the key held, up to its end.
    void dictate() {
        user.press(key::f8);
        ASSERT_TRUE(untilStage(DictationStage::recording)) << model->message();
        speak();
        user.release(key::f8);
        ASSERT_TRUE(until([this] { return isBusy(model->stage()); })) << model->message();
        ASSERT_TRUE(untilDone());
    }

    // Starts a program, waits for its field to have the focus, and yields the field.
    std::optional<AXElement> open(const std::vector<std::string>& command,
                                  std::string_view role = "AXTextArea") {
        editor = std::make_unique<quorvi::testing::EditorProcess>(command);
        const auto pid = editor->pid();
        std::optional<AXElement> field;
        const bool found = until([&] {
            const auto focused = reader.focused(pid);
            if (focused && reader.role(*focused) == role) field = focused;
            return field.has_value();
        });
        if (!found) ADD_FAILURE() << command.front() << " shows no " << role;
        return field;
    }
    bool untilText(const AXElement& field, std::string_view text) {
        return until([&] { return reader.value(field) == text; });
    }

    static std::string clipboard(const std::string& target = "UTF8_STRING") {
        return outputOf({"timeout", "20", "xclip", "-selection", "clipboard", "-o", "-t", target});
    }
    static void copy(const std::string& text) {
        std::ofstream(std::filesystem::temp_directory_path() / "copied", std::ios::binary) << text;
        ASSERT_EQ(std::system("xclip -selection clipboard -i \"$TMPDIR/copied\""), 0);
    }
    static int recordingsLeft() {
        int count = 0;
        std::error_code ignored;
        for (std::filesystem::directory_iterator
                 entry(std::filesystem::temp_directory_path() / "VeskRecordings", ignored),
             end;
             entry != end; ++entry)
            ++count;
        return count;
    }

    using EditorProcess = quorvi::testing::EditorProcess;

    static inline std::unique_ptr<SpeechService> service;
    static inline std::string voice;

    LoopScheduler scheduler;
    std::unique_ptr<LinuxDesktop> desktop_;
    MemoryPreferences preferences;
    MemoryKeyStore keyStore;
    MemoryHistoryStore history;
    MemoryCorrectionStore corrections;
    NoCorrectionObserver observer;
    NoAccountSync sync;
    std::unique_ptr<AppModel> model;

    AtspiAccessibility lookingGlass_{[] { return true; }};
    quorvi::testing::FieldReader reader;
    quorvi::testing::TestFolder folder;
    TestUser user;
    std::unique_ptr<EditorProcess> editor;
};

}  // namespace quorvi::test
