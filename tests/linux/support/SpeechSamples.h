#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/log.h>
}

#include <cstdint>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "QuorviCore/Bytes.h"
#include "tests/linux/support/ServerProcess.h"

namespace quorvi::test {

// Sound of one channel.
struct Sound {
    int rate = 0;
    std::vector<std::int16_t> samples;
};

// The sentence as a synthetic voice says it, with the voice that the recogniser understands best.
inline Sound spoken(const std::string& sentence) {
    const auto wave = outputOf({"espeak-ng", "-v", "en-us+f2", "-s", "130", "--stdout", sentence});
    // The header is of the plain kind: the rate at 24, the samples from 44 to the end.
    if (wave.size() < 44 || wave.compare(36, 4, "data") != 0) throw std::runtime_error("no speech");
    Sound sound;
    std::memcpy(&sound.rate, wave.data() + 24, 4);
    sound.samples.resize((wave.size() - 44) / 2);
    std::memcpy(sound.samples.data(), wave.data() + 44, sound.samples.size() * 2);
    return sound;
}

namespace internal {

// Writes one MPEG-4 audio file to memory, as a recorder writes it to disk.
class M4aWriter {
public:
    explicit M4aWriter(int rate) {
        av_log_set_level(AV_LOG_ERROR);
        check(avformat_alloc_output_context2(&format_, nullptr, "ipod", nullptr));
        check(avio_open_dyn_buf(&format_->pb));
        const auto* encoder = avcodec_find_encoder(AV_CODEC_ID_AAC);
        codec_ = avcodec_alloc_context3(encoder);
        codec_->sample_rate = rate;
        codec_->sample_fmt = AV_SAMPLE_FMT_FLTP;
        codec_->bit_rate = 64'000;
        codec_->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
        av_channel_layout_default(&codec_->ch_layout, 1);
        check(avcodec_open2(codec_, encoder, nullptr));
        stream_ = avformat_new_stream(format_, nullptr);
        check(avcodec_parameters_from_context(stream_->codecpar, codec_));
        stream_->time_base = {1, rate};
        check(avformat_write_header(format_, nullptr));
    }
    ~M4aWriter() {
        if (format_->pb) {
            std::uint8_t* unused = nullptr;
            avio_close_dyn_buf(format_->pb, &unused);
            av_free(unused);
        }
        avformat_free_context(format_);
        avcodec_free_context(&codec_);
    }
    M4aWriter(const M4aWriter&) = delete;
    M4aWriter& operator=(const M4aWriter&) = delete;

    void write(const std::vector<std::int16_t>& samples) {
        const auto step = static_cast<std::size_t>(codec_->frame_size);
        for (std::size_t begin = 0; begin < samples.size(); begin += step) {
            AVFrame* frame = av_frame_alloc();
            frame->nb_samples = codec_->frame_size;
            frame->format = codec_->sample_fmt;
            frame->pts = static_cast<std::int64_t>(begin);
            av_channel_layout_copy(&frame->ch_layout, &codec_->ch_layout);
            check(av_frame_get_buffer(frame, 0));
            auto* target = reinterpret_cast<float*>(frame->data[0]);
            for (std::size_t i = 0; i < step; ++i)
                target[i] = begin + i < samples.size()
                                ? static_cast<float>(samples[begin + i]) / 32768.0f
                                : 0.0f;
            check(avcodec_send_frame(codec_, frame));
            av_frame_free(&frame);
            takePackets();
        }
    }

    Bytes finish() {
        check(avcodec_send_frame(codec_, nullptr));
        takePackets();
        check(av_write_trailer(format_));
        std::uint8_t* data = nullptr;
        const int size = avio_close_dyn_buf(std::exchange(format_->pb, nullptr), &data);
        Bytes file(data, data + size);
        av_free(data);
        return file;
    }

private:
    static void check(int result) {
        if (result < 0) throw std::runtime_error("libav failed");
    }
    void takePackets() {
        AVPacket* packet = av_packet_alloc();
        while (avcodec_receive_packet(codec_, packet) == 0) {
            av_packet_rescale_ts(packet, codec_->time_base, stream_->time_base);
            check(av_interleaved_write_frame(format_, packet));
        }
        av_packet_free(&packet);
    }

    AVFormatContext* format_ = nullptr;
    AVCodecContext* codec_ = nullptr;
    AVStream* stream_ = nullptr;
};

}  // namespace internal

inline Bytes m4aOf(const Sound& sound) {
    internal::M4aWriter writer(sound.rate);
    writer.write(sound.samples);
    return writer.finish();
}

}  // namespace quorvi::test
