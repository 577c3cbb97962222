#pragma once

#include <string>
#include <string_view>

namespace quorvi::text {

// Full Unicode case folding, the same in every locale. Accents survive. The result need not be in
// Form C even when the text is.
std::string caseFolded(std::string_view s);

// Form C without the combining marks: é becomes e.
std::string withoutDiacritics(std::string_view s);

// The form in which a search compares texts: without case and combining marks. One text is found in
// another when its form is a part of the other's. Combining marks alone have an empty form.
std::string searchFolded(std::string_view s);

}  // namespace quorvi::text
