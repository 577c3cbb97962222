#include "QuorviCore/transcription/MultipartBody.h"

namespace quorvi {

void MultipartBody::append(std::string_view text) {
    data_.insert(data_.end(), text.begin(), text.end());
}

void MultipartBody::field(std::string_view name, std::string_view value) {
    append("--");
    append(boundary_);
    append("\r\nContent-Disposition: form-data; name=\"");
    append(name);
    append("\"\r\n\r\n");
    append(value);
    append("\r\n");
}

void MultipartBody::audio(const Bytes& audio) {
    append("--");
    append(boundary_);
    append(
        "\r\nContent-Disposition: form-data; name=\"file\"; filename=\"dictation.m4a\"\r\n"
        "Content-Type: audio/mp4\r\n\r\n");
    data_.insert(data_.end(), audio.begin(), audio.end());
    append("\r\n");
}

void MultipartBody::finish() {
    append("--");
    append(boundary_);
    append("--\r\n");
}

}  // namespace quorvi
