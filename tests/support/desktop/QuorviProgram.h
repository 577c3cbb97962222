#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/Paths.h"
#include "tests/support/Process.h"

namespace quorvi::test {

// The program itself, with a home folder that outlives each of its runs. Another one may share the
// folder.
class QuorviProgram {
public:
    using Strings = std::vector<std::string>;

    explicit QuorviProgram(std::shared_ptr<TestFolder> home = std::make_shared<TestFolder>())
        : home_(std::move(home)) {}
    ~QuorviProgram() { quit(); }

    void start(const Strings& settings = {}, const Strings& arguments = {}) {
        launch({builtProgram("quorvi"), "--print-stages"}, arguments, settings);
    }
    // On a desktop and a session bus of its own, as on another computer with the same home folder.
    void startElsewhere() {
        elsewhere_ = std::make_unique<NestedServer>();
        launch({"dbus-run-session", "--", builtProgram("quorvi"), "--print-stages"}, {},
               {"DISPLAY=" + elsewhere_->display(), "AT_SPI_BUS_ADDRESS",
                "XDG_RUNTIME_DIR=" + runtime_.path().string()});
    }
    int wait() { return process_.wait(); }
    void quit() { crash(SIGTERM); }
    void crash(int signal = SIGKILL) {
        if (process_.pid() < 0) return;
        process_.signal(signal);
        process_.wait();
    }
    pid_t pid() const { return process_.pid(); }

    // Reads what it prints, up to a line with one of the texts.
    std::string untilOneOf(const Strings& texts) {
        for (;;) {
            auto line = process_.readLine();
            for (const auto& text : texts)
                if (line.find(text) != line.npos) return line;
        }
    }
    std::string until(const std::string& text) { return untilOneOf({text}); }
    // What it has printed and not been read, after its end.
    std::string rest() { return process_.readAll(); }

    std::string homeSetting() const { return "HOME=" + home_->path().string(); }
    std::string historyText() const { return contentOf(historyFile()); }
    std::string preferencesText() const {
        return contentOf(home_->path() / ".config/Quorvi/preferences.plist");
    }
    std::filesystem::path historyFile() const { return dataFolder() / "history.json"; }
    std::filesystem::path dataFolder() const { return home_->path() / ".local/share/Quorvi"; }

private:
    void launch(Strings command, const Strings& arguments, Strings settings) {
        command.insert(command.end(), arguments.begin(), arguments.end());
        settings.push_back(homeSetting());
        process_ = Process(std::move(command), settings);
    }

    const std::shared_ptr<TestFolder> home_;
    const TestFolder runtime_;
    std::unique_ptr<NestedServer> elsewhere_;
    Process process_;
};

}  // namespace quorvi::test
