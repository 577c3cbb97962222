#include "Quorvi/platform/linux/postgres/PostgresConnection.h"

#include <linux/sockios.h>
#include <poll.h>
#include <sys/ioctl.h>

#include <utility>
#include <vector>

#include "Quorvi/platform/linux/postgres/PostgresErrors.h"
#include "QuorviCore/base/Wipe.h"

namespace quorvi {

namespace {

std::string field(const PGresult* result, int name) {
    const char* value = pq().resultErrorField(result, name);
    return value ? value : "";
}

}  // namespace

PostgresConnection::PostgresConnection(const PostgresAddress& address,
                                       const std::optional<Secret>& password)
    : failure_(cloudErrorCode::networkFailure), connection_(start(address, password)) {
    if (!connection_) {
        lose(CloudError(cloudErrorCode::internalError, "There is not enough memory."));
        return;
    }
    // Reports a failed login by its SQLSTATE only, independent of language.
    pq().setErrorVerbosity(connection_.get(), PQERRORS_SQLSTATE);
    pq().setNoticeReceiver(connection_.get(), takeNotice, this);
    if (pq().status(connection_.get()) == CONNECTION_BAD)
        lose(whyNotConnected(CONNECTION_STARTED));
    else
        events_ = POLLOUT;
}

PostgresConnection::Connection PostgresConnection::start(const PostgresAddress& address,
                                                         const std::optional<Secret>& password) {
    std::vector<const char*> keywords;
    std::vector<const char*> values;
    for (const auto& [keyword, value] : address.parameters()) {
        keywords.push_back(keyword.c_str());
        values.push_back(value.c_str());
    }
    std::string secret(password ? password->view() : std::string_view());
    if (password) {
        keywords.push_back("password");
        values.push_back(secret.c_str());
    }
    keywords.push_back(nullptr);
    values.push_back(nullptr);
    Connection connection(pq().connectStartParams(keywords.data(), values.data(), 0));
    wipe(secret);
    return connection;
}

void PostgresConnection::takeNotice(void* self, const PGresult* notice) {
    static_cast<PostgresConnection*>(self)->lastNotice_ = field(notice, PG_DIAG_SQLSTATE);
}

void PostgresConnection::advance() {
    if (state_ == State::connecting) {
        connectFurther();
    } else if (state_ == State::ready) {
        // Answers received before the end still count; takeAnswer() reaches the end later.
        broken_ |= !pq().consumeInput(connection_.get());
        flush();
    }
}

int PostgresConnection::unacknowledged() const {
    int bytes = 0;
    return ::ioctl(descriptor(), SIOCOUTQ, &bytes) == 0 ? bytes : 0;
}

void PostgresConnection::connectFurther() {
    const auto stage = pq().status(connection_.get());
    switch (pq().connectPoll(connection_.get())) {
        case PGRES_POLLING_READING:
            events_ = POLLIN;
            break;
        case PGRES_POLLING_WRITING:
            events_ = POLLOUT;
            break;
        case PGRES_POLLING_OK:
            becomeReady();
            break;
        default:
            lose(whyNotConnected(stage));
    }
}

void PostgresConnection::becomeReady() {
    if (pq().setnonblocking(connection_.get(), 1) != 0 ||
        !pq().enterPipelineMode(connection_.get())) {
        lose(CloudError(cloudErrorCode::internalError, "The connection can't be used."));
        return;
    }
    state_ = State::ready;
    events_ = POLLIN;
}

void PostgresConnection::lose(CloudError failure) {
    if (state_ == State::lost) return;
    state_ = State::lost;
    events_ = 0;
    failure_ = std::move(failure);
}

CloudError PostgresConnection::whyNotConnected(ConnStatusType stage) const {
    const std::string message = pq().errorMessage(connection_.get());
    if (const auto state = sqlStateIn(message); !state.empty())
        return cloudErrorOfState(state, "The database server refused the connection.");
    if (stage == CONNECTION_SSL_STARTUP)
        return CloudError(cloudErrorCode::badContainer,
                          "The connection to the database server is not secure: its certificate "
                          "was not accepted, or it offers no encryption.");
    if (pq().connectionNeedsPassword(connection_.get()))
        return CloudError(cloudErrorCode::notAuthenticated,
                          "The database asks for a password, and none is stored.");
    return CloudError(cloudErrorCode::networkUnavailable, "The database server can't be reached.");
}

CloudError PostgresConnection::whyBroken() const {
    if (lastNotice_.starts_with("57P")) return cloudErrorOfState(lastNotice_, {});
    return CloudError(cloudErrorCode::networkFailure,
                      "The connection to the database server was lost.");
}

void PostgresConnection::send(const PostgresQuery& query) {
    if (state_ != State::ready) return;
    if (!query.queue(connection_.get()) || !pq().pipelineSync(connection_.get())) {
        broken_ = true;
        return;
    }
    ++outstanding_;
}

void PostgresConnection::flush() {
    if (state_ != State::ready || broken_) return;
    const int left = pq().flush(connection_.get());
    broken_ |= left < 0;
    events_ = left > 0 ? POLLIN | POLLOUT : POLLIN;
}

std::optional<PostgresAnswer> PostgresConnection::takeAnswer() {
    while (outstanding_ > 0 && !pq().isBusy(connection_.get())) {
        PostgresResult result(pq().getResult(connection_.get()));
        if (!result) {  // the end of a query, before the end of its transaction
            if (pq().status(connection_.get()) == CONNECTION_BAD) break;
            continue;
        }
        switch (pq().resultStatus(result.get())) {
            case PGRES_PIPELINE_SYNC:
                --outstanding_;
                return std::exchange(answer_, {});
            case PGRES_COMMAND_OK:
            case PGRES_TUPLES_OK:
                answer_.result = std::move(result);
                break;
            case PGRES_PIPELINE_ABORTED:
                break;
            default: {
                const auto state = field(result.get(), PG_DIAG_SQLSTATE);
                // The last message of the server on a connection arrives as the answer to a query.
                if (state.starts_with("57P0")) lastNotice_ = state;
                answer_.error =
                    state.empty()
                        ? whyBroken()
                        : cloudErrorOfState(state, field(result.get(), PG_DIAG_MESSAGE_PRIMARY));
            }
        }
    }
    if (broken_ || pq().status(connection_.get()) == CONNECTION_BAD) lose(whyBroken());
    return std::nullopt;
}

bool PostgresConnection::takeNotification() {
    bool foreign = false;
    while (PGnotify* notification = pq().notifies(connection_.get())) {
        foreign |= notification->be_pid != pq().backendPID(connection_.get());
        pq().freemem(notification);
    }
    return foreign;
}

}  // namespace quorvi
