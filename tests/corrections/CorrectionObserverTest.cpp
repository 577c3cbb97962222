#include "Quorvi/corrections/CorrectionObserver.h"

#include <gtest/gtest.h>

#include <span>
#include <stdexcept>

#include "Quorvi/system/MemoryPreferences.h"
#include "QuorviCore/text/Text.h"
#include "tests/fakes/VirtualScheduler.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

constexpr pid_t editor = 7;

// An editor in which "call the oxygen team" was dictated between two texts of several scripts. It
// stores what is typed in Form C, as some applications do.
struct Desk {
    Desk() {
        executor.isHeld = false;
        store.replaceFromSync({});
        observer = std::make_unique<CorrectionObserver>(
            clock, executor,
            [this](const InsertionTarget& target, bool requireFocus) {
                EXPECT_EQ(target.pid, editor);
                reads.push_back(clock.now());
                if (readThrows) throw std::runtime_error("gone");
                return requireFocus && !hasFocus ? std::nullopt : field;
            },
            [this](pid_t pid) { return pid == editor && isFrontmost; });
        start("call the oxygen team");
    }

    void start(const std::string& dictated, bool runTimer = true) {
        transcript = dictated;
        const auto at = static_cast<std::int64_t>(text::utf16Length(before));
        const auto context = CorrectionContext::make(before + after, {at, 0}, dictated);
        ASSERT_TRUE(context);
        field = context->expectedField();
        observer->start(*context, {.pid = editor, .appName = "Editor"}, store, {}, runTimer,
                        [this] { return input; });
    }
    // The user edits the transcript.
    void edit(const std::string& edited) {
        transcript = edited;
        field = text::toNfc(before + edited + after);
        ++input;
    }
    void replace(const std::string& from, const std::string& to) {
        auto text = transcript;
        text.replace(text.find(from), from.size(), to);
        edit(text);
    }
    std::string codes() const {
        std::string result;
        for (const auto& event : store.learningEvents()) {
            EXPECT_EQ(event.app, "Editor");
            EXPECT_TRUE(event.counts.empty());
            result += (result.empty() ? "" : " ") + event.code.substr(event.code.find('.') + 1);
        }
        return result;
    }
    std::string learned() const {
        std::string result;
        for (const auto& rule : store.rules().rules())
            result = rule.original + ">" + rule.replacement + ";" + result;
        return result;
    }

    VirtualScheduler clock;
    HeldExecutor executor;
    MemoryPreferences preferences;
    CorrectionStore store{preferences, clock};
    std::string before = "שלום 👨‍👩‍👧 e\u0301 ";
    std::string after = " مرحبا 🇬🇷🇫🇷";
    std::string transcript;
    std::optional<std::string> field;
    bool hasFocus = true;
    bool isFrontmost = true;
    bool readThrows = false;
    std::uint64_t input = 41;
    std::vector<TimePoint> reads;
    std::unique_ptr<CorrectionObserver> observer;
};

// Steps of a user.
using Step = std::function<void(Desk&)>;

Step wait(Duration time) {
    return [time](Desk& desk) { desk.clock.advance(time); };
}
Step edit(const char* text) {
    return [text](Desk& desk) { desk.edit(text); };
}
Step replace(const char* from, const char* to) {
    return [from, to](Desk& desk) { desk.replace(from, to); };
}
void fix(Desk& desk) {
    desk.replace("oxygen", "oxygon");
}
void leave(Desk& desk) {
    desk.hasFocus = desk.isFrontmost = false;
}
void loseField(Desk& desk) {
    desk.field.reset();
}
TEST(CorrectionObserver, LearnsFromWhatTheUserDoes) {
    const auto watching = say::learningIn("Editor");
    const auto unread = say::finalEditNotRead("Editor");
    const auto moved = say::surroundingsChanged();
    const auto tooManual = say::editNeedsManualRule();
    const auto cleared = say::fieldCleared();
    const auto unchanged = say::noSpellingChange();
    const auto saved = say::remembered("oxygen → oxygon");
    const std::string oxygon = "oxygen>oxygon;";
    enum End { on, over };
    const Step click = [](Desk& d) { ++d.input; };
    const Step nothingPressed = [](Desk& d) { --d.input; };
    const Step typeBefore = [](Desk& d) { d.before = "My dear "; };
    const auto check = [](const char* name, const std::vector<Step>& steps, const char* codes,
                          const std::string& learned, const Message& status, End end) {
        SCOPED_TRACE(name);
        Desk desk;
        for (const auto& step : steps) step(desk);
        EXPECT_EQ(desk.codes(), codes);
        EXPECT_EQ(desk.learned(), learned);
        EXPECT_EQ(desk.store.learningStatus(), status);
        EXPECT_EQ(desk.observer->isIdle(), end == over);
    };
    // Seen by the sample at 350 ms, stable at that of 2450 ms.
    check("a fix before the pause", {fix, wait(2449ms)}, "started edited", "", watching, on);
    check("a fix and a pause", {fix, wait(2450ms)}, "started edited saved", oxygon, saved, on);
    check("a fix, and the minute", {fix, wait(61s)}, "started edited saved", oxygon, saved, over);
    check("nothing but a click", {click, wait(61s)}, "started", "", unchanged, over);
    check("the application changes its own text", {fix, nothingPressed, wait(61s)},
          "started edited noInput", "", watching, over);
    check("another application right after the fix", {fix, leave, wait(350ms)},
          "started focusLeft saved", oxygon, saved, over);
    check("another application, and the field is gone with the edit",
          {replace("oxygen", "oxyg"), wait(1s), loseField, leave, wait(350ms)},
          "started edited focusLeft", "", unread, over);
    check("the field disappears after a pause that no sample saw",
          {fix, wait(1s), loseField, wait(3s)}, "started edited unreadable saved", oxygon, saved,
          over);
    check("all is deleted", {edit(""), wait(2450ms)}, "started temporarilyEmpty cleared", "",
          cleared, over);
    check("deleted and typed anew",
          {edit(""), wait(2s), edit("call the oxygon team"), wait(3s), edit(""), wait(2s)},
          "started temporarilyEmpty edited saved temporarilyEmpty", oxygon, saved, on);
    check("cleared after a success, which stays what is shown", {fix, wait(3s), edit(""), wait(3s)},
          "started edited saved temporarilyEmpty cleared", oxygon, saved, over);
    check("typing before the transcript", {typeBefore, fix, wait(1s)}, "started surroundingChanged",
          "", moved, over);
    check("another sentence, and then another application",
          {edit("I shall not come at all"), wait(3s), leave, wait(1s)},
          "started edited rejectedEdit focusLeft rejectedEdit", "", tooManual, over);
    check("a fix of what was just learned changes that rule",
          {fix, wait(3s), replace("oxygon", "oxigon"), wait(3s)},
          "started edited saved edited saved", "oxygen>oxigon;oxygon>oxigon;",
          say::remembered("oxygon → oxigon"), on);
}

