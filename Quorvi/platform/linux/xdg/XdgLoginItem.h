#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Quorvi/platform/LoginItem.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"

namespace quorvi {

// The application's entry "quorvi.desktop" in the user's autostart folder. This copy of the program
// is installed when an application entry of the same name starts it; a copy in a build folder has
// none. An entry that the user has hidden, disabled or kept from this desktop counts as registered
// and waiting for the user's approval, and is not overwritten. One thread at a time.
class XdgLoginItem : public LoginItem {
public:
    struct Places {
        std::filesystem::path executable;                     // this program
        std::filesystem::path configuration;                  // XDG_CONFIG_HOME
        std::vector<std::filesystem::path> applicationRoots;  // XDG_DATA_HOME, XDG_DATA_DIRS
        std::string desktops;                                 // XDG_CURRENT_DESKTOP
        std::string searchPath;                               // PATH

        // As the environment says. To be asked at the beginning: the executable's path is no longer
        // known once an update has replaced the file.
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
