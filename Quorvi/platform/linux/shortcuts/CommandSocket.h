#pragma once

#include <functional>
#include <optional>
#include <string>

#include "Quorvi/platform/linux/gio/DescriptorSource.h"
#include "Quorvi/platform/linux/posix/Descriptor.h"

namespace quorvi {

// Hears the helper `quorvi-shortcut`, which a desktop runs at each press of a key. Created and
// destroyed on a GLibThread.
class CommandSocket {
public:
    // `told` is given the helper's word, on the thread. Without a runtime folder nothing is heard.
    explicit CommandSocket(std::function<void(const std::string&)> told);
    ~CommandSocket();
    CommandSocket(const CommandSocket&) = delete;
    CommandSocket& operator=(const CommandSocket&) = delete;

private:
    bool listen();
    bool receive();

    const std::function<void(const std::string&)> told_;
    const std::string path_;
    const Descriptor socket_;
    std::optional<DescriptorSource> source_;
};

}  // namespace quorvi
