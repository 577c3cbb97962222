#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

#include "Quorvi/platform/Pasteboard.h"
#include "QuorviCore/async/Observable.h"

namespace quorvi {

// Backs up the user's clipboard while a transcript is on it, and notes who has read that. Either
// idle, or holding the user's content and the change count of the transcript that replaced it.
// Holds one backup at most: every new paste or manual copy first restores the previous one. Main
// thread; owned by the insertion.
class TranscriptClipboard {
public:
    using Items = std::vector<PasteboardItem>;

    // The content at a change count; no items if the owner didn't answer.
    struct Copy {
        std::int64_t changeCount = 0;
        std::optional<Items> items;
    };

    explicit TranscriptClipboard(Pasteboard& pasteboard);
    ~TranscriptClipboard();
    TranscriptClipboard(const TranscriptClipboard&) = delete;
    TranscriptClipboard& operator=(const TranscriptClipboard&) = delete;

    // Copies the clipboard in advance for a later snapshot(). Throws only Cancelled.
    Task<Copy> copyAhead(std::stop_token stop);

    // Returns a deep copy of the clipboard: `ahead`, if the clipboard hasn't changed since. Without
    // items if the owner doesn't answer. Throws only Cancelled.
    Task<Copy> snapshot(std::optional<Copy> ahead, std::stop_token stop);

    // Puts the text on the clipboard for a paste. If the user has copied something since the
    // backup, backs that up instead. On failure throws QuorviError and leaves the clipboard as it
    // was. A stop meanwhile restores the clipboard at once and throws Cancelled.
    Task<void> installTemporary(std::string text, Copy backup, std::stop_token stop);

    // Leaves the transcript on the clipboard as an ordinary text, and the backup here for
    // restore().
    Task<void> keepTranscript(std::string text);

    // Whether the program has read the last transcript that was installed.
    bool wasAskedBy(pid_t pid) const;  // at least what there is
    bool wasTakenBy(pid_t pid) const;
    [[nodiscard]] Subscription onRead(std::function<void()> observer) {
        return read_.subscribe(std::move(observer));
    }

    // Restores the user's clipboard, unless another program has written to it since. Returns at
    // once; later operations see the restored content.
    void restore();

    // Puts the text on the clipboard permanently. Returns false if it is empty or that fails.
    Task<bool> copyPermanently(std::string text, std::stop_token stop);

    bool isHolding() const { return ownedChangeCount_.has_value(); }

private:
    Pasteboard& pasteboard_;
    Items backup_;
    std::string kept_;                   // the transcript that was left there
    std::vector<PasteboardRead> reads_;  // since that was begun; also late ones of others
    std::optional<std::int64_t> installed_;
    Observable read_;
    std::optional<std::int64_t> ownedChangeCount_;
};

}  // namespace quorvi
