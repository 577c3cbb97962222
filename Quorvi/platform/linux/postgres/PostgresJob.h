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

// Who the connection belongs to, as the server says when it is opened.
struct PostgresAccount {
    std::string id;
    std::string channel;  // of the account's notifications
    bool push = false;    // whether the server announces changes
};

// Something to be done over a connection: one or more queries. All but abandon() happens on the
// connection's thread.
class PostgresJob {
public:
    virtual ~PostgresJob() = default;

    // The next query to send; nothing when all have been sent.
    virtual std::optional<PostgresQuery> next(const PostgresAccount& account) = 0;
    // The answer to each query, in their order.
    virtual void answered(const PostgresAnswer& answer) = 0;
    // Once at most: there will be no more answers.
    virtual void failed(const std::exception_ptr& why) = 0;

    // Nobody waits for it any more. What was not sent yet stays unsent. Any thread.
    void abandon() { abandoned_ = true; }
    bool isAbandoned() const { return abandoned_; }

private:
    std::atomic<bool> abandoned_ = false;
};

// One query, whose rows become a value for whoever awaits the promise. Reading them may throw
// CloudError.
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
