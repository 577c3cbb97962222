#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/dict.h>
#include <libavutil/error.h>
#include <libavutil/log.h>
#include <libavutil/mem.h>
}

namespace quorvi {

// The functions of libavcodec, libavformat and libavutil that the encoder calls, under their own
// names. The first recording loads the libraries, not the program's start: they pull in more than
// seventy others, a sixth of the program's memory.
struct AvLibraries {
    // Loads them at the first call (tens of milliseconds); any thread. Throws QuorviError if that
    // fails.
    static const AvLibraries& get();

#define QUORVI_AVCODEC_FUNCTIONS(F)    \
    F(avcodec_find_encoder)            \
    F(avcodec_alloc_context3)          \
    F(avcodec_free_context)            \
    F(avcodec_open2)                   \
    F(avcodec_parameters_from_context) \
    F(avcodec_send_frame)              \
    F(avcodec_receive_packet)          \
    F(av_packet_alloc)                 \
    F(av_packet_free)                  \
    F(av_packet_unref)                 \
    F(av_packet_rescale_ts)
#define QUORVI_AVFORMAT_FUNCTIONS(F)  \
    F(avformat_alloc_output_context2) \
    F(avformat_free_context)          \
    F(avformat_new_stream)            \
    F(avformat_write_header)          \
    F(av_write_frame)                 \
    F(av_write_trailer)               \
    F(avio_alloc_context)             \
    F(avio_context_free)              \
    F(avio_flush)
#define QUORVI_AVUTIL_FUNCTIONS(F) \
    F(av_log_set_level)            \
    F(av_channel_layout_default)   \
    F(av_channel_layout_copy)      \
    F(av_frame_alloc)              \
    F(av_frame_free)               \
    F(av_frame_get_buffer)         \
    F(av_frame_make_writable)      \
    F(av_dict_set_int)             \
    F(av_dict_free)                \
    F(av_malloc)                   \
    F(av_freep)

#define QUORVI_MEMBER(name) decltype(&::name) name;
    QUORVI_AVCODEC_FUNCTIONS(QUORVI_MEMBER)
    QUORVI_AVFORMAT_FUNCTIONS(QUORVI_MEMBER)
    QUORVI_AVUTIL_FUNCTIONS(QUORVI_MEMBER)
#undef QUORVI_MEMBER

private:
    AvLibraries();
};

}  // namespace quorvi
