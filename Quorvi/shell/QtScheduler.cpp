#include "Quorvi/shell/QtScheduler.h"

#include <QTimer>
#include <chrono>
#include <memory>
#include <utility>

namespace quorvi {

namespace {

// Shorter delays use a precise timer.
constexpr Duration preciseBelow = std::chrono::seconds(1);

class QtTimerNode : public Timer::Node {
public:
    explicit QtTimerNode(QObject* context) : timer_(new QTimer(context)) {}
    ~QtTimerNode() override {
        timer_->stop();
        timer_->disconnect();
        timer_->deleteLater();  // the node may be destroyed inside the timer's own signal
    }
    QtTimerNode(const QtTimerNode&) = delete;
    QtTimerNode& operator=(const QtTimerNode&) = delete;

    QTimer& timer() { return *timer_; }

private:
    QTimer* timer_;
};

}  // namespace

TimePoint QtScheduler::now() const {
    return std::chrono::steady_clock::now();
}

Date QtScheduler::date() const {
    const auto since = std::chrono::system_clock::now().time_since_epoch();
    return Date::fromUnixSeconds(std::chrono::duration<double>(since).count());
}

void QtScheduler::post(std::function<void()> work) {
    QMetaObject::invokeMethod(&context_, std::move(work), Qt::QueuedConnection);
}

Timer QtScheduler::after(Duration delay, std::function<void()> work) {
    return schedule(delay, std::move(work), true);
}

Timer QtScheduler::every(Duration period, std::function<void()> work) {
    return schedule(period, std::move(work), false);
}

Timer QtScheduler::schedule(Duration delay, std::function<void()> work, bool once) {
    auto node = std::make_unique<QtTimerNode>(&context_);
    auto& timer = node->timer();
    timer.setSingleShot(once);
    timer.setTimerType(delay < preciseBelow ? Qt::PreciseTimer : Qt::CoarseTimer);
    // The copy keeps the work alive when it destroys its own timer.
    QObject::connect(&timer, &QTimer::timeout, &context_, [work = std::move(work)] {
        const auto running = work;
        running();
    });
    timer.start(std::chrono::ceil<std::chrono::milliseconds>(delay));
    return Timer(std::move(node));
}

}  // namespace quorvi
