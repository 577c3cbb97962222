#include "Quorvi/insertion/TranscriptClipboard.h"

#include <algorithm>
#include <utility>

#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"

namespace quorvi {

namespace {

// How often the user may copy something while a transcript is being put on the clipboard.
constexpr int mostCopies = 3;

}  // namespace

TranscriptClipboard::TranscriptClipboard(Pasteboard& pasteboard) : pasteboard_(pasteboard) {
    pasteboard_.observeReads([this](PasteboardRead read) {
        reads_.push_back(read);
        read_.notify();
    });
}

TranscriptClipboard::~TranscriptClipboard() {
    pasteboard_.observeReads(nullptr);
}

bool TranscriptClipboard::wasAskedBy(pid_t pid) const {
    return std::ranges::any_of(reads_, [this, pid](const PasteboardRead& read) {
        return read.reader == pid && read.changeCount == installed_;
    });
}

bool TranscriptClipboard::wasTakenBy(pid_t pid) const {
    return std::ranges::any_of(reads_, [this, pid](const PasteboardRead& read) {
        return read.reader == pid && read.changeCount == installed_ && read.content;
    });
}

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
    try {
        copy.items = co_await reading;
    } catch (const std::exception&) {
        // What its owner gives to nobody is no reason to keep the words from the user.
    }
    co_return copy;
}

Task<void> TranscriptClipboard::installTemporary(std::string text, Copy backup,
                                                 std::stop_token stop) {
    reads_.clear();
    installed_.reset();
    std::optional<std::int64_t> count;
    for (int tries = 0; !count; ++tries) {
        auto items = backup.items.value_or(Items{});
        auto writing = pasteboard_.writeText(text, TranscriptVisibility::hiddenFromHistory,
                                             std::move(items), backup.changeCount);
        count = co_await writing;
        if (count) break;
        const bool isSame = pasteboard_.changeCount() == backup.changeCount;
        if (isSame && backup.items) {
            auto writingBack = pasteboard_.write(*backup.items);
            co_await writingBack;
        }
        if (isSame || tries == mostCopies) throw QuorviError::message(say::clipboardUnavailable());
        auto again = snapshot(std::nullopt, stop);
        backup = co_await again;
    }
    backup_ = std::move(backup.items).value_or(Items{});
    ownedChangeCount_ = installed_ = count;
    if (stop.stop_requested()) {
        restore();
        throw Cancelled{};
    }
}

Task<void> TranscriptClipboard::keepTranscript(std::string text) {
    kept_ = text;
    const auto owned = ownedChangeCount_;
    auto backup = backup_;
    auto writing =
        pasteboard_.writeText(std::move(text), TranscriptVisibility::everywhere, {}, owned);
    const auto count = co_await writing;
    if (!count) co_return;
    if (ownedChangeCount_ == owned)
        ownedChangeCount_ = count;
    else  // a restore() of meanwhile came too late for the old count
        pasteboard_.restore(*count, std::move(backup));
}

void TranscriptClipboard::restore() {
    kept_.clear();
    auto backup = std::exchange(backup_, {});
    if (const auto owned = std::exchange(ownedChangeCount_, std::nullopt))
        pasteboard_.restore(*owned, std::move(backup));
}

Task<bool> TranscriptClipboard::copyPermanently(std::string text, std::stop_token stop) {
    if (text.empty()) co_return false;
    if (text == kept_ && ownedChangeCount_ == pasteboard_.changeCount()) co_return true;
    restore();
    auto reading = snapshot(std::nullopt, stop);
    auto before = co_await reading;
    auto writing = pasteboard_.writeText(std::move(text), TranscriptVisibility::everywhere);
    if (const auto count = co_await writing) co_return true;
    if (before.items) {
        auto writingBack = pasteboard_.write(std::move(*before.items));
        co_await writingBack;
    }
    co_return false;
}

}  // namespace quorvi
