#pragma once

#include <functional>
#include <optional>

#include "Quorvi/platform/LoginItem.h"
#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/TaskScope.h"
#include "QuorviCore/messages/Message.h"

namespace quorvi {

// Whether the application starts when the user signs in: the switch, and a sentence about its
// state. Main thread; actions run on the executor, one after another, and change the state when
// they end.
class LaunchAtLoginController {
public:
    // Refreshes at once.
    LaunchAtLoginController(LoginItem& service, Executor& executor, Scheduler& scheduler);
    LaunchAtLoginController(const LaunchAtLoginController&) = delete;
    LaunchAtLoginController& operator=(const LaunchAtLoginController&) = delete;

    bool isEnabled() const { return status_ == LoginItemStatus::enabled; }
    bool requiresApproval() const { return status_ == LoginItemStatus::requiresApproval; }
    // The status, or the error of the last action; empty until the status is known.
    const Message& message() const { return message_; }

    [[nodiscard]] Subscription onChange(std::function<void()> observer) {
        return changes_.subscribe(std::move(observer));
    }

    void refresh();
    // Opens the desktop's settings instead if the user has switched the program off there.
    void setEnabled(bool on);
    void openLoginItems();

private:
    using Action = std::function<void(LoginItem&)>;

    void perform(Action action);
    Task<void> run(Action action);

    LoginItem& service_;
    Executor& executor_;
    Scheduler& scheduler_;
    Observable changes_;
    std::optional<LoginItemStatus> status_;
    Message message_;
    TaskScope tasks_;  // last: tasks end before what they use
};

}  // namespace quorvi
