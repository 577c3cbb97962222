#pragma once

#include <sys/types.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Quorvi/platform/Pasteboard.h"
#include "Quorvi/platform/linux/clipboard/ClipboardHandover.h"
#include "Quorvi/platform/linux/posix/Descriptor.h"

namespace quorvi {

// What is on an X11 clipboard ends with the program that offers it. So while this program offers
// something, a keeper stands by: a small process that knows what the clipboard is to hold
// afterwards, and offers that when this program quits, is killed, or loses its connection to the X
// server. A copy that another program has made meanwhile stays. Used by the clipboard's thread; no
// operation waits for the keeper, and one that has died is replaced at the next need.
class ClipboardKeeper {
public:
    // The keeper's program, started at the first need; an empty one is never started.
    explicit ClipboardKeeper(std::string program) : program_(std::move(program)) {}
    ~ClipboardKeeper();
    ClipboardKeeper(const ClipboardKeeper&) = delete;
    ClipboardKeeper& operator=(const ClipboardKeeper&) = delete;

    // What the clipboard is to hold after this program. Costs a copy, and nothing when it is what
    // was prepared last.
    void prepare(const std::vector<PasteboardItem>& items);
    // This program's window is about to own the clipboard and to offer the items: what was
    // prepared, or what stands in for that until it has been pasted.
    void guard(std::uint32_t window, const std::vector<PasteboardItem>& items);
    // The clipboard belongs to somebody else.
    void forget();
    // Has the keeper offer the content now, so that the clipboard is never empty in between.
    void takeOver();

private:
    bool start();
    void tell(ClipboardMessage message);
    bool sendContent();

    const std::string program_;
    std::unique_ptr<Descriptor> socket_;
    pid_t process_ = -1;
    std::vector<PasteboardItem> content_;
};

}  // namespace quorvi
