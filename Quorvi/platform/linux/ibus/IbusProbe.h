#pragma once

namespace quorvi {

// Whether IBus gives text to the fields of Wayland programs: GNOME Shell hands it on. It need not
// run yet. Asks the session's bus and waits for it, a second at most; any thread.
bool ibusReachesFields();

}  // namespace quorvi
