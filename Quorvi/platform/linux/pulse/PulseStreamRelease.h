#pragma once

struct pa_stream;

namespace quorvi {

// Ends a stream and gives up the caller's reference to it, without any further callback. A stream
// that the server is still making can't be ended yet, and would live on in the server: it is ended
// as soon as it is made. Sound thread only.
void releaseStream(pa_stream* stream);

}  // namespace quorvi
