#pragma once

#include <string>
#include <vector>

#include "tests/support/Process.h"

namespace quorvi::test {

// Another network, with a link to it that can be cut and slowed. Moves the calling thread, and the
// threads and programs that it starts, into a network of its own, so it must come first. Needs
// root.
class FarNetwork {
public:
    static constexpr const char* farAddress = "10.78.0.2";

    FarNetwork();

    // What begins a command that is to run there.
    std::vector<std::string> prefix() const {
        return {"nsenter", "--target", std::to_string(holder_.pid()), "--net", "--"};
    }

    // Packets vanish without a word.
    void cut() const { runThere("ip link set far down"); }
    void mend() const { runThere("ip link set far up"); }
    // Both ways carry this much, such as 1mbit.
    void slowTo(const std::string& rate) const;
    void hurry() const {
        run("tc qdisc del dev near root");
        runThere("tc qdisc del dev far root");
    }

private:
    static void run(const std::string& command) { outputOf({"sh", "-c", command}); }
    void runThere(const std::string& command) const;

    Process holder_;
};

}  // namespace quorvi::test
