#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Quorvi/platform/LoginItem.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"

namespace quorvi {

// The entry "quorvi.desktop" in the user's autostart folder. Only a copy of the program that an
// entry of the menus starts counts as installed, not one in a build folder. An entry that the user
// has hidden, disabled or excluded from this desktop means requiresApproval and is not overwritten.
// One thread at a time.
class XdgLoginItem : public LoginItem {
public:
    struct Places {
        std::filesystem::path executable;                     // this program
        std::filesystem::path configuration;                  // XDG_CONFIG_HOME
        std::vector<std::filesystem::path> applicationRoots;  // XDG_DATA_HOME, XDG_DATA_DIRS
        std::string desktops;                                 // XDG_CURRENT_DESKTOP
        std::string searchPath;                               // PATH

        // From the environment. Call it at the start: the executable's path is lost once an update
        // has replaced the file.
        static Places current();
    };

    explicit XdgLoginItem(Places places);

    LoginItemStatus status() override;
    void registerItem() override;
    void unregisterItem() override;
    void openSettings() override;

private:
    bool isInstalled() const;

    const Places places_;
    const std::filesystem::path entry_;
    PosixFileStore files_{PosixFileStore::Folder::asItIs};
};

}  // namespace quorvi
