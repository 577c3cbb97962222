#include "Quorvi/platform/linux/pulse/AacFileWriter.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

#include "Quorvi/platform/linux/pulse/AvLibraries.h"
#include "QuorviCore/Error.h"

namespace quorvi {

namespace {

const AvLibraries& av() {
    return AvLibraries::get();
}

// Throws `failure` with the reason if the result is an error. libav's codes are negated errno
// values, or codes of its own that mean little to a user.
template <Sentence id>
void check(int result, const SentenceMaker<id>& failure) {
    if (result >= 0) return;
    const int error = AVUNERROR(result);
    const auto reason = error > 0 && error < 200 ? std::generic_category().message(error)
                                                 : "error " + std::to_string(result);
    throw QuorviError::message(failure(reason));
}

struct Free {
    void operator()(AVCodecContext* p) const { av().avcodec_free_context(&p); }
    void operator()(AVFormatContext* p) const { av().avformat_free_context(p); }
    void operator()(AVFrame* p) const { av().av_frame_free(&p); }
    void operator()(AVPacket* p) const { av().av_packet_free(&p); }
    void operator()(AVIOContext* p) const {
        av().av_freep(&p->buffer);
        av().avio_context_free(&p);
    }
};

// The file behind libav's I/O callbacks.
class OutputFile {
public:
    OutputFile() = default;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile() {
        if (fd_ >= 0) ::close(fd_);
    }

    void create(const std::filesystem::path& file) {
        constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
        fd_ = ::open(file.c_str(), flags, S_IRUSR | S_IWUSR);
        check(fd_ < 0 ? AVERROR(errno) : 0, say::recordingNotCreated);
    }
    void close() {
        check(::close(std::exchange(fd_, -1)) < 0 ? AVERROR(errno) : 0, say::recordingNotWritten);
    }

    // The data are constant from FFmpeg 7 on.
#if LIBAVFORMAT_VERSION_MAJOR >= 61
    using Data = const std::uint8_t;
#else
    using Data = std::uint8_t;
#endif
    static int write(void* self, Data* data, int size) {
        const int fd = static_cast<OutputFile*>(self)->fd_;
        for (int done = 0; done < size;) {
            const auto count = ::write(fd, data + done, static_cast<std::size_t>(size - done));
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) return AVERROR(errno);
            done += static_cast<int>(count);
        }
        return size;
    }
    static std::int64_t seek(void* self, std::int64_t offset, int whence) {
        if (whence & AVSEEK_SIZE) return AVERROR(ENOSYS);
        const auto position =
            ::lseek(static_cast<OutputFile*>(self)->fd_, offset, whence & ~AVSEEK_FORCE);
        return position < 0 ? AVERROR(errno) : position;
    }

private:
    int fd_ = -1;
};

}  // namespace

struct AacFileWriter::Impl {
    // A full disk is noticed once a buffer is full, half a second at the usual bit rate.
    static constexpr int bufferSize = 4096;

    OutputFile file;
    std::unique_ptr<AVCodecContext, Free> codec;
    std::unique_ptr<AVFrame, Free> frame{av().av_frame_alloc()};
    std::unique_ptr<AVPacket, Free> packet{av().av_packet_alloc()};
    std::unique_ptr<AVIOContext, Free> io;
    std::unique_ptr<AVFormatContext, Free> format;
    AVStream* stream = nullptr;  // owned by format
    int filled = 0;              // samples in the frame
    std::int64_t position = 0;   // of the frame's first sample

    explicit Impl(AudioSettings settings) {
        av().av_log_set_level(AV_LOG_ERROR);
        const auto* encoder = av().avcodec_find_encoder(AV_CODEC_ID_AAC);
        if (!encoder) throw QuorviError::message(say::noAacEncoder());
        codec.reset(av().avcodec_alloc_context3(encoder));
        codec->sample_fmt = AV_SAMPLE_FMT_FLTP;
        codec->sample_rate = settings.sampleRate;
        codec->bit_rate = settings.bitRate;
        codec->time_base = {1, settings.sampleRate};
        codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
        av().av_channel_layout_default(&codec->ch_layout, settings.channels);
        check(av().avcodec_open2(codec.get(), encoder, nullptr), say::soundNotEncoded);

        frame->format = codec->sample_fmt;
        frame->sample_rate = codec->sample_rate;
        frame->nb_samples = codec->frame_size;
        check(av().av_channel_layout_copy(&frame->ch_layout, &codec->ch_layout),
              say::soundNotEncoded);
        check(av().av_frame_get_buffer(frame.get(), 0), say::soundNotEncoded);
    }

