#include <QLineEdit>
#include <QMessageBox>

#include "Quorvi/ui/insights/Charts.h"
#include "tests/ui/WindowTest.h"

namespace quorvi::test {
namespace {

// The history and insights pages, and the settings section for the history.
class HistoryPagesTest : public WindowTest {
protected:
    HistoryPagesTest() { settle(); }

    Date minutesAgo(double minutes) const {
        return {world.scheduler.date().secondsSinceReferenceDate - minutes * 60};
    }
    // `minutes` after the last midnight.
    Date afterMidnight(double minutes) const {
        return {world.calendar.get().startOfDay(world.scheduler.date()).secondsSinceReferenceDate +
                minutes * 60};
    }
    void record(const std::string& text, Date date, const std::string& app = "Mail",
                double seconds = 2) {
        world.history.record(text, seconds, app, "automatic",
                             DictationCostEstimate::of(TranscriptionModel::transcribe), date);
    }
    Seen history() { return open(WindowPage::history); }
    int rows() { return history().count("[Delete dictation]"); }
    void search(const char* query) {
        history().control<QLineEdit>("Search dictation history").setText(QString::fromUtf8(query));
    }
};

TEST_F(HistoryPagesTest, ListsTheDictationsByDay) {
    record("written late yesterday", afterMidnight(-1));
    record("written early", afterMidnight(1), "Text Editor", 61.5);
    expectInOrder(history(),
                  {"2 saved dictations", "TODAY | 12:01\u202FAM | Text Editor | 2 words · 62 sec",
                   "written early", "YESTERDAY | 11:59\u202FPM | Mail", "written late yesterday"});
    page().press("Copy dictation", 1);
    settle();
    EXPECT_EQ(world.pasteboard.text(), "written late yesterday");
    EXPECT_TRUE(page().has("[Copied]"));
    world.scheduler.advance(5s);
    EXPECT_FALSE(page().has("[Copied]"));
    world.scheduler.advance(24h);
    EXPECT_FALSE(history().has("TODAY")) << "midnight has passed";
}

TEST_F(HistoryPagesTest, FollowTheTimeZoneAndAClockThatMovesByItself) {
    record("early in Athens", afterMidnight(30));
    EXPECT_TRUE(history().has("TODAY | 12:30"));
    world.travels = Calendar("America/New_York", world.travels.locale());
    world.clock.change();
    settle();
    EXPECT_TRUE(page().has("YESTERDAY | 5:30"));
    open(WindowPage::insights);
    page().choose("Period", 0);
    record("late in New York", world.scheduler.date());
    settle();
    EXPECT_TRUE(page().has("| 4 |"));

    // Asleep until two hours before the next midnight; then over it.
    world.scheduler.moveDate(20h);
    world.clock.change();
    world.scheduler.advance(1h);
    settle();
    EXPECT_TRUE(page().has("| 4 |"));
    world.scheduler.advance(1h);
    settle();
    EXPECT_FALSE(page().has("| 4 |"));
    EXPECT_TRUE(history().has("YESTERDAY | 2:13"));
    world.scheduler.moveDate(24h);
    world.clock.change();
    settle();
    EXPECT_FALSE(page().has("YESTERDAY"));
}

TEST_F(HistoryPagesTest, FindsWordsAndApplicationsAndShowsFiftyAtATime) {
    for (int n = 0; n < 120; ++n)
        record(n % 10 == 0 ? "a meeting" : "something else", minutesAgo(120 - n),
               n == 5 ? "Café Writer" : "Mail");
    for (const int shown : {50, 100, 120}) {
        EXPECT_EQ(rows(), shown);
        if (shown < 120) page().press("Load more");
    }
    EXPECT_FALSE(page().has("Load more"));
    search("cafe");
    EXPECT_EQ(rows(), 1);
    // Two keystrokes before the first is answered: the last one counts.
    search("meet");
    page().control<QLineEdit>("Search dictation history").setText(QStringLiteral("nowhere"));
    EXPECT_TRUE(history().has("0 saved dictations | No matching dictations"));
    page().press("Clear search");
    EXPECT_EQ(rows(), 50);
}

TEST_F(HistoryPagesTest, LongTextsAreShortenedUntilAskedFor) {
    std::string text;
    while (text.size() < 340) text += "word ";
    record(text + "0123456789", minutesAgo(2));  // 350 characters
    record(text + "0123456789a end", minutesAgo(1));
    EXPECT_EQ(history().count("[Show full text]"), 1);
    EXPECT_FALSE(page().has("0123456789a"));
    page().press("Show full text");
    EXPECT_TRUE(page().has("0123456789a end"));
    page().press("Show less");
    EXPECT_FALSE(page().has("0123456789a"));
}

TEST_F(HistoryPagesTest, SaysWhyItIsEmptyAndWhatIsWrong) {
    EXPECT_TRUE(history().has("0 saved dictations | Your next dictation starts your history"));
    world.history.setKeepTranscripts(false);
    record("no text of it is kept", minutesAgo(1));
    EXPECT_TRUE(history().has("Transcript saving is paused"));
    EXPECT_EQ(rows(), 0);
    world.files.full = true;
    world.history.setKeepTranscripts(true);
    record("lost", minutesAgo(1));
    EXPECT_TRUE(history().has("History could not be saved on this Mac."));
}

TEST_F(HistoryPagesTest, InsightsAreTheSumsOfThePeriod) {
    for (int app = 0; app < 11; ++app)
        record("three words here", minutesAgo(app + 1), "App " + std::to_string(app), 340);
    record("five words long ago indeed", afterMidnight(-60 * 24 * 40.0), "Old", 1.2);
    expectInOrder(open(WindowPage::insights),
                  {"<Period: 7 days>", "33", "11", "1h 2m", "App 0 | 3 words · 1 dictation",
                   "Top 10 of 11 apps", "1-day streak | Best: 1 days · all time",
                   "$0.2805 | USD · 11 dictations", "62.33 min · $0.0045/min"});
    EXPECT_FALSE(page().has("Old"));
    const auto days =
        part<DailyBars>(*world.window)->accessibleDescription().split(QLatin1Char('\n'));
    EXPECT_EQ(days.size(), 14);
    EXPECT_TRUE(days.last().endsWith(QStringLiteral(": 33 words, 11 dictations")));
    page().choose("Period", 4);
    EXPECT_TRUE(open(WindowPage::insights).has("| All time | Old | 5 words"));
}
TEST_F(HistoryPagesTest, EverythingIsDeletedOnlyAfterAConfirmation) {
    record("three words here", minutesAgo(1), "Mail", 60);
    EXPECT_TRUE(open(WindowPage::settings).has("$0.0045 | USD · 1 dictation"));
    for (const auto& [answer, left] : {std::pair("Cancel", 1u), {"Delete all", 0u}}) {
        page().press("Delete all history and statistics…");
        auto* box = world.window->findChild<QMessageBox*>();
        ASSERT_TRUE(box && box->isVisible());
        Seen(*box).press(answer);
        settle();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(world.history.records().size(), left) << answer;
    }
    EXPECT_TRUE(page().has("No completed dictations in this period."));
}

}  // namespace
}  // namespace quorvi::test
