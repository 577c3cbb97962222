#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "QuorviCore/async/Lifetime.h"
#include "QuorviCore/async/Scheduler.h"
#include "tests/fakes/PasteboardItems.h"

namespace quorvi::test {

// A clipboard in memory. Operations run one at a time in the order of the calls, each in a later
// turn of the scheduler, so that others can interfere as on a real desktop.
class FakePasteboard : public Pasteboard {
public:
    explicit FakePasteboard(Scheduler& scheduler) : scheduler_(scheduler) {}

    std::int64_t changeCount() const override { return changeCount_; }
    Task<std::vector<PasteboardItem>> read(std::stop_token stop) override;
    Task<std::optional<std::int64_t>> write(std::vector<PasteboardItem> items) override;
    Task<std::optional<std::int64_t>> writeText(std::string text, TranscriptVisibility visibility,
                                                std::vector<PasteboardItem> former = {},
                                                std::optional<std::int64_t> expected = {}) override;
    void observeReads(std::function<void(PasteboardRead)> observer) override {
        observer_ = std::move(observer);
    }
    void restore(std::int64_t expected, std::vector<PasteboardItem> items) override;

    // Another program copies, or clears the clipboard with no items.
    void copy(std::vector<PasteboardItem> items);
    void copyText(std::string_view text) { copy(textItems(text)); }

    const std::vector<PasteboardItem>& contents() const { return contents_; }
    std::string text() const { return dataOf(contents_, "UTF8_STRING"); }

    // Another program reads the text.
    std::string readBy(pid_t reader);

    // Faults. While the owner hangs, a read fails after three seconds, and later operations wait
    // for it.
    bool refusesWrites = false;
    bool ownerHangs = false;

    int operations = 0;    // reads and writes so far
    int writtenTexts = 0;  // calls of writeText()

private:
    // Returns whether the next job may begin.
    using Job = std::function<bool()>;
    void announce(PasteboardRead read);
    void enqueue(Job job);
    void runNext();
    std::optional<std::int64_t> replace(std::vector<PasteboardItem> items);
    Task<std::optional<std::int64_t>> writeItems(std::vector<PasteboardItem> items,
                                                 std::optional<std::int64_t> expected = {});

    Scheduler& scheduler_;
    std::vector<PasteboardItem> contents_;
    std::int64_t changeCount_ = 0;
    std::function<void(PasteboardRead)> observer_;
    std::deque<Job> jobs_;
    bool busy_ = false;
    Timer hang_;
    Lifetime lifetime_;
};

}  // namespace quorvi::test
