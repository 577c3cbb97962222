#pragma once

#include <functional>
#include <memory>
#include <stop_token>

#include "Quorvi/sync/SyncArchive.h"
#include "QuorviCore/async/Task.h"

namespace quorvi {

// The archive as the parts of AccountSync share it: absent until it has been read, and out of use
// after the first failure or at the end of the program. Main thread; lives as long as AccountSync.
class GuardedArchive {
public:
    explicit GuardedArchive(SyncArchive::Environment environment)
        : environment_(std::move(environment)) {}

    // Set before open(). Called after a successful write, and once after the first failed one.
    std::function<void()> onSaved = [] {};
    std::function<void()> onFailure = [] {};

    // Reads the archive. Returns false if it can't be used, for good.
    Task<bool> open(std::stop_token stop);
    // Whether open() has neither succeeded nor failed.
    bool isOpening() const { return !archive_ && !hasFailed_; }
    // Writes the present state, blocking, and ends every use.
    void close();
    // The same on the executor. The archive is gone then.
    void closeInBackground();

    bool isUsable() const { return archive_ && !hasFailed_ && !isClosed_; }
    const SyncArchive* get() const { return archive_.get(); }  // null until it has been read
    SyncArchive* operator->() const { return archive_.get(); }
    SyncArchive& operator*() const { return *archive_; }

    // Writes the present state; `saved` is called once it is on the disk.
    void persist(std::function<void()> saved = {});
    // The same, resumed after the write, whether it succeeded or not.
    Task<void> persisted(std::stop_token stop);

private:
    void note(bool saved);

    SyncArchive::Environment environment_;
    std::unique_ptr<SyncArchive> archive_;
    bool hasFailed_ = false;
    bool isClosed_ = false;
};

}  // namespace quorvi
