#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

#include "Quorvi/platform/CloudDatabase.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {

// Runs operations of cloud databases to their end, on the main thread.
class CloudDesk {
public:
    virtual ~CloudDesk() = default;
    // Runs the main thread; returns false after a generous limit.
    virtual bool runUntil(const std::function<bool()>& condition) = 0;

    template <class T>
    bool ends(const Running<T>& running) {
        return runUntil([&] { return running.ended(); });
    }
    // Returns the result; a failure fails the test.
    template <class T>
    T get(Task<T> task) {
        Running<T> running(std::move(task));
        EXPECT_TRUE(ends(running)) << "the operation never ended";
        EXPECT_TRUE(running.value()) << running.failure();
        if constexpr (!std::is_void_v<T>) return running.value().value_or(T{});
    }
    // Returns the error that the operation ends with; nullopt when it succeeds.
    template <class T>
    std::optional<CloudError> failure(Task<T> task) {
        std::optional<CloudError> error;
        Running<void> running(catchError(std::move(task), error));
        EXPECT_TRUE(ends(running)) << "the operation never ended";
        return error;
    }
    // Its code; 0 when it succeeds.
    template <class T>
    int code(Task<T> task) {
        const auto error = failure(std::move(task));
        return error ? error->code() : 0;
    }

private:
    template <class T>
    static Task<void> catchError(Task<T> task, std::optional<CloudError>& error) {
        try {
            if constexpr (std::is_void_v<T>)
                co_await task;
            else
                (void)co_await task;
        } catch (const CloudError& caught) {
            error = caught;
        }
    }
};

inline CloudRecord noteRecord(const std::string& name, const std::string& text,
                              const std::string& tag = {}, const std::string& zone = "Notes") {
    return {{zone, name}, "Note", bytesOf(text), tag};
}

}  // namespace quorvi::test
