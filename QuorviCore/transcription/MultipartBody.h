#pragma once

#include <string>
#include <string_view>

#include "QuorviCore/base/Bytes.h"
#include "QuorviCore/identity/Uuid.h"

namespace quorvi {

// Builds the multipart/form-data body of one request in a single buffer. Nothing in a name or a
// value is escaped: the random boundary is what keeps the parts apart. A plain value of any thread
// that lives as long as the request is being built.
class MultipartBody {
public:
    explicit MultipartBody(std::string boundary = "Quorvi-" + newUuid())
        : boundary_(std::move(boundary)) {}

    void reserve(std::size_t bytes) { data_.reserve(bytes); }

    // Appends a part of text.
    void field(std::string_view name, std::string_view value);
    // Appends the recording as the part "file".
    void audio(const Bytes& audio);
    // Appends the closing delimiter; no part may follow.
    void finish();

    const std::string& boundary() const { return boundary_; }
    const Bytes& data() const { return data_; }
    Bytes takeData() { return std::move(data_); }

private:
    void append(std::string_view text);

    std::string boundary_;
    Bytes data_;
};

}  // namespace quorvi
