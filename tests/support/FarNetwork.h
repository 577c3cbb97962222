#pragma once

#include <sched.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/Process.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {

// Another network, with a link to it that can be cut and slowed. Moves the calling thread, and the
// threads and programs that it starts, into a network of its own, so it must come first. Needs
// root.
class FarNetwork {
public:
    static constexpr const char* farAddress = "10.78.0.2";

    FarNetwork() {
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

    // What begins a command that is to run there.
    std::vector<std::string> prefix() const {
        return {"nsenter", "--target", std::to_string(holder_.pid()), "--net", "--"};
    }

    // Packets vanish without a word.
    void cut() const { runThere("ip link set far down"); }
    void mend() const { runThere("ip link set far up"); }
    // Both ways carry this much, such as 1mbit.
    void slowTo(const std::string& rate) const {
        const auto limit = " root tbf burst 16kb latency 400ms rate " + rate;
        run("tc qdisc replace dev near" + limit);
        runThere("tc qdisc replace dev far" + limit);
    }
    void hurry() const {
        run("tc qdisc del dev near root");
        runThere("tc qdisc del dev far root");
    }

private:
    static void run(const std::string& command) { outputOf({"sh", "-c", command}); }
    void runThere(const std::string& command) const {
        auto words = prefix();
        words.insert(words.end(), {"sh", "-c", command});
        outputOf(words);
    }

    Process holder_;
};

}  // namespace quorvi::test