    void open(const std::filesystem::path& path) {
        AVFormatContext* made = nullptr;
        check(av().avformat_alloc_output_context2(&made, nullptr, "ipod", path.c_str()),
              say::recordingNotCreated);
        format.reset(made);
        io.reset(av().avio_alloc_context(static_cast<unsigned char*>(av().av_malloc(bufferSize)),
                                         bufferSize, 1, &file, nullptr, &OutputFile::write,
                                         &OutputFile::seek));
        format->pb = io.get();
        stream = av().avformat_new_stream(format.get(), nullptr);
        stream->time_base = codec->time_base;
        check(av().avcodec_parameters_from_context(stream->codecpar, codec.get()),
              say::recordingNotCreated);
        // The usual time scale of milliseconds would cut the sound down to a whole number of them.
        AVDictionary* options = nullptr;
        av().av_dict_set_int(&options, "movie_timescale", codec->sample_rate, 0);
        const int written = av().avformat_write_header(format.get(), &options);
        av().av_dict_free(&options);
        check(written, say::recordingNotCreated);
    }

    void write(std::span<const std::int16_t> samples) {
        const int channels = codec->ch_layout.nb_channels;
        for (std::size_t i = 0; i < samples.size();) {
            if (filled == 0) check(av().av_frame_make_writable(frame.get()), say::soundNotEncoded);
            for (int channel = 0; channel < channels; ++channel) {
                auto* plane = reinterpret_cast<float*>(frame->extended_data[channel]);
                plane[filled] = static_cast<float>(samples[i++]) / 32768.0F;
            }
            if (++filled == codec->frame_size) encode();
        }
    }

    void encode() {
        frame->nb_samples = filled;
        frame->pts = position;
        position += std::exchange(filled, 0);
        check(av().avcodec_send_frame(codec.get(), frame.get()), say::soundNotEncoded);
        takePackets();
    }

    void takePackets() {
        for (;;) {
            const int result = av().avcodec_receive_packet(codec.get(), packet.get());
            if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) return;
            check(result, say::soundNotEncoded);
            packet->stream_index = stream->index;
            av().av_packet_rescale_ts(packet.get(), codec->time_base, stream->time_base);
            check(av().av_write_frame(format.get(), packet.get()), say::recordingNotWritten);
            av().av_packet_unref(packet.get());
            check(io->error, say::recordingNotWritten);
        }
    }

    void finish() {
        if (filled > 0) encode();
        check(av().avcodec_send_frame(codec.get(), nullptr), say::soundNotEncoded);
        takePackets();
        check(av().av_write_trailer(format.get()), say::recordingNotWritten);
        av().avio_flush(io.get());
        check(io->error, say::recordingNotWritten);
        file.close();
    }
};

AacFileWriter::AacFileWriter(AudioSettings settings) : impl_(std::make_unique<Impl>(settings)) {}
AacFileWriter::~AacFileWriter() = default;

void AacFileWriter::open(const std::filesystem::path& file) {
    impl_->file.create(file);
    try {
        impl_->open(file);
    } catch (...) {
        std::error_code ignored;
        std::filesystem::remove(file, ignored);
        throw;
    }
}

void AacFileWriter::write(std::span<const std::int16_t> interleaved) {
    impl_->write(interleaved);
}

void AacFileWriter::finish() {
    impl_->finish();
}

void SpareAacWriter::prepare() {
    if (spare_) return;
    try {
        spare_ = std::make_unique<AacFileWriter>(AudioSettings{});
    } catch (const std::exception&) {
        // The recording fails with the same error and reports it.
    }
}

std::unique_ptr<AacFileWriter> SpareAacWriter::take(AudioSettings settings) {
    if (spare_ && settings == AudioSettings{}) return std::move(spare_);
    return std::make_unique<AacFileWriter>(settings);
}

}  // namespace quorvi
