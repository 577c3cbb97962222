#pragma once

#include <string>
#include <string_view>

namespace quorvi::text {

// Full Unicode case folding, independent of the locale. Keeps accents. The result may not be in
// Form C even if the text is.
std::string caseFolded(std::string_view s);

// Returns Form C without combining marks: é becomes e.
std::string withoutDiacritics(std::string_view s);

// Returns the form in which a search compares texts: without case and combining marks. A text
// matches a query if its form contains the form of the query. The form of combining marks alone is
// empty.
std::string searchFolded(std::string_view s);

}  // namespace quorvi::text
