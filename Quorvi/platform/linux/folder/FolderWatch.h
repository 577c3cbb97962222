#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "Quorvi/platform/linux/posix/Descriptor.h"

namespace quorvi {

// Watches the files of other machines in a shared folder with inotify, which reports changes made
// on this computer only.
class FolderWatch {
public:
    // `changed` is called on a thread of the watch, once for a burst of changes. Ignores files in
    // the folder `own`. Throws CloudError if the folder does not exist.
    FolderWatch(std::filesystem::path folder, std::string own, std::function<void()> changed);
    // `changed` is not called afterwards.
    ~FolderWatch();
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

private:
    void run();
    bool takeEvents();
    void watchMachine(const std::string& name);

    const std::filesystem::path folder_;
    const std::string own_;
    const std::function<void()> changed_;
    const Descriptor events_;
    const Descriptor ending_;
    std::thread thread_;
};

}  // namespace quorvi
