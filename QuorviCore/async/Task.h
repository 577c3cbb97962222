#pragma once

#include <coroutine>
#include <exception>
#include <optional>
#include <utility>
#include <variant>

namespace quorvi {

// Thrown by a suspension point whose stop token was triggered. Not a std::exception, so that no
// error handler shows a cancellation to the user.
struct Cancelled {};

// A lazily started coroutine of the main thread. It runs when it is first awaited; its frame dies
// with the Task, so an abandoned task leaves nothing behind. Awaiting needs a named task
// (`auto reading = field(); co_await reading;`): g++ 12 destroys temporaries of a co_await
// expression twice in some shapes.
template <class T>
class [[nodiscard]] Task {
public:
    struct promise_type;
    using Handle = std::coroutine_handle<promise_type>;

    Task() = default;
    Task(Task&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Task& operator=(Task&& other) noexcept {
        if (this != &other) {
            if (handle_) handle_.destroy();
            handle_ = std::exchange(other.handle_, nullptr);
        }
        return *this;
    }
    ~Task() {
        if (handle_) handle_.destroy();
    }

    struct Awaiter {
        Handle handle;
        bool await_ready() const noexcept { return handle.done(); }
        std::coroutine_handle<> await_suspend(std::coroutine_handle<> waiting) noexcept {
            handle.promise().waiting = waiting;
            if (std::exchange(handle.promise().started, true)) return std::noop_coroutine();
            return handle;
        }
        T await_resume() { return handle.promise().take(); }
    };
    Awaiter operator co_await() & noexcept { return Awaiter{handle_}; }
    void operator co_await() && = delete;

    // Runs the task up to its first suspension without awaiting it, so that several tasks run side
    // by side; each is awaited afterwards.
    void start() {
        if (!std::exchange(handle_.promise().started, true)) handle_.resume();
    }

private:
    explicit Task(Handle handle) : handle_(handle) {}
    Handle handle_;
};

namespace internal {

struct PromiseBase {
    std::coroutine_handle<> waiting;
    bool started = false;

    struct Final {
        bool await_ready() const noexcept { return false; }
        template <class P>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<P> done) noexcept {
            auto next = done.promise().waiting;
            return next ? next : std::noop_coroutine();
        }
        void await_resume() const noexcept {}
    };
    std::suspend_always initial_suspend() const noexcept { return {}; }
    Final final_suspend() const noexcept { return {}; }
};

}  // namespace internal

template <class T>
struct Task<T>::promise_type : internal::PromiseBase {
    std::variant<std::monostate, T, std::exception_ptr> result;

    Task get_return_object() { return Task{Handle::from_promise(*this)}; }
    template <class U>
    void return_value(U&& value) {
        result.template emplace<1>(std::forward<U>(value));
    }
    void unhandled_exception() { result.template emplace<2>(std::current_exception()); }
    T take() {
        if (result.index() == 2) std::rethrow_exception(std::get<2>(result));
        return std::move(std::get<1>(result));
    }
};

template <>
struct Task<void>::promise_type : internal::PromiseBase {
    std::exception_ptr error;

    Task get_return_object() { return Task{Handle::from_promise(*this)}; }
    void return_void() const noexcept {}
    void unhandled_exception() { error = std::current_exception(); }
    void take() {
        if (error) std::rethrow_exception(error);
    }
};

}  // namespace quorvi
