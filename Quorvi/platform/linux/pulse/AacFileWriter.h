#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

#include "Quorvi/platform/AudioCapture.h"

namespace quorvi {

// Encodes samples as AAC into an MPEG-4 file. Making one opens the encoder, which takes some 10 to
// 30 ms, and can be done ahead of time. Used on one thread at a time; every failure is thrown as a
// QuorviError. Destroying a writer before finish() leaves an unfinished file.
class AacFileWriter {
public:
    explicit AacFileWriter(AudioSettings settings);
    ~AacFileWriter();
    AacFileWriter(const AacFileWriter&) = delete;
    AacFileWriter& operator=(const AacFileWriter&) = delete;

    // Creates the file, readable and writable by its owner only. It must not exist yet; when this
    // fails, it doesn't exist either.
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
    // The spare one, or a new one for other settings or when there is none.
    std::unique_ptr<AacFileWriter> take(AudioSettings settings);

private:
    std::unique_ptr<AacFileWriter> spare_;
};

}  // namespace quorvi
