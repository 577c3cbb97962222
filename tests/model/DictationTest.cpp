#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <deque>
#include <filesystem>
#include <string>
#include <vector>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/system/MemoryKeyStore.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "tests/fakes/FakeAccessibility.h"
#include "tests/fakes/FakeAudioInput.h"
#include "tests/fakes/FakeKeyEventPoster.h"
#include "tests/fakes/FakePasteboard.h"
#include "tests/fakes/FakePermissions.h"
#include "tests/fakes/FakeSoundOutput.h"
#include "tests/fakes/FakeWorkspace.h"

namespace quorvi {
namespace {

using namespace std::chrono_literals;
using Stage = DictationStage;

constexpr pid_t editor = 100;
constexpr KeyCode f8 = 100;
constexpr KeyCode rightOption = 61;

// A speech service that answers each request after a while.
class FakeService : public HttpTransport {
public:
    explicit FakeService(Scheduler& scheduler) : scheduler_(scheduler) {}

    Task<HttpResponse> send(HttpRequest request, std::stop_token stop) override {
        requests.push_back(std::move(request));
        auto travelling = sleepFor(scheduler_, answersAfter, deaf ? std::stop_token{} : stop);
        co_await travelling;
        co_return HttpResponse{status, Bytes(body.begin(), body.end())};
    }
    void openConnection(std::string) override { ++connections; }

    Duration answersAfter = 500ms;
    bool deaf = false;  // answers even when the request was cancelled
    int status = 200;
    std::string body = R"({"text":"hello there"})";
    std::vector<HttpRequest> requests;
    int connections = 0;

private:
    Scheduler& scheduler_;
};

class JournalObserver : public CorrectionObserver {
public:
    void start(const CorrectionContext& context, const InsertionTarget&, CorrectionStore&,
               std::vector<TextCorrection> applied, bool runTimer,
               std::function<std::uint64_t()>) override {
        journal.push_back("start " + context.transcript() + " " + std::to_string(applied.size()) +
                          (runTimer ? "" : " untimed"));
    }
    void stop(bool remember) override {
        journal.push_back(remember ? "stop, remember" : "stop");
    }
    std::vector<std::string> journal;
};

class DictationTest : public testing::Test {
protected:
    DictationTest() {
        std::filesystem::create_directory(folder);
        workspace.setFrontmost(RunningApplication{editor, "Editor"});
        accessibility.setWindow(editor, accessibility.make(editor, "AXWindow"));
        accessibility.focus(field);
        poster.onPost = [this](const auto&) { accessibility.type(field, pasteboard.text()); };
        pasteboard.copyText("mine");
        keyStore.save("sk-key").start();
        makeModel();
    }
    ~DictationTest() override {
        if (model) {
            model->shutdown();
            scheduler.advance(5s);
            EXPECT_TRUE(model->isIdle());
            model.reset();
        }
        scheduler.settle();
        EXPECT_EQ(recordingsLeft(), 0) << "a recording outlived its dictation";
        EXPECT_EQ(keyboard.contradictions, std::vector<std::string>{});
        std::filesystem::remove_all(folder);
    }

    void makeModel() {
        model.reset();
        model = std::make_unique<AppModel>(AppModel::Environment{
            scheduler, executor, executor, keyboard, poster, accessibility, workspace, pasteboard,
            microphone, speaker, permissions, preferences, keyStore, service, history, corrections,
            observer, [this]() -> AccountSync& { return sync; }, "https://speech.example", folder});
        model->showOverlay = [this] { overlay = "shown"; };
        model->hideOverlay = [this] { overlay = "hidden"; };
        model->setShortcut(Hotkey::f8);
        settle();
    }
    void settle() { scheduler.advance(1ms); }
    void speak(Duration time) { scheduler.advance(time); }
    void dictate(Duration time = 1s) {
        keyboard.press(f8);
        speak(time);
        keyboard.release(f8);
        settle();
    }
    int recordingsLeft() const {
        int count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            (void)entry;
            ++count;
        }
        return count;
    }
    // How many cues were played.
    std::size_t cues() const {
        std::size_t count = 0;
        for (const auto& event : speaker.events())
            count += event.kind == FakeSoundOutput::Event::Kind::play;
        return count;
    }

