#pragma once

#include <QSocketNotifier>
#include <functional>

namespace quorvi {

// Calls `quit` on the main thread on SIGTERM and SIGINT, so that the clipboard is restored. One
// instance at a time.
class QuitSignals {
public:
    explicit QuitSignals(std::function<void()> quit);
    ~QuitSignals();
    QuitSignals(const QuitSignals&) = delete;
    QuitSignals& operator=(const QuitSignals&) = delete;

private:
    int descriptor_;
    QSocketNotifier notifier_;
};

}  // namespace quorvi
