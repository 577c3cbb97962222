#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "Quorvi/platform/Pasteboard.h"
#include "Quorvi/platform/linux/posix/Descriptor.h"

// The protocol between Quorvi and quorvi-clipboard-keeper: short messages over a socket, contents
// as memory files.
namespace quorvi {

struct ClipboardMessage {
    enum class Kind : std::uint32_t {
        content,  // with a file: the clipboard's content after this program; without: none
        guard,    // `window` is about to own the clipboard
        standIn,  // the same, for a moment, with a text that is about to be pasted
        takeOver  // offer the content now
    };
    Kind kind = Kind::content;
    std::uint32_t window = 0;
};

// Returns a memory file with the content; null if there is no memory for it.
std::unique_ptr<Descriptor> clipboardFile(const std::vector<PasteboardItem>& items);
// Throws QuorviError if the file is not such a content.
std::vector<PasteboardItem> readClipboardFile(const Descriptor& file);

// Never blocks. Returns false if the other side is gone or does not read.
bool sendClipboardMessage(const Descriptor& socket, ClipboardMessage message,
                          const Descriptor* file = nullptr);
// Waits for the next message and puts its file, if it has one, into `file`. Returns nullopt once
// the other side has closed the socket.
std::optional<ClipboardMessage> receiveClipboardMessage(const Descriptor& socket,
                                                        std::unique_ptr<Descriptor>& file);

}  // namespace quorvi
