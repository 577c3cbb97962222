#pragma once

#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "Quorvi/platform/Pasteboard.h"

namespace quorvi {

// Keeps the user's clipboard while a transcript stands on it. Either idle, or holding the backup of
// what the user had there together with the change count of the transcript that replaced it. At
// most one transcript is held: every new paste and every manual copy first restores what an earlier
// one left. Main thread.
class TranscriptClipboard {
public:
    using Items = std::vector<PasteboardItem>;

    // What was on the clipboard at a change count; nothing when its owner didn't answer.
    struct Copy {
        std::int64_t changeCount = 0;
        std::optional<Items> items;
    };

    explicit TranscriptClipboard(Pasteboard& pasteboard) : pasteboard_(pasteboard) {}

    // Copies the clipboard ahead of a snapshot() that is coming. Throws nothing but Cancelled.
    Task<Copy> copyAhead(std::stop_token stop);

    // A deep copy of the clipboard, the one made ahead as long as the clipboard is still the same.
    // Throws QuorviError when its owner doesn't answer.
    Task<Copy> snapshot(std::optional<Copy> ahead, std::stop_token stop);

    // Puts the text there for the time of a paste. What the user has copied since the backup was
    // made takes its place. Throws QuorviError when that is not possible; the clipboard is then as
    // it was. A stop while it is being put there takes it back at once and throws Cancelled.
    Task<void> installTemporary(std::string text, Copy backup, std::stop_token stop);

    // Gives the user's clipboard back, unless somebody has written to it since. Returns at once;
    // later operations see the restored content.
    void restore();

    // Puts the text there for good. False when it is empty or can't be put there.
    Task<bool> copyPermanently(std::string text, std::stop_token stop);

    bool isHolding() const { return ownedChangeCount_.has_value(); }

private:
    Pasteboard& pasteboard_;
    Items backup_;
    std::optional<std::int64_t> ownedChangeCount_;
};

}  // namespace quorvi
