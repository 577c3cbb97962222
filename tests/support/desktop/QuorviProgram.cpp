#include "tests/support/desktop/QuorviProgram.h"

#include <fstream>

#include "tests/support/Paths.h"

namespace quorvi::test {

QuorviProgram::QuorviProgram(const PropertyList::Dictionary& preferences) {
    const auto folder = preferencesFile().parent_path();
    std::filesystem::create_directories(folder);
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
    if (!preferences.empty())
        std::ofstream(preferencesFile(), std::ios::binary) << PropertyList(preferences).toBinary();
}

void QuorviProgram::start(const std::vector<std::string>& settings,
                          const std::vector<std::string>& arguments) {
    std::vector<std::string> command{builtProgram("quorvi"), "--print-stages"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    launch(std::move(command), settings);
}

void QuorviProgram::quit() {
    if (process_.pid() < 0) return;
    process_.signal(SIGTERM);
    process_.wait();
}

std::string QuorviProgram::untilOneOf(const std::vector<std::string>& texts) {
    for (;;) {
        auto line = process_.readLine();
        for (const auto& text : texts)
            if (line.find(text) != line.npos) return line;
    }
}

void QuorviProgram::crash(int signal) {
    process_.signal(signal);
    process_.wait();
}

}  // namespace quorvi::test
