#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

#include "Quorvi/platform/Pasteboard.h"
#include "QuorviCore/async/TaskScope.h"

// What every clipboard promises, checked against the one in memory and the desktop's own. A rig
// supplies the clipboard and plays the other programs:
//   Scheduler& scheduler();  Pasteboard& pasteboard();
//   bool runUntil(condition);                     runs the main thread
//   void foreignCopy(std::vector<PasteboardItem>); another program copies; no items: it clears
//   void foreignHang();                           another program owns the clipboard and hangs
namespace quorvi::test {

template <class T>
struct Outcome {
    std::optional<T> value;
    std::string error;
    bool cancelled = false;

    bool isDone() const { return value || !error.empty() || cancelled; }
};

template <class T>
Task<void> observe(Task<T> task, Outcome<T>& outcome) {
    try {
        outcome.value = co_await task;
    } catch (const std::exception& error) {
        outcome.error = error.what();
    } catch (const Cancelled&) {
        outcome.cancelled = true;
    }
}

inline PasteboardRepresentation representation(std::string type, std::string_view data,
                                               int format = 8, std::string encoding = {}) {
    if (encoding.empty()) encoding = type;
    return {std::move(type), std::move(encoding), format,
            std::make_shared<const Bytes>(data.begin(), data.end())};
}

inline std::string dataOf(const std::vector<PasteboardItem>& items, std::string_view type) {
    for (const auto& item : items)
        for (const auto& one : item.representations)
            if (one.type == type) return {one.data->begin(), one.data->end()};
    return "(no " + std::string(type) + ")";
}

// An image, HTML and text, as an application offers them together, with data of every format.
inline std::vector<PasteboardItem> richItems() {
    using namespace std::string_view_literals;
    return {{{representation("image/png", "\x89PNG\r\n\x1a\n\0\0\xFF"sv),
              representation("text/html", "<b>Grüße</b>"), representation("UTF8_STRING", "Grüße"),
              representation("TEXT", "Grüße", 8, "UTF8_STRING"),
              representation("application/x-numbers", "\1\0\0\0\xFF\xFF\xFF\x7F"sv, 32, "INTEGER"),
              representation("application/x-shorts", "\1\0\2\0\3\0"sv, 16, "INTEGER"),
              representation("application/x-nothing", "")}}};
}

// Drives one clipboard; the base of every fixture.
template <class Rig>
class PasteboardFixture : public testing::Test {
protected:
    using Count = std::optional<std::int64_t>;

    // A clipboard notices others only once it is connected, which its first operation waits for.
    void SetUp() override { outcomeOf(rig.pasteboard().read({})); }

    template <class T>
    void begin(Task<T> task, Outcome<T>& outcome) {
        scope.start([&](std::stop_token) { return observe(std::move(task), outcome); });
    }
    template <class T>
    Outcome<T> outcomeOf(Task<T> task) {
        Outcome<T> outcome;
        begin(std::move(task), outcome);
        EXPECT_TRUE(rig.runUntil([&] { return outcome.isDone(); })) << "the operation never ended";
        return outcome;
    }
    std::vector<PasteboardItem> read() {
        auto outcome = outcomeOf(rig.pasteboard().read({}));
        EXPECT_TRUE(outcome.value) << outcome.error;
        return outcome.value.value_or(std::vector<PasteboardItem>{});
    }
    Count write(std::vector<PasteboardItem> items) {
        return outcomeOf(rig.pasteboard().write(std::move(items))).value.value_or(std::nullopt);
    }
    Count writeText(std::string text,
                    TranscriptVisibility visibility = TranscriptVisibility::everywhere) {
        return outcomeOf(rig.pasteboard().writeText(std::move(text), visibility))
            .value.value_or(std::nullopt);
    }
    // Another program's copy, after which the clipboard has taken notice.
    void foreignCopy(std::vector<PasteboardItem> items) {
        const auto before = rig.pasteboard().changeCount();
        rig.foreignCopy(std::move(items));
        EXPECT_TRUE(rig.runUntil([&] { return rig.pasteboard().changeCount() > before; }));
    }

