// Offers, on the clipboard, what its standard input holds, until somebody copies something else or
// the X server ends. Quorvi starts it when it quits while the user's clipboard is in its hands.
#include <unistd.h>
#include <xcb/xfixes.h>

#include <cstdio>
#include <cstring>
#include <exception>
#include <optional>

#include "Quorvi/platform/linux/ClipboardHandover.h"
#include "Quorvi/platform/linux/LoopScheduler.h"
#include "Quorvi/platform/linux/X11Connection.h"
#include "Quorvi/platform/linux/X11Pasteboard.h"
#include "QuorviCore/async/TaskScope.h"

namespace quorvi {
namespace {

using namespace std::chrono_literals;

Bytes readInput() {
    Bytes content;
    Bytes piece(1 << 16);
    for (;;) {
        const auto n = read(STDIN_FILENO, piece.data(), piece.size());
        if (n <= 0) return content;
        content.insert(content.end(), piece.begin(), piece.begin() + n);
    }
}

Task<void> offer(X11Pasteboard& pasteboard, std::vector<PasteboardItem> items, bool& done,
                 bool& taken) {
    auto writing = pasteboard.write(std::move(items));
    taken = (co_await writing).has_value();
    done = true;
}

bool takeClipboard(X11Pasteboard& pasteboard, LoopScheduler& scheduler,
                   std::vector<PasteboardItem> items) {
    bool done = false;
    bool taken = false;
    TaskScope scope(scheduler);
    scope.start([&](std::stop_token) { return offer(pasteboard, std::move(items), done, taken); });
    scheduler.runUntil([&] { return done; }, 10s);
    return taken;
}

// Waits, on a connection of its own, until the clipboard belongs to somebody else.
void waitForAnotherOwner(const X11Connection& connection, xcb_atom_t clipboard) {
    auto* c = connection.get();
    const auto owner = [&] {
        const auto cookie = xcb_get_selection_owner(c, clipboard);
        const auto reply = ownXcb(xcb_get_selection_owner_reply(c, cookie, nullptr));
        return reply ? reply->owner : XCB_NONE;
    };
    const auto ours = owner();
    while (owner() == ours)
        if (!ownXcb(xcb_wait_for_event(c))) return;
}

int keep() {
    auto items = decodeClipboard(readInput());
    if (items.empty()) return 0;
    const X11Connection connection;
    if (!connection.isAlive()) return 1;
    auto* c = connection.get();
    const auto clipboard = connection.atom("CLIPBOARD");
    const auto version = xcb_xfixes_query_version(c, 5, 0);
    ownXcb(xcb_xfixes_query_version_reply(c, version, nullptr));
    xcb_xfixes_select_selection_input(c, connection.root(), clipboard,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    connection.synchronise();

    LoopScheduler scheduler;
    X11Pasteboard pasteboard(scheduler);
    if (!takeClipboard(pasteboard, scheduler, std::move(items))) return 1;
    waitForAnotherOwner(connection, clipboard);
    return 0;
}

}  // namespace
}  // namespace quorvi

int main(int argc, char** argv) {
    if (argc > 1) {
        const bool asked = std::strcmp(argv[1], "--help") == 0;
        std::fprintf(asked ? stdout : stderr,
                     "usage: quorvi-clipboard-keeper < CONTENT\n\n"
                     "Offers the content that Quorvi hands over on the clipboard until somebody\n"
                     "copies something else. Started by Quorvi; of no use by itself.\n\n"
                     "Exit codes: 0 the clipboard is another's, 1 it could not be taken, 2 bad "
                     "usage.\n");
        return asked ? 0 : 2;
    }
    try {
        return quorvi::keep();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quorvi-clipboard-keeper: %s\n", error.what());
        return 1;
    }
}