    std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("quorvi-dictation-" + std::to_string(getpid()));
    VirtualScheduler scheduler;
    TurnExecutor executor{scheduler};
    FakeKeyEventTap keyboard;
    FakeKeyEventPoster poster{scheduler, &keyboard};
    FakeAccessibility accessibility{scheduler};
    FakeWorkspace workspace;
    FakePasteboard pasteboard{scheduler};
    FakeAudioInput microphone{scheduler};
    FakeSoundOutput speaker;
    FakePermissions permissions;
    MemoryPreferences preferences;
    MemoryKeyStore keyStore;
    FakeService service{scheduler};
    MemoryHistoryStore history;
    MemoryCorrectionStore corrections{
        {TextCorrection{.id = newUuid(), .original = "hello", .replacement = "Hello"}}};
    JournalObserver observer;
    NoAccountSync sync;
    AXElement field = accessibility.makeText(editor, "Dear ");
    std::string overlay;
    std::unique_ptr<AppModel> model;
};

TEST_F(DictationTest, RunsFromTheShortcutToTheInsertedText) {
    keyboard.press(f8);
    settle();
    EXPECT_EQ(model->stage(), Stage::recording);
    EXPECT_EQ(model->message(), "Dictating into Editor");
    EXPECT_EQ(overlay, "shown");
    EXPECT_EQ(cues(), 1u);
    EXPECT_EQ(service.connections, 1) << "opened while the user speaks";
    speak(1s);
    EXPECT_NEAR(model->elapsed(), 1, 0.06);
    EXPECT_NEAR(model->level(), 0.7, 0.001);
    keyboard.release(f8);
    settle();
    EXPECT_EQ(model->stage(), Stage::transcribing);
    EXPECT_EQ(model->message(), "Converting speech to text…");
    EXPECT_EQ(cues(), 2u);
    EXPECT_EQ(recordingsLeft(), 0);

    scheduler.advance(500ms);
    EXPECT_EQ(model->stage(), Stage::inserting);
    EXPECT_EQ(accessibility.text(field), "Dear Hello there");
    ASSERT_EQ(history.records().size(), 1u);
    EXPECT_EQ(history.records()[0].text, "Hello there");
    EXPECT_EQ(history.records()[0].appName, "Editor");
    EXPECT_EQ(history.records()[0].language, "automatic");
    EXPECT_EQ(history.records()[0].modelID, "gpt-transcribe");
    EXPECT_NEAR(history.records()[0].audioSeconds, 1, 0.01);

    scheduler.advance(1s);
    EXPECT_EQ(model->stage(), Stage::success);
    EXPECT_EQ(model->message(), "Paste sent to Editor.");
    EXPECT_EQ(pasteboard.text(), "mine");
    EXPECT_EQ(observer.journal.back(), "start Hello there 1");
    EXPECT_FALSE(model->hotkey().cancelEnabled());
    scheduler.advance(2s);
    EXPECT_EQ(overlay, "hidden");
    EXPECT_EQ(model->stage(), Stage::success) << "the stage stays";
}

TEST_F(DictationTest, AHeldModifierAndATappedOneDriveItToo) {
    model->setShortcut(Hotkey::rightOption);
    keyboard.press(rightOption);
    scheduler.advance(1300ms);
    EXPECT_EQ(model->stage(), Stage::recording);
    keyboard.release(rightOption);
    scheduler.advance(2s);
    EXPECT_EQ(model->stage(), Stage::success);

    accessibility.set(field, "AXSelectedTextRange", Utf16Range{0, 0});
    model->setMode(DictationMode::toggle);
    keyboard.tap(rightOption);
    speak(1s);
    EXPECT_EQ(model->stage(), Stage::recording);
    keyboard.tap(rightOption);
    scheduler.advance(2s);
    EXPECT_EQ(model->stage(), Stage::success);
    EXPECT_EQ(history.records().size(), 2u);
}

TEST_F(DictationTest, WhatIsTooShortOrTooQuietIsRefusedWithoutARequest) {
    const auto refusal = "No audible speech detected. Hold the key a little longer and try again.";
    struct Row {
        const char* name;
        Duration time;
        float level;
    };
    for (const auto& row : {Row{"released at once", 0ms, -20}, Row{"short", 250ms, -20},
                            Row{"silent", 2s, -60}, Row{"at the threshold", 2s, -48}}) {
        microphone.setLevel(row.level);
        dictate(row.time);
        EXPECT_EQ(model->stage(), Stage::failure) << row.name;
        EXPECT_EQ(model->message(), refusal) << row.name;
        scheduler.advance(1s);
        EXPECT_FALSE(microphone.isCapturing()) << row.name;
    }
    EXPECT_TRUE(service.requests.empty());
}

TEST_F(DictationTest, TheStartCueItselfIsNotTakenForSpeech) {
    // Loud while the cue sounds, silent afterwards.
    microphone.setLevels([](double seconds) { return seconds < 0.18 ? -10.0F : -70.0F; });
    dictate(600ms);
    EXPECT_EQ(model->stage(), Stage::failure);
    model->setSoundStyle(RecordingCue::start, RecordingSoundStyle::silent);
    dictate(600ms);
    EXPECT_EQ(model->stage(), Stage::transcribing);
    model->cancel();
    model->setSoundStyle(RecordingCue::start, RecordingSoundStyle::soft);
    model->setSoundCuesEnabled(false);
    dictate(600ms);
    EXPECT_EQ(model->stage(), Stage::transcribing);
}

TEST_F(DictationTest, FinishesByItselfAfterThreeMinutes) {
    model->setMode(DictationMode::toggle);
    keyboard.tap(f8);
    speak(179s);
    EXPECT_EQ(model->stage(), Stage::recording);
    speak(1100ms);
    EXPECT_EQ(model->stage(), Stage::transcribing);
}

TEST_F(DictationTest, TheShortcutDoesNothingWhileWorking) {
    for (auto mode : allDictationModes) {
        model->setMode(mode);
        model->start();
        speak(1s);
        model->finish();
        settle();
        keyboard.tap(f8);
        settle();
        EXPECT_EQ(model->stage(), Stage::transcribing);
        scheduler.advance(600ms);
        keyboard.tap(f8);
        settle();
        EXPECT_EQ(model->stage(), Stage::inserting);
        scheduler.advance(2s);
        EXPECT_EQ(microphone.captures(), mode == DictationMode::hold ? 1 : 2);
        accessibility.set(field, "AXSelectedTextRange", Utf16Range{0, 0});
    }
}

TEST_F(DictationTest, EscapeAtAnyMomentLeavesNothingBehind) {
    for (auto moment : {200ms, 1050ms, 1300ms, 1700ms, 2200ms}) {
        const auto saved = history.records().size();
        keyboard.press(f8);
        scheduler.advance(std::min<Duration>(moment, 1s));
        if (moment > 1s) {
            keyboard.release(f8);
            scheduler.advance(moment - 1s);
        }
        keyboard.tap(keyCode::escape);
        keyboard.release(f8);
        settle();
        EXPECT_EQ(model->stage(), Stage::idle) << moment.count();
        EXPECT_EQ(model->message(), "Cancelled. Ready for your next dictation.");
        EXPECT_EQ(overlay, "hidden");
        EXPECT_FALSE(microphone.isCapturing());
        scheduler.advance(10s);
        EXPECT_EQ(model->stage(), Stage::idle) << "a late result changed it";
        EXPECT_EQ(pasteboard.text(), "mine");
        EXPECT_EQ(recordingsLeft(), 0);
        EXPECT_EQ(history.records().size(), saved + (moment > 1500ms ? 1 : 0))
            << "words that were recognised are kept, " << moment.count();
        accessibility.set(field, "AXSelectedTextRange", Utf16Range{0, 0});
    }
}

TEST_F(DictationTest, AnAnswerThatArrivesAfterACancelIsDropped) {
    service.deaf = true;
    dictate();
    model->cancel();
    scheduler.advance(2s);
    EXPECT_EQ(model->stage(), Stage::idle);
    EXPECT_TRUE(history.records().empty());

    service.status = 401;
    dictate();
    model->cancel();
    scheduler.advance(2s);
    EXPECT_EQ(model->stage(), Stage::idle) << "nor does a late error show";
}

TEST_F(DictationTest, ADictationStartedDuringACancelledOneIsItsOwn) {
    service.deaf = true;
    dictate();
    model->cancel();
    service.body = R"({"text":"second"})";
    dictate();
    scheduler.advance(2s);
    EXPECT_EQ(model->stage(), Stage::success);
    ASSERT_EQ(history.records().size(), 1u);
    EXPECT_EQ(history.records()[0].text, "second");
}

TEST_F(DictationTest, TheClipboardIsCopiedWhileTheServiceWorksAndAgainOnlyIfItChanges) {
    dictate();
    const auto reads = [this] { return std::ranges::count(pasteboard.journal, "read"); };
    EXPECT_EQ(reads(), 1);
    scheduler.advance(2s);
    EXPECT_EQ(reads(), 1);
    EXPECT_EQ(pasteboard.text(), "mine");

    accessibility.set(field, "AXSelectedTextRange", Utf16Range{0, 0});
    dictate();
    pasteboard.copyText("newer");
    scheduler.advance(2s);
    EXPECT_EQ(reads(), 3);
    EXPECT_EQ(pasteboard.text(), "newer");
}

TEST_F(DictationTest, ARefusedInsertionLeavesTheTextOnTheClipboard) {
    dictate();
    keyboard.tap(0);  // the user types while the service works
    scheduler.advance(2s);
    EXPECT_EQ(model->stage(), Stage::clipboard);
    EXPECT_EQ(model->message(), "Text copied — press ⌘V in any text field.");
    EXPECT_TRUE(model->canCopyFromOverlay());
    EXPECT_EQ(pasteboard.text(), "Hello there");
    EXPECT_EQ(history.records().size(), 1u);
    EXPECT_TRUE(poster.posts.empty());
    EXPECT_EQ(corrections.learningStatus(),
              "Automatic learning needs a verified paste. Use Remember correction for this copied "
              "transcript.");
    scheduler.advance(12s);
    EXPECT_EQ(overlay, "hidden");

    pasteboard.refusesWrites = true;
    accessibility.set(field, "AXSelectedTextRange", Utf16Range{0, 0});
    dictate();
    scheduler.advance(2s);
    EXPECT_EQ(model->stage(), Stage::failure);
    EXPECT_EQ(model->message(),
              "The clipboard is unavailable. Use Copy text to try again, or select the transcript "
              "in Quorvi.");
    pasteboard.refusesWrites = false;
    model->copyTranscript();
    settle();
    EXPECT_EQ(model->stage(), Stage::clipboard);
    EXPECT_EQ(pasteboard.text(), "Hello there");
}

TEST_F(DictationTest, FailuresOfTheServiceShowTheirSentence) {
    service.status = 401;
    dictate();
    scheduler.advance(1s);
    EXPECT_EQ(model->stage(), Stage::failure);
    EXPECT_EQ(model->message(), "Your API key was rejected. Replace it in Settings.");
    scheduler.advance(6s);
    EXPECT_EQ(overlay, "hidden");

    service.status = 200;
    service.body = "<html>";
    dictate();
    scheduler.advance(1s);
    EXPECT_EQ(model->message(), "The transcription service returned an unreadable result.");
    EXPECT_TRUE(history.records().empty());
}

TEST_F(DictationTest, WithoutWhatItNeedsItSaysSo) {
    const auto notReady =
        "Open Quorvi from the menu bar, then Settings to finish API key and permission setup.";
    keyStore.remove().start();
    dictate();
    EXPECT_EQ(model->message(), notReady);
    keyStore.save("sk-key").start();
    permissions.setMicrophone(MicrophoneAuthorization::denied);
    dictate();
    EXPECT_EQ(model->message(), notReady);
    permissions.setMicrophone(MicrophoneAuthorization::authorized);

    accessibility.set(field, "AXSubrole", std::string("AXSecureTextField"));
    dictate();
    EXPECT_EQ(model->message(), "Select a regular text field to dictate.");
    EXPECT_EQ(microphone.captures(), 0) << "the microphone stayed shut";
    accessibility.unset(field, "AXSubrole");

    microphone.failRecord("The microphone could not start. Check your macOS sound input.");
    dictate();
    EXPECT_EQ(model->message(), "The microphone could not start. Check your macOS sound input.");
    microphone.failRecord(std::nullopt);
}

TEST_F(DictationTest, TroubleWhileRecordingEndsInItsSentence) {
    keyboard.press(f8);
    speak(1s);
    microphone.end(CaptureEnd::deviceLost);
    settle();
    EXPECT_EQ(model->stage(), Stage::failure);
    EXPECT_EQ(model->message(), "Recording stopped unexpectedly. Please try again.");
    keyboard.release(f8);

    keyboard.press(f8);
    speak(1s);
    permissions.setMicrophone(MicrophoneAuthorization::denied);
    scheduler.advance(2s);
    EXPECT_EQ(model->message(),
              "A required permission changed. Check Settings before dictating again.");
    permissions.setMicrophone(MicrophoneAuthorization::authorized);
    keyboard.release(f8);

    keyboard.press(f8);
    speak(1s);
    keyboard.disable();
    settle();
    EXPECT_EQ(model->message(), "Keyboard access was interrupted. Try your shortcut again.");
    keyboard.release(f8);

    keyboard.press(f8);
    speak(1s);
    workspace.sleep();
    EXPECT_EQ(model->stage(), Stage::idle);
    keyboard.release(f8);
    keyboard.invalidate();
    workspace.wake();
    EXPECT_TRUE(model->keyboardReady());
}

TEST_F(DictationTest, LettingGoWhileAHungApplicationIsAskedEndsTheStart) {
    accessibility.hang(accessibility.applicationElement(editor));
    accessibility.hang(accessibility.systemWideElement());
    keyboard.press(f8);
    scheduler.post([this] { keyboard.release(f8); });
    scheduler.advance(5s);
    EXPECT_EQ(model->stage(), Stage::failure);
    EXPECT_FALSE(microphone.isCapturing());
}

TEST_F(DictationTest, AnUnverifiedPasteIsSentAndSaysThatLearningCannotFollow) {
    poster.onPost = nullptr;
    dictate();
    scheduler.advance(2s);
    EXPECT_EQ(model->stage(), Stage::success);
    EXPECT_EQ(corrections.learningStatus(),
              "Could not verify readable text in Editor. Use Remember correction for this "
              "dictation.");
    EXPECT_EQ(observer.journal.back(), "stop, remember") << "no watch without a verified paste";
}

TEST_F(DictationTest, ALearnedCorrectionIsShownUnlessSomethingMoreUrgentIs) {
    const TextCorrection rule{.id = newUuid(), .original = "oxygen", .replacement = "oxygon"};
    corrections.onLearned(rule);
    EXPECT_EQ(model->stage(), Stage::learned);
    EXPECT_EQ(model->message(), "oxygen → oxygon");
    keyboard.press(f8);
    settle();
    corrections.onLearned(rule);
    EXPECT_EQ(model->stage(), Stage::recording);
    keyboard.release(f8);
    settle();
    corrections.onLearned(rule);
    EXPECT_EQ(model->stage(), Stage::failure);
}

TEST_F(DictationTest, PreferencesAreKeptAndBrokenOnesFallBack) {
    model->setMode(DictationMode::toggle);
    model->setTranscriptionModel(TranscriptionModel::mini);
    model->setVocabulary("kinase");
    model->setSoundStyle(RecordingCue::stop, RecordingSoundStyle::chime);
    model->setSoundCuesEnabled(false);
    model->setRecordingTheme(RecordingTheme::paper);
    makeModel();
    EXPECT_EQ(model->mode(), DictationMode::toggle);
    EXPECT_EQ(model->transcriptionModel(), TranscriptionModel::mini);
    EXPECT_EQ(model->vocabulary(), "kinase");
    EXPECT_EQ(model->soundStyle(RecordingCue::stop), RecordingSoundStyle::chime);
    EXPECT_FALSE(model->soundCuesEnabled());
    EXPECT_EQ(model->recordingTheme(), RecordingTheme::paper);

    preferences.setString("mode", "shout");
    preferences.setString("model", "GPT-TRANSCRIBE");
    preferences.setString("soundCuesEnabled", "yes");
    preferences.setBytes("hotkey", Bytes{'{', 'x'});
    preferences.setString("language", "greek");
    model->shutdown();
    model = nullptr;
    model = std::make_unique<AppModel>(AppModel::Environment{
        scheduler, executor, executor, keyboard, poster, accessibility, workspace, pasteboard,
        microphone, speaker, permissions, preferences, keyStore, service, history, corrections,
        observer, [this]() -> AccountSync& { return sync; }, "https://speech.example", folder});
    EXPECT_EQ(model->mode(), DictationMode::hold);
    EXPECT_EQ(model->transcriptionModel(), TranscriptionModel::transcribe);
    EXPECT_TRUE(model->soundCuesEnabled());
    EXPECT_EQ(model->shortcut(), Hotkey::rightOption);
    EXPECT_FALSE(preferences.contains("language"));
}

TEST_F(DictationTest, ResettingRecoversAndTellsWhatIsMissing) {
    keyboard.press(f8);
    settle();
    model->resetDictation();
    EXPECT_EQ(model->stage(), Stage::idle);
    EXPECT_EQ(model->message(),
              "Dictation reset. Click a text field and hold your shortcut again.");
    accessibility.trusted = false;
    model->resetDictation();
    EXPECT_EQ(model->message(), "Dictation reset. Check permissions and API key setup in Settings.");
    keyboard.release(f8);
}

TEST_F(DictationTest, PermissionsAreAskedForOrTheirSettingsOpened) {
    permissions.setMicrophone(MicrophoneAuthorization::notDetermined);
    model->requestMicrophone();
    EXPECT_TRUE(permissions.openedPanes.empty());
    permissions.answer(MicrophoneAuthorization::authorized);
    EXPECT_TRUE(model->microphoneAllowed());
    model->requestMicrophone();
    model->requestAccessibility();
    EXPECT_EQ(permissions.openedPanes,
              (std::vector<PrivacyPane>{PrivacyPane::microphone, PrivacyPane::accessibility}));
    EXPECT_EQ(accessibility.trustRequests, 1);
}

}  // namespace
}  // namespace quorvi
