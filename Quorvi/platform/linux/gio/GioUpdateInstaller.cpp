#include "Quorvi/platform/linux/gio/GioUpdateInstaller.h"

#include <gio/gio.h>

#include <string>
#include <string_view>

#include "Quorvi/platform/linux/gio/GLibHandles.h"
#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"

namespace quorvi {

namespace {

namespace fs = std::filesystem;

constexpr auto packageType = "application/vnd.debian.binary-package";

// The value of a control field in dpkg-deb's output.
std::string field(std::string_view output, const std::string& name) {
    const auto lines = "\n" + std::string(output) + "\n";
    const auto key = "\n" + name + ": ";
    const auto found = lines.find(key);
    if (found == lines.npos) return {};
    const auto begin = found + key.size();
    return lines.substr(begin, lines.find('\n', begin) - begin);
}

PackageIdentity describe(const fs::path& package) {
    const char* arguments[] = {"dpkg-deb", "--field", package.c_str(),
                               "Package",  "Version", nullptr};
    constexpr auto flags = static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE |
                                                         G_SUBPROCESS_FLAGS_STDERR_SILENCE);
    const GLibHandle<GSubprocess> program(g_subprocess_newv(arguments, flags, nullptr));
    char* text = nullptr;
    const bool ended = program && g_subprocess_communicate_utf8(program.get(), nullptr, nullptr,
                                                                &text, nullptr, nullptr);
    const GLibHandle<char> output(text);
    if (!ended || !output || !g_subprocess_get_successful(program.get()))
        throw QuorviError::message(say::updateNotAPackage());
    return {field(output.get(), "Package"), field(output.get(), "Version")};
}

void launch(const fs::path& package) {
    const GLibHandle<GAppInfo> application(g_app_info_get_default_for_type(packageType, FALSE));
    if (!application) throw QuorviError::message(say::updateNoInstaller(package.string()));
    const GLibHandle<GFile> file(g_file_new_for_path(package.c_str()));
    const GLibHandle<char> uri(g_file_get_uri(file.get()));
    const GLibHandle<GList> uris(g_list_append(nullptr, uri.get()));
    if (!g_app_info_launch_uris(application.get(), uris.get(), nullptr, nullptr))
        throw QuorviError::message(say::updateInstallerNotStarted(package.string()));
}

}  // namespace

Task<PackageIdentity> GioUpdateInstaller::identify(std::filesystem::path package) {
    auto asking = inBackground(executor_, scheduler_, [package] { return describe(package); });
    co_return co_await asking;
}

Task<void> GioUpdateInstaller::open(std::filesystem::path package) {
    auto opening = inBackground(executor_, scheduler_, [package] { launch(package); });
    co_await opening;
}

}  // namespace quorvi
