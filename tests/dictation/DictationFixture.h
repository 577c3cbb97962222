#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "tests/fakes/FakeDesktop.h"

namespace quorvi::test {

using namespace std::chrono_literals;
using Stage = DictationStage;

inline constexpr pid_t editor = 100;
inline constexpr KeyCode f8 = 100;

// The controller on fakes of all ports, with an editor whose field holds "Dear " and a clipboard
// that holds "mine".
class DictationTest : public testing::Test, protected VirtualTime, protected FakeDesktop {
protected:
    DictationTest() : FakeDesktop(scheduler, scheduler) {
        pasteboard.copyText("mine");
        keyStore.save("sk-key").start();
        corrections.save({.original = "hello", .replacement = "Hello"});
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
        EXPECT_TRUE(recordings.named.empty()) << "a recording outlived its dictation";
        EXPECT_EQ(keyboard.contradictions, std::vector<std::string>{});
    }

    void makeModel() {
        model.reset();
        model = std::make_unique<AppModel>(environment(scheduler, executor, history, corrections,
                                                       [this]() -> SyncControl& { return sync; }));
        model->showOverlay = [this] { overlay = "shown"; };
        model->hideOverlay = [this] { overlay = "hidden"; };
        model->setShortcut(Hotkey::f8);
        settle();
    }
    void settle() { scheduler.advance(1ms); }
    void dictate(Duration time = 1s) {
        keyboard.press(f8);
        scheduler.advance(time);
        keyboard.release(f8);
        settle();
    }
    std::ptrdiff_t cues() const {
        return std::ranges::count_if(speaker.journal,
                                     [](const auto& line) { return line.starts_with("play"); });
    }
    // The code of the last learning event.
    std::string lastCode() const { return corrections.learningEvents().back().code; }
    void secureField() { accessibility.set(field, "AXSubrole", std::string("AXSecureTextField")); }
    std::string fieldText() const { return accessibility.text(field); }
    // The stage and the sentence, which belong together.
    void expect(Stage stage, const Message& message) const {
        EXPECT_EQ(model->stage(), stage) << model->message();
        EXPECT_EQ(model->message(), message);
    }
    void expectFailure(const Message& message) const { expect(Stage::failure, message); }
    void dictateToTheEnd() {
        dictate();
        scheduler.advance(2s);
    }
    // The next dictation finds another caret.
    void moveCaret() { accessibility.set(field, "AXSelectedTextRange", Utf16Range{0, 0}); }

    HistoryStore history{{preferences, files, "history.json", executor, scheduler, pasteboard,
                          [this] { return calendar; }}};
    CorrectionStore corrections{preferences, scheduler};
    SyncDisabled sync;
    AXElement field = openEditor(editor, "Dear ");
    std::string overlay;
    std::unique_ptr<AppModel> model;
};

}  // namespace quorvi::test
