#pragma once

#include <string>

#include "Quorvi/platform/Descriptor.h"

namespace quorvi {

// Whether this is the user's only Quorvi: two would answer the same shortcut, each would take the
// other's recording for a left-over, and each would write its own history over the other's. Holds a
// lock in the user's runtime folder, and one beside the user's data, which another session or
// another computer may share, until the object or the process ends, however that comes about.
class SingleInstance {
public:
    SingleInstance();

    bool isFirst() const { return rival_.empty(); }
    // Where the other one is, as a sentence for the user; empty when there is none.
    const std::string& rival() const { return rival_; }

private:
    void waitForRemains() const;

    const Descriptor inSession_;
    const Descriptor inData_;
    std::string rival_;
};

}  // namespace quorvi