TEST(CorrectionObserver, ReadsAtMostOnceInEachIntervalAndNeverWithoutLearning) {
    Desk desk;
    desk.clock.advance(2min);
    for (std::size_t i = 1; i < desk.reads.size(); ++i)
        EXPECT_GE(desk.reads[i] - desk.reads[i - 1], 350ms);
    EXPECT_LE(desk.reads.size(), 172u);
    EXPECT_TRUE(desk.observer->isIdle());

    // A slow field: reads do not overlap.
    Desk slow;
    slow.executor.isHeld = true;
    slow.clock.advance(10s);
    EXPECT_EQ(slow.executor.jobs.size(), 1u);

    // The caller samples; a read that throws counts as an unreadable field.
    Desk manual;
    manual.start("call the oxygen team", false);
    manual.clock.advance(1min);
    EXPECT_TRUE(manual.reads.empty());
    manual.readThrows = true;
    const Running<void> sampling(manual.observer->sample());
    manual.clock.settle();
    EXPECT_TRUE(sampling.value());
    EXPECT_EQ(manual.codes(), "started started unreadable");
}

TEST(CorrectionObserver, ANewWatchEndsTheOldOneWithALastLookOfItsOwn) {
    Desk desk;
    desk.replace("oxygen", "oxygon");
    desk.executor.isHeld = true;
    desk.clock.advance(400ms);  // two samples of the old watch are reading
    const Running<void> stale(desk.observer->sample());
    const auto edited = desk.field;
    desk.start("and the hydrogen too");
    desk.field = edited;  // for the old reads; the new watch must ignore it
    desk.executor.release();
    desk.clock.settle();
    EXPECT_TRUE(stale.value());
    EXPECT_EQ(desk.codes(), "started started saved");
    EXPECT_EQ(desk.learned(), "oxygen>oxygon;");
    EXPECT_FALSE(desk.observer->isIdle()) << "the new watch is on";
    desk.replace("hydrogen", "hydrogon");
    desk.clock.advance(3s);
    EXPECT_EQ(desk.learned(), "oxygen>oxygon;hydrogen>hydrogon;");
}

TEST(CorrectionObserver, TheLastLookCanBeAwaited) {
    Desk desk;
    fix(desk);
    desk.executor.isHeld = true;
    const Running<void> waiting(*desk.observer->stop(true));
    desk.clock.advance(5s);
    EXPECT_FALSE(desk.observer->isIdle() || waiting.ended());
    EXPECT_FALSE(desk.observer->stop(true)) << "there is no watch any more";
    desk.executor.release();
    desk.clock.settle();
    EXPECT_TRUE(desk.observer->isIdle() && waiting.value());
    EXPECT_EQ(desk.learned(), "oxygen>oxygon;");
}

TEST(CorrectionObserver, AReadThatEndsAfterTheWatchTeachesNothing) {
    const std::pair<const char*, Step> ends[] = {
        {"stopped", [](Desk& desk) { EXPECT_FALSE(desk.observer->stop(false)); }},
        {"switched off", [](Desk& desk) { desk.store.setLearnsAutomatically(false); }},
        {"destroyed", [](Desk& desk) { desk.observer.reset(); }}};
    for (const bool isLast : {false, true})
        for (const auto& [name, end] : std::span(ends).subspan(isLast ? 1 : 0)) {
            SCOPED_TRACE(std::string(name) + (isLast ? " during the last look" : ""));
            Desk desk;
            desk.replace("oxygen", "oxygon");
            desk.clock.advance(2'400ms);
            desk.executor.isHeld = true;
            std::optional<Running<void>> waiting;
            if (isLast) waiting.emplace(*desk.observer->stop(true));
            desk.clock.advance(100ms);
            ASSERT_EQ(desk.executor.jobs.size(), 1u);
            end(desk);
            desk.clock.settle();
            // Waiting ends, even if the observer is destroyed.
            EXPECT_TRUE(desk.observer || !waiting || waiting->ended());
            desk.executor.release();
            desk.clock.advance(1min);
            EXPECT_EQ(desk.codes(), "started edited");
            EXPECT_EQ(desk.learned(), "");
            EXPECT_TRUE(!desk.observer || desk.observer->isIdle());
        }
}

}  // namespace
}  // namespace quorvi::test
