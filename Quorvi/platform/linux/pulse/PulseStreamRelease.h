#pragma once

struct pa_stream;

namespace quorvi {

// Ends a stream and drops the caller's reference, without any further callback. A stream that the
// server is still creating is ended as soon as it exists; it would stay in the server otherwise.
// Sound thread only.
void releaseStream(pa_stream* stream);

}  // namespace quorvi
