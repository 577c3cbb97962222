#include "Quorvi/corrections/CorrectionObserver.h"

#include <gtest/gtest.h>

#include <deque>
#include <stdexcept>

#include "Quorvi/system/MemoryPreferences.h"
#include "QuorviCore/text/Text.h"
#include "tests/fakes/VirtualScheduler.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;

constexpr pid_t editor = 7;

// Jobs wait until the test lets them run.
struct HeldExecutor : Executor {
    void run(std::function<void()> job) override {
        if (isHeld)
            jobs.push_back(std::move(job));
        else
            job();
    }
    void release() {
        isHeld = false;
        for (; !jobs.empty(); jobs.pop_front()) jobs.front()();
    }
    bool isHeld = false;
    std::deque<std::function<void()>> jobs;
};

// An editor in which "call the oxygen team" was dictated between two texts.
struct Desk {
    struct Read {
        TimePoint time;
        bool requireFocus;
    };

    explicit Desk(std::string textBefore = "Dear ", std::string textAfter = " Bye",
                  std::string dictated = "call the oxygen team")
        : before(std::move(textBefore)), after(std::move(textAfter)) {
        preferences.setBytes("savedTextCorrections", Bytes{'[', ']'});
        store.emplace(preferences, clock);
        observer = std::make_unique<CorrectionObserver>(
            clock, executor,
            [this](const InsertionTarget& target, bool requireFocus) {
                EXPECT_EQ(target.pid, editor);
                reads.push_back({clock.now(), requireFocus});
                return requireFocus && !hasFocus ? std::nullopt : field;
            },
            [this](pid_t pid) { return pid == editor && isFrontmost; });
        start(dictated);
    }

    void start(const std::string& dictated, bool runTimer = true) {
        transcript = dictated;
        const auto at = static_cast<std::int64_t>(text::utf16Length(before));
        const auto context = CorrectionContext::make(before + after, {at, 0}, dictated);
        ASSERT_TRUE(context);
        field = context->expectedField();
        observer->start(*context, {.pid = editor, .appName = "Editor"}, *store, {}, runTimer,
                        [this] { return input; });
    }
    // The user makes something else of the transcript.
    void edit(const std::string& text) {
        transcript = text;
        field = before + text + after;
        ++input;
    }
    void replace(const std::string& from, const std::string& to) {
        auto text = transcript;
        text.replace(text.find(from), from.size(), to);
        edit(text);
    }
    std::string codes() const {
        std::string result;
        for (const auto& event : store->learningEvents()) {
            EXPECT_EQ(event.app, "Editor");
            EXPECT_TRUE(event.counts.empty());
            result += (result.empty() ? "" : " ") + event.code.substr(event.code.find('.') + 1);
        }
        return result;
    }
    std::string learned() const {
        std::string result;
        for (const auto& rule : store->rules().rules())
            result = rule.original + ">" + rule.replacement + ";" + result;
        return result;
    }

    VirtualScheduler clock;
    HeldExecutor executor;
    MemoryPreferences preferences;
    std::optional<CorrectionStore> store;
    std::string before;
    std::string after;
    std::string transcript;
    std::optional<std::string> field;
    bool hasFocus = true;
    bool isFrontmost = true;
    std::uint64_t input = 41;
    std::vector<Read> reads;
    std::unique_ptr<CorrectionObserver> observer;
};

const std::string watching = "Learning in Editor. Correct a spelling, then pause for two seconds.";
const std::string tooManual = "This edit needs a manual rule. Choose Remember correction.";
const std::string unread = "Could not read the final edit in Editor. Use Remember correction.";
const std::string moved = "The surrounding text changed. Use Remember correction for this edit.";
const std::string saved = "Remembered: oxygen → oxygon";

