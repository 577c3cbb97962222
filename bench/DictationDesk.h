#pragma once

#include <atomic>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <memory>
#include <numbers>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/app/composition/LinuxDesktop.h"
#include "Quorvi/dictation/RecordingCue.h"
#include "Quorvi/insertion/PasteKeyboard.h"
#include "Quorvi/platform/linux/atspi/AtspiAccessibility.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/system/MemoryKeyStore.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "bench/Figure.h"
#include "tests/fakes/FakeLocalKeyMonitor.h"
#include "tests/support/Process.h"
#include "tests/support/desktop/Editors.h"
#include "tests/support/desktop/FieldReader.h"
#include "tests/support/desktop/TestUser.h"

namespace quorvi::bench {

using namespace std::chrono_literals;

constexpr int rounds = 15;

// Answers every request with a given text, in the same turn.
class InstantService : public HttpTransport {
public:
    Task<HttpResponse> send(HttpRequest, std::stop_token) override {
        const auto body = "{\"text\":\"" + text + "\"}";
        co_return HttpResponse{200, Bytes(body.begin(), body.end())};
    }
    void openConnection(std::string) override {}

    std::string text;
};

// Notes when the paste keystroke comes back from the X server.
class WatchedTap : public KeyEventTap {
public:
    explicit WatchedTap(KeyEventTap& tap) : tap_(tap) {}
    bool install(std::function<TapVerdict(const TapEvent&)> handler) override {
        return tap_.install([this, handler = std::move(handler)](const TapEvent& event) {
            if (event.sourceUserData == quorviPasteEventMarker && pastedAt == 0)
                pastedAt = millisecondsNow();
            return handler(event);
        });
    }
    void remove() override { tap_.remove(); }
    bool isValid() const override { return tap_.isValid(); }
    bool isEnabled() const override { return tap_.isEnabled(); }
    void setEnabled(bool enabled) override { tap_.setEnabled(enabled); }
    void setSwallowed(std::vector<SwallowedKey> keys) override {
        tap_.setSwallowed(std::move(keys));
    }
    void setQuietModifier(std::optional<KeyCode> modifier) override {
        tap_.setQuietModifier(modifier);
    }
    bool keyIsDown(KeyCode key) const override { return tap_.keyIsDown(key); }
    bool buttonIsDown(std::int64_t button) const override { return tap_.buttonIsDown(button); }

    double pastedAt = 0;

private:
    KeyEventTap& tap_;
};

// Records when the first samples arrive.
class WatchedInput : public AudioInput {
public:
    explicit WatchedInput(AudioInput& input) : input_(input) {}
    std::vector<Microphone> microphones() const override { return input_.microphones(); }
    Observable& microphonesChanged() override { return input_.microphonesChanged(); }
    void prefer(std::string name) override { input_.prefer(std::move(name)); }
    std::unique_ptr<AudioLevel> makeLevel() override { return input_.makeLevel(); }
    std::unique_ptr<AudioCapture> makeCapture() override {
        auto capture = input_.makeCapture();
        current = capture.get();
        return capture;
    }
    void prepare() override { input_.prepare(); }

    AudioCapture* current = nullptr;

private:
    AudioInput& input_;
};

// Counts the reads of a field's text.
class WatchedAccessibility : public Accessibility {
public:
    explicit WatchedAccessibility(Accessibility& accessibility) : accessibility_(accessibility) {}

    bool isTrusted() const override { return accessibility_.isTrusted(); }
    void requestTrust() override { accessibility_.requestTrust(); }
    AXElement applicationElement(pid_t pid) override {
        return accessibility_.applicationElement(pid);
    }
    AXElement systemWideElement() override { return accessibility_.systemWideElement(); }
    std::optional<AXValue> attribute(const AXElement& element, std::string_view name,
                                     Duration timeout) override {
        if (name == "AXValue") ++reads;
        return accessibility_.attribute(element, name, timeout);
    }
    bool setAttribute(const AXElement& element, std::string_view name, bool value,
                      Duration timeout) override {
        return accessibility_.setAttribute(element, name, value, timeout);
    }
    std::optional<pid_t> processIdentifier(const AXElement& element) override {
        return accessibility_.processIdentifier(element);
    }

