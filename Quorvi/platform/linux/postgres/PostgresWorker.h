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

// The thread that drives the connection to a database: opens it on demand, sends jobs in order, a
// few ahead of the answers, and otherwise sleeps. With a subscription it keeps the connection open
// and reopens it when lost.
class PostgresWorker {
public:
    // Called on the thread of the worker.
    struct Events {
        std::function<void()> remoteChange;
        std::function<void()> accountChange;
    };

    PostgresWorker(PostgresAddress address, PostgresPassword password, Events events,
                   PostgresTimes times);
    // Pending jobs fail with Cancelled.
    ~PostgresWorker();
    PostgresWorker(const PostgresWorker&) = delete;
    PostgresWorker& operator=(const PostgresWorker&) = delete;

    // Ends the thread soon; for those who don't want to wait in the destructor.
    void close();
    // Waits for its end.
    void join();

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

    std::mutex mutex_;  // guards the inbox; held briefly
    std::vector<std::shared_ptr<PostgresJob>> inbox_;
    bool closing_ = false;

    // Below: used by the thread only.
    std::deque<std::shared_ptr<PostgresJob>> queue_;        // jobs with queries to send
    std::deque<std::shared_ptr<PostgresJob>> outstanding_;  // one for each expected answer
    std::unique_ptr<PostgresConnection> connection_;
    PostgresAccount account_;  // of the last session
    bool session_ = false;     // account_ belongs to the current connection
    bool subscribed_ = false;
    bool listening_ = false;
    std::optional<std::int64_t> lastVersion_;  // from the last poll
    TimePoint deadline_;                       // for connecting, or for the next progress
    int unacknowledged_ = 0;                   // bytes, when the deadline was set
    TimePoint idleSince_;
    TimePoint nextPoll_;
    TimePoint retryAt_;
    Duration retryAfter_;
    std::stop_source stop_;
    std::thread thread_;

    friend class PostgresSubscription;
};

// Subscribes to notifications of the server, or makes the worker poll if it sends none.
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
