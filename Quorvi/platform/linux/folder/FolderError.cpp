#include "Quorvi/platform/linux/folder/FolderError.h"

#include <cerrno>
#include <string>
#include <system_error>

namespace quorvi {

namespace {

int codeOf(int error) {
    switch (error) {
        case EACCES:
        case EPERM:
        case EROFS:
            return cloudErrorCode::permissionFailure;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return cloudErrorCode::quotaExceeded;
        case ENOTDIR:
        case ELOOP:
        case ENAMETOOLONG:
            return cloudErrorCode::badContainer;
        case ENOENT:
        case ENODEV:
        case ENXIO:
        case EIO:
        case ESTALE:
        case ETIMEDOUT:
        case EHOSTDOWN:
        case EHOSTUNREACH:
        case ENETDOWN:
        case ENETUNREACH:
        case ENOTCONN:
        case ECONNRESET:
        case ECONNREFUSED:
            return cloudErrorCode::networkUnavailable;
        default:
            return cloudErrorCode::internalError;
    }
}

}  // namespace

CloudError folderError(int error, const char* what, const std::filesystem::path& path) {
    return CloudError(codeOf(error), std::string(what) + " " + path.string() + ": " +
                                         std::generic_category().message(error));
}

void failFolder(const char* what, const std::filesystem::path& path) {
    throw folderError(errno, what, path);
}

}  // namespace quorvi
