#pragma once

namespace quorvi {

// Whether a compositing manager runs on $DISPLAY, so that windows can be translucent. Waits for the
// X server; any thread.
bool x11IsComposited();

}  // namespace quorvi
