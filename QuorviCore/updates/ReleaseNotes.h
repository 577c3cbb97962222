#pragma once

#include <string>
#include <string_view>

namespace quorvi {

// Returns release notes as markup that is safe to show: headings, paragraphs, lists, emphasis, code
// and links to HTTPS addresses, well nested to a limited depth. Removes all other tags, all other
// attributes, and the content of scripts and styles. Keeps the lines of plain text. Truncates long
// notes.
std::string safeReleaseNotes(std::string_view notes);

}  // namespace quorvi
