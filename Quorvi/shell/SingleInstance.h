#pragma once

#include <string>

#include "Quorvi/platform/linux/posix/Descriptor.h"

namespace quorvi {

// Ensures that the user runs only one Quorvi: two would react to the same shortcut, delete each
// other's recordings and overwrite each other's history. Holds a lock in the runtime folder and one
// in the data folder, which another session or computer may share, until the object or the process
// ends.
class SingleInstance {
public:
    SingleInstance();

    bool isFirst() const { return rival_.empty(); }
    // Says where the other instance is; empty if there is none.
    const std::string& rival() const { return rival_; }

private:
    void waitForRemains() const;

    const Descriptor inSession_;
    const Descriptor inData_;
    std::string rival_;
};

}  // namespace quorvi
