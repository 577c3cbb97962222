#include "QuorviCore/updates/Appcast.h"

#include <algorithm>

#include "QuorviCore/Error.h"
#include "QuorviCore/updates/Version.h"

namespace quorvi {

UpdateChoice chooseUpdate(const std::vector<AppcastItem>& items, std::string_view current,
                          std::string_view system) {
    UpdateChoice choice;
    for (const auto& item : items) {
        if (compareVersions(item.version, current) <= 0) continue;
        const bool runsHere = item.minimumSystemVersion.empty() || system.empty() ||
                              compareVersions(item.minimumSystemVersion, system) <= 0;
        auto& best = runsHere ? choice.update : choice.forNewerSystem;
        if (!best || compareVersions(item.version, best->version) > 0) best = item;
    }
    return choice;
}

void requireDownloadable(const AppcastItem& item) {
    const auto& version = item.displayVersion;
    if (!isSecureAddress(item.url))
        throw QuorviError::message(say::updateDownloadNotSecure(version));
    if (item.signature.empty()) throw QuorviError::message(say::updateNotSigned(version));
    if (item.length == 0) throw QuorviError::message(say::updateSizeUnknown(version));
    if (item.length > maximumPackageBytes)
        throw QuorviError::message(say::updatePackageTooLarge(version));
}

bool isSecureAddress(std::string_view url) {
    constexpr std::string_view scheme = "https://";
    if (!url.starts_with(scheme)) return false;
    const auto host =
        url.substr(scheme.size(), url.find_first_of("/?#", scheme.size()) - scheme.size());
    if (host.empty() || host.find('@') != host.npos) return false;
    return std::none_of(url.begin(), url.end(), [](unsigned char c) {
        return c <= 0x20 || c >= 0x7f || c == '"' || c == '<' || c == '>' || c == '\\';
    });
}

}  // namespace quorvi
