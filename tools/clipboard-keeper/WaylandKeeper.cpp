#include "tools/clipboard-keeper/WaylandKeeper.h"

#include <atomic>
#include <csignal>

#include "Quorvi/platform/linux/wayland/clipboard/DataControlSession.h"

namespace quorvi {
namespace {

using namespace std::chrono_literals;

// How long the compositor may take to notice that Quorvi has ended.
constexpr auto noticeTime = 2s;

}  // namespace

bool WaylandKeeper::listen() {
    std::unique_ptr<Descriptor> file;
    while (const auto message = receiveClipboardMessage(socket_, file)) {
        using enum ClipboardMessage::Kind;
        switch (message->kind) {
            case content:
                content_ = std::move(file);
                break;
            case guard:
            case standIn:
                pasted_ =
                    message->kind == standIn ? Clock::now() + pasteTime_ : Clock::time_point{};
                break;
            case takeOver:
                return true;
        }
    }
    return false;
}

void WaylandKeeper::run() {
    const bool isAsked = listen();
    if (!content_) return;
    std::signal(SIGPIPE, SIG_IGN);  // of readers that close early
    std::atomic<std::int64_t> changeCount{0};
    const ThreadedPasteboard::Thread thread{-1, changeCount, [](PasteboardRead) {}};
    ClipboardKeeper nobody("");
    DataControlSession session({3s, 3s}, thread, nobody);
    if (!isAsked) {
        if (!session.isEmpty() && (!session.waitForChange(noticeTime) || !session.isEmpty()))
            return;
        if (session.waitForChange(pasted_ - Clock::now())) return;
    }
    session.write(readClipboardFile(*content_), {}, std::nullopt);
    content_.reset();
    while (session.isOffering()) session.waitForChange(1h);
}

}  // namespace quorvi
