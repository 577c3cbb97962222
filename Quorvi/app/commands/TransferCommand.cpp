#include "Quorvi/app/commands/TransferCommand.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>

#include "Quorvi/app/commands/StoredPreferences.h"
#include "Quorvi/app/composition/StoredFiles.h"
#include "Quorvi/platform/linux/posix/PosixFileStore.h"
#include "Quorvi/platform/linux/posix/PosixJournalFiles.h"
#include "Quorvi/shell/SingleInstance.h"
#include "Quorvi/system/PreferencesOverlay.h"
#include "Quorvi/transfer/UserData.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "QuorviCore/transfer/ExportDocument.h"

namespace quorvi {

namespace {

struct Interrupted {};

volatile std::sig_atomic_t interrupted = 0;

void throwIfInterrupted() {
    if (interrupted) throw Interrupted();
}

// A progress line that is overwritten in place, on a terminal only.
class Progress {
public:
    ~Progress() { clear(); }

    void show(const char* what) {
        throwIfInterrupted();
        if (isShown_) print(what);
    }
    void show(const char* what, std::size_t done, std::size_t of) {
        throwIfInterrupted();
        const auto percent = of == 0 ? 100 : static_cast<int>(100 * done / of);
        if (!isShown_ || percent == percent_) return;
        percent_ = percent;
        print(std::string(what) + " " + std::to_string(percent) + " %");
    }
    void clear() {
        if (isShown_ && width_ > 0) std::fprintf(stderr, "\r%*s\r", static_cast<int>(width_), "");
        width_ = 0;
    }

private:
    void print(const std::string& line) {
        clear();
        std::fprintf(stderr, "%s", line.c_str());
        width_ = line.size();
    }

    const bool isShown_ = isatty(STDERR_FILENO) != 0;
    int percent_ = -1;
    std::size_t width_ = 0;
};

struct StoredUserData : StoredPreferences {
    UserData openForReading() { return open(unchanged, UserData::Access::reading); }
    UserData openForChanges() { return open(preferences, UserData::Access::changing); }

    PosixJournalFiles journals;
    PreferencesOverlay unchanged{preferences};  // reading completes a fresh user's settings

private:
    UserData open(Preferences& in, UserData::Access access) {
        return UserData({files, journals, in, scheduler, historyFile(), syncArchiveFile()}, access);
    }
};

std::string counted(std::size_t number, const char* one, const char* several) {
    return std::to_string(number) + " " + (number == 1 ? one : several);
}

std::string listed(const UserData::Counts& counts) {
    return counted(counts.dictations, "dictation", "dictations") + ", " +
           counted(counts.rules, "rule", "rules") + " and " +
           counted(counts.settings, "setting", "settings");
}

void exportTo(const std::filesystem::path& file) {
    if (std::filesystem::is_directory(file))
        throw std::runtime_error(file.string() + " is a folder. Name a file.");
    const auto present = std::filesystem::symlink_status(file);
    if (std::filesystem::exists(present) && !std::filesystem::is_regular_file(present))
        throw std::runtime_error(file.string() + " is a link or a device. Name a file.");
    Progress progress;
    progress.show("Reading…");
    StoredUserData stored;
    auto items = stored.openForReading().items();
    const auto counts = UserData::count(items);
    ExportEncoder encoder(std::move(items));
    PosixFileStore files(PosixFileStore::Folder::named);
    try {
        files.replaceInPieces(std::filesystem::absolute(file), [&] {
            progress.show("Writing", encoder.done(), encoder.size());
            return encoder.next();
        });
    } catch (const std::system_error& error) {
        throw std::runtime_error(file.string() + " could not be written (" +
                                 error.code().message() + ").");
    }
    progress.clear();
    std::printf("%s: %s.\nOnly you may read this file, but it is not encrypted.\n",
                file.string().c_str(), listed(counts).c_str());
}

std::string contentOf(const std::filesystem::path& file) {
    try {
        if (auto content = PosixFileStore().read(std::filesystem::absolute(file)))
            return *std::move(content);
    } catch (const std::system_error& error) {
        throw std::runtime_error(file.string() + " could not be read (" + error.code().message() +
                                 ").");
    }
    throw std::runtime_error("There is no file " + file.string() + ".");
}

void importFrom(const std::filesystem::path& file) {
    const SingleInstance instance;
    if (!instance.isFirst())
        throw std::runtime_error("Quorvi is running. Quit it first: quorvi quit");
    Progress progress;
    progress.show("Reading…");
    const auto items = decodeExport(contentOf(file), [&](std::size_t done, std::size_t of) {
        progress.show("Reading", done, of);
    });
    progress.show("Merging…");
    StoredUserData stored;
    auto data = stored.openForChanges();
    const auto counts = data.merge(items);
    progress.show("Writing…");
    data.save();
    progress.clear();
    std::printf("Taken over: %s.\nThe rest was here already, is newer here, or was deleted here.\n",
                listed(counts).c_str());
}

template <class Work>
int carryOut(Work work) {
    struct sigaction action{};
    action.sa_handler = [](int) { interrupted = 1; };
    action.sa_flags = static_cast<int>(SA_RESETHAND);  // a second signal ends the program
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    try {
        work();
        return 0;
    } catch (const Interrupted&) {
        std::fprintf(stderr, "quorvi: Interrupted; nothing was changed.\n");
        return 130;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quorvi: %s\n", shownInEnglish(error).c_str());
        return 1;
    }
}

}  // namespace

std::optional<int> runTransferCommand(const std::vector<std::string_view>& arguments) {
    if (arguments.empty() || (arguments[0] != "export" && arguments[0] != "import"))
        return std::nullopt;
    if (arguments.size() != 2 || arguments[1].empty()) {
        std::fprintf(stderr, "quorvi: %s needs one file (see quorvi --help)\n",
                     std::string(arguments[0]).c_str());
        return 2;
    }
    const std::filesystem::path file(arguments[1]);
    return arguments[0] == "export" ? carryOut([&] { exportTo(file); })
                                    : carryOut([&] { importFrom(file); });
}

}  // namespace quorvi
