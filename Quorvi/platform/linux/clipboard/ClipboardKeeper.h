#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Quorvi/platform/Pasteboard.h"
#include "Quorvi/platform/linux/clipboard/ClipboardHandover.h"
#include "Quorvi/platform/linux/posix/HelperProcess.h"

namespace quorvi {

// Keeps the user's clipboard beyond this program's end: a clipboard is lost with the program that
// offers it. While this program offers something, a small process knows what the clipboard
// should hold afterwards, and offers that when this program quits, is killed or loses the display
// server, unless another program has copied meanwhile. Clipboard thread; no operation waits for the
// process, and a dead one is replaced at the next use.
class ClipboardKeeper {
public:
    // The program is started at the first use, with the argument if there is one; never if the name
    // is empty.
    explicit ClipboardKeeper(std::string program, std::string argument = {})
        : program_(std::move(program)), argument_(std::move(argument)) {}
    ~ClipboardKeeper();
    ClipboardKeeper(const ClipboardKeeper&) = delete;
    ClipboardKeeper& operator=(const ClipboardKeeper&) = delete;

    // Sets the clipboard's content after this program's end. Costs a copy; nothing if it is already
    // prepared.
    void prepare(const std::vector<PasteboardItem>& items);
    // Announces that this program's window is about to own the clipboard with the items: the
    // prepared ones, or a text that replaces them until it has been pasted.
    void guard(std::uint32_t window, const std::vector<PasteboardItem>& items);
    // Another program owns the clipboard: nothing is to be restored.
    void forget();
    // Makes the keeper offer the content now, so that the clipboard is never empty in between.
    void takeOver();

private:
    bool start();
    void tell(ClipboardMessage message);
    bool sendContent();

    const std::string program_, argument_;
    std::unique_ptr<HelperProcess> process_;
    std::vector<PasteboardItem> content_;
};

}  // namespace quorvi
