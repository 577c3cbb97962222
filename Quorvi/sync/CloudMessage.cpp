#include "Quorvi/sync/CloudMessage.h"

#include "Quorvi/platform/CloudDatabase.h"

namespace quorvi {

std::string cloudMessage(const std::exception& error) {
    const auto* cloud = dynamic_cast<const CloudError*>(&error);
    if (cloud == nullptr) return "Sync is unavailable. Your changes are saved on this Mac.";
    const auto code = std::to_string(cloud->code());
    switch (cloud->code()) {
        case cloudErrorCode::networkUnavailable:
        case cloudErrorCode::networkFailure:
            return "Offline — changes will sync when you reconnect.";
        case cloudErrorCode::badContainer:
        case cloudErrorCode::missingEntitlement:
        case cloudErrorCode::permissionFailure:
            return "iCloud access is unavailable for this build (" + code + ").";
        case cloudErrorCode::notAuthenticated:
            return "Sign in to iCloud in System Settings to sync.";
        case cloudErrorCode::quotaExceeded:
            return "iCloud storage is full. Your changes are saved on this Mac.";
        default:
            return "iCloud will retry. Your changes are saved on this Mac (" + code + ").";
    }
}

Duration cloudRetryInterval(const std::exception& error) {
    const auto* cloud = dynamic_cast<const CloudError*>(&error);
    if (cloud != nullptr && cloud->retryAfter()) return *cloud->retryAfter();
    return std::chrono::seconds(30);
}

}  // namespace quorvi
