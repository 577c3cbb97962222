#pragma once

#include <string_view>

#include "Quorvi/platform/Pasteboard.h"

namespace quorvi {

// A text as a clipboard item of Linux desktops: UTF-8 under its usual type names, Latin-1 if that
// can hold it, and for a hidden transcript the mark that keeps it out of clipboard histories. Any
// thread.
PasteboardItem clipboardTextItem(std::string_view text, TranscriptVisibility visibility);

}  // namespace quorvi
