#pragma once

#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "Quorvi/platform/Pasteboard.h"

namespace quorvi {

// Backs up the user's clipboard while a transcript is on it. Either idle, or holding the user's
// content and the change count of the transcript that replaced it. Holds one backup at most: every
// new paste or manual copy first restores the previous one. Main thread; owned by the insertion.
class TranscriptClipboard {
public:
    using Items = std::vector<PasteboardItem>;

    // The content at a change count; no items if the owner didn't answer.
    struct Copy {
        std::int64_t changeCount = 0;
        std::optional<Items> items;
    };

    explicit TranscriptClipboard(Pasteboard& pasteboard) : pasteboard_(pasteboard) {}

    // Copies the clipboard in advance for a later snapshot(). Throws only Cancelled.
    Task<Copy> copyAhead(std::stop_token stop);

    // Returns a deep copy of the clipboard: `ahead`, if the clipboard hasn't changed since. Throws
    // QuorviError if the owner doesn't answer.
    Task<Copy> snapshot(std::optional<Copy> ahead, std::stop_token stop);

    // Puts the text on the clipboard for a paste. If the user has copied something since the
    // backup, backs that up instead. On failure throws QuorviError and leaves the clipboard as it
    // was. A stop meanwhile restores the clipboard at once and throws Cancelled.
    Task<void> installTemporary(std::string text, Copy backup, std::stop_token stop);

    // Restores the user's clipboard, unless another program has written to it since. Returns at
    // once; later operations see the restored content.
    void restore();

    // Puts the text on the clipboard permanently. Returns false if it is empty or that fails.
    Task<bool> copyPermanently(std::string text, std::stop_token stop);

    bool isHolding() const { return ownedChangeCount_.has_value(); }

private:
    Pasteboard& pasteboard_;
    Items backup_;
    std::optional<std::int64_t> ownedChangeCount_;
};

}  // namespace quorvi
