#pragma once

namespace quorvi {

enum class LoginItemStatus {
    notRegistered,
    enabled,
    requiresApproval,  // registered, but disabled by the user in the desktop's settings
    notFound,          // this program isn't installed
    unknown,
};

// The program's entry among those that the desktop starts when the user signs in. Operations block
// on the disk, so they run on an executor, one at a time. All but status() throw a std::exception
// with a displayable what().
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
