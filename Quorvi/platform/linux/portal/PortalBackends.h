#pragma once

namespace quorvi {

// Whether one of this desktop's own backends implements the portal, an interface such as
// "org.freedesktop.impl.portal.GlobalShortcuts". The frontend shows an interface on every desktop
// as soon as any backend is installed that has it, so it proves nothing. Reads some small files;
// any thread.
bool desktopHasPortal(const char* interface);

}  // namespace quorvi
