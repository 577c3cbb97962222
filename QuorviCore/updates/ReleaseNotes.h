#pragma once

#include <string>
#include <string_view>

namespace quorvi {

// Release notes as simple markup that is safe to show: headings, paragraphs, lists, emphasis, code
// and links to HTTPS addresses, well nested and not deeply; all other tags, every attribute, and
// what scripts and styles contain are gone. Plain text keeps its lines. Long notes are cut.
std::string safeReleaseNotes(std::string_view notes);

}  // namespace quorvi
