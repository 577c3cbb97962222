// Offers the user's clipboard when Quorvi is gone. Quorvi starts this program and sends the content
// over a socket, its standard input. When Quorvi's window ends and nobody else owns the clipboard,
// the keeper offers the content until another program copies something or the X server ends; see
// WaylandKeeper for other displays.
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <xcb/xfixes.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <exception>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "Quorvi/platform/linux/clipboard/ClipboardHandover.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/x11/X11Connection.h"
#include "Quorvi/platform/linux/x11/clipboard/X11Pasteboard.h"
#include "QuorviCore/async/TaskScope.h"
#include "tools/clipboard-keeper/WaylandKeeper.h"

namespace quorvi {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// An application that was just told to paste may ask for the transcript when Quorvi is gone. For
// this long it gets nothing, rather than what the user had copied before.
constexpr auto pasteTime = 1s;

class Keeper {
public:
    Keeper() : clipboard_(connection_.atom("CLIPBOARD")) {
        auto* c = connection_.get();
        connection_.reply<xcb_xfixes_query_version_reply>(xcb_xfixes_query_version(c, 5, 0));
        const auto* extension = xcb_get_extension_data(c, &xcb_xfixes_id);
        firstEvent_ = extension ? extension->first_event : 0;
        xcb_xfixes_select_selection_input(
            c, connection_.root(), clipboard_,
            XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
        owner_ = lastOwner_ = connection_.selectionOwner(clipboard_);
    }

    int run() {
        while (connection_.isAlive()) {
            handleEvents();
            if (quorviDiedUnseen()) offerAt_ = pasted_;
            // Quorvi's connection to the X server ends a moment after its socket.
            if (ended_ && !offering_ && !offerAt_ && owner_ != guarded_) return 0;
            if (offerAt_ && *offerAt_ <= Clock::now()) {
                offer();
                continue;
            }
            pollfd ready[] = {{connection_.fileDescriptor(), POLLIN, 0},
                              {ended_ ? -1 : STDIN_FILENO, POLLIN, 0}};
            if (poll(ready, 2, untilOffer()) > 0 && ready[1].revents) receive();
        }
        return 1;
    }

private:
    void receive() {
        std::unique_ptr<Descriptor> file;
        const auto message = receiveClipboardMessage(socket_, file);
        if (!message) {
            ended_ = true;
            return;
        }
        switch (message->kind) {
            case ClipboardMessage::Kind::content:
                content_ = std::move(file);
                return;
            case ClipboardMessage::Kind::guard:
            case ClipboardMessage::Kind::standIn:
                guarded_ = message->window;
                pasted_ = message->kind == ClipboardMessage::Kind::standIn
                              ? Clock::now() + pasteTime
                              : Clock::time_point{};
                return;
            case ClipboardMessage::Kind::takeOver:
                owner_ = connection_.selectionOwner(clipboard_);
                if (owner_ == guarded_) offer();
        }
    }

    // Returns whether Quorvi ended before this program watched the clipboard or knew its window.
    bool quorviDiedUnseen() const {
        return ended_ && !offerAt_ && guarded_ != XCB_NONE && owner_ == XCB_NONE &&
               (lastOwner_ == guarded_ || lastOwner_ == XCB_NONE);
    }

    void handleEvents() {
        while (const auto event = connection_.nextEvent()) {
            if (xcbEventType(*event) != firstEvent_ + XCB_XFIXES_SELECTION_NOTIFY) continue;
            const auto& e =
                *reinterpret_cast<const xcb_xfixes_selection_notify_event_t*>(event.get());
            if (e.selection != clipboard_) continue;
            const bool taken = e.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER;
            const auto before = std::exchange(owner_, taken ? e.owner : XCB_NONE);
            if (taken) lastOwner_ = e.owner;
            if (offering_ && owner_ != offering_) stopOffering();
            offerAt_.reset();
            if (!taken && before != XCB_NONE && before == guarded_) offerAt_ = pasted_;
        }
    }

    int untilOffer() const {
        if (!offerAt_) return -1;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(*offerAt_ - Clock::now());
        return std::max(0, static_cast<int>(left.count()));
    }

    // Takes the clipboard with the content.
    void offer() {
        guarded_ = XCB_NONE;
        offerAt_.reset();
        if (!content_) return;
        auto items = readClipboardFile(*content_);
        if (ended_) content_.reset();
        pasteboard_ = std::make_unique<X11Pasteboard>(scheduler_);
        bool done = false;
        {
            TaskScope scope(scheduler_);
            scope.start([&](std::stop_token) { return take(std::move(items), done); });
            scheduler_.runUntil([&] { return done; }, 10s);
        }
        if (!offering_) stopOffering();
    }
    Task<void> take(std::vector<PasteboardItem> items, bool& done) {
        auto writing = pasteboard_->write(std::move(items));
        co_await writing;
        // Events up to here are about earlier owners.
        connection_.synchronise();
        while (connection_.nextEvent()) continue;
        owner_ = connection_.selectionOwner(clipboard_);
        // Another program may have copied in the meantime.
        auto looking = pasteboard_->isOffering();
        const bool isOurs = co_await looking;
        if (isOurs) offering_ = owner_;
        done = true;
    }
    void stopOffering() {
        pasteboard_.reset();
        offering_ = XCB_NONE;
    }

    const X11Connection connection_;
    const xcb_atom_t clipboard_;
    int firstEvent_ = 0;
    const Descriptor socket_{STDIN_FILENO};
    bool ended_ = false;  // Quorvi's socket is closed
    std::unique_ptr<Descriptor> content_;
    xcb_window_t guarded_ = XCB_NONE;    // Quorvi's window
    xcb_window_t owner_ = XCB_NONE;      // the clipboard's owner, from events
    xcb_window_t lastOwner_ = XCB_NONE;  // the owner before there was none
    xcb_window_t offering_ = XCB_NONE;   // this program's window
    Clock::time_point pasted_{};         // when the transcript is pasted at the latest
    std::optional<Clock::time_point> offerAt_;
    LoopScheduler scheduler_;
    std::unique_ptr<X11Pasteboard> pasteboard_;
};

bool startedByQuorvi() {
    int type = 0;
    socklen_t size = sizeof type;
    return getsockopt(STDIN_FILENO, SOL_SOCKET, SO_TYPE, &type, &size) == 0 &&
           type == SOCK_SEQPACKET;
}

}  // namespace
}  // namespace quorvi

int main(int argc, char** argv) {
    const auto isArgument = [&](const char* text) {
        return argc == 2 && std::strcmp(argv[1], text) == 0;
    };
    const bool asked = isArgument("--help"), isWayland = isArgument("--wayland");
    if (asked || (argc > 1 && !isWayland) || !quorvi::startedByQuorvi()) {
        std::fprintf(
            asked ? stdout : stderr,
            "usage: quorvi-clipboard-keeper [--wayland]\n\n"
            "Runs while Quorvi offers something on the clipboard, and restores the user's\n"
            "clipboard when Quorvi has quit or crashed. Started by Quorvi; of no use by\n"
            "itself.\n\n"
            "  --wayland  The clipboard of a Wayland compositor, not of an X server.\n\n"
            "Exit status: 0 another program owns the clipboard, 1 there is no X server or\n"
            "compositor, 2 the command line is not valid.\n");
        return asked ? 0 : 2;
    }
    try {
        if (!isWayland) return quorvi::Keeper().run();
        quorvi::WaylandKeeper(quorvi::pasteTime).run();
        return 0;
    } catch (const quorvi::ClipboardConnectionLost&) {
        return 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quorvi-clipboard-keeper: %s\n", error.what());
        return 1;
    }
}
