#include "Quorvi/platform/linux/x11/clipboard/X11Pasteboard.h"

#include <memory>
#include <utility>

#include "Quorvi/platform/linux/x11/clipboard/X11ClipboardSession.h"

namespace quorvi {
namespace {

// The keeper outlives a connection.
ThreadedPasteboard::Connect connection(X11Pasteboard::Options options) {
    const auto keeper = std::make_shared<ClipboardKeeper>(options.keeper);
    return [options = std::move(options), keeper](const ThreadedPasteboard::Thread& thread) {
        return std::make_unique<X11ClipboardSession>(
            options.display, thread.wakeFd,
            ClipboardReadLimits{options.progressLimit, options.totalLimit}, thread.changeCount,
            *keeper, thread.onRead);
    };
}

}  // namespace

X11Pasteboard::X11Pasteboard(Scheduler& scheduler) : X11Pasteboard(scheduler, Options{}) {}

X11Pasteboard::X11Pasteboard(Scheduler& scheduler, Options options)
    : ThreadedPasteboard(scheduler, connection(std::move(options))) {}

}  // namespace quorvi