    Rig rig;
    TaskScope scope{rig.scheduler()};
};

inline constexpr const char* unavailableSentence =
    "The clipboard is unavailable. Your transcript is ready to copy in Quorvi.";

template <class Rig>
class PasteboardContract : public PasteboardFixture<Rig> {};
TYPED_TEST_SUITE_P(PasteboardContract);

TYPED_TEST_P(PasteboardContract, WhatWasWrittenIsReadBackByteForByte) {
    this->write(richItems());
    EXPECT_EQ(this->read(), richItems());
}

TYPED_TEST_P(PasteboardContract, EveryWriteCountsOnceAndYieldsTheCountRightAfterIt) {
    auto& pasteboard = this->rig.pasteboard();
    this->foreignCopy(richItems());
    const auto before = pasteboard.changeCount();
    EXPECT_EQ(this->write(richItems()), before + 1);
    EXPECT_EQ(this->writeText("one"), before + 2);
    EXPECT_EQ(this->write({}), before + 3);
    EXPECT_EQ(this->writeText("two"), before + 4);
    this->read();
    EXPECT_EQ(pasteboard.changeCount(), before + 4);
    this->foreignCopy(richItems());
    EXPECT_EQ(pasteboard.changeCount(), before + 5);
}

TYPED_TEST_P(PasteboardContract, AForeignContentComesBackAfterTheTranscript) {
    this->foreignCopy(richItems());
    const auto backup = this->read();
    EXPECT_EQ(backup, richItems());
    const auto count = this->writeText("transcript");
    ASSERT_TRUE(count);
    this->rig.pasteboard().restore(*count, backup);
    EXPECT_EQ(this->read(), richItems());
    EXPECT_EQ(this->rig.pasteboard().changeCount(), *count + 1);
}

TYPED_TEST_P(PasteboardContract, AnEmptyClipboardStaysEmpty) {
    this->foreignCopy(richItems());
    this->foreignCopy({});
    const auto backup = this->read();
    EXPECT_TRUE(backup.empty());
    const auto count = this->writeText("transcript");
    ASSERT_TRUE(count);
    this->rig.pasteboard().restore(*count, backup);
    EXPECT_TRUE(this->read().empty());
}

TYPED_TEST_P(PasteboardContract, ANewerCopyWinsOverARestore) {
    const auto count = this->writeText("transcript");
    ASSERT_TRUE(count);
    const std::vector<PasteboardItem> newer{{{representation("UTF8_STRING", "newer")}}};
    this->foreignCopy(newer);
    this->rig.pasteboard().restore(*count, richItems());
    EXPECT_EQ(this->read(), newer);
    EXPECT_EQ(this->rig.pasteboard().changeCount(), *count + 1);
}

TYPED_TEST_P(PasteboardContract, ATranscriptCarriesTheHistoryHintOnlyWhenItIsToBeHidden) {
    constexpr auto hint = "x-kde-passwordManagerHint";
    this->writeText("Grüße", TranscriptVisibility::hiddenFromHistory);
    const auto hidden = this->read();
    EXPECT_EQ(dataOf(hidden, "UTF8_STRING"), "Grüße");
    EXPECT_EQ(dataOf(hidden, hint), "secret");
    this->writeText("Grüße", TranscriptVisibility::everywhere);
    EXPECT_EQ(dataOf(this->read(), hint), "(no x-kde-passwordManagerHint)");
}

TYPED_TEST_P(PasteboardContract, OperationsAreDoneInTheOrderOfTheCalls) {
    auto& pasteboard = this->rig.pasteboard();
    const auto before = this->writeText("zero");
    ASSERT_TRUE(before);
    Outcome<std::optional<std::int64_t>> first, last;
    Outcome<std::vector<PasteboardItem>> between;
    this->begin(pasteboard.writeText("first", TranscriptVisibility::everywhere), first);
    this->begin(pasteboard.read({}), between);
    pasteboard.restore(*before + 1, richItems());
    this->begin(pasteboard.writeText("last", TranscriptVisibility::everywhere), last);
    EXPECT_TRUE(this->rig.runUntil([&] { return last.isDone(); }));
    EXPECT_EQ(first.value, *before + 1);
    EXPECT_EQ(dataOf(between.value.value(), "UTF8_STRING"), "first");
    EXPECT_EQ(last.value, *before + 3);
}

TYPED_TEST_P(PasteboardContract, AHangingOwnerIsAFailureAndNoEmptyClipboard) {
    this->rig.foreignHang();
    EXPECT_EQ(this->outcomeOf(this->rig.pasteboard().read({})).error, unavailableSentence);
}

TYPED_TEST_P(PasteboardContract, ACancelledReadMakesWayForWhatComesAfterIt) {
    this->rig.foreignHang();
    std::stop_source stop;
    Outcome<std::vector<PasteboardItem>> reading;
    this->begin(this->rig.pasteboard().read(stop.get_token()), reading);
    stop.request_stop();
    EXPECT_TRUE(this->rig.runUntil([&] { return reading.isDone(); }));
    EXPECT_TRUE(reading.cancelled);
    EXPECT_TRUE(this->writeText("after"));
}

REGISTER_TYPED_TEST_SUITE_P(PasteboardContract, WhatWasWrittenIsReadBackByteForByte,
                            EveryWriteCountsOnceAndYieldsTheCountRightAfterIt,
                            AForeignContentComesBackAfterTheTranscript, AnEmptyClipboardStaysEmpty,
                            ANewerCopyWinsOverARestore,
                            ATranscriptCarriesTheHistoryHintOnlyWhenItIsToBeHidden,
                            OperationsAreDoneInTheOrderOfTheCalls,
                            AHangingOwnerIsAFailureAndNoEmptyClipboard,
                            ACancelledReadMakesWayForWhatComesAfterIt);

}  // namespace quorvi::test
