#pragma once

#include <atomic>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "Quorvi/platform/linux/postgres/PostgresConnection.h"
#include "Quorvi/platform/linux/postgres/PostgresQuery.h"
#include "QuorviCore/async/Future.h"

namespace quorvi {

// The account of a connection, as reported by the server when it is opened.
struct PostgresAccount {
    std::string id;
    std::string channel;  // for notifications of the account
    bool push = false;    // whether the server announces changes
};

// A job for a connection: one or more queries. Everything but abandon() happens on the thread of
// the connection.
class PostgresJob {
public:
    virtual ~PostgresJob() = default;

    // Returns the next query to send; nullopt if all have been sent.
    virtual std::optional<PostgresQuery> next(const PostgresAccount& account) = 0;
    // Called with the answer to each query, in order.
    virtual void answered(const PostgresAnswer& answer) = 0;
    // Called at most once: there will be no more answers.
    virtual void failed(const std::exception_ptr& why) = 0;

    // Cancels the job; queries not yet sent are dropped. Any thread.
    void abandon() { abandoned_ = true; }
    bool isAbandoned() const { return abandoned_; }

private:
    std::atomic<bool> abandoned_ = false;
};

// A single query whose rows resolve a promise. The read function may throw CloudError.
template <class T>
class PostgresRequest : public PostgresJob {
public:
    using Make = std::function<PostgresQuery(const PostgresAccount&)>;
    using Read = std::function<T(const PostgresResult&, const PostgresAccount&)>;

    PostgresRequest(Promise<T> promise, Make make, Read read)
        : promise_(std::move(promise)), make_(std::move(make)), read_(std::move(read)) {}

    std::optional<PostgresQuery> next(const PostgresAccount& account) override {
        if (std::exchange(sent_, true)) return std::nullopt;
        account_ = account;
        return make_(account);
    }
    void answered(const PostgresAnswer& answer) override {
        try {
            if (answer.error) throw CloudError(*answer.error);
            if constexpr (std::is_void_v<T>) {
                read_(answer.result, account_);
                promise_.resolve();
            } else {
                promise_.resolve(read_(answer.result, account_));
            }
        } catch (...) {
            promise_.reject(std::current_exception());
        }
    }
    void failed(const std::exception_ptr& why) override { promise_.reject(why); }

private:
    Promise<T> promise_;
    const Make make_;
    const Read read_;
    PostgresAccount account_;
    bool sent_ = false;
};

}  // namespace quorvi
