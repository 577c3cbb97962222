#include "Quorvi/system/updates/UpdatePackage.h"

#include <exception>
#include <fstream>
#include <system_error>
#include <utility>

#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"
#include "QuorviCore/base/Bytes.h"
#include "QuorviCore/updates/UpdateSignature.h"
#include "QuorviCore/updates/Version.h"

namespace quorvi {

namespace {

namespace fs = std::filesystem;

// Only this user can enter the folder and the updater's own around it, so that nobody can exchange
// a file between its verification and its use.
void prepareFolder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    for (const auto& each : {folder.parent_path(), folder})
        if (!error) fs::permissions(each, fs::perms::owner_all, error);
    if (error) throw QuorviError::message(say::updateFolderNotCreated(error.message()));
}

Bytes contentOf(const fs::path& file, std::uint64_t length) {
    Bytes bytes(static_cast<std::size_t>(length));
    std::ifstream stream(file, std::ios::binary);
    stream.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    const bool whole = stream.gcount() == static_cast<std::streamsize>(bytes.size()) &&
                       stream.peek() == std::ifstream::traits_type::eof();
    if (!whole) throw QuorviError::message(say::updateNotRead());
    return bytes;
}

void requireSignature(const fs::path& file, const AppcastItem& item, const std::string& publicKey) {
    const auto key = updateKeyFromBase64(publicKey);
    if (!key || !isSignedWith(*key, item.signature, contentOf(file, item.length)))
        throw QuorviError::message(say::updateSignatureInvalid(item.displayVersion));
}

// The upstream part of a Debian version: without the epoch before it and the revision behind it.
std::string upstreamVersion(const std::string& version) {
    const auto begin = version.find(':') + 1;  // zero without an epoch
    return version.substr(begin, version.rfind('-') - begin);
}

Task<void> requireNewerQuorvi(const UpdateEnvironment& environment, AppcastItem item,
                              fs::path file) {
    auto asking = environment.installer.identify(std::move(file));
    const auto package = co_await asking;
    const auto& configuration = environment.configuration;
    if (package.name != configuration.package) throw QuorviError::message(say::updateNotQuorvi());
    if (compareVersions(upstreamVersion(package.version), configuration.currentVersion) <= 0)
        throw QuorviError::message(say::updateNotNewer(item.displayVersion));
}

Task<void> requireGenuine(const UpdateEnvironment& environment, AppcastItem item, fs::path file) {
    auto checking = inBackground(environment.executor, environment.scheduler,
                                 [item, file, key = environment.configuration.publicKey] {
                                     requireSignature(file, item, key);
                                 });
    co_await checking;
    auto asking = requireNewerQuorvi(environment, std::move(item), std::move(file));
    co_await asking;
}

// Sees `task` through. When it ends other than well, the folder is gone before that is told.
Task<void> orRemove(const UpdateEnvironment& environment, fs::path folder, Task<void> task) {
    std::exception_ptr failure;
    try {
        co_await task;
        co_return;
    } catch (...) {
        failure = std::current_exception();
    }
    auto removing = inBackground(environment.executor, environment.scheduler,
                                 [folder] { removeUpdateFolder(folder); });
    co_await removing;
    std::rethrow_exception(failure);
}

Task<void> fetchPackage(const UpdateEnvironment& environment, AppcastItem item, fs::path file,
                        std::function<void(std::uint64_t)> progress, std::stop_token stop) {
    auto preparing = inBackground(environment.executor, environment.scheduler,
                                  [folder = file.parent_path()] { prepareFolder(folder); });
    co_await preparing;
    auto downloading =
        environment.downloader.download(item.url, file, item.length, std::move(progress), stop);
    co_await downloading;
    auto checking = requireGenuine(environment, std::move(item), std::move(file));
    co_await checking;
    throwIfStopped(stop);
}

}  // namespace

void removeUpdateFolder(const std::filesystem::path& folder) {
    std::error_code ignored;
    if (!folder.empty()) fs::remove_all(folder, ignored);
}

Task<std::filesystem::path> downloadUpdate(const UpdateEnvironment& environment, AppcastItem item,
                                           std::filesystem::path folder,
                                           std::function<void(std::uint64_t)> progress,
                                           std::stop_token stop) {
    const auto file = folder / ("quorvi-" + item.version + ".deb");
    auto fetching =
        fetchPackage(environment, std::move(item), file, std::move(progress), std::move(stop));
    auto downloading = orRemove(environment, std::move(folder), std::move(fetching));
    co_await downloading;
    co_return file;
}

Task<void> verifyUpdate(const UpdateEnvironment& environment, AppcastItem item,
                        std::filesystem::path file) {
    auto folder = file.parent_path();
    auto checking = requireGenuine(environment, std::move(item), std::move(file));
    auto verifying = orRemove(environment, std::move(folder), std::move(checking));
    co_await verifying;
}

}  // namespace quorvi