    std::atomic<int> reads{0};

private:
    Accessibility& accessibility_;
};

// The program's controller with all adapters, a real text editor (mousepad), a sound server with a
// tone, and a speech service that answers at once.
class DictationDesk {
public:
    DictationDesk() : reader_(lookingGlass_) {
        keyStore_.save("key").start();
        auto environment =
            desktop_.environment(localKeys_, preferences_, keyStore_, history_, corrections_);
        tap_.emplace(environment.tap);
        accessibility_.emplace(environment.accessibility);
        input_.emplace(environment.audioInput);
        AppModel::Environment watched{environment.scheduler,
                                      environment.accessibilityQueries,
                                      environment.disk,
                                      *tap_,
                                      environment.poster,
                                      *accessibility_,
                                      environment.workspace,
                                      environment.pasteboard,
                                      *input_,
                                      environment.recordings,
                                      environment.soundOutput,
                                      environment.permissions,
                                      localKeys_,
                                      preferences_,
                                      keyStore_,
                                      service_,
                                      history_,
                                      corrections_,
                                      [this]() -> SyncControl& { return sync_; },
                                      "https://speech.example"};
        watched.committer = environment.committer;
        watched.typing = environment.typing;
        editor_.emplace(test::mousepad(folder_.write("note.txt", "")));
        playTone();
        model_ = std::make_unique<AppModel>(std::move(watched));
        model_->setShortcut(Hotkey::f8);
        model_->setMode(DictationMode::toggle);
        until([this] { return model_->ready(); });
        until([this] {
            field_ = reader_.focused(editor_->pid());
            return field_ && reader_.role(*field_) == "AXTextArea";
        });
    }

    ~DictationDesk() {
        model_->shutdown();
        until([this] { return model_->isIdle(); });
    }

protected:
    struct Times {
        double toSample, toPaste, toVisible;
    };

    void until(const std::function<bool()>& condition) {
        const auto tick = scheduler_.every(1ms, [] {});
        if (!scheduler_.runUntil(condition, 30s)) {
            std::fprintf(stderr, "the desktop did not answer; %s; the field holds \"%s\"\n",
                         model_ ? model_->message().english().c_str() : "no controller",
                         field_ ? reader_.value(*field_).value_or("(unreadable)").c_str() : "");
            std::exit(1);
        }
    }

    // A tone into the microphone, all the time.
    void playTone() {
        Bytes wav = wavData(RecordingCue::start, RecordingSoundStyle::silent);
        const std::uint32_t seconds = 300;
        const std::uint32_t size = seconds * 44'100 * 2;
        for (int i = 0; i < 4; ++i) {
            wav[static_cast<std::size_t>(4 + i)] =
                static_cast<std::uint8_t>((36 + size) >> (8 * i));
            wav[static_cast<std::size_t>(40 + i)] = static_cast<std::uint8_t>(size >> (8 * i));
        }
        for (std::uint32_t i = 0; i < size / 2; ++i) {
            const auto sample =
                static_cast<std::int16_t>(8000 * std::sin(2 * std::numbers::pi * 440 * i / 44'100));
            wav.push_back(static_cast<std::uint8_t>(sample));
            wav.push_back(static_cast<std::uint8_t>(sample >> 8));
        }
        const auto file = folder_.write("tone.wav", std::string(wav.begin(), wav.end()));
        tone_.emplace(std::vector<std::string>{"paplay", "-d", getenv("QUORVI_MIC_FEED"), file});
    }

    void emptyEditor() {
        user_.chord({test::key::leftControl}, test::key::a);
        user_.tap(119);  // Delete
        until([this] { return reader_.value(*field_) == ""; });
    }

    Times dictate(const std::string& text) {
        emptyEditor();
        service_.text = text;
        tap_->pastedAt = 0;
        input_->current = nullptr;
        Times times{};

        auto begin = millisecondsNow();
        user_.press(test::key::f8);
        until([this] { return input_->current && input_->current->currentTime() > 0; });
        times.toSample = millisecondsNow() - begin;
        user_.release(test::key::f8);
        until([this] { return model_->stage() == DictationStage::recording; });
        scheduler_.runFor(600ms);

        begin = millisecondsNow();
        user_.press(test::key::f8);
        if (!getenv("SWAYSOCK")) {  // there no key pastes
            until([this] { return tap_->pastedAt > 0; });
            times.toPaste = tap_->pastedAt - begin;
        }
        until([&] { return reader_.value(*field_) == text; });
        times.toVisible = millisecondsNow() - begin;
        user_.release(test::key::f8);
        until([this] { return !isActive(model_->stage()); });
        return times;
    }

    test::TestFolder folder_;
    LoopScheduler scheduler_;
    LinuxDesktop desktop_{scheduler_};
    test::FakeLocalKeyMonitor localKeys_;
    MemoryPreferences preferences_;
    MemoryKeyStore keyStore_;
    HistoryStore history_{
        desktop_.historyEnvironment(preferences_, folder_.path() / "history.json")};
    CorrectionStore corrections_{preferences_, scheduler_};
    SyncDisabled sync_;
    InstantService service_;
    std::optional<WatchedTap> tap_;
    std::optional<WatchedAccessibility> accessibility_;
    std::optional<WatchedInput> input_;
    std::unique_ptr<AppModel> model_;

    AtspiAccessibility lookingGlass_{[] { return true; }};
    test::FieldReader reader_;
    test::TestUser user_;
    std::optional<test::Process> editor_;
    std::optional<test::Process> tone_;
    std::optional<AXElement> field_;
};

}  // namespace quorvi::bench
