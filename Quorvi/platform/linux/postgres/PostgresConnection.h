#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Quorvi/platform/CloudDatabase.h"
#include "Quorvi/platform/linux/postgres/PostgresAddress.h"
#include "Quorvi/platform/linux/postgres/PostgresQuery.h"
#include "Quorvi/platform/linux/postgres/PqLibrary.h"
#include "QuorviCore/base/Secret.h"

namespace quorvi {

// The answer to one query: rows, or an error.
struct PostgresAnswer {
    PostgresResult result;
    std::optional<CloudError> error;
};

// One non-blocking connection (only looking up the server's name blocks): the owner polls the
// descriptor and calls advance(). Queries are pipelined, each in its own transaction, and answered
// in order. libpq keeps the password in memory for the life of the connection.
class PostgresConnection {
public:
    enum class State { connecting, ready, lost };

    PostgresConnection(const PostgresAddress& address, const std::optional<Secret>& password);
    PostgresConnection(const PostgresConnection&) = delete;
    PostgresConnection& operator=(const PostgresConnection&) = delete;

    State state() const { return state_; }
    // Why the connection was lost.
    const CloudError& failure() const { return failure_; }

    int descriptor() const { return pq().socket(connection_.get()); }
    short events() const { return events_; }
    // Number of bytes sent but not acknowledged by the other end.
    int unacknowledged() const;
    // To be called when the descriptor is ready for events().
    void advance();

    // Queues a query; only in the state `ready`.
    void send(const PostgresQuery& query);
    // Sends queued queries. To be called when there is nothing more to queue for now.
    void flush();
    // Returns the next complete answer that has arrived.
    std::optional<PostgresAnswer> takeAnswer();
    // Returns whether another connection has sent a notification since the last call.
    bool takeNotification();

private:
    struct Finish {
        void operator()(PGconn* connection) const { pq().finish(connection); }
    };
    using Connection = std::unique_ptr<PGconn, Finish>;

    static Connection start(const PostgresAddress& address, const std::optional<Secret>& password);
    static void takeNotice(void* self, const PGresult* notice);
    void connectFurther();
    void becomeReady();
    void lose(CloudError failure);
    CloudError whyNotConnected(ConnStatusType stage) const;
    CloudError whyBroken() const;

    State state_ = State::connecting;
    short events_ = 0;
    bool broken_ = false;  // closed, but may still have answers to take
    std::size_t outstanding_ = 0;
    PostgresAnswer answer_;   // being received
    std::string lastNotice_;  // SQLSTATE of the last unsolicited message of the server
    CloudError failure_;
    Connection connection_;
};

}  // namespace quorvi
