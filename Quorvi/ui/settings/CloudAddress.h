#pragma once

#include <QString>
#include <string>

namespace quorvi {

enum class CloudPlace { thisComputer, sharedFolder, server };

// The address of a cloud, as the setting "cloudDatabase" holds it, in the parts that a person
// enters.
struct CloudAddress {
    CloudPlace place = CloudPlace::thisComputer;
    QString folder;
    QString server;       // host:port/database?options
    QString user;         // of the server
    QString certificate;  // file with the server's authority; empty for those of the system

    static CloudAddress of(const std::string& address);
    std::string text() const;
    // The server without what a person need not see.
    QString shortServer() const;

    bool operator==(const CloudAddress&) const = default;
};

}  // namespace quorvi
