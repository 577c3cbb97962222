#include "tests/fakes/FakePasteboard.h"

#include <chrono>
#include <utility>

#include "QuorviCore/Error.h"
#include "QuorviCore/async/Future.h"

namespace quorvi::test {

using namespace std::chrono_literals;

void FakePasteboard::enqueue(Job job) {
    jobs_.push_back(std::move(job));
    if (!std::exchange(busy_, true)) runNext();
}

void FakePasteboard::runNext() {
    scheduler_.post(lifetime_.guard([this] {
        if (jobs_.empty()) {
            busy_ = false;
            return;
        }
        auto job = std::move(jobs_.front());
        jobs_.pop_front();
        job([this] { runNext(); });
    }));
}

Task<std::vector<PasteboardItem>> FakePasteboard::read(std::stop_token stop) {
    Promise<std::vector<PasteboardItem>> promise(scheduler_);
    auto future = promise.future(std::move(stop));
    enqueue([this, promise](std::function<void()> done) mutable {
        if (!ownerHangs) {
            journal.push_back("read");
            promise.resolve(contents_);
            return done();
        }
        hang_ = scheduler_.after(3s, [this, promise, done]() mutable {
            journal.push_back("read failed");
            promise.reject(
                std::make_exception_ptr(QuorviError::message(say::clipboardUnavailable())));
            done();
        });
    });
    co_return co_await future;
}

std::optional<std::int64_t> FakePasteboard::replace(std::vector<PasteboardItem> items,
                                                    const char* entry) {
    if (refusesWrites) {
        journal.push_back("write refused");
        return std::nullopt;
    }
    journal.push_back(entry);
    contents_ = std::move(items);
    return ++changeCount_;
}

Task<std::optional<std::int64_t>> FakePasteboard::writeItems(std::vector<PasteboardItem> items,
                                                             const char* entry,
                                                             std::optional<std::int64_t> expected) {
    Promise<std::optional<std::int64_t>> promise(scheduler_);
    auto future = promise.future();
    enqueue([this, promise, items = std::move(items), entry,
             expected](std::function<void()> done) mutable {
        if (expected && *expected != changeCount_)
            promise.resolve(std::nullopt);
        else
            promise.resolve(replace(std::move(items), entry));
        done();
    });
    co_return co_await future;
}

Task<std::optional<std::int64_t>> FakePasteboard::write(std::vector<PasteboardItem> items) {
    return writeItems(std::move(items), "write");
}

Task<std::optional<std::int64_t>> FakePasteboard::writeText(std::string text,
                                                            TranscriptVisibility visibility,
                                                            std::vector<PasteboardItem>,
                                                            std::optional<std::int64_t> expected) {
    auto items = textItems(text);
    if (visibility == TranscriptVisibility::hiddenFromHistory)
        items[0].representations.push_back(representation("x-kde-passwordManagerHint", "secret"));
    return writeItems(std::move(items), "write text", expected);
}

void FakePasteboard::restore(std::int64_t expected, std::vector<PasteboardItem> items) {
    enqueue([this, expected, items = std::move(items)](std::function<void()> done) mutable {
        if (changeCount_ == expected)
            replace(std::move(items), "restore");
        else
            journal.push_back("restore left alone");
        done();
    });
}

void FakePasteboard::copy(std::vector<PasteboardItem> items) {
    contents_ = std::move(items);
    ++changeCount_;
}

}  // namespace quorvi::test
