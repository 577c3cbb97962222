#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "Quorvi/platform/linux/posix/Descriptor.h"

namespace quorvi {

// Tells when other machines' files in a shared folder change, as far as the system says so, which
// it does for what happens on this computer.
class FolderWatch {
public:
    // `changed` is called on a thread of the watch's own, once for changes that come together.
    // Files in the folder `own` don't count. Throws CloudError when there is no such folder.
    FolderWatch(std::filesystem::path folder, std::string own, std::function<void()> changed);
    // `changed` is not called any more.
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
