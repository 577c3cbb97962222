#pragma once

#include <filesystem>

#include "Quorvi/platform/RecordingFiles.h"

namespace quorvi {

// Recordings as files of a folder that only its owner can read. Refuses a folder that is a link or
// belongs to another user: a temporary folder is shared, so anybody could have put one there first.
// Immutable.
class PosixRecordingFiles : public RecordingFiles {
public:
    // `formerFolder`: where earlier versions kept recordings; only cleared.
    explicit PosixRecordingFiles(std::filesystem::path folder,
                                 std::filesystem::path formerFolder = {});

    std::filesystem::path newFile() const override;
    void prepare() override;
    std::shared_ptr<const OpenRecording> takeOut(const std::filesystem::path& file) override;
    std::unique_ptr<RecordingInMemory> keepInMemory(const Bytes& audio) const override;
    void remove(const std::filesystem::path& file) override;
    // Files of other kinds stay.
    void removeLeftOver() override;

private:
    static void clear(const std::filesystem::path& folder);

    const std::filesystem::path folder_, formerFolder_;
};

}  // namespace quorvi
