#include "Quorvi/platform/linux/wayland/clipboard/DataControlPasteboard.h"

#include <csignal>
#include <memory>

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

DataControlPasteboard::DataControlPasteboard(Scheduler& scheduler, ClipboardReadLimits limits)
    : ThreadedPasteboard(scheduler, [limits](const Thread& thread) {
          ignoreBrokenPipes();
          return std::make_unique<DataControlSession>(limits, thread);
      }) {}

}  // namespace quorvi
