#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

#include "tests/fakes/PasteboardItems.h"
#include "tests/support/Waiting.h"

// What every clipboard promises, checked against the one in memory and the desktop's own. A rig
// supplies the clipboard and plays the other programs:
//   Pasteboard& pasteboard();
//   bool runUntil(condition);                     runs the main thread
//   void foreignCopy(std::vector<PasteboardItem>); another program copies; no items: it clears
//   pid_t foreignRead();                          another program reads the clipboard; which one
//   void foreignHang();                           another program owns the clipboard and hangs
//   static kept(items)                            what this clipboard keeps of them; all, without
//   it
namespace quorvi::test {

// Drives one clipboard; the base of every fixture.
template <class Rig>
class PasteboardFixture : public testing::Test {
protected:
    using Count = std::optional<std::int64_t>;
    using Reading = Running<std::vector<PasteboardItem>>;
    using Writing = Running<Count>;

    // A clipboard notices others only once it is connected, which its first operation waits for.
    void SetUp() override { read(); }

    bool ends(const auto& running) {
        return rig.runUntil([&] { return running.ended(); });
    }
    std::vector<PasteboardItem> read() {
        Reading reading(rig.pasteboard().read({}));
        EXPECT_TRUE(ends(reading) && reading.value()) << reading.failure();
        return reading.value().value_or(std::vector<PasteboardItem>{});
    }
    std::string readFailure() {
        Reading reading(rig.pasteboard().read({}));
        EXPECT_TRUE(ends(reading)) << "the operation never ended";
        return reading.failure();
    }
    Count write(std::vector<PasteboardItem> items) {
        return countOf(Writing(rig.pasteboard().write(std::move(items))));
    }
    Count writeText(std::string text,
                    TranscriptVisibility visibility = TranscriptVisibility::everywhere) {
        return countOf(Writing(rig.pasteboard().writeText(std::move(text), visibility)));
    }
    Count countOf(const Writing& writing) {
        EXPECT_TRUE(ends(writing));
        return writing.value().value_or(std::nullopt);
    }
    static std::vector<PasteboardItem> rich() {
        if constexpr (requires { Rig::kept(richItems()); })
            return Rig::kept(richItems());
        else
            return richItems();
    }
    // Another program's copy, after which the clipboard has taken notice.
    void foreignCopy(std::vector<PasteboardItem> items) {
        const auto before = rig.pasteboard().changeCount();
        rig.foreignCopy(std::move(items));
        EXPECT_TRUE(rig.runUntil([&] { return rig.pasteboard().changeCount() > before; }));
    }

    Rig rig;
};

inline constexpr const char* unavailableSentence =
    "The clipboard is unavailable. Your transcript is ready to copy in Quorvi.";

template <class Rig>
class PasteboardContract : public PasteboardFixture<Rig> {};
TYPED_TEST_SUITE_P(PasteboardContract);

TYPED_TEST_P(PasteboardContract, EveryWriteIncreasesTheCountByOne) {
    auto& pasteboard = this->rig.pasteboard();
    this->foreignCopy(this->rich());
    const auto before = pasteboard.changeCount();
    EXPECT_EQ(this->write(this->rich()), before + 1);
    EXPECT_EQ(this->read(), this->rich());
    EXPECT_EQ(this->writeText("one"), before + 2);
    EXPECT_EQ(this->write({}), before + 3);
    EXPECT_EQ(this->writeText("two"), before + 4);
    this->read();
    EXPECT_EQ(pasteboard.changeCount(), before + 4);
    this->foreignCopy(this->rich());
    EXPECT_EQ(pasteboard.changeCount(), before + 5);
}

TYPED_TEST_P(PasteboardContract, AForeignContentComesBackAfterTheTranscript) {
    this->foreignCopy(textItems("something to clear"));
    for (const auto& content : {this->rich(), std::vector<PasteboardItem>{}}) {
        this->foreignCopy(content);
        const auto backup = this->read();
        EXPECT_EQ(backup, content);
        const auto count = this->writeText("transcript");
        ASSERT_TRUE(count);
        this->rig.pasteboard().restore(*count, backup);
        EXPECT_EQ(this->read(), content);
        EXPECT_EQ(this->rig.pasteboard().changeCount(), *count + 1);
    }
}

TYPED_TEST_P(PasteboardContract, WhoReadsTheTextIsTold) {
    auto& pasteboard = this->rig.pasteboard();
    std::optional<PasteboardRead> seen;
    pasteboard.observeReads([&](PasteboardRead read) { seen = read; });
    const auto count = this->writeText("transcript");
    const auto reader = this->rig.foreignRead();
    EXPECT_TRUE(this->rig.runUntil([&] { return seen.has_value(); }));
    EXPECT_EQ(seen->reader, reader);
    EXPECT_TRUE(seen->content);
    EXPECT_EQ(seen->changeCount, count);
    pasteboard.observeReads(nullptr);
}

TYPED_TEST_P(PasteboardContract, ANewerCopyWinsOverARestoreAndOverAWriteThatExpectsAnother) {
    const auto count = this->writeText("transcript");
    ASSERT_TRUE(count);
    this->foreignCopy(textItems("newer"));
    const auto write = [&](auto expected) {
        return this->countOf(typename TestFixture::Writing(this->rig.pasteboard().writeText(
            "late", TranscriptVisibility::hiddenFromHistory, {}, expected)));
    };
    EXPECT_EQ(write(*count), std::nullopt);
    EXPECT_EQ(this->read(), textItems("newer"));
    this->rig.pasteboard().restore(*count, this->rich());
    EXPECT_EQ(this->read(), textItems("newer"));
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
    typename TestFixture::Writing first(
        pasteboard.writeText("first", TranscriptVisibility::everywhere));
    typename TestFixture::Reading between(pasteboard.read({}));
    pasteboard.restore(*before + 1, this->rich());
    typename TestFixture::Writing last(
        pasteboard.writeText("last", TranscriptVisibility::everywhere));
    EXPECT_TRUE(this->ends(last));
    EXPECT_EQ(first.value(), *before + 1);
    EXPECT_EQ(dataOf(between.value().value(), "UTF8_STRING"), "first");
    EXPECT_EQ(last.value(), *before + 3);
}

TYPED_TEST_P(PasteboardContract, AHangingOwnerIsAFailureAndACancelledReadMakesWay) {
    this->rig.foreignHang();
    EXPECT_EQ(this->readFailure(), unavailableSentence);
    std::stop_source stop;
    typename TestFixture::Reading reading(this->rig.pasteboard().read(stop.get_token()));
    stop.request_stop();
    EXPECT_TRUE(this->ends(reading));
    EXPECT_TRUE(reading.cancelled());
    EXPECT_TRUE(this->writeText("after"));
}

REGISTER_TYPED_TEST_SUITE_P(PasteboardContract, EveryWriteIncreasesTheCountByOne,
                            AForeignContentComesBackAfterTheTranscript, WhoReadsTheTextIsTold,
                            ANewerCopyWinsOverARestoreAndOverAWriteThatExpectsAnother,
                            ATranscriptCarriesTheHistoryHintOnlyWhenItIsToBeHidden,
                            OperationsAreDoneInTheOrderOfTheCalls,
                            AHangingOwnerIsAFailureAndACancelledReadMakesWay);

}  // namespace quorvi::test
