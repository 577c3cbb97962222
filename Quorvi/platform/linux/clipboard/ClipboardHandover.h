#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "Quorvi/platform/Pasteboard.h"
#include "Quorvi/platform/linux/posix/Descriptor.h"

// What passes between Quorvi and quorvi-clipboard-keeper: short messages over a socket, and
// contents as files that are memory only.
namespace quorvi {

struct ClipboardMessage {
    enum class Kind : std::uint32_t {
        content,  // with a file: what the clipboard is to hold after this program; without: nothing
        guard,    // `window` is about to own the clipboard
        standIn,  // the same, for a moment, with something that is about to be pasted
        takeOver  // offer the content now
    };
    Kind kind = Kind::content;
    std::uint32_t window = 0;
};

// A file of memory only with the content. Null when there is no memory for it.
std::unique_ptr<Descriptor> clipboardFile(const std::vector<PasteboardItem>& items);
// Throws QuorviError when the file holds no such content.
std::vector<PasteboardItem> readClipboardFile(const Descriptor& file);

// Never blocks: false when the other side is gone or takes nothing.
bool sendClipboardMessage(const Descriptor& socket, ClipboardMessage message,
                          const Descriptor* file = nullptr);
// Waits for the next message; its file, if it has one, is put into `file`. Nothing at the end.
std::optional<ClipboardMessage> receiveClipboardMessage(const Descriptor& socket,
                                                        std::unique_ptr<Descriptor>& file);

}  // namespace quorvi
