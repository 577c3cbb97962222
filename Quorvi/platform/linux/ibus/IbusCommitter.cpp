#include "Quorvi/platform/linux/ibus/IbusCommitter.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

#include "Quorvi/platform/linux/ibus/IbusEngine.h"
#include "QuorviCore/async/Future.h"

namespace quorvi {
namespace {

using namespace std::chrono_literals;

constexpr Duration shortestPatience = 300ms;

}  // namespace

class IbusCommitter::Field final : public CommitField {
public:
    explicit Field(IbusCommitter& owner) : owner_(owner) {}
    ~Field() override {
        owner_.run([engine = std::move(engine_)] { engine->reset(); });
    }

    // Returns whether a field takes text.
    Task<bool> find(Duration limit, std::stop_token stop) {
        Promise<std::optional<Kind>> promise(owner_.scheduler_);
        auto future = promise.future(std::move(stop));
        owner_.run([engine = engine_, promise]() mutable {
            engine->emplace();
            promise.resolve((*engine)->enter());
        });
        const auto timer =
            owner_.scheduler_.after(limit, [promise]() mutable { promise.resolve(std::nullopt); });
        const auto kind = co_await future;
        if (kind) kind_ = *kind;
        co_return kind.has_value();
    }

    Kind kind() const override { return kind_; }

    Task<Delivery> commit(std::string text) override {
        Promise<Delivery> promise(owner_.scheduler_);
        auto future = promise.future();
        owner_.run([engine = engine_, promise, text = std::move(text)]() mutable {
            promise.resolve((*engine)->commit(text));
        });
        co_return co_await future;
    }

private:
    IbusCommitter& owner_;
    // On the thread, but for the pointer.
    std::shared_ptr<std::optional<IbusEngine>> engine_ =
        std::make_shared<std::optional<IbusEngine>>();
    Kind kind_ = Kind::text;
};

IbusCommitter::IbusCommitter(Scheduler& scheduler)
    : scheduler_(scheduler), thread_("ibus", [] {}, [] {}) {
    // A job, since it waits in the thread's loop: what ends the thread would be lost before that.
    run(IbusEngine::recover);
}

// An engine runs the thread's loop while it waits; the next job is not to begin inside of it.
void IbusCommitter::run(std::function<void()> job) {
    thread_.invoke([this, job = std::move(job)]() mutable {
        jobs_.push_back(std::move(job));
        if (std::exchange(isRunning_, true)) return;
        for (; !jobs_.empty(); jobs_.pop_front()) jobs_.front()();
        isRunning_ = false;
    });
}

Task<std::unique_ptr<CommitField>> IbusCommitter::focusedField(Duration patience,
                                                               std::stop_token stop) {
    auto field = std::make_unique<Field>(*this);
    auto finding = field->find(std::max(patience, shortestPatience), std::move(stop));
    const bool isFound = co_await finding;
    if (!isFound) co_return nullptr;
    co_return std::move(field);
}

}  // namespace quorvi
