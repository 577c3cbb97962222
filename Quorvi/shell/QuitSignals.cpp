#include "Quorvi/shell/QuitSignals.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdint>
#include <utility>

namespace quorvi {

namespace {

std::atomic<int> wakeDescriptor{-1};

void onSignal(int) {
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = write(wakeDescriptor.load(), &one, sizeof one);
}

}  // namespace

QuitSignals::QuitSignals(std::function<void()> quit)
    : descriptor_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      notifier_(descriptor_, QSocketNotifier::Read) {
    wakeDescriptor = descriptor_;
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_,
                     [this, quit = std::move(quit)] {
                         std::uint64_t count = 0;
                         [[maybe_unused]] const auto got = read(descriptor_, &count, sizeof count);
                         quit();
                     });
    std::signal(SIGTERM, onSignal);
    std::signal(SIGINT, onSignal);
}

QuitSignals::~QuitSignals() {
    std::signal(SIGTERM, SIG_DFL);
    std::signal(SIGINT, SIG_DFL);
    notifier_.setEnabled(false);
    close(descriptor_);
}

}  // namespace quorvi
