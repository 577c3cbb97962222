#include "Quorvi/insertion/TranscriptClipboard.h"

#include <utility>

#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"

namespace quorvi {

namespace {

// How often the user may copy something while a transcript is being put on the clipboard.
constexpr int mostCopies = 3;

}  // namespace

Task<TranscriptClipboard::Copy> TranscriptClipboard::copyAhead(std::stop_token stop) {
    Copy copy{.changeCount = pasteboard_.changeCount()};
    auto reading = pasteboard_.read(std::move(stop));
    try {
        copy.items = co_await reading;
    } catch (const std::exception&) {
        // The owner may answer later: the snapshot asks again.
    }
    co_return copy;
}

Task<TranscriptClipboard::Copy> TranscriptClipboard::snapshot(std::optional<Copy> ahead,
                                                              std::stop_token stop) {
    if (ahead && ahead->items && ahead->changeCount == pasteboard_.changeCount())
        co_return std::move(*ahead);
    Copy copy{.changeCount = pasteboard_.changeCount()};
    auto reading = pasteboard_.read(std::move(stop));
    copy.items = co_await reading;
    co_return copy;
}

Task<void> TranscriptClipboard::installTemporary(std::string text, Copy backup,
                                                 std::stop_token stop) {
    std::optional<std::int64_t> count;
    for (int tries = 0; !count; ++tries) {
        auto items = backup.items.value_or(Items{});
        auto writing = pasteboard_.writeText(text, TranscriptVisibility::hiddenFromHistory,
                                             std::move(items), backup.changeCount);
        count = co_await writing;
        if (count) break;
        const bool isSame = pasteboard_.changeCount() == backup.changeCount;
        if (isSame) {
            auto writingBack = pasteboard_.write(backup.items.value_or(Items{}));
            co_await writingBack;
        }
        if (isSame || tries == mostCopies) throw QuorviError::message(say::clipboardUnavailable());
        auto again = snapshot(std::nullopt, stop);
        backup = co_await again;
    }
    backup_ = std::move(backup.items).value_or(Items{});
    ownedChangeCount_ = count;
    if (stop.stop_requested()) {
        restore();
        throw Cancelled{};
    }
}

void TranscriptClipboard::restore() {
    auto backup = std::exchange(backup_, {});
    if (const auto owned = std::exchange(ownedChangeCount_, std::nullopt))
        pasteboard_.restore(*owned, std::move(backup));
}

Task<bool> TranscriptClipboard::copyPermanently(std::string text, std::stop_token stop) {
    if (text.empty()) co_return false;
    restore();
    // An owner that doesn't answer must not keep the text from the user. Nobody could save its
    // content, which only a failed write would need.
    std::optional<Items> before;
    try {
        auto reading = snapshot(std::nullopt, stop);
        auto copy = co_await reading;
        before = std::move(copy.items);
    } catch (const QuorviError&) {
    }
    auto writing = pasteboard_.writeText(std::move(text), TranscriptVisibility::everywhere);
    if (const auto count = co_await writing) co_return true;
    if (before) {
        auto writingBack = pasteboard_.write(std::move(*before));
        co_await writingBack;
    }
    co_return false;
}

}  // namespace quorvi
