#pragma once

namespace quorvi {

// Whether the desktop's own portal for remote desktops remembers the user's leave. Waits for the
// bus, a second at most; any thread.
bool hasRememberingRemoteDesktop();

// Whether GNOME's compositor lets programs press keys without a portal. Waits as above.
bool hasMutterRemoteDesktop();

}  // namespace quorvi
