#pragma once

#include <sys/wait.h>
#include <unistd.h>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace quorvi::testing {

// Asks until the condition holds. The limit is for a test that would hang, not a measure.
inline bool eventually(const std::function<bool()>& condition,
                       std::chrono::seconds limit = std::chrono::seconds(30)) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return condition();
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

// A new folder below the session's, gone with its owner.
class TestFolder {
public:
    TestFolder() {
        std::string pattern = std::filesystem::temp_directory_path() / "fields.XXXXXX";
        if (!mkdtemp(pattern.data())) throw std::runtime_error("no folder for a test");
        path_ = pattern;
    }
    ~TestFolder() {
        std::error_code ignored;  // a dying application may still write there
        std::filesystem::remove_all(path_, ignored);
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

    std::string write(const std::string& name, std::string_view content) const {
        const auto file = path_ / name;
        std::ofstream(file, std::ios::binary) << content;
        return file;
    }

private:
    std::filesystem::path path_;
};

// An application of the test's desktop with a HOME of its own, killed with all its processes at
// the end of the scope.
class EditorProcess {
public:
    explicit EditorProcess(const std::vector<std::string>& command) : command_(command) {
        std::vector<char*> arguments;
        for (auto& part : command_) arguments.push_back(part.data());
        arguments.push_back(nullptr);
        const std::string home = home_.path();
        pid_ = fork();
        if (pid_ < 0) throw std::runtime_error("no process for " + command.front());
        if (pid_ > 0) return;
        setpgid(0, 0);
        setenv("HOME", home.c_str(), 1);
        for (const char* name :
             {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"})
            unsetenv(name);
        if (std::FILE* log = std::freopen((home + "/log").c_str(), "w", stderr))
            dup2(fileno(log), STDOUT_FILENO);
        execvp(arguments[0], arguments.data());
        _exit(127);
    }
    ~EditorProcess() { kill(); }
    EditorProcess(const EditorProcess&) = delete;
    EditorProcess& operator=(const EditorProcess&) = delete;

    pid_t pid() const { return pid_; }

    void stop() { ::kill(-pid_, SIGSTOP); }
    void resume() { ::kill(-pid_, SIGCONT); }

    // Ends it at once, like a crash.
    void kill() {
        if (pid_ <= 0) return;
        ::kill(pid_, SIGKILL);
        ::kill(-pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
        pid_ = -1;
    }

private:
    std::vector<std::string> command_;
    TestFolder home_;
    pid_t pid_ = -1;
};

// The command lines of the editors that the desktop tests use, each opening `file` in a process of
// its own.
inline std::vector<std::string> mousepad(const std::string& file) {
    return {"mousepad", "--disable-server", file};
}
inline std::vector<std::string> gnomeTextEditor(const std::string& file) {
    return {"gnome-text-editor", "--standalone", file};
}
inline std::vector<std::string> featherpad(const std::string& file) {
    return {"featherpad", "--standalone", file};
}
inline std::vector<std::string> chromium(const std::string& page, const TestFolder& profile) {
    return {"chromium",
            "--no-sandbox",
            "--force-renderer-accessibility",
            "--disable-gpu",
            "--no-first-run",
            "--disable-background-networking",
            "--user-data-dir=" + profile.path().string(),
            "file://" + page};
}

}  // namespace quorvi::testing
