#pragma once

#include <libpq-fe.h>

#include <memory>
#include <optional>
#include <string>

#include "Quorvi/platform/CloudDatabase.h"
#include "Quorvi/platform/linux/postgres/PostgresAddress.h"
#include "Quorvi/platform/linux/postgres/PostgresQuery.h"
#include "QuorviCore/base/Secret.h"

namespace quorvi {

// What came of one query: rows, or why there are none.
struct PostgresAnswer {
    PostgresResult result;
    std::optional<CloudError> error;
};

// One connection, which never blocks but for looking up the server's name: its owner polls the
// descriptor and lets it advance. Queries are pipelined, each a transaction of its own; answers
// come in their order. libpq keeps the password in memory as long as the connection lives.
class PostgresConnection {
public:
    enum class State { connecting, ready, lost };

    PostgresConnection(const PostgresAddress& address, const std::optional<Secret>& password);
    PostgresConnection(const PostgresConnection&) = delete;
    PostgresConnection& operator=(const PostgresConnection&) = delete;

    State state() const { return state_; }
    // Why it was lost.
    const CloudError& failure() const { return failure_; }

    int descriptor() const { return PQsocket(connection_.get()); }
    short events() const { return events_; }
    // Bytes that have left this process and not been acknowledged by the other end.
    int unacknowledged() const;
    // When the descriptor is ready for what it was polled for.
    void advance();

    // While ready.
    void send(const PostgresQuery& query);
    // Hands over what was sent. To be called when there is nothing more to send for the moment.
    void flush();
    // The next whole answer that has arrived.
    std::optional<PostgresAnswer> takeAnswer();
    // True when another connection has announced something since the last call.
    bool takeNotification();

private:
    using Connection = std::unique_ptr<PGconn, decltype(&PQfinish)>;

    static Connection start(const PostgresAddress& address, const std::optional<Secret>& password);
    static void takeNotice(void* self, const PGresult* notice);
    void connectFurther();
    void becomeReady();
    void lose(CloudError failure);
    CloudError whyNotConnected(ConnStatusType stage) const;
    CloudError whyBroken() const;

    State state_ = State::connecting;
    short events_ = 0;
    bool broken_ = false;  // nothing more comes or goes, but answers may still lie here
    std::size_t outstanding_ = 0;
    PostgresAnswer answer_;   // the one that is arriving
    std::string lastNotice_;  // SQLSTATE of what the server said last without being asked
    CloudError failure_;
    Connection connection_;
};

}  // namespace quorvi
