#include "Quorvi/sync/CloudMessage.h"

#include "Quorvi/platform/CloudDatabase.h"

namespace quorvi {

Message cloudMessage(const std::exception& error) {
    const auto* cloud = dynamic_cast<const CloudError*>(&error);
    if (cloud == nullptr) return say::syncUnavailable();
    switch (cloud->code()) {
        case cloudErrorCode::networkUnavailable:
        case cloudErrorCode::networkFailure:
            return say::syncOffline();
        case cloudErrorCode::badContainer:
        case cloudErrorCode::missingEntitlement:
        case cloudErrorCode::permissionFailure:
            return say::syncNoAccess(cloud->code());
        case cloudErrorCode::notAuthenticated:
            return say::syncSignIn();
        case cloudErrorCode::quotaExceeded:
            return say::syncStorageFull();
        default:
            return say::syncWillRetry(cloud->code());
    }
}

Duration cloudRetryInterval(const std::exception& error) {
    const auto* cloud = dynamic_cast<const CloudError*>(&error);
    if (cloud != nullptr && cloud->retryAfter()) return *cloud->retryAfter();
    return std::chrono::seconds(30);
}

}  // namespace quorvi
