#include "Quorvi/app/commands/ComputersCommand.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <exception>
#include <string>

#include "Quorvi/app/commands/StoredPreferences.h"
#include "Quorvi/app/composition/CloudDatabases.h"
#include "Quorvi/platform/linux/folder/FolderCloud.h"
#include "Quorvi/platform/linux/folder/FolderComputers.h"
#include "Quorvi/platform/linux/xdg/UserFolders.h"
#include "Quorvi/shell/SingleInstance.h"
#include "Quorvi/ui/translations/ShownMessage.h"

namespace quorvi {

namespace {

constexpr std::size_t shortId = 8;

int complain(const std::string& problem) {
    std::fprintf(stderr, "quorvi: %s\n", problem.c_str());
    return 1;
}

bool isThis(const FolderComputer& computer, const std::vector<Uuid>& own) {
    return std::ranges::count(own, computer.id) > 0;
}

int list(const std::vector<FolderComputer>& computers, const std::vector<Uuid>& own) {
    for (const auto& computer : computers) {
        char day[16] = "-";
        if (std::tm local{}; localtime_r(&computer.lastChange, &local))
            std::strftime(day, sizeof day, "%Y-%m-%d", &local);
        std::printf("%s  %s  %7.1f MB  %s%s\n", computer.id.string().substr(0, shortId).c_str(),
                    day, static_cast<double>(computer.bytes) / 1e6,
                    computer.name.empty() ? "?" : computer.name.c_str(),
                    isThis(computer, own) ? " (this computer)" : "");
    }
    return 0;
}

int remove(const std::filesystem::path& folder, const std::vector<FolderComputer>& computers,
           const std::vector<Uuid>& own, const std::string& which) {
    std::vector<FolderComputer> meant;
    std::ranges::copy_if(computers, std::back_inserter(meant), [&](const FolderComputer& one) {
        return one.name == which || one.id.string().substr(0, shortId) == which;
    });
    if (meant.empty()) return complain("There is no computer " + which + " in this folder.");
    if (meant.size() > 1)
        return complain("There are several of that name: say the number instead.");
    if (isThis(meant[0], own)) return complain("This computer is in use: remove another one.");
    const SingleInstance instance;
    if (!instance.isFirst()) return complain("Quorvi is running. Quit it first: quorvi quit");
    FolderCloud cloud(folder, cloudDeviceFile(UserFolders::find().data), {});
    cloud.remove(meant[0].id);
    cloud.compact();
    std::printf(
        "Its files were removed. What it alone had last is in this computer's files now.\n");
    return 0;
}

int run(const std::vector<std::string_view>& arguments) {
    const StoredPreferences stored;
    const auto address = stored.cloudAddress();
    if (!address) return complain(shownInEnglish(stored.problem()));
    if (const auto problem = cloudAddressProblem(*address))
        return complain(shownInEnglish(*problem));
    if (address->empty() || isServerAddress(*address)) {
        std::printf("The cloud is no shared folder: it keeps nothing by computer.\n");
        return 0;
    }
    const auto folder = cloudFolder(*address);
    const auto computers = folderComputers(folder);
    const auto own = FolderMachine::idsIn(cloudDeviceFile(UserFolders::find().data));
    return arguments.size() == 1 ? list(computers, own)
                                 : remove(folder, computers, own, std::string(arguments[2]));
}

}  // namespace

std::optional<int> runComputersCommand(const std::vector<std::string_view>& arguments) {
    if (arguments.empty() || arguments[0] != "computers") return std::nullopt;
    if (arguments.size() != 1 && !(arguments.size() == 3 && arguments[1] == "remove")) {
        std::fprintf(stderr,
                     "quorvi: computers takes nothing but remove and a computer (see quorvi "
                     "--help)\n");
        return 2;
    }
    try {
        return run(arguments);
    } catch (const std::exception& error) {
        return complain(shownInEnglish(error));
    }
}

}  // namespace quorvi
