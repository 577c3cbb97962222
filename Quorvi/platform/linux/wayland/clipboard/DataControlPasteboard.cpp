#include "Quorvi/platform/linux/wayland/clipboard/DataControlPasteboard.h"

#include <csignal>
#include <memory>
#include <utility>

#include "Quorvi/platform/linux/wayland/clipboard/DataControlSession.h"

namespace quorvi {
namespace {

// A reader that closes its pipe early is an error of that write, and no signal for this thread.
void ignoreBrokenPipes() {
    sigset_t pipes;
    sigemptyset(&pipes);
    sigaddset(&pipes, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipes, nullptr);
}

}  // namespace

// The keeper outlives a connection.
DataControlPasteboard::DataControlPasteboard(Scheduler& scheduler, std::string keeper,
                                             ClipboardReadLimits limits)
    : ThreadedPasteboard(scheduler,
                         [limits, keeper = std::make_shared<ClipboardKeeper>(
                                      std::move(keeper), "--wayland")](const Thread& thread) {
                             ignoreBrokenPipes();
                             return std::make_unique<DataControlSession>(limits, thread, *keeper);
                         }) {}

}  // namespace quorvi
