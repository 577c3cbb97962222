#pragma once

namespace quorvi {

enum class LoginItemStatus {
    notRegistered,
    enabled,
    requiresApproval,  // registered, but the user has switched it off in the desktop's own settings
    notFound,          // this program isn't installed
    unknown,
};

// The application as one of the programs that the desktop starts when the user signs in. Each
// operation waits for the disk, so it runs on an executor; those that change something throw a
// std::exception whose what() can be shown.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    virtual LoginItemStatus status() = 0;
    virtual void registerItem() = 0;
    virtual void unregisterItem() = 0;

    // Opens the desktop's settings for the programs that start at login.
    virtual void openSettings() = 0;
};

}  // namespace quorvi
