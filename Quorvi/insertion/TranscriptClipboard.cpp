#include "Quorvi/insertion/TranscriptClipboard.h"

#include <utility>

#include "QuorviCore/async/Async.h"
#include "QuorviCore/transcription/QuorviError.h"

namespace quorvi {

Task<TranscriptClipboard::Copy> TranscriptClipboard::copyAhead(std::stop_token stop) {
    Copy copy{.changeCount = pasteboard_.changeCount()};
    auto reading = pasteboard_.read(std::move(stop));
    try {
        copy.items = co_await reading;
    } catch (const std::exception&) {
        // The owner may answer when it counts; the snapshot asks again.
    }
    co_return copy;
}

Task<TranscriptClipboard::Items> TranscriptClipboard::snapshot(std::optional<Copy> ahead,
                                                               std::stop_token stop) {
    if (ahead && ahead->items && ahead->changeCount == pasteboard_.changeCount())
        co_return std::move(*ahead->items);
    auto reading = pasteboard_.read(std::move(stop));
    co_return co_await reading;
}

Task<void> TranscriptClipboard::installTemporary(std::string text, Items backup,
                                                 std::stop_token stop) {
    auto writing =
        pasteboard_.writeText(std::move(text), TranscriptVisibility::hiddenFromHistory, backup);
    const auto count = co_await writing;
    if (!count) {
        auto writingBack = pasteboard_.write(std::move(backup));
        co_await writingBack;
        throw QuorviError::message(
            "The clipboard is unavailable. Your transcript is ready to copy in Quorvi.");
    }
    backup_ = std::move(backup);
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
    // An owner that doesn't answer must not keep the user from the words: its content can't be
    // kept by anyone, so only a failed write would need it.
    std::optional<Items> before;
    try {
        auto reading = snapshot(std::nullopt, stop);
        before = co_await reading;
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
