#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

#include "Quorvi/platform/AudioCapture.h"

namespace quorvi {

// Encodes samples as AAC into an MPEG-4 file. The constructor opens the encoder (10 to 30 ms), so
// it pays to make one ahead of time. One thread at a time; every failure is a QuorviError.
// Destroying a writer before finish() leaves an unfinished file.
class AacFileWriter {
public:
    explicit AacFileWriter(AudioSettings settings);
    ~AacFileWriter();
    AacFileWriter(const AacFileWriter&) = delete;
    AacFileWriter& operator=(const AacFileWriter&) = delete;

    // Creates the file with mode 0600. Fails if it exists; leaves no file behind on failure.
    void open(const std::filesystem::path& file);
    void write(std::span<const std::int16_t> interleaved);
    // Completes and closes the file.
    void finish();

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

// Keeps one encoder ready for the usual settings. Encoder thread only.
class SpareAacWriter {
public:
    void prepare();
    // Returns the spare writer; a new one for other settings or if there is no spare.
    std::unique_ptr<AacFileWriter> take(AudioSettings settings);

private:
    std::unique_ptr<AacFileWriter> spare_;
};

}  // namespace quorvi
