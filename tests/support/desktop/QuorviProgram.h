#pragma once

#include <string>
#include <utility>
#include <vector>

#include "QuorviCore/propertylist/PropertyList.h"
#include "tests/support/Process.h"

namespace quorvi::test {

// The program itself, with a home folder that outlives each of its runs.
class QuorviProgram {
public:
    explicit QuorviProgram(const PropertyList::Dictionary& preferences = {});
    ~QuorviProgram() { quit(); }

    void start(const std::vector<std::string>& settings = {},
               const std::vector<std::string>& arguments = {});
    void quit();
    void crash(int signal = SIGKILL);
    pid_t pid() const { return process_.pid(); }

    // Reads what it prints, up to a line with one of the texts.
    std::string untilOneOf(const std::vector<std::string>& texts);
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
