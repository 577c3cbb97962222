#pragma once

#include <algorithm>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "QuorviCore/propertylist/PropertyList.h"
#include "tests/support/Process.h"

namespace quorvi::test {

// The program itself, with a home folder that outlives each of its runs.
class QuorviProgram {
public:
    explicit QuorviProgram(const PropertyList::Dictionary& preferences = {}) {
        const auto folder = preferencesFile().parent_path();
        std::filesystem::create_directories(folder);
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
        if (!preferences.empty())
            std::ofstream(preferencesFile(), std::ios::binary)
                << PropertyList(preferences).toBinary();
    }
    ~QuorviProgram() { quit(); }

    void start(const std::vector<std::string>& settings = {},
               const std::vector<std::string>& arguments = {}) {
        std::vector<std::string> command{QUORVI_PROGRAM, "--print-stages"};
        command.insert(command.end(), arguments.begin(), arguments.end());
        launch(std::move(command), settings);
    }
    void quit() {
        if (process_.pid() < 0) return;
        process_.signal(SIGTERM);
        process_.wait();
    }
    void crash(int signal = SIGKILL) {
        process_.signal(signal);
        process_.wait();
    }
    pid_t pid() const { return process_.pid(); }

    // Reads what it prints, up to a line with one of the texts.
    std::string untilOneOf(const std::vector<std::string>& texts) {
        for (;;) {
            auto line = process_.readLine();
            for (const auto& text : texts)
                if (line.find(text) != line.npos) return line;
        }
    }
    std::string until(const std::string& text) { return untilOneOf({text}); }
    // What it has printed and not been read, after its end.
    std::string rest() { return process_.readAll(); }

    std::string historyText() const { return contentOf(historyFile()); }
    std::string preferencesText() const { return contentOf(preferencesFile()); }
    std::filesystem::path historyFile() const { return dataFolder() / "history.json"; }
    std::filesystem::path dataFolder() const { return home_.path() / ".local/share/Quorvi"; }

protected:
    void launch(std::vector<std::string> command, std::vector<std::string> settings) {
        settings.push_back("HOME=" + home_.path().string());
        process_ = Process(std::move(command), settings);
    }
    const TestFolder& home() const { return home_; }

private:
    std::filesystem::path preferencesFile() const {
        return home_.path() / ".config/Quorvi/preferences.plist";
    }

    TestFolder home_;
    Process process_;
};

}  // namespace quorvi::test
