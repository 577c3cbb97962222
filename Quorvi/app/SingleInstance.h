#pragma once

namespace quorvi {

// Whether this is the user's only Quorvi: two would answer the same shortcut, and each would take
// the other's recording for a left-over. Holds a lock in the user's runtime folder until the object
// or the process ends, however that comes about.
class SingleInstance {
public:
    SingleInstance();
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    bool isFirst() const { return isFirst_; }

private:
    void waitForRemains() const;

    int lock_ = -1;
    bool isFirst_ = true;
};

}  // namespace quorvi
