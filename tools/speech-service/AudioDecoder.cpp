#include "tools/speech-service/AudioDecoder.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/dict.h>
#include <libavutil/log.h>
#include <libswresample/swresample.h>
}

#include <algorithm>
#include <cstring>
#include <memory>

namespace quorvi::speech {

namespace {

constexpr std::size_t maximumSamples = std::size_t{15} * 60 * sampleRate;
constexpr int ioBufferBytes = 32 * 1024;

[[noreturn]] void refuse() {
    throw DecodeError("The audio file could not be decoded or its format is not supported.");
}

// Lets libav read the uploaded bytes.
struct MemoryFile {
    const Bytes& bytes;
    std::int64_t position = 0;

    static int read(void* self, std::uint8_t* target, int size) {
        auto& file = *static_cast<MemoryFile*>(self);
        const auto left = static_cast<std::int64_t>(file.bytes.size()) - file.position;
        const auto n = std::min<std::int64_t>(size, left);
        if (n <= 0) return AVERROR_EOF;
        std::memcpy(target, file.bytes.data() + file.position, static_cast<std::size_t>(n));
        file.position += n;
        return static_cast<int>(n);
    }
    static std::int64_t seek(void* self, std::int64_t offset, int whence) {
        auto& file = *static_cast<MemoryFile*>(self);
        const auto size = static_cast<std::int64_t>(file.bytes.size());
        if (whence == AVSEEK_SIZE) return size;
        if (whence == SEEK_CUR) offset += file.position;
        if (whence == SEEK_END) offset += size;
        if (offset < 0 || offset > size) return AVERROR(EINVAL);
        return file.position = offset;
    }
};

int refuseToOpen(AVFormatContext*, AVIOContext**, const char*, int, AVDictionary**) {
    return AVERROR(EPERM);
}

struct Free {
    void operator()(AVIOContext* io) const {
        av_freep(&io->buffer);
        avio_context_free(&io);
    }
    void operator()(AVFormatContext* format) const { avformat_close_input(&format); }
    void operator()(AVCodecContext* codec) const { avcodec_free_context(&codec); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(SwrContext* resampler) const { swr_free(&resampler); }
};
template <class T>
using Owned = std::unique_ptr<T, Free>;

Owned<AVIOContext> openIo(MemoryFile& file) {
    auto* buffer = static_cast<std::uint8_t*>(av_malloc(ioBufferBytes));
    if (!buffer) throw std::bad_alloc();
    Owned<AVIOContext> io(avio_alloc_context(buffer, ioBufferBytes, 0, &file, &MemoryFile::read,
                                             nullptr, &MemoryFile::seek));
    if (!io) throw std::bad_alloc();
    return io;
}

Owned<AVFormatContext> openFormat(AVIOContext* io) {
    AVFormatContext* format = avformat_alloc_context();
    if (!format) throw std::bad_alloc();
    format->pb = io;
    format->io_open = &refuseToOpen;
    AVDictionary* options = nullptr;
    // Containers only: playlists and the like refer to other files.
    av_dict_set(&options, "format_whitelist", "mov,wav,mp3,ogg,flac,matroska", 0);
    const int failed = avformat_open_input(&format, nullptr, nullptr, &options);
    av_dict_free(&options);
    if (failed < 0) refuse();
    return Owned<AVFormatContext>(format);
}

// Decodes the stream and appends the resampled sound.
class Decoder {
public:
    explicit Decoder(AVFormatContext* format) : format_(format) {
        if (avformat_find_stream_info(format, nullptr) < 0) refuse();
        const AVCodec* codec = nullptr;
        stream_ = av_find_best_stream(format, AVMEDIA_TYPE_AUDIO, -1, -1, &codec, 0);
        if (stream_ < 0) refuse();
        codec_.reset(avcodec_alloc_context3(codec));
        const auto* parameters = format->streams[stream_]->codecpar;
        if (!codec_ || avcodec_parameters_to_context(codec_.get(), parameters) < 0 ||
            avcodec_open2(codec_.get(), codec, nullptr) < 0) {
            refuse();
        }
    }

    std::vector<std::int16_t> run() {
        while (av_read_frame(format_, packet_.get()) >= 0) {
            // A damaged packet is skipped.
            if (packet_->stream_index == stream_ &&
                avcodec_send_packet(codec_.get(), packet_.get()) == 0)
                receive();
            av_packet_unref(packet_.get());
        }
        avcodec_send_packet(codec_.get(), nullptr);
        receive();
        if (resampler_) convert(nullptr);
        if (samples_.empty()) refuse();
        return std::move(samples_);
    }

private:
    void receive() {
        while (avcodec_receive_frame(codec_.get(), frame_.get()) == 0) {
            if (!resampler_) openResampler();
            convert(frame_.get());
            av_frame_unref(frame_.get());
        }
    }

    void openResampler() {
        AVChannelLayout mono = AV_CHANNEL_LAYOUT_MONO;
        SwrContext* resampler = nullptr;
        const int failed = swr_alloc_set_opts2(
            &resampler, &mono, AV_SAMPLE_FMT_S16, sampleRate, &frame_->ch_layout,
            static_cast<AVSampleFormat>(frame_->format), frame_->sample_rate, 0, nullptr);
        resampler_.reset(resampler);
        if (failed < 0 || swr_init(resampler) < 0) refuse();
    }

    // A null frame flushes the resampler.
    void convert(const AVFrame* frame) {
        const int count = frame ? frame->nb_samples : 0;
        const int room = swr_get_out_samples(resampler_.get(), count);
        if (room <= 0) return;
        const auto before = samples_.size();
        if (before + static_cast<std::size_t>(room) > maximumSamples) {
            throw DecodeError("The audio file is longer than 15 minutes.");
        }
        samples_.resize(before + static_cast<std::size_t>(room));
        auto* target = reinterpret_cast<std::uint8_t*>(samples_.data() + before);
        const auto** source =
            frame ? const_cast<const std::uint8_t**>(frame->extended_data) : nullptr;
        const int written = swr_convert(resampler_.get(), &target, room, source, count);
        samples_.resize(before + static_cast<std::size_t>(std::max(written, 0)));
    }

    AVFormatContext* format_;
    int stream_ = -1;
    Owned<AVCodecContext> codec_;
    Owned<SwrContext> resampler_;
    Owned<AVPacket> packet_{av_packet_alloc()};
    Owned<AVFrame> frame_{av_frame_alloc()};
    std::vector<std::int16_t> samples_;
};

}  // namespace

std::vector<std::int16_t> decodeAudio(const Bytes& file) {
    av_log_set_level(AV_LOG_QUIET);
    MemoryFile memory{file};
    const auto io = openIo(memory);
    const auto format = openFormat(io.get());
    return Decoder(format.get()).run();
}

}  // namespace quorvi::speech
