#include "tests/support/cloud/FarNetwork.h"

#include <sched.h>

#include <filesystem>
#include <stdexcept>

#include "tests/support/Waiting.h"

namespace quorvi::test {

FarNetwork::FarNetwork() {
    if (unshare(CLONE_NEWNET) != 0) throw std::runtime_error("no network of one's own");
    holder_ = Process({"unshare", "--net", "sleep", "infinity"});
    const auto network = [](const std::string& process) {
        std::error_code gone;
        return std::filesystem::read_symlink("/proc/" + process + "/ns/net", gone);
    };
    const auto pid = std::to_string(holder_.pid());
    if (!eventually([&] { return network(pid) != network("thread-self"); }))
        throw std::runtime_error("no far network");
    run("ip link set lo up && ip link add near type veth peer name far netns " + pid +
        " && ip addr add 10.78.0.1/24 dev near && ip link set near up");
    runThere("ip addr add 10.78.0.2/24 dev far && ip link set lo up && ip link set far up");
}

void FarNetwork::slowTo(const std::string& rate) const {
    const auto limit = " root tbf burst 16kb latency 400ms rate " + rate;
    run("tc qdisc replace dev near" + limit);
    runThere("tc qdisc replace dev far" + limit);
}

void FarNetwork::runThere(const std::string& command) const {
    auto words = prefix();
    words.insert(words.end(), {"sh", "-c", command});
    outputOf(words);
}

}  // namespace quorvi::test
