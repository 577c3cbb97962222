#pragma once

#include <filesystem>
#include <memory>

#include "Quorvi/platform/Descriptor.h"
#include "QuorviCore/base/Bytes.h"

namespace quorvi {

// The private folder of recordings that are in progress. Every function blocks on the disk and
// belongs on a disk executor.
namespace recordings {

// Creates the folder, readable by its owner only. Throws QuorviError when it can't be created or
// isn't safely this user's: the temporary folder is shared, and somebody else could have put a
// folder or a link of that name there first.
void prepareFolder(const std::filesystem::path& folder);

// Opens a recording that is being written and takes its name away: nobody finds it from then on,
// and it is gone once nobody has it open any more, also when the program is killed. Throws
// QuorviError.
std::shared_ptr<const Descriptor> takeOut(const std::filesystem::path& file);

// The whole recording. Throws QuorviError.
Bytes read(const Descriptor& file);

// Deletes left-over recordings; failures are ignored, and so are files of other kinds.
void removeAll(const std::filesystem::path& folder);

}  // namespace recordings
}  // namespace quorvi
