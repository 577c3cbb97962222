#include "Quorvi/system/LaunchAtLoginController.h"

#include <exception>
#include <utility>

#include "QuorviCore/async/Async.h"

namespace quorvi {

namespace {

using Status = LoginItemStatus;

struct Outcome {
    Status status;
    std::string error;
};

const char* sentence(Status status) {
    switch (status) {
        case Status::notRegistered:
            return "Quorvi will stay closed when you sign in.";
        case Status::enabled:
            return "Quorvi will start quietly in the menu bar when you sign in.";
        case Status::requiresApproval:
            return "Allow Quorvi in System Settings → General → Login Items.";
        case Status::notFound:
            return "Launch at login is available after Quorvi is installed in Applications.";
        case Status::unknown:
            break;
    }
    return "Launch-at-login status is unavailable.";
}

void enable(LoginItem& service) {
    const auto status = service.status();
    if (status == Status::requiresApproval)
        service.openSettings();
    else if (status != Status::enabled)
        service.registerItem();
}

void disable(LoginItem& service) {
    if (service.status() != Status::notRegistered) service.unregisterItem();
}

}  // namespace

LaunchAtLoginController::LaunchAtLoginController(LoginItem& service, Executor& executor,
                                                 Scheduler& scheduler)
    : service_(service), executor_(executor), scheduler_(scheduler), tasks_(scheduler) {
    refresh();
}

void LaunchAtLoginController::refresh() {
    perform([](LoginItem&) {});
}

void LaunchAtLoginController::setEnabled(bool on) {
    perform(on ? enable : disable);
}

void LaunchAtLoginController::openLoginItems() {
    perform([](LoginItem& service) { service.openSettings(); });
}

void LaunchAtLoginController::perform(Action action) {
    tasks_.start([this, &action](std::stop_token) { return run(std::move(action)); });
}

// The status comes after the action, and an error's own words in the place of the status's.
Task<void> LaunchAtLoginController::run(Action action) {
    auto working =
        inBackground(executor_, scheduler_, [&service = service_, action = std::move(action)] {
            std::string error;
            try {
                action(service);
            } catch (const std::exception& failure) {
                error = failure.what();
            }
            return Outcome{service.status(), std::move(error)};
        });
    const auto outcome = co_await working;
    status_ = outcome.status;
    message_ = outcome.error.empty() ? sentence(outcome.status) : outcome.error;
    changes_.notify();
}

}  // namespace quorvi
