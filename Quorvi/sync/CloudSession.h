#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>

#include "Quorvi/sync/Activity.h"
#include "Quorvi/sync/CloudSyncEngine.h"
#include "Quorvi/sync/GuardedArchive.h"
#include "Quorvi/sync/ItemExchange.h"
#include "Quorvi/sync/LocalCapture.h"
#include "Quorvi/sync/StoreUpdater.h"
#include "QuorviCore/async/Lifetime.h"
#include "QuorviCore/async/TaskScope.h"
#include "QuorviCore/messages/Message.h"

namespace quorvi {

// Connects to the cloud, exchanges changes with it in passes, and tries again after failures. Main
// thread; part of AccountSync.
//
// Anything awaited may take any time; meanwhile the user may switch sync off or the account may
// change. So a task goes on only while its engine, or its attempt to connect, is the current one.
class CloudSession {
public:
    static constexpr std::string_view subscriptionID = "quorvi.private.changes";

    struct Environment {
        CloudDatabase* database;  // null with an invalid address: the session never connects
        std::string address;      // of the database; empty for the one of this machine alone
        GuardedArchive& archive;
        LocalCapture& capture;
        StoreUpdater& updater;
        ItemExchange& items;
        Scheduler& scheduler;
        TaskScope& tasks;
        std::function<void(Message)> report;  // of the status
        std::function<void()> onChange;       // of isWorking() and the time of the last pass
    };
    CloudSession(Environment environment, bool isEnabled);

    // Follows the cloud's notifications, and connects if sync is enabled. The archive must be open.
    Task<void> begin(std::stop_token stop);
    // Ends the connection for good.
    void end();

    bool isEnabled() const { return isEnabled_; }
    // Connects or ends the connection, in the next turn.
    void setEnabled(bool enabled);

    // Starts a pass, or another one after the pass under way.
    void passNow();
    // Starts a pass a second after the last call, if enabled.
    void passSoon();
    // Whether a pass is under way.
    bool isWorking() const { return passing_.isActive(); }
    // Whether sync is enabled and the archive can be used.
    bool canRun() const { return isEnabled_ && !hasEnded_ && environment_.archive.isUsable(); }
    // Ends the connection and its operations.
    void stop();
    // Connects again in the next turn, since the account may be another one.
    void reconnect();

private:
    using Engine = std::shared_ptr<CloudSyncEngine>;

    bool isCurrent(std::uint64_t attempt) const { return canRun() && attempt == attempt_; }
    bool isCurrent(const Engine& engine) const { return canRun() && engine && engine == engine_; }
    bool isPausedByCloud() const { return environment_.scheduler.now() < retryAfter_; }

    // Does nothing while that is under way or done, or the cloud has asked for a pause.
    Task<void> connect(std::stop_token stop);
    Task<void> tryToConnect(std::uint64_t attempt, std::stop_token stop);
    Task<void> openConnection(std::uint64_t attempt, std::stop_token stop);
    Task<bool> adoptAccount(std::uint64_t attempt, std::stop_token stop);
    Task<bool> adoptCloud(std::string user, std::uint64_t attempt, std::stop_token stop);
    Task<void> subscribe(std::uint64_t attempt, std::stop_token stop);
    Engine makeEngine();
    Task<void> fetchForTheFirstTime(Engine engine, std::stop_token stop);

    Task<void> pass(std::stop_token stop);
    Task<void> tryPass(std::stop_token stop);
    Task<void> exchange(Engine engine, std::stop_token stop);
    Task<bool> checkAccount(Engine engine, std::stop_token stop);
    void endExchange();
    void noteFailure(const std::exception_ptr& failure);

    void startConnecting();
    void inNextTurn(std::function<void()> work);

    Environment environment_;
    bool isEnabled_;
    bool hasEnded_ = false;
    Subscription remoteChanges_;
    Engine engine_;              // null while not connected
    std::uint64_t attempt_ = 0;  // grows with every stop()
    Activity connecting_;
    Activity passing_;
    bool passAgain_ = false;  // a pass was asked for during one
    Timer passTimer_;         // the pass that follows a local change
    TimePoint retryAfter_ = TimePoint::min();
    std::optional<Date> savedLastSynced_;  // the time of the last pass, as last saved in this run
    Lifetime lifetime_;
};

}  // namespace quorvi
