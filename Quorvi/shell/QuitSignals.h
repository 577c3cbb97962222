#pragma once

#include <QSocketNotifier>
#include <functional>

namespace quorvi {

// Turns SIGTERM and SIGINT into a call on the main thread, so that a program that is asked to end
// still gives the clipboard back. One instance at a time.
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
