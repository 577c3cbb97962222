#pragma once

#include <coroutine>
#include <exception>
#include <memory>
#include <mutex>
#include <stop_token>
#include <type_traits>
#include <utility>
#include <variant>

#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/async/Task.h"

namespace quorvi {

// A result that is produced on any thread and awaited once on the main thread. The waiting
// coroutine is always resumed through the scheduler, never inside resolve(), reject() or
// request_stop(). A result that arrives after the Future's destruction (its coroutine frame died)
// is dropped.
//
//     Promise<int> promise(scheduler);
//     auto future = promise.future(stop);
//     worker.run([promise]() mutable { promise.resolve(42); });
//     int value = co_await future;
template <class T>
class Future;

namespace internal {

template <class T>
struct FutureState {
    using Value = std::conditional_t<std::is_void_v<T>, std::monostate, T>;
    enum class Phase { pending, ready, taken };

    explicit FutureState(Scheduler& s) : scheduler(s) {}

    Scheduler& scheduler;
    std::mutex mutex;  // guards phase, value and error only; never held while code of others runs
    Phase phase = Phase::pending;
    std::variant<std::monostate, Value, std::exception_ptr> result;
    std::coroutine_handle<> waiting;  // main thread only

    template <std::size_t index, class V>
    static void settle(const std::shared_ptr<FutureState>& self, V&& value) {
        {
            std::lock_guard lock(self->mutex);
            if (self->phase != Phase::pending) return;
            self->phase = Phase::ready;
            self->result.template emplace<index>(std::forward<V>(value));
        }
        self->scheduler.post([self] {
            if (auto waiting = std::exchange(self->waiting, nullptr)) waiting.resume();
        });
    }
};

}  // namespace internal

template <class T>
class Promise {
public:
    explicit Promise(Scheduler& scheduler)
        : state_(std::make_shared<internal::FutureState<T>>(scheduler)) {}

    // The first outcome counts; later ones are ignored. Thread-safe.
    template <class... V>
    void resolve(V&&... value) {
        using State = internal::FutureState<T>;
        State::template settle<1>(state_, typename State::Value(std::forward<V>(value)...));
    }
    void reject(std::exception_ptr error) {
        internal::FutureState<T>::template settle<2>(state_, std::move(error));
    }

    Future<T> future(std::stop_token stop = {}) { return Future<T>(state_, std::move(stop)); }

private:
    std::shared_ptr<internal::FutureState<T>> state_;
};

template <class T>
class [[nodiscard]] Future {
    using State = internal::FutureState<T>;
    struct OnStop {
        std::shared_ptr<State> state;
        void operator()() const {
            State::template settle<2>(state, std::make_exception_ptr(Cancelled{}));
        }
    };

public:
    Future(std::shared_ptr<State> state, std::stop_token stop)
        : state_(std::move(state)), onStop_(std::move(stop), OnStop{state_}) {}
    Future(const Future&) = delete;
    Future& operator=(const Future&) = delete;
    ~Future() {
        if (state_) state_->waiting = nullptr;
    }

    struct Awaiter {
        Future& future;
        bool await_ready() const noexcept { return false; }
        bool await_suspend(std::coroutine_handle<> waiting) {
            // A result that is already there is taken at once; settle()'s posted turn then finds no
            // coroutine waiting.
            std::lock_guard lock(future.state_->mutex);
            if (future.state_->phase == State::Phase::ready) return false;
            future.state_->waiting = waiting;
            return true;
        }
        T await_resume() {
            std::lock_guard lock(future.state_->mutex);
            future.state_->phase = State::Phase::taken;
            auto& result = future.state_->result;
            if (result.index() == 2) std::rethrow_exception(std::get<2>(result));
            if constexpr (!std::is_void_v<T>) return std::move(std::get<1>(result));
        }
    };
    Awaiter operator co_await() & noexcept { return Awaiter{*this}; }
    void operator co_await() && = delete;

private:
    std::shared_ptr<State> state_;
    std::stop_callback<OnStop> onStop_;
};

}  // namespace quorvi
