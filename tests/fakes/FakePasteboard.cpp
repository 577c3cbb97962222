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
        const auto job = std::move(jobs_.front());
        jobs_.pop_front();
        if (job()) runNext();
    }));
}

Task<std::vector<PasteboardItem>> FakePasteboard::read(std::stop_token stop) {
    Promise<std::vector<PasteboardItem>> promise(scheduler_);
    auto future = promise.future(std::move(stop));
    enqueue([this, promise]() mutable {
        ++operations;
        if (!ownerHangs) {
            promise.resolve(contents_);
            return true;
        }
        hang_ = scheduler_.after(3s, [this, promise]() mutable {
            promise.reject(
                std::make_exception_ptr(QuorviError::message(say::clipboardUnavailable())));
            runNext();
        });
        return false;
    });
    co_return co_await future;
}

std::optional<std::int64_t> FakePasteboard::replace(std::vector<PasteboardItem> items) {
    ++operations;
    if (refusesWrites) return std::nullopt;
    contents_ = std::move(items);
    return ++changeCount_;
}

Task<std::optional<std::int64_t>> FakePasteboard::writeItems(std::vector<PasteboardItem> items,
                                                             std::optional<std::int64_t> expected) {
    Promise<std::optional<std::int64_t>> promise(scheduler_);
    auto future = promise.future();
    enqueue([this, promise, items = std::move(items), expected]() mutable {
        const bool isOther = expected && *expected != changeCount_;
        promise.resolve(isOther ? std::nullopt : replace(std::move(items)));
        return true;
    });
    co_return co_await future;
}

Task<std::optional<std::int64_t>> FakePasteboard::write(std::vector<PasteboardItem> items) {
    return writeItems(std::move(items));
}

Task<std::optional<std::int64_t>> FakePasteboard::writeText(std::string text,
                                                            TranscriptVisibility visibility,
                                                            std::vector<PasteboardItem>,
                                                            std::optional<std::int64_t> expected) {
    auto items = textItems(text);
    if (visibility == TranscriptVisibility::hiddenFromHistory)
        items[0].representations.push_back(representation("x-kde-passwordManagerHint", "secret"));
    ++writtenTexts;
    return writeItems(std::move(items), expected);
}

void FakePasteboard::restore(std::int64_t expected, std::vector<PasteboardItem> items) {
    enqueue([this, expected, items = std::move(items)]() mutable {
        if (changeCount_ == expected) replace(std::move(items));
        return true;
    });
}

void FakePasteboard::announce(PasteboardRead read) {
    scheduler_.post(lifetime_.guard([this, read] {
        if (observer_) observer_(read);
    }));
}

std::string FakePasteboard::readBy(pid_t reader) {
    announce({reader, true, changeCount_});
    return text();
}

void FakePasteboard::copy(std::vector<PasteboardItem> items) {
    contents_ = std::move(items);
    ++changeCount_;
}

}  // namespace quorvi::test
