#pragma once

#include <string>

namespace quorvi {

// The name on the bus of the backend that implements the portal; empty if none of this desktop's
// own does. The portal is an interface such as "org.freedesktop.impl.portal.GlobalShortcuts". The
// frontend shows an interface on every desktop as soon as any backend is installed that has it, so
// it proves nothing. Reads some small files; any thread.
std::string portalBackend(const char* interface);

inline bool desktopHasPortal(const char* interface) {
    return !portalBackend(interface).empty();
}

}  // namespace quorvi
