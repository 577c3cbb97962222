#pragma once

namespace quorvi {

// Exchanges the user's data with their other machines. Main thread.
class AccountSync {
public:
    virtual ~AccountSync() = default;
    virtual void shutdown() = 0;
};

// A program without synchronisation: everything stays on this machine.
class NoAccountSync final : public AccountSync {
public:
    void shutdown() override {}
};

}  // namespace quorvi
