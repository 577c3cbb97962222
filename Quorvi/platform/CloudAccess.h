#pragma once

#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "QuorviCore/async/Date.h"
#include "QuorviCore/async/Task.h"
#include "QuorviCore/base/Secret.h"
#include "QuorviCore/messages/Message.h"

namespace quorvi {

// A computer that has written into a shared folder.
struct CloudComputer {
    std::string id;
    std::string name;  // empty if it is not known
    Date lastChange;
    bool isThis = false;

    bool operator==(const CloudComputer&) const = default;
};

// What the interface can do with the cloud that the setting "cloudDatabase" names, beside
// synchronising. Main thread, which never blocks. The tasks throw only Cancelled.
class CloudAccess {
public:
    virtual ~CloudAccess() = default;

    // Returns why an address can't be the setting; nullopt if it can.
    virtual std::optional<Message> problem(const std::string& address) const = 0;
    // Stores the password of a server, and returns whether the keychain has it now.
    virtual Task<bool> storePassword(std::string address, Secret password,
                                     std::stop_token stop) = 0;

    // Writes something into the present cloud, reads it back and removes it. Returns what is wrong;
    // nullopt if nothing is. The cloud is not changed before the end.
    virtual Task<std::optional<Message>> check(std::stop_token stop) = 0;

    // Returns the computers of a shared folder, the last active first; none for another cloud.
    virtual Task<std::vector<CloudComputer>> computers(std::stop_token stop) = 0;
    // An empty name stands for that of the host.
    virtual Task<void> nameThisComputer(std::string name, std::stop_token stop) = 0;
    // Removes the files of another computer, which is gone for good. What only they have is kept.
    // Returns what is wrong; nullopt if nothing is.
    virtual Task<std::optional<Message>> removeComputer(std::string id, std::stop_token stop) = 0;
};

}  // namespace quorvi
