#pragma once

#include <filesystem>
#include <memory>

#include "QuorviCore/base/Bytes.h"

namespace quorvi {

// A recording that has no name any more but is still open; closing it deletes it. Any one thread at
// a time.
class OpenRecording {
public:
    virtual ~OpenRecording() = default;

    // Everything written so far. Blocks on the disk. Throws QuorviError.
    virtual Bytes read() const = 0;
};

// A recording in memory only: in no core dump, not in the swap space either as far as the system
// lets the program lock memory, and overwritten at its end. Immutable.
class RecordingInMemory {
public:
    virtual ~RecordingInMemory() = default;

    virtual Bytes read() const = 0;
};

// The private place for recordings in progress. All functions but newFile() and keepInMemory()
// block on the disk, so they run on an executor; they are safe from any thread. Whoever creates
// files also removes them: a file that has a name stays until takeOut() or remove().
class RecordingFiles {
public:
    virtual ~RecordingFiles() = default;

    // Returns a path for one more recording. Creates nothing and does not block.
    virtual std::filesystem::path newFile() const = 0;

    // Makes the place ready for a file, readable by its owner only. Throws QuorviError when that is
    // not possible, or when somebody else could read what is written there.
    virtual void prepare() = 0;

    // Opens a recording, which may still be being written, and removes its name: nobody else can
    // open it from then on, and it vanishes when it is closed, also because the program is killed.
    // Throws QuorviError.
    virtual std::shared_ptr<const OpenRecording> takeOut(const std::filesystem::path& file) = 0;

    // Copies a recording that is not empty. Returns nullptr without the memory for it.
    virtual std::unique_ptr<RecordingInMemory> keepInMemory(const Bytes& audio) const = 0;

    // Deletes a recording that still has its name. Failures are ignored.
    virtual void remove(const std::filesystem::path& file) = 0;

    // Deletes what a killed program left behind. Failures are ignored.
    virtual void removeLeftOver() = 0;
};

}  // namespace quorvi
