#pragma once

#include <functional>
#include <optional>
#include <string>

#include "Quorvi/platform/LoginItem.h"
#include "QuorviCore/async/Executor.h"
#include "QuorviCore/async/Observable.h"
#include "QuorviCore/async/TaskScope.h"

namespace quorvi {

// Lets the user have the application start when they sign in: shows how that stands, and explains
// it in a sentence. Main thread; what is asked for is done on the executor, one thing after
// another, and shows once it is done.
class LaunchAtLoginController {
public:
    // Refreshes at once.
    LaunchAtLoginController(LoginItem& service, Executor& executor, Scheduler& scheduler);
    LaunchAtLoginController(const LaunchAtLoginController&) = delete;
    LaunchAtLoginController& operator=(const LaunchAtLoginController&) = delete;

    bool isEnabled() const { return status_ == LoginItemStatus::enabled; }
    bool requiresApproval() const { return status_ == LoginItemStatus::requiresApproval; }
    // The status, or the last error; empty until the status is known.
    const std::string& message() const { return message_; }

    [[nodiscard]] Subscription onChange(std::function<void()> observer) {
        return changes_.subscribe(std::move(observer));
    }

    void refresh();
    // A program that the user has switched off in the desktop's settings is switched on there
    // again.
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
    std::string message_;
    TaskScope tasks_;  // last: tasks end before what they use
};

}  // namespace quorvi
