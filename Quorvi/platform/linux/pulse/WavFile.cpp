#include "Quorvi/platform/linux/pulse/WavFile.h"

#include <algorithm>
#include <string_view>

#include "QuorviCore/Error.h"

namespace quorvi {

namespace {

constexpr std::size_t chunkHeader = 8;
constexpr std::uint16_t pcm = 1;

std::uint32_t number(const Bytes& bytes, std::size_t at, int size) {
    std::uint32_t value = 0;
    for (int i = size - 1; i >= 0; --i)
        value = value << 8 | bytes[at + static_cast<std::size_t>(i)];
    return value;
}

bool isNamed(const Bytes& bytes, std::size_t at, std::string_view name) {
    return std::equal(name.begin(), name.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at));
}

QuorviError unreadable() {
    return QuorviError::message(say::notAWavFile());
}

}  // namespace

PcmSound readWavFile(const Bytes& wav) {
    if (wav.size() < 12 || !isNamed(wav, 0, "RIFF") || !isNamed(wav, 8, "WAVE")) throw unreadable();
    PcmSound sound;
    for (std::size_t at = 12; at + chunkHeader <= wav.size();) {
        const auto content = at + chunkHeader;
        const std::size_t size =
            std::min<std::size_t>(number(wav, at + 4, 4), wav.size() - content);
        if (isNamed(wav, at, "fmt ")) {
            if (size < 16 || number(wav, content, 2) != pcm || number(wav, content + 14, 2) != 16)
                throw unreadable();
            sound.channels = static_cast<std::uint8_t>(number(wav, content + 2, 2));
            sound.sampleRate = number(wav, content + 4, 4);
        } else if (isNamed(wav, at, "data")) {
            sound.samples.reserve(size / 2);
            for (std::size_t i = 0; i + 1 < size; i += 2)
                sound.samples.push_back(static_cast<std::int16_t>(number(wav, content + i, 2)));
        }
        at = content + size + size % 2;
    }
    if (sound.channels == 0 || sound.sampleRate == 0) throw unreadable();
    return sound;
}

}  // namespace quorvi
