#include "Quorvi/platform/linux/pulse/AvLibraries.h"

#include <stdexcept>

#include "Quorvi/platform/linux/posix/SharedLibrary.h"
#include "QuorviCore/Error.h"

namespace quorvi {

// The versions whose headers this was compiled with.
AvLibraries::AvLibraries() try {
#define QUORVI_FIND(name) library.find(#name, name);
    SharedLibrary library("libavutil", LIBAVUTIL_VERSION_MAJOR);
    QUORVI_AVUTIL_FUNCTIONS(QUORVI_FIND)
    library = SharedLibrary("libavcodec", LIBAVCODEC_VERSION_MAJOR);
    QUORVI_AVCODEC_FUNCTIONS(QUORVI_FIND)
    library = SharedLibrary("libavformat", LIBAVFORMAT_VERSION_MAJOR);
    QUORVI_AVFORMAT_FUNCTIONS(QUORVI_FIND)
#undef QUORVI_FIND
} catch (const std::runtime_error& error) {
    throw QuorviError::message(say::soundCannotBeEncoded(error.what()));
}

const AvLibraries& AvLibraries::get() {
    static const AvLibraries libraries;
    return libraries;
}

}  // namespace quorvi
