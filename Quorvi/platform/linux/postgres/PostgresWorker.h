#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>
#include <vector>

#include "Quorvi/platform/linux/posix/Descriptor.h"
#include "Quorvi/platform/linux/postgres/PostgresAddress.h"
#include "Quorvi/platform/linux/postgres/PostgresConnection.h"
#include "Quorvi/platform/linux/postgres/PostgresJob.h"
#include "Quorvi/platform/linux/postgres/PostgresSettings.h"
#include "QuorviCore/async/Scheduler.h"

namespace quorvi {

// The thread that drives the connection to one database: opens it when there is something to do,
// sends jobs in the order given, a few ahead of the answers, and sleeps otherwise. With a
// subscription it keeps the connection, and opens it again when it is lost.
class PostgresWorker {
public:
    // Called on the worker's thread.
    struct Events {
        std::function<void()> remoteChange;
        std::function<void()> accountChange;
    };

    PostgresWorker(PostgresAddress address, PostgresPassword password, Events events,
                   PostgresTimes times);
    // What is under way fails with Cancelled.
    ~PostgresWorker();
    PostgresWorker(const PostgresWorker&) = delete;
    PostgresWorker& operator=(const PostgresWorker&) = delete;

    // Any thread.
    void submit(std::shared_ptr<PostgresJob> job);

private:
    void run();
    bool takeInbox();
    void work();
    void wait();
    TimePoint wakeAt() const;
    void dropAbandoned();
    void open();
    void beginSession();
    void opened(const PostgresAnswer& answer);
    void sendJobs();
    void takeAnswers();
    void askForChanges();
    void expectAnswer();
    bool isSilent();
    void lose(CloudError why);
    void failAll(const std::exception_ptr& why);
    void enqueueFirst(std::shared_ptr<PostgresJob> job);

    const PostgresAddress address_;
    const PostgresPassword password_;
    const Events events_;
    const PostgresTimes times_;
    const Descriptor wake_;  // an eventfd

    std::mutex mutex_;  // guards the inbox; held for a few instructions only
    std::vector<std::shared_ptr<PostgresJob>> inbox_;
    bool closing_ = false;

    // The rest belongs to the thread.
    std::deque<std::shared_ptr<PostgresJob>> queue_;        // with more to send
    std::deque<std::shared_ptr<PostgresJob>> outstanding_;  // one for each answer that is due
    std::unique_ptr<PostgresConnection> connection_;
    PostgresAccount account_;  // of the last session
    bool session_ = false;     // the account is known to be the connection's
    bool subscribed_ = false;
    bool listening_ = false;
    std::optional<std::int64_t> lastVersion_;  // that a question for changes gave
    TimePoint deadline_;                       // of the connection, or of the next byte
    int unacknowledged_ = 0;                   // bytes, when the deadline was set
    TimePoint idleSince_;
    TimePoint nextPoll_;
    TimePoint retryAt_;
    Duration retryAfter_;
    std::stop_source stop_;
    std::thread thread_;

    friend class PostgresSubscription;
};

// Asks the server to announce changes. One that can't is asked for them instead.
class PostgresSubscription : public PostgresJob {
public:
    explicit PostgresSubscription(PostgresWorker& worker,
                                  std::optional<Promise<void>> promise = {});

    std::optional<PostgresQuery> next(const PostgresAccount& account) override;
    void answered(const PostgresAnswer& answer) override;
    void failed(const std::exception_ptr& why) override;

private:
    PostgresWorker& worker_;
    std::optional<Promise<void>> promise_;
    bool sent_ = false;
};

}  // namespace quorvi
