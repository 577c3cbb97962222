#include "Quorvi/system/LaunchAtLoginController.h"

#include <exception>
#include <utility>

#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"

namespace quorvi {

namespace {

using Status = LoginItemStatus;

struct Outcome {
    Status status;
    Message error;
};

Message messageOf(Status status) {
    switch (status) {
        case Status::notRegistered:
            return say::loginItemOff();
        case Status::enabled:
            return say::loginItemOn();
        case Status::requiresApproval:
            return say::loginItemNeedsApproval();
        case Status::notFound:
            return say::loginItemNotInstalled();
        case Status::unknown:
            break;
    }
    return say::loginItemUnknown();
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

// An error of the action is shown instead of the status after it.
Task<void> LaunchAtLoginController::run(Action action) {
    auto working =
        inBackground(executor_, scheduler_, [&service = service_, action = std::move(action)] {
            Message error;
            try {
                action(service);
            } catch (const std::exception& failure) {
                error = quorvi::messageOf(failure);
            }
            return Outcome{service.status(), std::move(error)};
        });
    const auto outcome = co_await working;
    status_ = outcome.status;
    message_ = outcome.error.isEmpty() ? messageOf(outcome.status) : outcome.error;
    changes_.notify();
}

}  // namespace quorvi
