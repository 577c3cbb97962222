#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QMessageBox>

#include "Quorvi/system/MemoryPreferences.h"
#include "Quorvi/ui/history/HistoryPage.h"
#include "Quorvi/ui/history/HistorySettings.h"
#include "Quorvi/ui/insights/InsightsPage.h"
#include "tests/fakes/FakeFileStore.h"
#include "tests/fakes/FakePasteboard.h"
#include "tests/fakes/VirtualScheduler.h"
#include "tests/support/ui/OffscreenEnvironment.h"
#include "tests/support/ui/SeenTexts.h"

namespace quorvi::test {
namespace {

using namespace std::chrono_literals;
using testing::AssertionFailure;
using testing::AssertionSuccess;

// The pages on a real store, whose background is turns of the virtual clock.
class HistoryPagesTest : public testing::Test {
protected:
    HistoryPagesTest() { settle(); }

    void settle() {
        scheduler.settle();
        for (int turn = 0; turn < 200; ++turn) {
            QCoreApplication::processEvents();
            scheduler.settle();
        }
    }
    Date minutesAgo(double minutes) const {
        return {scheduler.date().secondsSinceReferenceDate - minutes * 60};
    }
    // `minutes` after the midnight that today began with.
    Date afterMidnight(double minutes) const {
        return {calendar.startOfDay(scheduler.date()).secondsSinceReferenceDate + minutes * 60};
    }
    void dictate(const std::string& text, Date date, const std::string& app = "Mail",
                 double seconds = 2) {
        store.record(text, seconds, app, "automatic", TranscriptionModel::transcribe, date);
    }
    HistoryEnvironment environment() {
        return {store, executor, scheduler, [this] { return calendar; },
                [](const QString& transcript) {
                    auto* made = new QPushButton(QStringLiteral("Remember correction"));
                    made->setProperty("transcript", transcript);
                    return made;
                }};
    }
    template <class Page>
    void present(Page& page) {
        page.resize(800, 4000);
        page.show();
        settle();
    }
    static void press(const QWidget& root, const char* text, std::size_t which = 0) {
        for (auto* button : root.findChildren<QAbstractButton*>())
            if (button->isVisibleTo(&root) &&
                (button->text() == QString::fromUtf8(text) ||
                 button->accessibleName() == QString::fromUtf8(text)) &&
                which-- == 0)
                return button->click();
        ADD_FAILURE() << "no button " << text << " beside " << seen(root);
    }
    void answer(const QWidget& root, const char* title, const char* message, const char* button) {
        auto* box = root.findChild<QMessageBox*>();
        ASSERT_TRUE(box && box->isVisible());
        EXPECT_EQ(box->text(), QLatin1StringView(title));
        EXPECT_EQ(box->informativeText(), QLatin1StringView(message));
        press(*box, button);
        settle();
    }
    // The texts that are shown, beginning at one of them.
    static std::string seenFrom(const QWidget& root, const std::string& first) {
        const auto all = seen(root);
        const auto at = all.find(first);
        return at == all.npos ? "(not there) " + all : all.substr(at);
    }
    static bool shows(const QWidget& root, const std::string& part) {
        return seen(root).find(part) != std::string::npos;
    }
    static std::size_t count(const std::string& text, const std::string& part) {
        std::size_t number = 0;
        for (auto at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++number;
        return number;
    }

    const Calendar calendar{"Europe/Athens", "en_US"};
    VirtualScheduler scheduler;
    TurnExecutor executor{scheduler};
    MemoryPreferences preferences;
    FakeFileStore files;
    FakePasteboard pasteboard{scheduler};
    HistoryStore store{{preferences, files, "history.json", executor, scheduler, pasteboard,
                        [this] { return calendar; }}};
};

TEST_F(HistoryPagesTest, ListsTheDictationsByDay) {
    dictate("written late yesterday", afterMidnight(-1), "Mail");
    dictate("written early", afterMidnight(1), "Text Editor", 61.5);
    HistoryPage page(environment());
    present(page);
    const std::string actions = " | [Copy dictation] | [Remember correction] | [Delete dictation]";
    EXPECT_EQ(seen(page),
              "YOUR WORDS, KEPT CLOSE | History | Search and reuse your dictations. | _Search "
              "transcripts or apps_ | 2 saved dictations | TODAY | 12:01\u202FAM | Text Editor | 2 "
              "words · 62 sec" +
                  actions +
                  " | written early | YESTERDAY | 11:59\u202FPM | Mail | 3 words · 2 sec" +
                  actions + " | written late yesterday");

    press(page, "Copy dictation", 1);
    settle();
    EXPECT_EQ(pasteboard.text(), "written late yesterday");
    EXPECT_EQ(count(seen(page), "[Copied]"), 1u);
    scheduler.advance(5s);
    EXPECT_EQ(count(seen(page), "[Copied]"), 0u);

    dictate("one more", minutesAgo(0), "Notes");
    settle();
    EXPECT_TRUE(shows(page, "3 saved dictations | TODAY")) << seen(page);
    for (auto* button : page.findChildren<QPushButton*>())
        if (button->isVisible() && button->text() == QStringLiteral("Remember correction")) {
            EXPECT_EQ(button->property("transcript"), QStringLiteral("one more"));
            break;
        }
}

TEST_F(HistoryPagesTest, FindsWordsAndApplicationsAndShowsFiftyAtATime) {
    for (int n = 0; n < 120; ++n)
        dictate(n % 10 == 0 ? "a meeting" : "something else", minutesAgo(120 - n),
                n == 5 ? "Café Writer" : "Mail");
    HistoryPage page(environment());
    present(page);
    auto* query = page.findChild<QLineEdit*>();
    EXPECT_EQ(query->accessibleName(), QStringLiteral("Search dictation history"));
    const auto rows = [&] { return count(seen(page), "[Delete dictation]"); };
    EXPECT_EQ(rows(), 50u);
    press(page, "Load more");
    settle();
    EXPECT_EQ(rows(), 100u);
    press(page, "Load more");
    settle();
    EXPECT_EQ(rows(), 120u);
    EXPECT_FALSE(shows(page, "Load more"));

    query->setText(QStringLiteral("MEET"));
    settle();
    EXPECT_EQ(rows(), 12u);
    EXPECT_TRUE(shows(page, "12 saved dictations"));
    query->setText(QStringLiteral("cafe"));
    settle();
    EXPECT_EQ(rows(), 1u);
    // Two keystrokes before the first is answered: the last one counts.
    query->setText(QStringLiteral("meet"));
    query->setText(QStringLiteral("nowhere"));
    settle();
    EXPECT_EQ(seenFrom(page, "0 saved"),
              "0 saved dictations | No matching dictations | Try a word, phrase, or app name.");
    press(page, "Clear search");
    settle();
    EXPECT_EQ(rows(), 50u);
    EXPECT_FALSE(shows(page, "Clear search"));
}

TEST_F(HistoryPagesTest, LongTextsAreShortenedUntilAskedFor) {
    std::string text;
    while (text.size() < 340) text += "word ";
    dictate(text + "0123456789", minutesAgo(2));  // 350 characters
    dictate(text + "0123456789a end", minutesAgo(1));
    HistoryPage page(environment());
    present(page);
    EXPECT_EQ(count(seen(page), "[Show full text]"), 1u);
    EXPECT_EQ(count(seen(page), "0123456789a"), 0u);
    press(page, "Show full text");
    settle();
    EXPECT_EQ(count(seen(page), "0123456789a end"), 1u);
    press(page, "Show less");
    EXPECT_EQ(count(seen(page), "0123456789a"), 0u);
}

TEST_F(HistoryPagesTest, DeletesOnlyAfterAConfirmation) {
    dictate("first", minutesAgo(2));
    dictate("second", minutesAgo(1));
    HistoryPage page(environment());
    present(page);
    const auto* title = "Delete this dictation?";
    const auto* message =
        "It will be removed from history and usage statistics, including your other Macs when "
        "iCloud sync is enabled.";
    press(page, "Delete dictation", 1);
    answer(page, title, message, "Cancel");
    EXPECT_EQ(store.records().size(), 2u);
    press(page, "Delete dictation", 1);
    answer(page, title, message, "Delete");
    ASSERT_EQ(store.records().size(), 1u);
    EXPECT_EQ(*store.records()[0].text, "second");
    EXPECT_EQ(count(seen(page), "[Delete dictation]"), 1u);
}

TEST_F(HistoryPagesTest, SaysWhyItIsEmptyAndWhatIsWrong) {
    HistoryPage page(environment());
    present(page);
    EXPECT_EQ(seenFrom(page, "0 saved"),
              "0 saved dictations | Your next dictation starts your history | Manage transcript "
              "saving and retention in Settings.");
    store.setKeepTranscripts(false);
    settle();
    EXPECT_TRUE(shows(page, "Transcript saving is paused"));
    EXPECT_TRUE(shows(page, "Saving new transcripts is off. Existing history is still available."));
    dictate("no text of it is kept", minutesAgo(1));
    settle();
    EXPECT_EQ(count(seen(page), "[Delete dictation]"), 0u);
    files.full = true;
    store.setKeepTranscripts(true);
    dictate("lost", minutesAgo(1));
    settle();
    EXPECT_TRUE(shows(page,
                      "History could not be saved on this Mac. Check available disk space "
                      "and folder access."))
        << seen(page);
}

TEST_F(HistoryPagesTest, TodayBecomesYesterdayAtMidnight) {
    dictate("tonight", minutesAgo(1));
    HistoryPage page(environment());
    present(page);
    EXPECT_TRUE(shows(page, "TODAY"));
    scheduler.advance(24h);
    settle();
    EXPECT_FALSE(shows(page, "TODAY"));
    EXPECT_TRUE(shows(page, "YESTERDAY"));
}

TEST_F(HistoryPagesTest, InsightsAreTheSumsOfThePeriod) {
    for (int app = 0; app < 11; ++app)
        dictate("three words here", minutesAgo(app + 1), "App " + std::to_string(app), 340);
    dictate("five words long ago indeed", afterMidnight(-60 * 24 * 40.0), "Old", 1.2);
    InsightsPage page(environment());
    present(page);
    auto text = seen(page);
    EXPECT_TRUE(text.starts_with(
        "YOUR DICTATION, IN NUMBERS | Insights | Usage across your synced Macs, measured from your "
        "Quorvi dictations. | Period | ‹7 days› | Words dictated | Words per minute | Dictations | "
        "33 | 1 | 11 | Speaking time | Apps used | 1h 2m | 11 | Daily words | Last 14 days | Usage "
        "by app | 7 days | App 0 | 3 words · 1 dictation | "))
        << text;
    EXPECT_EQ(seenFrom(page, "Top 10"),
              "Top 10 of 11 apps | Activity over the last 12 weeks | 1-day streak | Best: 1 days · "
              "all time | A day counts toward your streak when you complete at least one "
              "dictation. | Estimated API cost | $0.2805 | USD · 11 dictations | GPT Transcribe | "
              "$0.2805 | 62.33 min · $0.0045/min | Estimate before tax for completed dictations in "
              "your Quorvi history, including synced Macs. Deleted dictations, failed or cancelled "
              "requests, and usage in other apps are excluded. Actual charges may differ. | "
              "[OpenAI pricing ↗] | Speed is total words divided by recording time. Counts include "
              "completed transcriptions, even when you copy them manually. Statistics start with "
              "this version of Quorvi.");
    EXPECT_EQ(text.find("Old"), text.npos);
    auto* period = page.findChild<QComboBox*>();
    EXPECT_EQ(period->accessibleName(), QStringLiteral("Period"));
    period->setCurrentIndex(4);
    settle();
    EXPECT_TRUE(shows(page, "| All time | Old | 5 words")) << seen(page);

    store.clear();
    settle();
    text = seen(page);
    EXPECT_NE(text.find("| 0 | — | 0 | Speaking time | Apps used | 0 sec | 0 |"), text.npos)
        << text;
    EXPECT_NE(text.find("Your writing apps will appear here after you dictate."), text.npos);
    EXPECT_NE(text.find("No completed dictations in this period."), text.npos);
}

TEST_F(HistoryPagesTest, ChartsTellTheirDays) {
    dictate("three words here", minutesAgo(1));
    InsightsPage page(environment());
    present(page);
    const auto* bars = part<DailyBars>(page);
    EXPECT_EQ(bars->accessibleName(),
              QStringLiteral("Daily words dictated in the last fourteen days"));
    const auto days = bars->accessibleDescription().split(QLatin1Char('\n'));
    EXPECT_EQ(days.size(), 14);
    EXPECT_TRUE(days.last().endsWith(QStringLiteral(": 3 words, 1 dictation")));
    EXPECT_TRUE(days.first().endsWith(QStringLiteral(": 0 words, 0 dictations")));
    EXPECT_EQ(part<ActivityGrid>(page)->accessibleDescription().split(QLatin1Char('\n')).size(),
              84);
    EXPECT_EQ(ActivityGrid::opacity(0, 0), 0.25);
    EXPECT_EQ(ActivityGrid::opacity(50, 100), 0.625);
    EXPECT_EQ(ActivityGrid::opacity(100, 100), 1);
}

TEST_F(HistoryPagesTest, SettingsChangeTheStoreAndDeleteEverythingAfterAConfirmation) {
    dictate("three words here", minutesAgo(1), "Mail", 60);
    HistorySettings settings(environment());
    settings.resize(700, 900);
    settings.show();
    settle();
    const auto text = seen(settings);
    EXPECT_TRUE(text.starts_with(
        "History & statistics | [Save transcript history] | Turning this off stops saving new "
        "text. Existing history remains, and usage statistics continue without transcript text. | "
        "Keep transcript text | ‹90 days› | Older text is removed automatically. Word counts, "
        "speaking time, cost estimates, dates and app names remain for Insights. Recordings are "
        "not kept. | Estimated API cost | Cost period | ‹This month› | $0.0045 | USD · 1 "
        "dictation | GPT Transcribe | "))
        << text;
    EXPECT_TRUE(text.ends_with("| [Delete all history and statistics…]")) << text;
    press(settings, "Save transcript history");
    EXPECT_FALSE(store.keepTranscripts());
    store.setKeepTranscripts(true);
    EXPECT_TRUE(settings.findChild<QCheckBox*>()->isChecked());
    for (auto* choice : settings.findChildren<QComboBox*>())
        if (choice->accessibleName() == QStringLiteral("Keep transcript text"))
            choice->setCurrentIndex(2);
    EXPECT_EQ(store.retention(), TranscriptRetention::forever);

    const auto* title = "Delete all history and statistics?";
    const auto* message =
        "This permanently removes every saved Quorvi dictation and resets your usage totals, "
        "including your other Macs when iCloud sync is enabled.";
    press(settings, "Delete all history and statistics…");
    answer(settings, title, message, "Cancel");
    EXPECT_EQ(store.records().size(), 1u);
    press(settings, "Delete all history and statistics…");
    answer(settings, title, message, "Delete all");
    EXPECT_TRUE(store.records().empty());
    EXPECT_TRUE(shows(settings, "No completed dictations in this period."));
}

}  // namespace
}  // namespace quorvi::test
