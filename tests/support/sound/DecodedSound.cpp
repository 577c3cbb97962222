#include "tests/support/sound/DecodedSound.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace quorvi::test {

DecodedSound::DecodedSound(const std::filesystem::path& file) {
    AVFormatContext* format = nullptr;
    if (avformat_open_input(&format, file.c_str(), nullptr, nullptr) < 0) return;
    avformat_find_stream_info(format, nullptr);
    if (format->nb_streams == 1) decode(*format);
    avformat_close_input(&format);
}

void DecodedSound::decode(AVFormatContext& format) {
    const auto& stream = *format.streams[0];
    const auto* decoder = avcodec_find_decoder(stream.codecpar->codec_id);
    auto* context = avcodec_alloc_context3(decoder);
    avcodec_parameters_to_context(context, stream.codecpar);
    context->pkt_timebase = stream.time_base;
    avcodec_open2(context, decoder, nullptr);
    codec = decoder->name;
    container = format.iformat->name;
    sampleRate = stream.codecpar->sample_rate;
    channels = stream.codecpar->ch_layout.nb_channels;
    declaredSeconds =
        static_cast<double>(stream.duration) * stream.time_base.num / stream.time_base.den;

    auto* packet = av_packet_alloc();
    auto* frame = av_frame_alloc();
    std::int64_t bytes = 0;
    const auto take = [&] {
        while (avcodec_receive_frame(context, frame) >= 0) {
            const auto* plane = reinterpret_cast<const float*>(frame->extended_data[0]);
            samples.insert(samples.end(), plane, plane + frame->nb_samples);
        }
    };
    while (av_read_frame(&format, packet) >= 0) {
        bytes += packet->size;
        avcodec_send_packet(context, packet);
        take();
        av_packet_unref(packet);
    }
    avcodec_send_packet(context, nullptr);
    take();
    if (!samples.empty())
        bitRate =
            8.0 * static_cast<double>(bytes) * sampleRate / static_cast<double>(samples.size());
    av_frame_free(&frame);
    av_packet_free(&packet);
    avcodec_free_context(&context);
}

}  // namespace quorvi::test