TEST(CorrectionObserver, WhatTheUserDoesDecidesWhatIsLearned) {
    const struct {
        const char* name;
        void (*act)(Desk&);
        const char* codes;
        const char* learned;
        std::string status;
        bool isOver;
    } rows[] = {
        {"a fix and a pause",
         [](Desk& d) {
             d.replace("oxygen", "oxygon");
             d.clock.advance(2'449ms);  // seen at 350, two seconds old at the sample of 2,450
             EXPECT_EQ(d.learned(), "");
             d.clock.advance(1ms);
         },
         "started edited saved", "oxygen>oxygon;", saved, false},
        {"typing without a pause until the minute is over",
         [](Desk& d) {
             for (int i = 0; i < 62; ++i) {
                 d.edit("call the " + std::string(static_cast<std::size_t>(i), 'o'));
                 d.clock.advance(1s);
             }
         },
         "started edited", "", watching, true},
        {"a fix, and then the minute is over",
         [](Desk& d) {
             d.replace("oxygen", "oxygon");
             d.clock.advance(61s);
         },
         "started edited saved", "oxygen>oxygon;", saved, true},
        {"nothing but a click",
         [](Desk& d) {
             ++d.input;
             d.clock.advance(61s);
         },
         "started", "", "No spelling change was detected in the last dictation.", true},
        {"the application changes its own text",
         [](Desk& d) {
             d.replace("oxygen", "oxygon");
             --d.input;
             d.clock.advance(61s);
         },
         "started edited noInput", "", watching, true},
        {"another application right after the fix",
         [](Desk& d) {
             d.replace("oxygen", "oxygon");
             d.hasFocus = d.isFrontmost = false;
             d.clock.advance(350ms);
             EXPECT_FALSE(d.reads.back().requireFocus);
         },
         "started focusLeft saved", "oxygen>oxygon;", saved, true},
        {"another application, and the field is gone with the edit",
         [](Desk& d) {
             d.replace("oxygen", "oxyg");
             d.clock.advance(1s);
             d.field.reset();
             d.isFrontmost = false;
             d.clock.advance(350ms);
         },
         "started edited focusLeft", "", unread, true},
        {"another field of the same application",
         [](Desk& d) {
             d.replace("oxygen", "oxygon");
             d.clock.advance(1s);
             d.hasFocus = false;
             d.clock.advance(3s);
         },
         "started edited unreadable saved", "oxygen>oxygon;", saved, true},
        {"the field disappears after a pause that no sample saw",
         [](Desk& d) {
             d.replace("oxygen", "oxygon");
             d.clock.advance(1s);
             d.field.reset();
             d.clock.advance(3s);
         },
         "started edited unreadable saved", "oxygen>oxygon;", saved, true},
        {"a field that comes back in time",
         [](Desk& d) {
             ++d.input;
             const auto text = d.field;
             for (int i = 0; i < 3; ++i) {
                 d.field.reset();
                 d.clock.advance(1'400ms);
                 d.field = text;
                 d.clock.advance(700ms);
             }
         },
         "started unreadable", "", watching, false},
        {"all is deleted",
         [](Desk& d) {
             d.edit("");
             d.clock.advance(2'449ms);
             EXPECT_FALSE(d.observer->isIdle());
             d.clock.advance(1ms);
         },
         "started temporarilyEmpty cleared", "",
         "The field was cleared before a correction was saved.", true},
        {"deleted and typed anew",
         [](Desk& d) {
             d.edit("");
             d.clock.advance(2s);
             d.edit("call the oxygon team");
             d.clock.advance(3s);
             d.edit("");
             d.clock.advance(2s);
         },
         "started temporarilyEmpty edited saved temporarilyEmpty", "oxygen>oxygon;", saved, false},
        {"cleared after a success, which stays what is shown",
         [](Desk& d) {
             d.replace("oxygen", "oxygon");
             d.clock.advance(3s);
             d.edit("");
             d.clock.advance(3s);
         },
         "started edited saved temporarilyEmpty cleared", "oxygen>oxygon;", saved, true},
        {"typing before the transcript",
         [](Desk& d) {
             d.before = "My dear ";
             d.edit("call the oxygon team");
             d.clock.advance(1s);
         },
         "started surroundingChanged", "", moved, true},
        {"another sentence, and then another application",
         [](Desk& d) {
             d.edit("I shall not come at all");
             d.clock.advance(3s);
             EXPECT_EQ(d.store->learningStatus(), watching);
             d.isFrontmost = false;
             d.clock.advance(1s);
         },
         "started edited rejectedEdit focusLeft rejectedEdit", "", tooManual, true},
        {"two fixes with a pause after each",
         [](Desk& d) {
             d.replace("oxygen", "oxygon");
             d.clock.advance(3s);
             d.replace("team", "teem");
             d.clock.advance(3s);
         },
         "started edited saved edited saved", "oxygen>oxygon;team>teem;", "Remembered: team → teem",
         false},
        {"a fix of what was just learned changes that rule",
         [](Desk& d) {
             d.replace("oxygen", "oxygon");
             d.clock.advance(3s);
             d.replace("oxygon", "oxigon");
             d.clock.advance(3s);
         },
         "started edited saved edited saved", "oxygen>oxigon;oxygon>oxigon;",
         "Remembered: oxygon → oxigon", false},
        {"a rule that is there already",
         [](Desk& d) {
             d.store->save({.original = "Oxygen", .replacement = "oxygon"});
             d.replace("oxygen", "oxygon");
             d.clock.advance(3s);
         },
         "started edited ruleAlreadyExists", "Oxygen>oxygon;", "This correction is already saved.",
         false},
        {"learning is switched off by someone who tells nobody",
         [](Desk& d) {
             d.replace("oxygen", "oxygon");
             d.clock.advance(1s);
             d.store->setLearnsAutomatically(false);
             const auto before = d.reads.size();
             d.clock.advance(61s);
             EXPECT_EQ(d.reads.size(), before);
         },
         "started edited", "", watching, true},
        {"stopped without remembering",
         [](Desk& d) {
             d.replace("oxygen", "oxygon");
             d.clock.advance(1s);
             d.executor.isHeld = true;
             d.clock.advance(350ms);
             EXPECT_FALSE(d.observer->stop(false));
             d.clock.settle();
             EXPECT_TRUE(d.observer->isIdle()) << "the read that is under way counts no more";
             d.executor.release();
             d.clock.advance(61s);
         },
         "started edited", "", watching, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Desk desk;
        row.act(desk);
        EXPECT_EQ(desk.codes(), row.codes);
        EXPECT_EQ(desk.learned(), row.learned);
        EXPECT_EQ(desk.store->learningStatus(), row.status);
        EXPECT_EQ(desk.observer->isIdle(), row.isOver);
    }
}

TEST(CorrectionObserver, LearnsAcrossScriptsAndBesideAnyText) {
    const struct {
        const char* before;
        const char* after;
        const char* dictated;
        const char* from;
        const char* to;
    } rows[] = {{"", "", "ask ταρνελ now", "ταρνελ", "tarnel"},
                {"", "", "поеду в Москва завтра", "Москва", "Moskva"},
                {"שלום 👨‍👩‍👧 e\u0301 ", " مرحبا 🇬🇷🇫🇷", "call the oxygen team",
                 "oxygen", "oxygon"},
                {"👍🏽", "\r\n", "le cafe\u0301 noir", "cafe\u0301", "caf\u00E9s"},
                {"x\n", "", "مرحبا بالعالم", "بالعالم", "بالعالمي"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.dictated);
        Desk desk(row.before, row.after, row.dictated);
        desk.replace(row.from, row.to);
        // Some applications store what they are given in another form.
        desk.field = text::toNfc(*desk.field);
        desk.clock.advance(3s);
        EXPECT_EQ(desk.codes(), "started edited saved");
        EXPECT_EQ(desk.learned(), text::toNfc(row.from) + ">" + text::toNfc(row.to) + ";");
    }
}

TEST(CorrectionObserver, ReadsAtMostOnceInEachIntervalAndNeverWithoutLearning) {
    Desk desk;
    desk.clock.advance(2min);
    for (std::size_t i = 1; i < desk.reads.size(); ++i)
        EXPECT_GE(desk.reads[i].time - desk.reads[i - 1].time, 350ms);
    EXPECT_LE(desk.reads.size(), 172u);
    EXPECT_TRUE(desk.observer->isIdle());

    desk.store->setLearnsAutomatically(false);
    desk.start("call the oxygen team");
    EXPECT_TRUE(desk.observer->isIdle());

    // A slow field: the next read begins only when this one has ended.
    Desk slow;
    slow.executor.isHeld = true;
    slow.clock.advance(10s);
    EXPECT_EQ(slow.executor.jobs.size(), 1u);
}

TEST(CorrectionObserver, ANewWatchEndsTheOldOneWithALastLookOfItsOwn) {
    Desk desk;
    desk.replace("oxygen", "oxygon");
    desk.executor.isHeld = true;
    desk.clock.advance(400ms);  // a sample of the old watch waits for its read, and so does another
    const Running<void> stale(desk.observer->sample());
    const auto edited = desk.field;
    desk.start("and the hydrogen too");
    desk.field = edited;  // what the old reads will find, and the new watch's loop must not
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

TEST(CorrectionObserver, TheLastLookCanBeAwaitedAndRunsWithoutThat) {
    for (const bool isAwaited : {true, false}) {
        Desk desk;
        desk.replace("oxygen", "oxygon");
        desk.executor.isHeld = true;
        auto ending = desk.observer->stop(true);
        ASSERT_TRUE(ending);
        if (!isAwaited) ending.reset();
        std::optional<Running<void>> waiting;
        if (ending) waiting.emplace(*std::move(ending));
        desk.clock.advance(5s);
        EXPECT_FALSE(desk.observer->isIdle());
        EXPECT_FALSE(waiting && waiting->ended());
        EXPECT_FALSE(desk.observer->stop(true)) << "there is no watch any more";
        desk.executor.release();
        desk.clock.settle();
        EXPECT_TRUE(desk.observer->isIdle());
        EXPECT_TRUE(!waiting || waiting->value());
        EXPECT_EQ(desk.learned(), "oxygen>oxygon;");
    }
}

TEST(CorrectionObserver, LearningThatIsSwitchedOffDuringAReadLearnsNothing) {
    for (const bool isLast : {false, true}) {
        Desk desk;
        desk.replace("oxygen", "oxygon");
        desk.clock.advance(2'400ms);
        desk.executor.isHeld = true;
        if (isLast)
            desk.observer->stop(true);
        else
            desk.clock.advance(100ms);
        ASSERT_EQ(desk.executor.jobs.size(), 1u);
        desk.store->setLearnsAutomatically(false);
        desk.executor.release();
        desk.clock.advance(1s);
        EXPECT_EQ(desk.codes(), "started edited");
        EXPECT_EQ(desk.learned(), "");
        EXPECT_TRUE(desk.observer->isIdle());
    }
}

TEST(CorrectionObserver, CanBeDestroyedWhileItReads) {
    for (const bool isLast : {false, true}) {
        Desk desk;
        desk.replace("oxygen", "oxygon");
        desk.executor.isHeld = true;
        std::optional<Running<void>> waiting;
        if (isLast)
            waiting.emplace(*desk.observer->stop(true));
        else
            desk.clock.advance(400ms);
        desk.observer.reset();
        desk.clock.settle();
        EXPECT_TRUE(!waiting || waiting->ended()) << "nobody waits for what will not come";
        desk.executor.release();
        desk.clock.advance(1min);
        EXPECT_EQ(desk.codes(), "started");
    }
}

TEST(CorrectionObserver, ACallbackOfTheStoreMayEndTheWatchThatLearnedOrBeginAnother) {
    for (const bool begins : {false, true}) {
        Desk desk;
        desk.store->onLearned = [&](const auto&) {
            desk.observer->stop(false);
            if (begins) desk.start("another text");
        };
        desk.clock.advance(58s);  // so that the pause and the minute end at the same sample
        desk.replace("oxygen", "oxygon");
        desk.clock.advance(2'300ms);
        EXPECT_EQ(desk.learned(), "oxygen>oxygon;");
        EXPECT_EQ(desk.observer->isIdle(), !begins);
    }
}

TEST(CorrectionObserver, TheCallerMaySampleAndAReadThatThrowsIsAFieldThatCannotBeRead) {
    Desk desk;
    desk.start("call the oxygen team", false);
    desk.clock.advance(1min);
    EXPECT_EQ(desk.reads.size(), 0u);
    CorrectionObserver failing(
        desk.clock, desk.executor,
        [](const auto&, bool) -> std::optional<std::string> { throw std::runtime_error("gone"); },
        [](pid_t) { return true; }, [] { return TimePoint(); });
    failing.start(*CorrectionContext::make("", {}, "text"), {.pid = editor, .appName = "Editor"},
                  *desk.store, {}, false, [] { return 0U; });
    const Running<void> sampling(failing.sample());
    desk.clock.settle();
    EXPECT_TRUE(sampling.value());
    EXPECT_EQ(desk.store->learningEvents().back().code, "observer.unreadable");
}

}  // namespace
}  // namespace quorvi::test
